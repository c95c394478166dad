// Rows of the page of the machine's motion that no other test is about: codes, variables, and what
// the settings change. Places and times are worked out by hand.
#include <cmath>
#include <string>

#include "text/codetext.h"
#include "unit/simulator/control_fixture.h"

namespace {

using namespace control_test;
using morva::IntegerText;

ControlTable SetOffsets() {
  ControlTable table;
  for (int row = 0; row < kWorkRows; ++row) {
    table.work[row][0] = row == kLocalZeroRow ? 0 : -20 + .125 * row;
    table.work[row][1] = row == kLocalZeroRow ? 0 : -10;
    table.work[row][2] = row == kLocalZeroRow ? 0 : -12;
  }
  return table;
}

TEST(ControlRows, EachWorkOffsetLiesWhereItsRowSays) {
  const ControlTable table = SetOffsets();
  const auto end = [&](const std::u16string& code) {
    const ControlTrack& track =
        RunText(u"G54 G0 X0. Y0. Z0.\n" + code + u" X1.\nM30\n", {.table = &table});
    EXPECT_EQ(Found(track), "") << code.size();
    return LastPoint(track).x;
  };
  // A row further is .125 in further from G54, at X1.
  for (int i = 0; i < 6; ++i) EXPECT_NEAR(end(u"G" + IntegerText(54 + i)), 1 + .125 * i, 1e-9);
  for (int i = 0; i < 20; ++i) {
    EXPECT_NEAR(end(u"G" + IntegerText(110 + i)), 1 + .125 * (6 + i), 1e-9) << i;
  }
  for (int i = 1; i <= 99; ++i) {
    EXPECT_NEAR(end(u"G154 P" + IntegerText(i)), 1 + .125 * (5 + i), 1e-9) << i;
  }
  EXPECT_EQ(Found(RunText(u"G154 P100 G0 X0.\nM30\n", {.table = &table})), "BadVariable 1");
}

TEST(ControlRows, TakesALengthAwayByG44) {
  ControlTable table = SetOffsets();
  table.tools[1].length = 5;
  const auto found = [&](const char16_t* code, const char16_t* z) {
    return Found(RunText(u"T1 M6\nG54 G0 X0. Y0. S900 M3\n" + std::u16string(code) + u" H1 Z" + z +
                             u"\nG1 Z0. F9.\nM30\n",
                         {.table = &table}));
  };
  // The zero lies 12 below the end of Z. With G43 the spindle stands 5 higher, with G44 lower.
  EXPECT_EQ(found(u"G43", u"7."), "");
  EXPECT_EQ(found(u"G43", u"7.1"), "TravelExceeded 3");
  EXPECT_EQ(found(u"G44", u"12."), "");
  EXPECT_EQ(found(u"G44", u"-8."), "");
  EXPECT_EQ(found(u"G44", u"-8.1"), "TravelExceeded 3");
}

TEST(ControlRows, CodesOfExactStopAndLookAheadChangeNoPath) {
  const auto points = [](const std::u16string& code) {
    const ControlTrack& track =
        RunText(u"G0 X0. Y0. Z0. S900 M3\n" + code + u"\nG1 X1. F10.\nY1.\nG2 X2. Y2. I1.\nM30\n");
    EXPECT_EQ(Found(track), "");
    std::vector<At> all;
    for (std::int32_t i = 0; i < track.path.count; ++i) {
      const MotionPoint& point = track.path.points[i];
      all.push_back({point.x, point.y, point.z, point.rapid});
    }
    return all;
  };
  const std::vector<At> plain = points(u"");
  for (const char16_t* code : {u"G9", u"G61", u"G64", u"G103 P1", u"G103", u"G187 P1 E.01"}) {
    ExpectPoints(RunText(u"G0 X0. Y0. Z0. S900 M3\n" + std::u16string(code) +
                         u"\nG1 X1. F10.\nY1.\nG2 X2. Y2. I1.\nM30\n"),
                 plain);
  }
}

TEST(ControlRows, StopsEndTheSpindle) {
  ControlTable table;
  const auto found = [&](const char16_t* stop) {
    return Found(
        RunText(u"G0 X0. Y0. Z0. S900 M3\nG1 X1. F9.\n" + std::u16string(stop) + u"\nG1 X2.\nM30\n",
                {.table = &table}));
  };
  EXPECT_EQ(found(u"M0"), "SpindleOff 4");
  EXPECT_EQ(found(u"M00"), "SpindleOff 4");
  EXPECT_EQ(found(u"M1"), "");
  EXPECT_EQ(found(u"M0\nM3"), "");
  table.optionalStop = true;
  EXPECT_EQ(found(u"M1"), "SpindleOff 4");
}

TEST(ControlRows, NamesASpeedThatTheSpindleHasNot) {
  ControlTable table;
  const auto found = [&](const char16_t* speed) {
    return Found(
        RunText(u"G0 X0. Y0. Z0.\nS" + std::u16string(speed) + u" M3\nM30\n", {.table = &table}));
  };
  EXPECT_EQ(found(u"7500"), "");
  EXPECT_EQ(found(u"7501"), "SpeedHigh 2");
  table.mostSpeed = 9000;
  EXPECT_EQ(found(u"7501"), "");
  EXPECT_EQ(found(u"9001"), "SpeedHigh 2");
}

TEST(ControlRows, NamesAPlaceOfTheMachineInSteps) {
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z0.\nG91 G53 Z0.\nG90\nM30\n")), "MachineWithG91 2");
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z0.\nG91 G53\nG90\nM30\n")), "");
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z0.\nG90 G53 Z0.\nM30\n")), "");
}

TEST(ControlRows, NamesCompensationThatBeginsOrEndsInAnArc) {
  const std::u16string start = u"G10 L12 P1 R.5\nG0 X0. Y0. Z0. S900 M3\nF9.\n";
  EXPECT_EQ(Found(RunText(start + u"G41 D1 G3 X2. Y2. J2.\nG40 G1 Y4.\nM30\n")), "CompArcStart 4");
  EXPECT_EQ(Found(RunText(start + u"G41 D1 G1 X2.\nG40 G3 X4. Y2. J2.\nM30\n")), "CompArcStart 5");
  EXPECT_EQ(Found(RunText(start + u"G41 D1 G1 X2.\nG3 X4. Y2. J2.\nG40 G1 Y4.\nM30\n")), "");
}

TEST(ControlRows, LiftsAboveRBetweenPecksByItsSetting) {
  ControlTable table;
  table.retractAboveR = .2;
  // Pecks of .25 from R .1: to -.15, -.4 and the bottom; between them out to .3 and back to .05
  // above the last depth.
  ExpectPoints(
      RunText(u"G0 X0. Y0. Z1. S900 M3\nG83 R.1 Z-.5 Q.25 F9.\nG80\nM30\n", {.table = &table}),
      {{0, 0, 1, true},
       {0, 0, .1, true},
       {0, 0, -.15},
       {0, 0, .3, true},
       {0, 0, -.1, true},
       {0, 0, -.4},
       {0, 0, .3, true},
       {0, 0, -.35, true},
       {0, 0, -.5},
       {0, 0, 1, true}});
}

TEST(ControlRows, GoesBackBetweenPecksByItsSetting) {
  ControlTable table;
  table.peckRetract = .02;
  const ControlTrack& breaks =
      RunText(u"G0 X0. Y0. Z1. S900 M3\nG73 R.1 Z-.3 Q.25 F9.\nG80\nM30\n", {.table = &table});
  ASSERT_EQ(breaks.path.count, 6);
  EXPECT_NEAR(breaks.path.points[2].z, -.15, 1e-9);
  EXPECT_NEAR(breaks.path.points[3].z, -.13, 1e-9);
  EXPECT_NEAR(breaks.path.points[4].z, -.3, 1e-9);
  const ControlTrack& pecks =
      RunText(u"G0 X0. Y0. Z1. S900 M3\nG83 R.1 Z-.3 Q.25 F9.\nG80\nM30\n", {.table = &table});
  ASSERT_EQ(pecks.path.count, 7);
  EXPECT_NEAR(pecks.path.points[3].z, .1, 1e-9);
  EXPECT_NEAR(pecks.path.points[4].z, -.13, 1e-9);
}

// Seconds of the code, from X0 where a rapid has ended.
double SecondsOf(const std::u16string& code, const ControlTable& table) {
  const std::u16string start = u"G0 X0. Y0. Z0.\n";
  const double before = RunText(start + u"M30\n", {.table = &table}).totalSeconds;
  return RunText(start + code + u"M30\n", {.table = &table}).totalSeconds - before;
}

TEST(ControlRows, RapidsTakeTheirAcceleration) {
  ControlTable table;
  table.rapidRate = 600;
  // 10 in at 10 in/s and a fifth of a second to get there and to stop.
  EXPECT_NEAR(SecondsOf(u"G0 X10.\n", table), 1.2, 1e-9);
  // An inch is too short for the full rate.
  EXPECT_NEAR(SecondsOf(u"G0 X1.\n", table), 2 * std::sqrt(1. / 50), 1e-9);
  table.acceleration = 100;
  EXPECT_NEAR(SecondsOf(u"G0 X10.\n", table), 1.1, 1e-9);
  EXPECT_NEAR(SecondsOf(u"G0 X1.\n", table), .2, 1e-9);
}

TEST(ControlRows, StartsOfTheSpindleTakeTheirSeconds) {
  ControlTable table;
  EXPECT_NEAR(SecondsOf(u"S900 M3\n", table), 2, 1e-9);
  table.spindleSeconds = 3.5;
  EXPECT_NEAR(SecondsOf(u"S900 M3\n", table), 3.5, 1e-9);
  EXPECT_NEAR(SecondsOf(u"S900 M4\nM5\n", table), 3.5, 1e-9);
}

TEST(ControlRows, SharpCornersTakeTheirSeconds) {
  ControlTable table;
  const std::u16string corner = u"G1 X1. F60.\nY1.\n";
  // An inch a second, and one corner.
  EXPECT_NEAR(SecondsOf(corner, table), 2 + .0375, 1e-9);
  table.reversalSeconds = .5;
  EXPECT_NEAR(SecondsOf(corner, table), 2.5, 1e-9);
  // 20 degrees are none.
  EXPECT_NEAR(SecondsOf(u"G1 X1. F60.\nX1.9397 Y.342\n", table), 2, 1e-4);
}

TEST(ControlRows, AShortFeedTakesTheLeastTimeOfABlock) {
  ControlTable table;
  EXPECT_NEAR(SecondsOf(u"G1 X.001 F600.\n", table), .0025, 1e-9);
  table.leastBlockSeconds = .01;
  EXPECT_NEAR(SecondsOf(u"G1 X.001 F600.\n", table), .01, 1e-9);
}

// The value of a variable behind code, read into the end of a move.
double ValueOf(const std::u16string& code, int number, const ControlTable& table) {
  const ControlTrack& track = RunText(
      code + u"#1=#" + IntegerText(number) + u"\nG90 G94 G80 G0 G54 X0. Y0. Z0.\nX#1\nM30\n",
      {.table = &table});
  return LastPoint(track).x;
}

TEST(ControlRows, ReadsTheModesByTheirGroups) {
  const ControlTable table = SetOffsets();
  struct Row {
    const char16_t* code;
    int number;
    double value;
  };
  for (const Row& row : {Row{u"", 4001, 0},
                         {u"G1 F9.\n", 4001, 1},
                         {u"", 4002, 17},
                         {u"G18\n", 4002, 18},
                         {u"", 4003, 90},
                         {u"G91\n", 4003, 91},
                         {u"", 4005, 94},
                         {u"G93\n", 4005, 93},
                         {u"G20\n", 4006, 20},
                         {u"", 4007, 40},
                         {u"G41 D1\n", 4007, 41},
                         {u"", 4008, 49},
                         {u"G43 H1\n", 4008, 43},
                         {u"", 4009, 80},
                         {u"G81 R.1 Z-.1 L0 F9.\n", 4009, 81},
                         {u"", 4010, 98},
                         {u"G99\n", 4010, 99},
                         {u"", 4011, 50},
                         {u"", 4012, 54},
                         {u"G57\n", 4012, 57},
                         {u"G112\n", 4012, 112},
                         {u"G154 P3\n", 4012, 112},
                         {u"G154 P30\n", 4012, 154},
                         {u"", 4013, 64},
                         {u"G61\n", 4013, 61},
                         {u"", 4016, 69},
                         {u"", 4004, 0},
                         {u"", 4021, 0},
                         {u"G41 D7\n", 4107, 7},
                         {u"G43 H8\n", 4111, 8},
                         {u"F12.5\n", 4109, 12.5},
                         {u"S900\n", 4119, 900},
                         {u"T11\n", 4120, 11},
                         {u"", 1000, 0},
                         {u"", 1099, 0},
                         {u"", 1199, 0},
                         {u"", 3011, 0},
                         {u"", 3012, 0},
                         {u"", 3000, 0},
                         {u"", 3006, 0},
                         {u"T5 M6\n", 3026, 5},
                         {u"S800 M3\n", 3027, 800},
                         {u"S800\n", 3027, 0}}) {
    EXPECT_NEAR(ValueOf(row.code, row.number, table), row.value, 1e-9)
        << row.number << " " << std::u16string(row.code).size();
  }
}

TEST(ControlRows, ReadsPlacesInTheUnitOfTheProgram) {
  ControlTable table = SetOffsets();
  table.tools[3] = {5, .25, .5, -.125};
  // G54 lies at -19.875 -10 -12, a row on .125 further in X; row 1 is G54.
  const std::u16string at = u"G0 X1. Y2. Z3.\n";
  struct Row {
    int number;
    double value;
  };
  for (const Row& row :
       {Row{5001, 1},   {5002, 2},      {5003, 3},       {5041, 1},       {5042, 2},
        {5043, 3},      {5061, 1},      {5063, 3},       {5021, -18.875}, {5022, -8},
        {5023, -9},     {5201, 0},      {5221, -19.875}, {5222, -10},     {5223, -12},
        {5241, -19.75}, {5321, -19.25}, {7001, -19.125}, {7381, -16.75},  {2003, 5},
        {2203, .25},    {2403, .5},     {2603, -.125}}) {
    EXPECT_NEAR(ValueOf(at, row.number, table), row.value, 1e-9) << row.number;
  }
}

TEST(ControlRows, WritesOffsetsAndToolsByTheirNumbers) {
  ControlTable table = SetOffsets();
  const auto end = [&](const char16_t* code) {
    const ControlTrack& track =
        RunText(u"G54 G0 X0. Y0. Z0.\n" + std::u16string(code) + u"\nM30\n", {.table = &table});
    EXPECT_EQ(Found(track), "");
    return LastPoint(track).x;
  };
  EXPECT_NEAR(end(u"#5241=-18.\nG55 X0."), 1.875, 1e-9);
  EXPECT_NEAR(end(u"#5321=-18.\nG59 X0."), 1.875, 1e-9);
  EXPECT_NEAR(end(u"#7001=-18.\nG110 X0."), 1.875, 1e-9);
  EXPECT_NEAR(end(u"#7381=-18.\nG129 X0."), 1.875, 1e-9);
  EXPECT_NEAR(end(u"#5201=.5\nX0."), .5, 1e-9);
  EXPECT_NEAR(end(u"#2004=7.\nX#2004"), 7, 1e-9);
  EXPECT_NEAR(end(u"#2604=.5\nX#2604"), .5, 1e-9);
  EXPECT_EQ(Found(RunText(u"#4001=1\n#5021=1\n#0=1\n#5061=1\nM30\n")),
            "BadVariable 1, BadVariable 2, BadVariable 3, BadVariable 4");
}

TEST(ControlRows, PassesOverWhatTheControlHoldsAndNobodyKnowsHere) {
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z0.\n#1=#4124\n#2=#6009\n#3=#3901\n#5401=1\nM30\n")),
            "NotFollowed 2, NotFollowed 3, NotFollowed 4, NotFollowed 5");
  EXPECT_EQ(WordsOf(TheTrack().track.findings.found[0]), u"Line 2: #4124 is not followed.");
  // Of a further axis: at 0, and its offsets may be set.
  ExpectEnd(RunText(u"G0 X1. Y0. Z0.\n#5224=9.\n#7004=9.\n#3901=7\nX[#5004+#5024+#5224]\nM30\n"), 0,
            0, 0);
  EXPECT_EQ(Found(TheTrack().track), "");
  EXPECT_EQ(Found(RunText(u"#1=#5067\n#1=#5207\n#5004=1\n#1=#7000\nM30\n")),
            "BadVariable 1, BadVariable 2, BadVariable 3, BadVariable 4");
}

}  // namespace
