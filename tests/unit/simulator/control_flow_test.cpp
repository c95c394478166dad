#include "text/codetext.h"
#include "unit/simulator/control_fixture.h"

namespace {

using namespace control_test;
using morva::IntegerText;

TEST(ControlFlow, CallsALabelBehindTheEnd) {
  const ControlTrack& track =
      RunText(u"G0 X0. Y0. Z0.\nM97 P100 L2\nM30\nN100 G91 G1 X1. F10.\nG90\nM99\n");
  ExpectPoints(track, {{0, 0, 0, true}, {1, 0, 0}, {2, 0, 0}});
  EXPECT_EQ(Found(track), "");
}

TEST(ControlFlow, CallsAProgramInTheSameText) {
  const ControlTrack& track = RunText(u"O1\nG0 X0. Y0. Z0.\nM98 P2\nX5.\nM30\nO2\nX1.\nM99\n");
  ExpectPoints(track, {{0, 0, 0, true}, {1, 0, 0, true}, {5, 0, 0, true}});
  EXPECT_EQ(track.path.points[1].sourceLine, 6);
}

std::int32_t Beside(std::int32_t number, std::u16string_view& text) {
  if (number != 77) return 0;
  text = u"O77\nG1 X1. F10.\nX2.\nM99\n";
  return 1;
}

TEST(ControlFlow, CallsAProgramThatLiesBesideAndTellsItsMotionForTheCall) {
  const ControlTrack& track =
      RunText(u"G0 X0. Y0. Z0.\nM98 P77\nM98 P78\nM30\n", {.findProgram = Beside});
  ExpectPoints(track, {{0, 0, 0, true}, {1, 0, 0}, {2, 0, 0}});
  EXPECT_EQ(track.path.points[2].sourceLine, 1);
  EXPECT_EQ(Found(track), "ProgramMissing 3");
}

TEST(ControlFlow, JumpsAheadAndBack) {
  ExpectPoints(RunText(u"#1=0\nG0 X0. Y0. Z0.\nN10 G91 X1.\n#1=#1+1\nIF [#1 LT 3] GOTO 10\nM30"),
               {{0, 0, 0, true}, {1, 0, 0, true}, {2, 0, 0, true}, {3, 0, 0, true}});
}

TEST(ControlFlow, LoopsWithWhile) {
  const ControlTrack& track = RunText(
      u"G0 X0. Y0. Z0.\n#1=1\nWHILE [#1 LE 2] DO1\n#2=1\nWHILE [#2 LE 2] DO2\nX#1 Y#2\n#2=#2+1\n"
      u"END2\n#1=#1+1\nEND1\nM30");
  ExpectPoints(
      track, {{0, 0, 0, true}, {1, 1, 0, true}, {1, 2, 0, true}, {2, 1, 0, true}, {2, 2, 0, true}});
}

TEST(ControlFlow, GivesAMacroItsArguments) {
  const ControlTrack& track = RunText(
      u"#1=9\nG0 X0. Y0. Z0.\nG65 P2 A1. B#1 I2. J3. I4.\nX#1\nM30\nO2\nX#1 Y#2\nX#4 Y#7\nM99");
  ASSERT_GT(track.path.count, 2);
  ExpectEnd(track, 9, 4, 0);
}

TEST(ControlFlow, StopsWhatRunsForEver) {
  EXPECT_EQ(Found(RunText(u"N1 G0 X0. Y0. Z0.\nGOTO 1\nM30")), "NoStepsLeft 2");
  EXPECT_EQ(Found(RunText(u"O1\nM98 P1\nM30")), "CallsItself 2");
  EXPECT_EQ(Found(RunText(u"#1=1\nWHILE [#1 EQ 1] DO1\nEND1\nM30")), "NoStepsLeft 3");
}

// Of `count` programs, each of which calls the next one; the last call with a code of its own.
std::u16string Chain(int count, const std::u16string& code, const std::u16string& last) {
  std::u16string text;
  for (int i = 1; i <= count; ++i) {
    text += (i == count ? last : code) + u" P" + IntegerText(i) + (i == 1 ? u"\nM30" : u"\nM99");
    text += u"\nO" + IntegerText(i) + u"\n";
  }
  return text + u"M99\n";
}

// The call in program n stands in line 3n + 1.
TEST(ControlFlow, NamesCallsThatAreNestedDeep) {
  EXPECT_EQ(Found(RunText(Chain(9, u"M98", u"M98"))), "");
  EXPECT_EQ(Found(RunText(Chain(10, u"M98", u"M98"))), "NestingDeep 28");
  EXPECT_EQ(Found(RunText(Chain(4, u"G65", u"G65"))), "");
  EXPECT_EQ(Found(RunText(Chain(5, u"G65", u"G65"))), "NestingDeep 13");
  EXPECT_EQ(Found(RunText(Chain(5, u"G65", u"M98"))), "");
  EXPECT_EQ(Found(RunText(Chain(9, u"M98", u"G65"))), "");
}

TEST(ControlFlow, NamesJumpsToNowhereAndOpenLoops) {
  EXPECT_EQ(Found(RunText(u"GOTO 50\nM30")), "LabelMissing 1");
  EXPECT_EQ(Found(RunText(u"M97 P50\nM30")), "LabelMissing 1");
  EXPECT_EQ(Found(RunText(u"WHILE [#1 EQ 1] DO1\nM30")), "WhileOpen 1");
  EXPECT_EQ(Found(RunText(u"END1\nM30")), "WhileOpen 1");
  EXPECT_EQ(Found(RunText(u"WHILE [1 EQ 1] DO1\nG0 X1. Y0. Z0.\nM30")), "WhileOpen 1");
  const std::u16string crossed =
      u"#1=0\nWHILE [#1 LT 3] DO1\nWHILE [#1 LT 2] DO2\n#1=#1+1\nEND1\nEND2\nM30\n";
  EXPECT_EQ(Found(RunText(crossed)), "WhileOpen 3");
  const std::u16string nested =
      u"#1=0\nWHILE [#1 LT 3] DO1\n#2=0\nWHILE [#2 LT 2] DO2\n#2=#2+1\nEND2\nWHILE [#2 LT 4] DO2\n"
      u"#2=#2+1\nIF [#2 EQ 3] GOTO 9\nEND2\nN9 #1=#1+1\nEND1\nM30\n";
  EXPECT_EQ(Found(RunText(nested)), "");
}

TEST(ControlFlow, LooksForALineNumberInItsOwnProgramAlone) {
  // N10 of O2 stands between the jump and the end of the text; the one of O1 above it counts.
  const ControlTrack& track = RunText(
      u"O1\nG0 X0. Y0. Z0.\n#1=0\nN10 G91 X1.\n#1=#1+1\nIF [#1 LT 2] GOTO 10\nM30\n"
      u"O2\nN10 X9.\nM99\n");
  ExpectPoints(track, {{0, 0, 0, true}, {1, 0, 0, true}, {2, 0, 0, true}});
  EXPECT_EQ(Found(track), "");
  EXPECT_EQ(Found(RunText(u"O1\nGOTO 10\nM30\nO2\nN10\nM99\n")), "LabelMissing 2");
  EXPECT_EQ(Found(RunText(u"O1\nWHILE [1 EQ 0] DO1\nM30\nO2\nEND1\nM99\n")), "WhileOpen 2");
}

TEST(ControlFlow, TakesTheNextOfALineNumberThatStandsTwice) {
  const std::u16string_view text =
      u"N10 X1.\nG0 X0. Y0. Z0.\nGOTO 10\nX8.\nN10 X2.\nM30\nN10 X3.\nM30\n";
  const ControlTrack& track = RunText(text);
  ExpectEnd(track, 2, 0, 0);
  EXPECT_EQ(Found(track), "LabelDoubled 3");
}

TEST(ControlFlow, NamesACalledNumberThatStandsTwiceAndTakesTheFirst) {
  const ControlTrack& track =
      RunText(u"O1\nG0 X0. Y0. Z0.\nM98 P2 L3\nM98 P2\nM30\nO2\nX1.\nM99\nO2\nX2.\nM99\n");
  ExpectEnd(track, 1, 0, 0);
  EXPECT_EQ(Found(track), "NumberDoubled 9");
}

TEST(ControlFlow, EndsTheMainProgramAtM99) {
  const ControlTrack& track = RunText(u"G0 X0. Y0. Z0.\nX1.\nM99\n");
  EXPECT_EQ(track.path.count, 2);
  EXPECT_EQ(Found(track), "");
}

TEST(ControlFlow, TellsATextWithoutEnd) {
  EXPECT_EQ(Found(RunText(u"G0 X0. Y0. Z0.\nX1.\n")), "NoEnd 3");
}

}  // namespace
