#include "simulator/control_reader.h"

#include <algorithm>
#include <memory>

#include "library/units.h"
#include "simulator/control_check.h"
#include "simulator/control_compensation.h"
#include "simulator/control_corner.h"
#include "simulator/control_execute.h"
#include "simulator/control_frame.h"
#include "simulator/control_motion.h"
#include "simulator/control_stock.h"
#include "simulator/control_variables.h"

namespace morva {

namespace {

constexpr std::int64_t kMostStrokesAgain = 400000;  // moves that no line of the text asks for

// The line that motion and findings of the block are told for.
std::int32_t ShownLine(const ControlRun& run, const ControlBlock& block) {
  const std::int32_t shown = run.calls[run.callCount - 1].shownLine;
  return shown >= 0 ? shown : block.line;
}

void RunAll(ControlRun& run) {
  ControlBlock block;
  std::int64_t blocks = 0;
  while (!run.ended) {
    const ControlPlace start = run.place;
    // Findings of the reading need the line before it is read.
    block.line = start.line;
    run.line = ShownLine(run, block);
    ReadBlock(run, block);
    if (run.ended) break;
    run.blockStart = start;
    run.mostStrokes = ++blocks + kMostStrokesAgain;
    ExecuteBlock(run, block, start);
    if (OutOfStrokes(run)) StopWith(run, Finding::NoStepsLeft);
  }
}

// A comment line costs what it is passed over again and again.
std::int64_t SpareUnits(const ControlRun& run) {
  if (run.outOfSteps) return -1;
  return (kMostRepeatedUnits - run.repeatedUnits) / std::max<std::int64_t>(run.repeats, 1);
}

}  // namespace

void StopWith(ControlRun& run, Finding kind, double number) {
  Report(run, kind, number);
  run.ended = run.stopped = true;
  run.outOfSteps = run.outOfSteps || kind == Finding::NoStepsLeft;
}

void ReadMachineMotion(ControlTrack& track, std::u16string_view text,
                       const ReadMotionOptions& options) {
  EmptyPath(track.path);
  EmptyPath(track.programmed);
  track.findings = Findings{};
  track.operationCount = 0;
  track.totalSeconds = 0;
  track.printed.clear();
  std::fill(std::begin(track.misfits), std::end(track.misfits), 0);
  const auto run = std::make_unique<ControlRun>();
  static const ControlTable kDefaults;
  run->table = options.table ? *options.table : kDefaults;
  run->track = &track;
  run->perInch = options.metric ? kMmPerInch : 1;
  run->unit = run->perInch * (options.metric ? kInchPerMm : 1);
  run->modes.metric = options.metric;
  run->findProgram = options.findProgram;
  run->texts.push_back({text, -1, {}, {}, {}, false});
  ClearVariables(run->variables);
  PlaceZero(*run, run->modes.workRow);
  if (options.stock) BeginStock(*run, *options.stock);
  PassHead(*run);
  RunAll(*run);
  DropCorner(*run);
  DropGround(*run);
  EndCompensation(*run);
  NoteEnd(*run);
  NoteStockEnd(*run);
  if (!run->sawEnd && !run->stopped) Report(*run, Finding::NoEnd);
  EndOperations(track, run->time);
  ScaleTimes(track, run->table.timeFactor);
  track.spareUnits = SpareUnits(*run);
}

}  // namespace morva
