// The drawings of the 42 icons.
#pragma once

#include "app/icon_names.h"
#include "platform/canvas.h"

namespace morva {

// The drawing of an icon on its grid of 24 units; empty out of 0 to 41. See icons.cpp.
const char* IconDrawing(int icon);
// One of the 42 icons, ids 0 to 41, `size` pixels high.
void DrawIcon(platform::Canvas& canvas, int icon, int centreX, int centreY, int size,
              platform::Colour colour);

}  // namespace morva
