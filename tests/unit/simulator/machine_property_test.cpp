// The same motion in two forms: cycles and their strokes, macros and their lines, inches and
// millimetres, calls and what they call. Programs are drawn by seeds, and a failure names its seed.
#include <cmath>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "unit/simulator/control_fixture.h"

namespace {

using namespace control_test;

constexpr int kRuns = 60;
constexpr double kClose = 1e-6;  // of numbers with six decimals

struct Dice {
  std::mt19937 engine;
  explicit Dice(int seed) : engine(static_cast<unsigned>(seed)) {}
  int Upto(int most) { return static_cast<int>(engine() % static_cast<unsigned>(most + 1)); }
  // In steps of a thousandth.
  double Between(double least, double most) {
    return least + Upto(static_cast<int>(std::lround((most - least) * 1000))) / 1000.0;
  }
};

std::string Text(double number) {
  char text[40];
  std::snprintf(text, sizeof text, "%.6f", number);
  return text;
}
std::string Word(char letter, double number) { return letter + Text(number); }

struct Ran {
  std::vector<MotionPoint> points;
  double seconds = 0;
  std::string found;
};

Ran RunOf(const std::string& text, bool metric = false) {
  const ControlTrack& track = RunText(std::u16string(text.begin(), text.end()), {.metric = metric});
  const MotionPoint* const points = track.path.points;
  return {{points, points + track.path.count}, track.totalSeconds, Found(track)};
}

void ExpectSameMotion(const Ran& one, const Ran& other, double close = kClose) {
  ASSERT_GT(one.points.size(), 2u);
  ASSERT_EQ(one.points.size(), other.points.size());
  for (std::size_t i = 0; i < one.points.size(); ++i) {
    const MotionPoint& a = one.points[i];
    const MotionPoint& b = other.points[i];
    ASSERT_NEAR(a.x, b.x, close) << "point " << i;
    ASSERT_NEAR(a.y, b.y, close) << "point " << i;
    ASSERT_NEAR(a.z, b.z, close) << "point " << i;
    ASSERT_EQ(a.rapid, b.rapid) << "point " << i;
  }
}

// A drilling job, as a cycle and as the strokes that it stands for.
struct Drilling {
  std::string cycle = "G20 G90 S900 M3\n";
  std::string strokes = "G20 G90 S900 M3\n";

  void Both(const std::string& line) {
    cycle += line;
    strokes += line;
  }
  void Rapid(double z) { strokes += "G0 " + Word('Z', z) + "\n"; }
  void Feed(double z) { strokes += "G1 " + Word('Z', z) + "\n"; }
};

struct Hole {
  int code = 81;
  double r = 0, z = 0, peck = 0, dwell = 0, back = 0;
};

constexpr double kRetract = 0.05;  // the control's way back of a peck

void Strokes(Drilling& job, const Hole& hole) {
  job.Rapid(hole.r);
  const bool out = hole.code == 83;
  for (double at = hole.r; (out || hole.code == 73) && at - hole.peck > hole.z + 1e-9;) {
    at -= hole.peck;
    job.Feed(at);
    if (out) job.Rapid(hole.r);
    job.Rapid(std::min(at + kRetract, hole.r));
  }
  job.Feed(hole.z);
  const bool waits = hole.code == 82 || hole.code == 89 || hole.code == 83 || hole.code == 73;
  if (waits) job.strokes += "G4 " + Word('P', hole.dwell) + "\n";
  if (hole.code == 85 || hole.code == 89) job.Feed(hole.r);
  job.Rapid(hole.back);
}

Drilling DrillingOf(int seed) {
  Dice dice(seed);
  Drilling job;
  const double initial = dice.Between(0.5, 2);
  job.Both("G0 X0. Y0. " + Word('Z', initial) + " F20.\n");
  constexpr int kCodes[] = {81, 82, 83, 73, 85, 89};
  Hole hole;
  hole.code = kCodes[dice.Upto(5)];
  hole.r = dice.Between(0.1, 0.4);
  hole.z = -dice.Between(0.2, 1.5);
  hole.peck = dice.Between(0.06, 0.4);
  hole.dwell = dice.Between(0.1, 1);
  const bool toInitial = dice.Upto(1) == 0;
  hole.back = toInitial ? initial : hole.r;
  const int holes = 1 + dice.Upto(5);
  for (int i = 0; i < holes; ++i) {
    const std::string place =
        Word('X', dice.Between(-3, 3)) + " " + Word('Y', dice.Between(-3, 3)) + "\n";
    if (i == 0) {
      job.cycle += std::string(toInitial ? "G98" : "G99") + " G" + std::to_string(hole.code) + " " +
                   Word('Z', hole.z) + " " + Word('R', hole.r) + " " + Word('Q', hole.peck) + " " +
                   Word('P', hole.dwell) + " ";
    } else if (dice.Upto(3) == 0) {
      hole.z -= 0.125;
      job.cycle += Word('Z', hole.z) + " ";
    }
    job.cycle += place;
    job.strokes += "G0 " + place;
    Strokes(job, hole);
  }
  job.cycle += "G80\n";
  job.Both("G0 X0. Y0.\nM30\n");
  return job;
}

TEST(MachineProperties, ACycleRunsTheStrokesThatItStandsFor) {
  for (int seed = 1; seed <= kRuns; ++seed) {
    const Drilling job = DrillingOf(seed);
    SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + job.cycle + job.strokes);
    const Ran cycle = RunOf(job.cycle);
    const Ran strokes = RunOf(job.strokes);
    ExpectSameMotion(cycle, strokes);
    EXPECT_NEAR(cycle.seconds, strokes.seconds, 1e-3);
    EXPECT_EQ(cycle.found, strokes.found);
    if (HasFatalFailure()) return;
  }
}

