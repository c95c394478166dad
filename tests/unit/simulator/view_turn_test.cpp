// The view cube in the toolpath view of 670 by 720 pixels: its middle lies at 586, 76.
#include <gtest/gtest.h>

#include <cmath>

#include "simulator/shown_path.h"
#include "simulator/view.h"
#include "simulator/view_switches.h"
#include "unit/simulator/view_fixture.h"

namespace morva {
namespace {

using platform::PointerAction;

class ViewTurn : public ViewTest {
 protected:
  static void Click(int x, int y) {
    Press(x, y);
    Release(x, y);
  }
  static std::u16string Status() { return platform::TextOf(kIdStatusLine); }
};

TEST_F(ViewTurn, GoesToAFaceByAClick) {
  view.yawDegrees = 20;
  view.elevationDegrees = 0;
  Click(586, 76);  // the front, seen at a slant
  headless::Advance(16 * 20);
  EXPECT_EQ(view.yawDegrees, 0);
  EXPECT_EQ(view.elevationDegrees, 0);
  EXPECT_FALSE(viewCube.running);
}

TEST_F(ViewTurn, ReturnsHome) {
  view.yawDegrees = 100;
  view.elevationDegrees = -20;
  view.rollDegrees = 90;
  Click(670 - 138, 18);
  headless::Advance(1000);
  EXPECT_EQ(view.yawDegrees, -45);
  EXPECT_EQ(view.elevationDegrees, 28);
  EXPECT_EQ(view.rollDegrees, 0);
}

TEST_F(ViewTurn, StartsFromThePlanAtYaw0AndElevation90) {
  SetViewTop();
  view.yawDegrees = 77;
  view.elevationDegrees = 3;
  Click(670 - 34, 70);  // yaw right
  EXPECT_EQ(viewCube.start.yaw, 0);
  EXPECT_EQ(viewCube.start.elevation, 90);
  headless::Advance(16 * 10);
  EXPECT_FALSE(view.topView);
  EXPECT_NEAR(view.yawDegrees, 45, 1e-9);
  EXPECT_EQ(view.elevationDegrees, 90);
  headless::Advance(1000);
  EXPECT_EQ(view.yawDegrees, 90);
}

TEST_F(ViewTurn, DrawsTheCubeOfThePlanFromAbove) {
  SetViewTop();
  view.yawDegrees = 77;
  const ViewAngles shown = ShownAngles();
  EXPECT_EQ(shown.yaw, 0);
  EXPECT_EQ(shown.elevation, 90);
}

TEST_F(ViewTurn, TurnsByARingAndStopsAtTheRelease) {
  view.yawDegrees = 0;
  Press(586 + 35, 76 + 35);
  DragTo(586 + 35, 76 - 35);
  EXPECT_NEAR(view.yawDegrees, 90, 1e-6);
  EXPECT_EQ(view.elevationDegrees, 28);  // no orbit besides
  Release(586 + 35, 76 - 35);
  DragTo(586 - 35, 76 - 35);
  EXPECT_NEAR(view.yawDegrees, 90, 1e-6);
}

TEST_F(ViewTurn, ARingStopsWhenTheCaptureIsLost) {
  Press(586 + 35, 76 + 35);
  Mouse(PointerAction::Lost, 0, 0);
  DragTo(586 + 35, 76 - 35);
  EXPECT_EQ(view.yawDegrees, -45);
  Press(586 + 35, 76 + 35);
  Hover(586 + 35, 76 - 35);  // the button is up
  DragTo(586 - 35, 76 - 35);
  EXPECT_EQ(view.yawDegrees, -45);
}

TEST_F(ViewTurn, AnOrbitEndsWhenTheCaptureIsLost) {
  Press(100, 100);
  Mouse(PointerAction::Lost, 0, 0);
  DragTo(200, 100);
  EXPECT_EQ(view.yawDegrees, -45);
}

TEST_F(ViewTurn, OrbitsOnFreeAreaOfTheCorner) {
  Press(670 - 5, 165);
  DragTo(670 - 5 + 10, 165);
  EXPECT_DOUBLE_EQ(view.yawDegrees, -45 + 5.5);
  Release(670 + 5, 165);
}

TEST_F(ViewTurn, OrbitAndMenuRowsEndAnAnimation) {
  Click(670 - 34, 70);
  headless::Advance(16 * 3);
  Press(100, 400);
  DragTo(110, 400);
  Release(110, 400);
  const double yaw = view.yawDegrees;
  headless::Advance(1000);
  EXPECT_EQ(view.yawDegrees, yaw);
  for (void (*row)() : {SetViewTop, SetViewFront, SetViewRight, SetViewIsometric}) {
    Click(670 - 34, 70);
    headless::Advance(16 * 3);
    row();
    const ViewState set = view;
    headless::Advance(1000);
    EXPECT_EQ(view.topView, set.topView);
    EXPECT_EQ(view.yawDegrees, set.yawDegrees);
    EXPECT_EQ(view.elevationDegrees, set.elevationDegrees);
  }
}

TEST_F(ViewTurn, TellsItsHelpOverTheCube) {
  Hover(586, 76);
  EXPECT_EQ(Status(),
            u"View cube: center = face; outer edge / corner = angled view. Arrows rotate 90 "
            u"degrees; Home restores isometric.");
}

TEST_F(ViewTurn, TakesAClickInMeasureModeToo) {
  FlatPart();
  switches.measureMode = true;
  Click(586, 76);
  EXPECT_EQ(measure.a, -1);
  EXPECT_TRUE(viewCube.running);
}

TEST_F(ViewTurn, ADoubleClickOnAnArrowTurnsTwice) {
  view.yawDegrees = 0;
  Click(670 - 34, 70);
  headless::Advance(1000);
  Mouse(PointerAction::DoubleClick, 670 - 34, 70, platform::PointerButton::Left);
  headless::Advance(1000);
  EXPECT_NEAR(std::fabs(view.yawDegrees), 180, 1e-9);
}

}  // namespace
}  // namespace morva
