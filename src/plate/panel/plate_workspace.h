// The plate workspace's window: keys of the plate, its form, the tabs and the preview, the features
// and their editors.
//
// Made at first use, kept to the end; hidden while another surface is up.
#pragma once

#include "platform/geometry.h"

namespace morva {

// Makes it once and stages the program's plate, then shows it in `area` of the main window.
void ShowPlateWorkspace(const platform::Rect& area);
void HidePlateWorkspace();
// What changed since the last call comes into fields, list and keys; nothing during a drag.
void RefreshPlateWorkspace();
// The help line again, behind the help of a key.
void ShowPlateHint();

void RegisterPlateWorkspace();
void ResetPlateWorkspace();

}  // namespace morva