// Places by loops, a call with arguments and a condition, and the lines that they come to.
void MacroAndLines(int seed, std::string& macro, std::string& lines) {
  Dice dice(seed);
  const int columns = 1 + dice.Upto(4);
  const int rows = 2 + dice.Upto(3);
  const double step = dice.Between(0.1, 1);
  const double skew = dice.Between(-0.5, 0.5);
  const int least = dice.Upto(columns);
  macro = "#101=" + Text(step) + "\n#102=" + Text(skew) +
          "\nG0 X0. Y0. Z1. F10.\n#1=0\nWHILE[#1 LT " + std::to_string(rows) +
          "]DO1\n#2=0\nWHILE[#2 LT " + std::to_string(columns) +
          "]DO2\nG65 P50 A#1 B#2\n#2=#2+1\nEND2\nIF[#1 GE " + std::to_string(least) +
          "]GOTO 9\nG0 Z[#1+2]\nN9 #1=#1+1\nEND1\nM30\nO50\n#3=#2*#101+#1*#102\n"
          "IF[#1 EQ 0]THEN #3=ABS[#3]\nG1 X#3 Y[SIN[30.*#1]*4.]\nM99\n";
  lines = "G0 X0. Y0. Z1. F10.\n";
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      // The call gets #1 from A, the row, and #2 from B, the column.
      double x = column * step + row * skew;
      if (row == 0) x = std::fabs(x);
      lines +=
          "G1 " + Word('X', x) + " " + Word('Y', 4 * std::sin(row * std::acos(-1.0) / 6)) + "\n";
    }
    if (row < least) lines += "G0 " + Word('Z', row + 2.0) + "\n";
  }
  lines += "X0.\nM30\n";
  macro.insert(macro.find("M30\n"), "X0.\n");
}

TEST(MachineProperties, AMacroRunsTheLinesThatItComesTo) {
  for (int seed = 1; seed <= kRuns; ++seed) {
    std::string macro, lines;
    MacroAndLines(seed, macro, lines);
    SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + macro + lines);
    const Ran one = RunOf(macro);
    ExpectSameMotion(one, RunOf(lines), 2e-6);
    EXPECT_EQ(one.found, "");
    if (HasFatalFailure()) return;
  }
}

