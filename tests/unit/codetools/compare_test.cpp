#include "codetools/compare.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace morva {
namespace {

using Rows = std::vector<CompareRow>;

Rows Result() { return Rows(compareResult.rows, compareResult.rows + compareResult.rowCount); }

void ExpectRows(const Rows& got, const Rows& wanted) {
  ASSERT_EQ(got.size(), wanted.size());
  for (std::size_t i = 0; i < got.size(); ++i) {
    EXPECT_EQ(got[i].left, wanted[i].left) << i;
    EXPECT_EQ(got[i].right, wanted[i].right) << i;
    EXPECT_EQ(got[i].type, wanted[i].type) << i;
  }
}

Rows Compared(std::u16string_view left, std::u16string_view right, CompareOptions options = {}) {
  CompareTexts(left, right, options);
  return Result();
}

TEST(Compare, FindsNothingBetweenEqualPrograms) {
  CompareOptions options;
  const std::u16string text = u"G0 X0\r\nM30\r\n";
  CompareTexts(text, text, options);
  EXPECT_EQ(CompareSummary(), u"READ-ONLY REVIEW   Added + 0   Removed - 0   Modified ~ 0");
  options.changesOnly = true;
  EXPECT_EQ(ComparePaneText(text, true, options).View(), u"");
  EXPECT_EQ(ComparePaneText(text, false, options).View(), u"");
}

TEST(Compare, AnEmptyLeftSideGivesAddedRows) {
  ExpectRows(Compared(u"", u"A\nB\nC\n"), {{-1, 0, 2}, {-1, 1, 2}, {-1, 2, 2}});
}

TEST(Compare, AReplacedLineIsOneModifiedRow) {
  ExpectRows(Compared(u"A\nB\nC", u"A\nX\nC"), {{0, 0, 0}, {1, 1, 3}, {2, 2, 0}});
}

TEST(Compare, TwoLinesForOneGiveAModifiedAndARemovedRow) {
  ExpectRows(Compared(u"A\nB\nC\nD", u"A\nX\nD"), {{0, 0, 0}, {1, 1, 3}, {2, -1, 1}, {3, 2, 0}});
}

TEST(Compare, HidesMarkerLinesButKeepsTheNumbersOfTheFile) {
  const std::u16string left = u"(MORVA TEXT 1)\r\nG0\r\n(MORVA END 1)\r\nG1\r\n";
  const std::u16string right = u"(MORVA TEXT 7)\r\nG0\r\n(MORVA END 7)\r\nG2\r\n";
  CompareOptions options;
  ExpectRows(Compared(left, right, options), {{0, 0, 0}, {1, 1, 3}});
  EXPECT_EQ(ComparePaneText(left, true, options).View(), u"2    G0\r\n4 ~  G1\r\n");
  EXPECT_EQ(ComparePaneText(right, false, options).View(), u"2    G0\r\n4 ~  G2\r\n");
  options.showTags = true;
  CompareTexts(left, right, options);
  EXPECT_EQ(CountCompareRows().modified, 3);
}

TEST(Compare, HidesMarkersInTheFirstColumnAndExactCaseOnly) {
  EXPECT_EQ(Compared(u" (MORVA END 1)\n(morva END 1)\n(MORVAX\n(MORVA END 1)", u"").size(), 3u);
}

TEST(Compare, IgnoresBlanksEvenInsideWords) {
  CompareOptions options;
  options.ignoreSpaces = true;
  ExpectRows(Compared(u"G1 X1\n\t G 2", u"G1X1\nG2 ", options), {{0, 0, 0}, {1, 1, 0}});
  EXPECT_EQ(Compared(u"G1 X1", u"G1X1").at(0).type, kRowModified);
}

TEST(Compare, TakesEveryLineEndAndNoFinalEmptyLine) {
  EXPECT_EQ(Compared(u"A\rB\nC\r\nD\n\rE\r\n", u"").size(), 6u);
}

TEST(Compare, AlignsThePanesRowByRow) {
  const CompareOptions options;
  CompareTexts(u"A\nB\n", u"B\n", options);
  EXPECT_EQ(ComparePaneText(u"A\nB\n", true, options).View(), u"1 -  A\r\n2    B\r\n");
  EXPECT_EQ(ComparePaneText(u"B\n", false, options).View(), u"\r\n1    B\r\n");
}

std::u16string Numbered(int lines, int from = 0) {
  std::u16string text;
  for (int i = 0; i < lines; ++i) {
    for (const char c : std::to_string(from + i)) text += static_cast<char16_t>(c);
    text += u"\n";
  }
  return text;
}

TEST(Compare, StaysExactAtFourMillionCellsAndSaysWhenItDoesNot) {
  CompareTexts(Numbered(1999), Numbered(1999, 1), {});
  EXPECT_FALSE(compareResult.largeFile);
  EXPECT_EQ(CompareSummary(), u"READ-ONLY REVIEW   Added + 1   Removed - 1   Modified ~ 0");
  CompareTexts(Numbered(2000), Numbered(2000, 1), {});
  EXPECT_TRUE(compareResult.largeFile);
  EXPECT_EQ(CompareSummary(),
            u"READ-ONLY REVIEW   Added + 1   Removed - 1   Modified ~ 0   | large-file alignment "
            u"(64-line lookahead)");
}

TEST(Compare, ReportsTheLimitOnlyWhenTextIsLeftBehindIt) {
  CompareTexts(Numbered(32768), u"", {});
  EXPECT_FALSE(compareResult.truncated);
  EXPECT_EQ(compareResult.left.count, 32768);
  CompareTexts(Numbered(40000), u"", {});
  EXPECT_TRUE(compareResult.truncated);
  EXPECT_EQ(compareResult.left.count, 32768);
  EXPECT_NE(CompareSummary().find(u"   | LIMIT: first 32768 lines only"), std::u16string::npos);
}

// Rows in which the k-th left line of a run of changes stands beside the k-th right one.
struct Grouped {
  Rows rows;
  std::vector<std::int32_t> lefts;
  std::vector<std::int32_t> rights;

