#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "app/app_state.h"
#include "simulator/motion_path.h"
#include "simulator/preview.h"
#include "simulator/shown_path.h"
#include "simulator/stock_envelope.h"
#include "simulator/toolpath.h"
#include "simulator/view.h"
#include "simulator/view_switches.h"
#include "unit/simulator/view_fixture.h"

namespace morva {
namespace {

constexpr platform::Colour kFeedColour = 0x48D3B8;
constexpr platform::Colour kRapidColour = 0x4889D2;
constexpr platform::Colour kHeadColour = 0xFFCB48;
constexpr platform::Colour kStockColour = 0x96A7BD;
constexpr platform::Colour kDimensionColour = 0xF1BE4C;
constexpr platform::Colour kQuietColour = 0x91AAC4;

using headless::DrawCall;

// Segments of a PaintSegments call: four numbers each, then width, dashed and smooth.
std::size_t SegmentCount(const DrawCall& call) { return (call.numbers.size() - 3) / 4; }
double PenWidth(const DrawCall& call) { return call.numbers[call.numbers.size() - 3]; }

void ExpectSegment(const DrawCall& call, std::size_t index, double x0, double y0, double x1,
                   double y1) {
  ASSERT_LT(index, SegmentCount(call));
  EXPECT_NEAR(call.numbers[index * 4], x0, 1e-3);
  EXPECT_NEAR(call.numbers[index * 4 + 1], y0, 1e-3);
  EXPECT_NEAR(call.numbers[index * 4 + 2], x1, 1e-3);
  EXPECT_NEAR(call.numbers[index * 4 + 3], y1, 1e-3);
}

class ViewPaint : public ViewTest {};

TEST_F(ViewPaint, CoversTheViewFirst) {
  const std::vector<DrawCall> calls = Paint();
  ASSERT_FALSE(calls.empty());
  EXPECT_EQ(calls[0].name, "FillArea");
  EXPECT_EQ(calls[0].numbers, (std::vector<double>{0, 0, 670, 720}));
}

TEST_F(ViewPaint, DrawsFeedsInOneBatchOfWidthTwo) {
  FlatPart();
  const std::vector<DrawCall> feeds = Calls("PaintSegments", kFeedColour);
  ASSERT_EQ(feeds.size(), 1u);
  EXPECT_EQ(SegmentCount(feeds[0]), 3u);
  EXPECT_EQ(PenWidth(feeds[0]), 2);
  ExpectSegment(feeds[0], 0, 77, 458, 593, 458);
  ExpectSegment(feeds[0], 1, 593, 458, 593, 200);
  ExpectSegment(feeds[0], 2, 593, 200, 77, 200);
}

TEST_F(ViewPaint, HidesRapidsUntilTheyAreAskedFor) {
  FlatPart();
  path.points[1].rapid = true;
  EXPECT_TRUE(Calls("PaintSegments", kRapidColour).empty());
  EXPECT_EQ(SegmentCount(Calls("PaintSegments", kFeedColour)[0]), 2u);
  switches.showRapids = true;
  const std::vector<DrawCall> rapids = Calls("PaintSegments", kRapidColour);
  ASSERT_EQ(rapids.size(), 1u);
  EXPECT_EQ(SegmentCount(rapids[0]), 1u);
  EXPECT_EQ(PenWidth(rapids[0]), 1);
  ExpectSegment(rapids[0], 0, 77, 458, 593, 458);
}

TEST_F(ViewPaint, DrawsNoLineToAPointThatTheToolOnlyArrivesAt) {
  FlatPart();
  path.points[2].jump = true;
  const std::vector<DrawCall> feeds = Calls("PaintSegments", kFeedColour);
  ASSERT_EQ(feeds.size(), 1u);
  EXPECT_EQ(SegmentCount(feeds[0]), 2u);
  ExpectSegment(feeds[0], 1, 593, 200, 77, 200);
  path.points[2].rapid = true;
  switches.showRapids = true;
  EXPECT_TRUE(Calls("PaintSegments", kRapidColour).empty());
}

TEST_F(ViewPaint, DrawsUpToTheHeadOnceThatIsInUse) {
  FlatPart();
  playback.playHead = 2;
  EXPECT_EQ(SegmentCount(Calls("PaintSegments", kFeedColour)[0]), 3u);
  playback.headInUse = true;
  EXPECT_EQ(SegmentCount(Calls("PaintSegments", kFeedColour)[0]), 1u);
  playback.playHead = 1;
  EXPECT_TRUE(Calls("PaintSegments", kFeedColour).empty());
  playback.playHead = 99;
  EXPECT_EQ(SegmentCount(Calls("PaintSegments", kFeedColour)[0]), 3u);
}

TEST_F(ViewPaint, MarksTheHeadWithNineByNinePixels) {
  FlatPart();
  playback.headInUse = true;
  playback.playHead = 2;
  const std::vector<DrawCall> marks = Calls("FillArea", kHeadColour);
  ASSERT_EQ(marks.size(), 1u);
  EXPECT_EQ(marks[0].numbers, (std::vector<double>{589, 454, 598, 463}));
}

TEST_F(ViewPaint, MovesTheHeadAlongTheNextSegment) {
  FlatPart();
  playback.headInUse = true;
  playback.playing = true;
  playback.playHead = 1;
  playback.segmentFraction = 0.25;  // 77 + 129
  EXPECT_EQ(Calls("FillArea", kHeadColour)[0].numbers, (std::vector<double>{202, 454, 211, 463}));
  const std::vector<DrawCall> feeds = Calls("PaintSegments", kFeedColour);
  ASSERT_EQ(feeds.size(), 1u);
  ExpectSegment(feeds[0], 0, 77, 458, 206, 458);
  EXPECT_EQ(PenWidth(feeds[0]), 2);
}

TEST_F(ViewPaint, DrawsNoPieceTowardsAJumpAndKeepsTheHeadThere) {
  FlatPart();
  path.points[1].jump = true;
  playback.headInUse = true;
  playback.playing = true;
  playback.playHead = 1;
  playback.segmentFraction = 0.5;
  EXPECT_TRUE(Calls("PaintSegments", kFeedColour).empty());
  EXPECT_EQ(Calls("FillArea", kHeadColour)[0].numbers, (std::vector<double>{73, 454, 82, 463}));
}

TEST_F(ViewPaint, DrawsThePieceOfARapidOnlyWhileRapidsShow) {
  FlatPart();
  path.points[1].rapid = true;
  playback.headInUse = true;
  playback.playing = true;
  playback.playHead = 1;
  playback.segmentFraction = 0.5;
  EXPECT_TRUE(Calls("PaintSegments", kRapidColour).empty());
  EXPECT_EQ(Calls("FillArea", kHeadColour).size(), 1u);  // the head moves all the same
  switches.showRapids = true;
  ASSERT_EQ(Calls("PaintSegments", kRapidColour).size(), 1u);
  EXPECT_EQ(PenWidth(Calls("PaintSegments", kRapidColour)[0]), 1);
}

TEST_F(ViewPaint, DrawsNoPieceWhenPaused) {
  FlatPart();
  playback.headInUse = true;
  playback.playHead = 1;
  playback.segmentFraction = 0.5;
  EXPECT_TRUE(Calls("PaintSegments", kFeedColour).empty());
}

TEST_F(ViewPaint, HasNoHeadOnAnEmptyPath) {
  EXPECT_TRUE(Calls("FillArea", kHeadColour).empty());
  playback.playHead = 1;
  EXPECT_TRUE(Calls("FillArea", kHeadColour).empty());
}

TEST_F(ViewPaint, DrawsExcludedCodeBeforeThePath) {
  FlatPart();
  ghostPath.count = 4;
  for (int i = 0; i < 4; ++i) {
    ghostPath.points[i] = MotionPoint();
    ghostPath.points[i].x = i;
  }
  ghostPath.points[0].jump = true;
  ghostPath.points[1].rapid = true;
  ghostPath.points[2].jump = true;
  ++path.generation;
  switches.showRapids = true;  // rapids of excluded code never show
  const std::vector<DrawCall> calls = Paint();
  std::size_t ghost = 0;
  std::size_t feed = 0;
  for (std::size_t i = 0; i < calls.size(); ++i) {
    if (calls[i].name != "PaintSegments") continue;
    if (calls[i].colours[0] == kFeedColour) feed = i;
    // The grid has many segments, excluded code one here: from X 2 to X 3.
    if (SegmentCount(calls[i]) == 1) {
      ghost = i;
      ExpectSegment(calls[i], 0, 335, 458, 464, 458);
    }
  }
  EXPECT_GT(ghost, 0u);
  EXPECT_LT(ghost, feed);
}

TEST_F(ViewPaint, FitsTheGhostPathWhenThereIsNoOther) {
  ghostPath.count = 2;
  ghostPath.points[0] = MotionPoint();
  ghostPath.points[1] = MotionPoint();
  ghostPath.points[1].x = 4;
  ++path.generation;
  SetViewTop();
  ExpectPlace(At(4, 0, 0), 593, 329);
}

// In two lines where one has no room there.
TEST_F(ViewPaint, KeepsTheWordsOfTheStockOffTheCube) {
  FlatPart();
  SetViewIsometric();
  stockEnvelope = {true, 0, 4, 0, 2, 0, -0.5, 0.5};
  for (const int width : {670, 520, 400, 354}) {
    SCOPED_TRACE(width);
    platform::SetPlace(kViewToolpath, {700, 100, 700 + width, 100 + 300});
    int lines = 0;
    for (const DrawCall& call : Paint()) {
      if (call.name != "PaintText" || call.colours.at(0) != kStockColour) continue;
      ++lines;
      EXPECT_GE(call.numbers.at(0), 0);
      const bool beside = call.numbers.at(1) < kCubeHeight;
      EXPECT_LE(call.numbers.at(2), beside ? width - kCubeWidth : width);
    }
    EXPECT_EQ(lines, width < 420 ? 2 : 1);
  }
}

TEST_F(ViewPaint, BoxesTheStock) {
  FlatPart();
  stockEnvelope.shown = true;
  stockEnvelope.minX = 0;
  stockEnvelope.maxX = 4;
  stockEnvelope.minY = 0;
  stockEnvelope.maxY = 2;
  stockEnvelope.top = 0;
  stockEnvelope.bottom = -0.5;
  const std::vector<DrawCall> boxes = Calls("PaintSegments", kStockColour);
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(SegmentCount(boxes[0]), 12u);
  EXPECT_EQ(PenWidth(boxes[0]), 2);
  EXPECT_TRUE(Shows(u"STOCK ENVELOPE  4.0000 x 2.0000 x 0.5000 in"));
  // In plan the four upright edges are points, the eight others lie on the outline.
  int points = 0;
  for (std::size_t i = 0; i < 12; ++i) {
    const double* n = &boxes[0].numbers[i * 4];
    if (n[0] == n[2] && n[1] == n[3]) ++points;
  }
  EXPECT_EQ(points, 4);
  stockEnvelope.shown = false;
  EXPECT_TRUE(Calls("PaintSegments", kStockColour).empty());
}

TEST_F(ViewPaint, ReadsOutThePathExtents) {
  Feed(0, 0, 0);
  RapidTo(4, -2, 0.125);
  EXPECT_FALSE(Shows(u"PATH EXTENTS (in)   X 4.0000   Y 2.0000   Z 0.1250"));
  switches.showExtents = true;
  EXPECT_TRUE(Shows(u"PATH EXTENTS (in)   X 4.0000   Y 2.0000   Z 0.1250"));
  SetUnits(true);
  EXPECT_TRUE(Shows(u"PATH EXTENTS (mm)   X 4.0000   Y 2.0000   Z 0.1250"));
}

TEST_F(ViewPaint, DrawsThreeDimensionLinesWithTheirSpans) {
  Feed(0, 0, 0);
  Feed(4, 2, 0.125);
  SetViewTop();
  switches.showExtents = true;
  const std::vector<DrawCall> lines = Calls("PaintLine", kDimensionColour);
  ASSERT_EQ(lines.size(), 3u);
  const double wanted[3][4] = {
      {77, 458, 593, 458}, {77, 458, 77, 200}, {77, 458, 77, 458}};  // X, Y, Z in plan
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t k = 0; k < 4; ++k) EXPECT_NEAR(lines[i].numbers[k], wanted[i][k], 1e-3);
  }
  EXPECT_TRUE(Shows(u"4.0000"));
  EXPECT_TRUE(Shows(u"2.0000"));
  EXPECT_TRUE(Shows(u"0.1250"));
  // The label of X stands around the middle of its line.
  for (const DrawCall& call : Paint()) {
    if (call.text != u"4.0000") continue;
    EXPECT_NEAR((call.numbers[0] + call.numbers[2]) / 2, 335, 1);
    EXPECT_NEAR((call.numbers[1] + call.numbers[3]) / 2, 458, 1);
  }
}

