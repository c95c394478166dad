#include "cad/canvas.h"
#include "cad/canvas_parts.h"

namespace morva {
void CanvasTimer(int) {}
void EnterModelView() {}
void LeaveModelView() { canvasView.modelView = false; }
bool ModelPointer(const platform::PointerEvent&) { return true; }
void PaintModel(platform::Canvas&) {}
void RegisterModelView() {}
void ResetModelView() {}
}  // namespace morva
