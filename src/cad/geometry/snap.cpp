#include "cad/geometry/snap.h"

#include <algorithm>
#include <cmath>

#include "cad/geometry/canvas_view.h"
#include "cad/geometry/lines.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"
#include "library/outline.h"

// It runs at each move of the pointer, so what needs trigonometry is kept for each object and
// made anew only when the object itself has changed.

namespace morva {

namespace {

constexpr double kReach = 10;  // pixels
constexpr int kPointsOfObject = 9;
constexpr double kShortEdge = 1e-6;  // a segment below it has no nearest point
constexpr double kAtCircleCentre = 1e-9;
constexpr double kGridInch = 0.05;
constexpr double kGridMm = 1.0;

// The points of one object, and what they were computed from.
struct SnapPoints {
  SketchObject object;
  int count = 0;  // 0: nothing kept yet
  double xs[kPointsOfObject] = {};
  double ys[kPointsOfObject] = {};
};
SnapPoints kept[kMaxItems];

const SnapPoints& PointsOf(int index) {
  SnapPoints& points = kept[index];
  const SketchObject& now = sketch.objects[index];
  if (points.count > 0 && SameGeometry(now, points.object)) return points;
  points.object = now;
  points.count = ObjectSnapPoints(now, points.xs, points.ys);
  return points;
}

struct Search {
  double x = 0, y = 0;  // the cursor
  double reach = 0;     // tolerance in drawing units
  double best = 0;      // squared distance to beat
  bool found = false;
  bool atCentre = false;
  double foundX = 0, foundY = 0;
  int objects[kMaxItems] = {};  // those that may be met, in array order
  int objectCount = 0;
};

void Offer(Search& search, double x, double y, bool atCentre) {
  const double dx = x - search.x;
  const double dy = y - search.y;
  const double square = dx * dx + dy * dy;
  if (!(square < search.best)) return;
  search.best = square;
  search.found = true;
  search.atCentre = atCentre;
  search.foundX = x;
  search.foundY = y;
}

void CollectObjects(Search& search, int excluded) {
  const bool known = excluded >= 0 && excluded < sketch.objectCount;
  const std::int32_t group = known ? sketch.objects[excluded].group : 0;
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (sketch.hidden[i] || (known && i == excluded)) continue;
    if (group != 0 && sketch.objects[i].group == group) continue;
    search.objects[search.objectCount++] = i;
  }
}

void OfferObjectPoints(Search& search) {
  for (int n = 0; n < search.objectCount; ++n) {
    const SnapPoints& points = PointsOf(search.objects[n]);
    const bool anchored = !HasEnds(points.object);
    for (int k = 0; k < points.count; ++k) {
      Offer(search, points.xs[k], points.ys[k], anchored && k == 0);
    }
  }
}

void OfferEdge(Search& search, double ax, double ay, double bx, double by) {
  const double dx = bx - ax;
  const double dy = by - ay;
  if (dx * dx + dy * dy < kShortEdge * kShortEdge) return;
  const SegmentFoot foot = FootOnSegment({search.x, search.y}, {ax, ay}, {bx, by}, kShortEdge);
  Offer(search, foot.x, foot.y, false);
}

void OfferRim(Search& search, const SketchObject& circle) {
  const double dx = search.x - circle.x;
  const double dy = search.y - circle.y;
  const double distance = PlainDistance(search.x, search.y, circle.x, circle.y);
  if (distance < kAtCircleCentre) return;
  const double r = circle.size / 2;
  Offer(search, circle.x + dx / distance * r, circle.y + dy / distance * r, false);
}

void OfferEdges(Search& search) {
  for (int n = 0; n < search.objectCount; ++n) {
    const SnapPoints& points = PointsOf(search.objects[n]);
    if (HasEnds(points.object)) {
      OfferEdge(search, points.xs[0], points.ys[0], points.xs[1], points.ys[1]);
    } else if (points.object.type == kTypeRectangle) {
      for (int k = 1; k <= 4; ++k) {
        const int next = k == 4 ? 1 : k + 1;
        OfferEdge(search, points.xs[k], points.ys[k], points.xs[next], points.ys[next]);
      }
    } else if (points.object.type == kTypeCircle) {
      OfferRim(search, points.object);
    }
  }
}

struct NearLine {
  Ray ray;
  bool endless = false;  // a work axis
};

// Work axes, and the lines whose box, widened by the reach, holds the cursor.
int CollectLines(const Search& search, NearLine* lines) {
  int count = 0;
  for (int n = 0; n < search.objectCount; ++n) {
    const SnapPoints& points = PointsOf(search.objects[n]);
    if (!HasEnds(points.object)) continue;
    const double ax = points.xs[0];
    const double ay = points.ys[0];
    const double bx = points.xs[1];
    const double by = points.ys[1];
    const bool endless = points.object.type == kTypeWorkAxis;
    const bool near = search.x >= std::min(ax, bx) - search.reach &&
                      search.x <= std::max(ax, bx) + search.reach &&
                      search.y >= std::min(ay, by) - search.reach &&
                      search.y <= std::max(ay, by) + search.reach;
    if (endless || near) lines[count++] = NearLine{{ax, ay, bx - ax, by - ay}, endless};
  }
  return count;
}

bool OnLine(const NearLine& line, double t) { return line.endless || (t >= 0 && t <= 1); }

void OfferIntersections(Search& search) {
  NearLine lines[kMaxItems];
  const int count = CollectLines(search, lines);
  for (int i = 0; i < count; ++i) {
    const NearLine& a = lines[i];
    for (int k = i + 1; k < count; ++k) {
      const NearLine& b = lines[k];
      double t = 0;
      double s = 0;
      if (!LineIntersection(a.ray, b.ray, t, s)) continue;
      if (!OnLine(a, t) || !OnLine(b, s)) continue;
      Offer(search, a.ray.x + t * a.ray.dx, a.ray.y + t * a.ray.dy, false);
    }
  }
}

// The nearest multiple of the grid, halves away from zero.
double OnGrid(double value, double grid) {
  const double steps = std::floor(std::fabs(value) / grid + 0.5) * grid;
  return value < 0 ? -steps : steps;
}

}  // namespace

double SnapGridStep() { return BySketchUnit(kGridInch, kGridMm); }

void SnapPoint(double& x, double& y, int excludeObject, bool bypass) {
  SetSnapResult(false, false);
  if (!sketch.snapOn || bypass) return;
  Search search;
  search.x = x;
  search.y = y;
  search.reach = CanvasTolerance(kReach);
  search.best = search.reach * search.reach;
  CollectObjects(search, excludeObject);
  Offer(search, 0, 0, true);
  OfferObjectPoints(search);
  if (!search.found) OfferEdges(search);
  OfferIntersections(search);
  if (!search.found) {
    const double grid = SnapGridStep();
    Offer(search, OnGrid(x, grid), OnGrid(y, grid), false);
  }
  if (!search.found) return;
  SetSnapResult(true, search.atCentre);
  if (tools.geometryTool == kGeometryTrim) return;  // a trim cuts where the user pointed
  x = search.foundX;
  y = search.foundY;
}

void SnappedPosition(const platform::PointerEvent& event, double& x, double& y) {
  FromCanvas(event.x, event.y, x, y);
  SnapPoint(x, y, -1, event.alt);
}

void ResetSnap() {
  for (SnapPoints& points : kept) points = SnapPoints();
}

}  // namespace morva
