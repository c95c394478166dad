// What a builder's preview adds to the toolpath view: swept ground, the marker, the cross of a
// pick.
#pragma once

#include <string>

#include "platform/canvas.h"
#include "simulator/view.h"

namespace morva {

// Below everything that stands on the ground.
void PaintCoverage(platform::Canvas& canvas, const Projection& p);
// On top of everything.
void PaintPreviewMarks(platform::Canvas& canvas, const Projection& p);

// Legend of the swept ground, empty where none is painted.
std::u16string CoverageWords();

}  // namespace morva
