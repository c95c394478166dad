#include "cad/canvas.h"

namespace morva {
void PaintCanvas(platform::Canvas&) {}
}  // namespace morva
