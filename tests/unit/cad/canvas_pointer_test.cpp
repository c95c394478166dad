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
  RouteCommand(kIdCadPan, platform::kNotifyClick);
  tools.geometryTool = kGeometryTrim;
  Hover(10, 10);
  EXPECT_FALSE(canvasView.panTool);
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

}  // namespace
}  // namespace morva
