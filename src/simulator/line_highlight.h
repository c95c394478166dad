// The program line and the feature that the playing path is in, marked in the feature list, the
// editor and the words view.
#pragma once

#include <cstdint>

namespace morva {

// Makes a program line current in the feature list, the editor and the words view; negative
// lines are ignored.
void HighlightSourceLine(std::int32_t line);
// The text moved around the line that is current: it is now this one. Nothing scrolls.
void MoveHighlight(std::int32_t line);
// The feature that the program's playing path is in, 0 for none.
std::int32_t HighlightedFeature();
// No line and no feature is current any more: the path they belonged to is gone.
void ForgetHighlight();

}  // namespace morva
