// Selecting and dragging by the pointer. Expected places are worked out by hand: a drag of n
// hundredths of an inch is one of n pixels.

#include "cad/tools/select_drag.h"

#include "cad/geometry/canvas_view.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "edits_stage.h"

namespace morva {
namespace {

using SelectDrag = cad_test::EditsStage;

std::vector<int> Marked() {
  std::vector<int> marks;
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (tools.multiSelect[i]) marks.push_back(i);
  }
  return marks;
}

TEST_F(SelectDrag, SelectsTheEdgeUnderThePointer) {
  Add(kTypeLine, 0, 0, 2);
  Add(kTypeLine, 0, 1, 2);
  Click(0.6, 1.05);
  EXPECT_EQ(sketch.selected, 1);
  EXPECT_EQ(Marked(), std::vector<int>{1});
  Click(0.6, 0.05);
  EXPECT_EQ(sketch.selected, 0);
  EXPECT_EQ(Marked(), std::vector<int>{0});
  EXPECT_EQ(sketch.undoDepth, 0);
  EXPECT_TRUE(Recent().empty());
}

TEST_F(SelectDrag, TakesNoObjectByItsInside) {
  Add(kTypeRectangle, 0, 0, 2, 1);
  Click(0.3, 0.2);
  EXPECT_EQ(sketch.selected, -1);
  EXPECT_EQ(SketchStatus(),
            u"No object selected. Choose a draw tool, then click-drag on the canvas.");
}

TEST_F(SelectDrag, TakesConstructionGeometryByItsPlace) {
  Add(kTypeWorkPoint, 1, 1, 0);
  Add(kTypeWorkAxis, -2, -1, 1, 0, 0);
  Click(1, 1);
  EXPECT_EQ(sketch.selected, 0);
  Click(-1.5, -1);
  EXPECT_EQ(sketch.selected, 1);
  Drag(1, 1, 1.4, 1.3);
  EXPECT_NEAR(Object(0).x, 1.4, 1e-12);
  EXPECT_NEAR(Object(0).y, 1.3, 1e-12);
}

TEST_F(SelectDrag, ClearsEverythingOnEmptyGround) {
  Add(kTypeLine, 0, 0, 2);
  Click(1.4, 0);
  Click(1.4, 2);
  EXPECT_EQ(sketch.selected, -1);
  EXPECT_TRUE(Marked().empty());
}

TEST_F(SelectDrag, TogglesAPartWithCtrl) {
  Add(kTypeLine, 0, 0, 2, 0, 0, 3);
  Add(kTypeLine, 0, 1, 2, 0, 0, 3);
  Add(kTypeLine, 0, 2, 2);
  Click(0.5, 0, true);
  EXPECT_EQ(Marked(), (std::vector<int>{0, 1}));
  EXPECT_EQ(sketch.selected, 1);
  Click(0.5, 2, true);
  EXPECT_EQ(Marked(), (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(sketch.selected, 2);
  Click(0.5, 1, true);
  EXPECT_EQ(Marked(), std::vector<int>{2});
  Click(0.5, 2, true);
  EXPECT_TRUE(Marked().empty());
  EXPECT_EQ(sketch.selected, -1);
}

TEST_F(SelectDrag, KeepsTheMarksWhenCtrlMeetsEmptyGround) {
  Add(kTypeLine, 0, 0, 2);
  Click(0.5, 0, true);
  Click(-1, -1, true);
  EXPECT_EQ(Marked(), std::vector<int>{0});
  EXPECT_EQ(sketch.selected, 0);
}

TEST_F(SelectDrag, KeepsAllMarksOnAPressOnAMarkedObject) {
  Add(kTypeLine, 0, 0, 2);
  Add(kTypeLine, 0, 1, 2);
  Add(kTypeLine, 0, 2, 2);
  Click(0.5, 0, true);
  Click(0.5, 1, true);
  Click(0.5, 0);
  EXPECT_EQ(Marked(), (std::vector<int>{0, 1}));
  EXPECT_EQ(sketch.selected, 0);
  Click(0.5, 2);
  EXPECT_EQ(Marked(), std::vector<int>{2});
}

TEST_F(SelectDrag, BandsWhatLiesWhollyInside) {
  Add(kTypeLine, 0, 0, 1);
  Add(kTypeCircle, 0.5, 1, 1);       // its right end at 1.0
  Add(kTypeLine, 0.5, 0.5, 3);       // sticks out
  Add(kTypeLine, 0.2, 0.2, 0.2);     // hidden
  Add(kTypeLine, 0.2, 0.3, 0.2);     // locked
  Add(kTypeWorkPoint, 0.9, 1.4, 0);  // its cross inside as well
  sketch.hidden[3] = 1;
  sketch.locked[4] = 1;
  Drag(-0.5, -0.5, 1.1, 1.6);
  EXPECT_EQ(Marked(), (std::vector<int>{0, 1, 5}));
  EXPECT_EQ(sketch.selected, 5);
  EXPECT_EQ(sketch.undoDepth, 0);
}

TEST_F(SelectDrag, LeavesACircleOutThatOneOutlinePointLeaves) {
  Add(kTypeCircle, 0, 0, 1);
  Drag(-0.7, -0.7, 0.49, 0.7);
  EXPECT_TRUE(Marked().empty());
  EXPECT_EQ(sketch.selected, -1);
}

TEST_F(SelectDrag, AddsToTheMarksByABandWithCtrl) {
  Add(kTypeLine, 0, 0, 1);
  Add(kTypeLine, 0, 2, 1);
  Click(0.4, 0, true);
  Drag(-0.5, 1.5, 1.5, 2.5, true);
  EXPECT_EQ(Marked(), (std::vector<int>{0, 1}));
  EXPECT_EQ(sketch.selected, 1);
}

TEST_F(SelectDrag, TellsTheBandInPixels) {
  platform::Rect place;
  EXPECT_FALSE(RubberBand(place));
  Press(1, 1);
  Move(-1, 0);
  ASSERT_TRUE(RubberBand(place));
  EXPECT_TRUE(platform::SameRect(place, {420, 200, 620, 300}));
  EXPECT_TRUE(SelectDragging());
  Release(-1, 0);
  EXPECT_FALSE(RubberBand(place));
}

TEST_F(SelectDrag, GivesUpABandOnEscapeAndOnLostCapture) {
  Add(kTypeLine, 0, 0, 1);
  Press(-1, -1);
  Move(2, 2);
  EXPECT_TRUE(SelectEscape());
  EXPECT_FALSE(Release(2, 2));
  EXPECT_TRUE(Marked().empty());
  Press(-1, -1);
  Move(2, 2);
  SelectCaptureLost();
  EXPECT_FALSE(SelectDragging());
  EXPECT_TRUE(Marked().empty());
  EXPECT_FALSE(SelectEscape());
}

TEST_F(SelectDrag, MovesALineByItsBody) {
  Add(kTypeLine, 0, 0, 2);
  Drag(0.5, 0, 0.8, 0.25);
  EXPECT_NEAR(Object(0).x, 0.3, 1e-12);
  EXPECT_NEAR(Object(0).y, 0.25, 1e-12);
  EXPECT_EQ(Object(0).size, 2);
  EXPECT_EQ(Object(0).angle, 0);
  EXPECT_EQ(sketch.undoDepth, 1);
  EXPECT_EQ(Recent(), std::vector<std::u16string>{u"Moved geometry"});
  SketchUndo();
  EXPECT_EQ(Object(0).x, 0);
  EXPECT_EQ(Object(0).y, 0);
}

TEST_F(SelectDrag, TakesTheMiddleOfALineForItsBody) {
  Add(kTypeLine, 0, 0, 2);
  Drag(1, 0, 1, 1);
  EXPECT_EQ(Object(0).size, 2);
  EXPECT_NEAR(Object(0).y, 1, 1e-12);
}

TEST_F(SelectDrag, TakesNoStepWithoutMovement) {
  Add(kTypeLine, 0, 0, 2);
  const Picture before = Now();
  Press(0.5, 0);
  Move(0.5, 0);
  Release(0.5, 0);
  EXPECT_EQ(sketch.selected, 0);
  sketch.selected = -1;
  EXPECT_EQ(Now(), before);
  EXPECT_TRUE(Recent().empty());
}

TEST_F(SelectDrag, TakesOneStepForAWholeDragAndNoRounding) {
  Add(kTypeLine, 0.1, 0.7, 2);
  Press(0.6, 0.7);
  for (int i = 1; i <= 60; ++i) Move(0.6 + 0.01 * i, 0.7 - 0.02 * i);
  Move(0.6, 0.7);
  Release(0.6, 0.7);
  EXPECT_EQ(sketch.undoDepth, 1);
  EXPECT_EQ(Object(0).x, 0.1);
  EXPECT_EQ(Object(0).y, 0.7);
}

TEST_F(SelectDrag, PullsAnEndOfALineAndLeavesTheOther) {
  Add(kTypeLine, 0, 0, 2);
  Drag(2, 0, 0, 1.5);
  ExpectLine(0, 0, 0, 0, 1.5);
  EXPECT_NEAR(Object(0).size, 1.5, 1e-12);
  EXPECT_NEAR(Object(0).angle, 90, 1e-9);
  Drag(0, 0, 1, 1.5);
  ExpectLine(0, 1, 1.5, 0, 1.5);
  EXPECT_EQ(Recent().back(), u"Pulled geometry handle");
  EXPECT_EQ(sketch.undoDepth, 2);
}

TEST_F(SelectDrag, PullsAWorkAxisAsALine) {
  Add(kTypeWorkAxis, 0, 0, 2);
  sketch.selected = 0;
  Drag(2, 0, 3, 0);
  EXPECT_NEAR(Object(0).size, 3, 1e-12);
  EXPECT_EQ(Object(0).type, kTypeWorkAxis);
}

TEST_F(SelectDrag, PullsACircleByItsOutline) {
  Add(kTypeCircle, 0, 0, 2);
  Drag(0, 1, 0, 1.5);
  EXPECT_NEAR(Object(0).size, 3, 1e-12);
  EXPECT_EQ(Object(0).x, 0);
  EXPECT_EQ(Object(0).y, 0);
  Drag(0.9, 1.2, 0.3, 0.4);  // 1.5 from the centre, between the quadrants, to 0.5
  EXPECT_NEAR(Object(0).size, 1, 1e-12);
  EXPECT_EQ(LastLine(), u"Pulled geometry handle");
}

TEST_F(SelectDrag, MovesASelectedCircleByItsCentre) {
  Add(kTypeCircle, 0, 0, 2);
  sketch.selected = 0;
  Drag(0, 0, 1, 0.5);
  EXPECT_NEAR(Object(0).x, 1, 1e-12);
  EXPECT_NEAR(Object(0).y, 0.5, 1e-12);
  EXPECT_EQ(Object(0).size, 2);
  EXPECT_EQ(LastLine(), u"Moved geometry");
}

TEST_F(SelectDrag, PullsATinyCircleRatherThanMovingIt) {
  Add(kTypeCircle, 0, 0, 0.1);  // 5 pixels: the centre is within 10 of the outline
  sketch.selected = 0;
  Drag(0, 0, 1, 0);
  EXPECT_EQ(Object(0).x, 0);
  EXPECT_NEAR(Object(0).size, 2, 1e-12);
}

TEST_F(SelectDrag, ShapesASlotInItsOwnFrame) {
  Add(kTypeSlot, 1, 0, 2, 0.5, 90);
  sketch.selected = 0;
  // Corner 1 of the box, half the length down and half the width to the right.
  Drag(1.25, -1, 1.4, -1.5);
  EXPECT_NEAR(Object(0).size, 3, 1e-6);
  EXPECT_NEAR(Object(0).size2, 0.8, 1e-6);
  EXPECT_EQ(Object(0).angle, 90);
  // The middle of a flank changes the width alone and keeps the length above it.
  Drag(0.6, 0, -2, 0);
  EXPECT_NEAR(Object(0).size2, 6, 1e-6);
  EXPECT_NEAR(Object(0).size, 6, 1e-6);
}

TEST_F(SelectDrag, KeepsASlotsWidthWhenItsEndIsPulled) {
  Add(kTypeSlot, 0, 0, 2, 0.5);
  sketch.selected = 0;
  Drag(1, 0, 1.5, 0);
  EXPECT_NEAR(Object(0).size, 3, 1e-6);
  EXPECT_NEAR(Object(0).size2, 0.5, 1e-12);
}

TEST_F(SelectDrag, SkewsARectangleByACorner) {
  Add(kTypeRectangle, 0, 0, 2, 1);
  Add(kTypeLine, 0, 2, 1);
  Click(1, 0.25);
  Drag(1, 0.5, 1.5, 1);
  ASSERT_EQ(sketch.objectCount, 5);
  ExpectLine(0, -1, -0.5, 1, -0.5);
  ExpectLine(2, 1, -0.5, 1.5, 1);
  ExpectLine(3, 1.5, 1, -1, 0.5);
  ExpectLine(4, -1, 0.5, -1, -0.5);
  EXPECT_EQ(sketch.undoDepth, 1);
  EXPECT_EQ(LastLine(), u"Pulled geometry handle");
  for (const int i : {0, 2, 3, 4}) EXPECT_EQ(Object(i).group, 0);
}

TEST_F(SelectDrag, SkewsARectangleByTheMiddleOfAnEdge) {
  Add(kTypeRectangle, 0, 0, 2, 1);
  sketch.selected = 0;
  Drag(0, 0.5, 0.7, 1.5);
  ASSERT_EQ(sketch.objectCount, 4);
  ExpectLine(0, -1, -0.5, 1, -0.5);
  ExpectLine(1, 1, -0.5, 1.7, 1.5);
  ExpectLine(2, 1.7, 1.5, -0.3, 1.5);
  ExpectLine(3, -0.3, 1.5, -1, -0.5);
}

TEST_F(SelectDrag, BringsTheRectangleBackByUndo) {
  Add(kTypeRectangle, 0, 0, 2, 1, 0);
  sketch.selected = 0;
  const Picture before = Now();
  Drag(1, 0.5, 1.5, 1);
  EXPECT_EQ(sketch.objectCount, 4);
  SketchUndo();
  EXPECT_EQ(Now(), before);
  EXPECT_EQ(Object(0).type, kTypeRectangle);
}

TEST_F(SelectDrag, RefusesToSkewWithoutRoomForThreeSides) {
  Add(kTypeRectangle, 0, 0, 2, 1);
  for (int i = 1; i < 94; ++i) Add(kTypeWorkPoint, 4, 2, 0);
  sketch.selected = 0;
  const Picture before = Now();
  Press(1, 0.5);
  EXPECT_TRUE(Move(1.5, 1));
  EXPECT_EQ(SketchStatus(), u"Not enough room to create skewable sides.");
  EXPECT_FALSE(SelectDragging());
  EXPECT_EQ(Now(), before);
  EXPECT_EQ(Object(0).type, kTypeRectangle);
}

TEST_F(SelectDrag, SkewsWithExactlyThreePlacesLeft) {
  Add(kTypeRectangle, 0, 0, 2, 1);
  for (int i = 1; i < 93; ++i) Add(kTypeWorkPoint, 4, 2, 0);
  sketch.selected = 0;
  Drag(1, 0.5, 1.5, 1);
  EXPECT_EQ(sketch.objectCount, 96);
}

TEST_F(SelectDrag, MovesARectangleByItsEdgeBetweenHandles) {
  Add(kTypeRectangle, 0, 0, 2, 1);
  Drag(0.5, 0.5, 0.5, 1);
  EXPECT_EQ(Object(0).type, kTypeRectangle);
  EXPECT_NEAR(Object(0).y, 0.5, 1e-12);
}

TEST_F(SelectDrag, MovesAGroupWholeEvenByAHandle) {
  Add(kTypeLine, 0, 0, 2, 0, 0, 7);
  Add(kTypeCircle, 5, 5, 1, 0, 0, 7);
  Add(kTypeLine, 0, 1, 2);
  Drag(2, 0, 2.5, -1);
  EXPECT_NEAR(Object(0).x, 0.5, 1e-12);
  EXPECT_NEAR(Object(0).y, -1, 1e-12);
  EXPECT_EQ(Object(0).size, 2);
  EXPECT_NEAR(Object(1).x, 5.5, 1e-12);
  EXPECT_NEAR(Object(1).y, 4, 1e-12);
  EXPECT_EQ(Object(2).y, 1);
  EXPECT_EQ(LastLine(), u"Moved geometry");
}

TEST_F(SelectDrag, MovesAllMarkedObjects) {
  Add(kTypeLine, 0, 0, 2);
  Add(kTypeRectangle, 0, 2, 2, 1);
  Add(kTypeLine, 0, 1, 2);
  Click(0.5, 0, true);
  Click(0.5, 1.5, true);
  Drag(1, 2, 1.3, 2.4);  // a corner of the rectangle would skew it alone
  EXPECT_EQ(sketch.objectCount, 3);
  EXPECT_NEAR(Object(0).x, 0.3, 1e-12);
  EXPECT_NEAR(Object(0).y, 0.4, 1e-12);
  EXPECT_NEAR(Object(1).x, 0.3, 1e-12);
  EXPECT_NEAR(Object(1).y, 2.4, 1e-12);
  EXPECT_EQ(Object(2).x, 0);
}

TEST_F(SelectDrag, KeepsTheSelectionWhoseHandleIsUnderThePointer) {
  Add(kTypeLine, 0, 0, 2);
  Add(kTypeLine, 2, -1, 2, 0, 90);  // passes through the end of the first
  sketch.selected = 0;
  Press(2, 0.03);  // the other's edge is nearer than the first's
  Release(2, 0.03);
  EXPECT_EQ(sketch.selected, 0);
  sketch.hidden[0] = 1;
  Press(2, 0.03);
  Release(2, 0.03);
  EXPECT_EQ(sketch.selected, 1);
}

TEST_F(SelectDrag, TellsThatAnObjectIsLockedAndMovesNothing) {
  Add(kTypeLine, 0, 0, 2);
  sketch.locked[0] = 1;
  const Picture before = Now();
  Press(1.5, 0);
  EXPECT_EQ(sketch.selected, 0);
  EXPECT_EQ(SketchStatus(), u"This object is locked. Right-click it in Operations to unlock.");
  EXPECT_FALSE(Move(1.5, 1));
  EXPECT_FALSE(Release(1.5, 1));
  sketch.selected = -1;
  EXPECT_EQ(Now(), before);
}

TEST_F(SelectDrag, TakesBackAMovedDragOnEscape) {
  Add(kTypeRectangle, 0, 0, 2, 1);
  sketch.selected = 0;
  const Picture before = Now();
  Press(1, 0.5);
  Move(2, 2);
  EXPECT_EQ(sketch.objectCount, 4);
  EXPECT_TRUE(SelectEscape());
  EXPECT_EQ(Now(), before);
  EXPECT_FALSE(Move(3, 3));
  EXPECT_EQ(Now(), before);
  EXPECT_EQ(LastLine(), u"Undo");
}

TEST_F(SelectDrag, TakesNothingBackWhenADragHasNotMoved) {
  Add(kTypeLine, 0, 0, 2);
  PushSketchUndo();
  Press(0.5, 0);
  SelectEscape();
  EXPECT_EQ(sketch.undoDepth, 1);
}

TEST_F(SelectDrag, KeepsWhatMovedWhenTheCaptureIsLost) {
  Add(kTypeLine, 0, 0, 2);
  Press(0.5, 0);
  Move(0.5, 1);
  SelectCaptureLost();
  EXPECT_NEAR(Object(0).y, 1, 1e-12);
  EXPECT_EQ(sketch.undoDepth, 1);
  EXPECT_EQ(LastLine(), u"Moved geometry");
  EXPECT_FALSE(Move(0.5, 2));
}

TEST_F(SelectDrag, LetsGoWhenAnUndoComesBetween) {
  Add(kTypeLine, 0, 0, 2);
  sketch.selected = 0;
  const Picture before = Now();
  Press(0.5, 0);
  Move(0.5, 1);
  SketchUndo();
  Move(0.5, 2);
  Release(0.5, 2);
  EXPECT_EQ(Now(), before);
}

TEST_F(SelectDrag, LetsGoWhenTheObjectsChangeMeanwhile) {
  Add(kTypeLine, 0, 0, 2);
  Press(0.5, 0);
  RemoveSketchObject(0);
  sketch.selected = -1;
  EXPECT_TRUE(Move(0.5, 2));
  EXPECT_FALSE(SelectDragging());
  EXPECT_EQ(sketch.objectCount, 0);
}

TEST_F(SelectDrag, LetsGoWhenALockComesBetweenWithAllStepsTaken) {
  Add(kTypeLine, 0, 0, 2);
  for (int i = 0; i < 24; ++i) PushSketchUndo();
  Press(0.5, 0);
  Move(0.5, 1);
  Command(kIdCadLock);
  EXPECT_EQ(sketch.undoDepth, 24);
  Move(0.5, 2);
  EXPECT_FALSE(SelectDragging());
  EXPECT_NEAR(Object(0).y, 1, 1e-12);
  EXPECT_EQ(sketch.locked[0], 1);
}

TEST_F(SelectDrag, LetsGoWhenAnotherObjectTakesTheSamePlace) {
  Add(kTypeLine, 0, 0, 2);
  Press(0.5, 0);
  Command(kIdCadCut);
  Command(kIdCadPaste);  // one object again, the selected one, beside the old place
  ASSERT_EQ(sketch.objectCount, 1);
  Move(0.5, 1);
  Release(0.5, 1);
  EXPECT_EQ(Object(0).x, 0.2);
  EXPECT_EQ(Object(0).y, 0.2);
}

TEST_F(SelectDrag, StopsAtTheLimitOfCoordinates) {
  Add(kTypeLine, 999999.5, 0, 0.4);
  canvasView.panX = -99999950;  // the line's start at the middle of the canvas
  Press(0.2, 0);
  Move(0.4, 0);
  EXPECT_NEAR(Object(0).x, 999999.7, 1e-6);
  Move(0.75, 0);
  EXPECT_NEAR(Object(0).x, 999999.7, 1e-6);
  Release(0.75, 0);
  EXPECT_LT(Object(0).x, kSketchLimit);
}

TEST_F(SelectDrag, SnapsAPulledEndToAnotherObject) {
  Add(kTypeLine, 0.3, 0, 1);
  Add(kTypeLine, 2.013, 1.007, 1);
  sketch.snapOn = true;
  Drag(1.3, 0, 2.05, 1.03);
  ExpectLine(0, 0.3, 0, 2.013, 1.007);
  // Its own ends are no targets: the start is not drawn to the end 8 pixels away.
  sketch.objects[0] = {kTypeLine, 0, -2, -2, 0.3, 0, 0};
  Drag(-1.7, -2, -1.93, -2);
  ExpectLine(0, -2, -2, -1.95, -2);  // the raster of 0.05
}

TEST_F(SelectDrag, SnapsTheAnchorOfWhatMoves) {
  Add(kTypeLine, 0.3, 0.5, 1);
  sketch.snapOn = true;
  Drag(0.8, 0.5, 1.83, 0.52);
  EXPECT_NEAR(Object(0).x, 1.35, 1e-12);  // 1.33 by the pointer
  EXPECT_NEAR(Object(0).y, 0.5, 1e-12);
  platform::PointerEvent event = At(1.85, 0.5);
  Press(1.85, 0.5);
  event = At(1.87, 0.53);
  event.alt = true;
  SelectMove(event);
  SelectRelease(event);
  EXPECT_NEAR(Object(0).x, 1.37, 1e-12);  // Alt held
  EXPECT_NEAR(Object(0).y, 0.53, 1e-12);
}

TEST_F(SelectDrag, SnapsToNothingThatMovesAlong) {
  Add(kTypeLine, 1.5, 1.5, 1);
  Add(kTypeLine, 1.5, 1.5, 1, 0, 90);  // shares the anchor
  Click(2, 1.5, true);
  Click(1.5, 2, true);
  sketch.snapOn = true;
  Drag(2, 1.5, 2.06, 1.5);
  EXPECT_NEAR(Object(0).x, 1.55, 1e-12);
  EXPECT_NEAR(Object(1).x, 1.55, 1e-12);
  EXPECT_EQ(sketch.hidden[0] + sketch.hidden[1], 0);
}

TEST_F(SelectDrag, OffersTheHandlesThatADragTakes) {
  platform::PointF points[9];
  EXPECT_EQ(SelectionHandles(points), 0);
  Add(kTypeLine, 0, 0, 2);
  Add(kTypeRectangle, 0, 0, 2, 1);
  Add(kTypeCircle, 0, 0, 2);
  Add(kTypeWorkPoint, 0, 0, 0);
  sketch.selected = 0;
  ASSERT_EQ(SelectionHandles(points), 2);
  EXPECT_EQ(points[0].x, 520);
  EXPECT_NEAR(points[1].x, 720, 1);
  sketch.selected = 1;
  ASSERT_EQ(SelectionHandles(points), 8);
  EXPECT_NEAR(points[0].x, 420, 1);  // the first corner, to the left and below
  EXPECT_NEAR(points[0].y, 350, 1);
  sketch.selected = 2;
  EXPECT_EQ(SelectionHandles(points), 5);  // the centre moves it
  sketch.selected = 3;
  EXPECT_EQ(SelectionHandles(points), 0);
  sketch.hidden[1] = 1;
  sketch.selected = 1;
  EXPECT_EQ(SelectionHandles(points), 0);
}

}  // namespace
}  // namespace morva
