#include <cmath>

#include "unit/simulator/control_fixture.h"

namespace {

using namespace control_test;

TEST(ControlMotion, RunsARapidAtFullRateOfEachAxis) {
  // X has 3 to go, Y 1: together to (1, 1), then X alone.
  ExpectPoints(RunText(u"G0 X0. Y0. Z0.\nX3. Y1.\nM30"),
               {{0, 0, 0, true}, {1, 1, 0, true}, {3, 1, 0, true}});
}

TEST(ControlMotion, RunsARapidOfThreeAxesInThreeLegs) {
  ExpectPoints(RunText(u"G0 X0. Y0. Z0.\nX3. Y-2. Z1.\nM30"),
               {{0, 0, 0, true}, {1, -1, 1, true}, {2, -2, 1, true}, {3, -2, 1, true}});
}

TEST(ControlMotion, AddsStepsInG91) {
  ExpectPoints(RunText(u"G0 X1. Y0. Z0.\nG91 G1 X1. F10.\nY-2.\nG90 Y5.\nM30"),
               {{1, 0, 0, true}, {2, 0, 0}, {2, -2, 0}, {2, 5, 0}});
}

TEST(ControlMotion, ConvertsMillimetresAndInches) {
  ExpectPoints(RunText(u"G21 G0 X25.4 Y0. Z0.\nM30"), {{1, 0, 0, true}});
  ExpectPoints(RunText(u"G20 G0 X1. Y0. Z0.\nM30", {.metric = true}), {{25.4, 0, 0, true}});
}

void ExpectOnCircle(const ControlTrack& track, double x, double y, double radius,
                    std::int32_t line) {
  int chords = 0;
  for (std::int32_t i = 0; i < track.path.count; ++i) {
    const MotionPoint& point = track.path.points[i];
    if (point.sourceLine != line) continue;
    ++chords;
    EXPECT_NEAR(std::hypot(point.x - x, point.y - y), radius, 1e-9);
    if (i == 0) continue;
    // The middle of a chord lies at most half a thousandth inside.
    const MotionPoint& before = track.path.points[i - 1];
    const double middle = std::hypot((point.x + before.x) / 2 - x, (point.y + before.y) / 2 - y);
    EXPECT_GE(middle, radius - 0.0005 - 1e-9);
  }
  EXPECT_GT(chords, 3);
}

TEST(ControlMotion, DrawsAnArcByItsCentre) {
  const ControlTrack& track = RunText(u"G0 X1. Y0. Z0.\nG3 X0. Y1. I-1. J0. F10.\nM30");
  ExpectOnCircle(track, 0, 0, 1, 1);
  ExpectEnd(track, 0, 1, 0);
  EXPECT_GT(track.path.points[2].y, 0);
}

TEST(ControlMotion, TurnsClockwiseWithG2) {
  const ControlTrack& track = RunText(u"G0 X1. Y0. Z0.\nG2 X0. Y1. I-1. F10.\nM30");
  ExpectOnCircle(track, 0, 0, 1, 1);
  EXPECT_LT(track.path.points[2].y, 0);
}

TEST(ControlMotion, DrawsAWholeCircleWhereTheEndIsTheStart) {
  const ControlTrack& track = RunText(u"G0 X1. Y0. Z0.\nG3 I-1. F10.\nM30");
  ExpectOnCircle(track, 0, 0, 1, 1);
  ExpectEnd(track, 1, 0, 0);
  EXPECT_GT(track.path.count, 40);
}

TEST(ControlMotion, TakesTheShortArcByRAndTheLongOneByMinusR) {
  // From (1, 0) to (0, 1) by R1: about (0, 0) counter-clockwise; by R-1 about (1, 1).
  ExpectOnCircle(RunText(u"G0 X1. Y0. Z0.\nG3 X0. Y1. R1. F10.\nM30"), 0, 0, 1, 1);
  ExpectOnCircle(RunText(u"G0 X1. Y0. Z0.\nG3 X0. Y1. R-1. F10.\nM30"), 1, 1, 1, 1);
  ExpectOnCircle(RunText(u"G0 X1. Y0. Z0.\nG2 X0. Y1. R1. F10.\nM30"), 1, 1, 1, 1);
  ExpectOnCircle(RunText(u"G0 X1. Y0. Z0.\nG2 X0. Y1. R-1. F10.\nM30"), 0, 0, 1, 1);
}

TEST(ControlMotion, TakesHalfACircleWhereRIsRoundedBelowHalfTheWay) {
  const ControlTrack& track = RunText(u"G0 X0. Y0. Z0.\nG3 X2.0001 R1. F10.\nM30");
  EXPECT_EQ(Found(track), "");
  ExpectEnd(track, 2.0001, 0, 0);
}

TEST(ControlMotion, NamesArcsThatCannotBe) {
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z0.\nG3 X3. R1. F10.\nG2 X0.\nG2 X0. R1.\nM30")),
            "ArcRadiusSmall 2, ArcNoCentre 3, ArcFullByRadius 4");
  EXPECT_EQ(Found(RunText(u"G0 X1. Y0. Z0.\nG3 X0. Y1.002 I-1. F10.\nM30")), "ArcEndOff 2");
  EXPECT_EQ(Found(RunText(u"G0 X1. Y0. Z0.\nG3 X0. Y1.0009 I-1. F10.\nM30")), "");
}

