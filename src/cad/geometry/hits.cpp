#include "cad/geometry/hits.h"

#include <cmath>

#include "cad/geometry/canvas_view.h"
#include "cad/geometry/outlines.h"
#include "cad/model/sketch.h"
#include "library/outline.h"

namespace morva {

namespace {

constexpr double kObjectReach = 8;  // pixels
constexpr double kEdgeReach = 10;
constexpr double kShortSegment = 1e-8;  // drawing units

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
      return SketchRoot(FootOnSegment({u, v}, {0, 0}, {object.size, 0}, kShortSegment).square) <=
             tolerance;
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

}  // namespace

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
      const double square = FootOnSegment({x, y}, {outline.xs[k], outline.ys[k]},
                                          {outline.xs[k + 1], outline.ys[k + 1]}, kShortSegment)
                                .square;
      if (square < best || (found < 0 && square == best)) {
        best = square;
        found = i;
      }
    }
  }
  return found;
}

}  // namespace morva
