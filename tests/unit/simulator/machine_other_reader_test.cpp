// Generated programs beside `rs274 -g` (Debian package linuxcnc-uspace, 80 MB installed, which
// nothing here asks for): the end of every move, the sense and the centre of every arc. Without
// that program in the path the test is skipped.
//
// Only what both read in the same way is generated: points in every number, no offsets, no
// compensation. It draws a rapid as a line and an arc as a whole, so that of ours the corners and
// chords between are passed over.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "support/stage.h"
#include "unit/simulator/control_fixture.h"

namespace {

using namespace control_test;

constexpr double kClose = 0.0005;  // program units; it prints four decimals
constexpr int kPrograms = 24;
constexpr int kBlocks = 120;

struct Place {
  double of[3] = {0, 0, 0};
};

// A move as the other program tells it.
struct Told {
  int line = 0;  // number of the N word
  Place to;
  bool arc = false;
  int plane = 17;
  double centreU = 0, centreV = 0;
  int turn = 0;  // above 0 counter-clockwise
};

struct Axes {
  int u, v, w;
};
Axes AxesOf(int plane) {
  if (plane == 18) return {2, 0, 1};
  if (plane == 19) return {1, 2, 0};
  return {0, 1, 2};
}

double Apart(const Place& a, const Place& b) {
  double most = 0;
  for (int i = 0; i < 3; ++i) most = std::max(most, std::fabs(a.of[i] - b.of[i]));
  return most;
}

// Programs of random moves, each block with its number.
class Maker {
 public:
  Maker(int seed, bool metric) : engine_(static_cast<unsigned>(seed)), metric_(metric) {}

  std::string Make() {
    Line(std::string(metric_ ? "G21" : "G20") + " G17 G90 G94 G40 G49 G80 F20. S900 M3");
    at_ = {{0, 0, 2}};
    Line("G0 X0. Y0. Z2.");
    while (line_ < kBlocks) Block();
    Line("M2");
    return text_;
  }

 private:
  int Upto(int most) { return static_cast<int>(engine_() % static_cast<unsigned>(most + 1)); }
  double Between(double least, double most) {
    return least + Upto(static_cast<int>(std::lround((most - least) * 1000))) / 1000.0;
  }
  static std::string Word(char letter, double number) {
    char text[40];
    std::snprintf(text, sizeof text, " %c%.7f", letter, number);
    return text;
  }
  void Line(const std::string& code) { text_ += "N" + std::to_string(++line_) + " " + code + "\n"; }
  // The axis words of a way, as steps while G91 is in force.
  std::string To(const Place& to, unsigned axes = 7) {
    std::string words;
    for (int i = 0; i < 3; ++i) {
      if (!(axes >> i & 1)) continue;
      words += Word(static_cast<char>('X' + i), steps_ ? to.of[i] - at_.of[i] : to.of[i]);
      at_.of[i] = to.of[i];
    }
    return words;
  }
  Place Anywhere() { return {{Between(-4, 4), Between(-4, 4), Between(-2, 3)}}; }

  void Straight() {
    const Place to = Anywhere();
    Line(std::string(Upto(1) ? "G1" : "G0") + To(to, 1u + static_cast<unsigned>(Upto(6))));
  }

  void Arc() {
    const int plane = 17 + Upto(2);
    const Axes axes = AxesOf(plane);
    const bool clockwise = Upto(1) == 0;
    const double radius = Between(0.2, 2);
    const double start = Between(-3, 3);
    // Up to a whole turn but for the last tenth, which is drawn apart.
    const double sweep = Between(0.3, 5.6) * (clockwise ? -1 : 1);
    const bool whole = Upto(5) == 0;
    const bool byRadius = !whole && Upto(1) == 0 && std::fabs(std::fabs(sweep) - 3.1416) > 0.3;
    const double cu = -radius * std::cos(start);
    const double cv = -radius * std::sin(start);
    Place to = at_;
    if (!whole) {
      to.of[axes.u] += cu + radius * std::cos(start + sweep);
      to.of[axes.v] += cv + radius * std::sin(start + sweep);
    }
    const bool helix = Upto(2) == 0;
    if (helix) to.of[axes.w] += Between(-0.5, 0.5);
    std::string code = "G" + std::to_string(plane) + (clockwise ? " G2" : " G3");
    code += To(to, helix ? 7u : (1u << axes.u | 1u << axes.v));
    if (byRadius) {
      code += Word('R', std::fabs(sweep) > 3.1416 ? -radius : radius);
    } else {
      code += Word(static_cast<char>('I' + axes.u), cu) + Word(static_cast<char>('I' + axes.v), cv);
    }
    Line(code);
  }

