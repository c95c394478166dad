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
            "NoLength 3");
  EXPECT_EQ(Found(RunText(u"T1 M6\nG0 X0. Y0. S1000 M3\nG1 Z-1. F10.\nX1.\nM30\n")), "NoLength 3");
}

TEST(ControlCheck, NamesARapidDownThatHasNoLengthYet) {
  const std::u16string head = u"G90 T6 M6\nG0 G54 X0. Y0. S1000 M3\n";
  const std::u16string tail = u"G43 H6 Z.1\nG1 Z-.1 F10.\nG53 Z0.\nM30\n";
  EXPECT_EQ(Found(RunText(head + u"Z.1\n" + tail)), "NoLength 3");
  EXPECT_EQ(WordsOf(TheTrack().track.findings.found[0]),
            u"Line 3: The tool goes down or cuts without its length: G43 is missing or has ended.");
  EXPECT_EQ(Found(RunText(head + u"G49 X1. Y1. Z.1\n" + tail)), "NoLength 3");
  EXPECT_EQ(Found(RunText(head + u"G43 H6 Z1.\nG28 G91 Z0.\nG90 G0 Z.1\n" + tail)), "NoLength 5");
  EXPECT_EQ(Found(RunText(head + u"G43 H6\nZ.1\n" + tail)), "");
  EXPECT_EQ(Found(RunText(head + u"G53 Z-5.\n" + tail)), "");
  EXPECT_EQ(Found(RunText(head + u"G91 Z-12.\nG90\n" + tail)), "");
  EXPECT_EQ(Found(RunText(head + u"G53 Z-14.95\nG0 Z.1\n" + tail)), "");  // up
  // A piece of a program relies on the length of the one that calls it.
  EXPECT_EQ(Found(RunText(u"G90 G0 X0. Y0. Z1.\nZ.1\nM99\n")), "");
}

TEST(ControlCheck, LetsTheSpindleGoDownAsFarAsTheToolStaysAboveZero) {
  const auto found = [](const std::u16string& z, const ControlTable& table) {
    return Found(RunText(u"G90 T6 M6\nG0 G54 X0. Y0. S1000 M3\n" + z + u"\nG43 H6 Z1.\nM30\n",
                         {.table = &table}));
  };
  ControlTable table;
  table.work[kFirstWorkRow][2] = -20;
  // No tool is expected to be longer than 10 inches.
  EXPECT_EQ(found(u"Z10.", table), "");
  EXPECT_EQ(found(u"Z9.9", table), "NoLength 3");
  EXPECT_EQ(found(u"G21 Z254.", table), "");
  EXPECT_EQ(found(u"G21 Z253.", table), "NoLength 3");
  table.tools[6].length = 4;
  EXPECT_EQ(found(u"Z4.", table), "");
  EXPECT_EQ(found(u"Z3.9", table), "NoLength 3");
}

TEST(ControlCheck, NamesACutWhereNoLengthNumberWasNamedYet) {
  const std::u16string cut = u" Z.1\nX0. Y0. S1000 M3\nG1 Z-1. F10.\nM30\n";
  const std::string none = Found(RunText(u"T6 M6\nG43" + cut));
  EXPECT_NE(none.find("NoLength 2"), std::string::npos) << none;
  EXPECT_EQ(Found(RunText(u"T6 M6\nG43 H6" + cut)), "");
  // The number that was named last holds.
  EXPECT_EQ(Found(RunText(u"T6 M6\nG43 H6 Z1.\nG49\nG43" + cut)), "");
}

TEST(ControlCheck, NamesTheLengthOfAnotherTool) {
  EXPECT_EQ(Found(RunText(u"T1 M6\nG0 X0. Y0. S1000 M3\nG43 H2 Z1.\nM30\n")), "OffsetOther 3");
  for (const char16_t* usual : {u"H1", u"H21", u"H31", u"H51"}) {
    EXPECT_EQ(Found(RunText(std::u16string(u"T1 M6\nG43 ") + usual + u" Z1.\nM30\n")), "");
  }
}

TEST(ControlCheck, TakesALengthInTheBlockOfTheChangeForTheNewTool) {
  const std::u16string first = u"T1 M6 G43 H1 Z1.\nX0. Y0. S900 M3\nG1 Z-.1 F9.\nG0 Z1.\n";
  const std::u16string second = u" Z1.\nX0. Y0. S900 M3\nG1 Z-.1 F9.\nM30\n";
  EXPECT_EQ(Found(RunText(first + u"T2 M6 G43 H2" + second)), "");
  EXPECT_EQ(Found(RunText(first + u"T2 M6 G43 H1" + second)), "OffsetOther 5");
  EXPECT_EQ(Found(RunText(first + u"T2 M6 G43" + second)), "OffsetOther 5");
  EXPECT_EQ(Found(RunText(first + u"T2 M6 G49" + second)), "NoLength 5");
}