  void Flush() {
    for (std::size_t k = 0; k < std::max(lefts.size(), rights.size()); ++k) {
      CompareRow row;
      row.left = k < lefts.size() ? lefts[k] : -1;
      row.right = k < rights.size() ? rights[k] : -1;
      row.type = row.left >= 0 && row.right >= 0 ? kRowModified
                 : row.left >= 0                 ? kRowRemoved
                                                 : kRowAdded;
      rows.push_back(row);
    }
    lefts.clear();
    rights.clear();
  }
  void Same(std::size_t left, std::size_t right) {
    Flush();
    rows.push_back({static_cast<std::int32_t>(left), static_cast<std::int32_t>(right), kRowSame});
  }
};

// The definition itself: the full table of longest common subsequences, walked with its tie
// rule, then regrouped. Slow and plain, written apart from the bit rows.
Rows TableRows(const std::vector<int>& left, const std::vector<int>& right) {
  const std::size_t n = left.size();
  const std::size_t m = right.size();
  std::vector<std::vector<int>> table(n + 1, std::vector<int>(m + 1, 0));
  for (std::size_t i = n; i-- > 0;) {
    for (std::size_t j = m; j-- > 0;) {
      table[i][j] = left[i] == right[j] ? table[i + 1][j + 1] + 1
                                        : std::max(table[i + 1][j], table[i][j + 1]);
    }
  }
  Grouped grouped;
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < n || j < m) {
    if (i < n && j < m && left[i] == right[j]) {
      grouped.Same(i++, j++);
    } else if (i == n || (j < m && table[i + 1][j] < table[i][j + 1])) {
      grouped.rights.push_back(static_cast<std::int32_t>(j++));
    } else {
      grouped.lefts.push_back(static_cast<std::int32_t>(i++));
    }
  }
  grouped.Flush();
  return grouped.rows;
}

// The alignment by lookahead, told with whole numbers for the lines.
Rows LookaheadRows(const std::vector<int>& left, const std::vector<int>& right) {
  constexpr std::size_t kAhead = 64;
  const std::size_t n = left.size();
  const std::size_t m = right.size();
  Grouped grouped;
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < n && j < m) {
    if (left[i] == right[j]) {
      grouped.Same(i++, j++);
      continue;
    }
    std::size_t k = 1;
    while (k <= kAhead && !(i + k < n && left[i + k] == right[j]) &&
           !(j + k < m && left[i] == right[j + k])) {
      ++k;
    }
    const bool none = k > kAhead;
    const bool leftAhead = !none && i + k < n && left[i + k] == right[j];
    if (none || leftAhead) grouped.lefts.push_back(static_cast<std::int32_t>(i++));
    if (none || !leftAhead) grouped.rights.push_back(static_cast<std::int32_t>(j++));
  }
  for (; i < n; ++i) grouped.lefts.push_back(static_cast<std::int32_t>(i));
  for (; j < m; ++j) grouped.rights.push_back(static_cast<std::int32_t>(j));
  grouped.Flush();
  return grouped.rows;
}

