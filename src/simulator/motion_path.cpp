#include "simulator/motion_path.h"

#include <algorithm>

namespace morva {

namespace {
MotionPoint programPoints[kMaxMotionPoints];
MotionPoint ghostPoints[kMaxMotionPoints];

// The least and the most of an axis over the points that stand at a place of the part there; over
// all of them where none does.
void TakeSpan(const MotionPath& of, unsigned bit, double MotionPoint::*axis, double& least,
              double& most) {
  bool any = false;
  for (const bool anywhere : {false, true}) {
    for (std::int32_t i = 0; i < of.count; ++i) {
      const MotionPoint& point = of.points[i];
      if (!anywhere && (point.machineAxes & bit)) continue;
      const double value = point.*axis;
      least = any ? std::min(least, value) : value;
      most = any ? std::max(most, value) : value;
      any = true;
    }
    if (any) return;
  }
}

}  // namespace

MotionPath path{programPoints};
MotionPath ghostPath{ghostPoints};

void EmptyPath(MotionPath& out) {
  ++out.generation;
  out.count = 0;
  out.fullAtLine = -1;
  out.notes = PathNotes{};
}

void ShiftPath(MotionPath& out, double byX, double byY, double byZ) {
  for (std::int32_t i = 0; i < out.count; ++i) {
    MotionPoint& point = out.points[i];
    point.x += byX;
    point.y += byY;
    point.z += byZ;
  }
  out.boundsCount = -1;
}

void StorePath(MotionPath& of, StoredPath& into) {
  into.points.assign(of.points, of.points + of.count);
  into.fullAtLine = of.fullAtLine;
  into.notes = of.notes;
  into.bounds = BoundsOf(of);
}

void RestorePath(const StoredPath& from, MotionPath& into) {
  std::ranges::copy(from.points, into.points);
  into.count = static_cast<std::int32_t>(from.points.size());
  into.fullAtLine = from.fullAtLine;
  into.notes = from.notes;
  ++into.generation;
  into.bounds = from.bounds;
  into.boundsGeneration = into.generation;
  into.boundsCount = into.count;
}

const PathBounds& BoundsOf(MotionPath& of) {
  PathBounds& bounds = of.bounds;
  if (of.boundsGeneration == of.generation && of.boundsCount == of.count) return bounds;
  of.boundsGeneration = of.generation;
  of.boundsCount = of.count;
  bounds = PathBounds{};
  TakeSpan(of, 1, &MotionPoint::x, bounds.minX, bounds.maxX);
  TakeSpan(of, 2, &MotionPoint::y, bounds.minY, bounds.maxY);
  TakeSpan(of, 4, &MotionPoint::z, bounds.minZ, bounds.maxZ);
  return bounds;
}

}  // namespace morva
