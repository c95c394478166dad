// The limits of the code tools: lines and cells of a compare, rules and what they may write,
// questions, completions, colours and what the words view keeps.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/limits.h"
#include "codetools/colours.h"
#include "codetools/compare.h"
#include "codetools/completion.h"
#include "codetools/find_rules.h"
#include "codetools/line_changes.h"
#include "support/workbench.h"

namespace morva {
namespace {

std::u16string Lines(int count, const std::u16string& line = u"G0") {
  std::u16string text;
  for (int i = 0; i < count; ++i) text += line + u"\r\n";
  return text;
}

bool SummaryHas(std::u16string_view words) {
  return CompareSummary().find(words) != std::u16string::npos;
}

TEST(CodeToolLimits, LinesOfACompare) {
  static_assert(kMaxCompareLines == 32768);
  constexpr std::u16string_view kTold = u"   | LIMIT: first 32768 lines only";
  const std::u16string few = Lines(3);
  for (const int more : {0, 1, 0}) {
    CompareTexts(Lines(kMaxCompareLines + more), few, CompareOptions());
    EXPECT_EQ(compareResult.left.count, 32768);
    EXPECT_EQ(SummaryHas(kTold), more == 1);
    CompareTexts(few, Lines(kMaxCompareLines + more), CompareOptions());
    EXPECT_EQ(compareResult.right.count, 32768);
    EXPECT_EQ(SummaryHas(kTold), more == 1);
  }
}

// A line takes at most one row of its own, so that the rows never run out.
TEST(CodeToolLimits, RowsOfACompare) {
  static_assert(kMaxCompareRows == 2 * kMaxCompareLines);
  CompareTexts(Lines(40000, u"G0"), Lines(40000, u"G1"), CompareOptions());
  EXPECT_LE(compareResult.rowCount, kMaxCompareRows);
  int left = 0;
  int right = 0;
  for (int i = 0; i < compareResult.rowCount; ++i) {
    left += compareResult.rows[i].left >= 0 ? 1 : 0;
    right += compareResult.rows[i].right >= 0 ? 1 : 0;
  }
  EXPECT_EQ(left, kMaxCompareLines);
  EXPECT_EQ(right, kMaxCompareLines);
}

// 1999 lines on both sides are 2000 times 2000 cells.
TEST(CodeToolLimits, CellsOfAnExactCompare) {
  static_assert(kMaxCompareCells == 4000000);
  constexpr std::u16string_view kTold = u"   | large-file alignment (64-line lookahead)";
  for (const int more : {0, 1, 0}) {
    CompareTexts(Lines(1999), Lines(1999 + more), CompareOptions());
    EXPECT_EQ(SummaryHas(kTold), more == 1);
  }
}

// 255 characters against as many are 256 times 256 cells.
TEST(CodeToolLimits, CellsOfWhatChangedInsideALine) {
  static_assert(kMaxLineCells == 65536);
  for (const std::size_t more : {0u, 1u, 0u}) {
    const std::size_t half = 127 + more;
    const std::u16string line = u"A" + std::u16string(half, u'X') + std::u16string(127, u'Y');
    const std::u16string other =
        std::u16string(half, u'X') + u"B" + std::u16string(126, u'Y') + u"C";
    const std::vector<bool> changed = ChangedUnits(line, other, false);
    // The letters in the middle are the same on both sides; a longer stretch is marked whole.
    EXPECT_EQ(changed[5], more == 1);
    EXPECT_TRUE(changed[0]);
  }
}

TEST(CodeToolLimits, RulesOfTheQueue) {
  static_assert(kMaxRules == 24);
  ClearRules();
  for (int i = 0; i < kMaxRules; ++i) EXPECT_TRUE(AddRule(u"A", u"B"));
  EXPECT_FALSE(AddRule(u"A", u"B"));
  EXPECT_EQ(ruleQueue.count, 24);
  EXPECT_TRUE(RemoveRule(7));
  EXPECT_TRUE(AddRule(u"C", u"D"));
  EXPECT_FALSE(AddRule(u"A", u"B"));
  EXPECT_EQ(std::u16string(ruleQueue.rules[23].find), u"C");
  ClearRules();
}

TEST(CodeToolLimits, TextsOfARule) {
  static_assert(kFindUnits == 256);
  for (const std::size_t length : {254u, 255u, 256u, 400u}) {
    ClearRules();
    const std::u16string text(length, u'X');
    ASSERT_TRUE(AddRule(text, text));
    EXPECT_EQ(std::u16string(ruleQueue.rules[0].find), text.substr(0, 255));
    EXPECT_EQ(std::u16string(ruleQueue.rules[0].replaceWith), text.substr(0, 255));
  }
  ClearRules();
}

TEST(CodeToolLimits, WhatRulesMayWrite) {
  static_assert(kMaxRuleOutput == 2000000);
  ClearRules();
  ASSERT_TRUE(AddRule(u"A", u"BB"));
  std::u16string text(999999, u'A');  // 1,999,998 units
  for (const bool one : {true, false, true}) {
    // One unit more as it stands, then a second that reaches the limit.
    const RuleRun run = RunRules(text + (one ? u"." : u".."), ruleQueue.rules, 1, true, false);
    EXPECT_EQ(run.overLimit, !one);
    EXPECT_TRUE(!one || run.text.length == 1999999u);
  }
  ClearRules();
}

// What DO ALL writes has to fit in a file that can be opened again.
TEST(CodeToolLimits, WhatDoAllMayWrite) {
  static_assert(kMaxChangedUnits == kMaxReadBytes);
  std::u16string text(131072, u'A');  // 256 times this is the limit
  const std::u16string each(255, u'B');
  for (const bool one : {true, false, true}) {
    // The further units take it to the limit, or to one more.
    const std::u16string rest(131072 + (one ? 0 : 1), u'.');
    const OwnedText changed = ReplaceOccurrences(text + rest, u"A", each);
    EXPECT_EQ(changed.units != nullptr, one);
    EXPECT_EQ(changed.length, one ? 33554432u : 0u);
  }
}

// Every place stands behind a letter that becomes two. The ninth is left where it was.
TEST(CodeToolLimits, PlacesThatAChangeKeeps) {
  static_assert(kMaxFollowedPlaces == 8);
  for (const int count : {8, 9, 8}) {
    std::size_t at[9] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    ReplaceOccurrences(u"AAAAAAAAAA", u"A", u"BB", {at, count});
    for (std::size_t i = 0; i < 8; ++i) EXPECT_EQ(at[i], 2 * (i + 1));
    EXPECT_EQ(at[8], 9u);
  }
}

TEST(CodeToolLimits, RowsOfTheCompletionList) {
  static_assert(kMaxCompletions == 128);
  const CompletionRows found = FindCompletions(u"X1. ", 4, false, true);
  EXPECT_EQ(found.count, 128);
  EXPECT_EQ(found.rows[127], 127);
  // The second of the rows behind them, M24, as soon as it is asked for by its letter.
  EXPECT_EQ(FindCompletions(u"M", 1, false, false).count, 87);
}

TEST(CodeToolLimits, ColouredUnitsOfALine) {
  static_assert(kMaxColouredLine == 8190 && kMaxLineRuns == kMaxColouredLine);
  const std::u16string line(static_cast<std::size_t>(kMaxColouredLine), u'%');
  std::vector<platform::ColourRun> runs(static_cast<std::size_t>(kMaxLineRuns));
  bool inComment = false;
  EXPECT_EQ(ColourLine(line, inComment, runs.data(), kMaxLineRuns), kMaxColouredLine);
}

class CodeToolsAtWork : public support::Workbench {
 protected:
  static int RunsOfLine(int line) {
    platform::ColourRun runs[8];
    return platform::LineRuns(kIdEditor, line, runs, 8);
  }
  // A program of this many units whose first and last lines hold one word.
  static void SetProgram(std::size_t units) {
    std::u16string text = u"G01\r\n";
    while (text.size() + 100 < units)
      text += u"-----------------------------------------------\r\n";
    text += std::u16string(units - text.size() - 5, u'-') + u"\r\nX1.";
    ASSERT_EQ(text.size(), units);
    platform::SetEditorText(kIdEditor, text);
    ColourCodeEditor();
  }
};

TEST_F(CodeToolsAtWork, ColouredUnitsOfAProgram) {
  static_assert(kMaxColouredUnits == 250000);
  for (const std::size_t units : {250000u, 250001u, 250000u}) {
    SetProgram(units);
    const int wanted = units == 250000u ? 1 : 0;
    EXPECT_EQ(RunsOfLine(0), wanted);
    EXPECT_EQ(RunsOfLine(platform::EditorLineCount(kIdEditor) - 1), wanted);
  }
}

TEST_F(CodeToolsAtWork, ColouredUnitsOfALineOfCodeAndOfWords) {
  static_assert(kMaxColouredLine == 8190 && kMaxWordsLine == 2046);
  // A word that begins at unit 8,188 ends in sight, one at 8,190 does not stand there.
  const std::u16string dashes(8188, u'-');
  platform::SetEditorText(kIdEditor, dashes + u"X1Y2\r\nZ3");
  ColourCodeEditor();
  EXPECT_EQ(RunsOfLine(0), 1);
  EXPECT_EQ(RunsOfLine(1), 1);
  headless::Click(kIdCommandWords);
  platform::ColourRun runs[4];
  for (const int length : {2045, 2046, 2047, 2100}) {
    platform::SetEditorText(kIdWordsEditor, std::u16string(static_cast<std::size_t>(length), u'-'));
    ColourWordsView();
    ASSERT_EQ(platform::LineRuns(kIdWordsEditor, 0, runs, 4), 1);
    EXPECT_EQ(runs[0].length, std::min(length, 2046));
  }
}

// Two programs with their words together: "g1(...)" has 4 units beside its comment and 29 in words,
// "N1 g1(...)" has 7 and 40.
TEST_F(CodeToolsAtWork, UnitsOfEarlierWords) {
  static_assert(kMaxEarlierWordsUnits == 16777216);
  for (const bool within : {true, false}) {
    const std::u16string line =
        u"g1(" + std::u16string((16777216 - 80) / 4 + (within ? 0 : 1), u'-') + u")";
    platform::SetEditorText(kIdEditor, line);
    headless::Click(kIdCommandWords);
    for (const char16_t* number : {u"N1 ", u"N2 "}) {
      platform::ReplaceRange(kIdEditor, {0, platform::EditorLength(kIdEditor)}, number + line);
    }
    platform::UndoEditor(kIdWordsEditor);
    EXPECT_TRUE(Text() == u"N1 " + line);
    platform::UndoEditor(kIdWordsEditor);
    EXPECT_EQ(Text().substr(0, 4), within ? u"g1(-" : u"G01(");
    headless::Click(kIdCommandWords);
  }
}

TEST_F(CodeToolsAtWork, HitsThatAreMarked) {
  static_assert(kMaxFindMarks == 4096 && kMaxMarkedLine == 8190);
  headless::Click(kIdFind);
  headless::TypeInto(kIdFindText, u"A");
  const auto marked = [](int lines, std::size_t units) {
    std::u16string text;
    for (int i = 0; i < lines; ++i) text += std::u16string(units, u'A') + u"\r\n";
    platform::SetEditorText(kIdEditor, text);
    return headless::EditorMarks(kIdEditor).size();
  };
  EXPECT_EQ(marked(2, 2048), 4096u);
  EXPECT_EQ(marked(2, 2049), 4096u);
  EXPECT_EQ(marked(2, 2047), 4094u);
  // The last unit that is looked at, and the one behind it.
  const auto at = [](std::size_t place) {
    platform::SetEditorText(kIdEditor, std::u16string(place, u'-') + u"A--");
    return headless::EditorMarks(kIdEditor).size();
  };
  EXPECT_EQ(at(8189), 1u);
  EXPECT_EQ(at(8190), 0u);
}

TEST_F(CodeToolsAtWork, QuestionsOfOneChangeAll) {
  static_assert(kMaxPrompts == 10000);
  headless::EditorSetAll(kIdEditor, std::u16string(10001, u'A') + u"\r\n");
  headless::Click(kIdFind);
  headless::TypeInto(kIdFindText, u"A");
  for (const int asked : {10000, 9999}) {
    headless::TakeBoxes();
    for (int i = 0; i < asked; ++i) headless::QueueAnswer(platform::BoxAnswer::No);
    headless::Click(kIdPromptEach);
    // The most cautious answer ends the second round.
    EXPECT_EQ(headless::TakeBoxes().size(), 10000u);
    EXPECT_TRUE(
        OutputHas(u"Change All: 0 replacement(s) accepted from 10000 occurrence(s) reviewed."));
  }
}

}  // namespace
}  // namespace morva
