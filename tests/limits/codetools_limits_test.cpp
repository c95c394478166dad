// The limits of the code tools: lines and cells of a compare, rules and what they may write.
#include <gtest/gtest.h>

#include <string>

#include "app/limits.h"
#include "codetools/compare.h"
#include "codetools/find_rules.h"

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

}  // namespace
}  // namespace morva
