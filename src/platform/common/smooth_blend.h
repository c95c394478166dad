// Blends the coverage of smooth lines into rows of 32-bit pixels.
#pragma once

#include <cstdint>
#include <cstring>

namespace platform {

inline constexpr int kTile = 32;  // pixels a side of what is covered, blended and cleared together
inline constexpr int kBlock = 8;  // pixels a side that are blended together

inline std::uint64_t LoadEight(const std::uint8_t* bytes) {
  std::uint64_t eight;
  std::memcpy(&eight, bytes, sizeof eight);
  return eight;
}

// Blends `ink`, 0xFFRRGGBB, into `count` pixels by their coverage, 0 to 255.
void BlendPixels(std::uint32_t* pixels, const std::uint8_t* covered, int count, std::uint32_t ink);

// The same for the kTile pixels of a row of a tile, several at a time where the processor can.
using RowBlender = void (*)(std::uint32_t* pixels, const std::uint8_t* covered, std::uint32_t ink);
extern const RowBlender BlendRow;

}  // namespace platform
