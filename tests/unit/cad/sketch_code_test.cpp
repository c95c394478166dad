// The code of drawings: a worked example to the character, and drawings by chance whose code
// is read back by the toolpath extraction and held against the outlines in plain geometry.
#include "cad/sketch_code.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "cad/sketch.h"
#include "documents/feature_blocks.h"
#include "documents/insertion.h"
#include "documents/program_tabs.h"
#include "platform/listing.h"
#include "simulator/motion_path.h"
#include "support/stage.h"

namespace morva {
namespace {

SketchObject Line(double x, double y, double length, double angle) {
  return {kTypeLine, 0, x, y, length, 0, angle};
}
SketchObject Circle(double x, double y, double diameter) {
  return {kTypeCircle, 0, x, y, diameter, 0, 0};
}

// The live sketch as a record, without its cutting data.
bool WriteSketch(FeatureSettings& record) {
  record.version = 3;
  record.kind = kKindSketch;
  record.metric = sketch.metric ? 1 : 0;
  record.itemCount = sketch.objectCount;
  for (int i = 0; i < sketch.objectCount; ++i) {
    const SketchObject& o = sketch.objects[i];
    record.items[i] = {o.type, o.group, o.x, o.y, o.size, o.size2, o.angle};
  }
  return true;
}

int rebuilt = 0;

struct SketchCodeTest : support::Stage {
  SketchCodeTest() {
    ResetSketch();
    ResetInsertion();
    FreeTabs();
    ResetSimulator();
    features.count = 0;
    rebuilt = 0;
    hooks.rebuildToolpath = [] { ++rebuilt; };
    SetSettingsWriter(kKindSketch, WriteSketch);
    RegisterSketchCode();
    for (const int id : {kIdCadDepth, kIdCadFeed, kIdCadSafeZ}) {
      support::MakeText(id, platform::ControlKind::EditLine);
    }
    Fields(u"-0.1", u"10", u"0.5");
    app.activeTab = 0;
    app.tabCount = 1;
  }
  ~SketchCodeTest() override {
    ResetSketch();
    ResetInsertion();
    FreeTabs();
    ResetSimulator();
    ResetAppState();
  }

