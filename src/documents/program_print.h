// A program on paper: its lines with their numbers, and its name and the page on each sheet.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/printer.h"

namespace morva {

// Asks for a printer and prints the active program's code as it stands in the editor. What the
// printer cannot do is said in a box; a cancelled dialog does nothing.
void PrintProgram();

// The parts that a line is printed in, each as wide as `room` at most, in pixels of a screen. They
// make up the line, with blanks in place of tabs; a line without text is one empty part.
std::vector<std::u16string> PrintedParts(std::u16string_view line, int room);

}  // namespace morva