TEST(ControlCheck, NamesAFeedThatOnlyRemainedBehindACycle) {
  const std::u16string cycle = u"G81 X1. Z-.5 R.1 F9.\nX2.\n";
  EXPECT_EQ(Found(RunText(Job(u"G1 Z.5 F9.\n" + cycle + u"G80\nM8\nX3.\nX4.\n"))), "ModeLeft 12");
  EXPECT_EQ(Found(RunText(Job(u"G1 Z.5 F9.\n" + cycle + u"G80 X3.\nX4.\n"))), "ModeLeft 10");
  EXPECT_EQ(Found(RunText(Job(u"G1 Z.5 F9.\n" + cycle + u"G80\nG0 X3.\nG1 X4.\nX5.\n"))), "");
  EXPECT_EQ(Found(RunText(Job(u"G1 Z.5 F9.\n" + cycle + u"G0 G80 X3.\n"))), "");
  EXPECT_EQ(Found(RunText(Job(u"G1 Z.5 F9.\n" + cycle + u"G80\n" + cycle + u"G80\n"))), "");
  // A rapid remains a rapid; and G80 of a safety line ends no cycle.
  EXPECT_EQ(Found(RunText(Job(cycle + u"G80\nX3.\n"))), "");
  EXPECT_EQ(Found(RunText(Job(u"G1 Z.5 F9.\nG80\nX3.\n"))), "");
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
  EXPECT_EQ(WordsOf(TheTrack().track.findings.found[0]),
            u"Line 3: X leaves the travel of the machine by 0.1 in.");
  EXPECT_EQ(Found(RunText(u"G21 G0 X0. Y0. Z0.\nZ400.\nM30\n", options)), "TravelExceeded 2");
  // The zero lies 15 in, 381 mm, below the end of Z.
  EXPECT_EQ(WordsOf(TheTrack().track.findings.found[0]),
            u"Line 2: Z leaves the travel of the machine by 19 mm.");
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z0.\nX-20.\nX-20.5\nM30\n", options)), "TravelExceeded 3");
  // With its length the spindle stands higher by so much.
  table.tools[1].length = 5;
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z0.\nG43 H1 Z10.\nZ10.5\nM30\n", options)),
            "TravelExceeded 3");
  // Without an offset nobody knows.
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z0.\nX200.\nM30\n")), "");
}

