// Painting the plate's preview.
#pragma once

#include "platform/canvas.h"

namespace morva {

void PaintPlate(platform::Canvas& canvas);

}  // namespace morva
