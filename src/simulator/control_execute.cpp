#include "simulator/control_execute.h"

#include <algorithm>
#include <cmath>

#include "library/units.h"
#include "simulator/control_check.h"
#include "simulator/control_codes.h"
#include "simulator/control_compensation.h"
#include "simulator/control_corner.h"
#include "simulator/control_cycles.h"
#include "simulator/control_flow.h"
#include "simulator/control_frame.h"
#include "simulator/control_motion.h"
#include "simulator/control_pocket.h"
#include "simulator/control_stock.h"
#include "text/series_trig.h"

namespace morva {

namespace {

constexpr int kCode = 10;       // codes stand times ten
constexpr double kDown = 1e-9;  // display units
constexpr std::uint32_t kAxes = LetterBit('X') | LetterBit('Y') | LetterBit('Z');
constexpr std::uint32_t kCentre = LetterBit('I') | LetterBit('J') | LetterBit('K');

// Codes that hold for their block alone, and what the block's words belong to.
struct BlockCodes {
  int home = 0;          // 28 or 29
  bool machine = false;  // G53
  bool dwell = false;
  bool setsOffsets = false;
  bool shift = false;  // G92
  bool local = false;  // G52
  bool macro = false;
  int pattern = 0;       // 70, 71, 72
  int pocket = 0;        // 12, 13, 150
  bool ignored = false;  // a code whose words the reader does not follow
  bool cycleBegins = false;
  bool scales = false;   // G51: X, Y, Z are its centre
  bool turns = false;    // G68: X, Y, R are its own
  bool mirrors = false;  // G101, G100
  bool motionCode = false;
};

// Compensation works in the XY plane alone: it ends here.
void LeavePlane(ControlRun& run, int code) {
  if (code == 17 || run.compensation.wanted == 0) return;
  Report(run, Finding::CompPlane, code);
  StopCompensation(run);
}

void TakeUnit(ControlRun& run, bool metric) {
  if (run.unitKnown && run.modes.metric != metric) {
    Report(run, Finding::UnitDisagrees, metric ? 21 : 20);
  }
  run.unitKnown = true;
  run.modes.metric = metric;
  run.unit = metric ? run.perInch * kInchPerMm : run.perInch;
}

void TakeWorkOffset(ControlRun& run, const ControlBlock& block, int code) {
  int row = kFirstWorkRow + code - 54;
  if (code >= 110 && code <= 129) row = kFurtherWorkRow + code - 110;
  if (code == 154) {
    const double number = block.Has('P') ? block.Of('P') : 0;
    if (!(number >= 1 && number <= kFurtherWorkRows)) {
      return Report(run, Finding::BadVariable, number);
    }
    row = kFurtherWorkRow + static_cast<int>(number) - 1;
  }
  if (!run.movedInWork) {
    run.modes.workRow = row;
    return PlaceZero(run, row);
  }
  if (row == run.modes.workRow) return;
  DropCorner(run);
  run.modes.workRow = row;
  SettleFrame(run);
}

void TakeScale(ControlRun& run, const ControlBlock& block, int code) {
  ControlFrame& frame = run.frame;
  frame.scale = 1;
  if (code == 51) {
    // Where the tool stands, whatever an earlier scale made of it.
    SettleFrame(run);
    Vec3 centre = run.at;
    for (int axis = 0; axis < 3; ++axis) {
      const char letter = static_cast<char>('X' + axis);
      if (block.Has(letter)) centre.of[axis] = LengthOf(run, block, letter);
    }
    double factor = run.table.scale;
    if (block.Has('P')) factor = block.Of('P') * ((block.pointed & LetterBit('P')) ? 1 : 0.001);
    if (factor > 0) {
      frame.scaleCentre = centre;
      frame.scale = factor;
    } else {
      Report(run, Finding::PocketWords, factor);
    }
  }
  SettleFrame(run);
}

void TakeTurn(ControlRun& run, const ControlBlock& block, int code) {
  ControlFrame& frame = run.frame;
  const Vec3 before = run.at;
  frame.turned = false;
  if (code == 68) {
    const PlaneAxes axes = AxesOf(run.modes.plane);
    const auto centre = [&](int axis) {
      const char letter = static_cast<char>('X' + axis);
      const double own = block.Has(letter) ? LengthOf(run, block, letter) : before.of[axis];
      const double about = frame.scaleCentre.of[axis];
      return frame.scale == 1 ? own : about + (own - about) * frame.scale;
    };
    const double degrees = block.Has('R') ? block.Of('R') : 0;
    frame.turnU = axes.u;
    frame.turnV = axes.v;
    frame.turnCentreU = centre(axes.u);
    frame.turnCentreV = centre(axes.v);
    frame.turnCos = std::cos(degrees * kRadiansPerDegree);
    frame.turnSin = std::sin(degrees * kRadiansPerDegree);
    frame.turned = true;
  }
  SettleFrame(run);
}

void TakeMirror(ControlRun& run, const ControlBlock& block, int code) {
  bool any = false;
  for (int axis = 0; axis < 3; ++axis) {
    const char letter = static_cast<char>('X' + axis);
    any = any || block.Has(letter);
    if (block.Has(letter)) run.frame.mirror[axis] = code == 101;
  }
  if (!any && code == 100) {
    for (bool& mirror : run.frame.mirror) mirror = false;
  }
  SettleFrame(run);
}

bool HasM(const ControlBlock& block, int code) {
  return std::find(block.m, block.m + block.mCount, code) != block.m + block.mCount;
}

void TakeLength(ControlRun& run, const ControlBlock& block, int code) {
  run.modes.lengthMode = code;
  if (block.Has('H')) run.lengthNumber = block.NumberOf('H');
  // Without H the number that was named last holds; H0 is the spindle's nose.
  const bool ends = code == 49 || run.lengthNumber == 0;
  if (ends) run.modes.lengthMode = 49;
  run.lengthInForce = !ends;
  NoteToolLength(run);
}

void TakeMotionCode(ControlRun& run, int code, BlockCodes& codes) {
  run.modes.motion = run.modes.line = code;
  run.modeRemained = false;
  codes.motionCode = true;
}

void EndCycle(ControlRun& run) {
  run.modeRemained = run.modeRemained || run.modes.motion >= 73;
  run.modes.motion = run.modes.line;
}

void TakeCycleCode(ControlRun& run, int code, BlockCodes& codes) {
  // The plane that G98 returns to is where the tool stood before the first cycle.
  if (run.modes.motion < 73) {
    run.cycle = CycleWords{};
    run.cycle.initialPlane = run.at.of[2];
  }
  run.modes.motion = code;
  codes.cycleBegins = true;
}

void TakeOneCode(ControlRun& run, const ControlBlock& block, int timesTen, BlockCodes& codes) {
  const int code = timesTen / kCode;
  ControlModes& modes = run.modes;
  switch (CodeOf(timesTen).action) {
    case CodeAction::Unknown:
      return Report(run, Finding::UnknownG, timesTen / 10.0);
    case CodeAction::Lathe:
      return Report(run, Finding::LatheWord, code);
    case CodeAction::Motion:
      return TakeMotionCode(run, code, codes);
    case CodeAction::Cycle:
      return TakeCycleCode(run, code, codes);
    case CodeAction::CycleEnd:
      return EndCycle(run);
    case CodeAction::Plane:
      LeavePlane(run, code);
      modes.plane = code;
      return;
    case CodeAction::Absolute:
    case CodeAction::Incremental:
      modes.absolute = code == 90;
      return;
    case CodeAction::FeedMode:
      if (modes.feedMode != code) run.feedKnown = false;
      modes.feedMode = code;
      return;
    case CodeAction::Inch:
    case CodeAction::Metric:
      return TakeUnit(run, code == 21);
    case CodeAction::Compensation:
      return TakeCompensation(run, code, block);
    case CodeAction::Length:
      if (code != 49 && HasM(block, 6)) return;  // behind the change
      return TakeLength(run, block, code);
    case CodeAction::Return:
      modes.returnPlane = code;
      return;
    case CodeAction::WorkOffset:
      return TakeWorkOffset(run, block, code);
    case CodeAction::ExactStop:
      modes.exactStop = code == 61;
      return;
    case CodeAction::Scale:
      codes.scales = true;
      return;
    case CodeAction::Turn:
      codes.turns = true;
      return;
    case CodeAction::Mirror:
      codes.mirrors = true;
      return;
    case CodeAction::Dwell:
      codes.dwell = true;
      return;
    case CodeAction::ExactBlock:
      return;
    case CodeAction::LookAhead:
      codes.ignored = true;  // its P is no word of a move
      return;
    case CodeAction::SetOffsets:
      codes.setsOffsets = true;
      return;
    case CodeAction::Circle:
    case CodeAction::Pocket:
      codes.pocket = code;
      return;
    case CodeAction::Home:
    case CodeAction::FromHome:
      codes.home = code;
      return;
    case CodeAction::LocalZero:
      codes.local = true;
      return;
    case CodeAction::Machine:
      codes.machine = true;
      return;
    case CodeAction::Macro:
      codes.macro = true;
      return;
    case CodeAction::HolePattern:
      codes.pattern = code;
      return;
    case CodeAction::Shift:
      codes.shift = true;
      return;
    case CodeAction::NotFollowed:
      codes.ignored = true;
      return NoteUnfollowed(run, code);
  }
}

void CheckGroups(ControlRun& run, const ControlBlock& block) {
  std::uint32_t seen = 0;
  for (int i = 0; i < block.gCount; ++i) {
    const int group = CodeOf(block.g[i]).group;
    if (group == 0) continue;
    const std::uint32_t bit = 1u << group;
    const bool again = std::find(block.g, block.g + i, block.g[i]) != block.g + i;
    if ((seen & bit) && !again) Report(run, Finding::TwoOfAGroup, block.g[i] / 10.0);
    seen |= bit;
  }
}

// Units and increments come first: the words of the block are read by them.
BlockCodes TakeCodes(ControlRun& run, const ControlBlock& block) {
  BlockCodes codes;
  if (block.gCount == 0) return codes;
  if (block.gCount == 1) {
    TakeOneCode(run, block, block.g[0], codes);
    return codes;
  }
  CheckGroups(run, block);
  for (int i = 0; i < block.gCount; ++i) {
    const CodeAction action = CodeOf(block.g[i]).action;
    const bool unit = action == CodeAction::Inch || action == CodeAction::Metric;
    const bool steps = action == CodeAction::Absolute || action == CodeAction::Incremental;
    const bool plane = action == CodeAction::Plane;
    if (unit || steps || plane) TakeOneCode(run, block, block.g[i], codes);
  }
  for (int i = 0; i < block.gCount; ++i) {
    const CodeAction action = CodeOf(block.g[i]).action;
    const bool first = action == CodeAction::Inch || action == CodeAction::Metric ||
                       action == CodeAction::Absolute || action == CodeAction::Incremental ||
                       action == CodeAction::Plane;
    if (!first) TakeOneCode(run, block, block.g[i], codes);
  }
  return codes;
}

void TakeFeed(ControlRun& run, const ControlBlock& block) {
  if (!block.Has('F')) return;
  const bool pointed = (block.pointed & LetterBit('F')) != 0 || run.table.wholeFeeds;
  const double least = run.modes.metric ? 0.001 : 0.0001;
  const double written = block.Of('F') * (pointed ? 1 : least);
  run.feed = run.modes.feedMode == 93 ? written : written * run.unit;
  // In G95 F is the way of a turn.
  run.feedPerTurn = run.feed;
  if (run.modes.feedMode == 95) run.feed *= run.speed;
  run.feedKnown = written > 0;
  if (!pointed && written > 0 && run.sawPoint && !run.table.wholeLengths) {
    ReportOnce(run, Finding::WholeFeed, written);
  }
}

void TakeToolWords(ControlRun& run, const ControlBlock& block) {
  if (block.Has('S')) {
    run.speed = block.Of('S');
    run.speedKnown = true;
    if (run.modes.feedMode == 95) run.feed = run.feedPerTurn * run.speed;
    if (run.speed > run.table.mostSpeed) Report(run, Finding::SpeedHigh, run.speed);
  }
  if (block.Has('T')) run.toolCalled = block.NumberOf('T');
}

// To machine zero along Z, then the other tool. The spindle stands still behind it.
void ChangeTool(ControlRun& run) {
  DropCorner(run);
  DropGround(run);
  const int compensation = InterruptCompensation(run);
  Vec3 up = run.shown;
  up.of[2] = -run.zero.of[2];
  if (run.moved && std::fabs(up.of[2] - run.shown.of[2]) > 1e-9) {
    RapidToShown(run, up);
  } else {
    run.shown = up;
    run.at = ProgramOf(run, up);
    run.machineAxes |= 4;
  }
  ResumeCompensation(run, compensation);
  run.tool = run.toolCalled;
  run.spindle = false;
  run.lengthInForce = false;
  EndCycle(run);
  NoteChange(run);
  Wait(run, run.table.toolChangeSeconds);
  BeginOperation(*run.track, {.line = run.line, .tool = run.tool, .began = run.time});
}

void TakeEarlyMs(ControlRun& run, const ControlBlock& block) {
  if (block.mCount > 1) Report(run, Finding::TwoM, block.m[1]);
  for (int i = 0; i < block.mCount; ++i) {
    const int code = block.m[i];
    if (!IsKnownM(code)) Report(run, Finding::UnknownM, code);
    if (code == 6) {
      ChangeTool(run);
      // A length of the block's own is that of the new tool.
      if (block.HasG(430) || block.HasG(440)) TakeLength(run, block, block.HasG(430) ? 43 : 44);
    }
    if (code == 3 || code == 4) {
      run.spindle = true;
      NoteSpindle(run);
      Wait(run, run.table.spindleSeconds);
    }
  }
}

void TakeLateMs(ControlRun& run, const ControlBlock& block) {
  for (int i = 0; i < block.mCount && !run.ended; ++i) {
    switch (block.m[i]) {
      case 5:
      case 0:
        run.spindle = false;
        break;
      case 1:
        if (run.table.optionalStop) run.spindle = false;
        break;
      case 19:
        NoteSpindlePlaced(run);
        break;
      case 2:
      case 30:
        run.ended = run.sawEnd = true;
        break;
      case 97:
        CallLabel(run, block);
        break;
      case 98:
        CallProgram(run, block);
        break;
      case 99:
        ReturnFrom(run, block);
        break;
      default:
        break;
    }
  }
}

// G28 by way of a point to machine zero, of all axes where none is named; G29 back by that point.
void GoHome(ControlRun& run, const ControlBlock& block, int code) {
  DropGround(run);
  const int compensation = InterruptCompensation(run);
  Vec3 by;
  const bool named = TakeTarget(run, block, by) || (block.has & kFurtherAxes) != 0;
  run.modes.lengthMode = 49;
  run.lengthInForce = false;
  // G91 that only the way home needs.
  run.stepsAtChange = run.stepsAtChange || (code == 28 && !run.modes.absolute);
  if (code == 29) {
    RapidTo(run, run.homeBy);
    RapidTo(run, by);
    return ResumeCompensation(run, compensation);
  }
  run.homeBy = by;
  if (named) {
    const bool down = block.Has('Z') && ShownOf(run, by).of[2] < run.shown.of[2] - kDown;
    if (run.modes.absolute && down) Report(run, Finding::HomeThroughPart);
    RapidTo(run, by);
  }
  Vec3 home = run.shown;
  for (int axis = 0; axis < 3; ++axis) {
    const bool goes = !named || block.Has(static_cast<char>('X' + axis));
    if (goes) home.of[axis] = -run.zero.of[axis];
  }
  if (!SeesStock(run)) NoteWayHome(run, home);
  RapidToShown(run, home);
  ResumeCompensation(run, compensation);
}

// G53: places of the machine, whatever offset is in force.
void GoInMachine(ControlRun& run, const ControlBlock& block) {
  if (!(block.has & kAxes)) return;
  DropGround(run);
  const int compensation = InterruptCompensation(run);
  Vec3 to = run.shown;
  for (int axis = 0; axis < 3; ++axis) {
    const char letter = static_cast<char>('X' + axis);
    if (!block.Has(letter)) continue;
    to.of[axis] = LengthOf(run, block, letter) - run.zero.of[axis];
  }
  if (!run.modes.absolute) Report(run, Finding::MachineWithG91);
  if (!SeesStock(run)) NoteWayHome(run, to);
  RapidToShown(run, to);
  ResumeCompensation(run, compensation);
}

// G92: the tool stands at the named place from here on, in every offset.
void ShiftAll(ControlRun& run, const ControlBlock& block) {
  FlushMoves(run);
  for (int axis = 0; axis < 3; ++axis) {
    const char letter = static_cast<char>('X' + axis);
    if (!block.Has(letter)) continue;
    run.frame.g92.of[axis] += run.at.of[axis] - LengthOf(run, block, letter);
    run.frame.g92.of[axis] += run.table.work[kLocalZeroRow][axis] * run.perInch;
    run.table.work[kLocalZeroRow][axis] = 0;
  }
  SettleFrame(run);
}

void TakeLocalZero(ControlRun& run, const ControlBlock& block) {
  for (int axis = 0; axis < 3; ++axis) {
    const char letter = static_cast<char>('X' + axis);
    if (!block.Has(letter)) continue;
    run.table.work[kLocalZeroRow][axis] = LengthOf(run, block, letter) / run.perInch;
  }
  SettleFrame(run);
}

// G10: L2 and L20 work offsets, L10 to L13 lengths and diameters of tools. G91 adds.
void SetOffsets(ControlRun& run, const ControlBlock& block) {
  const int kind = block.Has('L') ? block.NumberOf('L') : 2;
  const double number = block.Has('P') ? block.Of('P') : 0;
  const bool adds = !run.modes.absolute;
  if (kind == 2 || kind == 20) {
    const int most = kind == 2 ? 6 : kFurtherWorkRows;
    if (!(number >= 0 && number <= most)) return Report(run, Finding::BadVariable, number);
    const int first = kind == 2 ? kLocalZeroRow : kFurtherWorkRow - 1;
    const int row = number == 0 ? kLocalZeroRow : first + static_cast<int>(number);
    for (int axis = 0; axis < 3; ++axis) {
      const char letter = static_cast<char>('X' + axis);
      if (!block.Has(letter)) continue;
      const double inches = LengthOf(run, block, letter) / run.perInch;
      double& place = run.table.work[row][axis];
      place = adds ? place + inches : inches;
    }
    if (!run.movedInWork) return PlaceZero(run, run.modes.workRow);
    return SettleFrame(run);
  }
  double ToolOffset::*field = kind == 10                ? &ToolOffset::length
                              : kind == 11 || kind == 1 ? &ToolOffset::lengthWear
                              : kind == 12              ? &ToolOffset::diameter
                                                        : &ToolOffset::diameterWear;
  const bool known = kind == 1 || (kind >= 10 && kind <= 13);
  if (!known || !(number >= 1 && number <= kControlTools)) {
    return Report(run, Finding::BadVariable, number);
  }
  double& place = run.table.tools[static_cast<int>(number)].*field;
  const double inches = block.Has('R') ? LengthOf(run, block, 'R') / run.perInch : 0;
  place = adds ? place + inches : inches;
}

void Dwell(ControlRun& run, const ControlBlock& block) {
  if (!block.Has('P')) return;
  Wait(run, block.Of('P') * ((block.pointed & LetterBit('P')) ? 1 : 0.001));
}

// Whether a line that waits for its corner can go on waiting, or meets its second line.
bool LeavesCornerOpen(const ControlRun& run, const ControlBlock& block, const BlockCodes& codes) {
  const bool own = codes.home || codes.machine || codes.pattern || codes.pocket || codes.shift ||
                   codes.local || codes.scales || codes.turns || codes.mirrors;
  const bool arc = run.modes.motion == 2 || run.modes.motion == 3;
  const bool moves = (block.has & (arc ? kAxes | kCentre : kAxes)) != 0;
  return !own && (!moves || run.modes.motion == 1);
}

// What the axis words of the block do. Only one of these takes them.
void Move(ControlRun& run, const ControlBlock& block, const BlockCodes& codes) {
  if (codes.ignored || codes.setsOffsets || codes.dwell) return;
  if (run.corner.kind && !LeavesCornerOpen(run, block, codes)) DropCorner(run);
  NoteFurtherAxes(run, block);
  if (codes.home) return GoHome(run, block, codes.home);
  if (codes.machine) return GoInMachine(run, block);
  if (codes.pattern) {
    // On the cycle's own line there is no hole at the middle.
    if (codes.cycleBegins) TakeDepths(run, block);
    if (codes.cycleBegins) NoteDepths(run, block);
    return RunHolePattern(run, block, codes.pattern);
  }
  if (codes.pocket == 12 || codes.pocket == 13) {
    return RunCirclePocket(run, block, codes.pocket == 12);
  }
  if (codes.pocket) return CallPocket(run, block);
  if (codes.shift || codes.local || codes.scales || codes.turns || codes.mirrors) return;
  NoteMove(run, block);
  if (run.modes.motion >= 73) {
    TakeCycleWords(run, block, codes.cycleBegins);
    return RunCycle(run, block, codes.cycleBegins);
  }
  Vec3 target;
  const bool any = TakeTarget(run, block, target);
  switch (run.modes.motion) {
    case 0:
      if (!any) return;
      NoteRapid(run, target);
      return RapidTo(run, target);
    case 1:
      if (any) RunLine(run, block, target);
      return;
    default:
      break;
  }
  // A whole turn may name its centre alone.
  if (any || (block.has & kCentre) != 0) RunArc(run, block, target);
}

void TakeOwnWords(ControlRun& run, const ControlBlock& block, const BlockCodes& codes) {
  if (codes.shift) ShiftAll(run, block);
  if (codes.local) TakeLocalZero(run, block);
  if (codes.setsOffsets) SetOffsets(run, block);
  if (codes.dwell) Dwell(run, block);
  for (int i = 0; i < block.gCount; ++i) {
    const int code = block.g[i] / kCode;
    if (codes.scales && (code == 50 || code == 51)) TakeScale(run, block, code);
    if (codes.turns && (code == 68 || code == 69)) TakeTurn(run, block, code);
    if (codes.mirrors && (code == 100 || code == 101)) TakeMirror(run, block, code);
  }
}

}  // namespace

void ExecuteBlock(ControlRun& run, const ControlBlock& block, const ControlPlace& blockStart) {
  const bool empty = block.has == 0 && block.gCount == 0 && block.mCount == 0;
  if (!empty) {
    // Another program begins: the one before it ends here.
    if (block.Has('O')) {
      if (run.codeSeen && !run.entersProgram) return EndOfText(run);
      run.entersProgram = false;
    }
    run.codeSeen = true;
    const BlockCodes codes = TakeCodes(run, block);
    if (codes.macro) {
      // All of its letters are arguments.
      if (!run.ended) CallMacro(run, block, blockStart);
    } else {
      TakeToolWords(run, block);
      TakeFeed(run, block);
      TakeEarlyMs(run, block);
      TakeOwnWords(run, block, codes);
      Move(run, block, codes);
      TakeLateMs(run, block);
    }
  }
  if (!run.ended) FollowStatement(run, block, blockStart);
}

}  // namespace morva
