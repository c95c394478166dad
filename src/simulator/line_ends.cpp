#include "simulator/line_ends.h"

namespace morva {

// Eight lanes side by side, which a compiler turns into vector code.
std::int32_t CountLineEnds(const char16_t* p, std::size_t count) {
  constexpr std::size_t kLanes = 8;
  constexpr std::size_t kBlocks = 8192;  // a lane of 16 bits cannot overflow in these
  std::int32_t total = 0;
  std::size_t i = 0;
  while (count - i >= kLanes) {
    std::uint16_t lanes[kLanes] = {};
    const std::size_t blocks = std::min(kBlocks, (count - i) / kLanes);
    for (std::size_t block = 0; block < blocks; ++block, i += kLanes) {
      for (std::size_t k = 0; k < kLanes; ++k) {
        const bool feed = p[i + k] == u'\n';
        const bool lone = (p[i + k] == u'\r') & (p[i + k + 1] != u'\n');
        lanes[k] = static_cast<std::uint16_t>(lanes[k] + (feed | lone));
      }
    }
    for (const std::uint16_t lane : lanes) total += lane;
  }
  for (; i < count; ++i) {
    total += p[i] == u'\n' || (p[i] == u'\r' && p[i + 1] != u'\n') ? 1 : 0;
  }
  return total;
}

}  // namespace morva
