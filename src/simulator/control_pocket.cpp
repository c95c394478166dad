#include "simulator/control_pocket.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

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
constexpr double kSame = 1e-9;          // display units
constexpr double kSlackInches = 0.001;  // that a tool may come nearer to a wall
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

// Two ways beside each other, whose middles are so far apart.
void NoteStep(ControlRun& run, double apart, double radius) {
  if (radius > 0 && apart > 2 * radius + kSame) Report(run, Finding::StepWide, apart / run.unit);
}

// From the middle to the first ring, from ring to ring. A ring alone finishes a bore, and so may
// the first one do where the middle was cut before.
void NoteRings(ControlRun& run, double inmost, double last, double step, double radius) {
  const bool open = inmost >= last - kSame || IsOpened(run, run.shown);
  const double between = std::min(step, last - inmost);
  NoteStep(run, open ? between : std::max(inmost - radius, between), radius);
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
  pocket.feed = run.feed;
  pocket.wanted = run.compensation.wanted;
  return pocket;
}

// How its ground is cleared: by strokes that are I apart along X, or J apart along Y.
PocketGround GroundOf(ControlRun& run, const ControlBlock& block) {
  PocketGround ground;
  ground.alongX = block.Has('J');
  const char letter = ground.alongX ? 'J' : 'I';
  ground.step = block.Has(letter) ? std::fabs(LengthOf(run, block, letter)) : 0;
  ground.finish = block.Has('K') ? std::fabs(LengthOf(run, block, 'K')) : 0;
  ground.wanted = ground.step > kSame && block.Has('I') != block.Has('J');
  return ground;
}

// What the tool leaves at the walls up to the last run of the outline.
double FinishOf(const ControlRun& run) {
  const PocketGround& ground = run.ground;
  const bool rough = ground.wanted && ground.beside && !ground.strokes.empty();
  return rough && !run.pocket.finishing ? ground.finish : 0;
}

// Compensation of the outline, from where the tool stands.
void BeginOutline(ControlRun& run) {
  run.compensation.wanted = run.pocket.wanted;
  run.compensation.finish = FinishOf(run);
}

// To a place at the depth, straight or by way of R.
void GoWithin(ControlRun& run, const Vec3& to, bool over) {
  run.ground.between = true;
  if (over) {
    Vec3 above = run.at;
    above.of[2] = run.pocket.start.of[2];
    RapidTo(run, above);
    above = to;
    above.of[2] = run.pocket.start.of[2];
    RapidTo(run, above);
  }
  FeedTo(run, to);
  run.ground.between = false;
}

Vec3 GroundPlace(const ControlRun& run, const Flat& shown) {
  return ProgramOf(run, {{shown.x, shown.y, run.shown.of[2]}});
}

// The strokes of a depth, from the start and back to it.
void ClearGround(ControlRun& run) {
  const PocketGround& ground = run.ground;
  if (!ground.wanted || ground.strokes.empty()) return;
  const double feed = std::exchange(run.feed, run.pocket.feed);
  for (const GroundStroke& stroke : ground.strokes) {
    if (OutOfStrokes(run)) break;
    GoWithin(run, GroundPlace(run, stroke.from), stroke.over);
    FeedTo(run, GroundPlace(run, stroke.to));
  }
  Vec3 back = run.pocket.start;
  back.of[2] = run.at.of[2];
  GoWithin(run, back, ground.backOver);
  run.feed = feed;
}

// The strokes that the noted outline asks for; findings where there are none to be known.
void FindGround(ControlRun& run) {
  PocketGround& ground = run.ground;
  const Vec3 shown = ShownOf(run, run.pocket.start);
  const Flat start{shown.of[0], shown.of[1]};
  for (const OutlineMove& move : ground.moves) {
    if (move.wanted == 0) continue;
    ground.beside = true;
    ground.radius = std::fabs(move.radius);
  }
  ground.wanted = FindStrokes(ground, start, run.perInch, run.groundLooks);
  if (!ground.wanted) return Report(run, Finding::NotFollowed, kGeneralPocket, 'G');
  NoteStep(run, ground.step, ground.radius);
  if (!IsFreeWay(ground, start, start, ground.radius - kSlackInches * run.perInch)) {
    Report(run, Finding::PocketWords);
  }
}

