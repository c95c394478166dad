#include "cad/canvas/canvas_pointer.h"

#include <algorithm>
#include <cmath>

#include "cad/geometry/canvas_view.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/panel/sketch_panels.h"
#include "cad/tools/dimensions.h"
#include "cad/tools/draw_tools.h"
#include "cad/tools/geometry_tools.h"
#include "cad/tools/select_drag.h"
#include "cad/tools/tool_change.h"
#include "unit/cad/canvas_fixture.h"

namespace morva {
namespace {

using platform::PointerAction;
using platform::PointerButton;

class CanvasPointerTest : public CanvasTest {
 protected:
  CanvasPointerTest() { heard.clear(); }
  static void Hear(int id, int) { heard.push_back(id); }
  static void HearAll(std::initializer_list<int> ids) {
    for (const int id : ids) {
      RegisterCommand(RouterStage::Builder, id, platform::kNotifyClick, Hear);
    }
  }
  static std::vector<int> heard;
};
std::vector<int> CanvasPointerTest::heard;

TEST_F(CanvasPointerTest, PansWithTheMiddleButton) {
  Press(100, 100, PointerButton::Middle);
  DragTo(107, 95, PointerButton::Middle);
  DragTo(110, 90, PointerButton::Middle);
  EXPECT_EQ(canvasView.panX, 10);
  EXPECT_EQ(canvasView.panY, -10);
  Release(111, 90, PointerButton::Middle);
  EXPECT_EQ(canvasView.panX, 11);
  DragTo(200, 200, PointerButton::Middle);  // released: no further move
  EXPECT_EQ(canvasView.panX, 11);
}

TEST_F(CanvasPointerTest, PansWithTheLeftButtonWhilePanIsOn) {
  EXPECT_TRUE(RouteCommand(kIdCadPan, platform::kNotifyClick));
  EXPECT_TRUE(canvasView.panTool);
  Press(100, 100);
  DragTo(130, 140);
  Release(130, 140);
  EXPECT_EQ(canvasView.panX, 30);
  EXPECT_EQ(canvasView.panY, 40);
  RouteCommand(kIdCadPan, platform::kNotifyClick);
  EXPECT_FALSE(canvasView.panTool);
  Press(100, 100);
  DragTo(130, 140);
  Release(130, 140);
  EXPECT_EQ(canvasView.panX, 30);
}

TEST_F(CanvasPointerTest, EndsPanWhenAnotherToolIsTaken) {
  for (void (*take)() : {+[] { StartMethod(kIdMethodCircleRadius); }, +[] { StartDragTool(0); },
                         +[] { StartDragTool(3); }, +[] { EnterDimensionMode(false); },
                         +[] { StartGeometryTool(kGeometryTrim); }, +[] { CancelTools(); }}) {
    RouteCommand(kIdCadPan, platform::kNotifyClick);
    EXPECT_TRUE(canvasView.panTool);
    take();
    EXPECT_FALSE(canvasView.panTool);
  }
}

TEST_F(CanvasPointerTest, PansBetweenTwoPicksOfAMethod) {
  sketch.snapOn = false;
  StartMethod(kIdMethodLine);
  Press(520, 300);
  Release(520, 300);
  RouteCommand(kIdCadPan, platform::kNotifyClick);
  Press(100, 100);
  DragTo(200, 100);
  Release(200, 100);
  EXPECT_EQ(canvasView.panX, 100);
  EXPECT_EQ(tools.constructionClicks, 1);
  RouteCommand(kIdCadPan, platform::kNotifyClick);
  Press(720, 300);  // an inch to the right of the first point, as it lies now
  Release(720, 300);
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_DOUBLE_EQ(sketch.objects[0].size, 1);
}

TEST_F(CanvasPointerTest, OffersNoTrimWhileAPressWouldPan) {
  Put(kTypeLine, -1, 0, 2);
  StartGeometryTool(kGeometryTrim);
  Hover(520, 300);
  EXPECT_EQ(tools.hoverObject, 0);
  EXPECT_EQ(tools.previewSegmentCount, 1);
  RouteCommand(kIdCadPan, platform::kNotifyClick);
  Hover(521, 300);
  EXPECT_EQ(tools.hoverObject, -1);
  EXPECT_EQ(tools.previewSegmentCount, 0);
}

TEST_F(CanvasPointerTest, KeepsTheDrawingUnderThePointerWhilePanning) {
  double x = 0;
  double y = 0;
  FromCanvas(100, 100, x, y);
  Press(100, 100, PointerButton::Middle);
  DragTo(333, 222, PointerButton::Middle);
  double nowX = 0;
  double nowY = 0;
  FromCanvas(333, 222, nowX, nowY);
  EXPECT_NEAR(nowX, x, 1e-12);
  EXPECT_NEAR(nowY, y, 1e-12);
}

TEST_F(CanvasPointerTest, EndsAPanWhenTheCaptureIsLost) {
  Press(100, 100, PointerButton::Middle);
  Tell(At(PointerAction::Lost, 0, 0));
  DragTo(130, 100, PointerButton::Middle);
  EXPECT_EQ(canvasView.panX, 0);
  // The next press starts anew.
  Press(130, 100, PointerButton::Middle);
  DragTo(131, 100, PointerButton::Middle);
  EXPECT_EQ(canvasView.panX, 1);
}

TEST_F(CanvasPointerTest, EndsAPanByAMoveWithTheButtonUp) {
  Press(100, 100, PointerButton::Middle);
  Hover(140, 100);
  DragTo(150, 100, PointerButton::Middle);
  EXPECT_EQ(canvasView.panX, 0);
}

TEST_F(CanvasPointerTest, KeepsThePanUnderASecondButton) {
  Press(100, 100, PointerButton::Middle);
  Press(100, 100, PointerButton::Left);
  Release(100, 100, PointerButton::Left);
  DragTo(110, 100, PointerButton::Middle);
  EXPECT_EQ(canvasView.panX, 10);
}

TEST_F(CanvasPointerTest, ResetsTheViewByADoubleClick) {
  canvasView.zoom = 7;
  canvasView.panX = 50;
  canvasView.panY = -50;
  Tell(At(PointerAction::DoubleClick, 200, 200, PointerButton::Left));
  EXPECT_EQ(canvasView.zoom, 1);
  EXPECT_EQ(canvasView.panX, 0);
  EXPECT_EQ(canvasView.panY, 0);
  canvasView.zoom = 7;
  Tell(At(PointerAction::DoubleClick, 200, 200, PointerButton::Middle));
  EXPECT_EQ(canvasView.zoom, 7);
}

TEST_F(CanvasPointerTest, TakesAQuickSecondClickAsAPointWhileAToolIsInHand) {
  canvasView.zoom = 7;
  tools.constructionMethod = kIdMethodLine;
  Tell(At(PointerAction::DoubleClick, 200, 200, PointerButton::Left));
  EXPECT_EQ(canvasView.zoom, 7);
  EXPECT_EQ(tools.constructionClicks, 1);
}

TEST_F(CanvasPointerTest, RemembersTheCursorUntilItLeaves) {
  EXPECT_EQ(canvasView.cursorX, -1);
  Hover(12, 34);
  EXPECT_EQ(canvasView.cursorX, 12);
  EXPECT_EQ(canvasView.cursorY, 34);
  Tell(At(PointerAction::Leave, 0, 0));
  EXPECT_EQ(canvasView.cursorX, -1);
}

TEST_F(CanvasPointerTest, TellsTheCursorOnEveryMoveWithoutADrag) {
  Put(kTypeCircle, 0, 0, 1);
  Hover(520, 300);
  EXPECT_EQ(SketchStatus(), u"CAD cursor  X 0.0000  Y 0.0000 in  Object 1  size 1.0000");
  Press(620, 200, PointerButton::Middle);
  DragTo(621, 200, PointerButton::Middle);
  EXPECT_EQ(SketchStatus(), u"CAD cursor  X 0.0000  Y 0.0000 in  Object 1  size 1.0000");
}

TEST_F(CanvasPointerTest, ForgetsTheHoverUnderAPress) {
  Put(kTypeLine, 0, 0, 1);
  Hover(570, 300);
  EXPECT_EQ(tools.hoverObject, 0);
  Press(570, 300);
  EXPECT_EQ(tools.hoverObject, -1);
}

TEST_F(CanvasPointerTest, TakesTheKeyboardWithAPress) {
  headless::Focus(kIdEditor);
  Press(100, 100);
  EXPECT_EQ(platform::FocusedId(), kViewCadCanvas);
}

TEST_F(CanvasPointerTest, FitsAndSwitchesTheGridByCommand) {
  canvasView.zoom = 5;
  EXPECT_TRUE(RouteCommand(kIdCadFit, platform::kNotifyClick));
  EXPECT_EQ(canvasView.zoom, 1);
  EXPECT_TRUE(sketch.gridOn);
  EXPECT_TRUE(RouteCommand(kIdCadGrid, platform::kNotifyClick));
  EXPECT_FALSE(sketch.gridOn);
  RouteCommand(kIdCadGrid, platform::kNotifyClick);
  EXPECT_TRUE(sketch.gridOn);
}

TEST_F(CanvasPointerTest, RoutesItsKeysAsCommands) {
  ClearCommands();
  HearAll({kIdCadSnap, kIdCadCopy, kIdCadCut, kIdCadPaste, kIdCadUndo, kIdCadDelete, kIdCadCancel});
  platform::KeyEvent key;
  for (const int plain : {platform::kKeyF1 + 7, static_cast<int>(platform::kKeyDelete),
                          static_cast<int>(platform::kKeyEscape)}) {
    key.key = plain;
    EXPECT_TRUE(CanvasKey(key));
  }
  key.ctrl = true;
  for (const int letter : {'C', 'X', 'V', 'Z'}) {
    key.key = letter;
    EXPECT_TRUE(CanvasKey(key));
  }
  EXPECT_EQ(heard, (std::vector<int>{kIdCadSnap, kIdCadDelete, kIdCadCancel, kIdCadCopy, kIdCadCut,
                                     kIdCadPaste, kIdCadUndo}));
  key.alt = true;
  EXPECT_FALSE(CanvasKey(key));
  key.ctrl = key.alt = false;
  EXPECT_FALSE(CanvasKey(key));  // a plain letter
}

TEST_F(CanvasPointerTest, ZoomsAndPansByKeyboard) {
  Key('+');
  EXPECT_DOUBLE_EQ(canvasView.zoom, 1.15);
  // About the middle, which stays where it is.
  EXPECT_NEAR(canvasView.panX, 0, 1e-9);
  Key('-');
  EXPECT_NEAR(canvasView.zoom, 1, 1e-12);
  platform::KeyEvent key;
  key.ctrl = true;
  key.key = platform::kKeyRight;
  EXPECT_TRUE(CanvasKey(key));
  EXPECT_NEAR(canvasView.panX, 20, 1e-9);
  key.key = platform::kKeyUp;
  EXPECT_TRUE(CanvasKey(key));
  EXPECT_NEAR(canvasView.panY, -20, 1e-9);
  Key(platform::kKeyHome);
  EXPECT_EQ(canvasView.panX, 0);
}

// The rooms behind the canvas, in the order in which a press is offered to them.

TEST_F(CanvasPointerTest, GivesADragToTheDrawToolUntilTheRelease) {
  sketch.snapOn = false;
  StartDragTool(1);
  Press(520, 300);
  DragTo(600, 280);
  EXPECT_TRUE(tools.dragActive);
  EXPECT_EQ(sketch.objectCount, 0);
  Release(620, 300);
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.objects[0].type, kTypeLine);
  EXPECT_DOUBLE_EQ(sketch.objects[0].size, 1);
}

TEST_F(CanvasPointerTest, GivesUpADrawToolsDragWithTheCapture) {
  sketch.snapOn = false;
  StartDragTool(1);
  Press(520, 300);
  DragTo(600, 280);
  Tell(At(PointerAction::Lost, 0, 0));
  EXPECT_FALSE(tools.dragActive);
  Release(620, 300);
  EXPECT_EQ(sketch.objectCount, 0);
  // And by a move that tells that the button is up.
  Press(520, 300);
  DragTo(600, 280);
  Hover(610, 280);
  EXPECT_FALSE(tools.dragActive);
  EXPECT_EQ(sketch.objectCount, 0);
  EXPECT_EQ(tools.dragTool, 1);  // the tool stays in hand
}

TEST_F(CanvasPointerTest, GivesClicksToAConstructionMethodBeforeTheGeometryUnderThem) {
  sketch.snapOn = false;
  Put(kTypeLine, 0, 0, 1);
  StartMethod(kIdMethodLine);
  Press(570, 300);  // on the line
  Release(570, 300);
  EXPECT_EQ(tools.constructionClicks, 1);
  EXPECT_EQ(sketch.selected, -1);
  Hover(570, 200);
  EXPECT_TRUE(tools.previewValid);
  Press(570, 200);
  Release(570, 200);
  ASSERT_EQ(sketch.objectCount, 2);
  EXPECT_DOUBLE_EQ(sketch.objects[1].size, 1);
}

TEST_F(CanvasPointerTest, GivesAPressToSelectingWithNoTool) {
  sketch.snapOn = false;
  Put(kTypeLine, 0, 0, 1);
  Press(570, 300);
  EXPECT_EQ(sketch.selected, 0);
  DragTo(570, 280);
  Release(570, 280);
  EXPECT_NEAR(sketch.objects[0].y, 0.2, 1e-9);
  EXPECT_EQ(sketch.undoDepth, 1);
  DragTo(570, 200);  // released
  EXPECT_NEAR(sketch.objects[0].y, 0.2, 1e-9);
}

TEST_F(CanvasPointerTest, BandsWhatAPressOnNothingDragsOver) {
  Put(kTypeLine, 0, 0, 1);
  Press(500, 250);
  DragTo(640, 350);
  platform::Rect band;
  ASSERT_TRUE(RubberBand(band));
  const std::vector<headless::DrawCall> calls = Calls("PaintPolyline");
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].numbers,
            (std::vector<double>{500, 250, 640, 250, 640, 350, 500, 350, 500, 250, 1, 1, 0}));
  Release(640, 350);
  EXPECT_TRUE(IsMultiSelected(0));
  EXPECT_TRUE(Calls("PaintPolyline").empty());
}

