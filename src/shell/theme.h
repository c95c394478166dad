// The dark look: palette, panel gradients and owner drawing.
//
// Drawing is a pure function from a control's state to canvas calls.
#pragma once

#include "app/palette.h"
#include "platform/canvas.h"
#include "platform/events.h"

namespace morva {

enum PanelStyle { kPanelPlain = 0, kPanelGreen = 1, kPanelAmber = 2, kPanelDeep = 3 };

void DrawPanel(platform::Canvas& canvas, const platform::Rect& area, bool selected,
               PanelStyle style);
// Every owner-drawn control and list row.
void DrawOwnerItem(int id, const platform::DrawState& state, platform::Canvas& canvas);
// The mark of the top band as the window's icon, over the whole canvas.
void PaintWindowIcon(platform::Canvas& canvas);
// Panels and top band of the main window.
void PaintMainWindow(platform::Canvas& canvas);

}  // namespace morva
