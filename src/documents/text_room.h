// Room in the active program: what MORVA writes it must be able to open again.
#pragma once

#include <cstddef>
#include <string_view>

namespace morva {

// Whether the code editor's text, grown by so many units, still makes a file of at most 32 MiB.
// A unit counts as two bytes at most, as a line end alone becomes CR LF.
bool HasRoomFor(std::size_t units);
// The same for a text that would stand in the place of the whole.
bool FitsAsProgram(std::u16string_view text);
// Tells under this title that nothing was changed for want of room.
void TellNoRoom(std::u16string_view title);

}  // namespace morva
