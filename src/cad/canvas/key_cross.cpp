#include "cad/canvas/key_cross.h"

#include <algorithm>
#include <cmath>

#include "cad/geometry/canvas_view.h"
#include "cad/geometry/snap.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"

namespace morva {

namespace {

using platform::Point;
using platform::PointF;
using platform::Rect;

constexpr int kFarSteps = 10;
constexpr double kWidestFine = 40;    // pixels
constexpr double kViewMargin = 40;    // pixels that the view keeps around the cross
constexpr double kSameLine = 1e-6;    // of a step: a place that near to a line stands on it
constexpr double kFarthest = 999999;  // drawing units; coordinates stay below kSketchLimit
static_assert(kFarthest < kSketchLimit);

struct Cross {
  bool stands = false;
  bool metric = false;  // the unit of its place
  double x = 0;
  double y = 0;
};
Cross cross;

// What was pointed at last, by the pointer or by the cross.
struct Pointed {
  bool known = false;
  bool byPointer = false;
  bool metric = false;
  double x = 0;
  double y = 0;
};
Pointed pointed;

double FineStep() {
  const double scale = CanvasScale(platform::RectWidth(CanvasClient()));
  double step = SnapGridStep();
  while (step * scale > kWidestFine) step /= 10;
  return step;
}

double NearestLine(double value, double step) { return std::round(value / step) * step; }

// The line that is `count` lines ahead of a value; a value on a line has this one behind it.
double LineAhead(double value, double step, int count) {
  if (count == 0) return value;
  const double lines = value / step;
  const double from = count > 0 ? std::floor(lines + kSameLine) : std::ceil(lines - kSameLine);
  return std::clamp((from + count) * step, -kFarthest, kFarthest);
}

bool PixelInView(double x, double y, Point& at) {
  const Rect client = CanvasClient();
  at = PixelOf(TransformFor(client), x, y);
  return platform::RectHolds(client, at.x, at.y);
}

bool InView(double x, double y) {
  Point at;
  return PixelInView(x, y, at);
}

// The nearest crossing of the drawn grid, where one is in view.
void MiddleOfView(double& x, double& y) {
  const Rect client = CanvasClient();
  FromCanvas(platform::RectWidth(client) / 2, platform::RectHeight(client) / 2, x, y);
  const double grid = CanvasGridStep();
  const double gridX = NearestLine(x, grid);
  const double gridY = NearestLine(y, grid);
  const double step = InView(gridX, gridY) ? grid : FineStep();
  x = NearestLine(x, step);
  y = NearestLine(y, step);
}

void SnapAsAClick(double& x, double& y) {
  SnapPoint(x, y, -1, false);
  if (tools.snapHit && tools.geometryTool != kGeometryTrim) return;
  const double step = FineStep();
  x = NearestLine(x, step);
  y = NearestLine(y, step);
}

// Whole pixels, so that lines of the grid stay as sharp as they are.
void FollowCross() {
  const Rect client = CanvasClient();
  const PointF at = ExactPixelOf(TransformFor(client), cross.x, cross.y);
  const auto shift = [](double pixel, int room) {
    const double margin = std::min(kViewMargin, room / 4.0);
    return std::round(std::clamp(pixel, margin, room - margin) - pixel);
  };
  PanCanvas(shift(at.x, platform::RectWidth(client)), shift(at.y, platform::RectHeight(client)));
}

void Put(double x, double y) {
  cross = {true, sketch.metric, x, y};
  pointed = {true, false, sketch.metric, x, y};
  FollowCross();
}

}  // namespace

bool KeyCross(double& x, double& y) {
  if (!cross.stands || cross.metric != sketch.metric) return false;
  x = cross.x;
  y = cross.y;
  return true;
}

bool KeyCrossPixel(Point& at) {
  double x = 0;
  double y = 0;
  return KeyCross(x, y) && PixelInView(x, y, at);
}

void BeginKeyCross() {
  double x = pointed.x;
  double y = pointed.y;
  if (!pointed.known || pointed.metric != sketch.metric || !InView(x, y)) {
    MiddleOfView(x, y);
  } else if (pointed.byPointer) {
    SnapAsAClick(x, y);
  }
  Put(x, y);
}

void StepKeyCross(int right, int up, CrossStep step) {
  Point at;
  if (!KeyCrossPixel(at)) return BeginKeyCross();
  const double width = step == CrossStep::Fine ? FineStep() : CanvasGridStep();
  const int lines = step == CrossStep::Far ? kFarSteps : 1;
  Put(LineAhead(cross.x, width, right * lines), LineAhead(cross.y, width, up * lines));
}

bool DropKeyCross() {
  const bool stood = cross.stands;
  cross = Cross();
  return stood;
}

void RememberPointed(double x, double y) { pointed = {true, true, sketch.metric, x, y}; }

void ForgetPointed() { pointed = Pointed(); }

void ResetKeyCross() {
  cross = Cross();
  pointed = Pointed();
}

}  // namespace morva