// What the text of one paint says, its lines joined by two blanks as they were before.
std::u16string Joined(const std::vector<DrawCall>& calls, platform::Colour colour) {
  std::u16string all;
  for (const DrawCall& call : calls) {
    if (call.name == "PaintText" && call.colours[0] == colour) {
      all += (all.empty() ? u"" : u"  ") + call.text;
    }
  }
  return all;
}

TEST_F(ViewPaint, BreaksReadOutsThatANarrowViewCannotHold) {
  platform::SetPlace(kViewToolpath, {700, 100, 700 + 353, 100 + 255});
  Feed(0, 0, 0);
  Feed(118.25, -72.5, 12.125);
  measure.a = 0;
  measure.b = 1;
  path.fullAtLine = 32766;
  SetViewTop();
  const std::vector<DrawCall> calls = Paint();
  EXPECT_EQ(Joined(calls, 0xDEE9F2),
            u"MEASURE  dX 118.2500  dY -72.5000  dZ 12.1250  distance 139.2348");
  for (const DrawCall& call : calls) {
    if (call.name != "PaintText") continue;
    // Left, top, right, bottom, font, alignment: nothing is cut or ends in dots.
    EXPECT_GE(call.numbers[0], 0);
    EXPECT_LE(call.numbers[2], 353);
    EXPECT_EQ(static_cast<unsigned>(call.numbers[5]) & platform::kTextEllipsis, 0u);
    EXPECT_GE(call.numbers[2] - call.numbers[0], 6.0 * static_cast<double>(call.text.size()));
    // The slash between two parts goes where the line breaks there.
    EXPECT_FALSE(call.text.starts_with(u'/') || call.text.ends_with(u'/'));
  }
  EXPECT_EQ(calls.back().name, "PaintText");
}

