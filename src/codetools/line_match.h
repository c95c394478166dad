// Which lines of a list stand in another one too, in the same order: the shortest way from one to
// the other. Linear in the lines, and in their differences to the square.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace morva {

inline constexpr std::size_t kNoLine = static_cast<std::size_t>(-1);

// For each line of `after` its place in `before`, kNoLine for a line that is new. Where the lists
// are too different for that only the equal lines at their fronts and backs are told.
std::vector<std::size_t> MatchLines(const std::vector<std::u16string_view>& before,
                                    const std::vector<std::u16string_view>& after);

}  // namespace morva
