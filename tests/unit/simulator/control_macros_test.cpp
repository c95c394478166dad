#include <string>

#include "unit/simulator/control_fixture.h"

namespace {

using namespace control_test;

// The value of an expression, by a move along X.
double ValueOf(const std::u16string& expression) {
  const ControlTrack& track = RunText(u"G0 X0. Y0. Z0.\n#100=" + expression + u"\nX[#100+1.]\nM30");
  EXPECT_EQ(Found(track), "") << "in the expression";
  return LastPoint(track).x - 1;
}

TEST(ControlMacros, WorksOutExpressionsInTheOrderOfTheControl) {
  EXPECT_NEAR(ValueOf(u"1+2*3"), 7, 1e-12);
  EXPECT_NEAR(ValueOf(u"[1+2]*3"), 9, 1e-12);
  EXPECT_NEAR(ValueOf(u"10-2-3"), 5, 1e-12);
  EXPECT_NEAR(ValueOf(u"8/4/2"), 1, 1e-12);
  EXPECT_NEAR(ValueOf(u"7 MOD 4"), 3, 1e-12);
  EXPECT_NEAR(ValueOf(u"-2*-3"), 6, 1e-12);
  EXPECT_NEAR(ValueOf(u"6 AND 3"), 2, 1e-12);
  EXPECT_NEAR(ValueOf(u"6 OR 3"), 7, 1e-12);
  EXPECT_NEAR(ValueOf(u"6 XOR 3"), 5, 1e-12);
  EXPECT_NEAR(ValueOf(u"[2 GT 1]+[1 GE 1]+[1 LT 1]+[1 LE 1]+[1 EQ 1]+[1 NE 1]"), 4, 1e-12);
}

TEST(ControlMacros, KnowsItsFunctions) {
  EXPECT_NEAR(ValueOf(u"SIN[30]"), 0.5, 1e-12);
  EXPECT_NEAR(ValueOf(u"COS[60]"), 0.5, 1e-12);
  EXPECT_NEAR(ValueOf(u"TAN[45]"), 1, 1e-12);
  EXPECT_NEAR(ValueOf(u"ASIN[.5]/10"), 3, 1e-12);
  EXPECT_NEAR(ValueOf(u"ACOS[.5]/10"), 6, 1e-12);
  EXPECT_NEAR(ValueOf(u"ATAN[1]/10"), 4.5, 1e-12);
  EXPECT_NEAR(ValueOf(u"ATAN[1]/[-1]/10"), 13.5, 1e-12);
  EXPECT_NEAR(ValueOf(u"SQRT[9]"), 3, 1e-12);
  EXPECT_NEAR(ValueOf(u"ABS[-4]"), 4, 1e-12);
  EXPECT_NEAR(ValueOf(u"ROUND[2.5]"), 3, 1e-12);
  EXPECT_NEAR(ValueOf(u"FIX[2.9]"), 2, 1e-12);
}

TEST(ControlMacros, LeavesAWordOutWhoseVariableIsUndefined) {
  ExpectPoints(RunText(u"G0 X1. Y1. Z0.\nX#5 Y2.\nM30"), {{1, 1, 0, true}, {1, 2, 0, true}});
}

TEST(ControlMacros, TellsUndefinedFromZero) {
  EXPECT_NEAR(ValueOf(u"[#5 EQ #0]"), 1, 0);
  EXPECT_NEAR(ValueOf(u"[#5 EQ 0]"), 0, 0);
  EXPECT_NEAR(ValueOf(u"[#5+1]"), 1, 0);
}

TEST(ControlMacros, ReadsPositionsOffsetsAndModes) {
  const ControlTrack& track = RunText(
      u"G21 G90 G0 X10. Y20. Z30.\n#100=#5041\n#101=#4003\n#102=#4006\n"
      u"X[#100+#101+#102+#5043]\nM30",
      {.metric = true});
  ExpectEnd(track, 10 + 90 + 21 + 30, 20, 30);
}

TEST(ControlMacros, FollowsANumberInAVariable) {
  ExpectPoints(RunText(u"#1=105\n#[#1]=4.\n#106=#105\nG0 X##1 Y#106 Z0.\nM30"), {{4, 4, 0, true}});
}

TEST(ControlMacros, StopsAtWhatCannotBeWorkedOut) {
  EXPECT_EQ(Found(RunText(u"#1=1/0\nM30")), "DivisionByZero 1");
  EXPECT_EQ(Found(RunText(u"#1=SQRT[-1]\nM30")), "FunctionRange 1");
  EXPECT_EQ(Found(RunText(u"#1=ASIN[2]\nM30")), "FunctionRange 1");
  EXPECT_EQ(Found(RunText(u"#1=[1+2\nM30")), "BadExpression 1");
  EXPECT_EQ(Found(RunText(u"#99999=1\nM30")), "BadVariable 1");
  EXPECT_EQ(Found(RunText(u"#3000=12 (NO TOOL)\nM30")), "ProgramAlarm 1");
  const std::u16string deep = u"#1=" + std::u16string(10000, u'[') + u"1\nM30";
  EXPECT_EQ(Found(RunText(deep)), "BadExpression 1");
}

// In seconds, of milliseconds and hours that the program sets.
TEST(ControlMacros, CountsItsTimersFromWhatIsWritten) {
  const std::u16string start = u"G0 X0. Y0. Z0.\nG4 P7.\n";
  ExpectEnd(RunText(start + u"#3001=0\nG4 P1.5\nX[#3001/1000]\nM30\n"), 1.5, 0, 0);
  ExpectEnd(RunText(start + u"#3001=500\nG4 P1.5\nX[#3001/1000]\nM30\n"), 2, 0, 0);
  ExpectEnd(RunText(u"G0 X0. Y0. Z0.\n#1=#3001\nG4 P7.\nX[[#3001-#1]/1000]\nM30\n"), 7, 0, 0);
  ExpectEnd(RunText(start + u"#3002=2.\nG4 P3600.\nX#3002\nM30\n"), 3, 0, 0);
}

TEST(ControlMacros, PrintsByDprnt) {
  const ControlTrack& track = RunText(u"#1=1.5\nDPRNT[X*IS#1[42]*IN]\nM30");
  EXPECT_EQ(track.printed, u"X IS1.50 IN\n");
}

TEST(ControlMacros, TakesConditionsWithAndWithoutThen) {
  ExpectEnd(RunText(u"G0 X0. Y0. Z0.\n#1=1\nIF [#1 EQ 1] THEN #2=3.\nIF [#1 EQ 2] #2=4.\nX#2\nM30"),
            3, 0, 0);
}

}  // namespace
