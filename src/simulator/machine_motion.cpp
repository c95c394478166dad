#include "simulator/machine_motion.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "app/command_ids.h"
#include "documents/tab_table.h"
#include "library/tools.h"
#include "library/units.h"
#include "platform/editor.h"
#include "simulator/control_reader.h"
#include "simulator/control_settings.h"
#include "simulator/control_stock.h"
#include "simulator/feature_lines.h"
#include "simulator/machine_path.h"
#include "simulator/marker_shift.h"
#include "simulator/program_finder.h"
#include "simulator/stock_envelope.h"
#include "simulator/view_switches.h"
#include "text/codetext.h"

namespace morva {

namespace {

ControlTable settings;
bool settingsRead = false;

// What the last run over the editor's text depended on, what tells whether a later text has other
// markers alone, and what is changed behind a run. The paths
// of the run stand for as long as their generations do.
struct LastRun {
  bool stands = false;
  std::uint64_t tab = 0;
  std::uint64_t revision = 0;
  std::size_t units = 0;
  UnmarkedText unmarked;
  bool metric = false;
  ControlTable table;
  KnownStock stock;
  std::uint32_t pathGeneration = 0;
  std::uint32_t programmedGeneration = 0;
  Findings findings;  // those that [Check] turns off as well
};
LastRun lastRun;

// Set where a run looks for a program outside its text. Tabs and files change unseen, so such a run
// does not stand for another one.
bool lookedElsewhere = false;

constexpr std::int32_t kFirstWorkOffset = 54;

// Of the read-out; all stand in the tip.
constexpr int kShownOperations = 4;

const ControlTable& Settings() {
  if (!settingsRead) {
    settings = ControlTable{};
    ReadControlSettings(settings);
    settingsRead = true;
  }
  return settings;
}

void FillStockTools(KnownStock& stock, bool metric) {
  const double unit = metric ? kMmPerInch : 1;
  stock.toolCount = std::clamp(toolLibrary.count, 0, kMaxTools);
  for (int i = 0; i < stock.toolCount; ++i) {
    const ToolRecord& tool = toolLibrary.tools[i];
    stock.tools[i] = {tool.number, ShapeOfTool(tool.type), tool.diameter / 2 * unit,
                      CutOfTool(tool.type)};
  }
}

// A drawing or a plate says more than a skim does, which faces a part of any kind.
void FillStockBox(KnownStock& stock) {
  stock.box = StockOfFeatures();
  if (stock.box.shown) return;
  std::int32_t workOffset = 0;
  stock.box = StockOfSkim(workOffset);
  if (stock.box.shown) stock.workRow = kFirstWorkRow + workOffset - kFirstWorkOffset;
}

std::int32_t LookElsewhere(std::int32_t number, std::u16string_view& text) {
  lookedElsewhere = true;
  return FindProgramBeside(number, text);
}

// Whether nothing but the text can be another than at the last run.
bool LastRunStands(bool metric, const ControlTable& table, const KnownStock& stock) {
  return lastRun.stands && lastRun.tab == ActiveSerial() && lastRun.metric == metric &&
         lastRun.pathGeneration == machinePath.generation &&
         lastRun.programmedGeneration == machineProgrammed.generation && lastRun.table == table &&
         lastRun.stock == stock;
}

bool LastTextStands(std::u16string_view text) {
  return lastRun.revision == platform::EditorRevision(kIdEditor) && lastRun.units == text.size();
}

void NoteText(std::u16string_view text, UnmarkedText&& unmarked) {
  lastRun.tab = ActiveSerial();
  lastRun.revision = platform::EditorRevision(kIdEditor);
  lastRun.units = text.size();
  lastRun.unmarked = std::move(unmarked);
  lastRun.pathGeneration = machinePath.generation;
  lastRun.programmedGeneration = machineProgrammed.generation;
}

// The last run over a text that differs by markers alone, with the lines of this one.
bool MoveLastRun(const UnmarkedText& to) {
  const UnmarkedText& from = lastRun.unmarked;
  if (!DifferByMarkers(from, to)) return false;
  const std::size_t added =
      to.markedUnits > from.markedUnits ? to.markedUnits - from.markedUnits : 0;
  if (machineTrack.spareUnits < static_cast<std::int64_t>(added)) return false;
  LineShift shift(from, to);
  MoveMachineLines(shift);
  for (std::int32_t i = 0; i < lastRun.findings.count; ++i) {
    FoundLine& found = lastRun.findings.found[i];
    found.line = shift.Moved(found.line);
  }
  return true;
}

// Takes the diameters away that only the library told and the path was not drawn for: the way of
// the tool's centre, for which the control holds its wear alone. False: there are none.
bool DropMisfits(ControlTable& table) {
  bool any = false;
  for (int i = 1; i <= kControlTools; ++i) {
    ToolOffset& tool = table.tools[i];
    const ToolOffset& own = Settings().tools[i];
    const bool ofLibrary = own.diameter == 0 && tool.diameter != 0;
    if (!ofLibrary || machineTrack.misfits[i] < kMostMisfits) continue;
    tool.diameter = 0;
    tool.diameterUnfit = true;
    any = true;
  }
  return any;
}

void RunMachine(std::u16string_view text, bool metric, bool ofEditor, const ControlTable& table,
                const KnownStock& stock) {
  lookedElsewhere = false;
  ControlTable taken = table;
  const ReadMotionOptions options{
      .metric = metric, .table = &taken, .findProgram = LookElsewhere, .stock = &stock};
  ReadMachineMotion(machineTrack, text, options);
  if (DropMisfits(taken)) ReadMachineMotion(machineTrack, text, options);
  lastRun.stands = ofEditor && !lookedElsewhere;
  lastRun.metric = metric;
  lastRun.table = table;
  lastRun.stock = stock;
  lastRun.findings = machineTrack.findings;
}

std::u16string TwoDigits(std::int64_t number) {
  return (number < 10 ? u"0" : u"") + IntegerText(number);
}

std::u16string OperationWords(const Operation& operation) {
  return u"T" + IntegerText(operation.tool) + u" " + ClockText(operation.seconds);
}

std::u16string FindingWords() {
  const Findings& findings = machineTrack.findings;
  const std::int32_t count = findings.count + findings.more;
  if (findings.count == 0) return {};
  std::int32_t worst[kMaxFindings];
  WorstFirst(findings, worst);
  return IntegerText(count) +
         (count == 1 ? u" finding, at line " : u" findings, the worst at line ") +
         IntegerText(findings.found[worst[0]].line + 1) + u" (PREFLIGHT lists them)";
}

// Each line ends in CR LF.
std::u16string LinesForLog(std::u16string_view text) {
  std::u16string lines;
  for (const char16_t c : text) {
    if (c == u'\n') lines += u'\r';
    if (c != u'\r') lines += c;
  }
  if (!lines.empty() && lines.back() != u'\n') lines += u"\r\n";
  return lines;
}

}  // namespace

PathOwner EditorOwner() { return switches.machineMotion ? PathOwner::Machine : PathOwner::Program; }

void FollowMachineMotion(std::u16string_view text, bool metric, bool ofEditor) {
  if (!switches.machineMotion) return EmptyMachineTrack();
  ControlTable table = Settings();
  FillDiameters(table);
  KnownStock stock;
  FillStockBox(stock);
  FillStockTools(stock, metric);
  const bool stands = ofEditor && LastRunStands(metric, table, stock);
  const bool same = stands && LastTextStands(text);
  if (!same) {
    UnmarkedText unmarked;
    if (ofEditor) unmarked = WithoutMarkers(text);
    if (!(stands && MoveLastRun(unmarked))) RunMachine(text, metric, ofEditor, table, stock);
    NoteText(text, std::move(unmarked));
  }
  machineTrack.findings = lastRun.findings;
  DropUnwanted(machineTrack.findings);
  if (StartLineFilter()) DropMachineLines(LineIsDropped);
  AppendProgrammed(ghostPath);
}

void ForgetControlSettings() {
  settingsRead = false;
  ForgetFoundPrograms();
}

std::u16string MachineWords() {
  if (ShownOwner() != PathOwner::Machine) return {};
  std::u16string words = u"Machine motion  ";
  const OwnedPath& shown = ShownPath();
  const std::int32_t head = std::min(shown.play.playHead, shown.path.count);
  if (shown.play.headInUse && head > 0) {
    words += ClockText(machineSeconds[head - 1]) + u" of ";
  }
  words += ClockText(machineTrack.totalSeconds);
  const std::int32_t operations = machineTrack.operationCount;
  for (std::int32_t i = 0; i < std::min(operations, kShownOperations); ++i) {
    words += u"  " + OperationWords(machineTrack.operations[i]);
  }
  if (operations > kShownOperations) {
    words += u"  and " + IntegerText(operations - kShownOperations) + u" more";
  }
  const std::u16string findings = FindingWords();
  return findings.empty() ? words : words + u"  " + findings;
}

std::u16string MachineTip() {
  std::u16string tip;
  for (std::int32_t i = 0; i < machineTrack.operationCount; ++i) {
    const Operation& operation = machineTrack.operations[i];
    if (!tip.empty()) tip += u"\n";
    tip += u"From line " + IntegerText(operation.line + 1) + u": " + OperationWords(operation);
  }
  return tip;
}

namespace {

bool IsError(Finding kind) {
  const Strength strength = StrengthOf(kind);
  return strength == Strength::Alarm || strength == Strength::Hit;
}

// "2 error(s), 1 warning(s)", those among them that are not listed.
std::u16string SumWords(const Findings& findings) {
  std::int32_t errors = 0;
  std::int32_t all = 0;
  for (int i = 0; i < kFindings; ++i) {
    const std::int32_t count = findings.ofKind[i] + findings.leftOut[i];
    all += count;
    if (IsError(static_cast<Finding>(i))) errors += count;
  }
  return IntegerText(errors) + u" error(s), " + IntegerText(all - errors) + u" warning(s)";
}

}  // namespace

std::u16string MachineCheckReport() {
  if (!switches.machineMotion) return {};
  const Findings& findings = machineTrack.findings;
  const std::u16string sum = SumWords(findings);
  std::int32_t order[kMaxFindings];
  const int count = WorstFirst(findings, order);
  std::u16string report =
      u"MACHINE CHECK \u2014 the program as the control runs it: " + sum + u"\r\n";
  for (int i = 0; i < count; ++i) {
    const FoundLine& found = findings.found[order[i]];
    report += (IsError(found.kind) ? u"ERROR: " : u"WARNING: ") + WordsOf(found) + u"\r\n";
  }
  if (findings.more > 0) {
    report += IntegerText(findings.more) + u" more findings are not listed.\r\n";
  }
  if (!machineTrack.printed.empty()) {
    report += u"Printed by DPRNT:\r\n" + LinesForLog(machineTrack.printed);
  }
  report += u"Machine check complete: " + sum + u", cycle time " +
            ClockText(machineTrack.totalSeconds) + u".\r\n";
  return report;
}

std::u16string ClockText(double seconds) {
  const std::int64_t whole = std::llround(std::clamp(seconds, 0.0, 3.6e9));
  return IntegerText(whole / 3600) + u":" + TwoDigits(whole / 60 % 60) + u":" +
         TwoDigits(whole % 60);
}

}  // namespace morva