TEST(ControlMotion, RaisesAHelixEvenly) {
  const ControlTrack& track = RunText(u"G0 X1. Y0. Z0.\nG3 X-1. Z-1. I-1. F10.\nM30");
  ExpectEnd(track, -1, 0, -1);
  for (std::int32_t i = 1; i < track.path.count; ++i) {
    const MotionPoint& point = track.path.points[i];
    const double angle = std::atan2(std::max(point.y, 0.0), point.x);
    EXPECT_NEAR(point.z, -angle / 3.14159265358979, 1e-9);
  }
}

TEST(ControlMotion, TurnsFromZToXInG18AndFromYToZInG19) {
  // G18, G03 from Z+ towards X+: (x 0, z 1) to (x 1, z 0) about the zero.
  const ControlTrack& zx = RunText(u"G0 X0. Y0. Z1.\nG18 G3 X1. Z0. I0. K-1. F10.\nM30");
  ExpectEnd(zx, 1, 0, 0);
  EXPECT_GT(zx.path.points[2].x, 0);
  EXPECT_GT(zx.path.points[2].z, 0);
  EXPECT_LT(zx.path.count, 60);
  const ControlTrack& yz = RunText(u"G0 X0. Y1. Z0.\nG19 G3 Y0. Z1. J-1. K0. F10.\nM30");
  ExpectEnd(yz, 0, 0, 1);
  EXPECT_GT(yz.path.points[2].z, 0);
  EXPECT_LT(yz.path.count, 60);
}

TEST(ControlMotion, ShiftsByG52AndG92) {
  ExpectPoints(
      RunText(u"G0 X0. Y0. Z0.\nG52 X1. Y2.\nX0. Y0.\nG52 X0. Y0.\nX0. Y0.\nM30"),
      {{0, 0, 0, true}, {1, 1, 0, true}, {1, 2, 0, true}, {0, 1, 0, true}, {0, 0, 0, true}});
  // At 2, called 0: 1 lies at 3.
  ExpectPoints(RunText(u"G0 X2. Y0. Z0.\nG92 X0.\nX1.\nM30"), {{2, 0, 0, true}, {3, 0, 0, true}});
}

TEST(ControlMotion, LaysFurtherOffsetsBesideTheFirst) {
  const ControlTrack& track = RunText(
      u"G10 L2 P1 X-10. Y-5. Z-8.\nG10 L2 P2 X-7. Y-5. Z-8.\nG54 G0 X0. Y0. Z0.\nG55 X0.\n"
      u"M30");
  ExpectPoints(track, {{0, 0, 0, true}, {3, 0, 0, true}});
}

TEST(ControlMotion, GoesToMachineZeroByG53AndG28) {
  ControlTable table;
  table.work[kFirstWorkRow][0] = -10;
  table.work[kFirstWorkRow][1] = -5;
  table.work[kFirstWorkRow][2] = -8;
  const ReadMotionOptions options{.table = &table};
  ExpectPoints(RunText(u"G0 X0. Y0. Z0.\nG53 Z0.\nM30", options),
               {{0, 0, 0, true}, {0, 0, 8, true}});
  ExpectPoints(RunText(u"G0 X0. Y0. Z0.\nG91 G28 Z0.\nG90\nM30", options),
               {{0, 0, 0, true}, {0, 0, 8, true}});
  // In G90 by way of the named point.
  const ControlTrack& by = RunText(u"G0 X0. Y0. Z2.\nG28 Z1.\nM30", options);
  ExpectPoints(by, {{0, 0, 2, true}, {0, 0, 1, true}, {0, 0, 8, true}});
  EXPECT_EQ(Found(by), "HomeThroughPart 2");
}

