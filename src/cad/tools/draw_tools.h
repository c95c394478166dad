// Draw tools: drag creation, and which tool gets the events of the canvas.
//
// Positions are in drawing units unless they are called pixels. All geometry ends up as one
// object appended to the live sketch; a polygon as one line a side.
#pragma once

#include <span>

#include "app/key_rows.h"
#include "library/sketch_object.h"
#include "platform/events.h"

namespace morva {

// Numbers of drag tools: type plus 1.
inline constexpr int kSlotTool = kTypeSlot + 1;
inline constexpr int kPointTool = kTypeWorkPoint + 1;
inline constexpr int kAxisTool = kTypeWorkAxis + 1;

// A method of the flyouts, 1550 to 1600; 1590 and 1591 enter dimension mode.
void StartMethod(int command);
// 0 select, 1 to 6 type plus 1.
void StartDragTool(int tool);

// Canvas events, in canvas pixels. True: used.
bool DrawToolPress(const platform::PointerEvent& event);
bool DrawToolMove(const platform::PointerEvent& event);
bool DrawToolRelease(const platform::PointerEvent& event);
void DrawToolCaptureLost();
bool DrawToolKey(const platform::KeyEvent& key);  // Tab, Enter, Escape
std::span<const KeyRow> DrawToolKeys();

void ResetDrawTools();

}  // namespace morva