TEST_F(ViewPaint, KeepsTheExtentsOutOfTheTopRightCorner) {
  platform::SetPlace(kViewToolpath, {700, 100, 700 + 353, 100 + 255});
  Feed(0, 0, 0);
  Feed(118.25, -72.5, 12.125);
  SetViewTop();
  switches.showExtents = true;
  std::u16string all;
  double below = 0;
  for (const DrawCall& call : Paint()) {
    if (call.name != "PaintText" || call.colours[0] != kDimensionColour) continue;
    if (call.numbers[0] != 10) continue;  // a span at its line
    EXPECT_TRUE(call.numbers[2] <= 353 - 172 || call.numbers[1] >= 171) << call.numbers[2];
    EXPECT_GE(call.numbers[1], below);  // lines do not cover each other
    below = call.numbers[3];
    all += (all.empty() ? u"" : u"   ") + call.text;
  }
  EXPECT_EQ(all, u"PATH EXTENTS (in)   X 118.2500   Y 72.5000   Z 12.1250");
}

TEST_F(ViewPaint, PutsSpansOnTopOfTheLinesAndBesideEachOther) {
  // Spans of a few pixels in a corner of a long path: Y and Z labels would fall together.
  Feed(0, 0, 0);
  Feed(60, 1, 1);
  SetViewIsometric();
  switches.showExtents = true;
  std::vector<std::vector<double>> plates;
  bool linesOver = false;
  for (const DrawCall& call : Paint()) {
    if (call.colours.size() != 1 || call.colours[0] != kDimensionColour) continue;
    if (call.name == "PaintLine") linesOver = linesOver || !plates.empty();
    if (call.name == "PaintText" && call.text != u"" && call.text[0] != u'P') {
      plates.push_back(call.numbers);
    }
  }
  EXPECT_FALSE(linesOver);
  ASSERT_EQ(plates.size(), 3u);
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      EXPECT_TRUE(plates[i][0] >= plates[k][2] || plates[k][0] >= plates[i][2] ||
                  plates[i][1] >= plates[k][3] || plates[k][1] >= plates[i][3]);
    }
  }
}

