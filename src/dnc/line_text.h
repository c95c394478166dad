// Bytes of a program on the line beside its text: what tape punches and lines without a wire for
// "ready" put between the characters, and the "%" that opens and closes a program.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace morva {

// DC1 to DC4 (0x11 to 0x14), which start and stop a line and a punch, and the rubout (0x7F). A
// control takes them for its own and for no text: 0x13 in a program would stop the line.
bool IsTapeCode(char16_t c);
// Takes them out. How many there were.
std::size_t DropTapeCodes(std::string& bytes);
std::size_t DropTapeCodes(std::u16string& text);

// NULs, control codes, rubouts, blanks, line ends and "%" hold no program.
bool IsFillingOnly(std::string_view bytes);
// A line with "%" opens a program and no other one closes it: its end may be missing. A "%" within
// a line, as in a comment, closes nothing. A program that is sent without "%" tells nothing.
bool LacksClosingPercent(std::string_view bytes);
// It begins and ends with a line of "%", fillings aside, with a program between them.
bool IsWholeProgram(std::string_view bytes);

}  // namespace morva
