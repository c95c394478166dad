#include "simulator/tool_model.h"

#include <algorithm>
#include <cmath>

#include "app/palette.h"
#include "simulator/preview_state.h"
#include "simulator/shown_path.h"
#include "simulator/view_parts.h"

namespace morva {

namespace {

using platform::Canvas;
using platform::Colour;
using platform::PointF;

constexpr int kRingPoints = 24;
constexpr int kTipRings = 6;                // of a ball; straight flanks need two
constexpr int kSolidRings = kTipRings + 1;  // and the end of the flutes
constexpr double kFullTurn = 6.283185307179586;

// A turned solid without hollows: circles about the tool's axis. Its picture is the outline
// around all of them.
struct Solid {
  int rings = 0;
  double heights[kSolidRings];  // above the tip
  double radii[kSolidRings];
};

void AddRing(Solid& solid, double height, double radius) {
  solid.heights[solid.rings] = height;
  solid.radii[solid.rings++] = radius;
}

Solid CuttingPart(const Cutter& cutter) {
  Solid solid;
  const double radius = cutter.diameter / 2;
  for (int i = 0; i < kTipRings; ++i) {
    // Rings of a ball stand closer where it is flat.
    const double distance = radius * std::sin(kFullTurn / 4 * i / (kTipRings - 1));
    AddRing(solid, ToolTipHeight(cutter.shape, radius, distance), distance);
  }
  AddRing(solid, std::max(cutter.fluteLength, solid.heights[kTipRings - 1]), radius);
  return solid;
}

Solid Shank(const Cutter& cutter, const Solid& cutting) {
  Solid solid;
  const double from = cutting.heights[cutting.rings - 1];
  AddRing(solid, from, cutter.diameter / 2);
  AddRing(solid, std::max(cutter.overallLength, from), cutter.diameter / 2);
  return solid;
}

void RingOnScreen(const ToolModel& model, const Projection& p, double height, double radius,
                  PointF* out) {
  for (int i = 0; i < kRingPoints; ++i) {
    const double turn = kFullTurn * i / kRingPoints;
    out[i] = Project(p, model.x + radius * std::cos(turn), model.y + radius * std::sin(turn),
                     model.z + height);
  }
}

// Above 0 where the way from a over b to c turns left.
double Turn(const PointF& a, const PointF& b, const PointF& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

// The outline around points, which are sorted by it. Room for one more than there are points.
int OutlineAround(PointF* points, int count, PointF* out) {
  std::sort(points, points + count, [](const PointF& a, const PointF& b) {
    return a.x < b.x || (a.x == b.x && a.y < b.y);
  });
  int size = 0;
  for (int i = 0; i < count; ++i) {
    while (size >= 2 && Turn(out[size - 2], out[size - 1], points[i]) <= 0) --size;
    out[size++] = points[i];
  }
  const int lower = size + 1;
  for (int i = count - 2; i >= 0; --i) {
    while (size >= lower && Turn(out[size - 2], out[size - 1], points[i]) <= 0) --size;
    out[size++] = points[i];
  }
  return size - 1;  // the first point closes it
}

platform::Pen EdgePen() {
  platform::Pen pen;
  pen.colour = kPathToolEdge;
  pen.smooth = true;
  return pen;
}

void PaintSolid(Canvas& canvas, const ToolModel& model, const Projection& p, const Solid& solid,
                Colour fill) {
  constexpr int kSolidPoints = kRingPoints * kSolidRings;
  PointF points[kSolidPoints];
  PointF outline[kSolidPoints + 1];
  for (int i = 0; i < solid.rings; ++i) {
    RingOnScreen(model, p, solid.heights[i], solid.radii[i], points + i * kRingPoints);
  }
  const int count = OutlineAround(points, solid.rings * kRingPoints, outline);
  if (count > 2) PaintPolygon(canvas, outline, count, fill, EdgePen());
}

// The end of a solid that looks at the user.
void PaintEnd(Canvas& canvas, const ToolModel& model, const Projection& p, const Solid& solid,
              int ring, Colour fill) {
  PointF points[kRingPoints];
  RingOnScreen(model, p, solid.heights[ring], solid.radii[ring], points);
  if (solid.radii[ring] > 0) PaintPolygon(canvas, points, kRingPoints, fill, EdgePen());
}

bool CanBeDrawn(const ToolModel& model) {
  const Cutter& cutter = model.cutter;
  return model.shown && cutter.diameter > 0 && std::isfinite(cutter.diameter) &&
         std::isfinite(cutter.fluteLength) && std::isfinite(cutter.overallLength);
}

}  // namespace

ToolModel ToolModelNow() {
  ToolModel model;
  const OwnedPath& shown = ShownPath();
  const std::int32_t count = shown.path.count;
  const std::int32_t head = std::clamp(shown.play.playHead, 0, count);
  if (head < 1) return model;
  const MotionPoint& at = shown.path.points[head - 1];
  model.shown = CutterOfTool(ToolOf(at), model.cutter);
  model.x = at.x;
  model.y = at.y;
  model.z = at.z;
  if (head >= count || shown.path.points[head].jump) return model;
  const MotionPoint& next = shown.path.points[head];
  const double part = shown.play.segmentFraction;
  model.x += (next.x - at.x) * part;
  model.y += (next.y - at.y) * part;
  model.z += (next.z - at.z) * part;
  return model;
}

void PaintToolModel(Canvas& canvas, const Projection& p) {
  const ToolModel model = ToolModelNow();
  if (!CanBeDrawn(model)) return;
  const Solid cutting = CuttingPart(model.cutter);
  const Solid shank = Shank(model.cutter, cutting);
  // What lies nearer is painted last: seen from above the shank and its end.
  if (ShownAngles().elevation >= 0) {
    PaintSolid(canvas, model, p, cutting, kPathToolFlutes);
    PaintSolid(canvas, model, p, shank, kPathToolShank);
    PaintEnd(canvas, model, p, shank, 1, kPathToolEnd);
  } else {
    PaintSolid(canvas, model, p, shank, kPathToolShank);
    PaintSolid(canvas, model, p, cutting, kPathToolFlutes);
    if (model.cutter.shape == ToolShape::Flat) {
      PaintEnd(canvas, model, p, cutting, kTipRings - 1, kPathToolEnd);
    }
  }
}

}  // namespace morva
