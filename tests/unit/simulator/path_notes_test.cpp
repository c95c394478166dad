// Which lines a path does not show as they run, and how they are said.
#include "simulator/path_notes.h"

#include <cstdint>
#include <string>

#include "simulator/motion_path.h"
#include "simulator/toolpath.h"
#include "unit/simulator/simulator_fixture.h"

namespace morva {
namespace {

using PathNotesTest = SimulatorTest;

const PathNotes::Row& RowOf(PathNote note) { return path.notes.rows[static_cast<int>(note)]; }

std::int32_t NotShown() {
  std::int32_t lines = 0;
  for (int i = 0; i < static_cast<int>(PathNote::BehindEnd); ++i) lines += path.notes.rows[i].lines;
  return lines;
}

// The text's only note is of this kind, on this many lines from `first`, counted from 0, on.
void ExpectOnly(const std::u16string& text, PathNote note, std::int32_t lines, std::int32_t first) {
  ExtractToolpath(text, false);
  const std::string what(text.begin(), text.end());
  EXPECT_EQ(RowOf(note).lines, lines) << what;
  EXPECT_EQ(RowOf(note).first, first) << what;
  for (int i = 0; i < kPathNotes; ++i) {
    if (i == static_cast<int>(note)) continue;
    EXPECT_EQ(path.notes.rows[i].lines, 0) << what << ", " << i;
  }
}

void ExpectNone(const std::u16string& text) {
  ExtractToolpath(text, false);
  EXPECT_EQ(PathNotesWords(path.notes), u"") << std::string(text.begin(), text.end());
  EXPECT_EQ(PathNotesTip(path.notes), u"");
}

TEST_F(PathNotesTest, APathThatIsDrawnWholeHasNone) {
  ExpectNone(u"");
  ExpectNone(
      u"%\nO1000 (TEST R1 #1 [2] G12 M98)\nN10 G20 G90 G17 G40 G49 G80\nG54 G0 X1. Y1. S500 M3\n"
      u"G43 H1 Z1. M8\nG1 Z-.1 F10.\nG2 X2. Y0 I.5 J-.5 ; R arc of G18\nG3 I.5\nT2 M6\nG4 P1\n"
      u"G53\nG69 G50\n#100=5.\n#101=FIX[#100/2]\nIF [#1 EQ 2] THEN #3=4\nG1 X1. ,C.5\n"
      u"F#100\nG1 X3. F[#1]\nM1\nM9\nM30\n%\n");
}

TEST_F(PathNotesTest, ArcsThatAreNotDrawnAreToldApart) {
  ExpectOnly(u"G0 X1\nG2 X2. Y0 R.5\nX3. R.5\nG1 X4.", PathNote::RArcs, 2, 1);
  ExpectOnly(u"G18\nG2 X1. Z1. I.5 K0\nG19 G3 Y1. Z0 J.5\nG18 G2 I.5\nK.5\n", PathNote::OtherPlanes,
             4, 1);
  ExpectOnly(u"G2 X1. Y0 I.4 J0\nX3.\n", PathNote::BadArcs, 2, 0);
}

TEST_F(PathNotesTest, CodesThatMoveTheMachineOtherwiseAreCounted) {
  ExpectOnly(u"G0 X1.\nG12 I.5 F10.\nG13 I.5 K1. Q.1\nG150 X0 Y0 Z-1. J.5\nG70 I1. J0 L6\n",
             PathNote::Pockets, 4, 1);
  ExpectOnly(u"G28\nG91 G28 Z0\nG90 G30 X0\nG53 G0 Z0\nG53\n", PathNote::Home, 4, 0);
  ExpectOnly(u"G53 Z#1", PathNote::Macros, 1, 0);
  ExpectOnly(u"\n\nG65 P9000 X1. A5.\n", PathNote::Macros, 1, 2);
  ExpectOnly(u"M97 P100\nM98 P1000 L3\nM 98 P1\nM99\nM96 P1\n", PathNote::Calls, 3, 0);
  ExpectOnly(u"G0 A90.\nG0 X1. A0\nb-5.\nG4 A1.\n", PathNote::Rotary, 2, 0);
}

// The path is drawn as if these were not there; all that follows lies elsewhere on the machine.
TEST_F(PathNotesTest, CodesThatShiftTurnOrScaleWhatFollowsAreNamed) {
  ExpectOnly(u"G0 X1.\nG92 X0 Y0\nX2.\n", PathNote::Shift, 1, 1);
  ExpectOnly(u"G52 X1. Y2.\nX2.\nG52 X0 Y0\n", PathNote::LocalZero, 2, 0);
  ExpectOnly(u"G68 X0 Y0 R45.\nG1 X1.\nG69\n", PathNote::Turn, 1, 0);
  ExpectOnly(u"G51 P2.\nG1 X1.\nG50\n", PathNote::Scale, 1, 0);
  ExpectOnly(u"\n\nG10 L2 P1 X-5.\nG1 X1.\n", PathNote::Offsets, 1, 2);
  ExtractToolpath(u"G1 X1.\nG68 R45.\nG92 X0\nG28 Z0\nG52 X2. R1.\nG68 R90.\n", false);
  EXPECT_EQ(PathNotesWords(path.notes),
            u"  /  1 line not shown, first 4  /  4 lines of G92, G52, G68 not applied, first 2");
  EXPECT_EQ(
      PathNotesTip(path.notes),
      u"Not shown: G28, G30 and G53 1\n"
      u"Drawn without: the shift of G92 1, the shift of G52 1, the rotation of G68 2; X, Y and "
      u"Z beside them are drawn as a move");
  // Neither in a comment nor as part of another number.
  ExpectNone(u"(G92)\nG1 X1. ; G68\nG54\nG1 X2. F92.\nG68.2 X1.\n");
}

TEST_F(PathNotesTest, LinesBehindTheClosingPercentAreNamed) {
  ExpectOnly(u"(MORVA TEXT 1)\n%\nO1\nG0 X1.\n%\nG0 X2.\nX3.\n", PathNote::Unread, 2, 5);
  // Without a first one, and with words behind it.
  ExpectOnly(u"G0 X1.\n  % G0 X2.\n; end\nX3.\n%\nX4.\n", PathNote::Unread, 3, 1);
  ExtractToolpath(u"%\nG0 X1.\n%\nX2.\n", false);
  EXPECT_EQ(PathNotesWords(path.notes), u"  /  1 line behind %, first 4");
  EXPECT_EQ(PathNotesTip(path.notes),
            u"Drawn, but never read by the control: lines behind the closing % 1");
  // Comments are no code, and a "%" amid a line closes nothing.
  ExpectNone(u"%\n(G0 X1.) ; G0\n%\nG0 X1. %\nX2.\n");
}

TEST_F(PathNotesTest, AMirrorAndAnotherWorkOffsetAreNamed) {
  ExpectOnly(u"G1 X1.\nG101 X0\nG1 X2.\nG100 X0\n", PathNote::Mirror, 1, 1);
  ExpectOnly(u"G54 G0 X1.\nX2.\nG54\nG55 X1.\nG55\nG54 X1.\n", PathNote::OtherZero, 2, 3);
  ExpectOnly(u"G110 X1.\nG129 X1.\nG59 X1.\n", PathNote::OtherZero, 2, 1);
  ExpectOnly(u"G154 P1\nG1 X1.\nG154 P2\n", PathNote::OtherZero, 1, 2);
  ExtractToolpath(u"G55 X1.\nG101 X0\nG56 X1.\n", false);
  EXPECT_EQ(PathNotesWords(path.notes), u"  /  2 lines of G101, work offsets not applied, first 2");
  EXPECT_EQ(PathNotesTip(path.notes),
            u"Drawn without: the mirroring of G101 1, changes of work offsets 1; X, Y and Z beside "
            u"them are drawn as a move");
  // One offset is where the path lies.
  ExpectNone(u"G55 G0 X1.\nG55 X2.\n");
  ExpectNone(u"G129\nG1 X1.\nG130\nG109\nG100\n");
}

TEST_F(PathNotesTest, EveryHoleOfACannedCycleCounts) {
  // The cycle's own line and two more; G80 ends it.
  ExpectOnly(u"G81 X1. Y1. Z-1. R.1 F5.\nX2.\nX3.\nG80\nX4.\n", PathNote::Cycles, 3, 0);
  // Those that the path goes through by the motion in force.
  ExpectOnly(u"G0 X0\nG73 X1. Z-1. R.1 Q.1\nX2.\nG80\nX4.\n", PathNote::Cycles, 2, 1);
  ExpectOnly(u"G76 X1. Z-1. R.1\nG1 X2.\n", PathNote::Cycles, 1, 0);
}

TEST_F(PathNotesTest, NumbersThatCannotBeReadAreCounted) {
  for (const char16_t* text :
       {u"G1 X#100", u"G1 X-#100", u"G1 X #100", u"G1 X1. y - #5", u"G#1 X1.", u"GOTO 10",
        u"WHILE [#1 LT 5] DO1", u"IF [#1 EQ 2] GOTO 5", u"G3 X1. I#2", u"G0 A#4"}) {
    ExpectOnly(text, PathNote::Macros, 1, 0);
  }
  for (const char16_t* text : {u"G1 X[1+2]", u"G1 X1. Z-[#1/2]", u"G1 Y [1.]"}) {
    ExpectOnly(text, PathNote::Brackets, 1, 0);
  }
  for (const char16_t* text : {u"G1 X 1.", u"X\t-1.", u"G 1 X1.", u"g0 z .5 y1", u"G 1 X 1."}) {
    ExpectOnly(text, PathNote::Blanks, 1, 0);
  }
  ExpectNone(u"G 90\nG 54\nN 10 G1 X1. F 10.\n");
}

TEST_F(PathNotesTest, ALineCountsOnceAmongThoseNotShown) {
  ExtractToolpath(u"G2 X#1 Y[2] R 5\nG65 P1 A1. B#2\nG18 G2 X1. R.5\n", false);
  EXPECT_EQ(NotShown(), 3);
}

TEST_F(PathNotesTest, MovesBehindTheProgramsEndAreNamed) {
  ExpectOnly(u"G1 X1.\nM30\n(end)\nG0\nX2.\nG4 P1\nX3.\n", PathNote::BehindEnd, 2, 4);
  ExpectOnly(u"G1 X1. M02\nX2.\n", PathNote::BehindEnd, 1, 1);
  ExtractToolpath(u"M30\nG2 X1. R1.\n", false);
  EXPECT_EQ(PathNotesWords(path.notes),
            u"  /  1 line not shown, first 2  /  1 line behind M30, first 2");
}

TEST_F(PathNotesTest, MovesThatBlockDeleteLeavesOutAreNamed) {
  ExpectOnly(u"G1\n/X1.\n/M8\n / X2.\n#1=#2/2 X1. G4\n", PathNote::BlockDelete, 2, 1);
}

TEST_F(PathNotesTest, WordsGiveTheSumAndTheFirstLineOfEachGroup) {
  ExtractToolpath(u"G28 Z0\nG0 X1.\n/X2.\nG2 X3. R1.\nG81 X1. Z-1. R.1\nX2.\nG80\nM30\nX5.\n",
                  false);
  EXPECT_EQ(PathNotesWords(path.notes),
            u"  /  4 lines not shown, first 1  /  1 line behind M30, first 9"
            u"  /  1 line with /, first 3");
  EXPECT_EQ(PathNotesTip(path.notes),
            u"Not shown: G28, G30 and G53 1, canned cycles 2, R arcs 1\n"
            u"Drawn, but behind the program's end: lines behind M30 1\n"
            u"Drawn, but left out with block delete: lines with / 1");
}

TEST_F(PathNotesTest, ARunForgetsTheOneBefore) {
  ExtractToolpath(u"G28\n", false);
  ASSERT_NE(PathNotesWords(path.notes), u"");
  ExpectNone(u"G1 X1.\n");
}

// What is hidden is left out on purpose, so it is no warning.
TEST_F(PathNotesTest, HiddenFeaturesAreNotCounted) {
  AddFeature(7, 0, 4);
  OneTab().hiddenIds[0] = 7;
  ExpectOnly(u"G28\nG28\n", PathNote::Home, 1, 1);
}

TEST_F(PathNotesTest, LinesBehindAFullTableAreCountedToo) {
  std::u16string text = Moves(kMaxMotionPoints + 10);
  const auto lines = static_cast<std::int32_t>(kMaxMotionPoints + 10);
  text += u"G2 X1 R5\nG2 X9 I.1\n";
  ExtractToolpath(text, false);
  EXPECT_EQ(RowOf(PathNote::RArcs).first, lines);
  EXPECT_EQ(RowOf(PathNote::BadArcs).first, lines + 1);
}

TEST_F(PathNotesTest, AMoveBehindASteppedOverLineIsDrawn) {
  ExtractToolpath(u"G0 X1\nG2 X2 Y0 R.5\nG1 X3\nG81 X4 Z-1 R.1\nG80\nG0 X5\nG28 Z0\nG1 X6\nX7\n",
                  false);
  ASSERT_EQ(path.count, 8);
  const bool jumps[] = {false, false, true, false, true, false, true, false};
  const bool rapids[] = {true, true, false, false, false, true, false, false};
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(path.points[i].jump, jumps[i]) << i;
    EXPECT_EQ(path.points[i].rapid, rapids[i]) << i;
  }
}

}  // namespace
}  // namespace morva
