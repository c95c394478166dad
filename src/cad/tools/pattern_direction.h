// The directions of a rectangular pattern, taken from the drawing or turned round.
#pragma once

namespace morva {

// The click that ends a pick of a direction: drawing units. True: an edge was under the click and
// its direction stands in the field.
bool PatternDirectionClick(double x, double y);
// By 180 degrees; `command` is the key of the first or of the second direction.
void ReversePatternDirection(int command);

}  // namespace morva
