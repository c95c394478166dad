#include "simulator/control_corner.h"

#include <cmath>

#include "simulator/control_frame.h"
#include "simulator/control_motion.h"

namespace morva {

namespace {

constexpr double kTiny = 1e-9;

double DistanceIn(const PlaneAxes& axes, const Vec3& a, const Vec3& b) {
  return std::hypot(b.of[axes.u] - a.of[axes.u], b.of[axes.v] - a.of[axes.v]);
}

// The place so far from `from` towards `to`, by the share of the way in the plane.
Vec3 Towards(const Vec3& from, const Vec3& to, double share) {
  Vec3 place;
  for (int axis = 0; axis < 3; ++axis) {
    place.of[axis] = from.of[axis] + (to.of[axis] - from.of[axis]) * share;
  }
  return place;
}

// Both lines shorter by what the corner takes, and the corner between them. False: it does not
// fit, and nothing is drawn.
bool CutCorner(ControlRun& run, const Vec3& target) {
  const ControlCorner& corner = run.corner;
  const PlaneAxes axes = AxesOf(run.modes.plane);
  const double first = DistanceIn(axes, corner.from, corner.to);
  const double second = DistanceIn(axes, corner.to, target);
  if (first <= kTiny || second <= kTiny || corner.size <= 0) return false;
  const double ux = (corner.to.of[axes.u] - corner.from.of[axes.u]) / first;
  const double uy = (corner.to.of[axes.v] - corner.from.of[axes.v]) / first;
  const double vx = (target.of[axes.u] - corner.to.of[axes.u]) / second;
  const double vy = (target.of[axes.v] - corner.to.of[axes.v]) / second;
  const double cross = ux * vy - uy * vx;
  const double turn = std::atan2(cross, ux * vx + uy * vy);
  if (std::fabs(turn) <= kTiny) return false;
  const double cut = corner.kind == 'C' ? corner.size : corner.size * std::tan(std::fabs(turn) / 2);
  if (cut > first + kTiny || cut > second + kTiny) return false;
  const Vec3 before = Towards(corner.from, corner.to, 1 - cut / first);
  const Vec3 behind = Towards(corner.to, target, cut / second);
  FeedTo(run, before);
  if (corner.kind == 'C') {
    FeedTo(run, behind);
    return true;
  }
  // The centre lies beside the first line's end, on the side to which the corner turns.
  const double side = cross > 0 ? 1 : -1;
  const double u = before.of[axes.u] - uy * side * corner.size;
  const double v = before.of[axes.v] + ux * side * corner.size;
  ArcTo(run, behind, u, v, cross < 0);
  return true;
}

void FinishCorner(ControlRun& run, const Vec3& target) {
  const std::int32_t line = run.line;
  const Vec3 sharp = run.corner.to;
  run.line = run.corner.line;
  if (!CutCorner(run, target)) {
    Report(run, Finding::CornerUnfit, run.corner.size / run.unit);
    FeedTo(run, sharp);
  }
  run.corner.kind = 0;
  run.line = line;
}

}  // namespace

void RunLine(ControlRun& run, const ControlBlock& block, const Vec3& target) {
  if (run.corner.kind) FinishCorner(run, target);
  if (!block.cornerKind) return FeedTo(run, target);
  const double size = LengthFrom(run, block.corner, block.cornerPointed);
  run.corner = {block.cornerKind, size, run.at, target, run.line};
  // Words of the next block count from the corner.
  run.at = target;
}

void DropCorner(ControlRun& run) {
  if (!run.corner.kind) return;
  const std::int32_t line = run.line;
  run.line = run.corner.line;
  Report(run, Finding::CornerUnfit, run.corner.size / run.unit);
  run.corner.kind = 0;
  FeedTo(run, run.corner.to);
  run.line = line;
}

}  // namespace morva
