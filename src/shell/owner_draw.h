// The parts of owner drawing that other files of the shell share.
#pragma once

#include "platform/canvas.h"

namespace morva {

// The visible mark of the keyboard: a bright frame inside the edge.
void DrawFocusMark(platform::Canvas& canvas, const platform::Rect& area);

}  // namespace morva
