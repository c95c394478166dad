#include "simulator/control_compensation.h"

#include <cmath>

#include "simulator/control_check.h"
#include "simulator/control_emit.h"
#include "simulator/control_frame.h"
#include "simulator/control_offset.h"

namespace morva {

namespace {

constexpr double kSame = 1e-6;
constexpr double kStraight = 1e-6;  // sine of the angle below which two ways are one

FlatStretch FlatOf(const ControlSegment& segment) {
  FlatStretch flat;
  flat.from = {segment.from.of[0], segment.from.of[1]};
  flat.to = {segment.to.of[0], segment.to.of[1]};
  flat.arc = segment.kind == ControlSegment::Kind::Arc;
  flat.clockwise = segment.clockwise;
  flat.centre = {segment.centreU, segment.centreV};
  return flat;
}

bool MovesInPlane(const ControlSegment& segment) {
  const double x = segment.to.of[0] - segment.from.of[0];
  const double y = segment.to.of[1] - segment.from.of[1];
  return segment.kind == ControlSegment::Kind::Arc || std::hypot(x, y) > kSame;
}

Flat Beside(const Flat& at, const Flat& way, double left) {
  return {at.x - way.y * left, at.y + way.x * left};
}

// Emits a stretch from where the tool's centre stands to a place in the plane and a height.
void GoTo(ControlRun& run, ControlSegment segment, const Flat& to, double z) {
  ControlCompensation& comp = run.compensation;
  segment.from = comp.at;
  segment.to.of[0] = to.x;
  segment.to.of[1] = to.y;
  segment.to.of[2] = z;
  EmitSegment(run, segment);
  comp.at = segment.to;
}

void GoStraight(ControlRun& run, ControlSegment segment, const Flat& to, double z) {
  if (segment.kind == ControlSegment::Kind::Arc) segment.kind = ControlSegment::Kind::Line;
  GoTo(run, segment, to, z);
}

// Moves along Z alone that came behind the held one, at the corner.
void GoHeldHeights(ControlRun& run) {
  ControlCompensation& comp = run.compensation;
  for (int i = 0; i < comp.heightCount; ++i) {
    const ControlSegment& height = comp.heights[i];
    GoTo(run, height, {comp.at.of[0], comp.at.of[1]}, height.to.of[2]);
  }
  comp.heightCount = 0;
}

double Left(const ControlRun& run) {
  const ControlCompensation& comp = run.compensation;
  return comp.side * (comp.radius + std::copysign(comp.finish, comp.radius));
}

// A dwell or the start of the spindle that stands behind the held move.
void WaitAtCorner(ControlRun& run) {
  const double seconds = run.compensation.waitSeconds;
  run.compensation.waitSeconds = 0;
  if (seconds > 0) PassTime(run, seconds);
}

void CountMisfits(ControlRun& run, std::int32_t places) {
  const std::int32_t number = run.diameterNumber;
  if (number >= 1 && number <= kControlTools) run.track->misfits[number] += places;
}

// The tool does not fit where a move begins or ends.
void NoteCorner(ControlRun& run, const ControlSegment& move) {
  if (run.compensation.finish > 0) return;
  Findings& findings = run.track->findings;
  const std::int32_t before = findings.count + findings.more;
  AddFinding(findings, {Finding::CompCorner, move.line});
  CountMisfits(run, findings.count + findings.more - before);
}

// The held move goes to a place beside its end. Where the corners at its ends leave nothing of it,
// the tool would have to cut backwards.
void ReleaseTo(ControlRun& run, const Flat& to) {
  ControlCompensation& comp = run.compensation;
  const ControlSegment held = comp.held;
  comp.holds = false;
  const Flat from = {comp.at.of[0], comp.at.of[1]};
  const bool back = !comp.entry && GoesBack(FlatOf(held), from, to);
  if (back) NoteCorner(run, held);
  if (comp.entry || back) {
    comp.entry = false;
    GoStraight(run, held, to, held.to.of[2]);
  } else {
    GoTo(run, held, to, held.to.of[2]);
  }
  GoHeldHeights(run);
  WaitAtCorner(run);
}

// The side that the last G40, G41 or G42 asks for, as the tool goes: a mirrored axis swaps them.
int WantedSide(const ControlRun& run) {
  const int wanted = run.compensation.wanted;
  return IsReversed(run, 17) ? -wanted : wanted;
}

// To where the held move ends beside its own end: nothing follows that would say otherwise.
void ReleaseSquare(ControlRun& run) {
  const FlatStretch held = FlatOf(run.compensation.held);
  ReleaseTo(run, Beside(held.to, EndWay(held), Left(run)));
}

// Round an outside corner the tool rolls about it.
void RollTo(ControlRun& run, const ControlSegment& next, const Flat& corner, const Flat& to) {
  ControlSegment roll = next;
  if (std::hypot(to.x - run.compensation.at.of[0], to.y - run.compensation.at.of[1]) <= kSame) {
    return;
  }
  roll.kind = ControlSegment::Kind::Arc;
  roll.plane = 17;
  roll.centreU = corner.x;
  roll.centreV = corner.y;
  roll.clockwise = Left(run) > 0;
  GoTo(run, roll, to, run.compensation.at.of[2]);
}

void HoldNext(ControlRun& run, const ControlSegment& segment) {
  run.compensation.held = segment;
  run.compensation.holds = true;
}

// The corner between the held move and the next one; then the next one is held.
void JoinCorner(ControlRun& run, const ControlSegment& next) {
  const ControlCompensation& comp = run.compensation;
  const double left = Left(run);
  const FlatStretch first = FlatOf(comp.held);
  const FlatStretch second = FlatOf(next);
  const Flat before = EndWay(first);
  const Flat behind = StartWay(second);
  const Flat square = Beside(first.to, before, left);
  const Flat start = Beside(second.from, behind, left);
  const double turn = before.x * behind.y - before.y * behind.x;
  const bool same = before.x * behind.x + before.y * behind.y > 0;
  if ((std::fabs(turn) < kStraight && same) || comp.entry) {
    ReleaseTo(run, start);
    return HoldNext(run, next);
  }
  const bool inside = turn * left > 0;
  if (!inside) {
    ReleaseTo(run, square);
    RollTo(run, next, second.from, start);
    return HoldNext(run, next);
  }
  FlatStretch offsetFirst = first;
  FlatStretch offsetSecond = second;
  Flat meets;
  const bool fits = OffsetBy(first, left, offsetFirst) && OffsetBy(second, left, offsetSecond) &&
                    MeetNear(offsetFirst, offsetSecond, square, meets) &&
                    LiesOn(offsetFirst, meets) && LiesOn(offsetSecond, meets);
  if (!fits) {
    NoteCorner(run, next);
    ReleaseTo(run, square);
    GoStraight(run, next, start, run.compensation.at.of[2]);
  } else {
    ReleaseTo(run, meets);
  }
  HoldNext(run, next);
}

// False: as many wait already as can.
bool HoldHeight(ControlCompensation& comp, const ControlSegment& segment) {
  if (comp.heightCount == kMaxHeldMoves) return false;
  comp.heights[comp.heightCount++] = segment;
  return true;
}

void CheckFits(ControlRun& run, const ControlSegment& segment) {
  FlatStretch offset;
  if (!OffsetBy(FlatOf(segment), Left(run), offset)) NoteCorner(run, segment);
}

// The move on which compensation begins goes straight to beside the next one's start.
void BeginCompensation(ControlRun& run, const ControlSegment& segment) {
  ControlCompensation& comp = run.compensation;
  comp.side = WantedSide(run);
  comp.at = segment.from;
  comp.entry = true;
  if (segment.kind == ControlSegment::Kind::Arc) Report(run, Finding::CompArcStart);
  const double x = segment.to.of[0] - segment.from.of[0];
  const double y = segment.to.of[1] - segment.from.of[1];
  if (std::hypot(x, y) < comp.radius - kSame) {
    Report(run, Finding::CompEntryShort, comp.radius / run.unit);
    CountMisfits(run, kMostMisfits);
  }
  HoldNext(run, segment);
}

// The move on which it ends goes straight from beside the last one to its own end.
void LeaveCompensation(ControlRun& run, const ControlSegment& segment) {
  ControlCompensation& comp = run.compensation;
  if (comp.holds) ReleaseSquare(run);
  if (segment.kind == ControlSegment::Kind::Arc) Report(run, Finding::CompArcStart);
  comp.side = 0;
  GoStraight(run, segment, {segment.to.of[0], segment.to.of[1]}, segment.to.of[2]);
}

}  // namespace

void CompensateSegment(ControlRun& run, const ControlSegment& segment) {
  ControlCompensation& comp = run.compensation;
  if (comp.side == 0 && (comp.wanted == 0 || !MovesInPlane(segment))) {
    return EmitSegment(run, segment);
  }
  EmitProgrammed(run, segment);
  if (comp.side == 0) return BeginCompensation(run, segment);
  if (!MovesInPlane(segment)) {
    // It comes behind the held move, whose end is not known yet.
    if (comp.holds && HoldHeight(comp, segment)) return;
    if (comp.holds) ReleaseSquare(run);
    return GoTo(run, segment, {comp.at.of[0], comp.at.of[1]}, segment.to.of[2]);
  }
  if (comp.wanted == 0) return LeaveCompensation(run, segment);
  CheckFits(run, segment);
  if (comp.holds) {
    JoinCorner(run, segment);
  } else {
    const FlatStretch flat = FlatOf(segment);
    RollTo(run, segment, flat.from, Beside(flat.from, StartWay(flat), Left(run)));
    HoldNext(run, segment);
  }
  // A change of sides takes effect from the next corner on.
  comp.side = WantedSide(run);
}

void FlushMoves(ControlRun& run) {
  if (run.compensation.holds) ReleaseSquare(run);
}

bool HoldWait(ControlRun& run, double seconds) {
  ControlCompensation& comp = run.compensation;
  if (comp.holds) comp.waitSeconds += seconds;
  return comp.holds;
}

void StopCompensation(ControlRun& run) {
  FlushMoves(run);
  ControlCompensation& comp = run.compensation;
  comp.wanted = 0;
  if (comp.side == 0) return;
  comp.side = 0;
  run.shown = comp.at;
  run.at = ProgramOf(run, run.shown);
}

int InterruptCompensation(ControlRun& run) {
  ControlCompensation& comp = run.compensation;
  const int wanted = comp.wanted;
  if (comp.side != 0 && wanted != 0) Report(run, Finding::CompLeftOn);
  StopCompensation(run);
  return wanted;
}

void ResumeCompensation(ControlRun& run, int wanted) { run.compensation.wanted = wanted; }

void TakeCompensation(ControlRun& run, int code, const ControlBlock& block) {
  ControlCompensation& comp = run.compensation;
  run.modes.compensation = code;
  if (block.Has('D')) run.diameterNumber = block.NumberOf('D');
  comp.wanted = code == 40 ? 0 : code == 41 ? 1 : -1;
  comp.ofPocket = false;
  if (code == 40) return;
  if (run.modes.plane != 17) {
    comp.wanted = 0;
    return Report(run, Finding::CompPlane, code);
  }
  const std::int32_t number = run.diameterNumber;
  if (number <= 0 || number > kControlTools) {
    comp.radius = 0;
    return Report(run, Finding::CompNoOffset);
  }
  const ToolOffset& tool = run.table.tools[number];
  comp.radius = (tool.diameter + tool.diameterWear) / 2 * run.perInch;
  if (comp.radius == 0) NoteNoDiameter(run, number);
}

void EndCompensation(ControlRun& run) {
  FlushMoves(run);
  // The control goes by the code in force: behind G40 it is off although no move has followed, and
  // on behind a way home without G40. Where a finding ended the run its end is not known.
  const ControlCompensation& comp = run.compensation;
  const bool on = comp.wanted != 0 && (comp.side != 0 || !comp.ofPocket);
  if (on && !run.stopped) Report(run, Finding::CompAtEnd);
}

}  // namespace morva
