// Dimensions: labels that are computed at each paint, driving values, and the reference measure.
//
// No dimension is stored: a label shows the size that its object has, and a value that is typed
// becomes that size. A reference measure shows a distance and never changes anything.
#pragma once

#include "platform/events.h"

namespace morva {

void EnterDimensionMode(bool measure);
// The selected object's size of tools.dimensionPart into the value box, 4 decimals.
void ShowDimensionValue();
// Makes `value`, above 0 and below 1,000,000 in the sketch's unit, the object's size. `part` is
// 0 for a length, width or diameter, 1 for a rectangle's height or a slot's width, 2 for a
// circle's radius. One undo step. False: refused, nothing changed, no message.
bool ApplyDimension(int index, int part, double value);
// A left press with dimension or measure mode on, in canvas pixels. True: used.
bool DimensionPress(const platform::PointerEvent& event);

void RegisterDimensions();
void ResetDimensions();

}  // namespace morva
