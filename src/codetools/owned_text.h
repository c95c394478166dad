// A text of many units in one block of memory, for conversions that may run out of it.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <string_view>

namespace morva {

// Without `units` there was no memory for the text, and nothing was written.
struct OwnedText {
  std::unique_ptr<char16_t[]> units;
  std::size_t length = 0;
  std::u16string_view View() const { return {units.get(), length}; }
};

// Room for so many units, their values not set. False: there is no memory.
inline bool Allocate(OwnedText& text, std::size_t capacity) {
  text.units.reset(new (std::nothrow) char16_t[capacity]);
  return text.units != nullptr;
}

}  // namespace morva
