// Trim at a click, case by case with remainders worked out by hand, its limits, and random
// sketches whose remainders are measured against the outlines that were there before.

#include "cad/tools/trim.h"

#include <algorithm>
#include <cmath>

#include "cad/geometry/trim_cuts.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/geometry_tools.h"
#include "edits_stage.h"
#include "support/program_maker.h"

namespace morva {
namespace {

constexpr char16_t kFault[] =
    u"Choose compatible geometry. Join uses two lines; tangent uses a line start outside a circle.";
constexpr char16_t kDone[] =
    u"Done. Trim stays active; curved remainders use editable segments. Undo restores the "
    u"original.";

struct Trim : public cad_test::EditsStage {
  void SetUp() override {
    EditsStage::SetUp();
    Command(kIdCadTrimAt);
  }
  static void ExpectDone() {
    EXPECT_EQ(SketchStatus(), kDone);
    EXPECT_EQ(LastLine(), u"Geometry tool completed");
    EXPECT_EQ(sketch.undoDepth, 1);
    EXPECT_EQ(tools.geometryTool, kGeometryTrim);
  }
  static void ExpectFault(double x, double y) {
    const Picture before = Now();
    ToolClick(x, y);
    EXPECT_EQ(Now(), before);
    EXPECT_EQ(SketchStatus(), kFault);
    EXPECT_EQ(LastLine(), u"No valid intersection / target");
  }
  static void Fill(int count) {
    while (sketch.objectCount < count) Add(kTypeWorkPoint, 4.5, 2.5, 0);
  }
};

TEST_F(Trim, TellsWhatToClick) {
  EXPECT_EQ(tools.geometryTool, kGeometryTrim);
  EXPECT_EQ(SketchStatus(),
            u"Trim: click the section to remove between line/circle intersections. Esc exits.");
}

TEST_F(Trim, CutsALineBetweenTwoLines) {
  Add(kTypeLine, 0, 0, 4);
  Add(kTypeLine, 1, -1, 2, 0, 90);
  Add(kTypeLine, 3, -1, 2, 0, 90);
  tools.multiSelect[1] = 1;
  ToolClick(2, 0);
  ASSERT_EQ(sketch.objectCount, 4);
  ExpectLine(0, 0, 0, 1, 0);
  ExpectLine(3, 3, 0, 4, 0);
  EXPECT_EQ(MultiSelectCount(), 0);
  // What touches became two parts.
  EXPECT_EQ(Object(0).group, 1);
  EXPECT_EQ(Object(1).group, 1);
  EXPECT_EQ(Object(2).group, 2);
  EXPECT_EQ(Object(3).group, 2);
  ExpectDone();
}

TEST_F(Trim, CutsTheEndsOfALine) {
  Add(kTypeLine, 0, 0, 4);
  Add(kTypeLine, 1, -1, 2, 0, 90);
  ToolClick(0.5, 0);
  ASSERT_EQ(sketch.objectCount, 2);
  ExpectLine(0, 1, 0, 4, 0);
  SketchUndo();
  ToolClick(2, 0);
  ExpectLine(0, 0, 0, 1, 0);
}

TEST_F(Trim, DeletesALineWithoutIntersections) {
  Add(kTypeRectangle, 0, 2, 1, 1);
  Add(kTypeLine, 0, 0, 2);
  Add(kTypeCircle, 0, -2, 1);
  sketch.selected = 2;
  ToolClick(1.5, 0);
  ASSERT_EQ(sketch.objectCount, 2);
  EXPECT_EQ(Object(0).type, kTypeRectangle);
  EXPECT_EQ(Object(1).type, kTypeCircle);
  EXPECT_EQ(sketch.selected, 1);
  ExpectDone();
}

TEST_F(Trim, SelectsNothingWhereTheSelectedLineWent) {
  Add(kTypeLine, 0, 0, 2);
  Add(kTypeLine, 0, 1, 2);
  sketch.selected = 0;
  ToolClick(1.5, 0);
  EXPECT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.selected, -1);
}

TEST_F(Trim, CutsByAnAxisWithoutEndAndByALineWithinItsLength) {
  Add(kTypeLine, 0, 0, 4);
  Add(kTypeWorkAxis, 1, 2, 0.5, 0, 90);  // starts far above
  Add(kTypeLine, 3, 0.5, 1, 0, 90);      // stops short of the line
  ToolClick(2, 0);
  ASSERT_EQ(sketch.objectCount, 3);
  ExpectLine(0, 0, 0, 1, 0);
}

TEST_F(Trim, CutsByALineThatEndsOnTheTarget) {
  Add(kTypeLine, 0, 0, 4);
  Add(kTypeLine, 1, 0, 2, 0, 90);
  ToolClick(0.5, 0);
  ExpectLine(0, 1, 0, 4, 0);
}

TEST_F(Trim, CutsByTheEdgesOfARectangleAndByACircle) {
  for (const SketchType type : {kTypeRectangle, kTypeCircle}) {
    sketch.objectCount = 0;
    sketch.undoDepth = 0;
    Add(kTypeLine, 0, 0, 4);
    Add(type, 2, 0, 2, type == kTypeCircle ? 0 : 2);
    ToolClick(2, 0);
    ASSERT_EQ(sketch.objectCount, 3);
    ExpectLine(0, 0, 0, 1, 0);
    ExpectLine(2, 3, 0, 4, 0);
    ExpectDone();
  }
}

TEST_F(Trim, CutsWhereACircleTouchesALine) {
  Add(kTypeLine, 0, 0, 4);
  Add(kTypeCircle, 2, 1, 2);
  ToolClick(0.5, 0);
  ExpectLine(0, 2, 0, 4, 0);
}

TEST_F(Trim, CutsALineNeitherBySlotsNorByPointsNorByHiddenGeometry) {
  Add(kTypeLine, 0, 0, 4);
  Add(kTypeSlot, 2, 0, 3, 1, 90);
  Add(kTypeWorkPoint, 1, 0, 0);
  sketch.hidden[Add(kTypeLine, 3, -1, 2, 0, 90)] = 1;
  ToolClick(2.5, 0);
  EXPECT_EQ(sketch.objectCount, 3);
  EXPECT_EQ(Object(0).type, kTypeSlot);
}

TEST_F(Trim, CutsByLockedGeometryButNeverALockedTarget) {
  Add(kTypeLine, 0, 0, 4);
  sketch.locked[Add(kTypeLine, 2, -1, 2, 0, 90)] = 1;
  ToolClick(1, 0);
  ExpectLine(0, 2, 0, 4, 0);
  ExpectFault(2, -0.5);  // the locked one
  sketch.locked[0] = 1;
  EXPECT_FALSE(TrimObject(0, 3, 0));
  sketch.locked[0] = 0;
  sketch.hidden[0] = 1;
  ExpectFault(3, 0);
}

TEST_F(Trim, FaultsOnEmptyGroundAndOnConstruction) {
  Add(kTypeWorkAxis, 0, 0, 4);
  Add(kTypeWorkPoint, 1, 1, 0);
  ExpectFault(3, 2);
  ExpectFault(2, 0);
  ExpectFault(1, 1);
  EXPECT_FALSE(TrimObject(0, 2, 0));
  EXPECT_FALSE(TrimObject(-1, 2, 0));
  EXPECT_FALSE(TrimObject(2, 2, 0));
}

TEST_F(Trim, ExplodesARectangleAndCutsItsNearestEdge) {
  Add(kTypeRectangle, 0, 0, 2, 1, 0, 7);
  Add(kTypeLine, 0.25, 0, 2, 0, 90);
  ToolClick(0.6, 0.5);
  ASSERT_EQ(sketch.objectCount, 5);
  ExpectLine(0, 0.25, 0.5, -1, 0.5);  // the rest of the top edge keeps the place
  ExpectLine(2, -1, 0.5, -1, -0.5);
  ExpectLine(3, -1, -0.5, 1, -0.5);
  ExpectLine(4, 1, -0.5, 1, 0.5);
  // Remainders touch one another and the cutter: one part again.
  for (int i = 0; i < 5; ++i) EXPECT_EQ(Object(i).group, 1) << i;
  ExpectDone();
  SketchUndo();
  EXPECT_EQ(Object(0).type, kTypeRectangle);
  EXPECT_EQ(Object(0).group, 7);
}

TEST_F(Trim, RemovesAWholeEdgeOfARectangleThatNothingCuts) {
  Add(kTypeRectangle, 0, 0, 2, 1);
  ToolClick(1, 0.2);
  ASSERT_EQ(sketch.objectCount, 3);
  ExpectLine(0, 1, 0.5, -1, 0.5);
  ExpectLine(1, -1, 0.5, -1, -0.5);
  ExpectLine(2, -1, -0.5, 1, -0.5);
}

TEST_F(Trim, KeepsBothEndsOfATurnedRectanglesEdge) {
  Add(kTypeRectangle, 0, 0, 2, 2, 45);  // corners at the axes, 1.4142 out
  Add(kTypeLine, 0, 0.4, 3);            // crosses the upper right edge at (1.0142, 0.4)
  Add(kTypeLine, 0.4, 0, 3, 0, 90);
  ToolClick(0.71, 0.71);
  const double d = std::sqrt(2.0);
  ASSERT_EQ(sketch.objectCount, 7);
  ExpectLine(0, d, 0, d - 0.4, 0.4);
  ExpectLine(3, 0.4, d - 0.4, 0, d);
}

TEST_F(Trim, LeavesARectangleWholeWith94Objects) {
  Add(kTypeRectangle, 0, 0, 2, 1);
  Fill(94);
  ExpectFault(1, 0.2);
  EXPECT_EQ(Object(0).type, kTypeRectangle);
}

TEST_F(Trim, TakesARectangleWith93ObjectsUnlessItsEdgeNeedsOneMore) {
  Add(kTypeRectangle, 0, 0, 2, 1);
  Add(kTypeLine, 0.5, 0, 2, 0, 90);
  Add(kTypeLine, -0.5, 0, 2, 0, 90);
  Fill(93);
  ExpectFault(0, 0.5);  // two remainders of the edge: 97 objects
  ToolClick(0.8, 0.5);
  EXPECT_EQ(sketch.objectCount, 96);
  ExpectLine(0, 0.5, 0.5, -1, 0.5);
  ExpectDone();
}

TEST_F(Trim, GivesACornersTieToTheLowerEdge) {
  Add(kTypeRectangle, 0, 0, 2, 1);
  ASSERT_TRUE(TrimObject(0, 1.05, -0.55));  // nearest to the corner of edges 0 and 1
  ASSERT_EQ(sketch.objectCount, 3);
  ExpectLine(0, 1, -0.5, 1, 0.5);  // edge 0, the lower one, went
}

TEST_F(Trim, TrimsALineInAFullSketchOnlyWhereNoPieceIsAdded) {
  Add(kTypeLine, 0, 0, 4);
  Add(kTypeLine, 1, -1, 2, 0, 90);
  Add(kTypeLine, 3, -1, 2, 0, 90);
  Fill(96);
  ExpectFault(2, 0);
  ToolClick(0.5, 0);
  ExpectLine(0, 1, 0, 4, 0);
  EXPECT_EQ(sketch.objectCount, 96);
  SketchUndo();
  RemoveSketchObject(95);
  ToolClick(2, 0);
  EXPECT_EQ(sketch.objectCount, 96);
  ExpectLine(95, 3, 0, 4, 0);
}

// A circle of diameter 2 about 0, 0 and the line y = 0.6 meet at 36.8699 and 143.1301 degrees.
TEST_F(Trim, RebuildsTheRestOfACircleAsLinesOfAboutTenDegrees) {
  Add(kTypeCircle, 0, 0, 2);
  Add(kTypeLine, -2, 0.6, 4);
  ToolClick(0, 1);
  // 253.74 degrees remain: 25 whole tens, 26 lines.
  ASSERT_EQ(sketch.objectCount, 27);
  double x = -0.8;
  double y = 0.6;
  for (int n = 0; n < 26; ++n) {
    const int index = n == 0 ? 0 : n + 1;
    const double angle = (143.130102354 + 253.739795292 * (n + 1) / 26) / 57.29577951308232;
    ExpectLine(index, x, y, std::cos(angle), std::sin(angle));
    EXPECT_EQ(Object(index).group, 1);
    x = std::cos(angle);
    y = std::sin(angle);
  }
  EXPECT_NEAR(x, 0.8, 1e-6);
  EXPECT_NEAR(y, 0.6, 1e-6);
  EXPECT_EQ(Object(1).group, 1);
  ExpectDone();
}

TEST_F(Trim, CutsACircleByACircleAcrossAngleZero) {
  Add(kTypeCircle, 0, 0, 2);
  Add(kTypeCircle, 1.2, 0, 2);  // meet at plus and minus 53.1301 degrees
  ToolClick(1, 0);
  ASSERT_EQ(sketch.objectCount, 27);
  double x = 0;
  double y = 0;
  LineEndPoint(Object(26), x, y);
  EXPECT_NEAR(Object(0).x, 0.6, 1e-6);
  EXPECT_NEAR(Object(0).y, 0.8, 1e-6);
  EXPECT_NEAR(x, 0.6, 1e-6);
  EXPECT_NEAR(y, -0.8, 1e-6);
}

TEST_F(Trim, CutsACircleByARectangleAndByAnAxis) {
  Add(kTypeCircle, 0, 0, 2);
  Add(kTypeRectangle, 0, 1.6, 4, 2);     // lower edge y = 0.6
  Add(kTypeWorkAxis, 0, 2, 0.5, 0, 90);  // x = 0: at 90 and 270 degrees
  ToolClick(0.42, 0.91);                 // between 36.87 and 90
  // 306.87 degrees remain: 31 lines.
  ASSERT_EQ(sketch.objectCount, 33);
  EXPECT_NEAR(Object(0).x, 0, 1e-6);
  EXPECT_NEAR(Object(0).y, 1, 1e-6);
  double x = 0;
  double y = 0;
  LineEndPoint(Object(32), x, y);
  EXPECT_NEAR(x, 0.8, 1e-6);
  EXPECT_NEAR(y, 0.6, 1e-6);
}

TEST_F(Trim, RefusesACircleThatALineOnlyTouches) {
  Add(kTypeCircle, 0, 0, 2);
  Add(kTypeLine, -2, 1, 4);
  ExpectFault(0, -1);
}

TEST_F(Trim, TakesAChordTooShortToTellForATouch) {
  Add(kTypeCircle, 0, 0, 2);
  Add(kTypeLine, -2, 1 - 1e-10, 4);  // a chord 2.8e-5 long
  ExpectFault(0, -1);
  sketch.objects[1].y = 1 - 1e-6;  // 2.8e-3
  ToolClick(0, -1);
  EXPECT_EQ(SketchStatus(), kDone);
}

TEST_F(Trim, TakesAMeetingWithin1e8OfAnEndForNone) {
  CutList cuts;
  const double places[] = {5e-9, 1 - 5e-9, 2e-8, 1 - 2e-8};
  const int counts[] = {2, 2, 3, 3};
  for (int i = 0; i < 4; ++i) {
    sketch.objectCount = 0;
    Add(kTypeLine, places[i], -1, 2, 0, 90);
    CutsOfSegment(-1, 0, 0, 1, 0, cuts);
    EXPECT_EQ(cuts.count, counts[i]) << i;
  }
}

// A line of 100 that is cut 0.05 from either end: both rests are a two-thousandth of it.
TEST_F(Trim, KeepsARestShorterThanAThousandthOfTheLine) {
  Add(kTypeLine, 0, 0, 100);
  Add(kTypeLine, 0.05, -1, 2, 0, 90);
  Add(kTypeLine, 99.95, -1, 2, 0, 90);
  ToolClick(50, 0);
  ASSERT_EQ(sketch.objectCount, 4);
  // The sine that sketches use lets an upright line lean by some 1e-7.
  ExpectLine(0, 0, 0, 0.05, 0, 1e-5);
  ExpectLine(3, 99.95, 0, 100, 0, 1e-5);
  ExpectDone();
}

TEST_F(Trim, CountsAMeetingWhereTwoStepsOfASlotJoinOnce) {
  Add(kTypeSlot, 0, 0, 4, 2);
  Add(kTypeLine, 1, 0.5, 1, 0, 90);  // through (1, 1), where cap and flank join
  ExpectFault(2, 0);
}

TEST_F(Trim, RefusesACircleThatIsMetOnce) {
  Add(kTypeCircle, 0, 0, 2);
  Add(kTypeLine, 0, 0, 2);     // from the centre out
  Add(kTypeCircle, 0, -3, 4);  // touches at the bottom
  sketch.hidden[2] = 1;
  ExpectFault(-1, 0);
  sketch.hidden[1] = 1;
  sketch.hidden[2] = 0;
  ExpectFault(-1, 0);
}

TEST_F(Trim, CountsACornerOnACircleOnce) {
  Add(kTypeCircle, 0, 0, 2);
  Add(kTypeRectangle, 1.5, 0.5, 1, 1);  // lower left corner at (1, 0)
  ExpectFault(-1, 0);
}

TEST_F(Trim, RefusesACircleWhosePiecesDoNotFit) {
  Add(kTypeCircle, 0, 0, 2);
  Add(kTypeLine, -2, 0.6, 4);
  Fill(72);  // and 25 more
  ExpectFault(0, 1);
  RemoveSketchObject(71);
  ToolClick(0, 1);
  EXPECT_EQ(sketch.objectCount, 96);
}

TEST_F(Trim, RefusesATinyCircle) {
  Add(kTypeCircle, 0, 0, 2e-9);
  Add(kTypeWorkAxis, -1, 0, 2);
  EXPECT_FALSE(TrimObject(0, 0, 1));
}

// A slot 4 by 2 about 0, 0: caps of radius 1 about (1, 0) and (-1, 0).
TEST_F(Trim, RebuildsTheRestOfASlotStepByStep) {
  Add(kTypeSlot, 0, 0, 4, 2);
  Add(kTypeLine, 0, -2, 4, 0, 90);
  ToolClick(2, 0);
  // Half of the upper flank, 16 steps of the left cap, half of the lower flank.
  ASSERT_EQ(sketch.objectCount, 19);
  ExpectLine(0, 0, 1, -1, 1);
  ExpectLine(18, -1, -1, 0, -1);
  for (int n = 0; n < 16; ++n) {
    const double from = (90 + 11.25 * n) / 57.29577951308232;
    const double to = (90 + 11.25 * (n + 1)) / 57.29577951308232;
    ExpectLine(n + 2, -1 + std::cos(from), std::sin(from), -1 + std::cos(to), std::sin(to));
  }
  ExpectDone();
}

TEST_F(Trim, LeavesASlot35LinesAtMost) {
  Add(kTypeSlot, 0, 0, 4, 2);
  Add(kTypeLine, 0.25, 0.5, 1, 0, 90);
  Add(kTypeLine, -0.25, 0.5, 1, 0, 90);
  Fill(63);
  ExpectFault(0, 1);  // 62 others and 35 lines
  RemoveSketchObject(62);
  ToolClick(0, 1);
  ASSERT_EQ(sketch.objectCount, 96);
  ExpectLine(0, -0.25, 1, -1, 1);
  ExpectLine(95, 1, 1, 0.25, 1);
}

TEST_F(Trim, CutsASlotByACircleAndByASlot) {
  Add(kTypeSlot, 0, 0, 4, 1);
  Add(kTypeSlot, 0, 0, 4, 1, 90);
  ToolClick(2, 0);
  double x = 0;
  double y = 0;
  LineEndPoint(Object(sketch.objectCount - 1), x, y);
  EXPECT_NEAR(Object(0).x, 0.5, 1e-6);
  EXPECT_NEAR(Object(0).y, 0.5, 1e-6);
  EXPECT_NEAR(x, 0.5, 1e-6);
  EXPECT_NEAR(y, -0.5, 1e-6);
  SketchUndo();
  sketch.objects[1] = {kTypeCircle, 0, 1.3, 1, 1, 0, 0};  // touches the upper flank, no more
  ASSERT_FALSE(TrimObject(0, 2, 0));
  sketch.objects[1].y = 0;
  sketch.objects[1].size = 1.16619037896906;  // radius^2 = 0.3^2 + 0.5^2
  ASSERT_TRUE(TrimObject(0, 1.3, 0.5));
  EXPECT_NEAR(Object(0).x, 1.0, 1e-6);
  EXPECT_NEAR(Object(0).y, 0.5, 1e-6);
}

TEST_F(Trim, RefusesASlotThatIsMetLessThanTwice) {
  Add(kTypeSlot, 0, 0, 4, 2);
  ExpectFault(2, 0);
  Add(kTypeLine, 0, 0, 2, 0, 90);
  ExpectFault(2, 0);
}

TEST_F(Trim, StaysActiveForTheNextSection) {
  Add(kTypeLine, 0, 0, 4);
  Add(kTypeLine, 1, -1, 2, 0, 90);
  Add(kTypeLine, 3, -1, 2, 0, 90);
  ToolClick(2, 0);
  ToolClick(3.5, 0);
  ToolClick(0.5, 0);
  EXPECT_EQ(sketch.objectCount, 2);
  EXPECT_EQ(sketch.undoDepth, 3);
}

TEST_F(Trim, ShowsTheSectionUnderThePointerAndChangesNothing) {
  Add(kTypeLine, 0, 0, 4);
  Add(kTypeLine, 1, -1, 2, 0, 90);
  Add(kTypeLine, 3, -1, 2, 0, 90);
  const Picture before = Now();
  GeometryHover(At(2, 0.05));
  EXPECT_EQ(Now(), before);
  EXPECT_FALSE(sketch.trimPreviewing);
  EXPECT_EQ(tools.hoverObject, 0);
  ASSERT_EQ(tools.previewSegmentCount, 1);
  EXPECT_NEAR(tools.previewSegments[0].x0, 1, 1e-6);
  EXPECT_NEAR(tools.previewSegments[0].x1, 3, 1e-6);
  GeometryHover(At(2, 2));
  EXPECT_EQ(tools.previewSegmentCount, 0);
  EXPECT_EQ(tools.hoverObject, -1);
}

TEST_F(Trim, ShowsNothingWhereItWouldRefuse) {
  Add(kTypeCircle, 0, 0, 2);
  Add(kTypeLine, -2, 1, 4);
  GeometryHover(At(0, -1));
  EXPECT_EQ(tools.previewSegmentCount, 0);
}

// Random sketches.

SketchObject RandomObject(reference::Dice& dice, bool construction) {
  SketchObject object;
  object.type = static_cast<std::int32_t>(dice.Roll(construction ? 6 : 4));
  object.x = dice.Roll(600) * 0.01 - 3;
  object.y = dice.Roll(400) * 0.01 - 2;
  object.size = 0.5 + dice.Roll(300) * 0.01;
  const bool hasSecond = object.type == kTypeRectangle || object.type == kTypeSlot;
  object.size2 = hasSecond ? 0.3 + dice.Roll(150) * 0.01 : 0;
  if (object.type == kTypeSlot) object.size = std::max(object.size, object.size2 + 0.1);
  object.angle = object.type == kTypeCircle ? 0 : dice.Roll(360);
  return object;
}

void RandomSketch(reference::Dice& dice) {
  ResetSketch();
  const int count = 3 + static_cast<int>(dice.Roll(14));
  for (int i = 0; i < count; ++i) {
    AppendSketchObject(RandomObject(dice, true));
    sketch.hidden[i] = dice.Roll(10) == 0;
    sketch.locked[i] = dice.Roll(10) == 0;
  }
}

struct Polyline {
  std::vector<double> xs;
  std::vector<double> ys;
  double length = 0;
};

// The outline that a trim takes an object for; a slot's by 17 points a cap.
Polyline RunOf(const SketchObject& object) {
  double xs[kOutlinePoints];
  double ys[kOutlinePoints];
  const int count = ObjectOutline(object, xs, ys);
  Polyline run;
  for (int i = 0; i < count; ++i) {
    const bool skipped = object.type == kTypeSlot && i < 66 && (i < 33 ? i % 2 == 1 : i % 2 == 0);
    if (skipped) continue;
    if (!run.xs.empty()) run.length += std::hypot(xs[i] - run.xs.back(), ys[i] - run.ys.back());
    run.xs.push_back(xs[i]);
    run.ys.push_back(ys[i]);
  }
  return run;
}

double Distance(const Polyline& run, double x, double y) {
  double best = 1e9;
  for (std::size_t i = 0; i + 1 < run.xs.size(); ++i) {
    const SegmentFoot foot =
        FootOnSegment({x, y}, {run.xs[i], run.ys[i]}, {run.xs[i + 1], run.ys[i + 1]}, 1e-12);
    best = std::min(best, std::hypot(x - foot.x, y - foot.y));
  }
  return best;
}

// How far a place is off what was there.
double Off(const SketchObject& former, const Polyline& run, double x, double y) {
  if (former.type != kTypeCircle) return Distance(run, x, y);
  return std::fabs(std::hypot(x - former.x, y - former.y) - former.size / 2);
}

// Whether a place lies on some cutter, an axis being taken without end.
bool OnCutter(const std::vector<SketchObject>& objects, const std::vector<int>& shown, int target,
              double x, double y) {
  for (const int i : shown) {
    const SketchObject& o = objects[static_cast<std::size_t>(i)];
    if (i == target || o.type == kTypeWorkPoint) continue;
    double off = 0;
    if (o.type == kTypeWorkAxis) {
      off = std::fabs((x - o.x) * std::sin(o.angle / 57.29577951308232) -
                      (y - o.y) * std::cos(o.angle / 57.29577951308232));
    } else {
      off = Off(o, RunOf(o), x, y);
    }
    if (off < 2e-6) return true;
  }
  return false;
}

TEST_F(Trim, LeavesWhatLayOnTheFormerOutlineAndTakesTheRest) {
  int trims = 0;
  int byType[4] = {};
  for (std::uint32_t seed = 1; seed <= 3000; ++seed) {
    reference::Dice dice{seed * 2654435761u};
    RandomSketch(dice);
    const int target = static_cast<int>(dice.Roll(static_cast<std::uint32_t>(sketch.objectCount)));
    const std::vector<SketchObject> objects(sketch.objects, sketch.objects + sketch.objectCount);
    std::vector<int> shown;
    for (int i = 0; i < sketch.objectCount; ++i) {
      if (!sketch.hidden[i]) shown.push_back(i);
    }
    const SketchObject former = sketch.objects[target];
    const Polyline run = RunOf(former);
    if (run.xs.size() < 2) continue;
    const std::size_t step = dice.Roll(static_cast<std::uint32_t>(run.xs.size() - 1));
    const double share = (1 + dice.Roll(99)) * 0.01;
    const double x = run.xs[step] + share * (run.xs[step + 1] - run.xs[step]);
    const double y = run.ys[step] + share * (run.ys[step + 1] - run.ys[step]);

    const Picture before = Now();
    sketch.trimPreviewing = true;
    const bool wouldTrim = TrimObject(target, x, y);
    sketch.trimPreviewing = false;
    ASSERT_EQ(Now(), before) << seed;
    const std::vector<PreviewSegment> removed(tools.previewSegments,
                                              tools.previewSegments + tools.previewSegmentCount);
    ASSERT_EQ(TrimObject(target, x, y), wouldTrim) << seed;
    if (!wouldTrim) {
      ASSERT_EQ(Now(), before) << seed;
      ASSERT_TRUE(removed.empty());
      continue;
    }
    ++trims;
    ++byType[former.type];
    ASSERT_FALSE(removed.empty());

    // Which of the objects are pieces: all that were not there.
    std::vector<SketchObject> pieces;
    std::size_t next = 0;
    for (int i = 0; i < sketch.objectCount; ++i) {
      if (next == static_cast<std::size_t>(target)) ++next;
      const SketchObject& o = sketch.objects[i];
      const bool same = next < objects.size() && o.type == objects[next].type &&
                        o.x == objects[next].x && o.y == objects[next].y &&
                        o.size == objects[next].size && o.angle == objects[next].angle;
      if (same) {
        ++next;
      } else {
        pieces.push_back(o);
      }
    }
    if (next == static_cast<std::size_t>(target)) ++next;
    ASSERT_EQ(next, objects.size()) << seed << ": another object changed";

    double kept = 0;
    for (const SketchObject& piece : pieces) {
      ASSERT_EQ(piece.type, kTypeLine);
      double ex = 0;
      double ey = 0;
      LineEndPoint(piece, ex, ey);
      kept += std::hypot(ex - piece.x, ey - piece.y);
      EXPECT_LT(Off(former, run, piece.x, piece.y), 1e-6) << seed;
      EXPECT_LT(Off(former, run, ex, ey), 1e-6) << seed;
      if (former.type == kTypeCircle) continue;
      EXPECT_LT(Off(former, run, (piece.x + ex) / 2, (piece.y + ey) / 2), 1e-6) << seed;
    }
    double gone = 0;
    for (const PreviewSegment& s : removed) {
      gone += std::hypot(s.x1 - s.x0, s.y1 - s.y0);
      if (std::hypot(s.x1 - s.x0, s.y1 - s.y0) < 1e-3) continue;
      for (const SketchObject& piece : pieces) {
        ASSERT_GT(Distance(RunOf(piece), (s.x0 + s.x1) / 2, (s.y0 + s.y1) / 2), 1e-4) << seed;
      }
    }
    if (former.type != kTypeCircle) {
      EXPECT_NEAR(kept + gone, run.length, 5e-6) << seed;
    } else {
      const double round = 3.14159265358979 * former.size;
      EXPECT_LT(kept + gone, round + 1e-6) << seed;
      EXPECT_GT(kept + gone, round * 0.99) << seed;
    }
    // The click lies in what went, and what went ends at a cutter or at an end of its own.
    Polyline path;
    for (const PreviewSegment& s : removed) {
      path.xs.insert(path.xs.end(), {s.x0, s.x1});
      path.ys.insert(path.ys.end(), {s.y0, s.y1});
    }
    EXPECT_LT(Distance(path, x, y), former.type == kTypeCircle ? 0.002 * former.size : 2e-6)
        << seed;
    const PreviewSegment& first = removed.front();
    const PreviewSegment& last = removed.back();
    for (const auto& [px, py] : {std::pair{first.x0, first.y0}, std::pair{last.x1, last.y1}}) {
      bool ownEnd = false;
      for (std::size_t i = 0; i < run.xs.size(); ++i) {
        ownEnd = ownEnd || std::hypot(px - run.xs[i], py - run.ys[i]) < 1e-6;
      }
      if (former.type == kTypeCircle || former.type == kTypeSlot) ownEnd = false;
      EXPECT_TRUE(ownEnd || OnCutter(objects, shown, target, px, py)) << seed;
    }
    SketchUndo();
    ASSERT_EQ(Now(), before) << seed;
  }
  EXPECT_GT(trims, 1000);
  for (const int count : byType) EXPECT_GT(count, 100);
}

TEST_F(Trim, LeavesASketchAsItIsWhileThePointerHovers) {
  for (std::uint32_t seed = 1; seed <= 40; ++seed) {
    reference::Dice dice{seed * 2654435761u};
    RandomSketch(dice);
    tools.geometryTool = kGeometryTrim;
    const Picture before = Now();
    for (int i = 0; i < 60; ++i) {
      GeometryHover(At(dice.Roll(900) * 0.01 - 4.5, dice.Roll(500) * 0.01 - 2.5));
      ASSERT_EQ(Now(), before) << seed;
    }
  }
}

}  // namespace
}  // namespace morva
