// File text. Expected bytes are written out by hand.

#include "documents/file_text.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "platform/common/faults.h"
#include "support/stage.h"

namespace {

using morva::DecodeCodePage;
using morva::DecodeProgram;
using morva::NormaliseOutputText;
using namespace std::string_literals;

TEST(OutputText, MakesEveryLineEndCrLf) {
  EXPECT_EQ(NormaliseOutputText(u"a\nb\rc\r\nd\r\n", false), "a\r\nb\r\nc\r\nd\r\n");
  EXPECT_EQ(NormaliseOutputText(u"a\n\rb\r\n", false), "a\r\n\r\nb\r\n");
  EXPECT_EQ(NormaliseOutputText(u"\r\r\n\n", false), "\r\n\r\n\r\n");
}

TEST(OutputText, AddsAFinalLineEndOnlyWhereOneIsMissing) {
  EXPECT_EQ(NormaliseOutputText(u"G0", false), "G0\r\n");
  EXPECT_EQ(NormaliseOutputText(u"G0\r\n", false), "G0\r\n");
  EXPECT_EQ(NormaliseOutputText(u"G0\r", false), "G0\r\n");
  EXPECT_EQ(NormaliseOutputText(u" ", false), " \r\n");
}

TEST(OutputText, GivesNoBytesForAnEmptyTextAndTwoPercentLinesWithWrap) {
  EXPECT_EQ(NormaliseOutputText(u"", false), "");
  EXPECT_EQ(NormaliseOutputText(u"", true), "%\r\n%\r\n");
}

TEST(OutputText, PutsAQuestionMarkForEachUnitAbove127) {
  EXPECT_EQ(NormaliseOutputText(u"\u00E9", false), "?\r\n");
  EXPECT_EQ(NormaliseOutputText(u"\u007F\u0080", false), "\x7F?\r\n");
  EXPECT_EQ(NormaliseOutputText(u"a\U0001F600b", false), "a??b\r\n");
  EXPECT_EQ(NormaliseOutputText(u"\uFEFFG0", false), "?G0\r\n");
}

TEST(OutputText, AddsOnlyThePercentLinesThatAreMissing) {
  EXPECT_EQ(NormaliseOutputText(u"G0\r\n", true), "%\r\nG0\r\n%\r\n");
  EXPECT_EQ(NormaliseOutputText(u"%\r\nG0\r\n", true), "%\r\nG0\r\n%\r\n");
  EXPECT_EQ(NormaliseOutputText(u"G0\r\n%\r\n", true), "%\r\nG0\r\n%\r\n");
  EXPECT_EQ(NormaliseOutputText(u"%\r\nG0\r\n%", true), "%\r\nG0\r\n%\r\n");
  EXPECT_EQ(NormaliseOutputText(u"%", true), "%\r\n");
}

TEST(OutputText, LooksPastBlanksForThePercentLines) {
  EXPECT_EQ(NormaliseOutputText(u" \t\r\n%\r\nG0\r\n% \r\n\r\n", true),
            " \t\r\n%\r\nG0\r\n% \r\n\r\n");
  EXPECT_EQ(NormaliseOutputText(u" \r\n\t", true), "%\r\n \r\n\t\r\n%\r\n");
}

TEST(OutputMeasure, TellsHowManyBytesAreMade) {
  std::mt19937 random(9);
  constexpr char16_t kUnits[] = {u'\r', u'\n', u'\0', u'G', u' ', 0x00E9, 0xD83D, 0xDE00};
  for (int round = 0; round < 2000; ++round) {
    std::u16string text;
    for (auto i = random() % 20; i > 0; --i) text += kUnits[random() % std::size(kUnits)];
    ASSERT_EQ(morva::MeasureOutput(text).bytes, NormaliseOutputText(text, false).size());
  }
}

TEST(OutputMeasure, CountsTheCharactersThatAreLostAndTellsTheFirstLine) {
  const morva::OutputFigures none = morva::MeasureOutput(u"G0\r\nG1 (~)\r\n");
  EXPECT_EQ(none.lost, 0);
  EXPECT_EQ(none.firstLostLine, 0);
  const morva::OutputFigures some =
      morva::MeasureOutput(u"G0\rG1\n(\u00D8 5 \U0001F600)\r\n\u00E9");
  EXPECT_EQ(some.lost, 3);
  EXPECT_EQ(some.firstLostLine, 3);
}

TEST(OutputText, LeavesNulsOutAndLosesNothingBehindThem) {
  EXPECT_EQ(NormaliseOutputText(u"G0\0G1"s, false), "G0G1\r\n");
  EXPECT_EQ(NormaliseOutputText(u"\0\0%\r\nG0\r\n%\r\n\0"s, true), "%\r\nG0\r\n%\r\n");
  EXPECT_EQ(NormaliseOutputText(u"\0"s, false), "");
}

// A second method: one character after the other, without any stride.
std::string SlowOutput(const std::u16string& text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'\r' || text[i] == u'\n') {
      if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
      out += "\r\n";
    } else {
      out += text[i] < 128 ? static_cast<char>(text[i]) : '?';
    }
  }
  if (!out.empty() && out.back() != '\n') out += "\r\n";
  return out;
}

