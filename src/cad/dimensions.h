// Dimensions: labels that are computed at each paint, driving values, and the reference measure.
#pragma once

#include "platform/canvas.h"
#include "platform/events.h"

namespace morva {

void EnterDimensionMode(bool measure);
void ShowDimensionValue();
// The value as the object's size of that part. False: refused, nothing changed, no message.
bool ApplyDimension(int index, int part, double value);
// A left press with dimension or measure mode on, in canvas pixels. True: used.
bool DimensionPress(const platform::PointerEvent& event);
// Labels and their rectangles, and the pair of a reference measure.
void PaintDimensions(platform::Canvas& canvas);

void RegisterDimensions();
void ResetDimensions();

}  // namespace morva
