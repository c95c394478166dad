#include "simulator/control_motion.h"

#include <utility>

#include "simulator/control_check.h"
#include "simulator/control_compensation.h"
#include "simulator/control_emit.h"
#include "simulator/control_frame.h"
#include "simulator/control_stock.h"

namespace morva {

namespace {

constexpr int kGeneralPocket = 150;

ControlSegment SegmentTo(const ControlRun& run, const Vec3& shown, ControlSegment::Kind kind) {
  return {.kind = kind,
          .from = run.shown,
          .to = shown,
          .line = run.line,
          .feed = run.feed,
          .inverse = run.modes.feedMode == 93};
}

// An axis stays at its place of the machine until the program moves it.
void NoteMachineAxes(ControlRun& run, const ControlSegment& segment, bool toMachine) {
  for (int axis = 0; axis < 3; ++axis) {
    if (segment.to.of[axis] == segment.from.of[axis]) continue;
    const unsigned bit = 1U << axis;
    const unsigned others = run.machineAxes & ~bit;
    run.machineAxes = static_cast<std::uint8_t>(toMachine ? others | bit : others);
  }
}

constexpr std::uint8_t kEveryAxis = 7;
// Points up to which the drawn zero may still move; a program names its offset long before.
constexpr std::int32_t kLeadPoints = 256;

// The stock lies about the work offset of the first move to one of its places.
void StartInWork(ControlRun& run) {
  if (std::exchange(run.movedInWork, true)) return;
  if (run.stock && run.moved) NoteStockZero(run);
}

void Draw(ControlRun& run, const ControlSegment& segment) {
  const bool compensates = run.compensation.side != 0 || run.compensation.wanted != 0;
  if (compensates) return CompensateSegment(run, segment);
  EmitSegment(run, segment);
}

// False: it is one more than there may be.
bool NoteMoveOfOutline(ControlRun& run, const ControlSegment& segment) {
  if (run.ground.moves.size() < kMaxGroundPoints) {
    const ControlCompensation& comp = run.compensation;
    run.ground.moves.push_back({segment, comp.wanted, comp.radius});
    return true;
  }
  DropGround(run);
  return false;
}

// The segment gets what is known of its end.
void Send(ControlRun& run, ControlSegment&& segment, bool toMachine = false) {
  NoteMachineAxes(run, segment, toMachine);
  NoteWay(run, segment);
  NoteTravel(run, segment.to);
  Vec3 places[4];
  const int count = TurningPlaces(segment, places);
  for (int i = 0; i < count; ++i) NoteTravel(run, places[i]);
  const bool leads = run.machineAxes == kEveryAxis && run.track->path.count < kLeadPoints;
  if (!leads) StartInWork(run);
  segment.machineAxes = run.machineAxes;
  run.shown = segment.to;
  ++run.strokes;
  if (run.ground.noting && NoteMoveOfOutline(run, segment)) return;
  Draw(run, segment);
}

}  // namespace

double LengthFrom(ControlRun& run, double value, bool pointed) {
  if (pointed || run.table.wholeLengths) return value * run.unit;
  const double least = run.modes.metric ? 0.001 : 0.0001;
  return value * least * run.unit;
}

double LengthOf(ControlRun& run, const ControlBlock& block, char letter) {
  NoteLength(run, block, letter);
  return LengthFrom(run, block.Of(letter), (block.pointed & LetterBit(letter)) != 0);
}

void RapidToShown(ControlRun& run, const Vec3& shown) {
  Send(run, SegmentTo(run, shown, ControlSegment::Kind::Rapid), true);
  run.at = ProgramOf(run, shown);
}

void RapidTo(ControlRun& run, const Vec3& program) {
  Send(run, SegmentTo(run, ShownOf(run, program), ControlSegment::Kind::Rapid));
  run.at = program;
}

void FeedTo(ControlRun& run, const Vec3& program) {
  NoteCut(run);
  Send(run, SegmentTo(run, ShownOf(run, program), ControlSegment::Kind::Line));
  run.at = program;
}

void ArcTo(ControlRun& run, const Vec3& program, double centreU, double centreV, bool clockwise) {
  NoteCut(run);
  const PlaneAxes axes = AxesOf(run.modes.plane);
  ControlSegment segment = SegmentTo(run, ShownOf(run, program), ControlSegment::Kind::Arc);
  Vec3 centre = program;
  centre.of[axes.u] = centreU;
  centre.of[axes.v] = centreV;
  const Vec3 shownCentre = ShownOf(run, centre);
  segment.centreU = shownCentre.of[axes.u];
  segment.centreV = shownCentre.of[axes.v];
  segment.plane = run.modes.plane;
  segment.clockwise = clockwise != IsReversed(run, run.modes.plane);
  Send(run, std::move(segment));
  run.at = program;
}

void DrawNotedMoves(ControlRun& run) {
  ControlCompensation& comp = run.compensation;
  const std::int32_t line = run.line;
  const int wanted = comp.wanted;
  const double radius = comp.radius;
  for (const OutlineMove& move : run.ground.moves) {
    run.line = move.segment.line;
    comp.wanted = move.wanted;
    comp.radius = move.radius;
    Draw(run, move.segment);
  }
  run.ground.moves.clear();
  run.line = line;
  comp.wanted = wanted;
  comp.radius = radius;
}

void DropGround(ControlRun& run) {
  if (!run.ground.noting) return;
  run.ground.noting = run.ground.wanted = false;
  AddFinding(run.track->findings,
             {Finding::NotFollowed, run.pocket.line, kGeneralPocket, run.modes.metric, 'G'});
  DrawNotedMoves(run);
}

void Wait(ControlRun& run, double seconds) {
  if (seconds > 0 && !HoldWait(run, seconds)) PassTime(run, seconds);
}

bool TakeTarget(ControlRun& run, const ControlBlock& block, Vec3& target) {
  target = run.at;
  bool any = false;
  for (int axis = 0; axis < 3; ++axis) {
    const char letter = static_cast<char>('X' + axis);
    if (!block.Has(letter)) continue;
    any = true;
    const double length = LengthOf(run, block, letter);
    target.of[axis] = run.modes.absolute ? length : run.at.of[axis] + length;
  }
  return any;
}

}  // namespace morva