// A retract in front of the offset names a place of the machine alone.
TEST(ControlMotion, DrawsTheZeroOfTheOffsetBehindPlacesOfTheMachine) {
  const std::vector<At> wanted = {{10, 5, 10, true}, {5, 0, 10, true}, {0, 0, 10, true}};
  ControlTable table;
  table.work[kFirstWorkRow + 1][0] = -10;
  table.work[kFirstWorkRow + 1][1] = -5;
  table.work[kFirstWorkRow + 1][2] = -12;
  const ReadMotionOptions options{.table = &table};
  ExpectPoints(RunText(u"G53 G0 Z-2.\nG55\nX0. Y0. Z10.\nM30\n", options), wanted);
  const std::u16string retract = u"G53 G0 Z-2.\n";
  const std::u16string there = u"X0. Y0. Z10.\nM30\n";
  ExpectPoints(RunText(retract + u"G10 L2 P1 X-10. Y-5. Z-12.\n" + there), wanted);
  ExpectPoints(RunText(retract + u"#5221=-10.\n#5222=-5.\n#5223=-12.\n" + there), wanted);
  // Behind a move in the first offset the second lies beside it.
  ExpectPoints(RunText(retract + u"G10 L2 P1 X-10. Y-5. Z-12.\nG10 L2 P2 X-9. Y-5. Z-12.\n" +
                       there.substr(0, 13) + u"G55 X0.\nM30\n"),
               {{10, 5, 10, true}, {5, 0, 10, true}, {0, 0, 10, true}, {1, 0, 10, true}});
}

TEST(ControlMotion, DrawsTheZeroThatAVariableSetsBeforeTheFirstMove) {
  ExpectPoints(RunText(u"#5221=-15.\n#5222=-8.\n#5223=-12.\nG0 X1. Y0. Z0.\nM30\n"),
               {{1, 0, 0, true}});
}

TEST(ControlMotion, KeepsACornerBehindTheOffsetInForceAndDropsItBeforeAnArc) {
  // The round of 0.1 begins at 0.9 and ends at 0.1 of the second line.
  const ControlTrack& same =
      RunText(u"S900 M3 F9.\nG54 G0 X0. Y0. Z0.\nG1 X1. ,R.1\nG54\nY1.\nM30\n");
  EXPECT_EQ(Found(same), "");
  EXPECT_NEAR(same.path.points[1].x, .9, 1e-9);
  ExpectEnd(same, 1, 1, 0);
  const ControlTrack& arc =
      RunText(u"S900 M3 F9.\nG0 X0. Y0. Z0.\nG1 X1. ,R.1\nG2 I.5\nG1 Y1.\nM30\n");
  EXPECT_EQ(Found(arc), "CornerUnfit 3");
  EXPECT_NEAR(arc.path.points[1].x, 1, 1e-9);
  EXPECT_NEAR(arc.path.points[1].y, 0, 1e-9);
  ExpectEnd(arc, 1, 1, 0);
}

// The second scale is about the place that the first one led to, 2.
TEST(ControlMotion, ScalesAboutWhereTheToolStandsBehindAnotherScale) {
  ExpectEnd(RunText(u"G0 X0. Y0. Z0.\nG51 X0. Y0. Z0. P2.\nX1.\nG51 P3.\nX4.\nM30\n"), 8, 0, 0);
}

TEST(ControlMotion, TakesSmoothnessForNoMotion) {
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z0.\nG187 P2 E0.01\nX1.\nM30\n")), "");
}

TEST(ControlMotion, ScalesTurnsAndMirrors) {
  ExpectPoints(RunText(u"G0 X0. Y0. Z0.\nG51 X1. Y0. Z0. P2.\nX3.\nG50\nX3.\nM30"),
               {{0, 0, 0, true}, {5, 0, 0, true}, {3, 0, 0, true}});
  const ControlTrack& turned = RunText(u"G0 X0. Y0. Z0.\nG68 X0. Y0. R90.\nX2.\nG69\nM30");
  ExpectEnd(turned, 0, 2, 0);
  ExpectEnd(RunText(u"G0 X1. Y1. Z0.\nG101 X0\nX3.\nG100 X0\nM30"), -3, 1, 0);
  // The tool stands where it stood: behind G101 the program calls X1 minus 1.
}

