#include "text/line_ends.h"

#include <algorithm>
#include <cstdint>

#include "text/unit_block.h"

namespace morva {

std::size_t FindLineEnd(std::u16string_view text, std::size_t from) {
  std::size_t at = from;
  for (; at + kBlockUnits <= text.size(); at += kBlockUnits) {
    const char16_t* const units = text.data() + at;
    unsigned char hits[kBlockUnits];
    for (std::size_t k = 0; k < kBlockUnits; ++k) {
      hits[k] = static_cast<unsigned char>((units[k] == u'\r') | (units[k] == u'\n'));
    }
    const std::size_t first = FirstHit(hits);
    if (first < kBlockUnits) return at + first;
  }
  while (at < text.size() && text[at] != u'\r' && text[at] != u'\n') ++at;
  return at;
}

// A sum for each unit of a block, of 16 bits, which a compiler turns into vector code.
std::size_t CountPairs(std::u16string_view text, std::size_t from, std::size_t to) {
  constexpr std::size_t kMostBlocks = 8192;  // none of the sums can overflow in these
  const char16_t* const units = text.data();
  std::size_t total = 0;
  std::size_t at = std::max<std::size_t>(from, 1);
  while (at + kBlockUnits <= to) {
    std::uint16_t sums[kBlockUnits] = {};
    const std::size_t blocks = std::min(kMostBlocks, (to - at) / kBlockUnits);
    for (std::size_t block = 0; block < blocks; ++block, at += kBlockUnits) {
      for (std::size_t k = 0; k < kBlockUnits; ++k) {
        const bool pair = (units[at + k] == u'\n') & (units[at + k - 1] == u'\r');
        sums[k] = static_cast<std::uint16_t>(sums[k] + pair);
      }
    }
    for (const std::uint16_t sum : sums) total += sum;
  }
  for (; at < to; ++at) total += units[at] == u'\n' && units[at - 1] == u'\r' ? 1 : 0;
  return total;
}

}  // namespace morva