TEST(OutputText, GivesTheSameAtEveryPlaceOfTheStride) {
  const char16_t kinds[] = {u'G',    u'\r',   u'\n',  u'\t',  u'\x0D', u'\x0E',
                            u'\x7F', u'\x80', 0x8041, 0xFFFF, 1};
  std::uint32_t seed = 12345;
  for (int round = 0; round < 4000; ++round) {
    std::u16string text(static_cast<std::size_t>(round % 50), u'x');
    for (char16_t& unit : text) {
      seed = seed * 1664525 + 1013904223;
      if (seed >> 30 == 0) unit = kinds[(seed >> 8) % 11];
    }
    for (std::size_t i = 1; round % 3 == 0 && i < text.size(); ++i) {
      if (text[i - 1] == u'\r') text[i] = u'\n';
    }
    EXPECT_EQ(NormaliseOutputText(text, false), SlowOutput(text));
  }
}

// A second method for what is lost: one unit after the other.
struct SlowFigures {
  int lost = 0;
  int firstLine = 0;
  bool written = false;  // a "?" for a character
};

SlowFigures LossOf(const std::u16string& text) {
  SlowFigures figures;
  int line = 1;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool second = text[i] >= 0xDC00 && text[i] <= 0xDFFF;
    figures.written = figures.written || text[i] > 127;
    if (text[i] > 127 && !second && ++figures.lost == 1) figures.firstLine = line;
    const bool pair = i + 1 < text.size() && text[i] == u'\r' && text[i + 1] == u'\n';
    if (!pair && (text[i] == u'\r' || text[i] == u'\n')) ++line;
  }
  return figures;
}

TEST(OutputText, TellsWhatIsLostAtEveryPlaceOfTheStride) {
  const char16_t kinds[] = {u'\r', u'\n', u'\0', 0x00E9, 0xD83D, 0xDE00, u'\x80', u'G'};
  std::mt19937 random(11);
  for (int round = 0; round < 4000; ++round) {
    std::u16string text;
    for (int i = 0; i < round % 60; ++i) {
      const auto roll = random() % 24;
      if (roll < 6) text += u"\r\n";
      text += roll == 7 ? kinds[random() % std::size(kinds)] : u'x';
    }
    const SlowFigures slow = LossOf(text);
    const morva::OutputFigures figures = morva::MeasureOutput(text);
    bool lost = !slow.written;
    ASSERT_EQ(morva::ProgramBytes(text, lost), NormaliseOutputText(text, false));
    ASSERT_EQ(lost, slow.written);
    ASSERT_EQ(figures.lost, slow.lost);
    ASSERT_EQ(figures.firstLostLine, slow.firstLine);
  }
}

TEST(OutputText, CrossesThePiecesOfALongText) {
  std::u16string text;
  std::string bytes;
  for (int i = 0; i < 3000; ++i) {
    text += i % 3 ? u"\nG1 X1.5" : u"\r\nN10\u00E9";
    bytes += i % 3 ? "\r\nG1 X1.5" : "\r\nN10?";
  }
  EXPECT_EQ(NormaliseOutputText(text, false), bytes + "\r\n");
}

