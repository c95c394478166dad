// Keys that the code editor answers before the control sees them, and the gutter beside it.
#pragma once

#include "platform/canvas.h"
#include "platform/events.h"

namespace morva {

// True: handled.
bool EditorKey(int id, const platform::KeyEvent& key);
void PaintGutter(platform::Canvas& canvas);
void RegisterCodeToolCommands();

}  // namespace morva
