// The cross that keys move over the drawing: each tool worked by keys alone.

#include "cad/canvas/key_cross.h"

#include <cmath>
#include <numbers>

#include "app/palette.h"
#include "app/panels.h"
#include "cad/canvas/canvas_paint.h"
#include "cad/canvas/canvas_pointer.h"
#include "cad/geometry/canvas_view.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/geometry_tools.h"
#include "cad/tools/select_drag.h"
#include "unit/cad/draw_stage.h"

namespace morva {
namespace {

using platform::kKeyDown;
using platform::kKeyEnter;
using platform::kKeyEscape;
using platform::kKeyLeft;
using platform::kKeyRight;
using platform::kKeySpace;
using platform::kKeyTab;
using platform::kKeyUp;

struct Place {
  double x = 0;
  double y = 0;
};

class KeyCrossTest : public DrawStage {
 protected:
  KeyCrossTest() {
    sketch.snapOn = true;
    support::MakeText(kIdCadHint, platform::ControlKind::Label);
    sketch.metric = true;  // lines of the grid are 10 mm apart, 40 pixels at zoom 1
  }

  static bool Hit(int key, bool ctrl = false, bool shift = false, bool alt = false) {
    platform::KeyEvent event;
    event.key = key;
    event.ctrl = ctrl;
    event.shift = shift;
    event.alt = alt;
    return CanvasKey(event);
  }
  static void Hits(int key, int times) {
    for (int i = 0; i < times; ++i) Hit(key);
  }
  // By whole lines of the grid, as a user would: the way to the right, then up.
  static void Go(int right, int up) {
    Hits(right < 0 ? kKeyLeft : kKeyRight, std::abs(right));
    Hits(up < 0 ? kKeyDown : kKeyUp, std::abs(up));
  }
  static void Enter() { Hit(kKeyEnter); }
  static void Start() { Hit(kKeyRight); }  // the first arrow brings the cross
  static bool Stands() {
    Place at;
    return KeyCross(at.x, at.y);
  }
  static void ExpectCross(double x, double y) {
    Place at;
    ASSERT_TRUE(KeyCross(at.x, at.y));
    EXPECT_NEAR(at.x, x, 1e-9);
    EXPECT_NEAR(at.y, y, 1e-9);
  }
  static void ExpectInView() {
    platform::Point at;
    EXPECT_TRUE(KeyCrossPixel(at)) << at.x << " " << at.y;
  }
  static bool PointAt(int x, int y) {
    platform::PointerEvent event;
    event.action = platform::PointerAction::Move;
    event.x = x;
    event.y = y;
    return CanvasPointer(event);
  }
  static void PointerLeaves() {
    platform::PointerEvent event;
    event.action = platform::PointerAction::Leave;
    CanvasPointer(event);
  }
  static std::u16string Told() {
    platform::ViewValue value;
    for (int n = 0; const Handlers* handlers = HandlersOf(kViewCadCanvas, n); ++n) {
      if (handlers->value) handlers->value(value);
    }
    return value.words;
  }
};

TEST_F(KeyCrossTest, BeginsInTheMiddleOfTheViewOnALineOfTheGrid) {
  PanCanvas(-93, 0);  // the middle stands at X 23.25
  EXPECT_FALSE(Stands());
  EXPECT_TRUE(Hit(kKeyLeft));
  ExpectCross(20, 0);
}

TEST_F(KeyCrossTest, BeginsAtThePlaceThatWasPointedAtLastAsAClickThereSnaps) {
  Put(kTypeCircle, 33.3, 21.7, 10);
  PointAt(PixelX(33.3) + 3, PixelY(21.7) - 2);
  Start();
  ExpectCross(33.3, 21.7);
  Hit(kKeyEscape);
  // Far from everything: the snap grid of 1 mm; 602 pixels are 20.5 mm.
  PointAt(601, 130);
  Start();
  ExpectCross(20, 43);
  Hit(kKeyEscape);
  sketch.snapOn = false;
  PointAt(603, 131);
  Start();
  ExpectCross(21, 42);
}

TEST_F(KeyCrossTest, BeginsInTheMiddleOnceThePointerHasLeft) {
  PointAt(10, 20);
  PointerLeaves();
  Start();
  ExpectCross(0, 0);
}

TEST_F(KeyCrossTest, GoesFromLineToLineOfTheGrid) {
  Start();
  Hit(kKeyRight);
  ExpectCross(10, 0);
  Hit(kKeyUp);
  ExpectCross(10, 10);
  Hit(kKeyLeft, false, true);
  ExpectCross(-90, 10);
  Hit(kKeyDown, false, true);
  ExpectCross(-90, -90);
  Hit(kKeyUp, false, false, true);
  ExpectCross(-90, -89);
  Hit(kKeyRight, false, false, true);
  ExpectCross(-89, -89);
  // From beside a line to the next one, either way.
  Hit(kKeyRight);
  ExpectCross(-80, -89);
  Hit(kKeyDown);
  ExpectCross(-80, -90);
  Hit(kKeyUp, false, false, true);
  Hit(kKeyUp, false, true);
  ExpectCross(-80, 10);
}

TEST_F(KeyCrossTest, LeavesALineOnWhichItStandsButForRounding) {
  // The end of a line comes by the sketch's own cosine: a hair off 80.
  Put(kTypeLine, 0, 0, 80);
  for (const int key : {kKeyLeft, kKeyRight}) {
    PointAt(PixelX(80) + (key == kKeyLeft ? 1 : 2), PixelY(0));
    Start();
    Place at;
    ASSERT_TRUE(KeyCross(at.x, at.y));
    ASSERT_NE(at.x, 80);
    ASSERT_NEAR(at.x, 80, 1e-5);
    Hit(key);
    ExpectCross(key == kKeyLeft ? 70 : 90, 0);
  }
}

TEST_F(KeyCrossTest, StepsByTheGridsOfTheInch) {
  sketch.metric = false;
  Start();
  Hits(kKeyRight, 3);
  ExpectCross(1.2, 0);
  for (int i = 0; i < 8; ++i) Hit(kKeyUp, false, false, true);
  ExpectCross(1.2, 0.4);
  Hit(kKeyLeft, false, true);
  ExpectCross(-2.8, 0.4);
}

TEST_F(KeyCrossTest, TakesFinerStepsWhereTheViewIsEnlarged) {
  sketch.metric = false;
  SetCanvasZoom(40);  // 4000 pixels an inch: 0.05 are 200, 0.005 are 20
  Start();
  Hit(kKeyRight, false, false, true);
  ExpectCross(0.005, 0);
  SetCanvasZoom(8);  // 0.05 are 40 pixels
  Hit(kKeyRight, false, false, true);
  ExpectCross(0.05, 0);
}

TEST_F(KeyCrossTest, TheViewFollows) {
  Start();
  // 520 pixels to the right of the middle the canvas ends; 40 of them stay free.
  Hits(kKeyRight, 12);
  EXPECT_EQ(canvasView.panX, 0);
  Hit(kKeyRight);
  EXPECT_EQ(canvasView.panX, -40);
  ExpectInView();
  Hits(kKeyUp, 7);  // 280 pixels of 300
  EXPECT_EQ(canvasView.panY, 20);
  ExpectInView();
  for (int i = 0; i < 50; ++i) {
    Hit(kKeyLeft, false, true);
    ExpectInView();
  }
  SetCanvasZoom(40);
  Hit(kKeyDown);
  ExpectInView();
}

TEST_F(KeyCrossTest, StaysBelowTheLimitOfCoordinates) {
  SetCanvasZoom(0.1);
  Start();
  for (int i = 0; i < 10100; ++i) Hit(kKeyRight, false, true);
  ExpectCross(999999, 0);
  EXPECT_LT(999999, kSketchLimit);
  ExpectInView();
}

TEST_F(KeyCrossTest, BeginsAnewWhereTheViewHasLeftIt) {
  Start();
  Go(1, 1);
  for (int i = 0; i < 30; ++i) Hit(kKeyRight, true);  // the view by 600 pixels
  ASSERT_EQ(canvasView.panX, 600);
  const int objects = sketch.objectCount;
  StartDragTool(kPointTool);
  Enter();  // nobody sees where: it only shows the cross
  EXPECT_EQ(sketch.objectCount, objects);
  ExpectCross(-150, 0);
  Enter();
  EXPECT_EQ(sketch.objectCount, objects + 1);
}

TEST_F(KeyCrossTest, EndsWithAMoveOfThePointerAndWithEscape) {
  PointAt(300, 200);
  Start();
  PointAt(300, 200);  // told anew, as after a popup
  EXPECT_TRUE(Stands());
  PointerLeaves();
  PointAt(300, 200);
  EXPECT_TRUE(Stands());
  PointAt(301, 200);
  EXPECT_FALSE(Stands());
  Start();
  EXPECT_TRUE(Hit(kKeyEscape));
  EXPECT_FALSE(Stands());
  Start();
  StartMethod(kIdMethodLine);
  EXPECT_TRUE(Hit(kKeyEscape));  // the tool, and the cross with it
  EXPECT_FALSE(Stands());
  EXPECT_EQ(tools.constructionMethod, 0);
  Start();
  platform::PointerEvent press;
  press.action = platform::PointerAction::Press;
  press.button = platform::PointerButton::Middle;
  CanvasPointer(press);
  EXPECT_FALSE(Stands());
}

TEST_F(KeyCrossTest, GoesWithTheUnit) {
  Start();
  Go(2, 0);
  SwitchSketchUnits(false);
  EXPECT_FALSE(Stands());
}

TEST_F(KeyCrossTest, LeavesTheKeysThatShiftAndZoom) {
  Start();
  Go(3, 2);
  platform::Point before;
  ASSERT_TRUE(KeyCrossPixel(before));
  EXPECT_TRUE(Hit(kKeyRight, true));
  EXPECT_EQ(canvasView.panX, 20);
  ExpectCross(30, 20);
  EXPECT_TRUE(Hit('+'));
  ExpectCross(30, 20);
  platform::Point after;
  ASSERT_TRUE(KeyCrossPixel(after));
  EXPECT_NEAR(after.x, before.x + 20, 1);  // it zooms about the cross
  EXPECT_NEAR(after.y, before.y, 1);
}

TEST_F(KeyCrossTest, RestsWhilePanIsOnAndInThe3DView) {
  Start();
  SetPanTool(true);
  EXPECT_FALSE(CrosshairShown());
  EXPECT_FALSE(Hit(kKeyRight));
  EXPECT_FALSE(Hit(kKeyEnter));
  ExpectCross(0, 0);
  SetPanTool(false);
  EXPECT_TRUE(CrosshairShown());
  canvasView.modelView = true;
  EXPECT_FALSE(CrosshairShown());
  EXPECT_FALSE(Hit(kKeyRight));
  canvasView.modelView = false;
}

TEST_F(KeyCrossTest, DrawsALine) {
  StartMethod(kIdMethodLine);
  Start();
  Go(-3, 2);
  Enter();
  EXPECT_EQ(Status(), u"Pick the second construction point.");
  Go(7, 0);
  ASSERT_TRUE(tools.previewValid);
  EXPECT_NEAR(tools.previewObject.size, 70, 1e-9);
  Hit(kKeySpace);
  ASSERT_EQ(sketch.objectCount, 1);
  ExpectObject(Last(), kTypeLine, -30, 20, 70, 0, 0);
  EXPECT_EQ(tools.constructionMethod, kIdMethodLine);
}

TEST_F(KeyCrossTest, DrawsTheVeryPlaceOfTheCrossWithoutSnap) {
  sketch.snapOn = false;
  SetCanvasZoom(0.37);  // a pixel is two thirds of a millimetre
  StartMethod(kIdMethodLine);
  Start();
  Hit(kKeyRight, false, false, true);
  Enter();
  Hit(kKeyUp, false, false, true);
  Hit(kKeyUp);
  Enter();
  ASSERT_EQ(sketch.objectCount, 1);
  ExpectObject(Last(), kTypeLine, 1, 0, 10, 0, 90);
}

TEST_F(KeyCrossTest, SnapsAsAClickAndPassesSnapByWithAlt) {
  Put(kTypeCircle, 12, 1, 60);
  StartDragTool(kPointTool);
  Start();
  Go(1, 0);  // 2 mm and 1 mm from the center: 9 of the 10 pixels of a snap
  Enter();
  ExpectObject(Last(), kTypeWorkPoint, 12, 1, 0, 0, 0);
  Hit(kKeyEnter, false, false, true);
  EXPECT_EQ(Last().x, 10);
  EXPECT_EQ(Last().y, 0);
}

TEST_F(KeyCrossTest, DrawsARectangleACircleASlotAndAPolygon) {
  StartMethod(kIdMethodRectangle);
  Start();
  Go(-4, -1);
  Enter();
  Go(2, 3);
  Enter();
  ASSERT_EQ(sketch.objectCount, 1);
  ExpectObject(Last(), kTypeRectangle, -30, 5, 20, 30, 0);

  StartMethod(kIdMethodCircleRadius);
  Go(5, 0);  // to 30, 20
  Enter();
  Go(2, 0);
  Enter();
  ASSERT_EQ(sketch.objectCount, 2);
  ExpectObject(Last(), kTypeCircle, 30, 20, 40, 0, 0);

  StartMethod(kIdMethodSlotPoints);
  Go(-2, -6);  // to 30, -40
  Enter();
  Go(4, 0);
  Enter();
  Hit(kKeyUp);
  Enter();
  ASSERT_EQ(sketch.objectCount, 3);
  ExpectObject(Last(), kTypeSlot, 50, -40, 60, 20, 0);

  StartMethod(kIdMethodPolygon);
  Go(-12, 0);  // to -50, -30
  Enter();
  Go(1, 0);
  Enter();
  ASSERT_EQ(sketch.objectCount, 9);
  EXPECT_NEAR(Last().size, 10, 1e-5);  // a side of six is as long as its radius
}

TEST_F(KeyCrossTest, OpensTheSizesOfAPreviewAndTakesThem) {
  StartMethod(kIdMethodCircleRadius);
  Start();
  Enter();
  Hit(kKeyTab);
  EXPECT_FALSE(tools.sizePanelShown);  // nothing is shown yet
  Go(2, 0);
  Hit(kKeyTab);
  ASSERT_TRUE(tools.sizePanelShown);
  Type(kIdCadSizeBox1, u"12.5");
  BoxKey(kKeyEnter);
  ASSERT_EQ(sketch.objectCount, 1);
  ExpectObject(Last(), kTypeCircle, 0, 0, 12.5, 0, 0);
  ExpectCross(20, 0);  // and goes on from there
}

TEST_F(KeyCrossTest, DragsAWorkAxisAndASlotByTwoPresses) {
  StartDragTool(kAxisTool);
  Start();
  Enter();
  EXPECT_TRUE(tools.dragActive);
  EXPECT_EQ(platform::TextOf(kIdCadHint),
            u"Enter sets where it begins, Enter again where it ends.");
  Go(0, 3);
  EXPECT_TRUE(tools.dragActive);
  EXPECT_EQ(tools.dragEndY, 30);
  Enter();
  ASSERT_EQ(sketch.objectCount, 1);
  ExpectObject(Last(), kTypeWorkAxis, 0, 0, 30, 0, 90);
  EXPECT_FALSE(tools.dragActive);

  StartMethod(kIdMethodSlotDrag);
  Go(2, 0);
  Enter();
  Go(4, 0);
  Enter();
  ASSERT_EQ(sketch.objectCount, 2);
  ExpectObject(Last(), kTypeSlot, 40, 30, 40, 6, 0);
}

TEST_F(KeyCrossTest, GivesUpADragWithTheToolOrWhenThePointerMoves) {
  PointAt(300, 200);
  StartDragTool(kAxisTool);
  Start();
  Enter();
  Go(2, 0);
  PointAt(310, 200);
  EXPECT_FALSE(tools.dragActive);
  EXPECT_EQ(tools.dragTool, kAxisTool);
  Start();
  Enter();
  ASSERT_TRUE(tools.dragActive);
  Hit(kKeyEscape);
  EXPECT_FALSE(tools.dragActive);
  EXPECT_EQ(tools.dragTool, 0);
  EXPECT_EQ(sketch.objectCount, 0);
}

TEST_F(KeyCrossTest, LeavesADragOfThePointerAlone) {
  StartDragTool(kAxisTool);
  platform::PointerEvent press;
  press.action = platform::PointerAction::Press;
  press.button = platform::PointerButton::Left;
  press.x = 520;
  press.y = 300;
  CanvasPointer(press);
  ASSERT_TRUE(tools.dragActive);
  EXPECT_FALSE(Hit(kKeyRight));
  EXPECT_FALSE(Hit(kKeyEnter));
  EXPECT_TRUE(tools.dragActive);
  EXPECT_FALSE(Stands());
}

TEST_F(KeyCrossTest, PicksATangentSide) {
  Put(kTypeCircle, 0, 0, 40);
  StartMethod(kIdMethodLineTangent);
  Start();
  Go(-4, 0);
  Enter();
  Go(3, 1);  // on the circle, in its upper half
  Enter();
  ASSERT_EQ(sketch.objectCount, 2);
  // The tangent from 40 away to a circle of 20: 30 degrees up, 20 root 3 long.
  EXPECT_NEAR(Last().angle, 30, 1e-9);
  EXPECT_NEAR(Last().size, 20 * std::numbers::sqrt3, 1e-9);
}

TEST_F(KeyCrossTest, Trims) {
  Put(kTypeLine, -50, 0, 100);
  Put(kTypeLine, 0, -50, 100, 0, 90);
  StartGeometryTool(kGeometryTrim);
  Start();
  Go(3, 0);
  EXPECT_EQ(tools.hoverObject, 0);
  EXPECT_EQ(tools.previewSegmentCount, 1);  // shown before
  PointerLeaves();                          // the pointer, which points at nothing meanwhile
  EXPECT_EQ(tools.hoverObject, 0);
  EXPECT_EQ(tools.previewSegmentCount, 1);
  Enter();
  ASSERT_EQ(sketch.objectCount, 2);
  EXPECT_NEAR(sketch.objects[0].size, 50, 1e-5);
}

TEST_F(KeyCrossTest, JoinsTwoLines) {
  Put(kTypeLine, -50, 0, 30);
  Put(kTypeLine, 0, 20, 30, 0, 90);
  Start();
  Go(-4, 0);
  Enter();
  ASSERT_EQ(sketch.selected, 0);
  StartGeometryTool(kGeometryJoin);
  Go(4, 3);
  Enter();
  EXPECT_NEAR(sketch.objects[0].size, 50, 1e-5);  // both reach the origin
  EXPECT_NEAR(sketch.objects[1].size, 50, 1e-5);
}

TEST_F(KeyCrossTest, BringsALineToACircle) {
  Put(kTypeLine, -40, 0, 10);
  Put(kTypeCircle, 0, 0, 40);
  SetSelected(0);
  StartGeometryTool(kGeometryTangent);
  Start();
  Go(-1, -1);
  Enter();
  EXPECT_NEAR(sketch.objects[0].size, 20 * std::numbers::sqrt3, 1e-9);
  EXPECT_NEAR(std::remainder(sketch.objects[0].angle + 30, 360), 0, 1e-9);
}

TEST_F(KeyCrossTest, PicksThePivotOfRevolve) {
  Put(kTypeLine, 0, 0, 30);
  SetSelected(0);
  StartGeometryTool(kGeometryPivot);
  Start();
  Go(5, 3);
  Enter();
  EXPECT_EQ(tools.pivotX, 50);
  EXPECT_EQ(tools.pivotY, 30);
}

TEST_F(KeyCrossTest, PicksADimensionAndMeasures) {
  Put(kTypeCircle, 0, 0, 40);
  StartMethod(kIdMethodDimension);
  Start();
  Enter();
  EXPECT_EQ(sketch.selected, 0);
  EXPECT_EQ(platform::TextOf(kIdCadDimensionValue), u"40.0000");
  EXPECT_EQ(platform::FocusedId(), kIdCadDimensionValue);

  StartMethod(kIdMethodMeasure);
  Go(3, 0);
  Enter();
  Go(4, 4);
  Enter();
  EXPECT_EQ(tools.constructionClicks, 2);
  EXPECT_EQ(tools.pointsX[0], 30);
  EXPECT_EQ(tools.pointsX[1], 70);
  EXPECT_EQ(tools.pointsY[1], 40);
}

TEST_F(KeyCrossTest, SelectsAndMarksAndMovesNothing) {
  Put(kTypeLine, -40, 0, 80);
  Put(kTypeLine, -40, 30, 80);
  const SketchObject before = sketch.objects[0];
  Start();
  Hit(kKeyRight);
  Enter();
  EXPECT_EQ(sketch.selected, 0);
  Go(0, 3);
  EXPECT_EQ(tools.hoverObject, 1);
  Hit(kKeyEnter, true);
  EXPECT_TRUE(tools.multiSelect[0]);
  EXPECT_TRUE(tools.multiSelect[1]);
  Hit(kKeySpace, true);
  EXPECT_FALSE(tools.multiSelect[1]);
  Go(0, 2);
  Enter();  // empty ground
  EXPECT_EQ(sketch.selected, -1);
  EXPECT_FALSE(SelectDragging());
  EXPECT_TRUE(SameGeometry(sketch.objects[0], before));
  EXPECT_EQ(sketch.undoDepth, 0);
}

TEST_F(KeyCrossTest, HandsItsPlaceToABuilderThatWaits) {
  static double took;
  took = 0;
  cadHooks.takePress = [](const platform::PointerEvent& event) {
    double y = 0;
    FromCanvas(event.x, event.y, took, y);
    return true;
  };
  sketch.snapOn = false;
  SetCanvasZoom(0.37);
  Start();
  Hit(kKeyRight);
  Enter();
  EXPECT_EQ(took, 10);
  EXPECT_FALSE(HasSketchSelection());
}

TEST_F(KeyCrossTest, IsPaintedWhereItStands) {
  platform::Events events = platform::Listener();
  events.paint = [](int, platform::Canvas& canvas) { PaintCanvas(canvas); };
  platform::ListenTo(&events);
  // The arms of a cross at this pixel, 12 pixels long with 5 of them free around the middle.
  const auto shows = [](double x, double y) {
    for (const headless::DrawCall& call : Paint()) {
      if (call.name != "PaintSegments" || call.colours[0] != kMainText) continue;
      const std::vector<double>& n = call.numbers;
      if (n.size() >= 16 && n[0] == x - 12 && n[1] == y && n[2] == x - 5 && n[3] == y) return true;
    }
    return false;
  };
  StartMethod(kIdMethodLine);
  PointAt(300, 200);
  EXPECT_TRUE(shows(300, 200));
  PointerLeaves();
  Start();
  Go(2, 1);
  EXPECT_TRUE(shows(600, 260));
  EXPECT_FALSE(shows(300, 200));
  PointAt(300, 201);
  EXPECT_FALSE(shows(600, 260));
  EXPECT_TRUE(shows(300, 201));
  StartDragTool(0);  // SELECT has no cross of the pointer, but that of the keys
  EXPECT_FALSE(shows(300, 201));
  PointerLeaves();
  Start();
  EXPECT_TRUE(shows(520, 300));
  // What a drag snapped to before is no place of a click that selects.
  SetSnapResult(true, false);
  for (const headless::DrawCall& call : Paint()) EXPECT_NE(call.name, "FrameArea");
  Hit(kKeyEscape);
  EXPECT_FALSE(shows(520, 300));
}

TEST_F(KeyCrossTest, IsTold) {
  Put(kTypeCircle, 30, 20, 20);
  EXPECT_EQ(Told(), u"1 object");
  Start();
  Go(3, 0);
  EXPECT_EQ(Status(), u"CAD cursor  X 30.0000  Y 0.0000 mm");
  EXPECT_EQ(Told(), u"1 object, cross  X 30.0000  Y 0.0000 mm");
  Go(0, 2);
  EXPECT_EQ(Told(), u"1 object, cross  X 30.0000  Y 20.0000 mm  Object 1  size 20.0000");
  Hit(kKeyEscape);
  EXPECT_EQ(Told(), u"1 object");
}

}  // namespace
}  // namespace morva
