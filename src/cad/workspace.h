// The CAD workspace's window: tool strip, drawing tabs, lists, side panels, canvas.
//
// Made at first use, kept to the end; hidden while another surface is up. All controls are made
// here; what they do belongs to the other files of the room.
#pragma once

#include "platform/events.h"
#include "platform/geometry.h"

namespace morva {

bool CadWindowExists();
// Makes it once and stages the program's drawing, then shows it in `area` of the main window.
void ShowCadWorkspace(const platform::Rect& area);
void HideCadWorkspace();
// The keyboard on the canvas.
void FocusCadCanvas();
// "Generate" or "Update" and the pattern key, by the block under edit.
void RefreshCadKeys();

// What the surface is told while it is up. The right mouse button, wherever it is: gives up the
// tool in hand. True: there was one, and the click is used up.
bool CadRightClick();
// A context menu is asked for on a control of the surface, at main-window pixels. True: shown.
bool CadContextMenu(int id, int row, int x, int y);
// The popup of the selected geometry.
void ShowCadMenu(int x, int y);
// A key on any control of the surface, before it gets it. True: used.
bool CadKey(int id, const platform::KeyEvent& key);
void CadFocusChanged(int id, bool gained);

void RegisterCad();         // every file of this room, once at start-up
void RegisterCadSurface();  // the part of it that makes the workspace a surface
void ResetCad();

}  // namespace morva
