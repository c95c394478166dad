// Pointer and keys of the canvas: which tool gets them, and who holds a drag.
//
// A press belongs to whoever takes it until the release, the loss of the capture, or a move
// that tells that the button is up already.
#pragma once

#include <span>
#include <string>

#include "app/key_rows.h"
#include "platform/events.h"
#include "platform/geometry.h"

namespace morva {

bool CanvasPointer(const platform::PointerEvent& event);
bool CanvasKey(const platform::KeyEvent& key);
std::span<const KeyRow> CanvasKeys();  // the cross, and those that shift and zoom
// The command of a key that the surface answers wherever the keyboard is but in a field, Escape
// and F8 among them; 0 for none.
int SketchShortcut(const platform::KeyEvent& key);
// Once: whether the right button's last click gave up a tool, and so asks for no menu.
bool TakeSpentRightClick();
// The status line's cursor text for a drawing position.
void ShowCursorText(double x, double y);
// The place and the object there, as that text tells them.
std::u16string CursorWords(double x, double y);

// The pixel of the cross that keys move, else of the pointer; -1 where the pointer has left.
platform::Point CanvasCursor();
// A tool is in hand and the pointer inside, or keys have moved a cross into view.
bool CrosshairShown();
// Where the last search snapped to, drawing units. False: nowhere.
bool SnapPlace(double& x, double& y);

void RegisterCanvasKeys();
void ResetCanvasPointer();

}  // namespace morva