TEST(ProgramText, ReadsUtf8AndKeepsLineEndsAsTheyAre) {
  EXPECT_EQ(DecodeProgram("G0\nG1\rG2\r\n(\xC3\xA9)"), u"G0\nG1\rG2\r\n(\u00E9)");
}

TEST(ProgramText, KeepsAByteOrderMarkAsACharacter) {
  EXPECT_EQ(DecodeProgram("\xEF\xBB\xBFG0"), u"\uFEFFG0");
}

TEST(ProgramText, PutsReplacementCharactersForLatin1) {
  EXPECT_EQ(DecodeProgram("(caf\xE9)"), u"(caf\uFFFD)");
}

TEST(ProgramText, LeavesNulsOutWhereverTheyStand) {
  EXPECT_EQ(DecodeProgram("G0\0G1"s), u"G0G1");
  EXPECT_EQ(DecodeProgram("\0\0G1\0"s), u"G1");
  // A NUL does not join what it parts: neither half is UTF-8.
  EXPECT_EQ(DecodeProgram("\xC3\0\xA9"s), u"\uFFFD\uFFFD");
  EXPECT_EQ(DecodeProgram("\0"s), u"");
  EXPECT_EQ(DecodeProgram(""), u"");
}

TEST(CodePage, GivesEveryByteItsCharacter) {
  // Bytes 80 to 9F of Windows-1252 as its published table lists them.
  const std::u16string middle =
      u"\u20AC\uFFFD\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\uFFFD\u017D"
      u"\uFFFD\uFFFD\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\uFFFD"
      u"\u017E\u0178";
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  const std::u16string text = DecodeCodePage(bytes);
  ASSERT_EQ(text.size(), 256u);
  for (std::size_t i = 0; i < 256; ++i) {
    const char16_t wanted = i >= 0x80 && i <= 0x9F ? middle[i - 0x80] : static_cast<char16_t>(i);
    EXPECT_EQ(text[i], wanted) << i;
  }
}

struct SavedFile : public support::Stage {};

TEST_F(SavedFile, ReadsAWholeFileUpTo32MiB) {
  Put("a.NC", std::string(33554432, 'x'));
  std::string bytes;
  EXPECT_TRUE(morva::ReadWholeFile(PathOf("a.NC"), bytes));
  EXPECT_EQ(bytes.size(), 33554432u);
  Put("a.NC", std::string(33554433, 'x'));
  EXPECT_FALSE(morva::ReadWholeFile(PathOf("a.NC"), bytes));
  EXPECT_TRUE(bytes.empty());
}

TEST_F(SavedFile, FailsInAFolderThatDoesNotExistAndMakesNothing) {
  EXPECT_FALSE(morva::SaveFileAtomic(PathOf("none/a.NC"), "x"));
  EXPECT_FALSE(support::fs::exists(folder / "none"));
}

TEST_F(SavedFile, TakesAPathOf500UnitsAndRefuses501) {
  std::u16string path = home;
  while (path.size() < 400) path += u"/.";
  path += u"/";
  const std::size_t room = 500 - path.size();
  ASSERT_LT(room, 200u);
  EXPECT_TRUE(morva::SaveFileAtomic(path + std::u16string(room, u'a'), "x"));
  EXPECT_FALSE(morva::SaveFileAtomic(path + std::u16string(room + 1, u'a'), "x"));
  EXPECT_TRUE(support::fs::exists(folder / std::string(room, 'a')));
  EXPECT_FALSE(support::fs::exists(folder / std::string(room + 1, 'a')));
}

std::u16string temporarySeen;
support::fs::path watched;
bool WatchRename(std::string_view kind) {
  if (kind != "rename") return false;
  for (const std::string& name : support::NamesIn(watched)) {
    if (name.find(".tmp-") != name.npos) temporarySeen = support::Wide(name);
  }
  return false;
}

TEST_F(SavedFile, IsWrittenBesideUnderAShortNameWithTheTick) {
  watched = folder;
  temporarySeen.clear();
  headless::Advance(1234);
  platform::fileFault = WatchRename;
  EXPECT_TRUE(morva::SaveFileAtomic(PathOf("a.NC"), "x"));
  platform::fileFault = nullptr;
  EXPECT_EQ(temporarySeen, u".tmp-1234");
}

}  // namespace
