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

// A slot of 0.4 in for the tool of 0.5: each corner alone would fit.
TEST(ControlCompensation, NamesASlotThatIsNarrowerThanTheTool) {
  const ControlTrack& slot =
      RunWithTool(u"G0 X-1. Y0. Z0.\nG41 D1 G1 X0. F10.\nX2.\nY.4\nX0.\nG40 X-1. Y-1.\nM30");
  EXPECT_EQ(Found(slot), "CompCorner 4");
  // An end by an arc would go round almost whole.
  const ControlTrack& arc = RunWithTool(
      u"G0 X-1. Y0. Z0.\nG41 D1 G1 X0. F10.\nX2.\nG2 X2. Y.3 R2.\nG1 X0.\nG40 X-1. Y-1.\nM30");
  EXPECT_NE(Found(arc).find("CompCorner"), std::string::npos);
  EXPECT_LT(arc.path.count, 20);
  const ControlTrack& wide =
      RunWithTool(u"G0 X-1. Y0. Z0.\nG41 D1 G1 X0. F10.\nX2.\nY.6\nX0.\nG40 X-1. Y-1.\nM30");
  EXPECT_EQ(Found(wide), "");
}

TEST(ControlCompensation, RunsAnInsideArcOfTheToolsOwnRadius) {
  const ControlTrack& track = RunWithTool(
      u"G0 X-1. Y0. Z0.\nG41 D1 G1 X0. F10.\nX2.\nG3 X2.25 Y.25 J.25\nG1 Y2.\nG40 X1.\nM30");
  EXPECT_EQ(Found(track), "");
  ASSERT_GE(track.path.count, 4);
  EXPECT_NEAR(track.path.points[2].x, 2, 1e-9);
  EXPECT_NEAR(track.path.points[2].y, .25, 1e-9);
  EXPECT_NEAR(track.path.points[3].x, 2, 1e-9);
  EXPECT_NEAR(track.path.points[3].y, 2, 1e-9);
}

TEST(ControlCompensation, WaitsInAnInsideCornerWhereTheToolFits) {
  for (const char16_t* wait : {u"G4 P2.\n", u"S2000 M3\n"}) {
    const ControlTrack& track =
        RunWithTool(std::u16string(u"S900 M3\nG0 X-1. Y0. Z0.\n") + u"G41 D1 G1 X0. F10.\nX2.\n" +
                    wait + u"Y2.\nG40 X1.\nM30");
    EXPECT_EQ(Found(track), "");
    ASSERT_EQ(track.path.count, 5);
    EXPECT_NEAR(track.path.points[2].x, 1.75, 1e-9);
    EXPECT_NEAR(track.path.points[2].y, .25, 1e-9);
    // 1.75 in by 10 in a minute, and the wait.
    const double waited = track.seconds[2] - track.seconds[1] - 10.5;
    EXPECT_GT(waited, 0.5);
  }
}

TEST(ControlCompensation, ChangesSidesInAMirror) {
  const ControlTrack& track =
      RunWithTool(u"G0 X1. Y-1. Z0.\nG101 X0.\nG41 D1 G1 X0. Y0. F10.\nY2.\nG40 X-1.\nM30");
  EXPECT_EQ(Found(track), "");
  ASSERT_GE(track.path.count, 3);
  EXPECT_NEAR(track.path.points[1].x, .25, 1e-9);
  EXPECT_NEAR(track.path.points[2].x, .25, 1e-9);
  EXPECT_NEAR(track.path.points[2].y, 2, 1e-9);
}

TEST(ControlCompensation, EndsWhereThePlaneIsLeft) {
  const ControlTrack& track =
      RunWithTool(u"G0 X-1. Y0. Z0.\nG41 D1 G1 X0. F10.\nX2.\nG18\nX3.\nM30");
  EXPECT_EQ(Found(track), "CompPlane 4");
  ExpectEnd(track, 3, .25, 0);
}

TEST(ControlCompensation, EndsOnTheWayHomeAndSaysSo) {
  const ControlTrack& track =
      RunWithTool(u"G0 X-1. Y0. Z0.\nG41 D1 G1 X0. F10.\nX2.\nG91 G28 X0 Y0\nG90 G40\nM30");
  EXPECT_EQ(Found(track), "CompLeftOn 4, HomeInCut 4");
  ExpectEnd(track, 20, 10, 0);
  for (const char16_t* way : {u"G53 Z0.\n", u"T2 M6\n"}) {
    const ControlTrack& up = RunWithTool(
        std::u16string(u"S900 M3\nG0 X-1. Y0. Z0.\nG41 D1 G1 X0. F10.\nX2.\n") + way + u"G40\nM30");
    EXPECT_EQ(Found(up), "CompLeftOn 5");
    EXPECT_NEAR(LastPoint(up).x, 2, 1e-9);
    EXPECT_NEAR(LastPoint(up).y, .25, 1e-9);
  }
  EXPECT_EQ(Found(RunWithTool(u"G0 X-1. Y0. Z0.\nG41 D1 G1 X0. F10.\nX2.\nG40\nG53 Z0.\nM30")), "");
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
  EXPECT_EQ(WordsOf(TheTrack().track.findings.found[0]),
            u"Line 2: D2 has no diameter: the path is not offset.");
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

TEST(ControlCompensation, IsOnAtTheEndBehindAWayHomeToo) {
  const std::u16string text = u"S900 M3\nG0 X-1. Y0. Z0.\nG41 D1 G1 X0. F10.\nX2.\n";
  for (const char16_t* way : {u"G53 Z0.\n", u"G91 G28 Z0\n", u"T2 M6\n"}) {
    EXPECT_EQ(Found(RunWithTool(text + way + u"M30")), "CompLeftOn 5, CompAtEnd 6");
    EXPECT_EQ(Found(RunWithTool(text + way + u"G40\nM30")), "CompLeftOn 5");
  }
  EXPECT_EQ(Found(RunWithTool(text + u"M5\nM99")), "CompAtEnd 6");
  // No move in XY has begun it: the control has it on all the same.
  EXPECT_EQ(Found(RunWithTool(u"G0 X0. Y0. Z0.\nG41 D1\nM30")), "CompAtEnd 3");
}

TEST(ControlCompensation, SaysNothingOfAnEndThatTheRunDoesNotReach) {
  const std::u16string text = u"S900 M3\nG0 X-1. Y0. Z0.\nG41 D1 G1 X0. F10.\nX2.\n";
  EXPECT_EQ(Found(RunWithTool(text + u"GOTO 7\nG40\nM30")), "LabelMissing 5");
  EXPECT_EQ(Found(RunWithTool(text + u"#3000=1 (TURN THE PART)\nG40\nM30")), "ProgramAlarm 5");
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
