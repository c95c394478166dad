// Texts that differ in marker lines alone, and where their lines stand.

#include "simulator/marker_shift.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace morva;

bool Differ(std::u16string_view one, std::u16string_view other) {
  return DifferByMarkers(WithoutMarkers(one), WithoutMarkers(other));
}

std::vector<std::int32_t> Lines(std::u16string_view from, std::u16string_view to,
                                const std::vector<std::int32_t>& lines) {
  const UnmarkedText one = WithoutMarkers(from);
  const UnmarkedText other = WithoutMarkers(to);
  LineShift shift(one, other);
  std::vector<std::int32_t> moved;
  for (const std::int32_t line : lines) moved.push_back(shift.Moved(line));
  return moved;
}

constexpr char16_t kPlain[] = u"%\r\nG0 X1\r\nG1 X2\r\nM30\r\n";
constexpr char16_t kTagged[] =
    u"%\r\n(MORVA TEXT 1)\r\n(MORVA NAME Way in)\r\nG0 X1\r\n(MORVA END 1)\r\n"
    u"G1 X2\r\nM30\r\n";

TEST(MarkerShift, TextsWithOtherMarkersAreOneText) {
  EXPECT_TRUE(Differ(kPlain, kPlain));
  EXPECT_TRUE(Differ(kPlain, kTagged));
  EXPECT_TRUE(Differ(kTagged, kPlain));
  EXPECT_TRUE(Differ(kTagged, u"(MORVA END 7)\r\n%\r\nG0 X1\r\nG1 X2\r\nM30\r\n(MORVA END 8)"));
}

TEST(MarkerShift, ALineEndAtTheEndOfTheTextMakesNoDifference) {
  EXPECT_TRUE(Differ(u"G0\r\nM30", u"G0\r\nM30\r\n"));
  EXPECT_TRUE(Differ(u"G0\r\nM30", u"G0\r\nM30\r\n(MORVA END 1)"));
  EXPECT_TRUE(Differ(u"G0\r\nM30", u"G0\r\nM30\r\n(MORVA END 1)\r\n"));
  EXPECT_FALSE(Differ(u"G0\r\nM30", u"G0\r\nM30\r\n\r\n"));
}

TEST(MarkerShift, EverythingElseIsAnotherText) {
  for (const char16_t* other :
       {u"%\r\nG0 X1\r\nG1 X3\r\nM30\r\n",                       // a number
        u"%\r\nG0 X1\r\nG1 X2\r\n\r\nM30\r\n",                   // an empty line
        u"%\r\nG0 X1\r\n(A comment)\r\nG1 X2\r\nM30\r\n",        // a comment
        u"%\r\nG0 X1\r\n(MORVA END 1) G1 X2\r\nM30\r\n",         // code behind a marker
        u"%\r\nG0 X1\r\n(MORVA END 1)G4\r\nG1 X2\r\nM30\r\n",    // ... another one
        u"%\r\nG0 X1\r\n(MORVA END 1\r\nG1 X2\r\nM30\r\n",       // not closed
        u"%\r\nG0 X1\r\n(MORVA END (1)\r\nG1 X2\r\nM30\r\n",     // two brackets
        u"%\r\nG0 X1\r\n (MORVA END 1)\r\nG1 X2\r\nM30\r\n",     // not at the start
        u"%\r\nG0 X1 (MORVA END 1)\r\nG1 X2\r\nM30\r\n",         // behind code
        u"%\r\nG0 X1\r\n(MORVA DATA 1)\r\nG1 X2\r\nM30\r\n",     // not one of tagging
        u"%\r\nG0 X1\r\n(MORVA BEGIN 1)\r\nG1 X2\r\nM30\r\n",    // not one of tagging
        u"%\r\nG0 \r\n(MORVA END 1)\r\nX1\r\nG1 X2\r\nM30\r\n",  // a line in two
        u"%\r\nG0 X1\r\n(MORVA END 1)\r\nM30\r\nG1 X2\r\n"}) {   // another order
    EXPECT_FALSE(Differ(kPlain, other));
    EXPECT_FALSE(Differ(other, kPlain));
  }
  EXPECT_FALSE(Differ(u"G0\r\nX1", std::u16string_view(u"G0\r\n(MORVA END \0 1)\r\nX1", 23)));
}

// An empty text ends on its first line, a line end on the second: nothing is said of either.
TEST(MarkerShift, OfAnEmptyTextNothingIsSaid) {
  EXPECT_FALSE(Differ(u"", u""));
  EXPECT_FALSE(Differ(u"", u"\r\n"));
  EXPECT_FALSE(Differ(u"(MORVA END 1)\r\n", u""));
}

// Pieces between markers of every length count as the text that they make up.
TEST(MarkerShift, PiecesCountAsOneText) {
  std::u16string plain, tagged;
  for (std::size_t i = 0; i < 90; ++i) {
    const std::u16string line = std::u16string(i % 37, u'X') + u"\r\n";
    plain += line;
    tagged += line;
    if (i % 3 == 0) tagged += u"(MORVA NAME Rim)\r\n";
  }
  EXPECT_TRUE(Differ(plain, tagged));
  for (std::size_t i = 0; i < plain.size(); i += 7) {
    std::u16string other = plain;
    other[i] = u'Y';
    EXPECT_FALSE(Differ(other, tagged)) << i;
  }
}

TEST(MarkerShift, LinesMoveBehindTheMarkersBeforeThem) {
  // The last one is the line on which the text ends.
  EXPECT_EQ(Lines(kPlain, kTagged, {0, 1, 2, 3, 4}), (std::vector<std::int32_t>{0, 3, 5, 6, 7}));
  EXPECT_EQ(Lines(kTagged, kPlain, {0, 3, 5, 6, 7}), (std::vector<std::int32_t>{0, 1, 2, 3, 4}));
  // In any order.
  EXPECT_EQ(Lines(kPlain, kTagged, {4, 0, 3, 1, 2}), (std::vector<std::int32_t>{7, 0, 6, 3, 5}));
  EXPECT_EQ(Lines(kTagged, kPlain, {7, 0, 6, 3, 5}), (std::vector<std::int32_t>{4, 0, 3, 1, 2}));
}

TEST(MarkerShift, LinesMoveBetweenTwoSetsOfMarkers) {
  const char16_t* const other =
      u"(MORVA TEXT 1)\r\n%\r\nG0 X1\r\nG1 X2\r\n(MORVA END 1)\r\nM30\r\n(MORVA END 2)";
  EXPECT_EQ(Lines(kTagged, other, {0, 3, 5, 6, 7}), (std::vector<std::int32_t>{1, 2, 3, 5, 7}));
  EXPECT_EQ(Lines(other, kTagged, {1, 2, 3, 5, 7}), (std::vector<std::int32_t>{0, 3, 5, 6, 7}));
}

}  // namespace
