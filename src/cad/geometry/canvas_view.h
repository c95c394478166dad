// The view of the canvas: pixels and drawing units, zoom, pan, fit.
#pragma once

#include <cstdint>

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
// Until UnpinPixel, FromCanvas tells exactly this place for its pixel: a cross that keys move
// stands on lines of a grid, between pixels.
void PinPixel(platform::Point pixel, double x, double y);
void UnpinPixel();
// `pixels` at this zoom in drawing units: pixels * 10 / (max(w, 41) - 40) / zoom inch, 250 for mm.
double CanvasTolerance(double pixels);

platform::Rect CanvasClient();
double CanvasGridStep();  // of the grid that is drawn, drawing units

// The transform for one client area, taken once for many points.
struct CanvasTransform {
  double scale = 1;
  int halfWidth = 0;
  int halfHeight = 0;
};
CanvasTransform TransformFor(const platform::Rect& client);
platform::Point PixelOf(const CanvasTransform& t, double x, double y);
// With fractions, so that curves stay round; within a pixel of PixelOf.
platform::PointF ExactPixelOf(const CanvasTransform& t, double x, double y);

void CanvasFit();
void CanvasReset();  // zoom 1, no pan
void SetCanvasZoom(double zoom);
void PanCanvas(double dx, double dy);  // pixels
void ZoomAt(int px, int py, int notches);
// The left button pans while it is on, and the pointer shows a hand.
void SetPanTool(bool on);
// Pan is given up for another tool.
void EndPanTool();
void ResetCanvasView();

}  // namespace morva
