// The CAD canvas: painting, pointer, keys and the 3D view.
#pragma once

#include "platform/canvas.h"
#include "platform/events.h"

namespace morva {

void PaintCanvas(platform::Canvas& canvas);
bool CanvasPointer(const platform::PointerEvent& event);
bool CanvasKey(const platform::KeyEvent& key);
void CanvasTimer(int timer);  // a step of the 3D view's turning
void EnterModelView();        // reads and checks the thickness field
// Once: whether the right button's last click gave up a tool, and so asks for no menu.
bool TakeSpentRightClick();
// The status line's cursor text for a drawing position.
void ShowCursorText(double x, double y);

void RegisterCanvas();
void ResetCanvas();

}  // namespace morva
