// The CAD workspace's window: tool strip, drawing tabs, lists, side panels, canvas.
//
// Made at first use, kept to the end; hidden while another surface is up. Its form makes the
// controls of the panels; the others are made here. What they do belongs to the other files of the
// room.
#pragma once

#include "platform/geometry.h"

namespace morva {

bool CadWindowExists();
// Makes it once and stages the program's drawing, then shows it in `area` of the main window.
void ShowCadWorkspace(const platform::Rect& area);
void HideCadWorkspace();
int ShownCadPanel();  // a PanelMode
// The keys of the pattern form, by the block under edit; nothing before the window is made.
void RefreshCadKeys();

void RegisterWorkspace();  // its hooks, handlers and form, the key of the cutting data
void ResetWorkspace();

}  // namespace morva
