// The editor's text against a plain model: one string with LF, a list of whole texts to undo.

#include "platform/headless/editor_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

using headless::EditorText;
using headless::HistoryUse;

class Dice {
 public:
  explicit Dice(std::uint32_t seed) : state_(seed) {}
  int Below(int limit) {
    state_ = state_ * 1664525u + 1013904223u;
    return static_cast<int>((state_ >> 8) % static_cast<std::uint32_t>(limit));
  }

 private:
  std::uint32_t state_;
};

std::u16string WithLfOnly(const std::u16string& text) {
  std::u16string out;
  for (char16_t c : text) {
    if (c != u'\r') out.push_back(c);
  }
  return out;
}

// Every answer of the text about lines, worked out from the plain string.
void ExpectSameAsPlain(const EditorText& t, const std::u16string& plain) {
  ASSERT_EQ(WithLfOnly(t.text), plain);
  ASSERT_EQ(headless::TextLengthInPositions(t), static_cast<int>(plain.size()));
  int line = 0;
  int start = 0;
  for (int at = 0; at <= static_cast<int>(plain.size()); ++at) {
    ASSERT_EQ(headless::LineOfPosition(t, at), line);
    ASSERT_EQ(headless::IndexOfPosition(t, at), static_cast<std::size_t>(at + line));
    ASSERT_EQ(headless::PositionOfIndex(t, static_cast<std::size_t>(at + line)), at);
    const bool ends = at == static_cast<int>(plain.size());
    if (ends || plain[static_cast<std::size_t>(at)] == u'\n') {
      ASSERT_EQ(headless::LineStartPosition(t, line), start);
      ASSERT_EQ(headless::LineLengthOf(t, line), at - start);
      start = at + 1;
      if (!ends) ++line;
    }
  }
  ASSERT_EQ(static_cast<int>(t.starts.size()), line + 1);
  ASSERT_EQ(t.runs.size(), t.starts.size());
}

std::u16string RandomPiece(Dice& dice) {
  std::u16string piece;
  const int length = dice.Below(7);
  for (int i = 0; i < length; ++i) {
    piece.push_back(dice.Below(4) == 0 ? u'\n' : static_cast<char16_t>(u'A' + dice.Below(26)));
  }
  return piece;
}

TEST(EditorText, TakesLfCrAndCrLfForOneLineEnd) {
  EXPECT_EQ(headless::WithCrLf(u"a\nb\rc\r\nd\n\re"), u"a\r\nb\r\nc\r\nd\r\n\r\ne");
}

TEST(EditorText, AnswersAsAPlainStringOverRandomEdits) {
  for (std::uint32_t seed = 1; seed <= 20; ++seed) {
    Dice dice(seed);
    EditorText t;
    std::u16string plain;
    for (int i = 0; i < 100; ++i) {
      const int length = static_cast<int>(plain.size());
      const int from = dice.Below(length + 1);
      const int to = from + dice.Below(length - from + 1) / 2;
      const std::u16string piece = RandomPiece(dice);
      const int end = headless::ReplacePositions(t, from, to, piece, HistoryUse::Step);
      plain.replace(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from), piece);
      ASSERT_EQ(end, from + static_cast<int>(piece.size()));
      ExpectSameAsPlain(t, plain);
    }
  }
}

TEST(EditorText, UndoAndRedoWalkThroughEveryFormerText) {
  for (std::uint32_t seed = 100; seed < 120; ++seed) {
    Dice dice(seed);
    EditorText t;
    headless::SetWholeText(t, u"G0 X1\nG1 Y2\n");
    std::vector<std::u16string> history = {t.text};
    std::size_t at = 0;
    for (int i = 0; i < 200; ++i) {
      int caret = 0;
      const int what = dice.Below(4);
      if (what == 0) {
        ASSERT_EQ(headless::UndoStep(t, caret), at > 0);
        if (at > 0) --at;
      } else if (what == 1) {
        ASSERT_EQ(headless::RedoStep(t, caret), at + 1 < history.size());
        if (at + 1 < history.size()) ++at;
      } else {
        const int length = headless::TextLengthInPositions(t);
        const int from = dice.Below(length + 1);
        const int to = from + dice.Below(length - from + 1) / 3;
        headless::ReplacePositions(t, from, to, RandomPiece(dice), HistoryUse::Step);
        history.resize(at + 1);
        history.push_back(t.text);
        ++at;
      }
      ASSERT_EQ(t.text, history[at]);
      ExpectSameAsPlain(t, WithLfOnly(t.text));
    }
  }
}

TEST(EditorText, TypedCharactersOfOneRunAreOneStep) {
  EditorText t;
  headless::ReplacePositions(t, 0, 0, u"G", HistoryUse::Typing);
  headless::ReplacePositions(t, 1, 1, u"0", HistoryUse::Typing);
  headless::ReplacePositions(t, 2, 2, u"\n", HistoryUse::Typing);
  headless::ReplacePositions(t, 3, 3, u"X", HistoryUse::Typing);
  int caret = -1;
  ASSERT_TRUE(headless::UndoStep(t, caret));
  EXPECT_EQ(t.text, u"G0\r\n");
  ASSERT_TRUE(headless::UndoStep(t, caret));
  EXPECT_EQ(t.text, u"G0");
  ASSERT_TRUE(headless::UndoStep(t, caret));
  EXPECT_EQ(t.text, u"");
  EXPECT_EQ(caret, 0);
  EXPECT_FALSE(headless::UndoStep(t, caret));
}

TEST(EditorText, AReplacementThatIsNotUndoableEmptiesTheHistory) {
  EditorText t;
  headless::ReplacePositions(t, 0, 0, u"G0", HistoryUse::Step);
  headless::ReplacePositions(t, 2, 2, u"X1", HistoryUse::Empty);
  int caret = 0;
  EXPECT_FALSE(headless::UndoStep(t, caret));
  EXPECT_EQ(t.text, u"G0X1");
}

TEST(EditorText, AnEditClearsTheColoursOfItsLinesOnly) {
  EditorText t;
  headless::SetWholeText(t, u"a\nb\nc\nd");
  for (auto& line : t.runs) line.push_back({0, 1, 0xFF0000, false});
  headless::ReplacePositions(t, 2, 5, u"x\ny\nz", HistoryUse::Step);  // "b\nc" becomes three lines
  ASSERT_EQ(t.runs.size(), 5u);
  EXPECT_EQ(t.runs[0].size(), 1u);
  EXPECT_TRUE(t.runs[1].empty());
  EXPECT_TRUE(t.runs[2].empty());
  EXPECT_TRUE(t.runs[3].empty());
  EXPECT_EQ(t.runs[4].size(), 1u);
}

TEST(EditorText, HoldsAHundredThousandLines) {
  std::u16string text;
  for (int i = 0; i < 100000; ++i) text += u"G1 X1.0000 Y2.0000\n";
  EditorText t;
  headless::SetWholeText(t, text);
  ASSERT_EQ(t.starts.size(), 100001u);
  for (int i = 0; i < 200; ++i) {
    headless::ReplacePositions(t, 1000, 1000, u"Z\n", HistoryUse::Typing);
  }
  EXPECT_EQ(t.starts.size(), 100201u);
  EXPECT_EQ(headless::LineStartPosition(t, 100200),
            static_cast<int>(text.size()) + 400);  // the empty last line
}

}  // namespace
