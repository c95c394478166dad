#include "text/line_ends.h"

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

}  // namespace morva
