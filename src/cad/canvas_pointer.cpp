// Pointer and keys of the canvas: who of the rooms gets them, and in which order.

#include "app/command_ids.h"
#include "cad/canvas.h"
#include "cad/canvas_parts.h"

namespace morva {
bool CanvasPointer(const platform::PointerEvent& event) {
  if (event.action == platform::PointerAction::Wheel) {
    ZoomAt(event.x, event.y, event.wheel);
    return true;
  }
  return false;
}
bool CanvasKey(const platform::KeyEvent&) { return false; }
void RegisterCanvas() {}
}  // namespace morva
