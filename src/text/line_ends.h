// Where lines end, many units at a time: pure.
#pragma once

#include <cstddef>
#include <string_view>

namespace morva {

// The first CR or LF at or behind `from`; the length of the text where there is none.
std::size_t FindLineEnd(std::u16string_view text, std::size_t from);
// How many LFs from `from` up to `to` stand behind a CR.
std::size_t CountPairs(std::u16string_view text, std::size_t from, std::size_t to);

}  // namespace morva
