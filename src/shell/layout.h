// The main window's controls and their places: one routine for every state.
#pragma once

#include "platform/canvas.h"
#include "platform/events.h"
#include "shell/layout_rects.h"

namespace morva {

// Makes every control of the main window once.
void MakeMainControls();
// Tab follows the plan of the surface that is up, and in it the panels that hand in their stops.
void OrderTabs(const LayoutPlan& plan);
// Places and shows everything for surface, mode and window size.
void Layout();
// The splitter: drags are clamped to 190 to 430.
void DragSplitter(int x);
// Pointer on the bare main window: takes hold of the splitter, or of the edge of the strip below
// the editor. True: used.
bool MainPointer(const platform::PointerEvent& event);
// Of the last layout.
const LayoutAreas& Areas();
// The colour that the main window has under a control at this place.
platform::Colour GroundUnder(const platform::Rect& place);
void ResetLayout();

}  // namespace morva