TEST_F(ViewPaint, KeepsTheStocksWordsBetweenTheSides) {
  platform::SetPlace(kViewToolpath, {700, 100, 700 + 353, 100 + 255});
  Feed(0, 0, 0);
  Feed(4, 2, 0);
  SetViewTop();
  stockEnvelope.shown = true;
  stockEnvelope.maxX = 4;
  stockEnvelope.maxY = 2;
  stockEnvelope.bottom = -0.5;
  for (const double pan : {-150.0, 0.0, 150.0}) {
    view.panX = pan;
    bool seen = false;
    for (const DrawCall& call : Paint()) {
      if (call.name != "PaintText" || call.colours[0] != kStockColour) continue;
      seen = true;
      EXPECT_GE(call.numbers[0], 0);
      EXPECT_LE(call.numbers[2], 353);
    }
    EXPECT_TRUE(seen);
  }
}

TEST_F(ViewPaint, KeepsTheStocksWordsOffTheCube) {
  platform::SetPlace(kViewToolpath, {0, 0, 900, 600});
  Feed(0, 0, 0);
  Feed(4, 2, 0);
  SetViewTop();
  stockEnvelope.shown = true;
  stockEnvelope.maxX = 4;
  stockEnvelope.maxY = 2;
  stockEnvelope.bottom = -0.5;
  bool high = false;
  for (const double panY : {-500.0, -300.0, -100.0, 100.0, 300.0, 500.0}) {
    view.panX = 400;
    view.panY = panY;
    for (const DrawCall& call : Paint()) {
      if (call.name != "PaintText" || call.colours[0] != kStockColour) continue;
      if (call.numbers[1] >= 171) continue;
      high = true;
      EXPECT_LE(call.numbers[2], 900 - 172);
    }
  }
  EXPECT_TRUE(high);
}

