// The workspace as a surface of the window: what it is told while it is up, and what reaches the
// tools from any of its controls.
#pragma once

#include "platform/events.h"

namespace morva {

// The right mouse button, wherever it is, gives up the tool in hand. True: there was one, and the
// click is used up.
bool CadRightClick();
// A context menu is asked for on a control of the surface, at main-window pixels. True: shown.
bool CadContextMenu(int id, int row, int x, int y);
// The popup of the selected geometry.
void ShowCadMenu(int x, int y);
// A key on any control of the surface, before it gets it. True: used.
bool CadKey(int id, const platform::KeyEvent& key);
void CadFocusChanged(int id, bool gained);
// The keyboard on the canvas.
void FocusCadCanvas();

void RegisterCadSurface();  // the window of the workspace too

}  // namespace morva