TEST_F(CanvasPointerTest, DrawsTheHandlesOfTheSelectedObject) {
  Put(kTypeLine, 0, 0, 1);
  sketch.selected = 0;
  int white = 0;
  for (const headless::DrawCall& call : Calls("FillArea")) {
    const bool handle = call.numbers[2] - call.numbers[0] == 5;
    if (!handle) continue;
    ++white;
    // The series may put the end a little short of its pixel.
    EXPECT_NEAR(call.numbers[0], call.numbers[0] < 570 ? 518 : 618, 1);
    EXPECT_EQ(call.numbers[1], 298);
  }
  EXPECT_EQ(white, 2);
}

// 100 pixels are one inch: circles of 80, 40 and 12 pixels across, with handles at their middle and
// at four places of their edge.
TEST_F(CanvasPointerTest, LeavesASmallCircleInSightBetweenItsHandles) {
  const auto widest = [this](double diameter) {
    sketch.objectCount = 0;
    Put(kTypeCircle, 0, 0, diameter);
    sketch.selected = 0;
    double most = 0;
    for (const headless::DrawCall& call : Calls("FillArea")) {
      const double width = call.numbers[2] - call.numbers[0];
      const double x = (call.numbers[0] + call.numbers[2]) / 2 - 520;
      const double y = (call.numbers[1] + call.numbers[3]) / 2 - 300;
      const double radius = diameter * 50;
      const bool edge = std::abs(std::hypot(x, y) - radius) < 2 && width < 20;
      if (edge) most = std::max(most, width);
    }
    return most;
  };
  EXPECT_EQ(widest(0.8), 9);
  EXPECT_EQ(widest(0.4), 5);
  EXPECT_EQ(widest(0.12), 0);
}

