// Drawings by chance. Every word of their code is held against places worked out a second time
// with the library's sine; then the code is read back by the toolpath extraction, and what that
// draws is held against the outlines in plain geometry.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "cad/model/sketch.h"
#include "cad/panel/sketch_code.h"
#include "documents/feature_blocks.h"
#include "simulator/motion_path.h"
#include "simulator/toolpath.h"
#include "support/stage.h"

namespace morva {
namespace {

constexpr double kPi = 3.14159265358979323846;

// Half of the last digit, and what the shorter sine and the circle's seven decimals may add.
constexpr double kHalfDigit = 0.0005 + 1e-6;
// A place that is off in both words.
constexpr double kPlace = 1.4142136 * kHalfDigit;

struct Place {
  double x, y;
};

// A place along the object's own axes, in the drawing.
Place In(const SketchObject& o, double lx, double ly) {
  const double a = o.angle * (kPi / 180);
  return {o.x + lx * std::cos(a) - ly * std::sin(a), o.y + lx * std::sin(a) + ly * std::cos(a)};
}

bool HasArcs(const SketchObject& o) { return o.type == kTypeCircle || o.type == kTypeSlot; }
double ArcRadius(const SketchObject& o) { return (o.type == kTypeSlot ? o.size2 : o.size) / 2; }
double HalfStraight(const SketchObject& o) { return o.size > o.size2 ? (o.size - o.size2) / 2 : 0; }

// What must be written.

struct WantedLine {
  std::string head;
  std::vector<double> numbers;  // X, Y and of an arc I, J
  std::string tail;
};

struct WantedText {
  std::vector<WantedLine> lines;

  void Plain(const std::string& text) { lines.push_back({text, {}, ""}); }
  void Start(Place p) {
    lines.push_back({"G00", {p.x, p.y}, ""});
    Plain("G01 Z-0.100 F10.00");
  }
  void Straight(Place p) { lines.push_back({"G01", {p.x, p.y}, " F10.0"}); }
  void Arc(const char* word, Place from, Place to, Place centre, const char* tail) {
    lines.push_back({word, {to.x, to.y, centre.x - from.x, centre.y - from.y}, tail});
  }
  void End() { Plain("G00 Z0.500"); }
};

void WantObject(const SketchObject& o, WantedText& text) {
  if (o.type == kTypeLine) {
    text.Start({o.x, o.y});
    text.Straight(In(o, o.size, 0));
  } else if (o.type == kTypeRectangle) {
    const double w = o.size / 2;
    const double h = o.size2 / 2;
    text.Start(In(o, -w, -h));
    for (const Place p : {In(o, w, -h), In(o, w, h), In(o, -w, h), In(o, -w, -h)}) text.Straight(p);
  } else if (o.type == kTypeCircle) {
    const double r = o.size / 2;
    Place from{o.x + r, o.y};
    text.Start(from);
    for (int i = 1; i <= 16; ++i) {
      const double a = -i * kPi / 8;
      const Place to{o.x + r * std::cos(a), o.y + r * std::sin(a)};
      text.Arc("G02", from, to, {o.x, o.y}, i == 1 ? " F10.00" : "");
      from = to;
    }
  } else {
    const double s = HalfStraight(o);
    const double r = o.size2 / 2;
    text.Start(In(o, s, r));
    text.Straight(In(o, -s, r));
    text.Arc("G03", In(o, -s, r), In(o, -s, -r), In(o, -s, 0), "");
    text.Straight(In(o, s, -r));
    text.Arc("G03", In(o, s, -r), In(o, s, r), In(o, s, 0), "");
  }
  text.End();
}

WantedText Wanted() {
  WantedText text;
  text.Plain("");
  text.Plain("(CUSTOM SHAPE EDITOR)");
  text.Plain(sketch.metric ? "G21 (MM)" : "G20 (INCH)");
  text.Plain("G90 G17 G94");
  text.Plain("G00 Z0.500");
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (sketch.objects[i].type > kTypeSlot) continue;
    text.Plain("(OBJECT " + std::to_string(i + 1) + ")");
    WantObject(sketch.objects[i], text);
  }
  text.Plain("(END CUSTOM SHAPE)");
  return text;
}

std::vector<std::string> Lines(std::u16string_view text) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find(u"\r\n", at);
    lines.push_back(support::Narrow(std::u16string(text.substr(at, end - at))));
    if (end == text.npos) return lines;
    at = end + 2;
  }
  return lines;
}

