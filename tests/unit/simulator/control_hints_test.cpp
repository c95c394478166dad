// Hints of the check that stand beside what a control itself refuses, and where they are silent.
#include <string>

#include "unit/simulator/control_fixture.h"

namespace {

using namespace control_test;

// A program of one tool as a shop writes it, with a piece of its own from line 4 on.
std::u16string Job(const std::u16string& piece) {
  return u"G20 G17 G40 G49 G80 G90\nT1 M6\nG0 G54 X0. Y0. S1000 M3\n" + piece + u"M30\n";
}

TEST(ControlHints, NamesASpindleWithoutSpeed) {
  const std::u16string cut = u"G43 H1 Z1.\nG1 Z-.1 F9.\nX1.\nM30\n";
  EXPECT_EQ(Found(RunText(u"T1 M6\nG0 X0. Y0. M3\n" + cut)), "NoSpeed 4");
  EXPECT_EQ(Found(RunText(u"T1 M6\nG0 X0. Y0. S0 M3\n" + cut)), "NoSpeed 4");
  EXPECT_EQ(Found(RunText(u"T1 M6\nG0 X0. Y0. S900 M3\n" + cut)), "");
  // S stays in force behind a change of tools, and may stand behind M3.
  EXPECT_EQ(Found(RunText(u"S900\nT1 M6\nG0 X0. Y0. M3\n" + cut)), "");
  EXPECT_EQ(Found(RunText(u"T1 M6\nM3\nG0 X0. Y0. S900\n" + cut)), "");
  // A tap's cycle starts the spindle, and needs its speed.
  EXPECT_EQ(Found(RunText(u"T1 M6\nG0 X0. Y0.\nG43 H1 Z1.\nG84 Z-.5 R.1 F9.\nM30\n")), "NoSpeed 4");
  // With the spindle off that is what is told.
  EXPECT_EQ(Found(RunText(u"T1 M6\nG0 X0. Y0.\n" + cut)), "SpindleOff 4");
}

TEST(ControlHints, LeavesTheSpeedOfAPieceToItsCaller) {
  EXPECT_EQ(Found(RunText(u"M3\nG1 X1. F9.\nM99\n")), "");
  EXPECT_EQ(Found(RunText(u"M3 S0\nG1 X1. F9.\nM99\n")), "NoSpeed 2");
}

TEST(ControlHints, NamesALengthThatNobodyHasSet) {
  const std::u16string text = Job(u"G43 H1 Z1.\nG1 Z-.1 F9.\nX1.\n");
  ControlTable table;
  EXPECT_EQ(Found(RunText(text, {.table = &table})), "");
  table.tools[2].length = 6;
  EXPECT_EQ(Found(RunText(text, {.table = &table})), "LengthNotSet 5");
  EXPECT_EQ(WordsOf(TheTrack().track.findings.found[0]),
            u"Line 5: H1 has no length, and other tools have one.");
  table.tools[1].lengthSaid = true;  // the tool that the others are measured by
  EXPECT_EQ(Found(RunText(text, {.table = &table})), "");
  table.tools[1] = {.length = 5};
  EXPECT_EQ(Found(RunText(text, {.table = &table})), "");
}

TEST(ControlHints, SaysOnceWhatIsWrongWithH) {
  ControlTable table;
  table.tools[2].length = 6;
  const ReadMotionOptions options{.table = &table};
  EXPECT_EQ(Found(RunText(Job(u"G43 H12 Z1.\nG1 Z-.1 F9.\n"), options)), "OffsetOther 4");
  EXPECT_EQ(Found(RunText(Job(u"G43 H21 Z1.\nG1 Z-.1 F9.\n"), options)), "LengthNotSet 5");
}

TEST(ControlHints, TakesALengthThatTheProgramSets) {
  ControlTable table;
  table.tools[2].length = 6;
  const std::u16string text = Job(u"G10 L10 P1 R5.\nG43 H1 Z1.\nG1 Z-.1 F9.\n");
  EXPECT_EQ(Found(RunText(text, {.table = &table})), "");
}

TEST(ControlHints, TakesAnotherLengthWhereAComment) {
  const auto found = [](const char16_t* comment) {
    return Found(RunText(Job(std::u16string(u"G43 H7 Z1. ") + comment + u"\n(GAUGE)\n")));
  };
  EXPECT_EQ(found(u""), "OffsetOther 4");
  EXPECT_EQ(found(u"(OVER THE PART)"), "OffsetOther 4");
  EXPECT_EQ(found(u"(Second gauge point)"), "");
  EXPECT_EQ(found(u"(OFFSET OF THE FLANK)"), "");
  EXPECT_EQ(found(u"(length of the cutter's upper edge)"), "");
}

TEST(ControlHints, NamesTheWayHomeOutOfACut) {
  EXPECT_EQ(Found(RunText(Job(u"G43 H1 Z1.\nG1 Z-.5 F9.\nX2.\nG28\n"))), "HomeInCut 7");
  EXPECT_EQ(Found(RunText(Job(u"G43 H1 Z1.\nG1 Z-.5 F9.\nG0 X2.\nG91 G28 X0 Y0\n"))),
            "HomeInCut 7");
  EXPECT_EQ(Found(RunText(Job(u"G43 H1 Z1.\nG1 Z-.5 F9.\nG2 I.5\nG28\n"))), "HomeInCut 7");
  EXPECT_EQ(Found(RunText(Job(u"G43 H1 Z1.\nG1 Z-.5 F9.\nX2.\nG53 X0. Y0.\n"))), "HomeInCut 7");
  EXPECT_EQ(Found(RunText(Job(u"G43 H1 Z1.\nG1 Z-.5 F9.\nX2.\nG53 Z0.\nG53 X0. Y0.\n"))), "");
  EXPECT_EQ(Found(RunText(Job(u"G43 H1 Z-.5\nG1 X2. F9.\nG28\n"))), "HomeInCut 6");
  // Straight up, above the cut, and behind a cut that leads up.
  EXPECT_EQ(Found(RunText(Job(u"G43 H1 Z1.\nG1 Z-.5 F9.\nX2.\nG91 G28 Z0\nG28 X0 Y0\n"))), "");
  EXPECT_EQ(Found(RunText(Job(u"G43 H1 Z1.\nG1 Z-.5 F9.\nX2.\nG0 Z.1\nG28\n"))), "");
  EXPECT_EQ(Found(RunText(Job(u"G43 H1 Z1.\nG1 Z-.5 F9.\nX2.\nZ.1\nG28\n"))), "");
}

TEST(ControlHints, LeavesTheWayHomeToTheStockWhereItIsKnown) {
  KnownStock stock;
  stock.box = {.shown = true, .maxX = 1, .maxY = 1, .bottom = -1};
  // Beside the stock, from where home lies away from it.
  EXPECT_EQ(Found(RunText(Job(u"X3. Y3.\nG43 H1 Z1.\nG1 Z-.5 F9.\nX2.\nG28\n"), {.stock = &stock})),
            "");
}

TEST(ControlHints, NamesStepsAlongZThatOnlyTheWayHomeNeeded) {
  const std::u16string begin = u"G90\nT1 M6\nG0 X0. Y0. S900 M3\nG43 H1 Z1.\nG91 G28 Z0\n";
  EXPECT_EQ(Found(RunText(begin + u"T2 M6\nM3\nG43 H2 Z.1\nM30\n")), "IncrementalLeft 8");
  EXPECT_EQ(Found(RunText(begin + u"T2 M6\nM3\nG90 G43 H2 Z.1\nM30\n")), "");
  EXPECT_EQ(Found(RunText(begin + u"T2 M6\nM3\nG91 G43 H2 Z.1\nM30\n")), "");
}

TEST(ControlHints, PassesOverWhatStandsBeforeTheText) {
  const ControlTrack& track = RunText(u"\nSHOP FILE 12\nG0 X9.\n%\nO1\nG0 X1. Y0. Z0.\nM30\n%\n");
  EXPECT_EQ(Found(track), "BeforeStart 2");
  ExpectEnd(track, 1, 0, 0);
  // Comments and blank lines are no code. Nor is there a head where one sign only ends the text.
  EXPECT_EQ(Found(RunText(u"\n(50% OFF)\n%\nO1\nG0 X1. Y0. Z0.\nM30\n%\n")), "");
  EXPECT_EQ(Found(RunText(u"O1 (50% OFF)\nG0 X1. Y0. Z0.\nM30\n%\n")), "");
  ExpectEnd(RunText(u"O1\nG0 X1. Y0. Z0.\n(5%)\n(6%)\nX2.\nM30\n%\n"), 2, 0, 0);
  EXPECT_EQ(Found(RunText(u"\r\nHEAD\r\n(7%)\r\n%\r\nG0 X1. Y0. Z0.\r\nG1\r\nY1.\r\nM30\r\n%")),
            "BeforeStart 2, NoFeed 7");
}

TEST(ControlHints, NamesAxesThatTurnOnceEach) {
  const ControlTrack& track = RunText(Job(u"A90.\nG0 X1. A180.\nB5.\nG43 H1 Z1. A0\n"));
  EXPECT_EQ(Found(track), "NotFollowed 4, NotFollowed 6");
  EXPECT_EQ(WordsOf(track.findings.found[0]), u"Line 4: A90 is not followed.");
  EXPECT_EQ(WordsOf(track.findings.found[1]), u"Line 6: B5 is not followed.");
}

TEST(ControlHints, DrillsAtALineThatOnlyTurnsThePart) {
  const auto holes = [](const std::u16string& lines) {
    const ControlTrack& track =
        RunText(Job(u"G43 H1 Z1.\nG99 G81 X1. Y0. Z-.5 R.1 F9.\n" + lines + u"G80\n"));
    int count = 0;
    for (std::int32_t i = 1; i < track.path.count; ++i) {
      const MotionPoint& end = track.path.points[i];
      count += !end.rapid && end.z == -.5;
    }
    return count;
  };
  EXPECT_EQ(holes(u""), 1);
  EXPECT_EQ(holes(u"A90.\nA180.\n"), 3);
  EXPECT_EQ(holes(u"F8.\n"), 1);
}

TEST(ControlHints, LeavesTheMachineWhereOnlyAnAxisThatTurnsGoesHome) {
  ExpectEnd(RunText(u"G0 X1. Y2. Z3.\nG91 G28 A0\nM30\n"), 1, 2, 3);
}

TEST(ControlHints, RunsALoopOfTheMainProgramOnce) {
  const std::u16string body = u"N1 G0 X0. Y0. Z1.\nS900 M3\nG1 Z-1. F60.\nG0 Z1.\n";
  const ControlTrack& once = RunText(body + u"M99\n");
  const double seconds = once.totalSeconds;
  const std::int32_t points = once.path.count;
  const ControlTrack& loop = RunText(body + u"M99 P1\n");
  EXPECT_EQ(Found(loop), "");
  EXPECT_EQ(loop.totalSeconds, seconds);
  EXPECT_EQ(loop.path.count, points);
  // The switch for "/" leads out of it.
  EXPECT_EQ(Found(RunText(body + u"N5 /M99 P1\nM30\n")), "");
  EXPECT_EQ(Found(RunText(body + u"M99 P1\nM30\n")), "BehindEnd 6");
}

TEST(ControlHints, FollowsAJumpBackThatLeadsOut) {
  // Line 9 stands before the jump and has not run yet.
  ExpectEnd(RunText(u"G0 X0. Y0. Z0.\nGOTO 5\nN2 X7.\nM30\nN5 X1.\nM99 P2\n"), 7, 0, 0);
  ExpectEnd(RunText(u"G0 X0. Y0. Z0.\n#1=0\nN1 G91 G0 X1.\n#1=#1+1\nIF [#1 EQ 3] GOTO 9\nM99 P1\n"
                    u"N9 M30\n"),
            3, 0, 0);
}

TEST(ControlHints, NamesAStepThatIsWiderThanTheTool) {
  ControlTable table;
  table.tools[1] = {.length = 5, .diameter = .5};
  const auto found = [&table](const std::u16string& words) {
    return Found(RunText(Job(u"G43 H1 Z1.\nG0 Z0.\n" + words + u"\n"), {.table = &table}));
  };
  // Ring beside ring, and the first one beside the middle: its tool runs at I less .25.
  EXPECT_EQ(found(u"G13 I.5 K2. Q.5 D1 Z-.1 F9."), "");
  EXPECT_EQ(found(u"G13 I.5 K2. Q.51 D1 Z-.1 F9."), "StepWide 6");
  EXPECT_EQ(found(u"G12 I.75 K1. Q.2 D1 Z-.1 F9."), "");
  EXPECT_EQ(found(u"G12 I.76 K1. Q.2 D1 Z-.1 F9."), "StepWide 6");
  EXPECT_EQ(WordsOf(TheTrack().track.findings.found[0]),
            u"Line 6: The step of 0.51 in is wider than the tool: it leaves ground standing.");
  // The last ring is where K says, however wide the step would be.
  EXPECT_EQ(found(u"G13 I.5 K.9 Q.8 D1 Z-.1 F9."), "");
  EXPECT_EQ(found(u"G13 I.5 K2. Q.8 D2 Z-.1 F9."), "CompNoDiameter 6");
  const std::u16string outline = u"M30\nN9 G1 X1.\nY1.\nX-1.\nY-1.\nX1.\nY0.\nM99";
  EXPECT_EQ(found(u"G150 G41 P9 X0. Y0. Z-.1 R0. J.5 D1 F9.\nG40\n" + outline), "");
  EXPECT_EQ(found(u"G150 G41 P9 X0. Y0. Z-.1 R0. J.51 D1 F9.\nG40\n" + outline), "StepWide 6");
}

TEST(ControlHints, TakesARingThatStandsAloneForTheFinishOfABore) {
  ControlTable table;
  table.tools[1] = {.length = 5, .diameter = .5};
  for (const char16_t* ring : {u"G13 I1. D1 F9.", u"G12 I1. D1 F9.", u"G13 I1. K1. Q.1 D1 F9."}) {
    EXPECT_EQ(Found(RunText(Job(u"G43 H1 Z1.\nG1 Z-.1 F9.\n" + std::u16string(ring) + u"\n"),
                            {.table = &table})),
              "");
  }
}

TEST(ControlHints, TakesTheMiddleForOpenWhereItWasCutBefore) {
  ControlTable table;
  table.tools[1] = {.length = 5, .diameter = .5};
  table.tools[2] = {.length = 5, .diameter = .5};
  const auto found = [&table](const std::u16string& before) {
    return Found(RunText(u"G20 G90 T2 M6\nG0 X0. Y0. S1000 M3\nG43 H2 Z1.\n" + before +
                             u"G1 Z-.1 F9.\nG13 I1. K1.1 Q.1 D1\nM30\n",
                         {.table = &table}));
  };
  const std::u16string change = u"T1 M6\nG0 X0. Y0. M3\nG43 H1 Z1.\n";
  EXPECT_EQ(found(u""), "StepWide 5");
  // By rings of its own, by a way down in circles, and by a hole of another tool.
  EXPECT_EQ(found(u"G1 Z-.1 F9.\nG13 I.3 K.9 Q.3 D1\n"), "");
  EXPECT_EQ(found(u"X.3\nG1 Z0. F9.\nG3 I-.3 Z-.1\nG1 X0.\n"), "");
  EXPECT_EQ(found(u"G81 R.1 Z-1. F9.\nG80\n" + change), "");
  // The way down that every pocket begins with opens no more than the tool; nor does a hole that
  // lies elsewhere, or a rapid, or a circle of another plane.
  EXPECT_EQ(found(u"G81 R.1 Z-1. F9.\nG80\n"), "StepWide 7");
  EXPECT_EQ(found(u"G81 X.002 R.1 Z-1. F9.\nG80\n" + change), "StepWide 10");
  EXPECT_EQ(found(u"Z-.1\nZ1.\n" + change), "StepWide 10");
  EXPECT_EQ(found(u"X1.\nG1 Z0. F9.\nG18 G2 X-1. I-1.\nG0 Z1.\nG17 X0.\n"), "StepWide 10");
  // The widest step is told as before.
  EXPECT_EQ(found(u"G1 Z-.1 F9.\nG13 I.3 K.9 Q.3 D1\nG13 I.3 K2. Q.6 D1\n"), "StepWide 6");
}

TEST(ControlHints, NamesALastRingThatIsSmallerThanTheFirst) {
  const auto found = [](const std::u16string& words) {
    return Found(RunText(Job(u"G10 L12 P1 R.5\nG43 H1 Z0.\n" + words + u" D1 Z-.1 F9.\n")));
  };
  EXPECT_EQ(found(u"G13 I1. K.5 Q.1"), "PocketWords 6");
  EXPECT_EQ(found(u"G13 I.6 K.5"), "PocketWords 6");
  EXPECT_EQ(found(u"G13 I.5 K.5"), "");
  EXPECT_EQ(found(u"G13 I.5 K0."), "");
  EXPECT_EQ(found(u"G13 K.5 Q.5"), "");
}

TEST(ControlHints, LetsAProbeFeedWithTheSpindleOff) {
  const auto found = [](const std::u16string& piece) {
    RunText(u"G20 G90 T6 M6\nG0 X0. Y0.\nG43 H6 Z1.\n" + piece + u"G1 G90 Z.1 F50.\nM30\n");
    Findings& findings = TheTrack().track.findings;
    DropFindings(findings, Finding::NotFollowed);
    return Found(TheTrack().track);
  };
  EXPECT_EQ(found(u""), "SpindleOff 4");
  for (const char16_t* code : {u"G31 Z-.5 F20.\n", u"G35 D1 Z-1. F5.\n", u"G36 X1. F5.\n",
                               u"G37 H1 Z-1. F5.\n", u"G136 X1. F5.\n", u"M19\n"}) {
    EXPECT_EQ(found(code), "");
  }
  // It fed to where it measures, too; what an earlier tool did stays.
  EXPECT_EQ(found(u"G1 Z.2 F50.\nG31 Z-.5 F20.\n"), "");
  EXPECT_EQ(found(u"G1 Z.2 F50.\nM8\nT7 M6\nG0 G43 H7 Z1.\nG1 Z.2\nG31 Z-.5 F20.\n"),
            "SpindleOff 4");
  EXPECT_EQ(found(u"M97 P9\nT7 M6\nG0 G43 H7 Z1.\nM97 P9\nG31 Z-.5 F20.\nGOTO 8\nN9 G1 Z.2 F50.\n"
                  u"M99\nN8\n"),
            "SpindleOff 10");
  EXPECT_EQ(found(u"G1 Z.2 F50.\nT7 M6\nG0 G43 H7 Z1.\nG31 Z-.5 F20.\n"), "SpindleOff 4");
  // The next tool mills, and so does one whose spindle was started.
  EXPECT_EQ(found(u"G31 Z-.5 F20.\nT7 M6\nG0 G43 H7 Z1.\n"), "SpindleOff 7");
  EXPECT_EQ(found(u"G31 Z-.5 F20.\nS900 M3\nG1 Z.5 F9.\nM5\n"), "SpindleOff 8");
  EXPECT_EQ(found(u"M19\nM5\nS900 M3\nM5\n"), "SpindleOff 8");
  EXPECT_EQ(found(u"G1 Z.2 F9.\nS900 M3\nM5\nG31 Z-.5 F20.\n"), "SpindleOff 4");
}

}  // namespace