  static void Fields(const char16_t* depth, const char16_t* feed, const char16_t* safeZ) {
    platform::SetText(kIdCadDepth, depth);
    platform::SetText(kIdCadFeed, feed);
    platform::SetText(kIdCadSafeZ, safeZ);
  }
  static void Draw(const SketchObject& object) { AppendSketchObject(object); }
  static std::u16string Code() { return SketchCode(-0.1, 10, 0.5); }
  // The one box that this command showed.
  static headless::BoxRecord Refusal() {
    GenerateSketchCode();
    const auto boxes = headless::TakeBoxes();
    EXPECT_EQ(boxes.size(), 1u);
    return boxes.empty() ? headless::BoxRecord() : boxes[0];
  }
  static bool Holds(std::u16string_view text, std::u16string_view words) {
    return text.find(words) != text.npos;
  }
};

TEST_F(SketchCodeTest, IsTheWorkedExampleToTheCharacter) {
  Draw(Line(0, 0, 2, 0));
  Draw(Circle(1, 1, 1));
  EXPECT_EQ(Code(),
            u"\r\n"
            u"(CUSTOM SHAPE EDITOR)\r\n"
            u"G20 (INCH)\r\n"
            u"G90 G17 G94\r\n"
            u"G00 Z0.500\r\n"
            u"(OBJECT 1)\r\n"
            u"G00 X0.000 Y0.000\r\n"
            u"G01 Z-0.100 F10.00\r\n"
            u"G01 X2.000 Y0.000 F10.0\r\n"
            u"G00 Z0.500\r\n"
            u"(OBJECT 2)\r\n"
            u"G00 X1.500 Y1.000\r\n"
            u"G01 Z-0.100 F10.00\r\n"
            u"G02 X1.462 Y0.809 I-0.500 J0.000 F10.00\r\n"
            u"G02 X1.354 Y0.646 I-0.462 J0.191\r\n"
            u"G02 X1.191 Y0.538 I-0.354 J0.354\r\n"
            u"G02 X1.000 Y0.500 I-0.191 J0.462\r\n"
            u"G02 X0.809 Y0.538 I0.000 J0.500\r\n"
            u"G02 X0.646 Y0.646 I0.191 J0.462\r\n"
            u"G02 X0.538 Y0.809 I0.354 J0.354\r\n"
            u"G02 X0.500 Y1.000 I0.462 J0.191\r\n"
            u"G02 X0.538 Y1.191 I0.500 J0.000\r\n"
            u"G02 X0.646 Y1.354 I0.462 J-0.191\r\n"
            u"G02 X0.809 Y1.462 I0.354 J-0.354\r\n"
            u"G02 X1.000 Y1.500 I0.191 J-0.462\r\n"
            u"G02 X1.191 Y1.462 I0.000 J-0.500\r\n"
            u"G02 X1.354 Y1.354 I-0.191 J-0.462\r\n"
            u"G02 X1.462 Y1.191 I-0.354 J-0.354\r\n"
            u"G02 X1.500 Y1.000 I-0.462 J-0.191\r\n"
            u"G00 Z0.500\r\n"
            u"(END CUSTOM SHAPE)\r\n");
}

TEST_F(SketchCodeTest, WritesTheHeaderAndTheEndAloneForWorkPoints) {
  Draw({kTypeWorkPoint, 0, 1, 1, 0, 0, 0});
  Draw({kTypeWorkPoint, 0, 2, 1, 0, 0, 0});
  EXPECT_EQ(Code(),
            u"\r\n(CUSTOM SHAPE EDITOR)\r\nG20 (INCH)\r\nG90 G17 G94\r\nG00 Z0.500\r\n"
            u"(END CUSTOM SHAPE)\r\n");
}

TEST_F(SketchCodeTest, NumbersObjectsByTheirPlaceSoThatAWorkAxisSkipsOne) {
  Draw({kTypeWorkAxis, 0, 0, 0, 5, 0, 0});
  Draw(Line(0, 0, 2, 0));
  EXPECT_FALSE(Holds(Code(), u"(OBJECT 1)"));
  EXPECT_TRUE(Holds(Code(), u"(OBJECT 2)\r\nG00 X0.000 Y0.000\r\n"));
}

TEST_F(SketchCodeTest, CutsHiddenAndLockedObjects) {
  Draw(Line(0, 0, 2, 0));
  const std::u16string shown = Code();
  sketch.hidden[0] = 1;
  sketch.locked[0] = 1;
  EXPECT_EQ(Code(), shown);
  EXPECT_TRUE(Holds(shown, u"G01 X2.000 Y0.000 F10.0\r\n"));
}

TEST_F(SketchCodeTest, LeavesTheCommentOfACircleOfNothing) {
  Draw(Circle(1, 1, 0));
  EXPECT_TRUE(Holds(Code(), u"G00 Z0.500\r\n(OBJECT 1)\r\n(END CUSTOM SHAPE)\r\n"));
}

TEST_F(SketchCodeTest, CutsASlotShorterThanItIsWideAsTwoHalfCircles) {
  Draw({kTypeSlot, 0, 0, 0, 0.5, 1, 0});
  EXPECT_TRUE(Holds(Code(),
                    u"G01 X0.000 Y0.500 F10.0\r\nG03 X0.000 Y-0.500 I0.000 J-0.500\r\n"
                    u"G01 X0.000 Y-0.500 F10.0\r\nG03 X0.000 Y0.500 I0.000 J0.500\r\n"));
}

TEST_F(SketchCodeTest, KeepsTheMinusOfASmallValue) {
  Draw(Line(-0.0004, -0.0004, 2, 0));
  EXPECT_TRUE(Holds(Code(), u"G00 X-0.000 Y-0.000\r\n"));
}

TEST_F(SketchCodeTest, NamesTheUnitOfTheSketchAndNotOfTheApplication) {
  Draw(Line(0, 0, 2, 0));
  app.unitsMetric = true;
  EXPECT_TRUE(Holds(Code(), u"G20 (INCH)\r\n"));
  app.unitsMetric = false;
  sketch.metric = true;
  EXPECT_TRUE(Holds(Code(), u"G21 (MM)\r\n"));
}

TEST_F(SketchCodeTest, IsNotCutWithNinetySixOfTheLongestObjects) {
  for (int i = 0; i < kMaxItems; ++i) Draw(Circle(-899999.5 - i, -899999.5, 199998.123));
  const std::u16string text = Code();
  EXPECT_TRUE(Holds(text, u"(OBJECT 96)\r\n"));
  const std::u16string end = u"(END CUSTOM SHAPE)\r\n";
  EXPECT_EQ(text.substr(text.size() - end.size()), end);
}

// The command.

TEST_F(SketchCodeTest, AsksForAnObjectBeforeItLooksAtTheFields) {
  Fields(u"5", u"0", u"1");
  const headless::BoxRecord box = Refusal();
  EXPECT_EQ(box.title, u"Custom Shape Editor");
  EXPECT_EQ(box.text, u"Draw at least one object first.");
  EXPECT_EQ(box.icon, platform::BoxIcon::Information);
}

TEST_F(SketchCodeTest, RefusesASafeZEqualToTheDepthOrBelowIt) {
  Draw(Line(0, 0, 2, 0));
  for (const char16_t* safeZ : {u"-0.1", u"-0.2"}) {
    Fields(u"-0.1", u"10", safeZ);
    const headless::BoxRecord box = Refusal();
    EXPECT_EQ(box.title, u"Custom Shape Editor");
    EXPECT_EQ(box.text, u"Enter a positive feed with Safe Z above the cutting depth.");
    EXPECT_EQ(box.icon, platform::BoxIcon::Warning);
  }
  EXPECT_EQ(Text(), u"");
}

// Digits are summed: "0.000001" is a little above the limit, "0.0000009" below it.
TEST_F(SketchCodeTest, RefusesAFeedOfAMillionthOrLess) {
  Draw(Line(0, 0, 2, 0));
  for (const char16_t* feed : {u"0", u"-5", u"0.0000009"}) {
    Fields(u"-0.1", feed, u"0.5");
    EXPECT_EQ(Refusal().text, u"Enter a positive feed with Safe Z above the cutting depth.");
  }
  Fields(u"-0.1", u"0.000001", u"0.5");
  GenerateSketchCode();
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_TRUE(Holds(Text(), u"F0.00\r\n"));
}

TEST_F(SketchCodeTest, TakesTheInchFallbacksForFieldsThatAreNoNumbers) {
  Draw(Line(0, 0, 2, 0));
  Fields(u"", u"", u"");
  GenerateSketchCode();
  EXPECT_TRUE(Holds(Text(), u"G00 Z0.500\r\n(OBJECT 1)"));
  EXPECT_TRUE(Holds(Text(), u"G01 Z-2.500 F10.00\r\n"));
}

TEST_F(SketchCodeTest, TakesTheMillimetreFallbacksWithTheSameDepth) {
  Draw(Line(0, 0, 2, 0));
  sketch.metric = true;
  Fields(u"abc", u"-", u"");
  GenerateSketchCode();
  EXPECT_TRUE(Holds(Text(), u"G00 Z12.700\r\n(OBJECT 1)"));
  EXPECT_TRUE(Holds(Text(), u"G01 Z-2.500 F250.00\r\n"));
}

TEST_F(SketchCodeTest, InsertsOneBlockOfASketchAndTellsWhatToVerify) {
  Draw(Line(0, 0, 2, 0));
  Fields(u"-0.125", u"7.5", u"0.25");
  ASSERT_TRUE(RouteCommand(kIdCadGenerate, platform::kNotifyClick));
  ScanProgramText(Text());
  ASSERT_EQ(features.count, 1);
  EXPECT_EQ(features.rows[0].settings.kind, kKindSketch);
  EXPECT_EQ(features.rows[0].settings.itemCount, 1);
  EXPECT_EQ(features.rows[0].settings.codeHash, CodeHash(SketchCode(-0.125, 7.5, 0.25)));
  EXPECT_TRUE(Holds(Text(), SketchCode(-0.125, 7.5, 0.25)));
  EXPECT_TRUE(Holds(platform::TextOf(kIdOutputLog),
                    u"Custom Shape Editor geometry inserted into active program. Verify work "
                    u"offset, cutter compensation, stock, and clearances.\r\n"));
  EXPECT_TRUE(app.editorDirty);
  EXPECT_EQ(rebuilt, 1);
  EXPECT_EQ(sketch.objectCount, 1);
}

TEST_F(SketchCodeTest, SaysInTheWorkspaceWhereTheCodeWentAndWhetherItIsNew) {
  platform::ListSpec recent;
  recent.id = kIdCadRecent;
  platform::MakeList(recent);
  std::u16string_view(u"Bracket.NC").copy(ActiveTab()->title, kTitleUnits - 1);
  Draw(Line(0, 0, 2, 0));
  GenerateSketchCode();
  EXPECT_EQ(SketchStatus(),
            u"Code added to Bracket.NC. To change it, double-click its feature in the code; "
            u"Generate adds another.");
  ASSERT_EQ(platform::RowCount(kIdCadRecent), 1);
  EXPECT_EQ(platform::RowText(kIdCadRecent, 0), u"Generated code");
  ScanProgramText(Text());
  ASSERT_EQ(features.count, 1);
  editLink.kind = kKindSketch;
  editLink.id = features.rows[0].id;
  editLink.tab = app.activeTab;
  editLink.original =
      Text().substr(static_cast<std::size_t>(features.rows[0].start),
                    static_cast<std::size_t>(features.rows[0].end - features.rows[0].start));
  GenerateSketchCode();
  EXPECT_EQ(SketchStatus().substr(0, 27), u"Code updated in Bracket.NC.");
  EXPECT_EQ(platform::RowText(kIdCadRecent, 1), u"Updated code");
}

TEST_F(SketchCodeTest, IsTheMenuItemsCommandAsWell) {
  Draw(Line(0, 0, 2, 0));
  ASSERT_TRUE(RouteCommand(kIdCadGenerateItem, platform::kNotifyClick));
  EXPECT_TRUE(Holds(Text(), u"(END CUSTOM SHAPE)"));
}

TEST_F(SketchCodeTest, RunsNothingOfItsSuccessWhenThePickerIsCancelled) {
  Draw(Line(0, 0, 2, 0));
  SetDestinationPicker([](int) { return Destination::Cancelled; });
  GenerateSketchCode();
  EXPECT_EQ(Text(), u"");
  EXPECT_EQ(platform::TextOf(kIdOutputLog), u"");
  EXPECT_EQ(SketchStatus().find(u"Code "), std::u16string::npos);
  EXPECT_EQ(rebuilt, 0);
  EXPECT_FALSE(app.editorDirty);
}

// Drawings by chance. Distances are taken in plain geometry with the library's sine.

struct Place {
  double x, y;
};

double ToSegment(Place p, Place a, Place b) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double square = dx * dx + dy * dy;
  double t = square > 0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / square : 0;
  t = t < 0 ? 0 : t > 1 ? 1 : t;
  return std::hypot(p.x - a.x - t * dx, p.y - a.y - t * dy);
}

// A place along the object's own axes, in the drawing.
Place In(const SketchObject& o, double lx, double ly) {
  const double a = o.angle * (3.14159265358979323846 / 180);
  return {o.x + lx * std::cos(a) - ly * std::sin(a), o.y + lx * std::sin(a) + ly * std::cos(a)};
}

// How far a place lies from the outline.
double FromOutline(const SketchObject& o, Place p) {
  if (o.type == kTypeCircle) return std::fabs(std::hypot(p.x - o.x, p.y - o.y) - o.size / 2);
  if (o.type == kTypeLine) return ToSegment(p, {o.x, o.y}, In(o, o.size, 0));
  if (o.type == kTypeSlot) {
    const double s = o.size > o.size2 ? (o.size - o.size2) / 2 : 0;
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
    const double turn = t * 2 * 3.14159265358979323846;
    const double half = turn / 2 - 3.14159265358979323846 / 2;
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
        const double s = o.size > o.size2 ? (o.size - o.size2) / 2 : 0;
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
  bool drawn = true;  // else the extraction only knows that the tool arrived
};

// The number of the object that each line of the text belongs to.
std::vector<std::size_t> ObjectsOfLines(std::u16string_view text) {
  std::vector<std::size_t> objects;
  std::size_t object = 0;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find(u"\r\n", at);
    const std::u16string line(text.substr(at, end - at));
    if (line.rfind(u"(OBJECT ", 0) == 0) object = std::stoul(support::Narrow(line.substr(8)));
    objects.push_back(object);
    at = end + 2;
  }
  return objects;
}

// The feed moves in the plane at the cutting depth, by the number of their object.
std::vector<std::vector<Cut>> CutsOf(std::u16string_view text, double depth) {
  std::vector<std::vector<Cut>> cuts(kMaxItems + 1);
  const std::vector<std::size_t> objects = ObjectsOfLines(text);
  for (int i = 1; i < path.count; ++i) {
    const MotionPoint& a = path.points[i - 1];
    const MotionPoint& b = path.points[i];
    if (b.rapid || b.z != depth || a.z != depth) continue;
    cuts[objects[static_cast<std::size_t>(b.sourceLine)]].push_back(
        {{a.x, a.y}, {b.x, b.y}, !b.jump});
  }
  return cuts;
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

bool HasArcs(const SketchObject& o) { return o.type == kTypeCircle || o.type == kTypeSlot; }
double ArcRadius(const SketchObject& o) { return (o.type == kTypeSlot ? o.size2 : o.size) / 2; }

// A word is off by up to 0.0005, a place by 0.00071. An arc's centre is as much again away from
// its start and the radius as much again wrong; chords of a degree add 0.00015 at a radius
// of 4.
constexpr double kNear = 0.001;
constexpr double kNearArc = 0.0023;
// The extraction draws an arc whose radii at start and end agree within a thousandth and
// 0.0001. Four roundings of 0.00071 are always within that from this radius on.
constexpr double kRadiusAlwaysDrawn = 2.75;

struct Findings {
  int compared = 0;  // objects whose whole outline was held against the cuts
  double farthestPlace = 0;
  double farthestEnd = 0;
};

void ExpectOnOutline(const SketchObject& o, const std::vector<Cut>& cuts, Findings& found) {
  for (const Cut& cut : cuts) {
    for (const Place p : {cut.from, cut.to}) {
      const double away = FromOutline(o, p);
      found.farthestPlace = std::max(found.farthestPlace, away);
      ASSERT_LE(away, HasArcs(o) ? kNearArc : kNear);
    }
    const Place middle{(cut.from.x + cut.to.x) / 2, (cut.from.y + cut.to.y) / 2};
    if (cut.drawn) {
      ASSERT_LE(FromOutline(o, middle), HasArcs(o) ? kNearArc : kNear);
    }
  }
  for (const Place p : {cuts.front().from, cuts.back().to}) {
    found.farthestEnd = std::max(found.farthestEnd, FromOutline(o, p));
  }
}

void ExpectCovered(const SketchObject& o, const std::vector<Cut>& cuts, Findings& found) {
  bool drawn = true;
  for (const Cut& cut : cuts) drawn = drawn && cut.drawn;
  if (HasArcs(o) && ArcRadius(o) >= kRadiusAlwaysDrawn) {
    ASSERT_TRUE(drawn);
  }
  if (!drawn) return;
  ++found.compared;
  for (const Place p : Along(o)) {
    double least = 1e9;
    for (const Cut& cut : cuts) least = std::min(least, ToSegment(p, cut.from, cut.to));
    ASSERT_LE(least, HasArcs(o) ? kNearArc : kNear);
  }
}

TEST_F(SketchCodeTest, OfAnyDrawingLiesOnItsOutlinesAndCoversThem) {
  std::mt19937 chance(20260712);
  Findings found;
  int cutting = 0;
  for (int round = 0; round < 120; ++round) {
    ResetSketch();
    sketch.metric = round % 2 == 1;
    const int count = 1 + static_cast<int>(chance() % 24);
    for (int i = 0; i < count; ++i) Draw(AnyObject(chance));
    const std::u16string text = Code();
    features.count = 0;
    ExtractToolpath(text, sketch.metric);
    ASSERT_LT(path.count, kMaxMotionPoints);
    const auto cuts = CutsOf(text, -0.1);
    for (int i = 0; i < count; ++i) {
      const SketchObject& o = sketch.objects[i];
      SCOPED_TRACE(testing::Message() << "round " << round << " object " << i + 1 << " type "
                                      << o.type << " size " << o.size << " x " << o.size2);
      const auto& own = cuts[static_cast<std::size_t>(i + 1)];
      ASSERT_EQ(own.empty(), o.type > kTypeSlot);
      if (own.empty()) continue;
      ++cutting;
      ExpectOnOutline(o, own, found);
      ExpectCovered(o, own, found);
      if (HasFatalFailure()) return;
    }
  }
  // Where every object begins and ends no arc's centre is in play.
  EXPECT_LE(found.farthestEnd, kNear);
  EXPECT_GT(found.compared, cutting * 2 / 3);
  RecordProperty("farthestPlace", std::to_string(found.farthestPlace));
}

}  // namespace
}  // namespace morva