TEST_F(ViewPaint, BreaksTheCaptionOfTheCutSurfaceAtItsDots) {
  platform::SetPlace(kViewToolpath, {0, 0, 353, 400});
  Feed(0, 0, 0);
  Feed(4, 2, -0.25);
  stockEnvelope.shown = true;
  stockEnvelope.maxX = 4;
  stockEnvelope.maxY = 2;
  stockEnvelope.bottom = -0.5;
  switches.showCutSurface = true;
  std::vector<std::u16string> lines;
  for (const DrawCall& call : Paint()) {
    if (call.name != "PaintText" || call.colours[0] != kQuietColour) continue;
    EXPECT_LE(call.numbers[2], 353);
    lines.push_back(call.text);
  }
  const auto first =
      std::find(lines.begin(), lines.end(), u"Approximate cut surface \u00B7 48 \u00D7 48 samples");
  ASSERT_NE(first, lines.end());
  ASSERT_NE(first + 1, lines.end());
  EXPECT_EQ(first[1], u"library tool required");
}

TEST_F(ViewPaint, PaintsTheLargestNumbersThatAProgramCanHold) {
  // 62 characters are a word's number; spans of 1e62 saturate where they are read out.
  const std::u16string far(62, u'9');
  ExtractToolpath(u"G1 X" + far + u" Y-1\r\nG91 X" + far + u"\r\nG2 I" + far + u"\r\n", false);
  ASSERT_GT(path.count, 300);
  measure.a = 0;
  measure.b = path.count - 1;
  switches.showExtents = true;
  for (const double zoom : {0.05, 1.0, 50.0}) {
    view.zoom = zoom;
    EXPECT_FALSE(Paint().empty());
  }
  EXPECT_TRUE(Shows(u"PATH EXTENTS (in)   X 922337203685477.5807   Y 922337203685477.5807   "
                    u"Z 0.0000") ||
              Shows(u"PATH EXTENTS (in)   X 922337203685477.5807"));
  EXPECT_LT(PickPathPoint(kClient, 5, 5), path.count);
}