std::u16string TextOfLines(const std::vector<int>& lines) {
  std::u16string text;
  for (const int line : lines) {
    text += static_cast<char16_t>(u'A' + line);
    text += u"\r\n";
  }
  return text;
}

TEST(Compare, AgreesWithTheFullTableOnRandomPrograms) {
  std::mt19937 random(7);
  for (int run = 0; run < 400; ++run) {
    const unsigned letters = 1 + static_cast<unsigned>(random() % 12);
    std::vector<int> left(random() % 150);
    std::vector<int> right(random() % 150);
    for (int& line : left) line = static_cast<int>(random() % letters);
    for (int& line : right) line = static_cast<int>(random() % letters);
    ExpectRows(Compared(TextOfLines(left), TextOfLines(right)), TableRows(left, right));
  }
}

// Lines of two different lengths, with blanks at places that differ by side where asked.
std::u16string LongText(const std::vector<int>& lines, const std::u16string& blanks) {
  std::u16string text;
  for (const int line : lines) {
    text += u"G01" + blanks + u"X";
    for (int rest = line + 1000; rest > 0; rest /= 7)
      text += static_cast<char16_t>(u'0' + rest % 7);
    text += blanks + u"F20.\n";
  }
  return text;
}

// Some lines of `lines` bear another number, are left out or stand twice.
std::vector<int> Edited(const std::vector<int>& lines, unsigned perMille, int numbers,
                        std::mt19937& random) {
  std::vector<int> edited;
  for (const int line : lines) {
    const bool hit = random() % 1000 < perMille;
    const unsigned how = hit ? static_cast<unsigned>(random() % 3) : 0;
    if (how == 1) continue;
    edited.push_back(hit && how == 0 ? static_cast<int>(random() % static_cast<unsigned>(numbers))
                                     : line);
    if (how == 2) edited.push_back(line);
  }
  return edited;
}

TEST(Compare, AgreesWithThePlainLookaheadOnRandomPrograms) {
  std::mt19937 random(11);
  for (const unsigned perMille : {0u, 1u, 20u, 200u, 1000u}) {
    for (const int numbers : {2, 40, 9000}) {
      for (const bool ignoreSpaces : {false, true}) {
        std::vector<int> left(4000);
        for (int& line : left) line = static_cast<int>(random() % static_cast<unsigned>(numbers));
        const std::vector<int> right = Edited(left, perMille, numbers, random);
        CompareOptions options;
        options.ignoreSpaces = ignoreSpaces;
        const std::u16string blanks = ignoreSpaces ? u" \t" : u"";
        const Rows rows = Compared(LongText(left, u""), LongText(right, blanks), options);
        ASSERT_TRUE(compareResult.largeFile);
        ExpectRows(rows, LookaheadRows(left, right));
      }
    }
  }
}

TEST(Compare, LooksAheadBeyondTheCells) {
  // 2,100 lines each; the right one lacks lines 10 and 11 and has one line more behind 20.
  std::u16string left = Numbered(2100);
  std::u16string right = Numbered(10) + Numbered(9, 12) + u"new\n" + Numbered(2079, 21);
  CompareTexts(left, right, {});
  ASSERT_TRUE(compareResult.largeFile);
  const CompareCounts counts = CountCompareRows();
  EXPECT_EQ(counts.removed, 2);
  EXPECT_EQ(counts.added, 1);
  EXPECT_EQ(counts.modified, 0);
}

TEST(Compare, GivesUpAfterSixtyFourLinesAhead) {
  // 65 lines removed at the front: equal lines are 65 ahead, one further than it looks.
  CompareTexts(Numbered(65, 90000) + Numbered(2100), Numbered(2100), {});
  ASSERT_TRUE(compareResult.largeFile);
  EXPECT_GT(CountCompareRows().modified, 0);
  CompareTexts(Numbered(64, 90000) + Numbered(2100), Numbered(2100), {});
  EXPECT_EQ(CountCompareRows().modified, 0);
  EXPECT_EQ(CountCompareRows().removed, 64);
}

}  // namespace
}  // namespace morva
