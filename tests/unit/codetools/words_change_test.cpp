// The words taken over by changed lines, beside the slow way that compares whole texts: the same
// code, the same words, and the same lines known as replaced, after each of thousands of edits.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "codetools/chunked_lines.h"
#include "codetools/words_pair.h"
#include "support/program_maker.h"
#include "support/reference_pair.h"
#include "support/whole_words.h"

namespace morva {
namespace {

using reference::Dice;
using View = std::u16string_view;

std::u16string Pick(Dice& dice) {
  static constexpr const char16_t* kLines[] = {
      u"G1X2",  u"g1",    u"M8",    u"M8",      u"M8",  u"m6",         u"T1M6",
      u"N10G4", u"#100=", u"(G1 ",  u")",       u"(a)", u"; M8 G1 (",  u"DPRNT[G1*#1[44]]",
      u"",      u"",      u"Dwell", u"DPRNT[(", u"G01", u"Sequence 5", u"X1 (b) G2"};
  return kLines[dice.Roll(std::size(kLines))];
}

std::u16string SomeLines(Dice& dice, std::uint32_t most) {
  std::u16string text;
  for (std::uint32_t i = dice.Roll(most + 1); i > 0; --i) text += Pick(dice) + u"\r\n";
  return text;
}

struct Step {
  std::size_t from = 0;
  std::u16string before;
  std::u16string after;
};

// Two pairs of one program, and the words as an editor has them.
struct Both {
  WordsPair pair;
  reference::WordsPair whole;
  std::u16string words;
};

Both BothOf(View code) {
  Both both;
  EXPECT_TRUE(support::MakePair(code, both.pair));
  EXPECT_TRUE(reference::MakeWordsPair(code, both.whole));
  both.words = both.whole.words;
  return both;
}

// Never between CR and LF.
std::size_t Whole(View text, std::size_t at) {
  return at > 0 && at < text.size() && text[at] == u'\n' ? at - 1 : at;
}

std::size_t LineStart(View text, std::size_t at) {
  while (at > 0 && text[at - 1] != u'\n') --at;
  return at;
}

void Apply(Both& both, Dice& dice, const Step& step) {
  const std::size_t line = CountLineEnds(View(both.words).substr(0, step.from));
  std::size_t before = CountLineEnds(step.before) + 1;
  const std::size_t lines = CountLineEnds(both.words) + 1;
  // At times more lines than did change, as behind two edits.
  std::size_t first = dice.Roll(4) == 0 ? line - std::min<std::size_t>(line, dice.Roll(4)) : line;
  before += line - first;
  if (dice.Roll(4) == 0) before = std::min(lines - first, before + dice.Roll(4));
  const std::size_t after = before + CountLineEnds(step.after) - CountLineEnds(step.before);
  both.words.replace(step.from, step.before.size(), step.after);
  // Most often behind the change; at its front as Delete leaves it; anywhere.
  std::size_t caret = step.from + step.after.size();
  if (dice.Roll(5) == 0) caret = step.from;
  if (dice.Roll(12) == 0) {
    caret = Whole(both.words, dice.Roll(static_cast<std::uint32_t>(both.words.size()) + 1));
  }
  const std::size_t start = BehindLines(both.words, 0, first);
  const std::size_t end = BehindLines(both.words, start, after);
  const std::u16string text = both.words.substr(start, end - start);
  const std::size_t caretStart = LineStart(both.words, caret);
  const CodeChange change =
      TakeWords(both.pair, {.line = first,
                            .before = before,
                            .after = text,
                            .caretLine = CountLineEnds(View(both.words).substr(0, caretStart)),
                            .caretColumn = caret - caretStart});
  const reference::CodeChange wanted = reference::TakeWords(both.whole, both.words, caret);
  ASSERT_EQ(change.line, wanted.line);
  ASSERT_EQ(change.before, wanted.before);
  ASSERT_EQ(change.after, wanted.after);
  ASSERT_EQ(Joined(both.pair.words), both.words);
  ASSERT_EQ(Joined(both.pair.code), both.whole.code);
  ASSERT_EQ(both.pair.replaced.size(), both.whole.replaced.size());
  for (std::size_t i = 0; i < both.pair.replaced.size(); ++i) {
    ASSERT_EQ(both.pair.replaced[i].line, both.whole.replaced[i].line);
    ASSERT_EQ(both.pair.replaced[i].count, both.whole.replaced[i].count);
    ASSERT_EQ(both.pair.replaced[i].words, both.whole.replaced[i].words);
    ASSERT_EQ(both.pair.replaced[i].code, both.whole.replaced[i].code);
  }
}

Step AnyEdit(const std::u16string& words, Dice& dice) {
  Step step;
  const auto size = static_cast<std::uint32_t>(words.size());
  step.from = Whole(words, dice.Roll(size + 1));
  std::size_t to = step.from;
  switch (dice.Roll(8)) {
    case 0:  // across some lines
      to = std::min<std::size_t>(size, to + dice.Roll(80));
      break;
    case 1:  // a line taken out or put in whole
      step.from = LineStart(words, step.from);
      to = dice.Roll(2) == 0 ? BehindLine(words, step.from) : step.from;
      break;
    case 2:  // all of the rest
      if (dice.Roll(10) == 0) to = size;
      break;
    default:
      to = std::min<std::size_t>(size, to + dice.Roll(3));
  }
  to = std::max(step.from, Whole(words, to));
  step.before = words.substr(step.from, to - step.from);
  switch (dice.Roll(5)) {
    case 0:
      step.after = SomeLines(dice, 4);
      break;
    case 1:
      break;
    case 2:
      step.after = u"\r\n";
      break;
    default:
      step.after = Pick(dice);
  }
  return step;
}

void EditAtRandom(const std::u16string& code, std::uint32_t seed, int edits) {
  Dice dice{seed * 2654435761u + 9};
  Both both = BothOf(code);
  std::vector<Step> done;
  std::vector<Step> undone;
  for (int i = 0; i < edits; ++i) {
    SCOPED_TRACE("program " + std::to_string(seed) + ", edit " + std::to_string(i));
    const std::uint32_t kind = dice.Roll(10);
    Step step;
    if (kind < 3 && !done.empty()) {
      step = done.back();
      done.pop_back();
      undone.push_back(step);
      std::swap(step.before, step.after);
    } else if (kind == 3 && !undone.empty()) {
      step = undone.back();
      undone.pop_back();
      done.push_back(step);
    } else if (kind == 4 && dice.Roll(8) == 0) {
      step = {0, both.words, dice.Roll(2) == 0 ? SomeLines(dice, 9) : both.words + u"M8\r\n"};
      done.push_back(step);
      undone.clear();
    } else {
      step = AnyEdit(both.words, dice);
      done.push_back(step);
      undone.clear();
    }
    Apply(both, dice, step);
    if (testing::Test::HasFatalFailure()) return;
  }
  while (!done.empty()) {
    Step step = done.back();
    done.pop_back();
    std::swap(step.before, step.after);
    Apply(both, dice, step);
    if (testing::Test::HasFatalFailure()) return;
  }
}

TEST(WordsChange, AnyEditsOfShortProgramsEndAsWithWholeTexts) {
  for (std::uint32_t seed = 0; seed < 1500; ++seed) {
    Dice dice{seed + 7};
    EditAtRandom(SomeLines(dice, 14), seed, 24);
    if (HasFatalFailure()) return;
  }
}

// Many pieces, and the same line many times over.
TEST(WordsChange, AnyEditsOfLongProgramsEndAsWithWholeTexts) {
  for (std::uint32_t seed = 0; seed < 6; ++seed) {
    Dice dice{seed + 11};
    std::u16string code;
    while (code.size() < 60000) {
      code += SomeLines(dice, 30);
      for (std::uint32_t i = dice.Roll(200); i > 0; --i) code += u"M8\r\n";
    }
    EditAtRandom(code, seed, 60);
    if (HasFatalFailure()) return;
  }
}

TEST(ChunkedLines, AreTheTextThatWasPutIn) {
  for (std::uint32_t seed = 0; seed < 12; ++seed) {
    Dice dice{seed + 5};
    std::u16string text;
    while (text.size() < 50000) text += SomeLines(dice, 40);
    ChunkedLines lines = InChunks(text);
    for (int i = 0; i < 60; ++i) {
      const std::size_t count = CountLineEnds(text) + 1;
      const std::size_t line = dice.Roll(static_cast<std::uint32_t>(count));
      const std::size_t most = dice.Roll(5) == 0 ? count - line : 3;
      const std::size_t gone =
          std::min<std::size_t>(count - line, dice.Roll(static_cast<std::uint32_t>(most) + 1));
      const std::u16string put = SomeLines(dice, dice.Roll(5) == 0 ? 4000 : 3);
      const std::size_t from = BehindLines(text, 0, line);
      const std::size_t to = BehindLines(text, from, gone);
      ASSERT_EQ(LinesOf(lines, line, gone), text.substr(from, to - from));
      text.replace(from, to - from, put);
      ReplaceLines(lines, line, gone, put);
      ASSERT_EQ(lines.units, text.size());
      ASSERT_EQ(LineCount(lines), CountLineEnds(text) + 1);
      ASSERT_TRUE(SameText(lines, text)) << seed << " " << i;
      ASSERT_EQ(Joined(lines), text);
    }
  }
}

}  // namespace
}  // namespace morva