// The numbers of the words X, Y, I and J of a line, in their order.
std::vector<double> Numbers(const std::string& line) {
  std::vector<double> numbers;
  std::istringstream words(line);
  for (std::string word; words >> word;) {
    if (std::string("XYIJ").find(word[0]) != std::string::npos) {
      numbers.push_back(std::stod(word.substr(1)));
    }
  }
  return numbers;
}

// The line with its numbers taken out: what is left must be there to the character.
std::string WithoutNumbers(const WantedLine& wanted) {
  const char* letters = "XYIJ";
  std::string text = wanted.head;
  for (std::size_t i = 0; i < wanted.numbers.size(); ++i) text += std::string(" ") + letters[i];
  return text + wanted.tail;
}
std::string WithoutNumbers(const std::string& line) {
  std::string text;
  std::istringstream words(line);
  for (std::string word; words >> word;) {
    if (!text.empty()) text += ' ';
    const bool number = std::string("XYIJ").find(word[0]) != std::string::npos;
    text += number ? word.substr(0, 1) : word;
    if (number) {
      EXPECT_EQ(word.size() - word.find('.'), 4u) << line;
    }
  }
  return text;
}

void ExpectWords(const std::vector<std::string>& lines) {
  const WantedText wanted = Wanted();
  for (std::size_t i = 0; i < std::min(lines.size(), wanted.lines.size()); ++i) {
    SCOPED_TRACE(testing::Message() << "line " << i + 1 << ": " << lines[i]);
    const WantedLine& want = wanted.lines[i];
    if (want.numbers.empty()) {
      ASSERT_EQ(lines[i], want.head);
      continue;
    }
    ASSERT_EQ(WithoutNumbers(lines[i]), WithoutNumbers(want));
    const std::vector<double> numbers = Numbers(lines[i]);
    for (std::size_t k = 0; k < numbers.size(); ++k) {
      ASSERT_NEAR(numbers[k], want.numbers[k], kHalfDigit) << k;
    }
  }
  ASSERT_EQ(lines.size(), wanted.lines.size());
}

// What is drawn.

double ToSegment(Place p, Place a, Place b) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double square = dx * dx + dy * dy;
  double t = square > 0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / square : 0;
  t = t < 0 ? 0 : t > 1 ? 1 : t;
  return std::hypot(p.x - a.x - t * dx, p.y - a.y - t * dy);
}

// How far a place lies from the outline.
double FromOutline(const SketchObject& o, Place p) {
  if (o.type == kTypeCircle) return std::fabs(std::hypot(p.x - o.x, p.y - o.y) - o.size / 2);
  if (o.type == kTypeLine) return ToSegment(p, {o.x, o.y}, In(o, o.size, 0));
  if (o.type == kTypeSlot) {
    const double s = HalfStraight(o);
    return std::fabs(ToSegment(p, In(o, -s, 0), In(o, s, 0)) - o.size2 / 2);
  }
  const double w = o.size / 2;
  const double h = o.size2 / 2;
  const Place corners[] = {In(o, -w, -h), In(o, w, -h), In(o, w, h), In(o, -w, h), In(o, -w, -h)};
  double least = 1e9;
  for (int i = 0; i < 4; ++i) least = std::min(least, ToSegment(p, corners[i], corners[i + 1]));
  return least;
}

// Places along the outline, close together.
std::vector<Place> Along(const SketchObject& o) {
  std::vector<Place> places;
  const int n = 90;
  for (int i = 0; i <= n; ++i) {
    const double t = static_cast<double>(i) / n;
    const double turn = t * 2 * kPi;
    const double half = turn / 2 - kPi / 2;
    if (o.type == kTypeLine) places.push_back(In(o, o.size * t, 0));
    if (o.type == kTypeCircle) {
      places.push_back(In(o, o.size / 2 * std::cos(turn), o.size / 2 * std::sin(turn)));
    }
    for (const double side : {-1.0, 1.0}) {
      if (o.type == kTypeRectangle) {
        places.push_back(In(o, o.size * (t - 0.5), side * o.size2 / 2));
        places.push_back(In(o, side * o.size / 2, o.size2 * (t - 0.5)));
      }
      if (o.type == kTypeSlot) {
        const double s = HalfStraight(o);
        const double r = o.size2 / 2;
        places.push_back(In(o, s * (2 * t - 1), side * r));
        places.push_back(In(o, side * (s + r * std::cos(half)), r * std::sin(half)));
      }
    }
  }
  return places;
}

