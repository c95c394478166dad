// What drawing and editing share: lines built from their ends, and the bound of coordinates.
#pragma once

#include "cad/sketch.h"

namespace morva {

// A line or axis from a to b: anchor, size and angle; type, group and size2 stay.
void SetLineEnds(SketchObject& line, double ax, double ay, double bx, double by);
// Side 0 to 3 of a rectangle as an ungrouped line, from its corner of that number on. Its end is
// the next corner to the last bit but for the rounding of a quarter turn.
SketchObject RectangleSide(const SketchObject& rectangle, int side);
double PlainDistance(double ax, double ay, double bx, double by);
// Whether position and sizes are below 1,000,000 in size and the angle can be stored. False for
// no number.
bool WithinSketchLimit(const SketchObject& object);
// The status of an edit that would pass that bound.
void TellSketchLimit();
// Gives an object's part the other value of the object's flag: one undo step and the log line.
// Nothing without such an object.
void TogglePartFlag(ObjectFlag flag, int index, const char16_t* logged);
inline constexpr const char16_t* kVisibilityChanged = u"Visibility changed";
// Marks of what lies under the pointer, which hold indices, given up after objects moved up.
void ForgetIndices();

}  // namespace morva
