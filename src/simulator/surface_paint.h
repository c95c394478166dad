// The picture of the cut surface, and what the view says under it.
#pragma once

#include <string_view>

#include "platform/canvas.h"
#include "simulator/view.h"

namespace morva {

// A wire mesh of rows and columns; of an example every fourth one. Nothing where none is shown.
void PaintCutSurface(platform::Canvas& canvas, const Projection& p);
// What the surface is worth, or what an example shows; empty where no surface is shown.
std::u16string_view SurfaceCaption();

}  // namespace morva