struct Cut {
  Place from, to;
  int line = 0;
  bool drawn = true;   // else the extraction only knows that the tool arrived
  bool atWord = true;  // `to` is the place that the line's words name
};

// The number of the object that each line of the text belongs to.
std::vector<std::size_t> ObjectsOfLines(const std::vector<std::string>& lines) {
  std::vector<std::size_t> objects;
  std::size_t object = 0;
  for (const std::string& line : lines) {
    if (line.rfind("(OBJECT ", 0) == 0) object = std::stoul(line.substr(8));
    objects.push_back(object);
  }
  return objects;
}

// The feed moves in the plane at the cutting depth, by the number of their object.
std::vector<std::vector<Cut>> CutsOf(const std::vector<std::string>& lines, double depth) {
  std::vector<std::vector<Cut>> cuts(kMaxItems + 1);
  const std::vector<std::size_t> objects = ObjectsOfLines(lines);
  for (int i = 1; i < path.count; ++i) {
    const MotionPoint& a = path.points[i - 1];
    const MotionPoint& b = path.points[i];
    if (b.rapid || b.z != depth || a.z != depth) continue;
    const bool last = i + 1 == path.count || path.points[i + 1].sourceLine != b.sourceLine;
    cuts[objects[static_cast<std::size_t>(b.sourceLine)]].push_back(
        {{a.x, a.y}, {b.x, b.y}, b.sourceLine, !b.jump, last});
  }
  return cuts;
}

// Chords of an arc. Its start is off by up to kPlace, and so is the way from there to the
// centre, which moves the centre and changes the radius: three times kPlace at the far side of
// a half circle. At the end of a sixteenth the last two nearly cancel, from a radius on that
// the directions do not turn much.
double ChordBound(const SketchObject& o) {
  const bool sixteenths = o.type == kTypeCircle && ArcRadius(o) >= 0.1;
  return (sixteenths ? 1.45 : 3) * kPlace;
}
// How far the middle of a chord of a degree lies inside its ends.
double Sagitta(const SketchObject& o) {
  return HasArcs(o) ? (ArcRadius(o) + kPlace) * (1 - std::cos(kPi / 360)) : 0;
}

// The simulator draws an arc whose radii at start and end agree within a thousandth and
// 0.0001. They differ by the start's and the end's rounding and by the centre's, which counts
// by the chord between the two: all of it twice in a half circle, 0.39 of it in a sixteenth.
double AlwaysDrawnFrom(const SketchObject& o) {
  const double chord = o.type == kTypeSlot ? 2 : 0.3902;
  return ((2 + chord) * kPlace - 0.0001) / (0.001 - 0.00001);
}

struct Findings {
  int compared = 0;  // objects whose whole outline was held against the cuts
  int arcs = 0;
  int arrivals = 0;
};

void ExpectOnOutline(const SketchObject& o, const std::vector<Cut>& cuts) {
  bool fromWord = true;
  for (const Cut& cut : cuts) {
    const double from = fromWord ? kPlace : ChordBound(o);
    const double to = cut.atWord ? kPlace : ChordBound(o);
    ASSERT_LE(FromOutline(o, cut.from), from);
    ASSERT_LE(FromOutline(o, cut.to), to);
    const Place middle{(cut.from.x + cut.to.x) / 2, (cut.from.y + cut.to.y) / 2};
    if (cut.drawn) {
      ASSERT_LE(FromOutline(o, middle), std::max(from, to) + Sagitta(o));
    }
    fromWord = cut.atWord;
  }
}