TEST_F(ViewPaint, StaysOnThePaperWithStockAndExcludedCodeBeyondAllMeasure) {
  FlatPart();
  stockEnvelope.shown = true;
  stockEnvelope.minX = -1e308;
  stockEnvelope.maxX = 1e308;
  stockEnvelope.maxY = HUGE_VAL;
  stockEnvelope.bottom = -HUGE_VAL;
  ghostPath.count = 2;
  ghostPath.points[0] = ghostPath.points[1] = MotionPoint();
  ghostPath.points[1].x = 1e62;
  ++path.generation;
  for (void (*show)() : {SetViewTop, SetViewFront, SetViewRight, SetViewIsometric}) {
    show();
    for (const DrawCall& call : Paint()) {
      if (call.name != "PaintText" && call.name != "FillArea") continue;
      for (std::size_t i = 0; i < 4; ++i) EXPECT_LT(std::fabs(call.numbers[i]), 2e6);
    }
  }
}

TEST_F(ViewPaint, PaintsAViewWithoutRoom) {
  FlatPart();
  switches.showExtents = true;
  measure.a = 0;
  measure.b = 2;
  stockEnvelope.shown = true;
  stockEnvelope.maxX = stockEnvelope.maxY = 1;
  for (const int side : {0, 1, 12}) {
    platform::SetPlace(kViewToolpath, {700, 100, 700 + side, 100 + side});
    EXPECT_FALSE(Paint().empty());
    EXPECT_GE(PickPathPoint({0, 0, side, side}, 0, 0), -1);
  }
}

TEST_F(ViewPaint, HasNoExtentsOfAnEmptyPath) {
  switches.showExtents = true;
  EXPECT_TRUE(Calls("PaintLine", kDimensionColour).empty());
  for (const std::u16string& text : Texts()) EXPECT_EQ(text.find(u"EXTENTS"), text.npos);
}

TEST_F(ViewPaint, MeasuresFromTheFirstPickToTheSecond) {
  Feed(1, 5, 0);
  Feed(4, 1, -12);
  measure.a = 0;
  EXPECT_TRUE(Calls("PaintLine", 0xFFFFFF).empty());
  measure.b = 1;
  ASSERT_EQ(Calls("PaintLine", 0xFFFFFF).size(), 1u);
  // 3, 4 and 12 make 13.
  EXPECT_TRUE(Shows(u"MEASURE  dX 3.0000  dY -4.0000  dZ -12.0000  distance 13.0000"));
  measure.a = 1;
  measure.b = 0;
  EXPECT_TRUE(Shows(u"MEASURE  dX -3.0000  dY 4.0000  dZ 12.0000  distance 13.0000"));
}

TEST_F(ViewPaint, IgnoresPicksThatThePathNoLongerHolds) {
  Feed(1, 5, 0);
  measure.a = 0;
  measure.b = 7;
  Paint();
  EXPECT_TRUE(Calls("PaintLine", 0xFFFFFF).empty());
}

TEST_F(ViewPaint, LayersMenuNamesWhatAPickWillDo) {
  headless::QueuePick(0);
  ShowLayersMenu();
  switches.showRapids = true;
  switches.showOverlap = true;
  switches.showDrawingPaths = false;
  switches.showCutSurface = false;
  switches.skimCurrentDepthOnly = false;
  headless::QueuePick(0);
  ShowLayersMenu();
  const std::vector<headless::MenuRecord> menus = headless::TakeMenus();
  ASSERT_EQ(menus.size(), 2u);
  const char16_t* atStart[] = {u"Show rapid moves",   u"Show coverage overlap",
                               u"Hide drawing paths", u"Hide cut surface",
                               u"Clean path view",    u"Skim: show all depth levels"};
  const char16_t* turned[] = {u"Hide rapid moves",   u"Hide coverage overlap",
                              u"Show drawing paths", u"Show cut surface (approximate)",
                              u"Clean path view",    u"Skim: show current depth only"};
  // Behind a line, the row that is marked while it is on.
  ASSERT_EQ(menus[0].items.size(), 10u);
  EXPECT_EQ(menus[0].items[6].text, u"");
  EXPECT_EQ(menus[0].items[7].text, u"Shade by depth");
  EXPECT_FALSE(menus[0].items[7].checked);
  EXPECT_EQ(menus[0].items[8].text, u"Machine motion");
  EXPECT_EQ(menus[0].items[9].text, u"Play by time");
  EXPECT_FALSE(menus[0].items[9].enabled);
  for (std::size_t i = 0; i < 6; ++i) {
    EXPECT_EQ(menus[0].items[i].text, atStart[i]);
    EXPECT_EQ(menus[1].items[i].text, turned[i]);
  }
}

