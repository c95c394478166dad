// What a place in a program lies between, on programs written out by hand.
#include "documents/program_places.h"

#include <gtest/gtest.h>

#include <string>

namespace morva {
namespace {

constexpr char16_t kForeign[] =
    u"%\r\n"
    u"O1001 (PLATE)\r\n"
    u"N10 G20 G90 G54 (M30)\r\n"
    u"T1 M06\r\n"
    u"G00 X0 Y0\r\n"
    u"M30\r\n"
    u"O2000 (SUB)\r\n"
    u"G01 X1\r\n"
    u"M99\r\n"
    u"%\r\n"
    u"G28\r\n";

PlaceAround At(std::u16string_view text, std::u16string_view words) {
  const std::size_t at = text.find(words);
  EXPECT_NE(at, text.npos);
  return LookAround(text, static_cast<std::int32_t>(at));
}
std::u16string WordsAt(std::u16string_view text, std::u16string_view words) {
  return At(text, words).words;
}

TEST(ProgramPlaces, CountsWhatStandsBehindTheClosingPercent) {
  EXPECT_EQ(LinesNeverRead(kForeign).count, 1);
  EXPECT_EQ(LinesNeverRead(kForeign).first, 11);
  EXPECT_EQ(LinesNeverRead(u"(MORVA TEXT 1)\r\n%\r\nO1\r\nM30\r\n%\r\n(END)\r\n").count, 0);
  EXPECT_EQ(LinesNeverRead(u"G0\n%\nG1\n(A) ; B\n%\nG2\n").count, 2);
  EXPECT_EQ(LinesNeverRead(u"").first, 0);
}

// What `piece` does to the program where it stands in it.
std::u16string Cuts(std::u16string_view before, std::u16string_view piece,
                    std::u16string_view behind) {
  const std::u16string text =
      std::u16string(before) + std::u16string(piece) + std::u16string(behind);
  const auto from = static_cast<std::int32_t>(before.size());
  return CutsByInserted(text, from, from + static_cast<std::int32_t>(piece.size()));
}

TEST(ProgramPlaces, TellWhatInsertedTextDoesToTheProgram) {
  EXPECT_EQ(Cuts(u"G20\r\n(A)\r\n", u"%\r\nO77 (HEAD)\r\nG54\r\nM30\r\n%\r\n", u"G0 X1\r\n"),
            u"Line 3: the inserted % stands between code. A control reads from one % to the next."
            u"\r\nLine 4: the inserted O77 stands behind code. It begins another program."
            u"\r\nLine 6: the inserted M30 ends the program. The code behind it is not run.");
  // A whole program in an empty one, and the end of a program at its end.
  EXPECT_EQ(Cuts(u"(A)\r\n", u"%\r\nO77\r\nM30\r\n%\r\n", u"(B)\r\n"), u"");
  EXPECT_EQ(Cuts(u"%\r\nO1\r\nG0 X1\r\n", u"G28\r\nM30\r\n", u"%\r\n"), u"");
  // What the program had before is no matter of the insertion.
  EXPECT_EQ(Cuts(u"%\r\nO1\r\nM30\r\n%\r\n", u"G28 (% O2 M30)\r\n", u"O2\r\nM30\r\n"), u"");
  EXPECT_EQ(Cuts(u"G0\r\n", u"/M30\r\n", u"G1\r\n"), u"") << "the control may leave it out";
}

TEST(ProgramPlaces, LieBeforeTheHeadUpToTheProgramNumber) {
  EXPECT_TRUE(LookAround(kForeign, 0).beforeHead);
  EXPECT_EQ(WordsAt(kForeign, u"O1001"), u"Before the program's head (O1001)");
  EXPECT_FALSE(At(kForeign, u"N10").beforeHead);
  // Code that stands before it already makes no head.
  EXPECT_EQ(WordsAt(u"G01 X1\r\nO1001\r\nG20\r\n", u"O1001"), u"Before the program's head (O1001)");
}

TEST(ProgramPlaces, LieBeforeTheFirstCodeOfAProgramWithoutANumber) {
  constexpr char16_t kText[] =
      u"%\r\n(FILE: A.NC)\r\nN5 G20 (INCHES)\r\nT1 M6\r\nM30\r\nO2 M99\r\n";
  EXPECT_EQ(WordsAt(kText, u"N5"), u"Before the program's head (G20)");
  EXPECT_FALSE(At(kText, u"T1").beforeHead);
}

TEST(ProgramPlaces, TellTheLinesOfCodeAround) {
  EXPECT_EQ(WordsAt(kForeign, u"G00 X0"), u"Behind line 4 (T1 M06), before line 5 (G00 X0 Y0)");
  EXPECT_EQ(WordsAt(u"G0\r\n\r\n(A)\r\nG1\r\n", u"(A)"), u"Behind line 1 (G0), before line 4 (G1)");
  EXPECT_EQ(LookAround(u"G0\r\n", 4).words, u"Behind line 1 (G0), at the end");
  EXPECT_EQ(LookAround(u"", 0).words, u"In a program without code");
  EXPECT_EQ(LookAround(u"(M30)\r\n", 7).words, u"In a program without code");
  EXPECT_EQ(LookAround(u"X1.123456789 Y1.123456789 Z1.123\n", 40).words,
            u"Behind line 1 (X1.123456789 Y1.123456789 Z\u2026), at the end");
}

TEST(ProgramPlaces, LieBehindTheEndUntilAnotherProgramBegins) {
  EXPECT_FALSE(At(kForeign, u"M30\r\n").behindEnd);
  EXPECT_EQ(WordsAt(kForeign, u"O2000"), u"Behind M30: never run");
  const PlaceAround sub = At(kForeign, u"G01 X1");
  EXPECT_FALSE(sub.behindEnd);
  EXPECT_EQ(sub.words, u"In O2000, behind line 7 (O2000), before line 8 (G01 X1)");
  EXPECT_EQ(WordsAt(kForeign, u"%\r\nG28"), u"Behind M99: never run");
  EXPECT_EQ(WordsAt(kForeign, u"G28"), u"Behind the closing %: never read");
  EXPECT_EQ(At(kForeign, u"G28").end, u"the closing %");
}

TEST(ProgramPlaces, KnowEveryWayToEndAProgram) {
  for (const char16_t* end :
       {u"M30", u"m30", u"N90 M30", u"G28 M30", u"M02", u"M2", u"M99", u"M 30", u"M030", u"M30."}) {
    const std::u16string text = std::u16string(u"O1\r\nG0\r\n") + end + u"\r\n";
    EXPECT_TRUE(LookAround(text, static_cast<std::int32_t>(text.size())).behindEnd)
        << std::string(text.begin(), text.end());
  }
  for (const char16_t* none :
       {u"M300", u"M3", u"(M30)", u"; M30", u"/M30", u"M98 P30", u"M#30", u"M31", u"%"}) {
    const std::u16string text = std::u16string(u"%\r\nO1\r\n") + none + u"\r\n";
    const bool closed = none[0] == u'%';
    EXPECT_EQ(LookAround(text, static_cast<std::int32_t>(text.size())).behindEnd, closed)
        << std::string(text.begin(), text.end());
  }
  // An opening "%" closes nothing, however many stand there.
  EXPECT_FALSE(LookAround(u"%\r\n%\r\n(A)\r\n", 8).behindEnd);
}

TEST(ProgramPlaces, CountLinesByEveryLineEnd) {
  EXPECT_EQ(LookAround(u"G0\rG1\nG2\r\nG3", 9).words, u"Behind line 3 (G2), before line 4 (G3)");
}

}  // namespace
}  // namespace morva
