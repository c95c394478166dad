#include "unit/simulator/control_fixture.h"

namespace {

using namespace control_test;

TEST(ControlCycles, KeepsDepthAndPlaneFromOneCycleToTheNext) {
  const std::u16string head = u"S900 M3 F9.\nG0 X0. Y0. Z1.\nG81 X0. Z-.5 R.1\n";
  EXPECT_EQ(Found(RunText(head + u"G83 X1. Q.3\nG80\nM30\n")), "");
  EXPECT_EQ(Found(RunText(head + u"G80\nG83 X1. Q.3\nG80\nM30\n")),
            "CycleNoDepth 5, CycleNoPlane 5");
}

TEST(ControlCycles, NamesWhatACirclePocketLacks) {
  ControlTable table;
  table.tools[1].diameter = 0.5;
  const ReadMotionOptions options{.table = &table};
  const std::u16string head = u"S900 M3 F9.\nG0 X0. Y0. Z0.\nG12 I.4 Z-.1 ";
  EXPECT_EQ(Found(RunText(head + u"D1\nM30\n", options)), "");
  EXPECT_EQ(Found(RunText(head + u"\nM30\n", options)), "CompNoOffset 3");
  EXPECT_EQ(Found(RunText(head + u"D2\nM30\n", options)), "CompNoDiameter 3");
  EXPECT_EQ(Found(RunText(u"S900 M3 F9.\nG0 X0. Y0. Z0.\nG12 I.2 Z-.1 D1\nM30\n", options)),
            "CompCorner 3");
}

// One block asks for tens of millions of strokes.
TEST(ControlCycles, EndsABlockThatRepeatsItsStrokesWithoutEnd) {
  const std::u16string head = u"S900 M3 F9.\nG0 X0. Y0. Z0.\n";
  for (const char16_t* block : {u"G91 G83 X.001 Z-2. R-.9 Q.001 L9999\nM30\n",
                                u"G91 G12 I.001 K.999 Q.001 L9999 Z-.0001 D1\nM30\n",
                                u"G98 G83 Z-2. R0. Q.001 L0\nG70 I1. L9999\nM30\n"}) {
    const ControlTrack& track = RunText(head + block);
    EXPECT_NE(Found(track).find("NoStepsLeft"), std::string::npos) << Found(track);
    // Of the whole it would be more than twenty times as much.
    EXPECT_LT(track.totalSeconds, 5000000);
  }
}

TEST(ControlCycles, DrillsEachPlaceAndReturnsToTheInitialPlane) {
  ExpectPoints(RunText(u"G0 X0. Y0. Z1.\nG98 G81 X1. Z-.5 R.1 F10.\nX2.\nG80\nM30"),
               {{0, 0, 1, true},
                {1, 0, 1, true},
                {1, 0, .1, true},
                {1, 0, -.5},
                {1, 0, 1, true},
                {2, 0, 1, true},
                {2, 0, .1, true},
                {2, 0, -.5},
                {2, 0, 1, true}});
}

TEST(ControlCycles, ReturnsToRInG99) {
  ExpectPoints(RunText(u"G0 X0. Y0. Z1.\nG99 G81 X1. Z-.5 R.1 F10.\nX2.\nG80\nM30"),
               {{0, 0, 1, true},
                {1, 0, 1, true},
                {1, 0, .1, true},
                {1, 0, -.5},
                {1, 0, .1, true},
                {2, 0, .1, true},
                {2, 0, -.5},
                {2, 0, .1, true}});
}

TEST(ControlCycles, PecksAllTheWayOutInG83) {
  ExpectPoints(RunText(u"G0 X0. Y0. Z.1\nG99 G83 X0. Z-.5 R.1 Q.25 F10.\nG80\nM30"),
               {{0, 0, .1, true},
                {0, 0, -.15},
                {0, 0, .1, true},
                {0, 0, -.1, true},
                {0, 0, -.4},
                {0, 0, .1, true},
                {0, 0, -.35, true},
                {0, 0, -.5},
                {0, 0, .1, true}});
}

TEST(ControlCycles, BreaksChipsInG73) {
  ExpectPoints(RunText(u"G0 X0. Y0. Z.1\nG99 G73 X0. Z-.4 R.1 Q.25 F10.\nG80\nM30"),
               {{0, 0, .1, true}, {0, 0, -.15}, {0, 0, -.1, true}, {0, 0, -.4}, {0, 0, .1, true}});
}

TEST(ControlCycles, ShortensPecksByJDownToK) {
  // I .3, J .1, K .15: pecks of .3, .2, .15, .15 ... from 0 to -.7
  ExpectPoints(RunText(u"G0 X0. Y0. Z0.\nG99 G73 X0. Z-.7 R0. I.3 J.1 K.15 F10.\nG80\nM30"),
               {{0, 0, 0, true},
                {0, 0, -.3},
                {0, 0, -.25, true},
                {0, 0, -.5},
                {0, 0, -.45, true},
                {0, 0, -.65},
                {0, 0, -.6, true},
                {0, 0, -.7},
                {0, 0, 0, true}});
}

TEST(ControlCycles, FeedsBackFromATapAndABore) {
  for (const char16_t* code : {u"G84", u"G85", u"G74"}) {
    const std::u16string text =
        std::u16string(u"G0 X0. Y0. Z.1\nG99 ") + code + u" X0. Z-.5 R.1 F10.\nG80\nM30";
    ExpectPoints(RunText(text), {{0, 0, .1, true}, {0, 0, -.5}, {0, 0, .1}});
  }
}

TEST(ControlCycles, ShiftsOffTheWallInG76) {
  ExpectPoints(
      RunText(u"G0 X0. Y0. Z.1\nG99 G76 X0. Z-.5 R.1 Q.02 F10.\nG80\nM30"),
      {{0, 0, .1, true}, {0, 0, -.5}, {.02, 0, -.5, true}, {.02, 0, .1, true}, {0, 0, .1, true}});
}

TEST(ControlCycles, StepsByLInG91) {
  ExpectPoints(RunText(u"G0 X0. Y0. Z1.\nG91 G99 G81 X1. Z-.5 R-.9 L2 F10.\nG80\nM30"),
               {{0, 0, 1, true},
                {1, 0, 1, true},
                {1, 0, .1, true},
                {1, 0, -.4},
                {1, 0, .1, true},
                {2, 0, .1, true},
                {2, 0, -.4},
                {2, 0, .1, true}});
}

TEST(ControlCycles, KeepsACycleForLaterWithL0) {
  const ControlTrack& track =
      RunText(u"G0 X0. Y0. Z.1\nG99 G81 X5. Z-.5 R.1 L0 F10.\nG70 X0. Y0. I1. J0 L2\nG80\nM30");
  ExpectPoints(track, {{0, 0, .1, true},
                       {1, 0, .1, true},
                       {1, 0, -.5},
                       {1, 0, .1, true},
                       {-1, 0, .1, true},
                       {-1, 0, -.5},
                       {-1, 0, .1, true}});
}

TEST(ControlCycles, DrillsNoMiddleWhereThePatternStandsOnTheCyclesLine) {
  ExpectPoints(RunText(u"G0 X0. Y0. Z.1\nG99 G81 G70 Z-.5 R.1 I1. J0 L2 F10.\nG80\nM30"),
               {{0, 0, .1, true},
                {1, 0, .1, true},
                {1, 0, -.5},
                {1, 0, .1, true},
                {-1, 0, .1, true},
                {-1, 0, -.5},
                {-1, 0, .1, true}});
}

TEST(ControlCycles, LaysHolesOnAnArcAndOnALine) {
  const ControlTrack& arc =
      RunText(u"G0 X0. Y0. Z.1\nG99 G81 Z-.5 R.1 L0 F10.\nG71 I1. J0 K90. L2\nG80\nM30");
  ExpectEnd(arc, 0, 1, .1);
  const ControlTrack& line =
      RunText(u"G0 X0. Y0. Z.1\nG99 G81 Z-.5 R.1 L0 F10.\nG72 I1. J90. L3\nG80\nM30");
  ExpectEnd(line, 0, 2, .1);
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z.1\nG70 I1. J0 L4\nM30")), "PatternNoCycle 2");
}

TEST(ControlCycles, NamesACycleWithoutRZOrPeck) {
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z1.\nG81 X1. R.1 F10.\nG80\nG82 X1. Z-1.\nG80\nM30")),
            "CycleNoDepth 2, CycleNoPlane 4");
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z1.\nG83 X1. Z-1. R.1 F10.\nG80\nM30")), "CycleNoPeck 2");
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z1.\nG81 X1. Z.5 R.1 F10.\nG80\nM30")), "CycleUpward 2");
}

