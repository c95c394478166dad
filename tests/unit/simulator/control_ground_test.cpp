// The ground that a general pocket clears, with places worked out by hand.
#include <cmath>
#include <string>
#include <vector>

#include "support/stage.h"
#include "unit/simulator/control_fixture.h"

namespace {

using namespace control_test;

const std::u16string kHead = u"G20 G90 G17 S900 M3\nG10 L12 P1 R.5\n";  // a radius of .25
const std::u16string kSquare = u"M30\nN100 G1 X1. Y0.\nY1.\nX-1.\nY-1.\nX1.\nY0.\n";

TEST(ControlGround, StrokesAlongYBeforeTheOutline) {
  const ControlTrack& track = RunText(
      kHead + u"G0 X0. Y0. Z1.\nG150 P100 X0. Y0. Z-.1 R.1 I.5 F10.\n" + kSquare + u"M99\n");
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
      u"G0 X.5 Y.5 Z1.\nG150 P100 X.5 Y.5 Z-.1 R.1 J.75 F10.\nM30\nN100 G1 X0. Y0.\nX3.\nY2.\n"
      u"X2.\nY1.\nX1.\nY2.\nX0.\nY0.\nM99\n");
  // First the left leg, then the right one. Over the wall Y arrives first.
  ExpectPoints(track,
               {{.5, .5, 1, true},   {.5, .5, .1, true}, {.5, .5, -.1},    {0, 0, -.1},
                {3, 0, -.1},         {3, .75, -.1},      {0, .75, -.1},    {0, 1.5, -.1},
                {1, 1.5, -.1},       {1, 2, -.1},        {0, 2, -.1},      {0, 2, .1, true},
                {.5, 1.5, .1, true}, {2, 1.5, .1, true}, {2, 1.5, -.1},    {3, 1.5, -.1},
                {3, 2, -.1},         {2, 2, -.1},        {2, 2, .1, true}, {.5, .5, .1, true},
                {.5, .5, -.1},       {0, 0, -.1},        {3, 0, -.1},      {3, 2, -.1},
                {2, 2, -.1},         {2, 1, -.1},        {1, 1, -.1},      {1, 2, -.1},
                {0, 2, -.1},         {0, 0, -.1},        {.5, .5, -.1},    {.5, .5, .1, true}});
  EXPECT_EQ(Found(track), "");
}

TEST(ControlGround, SideOfItsOwnBlockNeedsNoG40) {
  const std::u16string pocket =
      kHead + u"G0 X0. Y0. Z1.\nG150 G41 D1 P100 X0. Y0. Z-.1 R.1 I.5 F10.\n";
  EXPECT_EQ(Found(RunText(pocket + kSquare + u"M99\n")), "");
  EXPECT_EQ(Found(RunText(pocket + u"G41\n" + kSquare + u"M99\n")), "CompAtEnd 6");
}

