// The canvas's transform between pixels and drawing units, wheel, fit and hit tests.

#include "cad/canvas.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

#include "app/command_ids.h"
#include "cad/canvas_parts.h"
#include "cad/sketch.h"
#include "cad/tool_state.h"
#include "platform/window.h"
#include "text/codetext.h"

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
constexpr double kObjectReach = 8;  // pixels
constexpr double kEdgeReach = 10;
constexpr double kShortSegment = 1e-8;  // drawing units
constexpr double kFarPixel = 1e8;       // what lies farther out stays there, as a number

OutlineOf outlines[kMaxItems];

double BaseScale(int width) {
  return (width - kMargin) / BySketchUnit(kRestWidthInch, kRestWidthMm);
}

// Towards zero, as a place on the screen; what is no number lies far out.
int WholePixel(double value) {
  if (!(value > -kFarPixel)) return static_cast<int>(-kFarPixel);
  return static_cast<int>(std::min(value, kFarPixel));
}

double SquareToSegment(double px, double py, double ax, double ay, double bx, double by) {
  double fx = 0;
  double fy = 0;
  FootOnSegment(px, py, ax, ay, bx, by, kShortSegment, fx, fy);
  return (px - fx) * (px - fx) + (py - fy) * (py - fy);
}

bool HitsObject(const SketchObject& object, double x, double y, double tolerance) {
  const double dx = x - object.x;
  const double dy = y - object.y;
  if (object.type == kTypeCircle) {
    return SketchRoot(dx * dx + dy * dy) <= object.size / 2 + tolerance;
  }
  if (object.type == kTypeWorkPoint) return SketchRoot(dx * dx + dy * dy) <= tolerance;
  const double sine = SketchSine(object.angle);
  const double cosine = SketchCosine(object.angle);
  const double u = dx * cosine + dy * sine;
  const double v = dy * cosine - dx * sine;
  switch (object.type) {
    case kTypeLine:
    case kTypeWorkAxis:
      return SketchRoot(SquareToSegment(u, v, 0, 0, object.size, 0)) <= tolerance;
    case kTypeRectangle:
    case kTypeSlot:
      return std::fabs(u) <= object.size / 2 + tolerance &&
             std::fabs(v) <= object.size2 / 2 + tolerance;
    default:
      return false;
  }
}

// Whether an edge within `reach` of the point is possible at all.
bool Near(const OutlineOf& outline, double x, double y, double reach) {
  return x >= outline.minX - reach && x <= outline.maxX + reach && y >= outline.minY - reach &&
         y <= outline.maxY + reach;
}

bool IsVisible(int index) { return !sketch.hidden[index]; }

}  // namespace

const OutlineOf& OutlineAt(int index) {
  OutlineOf& kept = outlines[index];
  const SketchObject& object = sketch.objects[index];
  if (kept.count >= 0 && SameGeometry(kept.object, object)) return kept;
  kept.object = object;
  kept.count = ObjectOutline(object, kept.xs, kept.ys);
  if (kept.count > 0) {
    kept.minX = *std::min_element(kept.xs, kept.xs + kept.count);
    kept.maxX = *std::max_element(kept.xs, kept.xs + kept.count);
    kept.minY = *std::min_element(kept.ys, kept.ys + kept.count);
    kept.maxY = *std::max_element(kept.ys, kept.ys + kept.count);
  }
  return kept;
}

bool BoundsOf(bool (*taken)(int index), Bounds& bounds) {
  bool any = false;
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (!taken(i)) continue;
    const OutlineOf& outline = OutlineAt(i);
    if (outline.count < 1) continue;
    bounds.minX = any ? std::min(bounds.minX, outline.minX) : outline.minX;
    bounds.minY = any ? std::min(bounds.minY, outline.minY) : outline.minY;
    bounds.maxX = any ? std::max(bounds.maxX, outline.maxX) : outline.maxX;
    bounds.maxY = any ? std::max(bounds.maxY, outline.maxY) : outline.maxY;
    any = true;
  }
  return any;
}

platform::Rect CanvasClient() { return platform::ClientArea(kViewCadCanvas); }

double CanvasScale(int width) { return std::max(BaseScale(width) * canvasView.zoom, kLeastScale); }

CanvasTransform TransformFor(const platform::Rect& client) {
  CanvasTransform t;
  t.scale = CanvasScale(platform::RectWidth(client));
  t.halfWidth = platform::RectWidth(client) / 2;
  t.halfHeight = platform::RectHeight(client) / 2;
  return t;
}

platform::Point PlaceIn(const CanvasTransform& t, double x, double y) {
  return {WholePixel(x * t.scale + canvasView.panX) + t.halfWidth,
          WholePixel(canvasView.panY - y * t.scale) + t.halfHeight};
}

platform::PointF ExactPlaceIn(const CanvasTransform& t, double x, double y) {
  return {x * t.scale + canvasView.panX + t.halfWidth,
          canvasView.panY - y * t.scale + t.halfHeight};
}

platform::Point ToCanvas(double x, double y) { return PlaceIn(TransformFor(CanvasClient()), x, y); }

void FromCanvas(int px, int py, double& x, double& y) {
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

int HitObject(double x, double y) {
  const double tolerance = CanvasTolerance(kObjectReach);
  for (int i = sketch.objectCount - 1; i >= 0; --i) {
    if (!sketch.hidden[i] && HitsObject(sketch.objects[i], x, y, tolerance)) return i;
  }
  return -1;
}

int HitEdge(double x, double y) {
  const double tolerance = CanvasTolerance(kEdgeReach);
  double best = tolerance * tolerance;
  int found = -1;
  for (int i = 0; i < sketch.objectCount; ++i) {
    const bool edged = sketch.objects[i].type >= kTypeLine && sketch.objects[i].type <= kTypeSlot;
    if (!edged || sketch.hidden[i] || sketch.locked[i]) continue;
    const OutlineOf& outline = OutlineAt(i);
    if (!Near(outline, x, y, tolerance)) continue;
    for (int k = 0; k + 1 < outline.count; ++k) {
      const double square =
          SquareToSegment(x, y, outline.xs[k], outline.ys[k], outline.xs[k + 1], outline.ys[k + 1]);
      if (square < best || (found < 0 && square == best)) {
        best = square;
        found = i;
      }
    }
  }
  return found;
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

void ShowCursorText(double x, double y) {
  std::u16string text = u"CAD cursor  X ";
  text += SketchNumber(x, 4);
  text += u"  Y ";
  text += SketchNumber(y, 4);
  text += sketch.metric ? u" mm" : u" in";
  const int under = HitObject(x, y);
  if (under >= 0) {
    text += u"  Object ";
    text += IntegerText(under + 1);
    text += u"  size ";
    text += SketchNumber(sketch.objects[under].size, 4);
    if (sketch.locked[under]) text += u" LOCKED";
  }
  SetPassingStatus(text.c_str());
}

}  // namespace morva
