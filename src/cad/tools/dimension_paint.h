// The labels of dimensions, computed from the objects at each paint.
#pragma once

#include "platform/canvas.h"
#include "platform/geometry.h"

namespace morva {

// Labels and their rectangles, and the pair of a reference measure.
void PaintDimensions(platform::Canvas& canvas);

// Where a label of an object, 0 or 1, stood at the last paint, in canvas pixels; empty when it
// was not painted.
inline constexpr int kDimensionLabels = 2;
platform::Rect DimensionLabel(int index, int label);
void ForgetDimensionLabels();

}  // namespace morva
