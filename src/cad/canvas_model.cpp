#include "cad/canvas.h"

namespace morva {
void CanvasTimer(int) {}
void EnterModelView() {}
void LeaveModelView() {}
}  // namespace morva
