// Which rows a caret asks for, their words and the place of their list.

#include "codetools/completion.h"

#include <gtest/gtest.h>

#include <string>

#include "library/code_index.h"

namespace morva {
namespace {

CompletionRows AtEnd(std::u16string_view line, bool wordsView = false, bool manual = false) {
  return FindCompletions(line, static_cast<int>(line.size()), wordsView, manual);
}

TEST(Completion, GListsAllGRowsInTableOrder) {
  const CompletionRows found = AtEnd(u"g");
  ASSERT_EQ(found.count, 107);
  EXPECT_EQ(codeTable[found.rows[0]].code, u"G00");
  EXPECT_EQ(codeTable[found.rows[106]].code, u"G269");
}

TEST(Completion, MListsAllMRows) { EXPECT_EQ(AtEnd(u"X1. m").count, 87); }

TEST(Completion, DigitsNarrowByTheTextOfTheCode) {
  // G00, G01, G02, G03, G04, G09.
  EXPECT_EQ(AtEnd(u"G0").count, 6);
  // "G1" begins G10 and what follows, never G01.
  EXPECT_EQ(codeTable[AtEnd(u"G1").rows[0]].code, u"G10");
}

TEST(Completion, AFullCodeThatNothingGoesOnFromIsSettled) {
  const CompletionRows found = AtEnd(u"G01");
  EXPECT_EQ(found.count, 0);
  EXPECT_TRUE(found.settled);
  EXPECT_EQ(found.token, u"G01");
}

TEST(Completion, AFullCodeThatOthersGoOnFromStaysOpen) {
  // G10, G100, G101, G103, G107.
  EXPECT_EQ(AtEnd(u"G10").count, 5);
  // M30 and M300.
  EXPECT_EQ(AtEnd(u"M30").count, 2);
}

TEST(Completion, OnlyGAndMWithDigitsAndPointsOpenIt) {
  for (const std::u16string_view line : {u"X1", u"G0X1", u"G-1", u"N10", u"", u"T", u"G#1"}) {
    EXPECT_EQ(AtEnd(line).count, 0);
    EXPECT_FALSE(AtEnd(line).settled);
  }
}

TEST(Completion, TheWholeTokenIsReplaced) {
  const CompletionRows found = FindCompletions(u"N10 G0 X1", 5, false, false);
  EXPECT_EQ(found.count, 6);
  EXPECT_EQ(found.start, 4);
  EXPECT_EQ(found.end, 6);
}

TEST(Completion, ARequestKeepsAFullCodeOpen) { EXPECT_EQ(AtEnd(u"G01", false, true).count, 1); }

TEST(Completion, ARequestFiltersByTheToken) { EXPECT_EQ(AtEnd(u"X1", false, true).count, 0); }

TEST(Completion, TheWordsFilterIsTheLastLettersAndBlanks) {
  EXPECT_EQ(WordsFilter(u"X1. Tool Ch", 11), u"Tool Ch");
  EXPECT_EQ(WordsFilter(u"   Ra", 5), u"Ra");
  EXPECT_EQ(WordsFilter(u"R", 1), u"");
  EXPECT_EQ(WordsFilter(u"Rapid ", 6), u"");
  EXPECT_EQ(WordsFilter(u"Rapid", 9), u"");
}

TEST(Completion, TheWordsFilterLooksAt94Units) {
  const std::u16string line(100, u'a');
  EXPECT_EQ(WordsFilter(line, 100).size(), 94u);
}

TEST(Completion, TheWordsViewListsDescriptionsThatHoldTheFilter) {
  const CompletionRows found = AtEnd(u"X1. tool change", true);
  ASSERT_EQ(found.count, 2);
  EXPECT_EQ(codeTable[found.rows[0]].code, u"M06");
  EXPECT_EQ(codeTable[found.rows[1]].code, u"M16");
  EXPECT_EQ(found.start, 4);
  EXPECT_EQ(found.end, 15);
  EXPECT_EQ(AtEnd(u"tool change", false).count, 0);
}

TEST(Completion, ARowPadsTheCodeAndMarksTheSelection) {
  EXPECT_EQ(CompletionRowText(0, true), u">  G00     Rapid Motion Positioning");
  EXPECT_EQ(CompletionRowText(0, false), u"   G00     Rapid Motion Positioning");
}

TEST(Completion, TheStatusTellsCodeNameAndKeys) {
  // Enter breaks the line while nothing is chosen.
  EXPECT_EQ(CompletionStatus(4, false),
            u"G04 \u2014 Dwell  \u2022  Up/Down choose  \u2022  Tab inserts  \u2022  Esc closes");
  EXPECT_EQ(CompletionStatus(4, true),
            u"G04 \u2014 Dwell  \u2022  Up/Down choose  \u2022  Enter or Tab inserts  \u2022  Esc "
            u"closes");
  EXPECT_EQ(InsertedStatus(4), u"Inserted G04 \u2014 Dwell");
}

bool Is(const platform::Rect& place, int left, int top, int right, int bottom) {
  return place.left == left && place.top == top && place.right == right && place.bottom == bottom;
}

TEST(Completion, LiesBelowTheCaretWithARowOf24) {
  const platform::Rect editor{100, 100, 900, 700};
  EXPECT_TRUE(Is(CompletionPlace(editor, {140, 200}, 20, 1), 140, 220, 534, 248));
  EXPECT_TRUE(Is(CompletionPlace(editor, {140, 200}, 20, 128), 140, 220, 534, 416));
}

TEST(Completion, LiesAboveWhereFewerThan76PixelsAreFreeBelow) {
  const platform::Rect editor{100, 100, 900, 700};
  // 700 - 624 is 76: enough, and the list takes no more.
  EXPECT_TRUE(Is(CompletionPlace(editor, {140, 604}, 20, 128), 140, 624, 534, 700));
  EXPECT_TRUE(Is(CompletionPlace(editor, {140, 605}, 20, 128), 140, 409, 534, 605));
}

TEST(Completion, StaysInsideTheEditor) {
  const platform::Rect editor{100, 100, 900, 700};
  EXPECT_TRUE(Is(CompletionPlace(editor, {880, 200}, 20, 1), 506, 220, 900, 248));
  const platform::Rect narrow{100, 100, 400, 160};
  EXPECT_TRUE(Is(CompletionPlace(narrow, {120, 104}, 20, 9), 100, 124, 400, 160));
}

}  // namespace
}  // namespace morva
