#include "text/text_hash.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace morva {

namespace {

constexpr std::size_t kLaneUnits = TextHash::kLaneUnits;
constexpr std::size_t kBlock = TextHash::kBlockUnits;

// A factor near the golden ratio brings low bits up, the turn high ones down again. Another word
// always gives another lane.
std::uint64_t Mixed(std::uint64_t lane, const char16_t* units) {
  std::uint64_t word = 0;
  std::memcpy(&word, units, sizeof word);
  return std::rotl((lane ^ word) * 0x9E3779B97F4A7C15U, 29);
}

void AddBlocks(TextHash& hash, const char16_t* units, std::size_t blocks) {
  static_assert(kHashLanes == 4);
  auto [first, second, third, fourth] = hash.lanes;
  for (const char16_t* const end = units + blocks * kBlock; units != end;) {
    first = Mixed(first, units);
    second = Mixed(second, units + kLaneUnits);
    third = Mixed(third, units + 2 * kLaneUnits);
    fourth = Mixed(fourth, units + 3 * kLaneUnits);
    units += kBlock;
  }
  hash.lanes = {first, second, third, fourth};
}

}  // namespace

void AddText(TextHash& hash, std::u16string_view piece) {
  if (hash.restUnits > 0) {
    const std::size_t taken = std::min(kBlock - hash.restUnits, piece.size());
    std::copy_n(piece.data(), taken, hash.rest + hash.restUnits);
    hash.restUnits += taken;
    piece.remove_prefix(taken);
    if (hash.restUnits < kBlock) return;
    AddBlocks(hash, hash.rest, 1);
    hash.restUnits = 0;
  }
  const std::size_t blocks = piece.size() / kBlock;
  AddBlocks(hash, piece.data(), blocks);
  piece.remove_prefix(blocks * kBlock);
  std::copy(piece.begin(), piece.end(), hash.rest);
  hash.restUnits = piece.size();
}

TextDigest EndHash(TextHash& hash) {
  std::fill(hash.rest + hash.restUnits, std::end(hash.rest), u'\0');
  AddBlocks(hash, hash.rest, 1);
  return hash.lanes;
}

TextDigest DigestOf(std::u16string_view text) {
  TextHash hash;
  AddText(hash, text);
  return EndHash(hash);
}

}  // namespace morva
