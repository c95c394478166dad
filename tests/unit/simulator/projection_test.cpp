#include <gtest/gtest.h>

#include <cmath>

#include "simulator/motion_path.h"
#include "simulator/shown_path.h"
#include "simulator/view.h"
#include "unit/simulator/view_fixture.h"

namespace morva {
namespace {

class ProjectionView : public ViewTest {};

TEST_F(ProjectionView, StartsAtTheIsometricAngles) {
  EXPECT_EQ(view.zoom, 1);
  EXPECT_EQ(view.yawDegrees, -45);
  EXPECT_EQ(view.elevationDegrees, 28);
  EXPECT_EQ(view.rollDegrees, 0);
  EXPECT_FALSE(view.topView);
  EXPECT_TRUE(view.gridOn);
}

TEST_F(ProjectionView, ShowsXToTheRightAndYUpwardsInPlan) {
  FlatPart();
  ExpectPlace(At(0, 0, 0), 77, 458);
  ExpectPlace(At(4, 0, 0), 593, 458);
  ExpectPlace(At(4, 2, 0), 593, 200);
  ExpectPlace(At(2, 1, 9), 335, 329);  // height does not show in plan
}

TEST_F(ProjectionView, ShowsXAndZFromTheFront) {
  Feed(0, 0, 0);
  Feed(4, 3, 2);
  SetViewFront();
  // 600 / 4 is less than 600 / 2: 129 pixels a unit.
  ExpectPlace(At(0, 3, 0), 77, 458);
  ExpectPlace(At(4, 0, 2), 593, 200);
}

TEST_F(ProjectionView, ShowsYAndZFromTheRight) {
  Feed(0, 0, 0);
  Feed(3, 4, 2);
  SetViewRight();
  ExpectPlace(At(3, 0, 0), 77, 458);
  ExpectPlace(At(0, 4, 2), 593, 200);
}

TEST_F(ProjectionView, TurnsAndTiltsTheIsometricView) {
  Feed(-1, -1, -1);
  Feed(1, 1, 1);
  SetViewIsometric();
  // Worked out apart from the program: spans 2.8284271 and 3.0937611, 166.7873... a unit.
  const Projection& p = ProjectionFor(kClient);
  EXPECT_NEAR(p.scale, 0.86 * 600 / 3.0937613, 1e-4);
  const double unit = 166.787277;
  // u of (1, 1, 1) is 2 cos 45, v is -cos 28; of (1, -1, -1) it is 0 and 2 cos 45 sin 28 + cos 28.
  ExpectPlace(At(1, 1, 1), 335 + 1.41421356 * unit, 329 - 0.88294759 * unit);
  ExpectPlace(At(1, -1, -1), 335, 329 + (1.41421356 * 0.46947156 + 0.88294759) * unit);
}

TEST_F(ProjectionView, TurnsThePictureByTheRoll) {
  FlatPart();
  view.rollDegrees = 90;
  // The spans change places: 600 / 4 in height still rules. u' = -v = dy, v' = u = dx.
  ExpectPlace(At(4, 1, 0), 335, 329 + 258);
  ExpectPlace(At(2, 2, 0), 335 + 129, 329);
}

TEST_F(ProjectionView, RollTurnsEveryAxisOfATiltedView) {
  Feed(-2, -1, -1);
  Feed(2, 1, 1);
  const double ends[3][3] = {{2, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  platform::PointF level[3];
  const double before = ProjectionFor(kClient).scale;
  for (int i = 0; i < 3; ++i) level[i] = At(ends[i][0], ends[i][1], ends[i][2]);
  view.rollDegrees = 30;
  // The level picture turned about its middle, sizes changed by the fit alone. The view's y
  // grows downwards, so a positive roll turns clockwise.
  const double factor = ProjectionFor(kClient).scale / before;
  const double cosine = std::cos(30 * 3.14159265358979 / 180);
  const double sine = 0.5;
  for (int i = 0; i < 3; ++i) {
    const double u = (level[i].x - 335) * factor;
    const double v = (level[i].y - 329) * factor;
    ExpectPlace(At(ends[i][0], ends[i][1], ends[i][2]), 335 + u * cosine - v * sine,
                329 + u * sine + v * cosine);
  }
}

TEST_F(ProjectionView, TakesTheUnitForEverySpanOfAnEmptyPath) {
  ASSERT_EQ(path.count, 0);
  SetViewTop();
  EXPECT_DOUBLE_EQ(ProjectionFor(kClient).scale, 516);  // 0.86 x 600 / 1
  ExpectPlace(At(0, 0, 0), 335, 329);
  SetViewIsometric();
  EXPECT_DOUBLE_EQ(ProjectionFor(kClient).scale, 516);
}

TEST_F(ProjectionView, DoesNotJumpBetweenAnEmptyPathAndASinglePoint) {
  const double before = ProjectionFor(kClient).scale;
  Feed(0, 0, 0);
  EXPECT_EQ(ProjectionFor(kClient).scale, before);
  ExpectPlace(At(0, 0, 0), 335, 329);
}

TEST_F(ProjectionView, FitsAPathThatIsFlatInYByItsXSpan) {
  Feed(0, 5, 0);
  Feed(4, 5, 0);
  SetViewTop();
  EXPECT_DOUBLE_EQ(ProjectionFor(kClient).scale, 129);
  ExpectPlace(At(4, 5, 0), 593, 329);
}

TEST_F(ProjectionView, CountsASpanBelowAHundredthAsOne) {
  Feed(0, 0, 0);
  Feed(0.0099, 0.0099, 0);
  SetViewTop();
  EXPECT_DOUBLE_EQ(ProjectionFor(kClient).scale, 516);
  Feed(0.0125, 0.0125, 0);
  EXPECT_NEAR(ProjectionFor(kClient).scale, 41280, 1e-6);  // 516 / 0.0125
}

TEST_F(ProjectionView, KeepsHalvesOfOddClientAreas) {
  FlatPart();
  const Projection& p = ProjectionFor({0, 0, 671, 721});
  EXPECT_EQ(p.originX, 335.5);
  EXPECT_EQ(p.originY, 329.5);
}

TEST_F(ProjectionView, SurvivesAClientAreaWithoutRoom) {
  FlatPart();
  // One usable pixel each way: 0.86 / 4.
  EXPECT_DOUBLE_EQ(ProjectionFor({0, 0, 0, 0}).scale, 0.215);
  EXPECT_DOUBLE_EQ(ProjectionFor({0, 0, 70, 120}).scale, 0.215);
}

TEST_F(ProjectionView, ScalesWithTheZoomAndShiftsWithThePan) {
  FlatPart();
  view.zoom = 2;
  view.panX = 10;
  view.panY = -20;
  ExpectPlace(At(4, 2, 0), 335 + 516 + 10, 329 - 258 - 20);
}

TEST_F(ProjectionView, KeepsTheCornersWithinTheFittedPartAfterAFit) {
  Feed(-1, 2, -3);
  Feed(7, 4, 1.5);
  view.zoom = 9;
  view.panX = 300;
  ViewFit();
  for (double yaw : {-170.0, -45.0, 0.0, 33.0, 90.0, 200.0}) {
    for (double elevation : {-89.0, -20.0, 0.0, 28.0, 89.0}) {
      view.yawDegrees = yaw;
      view.elevationDegrees = elevation;
      double widest = 0;
      double highest = 0;
      for (int corner = 0; corner < 8; ++corner) {
        const platform::PointF place =
            At((corner & 1) ? 7 : -1, (corner & 2) ? 4 : 2, (corner & 4) ? 1.5 : -3);
        widest = std::max(widest, std::fabs(place.x - 335));
        highest = std::max(highest, std::fabs(place.y - 329));
      }
      EXPECT_LE(widest, 0.86 * 300 + 1e-6);
      EXPECT_LE(highest, 0.86 * 300 + 1e-6);
      // One of the two fills its share.
      EXPECT_NEAR(std::max(widest, highest), 258, 1e-6);
    }
  }
}

TEST_F(ProjectionView, FollowsThePathItsAnglesAndTheClientArea) {
  FlatPart();
  ExpectPlace(At(0, 0, 0), 77, 458);
  Feed(8, 0, 0);  // 64.5 pixels a unit now, the middle at X 4
  ExpectPlace(At(0, 0, 0), 77, 329 + 64.5);
  SetViewFront();
  ExpectPlace(At(0, 0, 0), 77, 329);
  // 1270 wide: 1200 / 8 is more than 600 / 8, but the span of Z counts as 1: 129 a unit.
  ExpectPlace(Project(ProjectionFor({0, 0, 1270, 720}), 0, 0, 0), 635 - 4 * 129, 329);
}

TEST_F(ProjectionView, FitKeepsTheAngles) {
  view.zoom = 3;
  view.panX = 5;
  view.panY = 6;
  view.yawDegrees = 12;
  view.elevationDegrees = 34;
  ViewFit();
  EXPECT_EQ(view.zoom, 1);
  EXPECT_EQ(view.panX, 0);
  EXPECT_EQ(view.panY, 0);
  EXPECT_EQ(view.yawDegrees, 12);
  EXPECT_EQ(view.elevationDegrees, 34);
}

TEST_F(ProjectionView, FrontRightAndIsometricLeaveThePlanAndTheRoll) {
  struct Row {
    void (*set)();
    double yaw;
    double elevation;
  };
  const Row rows[] = {{SetViewFront, 0, 0}, {SetViewRight, -90, 0}, {SetViewIsometric, -45, 28}};
  for (const Row& row : rows) {
    view.topView = true;
    view.rollDegrees = 30;
    view.zoom = 7;
    row.set();
    EXPECT_FALSE(view.topView);
    EXPECT_EQ(view.rollDegrees, 0);
    EXPECT_EQ(view.yawDegrees, row.yaw);
    EXPECT_EQ(view.elevationDegrees, row.elevation);
    EXPECT_EQ(view.zoom, 1);
  }
}

TEST_F(ProjectionView, ViewMenuOffersFourViewsAndFits) {
  headless::QueuePick(kIdViewTop);
  view.zoom = 4;
  ShowViewMenu();
  EXPECT_TRUE(view.topView);
  EXPECT_EQ(view.zoom, 1);
  headless::QueuePick(kIdViewRight);
  ShowViewMenu();
  EXPECT_FALSE(view.topView);
  EXPECT_EQ(view.yawDegrees, -90);
  const std::vector<headless::MenuRecord> menus = headless::TakeMenus();
  ASSERT_EQ(menus.size(), 2u);
  ASSERT_EQ(menus[0].items.size(), 4u);
  EXPECT_EQ(menus[0].items[0].text, u"Top (XY)");
  EXPECT_EQ(menus[0].items[1].text, u"Front (XZ)");
  EXPECT_EQ(menus[0].items[2].text, u"Right (YZ)");
  EXPECT_EQ(menus[0].items[3].text, u"Isometric");
}

TEST_F(ProjectionView, ACancelledViewMenuChangesNothing) {
  view.zoom = 4;
  headless::QueuePick(0);
  ShowViewMenu();
  EXPECT_EQ(view.zoom, 4);
  EXPECT_EQ(view.yawDegrees, -45);
}

}  // namespace
}  // namespace morva
