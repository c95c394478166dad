// The strict rule of typed numbers, for fields that drive geometry.
#pragma once

#include <string_view>

namespace morva {

inline constexpr double kStrictLimit = 1000000;  // numbers stay below it in size

// An optional sign, digits and at most one point, at least one digit, under 79 characters, below
// kStrictLimit in size. False: not such a number, and `value` stays.
bool ReadStrictNumber(std::u16string_view text, double& value);

}  // namespace morva
