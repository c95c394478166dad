#include "simulator/control_cycles.h"

#include <algorithm>
#include <cmath>

#include "simulator/control_motion.h"

namespace morva {

namespace {

constexpr double kMostRepeats = 9999;

void GoToZ(ControlRun& run, double z, bool rapid) {
  Vec3 to = run.at;
  to.of[2] = z;
  if (rapid) {
    RapidTo(run, to);
  } else {
    FeedTo(run, to);
  }
}

struct Depths {
  double r;  // the plane that drilling begins at
  double bottom;
  double back;  // the plane that the cycle ends at
};

Depths DepthsOf(const ControlRun& run) {
  const CycleWords& words = run.cycle;
  Depths depths;
  depths.r = words.rStep ? words.initialPlane + words.r : words.r;
  depths.bottom = words.zStep ? depths.r + words.z : words.z;
  depths.back = run.modes.returnPlane == 98 ? words.initialPlane : depths.r;
  return depths;
}

// The depth of the next peck: Q each, or I less J each time but at least K.
struct Pecks {
  double depth;
  double least;
  double less;
};

Pecks PecksOf(const CycleWords& words) {
  if (words.hasI) {
    const double least = words.hasK ? std::fabs(words.k) : std::fabs(words.i);
    return {std::fabs(words.i), least, std::fabs(words.j)};
  }
  return {std::fabs(words.q), std::fabs(words.q), 0};
}

// Strokes of a hole with next to no peck would never end: such a hole counts as one stroke.
constexpr double kMostPecks = 2000;

bool PecksAreGood(ControlRun& run, const Pecks& pecks, double way) {
  const double least = std::min(pecks.depth, pecks.least);
  if (least > 0 && way / least <= kMostPecks) return true;
  Report(run, Finding::CycleNoPeck, pecks.depth / run.unit);
  return false;
}

// G73 draws back a little behind each peck, G83 all the way to R. G73 with K and Q goes to R behind
// each K of depth.
void Peck(ControlRun& run, const Depths& depths, bool full) {
  const CycleWords& words = run.cycle;
  Pecks pecks = PecksOf(words);
  const double way = depths.r - depths.bottom;
  if (way <= 0 || !PecksAreGood(run, pecks, way)) return GoToZ(run, depths.bottom, false);
  const double retract = run.table.peckRetract * run.perInch;
  const double above = run.table.retractAboveR * run.perInch;
  const bool clears = !full && words.hasQ && words.hasK && !words.hasI && words.k != 0;
  double reached = depths.r;
  double cleared = depths.r;
  while (reached > depths.bottom && !run.ended && !OutOfStrokes(run)) {
    reached = std::max(reached - pecks.depth, depths.bottom);
    pecks.depth = std::max(pecks.depth - pecks.less, pecks.least);
    GoToZ(run, reached, false);
    if (reached <= depths.bottom) break;
    const bool out = full || (clears && cleared - reached >= std::fabs(words.k) - 1e-9);
    if (out) {
      cleared = reached;
      GoToZ(run, depths.r + above, true);
      GoToZ(run, std::min(reached + retract, depths.r), true);
    } else {
      GoToZ(run, reached + retract, true);
    }
  }
}

// Sideways off the wall with the spindle stopped in its place: Q in the control's direction, or I
// and J.
Vec3 ShiftOf(const ControlRun& run) {
  const CycleWords& words = run.cycle;
  Vec3 shift;
  if (words.hasI || words.hasJ) {
    shift.of[0] = words.i;
    shift.of[1] = words.j;
    return shift;
  }
  const int direction = run.table.shiftDirection;
  shift.of[direction / 2] = (direction % 2 ? -1 : 1) * std::fabs(words.q);
  return shift;
}

void ShiftBy(ControlRun& run, const Vec3& shift, double sign) {
  Vec3 to = run.at;
  for (int axis = 0; axis < 2; ++axis) to.of[axis] += sign * shift.of[axis];
  RapidTo(run, to);
}

void FineBore(ControlRun& run, const Depths& depths) {
  const Vec3 shift = ShiftOf(run);
  GoToZ(run, depths.bottom, false);
  Wait(run, run.cycle.dwell);
  ShiftBy(run, shift, 1);
  GoToZ(run, depths.back, true);
  ShiftBy(run, shift, -1);
}

// Down beside the hole, back to its middle, and up with the feed.
void BackBore(ControlRun& run, const Depths& depths) {
  const Vec3 shift = ShiftOf(run);
  ShiftBy(run, shift, 1);
  GoToZ(run, depths.r, true);
  ShiftBy(run, shift, -1);
  GoToZ(run, depths.bottom, false);
  Wait(run, run.cycle.dwell);
  ShiftBy(run, shift, 1);
  GoToZ(run, std::max(depths.back, run.cycle.initialPlane), true);
  ShiftBy(run, shift, -1);
}

// The work of the cycle where the tool stands.
void RunStrokes(ControlRun& run) {
  const Depths depths = DepthsOf(run);
  const int cycle = run.modes.motion;
  if (cycle == 77) return BackBore(run, depths);
  // Of words that are missing the alarm is told already.
  const bool named = run.cycle.named;
  if (named && depths.bottom > depths.r + 1e-9) Report(run, Finding::CycleUpward);
  if (named && run.modes.returnPlane == 98 && depths.r > run.cycle.initialPlane + 1e-9) {
    Report(run, Finding::CyclePlaneHigh, depths.r / run.unit);
  }
  GoToZ(run, depths.r, true);
  if (cycle == 76) return FineBore(run, depths);
  if (cycle == 73 || cycle == 83) {
    Peck(run, depths, cycle == 83);
  } else {
    GoToZ(run, depths.bottom, false);
  }
  const bool dwells = cycle == 82 || cycle == 88 || cycle == 89 || cycle == 73 || cycle == 83;
  if (dwells) Wait(run, run.cycle.dwell);
  const bool feedsBack = cycle == 74 || cycle == 84 || cycle == 85 || cycle == 89;
  if (feedsBack) GoToZ(run, depths.r, false);
  GoToZ(run, depths.back, true);
}

// P and L of a block that calls, or returns, are of that.
bool Calls(const ControlBlock& block) { return block.HasM(97) || block.HasM(98) || block.HasM(99); }

// How often the block asks for the cycle; L0 keeps it for later.
double RepeatsOf(const ControlBlock& block) {
  if (!block.Has('L') || Calls(block)) return 1;
  return std::clamp(std::trunc(block.Of('L')), 0.0, kMostRepeats);
}

void TakeStep(ControlRun& run, const ControlBlock& block, char letter, double& value, bool& has) {
  if (!block.Has(letter)) return;
  value = LengthOf(run, block, letter);
  has = true;
}

void MoveToHole(ControlRun& run, const Vec3& place) {
  Vec3 to = run.at;
  to.of[0] = place.of[0];
  to.of[1] = place.of[1];
  RapidTo(run, to);
}

}  // namespace

void TakeDepths(ControlRun& run, const ControlBlock& block) {
  CycleWords& words = run.cycle;
  const bool step = !run.modes.absolute;
  if (block.Has('R')) {
    words.r = LengthOf(run, block, 'R');
    words.rStep = step;
  }
  if (block.Has('Z')) {
    words.z = LengthOf(run, block, 'Z');
    words.zStep = step;
  }
  TakeStep(run, block, 'Q', words.q, words.hasQ);
  // A whole number is in thousandths of a second, one with a point in seconds.
  if (block.Has('P') && !Calls(block) && !block.HasG(1540)) {
    words.dwell = block.Of('P') * ((block.pointed & LetterBit('P')) ? 1 : 0.001);
  }
}

void TakeCycleWords(ControlRun& run, const ControlBlock& block, bool begins) {
  CycleWords& words = run.cycle;
  TakeDepths(run, block);
  TakeStep(run, block, 'I', words.i, words.hasI);
  // Of a tap J is how much faster it comes out.
  const bool taps = run.modes.motion == 74 || run.modes.motion == 84;
  if (!taps) TakeStep(run, block, 'J', words.j, words.hasJ);
  TakeStep(run, block, 'K', words.k, words.hasK);
  if (begins) NoteDepths(run, block);
}

void NoteDepths(ControlRun& run, const ControlBlock& block) {
  // Behind another cycle its depth and plane are still in force.
  if (run.cycle.named) return;
  run.cycle.named = block.Has('Z') && block.Has('R');
  if (!block.Has('Z')) Report(run, Finding::CycleNoDepth);
  if (!block.Has('R')) Report(run, Finding::CycleNoPlane);
}

void RunCycle(ControlRun& run, const ControlBlock& block, bool begins) {
  constexpr std::uint32_t kPlaces = LetterBit('X') | LetterBit('Y') | kFurtherAxes;
  const bool placed = (block.has & kPlaces) != 0;
  if (!placed && !(begins && run.table.drillsInPlace)) return;
  const double repeats = RepeatsOf(block);
  Vec3 step;
  Vec3 target = run.at;
  for (int axis = 0; axis < 2; ++axis) {
    const char letter = static_cast<char>('X' + axis);
    if (!block.Has(letter)) continue;
    const double length = LengthOf(run, block, letter);
    if (run.modes.absolute) {
      target.of[axis] = length;
    } else {
      step.of[axis] = length;
    }
  }
  for (double i = 0; i < repeats && !run.ended && !OutOfStrokes(run); ++i) {
    for (int axis = 0; axis < 2; ++axis) target.of[axis] += step.of[axis];
    MoveToHole(run, target);
    RunStrokes(run);
  }
}

void RunHolePattern(ControlRun& run, const ControlBlock& block, int code) {
  if (run.modes.motion < 73) return Report(run, Finding::PatternNoCycle);
  Vec3 centre = run.at;
  TakeTarget(run, block, centre);
  const double radius = block.Has('I') ? LengthOf(run, block, 'I') : 0;
  const double angle = (block.Has('J') ? block.Of('J') : 0) * 0.017453292519943295;
  const double holes = RepeatsOf(block);
  const double spacing = (block.Has('K') ? block.Of('K') : 0) * 0.017453292519943295;
  for (double i = 0; i < holes && !run.ended && !OutOfStrokes(run); ++i) {
    Vec3 hole = centre;
    const double turn = code == 70 ? 6.283185307179586 * i / holes : spacing * i;
    const double way = code == 72 ? radius * i : radius;
    const double at = code == 72 ? angle : angle + turn;
    hole.of[0] += way * std::cos(at);
    hole.of[1] += way * std::sin(at);
    MoveToHole(run, hole);
    RunStrokes(run);
  }
}

}  // namespace morva