TEST(ControlCycles, NamesWhatACycleLacksOnThePatternsLineToo) {
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z1.\nG81 G70 Z-.5 I1. L2 F10.\nG80\nM30")),
            "CycleNoPlane 2");
}

TEST(ControlCycles, WaitsNotByThePOfACall) {
  // M98 P2000 is no dwell of two seconds; P of the cycle's own line is one of half a second.
  const std::u16string head = u"G0 X0. Y0. Z1.\nG98 G82 X1. Z-.5 R.1 F10.";
  const std::u16string tail = u"\nM30\nO2000\nX2.\nM99\nN5 X2.\nM99\n";
  const double none = RunText(head + u"\nX2." + tail).totalSeconds;
  EXPECT_NEAR(RunText(head + u"\nM98 P2000" + tail).totalSeconds, none, 1e-9);
  EXPECT_NEAR(RunText(head + u" P500\nM98 P2000" + tail).totalSeconds, none + 1, 1e-9);
  EXPECT_NEAR(RunText(head + u"\nG154 P9\nX2." + tail).totalSeconds, none, 1e-9);
}

TEST(ControlCycles, CutsARoundPocketInRings) {
  ControlTable table;
  table.tools[1].diameter = 0.5;
  const ControlTrack& track =
      RunText(u"G0 X0. Y0. Z.1\nG13 Z-.2 I.5 K1. Q.25 D1 F10.\nM30", {.table = &table});
  // Rings at .5, .75 and 1 less the tool's radius of .25; back to the middle.
  ExpectEnd(track, 0, 0, -.2);
  double widest = 0;
  for (std::int32_t i = 0; i < track.path.count; ++i) {
    widest = std::max(widest, track.path.points[i].x);
  }
  EXPECT_NEAR(widest, .75, 1e-9);
}

TEST(ControlCycles, TellsAMissingPlaneOnceAndNothingThatFollowsFromIt) {
  // R counts as 0 then, which lies above the plane of Z-0.25.
  EXPECT_EQ(Found(RunText(u"G20 G90 G98 F5. G0 X0 Y0 Z-0.25\nG81 Z-1.\nM30\n")), "CycleNoPlane 2");
  EXPECT_EQ(Found(RunText(u"G20 G90 G98 F5. G0 X0 Y0 Z-0.25\nG81 R0 Z-1.\nM30\n")),
            "CyclePlaneHigh 2");
}

}  // namespace
