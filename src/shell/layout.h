// The main window's controls and their places: one routine for every state.
#pragma once

#include "platform/events.h"
#include "platform/geometry.h"

namespace morva {

// Makes every control of the main window once.
void MakeMainControls();
// Tab follows the screen of this surface.
void OrderTabs(int surface);
// Places and shows everything for surface, mode and window size.
void Layout();
// The surfaces and modes.
void SetMode(int mode);
void SetSurface(int surface);
void GoBack();
// Whether a mode's panel exists already; a row for a mode still to come is drawn dim.
bool ModeExists(int mode);
// The splitter: drags are clamped to 190 to 430.
void DragSplitter(int x);
// Pointer on the bare main window: takes hold of the splitter. True: used.
bool MainPointer(const platform::PointerEvent& event);
// Areas that the main window paints itself, for the last layout.
struct LayoutAreas {
  platform::Rect topBand;
  platform::Rect leftPanel;
  platform::Rect workArea;
  platform::Rect rightPanel;
  platform::Rect editor;     // the code editor alone
  platform::Rect work;       // from the gutter to the right, down to the editor's lower edge
  platform::Rect foot;       // the code index's page beside the output, empty without it
  platform::Rect leftLower;  // feature list, its keys, name box and hint
  platform::Rect panelBody;  // where a right panel's own controls go
  platform::Rect output;
  platform::Rect separator;  // the line between mode list and features
  platform::Rect workspace;  // the CAD or plate workspace, instead of all below the tabs
  platform::Rect status;     // the band under the status line
};
const LayoutAreas& Areas();
void RegisterShellCommands();
void ResetShell();

}  // namespace morva
