#include "cad/geometry/canvas_view.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "app/command_ids.h"
#include "cad/geometry/outlines.h"
#include "cad/model/sketch.h"
#include "platform/window.h"

namespace morva {

CanvasView canvasView;

namespace {

constexpr int kMargin = 40;            // pixels of the width that the rest view leaves free
constexpr double kRestWidthInch = 10;  // drawing units across at zoom 1
constexpr double kRestWidthMm = 250;
constexpr double kLeastScale = 0.01;  // pixels a unit; a narrow window keeps a direction
constexpr double kLeastZoom = 0.1;
constexpr double kMostZoom = 40;
constexpr double kWheelIn = 1.15;
constexpr double kWheelOut = 0.8695652173913044;  // 1 / 1.15
constexpr int kMostNotches = 100;                 // the zoom is at a limit long before
constexpr double kFitMarginX = 150;               // pixels that a fit leaves free
constexpr double kFitMarginY = 120;
constexpr double kFitSpanInch = 0.1;  // least side of what is fitted
constexpr double kFitSpanMm = 2.5;
constexpr double kGridInch = 0.4;
constexpr double kGridMm = 10;
constexpr double kFarPixel = 1e8;  // what lies farther out stays there, as a number

// The pixel that means one exact place.
struct Pin {
  bool set = false;
  platform::Point at;
  double x = 0;
  double y = 0;
};
Pin pin;

double BaseScale(int width) {
  return (width - kMargin) / BySketchUnit(kRestWidthInch, kRestWidthMm);
}

// Towards zero, as a place on the screen; what is no number lies far out.
int WholePixel(double value) {
  if (!(value > -kFarPixel)) return static_cast<int>(-kFarPixel);
  return static_cast<int>(std::min(value, kFarPixel));
}

bool IsVisible(int index) { return !sketch.hidden[index]; }

}  // namespace

double CanvasGridStep() { return BySketchUnit(kGridInch, kGridMm); }

platform::Rect CanvasClient() { return platform::ClientArea(kViewCadCanvas); }

double CanvasScale(int width) { return std::max(BaseScale(width) * canvasView.zoom, kLeastScale); }

CanvasTransform TransformFor(const platform::Rect& client) {
  CanvasTransform t;
  t.scale = CanvasScale(platform::RectWidth(client));
  t.halfWidth = platform::RectWidth(client) / 2;
  t.halfHeight = platform::RectHeight(client) / 2;
  return t;
}

platform::Point PixelOf(const CanvasTransform& t, double x, double y) {
  return {WholePixel(x * t.scale + canvasView.panX) + t.halfWidth,
          WholePixel(canvasView.panY - y * t.scale) + t.halfHeight};
}

platform::PointF ExactPixelOf(const CanvasTransform& t, double x, double y) {
  return {x * t.scale + canvasView.panX + t.halfWidth,
          canvasView.panY - y * t.scale + t.halfHeight};
}

platform::Point ToCanvas(double x, double y) { return PixelOf(TransformFor(CanvasClient()), x, y); }

void PinPixel(platform::Point pixel, double x, double y) { pin = {true, pixel, x, y}; }

void UnpinPixel() { pin = Pin(); }

void FromCanvas(int px, int py, double& x, double& y) {
  if (pin.set && px == pin.at.x && py == pin.at.y) {
    x = pin.x;
    y = pin.y;
    return;
  }
  const platform::Rect client = CanvasClient();
  const int w = platform::RectWidth(client);
  const double scale = CanvasScale(w);
  x = (px - w / 2.0 - canvasView.panX) / scale;
  y = (platform::RectHeight(client) / 2.0 - py + canvasView.panY) / scale;
}

double CanvasTolerance(double pixels) {
  const int width = std::max(platform::RectWidth(CanvasClient()), kMargin + 1);
  return pixels * BySketchUnit(kRestWidthInch, kRestWidthMm) / (width - kMargin) / canvasView.zoom;
}

void CanvasReset() {
  canvasView.zoom = 1;
  canvasView.panX = 0;
  canvasView.panY = 0;
  platform::Repaint(kViewCadCanvas);
}

void CanvasFit() {
  if (canvasView.modelView) {
    canvasView.zoom = 1;  // at which the model fills its view
    platform::Repaint(kViewCadCanvas);
    return;
  }
  CanvasReset();
  Bounds shown;
  if (!BoundsOf(IsVisible, shown)) return;
  const platform::Rect client = CanvasClient();
  const int width = platform::RectWidth(client);
  const double base = BaseScale(width);
  if (base <= 0) return;  // a client too narrow to show anything
  const double least = BySketchUnit(kFitSpanInch, kFitSpanMm);
  const double across =
      std::max(1.0, width - kFitMarginX) / std::max(shown.maxX - shown.minX, least);
  const double down = std::max(1.0, platform::RectHeight(client) - kFitMarginY) /
                      std::max(shown.maxY - shown.minY, least);
  canvasView.zoom = std::clamp(std::min(across, down) / base, kLeastZoom, kMostZoom);
  const double scale = CanvasScale(width);
  canvasView.panX = -(shown.minX + shown.maxX) / 2 * scale;
  canvasView.panY = (shown.minY + shown.maxY) / 2 * scale;
}

void SetCanvasZoom(double zoom) { canvasView.zoom = zoom; }

void PanCanvas(double dx, double dy) {
  canvasView.panX += dx;
  canvasView.panY += dy;
}

void ResetCanvasView() {
  canvasView = CanvasView();
  UnpinPixel();
}

void ZoomAt(int px, int py, int notches) {
  if (notches == 0) return;
  double x = 0;
  double y = 0;
  FromCanvas(px, py, x, y);
  const int steps = std::abs(std::clamp(notches, -kMostNotches, kMostNotches));
  for (int i = 0; i < steps; ++i) {
    const double factor = notches > 0 ? kWheelIn : kWheelOut;
    canvasView.zoom = std::clamp(canvasView.zoom * factor, kLeastZoom, kMostZoom);
  }
  const platform::Rect client = CanvasClient();
  const double scale = CanvasScale(platform::RectWidth(client));
  canvasView.panX = px - platform::RectWidth(client) / 2.0 - x * scale;
  canvasView.panY = py - platform::RectHeight(client) / 2.0 + y * scale;
  platform::Repaint(kViewCadCanvas);
}

void SetPanTool(bool on) {
  canvasView.panTool = on;
  platform::SetPointerShape(kViewCadCanvas,
                            on ? platform::PointerShape::Hand : platform::PointerShape::Arrow);
  platform::Repaint(kViewCadCanvas);
}

void EndPanTool() {
  if (canvasView.panTool) SetPanTool(false);
}

}  // namespace morva