  void Cycle() {
    if (steps_) Line("G90");
    steps_ = false;
    Line("G17 G0" + To({{at_.of[0], at_.of[1], 3.5}}, 4));
    constexpr int kCodes[] = {81, 82, 83, 85, 89};
    const int code = kCodes[Upto(4)];
    const bool initial = Upto(1) == 0;
    const double r = Between(0.5, 2);
    std::string words = std::string(initial ? "G98 G" : "G99 G") + std::to_string(code);
    words +=
        To({{Between(-4, 4), Between(-4, 4), 0}}, 3) + Word('Z', -Between(0.2, 2)) + Word('R', r);
    if (code == 83) words += Word('Q', Between(0.3, 1));
    if (code == 82 || code == 89) words += Word('P', 0.5);
    Line(words);
    for (int more = Upto(3); more > 0; --more) {
      Line(To({{Between(-4, 4), Between(-4, 4), 0}}, 1u + static_cast<unsigned>(Upto(2))));
    }
    Line("G80");
    Line("G0" + To({{0, 0, 3.5}}, 4));
  }

  void Block() {
    switch (Upto(9)) {
      case 0:
        steps_ = !steps_;
        return Line(steps_ ? "G91" : "G90");
      case 1:
        return Line("G4 P0.5");
      case 2:
        return Cycle();
      case 3:
      case 4:
      case 5:
        return Straight();
      default:
        return Arc();
    }
  }

