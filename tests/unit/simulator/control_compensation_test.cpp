#include <algorithm>
#include <cmath>

#include "unit/simulator/control_fixture.h"

namespace {

using namespace control_test;

// A tool of 0.5 in at D1.
const ControlTrack& RunWithTool(const std::u16string& text) {
  static ControlTable table;
  table.tools[1].diameter = 0.5;
  return RunText(text, {.table = &table});
}

// Round a square of 2 in, clockwise from its lower left corner, with the tool on the outside.
const std::u16string kOutside =
    u"G0 X-1. Y-1. Z0.\nG41 D1 G1 X0. Y0. F10.\nY2.\nX2.\nY0.\nX0.\nG40 X-1. Y-1.\nM30";

double Share(const ControlTrack& track, auto holds) {
  int good = 0;
  for (std::int32_t i = 0; i < track.path.count; ++i) good += holds(track.path.points[i]);
  return static_cast<double>(good) / track.path.count;
}

TEST(ControlCompensation, RunsBesideASquareAndRollsAboutItsCorners) {
  const ControlTrack& track = RunWithTool(kOutside);
  EXPECT_EQ(Found(track), "");
  // Beside the start of the first side, at its left.
  EXPECT_NEAR(track.path.points[1].x, -0.25, 1e-9);
  EXPECT_NEAR(track.path.points[1].y, 0, 1e-9);
  EXPECT_NEAR(track.path.points[2].x, -0.25, 1e-9);
  EXPECT_NEAR(track.path.points[2].y, 2, 1e-9);
  // The tool's centre stays a quarter off the square.
  for (std::int32_t i = 1; i + 1 < track.path.count; ++i) {
    const MotionPoint& point = track.path.points[i];
    const double x = std::max({-point.x, point.x - 2, 0.0});
    const double y = std::max({-point.y, point.y - 2, 0.0});
    EXPECT_NEAR(std::hypot(x, y), 0.25, 1e-9) << "point " << i;
  }
  ExpectEnd(track, -1, -1, 0);
  // The lines as written stand beside it.
  EXPECT_GE(track.programmed.count, 6);
}

TEST(ControlCompensation, MeetsOnTheInsideOfACorner) {
  const ControlTrack& track =
      RunWithTool(u"G0 X1. Y1. Z0.\nG42 D1 G1 X0. Y1. F10.\nY0.5\nY2.\nX2.\nM30");
  (void)track;
  const ControlTrack& inside =
      RunWithTool(u"G0 X1. Y1. Z0.\nG42 D1 G1 X0. Y.5 F10.\nY2.\nX2.\nY0.\nG40 X1. Y1.\nM30");
  EXPECT_EQ(Found(inside), "");
  ASSERT_GE(inside.path.count, 4);
  EXPECT_NEAR(inside.path.points[1].x, .25, 1e-9);
  EXPECT_NEAR(inside.path.points[1].y, .5, 1e-9);
  EXPECT_NEAR(inside.path.points[2].x, .25, 1e-9);
  EXPECT_NEAR(inside.path.points[2].y, 1.75, 1e-9);
  EXPECT_NEAR(inside.path.points[3].x, 1.75, 1e-9);
  EXPECT_NEAR(inside.path.points[3].y, 1.75, 1e-9);
  // Square beside the last side's end, then out.
  EXPECT_NEAR(inside.path.points[4].x, 1.75, 1e-9);
  EXPECT_NEAR(inside.path.points[4].y, 0, 1e-9);
  ExpectEnd(inside, 1, 1, 0);
}

TEST(ControlCompensation, MakesABoreSmallerByTheTool) {
  // A bore of 2 in, counter-clockwise with the tool on its left.
  const ControlTrack& track =
      RunWithTool(u"G0 X0. Y0. Z0.\nG41 D1 G1 X1. F10.\nG3 I-1.\nG1 G40 X0.\nM30");
  EXPECT_EQ(Found(track), "");
  const double share = Share(track, [](const MotionPoint& point) {
    return std::fabs(std::hypot(point.x, point.y) - 0.75) < 1e-9;
  });
  EXPECT_GT(share, 0.9);
  ExpectEnd(track, 0, 0, 0);
}

TEST(ControlCompensation, PlungesWhereItStandsBesideTheLine) {
  const ControlTrack& track =
      RunWithTool(u"G0 X-1. Y0. Z1.\nG41 D1 G1 X0. F10.\nG1 Z-1.\nY2.\nX2.\nG40 Y3.\nM30");
  EXPECT_EQ(Found(track), "");
  EXPECT_NEAR(track.path.points[2].x, track.path.points[1].x, 1e-9);
  EXPECT_NEAR(track.path.points[2].y, track.path.points[1].y, 1e-9);
  EXPECT_NEAR(track.path.points[2].z, -1, 1e-9);
  EXPECT_NEAR(track.path.points[1].x, -.25, 1e-9);
}

TEST(ControlCompensation, NamesWhatTheControlRefuses) {
  EXPECT_EQ(Found(RunWithTool(u"G0 X0. Y0. Z0.\nG41 G1 X1. F10.\nY1.\nG40 X0.\nM30")),
            "CompNoOffset 2");
  EXPECT_EQ(Found(RunWithTool(u"G0 X0. Y0. Z0.\nG41 D2 G1 X1. F10.\nY1.\nG40 X0.\nM30")),
            "CompNoDiameter 2");
  EXPECT_EQ(Found(RunWithTool(u"G0 X0. Y0. Z0.\nG41 D1 G1 X1. F10.\nY1.\nM30")), "CompAtEnd 4");
  EXPECT_EQ(Found(RunWithTool(u"G0 X0. Y0. Z0.\nG41 D1 G1 X.1 F10.\nY1.\nG40 X-1.\nM30")),
            "CompEntryShort 2");
  // An inside arc of a tenth, and an inside step that is too short.
  EXPECT_EQ(
      Found(RunWithTool(u"G0 X0. Y0. Z0.\nG41 D1 G1 X1. F10.\nG3 X1.2 Y0. R.1\nG1 G40 Y-1.\nM30")),
      "CompCorner 3");
  EXPECT_EQ(
      Found(RunWithTool(u"G0 X0. Y0. Z0.\nG41 D1 G1 Y1. F10.\nX-1.\nY.9\nX-3.\nG40 Y0.\nM30")),
      "CompCorner 4");
}

TEST(ControlCompensation, IsOffBehindG40WithoutAMove) {
  EXPECT_EQ(Found(RunWithTool(u"G0 X0. Y0. Z0.\nG41 D1 G1 X1. F10.\nY1.\nG40\nG0 Z1.\nM30")), "");
}

TEST(ControlCompensation, CutsCornersByCAndRoundsThemByR) {
  const ControlTrack& chamfer = RunText(u"G0 X0. Y0. Z0.\nG1 X2. ,C.5 F10.\nY2.\nX0.\nM30");
  ExpectPoints(chamfer, {{0, 0, 0, true}, {1.5, 0, 0}, {2, .5, 0}, {2, 2, 0}, {0, 2, 0}});
  const ControlTrack& round = RunText(u"G0 X0. Y0. Z0.\nG1 X2. ,R.5 F10.\nY2.\nM30");
  EXPECT_NEAR(round.path.points[1].x, 1.5, 1e-9);
  ExpectEnd(round, 2, 2, 0);
  for (std::int32_t i = 1; i + 1 < round.path.count; ++i) {
    const MotionPoint& point = round.path.points[i];
    EXPECT_NEAR(std::hypot(point.x - 1.5, point.y - .5), .5, 1e-9);
  }
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z0.\nG1 X2. ,C3. F10.\nY2.\nM30")), "CornerUnfit 2");
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z0.\nG1 X2. ,R.5 F10.\nG0 Y2.\nM30")), "CornerUnfit 2");
}

}  // namespace
