// G12 and G13: a round pocket from its middle outwards.
#include <algorithm>
#include <cmath>

#include "simulator/control_cycles.h"
#include "simulator/control_motion.h"

namespace morva {

namespace {

constexpr double kMostRings = 1000;
constexpr double kMostRepeats = 9999;

double ToolRadius(const ControlRun& run, const ControlBlock& block) {
  const double number = block.Has('D') ? block.Of('D') : run.diameterNumber;
  if (!(number >= 1 && number <= kControlTools)) return 0;
  const ToolOffset& tool = run.table.tools[static_cast<int>(number)];
  return (tool.diameter + tool.diameterWear) / 2 * run.perInch;
}

// Out along X, once round, and back to the middle.
void Ring(ControlRun& run, const Vec3& middle, double radius, bool clockwise) {
  Vec3 out = middle;
  out.of[0] += radius;
  FeedTo(run, out);
  ArcTo(run, out, middle.of[0], middle.of[1], clockwise);
}

}  // namespace

void RunCirclePocket(ControlRun& run, const ControlBlock& block, bool clockwise) {
  const double tool = ToolRadius(run, block);
  const double first = block.Has('I') ? std::fabs(LengthOf(run, block, 'I')) : 0;
  const double last = block.Has('K') ? std::fabs(LengthOf(run, block, 'K')) : first;
  const double step = block.Has('Q') ? std::fabs(LengthOf(run, block, 'Q')) : 0;
  if (!(first > 0 || last > 0) || (last > first && step <= 0) ||
      (step > 0 && (last - first) / step > kMostRings)) {
    return Report(run, Finding::PocketWords);
  }
  const double times =
      block.Has('L') ? std::clamp(std::trunc(block.Of('L')), 1.0, kMostRepeats) : 1;
  const int plane = run.modes.plane;
  run.modes.plane = 17;
  for (double i = 0; i < times && !run.ended; ++i) {
    Vec3 middle = run.at;
    if (block.Has('Z')) {
      const double z = LengthOf(run, block, 'Z');
      middle.of[2] = run.modes.absolute ? z : run.at.of[2] + z;
      FeedTo(run, middle);
    }
    double radius = first > 0 ? first : std::min(step, last);
    for (;;) {
      if (radius - tool > 1e-9) Ring(run, middle, radius - tool, clockwise);
      if (radius >= last - 1e-9) break;
      radius = std::min(radius + step, last);
    }
    FeedTo(run, middle);
  }
  run.modes.plane = plane;
}

}  // namespace morva