  std::mt19937 engine_;
  bool metric_;
  bool steps_ = false;
  int line_ = 0;
  Place at_;
  std::string text_;
};

// The numbers between the brackets of a call.
std::vector<double> NumbersOf(const std::string& call) {
  std::vector<double> numbers;
  for (std::size_t at = call.find('('); at != call.npos; at = call.find(',', at + 1)) {
    numbers.push_back(std::strtod(call.c_str() + at + 1, nullptr));
  }
  return numbers;
}

std::vector<Told> MovesOf(std::istream& in) {
  std::vector<Told> moves;
  int plane = 17;
  for (std::string line; std::getline(in, line);) {
    const std::size_t number = line.find('N');
    if (number == line.npos) continue;
    if (line.find("CANON_PLANE_XY") != line.npos) plane = 17;
    if (line.find("CANON_PLANE_XZ") != line.npos) plane = 18;
    if (line.find("CANON_PLANE_YZ") != line.npos) plane = 19;
    Told told;
    told.line = std::atoi(line.c_str() + number + 1);
    const std::vector<double> numbers = NumbersOf(line);
    const bool straight = line.find("STRAIGHT_") != line.npos;
    told.arc = line.find("ARC_FEED(") != line.npos;
    if ((!straight && !told.arc) || numbers.size() < 6) continue;
    const Axes axes = AxesOf(plane);
    if (straight) {
      for (std::size_t i = 0; i < 3; ++i) told.to.of[i] = numbers[i];
    } else {
      told.plane = plane;
      told.to.of[axes.u] = numbers[0];
      told.to.of[axes.v] = numbers[1];
      told.centreU = numbers[2];
      told.centreV = numbers[3];
      told.turn = static_cast<int>(numbers[4]);
      told.to.of[axes.w] = numbers[5];
    }
    // A move to where the tool stands is none.
    if (!told.arc && !moves.empty() && Apart(moves.back().to, told.to) < 1e-9) continue;
    moves.push_back(told);
  }
  return moves;
}

Place PlaceOf(const MotionPoint& point) { return {{point.x, point.y, point.z}}; }

// From the point in front of `first` up to `last`: on the circle, and turning as told.
void ExpectArc(const ControlTrack& track, std::int32_t first, std::int32_t last, const Told& told) {
  const Axes axes = AxesOf(told.plane);
  double turned = 0;
  double radius = 0;
  for (std::int32_t i = first - 1; i <= last; ++i) {
    const Place at = PlaceOf(track.path.points[i]);
    const double u = at.of[axes.u] - told.centreU;
    const double v = at.of[axes.v] - told.centreV;
    if (i == first - 1) {
      radius = std::hypot(u, v);
      continue;
    }
    EXPECT_NEAR(std::hypot(u, v), radius, 2 * kClose) << "point " << i;
    const Place from = PlaceOf(track.path.points[i - 1]);
    const double beforeU = from.of[axes.u] - told.centreU;
    const double beforeV = from.of[axes.v] - told.centreV;
    turned += std::atan2(beforeU * v - beforeV * u, beforeU * u + beforeV * v);
  }
  EXPECT_EQ(turned > 0, told.turn > 0) << "turned by " << turned;
}

void ExpectSameMoves(const std::vector<Told>& moves, const ControlTrack& track) {
  ASSERT_GT(moves.size(), 50u);
  std::int32_t at = 0;
  for (const Told& told : moves) {
    SCOPED_TRACE("N" + std::to_string(told.line));
    const std::int32_t first = at;
    // On a whole turn the end stands at the start: of an arc the last point of the line counts.
    const auto ofLine = [&](std::int32_t i) {
      return i < track.path.count && track.path.points[i].sourceLine == told.line - 1;
    };
    ASSERT_TRUE(ofLine(at)) << "no point of this line is left";
    if (told.arc) {
      while (ofLine(at + 1)) ++at;
      ExpectArc(track, first, at, told);
    } else {
      while (ofLine(at) && Apart(PlaceOf(track.path.points[at]), told.to) > kClose) ++at;
    }
    ASSERT_TRUE(ofLine(at)) << "the end is not reached";
    ASSERT_LE(Apart(PlaceOf(track.path.points[at]), told.to), kClose);
    ++at;
  }
  EXPECT_EQ(at, track.path.count);
}

using OtherReader = support::Stage;

TEST_F(OtherReader, EndsItsMovesWhereOursEnd) {
  if (std::system("command -v rs274 > /dev/null 2>&1") != 0) {
    GTEST_SKIP() << "rs274 (Debian package linuxcnc-uspace) is not here: nothing to compare with";
  }
  const std::string program = (folder / "program.ngc").string();
  const std::string told = (folder / "told.txt").string();
  std::ofstream(folder / "tools.tbl") << "T1 P1 D0.5 Z1\n";
  std::ofstream(folder / "variables.var");
  const std::string command = "cd '" + folder.string() +
                              "' && rs274 -t tools.tbl -v variables.var -g program.ngc told.txt "
                              "> /dev/null 2>&1";
  for (int seed = 1; seed <= kPrograms; ++seed) {
    const bool metric = seed % 2 == 0;
    const std::string text = Maker(seed, metric).Make();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::ofstream(program) << text;
    ASSERT_EQ(std::system(command.c_str()), 0) << text;
    std::ifstream in(told);
    ControlTable table;
    table.peckRetract = metric ? 0.254 / 25.4 : 0.01;  // as it is fixed there
    const ControlTrack& track =
        RunText(std::u16string(text.begin(), text.end()), {.metric = metric, .table = &table});
    EXPECT_EQ(Found(track), "") << text;
    ExpectSameMoves(MovesOf(in), track);
    if (HasFailure()) {
      std::printf("%s", text.c_str());
      return;
    }
  }
}

}  // namespace
