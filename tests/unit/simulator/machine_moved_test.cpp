// A run whose line numbers are moved behind markers, against a new run over the same text. Programs
// are drawn by seeds, and a failure names its seed.

#include <random>
#include <string>
#include <vector>

#include "app/command_ids.h"
#include "documents/program_tabs.h"
#include "library/tools.h"
#include "platform/editor.h"
#include "simulator/machine_motion.h"
#include "simulator/machine_path.h"
#include "simulator/view_switches.h"
#include "unit/simulator/view_fixture.h"

namespace morva {
namespace {

struct Dice {
  std::mt19937 engine;
  explicit Dice(int seed) : engine(static_cast<unsigned>(seed)) {}
  int Upto(int most) { return static_cast<int>(engine() % static_cast<unsigned>(most + 1)); }
};

// All that a run leaves, in one text that a failure can show.
std::string Result() {
  std::string text;
  const auto number = [&text](double value) { text += std::to_string(value) + " "; };
  for (const MotionPath* of : {&machinePath, &machineProgrammed}) {
    text += "path, full at " + std::to_string(of->fullAtLine) + "\n";
    for (std::int32_t i = 0; i < of->count; ++i) {
      const MotionPoint& point = of->points[i];
      for (const double value : {point.x, point.y, point.z}) number(value);
      if (of == &machinePath) number(machineSeconds[i]);
      text += "line " + std::to_string(point.sourceLine) + " tool " + std::to_string(point.tool) +
              (point.rapid ? " rapid" : "") + (point.jump ? " jump\n" : "\n");
    }
  }
  for (std::int32_t i = 0; i < machineTrack.operationCount; ++i) {
    const Operation& operation = machineTrack.operations[i];
    text += "operation " + std::to_string(operation.line) + " " + std::to_string(operation.tool);
    number(operation.began);
    number(operation.seconds);
  }
  const Findings& findings = machineTrack.findings;
  for (std::int32_t i = 0; i < findings.count; ++i) {
    text += "\n" + support::Narrow(WordsOf(findings.found[i]));
  }
  text += "\n" + std::to_string(findings.more) + support::Narrow(machineTrack.printed);
  number(machineTrack.totalSeconds);
  return text;
}

class MachineMoved : public ViewTest {
 protected:
  // Of a point's tool, so that a path tells whether a new run made it.
  static constexpr std::int32_t kOld = 7777;

  MachineMoved() {
    ResetToolLibrary();
    tabs[0] = ProgramTab{};
    app.activeTab = 0;
    app.tabCount = 1;
    Put("bin/MORVA.ini", "[Simulator]\r\nMachineMotion=1\r\n[Offsets]\r\nT1=0,0,.25\r\n");
  }
  ~MachineMoved() override { tabs[0] = ProgramTab{}; }

