#include "cad/canvas/key_cross.h"

#include <cmath>

#include "cad/geometry/canvas_view.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"
#include "cad/tools/dimensions.h"
#include "cad/tools/draw_tools.h"
#include "cad/tools/geometry_tools.h"
#include "cad/tools/tool_change.h"
#include "unit/cad/canvas_fixture.h"

namespace morva {
namespace {

using platform::kKeyDown;
using platform::kKeyEnter;
using platform::kKeyEscape;
using platform::kKeyLeft;
using platform::kKeyRight;
using platform::kKeySpace;
using platform::kKeyUp;

// A step is 0.05 inch, 5 pixels, and 1 mm in a drawing of millimetres.
class KeyCross : public CanvasTest {
 protected:
  static void Times(int count, int key) {
    for (int i = 0; i < count; ++i) EXPECT_TRUE(Key(key)) << key;
  }
  static void Far(int key) {
    platform::KeyEvent event;
    event.key = key;
    event.shift = true;
    headless::Focus(kViewCadCanvas);
    EXPECT_TRUE(headless::PressKey(event));
  }
};

TEST_F(KeyCross, BeginsInTheMiddleOfTheViewAndMovesByTheGrid) {
  EXPECT_EQ(KeyCrossWords(), u"");
  Key(kKeyRight);
  EXPECT_EQ(KeyCrossWords(), u"cross at X 0.0000  Y 0.0000");
  Key(kKeyRight);
  Key(kKeyUp);
  EXPECT_EQ(KeyCrossWords(), u"cross at X 0.0500  Y 0.0500");
  Far(kKeyLeft);
  Far(kKeyDown);
  EXPECT_EQ(KeyCrossWords(), u"cross at X -0.4500  Y -0.4500");
  EXPECT_TRUE(CrosshairShown());
}

TEST_F(KeyCross, BeginsWhereThePointerWas) {
  Hover(617, 203);
  Key(kKeyDown);
  EXPECT_EQ(KeyCrossWords(), u"cross at X 0.9500  Y 0.9500");
}

TEST_F(KeyCross, DrawsALineByTwoPresses) {
  StartMethod(kIdMethodLine);
  EXPECT_TRUE(Key(kKeyEnter));  // it comes up first: nobody presses where he sees nothing
  EXPECT_EQ(tools.constructionClicks, 0);
  Key(kKeyEnter);
  EXPECT_EQ(tools.constructionClicks, 1);
  Times(7, kKeyRight);
  Key(kKeySpace);
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.objects[0].type, kTypeLine);
  EXPECT_DOUBLE_EQ(sketch.objects[0].size, 0.35);
}

// With the snap off the place counts, not the pixel below it.
TEST_F(KeyCross, MeansThePlaceAndNotThePixel) {
  sketch.snapOn = false;
  canvasView.zoom = 0.83;
  StartMethod(kIdMethodLine);
  Key(kKeyEnter);
  Key(kKeyEnter);
  Times(3, kKeyUp);
  Far(kKeyRight);
  Key(kKeyEnter);
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.objects[0].x, 0);
  EXPECT_EQ(sketch.objects[0].y, 0);
  // A step of 0.05 is less than 5 pixels here, so that it is twice as much.
  EXPECT_NEAR(sketch.objects[0].size, std::hypot(1, 0.3), 1e-12);
}

TEST_F(KeyCross, DragsFromOnePressToTheNext) {
  StartDragTool(kTypeCircle + 1);
  Key(kKeyEnter);
  Key(kKeyEnter);
  EXPECT_TRUE(tools.dragActive);
  Times(10, kKeyRight);
  EXPECT_TRUE(tools.dragActive);
  Key(kKeyEnter);
  EXPECT_FALSE(tools.dragActive);
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.objects[0].type, kTypeCircle);
  EXPECT_DOUBLE_EQ(sketch.objects[0].size, 1);
}

TEST_F(KeyCross, GivesUpWhatIsDraggedThenTheToolThenItself) {
  StartDragTool(kTypeCircle + 1);
  Key(kKeyEnter);
  Key(kKeyEnter);
  Times(4, kKeyRight);
  EXPECT_TRUE(Key(kKeyEscape));
  EXPECT_FALSE(tools.dragActive);
  EXPECT_EQ(sketch.objectCount, 0);
  EXPECT_TRUE(AnyToolInHand());
  EXPECT_TRUE(Key(kKeyEscape));
  EXPECT_FALSE(AnyToolInHand());
  EXPECT_TRUE(KeyCrossUp());
  EXPECT_TRUE(Key(kKeyEscape));
  EXPECT_FALSE(KeyCrossUp());
  EXPECT_FALSE(CrosshairShown());
}

