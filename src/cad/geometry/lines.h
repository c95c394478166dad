// Lines of a sketch built from their ends, and the bound of coordinates.
#pragma once

#include "library/sketch_object.h"

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

}  // namespace morva
