// The code behind the words view: what nobody touched there stays to the character, whatever is
// put in, taken out, undone or moved beside it.

#include "codetools/words_pair.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "codetools/command_words.h"
#include "codetools/line_match.h"
#include "support/program_maker.h"
#include "support/whole_words.h"

namespace morva {
namespace {

using reference::Dice;
using View = std::u16string_view;

WordsPair PairOf(View code) {
  WordsPair pair;
  EXPECT_TRUE(support::MakePair(code, pair));
  return pair;
}

// What an edit of the words does, as the editor would tell it: the caret behind what was put in.
CodeChange Edit(WordsPair& pair, std::size_t from, std::size_t to, View text) {
  std::u16string words = Joined(pair.words);
  words.replace(from, to - from, text);
  return support::TakeWhole(pair, words, from + text.size());
}
// The first `before` in the words becomes `after`.
void Change(WordsPair& pair, View before, View after) {
  const std::size_t at = Joined(pair.words).find(before);
  ASSERT_NE(at, std::u16string::npos);
  Edit(pair, at, at + before.size(), after);
}

TEST(WordsPair, TextBehindASemicolonAndInAPrintCommandStaysAsItIs) {
  for (const char16_t* code : {u"; G1 here", u";IF N10", u"DPRNT[X#100[44]*G1*N5]", u"dprnt [ G1 ]",
                               u"X5;(G1\r", u"DPRNT[G1[1]M6", u"X1;G1)\n(;G1)"}) {
    EXPECT_EQ(Joined(PairOf(code).words), code);
  }
  EXPECT_EQ(Joined(PairOf(u"G1 X1 ; G1 X1\r\nM8").words),
            u"Linear Interpolation Motion X1 ; G1 X1\r\nCoolant On");
  EXPECT_EQ(Joined(PairOf(u"N10DPRNT[#1]G4").words), u"Sequence 10DPRNT[#1]Dwell");
  // No such command: a longer word, and one without a bracket.
  EXPECT_EQ(Joined(PairOf(u"XDPRNT[G4]").words), u"XDPRNT[Dwell]");
  EXPECT_EQ(Joined(PairOf(u"DPRNT G4").words), u"DPRNT Dwell");
  // Its text opens no comment, and neither does the one behind a semicolon.
  EXPECT_EQ(Joined(PairOf(u"DPRNT[(]G4").words), u"DPRNT[(]Dwell");
  EXPECT_EQ(Joined(PairOf(u";(\r\nG4").words), u";(\r\nDwell");
  EXPECT_EQ(Joined(PairOf(u"(;)G4").words), u"(;)Dwell");
}

TEST(WordsPair, AChangedLineKeepsItsTextBehindASemicolonAndInAPrintCommand) {
  WordsPair pair = PairOf(u"M8 ; Dwell\r\nDPRNT[Dwell]M8\r\n");
  Change(pair, u"On ;", u"On X1 ;");
  Change(pair, u"]Coolant On", u"] Coolant On");
  EXPECT_EQ(Joined(pair.code), u"M08 X1 ; Dwell\r\nDPRNT[Dwell] M08\r\n");
}

TEST(WordsPair, OnlyTheChangedLineIsConverted) {
  WordsPair pair = PairOf(u"G1X1\r\nm8\r\nG2 I1\r\n");
  Change(pair, u"X1", u"X15");
  EXPECT_EQ(Joined(pair.code), u"G01 X15\r\nm8\r\nG2 I1\r\n");
}

TEST(WordsPair, AChangeTellsWholeLinesOfTheCode) {
  WordsPair pair = PairOf(u"%\r\nG1X1\r\nm8\r\n");
  const std::size_t at = Joined(pair.words).find(u"X1");
  const CodeChange change = Edit(pair, at, at + 2, u"X2");
  EXPECT_EQ(change.line, 1u);
  EXPECT_EQ(change.before, u"G1X1\r\n");
  EXPECT_EQ(change.after, u"G01 X2\r\n");
}

TEST(WordsPair, ALineThatComesBackToItsWordsComesBackToItsCode) {
  WordsPair pair = PairOf(u"G1\r\nG1X1\r\nG01\r\n");
  const std::u16string words = Joined(pair.words);
  const std::u16string code = Joined(pair.code);
  // A digit behind each line, in any order, taken out again in another one.
  Change(pair, u"X1", u"X12");
  Edit(pair, 27, 27, u"5");
  Edit(pair, Joined(pair.words).size() - 2, Joined(pair.words).size() - 2, u"5");
  EXPECT_EQ(Joined(pair.code),
            u"Linear Interpolation Motion5\r\nG01 X12\r\nLinear Interpolation Motion5\r\n");
  Change(pair, u"X12", u"X1");
  Edit(pair, 27, 28, u"");
  EXPECT_EQ(Joined(pair.code), u"G1\r\nG1X1\r\nLinear Interpolation Motion5\r\n");
  Edit(pair, Joined(pair.words).size() - 3, Joined(pair.words).size() - 2, u"");
  EXPECT_EQ(Joined(pair.words), words);
  EXPECT_EQ(Joined(pair.code), code);
  EXPECT_TRUE(pair.replaced.empty());
}

// Three lines with the same words and other code each.
TEST(WordsPair, TheCaretTellsWhichOfEqualLinesWent) {
  const std::size_t line = std::u16string(u"Linear Interpolation Motion\r\n").size();
  const char16_t* left[] = {u"G01\r\ng1\r\n", u"G1\r\ng1\r\n", u"G1\r\nG01\r\n"};
  for (std::size_t i = 0; i < 3; ++i) {
    WordsPair pair = PairOf(u"G1\r\nG01\r\ng1\r\n");
    Edit(pair, i * line, (i + 1) * line, u"");
    EXPECT_EQ(Joined(pair.code), left[i]);
    // And back again, as Undo puts it in.
    Edit(pair, i * line, i * line, u"Linear Interpolation Motion\r\n");
    EXPECT_EQ(Joined(pair.code), u"G1\r\nG01\r\ng1\r\n");
  }
}

TEST(WordsPair, EnterInFrontOfALineAndBehindItLeavesItAsItIs) {
  WordsPair pair = PairOf(u"M8\r\ng1x1\r\nM9");
  const std::size_t at = Joined(pair.words).find(u"Linear");
  Edit(pair, at, at, u"\r\n");
  EXPECT_EQ(Joined(pair.code), u"M8\r\n\r\ng1x1\r\nM9");
  const std::size_t end = Joined(pair.words).find(u"x1") + 2;
  Edit(pair, end, end, u"\r\n");
  EXPECT_EQ(Joined(pair.code), u"M8\r\n\r\ng1x1\r\n\r\nM9");
  Edit(pair, Joined(pair.words).size(), Joined(pair.words).size(), u"\r\n");
  EXPECT_EQ(Joined(pair.code), u"M8\r\n\r\ng1x1\r\n\r\nM9\r\n");
}

TEST(WordsPair, CutLinesKeepTheirCodeWhereTheyArePutIn) {
  WordsPair pair = PairOf(u"G1X1\r\nG1X2\r\nM8\r\nM9\r\n");
  const std::u16string words = Joined(pair.words);
  const std::size_t two = Joined(pair.words).find(u"Coolant On");
  const std::u16string cut = words.substr(0, two);
  Edit(pair, 0, two, u"");
  EXPECT_EQ(Joined(pair.code), u"M8\r\nM9\r\n");
  Edit(pair, Joined(pair.words).size(), Joined(pair.words).size(), cut);
  EXPECT_EQ(Joined(pair.code), u"M8\r\nM9\r\nG1X1\r\nG1X2\r\n");
  // In a comment the same code would read otherwise.
  WordsPair other = PairOf(u"G1X1\r\n(\r\n)\r\n");
  const std::size_t one = Joined(other.words).find(u"(");
  const std::u16string line = Joined(other.words).substr(0, one);
  Edit(other, 0, one, u"");
  Edit(other, 3, 3, line);
  EXPECT_EQ(Joined(other.code), u"(\r\nLinear Interpolation Motion X1\r\n)\r\n");
}

TEST(WordsPair, AllCutAndPutInAgainIsWhatItWas) {
  const std::u16string code = u"G1\r\nG01\r\ng1\r\n(a\r\nG1)\r\n\r\nM8;x\r\n%";
  WordsPair pair = PairOf(code);
  const std::u16string words = Joined(pair.words);
  Edit(pair, 0, words.size(), u"");
  EXPECT_EQ(Joined(pair.code), u"");
  Edit(pair, 0, 0, words);
  EXPECT_EQ(Joined(pair.code), code);
}

TEST(WordsPair, ALineTypedInACommentIsText) {
  WordsPair pair = PairOf(u"G1\r\n(open\r\nclosed)\r\nM8\r\n");
  Change(pair, u"closed", u"Dwell");
  EXPECT_EQ(Joined(pair.code), u"G1\r\n(open\r\nDwell)\r\nM8\r\n");
  Change(pair, u"(open", u"open");
  EXPECT_EQ(Joined(pair.code), u"G1\r\nopen\r\nDwell)\r\nM8\r\n");
  Change(pair, u"Dwell)", u"Dwell X1)");
  EXPECT_EQ(Joined(pair.code), u"G1\r\nopen\r\nG04 X1)\r\nM8\r\n");
}

// A bracket that opens a comment in front of it changes no line that nobody touched.
TEST(WordsPair, AnOpenedCommentLeavesTheLinesBehindItAlone) {
  WordsPair pair = PairOf(u"G1\r\nG1X1\r\nm8\r\n");
  Edit(pair, 0, 0, u"(");
  EXPECT_EQ(Joined(pair.code), u"(Linear Interpolation Motion\r\nG1X1\r\nm8\r\n");
}

std::u16string Noise(Dice& dice) {
  static constexpr const char16_t* kPieces[] = {u"G1X2",
                                                u"g1",
                                                u"G01 ",
                                                u"M8",
                                                u"m6",
                                                u"T1M6",
                                                u"N10",
                                                u"#100=",
                                                u"IF[#1EQ2]",
                                                u"GOTO100",
                                                u"(G1 ",
                                                u")",
                                                u"; M8 G1",
                                                u"DPRNT[G1*#1[44]]",
                                                u"DPRNT[",
                                                u"]",
                                                u"X123456789012345.5",
                                                u"G00000000000000000000000000000000000000001",
                                                u"(MORVA TEXT 1)",
                                                u"(MORVA END 1)",
                                                u"(MORVA DISABLED 3)",
                                                u"Dwell",
                                                u"Sequence 5",
                                                u"\u00D7",
                                                u"\xD83D\xDE00",
                                                u"\t",
                                                u" ",
                                                u"Macro Subprogram Call (option)",
                                                u"Exact Stop MODE",
                                                u"%",
                                                u"/"};
  std::u16string text;
  for (std::uint32_t i = dice.Roll(4); i > 0; --i) text += kPieces[dice.Roll(std::size(kPieces))];
  return text;
}

std::u16string MixedProgram(std::uint32_t seed) {
  static constexpr const char16_t* kEnds[] = {u"\r\n", u"\r\n", u"\n", u"\r", u"\n\r"};
  Dice dice{seed * 747796405u + 1u};
  std::u16string text;
  for (std::uint32_t parts = dice.Roll(8); parts > 0; --parts) {
    text += reference::RandomProgram(seed * 31 + parts, 4);
    for (std::uint32_t lines = dice.Roll(5); lines > 0; --lines) {
      text += Noise(dice);
      text += kEnds[dice.Roll(std::size(kEnds))];
    }
  }
  return text;
}

// Lines with their line ends, the last one without; cut by a way of its own.
std::vector<std::u16string> SplitLines(View text) {
  std::vector<std::u16string> lines(1);
  for (std::size_t i = 0; i < text.size(); ++i) {
    lines.back() += text[i];
    const bool pair = text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n';
    if ((text[i] == u'\r' && !pair) || text[i] == u'\n') lines.emplace_back();
  }
  return lines;
}

TEST(WordsPair, LookingAtTheWordsOfAnyProgramChangesNothing) {
  for (std::uint32_t seed = 0; seed < 600; ++seed) {
    const std::u16string code = MixedProgram(seed);
    WordsPair pair = PairOf(code);
    ASSERT_EQ(Joined(pair.code), code) << seed;
    ASSERT_EQ(SplitLines(Joined(pair.words)).size(), SplitLines(code).size()) << seed;
    const std::u16string words = Joined(pair.words);
    EXPECT_TRUE(support::TakeWhole(pair, words, words.size() / 2).after.empty());
    // All of them written anew is no change either.
    support::TakeWhole(pair, u"", 0);
    support::TakeWhole(pair, words, words.size());
    ASSERT_EQ(Joined(pair.code), code) << seed;
  }
}

TEST(WordsPair, OneEditLeavesEveryOtherLineAsItWas) {
  int edits = 0;
  for (std::uint32_t seed = 0; seed < 3000; ++seed) {
    Dice dice{seed + 77};
    WordsPair pair = PairOf(MixedProgram(seed % 400));
    const std::vector<std::u16string> code = SplitLines(Joined(pair.code));
    const std::vector<std::u16string> words = SplitLines(Joined(pair.words));
    const auto first = dice.Roll(static_cast<std::uint32_t>(words.size()));
    const auto count = dice.Roll(std::min<std::uint32_t>(
        3, static_cast<std::uint32_t>(words.size()) - first));  // lines taken out
    if (first + count == words.size()) continue;
    std::size_t from = 0;
    for (std::size_t i = 0; i < first; ++i) from += words[i].size();
    std::size_t to = from;
    for (std::size_t i = 0; i < count; ++i) to += words[first + i].size();
    std::u16string put;
    for (std::uint32_t i = dice.Roll(3); i > 0; --i) put += Noise(dice) + u"\r\n";
    // A line end that would join the one in front of it is another edit.
    if (from > 0 && Joined(pair.words)[from - 1] == u'\r' && to < Joined(pair.words).size() &&
        Joined(pair.words)[to] == u'\n') {
      continue;
    }
    Edit(pair, from, to, put);
    std::u16string front;
    for (std::size_t i = 0; i < first; ++i) front += code[i];
    std::u16string back;
    for (std::size_t i = first + count; i < code.size(); ++i) back += code[i];
    ASSERT_EQ(Joined(pair.code).substr(0, front.size()), front) << seed;
    ASSERT_GE(Joined(pair.code).size(), front.size() + back.size()) << seed;
    ASSERT_EQ(Joined(pair.code).substr(Joined(pair.code).size() - back.size()), back) << seed;
    ASSERT_EQ(SplitLines(Joined(pair.code)).size(), SplitLines(Joined(pair.words)).size()) << seed;
    ++edits;
  }
  EXPECT_GT(edits, 2000);
}

TEST(WordsPair, AnyEditsUndoneOneByOneLeaveTheProgramAsItWas) {
  for (std::uint32_t seed = 0; seed < 400; ++seed) {
    Dice dice{seed * 13 + 5};
    const std::u16string code = MixedProgram(seed);
    WordsPair pair = PairOf(code);
    struct Step {
      std::size_t from;
      std::u16string before;
      std::u16string after;
    };
    std::vector<Step> steps;
    for (std::uint32_t i = dice.Roll(12); i > 0; --i) {
      const std::size_t from = dice.Roll(static_cast<std::uint32_t>(Joined(pair.words).size()) + 1);
      const std::size_t length =
          dice.Roll(4) == 0
              ? dice.Roll(static_cast<std::uint32_t>(Joined(pair.words).size() - from) + 1)
              : std::min<std::size_t>(dice.Roll(4), Joined(pair.words).size() - from);
      std::u16string text = Noise(dice);
      if (dice.Roll(3) == 0) text += u"\r\n";
      steps.push_back({from, Joined(pair.words).substr(from, length), text});
      Edit(pair, from, from + length, text);
      ASSERT_EQ(SplitLines(Joined(pair.code)).size(), SplitLines(Joined(pair.words)).size())
          << seed;
    }
    while (!steps.empty()) {
      const Step step = steps.back();
      steps.pop_back();
      Edit(pair, step.from, step.from + step.after.size(), step.before);
    }
    ASSERT_EQ(Joined(pair.code), code) << seed;
    ASSERT_TRUE(pair.replaced.empty()) << seed;
  }
}

// The shortest way by the plain table of longest common subsequences.
std::size_t LongestCommon(const std::vector<View>& a, const std::vector<View>& b) {
  std::vector<std::vector<std::size_t>> most(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 1; i <= a.size(); ++i) {
    for (std::size_t j = 1; j <= b.size(); ++j) {
      most[i][j] =
          a[i - 1] == b[j - 1] ? most[i - 1][j - 1] + 1 : std::max(most[i - 1][j], most[i][j - 1]);
    }
  }
  return most[a.size()][b.size()];
}

TEST(LineMatch, FindsAsManyEqualLinesAsThereCanBeInOrder) {
  static constexpr const char16_t* kLines[] = {u"a", u"b", u"c", u"d"};
  for (std::uint32_t seed = 0; seed < 2000; ++seed) {
    Dice dice{seed + 3};
    std::vector<View> a;
    std::vector<View> b;
    for (std::uint32_t i = dice.Roll(14); i > 0; --i) a.emplace_back(kLines[dice.Roll(4)]);
    for (std::uint32_t i = dice.Roll(14); i > 0; --i) b.emplace_back(kLines[dice.Roll(4)]);
    const std::vector<std::size_t> matches = MatchLines(a, b);
    ASSERT_EQ(matches.size(), b.size());
    std::size_t count = 0;
    std::size_t next = 0;
    for (std::size_t i = 0; i < b.size(); ++i) {
      if (matches[i] == kNoLine) continue;
      ASSERT_LT(matches[i], a.size()) << seed;
      ASSERT_GE(matches[i], next) << seed;
      ASSERT_EQ(a[matches[i]], b[i]) << seed;
      next = matches[i] + 1;
      ++count;
    }
    ASSERT_EQ(count, LongestCommon(a, b)) << seed;
  }
}

TEST(LineMatch, OfListsWithoutEnoughInCommonTellsTheirEqualEnds) {
  std::vector<std::u16string> kept;
  for (int i = 0; i < 2000; ++i) kept.emplace_back(2 + i / 50, static_cast<char16_t>(100 + i % 50));
  std::vector<View> a{u"front"};
  std::vector<View> b{u"front"};
  for (int i = 0; i < 1000; ++i) a.emplace_back(kept[static_cast<std::size_t>(i)]);
  for (int i = 1000; i < 2000; ++i) b.emplace_back(kept[static_cast<std::size_t>(i)]);
  a.emplace_back(u"back");
  b.emplace_back(u"back");
  const std::vector<std::size_t> matches = MatchLines(a, b);
  EXPECT_EQ(matches.front(), 0u);
  EXPECT_EQ(matches.back(), 1001u);
  for (std::size_t i = 1; i <= 1000; ++i) EXPECT_EQ(matches[i], kNoLine);
}

}  // namespace
}  // namespace morva
