#include "simulator/cut_surface.h"

#include <algorithm>
#include <cmath>

#include "simulator/preview_state.h"
#include "simulator/shown_path.h"
#include "simulator/view_parts.h"
#include "simulator/view_switches.h"

namespace morva {

namespace {

// What the grid below is good for.
struct SurfaceKey {
  bool known = false;
  PathOwner owner = PathOwner::Program;
  std::uint32_t generation = 0;
  CutterTable cutters;
  std::int32_t tool = 0;  // that stands in place of the path's, 0 for none
};

SurfaceKey key;
CutSurface surface;      // whole segments only
CutSurface withPartial;  // the same and the segment in progress
CutterTable cuttersNow;

// A sample's number along an axis, held to the grid; what is no number counts as the first.
int SampleAt(double place, double least, double step) {
  const double number = (place - least) / step;
  if (!(number > 0)) return 0;
  return static_cast<int>(std::min(number, double{kSurfaceCells}));
}

struct Reach {
  int first = 0;
  int last = 0;
};

// The samples that a way from `a` to `b` can touch, with one more on each side against rounding.
Reach SamplesBetween(double a, double b, double radius, double least, double step) {
  const int first = SampleAt(std::min(a, b) - radius, least, step);
  const int last = SampleAt(std::max(a, b) + radius, least, step);
  return {std::max(first - 1, 0), std::min(last + 1, kSurfaceCells)};
}

bool Cuts(const MotionPoint& end) { return !end.rapid && !end.jump; }

bool SameKey(const OwnedPath& shown) {
  return key.known && key.owner == ShownOwner() && key.generation == shown.path.generation &&
         key.tool == previewState.tool && surface.box == shown.stock &&
         SameCutters(key.cutters, cuttersNow);
}

void Restart(const OwnedPath& shown) {
  key.known = true;
  key.owner = ShownOwner();
  key.generation = shown.path.generation;
  key.cutters = cuttersNow;
  key.tool = previewState.tool;
  ClearSurface(surface, shown.stock);
}

// Stamps the whole segments up to a head.
void StampTo(const MotionPath& of, std::int32_t head) {
  const Cutter* cutter = nullptr;
  bool asked = false;
  std::int32_t tool = 0;
  surface.stamped = std::max(surface.stamped, std::min(head, 1));
  for (; surface.stamped < head; ++surface.stamped) {
    const MotionPoint& end = of.points[surface.stamped];
    if (!Cuts(end)) continue;
    if (!asked || ToolOf(end) != tool) {
      tool = ToolOf(end);
      cutter = FindCutter(cuttersNow, tool);
      asked = true;
    }
    if (cutter) StampWay(surface, of.points[surface.stamped - 1], end, *cutter);
  }
}

// The segment in progress on a copy, so that the next frame finds the grid without it.
const CutSurface* WithSegmentInProgress(const OwnedPath& shown, std::int32_t head) {
  const double part = shown.play.segmentFraction;
  if (!shown.play.headInUse || !(part > 0) || head < 1 || head >= shown.path.count) return &surface;
  const MotionPoint& from = shown.path.points[head - 1];
  MotionPoint to = shown.path.points[head];
  const Cutter* cutter = Cuts(to) ? FindCutter(cuttersNow, ToolOf(to)) : nullptr;
  if (!cutter) return &surface;
  to.x = from.x + (to.x - from.x) * part;
  to.y = from.y + (to.y - from.y) * part;
  to.z = from.z + (to.z - from.z) * part;
  withPartial = surface;
  StampWay(withPartial, from, to, *cutter);
  return &withPartial;
}

// A preview whose tool nobody described would lie below an uncut mesh.
bool PreviewLacksItsTool(const MotionPath& of) {
  Cutter cutter;
  return PreviewIsShown() && !CutterOfTool(ToolOf(of.points[of.count - 1]), cutter);
}

}  // namespace

void ClearSurface(CutSurface& out, const StockEnvelope& box) {
  out.box = box;
  out.stamped = 0;
  for (auto& row : out.heights) std::fill(row, row + kSurfaceSamples, box.top);
}

void StampWay(CutSurface& out, const MotionPoint& from, const MotionPoint& to,
              const Cutter& cutter) {
  constexpr double kNoWay = 1e-12;  // square of a length in display units
  const StockEnvelope& box = out.box;
  const double radius = cutter.diameter / 2;
  if (!(radius > 0)) return;
  const double stepX = (box.maxX - box.minX) / kSurfaceCells;
  const double stepY = (box.maxY - box.minY) / kSurfaceCells;
  const Reach rows = SamplesBetween(from.y, to.y, radius, box.minY, stepY);
  const Reach columns = SamplesBetween(from.x, to.x, radius, box.minX, stepX);
  const double wayX = to.x - from.x, wayY = to.y - from.y, wayZ = to.z - from.z;
  const double square = wayX * wayX + wayY * wayY;
  const bool moves = square >= kNoWay;
  const double perSquare = moves ? 1 / square : 0;
  const bool flat = cutter.shape == ToolShape::Flat;
  // No sample gets lower than this, so those that are there already need no look.
  const double lowest = std::max(std::min(from.z, to.z), box.bottom);
  for (int j = rows.first; j <= rows.last; ++j) {
    double* const row = out.heights[j];
    const double y = box.minY + j * stepY;
    for (int i = columns.first; i <= columns.last; ++i) {
      if (row[i] <= lowest) continue;
      const double x = box.minX + i * stepX;
      const double along = ((x - from.x) * wayX + (y - from.y) * wayY) * perSquare;
      const double t = moves ? std::clamp(along, 0.0, 1.0) : 1.0;
      const double dx = x - (from.x + wayX * t);
      const double dy = y - (from.y + wayY * t);
      const double away = dx * dx + dy * dy;
      if (!(away <= radius * radius)) continue;
      const double tip = flat ? 0 : ToolTipHeight(cutter.shape, radius, std::sqrt(away));
      row[i] = std::min(row[i], std::max(from.z + wayZ * t + tip, box.bottom));
    }
  }
}

bool SurfaceIsShown() {
  const OwnedPath& shown = ShownPath();
  const StockEnvelope& stock = shown.stock;
  return switches.showCutSurface && shown.path.count > 1 && stock.shown &&
         stock.top > stock.bottom && stock.maxX > stock.minX && stock.maxY > stock.minY &&
         !PreviewLacksItsTool(shown.path);
}

const CutSurface* CutSurfaceNow() {
  if (!SurfaceIsShown()) return nullptr;
  const OwnedPath& shown = ShownPath();
  const std::int32_t head = DrawnPoints();
  ReadCutters(cuttersNow);
  if (!SameKey(shown) || head < surface.stamped) Restart(shown);
  StampTo(shown.path, head);
  return WithSegmentInProgress(shown, head);
}

}  // namespace morva
