#include "cad/select_drag.h"

namespace morva {

bool SelectPress(const platform::PointerEvent&) { return false; }
bool SelectMove(const platform::PointerEvent&) { return false; }
bool SelectRelease(const platform::PointerEvent&) { return false; }
void SelectCaptureLost() {}
bool SelectEscape() { return false; }
bool SelectDragging() { return false; }
bool RubberBand(platform::Rect&) { return false; }
int SelectionHandles(platform::PointF*) { return 0; }
void ResetSelectDrag() {}

}  // namespace morva