TEST(ControlMotion, CountsTimeByFeedRapidAndDwell) {
  // 10 in at 60 in/min: 10 s; G4 P1. one second more, P500 half of one.
  const ControlTrack& track = RunText(u"G0 X0. Y0. Z0.\nG1 X10. F60.\nG4 P1.\nG4 P500\nM30");
  EXPECT_NEAR(track.totalSeconds - track.seconds[0], 11.5, 1e-9);
  // 30 in at 710 in/min with 50 in/s2: 30 / 11.8333 + 11.8333 / 50.
  const ControlTrack& rapid = RunText(u"G0 X0. Y0. Z0.\nX30.\nM30");
  EXPECT_NEAR(rapid.seconds[1] - rapid.seconds[0], 30 / (710 / 60.0) + 710 / 60.0 / 50, 1e-9);
}

TEST(ControlMotion, TakesInverseTimeInG93) {
  const ControlTrack& track = RunText(u"G0 X0. Y0. Z0.\nG93 G1 X10. F6.\nM30");
  EXPECT_NEAR(track.seconds[1] - track.seconds[0], 10, 1e-9);
}

TEST(ControlMotion, CountsTheFeedOfATurnWithTheSpeedInForce) {
  // 0.01 in a turn: 10 in/min at 1,000 turns, 5 in/min at 500.
  const ControlTrack& track = RunText(u"G0 X0. Y0. Z0.\nS1000\nG95 G1 X10. F.01\nS500\nX20.\nM30");
  EXPECT_NEAR(track.seconds[1] - track.seconds[0], 60, 1e-9);
  EXPECT_NEAR(track.seconds[2] - track.seconds[1], 120, 1e-9);
}

TEST(ControlMotion, WritesTheTablesThatG10Names) {
  const ControlTrack& track = RunText(
      u"G10 L10 P1 R1.\nG10 L11 P1 R2.\nG10 L12 P1 R3.\nG10 L13 P1 R4.\nG10 L3 P1 R9.\n"
      u"G10 L20 P2 X5.\nG0 X#2001 Y#2201 Z[#2401+10.*#2601+100.*#7021]\nM30");
  ExpectEnd(track, 1, 2, 3 + 40 + 500);
  EXPECT_EQ(Found(track), "BadVariable 5");
}

TEST(ControlMotion, SplitsTheTimeByTools) {
  ControlTable table;
  table.toolChangeSeconds = 6;
  const ControlTrack& track =
      RunText(u"T1 M6\nG0 X0. Y0. Z0.\nG4 P2.\nT2 M6\nG4 P3.\nM30", {.table = &table});
  ASSERT_EQ(track.operationCount, 2);
  EXPECT_EQ(track.operations[0].tool, 1);
  EXPECT_EQ(track.operations[1].line, 3);
  EXPECT_NEAR(track.operations[1].seconds, 3, 1e-9);
  EXPECT_NEAR(track.operations[0].seconds + track.operations[1].seconds + 6, track.totalSeconds,
              1e-9);
}

TEST(ControlMotion, TellsAllTimesByTheMeasuredFactor) {
  ControlTable table;
  table.timeFactor = 1.5;
  // The tool is at home, so that a change takes 6 s; 4 in at 60 in/min take 4 s.
  const ControlTrack& track =
      RunText(u"T1 M6\nT2 M6\nG91 G94\nG1 X-4. F60.\n#1=#3001\nG4 P2.\nG0 X[[#1-#3001]/1000]\nM30",
              {.table = &table});
  ASSERT_EQ(track.operationCount, 2);
  EXPECT_NEAR(track.operations[0].began, 9, 1e-9);
  EXPECT_NEAR(track.operations[0].seconds, 9, 1e-9);
  EXPECT_NEAR(track.operations[1].began, 18, 1e-9);
  EXPECT_NEAR(track.operations[1].seconds, track.totalSeconds - 18, 1e-9);
  const std::int32_t last = track.path.count - 1;
  EXPECT_NEAR(track.seconds[last - 1], 18 + 1.5 * (4 + 2), 1e-9);  // when it is left
  EXPECT_NEAR(track.seconds[last], track.totalSeconds, 1e-9);
  // The program's own timer counts what it counts: 2 s of dwell.
  EXPECT_NEAR(track.path.points[last].x - track.path.points[last - 1].x, -2, 1e-9);
}

}  // namespace