  static void Show(const std::string& text) {
    platform::SetEditorText(kIdEditor, support::Wide(text));
    RebuildToolpath();
  }
  // Shows the other text behind the one; whether it was not run.
  static bool Moves(const std::string& from, const std::string& to) {
    Show(from);
    std::int32_t tool = 0;
    if (machinePath.count > 0) tool = std::exchange(machinePath.points[0].tool, kOld);
    Show(to);
    if (machinePath.count == 0 || machinePath.points[0].tool != kOld) return false;
    machinePath.points[0].tool = tool;
    return true;
  }
  // What a run over the text leaves that knows nothing of one before.
  static std::string RunAnew(const std::string& text) {
    ExtractToolpath(u"G1 X1.", false);
    Show(text);
    return Result();
  }
};

using Lines = std::vector<std::string>;

std::string Number(Dice& dice) {
  return std::to_string(dice.Upto(5) - 2) + "." + std::to_string(dice.Upto(9));
}

// A line or a few that hold for themselves; labels and loops are numbered by `id`.
void AddPiece(Dice& dice, int id, Lines& lines) {
  const std::string label = std::to_string(100 + id);
  const std::string x = " X" + Number(dice);
  const std::string y = " Y" + Number(dice);
  const auto add = [&lines](std::initializer_list<std::string> more) {
    lines.insert(lines.end(), more);
  };
  switch (dice.Upto(23)) {
    case 0:
      return add({"G0" + x + y});
    case 1:
      return add({"G2" + x + y + " I.5 F5."});
    case 2:
      return add({"T" + std::to_string(dice.Upto(3)) + " M6", "G43 H1 Z1."});
    case 3:
      return add({"(A COMMENT)", "", "; " + x});
    case 4:
      return add({"(NOT CLOSED" + x, "/G1" + x});
    case 5:
      return add({"G41 D1 G1" + x, "G1" + y, "X3. Y3.", "Z-1.", "G40 X0."});
    case 6:
      return add({"G81 Z-.5 R.1 F5." + x, "X1.", "G80"});
    case 7:
      return add({"IF[#1 GT 2]GOTO " + label, "#1=#1+1", "G1" + x, "N" + label + " Y1."});
    case 8:
      return add({"#2=0", "WHILE[#2 LT " + std::to_string(dice.Upto(4)) + "]DO1", "G1" + x,
                  "#2=#2+1", "#3=0", "WHILE[#3 LT 2]DO2", "G91 Y.1", "G90", "#3=#3+1", "END2",
                  "END1"});
    case 9:
      return add({"M97 P1 L" + std::to_string(1 + dice.Upto(3))});
    case 10:
      return add({"M98 P50 L2", "G65 P60 A" + Number(dice)});
    case 11:
      return add({"G150 P2 Z-1. R.1 Q.4" + x});
    case 12:
      return add({"DPRNT[A#1[42]]"});
    case 13:
      return add({"G999", "M999", "Q"});
    case 14:
      return add({"G0 X1 Y1."});  // a whole number among others
    case 15:
      return add({"G1" + x + " ,C.1", "G1" + y, "G1 X9."});
    case 16:
      return add({"N" + label, "N" + label + " G1" + x, "GOTO " + std::to_string(100 + id + 1),
                  "G1" + y, "N" + std::to_string(100 + id + 1)});
    case 17:
      return add({"G1 F8." + x, "M3 S900"});
    case 18:
      return add({"(MORVA BEGIN 5)", "(MORVA DATA 1 2 3)", "G1" + x, "(MORVA CODE)"});
    case 19:
      return add({"#1=1", "[#1 EQ 2] M30", "IF[#1 EQ 1] G0" + x});
    default:
      return add({"G1" + x + y});
  }
}

Lines ProgramOf(Dice& dice) {
  Lines lines;
  if (dice.Upto(2) > 0) lines.push_back("%");
  if (dice.Upto(2) > 0) lines.push_back("O1000");
  for (int i = 0, pieces = dice.Upto(12); i <= pieces; ++i) AddPiece(dice, 2 * i, lines);
  switch (dice.Upto(6)) {
    case 0:
      return lines;  // without an end
    case 1:
      lines.push_back("WHILE[0 EQ 1]DO1");  // the end is the loop's
      lines.push_back("END1");
      return lines;
    case 2:
      lines.push_back("#3000=1");
      break;
    default:
      break;
  }
  lines.push_back("M30");
  if (dice.Upto(3) == 0) lines.push_back("G1 X5.");  // nobody comes here
  for (const char* line : {"N1 G91 G1 X.1", "G90", "M99", "N2 G1 X2.", "Y2.", "M99", "O50",
                           "G1 Y1.", "M99", "O60", "G1 X#1", "M99"}) {
    lines.push_back(line);
  }
  if (dice.Upto(3) == 0) lines.insert(lines.end(), {"O50", "M99"});
  if (dice.Upto(2) == 0) lines.push_back("%");
  return lines;
}

std::string MarkerOf(Dice& dice) {
  switch (dice.Upto(2)) {
    case 0:
      return "(MORVA TEXT " + std::to_string(dice.Upto(99)) + ")";
    case 1:
      return "(MORVA NAME O5 Rim % G1 X7.; N1)";
    default:
      return "(MORVA END " + std::to_string(dice.Upto(99)) + ")";
  }
}

// The program with markers between its lines, and a line end behind the last one or not.
std::string Marked(Dice& dice, const Lines& lines) {
  std::string text;
  const int often = dice.Upto(5);
  const auto marks = [&] {
    while (often > 0 && dice.Upto(7) < often) text += MarkerOf(dice) + "\r\n";
  };
  for (const std::string& line : lines) {
    marks();
    text += line + "\r\n";
  }
  marks();
  if (dice.Upto(1) == 0) text.resize(text.size() - 2);
  return text;
}

TEST_F(MachineMoved, AMovedRunIsANewRun) {
  int moved = 0;
  constexpr int kPrograms = 400;
  for (int seed = 1; seed <= kPrograms; ++seed) {
    Dice dice(seed);
    const Lines lines = ProgramOf(dice);
    const std::string from = Marked(dice, lines);
    const std::string to = Marked(dice, lines);
    SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + from + "\n->\n" + to);
    if (Moves(from, to)) ++moved;
    const std::string result = Result();
    ASSERT_EQ(result, RunAnew(to));
  }
  // All but those without a move, and those that ask for a program that is nowhere.
  EXPECT_GT(moved, kPrograms * 8 / 10);
}

// A whole turn of radius 5000 in has 2 pi / (2 acos(1 - 0.0005 / 5000)) = 7,025 chords: the 38th
// one does not fit.
TEST_F(MachineMoved, TheLineThatFoundTheTableFullMoves) {
  std::string turns;
  for (int i = 0; i < 38; ++i) turns += "G2 I5000. F5.\r\n";
  EXPECT_TRUE(Moves("G0 X0.\r\n" + turns, "G0 X0.\r\n(MORVA END 1)\r\n" + turns));
  EXPECT_EQ(machinePath.fullAtLine, 39);
}

TEST_F(MachineMoved, AnotherLineIsRun) {
  EXPECT_TRUE(Moves("G1 X1. F5.\r\nM30", "(MORVA TEXT 1)\r\nG1 X1. F5.\r\nM30"));
  EXPECT_FALSE(Moves("G1 X1. F5.\r\nM30", "(MORVA TEXT 1)\r\nG1 X2. F5.\r\nM30"));
  EXPECT_FALSE(Moves("G1 X1. F5.\r\nM30", "(MORVA TEXT 1) G1 X1. F5.\r\nM30"));
}

// Markers within a loop that comes near the bound of what is run again.
TEST_F(MachineMoved, AProgramThatMarkersBringToItsBoundIsRun) {
  const std::string loop =
      "G0 X1.\r\n#1=0\r\nWHILE[#1 LT 9990]DO1\r\n#1=#1+1\r\n(" + std::string(1530, 'A') + ")\r\n";
  const std::string end = "END1\r\nM30";
  ASSERT_TRUE(Moves(loop + end, loop + "(MORVA END 1)\r\n" + end));
  EXPECT_EQ(machineTrack.findings.ofKind[static_cast<int>(Finding::NoStepsLeft)], 0);
  const std::string name = "(MORVA NAME " + std::string(60, 'B') + ")\r\n";
  EXPECT_FALSE(Moves(loop + end, loop + name + end));
  EXPECT_EQ(machineTrack.findings.ofKind[static_cast<int>(Finding::NoStepsLeft)], 1);
  // Out of bounds already: fewer markers may bring it to its end.
  EXPECT_FALSE(Moves(loop + name + end, loop + end));
  EXPECT_EQ(machineTrack.findings.ofKind[static_cast<int>(Finding::NoStepsLeft)], 0);
}

}  // namespace
}  // namespace morva
