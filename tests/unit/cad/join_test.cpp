// Join, Tangent, the pivot pick and what the click tools have in common. Expected places are
// worked out by hand.

#include <cmath>

#include "cad/model/drawings.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/geometry_tools.h"
#include "edits_stage.h"

namespace morva {
namespace {

using GeometryTools = cad_test::EditsStage;

constexpr char16_t kFault[] =
    u"Choose compatible geometry. Join uses two lines; tangent uses a line start outside a circle.";
constexpr char16_t kDone[] =
    u"Done. Trim stays active; curved remainders use editable segments. Undo restores the "
    u"original.";

void Start(int command, int selected) {
  sketch.selected = selected;
  GeometryTools::Command(command);
}

void ExpectFault(double x, double y) {
  const GeometryTools::Picture before = GeometryTools::Now();
  GeometryTools::ToolClick(x, y);
  EXPECT_EQ(GeometryTools::Now(), before);
  EXPECT_EQ(SketchStatus(), kFault);
  EXPECT_EQ(GeometryTools::LastLine(), u"No valid intersection / target");
}

void ExpectDone(int tool) {
  EXPECT_EQ(SketchStatus(), kDone);
  EXPECT_EQ(GeometryTools::LastLine(), u"Geometry tool completed");
  EXPECT_EQ(tools.geometryTool, tool);
  EXPECT_EQ(sketch.undoDepth, 1);
}

TEST_F(GeometryTools, AskForALineBeforeJoinAndTangent) {
  Add(kTypeCircle, 0, 0, 1);
  for (const int command : {kIdCadJoin, kIdCadTangent}) {
    for (const int selected : {-1, 0, 7}) {
      SetSketchStatus(u"");
      Start(command, selected);
      EXPECT_EQ(SketchStatus(), u"Select a line first, then choose Join or Tangent.");
      EXPECT_EQ(tools.geometryTool, kGeometryNone);
    }
  }
}

TEST_F(GeometryTools, TellWhatToClick) {
  Add(kTypeLine, 0, 0, 1);
  Start(kIdCadJoin, 0);
  EXPECT_EQ(SketchStatus(), u"Join: click a second line.");
  EXPECT_EQ(tools.geometryTool, kGeometryJoin);
  Start(kIdCadTangent, 0);
  EXPECT_EQ(SketchStatus(),
            u"Tangent: click near the desired side of a circle. The line start stays fixed.");
  EXPECT_EQ(tools.geometryTool, kGeometryTangent);
  Start(kIdCadPickPivot, 0);
  EXPECT_EQ(SketchStatus(),
            u"Click a pivot: point marker, circle center, box corner or work-axis origin.");
  EXPECT_EQ(tools.geometryTool, kGeometryPivot);
  EXPECT_EQ(tools.panelMode, kPanelRevolve);
}

TEST_F(GeometryTools, UseNoPressWithoutATool) {
  EXPECT_FALSE(GeometryPress(At(0, 0)));
  tools.geometryTool = kGeometryJoin;
  platform::PointerEvent right = At(0, 0);
  right.button = platform::PointerButton::Right;
  EXPECT_FALSE(GeometryPress(right));
}

TEST_F(GeometryTools, JoinTwoLinesAtTheirIntersection) {
  Add(kTypeLine, 0, 0, 1);            // towards (2, 0), short of it
  Add(kTypeLine, 2, -0.5, 2, 0, 90);  // through (2, 0), its upper end farther
  Add(kTypeLine, -3, 2, 1);
  Start(kIdCadJoin, 0);
  ToolClick(2, 1);
  ASSERT_EQ(sketch.objectCount, 3);
  ExpectLine(0, 0, 0, 2, 0);
  ExpectLine(1, 2, 1.5, 2, 0);
  EXPECT_EQ(Object(0).group, 1);
  EXPECT_EQ(Object(1).group, 1);
  EXPECT_EQ(Object(2).group, 0);
  EXPECT_EQ(sketch.selected, 0);
  ExpectDone(kGeometryJoin);
}

TEST_F(GeometryTools, KeepTheStartWhereBothEndsAreAsFar) {
  Add(kTypeLine, -1, 0, 2);
  Add(kTypeLine, 0, -1, 2, 0, 90);
  // The middle of both. A cosine of 0 degrees is 6e-8 below 1, so that the end is the nearer.
  Start(kIdCadJoin, 0);
  ToolClick(0, 0.8);
  ExpectLine(0, -1, 0, 0, 0);
  ExpectLine(1, 0, -1, 0, 0);
}

TEST_F(GeometryTools, JoinTwoOverlappingParallelLinesIntoOne) {
  Add(kTypeLine, 3, 0, 2, 0, 180);  // from 3 to 1
  Add(kTypeCircle, 0, 2, 1);
  Add(kTypeLine, 0, 0, 2);  // from 0 to 2
  Start(kIdCadJoin, 2);
  ToolClick(2.6, 0);
  ASSERT_EQ(sketch.objectCount, 2);
  EXPECT_EQ(Object(0).type, kTypeCircle);
  ExpectLine(1, 0, 0, 3, 0);
  EXPECT_EQ(sketch.selected, 1);  // one lower: the other stood before it
  EXPECT_EQ(tools.joinSource, 1);
  ExpectDone(kGeometryJoin);
}

TEST_F(GeometryTools, JoinLinesThatOnlyTouchEndToEnd) {
  Add(kTypeLine, 0, 0, 2, 0, 45);
  const double out = 2 * std::sqrt(0.5);
  Add(kTypeLine, out, out, 1, 0, 45);
  Start(kIdCadJoin, 0);
  ToolClick(out + 0.4, out + 0.4);
  ASSERT_EQ(sketch.objectCount, 1);
  ExpectLine(0, 0, 0, 3 * std::sqrt(0.5), 3 * std::sqrt(0.5));
  EXPECT_EQ(sketch.selected, 0);
}

TEST_F(GeometryTools, ExtendALineBackwardsOverTheOther) {
  Add(kTypeLine, 0, 0, 2);
  Add(kTypeLine, -1, 0, 1.5);
  Start(kIdCadJoin, 0);
  ToolClick(-0.6, 0);
  ASSERT_EQ(sketch.objectCount, 1);
  ExpectLine(0, -1, 0, 2, 0);
}

TEST_F(GeometryTools, LeaveALineThatHoldsTheOtherToTheLastBit) {
  Add(kTypeLine, 0.1, 0.2, 2, 0, 30);
  Add(kTypeLine, 0.1 + std::cos(0.5235987755982988), 0.2 + 0.5, 0.5, 0, 30);
  const SketchObject before = Object(0);
  Start(kIdCadJoin, 0);
  ToolClick(0.1 + 1.2 * 0.866, 0.2 + 1.2 * 0.5);
  // The object test takes the later line, which ends well inside the first.
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(Object(0).x, before.x);
  EXPECT_EQ(Object(0).y, before.y);
  EXPECT_EQ(Object(0).size, before.size);
  EXPECT_EQ(Object(0).angle, before.angle);
}

TEST_F(GeometryTools, RefuseParallelLinesThatAreApart) {
  Add(kTypeLine, 0, 0, 2);
  Add(kTypeLine, 0, 1, 2);    // beside it
  Add(kTypeLine, 2.5, 0, 1);  // beyond a gap
  Start(kIdCadJoin, 0);
  ExpectFault(1, 1);
  ExpectFault(3.3, 0);
  sketch.objects[2].x = 2.00001;
  ExpectFault(2.8, 0);
}

TEST_F(GeometryTools, RefuseToJoinWhatIsNoOtherFreeLine) {
  Add(kTypeLine, 0, 0, 1);
  Add(kTypeCircle, 0, 2, 1);
  Add(kTypeLine, 2, -1, 2, 0, 90);
  Add(kTypeWorkAxis, 3, -1, 2, 0, 90);
  Start(kIdCadJoin, 0);
  ExpectFault(0.6, 0);  // itself
  ExpectFault(0, 2);
  ExpectFault(3, 0.6);
  ExpectFault(-3, -2);
  sketch.locked[2] = 1;
  ExpectFault(2, 0.6);
  sketch.locked[2] = 0;
  sketch.locked[0] = 1;
  ExpectFault(2, 0.6);
  sketch.locked[0] = 0;
  ToolClick(2, 0.6);
  EXPECT_EQ(SketchStatus(), kDone);
}

TEST_F(GeometryTools, RefuseAnIntersectionBeyondTheLimit) {
  Add(kTypeLine, 0, 0, 1);
  Add(kTypeLine, 0, -1, 1, 0, 5e-5);  // meets y = 0 at 1 / tan(5e-5 degrees), 1.15 million
  Start(kIdCadJoin, 0);
  ExpectFault(0.6, -1);
}

TEST_F(GeometryTools, ForgetTheSourceWhenItIsDeleted) {
  Add(kTypeLine, 0, 0, 1);
  Add(kTypeLine, 2, -1, 2, 0, 90);
  Add(kTypeLine, 3, -1, 2, 0, 90);
  Start(kIdCadJoin, 0);
  Command(kIdCadDelete);
  ExpectFault(3, 0);
}

TEST_F(GeometryTools, GoOnWithTheLineThatAnUndoBringsBack) {
  Add(kTypeLine, 3, 0, 2, 0, 180);  // from 3 to 1, goes into the second
  Add(kTypeLine, -2, 2, 1);         // would be the source by its old number
  Add(kTypeLine, 0, 0, 2);          // the source
  Add(kTypeLine, 4, -1, 3, 0, 90);  // x = 4
  Start(kIdCadJoin, 2);
  ToolClick(2.6, 0);
  ASSERT_EQ(sketch.objectCount, 3);
  SketchUndo();
  ASSERT_EQ(sketch.objectCount, 4);
  EXPECT_EQ(sketch.selected, 2);
  ToolClick(4, 1);
  ExpectLine(1, -2, 2, -1, 2);
  ExpectLine(2, 0, 0, 4, 0);
  ExpectLine(3, 4, 2, 4, 0);
  EXPECT_EQ(sketch.selected, 2);
}

TEST_F(GeometryTools, LayALineOnTheSideOfACircleThatIsClicked) {
  // From (0, 0) to the circle of radius 0.6 about (1, 0): the tangent length is 0.8, its points
  // lie at (0.64, +-0.48).
  for (const double side : {1.0, -1.0}) {
    sketch.objectCount = 0;
    sketch.undoDepth = 0;
    Add(kTypeLine, 0, 0, 3, 0, 90);
    Add(kTypeCircle, 1, 0, 1.2);
    Start(kIdCadTangent, 0);
    ToolClick(1, 0.3 * side);
    ExpectLine(0, 0, 0, 0.64, 0.48 * side);
    EXPECT_NEAR(Object(0).size, 0.8, 1e-9);
    EXPECT_EQ(Object(0).group, 0);
    ExpectDone(kGeometryTangent);
  }
}

TEST_F(GeometryTools, RefuseATangentFromInsideAndToOtherShapes) {
  Add(kTypeLine, 0, 0, 3, 0, 90);
  Add(kTypeCircle, 0.5, 0, 1.2);
  Add(kTypeRectangle, 3, 0, 1, 1);
  Start(kIdCadTangent, 0);
  ExpectFault(0.8, 0);
  ExpectFault(3, 0);
  ExpectFault(-3, 0);
  sketch.objects[1].x = 1;
  sketch.locked[0] = 1;
  ExpectFault(1, 0.2);
  sketch.locked[0] = 0;
  sketch.locked[1] = 1;  // a locked circle is not changed by it
  ToolClick(1, 0.2);
  EXPECT_EQ(SketchStatus(), kDone);
}

// The cross of the pivot stands where the fields say, in the next drawing as in this one.
TEST_F(GeometryTools, KeepThePivotWithItsFieldsWhenADrawingIsLoaded) {
  Add(kTypeCircle, 1.23456, 2, 1);
  Start(kIdCadPickPivot, -1);
  ToolClick(1.5, 2);
  LoadSketchForProgram();
  EXPECT_EQ(sketch.objectCount, 0);
  EXPECT_EQ(tools.geometryTool, kGeometryNone);
  EXPECT_EQ(TextOf(kIdCadPivotX), u"1.2346");
  EXPECT_EQ(tools.pivotX, 1.23456);
  EXPECT_EQ(tools.pivotY, 2);
}

TEST_F(GeometryTools, PickThePivotFromGeometryOrThePlace) {
  Add(kTypeCircle, 1.23456, 2, 1);
  Add(kTypeWorkPoint, -1.5, -1.25, 0);
  Add(kTypeWorkAxis, -4, 0.5, 1);
  Add(kTypeRectangle, 3, -1.5, 1, 1);
  Start(kIdCadPickPivot, -1);
  ToolClick(1.5, 2);  // inside the circle
  EXPECT_EQ(tools.pivotX, 1.23456);
  EXPECT_EQ(TextOf(kIdCadPivotX), u"1.2346");
  EXPECT_EQ(TextOf(kIdCadPivotY), u"2.0000");
  ToolClick(-1.52, -1.25);
  EXPECT_EQ(tools.pivotX, -1.5);
  EXPECT_EQ(TextOf(kIdCadPivotY), u"-1.2500");
  ToolClick(-3.5, 0.5);
  EXPECT_EQ(tools.pivotX, -4);
  ToolClick(3.5, -1);  // with snap off, the place itself
  EXPECT_NEAR(tools.pivotX, 3.5, 1e-12);
  EXPECT_NEAR(tools.pivotY, -1, 1e-12);
  EXPECT_EQ(tools.geometryTool, kGeometryPivot);
  EXPECT_EQ(sketch.undoDepth, 0);
  // The picked place counts to its last digit.
  ToolClick(1.5, 2);
  sketch.selected = 1;
  platform::SetText(kIdCadRevolveAngle, u"180");
  platform::SetText(kIdCadRevolveCopies, u"0");
  Command(kIdCadApplyRevolve);
  EXPECT_EQ(Object(1).x, 1.23456 - (-1.5 - 1.23456));
  // What is typed over it counts as typed.
  platform::SetText(kIdCadPivotX, u"1");
  Command(kIdCadApplyRevolve);
  EXPECT_NEAR(Object(1).x, 1 - (3.96912 - 1), 1e-12);
}

}  // namespace
}  // namespace morva
