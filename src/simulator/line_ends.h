// Line ends of a text, counted fast.
#pragma once

#include <cstddef>
#include <cstdint>

namespace morva {

// Line ends among `count` units from `p` on, the unit behind them readable: LF, or CR that no
// LF follows.
std::int32_t CountLineEnds(const char16_t* p, std::size_t count);

}  // namespace morva
