// A hash of a text, many units at a time: to tell texts of one length apart within a run. It is
// kept in no file.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace morva {

inline constexpr std::size_t kHashLanes = 4;
using TextDigest = std::array<std::uint64_t, kHashLanes>;

// Over pieces as over the text that they make up.
struct TextHash {
  static constexpr std::size_t kLaneUnits = sizeof(std::uint64_t) / sizeof(char16_t);
  static constexpr std::size_t kBlockUnits = kHashLanes * kLaneUnits;
  TextDigest lanes = {1, 2, 3, 4};
  char16_t rest[kBlockUnits] = {};
  std::size_t restUnits = 0;
};

void AddText(TextHash& hash, std::u16string_view piece);
// Behind the last piece. NULs at the end of a text do not count.
TextDigest EndHash(TextHash& hash);

TextDigest DigestOf(std::u16string_view text);

}  // namespace morva
