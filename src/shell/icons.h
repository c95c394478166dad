// The drawings of the 42 icons.
#pragma once

#include "app/icon_names.h"

namespace morva {

// The drawing of an icon on its grid of 24 units; empty out of 0 to 41. See icons.cpp.
const char* IconDrawing(int icon);

}  // namespace morva
