#include "codetools/line_changes.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace morva {
namespace {

// The line with "^" below each unit that is marked.
std::string Marks(std::u16string_view line, std::u16string_view other, bool ignoreBlanks = false) {
  std::string marks;
  for (const bool changed : ChangedUnits(line, other, ignoreBlanks)) marks += changed ? '^' : '.';
  return marks;
}

TEST(LineChanges, MarkAWholeNumberAndNotItsLetter) {
  EXPECT_EQ(Marks(u"G01 X1.5 Y2.", u"G01 X1.25 Y2."), ".....^^^....");
  EXPECT_EQ(Marks(u"G01 X1.25 Y2.", u"G01 X1.5 Y2."), ".....^^^^....");
  EXPECT_EQ(Marks(u"G01 X-1.5", u"G01 X1.5"), ".....^^^^");
  EXPECT_EQ(Marks(u"G1", u"G01"), ".^");
}

TEST(LineChanges, MarkWhatOneSideHasAlone) {
  EXPECT_EQ(Marks(u"G0 X1 Z5", u"G0 X1"), ".....^^^");
  EXPECT_EQ(Marks(u"G0 X1", u"G0 X1 Z5"), ".....");
  EXPECT_EQ(Marks(u"(FACE THE BLOCK)", u"(FACE THE BLACK)"), "............^...");
}

TEST(LineChanges, MarkTwoPlacesWithWhatIsEqualBetween) {
  EXPECT_EQ(Marks(u"X1 Y2 Z3", u"X9 Y2 Z8"),
            ".^....."
            "^");
  EXPECT_EQ(Marks(u"M03 S1200", u"M04 S1500"), ".^^..^^^^");
}

TEST(LineChanges, PassOverBlanksThatAreIgnored) {
  EXPECT_EQ(Marks(u"G0  X1", u"G0 X2"), "...^.^");
  EXPECT_EQ(Marks(u"G0  X1", u"G0 X2", true), ".....^");
  EXPECT_EQ(Marks(u"G0\tX1", u"G0X1", true), ".....");
}

TEST(LineChanges, MarkNothingInEqualLinesAndAllOfALineWithoutAnother) {
  EXPECT_EQ(Marks(u"G0 X1", u"G0 X1"), ".....");
  EXPECT_EQ(Marks(u"G0 X1", u""), "^^^^^");
  EXPECT_EQ(Marks(u"", u"G0 X1"), "");
}

// What is not marked reads the same on both sides, whatever the lines are.
TEST(LineChanges, LeaveTheSameTextOnBothSides) {
  std::mt19937 random(20260731);
  for (int round = 0; round < 2000; ++round) {
    std::u16string lines[2];
    for (std::u16string& line : lines) {
      const int units = static_cast<int>(random() % 24);
      for (int i = 0; i < units; ++i) line += u"GXY019. -("[random() % 10];
    }
    const auto rest = [](std::u16string_view line, std::u16string_view other) {
      const std::vector<bool> changed = ChangedUnits(line, other, false);
      std::u16string kept;
      for (std::size_t i = 0; i < line.size(); ++i) {
        if (!changed[i]) kept += line[i];
      }
      return kept;
    };
    ASSERT_EQ(rest(lines[0], lines[1]), rest(lines[1], lines[0]));
  }
}

}  // namespace
}  // namespace morva
