// Numbers as bytes, the lowest byte first, as every binary file of MORVA holds them.
#pragma once

#include <bit>
#include <cstdint>

namespace morva {

// Four bytes.
inline void StoreUnsigned(unsigned char* at, std::uint32_t value) {
  for (int i = 0; i < 4; ++i) at[i] = static_cast<unsigned char>(value >> (8 * i));
}
inline std::uint32_t LoadUnsigned(const unsigned char* at) {
  return at[0] | static_cast<std::uint32_t>(at[1]) << 8 | static_cast<std::uint32_t>(at[2]) << 16 |
         static_cast<std::uint32_t>(at[3]) << 24;
}
inline void StoreInteger(unsigned char* at, std::int32_t value) {
  StoreUnsigned(at, static_cast<std::uint32_t>(value));
}

// Eight bytes, to the last bit.
inline void StoreReal(unsigned char* at, double value) {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  StoreUnsigned(at, static_cast<std::uint32_t>(bits));
  StoreUnsigned(at + 4, static_cast<std::uint32_t>(bits >> 32));
}
inline double LoadReal(const unsigned char* at) {
  const std::uint64_t low = LoadUnsigned(at);
  const std::uint64_t high = LoadUnsigned(at + 4);
  return std::bit_cast<double>(low | high << 32);
}

}  // namespace morva
