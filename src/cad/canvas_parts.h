// What the files of the canvas share; not for other rooms.
#pragma once

#include "platform/canvas.h"
#include "platform/events.h"

namespace morva {

// A tool is in hand and the pointer inside.
bool CrosshairShown();
// Where the last search snapped to, drawing units. False: nowhere.
bool SnapPlace(double& x, double& y);

// The command of a key that the surface answers wherever the keyboard is but in a field, Escape
// and F8 among them; 0 for none.
int SketchShortcut(const platform::KeyEvent& key);

bool ModelPointer(const platform::PointerEvent& event);
void PaintModel(platform::Canvas& canvas);
void RegisterModelView();
void ResetModelView();

}  // namespace morva
