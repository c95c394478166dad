// The plate workspace as a surface of the main window.
#pragma once

#include "app/mode_table.h"

namespace morva {

extern const ModeRow kPlateMode;  // what the window says of it

void RegisterPlateSurface();

}  // namespace morva