// The middle of the table's zero lies 10 in below the end of Y.
TEST(ControlCheck, NamesAnArcThatLeavesTheTravelBetweenItsEnds) {
  ControlTable table;
  table.work[kFirstWorkRow][0] = -20;
  table.work[kFirstWorkRow][1] = -10;
  table.work[kFirstWorkRow][2] = -15;
  const ReadMotionOptions options{.table = &table};
  const std::u16string start = u"G0 X-1. Y9.5 Z0. M3 S100\n";
  EXPECT_EQ(Found(RunText(start + u"G2 X1. Y9.5 I1. F9.\nM30\n", options)), "TravelExceeded 2");
  EXPECT_EQ(Found(RunText(start + u"G3 X1. Y9.5 I1. F9.\nM30\n", options)), "");
  EXPECT_EQ(Found(RunText(start + u"G3 I1. F9.\nM30\n", options)), "TravelExceeded 2");
  // It turns round on the end of the travel.
  EXPECT_EQ(Found(RunText(start + u"Y9.\nG2 I1. F9.\nM30\n", options)), "");
  EXPECT_EQ(Found(RunText(start + u"X-19.5\nG2 X-19.5 Y9. R.25 F9.\nM30\n", options)), "");
  EXPECT_EQ(Found(RunText(start + u"X-19.9\nG3 X-19.9 Y9. R.25 F9.\nM30\n", options)),
            "TravelExceeded 3");
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

TEST(ControlCheck, CountsTheToolsLengthOnlyWhereTheProgramMovesZ) {
  ControlTable table;
  table.work[kFirstWorkRow][0] = -20;
  table.work[kFirstWorkRow][1] = -10;
  table.work[kFirstWorkRow][2] = -15;
  table.tools[1].length = 5;
  const ReadMotionOptions options{.table = &table};
  const std::u16string head = u"T1 M6\nS900 M3\nG90 G0 X0. Y0.\nG43 H1 Z1.\nG1 Z-.1 F9.\nG0 Z1.\n";
  for (const char16_t* home : {u"G53 G0 Z0.\nX3.\n", u"T2 M6\nX3.\n", u"G91 G28 Z0\nG90 X3.\n"}) {
    EXPECT_EQ(Found(RunText(head + home + u"M30\n", options)), "");
  }
}

TEST(ControlCheck, WantsAFOnlyOfBlocksThatFeed) {
  EXPECT_EQ(Found(RunText(u"S900 M3\nG0 X0. Y0. Z0.\nG93 G1 X1. F5.\nM9\nS2000\nX2.\nM30\n")),
            "InverseNoFeed 6");
  EXPECT_EQ(Found(RunText(u"S900 M3\nG0 X0. Y0. Z0.\nG93 G2 I1. F5.\nI1.\nM30\n")),
            "InverseNoFeed 4");
}

TEST(ControlCheck, SaysWhatIsNotFollowed) {
  const Findings& findings = TheTrack().track.findings;
  EXPECT_EQ(Found(RunText(u"G31 Z-1. F5.\nG65 P9810\nM30\n")), "NotFollowed 1, NotFollowed 2");
  EXPECT_EQ(WordsOf(findings.found[0]), u"Line 1: G31 is not followed.");
  EXPECT_EQ(WordsOf(findings.found[1]), u"Line 2: O9810 is not followed.");
}

TEST(ControlCheck, NamesAProgramOfTheControlOnce) {
  EXPECT_EQ(Found(RunText(u"G65 P9810\nG65 P9832\nG65 P9810\nM98 P9810\nM30\n")),
            "NotFollowed 1, NotFollowed 2");
}

TEST(ControlCheck, TakesLettersOfACallForArgumentsAlone) {
  const std::u16string start = u"T1 M6\nG43 H1\nG0 X0. Y0. Z0. S900 M3\nG1 X1. F9.\n";
  const std::u16string end = u"G1 X2.\nM30\nO7\nX#24\nM99\n";
  for (const char16_t* letters : {u"S20000 X1.5", u"F12 X1.5", u"M5 X1.5", u"T5 H7 D3 X1.5"}) {
    const ControlTrack& track = RunText(start + u"G65 P7 " + letters + u"\n" + end);
    EXPECT_EQ(Found(track), "");
    EXPECT_NEAR(track.path.points[track.path.count - 2].x, 1.5, 1e-9);
  }
  EXPECT_EQ(Found(RunText(start + u"G65 P7 T5 X1.5\nM6\nG43 H1\nM3\n" + end)), "");
}

TEST(ControlCheck, TakesTheLastFForTheOneInForce) {
  EXPECT_EQ(Found(RunText(u"S900 M3\nG0 X0. Y0. Z0.\nG1 X1. F5.\nF0\nX2.\nM30\n")), "NoFeed 5");
}

TEST(ControlCheck, NamesAFeedThatTheControlReadsAsNextToNothing) {
  const std::u16string text = u"S900 M3\nG0 X0. Y0. Z0.\nG1 X1. F10\nX2. F12\nM30\n";
  const ControlTrack& track = RunText(text);
  EXPECT_EQ(Found(track), "WholeFeed 3");
  EXPECT_EQ(WordsOf(track.findings.found[0]),
            u"Line 3: F has no decimal point: the control reads it as 0.001. See its Setting 77.");
  ControlTable table;
  table.wholeFeeds = true;
  EXPECT_EQ(Found(RunText(text, {.table = &table})), "");
  EXPECT_EQ(Found(RunText(u"S900 M3\nG0 X0 Y0 Z0\nG1 X10000 F10\nM30\n")), "");
}

TEST(ControlCheck, NamesACutBehindTheEndOfTheToolsLength) {
  const std::u16string head = u"T1 M6\nS900 M3\nG90 G0 X0. Y0.\nG43 H1 Z1.\n";
  for (const char16_t* end : {u"G49\n", u"G91 G28 Z0\nG90\n", u"G43 H0\n"}) {
    const std::string found = Found(RunText(head + end + u"G0 Z1.\nG1 Z-.1 F9.\nM30\n"));
    EXPECT_NE(found.find("NoLength"), std::string::npos) << found;
    EXPECT_EQ(Found(RunText(head + end + u"G43 H1 Z1.\nG1 Z-.1 F9.\nM30\n")).find("NoLength"),
              std::string::npos);
  }
}

TEST(ControlCheck, NamesStepsThatAWayHomeLeftInForceForTheSameTool) {
  const std::u16string text =
      u"T1 M6\nG0 G90 X0. Y0.\nG43 H1 Z1.\nG91 G28 Z0\nG43 H1\nX1. Y1.\nX2.\nM30\n";
  EXPECT_EQ(Found(RunText(text)), "IncrementalLeft 6");
}

TEST(ControlCheck, NamesAWayHomeThatLeadsDownAlone) {
  const std::u16string head = u"G90 G0 X0. Y0. Z1.\n";
  EXPECT_EQ(Found(RunText(head + u"G28 Z0\nM30\n")), "HomeThroughPart 2");
  EXPECT_EQ(Found(RunText(head + u"G28 Z2.\nM30\n")), "");
  EXPECT_EQ(Found(RunText(head + u"G53 Z0.\nG28 X0 Y0\nM30\n")), "");
}

TEST(ControlCheck, TakesNoPointOfHowMuchFasterATapComesOut) {
  EXPECT_EQ(Found(RunText(Job(u"G98 G84 X1. Z-.5 R.1 F50. J2\nG80\n"))), "");
}

TEST(ControlCheck, NamesALineOnceHoweverOftenItRuns) {
  std::u16string lines;
  for (int i = 0; i < 12; ++i) lines += u"M8 M9\n";
  const ControlTrack& track =
      RunText(u"#1=0\nG0 X0. Y0. Z0.\nWHILE [#1 LT 3] DO1\n" + lines + u"#1=#1+1\nEND1\nM30\n");
  EXPECT_EQ(track.findings.count, 12);
  EXPECT_EQ(track.findings.more, 0);
}

TEST(ControlCheck, CountsOfAKindThatIsTurnedOffNothing) {
  std::u16string lines;
  for (int i = 0; i < kMaxFindingsOfKind + 20; ++i) lines += u"M8 M9\n";
  const ControlTrack& track = RunText(u"G0 X0. Y0. Z0.\n" + lines + u"M30\n");
  EXPECT_EQ(track.findings.more, 20);
  Findings findings = track.findings;
  DropFindings(findings, Finding::TwoM);
  EXPECT_EQ(findings.count, 0);
  EXPECT_EQ(findings.more, 0);
}

TEST(ControlCheck, TakesOneFindingBack) {
  Findings findings;
  AddFinding(findings, {Finding::TwoM, 3});
  AddFinding(findings, {Finding::NoFeed, 4});
  AddFinding(findings, {Finding::TwoM, 4});
  AddFinding(findings, {Finding::TwoM, 5});
  DropFinding(findings, Finding::TwoM, 4);
  DropFinding(findings, Finding::TwoM, 6);
  ASSERT_EQ(findings.count, 3);
  EXPECT_EQ(findings.found[1].kind, Finding::NoFeed);
  EXPECT_EQ(findings.found[2].line, 5);
  EXPECT_EQ(findings.ofKind[static_cast<std::size_t>(Finding::TwoM)], 2);
}

TEST(ControlCheck, NamesOtherOffsetsOnceATool) {
  EXPECT_EQ(Found(RunText(u"G20 G90 T1 M6\nG43 H2 Z1.\nG43 H2 Z2.\nT3 M6\nG43 H2 Z1.\nM30\n")),
            "OffsetOther 2, OffsetOther 5");
}

TEST(ControlCheck, LetsTheRoundingOfAnArcsNumbersPass) {
  const std::u16string head = u"S900 M3 F9.\nG0 X0. Y0. Z0.\n";
  EXPECT_EQ(Found(RunText(head + u"G2 X2.001 Y0. I1. J0.\nM30\n")), "");
  EXPECT_EQ(Found(RunText(head + u"G2 X2.0013 Y0. I1.000 J0.\nM30\n")), "ArcEndOff 3");
  EXPECT_EQ(Found(RunText(head + u"G2 X2.0014 Y0. I1. J0. (2.001)\nM30\n")), "ArcEndOff 3");
  EXPECT_EQ(Found(RunText(head + u"G2 X2.002 Y0. I1. J0.\nM30\n")), "ArcEndOff 3");
  EXPECT_EQ(Found(RunText(u"G21\n" + head + u"G2 X20.01 Y0. I10. J0.\nM30\n")), "");
  EXPECT_EQ(Found(RunText(u"G21\n" + head + u"G2 X20.013 Y0. I10. J0.\nM30\n")), "ArcEndOff 4");
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
