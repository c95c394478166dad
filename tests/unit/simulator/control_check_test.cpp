#include <string>

#include "unit/simulator/control_fixture.h"

namespace {

using namespace control_test;

// A program of one tool as a shop writes it, with a piece of its own behind the approach.
std::u16string Job(const std::u16string& piece) {
  return u"%\nO1000\nG20 G17 G40 G49 G80 G90\nT1 M6\nG0 G54 X0. Y0. S1000 M3\nG43 H1 Z1. M8\n" +
         piece + u"G0 Z1. M9\nM5\nG91 G28 Z0\nG90\nM30\n%\n";
}
constexpr int kPieceLine = 7;  // 1-based, the first line of the piece

TEST(ControlCheck, KeepsQuietOnAWorkingProgram) {
  EXPECT_EQ(Found(RunText(Job(u"G1 Z-.1 F10.\nX1.\nG2 X2. Y1. R1.\nG3 X1. Y0. I-1. J0.\n"))), "");
  EXPECT_EQ(Found(RunText(Job(u"G98 G81 X1. Z-.5 R.1 F10.\nX2.\nG80\n"))), "");
  EXPECT_EQ(Found(RunText(Job(u"G84 X1. Z-.5 R.2 F50.\nG80\nT2 (NEXT)\nG1 X0. F10.\n"))), "");
  EXPECT_EQ(Found(RunText(Job(u"G53 G49 Z0.\nG43 H21 Z1.\n"))), "");
}

TEST(ControlCheck, NamesACutWithTheSpindleOffOnceATool) {
  EXPECT_EQ(Found(RunText(Job(u"M5\nG1 Z-.1 F10.\nX1.\nX2.\n"))), "SpindleOff 8");
  // The program of another calls for no spindle of its own.
  EXPECT_EQ(Found(RunText(u"O9\nG1 X1. F10.\nM99\n")), "");
}

TEST(ControlCheck, NamesACutWithoutFeed) {
  EXPECT_EQ(Found(RunText(Job(u"G1 Z-.1\nX1.\n"))), "NoFeed 7");
  EXPECT_EQ(Found(RunText(Job(u"G93 G1 Z-.1 F5.\nX1.\nG94\n"))), "InverseNoFeed 8");
}

TEST(ControlCheck, NamesAToolThatWasCalledAndNotChanged) {
  EXPECT_EQ(Found(RunText(u"T3\nG0 X0. Y0. Z0. S1000 M3\nG1 X1. F10.\nM30\n")), "ToolNotChanged 3");
}

TEST(ControlCheck, NamesACutWithoutLengthBehindAChange) {
  EXPECT_EQ(Found(RunText(u"T1 M6\nG0 X0. Y0. S1000 M3\nZ.1\nG1 Z-1. F10.\nX1.\nM30\n")),
            "NoLength 4");
}

TEST(ControlCheck, NamesTheLengthOfAnotherTool) {
  EXPECT_EQ(Found(RunText(u"T1 M6\nG0 X0. Y0. S1000 M3\nG43 H2 Z1.\nM30\n")), "OffsetOther 3");
  for (const char16_t* usual : {u"H1", u"H21", u"H31", u"H51"}) {
    EXPECT_EQ(Found(RunText(std::u16string(u"T1 M6\nG43 ") + usual + u" Z1.\nM30\n")), "");
  }
}

TEST(ControlCheck, NamesALengthWithoutAPointAmongOthers) {
  EXPECT_EQ(Found(RunText(Job(u"G1 Z-.1 F10.\nX1\nX0\n"))), "WholeNumber 8");
  // A file without any point is meant so.
  EXPECT_EQ(Found(RunText(u"G0 X10000 Y20000 Z10000\nM30\n")), "");
}

TEST(ControlCheck, NamesStepsThatAWayHomeLeftInForce) {
  const std::u16string text =
      u"T1 M6\nG0 G90 X0. Y0.\nG43 H1 Z1.\nG91 G28 Z0\nT2 M6\nX1. Y1.\nX2.\nM30\n";
  EXPECT_EQ(Found(RunText(text)), "IncrementalLeft 6");
  EXPECT_EQ(Found(RunText(u"T1 M6\nG91 G28 Z0\nT2 M6\nG90 X1. Y1.\nM30\n")), "");
}

TEST(ControlCheck, NamesAPlaceThatTheMachineDoesNotReach) {
  ControlTable table;
  table.work[kFirstWorkRow][0] = -20;
  table.work[kFirstWorkRow][1] = -10;
  table.work[kFirstWorkRow][2] = -15;
  const ReadMotionOptions options{.table = &table};
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z0.\nX20.\nX20.1\nM30\n", options)), "TravelExceeded 3");
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z0.\nX-20.\nX-20.5\nM30\n", options)), "TravelExceeded 3");
  // With its length the spindle stands higher by so much.
  table.tools[1].length = 5;
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z0.\nG43 H1 Z10.\nZ10.5\nM30\n", options)),
            "TravelExceeded 3");
  // Without an offset nobody knows.
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z0.\nX200.\nM30\n")), "");
}

TEST(ControlCheck, NamesACutInAnOffsetThatIsNotSetWhileAnotherIs) {
  ControlTable table;
  table.work[kFirstWorkRow][0] = -20;
  const ReadMotionOptions options{.table = &table};
  const std::u16string text = u"G54 G0 X0. Y0. Z0.\nG1 X1. F9.\nG55 X0.\nX1.\nG53 Z0.\nM30\n";
  EXPECT_EQ(Found(RunText(text, options)), "OffsetNotSet 3");
  EXPECT_EQ(Found(RunText(text)), "");
  EXPECT_EQ(Found(RunText(u"G55\nG53 G0 Z0.\nM30\n", options)), "");
}

TEST(ControlCheck, NamesCodeThatNothingReaches) {
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z0.\nM30\n\n(A)\nG1 X1.\n")), "BehindEnd 5");
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z0.\nM30\n%\nX1.\n")), "");
  EXPECT_EQ(Found(RunText(u"M97 P5\nM30\nN5 G0 X0. Y0. Z0.\nM99\n")), "");
  EXPECT_EQ(Found(RunText(u"M98 P5\nM30\nO5\nG0 X0. Y0. Z0.\nM99\n")), "");
}

TEST(ControlCheck, SortsTheWorstFirst) {
  const ControlTrack& track = RunText(Job(u"G1 Z-.1\nM5\nX1 F10.\n"));
  std::int32_t order[8];
  const int count = WorstFirst(track.findings, order);
  ASSERT_EQ(count, 3);
  EXPECT_EQ(track.findings.found[order[0]].kind, Finding::NoFeed);
  EXPECT_EQ(WordsOf(track.findings.found[order[0]]), u"Line 7: A feed move has no F.");
  EXPECT_EQ(StrengthOf(track.findings.found[order[1]].kind), Strength::Hit);
}

TEST(ControlCheck, HoldsNumbersThatNoControlCountsTo) {
  EXPECT_EQ(Found(RunText(u"G20 G90 T1 M6\nG43 H-99999999999 Z1.\nT99999999999 M6\nM30\n")),
            "OffsetOther 2");
}

}  // namespace
