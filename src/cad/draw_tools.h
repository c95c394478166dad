// Draw tools: drag creation, construction by points, typed sizes, polygons.
//
// Positions are in drawing units unless they are called pixels. All geometry ends up as one
// object appended to the live sketch; a polygon as one line a side.
#pragma once

#include "platform/canvas.h"
#include "platform/events.h"

namespace morva {

// A method of the flyouts, 0x60E to 0x640; 0x636 and 0x637 enter dimension mode.
void StartMethod(int command);
// 0 select, 1 to 6 type plus 1.
void StartDragTool(int tool);
// Every tool, pick, preview and panel given up, floating boxes hidden; the focus on the canvas.
void CancelTools();

// Canvas events, in canvas pixels. True: used.
bool DrawToolPress(const platform::PointerEvent& event);
bool DrawToolMove(const platform::PointerEvent& event);
bool DrawToolRelease(const platform::PointerEvent& event);
void DrawToolCaptureLost();
bool DrawToolKey(const platform::KeyEvent& key);  // Tab, Enter, Escape
// The floating number boxes: Enter, Tab and Escape in them. True: used.
bool SizeBoxKey(const platform::KeyEvent& key);
// The ground below the number boxes and their frames; nothing while they are hidden.
void PaintSizeBoxes(platform::Canvas& canvas);
// Creates the previewed object with the sizes in the boxes. From the button a failure is told,
// from the Enter key it is silent.
bool CommitTypedSize(bool fromButton);

// Closed lines of a fresh group. False: refused, the status says why.
bool CreatePolygon(int sides, double radius, double centreX, double centreY, double startAngle);

// The popup of a tool key's methods.
void ShowFlyout(int keyId);
// The Down key on a tool key opens its popup. True: used.
bool FlyoutKey(int keyId, const platform::KeyEvent& key);

void RegisterDrawTools();
void ResetDrawTools();

}  // namespace morva
