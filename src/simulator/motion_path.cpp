#include "simulator/motion_path.h"

#include <algorithm>

namespace morva {

namespace {
MotionPoint programPoints[kMaxMotionPoints];
MotionPoint ghostPoints[kMaxMotionPoints];
}  // namespace

MotionPath path{programPoints};
MotionPath ghostPath{ghostPoints};

void EmptyPath(MotionPath& out) {
  ++out.generation;
  out.count = 0;
  out.fullAtLine = -1;
  out.notes = PathNotes{};
}

const PathBounds& BoundsOf(MotionPath& of) {
  PathBounds& bounds = of.bounds;
  if (of.boundsGeneration == of.generation && of.boundsCount == of.count) return bounds;
  of.boundsGeneration = of.generation;
  of.boundsCount = of.count;
  bounds = PathBounds{};
  if (of.count == 0) return bounds;
  const MotionPoint& first = of.points[0];
  bounds = {first.x, first.x, first.y, first.y, first.z, first.z};
  for (std::int32_t i = 1; i < of.count; ++i) {
    const MotionPoint& p = of.points[i];
    bounds.minX = std::min(bounds.minX, p.x);
    bounds.maxX = std::max(bounds.maxX, p.x);
    bounds.minY = std::min(bounds.minY, p.y);
    bounds.maxY = std::max(bounds.maxY, p.y);
    bounds.minZ = std::min(bounds.minZ, p.z);
    bounds.maxZ = std::max(bounds.maxZ, p.z);
  }
  return bounds;
}

}  // namespace morva