// The outline of the first depth was noted. The tool still stands at the start: first its strokes
// are drawn, then the outline itself.
void DrawFirstDepth(ControlRun& run) {
  PocketGround& ground = run.ground;
  ground.noting = false;
  const Vec3 end = run.shown;
  run.compensation.wanted = 0;
  if (!ground.moves.empty()) run.shown = ground.moves.front().segment.from;
  run.at = ProgramOf(run, run.shown);
  FindGround(run);
  ClearGround(run);
  BeginOutline(run);
  DrawNotedMoves(run);
  run.shown = end;
  run.at = ProgramOf(run, end);
}

// From the outline's end to the start, at the depth.
void GoBack(ControlRun& run) {
  const PocketGround& ground = run.ground;
  Vec3 back = run.pocket.start;
  back.of[2] = run.at.of[2];
  bool over = false;
  if (ground.wanted && (run.groundLooks -= std::ssize(ground.outline)) > 0) {
    const Vec3 shown = ShownOf(run, back);
    over = !IsFreeWay(ground, {run.shown.of[0], run.shown.of[1]}, {shown.of[0], shown.of[1]}, 0);
  }
  GoWithin(run, back, over);
}

}  // namespace

void RunCirclePocket(ControlRun& run, const ControlBlock& block, bool clockwise) {
  const double first = block.Has('I') ? std::fabs(LengthOf(run, block, 'I')) : 0;
  const double last = block.Has('K') ? std::fabs(LengthOf(run, block, 'K')) : first;
  const double step = block.Has('Q') ? std::fabs(LengthOf(run, block, 'Q')) : 0;
  const bool smaller = last > 0 && last < first - kSame;
  if (!(first > 0 || last > 0) || smaller || (last > first && step <= 0) ||
      (step > 0 && (last - first) / step > kMostRings)) {
    return Report(run, Finding::PocketWords);
  }
  const double tool = ToolRadius(run, block);
  if (std::max(first, last) < tool - kSame) Report(run, Finding::CompCorner);
  const double inmost = first > 0 ? first : std::min(step, last);
  NoteRings(run, inmost, last, step, tool);
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
    double radius = inmost;
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
  if (block.HasG(410) || block.HasG(420)) run.compensation.ofPocket = true;
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
  if (pocket.bottom > pocket.reached + kSame) Report(run, Finding::CycleUpward);
  pocket.on = true;
  pocket.ofProgram = ofProgram;
  run.pocket = pocket;
  run.ground = GroundOf(run, block);
  if (!block.Has('I') && !block.Has('J')) {
    Report(run, Finding::NotFollowed, kGeneralPocket, 'G');
  } else if (!run.ground.wanted) {
    Report(run, Finding::PocketWords);
  }
  StopCompensation(run);
  Vec3 above = pocket.start;
  above.of[2] = run.at.of[2];
  RapidTo(run, above);
  RapidTo(run, pocket.start);
  GoDown(run);
  run.compensation.wanted = pocket.wanted;
  run.ground.noting = run.ground.wanted;
  return true;
}

void LeavePocket(ControlRun& run) {
  DropGround(run);
  run.pocket.finishing = true;
  run.pocket.on = false;
  BeginOutline(run);
}

bool GoToNextDepth(ControlRun& run) {
  ControlPocket& pocket = run.pocket;
  const std::int32_t line = run.line;
  run.line = pocket.line;
  if (run.ground.noting) DrawFirstDepth(run);
  StopCompensation(run);
  GoBack(run);
  const bool deeper = pocket.reached > pocket.bottom + kSame;
  const bool finish = !deeper && FinishOf(run) > 0;
  if (deeper) {
    GoDown(run);
    ClearGround(run);
  }
  pocket.finishing = !deeper;
  pocket.on = deeper || finish;
  if (!pocket.on) RapidTo(run, pocket.start);
  BeginOutline(run);
  run.line = line;
  return pocket.on;
}

}  // namespace morva
