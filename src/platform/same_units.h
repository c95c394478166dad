// Two texts as bytes: the library compares 16-bit text unit by unit, which in a large program takes
// longer than all else that a change of tabs does.
#pragma once

#include <cstring>
#include <string_view>

namespace platform {

inline bool SameUnits(std::u16string_view a, std::u16string_view b) {
  return a.size() == b.size() &&
         (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(char16_t)) == 0);
}

}  // namespace platform