TEST_F(KeyCross, SetsPointsSelectsAndTrims) {
  Put(kTypeLine, -1, 0, 2);
  Put(kTypeLine, 0, -1, 2, 0, 90);
  Key(kKeyRight);
  Times(10, kKeyRight);
  Key(kKeySpace);
  EXPECT_EQ(sketch.selected, 0);
  StartGeometryTool(kGeometryTrim);
  Key(kKeyEnter);  // the half of the first line to the right of the second goes
  EXPECT_NEAR(sketch.objects[0].size, 1, 1e-6);
  StartDragTool(kPointTool);
  Times(2, kKeyUp);
  Key(kKeyEnter);
  const SketchObject& point = sketch.objects[sketch.objectCount - 1];
  EXPECT_EQ(point.type, kTypeWorkPoint);
  EXPECT_DOUBLE_EQ(point.x, 0.5);
  EXPECT_DOUBLE_EQ(point.y, 0.1);
}

TEST_F(KeyCross, TakesTheViewAlong) {
  Key(kKeyUp);
  for (int i = 0; i < 12; ++i) Far(kKeyUp);
  EXPECT_EQ(KeyCrossWords(), u"cross at X 0.0000  Y 6.0000");
  EXPECT_EQ(canvasView.cursorY, 24);
  EXPECT_GT(canvasView.panY, 0);
  // And stays at its place while the view is shifted and enlarged.
  Key('+');
  const platform::Point at = ToCanvas(0, 6);
  EXPECT_EQ(canvasView.cursorX, at.x);
  EXPECT_EQ(canvasView.cursorY, at.y);
  EXPECT_EQ(KeyCrossWords(), u"cross at X 0.0000  Y 6.0000");
}

TEST_F(KeyCross, IsLeftBehindByAViewThatIsShifted) {
  Key(kKeyUp);
  platform::KeyEvent shift;
  shift.key = kKeyUp;
  shift.ctrl = true;
  headless::Focus(kViewCadCanvas);
  for (int i = 0; i < 30; ++i) EXPECT_TRUE(headless::PressKey(shift));
  EXPECT_FALSE(CrosshairShown());
  EXPECT_EQ(KeyCrossWords(), u"cross at X 0.0000  Y 0.0000");
  Key(kKeyUp);
  EXPECT_EQ(KeyCrossWords(), u"cross at X 0.0000  Y 0.0500");
  EXPECT_TRUE(CrosshairShown());
}

TEST_F(KeyCross, GoesWithAMoveOfThePointerAndNotWithOneThatRests) {
  Hover(600, 300);
  Key(kKeyRight);
  Key(kKeyRight);
  Hover(600, 300);  // as when a window comes up below it
  EXPECT_TRUE(KeyCrossUp());
  Tell(At(platform::PointerAction::Leave, 0, 0));
  EXPECT_TRUE(KeyCrossUp());
  EXPECT_TRUE(CrosshairShown());
  Hover(601, 300);
  EXPECT_FALSE(KeyCrossUp());
}

TEST_F(KeyCross, NeverStandsInThe3DViewOrWhilePanIsOn) {
  canvasView.panTool = true;
  Key(kKeyRight);
  EXPECT_FALSE(KeyCrossUp());
  canvasView.panTool = false;
  canvasView.modelView = true;
  Key(kKeyRight);
  EXPECT_FALSE(KeyCrossUp());
}

TEST_F(KeyCross, StepsByAMillimetreWhereTheDrawingDoes) {
  sketch.metric = true;
  Key(kKeyRight);
  Key(kKeyRight);
  // 4 pixels a millimetre are few: two at once.
  EXPECT_EQ(KeyCrossWords(), u"cross at X 2.0000  Y 0.0000");
  canvasView.zoom = 2;
  Key(kKeyRight);
  EXPECT_EQ(KeyCrossWords(), u"cross at X 3.0000  Y 0.0000");
}

}  // namespace
}  // namespace morva
