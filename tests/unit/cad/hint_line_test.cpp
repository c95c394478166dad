#include "cad/model/hint_line.h"

#include "app/surfaces.h"
#include "cad/canvas/canvas_pointer.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/tools/dimensions.h"
#include "cad/tools/draw_tools.h"
#include "cad/tools/size_boxes.h"
#include "cad/tools/tool_change.h"
#include "unit/cad/draw_stage.h"

namespace morva {
namespace {

class HintLine : public DrawStage {
 protected:
  HintLine() { support::MakeText(kIdCadHint, platform::ControlKind::Label); }
  static std::u16string Hint() { return platform::TextOf(kIdCadHint); }
  // What a move of the pointer over the canvas does to the status line.
  static void Wander() { ShowCursorText(1, 2); }
};

constexpr const char16_t* kPoints =
    u"Click construction points on the canvas. Snapping is active; Esc cancels.";

TEST_F(HintLine, TellsEachStepWhileTheStatusLineShowsTheCursor) {
  StartMethod(kIdMethodSlotPoints);
  Wander();
  EXPECT_EQ(Status().substr(0, 10), u"CAD cursor");
  EXPECT_EQ(Hint(), kPoints);
  Click(0, 0);
  EXPECT_EQ(Status(), u"Pick the second construction point.");
  Wander();
  EXPECT_EQ(Hint(), u"Pick the second construction point.");
  Click(2, 0);
  Wander();
  EXPECT_EQ(Hint(), u"Pick the third point to set the circle, height or width.");
  Click(1, 1);
  EXPECT_EQ(Status(), u"Selected: Slot  •  drag to move; use Dimension to resize.");
  EXPECT_EQ(Hint(), kPoints);  // the method begins again
}

TEST_F(HintLine, GoesBackToTheKeysWithTheTool) {
  for (int how = 0; how < 3; ++how) {
    StartMethod(kIdMethodLine);
    ASSERT_EQ(Hint(), kPoints);
    if (how == 0) CancelTools();
    if (how == 1) Key(platform::kKeyEscape);
    if (how == 2) StartDragTool(0);
    EXPECT_EQ(Hint(), kCadHint) << how;
    EXPECT_EQ(Status(), u"SELECT mode: click geometry on the canvas.");
  }
}

TEST_F(HintLine, KeepsWhyAClickWasRefused) {
  Put(kTypeLine, -2, 0, 4);
  StartMethod(kIdMethodCircleOnLine);
  Click(-1, 2);
  Wander();
  EXPECT_EQ(Hint(), u"Pick the required line or circle first.");
  Click(-1, 0);
  Wander();
  EXPECT_EQ(Hint(), u"Click the new circle center; radius will meet the selected geometry.");
  Click(2.5, 1);
  Wander();
  EXPECT_EQ(Hint(), u"Choose a center whose tangent point is on the line segment.");
  Click(1, 1.5);
  EXPECT_EQ(Hint(), u"Tangent circle: pick a line, then the new center.");
}

TEST_F(HintLine, AsksForTheSideOfTheCircleThatATangentTouches) {
  Put(kTypeCircle, 2, 0, 2);
  StartMethod(kIdMethodLineTangent);
  Click(0, 0);
  EXPECT_EQ(Status(), u"Pick the second construction point.");
  EXPECT_EQ(Hint(), u"Click the desired tangent side of a circle.");
}

TEST_F(HintLine, BeginsAnewAfterATypedSize) {
  StartMethod(kIdMethodLine);
  Click(0, 0);
  Move(1, 0);
  Key(platform::kKeyTab);
  Type(kIdCadSizeBox1, u"none");
  CommitTypedSize(true);
  EXPECT_EQ(Hint(), u"Choose construction points and valid positive dimensions first.");
  Type(kIdCadSizeBox1, u"2");
  CommitTypedSize(false);
  EXPECT_EQ(Hint(), kPoints);
}

TEST_F(HintLine, TellsTheRefusalOfADimensionUntilOneIsTaken) {
  Put(kTypeLine, 0, 0, 2);
  EnterDimensionMode(false);
  sketch.selected = 0;
  Type(kIdCadDimensionValue, u"0");
  ASSERT_TRUE(headless::Click(kIdCadApplyDimension));
  Wander();
  EXPECT_EQ(Hint(),
            u"Choose a supported dimension on unlocked geometry and enter a positive size. Slot "
            u"length must be at least its width.");
  Type(kIdCadDimensionValue, u"3");
  ASSERT_TRUE(headless::Click(kIdCadApplyDimension));
  EXPECT_EQ(Hint(),
            u"Dimension: click an object or dimension label, change its value, and press Enter.");
}

TEST_F(HintLine, FollowsAMeasure) {
  EnterDimensionMode(true);
  Press(0, 0);
  Wander();
  EXPECT_EQ(Hint(), u"Measure: click second point.");
  Press(1, 0);
  Wander();
  EXPECT_EQ(Hint(), u"Reference distance shown. Click to measure another pair; Esc exits.");
}

TEST_F(HintLine, IsLeftAloneByWhatNoToolSays) {
  StartMethod(kIdMethodLine);
  CancelTools();
  SetSketchStatus(u"Drawing renamed.");
  EXPECT_EQ(Hint(), kCadHint);
  StartMethod(kIdMethodLine);
  Put(kTypeLine, 0, 0, 2);
  sketch.selected = 0;
  RefreshSketchPanels();  // "Selected: Line ..." is no word of the tool
  EXPECT_EQ(Hint(), kPoints);
}

TEST_F(HintLine, ComesBackWhenThePointerLeavesAKeyWithItsHelp) {
  StartMethod(kIdMethodLine);
  TellPointerOver(kIdCadScale);
  platform::SetText(kIdCadHint, u"Scale");  // the help of the key
  TellPointerOver(kIdCadScale);
  EXPECT_EQ(Hint(), u"Scale");
  TellPointerOver(kViewCadCanvas);
  EXPECT_EQ(Hint(), kPoints);
}

TEST_F(HintLine, ComesBackWhenThePointerLeavesTheWindowFromAKey) {
  TellPointerOver(kIdCadScale);
  platform::SetText(kIdCadHint, u"Scale");
  TellPointerOver(0);  // no control of the window is under it
  EXPECT_EQ(Hint(), kCadHint);
}

}  // namespace
}  // namespace morva
