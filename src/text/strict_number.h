// The strict rule of typed numbers, for fields that drive geometry.
#pragma once

#include <cstddef>
#include <string_view>

namespace morva {

inline constexpr double kStrictLimit = 1000000;  // numbers stay below it in size

struct StrictRule {
  double below = kStrictLimit;  // of the number's size
  std::size_t units = 78;       // that the number may have, its sign included
  bool blanksBehind = false;    // blanks may follow the number
};

// Why a text is no number by the strict rule.
enum class Misread : unsigned char {
  None,      // it is one
  Empty,     // no text, or blanks alone
  NoNumber,  // something else stands in it
  TooLong,
  TooLarge,
  NotWhole,  // where a count is wanted
};

// An optional sign, digits and at most one point, at least one digit. What keeps the text from
// being such a number within the rule's limits; `value` stays then.
Misread ReadStrict(std::u16string_view text, const StrictRule& rule, double& value);
// By the rule as it is without a change. False: not such a number, and `value` stays.
bool ReadStrictNumber(std::u16string_view text, double& value);

}  // namespace morva