TEST_F(CanvasPointerTest, EscapeTakesADragBack) {
  RegisterSketchCommands();
  sketch.snapOn = false;
  Put(kTypeLine, 0, 0, 1);
  Press(570, 300);
  DragTo(570, 200);
  EXPECT_NEAR(sketch.objects[0].y, 1, 1e-9);
  EXPECT_TRUE(Key(platform::kKeyEscape));
  EXPECT_EQ(sketch.objects[0].y, 0);
  DragTo(570, 100);
  EXPECT_EQ(sketch.objects[0].y, 0);
}

TEST_F(CanvasPointerTest, ARightReleaseCancelsTheTools) {
  for (void (*start)() : {+[] { StartMethod(kIdMethodCircleRadius); }, +[] { StartDragTool(3); },
                          +[] { tools.geometryTool = kGeometryTrim; }}) {
    start();
    Press(300, 300, PointerButton::Right);
    Release(300, 300, PointerButton::Right);
    EXPECT_EQ(tools.constructionMethod, 0);
    EXPECT_EQ(tools.dragTool, 0);
    EXPECT_EQ(tools.geometryTool, kGeometryNone);
  }
}

TEST_F(CanvasPointerTest, OffersEscapeToTheToolFirst) {
  StartMethod(kIdMethodLine);
  ClearCommands();
  HearAll({kIdCadCancel});
  EXPECT_TRUE(Key(platform::kKeyEscape));
  EXPECT_EQ(tools.constructionMethod, 0);
  EXPECT_TRUE(heard.empty());
}

}  // namespace
}  // namespace morva
