#include "simulator/control_pocket.h"

#include <algorithm>
#include <cmath>

#include "simulator/control_check.h"
#include "simulator/control_compensation.h"
#include "simulator/control_frame.h"
#include "simulator/control_ground.h"
#include "simulator/control_motion.h"

namespace morva {

namespace {

constexpr double kMostRings = 1000;
constexpr double kMostRepeats = 9999;
constexpr double kMostDepths = 1000;
constexpr double kSame = 1e-9;  // display units
constexpr int kGeneralPocket = 150;

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

// From the start straight down to the next depth.
void GoDown(ControlRun& run) {
  ControlPocket& pocket = run.pocket;
  pocket.reached = std::max(pocket.reached - pocket.step, pocket.bottom);
  Vec3 down = pocket.start;
  down.of[2] = pocket.reached;
  FeedTo(run, down);
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

// How its ground is cleared: by strokes along X that are I apart, along Y that are J apart.
PocketGround GroundOf(ControlRun& run, const ControlBlock& block) {
  PocketGround ground;
  ground.alongX = block.Has('I');
  const char letter = ground.alongX ? 'I' : 'J';
  ground.step = block.Has(letter) ? std::fabs(LengthOf(run, block, letter)) : 0;
  ground.finish = block.Has('K') ? std::fabs(LengthOf(run, block, 'K')) : 0;
  ground.wanted = ground.step > kSame;
  const bool beside = run.compensation.wanted != 0;
  ground.radius = beside ? std::fabs(run.compensation.radius) : 0;
  return ground;
}

// To a place of the ground at the depth, or by way of R where a wall stands between.
void GoWithin(ControlRun& run, const Vec3& to) {
  constexpr double kSlackInches = 0.001;
  const Vec3 shown = ShownOf(run, to);
  const Flat from{run.shown.of[0], run.shown.of[1]};
  if (!IsFreeWay(run.ground, from, {shown.of[0], shown.of[1]}, kSlackInches * run.perInch)) {
    Vec3 over = run.at;
    over.of[2] = run.pocket.start.of[2];
    RapidTo(run, over);
    over = to;
    over.of[2] = run.pocket.start.of[2];
    RapidTo(run, over);
  }
  FeedTo(run, to);
}

Vec3 GroundPlace(const ControlRun& run, const Flat& shown) {
  return ProgramOf(run, {{shown.x, shown.y, run.shown.of[2]}});
}

void ClearGround(ControlRun& run) {
  for (const GroundStroke& stroke : run.ground.strokes) {
    if (OutOfStrokes(run)) return;
    const Vec3 from = GroundPlace(run, stroke.from);
    const Vec3 to = GroundPlace(run, stroke.to);
    GoWithin(run, from);
    FeedTo(run, to);
  }
}

void GoBackToStart(ControlRun& run) {
  Vec3 back = run.pocket.start;
  back.of[2] = run.at.of[2];
  if (run.ground.wanted) return GoWithin(run, back);
  FeedTo(run, back);
}

// Down to the next depth and clears its ground. The outline's compensation begins from there.
void BeginDepth(ControlRun& run) {
  GoDown(run);
  if (!run.ground.strokes.empty()) {
    ClearGround(run);
    GoBackToStart(run);
  }
  run.compensation.wanted = run.pocket.wanted;
}

// The tool stands at the start, as if the outline had not run.
void EndSurvey(ControlRun& run) {
  PocketGround& ground = run.ground;
  ground.surveys = false;
  run.modes = ground.modes;
  run.feed = ground.feed;
  run.at = run.pocket.start;
  run.shown = ShownOf(run, run.at);
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
  run.ground = GroundOf(run, block);
  if (!run.ground.wanted) Report(run, Finding::NotFollowed, kGeneralPocket);
  StopCompensation(run);
  Vec3 above = pocket.start;
  above.of[2] = run.at.of[2];
  RapidTo(run, above);
  RapidTo(run, pocket.start);
  if (run.ground.wanted) {
    run.ground.surveys = true;
    run.ground.modes = run.modes;
    run.ground.feed = run.feed;
  } else {
    BeginDepth(run);
  }
  return true;
}

bool GoToNextDepth(ControlRun& run) {
  ControlPocket& pocket = run.pocket;
  const std::int32_t line = run.line;
  run.line = pocket.line;
  StopCompensation(run);
  if (run.ground.surveys) {
    EndSurvey(run);
    run.ground.wanted = FindStrokes(run.ground, run.groundLooks);
    if (!run.ground.wanted) Report(run, Finding::NotFollowed, kGeneralPocket);
  } else {
    GoBackToStart(run);
    pocket.on = pocket.reached > pocket.bottom + kSame;
  }
  if (pocket.on) {
    BeginDepth(run);
  } else {
    RapidTo(run, pocket.start);
    run.compensation.wanted = pocket.wanted;
  }
  run.line = line;
  return pocket.on;
}

void AbandonPocket(ControlRun& run) {
  if (run.ground.surveys) EndSurvey(run);
  run.pocket.on = false;
}

}  // namespace morva