// Lines, arcs by centre and by radius, a helix, cycles and offsets; lengths times `factor`.
std::string Job(int seed, double factor) {
  Dice dice(seed);
  const auto length = [&](char letter, double inches) {
    return " " + Word(letter, inches * factor);
  };
  std::string text = std::string(factor == 1 ? "G20" : "G21") + " G17 G90 S900 M3\n";
  text += "G10 L2 P1" + length('X', -10) + length('Y', -8) + length('Z', -9) + "\nG54 G0 X0. Y0." +
          length('Z', 1) + "\n";
  for (int i = 0; i < 12; ++i) {
    const double x = dice.Between(-3, 3);
    const double y = dice.Between(-3, 3);
    const double radius = dice.Between(0.1, 2);
    const std::string feed = length('F', dice.Between(1, 30));
    switch (dice.Upto(5)) {
      case 0:
        text += "G0" + length('X', x) + length('Y', y) + "\n";
        break;
      case 1:
        text += "G1" + length('X', x) + length('Z', -radius) + feed + "\n";
        break;
      case 2:
        text += "G91 G2" + length('X', radius) + length('Y', radius) + length('I', radius) +
                length('Z', 0.25) + feed + "\nG90\n";
        break;
      case 3:
        text += "G91 G3" + length('X', radius) + length('R', -radius) + feed + "\nG90\n";
        break;
      case 4:
        text += "G99 G83" + length('X', x) + length('Z', -3) + length('R', 2.5) + length('Q', 1) +
                feed + "\nG80\n";
        break;
      default:
        text += "G53 G0" + length('Z', -1) + "\n";
        break;
    }
  }
  return text + "M30\n";
}

TEST(MachineProperties, InchesAndMillimetresAgree) {
  for (int seed = 1; seed <= kRuns; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + Job(seed, 1));
    const Ran inches = RunOf(Job(seed, 1));
    const Ran millimetres = RunOf(Job(seed, 25.4));
    ExpectSameMotion(inches, millimetres);
    EXPECT_NEAR(inches.seconds, millimetres.seconds, 1e-4);
    EXPECT_EQ(inches.found, millimetres.found);
    // The same program, shown in millimetres.
    const Ran shown = RunOf(Job(seed, 25.4), true);
    EXPECT_NEAR(shown.seconds, inches.seconds, 1e-4);
    EXPECT_NEAR(shown.points.back().x, inches.points.back().x * 25.4, 1e-4);
    if (HasFatalFailure()) return;
  }
}

// Bodies that are called, here by M97, there by M98, and the same written out.
void CalledAndInline(int seed, std::string& called, std::string& inlined) {
  Dice dice(seed);
  const int bodies = 1 + dice.Upto(2);
  std::vector<std::string> code;
  for (int i = 0; i < bodies; ++i) {
    std::string body;
    for (int moves = 1 + dice.Upto(3); moves > 0; --moves) {
      body += std::string(dice.Upto(1) ? "G0" : "G1") + " G91 " + Word('X', dice.Between(-1, 1)) +
              " " + Word('Y', dice.Between(-1, 1)) + "\n";
    }
    code.push_back(body);
  }
  called = inlined = "S900 M3\nG0 X0. Y0. Z1. F20.\n";
  const bool labels = dice.Upto(1) == 0;
  for (int calls = 1 + dice.Upto(4); calls > 0; --calls) {
    const int which = dice.Upto(bodies - 1);
    const int times = 1 + dice.Upto(3);
    called += std::string(labels ? "M97" : "M98") + " P" + std::to_string(100 + which) + " L" +
              std::to_string(times) + "\nG90 X0.\n";
    for (int i = 0; i < times; ++i) inlined += code[static_cast<std::size_t>(which)];
    inlined += "G90 X0.\n";
  }
  called += "M30\n";
  inlined += "M30\n";
  for (int i = 0; i < bodies; ++i) {
    called += (labels ? "N" : "O") + std::to_string(100 + i) + "\n" +
              code[static_cast<std::size_t>(i)] + "M99\n";
  }
}

TEST(MachineProperties, ACallRunsWhatItCalls) {
  for (int seed = 1; seed <= kRuns; ++seed) {
    std::string called, inlined;
    CalledAndInline(seed, called, inlined);
    SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + called + inlined);
    const Ran one = RunOf(called);
    const Ran other = RunOf(inlined);
    ExpectSameMotion(one, other);
    EXPECT_NEAR(one.seconds, other.seconds, 1e-6);
    EXPECT_EQ(one.found, "");
    if (HasFatalFailure()) return;
  }
}

}  // namespace
