// The live sketch as a flat block of G-code: outline after outline, in order, at one depth.
#pragma once

#include <string>

namespace morva {

// The text for these cutting data, CR LF line ends; empty when memory runs out.
std::u16string SketchCode(double depth, double feed, double safeZ);
// The "Generate" and "Update" command: checks, destination, insertion, messages.
void GenerateSketchCode();

void RegisterSketchCode();

}  // namespace morva
