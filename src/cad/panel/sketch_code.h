// The live sketch as a flat block of G-code: outline after outline, in order, at one depth.
//
// Deliberately plain: no tool change, no spindle, no coolant, no compensation. Hidden and
// locked objects are cut like the others; work points and axes write nothing, so that a number
// can be missing from the "(OBJECT n)" comments.
#pragma once

#include <string>

#include "library/motion_text.h"

namespace morva {

// The text for these cutting data in the sketch's own unit, CR LF line ends, the first line
// empty.
std::u16string SketchCode(const CutData& cut);
// The "Generate" and "Update" command: checks, destination, insertion, messages. The sketch
// stays as it is.
void GenerateSketchCode();

void RegisterSketchCode();

}  // namespace morva
