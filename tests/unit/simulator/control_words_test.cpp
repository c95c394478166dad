#include "unit/simulator/control_fixture.h"

namespace {

using namespace control_test;

TEST(ControlWords, TakesBlanksBetweenLetterAndNumber) {
  const ControlTrack& track = RunText(u"G 0 X 1.5 Y - 2. Z+3.\nG01 X0. F10.\nM30\n");
  ExpectPoints(track, {{1.5, -2, 3, true}, {0, -2, 3}});
  EXPECT_EQ(Found(track), "");
}

TEST(ControlWords, CountsAWholeLengthInTheLeastStepOfTheControl) {
  ExpectPoints(RunText(u"G20 G0 X10000 Y-5 Z1.\nM30"), {{1, -0.0005, 1, true}});
  // 0.001 mm each; shown in inches.
  ExpectPoints(RunText(u"G21 G0 X25400 Y0 Z0\nM30"), {{1, 0, 0, true}});
}

TEST(ControlWords, CountsAWholeLengthAsWholeWhereTheControlIsSetSo) {
  ControlTable table;
  table.wholeLengths = true;
  ExpectPoints(RunText(u"G0 X2 Y-5 Z1.5\nM30", {.table = &table}), {{2, -5, 1.5, true}});
}

TEST(ControlWords, LeavesOutCommentsAndWhatStandsBehindASemicolon) {
  ExpectPoints(RunText(u"G0 (X9.) X1. Y0. Z0. ; X7.\n(G0 X8.)\nM30"), {{1, 0, 0, true}});
}

TEST(ControlWords, TakesALineOutByItsSlashOnlyWithTheSwitchOn) {
  const std::u16string_view text = u"G0 X0. Y0. Z0.\n/X1.\n/2 X2.\nM30";
  ExpectPoints(RunText(text), {{0, 0, 0, true}, {1, 0, 0, true}, {2, 0, 0, true}});
  ControlTable table;
  table.blockDelete = true;
  ExpectPoints(RunText(text, {.table = &table}), {{0, 0, 0, true}});
}

TEST(ControlWords, EndsAtTheSecondPercent) {
  const ControlTrack& track = RunText(u"%\nO1\nG0 X0. Y0. Z0.\nX1.\n%\nX5.\n");
  ExpectPoints(track, {{0, 0, 0, true}, {1, 0, 0, true}});
}

TEST(ControlWords, NamesALetterWithoutNumberAndUnknownCodes) {
  EXPECT_EQ(Found(RunText(u"G0 X0. Y\nG200 X1.\nM999\nG96\n?\nM30")),
            "BadWord 1, UnknownG 2, UnknownM 3, LatheWord 4, BadWord 5");
}

TEST(ControlWords, NamesTwoCodesOfOneGroupInABlock) {
  EXPECT_EQ(Found(RunText(u"G0 G1 X0. F1.\nG90 G91 X1.\nM30")), "TwoOfAGroup 1, TwoOfAGroup 2");
  EXPECT_EQ(Found(RunText(u"G90 G0 X1. G90\nM30")), "");
  EXPECT_EQ(Found(RunText(u"G90 G91 G90 G0 X1.\nM30")), "TwoOfAGroup 1");
}

TEST(ControlWords, NamesTheOtherUnitInOneProgram) {
  EXPECT_EQ(Found(RunText(u"G20\nG0 X1. Y0. Z0.\nG21\nM30")), "UnitDisagrees 3");
}

TEST(ControlWords, TellsEachPointTheLineItComesFrom) {
  const ControlTrack& track = RunText(u"(A)\r\nG0 X0. Y0. Z0.\r\n\r\nX1.\nM30");
  ASSERT_EQ(track.path.count, 2);
  EXPECT_EQ(track.path.points[0].sourceLine, 1);
  EXPECT_EQ(track.path.points[1].sourceLine, 3);
}

}  // namespace
