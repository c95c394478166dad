#include "simulator/control_pocket.h"

#include <algorithm>
#include <cmath>

#include "simulator/control_check.h"
#include "simulator/control_compensation.h"
#include "simulator/control_motion.h"

namespace morva {

namespace {

constexpr double kMostRings = 1000;
constexpr double kMostRepeats = 9999;
constexpr double kMostDepths = 1000;
constexpr double kSame = 1e-9;  // display units

// What is left out of a ring; findings where D or its diameter is missing.
double ToolRadius(ControlRun& run, const ControlBlock& block) {
  const double number = block.Has('D') ? block.Of('D') : run.diameterNumber;
  if (!(number >= 1 && number <= kControlTools)) {
    Report(run, Finding::CompNoOffset);
    return 0;
  }
  const ToolOffset& tool = run.table.tools[static_cast<int>(number)];
  const double radius = (tool.diameter + tool.diameterWear) / 2 * run.perInch;
  if (radius == 0) NoteNoDiameter(run, static_cast<std::int32_t>(number));
  return radius;
}

// Out along X, once round, and back to the middle.
void Ring(ControlRun& run, const Vec3& middle, double radius, bool clockwise) {
  Vec3 out = middle;
  out.of[0] += radius;
  FeedTo(run, out);
  ArcTo(run, out, middle.of[0], middle.of[1], clockwise);
}

// From the start straight down to the next depth, and the outline's compensation from there.
void GoDown(ControlRun& run) {
  ControlPocket& pocket = run.pocket;
  pocket.reached = std::max(pocket.reached - pocket.step, pocket.bottom);
  Vec3 down = pocket.start;
  down.of[2] = pocket.reached;
  FeedTo(run, down);
  run.compensation.wanted = pocket.wanted;
}

// Where and how deep, by the words of the block. In G91 R counts from where the tool stands and Z
// from R, as in cycles.
ControlPocket PocketOf(ControlRun& run, const ControlBlock& block) {
  const bool steps = !run.modes.absolute;
  const double base = steps ? run.at.of[2] : 0;
  ControlPocket pocket;
  pocket.line = run.line;
  TakeTarget(run, block, pocket.start);
  double& r = pocket.start.of[2];
  r = block.Has('R') ? LengthOf(run, block, 'R') + base : run.at.of[2];
  pocket.bottom = LengthOf(run, block, 'Z') + (steps ? r : 0);
  pocket.reached = r;
  const double step = block.Has('Q') ? std::fabs(LengthOf(run, block, 'Q')) : 0;
  pocket.step = step > 0 ? step : std::max(r - pocket.bottom, kSame);
  pocket.wanted = run.compensation.wanted;
  return pocket;
}

}  // namespace

void RunCirclePocket(ControlRun& run, const ControlBlock& block, bool clockwise) {
  const double first = block.Has('I') ? std::fabs(LengthOf(run, block, 'I')) : 0;
  const double last = block.Has('K') ? std::fabs(LengthOf(run, block, 'K')) : first;
  const double step = block.Has('Q') ? std::fabs(LengthOf(run, block, 'Q')) : 0;
  if (!(first > 0 || last > 0) || (last > first && step <= 0) ||
      (step > 0 && (last - first) / step > kMostRings)) {
    return Report(run, Finding::PocketWords);
  }
  const double tool = ToolRadius(run, block);
  if (std::max(first, last) < tool - kSame) Report(run, Finding::CompCorner);
  const double times =
      block.Has('L') ? std::clamp(std::trunc(block.Of('L')), 1.0, kMostRepeats) : 1;
  const int plane = run.modes.plane;
  run.modes.plane = 17;
  for (double i = 0; i < times && !run.ended && !OutOfStrokes(run); ++i) {
    Vec3 middle = run.at;
    if (block.Has('Z')) {
      const double z = LengthOf(run, block, 'Z');
      middle.of[2] = run.modes.absolute ? z : run.at.of[2] + z;
      FeedTo(run, middle);
    }
    double radius = first > 0 ? first : std::min(step, last);
    for (;;) {
      if (radius - tool > 1e-9) Ring(run, middle, radius - tool, clockwise);
      if (radius >= last - 1e-9 || OutOfStrokes(run)) break;
      radius = std::min(radius + step, last);
    }
    FeedTo(run, middle);
  }
  run.modes.plane = plane;
}

bool BeginPocket(ControlRun& run, const ControlBlock& block, bool ofProgram) {
  // Within its own outline no other pocket begins.
  if (run.pocket.on || !block.Has('Z')) {
    Report(run, Finding::PocketWords);
    return false;
  }
  ControlPocket pocket = PocketOf(run, block);
  if ((pocket.reached - pocket.bottom) / pocket.step > kMostDepths) {
    Report(run, Finding::PocketWords);
    return false;
  }
  pocket.on = true;
  pocket.ofProgram = ofProgram;
  run.pocket = pocket;
  StopCompensation(run);
  Vec3 above = pocket.start;
  above.of[2] = run.at.of[2];
  RapidTo(run, above);
  RapidTo(run, pocket.start);
  GoDown(run);
  return true;
}

bool GoToNextDepth(ControlRun& run) {
  ControlPocket& pocket = run.pocket;
  const std::int32_t line = run.line;
  run.line = pocket.line;
  StopCompensation(run);
  Vec3 back = pocket.start;
  back.of[2] = run.at.of[2];
  FeedTo(run, back);
  pocket.on = pocket.reached > pocket.bottom + kSame;
  if (pocket.on) {
    GoDown(run);
  } else {
    RapidTo(run, pocket.start);
    run.compensation.wanted = pocket.wanted;
  }
  run.line = line;
  return pocket.on;
}

}  // namespace morva
