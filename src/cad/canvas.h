// The CAD canvas: pixels and drawing units, hit tests, painting, wheel, pan and the 3D view.
#pragma once

#include <cstdint>

#include "platform/canvas.h"
#include "platform/events.h"
#include "platform/geometry.h"

namespace morva {

struct CanvasView {
  double zoom = 1;  // 0.1 to 40
  double panX = 0;  // pixels
  double panY = 0;
  bool modelView = false;  // the 3D view
  double modelYaw = 0;     // degrees
  double modelPitch = 90;  // 90: the plan
  double modelRoll = 0;
  bool modelViewTouched = false;
  bool panTool = false;       // left button pans
  std::int32_t cursorX = -1;  // last pixel, -1 when the pointer left
  std::int32_t cursorY = -1;
};
extern CanvasView canvasView;

// Pixels a drawing unit, never below 0.01, for a client of this width.
double CanvasScale(int width);
platform::Point ToCanvas(double x, double y);
void FromCanvas(int px, int py, double& x, double& y);
// `pixels` at this zoom in drawing units: pixels * 10 / (max(w, 41) - 40) / zoom inch, 250 for mm.
double CanvasTolerance(double pixels);

// Topmost object under a drawing position, -1 for none; insides of closed shapes count.
int HitObject(double x, double y);
// Nearest edge within 10 pixels, of visible, unlocked objects of types 0 to 3; -1 for none.
int HitEdge(double x, double y);

void CanvasFit();
void CanvasReset();  // zoom 1, no pan
void PaintCanvas(platform::Canvas& canvas);
bool CanvasPointer(const platform::PointerEvent& event);
bool CanvasKey(const platform::KeyEvent& key);
void CanvasTimer(int timer);  // a step of the 3D view's turning
void EnterModelView();        // reads and checks the thickness field
void LeaveModelView();
// Once: whether the right button's last click gave up a tool, and so asks for no menu.
bool TakeSpentRightClick();
// Pan is given up for another tool.
void EndPanTool();
// The status line's cursor text for a drawing position.
void ShowCursorText(double x, double y);

void RegisterCanvas();
void ResetCanvas();

}  // namespace morva
