// The CAD workspace's window: band, tool strip, lists, side panels that scroll, canvas.
//
// Made at first use, kept to the end; hidden while another surface is up.
#pragma once

#include "platform/geometry.h"

namespace morva {

bool CadWindowExists();
// Makes it once and stages the program's drawing, then shows it over the client area.
void ShowCadWorkspace(const platform::Rect& client);
void HideCadWorkspace();
void PlaceCadWorkspace(const platform::Rect& client);
// Shows the panel of tools.panelMode and hides the others.
void RefreshCadPanel();
// "Generate" or "Update" and the pattern key, by the block under edit.
void RefreshCadKeys();

void RegisterCad();  // every file of this room, once at start-up
void ResetCad();

}  // namespace morva
