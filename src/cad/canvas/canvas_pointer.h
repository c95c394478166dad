// Pointer and keys of the canvas: which tool gets them, and who holds a drag.
//
// A press belongs to whoever takes it until the release, the loss of the capture, or a move
// that tells that the button is up already.
#pragma once

#include <span>

#include "app/key_rows.h"
#include "platform/events.h"

namespace morva {

bool CanvasPointer(const platform::PointerEvent& event);
// What a key does as the left button or a move of the pointer, which itself stays where it is.
void PointByKey(const platform::PointerEvent& event);
bool CanvasKey(const platform::KeyEvent& key);
std::span<const KeyRow> CanvasKeys();  // those that shift and zoom
// The command of a key that the surface answers wherever the keyboard is but in a field, Escape
// and F8 among them; 0 for none.
int SketchShortcut(const platform::KeyEvent& key);
// Once: whether the right button's last click gave up a tool, and so asks for no menu.
bool TakeSpentRightClick();
// The status line's cursor text for a drawing position.
void ShowCursorText(double x, double y);

// A tool is in hand and the pointer inside, or keys point.
bool CrosshairShown();
// Where the last search snapped to, drawing units. False: nowhere.
bool SnapPlace(double& x, double& y);

void RegisterCanvasKeys();
void ResetCanvasPointer();

}  // namespace morva
