#include "codetools/colours.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace morva {
namespace {

struct Run {
  int from;
  int length;
  platform::Colour colour;
  bool bold;
  bool operator==(const Run&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Run& run) {
  return out << run.from << "+" << run.length << " " << std::hex << run.colour << std::dec
             << (run.bold ? " bold" : "");
}

std::vector<Run> Runs(const platform::ColourRun* runs, int count) {
  std::vector<Run> out;
  for (int i = 0; i < count; ++i) {
    out.push_back({runs[i].from, runs[i].length, runs[i].colour, runs[i].bold});
  }
  return out;
}

std::vector<Run> Code(std::u16string_view line, bool& inComment) {
  platform::ColourRun runs[64];
  return Runs(runs, ColourLine(line, inComment, runs, 64));
}

std::vector<Run> Code(std::u16string_view line) {
  bool inComment = false;
  return Code(line, inComment);
}

std::vector<Run> Words(std::u16string_view line) {
  platform::ColourRun runs[64];
  return Runs(runs, ColourWordsLine(line, runs, 64));
}

using Wanted = std::vector<Run>;

TEST(ColourLine, ColoursWordsByTheirLetter) {
  EXPECT_EQ(Code(u"G01 X1.5 F20"),
            (Wanted{{0, 3, 0x2CD6DF, true}, {4, 4, 0xFFA448, true}, {9, 3, 0x4AD6E2, true}}));
  EXPECT_EQ(Code(u"n10g0"), (Wanted{{0, 3, 0x809AB2, false}, {3, 2, 0x2CD6DF, true}}));
  EXPECT_EQ(Code(u"T1M6"), (Wanted{{0, 2, 0xE670FF, true}, {2, 2, 0x489AFF, true}}));
}

TEST(ColourLine, ColoursAMacroExpressionAsOneWord) {
  EXPECT_EQ(Code(u"X[#100+1.] Y2"), (Wanted{{0, 10, 0xFFA448, true}, {11, 2, 0xEF87E7, true}}));
  EXPECT_EQ(Code(u"X[[A]B(]Y1"), (Wanted{{0, 8, 0xFFA448, true}, {8, 2, 0xEF87E7, true}}));
  EXPECT_EQ(Code(u"Z#5"), (Wanted{{0, 3, 0x5DC0FF, true}}));
}

TEST(ColourLine, LeavesOtherLettersAndLoneLettersInTheBaseColour) {
  EXPECT_EQ(Code(u"A1 B2 C3 E4 U5 V6 W7 G X Y"), Wanted{});
}

TEST(ColourLine, ColoursThePercentSignAlone) {
  EXPECT_EQ(Code(u"%G0"), (Wanted{{0, 1, 0x809AB2, true}, {1, 2, 0x2CD6DF, true}}));
}

TEST(ColourLine, CarriesAnOpenCommentOverTheLineEnd) {
  bool inComment = false;
  EXPECT_EQ(Code(u"G0 (OPEN", inComment),
            (Wanted{{0, 2, 0x2CD6DF, true}, {3, 5, 0x86D06A, false}}));
  EXPECT_TRUE(inComment);
  EXPECT_EQ(Code(u"G1 X1", inComment), (Wanted{{0, 5, 0x86D06A, false}}));
  EXPECT_EQ(Code(u"A) G1", inComment), (Wanted{{0, 2, 0x86D06A, false}, {3, 2, 0x2CD6DF, true}}));
  EXPECT_FALSE(inComment);
}

TEST(ColourLine, KnowsNoSemicolonAndNoNesting) {
  EXPECT_EQ(Code(u"(A(B)G1 ;X1"),
            (Wanted{{0, 5, 0x86D06A, false}, {5, 2, 0x2CD6DF, true}, {9, 2, 0xFFA448, true}}));
}

TEST(ColourLine, StopsAtItsCapacity) {
  platform::ColourRun runs[2];
  bool inComment = false;
  EXPECT_EQ(ColourLine(u"X1Y2Z3", inComment, runs, 2), 2);
}

TEST(ColourWordsLine, ColoursALineByWhatItSaysAndItsAxesApart) {
  EXPECT_EQ(Words(u"Rapid Motion Positioning X1."),
            (Wanted{{0, 25, 0x64B2FF, false}, {25, 3, 0xFFA448, true}}));
  EXPECT_EQ(Words(u"linear Y-2 F1"),
            (Wanted{{0, 7, 0x56DFAD, false}, {7, 3, 0xEF87E7, true}, {10, 3, 0x56DFAD, false}}));
  EXPECT_EQ(Words(u"(RAPID)"), (Wanted{{0, 7, 0x7591A1, false}}));
  EXPECT_EQ(Words(u"Tool Change"), (Wanted{{0, 11, 0xDEC585, false}}));
  EXPECT_EQ(Words(u""), Wanted{});
}

}  // namespace
}  // namespace morva
