// Selecting, the rubber band, and dragging geometry by its body or its handles.
#pragma once

#include "platform/events.h"
#include "platform/geometry.h"

namespace morva {

// Canvas events with no tool active, in canvas pixels. True: used.
bool SelectPress(const platform::PointerEvent& event);
bool SelectMove(const platform::PointerEvent& event);
bool SelectRelease(const platform::PointerEvent& event);
void SelectCaptureLost();
// Escape: takes back a drag that has moved. True: used.
bool SelectEscape();
bool SelectDragging();

// The rubber band in canvas pixels. False: none.
bool RubberBand(platform::Rect& band);
// The pixel places of the selected object's handles; their count, 0 to 9.
int SelectionHandles(platform::PointF* points);

void RegisterSelectDrag();
void ResetSelectDrag();

}  // namespace morva