TEST_F(ViewPaint, LayersMenuTurnsOneSwitchAtATime) {
  struct Row {
    int id;
    bool ViewSwitches::*field;
  };
  const Row rows[] = {{kIdLayerRapids, &ViewSwitches::showRapids},
                      {kIdLayerOverlap, &ViewSwitches::showOverlap},
                      {kIdLayerDrawing, &ViewSwitches::showDrawingPaths},
                      {kIdLayerCutSurface, &ViewSwitches::showCutSurface},
                      {kIdLayerSkimDepth, &ViewSwitches::skimCurrentDepthOnly},
                      {kIdLayerDepthShade, &ViewSwitches::shadeByDepth}};
  // A preview with stock, a cutter and levels has them all.
  PathPreview preview;
  preview.stock = {.shown = true, .maxX = 1, .maxY = 1, .bottom = -1};
  preview.diameter = 1;
  preview.levels = true;
  ShowPreview(preview);
  for (const Row& row : rows) {
    const bool before = switches.*row.field;
    headless::QueuePick(row.id);
    ShowLayersMenu();
    EXPECT_EQ(switches.*row.field, !before);
    headless::QueuePick(row.id);
    ShowLayersMenu();
    EXPECT_EQ(switches.*row.field, before);
  }
}

TEST_F(ViewPaint, DrawingPathsAreThoseOfExcludedCode) {
  constexpr platform::Colour kGhostColour = 0x53687C;
  FlatPart();
  for (int i = 0; i < 2; ++i) {
    ghostPath.points[i] = MotionPoint();
    ghostPath.points[i].x = i;
  }
  ghostPath.count = 2;
  EXPECT_EQ(Calls("PaintSegments", kGhostColour).size(), 1u);
  switches.showDrawingPaths = false;
  EXPECT_TRUE(Calls("PaintSegments", kGhostColour).empty());
}

TEST_F(ViewPaint, CleanPathViewLeavesThePathAndItsDrawings) {
  switches.showRapids = true;
  switches.showOverlap = true;
  switches.showDrawingPaths = false;
  switches.skimCurrentDepthOnly = false;
  headless::QueuePick(kIdLayerClean);
  ShowLayersMenu();
  EXPECT_FALSE(switches.showRapids);
  EXPECT_FALSE(switches.showOverlap);
  EXPECT_FALSE(switches.showCutSurface);
  EXPECT_TRUE(switches.showDrawingPaths);
  EXPECT_FALSE(switches.skimCurrentDepthOnly);
}

TEST_F(ViewPaint, MarksTheFocus) {
  EXPECT_TRUE(Calls("FrameArea", 0x00D3F2).empty());
  headless::Focus(kViewToolpath);
  EXPECT_EQ(Calls("FrameArea", 0x00D3F2).size(), 1u);
}

TEST_F(ViewPaint, DrawsAFullTable) {
  switches.showRapids = true;
  for (int i = 0; i < kMaxMotionPoints; ++i) {
    Feed(i % 100, i / 100, 0).rapid = i % 3 == 0;
  }
  SetViewTop();
  const std::vector<DrawCall> calls = Paint();
  std::size_t segments = 0;
  for (const DrawCall& call : calls) {
    if (call.name != "PaintSegments") continue;
    if (call.colours[0] == kFeedColour || call.colours[0] == kRapidColour) {
      segments += SegmentCount(call);
    }
  }
  EXPECT_EQ(segments, static_cast<std::size_t>(kMaxMotionPoints - 1));
}

}  // namespace
}  // namespace morva
