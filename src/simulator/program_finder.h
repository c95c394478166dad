// Programs that a call names and that stand elsewhere: in another open tab, or in a file beside the
// active program.
#pragma once

#include <cstdint>
#include <string_view>

namespace morva {

// The text of the program with that O number. An open tab comes first: its first word is the O
// number. Then files in the folder of the active program, "O1234" and "1234", with zeros in front
// up to five digits, with the program's own extension, the usual ones and none. 0: there is none.
// The text stays valid until the next call of ForgetFoundPrograms.
std::int32_t FindProgramBeside(std::int32_t number, std::u16string_view& text);

// Files are looked for, and read, anew from now on.
void ForgetFoundPrograms();

// The number of the O word that a program begins with, behind "%", blanks and comments; -1 where it
// begins with another word.
std::int32_t NumberOfProgram(std::u16string_view text);

}  // namespace morva
