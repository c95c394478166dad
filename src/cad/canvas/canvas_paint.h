// Painting of the sketch in 2D: grid, axes, objects, selection, previews and what marks the
// cursor. A pure function of the records.
#pragma once

#include "platform/canvas.h"

namespace morva {

// The sketch as it is drawn, or the 3D view.
void PaintCanvas(platform::Canvas& canvas);

}  // namespace morva
