#include <gtest/gtest.h>

#include "simulator/feature_lines.h"
#include "simulator/motion_path.h"
#include "simulator/playback.h"
#include "simulator/shown_path.h"
#include "simulator/view.h"
#include "simulator/view_switches.h"
#include "unit/simulator/view_fixture.h"

namespace morva {
namespace {

using platform::PointerAction;
using platform::PointerButton;

class ViewMouse : public ViewTest {};

TEST_F(ViewMouse, OrbitsWithTheLeftButton) {
  Press(100, 100);
  DragTo(110, 80);
  Release(110, 80);
  EXPECT_DOUBLE_EQ(view.yawDegrees, -45 + 10 * 0.55);
  EXPECT_DOUBLE_EQ(view.elevationDegrees, 28 - 20 * 0.45);
  EXPECT_EQ(view.panX, 0);
  DragTo(200, 200);  // released: no further turn
  EXPECT_DOUBLE_EQ(view.yawDegrees, -45 + 10 * 0.55);
}

TEST_F(ViewMouse, AddsUpTheStepsOfADrag) {
  Press(100, 100);
  DragTo(101, 101);
  DragTo(103, 102);
  DragTo(102, 104);
  Release(102, 104);
  EXPECT_NEAR(view.yawDegrees, -45 + 2 * 0.55, 1e-12);
  EXPECT_NEAR(view.elevationDegrees, 28 + 4 * 0.45, 1e-12);
}

TEST_F(ViewMouse, StopsOrbitingAt89DegreesEitherWay) {
  Press(100, 100);
  DragTo(100, 400);
  EXPECT_EQ(view.elevationDegrees, 89);
  DragTo(100, -400);
  EXPECT_EQ(view.elevationDegrees, -89);
  // From the limit it turns back at once.
  DragTo(100, -390);
  EXPECT_DOUBLE_EQ(view.elevationDegrees, -89 + 4.5);
  Release(100, -390);
}

TEST_F(ViewMouse, LeavesThePlanFromYaw0AndElevation90) {
  SetViewTop();
  view.yawDegrees = 77;
  Press(100, 100);
  EXPECT_TRUE(view.topView);  // a press alone is no orbit
  DragTo(102, 90);
  EXPECT_FALSE(view.topView);
  EXPECT_DOUBLE_EQ(view.yawDegrees, 1.1);
  EXPECT_DOUBLE_EQ(view.elevationDegrees, 85.5);
  Release(102, 90);
  SetViewTop();
  Press(100, 100);
  DragTo(100, 110);  // 94.5, held
  EXPECT_EQ(view.elevationDegrees, 89);
  Release(100, 110);
}

TEST_F(ViewMouse, PansWithMiddleAndRightButton) {
  for (PointerButton button : {PointerButton::Middle, PointerButton::Right}) {
    view.panX = view.panY = 0;
    Press(100, 100, button);
    DragTo(107, 95);
    Release(107, 95, button);
    EXPECT_EQ(view.panX, 7);
    EXPECT_EQ(view.panY, -5);
    EXPECT_EQ(view.yawDegrees, -45);
  }
}

TEST_F(ViewMouse, PansWithShiftAndInPanMode) {
  Mouse(PointerAction::Press, 100, 100, PointerButton::Left, true);
  DragTo(104, 103);
  Release(104, 103);
  EXPECT_EQ(view.panX, 4);
  EXPECT_EQ(view.panY, 3);
  switches.panMode = true;
  Press(10, 10);
  DragTo(11, 10);
  Release(11, 10);
  EXPECT_EQ(view.panX, 5);
  EXPECT_EQ(view.yawDegrees, -45);
}

TEST_F(ViewMouse, PanningKeepsThePlan) {
  SetViewTop();
  Press(100, 100, PointerButton::Middle);
  DragTo(120, 100);
  Release(120, 100, PointerButton::Middle);
  EXPECT_TRUE(view.topView);
}

TEST_F(ViewMouse, TheFirstButtonKeepsItsDrag) {
  Press(100, 100, PointerButton::Middle);
  Press(100, 100, PointerButton::Left);
  DragTo(110, 100);
  EXPECT_EQ(view.panX, 10);
  EXPECT_EQ(view.yawDegrees, -45);
  Release(110, 100, PointerButton::Left);
  DragTo(120, 100);
  EXPECT_EQ(view.panX, 20);
  Release(120, 100, PointerButton::Middle);
}

TEST_F(ViewMouse, LosingThePointerEndsADrag) {
  Press(100, 100);
  Mouse(PointerAction::Leave, 0, 0);
  DragTo(150, 100);
  EXPECT_EQ(view.yawDegrees, -45);
}

TEST_F(ViewMouse, ZoomsByTheWheel) {
  Wheel(1);
  EXPECT_DOUBLE_EQ(view.zoom, 1.12);
  Wheel(-1);
  EXPECT_DOUBLE_EQ(view.zoom, 1.12 * 0.89);
  Wheel(2);
  EXPECT_NEAR(view.zoom, 1.12 * 0.89 * 1.12 * 1.12, 1e-12);
}

TEST_F(ViewMouse, WheelZoomStopsAt50AndAtOneTwentieth) {
  for (int i = 0; i < 60; ++i) Wheel(1);
  EXPECT_EQ(view.zoom, 50);
  for (int i = 0; i < 90; ++i) Wheel(-1);
  EXPECT_EQ(view.zoom, 0.05);
  Wheel(1000000);
  EXPECT_EQ(view.zoom, 50);
}

TEST_F(ViewMouse, PicksTheNearestPointWithin15Pixels) {
  FlatPart();  // corners at 77, 458  593, 458  593, 200  77, 200
  EXPECT_EQ(PickPathPoint(kClient, 77, 458), 0);
  EXPECT_EQ(PickPathPoint(kClient, 600, 190), 2);
  EXPECT_EQ(PickPathPoint(kClient, 335, 329), -1);
  // 9 and 12 make 15 exactly, which is too far; one pixel nearer is not.
  EXPECT_EQ(PickPathPoint(kClient, 77 + 9, 458 + 12), -1);
  EXPECT_EQ(PickPathPoint(kClient, 77 + 9, 458 + 11), 0);
}

TEST_F(ViewMouse, TheFirstPointWinsATie) {
  FlatPart();
  Feed(0, 0, -1);  // the same place in plan
  EXPECT_EQ(PickPathPoint(kClient, 80, 458), 0);
}

TEST_F(ViewMouse, PicksBeyondThePlayHeadToo) {
  FlatPart();
  playback.headInUse = true;
  playback.playHead = 1;
  EXPECT_EQ(PickPathPoint(kClient, 593, 200), 2);
}

TEST_F(ViewMouse, PicksFollowTheProjection) {
  FlatPart();
  EXPECT_EQ(PickPathPoint(kClient, 593, 200), 2);
  view.panX = 100;
  EXPECT_EQ(PickPathPoint(kClient, 593, 200), -1);
  EXPECT_EQ(PickPathPoint(kClient, 693, 200), 2);
}

TEST_F(ViewMouse, ThereIsNothingToPickOnAnEmptyPath) {
  EXPECT_EQ(PickPathPoint(kClient, 335, 329), -1);
}

TEST_F(ViewMouse, AClickInMeasureModePicksAndStartsNoDrag) {
  FlatPart();
  switches.measureMode = true;
  Press(78, 457);
  EXPECT_EQ(measure.a, 0);
  EXPECT_EQ(measure.b, -1);
  DragTo(200, 300);
  EXPECT_TRUE(view.topView);
  Release(200, 300);
  Press(590, 202);
  EXPECT_EQ(measure.a, 0);
  EXPECT_EQ(measure.b, 2);
}

TEST_F(ViewMouse, AThirdMeasureClickStartsANewPair) {
  FlatPart();
  switches.measureMode = true;
  Press(77, 458);
  Press(593, 200);
  Press(593, 458);
  EXPECT_EQ(measure.a, 1);
  EXPECT_EQ(measure.b, -1);
}

TEST_F(ViewMouse, AMeasureClickBesideThePathDoesNothing) {
  FlatPart();
  switches.measureMode = true;
  Press(335, 329);
  EXPECT_EQ(measure.a, -1);
  // The other buttons pan as ever.
  Press(335, 329, PointerButton::Right);
  DragTo(340, 329);
  Release(340, 329, PointerButton::Right);
  EXPECT_EQ(view.panX, 5);
}

TEST_F(ViewMouse, ReadsOutThePointUnderThePointer) {
  FlatPart();
  path.points[2].sourceLine = 41;
  path.points[2].z = -0.125;
  Hover(593, 200);
  EXPECT_EQ(TextOf(kIdStatusLine),
            u"Toolpath point  X 4.0000  Y 2.0000  Z -0.1250  source line 42 in  CUT");
}

TEST_F(ViewMouse, ReadsOutRapidsAndMillimetres) {
  FlatPart();
  path.points[0].rapid = true;
  SetUnits(true);
  Hover(77, 458);
  EXPECT_EQ(TextOf(kIdStatusLine),
            u"Toolpath point  X 0.0000  Y 0.0000  Z 0.0000  source line 1 mm  RAPID");
}

TEST_F(ViewMouse, HoverAwayFromThePathLeavesTheStatusLine) {
  FlatPart();
  Hover(593, 200);
  const std::u16string shown = TextOf(kIdStatusLine);
  headless::Advance(100);
  Hover(335, 329);
  EXPECT_EQ(TextOf(kIdStatusLine), shown);
}

TEST_F(ViewMouse, SearchesUnderThePointerAtMostEvery30Milliseconds) {
  FlatPart();
  Hover(335, 329);
  headless::Advance(29);
  Hover(593, 200);
  EXPECT_EQ(TextOf(kIdStatusLine), u"");
  headless::Advance(1);
  Hover(593, 200);
  EXPECT_EQ(TextOf(kIdStatusLine).substr(0, 14), u"Toolpath point");
}

TEST_F(ViewMouse, DoesNotReadOutDuringADrag) {
  FlatPart();
  Press(400, 300, PointerButton::Middle);
  Hover(401, 300);
  Hover(400, 300);
  headless::Advance(100);
  Hover(400, 300);
  EXPECT_EQ(TextOf(kIdStatusLine), u"");
  Release(400, 300, PointerButton::Middle);
}

TEST_F(ViewMouse, PlaysAndStepsFromTheKeyboard) {
  RegisterSimulatorCommands();
  for (int i = 0; i < 5; ++i) Feed(i, 0, 0);
  EXPECT_TRUE(Key(platform::kKeyHome));
  EXPECT_EQ(playback.playHead, 1);
  EXPECT_TRUE(Key(platform::kKeyEnd));
  EXPECT_EQ(playback.playHead, 5);
  EXPECT_TRUE(Key(platform::kKeySpace));
  EXPECT_TRUE(playback.playing);
  EXPECT_TRUE(Key(platform::kKeySpace));
  EXPECT_FALSE(playback.playing);
}

TEST_F(ViewMouse, StepsByOperationWithLeftAndRight) {
  RegisterSimulatorCommands();
  for (int i = 0; i < 6; ++i) Feed(i, 0, 0);
  featureLines.count = 2;
  featureLines.rows[0] = {1, 2, 7};
  featureLines.rows[1] = {3, 4, 8};
  Key(platform::kKeyHome);
  Key(platform::kKeyRight);  // from outside all features to the first row: line 1, position 2
  EXPECT_EQ(playback.playHead, 2);
  Key(platform::kKeyRight);
  EXPECT_EQ(playback.playHead, 4);
  Key(platform::kKeyLeft);
  EXPECT_EQ(playback.playHead, 2);
}

TEST_F(ViewMouse, ZoomsOrbitsAndPansFromTheKeyboard) {
  Key('+');
  EXPECT_DOUBLE_EQ(view.zoom, 1.12);
  Key('-');
  EXPECT_DOUBLE_EQ(view.zoom, 1.12 * 0.89);
  Key(platform::kKeyRight, false, true);
  EXPECT_DOUBLE_EQ(view.yawDegrees, -45 + 20 * 0.55);
  Key(platform::kKeyUp, false, true);
  EXPECT_DOUBLE_EQ(view.elevationDegrees, 28 - 20 * 0.45);
  Key(platform::kKeyLeft, true, false);
  EXPECT_EQ(view.panX, -20);
  Key(platform::kKeyDown, true, false);
  EXPECT_EQ(view.panY, 20);
}

TEST_F(ViewMouse, EnterPicksThePointAtTheHeadInMeasureMode) {
  FlatPart();
  EXPECT_FALSE(ToolpathKey({platform::kKeyEnter, false, false, false}));
  switches.measureMode = true;
  playback.headInUse = true;
  playback.playHead = 3;
  EXPECT_TRUE(ToolpathKey({platform::kKeyEnter, false, false, false}));
  EXPECT_EQ(measure.a, 2);
}

TEST_F(ViewMouse, LeavesOtherKeysToTheWindow) {
  EXPECT_FALSE(ToolpathKey({platform::kKeyTab, false, false, false}));
  EXPECT_FALSE(ToolpathKey({'S', true, false, false}));
  EXPECT_FALSE(ToolpathKey({platform::kKeySpace, true, false, false}));
  EXPECT_FALSE(ToolpathKey({platform::kKeyLeft, false, false, true}));
  EXPECT_FALSE(ToolpathKey({platform::kKeyUp, false, false, false}));
}

}  // namespace
}  // namespace morva
