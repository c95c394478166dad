#include "cad/tools/draw_tools.h"

#include "cad/geometry/canvas_view.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/flyout.h"
#include "cad/tools/polygon.h"
#include "cad/tools/tool_change.h"
#include "unit/cad/draw_stage.h"

namespace morva {
namespace {

using DrawTools = DrawStage;

constexpr const char16_t* kSelecting = u"SELECT mode: click geometry on the canvas.";
constexpr const char16_t* kDegenerate =
    u"These points are degenerate. Pick distinct points; three-point circles need non-collinear "
    u"points.";
constexpr const char16_t* kPolygonRefused =
    u"Use 3-64 sides, positive radius, and enough room in the sketch.";

void PressButton(int id) { ASSERT_TRUE(headless::Click(id)) << id; }

// Starting.

TEST_F(DrawTools, ALeftClickOnAToolKeyStartsItsFirstMethod) {
  PressButton(kIdCadLine);
  EXPECT_EQ(tools.constructionMethod, kIdMethodLine);
  PressButton(kIdCadRectangle);
  EXPECT_EQ(tools.constructionMethod, kIdMethodRectangle);
  PressButton(kIdCadCircle);
  EXPECT_EQ(tools.constructionMethod, kIdMethodCircleRadius);
  PressButton(kIdCadPolygon);
  EXPECT_EQ(tools.constructionMethod, kIdMethodPolygon);
  EXPECT_EQ(tools.panelMode, kPanelPolygon);
  PressButton(kIdCadSlot);
  EXPECT_EQ(tools.constructionMethod, kIdMethodSlotPoints);
  EXPECT_EQ(tools.panelMode, kPanelNone);
  EXPECT_EQ(tools.dragTool, 0);
  PressButton(kIdCadDimension);
  EXPECT_EQ(tools.dragTool, 0);
  EXPECT_TRUE(tools.dimensionMode);
  EXPECT_FALSE(tools.measureMode);
}

TEST_F(DrawTools, EachMethodTellsHowItBegins) {
  const char16_t* const points =
      u"Click construction points on the canvas. Snapping is active; Esc cancels.";
  for (const int method : {kIdMethodLine, kIdMethodCircleRadius, kIdMethodCircleDiameter,
                           kIdMethodCircleThree, kIdMethodRectangle, kIdMethodRectangleCentre,
                           kIdMethodRectangleThree, kIdMethodSlotPoints, kIdMethodPolygon}) {
    SetSketchStatus(u"");
    StartMethod(method);
    EXPECT_EQ(Status(), points) << method;
  }
  StartMethod(kIdMethodLineTangent);
  EXPECT_EQ(Status(), u"Tangent line: pick its start, then click the desired side of a circle.");
  StartMethod(kIdMethodCircleOnLine);
  EXPECT_EQ(Status(), u"Tangent circle: pick a line, then the new center.");
  StartMethod(kIdMethodCircleOnCircle);
  EXPECT_EQ(Status(), u"Tangent circle: pick a circle, then the new center.");
  StartMethod(kIdMethodSlotDrag);
  EXPECT_EQ(Status(), u"Drag a slot centerline. Edit length and width in Selected Geometry.");
}

TEST_F(DrawTools, TheCaptionOfTheFirstBoxFollowsTheMethod) {
  for (const int method : {kIdMethodCircleRadius, kIdMethodCircleDiameter, kIdMethodCircleThree}) {
    StartMethod(method);
    EXPECT_EQ(TextOf(kIdCadSizeCaption), u"Diameter") << method;
  }
  for (const int method : {kIdMethodLine, kIdMethodLineTangent, kIdMethodCircleOnLine,
                           kIdMethodCircleOnCircle, kIdMethodRectangle, kIdMethodPolygon}) {
    StartMethod(method);
    EXPECT_EQ(TextOf(kIdCadSizeCaption), u"Length / width") << method;
  }
}

TEST_F(DrawTools, AMethodByItsCommandClearsWhatWasThere) {
  Put(kTypeLine, 0, 0, 1);
  tools.geometryTool = kGeometryTrim;
  tools.panelMode = kPanelScale;
  tools.multiSelect[0] = 1;
  tools.pivotX = 3;
  ASSERT_TRUE(RouteCommand(kIdMethodCircleThree, 0));
  EXPECT_EQ(tools.constructionMethod, kIdMethodCircleThree);
  EXPECT_EQ(tools.geometryTool, kGeometryNone);
  EXPECT_EQ(tools.panelMode, kPanelNone);
  EXPECT_EQ(MultiSelectCount(), 0);
  EXPECT_EQ(tools.pivotX, 3);  // the pivot of Revolve is no tool
}

TEST_F(DrawTools, ANumberThatIsNoMethodStartsNothing) {
  StartMethod(kIdMethodLine);
  for (const int id : {0, 0x60D, 0x610, 0x621, 0x641}) StartMethod(id);
  EXPECT_EQ(tools.constructionMethod, kIdMethodLine);
  EXPECT_EQ(StageOf(0x610, 0), -1);
}

TEST_F(DrawTools, PlainToolsTellTheirMode) {
  PressButton(kIdCadWorkAxis);
  EXPECT_EQ(tools.dragTool, 6);
  EXPECT_EQ(Status(), u"DRAW mode: click-drag on canvas to create geometry.");
  PressButton(kIdCadPoint);
  EXPECT_EQ(tools.dragTool, 5);
  PressButton(kIdCadSelect);
  EXPECT_EQ(tools.dragTool, 0);
  EXPECT_EQ(Status(), kSelecting);
}

TEST_F(DrawTools, SelectKeepsTheMarks) {
  Put(kTypeLine, 0, 0, 1);
  tools.multiSelect[0] = 1;
  PressButton(kIdCadSelect);
  EXPECT_EQ(MultiSelectCount(), 1);
}

TEST_F(DrawTools, EveryDrawToolLeavesTheModelViewAndSelectDoesNot) {
  const auto stays = [](void (*start)(int), int what) {
    canvasView.modelView = true;
    start(what);
    return canvasView.modelView;
  };
  EXPECT_FALSE(stays(StartMethod, kIdMethodLine));
  EXPECT_FALSE(stays(StartMethod, kIdMethodSlotDrag));
  EXPECT_FALSE(stays(StartMethod, kIdMethodDimension));
  EXPECT_FALSE(stays(StartMethod, kIdMethodMeasure));
  for (int tool = 1; tool <= 6; ++tool) EXPECT_FALSE(stays(StartDragTool, tool)) << tool;
  EXPECT_TRUE(stays(StartDragTool, 0));
}

TEST_F(DrawTools, TheSnapKeySaysItsState) {
  sketch.snapOn = true;
  PressButton(kIdCadSnap);
  EXPECT_FALSE(sketch.snapOn);
  EXPECT_EQ(TextOf(kIdCadSnap), u"Snap OFF");
  EXPECT_EQ(platform::AccessibleName(kIdCadSnap), u"Snap OFF");
  PressButton(kIdCadSnap);
  EXPECT_TRUE(sketch.snapOn);
  EXPECT_EQ(TextOf(kIdCadSnap), u"Snap ON");
}

// Drag creation.

TEST_F(DrawTools, ADragAppendsSelectsAndLogs) {
  StartDragTool(1);
  EXPECT_TRUE(Press(1, 1));
  EXPECT_TRUE(tools.dragActive);
  EXPECT_TRUE(Move(3, 1, true));
  EXPECT_EQ(tools.dragEndX, 3);
  EXPECT_EQ(sketch.objectCount, 0);
  EXPECT_TRUE(Release(4, 1));
  EXPECT_FALSE(tools.dragActive);
  ASSERT_EQ(sketch.objectCount, 1);
  ExpectObject(Last(), kTypeLine, 1, 1, 3, 0, 0);
  EXPECT_EQ(sketch.selected, 0);
  EXPECT_EQ(sketch.undoDepth, 1);
  EXPECT_EQ(LastLogged(), u"Created geometry");
  EXPECT_EQ(tools.dragTool, 1);  // stays until another tool is chosen
}

TEST_F(DrawTools, AClickWithNoMovementYieldsTheDefaultObject) {
  StartDragTool(1);
  Click(1, 1);
  ExpectObject(Last(), kTypeLine, 1, 1, 0.4, 0, 0);
  StartDragTool(3);
  Click(-1, 1);
  ExpectObject(Last(), kTypeCircle, -1, 1, 0.8, 0, 0);
}

TEST_F(DrawTools, AVerticalRectangleDragTakesItsDiagonalAsWidth) {
  StartDragTool(2);
  Drag(0, -1, 0, 1);
  ExpectObject(Last(), kTypeRectangle, 0, 0, 2, 2, 0);
}

TEST_F(DrawTools, TheSlotByDragHasAPresetWidth) {
  StartMethod(kIdMethodSlotDrag);
  Drag(-1, 0, 1, 0);
  ExpectObject(Last(), kTypeSlot, 0, 0, 2, 0.25, 0);
}

TEST_F(DrawTools, AWorkAxisIsDraggedLikeALine) {
  PressButton(kIdCadWorkAxis);
  Drag(0, 0, 0, 2);
  ExpectObject(Last(), kTypeWorkAxis, 0, 0, 2, 0, 90);
}

TEST_F(DrawTools, AWorkPointNeedsOneClickAndGoesOn) {
  PressButton(kIdCadPoint);
  Click(1, 2);
  Click(2, 2);
  ASSERT_EQ(sketch.objectCount, 2);
  ExpectObject(sketch.objects[0], kTypeWorkPoint, 1, 2, 0, 0, 0);
  EXPECT_EQ(sketch.selected, 1);
  EXPECT_EQ(sketch.undoDepth, 2);
  EXPECT_EQ(LastLogged(), u"Added work point");
  EXPECT_EQ(tools.dragTool, 5);
}

TEST_F(DrawTools, MillimetresHaveTheirOwnDefaults) {
  sketch.metric = true;
  StartDragTool(1);
  Click(25, 25);
  ExpectObject(Last(), kTypeLine, 25, 25, 10, 0, 0);
  StartDragTool(4);
  Drag(0, 0, 50, 0);
  ExpectObject(Last(), kTypeSlot, 25, 0, 50, 6, 0);
}

TEST_F(DrawTools, ADragWith96ObjectsEndsSilently) {
  Fill(96);
  StartDragTool(1);
  const std::u16string before = Status();
  Drag(0, 0, 1, 0);
  EXPECT_EQ(sketch.objectCount, 96);
  EXPECT_EQ(sketch.undoDepth, 0);
  EXPECT_FALSE(tools.dragActive);
  EXPECT_EQ(Status(), before);
  StartDragTool(5);
  Click(0, 0);
  EXPECT_EQ(sketch.objectCount, 96);
  EXPECT_EQ(sketch.undoDepth, 0);
}

TEST_F(DrawTools, ALostCaptureCancelsTheDrag) {
  StartDragTool(1);
  Press(0, 0);
  DrawToolCaptureLost();
  EXPECT_FALSE(tools.dragActive);
  Release(1, 0);
  EXPECT_EQ(sketch.objectCount, 0);
}

TEST_F(DrawTools, AMoveWithTheButtonUpIsALostCapture) {
  StartDragTool(1);
  Press(0, 0);
  Move(1, 0, false);
  EXPECT_FALSE(tools.dragActive);
  Release(1, 0);
  EXPECT_EQ(sketch.objectCount, 0);
}

TEST_F(DrawTools, OtherButtonsAreNotTheTools) {
  StartDragTool(1);
  platform::PointerEvent event = At(platform::PointerAction::Press, 0, 0);
  event.button = platform::PointerButton::Right;
  EXPECT_FALSE(DrawToolPress(event));
  EXPECT_FALSE(tools.dragActive);
}

TEST_F(DrawTools, WithoutAToolNothingIsUsed) {
  EXPECT_FALSE(DrawToolActive());
  EXPECT_FALSE(Press(0, 0));
  EXPECT_FALSE(Move(0, 0));
  EXPECT_FALSE(Release(0, 0));
  EXPECT_FALSE(Key(platform::kKeyEscape));
  EXPECT_FALSE(Key(platform::kKeyTab));
  EXPECT_FALSE(Key(platform::kKeyEnter));
}

TEST_F(DrawTools, ADragSnapsAtBothEnds) {
  sketch.snapOn = true;
  StartDragTool(1);
  Drag(0.03, 0.04, 1.03, 0.02);  // the origin, then the grid
  ExpectObject(Last(), kTypeLine, 0, 0, std::hypot(1.05, 0), 0, 0);
}

TEST_F(DrawTools, ADragSnapsToTheSelectedObjectToo) {
  sketch.snapOn = true;
  Put(kTypeLine, 1.013, 1.013, 1);
  sketch.selected = 0;
  StartDragTool(1);
  Drag(2.05, 1.05, 2.05, 2);           // from the end of the selected line
  EXPECT_NEAR(Last().x, 2.013, 1e-6);  // its end goes by the series
  EXPECT_NEAR(Last().y, 1.013, 1e-6);
}

TEST_F(DrawTools, WithSnapOnButAltHeldCoordinatesStayExact) {
  sketch.snapOn = true;
  StartDragTool(1);
  Press(0.03, 0.04, true);
  Move(1.03, 0.04, true, true);
  Release(1.03, 0.04, true);
  ExpectObject(Last(), kTypeLine, 0.03, 0.04, 1, 0, 0);
  StartMethod(kIdMethodLine);
  Click(0.03, -0.04, true);
  Click(0.03, -1.04, true);
  ExpectObject(Last(), kTypeLine, 0.03, -0.04, 1, 0, -90);
  EXPECT_FALSE(tools.snapHit);
}

// Methods by clicks.

TEST_F(DrawTools, TwoClicksMakeALineAndTheMethodStays) {
  StartMethod(kIdMethodLine);
  Click(1, 1);
  EXPECT_EQ(tools.constructionClicks, 1);
  EXPECT_EQ(Status(), u"Pick the second construction point.");
  EXPECT_EQ(sketch.objectCount, 0);
  Click(1, 2);
  ExpectObject(Last(), kTypeLine, 1, 1, 1, 0, 90);
  EXPECT_EQ(sketch.selected, 0);
  EXPECT_EQ(sketch.undoDepth, 1);
  EXPECT_EQ(LastLogged(), u"Created geometry by construction points");
  EXPECT_EQ(tools.constructionMethod, kIdMethodLine);
  EXPECT_EQ(tools.constructionClicks, 0);
  Click(2, 2);
  Click(3, 2);
  EXPECT_EQ(sketch.objectCount, 2);
}

TEST_F(DrawTools, ThreePointMethodsAskForTheThird) {
  StartMethod(kIdMethodRectangleThree);
  Click(0, 0);
  EXPECT_EQ(Status(), u"Pick the second construction point.");
  Click(2, 0);
  EXPECT_EQ(Status(), u"Pick the third point to set the circle, height or width.");
  Click(1, 1);
  ExpectObject(Last(), kTypeRectangle, 1, 0.5, 2, 1, 0);
}

TEST_F(DrawTools, EveryMethodByClicksMakesItsObject) {
  StartMethod(kIdMethodCircleRadius);
  Click(0, 0);
  Click(0, 1);
  ExpectObject(Last(), kTypeCircle, 0, 0, 2, 0, 0);
  StartMethod(kIdMethodCircleDiameter);
  Click(0, 0);
  Click(0, 1);
  ExpectObject(Last(), kTypeCircle, 0, 0.5, 1, 0, 0);
  StartMethod(kIdMethodCircleThree);
  Click(1, 0);
  Click(0, 1);
  Click(-1, 0);
  ExpectObject(Last(), kTypeCircle, 0, 0, 2, 0, 0);
  StartMethod(kIdMethodRectangle);
  Click(1, 1);
  Click(2, -1);
  ExpectObject(Last(), kTypeRectangle, 1.5, 0, 1, 2, 0);
  StartMethod(kIdMethodRectangleCentre);
  Click(1, 1);
  Click(2, -1);
  ExpectObject(Last(), kTypeRectangle, 1, 1, 2, 4, 0);
  StartMethod(kIdMethodSlotPoints);
  Click(0, 0);
  Click(2, 0);
  Click(1, 0.25);
  ExpectObject(Last(), kTypeSlot, 1, 0, 2.5, 0.5, 0);
  EXPECT_EQ(sketch.objectCount, 6);
  EXPECT_EQ(sketch.undoDepth, 6);
}

TEST_F(DrawTools, ThreeCollinearPointsGiveTheMessageAndRestartAtTheFirstPoint) {
  StartMethod(kIdMethodCircleThree);
  Click(0, 0);
  Click(1, 0);
  Click(2, 0);
  EXPECT_EQ(sketch.objectCount, 0);
  EXPECT_EQ(sketch.undoDepth, 0);
  EXPECT_EQ(tools.constructionClicks, 0);
  EXPECT_EQ(tools.constructionMethod, kIdMethodCircleThree);
  EXPECT_EQ(Status(), kDegenerate);
  Click(1, 0);
  EXPECT_EQ(Status(), u"Pick the second construction point.");
}

TEST_F(DrawTools, TheSamePointTwiceIsDegenerate) {
  for (const int method :
       {kIdMethodLine, kIdMethodCircleRadius, kIdMethodRectangle, kIdMethodPolygon}) {
    StartMethod(method);
    Click(1, 1);
    Click(1, 1);
    EXPECT_EQ(Status(), kDegenerate) << method;
    EXPECT_EQ(tools.constructionClicks, 0);
  }
  EXPECT_EQ(sketch.objectCount, 0);
}

TEST_F(DrawTools, MethodsWith96ObjectsSaySo) {
  Fill(96);
  StartMethod(kIdMethodLine);
  Click(0, 0);
  Click(1, 0);
  EXPECT_EQ(sketch.objectCount, 96);
  EXPECT_EQ(sketch.undoDepth, 0);
  EXPECT_EQ(Status(), u"The sketch holds 96 objects. Delete geometry before adding more.");
  EXPECT_EQ(tools.constructionClicks, 0);
  EXPECT_EQ(tools.constructionMethod, kIdMethodLine);
}

TEST_F(DrawTools, The96thObjectIsStillTaken) {
  Fill(95);
  StartMethod(kIdMethodLine);
  Click(0, 0);
  Click(1, 0);
  EXPECT_EQ(sketch.objectCount, 96);
  EXPECT_EQ(sketch.selected, 95);
}

TEST_F(DrawTools, ANewObjectIsVisibleUnlockedAndUngrouped) {
  sketch.hidden[0] = sketch.locked[0] = 1;  // left over from an object that is gone
  StartMethod(kIdMethodLine);
  Click(0, 0);
  Click(1, 0);
  EXPECT_EQ(sketch.hidden[0], 0);
  EXPECT_EQ(sketch.locked[0], 0);
  EXPECT_EQ(sketch.objects[0].group, 0);
}

TEST_F(DrawTools, AnUndoTakesTheNewObjectAway) {
  StartMethod(kIdMethodLine);
  Click(0, 0);
  Click(1, 0);
  SketchUndo();
  EXPECT_EQ(sketch.objectCount, 0);
  EXPECT_EQ(sketch.undoDepth, 0);
}

// Tangents.

TEST_F(DrawTools, ACircleOnALineIsPickedThenCentred) {
  Put(kTypeLine, -2, 0, 4);
  StartMethod(kIdMethodCircleOnLine);
  Click(-1, 2);
  EXPECT_EQ(Status(), u"Pick the required line or circle first.");
  EXPECT_EQ(tools.constructionClicks, 0);
  Click(-1, 0);
  EXPECT_EQ(Status(), u"Click the new circle center; radius will meet the selected geometry.");
  EXPECT_EQ(tools.tangentTarget, 0);
  EXPECT_EQ(tools.constructionClicks, 1);
  Click(2.5, 1);
  EXPECT_EQ(Status(), u"Choose a center whose tangent point is on the line segment.");
  EXPECT_EQ(tools.constructionClicks, 1);
  Click(1, 0);
  EXPECT_EQ(Status(), u"Choose a non-degenerate circle center.");
  Click(1, 1.5);
  ASSERT_EQ(sketch.objectCount, 2);
  EXPECT_NEAR(Last().size, 3, 1e-6);
  EXPECT_EQ(Last().x, 1);
  EXPECT_EQ(Last().y, 1.5);
  EXPECT_EQ(tools.tangentTarget, -1);
  EXPECT_EQ(tools.constructionClicks, 0);
}

TEST_F(DrawTools, ACircleOnALineTakesNoOtherShape) {
  Put(kTypeCircle, 0, 0, 2);
  Put(kTypeWorkAxis, 2, 0, 2);
  StartMethod(kIdMethodCircleOnLine);
  Click(0, 0.5);
  EXPECT_EQ(Status(), u"Pick the required line or circle first.");
  SetSketchStatus(u"");
  Click(3, 0);
  EXPECT_EQ(Status(), u"Pick the required line or circle first.");
  EXPECT_EQ(tools.constructionClicks, 0);
}

TEST_F(DrawTools, ACircleOnACircleIsPickedThenCentred) {
  Put(kTypeCircle, 0, 0, 2);
  Put(kTypeLine, 2, 0, 1);
  StartMethod(kIdMethodCircleOnCircle);
  Click(2.5, 0);
  EXPECT_EQ(Status(), u"Pick the required line or circle first.");
  Click(0.5, 0);
  EXPECT_EQ(tools.tangentTarget, 0);
  Click(0, 0);
  EXPECT_EQ(Status(), u"Concentric circles do not have a unique tangent point.");
  EXPECT_EQ(tools.constructionClicks, 1);
  Click(0, 1);
  EXPECT_EQ(Status(), u"Choose a non-degenerate circle center.");
  Click(3, 0);
  ExpectObject(Last(), kTypeCircle, 3, 0, 4, 0, 0);
}

TEST_F(DrawTools, AnUndoneTargetIsAskedForAgain) {
  StartMethod(kIdMethodLine);
  Click(-2, 0);
  Click(2, 0);
  StartMethod(kIdMethodCircleOnLine);
  Click(-1, 0);
  ASSERT_EQ(tools.tangentTarget, 0);
  SketchUndo();
  Click(0, 1);
  EXPECT_EQ(sketch.objectCount, 0);
  EXPECT_EQ(tools.tangentTarget, -1);
  EXPECT_EQ(Status(), u"Pick the required line or circle first.");
}

TEST_F(DrawTools, ATangentLineStartsThenPicksTheSideOfACircle) {
  Put(kTypeCircle, 2, 0, 2);  // radius 1 about (2, 0): the tangents from the origin are at 30
  StartMethod(kIdMethodLineTangent);
  Click(0, 0);
  EXPECT_EQ(Status(), u"Pick the second construction point.");
  Click(0, 2);
  EXPECT_EQ(Status(), u"Click the desired tangent side of a circle.");
  EXPECT_EQ(tools.constructionClicks, 1);
  Click(1.5, 0.85);
  ASSERT_EQ(sketch.objectCount, 2);
  ExpectObject(Last(), kTypeLine, 0, 0, std::sqrt(3), 0, 30);
  EXPECT_EQ(tools.constructionClicks, 0);
}

TEST_F(DrawTools, ATangentLineFromInsideIsRefused) {
  Put(kTypeCircle, 2, 0, 2);
  StartMethod(kIdMethodLineTangent);
  Click(2.5, 0);
  Click(2, 1);
  EXPECT_EQ(Status(), u"The line start must be outside the circle. Esc restarts.");
  EXPECT_EQ(sketch.objectCount, 1);
}

// Previews.

TEST_F(DrawTools, ThePreviewComesWithTheLastPoint) {
  StartMethod(kIdMethodCircleThree);
  Move(1, 0);
  EXPECT_FALSE(tools.previewValid);
  Click(1, 0);
  Move(0, 1);
  EXPECT_FALSE(tools.previewValid);
  Click(0, 1);
  Move(-1, 0);
  ASSERT_TRUE(tools.previewValid);
  ExpectObject(tools.previewObject, kTypeCircle, 0, 0, 2, 0, 0);
  EXPECT_EQ(TextOf(kIdCadSizeBox1), u"2.0000");
  Move(-1, 2);  // in line with the first two
  EXPECT_FALSE(tools.previewValid);
  EXPECT_EQ(sketch.objectCount, 0);
  EXPECT_EQ(sketch.undoDepth, 0);
}

TEST_F(DrawTools, ThePreviewOfABoxShowsBothSizes) {
  StartMethod(kIdMethodRectangle);
  Click(0, 0);
  Move(2, -1);
  ASSERT_TRUE(tools.previewValid);
  EXPECT_EQ(TextOf(kIdCadSizeBox1), u"2.0000");
  EXPECT_EQ(TextOf(kIdCadSizeBox2), u"1.0000");
}

TEST_F(DrawTools, ThePreviewOfAPolygonShowsRadiusAndSides) {
  Type(kIdCadPolygonSides, u"5");
  StartMethod(kIdMethodPolygon);
  Click(0, 0);
  Move(0, 2);
  ASSERT_TRUE(tools.previewValid);
  EXPECT_EQ(tools.previewObject.size, 2);
  EXPECT_EQ(tools.previewObject.size2, 5);
  EXPECT_NEAR(tools.previewObject.angle, 90, 1e-6);
  EXPECT_EQ(TextOf(kIdCadSizeBox1), u"2.0000");
  EXPECT_EQ(TextOf(kIdCadSizeBox2), u"5");
  Type(kIdCadPolygonSides, u"65");
  Move(0, 1);
  EXPECT_FALSE(tools.previewValid);
}

TEST_F(DrawTools, TangentMethodsPreviewToo) {
  Put(kTypeCircle, 2, 0, 2);
  StartMethod(kIdMethodLineTangent);
  Click(0, 0);
  Move(0, 2);
  EXPECT_FALSE(tools.previewValid);
  Move(1.5, 0.85);
  EXPECT_TRUE(tools.previewValid);
  StartMethod(kIdMethodCircleOnCircle);
  Click(2.5, 0);
  Move(5, 0);
  ASSERT_TRUE(tools.previewValid);
  EXPECT_NEAR(tools.previewObject.size, 4, 1e-9);
}

// Polygons.

TEST_F(DrawTools, APolygonIsAClosedRunOfLinesInOneGroup) {
  Put(kTypeLine, 3, 3, 1, 0, 0, 7);
  ASSERT_TRUE(CreatePolygon(6, 1, 1, -1, 30));
  ASSERT_EQ(sketch.objectCount, 7);
  EXPECT_EQ(sketch.undoDepth, 1);
  EXPECT_EQ(LastLogged(), u"Created polygon");
  EXPECT_EQ(sketch.selected, 1);
  for (int i = 0; i < 6; ++i) {
    const SketchObject& line = sketch.objects[1 + i];
    const SketchObject& next = sketch.objects[1 + (i + 1) % 6];
    EXPECT_EQ(line.type, kTypeLine);
    EXPECT_EQ(line.group, 8);
    // The chord of a hexagon is its radius; corner i stands at 30 + 60 i degrees.
    EXPECT_NEAR(line.size, 1, 1e-6);
    const double corner = (30 + 60 * i) * M_PI / 180;
    EXPECT_NEAR(line.x, 1 + std::cos(corner), 1e-6);
    EXPECT_NEAR(line.y, -1 + std::sin(corner), 1e-6);
    const double a = line.angle * M_PI / 180;
    EXPECT_NEAR(line.x + line.size * std::cos(a), next.x, 1e-6);
    EXPECT_NEAR(line.y + line.size * std::sin(a), next.y, 1e-6);
    EXPECT_EQ(sketch.hidden[1 + i], 0);
    EXPECT_EQ(sketch.locked[1 + i], 0);
  }
}

TEST_F(DrawTools, APolygonsFirstGroupIsOne) {
  ASSERT_TRUE(CreatePolygon(3, 1, 0, 0, 0));
  EXPECT_EQ(sketch.objects[0].group, 1);
  EXPECT_NEAR(sketch.objects[0].size, std::sqrt(3), 1e-6);
}

TEST_F(DrawTools, APolygonBesideTheLastGroupNumberTakesAFreeOne) {
  Put(kTypeLine, 3, 3, 1, 0, 0, 2147483647);
  Put(kTypeLine, 3, 3, 1, 0, 0, 1);
  ASSERT_TRUE(CreatePolygon(3, 1, 0, 0, 0));
  for (int i = 2; i < 5; ++i) EXPECT_EQ(sketch.objects[i].group, 2);
}

TEST_F(DrawTools, APolygonOf3SidesIsRefusedWith94ObjectsAndTakenWith93) {
  Fill(94);
  EXPECT_FALSE(CreatePolygon(3, 1, 0, 0, 0));
  EXPECT_EQ(sketch.objectCount, 94);
  EXPECT_EQ(sketch.undoDepth, 0);
  EXPECT_EQ(Status(), kPolygonRefused);
  RemoveSketchObject(0);
  EXPECT_TRUE(CreatePolygon(3, 1, 0, 0, 0));
  EXPECT_EQ(sketch.objectCount, 96);
}

TEST_F(DrawTools, APolygonsNumbersHaveTheirBounds) {
  const double big = kSketchLimit;
  EXPECT_FALSE(CreatePolygon(2, 1, 0, 0, 0));
  EXPECT_FALSE(CreatePolygon(65, 1, 0, 0, 0));
  EXPECT_FALSE(CreatePolygon(6, 0, 0, 0, 0));
  EXPECT_FALSE(CreatePolygon(6, -1, 0, 0, 0));
  EXPECT_FALSE(CreatePolygon(6, big, 0, 0, 0));
  EXPECT_FALSE(CreatePolygon(6, 1, big, 0, 0));
  EXPECT_FALSE(CreatePolygon(6, 1, 0, -big, 0));
  EXPECT_FALSE(CreatePolygon(6, 1, 0, 0, 36000.1));
  EXPECT_FALSE(CreatePolygon(6, 1, 0, 0, -36000.1));
  EXPECT_FALSE(CreatePolygon(6, std::nan(""), 0, 0, 0));
  EXPECT_FALSE(CreatePolygon(6, 1, 0, 0, std::nan("")));
  EXPECT_FALSE(CreatePolygon(6, 10, 999995, 0, 0));  // a corner would leave the sketch
  EXPECT_EQ(sketch.objectCount, 0);
  EXPECT_EQ(sketch.undoDepth, 0);
  EXPECT_TRUE(CreatePolygon(64, 1, 0, 0, 36000));
  EXPECT_TRUE(CreatePolygon(3, 1, 0, 0, -36000));
}

TEST_F(DrawTools, TwoClicksMakeAPolygonWithACornerAtTheSecond) {
  Type(kIdCadPolygonSides, u"4");
  StartMethod(kIdMethodPolygon);
  Click(1, 0);
  Click(1, 2);
  ASSERT_EQ(sketch.objectCount, 4);
  EXPECT_NEAR(sketch.objects[0].x, 1, 1e-6);
  EXPECT_NEAR(sketch.objects[0].y, 2, 1e-6);
  EXPECT_NEAR(sketch.objects[0].size, std::sqrt(8), 1e-6);
  EXPECT_EQ(LastLogged(), u"Created polygon");
  EXPECT_EQ(sketch.undoDepth, 1);
  EXPECT_EQ(tools.constructionMethod, kIdMethodPolygon);
  EXPECT_EQ(tools.constructionClicks, 0);
}

TEST_F(DrawTools, ClicksWithSidesThatAreNoneAreRefused) {
  for (const char16_t* sides : {u"2", u"65", u"6.5", u"", u"six", u"6a", u"-6"}) {
    Type(kIdCadPolygonSides, sides);
    SetSketchStatus(u"");
    StartMethod(kIdMethodPolygon);
    Click(0, 0);
    Click(1, 0);
    EXPECT_EQ(Status(), kPolygonRefused);
    EXPECT_EQ(sketch.objectCount, 0);
  }
}

TEST_F(DrawTools, ThePanelsButtonMakesThePanelsPolygon) {
  Type(kIdCadPolygonSides, u"3");
  Type(kIdCadPolygonRadius, u"2");
  Type(kIdCadPolygonX, u"-1");
  Type(kIdCadPolygonY, u"+.5");
  Type(kIdCadPolygonAngle, u"90");
  PressButton(kIdCadCreatePolygon);
  ASSERT_EQ(sketch.objectCount, 3);
  EXPECT_NEAR(sketch.objects[0].x, -1, 1e-6);
  EXPECT_NEAR(sketch.objects[0].y, 2.5, 1e-6);
  EXPECT_NEAR(sketch.objects[0].size, 2 * std::sqrt(3), 1e-6);
}

TEST_F(DrawTools, ThePanelRefusesWhatIsNoNumber) {
  for (const int id : {kIdCadPolygonSides, kIdCadPolygonRadius, kIdCadPolygonX, kIdCadPolygonY,
                       kIdCadPolygonAngle}) {
    const std::u16string before = TextOf(id);
    for (const char16_t* text : {u"", u"1,5", u"1 ", u"1e1", u"--1"}) {
      Type(id, text);
      SetSketchStatus(u"");
      PressButton(kIdCadCreatePolygon);
      EXPECT_EQ(Status(), kPolygonRefused) << id;
      EXPECT_EQ(sketch.objectCount, 0) << id;
    }
    Type(id, before);
  }
}

// Cancelling.

TEST_F(DrawTools, EscapeEndsAMethodWithItsPointsPanelAndBoxes) {
  StartMethod(kIdMethodPolygon);
  Click(0, 0);
  Move(1, 0);
  Key(platform::kKeyTab);
  ASSERT_TRUE(platform::IsVisible(kIdCadSizeBox1));
  EXPECT_TRUE(Key(platform::kKeyEscape));
  EXPECT_EQ(tools.constructionMethod, 0);
  EXPECT_EQ(tools.constructionClicks, 0);
  EXPECT_EQ(tools.panelMode, kPanelNone);
  EXPECT_FALSE(tools.previewValid);
  EXPECT_FALSE(platform::IsVisible(kIdCadSizeBox1));
  EXPECT_FALSE(platform::IsVisible(kIdCadSizeBox2));
  EXPECT_EQ(platform::FocusedId(), kViewCadCanvas);
  EXPECT_FALSE(Key(platform::kKeyEscape));
}

TEST_F(DrawTools, EscapeEndsDragAndGeometryToolsOnly) {
  tools.panelMode = kPanelRevolve;
  tools.geometryTool = kGeometryPivot;
  EXPECT_TRUE(Key(platform::kKeyEscape));
  EXPECT_EQ(tools.geometryTool, kGeometryNone);
  EXPECT_EQ(tools.panelMode, kPanelRevolve);
  StartDragTool(2);
  Press(0, 0);
  EXPECT_TRUE(Key(platform::kKeyEscape));
  EXPECT_EQ(tools.dragTool, 0);
  EXPECT_FALSE(tools.dragActive);
  Release(1, 1);
  EXPECT_EQ(sketch.objectCount, 0);
}

TEST_F(DrawTools, CancelEndsEverythingButTheSelection) {
  Put(kTypeLine, 0, 0, 1);
  Put(kTypeLine, 0, 1, 1);
  for (int what = 0; what < 4; ++what) {
    if (what == 0) StartMethod(kIdMethodLine);
    if (what == 1) StartDragTool(1);
    if (what == 2) StartMethod(kIdMethodDimension);
    if (what == 3) tools.geometryTool = kGeometryTrim;
    tools.panelMode = kPanelScale;
    sketch.selected = 1;
    tools.multiSelect[0] = tools.multiSelect[1] = 1;
    PressButton(kIdCadCancel);
    EXPECT_EQ(tools.constructionMethod, 0);
    EXPECT_EQ(tools.dragTool, 0);
    EXPECT_EQ(tools.geometryTool, 0);
    EXPECT_EQ(tools.panelMode, 0);
    EXPECT_FALSE(tools.dimensionMode);
    EXPECT_EQ(Status(), kSelecting);
    // A context menu opens on the same right click and works on what is selected.
    EXPECT_EQ(sketch.selected, 1);
    EXPECT_EQ(MultiSelectCount(), 2);
    SetSketchStatus(u"");
  }
}

TEST_F(DrawTools, CancelWithNothingActiveSaysNothing) {
  SetSketchStatus(u"as it was");
  CancelTools();
  EXPECT_EQ(Status(), u"as it was");
}

// Flyouts.

std::vector<std::u16string> Labels(const headless::MenuRecord& menu) {
  std::vector<std::u16string> labels;
  for (const headless::MenuItemRecord& item : menu.items) labels.push_back(item.text);
  return labels;
}

std::vector<std::u16string> FlyoutLabels(int key) {
  ShowFlyout(key);
  const std::vector<headless::MenuRecord> menus = headless::TakeMenus();
  return menus.size() == 1 ? Labels(menus[0]) : std::vector<std::u16string>();
}

TEST_F(DrawTools, FlyoutsListTheMethodsOfTheirKey) {
  using Texts = std::vector<std::u16string>;
  EXPECT_EQ(FlyoutLabels(kIdCadLine), (Texts{u"Line — two points", u"Line — tangent to circle"}));
  EXPECT_EQ(FlyoutLabels(kIdCadRectangle),
            (Texts{u"Rectangle — two corners", u"Rectangle — center and corner",
                   u"Rectangle — three points (rotated)"}));
  EXPECT_EQ(FlyoutLabels(kIdCadCircle),
            (Texts{u"Circle — center and radius", u"Circle — two diameter endpoints",
                   u"Circle — three perimeter points", u"Circle — tangent to line + center",
                   u"Circle — tangent to circle + center"}));
  EXPECT_EQ(FlyoutLabels(kIdCadSlot), (Texts{u"Slot — drag with preset width",
                                             u"Slot — centerline endpoints + width point"}));
  EXPECT_EQ(FlyoutLabels(kIdCadDimension),
            (Texts{u"Dimension — edit object size", u"Measure — point-to-point distance"}));
  EXPECT_EQ(FlyoutLabels(kIdCadSelect), Texts{});
}

TEST_F(DrawTools, AChoiceOfAFlyoutStartsIt) {
  headless::QueuePick(kIdMethodCircleOnLine);
  ShowFlyout(kIdCadCircle);
  EXPECT_EQ(tools.constructionMethod, kIdMethodCircleOnLine);
  headless::QueuePick(kIdMethodMeasure);
  ShowFlyout(kIdCadDimension);
  EXPECT_TRUE(tools.measureMode);
}

TEST_F(DrawTools, AFlyoutThatIsLeftOrCannotOpenChangesNothing) {
  StartMethod(kIdMethodRectangle);
  headless::QueuePick(0);
  ShowFlyout(kIdCadCircle);
  EXPECT_EQ(tools.constructionMethod, kIdMethodRectangle);
  headless::FailCall("popup", 1);
  ShowFlyout(kIdCadCircle);
  EXPECT_EQ(tools.constructionMethod, kIdMethodRectangle);
}

TEST_F(DrawTools, TheDownKeyOnAToolKeyOpensItsFlyout) {
  platform::KeyEvent down;
  down.key = platform::kKeyDown;
  for (const int key : {kIdCadLine, kIdCadRectangle, kIdCadCircle, kIdCadSlot, kIdCadDimension}) {
    EXPECT_TRUE(FlyoutKey(key, down));
    EXPECT_EQ(headless::TakeMenus().size(), 1u) << key;
  }
  EXPECT_FALSE(FlyoutKey(kIdCadSelect, down));
  EXPECT_FALSE(FlyoutKey(kIdCadPolygon, down));
  down.alt = true;
  EXPECT_FALSE(FlyoutKey(kIdCadLine, down));
  down.alt = false;
  down.key = platform::kKeyUp;
  EXPECT_FALSE(FlyoutKey(kIdCadLine, down));
  EXPECT_TRUE(headless::TakeMenus().empty());
}

class Flyouts : public DrawStage {
 protected:
  Flyouts() { headless::Focus(kViewCadCanvas); }
  // What the hover tick tells every 150 ms.
  static void Tick(int under) {
    headless::MovePointerOver(under);
    TellPointerOver(under);
  }
  static std::size_t Menus() { return headless::TakeMenus().size(); }
};

TEST_F(Flyouts, ARestOf450MillisecondsOpensTheFlyoutOnce) {
  Tick(kIdCadLine);
  headless::Advance(449);
  EXPECT_EQ(Menus(), 0u);
  headless::Advance(1);
  EXPECT_EQ(Menus(), 1u);
  Tick(kIdCadLine);
  headless::Advance(2000);
  EXPECT_EQ(Menus(), 0u);  // not again before the pointer has left
  Tick(0);
  Tick(kIdCadLine);
  headless::Advance(450);
  EXPECT_EQ(Menus(), 1u);
}

TEST_F(Flyouts, APointerThatGoesOnOpensNothing) {
  Tick(kIdCadLine);
  headless::Advance(300);
  Tick(kIdCadSelect);
  headless::Advance(1000);
  EXPECT_EQ(Menus(), 0u);
  Tick(kIdCadCircle);
  headless::Advance(300);
  headless::MovePointerOver(0);
  headless::Advance(300);
  EXPECT_EQ(Menus(), 0u);
}

TEST_F(Flyouts, FromOneToolKeyToTheNextTheRestBeginsAnew) {
  Tick(kIdCadLine);
  headless::Advance(400);
  Tick(kIdCadCircle);
  headless::Advance(400);
  EXPECT_EQ(Menus(), 0u);
  headless::Advance(50);
  const std::vector<headless::MenuRecord> menus = headless::TakeMenus();
  ASSERT_EQ(menus.size(), 1u);
  EXPECT_EQ(menus[0].items.size(), 5u);
}

TEST_F(Flyouts, AKeyThatWasPressedOpensNothing) {
  Tick(kIdCadLine);
  headless::Advance(200);
  PressButton(kIdCadLine);
  headless::Advance(1000);
  EXPECT_EQ(Menus(), 0u);
  EXPECT_EQ(tools.constructionMethod, kIdMethodLine);
}

TEST_F(Flyouts, AKeyThatWasPressedBeforeTheFirstTickOpensNothingUntilThePointerHasLeft) {
  headless::MovePointerOver(kIdCadCircle);
  PressButton(kIdCadCircle);
  Tick(kIdCadCircle);
  headless::Advance(1000);
  EXPECT_EQ(Menus(), 0u);
  Tick(kViewCadCanvas);
  Tick(kIdCadCircle);
  headless::Advance(450);
  EXPECT_EQ(Menus(), 1u);
}

TEST_F(Flyouts, AToolGivenUpByTheKeyboardOpensNothingUnderARestingPointer) {
  Tick(kIdCadLine);
  PressButton(kIdCadLine);
  RouteCommand(kIdCadCancel, platform::kNotifyClick);  // what Escape does on the canvas
  Tick(kIdCadLine);
  headless::Advance(2000);
  EXPECT_EQ(Menus(), 0u);
}

TEST_F(Flyouts, AKeyThatIsHeldDownOpensNothing) {
  Tick(kIdCadLine);
  headless::Advance(300);
  headless::HoldButton(true);  // down, and not up again before the rest is over
  headless::Advance(300);
  EXPECT_EQ(Menus(), 0u);
  headless::HoldButton(false);
  Tick(kIdCadLine);
  headless::Advance(2000);
  EXPECT_EQ(Menus(), 0u);  // it was used: not before the pointer has left
  Tick(0);
  Tick(kIdCadLine);
  headless::Advance(450);
  EXPECT_EQ(Menus(), 1u);
}

TEST_F(Flyouts, NothingOpensWhileTheKeyboardIsElsewhere) {
  platform::SetFocusTo(platform::kMainWindow);  // as over a box
  ASSERT_EQ(platform::FocusedId(), 0);
  Tick(kIdCadLine);
  headless::Advance(1000);
  EXPECT_EQ(Menus(), 0u);
}

TEST_F(Flyouts, AHiddenKeyOpensNothing) {
  Tick(kIdCadLine);
  platform::SetVisible(kIdCadLine, false);
  headless::Advance(450);
  EXPECT_EQ(Menus(), 0u);
}

}  // namespace
}  // namespace morva
