// The ground that a general pocket clears, with places worked out by hand.
#include <cmath>

#include "unit/simulator/control_fixture.h"

namespace {

using namespace control_test;

const std::u16string kHead = u"G20 G90 G17 S900 M3\nG10 L12 P1 R.5\n";  // a radius of .25
const std::u16string kSquare = u"M30\nN100 G1 X1. Y0.\nY1.\nX-1.\nY-1.\nX1.\nY0.\n";

TEST(ControlGround, StrokesAlongYBeforeTheOutline) {
  const ControlTrack& track = RunText(
      kHead + u"G0 X0. Y0. Z1.\nG150 P100 X0. Y0. Z-.1 R.1 J.5 F10.\n" + kSquare + u"M99\n");
  ExpectPoints(track,
               {{0, 0, 1, true}, {0, 0, .1, true}, {0, 0, -.1},   {-1, -1, -.1}, {-1, 1, -.1},
                {-.5, 1, -.1},   {-.5, -1, -.1},   {0, -1, -.1},  {0, 1, -.1},   {.5, 1, -.1},
                {.5, -1, -.1},   {1, -1, -.1},     {1, 1, -.1},   {0, 0, -.1},   {1, 0, -.1},
                {1, 1, -.1},     {-1, 1, -.1},     {-1, -1, -.1}, {1, -1, -.1},  {1, 0, -.1},
                {0, 0, -.1},     {0, 0, .1, true}});
  EXPECT_EQ(Found(track), "");
}

// A U of 3 by 2 with legs of 1: between the legs the tool goes by way of R.
TEST(ControlGround, LeavesTheGroundWhereAWallStandsBetween) {
  const ControlTrack& track = RunText(
      kHead +
      u"G0 X.5 Y.5 Z1.\nG150 P100 X.5 Y.5 Z-.1 R.1 I.75 F10.\nM30\nN100 G1 X0. Y0.\nX3.\nY2.\n"
      u"X2.\nY1.\nX1.\nY2.\nX0.\nY0.\nM99\n");
  ExpectPoints(track, {{.5, .5, 1, true}, {.5, .5, .1, true}, {.5, .5, -.1},      {0, 0, -.1},
                       {3, 0, -.1},       {3, .75, -.1},      {0, .75, -.1},      {0, 1.5, -.1},
                       {1, 1.5, -.1},     {1, 1.5, .1, true}, {2, 1.5, .1, true}, {2, 1.5, -.1},
                       {3, 1.5, -.1},     {3, 2, -.1},        {2, 2, -.1},        {2, 2, .1, true},
                       {1, 2, .1, true},  {1, 2, -.1},        {0, 2, -.1},        {.5, .5, -.1},
                       {0, 0, -.1},       {3, 0, -.1},        {3, 2, -.1},        {2, 2, -.1},
                       {2, 1, -.1},       {1, 1, -.1},        {1, 2, -.1},        {0, 2, -.1},
                       {0, 0, -.1},       {.5, .5, -.1},      {.5, .5, .1, true}});
  EXPECT_EQ(Found(track), "");
}

// A spike .1 wide ends at Y 1.2, .1 above a row: the tool keeps .25 off its tip, and goes by R.
TEST(ControlGround, KeepsOffATipThatStandsInNoRow) {
  const ControlTrack& track =
      RunText(kHead +
              u"G0 X1. Y.6 Z1.\nG150 G41 D1 P100 X1. Y.6 Z-.1 R.1 I.85 F10.\nM30\n"
              u"N100 G1 Y0.\nX4.\nY2.\nX2.05\nY1.2\nX1.95\nY2.\nX0.\nY0.\nX1.\nM99\n");
  EXPECT_EQ(Found(track), "");
  const double aside = std::sqrt(.25 * .25 - .1 * .1);
  ASSERT_GT(track.path.count, 12);
  const At wanted[] = {{3.75, 1.1, -.1},
                       {2.05 + aside, 1.1, -.1},
                       {2.05 + aside, 1.1, .1, true},
                       {1.95 - aside, 1.1, .1, true},
                       {1.95 - aside, 1.1, -.1},
                       {.25, 1.1, -.1}};
  for (int i = 0; i < 6; ++i) {
    const MotionPoint& point = track.path.points[5 + i];
    EXPECT_NEAR(point.x, wanted[i].x, 1e-9) << i;
    EXPECT_NEAR(point.y, wanted[i].y, 1e-9) << i;
    EXPECT_NEAR(point.z, wanted[i].z, 1e-9) << i;
    EXPECT_EQ(point.rapid, wanted[i].rapid) << i;
  }
}

// The way from the start to (0, 0) passes a spike that ends at Y .5 at Y .57, far from its middle.
TEST(ControlGround, GoesByWayOfRWhereTheWayCrossesAWall) {
  const ControlTrack& track =
      RunText(kHead +
              u"G0 X3.5 Y1.9 Z1.\nG150 P100 X3.5 Y1.9 Z-.1 R.1 I1. F10.\nM30\n"
              u"N100 G1 X4.\nY2.\nX1.1\nY.5\nX1.\nY2.\nX0.\nY0.\nX4.\nY1.9\nM99\n");
  EXPECT_EQ(Found(track), "");
  ASSERT_GT(track.path.count, 5);
  EXPECT_NEAR(track.path.points[2].z, -.1, 1e-9);
  EXPECT_TRUE(track.path.points[3].rapid);
  EXPECT_NEAR(track.path.points[3].z, .1, 1e-9);
}

TEST(ControlGround, OfASlotNoWiderThanTheToolIsClearedByTheOutline) {
  const ControlTrack& track =
      RunText(kHead +
              u"G0 X0. Y0. Z1.\nG150 G41 D1 P100 X0. Y0. Z-.1 R.1 I.1 K.02 F10.\nM30\n"
              u"N100 G1 X1.\nY.26\nX-1.\nY-.26\nX1.\nY0.\nM99\n");
  ExpectPoints(track, {{0, 0, 1, true},
                       {0, 0, .1, true},
                       {0, 0, -.1},
                       {.75, 0, -.1},
                       {.75, .01, -.1},
                       {-.75, .01, -.1},
                       {-.75, -.01, -.1},
                       {.75, -.01, -.1},
                       {.75, 0, -.1},
                       {0, 0, -.1},
                       {0, 0, .1, true}});
  EXPECT_EQ(Found(track), "");
}

TEST(ControlGround, KeepsTheToolOffWallsWhereTheOutlineItselfCompensates) {
  const ControlTrack& track =
      RunText(kHead +
              u"G0 X0. Y0. Z1.\nG150 D1 P100 X0. Y0. Z-.1 R.1 I.75 F10.\nM30\n"
              u"N100 G1 G41 D1 X1.\nY1.\nX-1.\nY-1.\nX1.\nY0.\nM99\n");
  // Rows at -.75, 0 and .75, then the outline at .75 all round.
  ASSERT_EQ(track.path.count, 3 + 6 + 1 + 6 + 2);
  const MotionPoint* const stroke = track.path.points + 3;
  EXPECT_NEAR(stroke[0].x, -.75, 1e-9);
  EXPECT_NEAR(stroke[0].y, -.75, 1e-9);
  EXPECT_NEAR(stroke[1].x, .75, 1e-9);
  EXPECT_NEAR(stroke[5].y, .75, 1e-9);
  EXPECT_EQ(Found(track), "");
}

TEST(ControlGround, WithinACircleEndsAtTheCircle) {
  const ControlTrack& track =
      RunText(kHead +
              u"G0 X0. Y0. Z1.\nG150 P100 X0. Y0. Z-.1 R.1 I.5 F10.\nM30\nN100 G1 X1. Y0.\n"
              u"G3 X1. Y0. I-1.\nM99\n");
  EXPECT_EQ(Found(track), "");
  int ends = 0;
  for (std::int32_t i = 3; i < track.path.count; ++i) {
    const MotionPoint& point = track.path.points[i];
    if (point.sourceLine != 3 || std::fabs(std::fabs(point.y) - .5) > 1e-9) continue;
    // A chord lies at most .0005 within the circle.
    EXPECT_NEAR(std::fabs(point.x), std::sqrt(.75), .001);
    ++ends;
  }
  EXPECT_EQ(ends, 4);
}

TEST(ControlGround, GoesByWayOfRFromAStartOutside) {
  const ControlTrack& track = RunText(
      kHead + u"G0 X5. Y0. Z1.\nG150 P100 X5. Y0. Z-.1 R.1 I2. F10.\n" + kSquare + u"M99\n");
  ASSERT_GT(track.path.count, 6);
  const MotionPoint* const point = track.path.points;
  EXPECT_NEAR(point[2].z, -.1, 1e-9);
  EXPECT_TRUE(point[3].rapid);
  EXPECT_NEAR(point[3].z, .1, 1e-9);
  EXPECT_TRUE(point[4].rapid);
  EXPECT_NEAR(point[4].z, .1, 1e-9);
}

TEST(ControlGround, LooksAtTheOutlineWithoutWaitingOrCutting) {
  const auto seconds = [](std::u16string_view dwell) {
    const std::u16string text = kHead +
                                u"G0 X0. Y0. Z1.\nG150 P100 X0. Y0. Z-.1 R.1 Q.1 I.5 F10.\n" +
                                kSquare + std::u16string(dwell) + u"M99\n";
    return RunText(text).totalSeconds;
  };
  // Two depths, two dwells: none for the look.
  EXPECT_NEAR(seconds(u"G4 P3.\n") - seconds(u""), 6, 1e-9);
}

TEST(ControlGround, BeginsTheFirstOutlineInTheModesOfItsBlock) {
  // The outline leaves G91 and another feed behind.
  const ControlTrack& track =
      RunText(kHead +
              u"G0 X0. Y0. Z1.\nG150 P100 X0. Y0. Z-.1 R.1 I2. F10.\nM30\nN100 G1 X1. Y0.\nY1.\n"
              u"X-1.\nY-1.\nX1.\nG91 Y1. F99.\nM99\n");
  const std::int32_t first = track.path.count - 8;  // the outline, back, and up
  EXPECT_NEAR(track.path.points[first].x, 1, 1e-9);
  EXPECT_NEAR(track.path.points[first].y, 0, 1e-9);
  EXPECT_NEAR(track.path.points[first + 5].y, 0, 1e-9);
  // 2 in at 10 in/min, the first whole side.
  const double* const when = track.seconds + first;
  EXPECT_NEAR(when[2] - when[1], 12 + .0375, 1e-9);
}

TEST(ControlGround, IsNotFollowedWhereTheOutlineIsOpenOrTheRowsAreTooMany) {
  const std::u16string head = kHead + u"G0 X0. Y0. Z1.\n";
  const ControlTrack& open =
      RunText(head + u"G150 P100 X0. Y0. Z-.1 R.1 I.5 F10.\nM30\nN100 G1 X1.\nY1.\nM99\n");
  ExpectPoints(open, {{0, 0, 1, true},
                      {0, 0, .1, true},
                      {0, 0, -.1},
                      {1, 0, -.1},
                      {1, 1, -.1},
                      {0, 0, -.1},
                      {0, 0, .1, true}});
  EXPECT_EQ(Found(open), "NotFollowed 4");
  const auto rows = [&](std::u16string_view step) {
    return Found(RunText(head + u"G150 P100 X0. Y0. Z-.1 R.1 I" + std::u16string(step) +
                         u" F10.\n" + kSquare + u"M99\n"));
  };
  EXPECT_EQ(rows(u".002"), "");  // 1,001 rows
  EXPECT_EQ(rows(u".0019"), "NotFollowed 4");
}

TEST(ControlGround, OfAnOutlineWithoutEndStaysUncut) {
  const ControlTrack& track =
      RunText(kHead + u"G0 X0. Y0. Z1.\nG150 P100 X0. Y0. Z-.1 R.1 I.5 F10.\nG0 Z1.\n" + kSquare);
  ExpectPoints(track, {{0, 0, 1, true}, {0, 0, .1, true}, {0, 0, 1, true}});
  EXPECT_EQ(Found(track), "NoEnd 13");
}

TEST(ControlGround, EndsAtTheBoundOfLooksAndNotInMinutes) {
  // 4,000 lines and 1,000 rows at each of many pockets.
  std::u16string text = kHead + u"G0 X0. Y0. Z1.\n";
  for (int i = 0; i < 40; ++i) text += u"G150 P100 X0. Y0. Z-.1 R.1 I.002 F10.\n";
  text += u"M30\nN100 G1 X1. Y0.\nY1.\nX-1.\nY-1.\nX1.\nY0.\n";
  text += u"G91\n";
  for (int i = 0; i < 500; ++i) text += u"X.0001\nX-.0001\n";
  text += u"G90\nM99\n";
  // Of 8,000,000 looks each takes 1,001 rows and as many ways and one more by 1,006 lines: three
  // fit.
  const ControlTrack& track = RunText(text);
  int followed = 40;
  for (std::int32_t i = 0; i < track.findings.count; ++i) {
    if (track.findings.found[i].kind == Finding::NotFollowed) --followed;
  }
  EXPECT_EQ(followed, 3);
}

}  // namespace
