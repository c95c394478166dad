// Blocks of units that are asked at once. A loop over a block has a fixed number of steps and no
// branches, so that the compiler makes it one of several units a step.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace morva {

inline constexpr std::size_t kBlockUnits = 16;

// The first of the bytes that is not 0; kBlockUnits for none.
inline std::size_t FirstHit(const unsigned char (&hits)[kBlockUnits]) {
  std::uint64_t words[2];
  static_assert(sizeof words == sizeof hits);
  std::memcpy(words, hits, sizeof words);
  if ((words[0] | words[1]) == 0) return kBlockUnits;
  const std::size_t before = words[0] != 0 ? 0 : sizeof words[0];
  const std::uint64_t word = words[0] != 0 ? words[0] : words[1];
  const int bits =
      std::endian::native == std::endian::little ? std::countr_zero(word) : std::countl_zero(word);
  return before + static_cast<std::size_t>(bits) / 8;
}

}  // namespace morva