// Which arcs are drawn follows from the words alone.
void ExpectDrawn(const SketchObject& o, const std::vector<Cut>& cuts,
                 const std::vector<std::string>& lines, Findings& found) {
  for (std::size_t i = 0; i < cuts.size(); ++i) {
    const std::string& line = lines[static_cast<std::size_t>(cuts[i].line)];
    const bool arc = line.rfind("G02", 0) == 0 || line.rfind("G03", 0) == 0;
    if (!arc) {
      ASSERT_TRUE(cuts[i].drawn);
      continue;
    }
    if (i > 0 && cuts[i - 1].line == cuts[i].line) continue;
    const std::vector<double> words = Numbers(line);
    const Place centre{cuts[i].from.x + words[2], cuts[i].from.y + words[3]};
    const double start = std::hypot(words[2], words[3]);
    const double end = std::hypot(words[0] - centre.x, words[1] - centre.y);
    const double beyond = std::fabs(start - end) - (start * 0.001 + 0.0001);
    ++found.arcs;
    found.arrivals += cuts[i].drawn ? 0 : 1;
    if (std::fabs(beyond) > 1e-9) {
      ASSERT_EQ(cuts[i].drawn, beyond < 0) << line;
    }
    if (ArcRadius(o) >= AlwaysDrawnFrom(o)) {
      ASSERT_TRUE(cuts[i].drawn) << line;
    }
  }
}

void ExpectCovered(const SketchObject& o, const std::vector<Cut>& cuts, Findings& found) {
  for (const Cut& cut : cuts) {
    if (!cut.drawn) return;
  }
  ++found.compared;
  const double bound = HasArcs(o) ? ChordBound(o) + Sagitta(o) : kPlace;
  for (const Place p : Along(o)) {
    double least = 1e9;
    for (const Cut& cut : cuts) least = std::min(least, ToSegment(p, cut.from, cut.to));
    ASSERT_LE(least, bound);
  }
}

SketchObject AnyObject(std::mt19937& chance) {
  std::uniform_real_distribution<double> place(-40, 40);
  std::uniform_real_distribution<double> size(0.01, 8);
  std::uniform_real_distribution<double> turn(-400, 400);
  SketchObject o;
  o.type = static_cast<std::int32_t>(chance() % 6);
  o.x = place(chance);
  o.y = place(chance);
  if (o.type != kTypeWorkPoint) o.size = size(chance);
  if (o.type == kTypeRectangle || o.type == kTypeSlot) o.size2 = size(chance);
  if (o.type != kTypeCircle && o.type != kTypeWorkPoint) o.angle = turn(chance);
  return o;
}

struct SketchCodeByChance : support::Stage {
  SketchCodeByChance() { Clear(); }
  ~SketchCodeByChance() override { Clear(); }
  static void Clear() {
    ResetSketch();
    ResetSimulator();
    ResetFeatures();
  }
  static void DrawAny(std::mt19937& chance, bool metric) {
    Clear();
    sketch.metric = metric;
    const int count = 1 + static_cast<int>(chance() % 24);
    for (int i = 0; i < count; ++i) AppendSketchObject(AnyObject(chance));
  }
};

TEST_F(SketchCodeByChance, HasEveryWordOfEveryObjectInItsOrder) {
  std::mt19937 chance(91);
  for (int round = 0; round < 400; ++round) {
    DrawAny(chance, round % 2 == 1);
    SCOPED_TRACE(round);
    ExpectWords(Lines(SketchCode({-0.1, 10, 0.5})));
    if (HasFailure()) return;
  }
}

TEST_F(SketchCodeByChance, ReadBackLiesOnTheOutlinesAndCoversThem) {
  std::mt19937 chance(20260712);
  Findings found;
  int cutting = 0;
  for (int round = 0; round < 120; ++round) {
    DrawAny(chance, round % 2 == 1);
    const std::u16string text = SketchCode({-0.1, 10, 0.5});
    const std::vector<std::string> lines = Lines(text);
    ExtractToolpath(text, sketch.metric);
    ASSERT_LT(path.count, kMaxMotionPoints);
    const auto cuts = CutsOf(lines, -0.1);
    for (int i = 0; i < sketch.objectCount; ++i) {
      const SketchObject& o = sketch.objects[i];
      SCOPED_TRACE(testing::Message() << "round " << round << " object " << i + 1 << " type "
                                      << o.type << " size " << o.size << " x " << o.size2);
      const auto& own = cuts[static_cast<std::size_t>(i + 1)];
      ASSERT_EQ(own.empty(), o.type > kTypeSlot);
      if (own.empty()) continue;
      ++cutting;
      ExpectOnOutline(o, own);
      ExpectDrawn(o, own, lines, found);
      ExpectCovered(o, own, found);
      if (HasFatalFailure()) return;
    }
  }
  EXPECT_GT(found.compared, cutting * 2 / 3);
  EXPECT_GT(found.arrivals, 0);
  RecordProperty("arcs", found.arcs);
  RecordProperty("arrivals", found.arrivals);
}

}  // namespace
}  // namespace morva
