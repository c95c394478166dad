#include "codetools/renumber.h"

#include <gtest/gtest.h>

#include <string>

namespace morva {
namespace {

TEST(Renumber, SkipsPercentLinesTheONumberAndBlankLines) {
  EXPECT_EQ(RenumberedText(u"%\r\nO1000\r\n\r\nG0 X0\r\nM30\r\n%\r\n"),
            u"%\r\nO1000\r\n\r\nN10 G0 X0\r\nN20 M30\r\n%\r\n");
}

TEST(Renumber, GivesTheSameTextTheSecondTime) {
  const std::u16string once = RenumberedText(u"%\nO1\n  G1 X1\nn5g1\nNOTE\n(C)\n;x\n:1\n\n");
  EXPECT_EQ(once, u"%\r\nO1\r\nN10 G1 X1\r\nN20 g1\r\nN30 OTE\r\n(C)\r\nN40 ;x\r\nN50 :1\r\n\r\n");
  // "N30 OTE" begins with N and digits, so the second run finds the same rest.
  EXPECT_EQ(RenumberedText(once), once);
}

TEST(Renumber, DropsTheLetterDigitsAndBlanksOfAnOldNumberOnly) {
  EXPECT_EQ(RenumberedText(u"n5g1"), u"N10 g1\r\n");
  EXPECT_EQ(RenumberedText(u"N 5 G1"), u"N10 5 G1\r\n");
  EXPECT_EQ(RenumberedText(u"N15"), u"N10 \r\n");
  EXPECT_EQ(RenumberedText(u"NOTE"), u"N10 OTE\r\n");
}

TEST(Renumber, AnIndentedBlockLosesItsIndentAndAnIndentedCommentKeepsIt) {
  EXPECT_EQ(RenumberedText(u"  G1 X1\r\n  (NOTE)\r\n\t%\r\n o5"),
            u"N10 G1 X1\r\n  (NOTE)\r\n\t%\r\n o5\r\n");
}

TEST(Renumber, CopiesBlankLinesWithTheirBlanks) {
  EXPECT_EQ(RenumberedText(u"  \t\r\nG0"), u"  \t\r\nN10 G0\r\n");
}

TEST(Renumber, TakesLfCrAsTwoLineEnds) {
  EXPECT_EQ(RenumberedText(u"G0\n\rG1\rG2\r\nG3"), u"N10 G0\r\n\r\nN20 G1\r\nN30 G2\r\nN40 G3\r\n");
}

TEST(Renumber, LeavesAnEmptyProgramEmpty) { EXPECT_EQ(RenumberedText(u""), u""); }

TEST(Renumber, CountsTheLinesThatJumpToALineNumber) {
  EXPECT_EQ(CountLineJumps(u"G0 X1\r\nM97 P20\r\nIF [#1 EQ 2] GOTO 10\r\nm99p5\r\n"), 3);
  EXPECT_EQ(CountLineJumps(u"M99\nM97\n(GOTO 5)\nG0 (M97 P1) X1 ; GOTO 7\nM98 P1000\n"), 0);
  EXPECT_EQ(CountLineJumps(u""), 0);
}

TEST(Renumber, CountsPastFiveDigits) {
  std::u16string text;
  for (int i = 0; i < 10001; ++i) text += u"G0\r\n";
  const std::u16string out = RenumberedText(text);
  EXPECT_EQ(out.substr(out.size() - 12), u"N100010 G0\r\n");
}

}  // namespace
}  // namespace morva