// A spike .1 wide ends at Y 1.2, .1 above a row: the tool keeps .25 off its tip, and goes by R.
TEST(ControlGround, KeepsOffATipThatStandsInNoRow) {
  const ControlTrack& track =
      RunText(kHead +
              u"G0 X1. Y.6 Z1.\nG150 G41 D1 P100 X1. Y.6 Z-.1 R.1 J.85 F10.\nM30\n"
              u"N100 G1 Y0.\nX4.\nY2.\nX2.05\nY1.2\nX1.95\nY2.\nX0.\nY0.\nX1.\nM99\n");
  EXPECT_EQ(Found(track), "StepWide 4");
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

// The way from the start to (0, 0) crosses a spike that ends at Y .5 at Y .69, far from its middle.
TEST(ControlGround, GoesByWayOfRWhereTheWayCrossesAWall) {
  const ControlTrack& track =
      RunText(kHead +
              u"G0 X1.6 Y1. Z1.\nG150 P100 X1.6 Y1. Z-.1 R.1 J1. F10.\nM30\n"
              u"N100 G1 X4.\nY2.\nX1.1\nY.5\nX1.\nY2.\nX0.\nY0.\nX4.\nY1.\nM99\n");
  EXPECT_EQ(Found(track), "");
  ASSERT_GT(track.path.count, 5);
  EXPECT_NEAR(track.path.points[2].z, -.1, 1e-9);
  EXPECT_TRUE(track.path.points[3].rapid);
  EXPECT_NEAR(track.path.points[3].z, .1, 1e-9);
}

TEST(ControlGround, OfASlotNoWiderThanTheToolIsClearedByTheOutline) {
  const ControlTrack& track =
      RunText(kHead +
              u"G0 X0. Y0. Z1.\nG150 G41 D1 P100 X0. Y0. Z-.1 R.1 J.1 K.02 F10.\nM30\n"
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
              u"G0 X0. Y0. Z1.\nG150 D1 P100 X0. Y0. Z-.1 R.1 J.75 F10.\nM30\n"
              u"N100 G1 G41 D1 X1.\nY1.\nX-1.\nY-1.\nX1.\nY0.\nM99\n");
  // Rows at -.75, 0 and .75, then the outline at .75 all round.
  ASSERT_EQ(track.path.count, 3 + 6 + 1 + 6 + 2);
  const MotionPoint* const stroke = track.path.points + 3;
  EXPECT_NEAR(stroke[0].x, -.75, 1e-9);
  EXPECT_NEAR(stroke[0].y, -.75, 1e-9);
  EXPECT_NEAR(stroke[1].x, .75, 1e-9);
  EXPECT_NEAR(stroke[5].y, .75, 1e-9);
  EXPECT_NEAR(stroke[7].x, .75, 1e-9);
  EXPECT_NEAR(stroke[8].x, .75, 1e-9);
  EXPECT_NEAR(stroke[8].y, .75, 1e-9);
  EXPECT_EQ(Found(track), "StepWide 4");
}

TEST(ControlGround, WithinACircleEndsAtTheCircle) {
  const ControlTrack& track =
      RunText(kHead +
              u"G0 X0. Y0. Z1.\nG150 P100 X0. Y0. Z-.1 R.1 J.5 F10.\nM30\nN100 G1 X1. Y0.\n"
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
      kHead + u"G0 X5. Y0. Z1.\nG150 P100 X5. Y0. Z-.1 R.1 J2. F10.\n" + kSquare + u"M99\n");
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
                                u"G0 X0. Y0. Z1.\nG150 P100 X0. Y0. Z-.1 R.1 Q.1 J.5 F10.\n" +
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
              u"G0 X0. Y0. Z1.\nG150 P100 X0. Y0. Z-.1 R.1 J2. F10.\nM30\nN100 G1 X1. Y0.\nY1.\n"
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
      RunText(head + u"G150 P100 X0. Y0. Z-.1 R.1 J.5 F10.\nM30\nN100 G1 X1.\nY1.\nM99\n");
  ExpectPoints(open, {{0, 0, 1, true},
                      {0, 0, .1, true},
                      {0, 0, -.1},
                      {1, 0, -.1},
                      {1, 1, -.1},
                      {0, 0, -.1},
                      {0, 0, .1, true}});
  EXPECT_EQ(Found(open), "NotFollowed 4");
  const auto rows = [&](std::u16string_view step) {
    return Found(RunText(head + u"G150 P100 X0. Y0. Z-.1 R.1 J" + std::u16string(step) +
                         u" F10.\n" + kSquare + u"M99\n"));
  };
  EXPECT_EQ(rows(u".002"), "");  // 1,001 rows
  EXPECT_EQ(rows(u".0019"), "NotFollowed 4");
}

TEST(ControlGround, OfAnOutlineWithoutEndIsNotFollowed) {
  const ControlTrack& track = RunText(
      kHead + u"G0 X0. Y0. Z1.\nG150 P100 X0. Y0. Z-.1 R.1 J.5 F10.\nG4 P5.\nG0 Z1.\n" + kSquare);
  ExpectPoints(track, {{0, 0, 1, true},
                       {0, 0, .1, true},
                       {0, 0, -.1},
                       {1, 0, -.1},
                       {1, 1, -.1},
                       {-1, 1, -.1},
                       {-1, -1, -.1},
                       {1, -1, -.1},
                       {1, 0, -.1},
                       {1, 0, 1, true}});
  EXPECT_EQ(Found(track), "NoEnd 14, NotFollowed 4");
  // Its last inch at 10 a minute, behind a corner, and the dwell.
  EXPECT_NEAR(track.seconds[8] - track.seconds[7], 6 + .0375 + 5, 1e-9);
}

// The outline counts in a variable how often it ran: once a depth, and once for the finish.
TEST(ControlGround, RunsTheOutlineOnceADepthAndForTheFinish) {
  const auto drawn = [](std::u16string_view finish) {
    const std::u16string text =
        kHead + u"#100=0\nG0 X0. Y0. Z1.\nG41 D1 G150 P100 X0. Y0. Z-.1 " + std::u16string(finish) +
        u" R.1 Q.1 J.5 F10.\nG40\nDPRNT[#100[10]]\n" + kSquare + u"#100=#100+1\nM99\n";
    return RunText(text).printed;
  };
  EXPECT_EQ(drawn(u""), u"2\n");
  EXPECT_EQ(drawn(u"K.02"), u"3\n");
}

TEST(ControlGround, EndsAtTheBoundOfLooksAndNotInMinutes) {
  // 4,000 lines and 1,000 rows at each of many pockets.
  std::u16string text = kHead + u"G0 X0. Y0. Z1.\n";
  for (int i = 0; i < 40; ++i) text += u"G150 P100 X0. Y0. Z-.1 R.1 J.002 F10.\n";
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

// The points up to where the list ends.
void ExpectFirst(const ControlTrack& track, const std::vector<At>& wanted,
                 double tolerance = 1e-9) {
  ASSERT_GE(static_cast<std::size_t>(track.path.count), wanted.size());
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    const MotionPoint& point = track.path.points[i];
    EXPECT_NEAR(point.x, wanted[i].x, tolerance) << "x of point " << i;
    EXPECT_NEAR(point.y, wanted[i].y, tolerance) << "y of point " << i;
    EXPECT_NEAR(point.z, wanted[i].z, tolerance) << "z of point " << i;
    EXPECT_EQ(point.rapid, wanted[i].rapid) << "rapid into point " << i;
  }
}

// A tool of a half inch at a place, at .1; then the pocket, and its outline at N1.
std::u16string Pocket(const std::string& start, const std::string& words,
                      const std::string& outline) {
  return support::Wide("G20 G90 G17 S900 M3\nG10 L12 P1 R.5\nG0 " + start + " Z.1\nG150 " + words +
                       "\nM30\nN1 " + outline + "M99\n");
}

// 2 by 1 about (2, 1), from the middle of its right side or so.
const char* const kBox = "G1 X3.\nY1.5\nX1.\nY.5\nX3.\nY.9\n";

TEST(ControlGround, StrokesRunAlongXThatAreJApart) {
  const ControlTrack& track = RunText(Pocket("X2. Y.9", "G41 P1 Z-.1 R.1 J.3 D1 F20.", kBox));
  EXPECT_EQ(Found(track), "");
  // .25 off the walls: at Y .75, 1.05 and, as the last one that fits, 1.25.
  ExpectPoints(track, {{2, .9, .1, true},
                       {2, .9, -.1},
                       {1.25, .75, -.1},
                       {2.75, .75, -.1},
                       {2.75, 1.05, -.1},
                       {1.25, 1.05, -.1},
                       {1.25, 1.25, -.1},
                       {2.75, 1.25, -.1},
                       {2, .9, -.1},
                       {2.75, .9, -.1},
                       {2.75, 1.25, -.1},
                       {1.25, 1.25, -.1},
                       {1.25, .75, -.1},
                       {2.75, .75, -.1},
                       {2.75, .9, -.1},
                       {2, .9, -.1},
                       {2, .9, .1, true}});
}

TEST(ControlGround, WithoutCompensationTheOutlineIsTheWayOfTheTool) {
  const ControlTrack& track = RunText(Pocket("X2. Y.9", "P1 Z-.1 R.1 J.4 K.1 F20.", kBox));
  EXPECT_EQ(Found(track), "");
  // K off the walls: at Y .6, 1. and 1.4. The outline is run once, as it stands.
  ExpectPoints(track, {{2, .9, .1, true},
                       {2, .9, -.1},
                       {1.1, .6, -.1},
                       {2.9, .6, -.1},
                       {2.9, 1, -.1},
                       {1.1, 1, -.1},
                       {1.1, 1.4, -.1},
                       {2.9, 1.4, -.1},
                       {2, .9, -.1},
                       {3, .9, -.1},
                       {3, 1.5, -.1},
                       {1, 1.5, -.1},
                       {1, .5, -.1},
                       {3, .5, -.1},
                       {3, .9, -.1},
                       {2, .9, -.1},
                       {2, .9, .1, true}});
}

// A U of 3 by 2 whose legs are 1 wide.
const char* const kLegs = "G1 X3.\nY2.\nX2.\nY1.\nX1.\nY2.\nX0.\nY0.\nX3.\nY.5\n";

TEST(ControlGround, BehindAWallItGoesOnByWayOfR) {
  const ControlTrack& track = RunText(Pocket("X1.5 Y.5", "G41 P1 Z-.1 R.1 J.5 D1 F20.", kLegs));
  EXPECT_EQ(Found(track), "");
  ExpectFirst(track, {{1.5, .5, .1, true},
                      {1.5, .5, -.1},
                      {.25, .25, -.1},
                      {2.75, .25, -.1},
                      {2.75, .75, -.1},
                      {.25, .75, -.1},
                      // Up the left leg, then over the wall to the right one. Y arrives first.
                      {.25, 1.25, -.1},
                      {.75, 1.25, -.1},
                      {.75, 1.75, -.1},
                      {.25, 1.75, -.1},
                      {.25, 1.75, .1, true},
                      {.75, 1.25, .1, true},
                      {2.25, 1.25, .1, true},
                      {2.25, 1.25, -.1},
                      {2.75, 1.25, -.1},
                      {2.75, 1.75, -.1},
                      {2.25, 1.75, -.1},
                      // Back: X arrives first.
                      {2.25, 1.75, .1, true},
                      {1.5, 1, .1, true},
                      {1.5, .5, .1, true},
                      {1.5, .5, -.1},
                      {2.75, .5, -.1},
                      {2.75, 1.75, -.1}});
}

TEST(ControlGround, StrokesEndBesideArcs) {
  const ControlTrack& track = RunText(
      Pocket("X0. Y0.", "G41 P1 Z-.1 R.1 I.5 D1 F20.", "G1 X1.\nG3 X-1. I-1.\nG3 X1. I1.\n"));
  EXPECT_EQ(Found(track), "");
  // Within a circle of .75 at X .25 off its middle: up to the root of .5. Its tips, at .75, have no
  // stroke.
  const double y = std::sqrt(.5);
  ExpectFirst(track,
              {{0, 0, .1, true},
               {0, 0, -.1},
               {-.25, -y, -.1},
               {-.25, y, -.1},
               {.25, y, -.1},
               {.25, -y, -.1},
               {0, 0, -.1},
               {.75, 0, -.1}},
              .001);
}

TEST(ControlGround, AWayInThatIsTheWayOutIsNoWall) {
  // The outline ends where it began, at the start.
  const ControlTrack& track =
      RunText(Pocket("X2. Y.9", "G41 P1 Z-.1 R.1 J.3 D1 F20.", std::string(kBox) + "X2.\n"));
  ExpectFirst(track, {{2, .9, .1, true},
                      {2, .9, -.1},
                      {1.25, .75, -.1},
                      {2.75, .75, -.1},
                      {2.75, 1.05, -.1},
                      {1.25, 1.05, -.1}});
}

TEST(ControlGround, ASlotThatIsNoWiderThanToolAndFinishHasTheOutlineAlone) {
  // 1 wide: .5 of the tool and .3 on both sides do not fit, and no pass leaves a finish either.
  const ControlTrack& track = RunText(Pocket("X2. Y.9", "G41 P1 Z-.1 R.1 J.3 K.3 D1 F20.", kBox));
  EXPECT_EQ(Found(track), "");
  ExpectPoints(track, {{2, .9, .1, true},
                       {2, .9, -.1},
                       {2.75, .9, -.1},
                       {2.75, 1.25, -.1},
                       {1.25, 1.25, -.1},
                       {1.25, .75, -.1},
                       {2.75, .75, -.1},
                       {2.75, .9, -.1},
                       {2, .9, -.1},
                       {2, .9, .1, true}});
}

TEST(ControlGround, WhatTheFinishDoesNotFitIsToldForTheFinishAlone) {
  // Round corners of just the tool's radius: beside K it does not fit, at the finish it does.
  const std::string rounded =
      "G1 X3.\nY1.25\nG3 X2.75 Y1.5 I-.25\nG1 X1.25\nG3 X1. Y1.25 J-.25\nG1 Y.75\n"
      "G3 X1.25 Y.5 I.25\nG1 X2.75\nG3 X3. Y.75 J.25\nG1 Y.9\n";
  EXPECT_EQ(Found(RunText(Pocket("X2. Y.9", "G41 P1 Z-.1 R.1 J.3 K.02 D1 F20.", rounded))), "");
  // A tool of .6 does not fit them at all.
  std::u16string larger = Pocket("X2. Y.9", "G41 P1 Z-.1 R.1 J.3 K.02 D1 F20.", rounded);
  larger.replace(larger.find(u"R.5"), 3, u"R.6");
  EXPECT_EQ(Found(RunText(larger)), "CompCorner 8, CompCorner 10, CompCorner 12, CompCorner 14");
}

TEST(ControlGround, StrokesTakeTheFeedOfTheBlock) {
  const ControlTrack& track = RunText(
      Pocket("X2. Y.9", "G41 P1 Z-.1 R.1 J.3 D1 F60.", "G1 X3. F30.\nY1.5\nX1.\nY.5\nX3.\nY.9\n"));
  // 1.5 inches at one a second behind a sharp corner; those of the outline, from 10 on, at half.
  EXPECT_NEAR(track.seconds[3] - track.seconds[2], 1.5375, 1e-9);
  EXPECT_NEAR(track.seconds[11] - track.seconds[10], 3.0375, 1e-9);
}

TEST(ControlGround, CompensationStandsBehindThePocketAsBeforeIt) {
  // Behind a finish too the next move is .25 beside its line.
  const std::u16string text = support::Wide(
      "G20 G90 G17 S900 M3\nG10 L12 P1 R.5\nG0 X2. Y.9 Z.1\n"
      "G150 G41 P1 Z-.1 R.1 J.3 K.02 D1 F20.\nG1 X3.\nY1.2\nG40 X2. Y.9\nM30\nN1 " +
      std::string(kBox) + "M99\n");
  const ControlTrack& track = RunText(text);
  EXPECT_EQ(Found(track), "");
  const MotionPoint* const last = track.path.points + track.path.count;
  EXPECT_NEAR(last[-3].x, 2.75, 1e-9);
  EXPECT_NEAR(last[-2].x, 2.75, 1e-9);
  EXPECT_NEAR(last[-2].y, 1.2, 1e-9);
}

TEST(ControlGround, AnOutlineThatCannotBeFollowedIsDrawnAsItComes) {
  // The program ends within it, or goes home, or turns round for ever.
  const ControlTrack& ends =
      RunText(Pocket("X2. Y.9", "G41 P1 Z-.1 R.1 J.3 D1 F20.", "G1 X3.\nY1.5\nM30\n"));
  EXPECT_EQ(Found(ends), "NotFollowed 4, CompAtEnd 8");
  ExpectPoints(ends, {{2, .9, .1, true}, {2, .9, -.1}, {2.75, .9, -.1}, {2.75, 1.5, -.1}});
  const ControlTrack& home =
      RunText(Pocket("X2. Y.9", "G41 D1 P1 Z-.1 R.1 J.3 F20.", "G1 X3.\nY1.5\nG53 Z0.\n"));
  EXPECT_EQ(Found(home), "NotFollowed 4, CompLeftOn 8");
  ExpectFirst(home, {{2, .9, .1, true}, {2, .9, -.1}, {2.75, .9, -.1}, {2.75, 1.5, -.1}});
  EXPECT_EQ(Found(RunText(Pocket("X2. Y.9", "G41 D1 P1 Z-.1 R.1 J.3 F20.",
                                 "G1 X3.\nY1.5\nG91 G28 Z0.\nG90\n"))),
            "NotFollowed 4, CompLeftOn 8");
  const ControlTrack& changed =
      RunText(Pocket("X2. Y.9", "P1 Z-.1 R.1 J.3 F20.", "G1 X3.\nT3 M06\nM3 G43 H3 G1 X2.\nX3.\n"));
  EXPECT_EQ(Found(changed).find("NotFollowed 4"), 0u) << Found(changed);
  EXPECT_EQ(changed.path.points[2].tool, 0);
  EXPECT_EQ(LastPoint(changed).tool, 3);
  // Compensation that was called for before the tool changed begins behind that.
  const ControlTrack& begun =
      RunText(Pocket("X2. Y.9", "P1 Z-.1 R.1 J.3 F20.",
                     "G1 X2.5\nG41 D1\nT3 M06\nM3 G43 H3\nG1 X3.\nY1.5\nG40 X2.\n"));
  int beside = 0;
  for (std::int32_t i = 0; i < begun.path.count; ++i) {
    const MotionPoint& point = begun.path.points[i];
    if (std::hypot(point.x - 2.75, point.y - 1.5) < 1e-9) ++beside;
  }
  EXPECT_EQ(beside, 1);
  const ControlTrack& endless =
      RunText(Pocket("X2. Y.9", "P1 Z-.1 R.1 J.3 F20.", "WHILE [1 EQ 1] DO1\nG1 X3.\nX2.\nEND1\n"));
  EXPECT_EQ(Found(endless), "NotFollowed 4, PathFull 7, NoStepsLeft 9");
}

// A pocket of 3 by 2 in a plate, .2 deep; "piece" stands behind it, the tool at (0, 0) and .1.
std::string Told(const std::string& piece, const std::string& step = "J.4") {
  const std::string program =
      "(STOCK -4 -3 4 3 0 -0.5)\n(TOOL 1 0.5 END MILL)\n"
      "G20 G17 G40 G49 G80 G90\nG10 L12 P1 R.5\nT1 M06\nG54 G00 X0. Y0. S3000 M03\nG43 H1 Z.1\n"
      "G150 G41 P1 X0. Y0. Z-.2 R.1 " +
      step + " K.01 D1 F10.\nG40 G00 Z.1\n" + piece +
      "G00 Z1.\nG53 G49 Z0. M05\nM30\nN1 G01 X1.5\nY1.\nX-1.5\nY-1.\nX1.5\nY0.\nM99\n";
  const KnownStock stock = StockIn(program);
  return control_test::Found(RunText(support::Wide(program), {.stock = &stock}));
}

TEST(ControlGround, TheStockKnowsWhatThePocketCleared) {
  // Down beside the outline's own way and the start, and across.
  const std::string across = "G00 X-.6 Y.45\nZ-.19\nX.6\nY-.45\nX-1.\n";
  EXPECT_EQ(Told(across), "");
  EXPECT_EQ(Told(across, "I.4"), "");
  // At the walls the finish has been.
  EXPECT_EQ(Told("G00 X1.25 Y.75\nZ-.19\nX-1.25\nY-.75\n"), "");
  // Beyond the wall there is stock, and so there is below.
  EXPECT_EQ(Told("G00 X-.6 Y.45\nZ-.19\nX-1.4\n"), "RapidInStock 12");
  EXPECT_EQ(Told("G00 X-.6 Y.45\nZ-.3\n"), "RapidInStock 11");
  // Strokes that are farther apart than the tool is wide leave ridges.
  EXPECT_EQ(Told("G00 X-.6 Y-.3\nZ-.19\n", "J1.5"), "StepWide 8, RapidInStock 11");
}

// A face mill goes down where an end mill was, then over the wall of the U and down beside it,
// where a machine may take another way.
TEST(ControlGround, TheStockTellsNothingOfWaysBetweenStrokes) {
  const auto told = [](const std::string& plane, const std::string& step) {
    const std::string program =
        "(STOCK -4 -3 4 3 0 -0.5)\n(TOOL 1 0.5 FACE MILL)\n(TOOL 2 0.5 END MILL)\n"
        "G20 G17 G40 G49 G80 G90\nG10 L12 P1 R.5\nT2 M06\nG54 G00 X1.5 Y.5 S3000 M03\n"
        "G43 H2 Z.1\nG01 Z-.2 F10.\nG00 Z.1\nT1 M06\nG00 X1.5 Y.5 S3000 M03\nG43 H1 Z.1\n"
        "G150 G41 P1 Z-.2 R" +
        plane + " J" + step + " D1 F10.\nG40 G00 Z1.\nG53 G49 Z0. M05\nM30\nN1 " + kLegs + "M99\n";
    const KnownStock stock = StockIn(program);
    return control_test::Found(RunText(support::Wide(program), {.stock = &stock}));
  };
  EXPECT_EQ(told(".1", ".5"), "");
  EXPECT_EQ(told("-.05", ".5"), "");
}

TEST(ControlGround, TheStockIsNotKnownBehindAPocketThatIsNotDrawn) {
  EXPECT_EQ(Told("G00 X-.6 Y.45\nZ-.3\n", ""), "NotFollowed 8");
}

TEST(ControlGround, HalfADiscIsClearedInBothSenses) {
  const double low = std::sqrt(.75 * .75 - .25 * .25);
  const double high = std::sqrt(.75 * .75 - .5 * .5);
  const std::vector<At> wanted = {{0, .5, .1, true}, {0, .5, -.1},    {-low, .25, -.1},
                                  {low, .25, -.1},   {high, .5, -.1}, {-high, .5, -.1},
                                  {0, .5, -.1},      {0, .25, -.1}};
  const auto run = [](const std::string& side, const std::string& outline) -> const ControlTrack& {
    return RunText(Pocket("X0. Y.5", side + " P1 Z-.1 R.1 J.25 D1 F20.", "G1 Y0.\n" + outline));
  };
  ExpectFirst(run("G41", "X1.\nG3 X-1. I-1.\nG1 X0.\n"), wanted, .001);
  ExpectFirst(run("G42", "X-1.\nG2 X1. I1.\nG1 X0.\n"), wanted, .001);
}

// The way in goes round a wall: from the outline's end the tool comes back over it.
TEST(ControlGround, BackToTheStartItGoesByWayOfRWhereAWallStandsBetween) {
  const ControlTrack& track = RunText(
      Pocket("X.5 Y1.5", "G41 P1 Z-.1 R.1 J.5 D1 F20.", "G1 Y.5\n" + std::string(kLegs).substr(3)));
  const MotionPoint* const end = track.path.points + track.path.count;
  ASSERT_GT(track.path.count, 6);
  // Up beside the outline's end, over with a corner where Y arrives, down, and up behind the last.
  const At wanted[] = {{2.75, .5, -.1},     {2.75, .5, .1, true}, {1.75, 1.5, .1, true},
                       {.5, 1.5, .1, true}, {.5, 1.5, -.1},       {.5, 1.5, .1, true}};
  for (int i = 0; i < 6; ++i) {
    EXPECT_NEAR(end[i - 6].x, wanted[i].x, 1e-9) << i;
    EXPECT_NEAR(end[i - 6].y, wanted[i].y, 1e-9) << i;
    EXPECT_NEAR(end[i - 6].z, wanted[i].z, 1e-9) << i;
    EXPECT_EQ(end[i - 6].rapid, wanted[i].rapid) << i;
  }
}

}  // namespace
