// What every fuzz target shares: the entry that is called for each input, and the check that
// ends the run. A target keeps nothing between inputs that could change its answer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

// Ends the process where an input breaks what must hold; the main program then keeps the input.
inline void Check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

// Bytes as program text: plain ones as they stand, those from 128 up as units with both bytes
// set, so that text above the one-byte range occurs as well.
inline std::u16string TextOf(const std::uint8_t* data, std::size_t size) {
  std::u16string text;
  text.reserve(size);
  for (std::size_t i = 0; i < size; ++i) {
    const unsigned byte = data[i];
    text += static_cast<char16_t>(byte < 128 ? byte : byte << 8 | byte);
  }
  return text;
}

}  // namespace fuzz
