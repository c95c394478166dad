// The code editors: text, positions, selection, replacing and what is told in which order.

#include <string>
#include <vector>

#include "contract/text_stages.h"
#include "platform/limits.h"

namespace contract {
namespace {

using platform::EditorRange;
using platform::EditorSelection;
using platform::EditorText;
using platform::ReplaceRange;
using platform::ReplaceSelection;
using platform::SetEditorSelection;
using platform::SetEditorText;

class Editor : public CodeEditor {};

TEST_F(Editor, HandsOutCrLfWhateverLineEndsItGets) {
  MakeEditor(kId, u"a\r\nb\nc\rd\r\n");
  EXPECT_EQ(Text(), u"a\r\nb\r\nc\r\nd\r\n");
  EXPECT_EQ(platform::TextOf(kId), u"a\r\nb\r\nc\r\nd\r\n");
  EXPECT_EQ(platform::EditorLength(kId), 8);
  EXPECT_EQ(platform::EditorLineCount(kId), 5);
  SetEditorText(kId, u"\n\r");
  EXPECT_EQ(Text(), u"\r\n\r\n");
}

TEST_F(Editor, HoldsAMarkInThePlaceOfWhatNoToolkitHolds) {
  MakeEditor(kId, std::u16string_view(u"a\0b\u2028c\u2029d\uFDD0e\uFDD1f", 11));
  EXPECT_EQ(Text(), u"a\uFFFDb\uFFFDc\uFFFDd\uFFFDe\uFFFDf");
  ReplaceSelection(kId, u"\u2028", true);
  EXPECT_EQ(Text().substr(0, 2), u"\uFFFDa");
}

TEST_F(Editor, IsEmptyAndHasOneLineWhenItIsMade) {
  platform::EditorSpec spec;
  spec.id = kId;
  ASSERT_TRUE(platform::MakeEditor(spec));
  EXPECT_EQ(Text(), u"");
  EXPECT_EQ(platform::EditorLineCount(kId), 1);
  EXPECT_EQ(platform::EditorLength(kId), 0);
  EXPECT_FALSE(platform::CanUndoEditor(kId));
}

TEST_F(Editor, CountsALineEndAsOnePosition) {
  MakeEditor(kId, u"ab\r\ncde\r\n\r\nf");
  const int starts[] = {0, 3, 7, 8};
  const int lengths[] = {2, 3, 0, 1};
  for (int line = 0; line < 4; ++line) {
    EXPECT_EQ(platform::EditorLineStart(kId, line), starts[line]);
    EXPECT_EQ(platform::EditorLineLength(kId, line), lengths[line]);
    EXPECT_EQ(platform::EditorLineOf(kId, starts[line]), line);
    EXPECT_EQ(platform::EditorLineOf(kId, starts[line] + lengths[line]), line);
  }
}

TEST_F(Editor, AnswersBeyondItsLinesWithItsEnds) {
  MakeEditor(kId, u"ab\ncde");
  EXPECT_EQ(platform::EditorLineStart(kId, -1), 0);
  EXPECT_EQ(platform::EditorLineStart(kId, 2), 6);
  EXPECT_EQ(platform::EditorLineStart(kId, 99), 6);
  EXPECT_EQ(platform::EditorLineLength(kId, -1), 0);
  EXPECT_EQ(platform::EditorLineLength(kId, 2), 0);
  EXPECT_EQ(platform::EditorLineOf(kId, -5), 0);
  EXPECT_EQ(platform::EditorLineOf(kId, 99), 1);
}

TEST_F(Editor, KeepsASelectionWithinItsText) {
  MakeEditor(kId, u"abc");
  Select(-5, 99);
  EXPECT_EQ(Selection(), "0 3");
  Select(2, 1);
  EXPECT_EQ(Selection(), "1 2");
}

TEST_F(Editor, TellsASelectionOnceAndOnlyWhereItMoved) {
  MakeEditor(kId, u"abcd");
  SetEditorSelection(kId, {1, 3});
  EXPECT_EQ(Told("command selection"), Lines{"selection 300"});
  SetEditorSelection(kId, {1, 3});
  EXPECT_EQ(Told("command selection"), Lines{"selection 300"});
}

TEST_F(Editor, StartsAtTheFrontOfATextThatTheProgramSets) {
  MakeEditor(kId, u"abc\ndef");
  Select(2, 5);
  SetEditorText(kId, u"xyz");
  EXPECT_EQ(Selection(), "0 0");
}

TEST_F(Editor, TellsATextThatTheProgramSetsAndThenItsSelection) {
  MakeEditor(kId, u"abc");
  SetEditorText(kId, u"xyz");
  EXPECT_EQ(Told("command selection typed"), (Lines{"command 300 768", "selection 300"}));
  Forget();
  SetEditorText(kId, u"xyz");
  EXPECT_EQ(Told("command selection typed"), (Lines{"command 300 768", "selection 300"}));
}

TEST_F(Editor, HasItsNewTextAndSelectionWhenItTellsAChange) {
  MakeEditor(kId, u"abc");
  Select(1, 1);
  std::vector<std::u16string> texts;
  std::vector<std::string> selections;
  listening.command = [&](int, int) {
    texts.push_back(Text());
    selections.push_back(Selection());
  };
  hands::Type(u"x");
  ReplaceSelection(kId, u"yz", true);
  SetEditorText(kId, u"new");
  EXPECT_EQ(texts, (std::vector<std::u16string>{u"axbc", u"axyzbc", u"new"}));
  EXPECT_EQ(selections, (Lines{"2 2", "4 4", "0 0"}));
}

TEST_F(Editor, TellsKeySelectionChangeAndCharacterInThisOrder) {
  MakeEditor(kId, u"");
  hands::Type(u"g");
  EXPECT_EQ(Told("key command selection typed"),
            (Lines{"key 300 G", "selection 300", "command 300 768", "typed 300 g"}));
}

TEST_F(Editor, TellsEnterAndTabAsCharactersAndErasingAsNone) {
  MakeEditor(kId, u"");
  hands::Type(u"a\n\t");
  Press(platform::kKeyBackspace);
  EXPECT_EQ(Text(), u"a\r\n");
  EXPECT_EQ(Told("typed"), (Lines{"typed 300 a", "typed 300 10", "typed 300 9", "typed 300 0"}));
}

TEST_F(Editor, TellsSignsAsKeysByTheirCharacter) {
  MakeEditor(kId, u"");
  hands::Type(u"(+");
  EXPECT_EQ(Told("key"), (Lines{"key 300 (", "key 300 +"}));
  EXPECT_EQ(Text(), u"(+");
}

TEST_F(Editor, TellsNoKeyForACharacterWithoutAName) {
  MakeEditor(kId, u"");
  hands::Type(u"\u00B0");
  EXPECT_EQ(Text(), u"\u00B0");
  EXPECT_EQ(Told("key typed"), Lines{"typed 300 176"});
}

TEST_F(Editor, TellsNothingForAKeyThatChangesNothing) {
  MakeEditor(kId, u"a");
  Press(platform::kKeyBackspace);
  PressCtrl(platform::kKeyEnd);
  Forget();
  Press(platform::kKeyDelete);
  platform::RunEditAction(kId, platform::EditAction::Delete);
  EXPECT_EQ(Told("command selection typed"), Lines{});
}

TEST_F(Editor, TellsNoSelectionWhereErasingLeavesTheCaret) {
  MakeEditor(kId, u"abc");
  Select(1, 1);
  Press(platform::kKeyDelete);
  EXPECT_EQ(Text(), u"ac");
  EXPECT_EQ(Told("command selection"), Lines{"command 300 768"});
}

TEST_F(Editor, WritesNothingWithCtrlOrAlt) {
  MakeEditor(kId, u"");
  PressCtrl('B');
  PressAlt('B');
  EXPECT_EQ(Text(), u"");
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(Editor, MakesShiftEnterALineEnd) {
  MakeEditor(kId, u"");
  PressShift(platform::kKeyEnter);
  EXPECT_EQ(Text(), u"\r\n");
  EXPECT_EQ(platform::EditorLineCount(kId), 2);
}

TEST_F(Editor, PastesEveryLineEndAsALineEnd) {
  MakeEditor(kId, u"xy");
  Select(1, 1);
  hands::CopyElsewhere(u"a\r\nb\nc\rd");
  platform::RunEditAction(kId, platform::EditAction::Paste);
  EXPECT_EQ(Text(), u"xa\r\nb\r\nc\r\ndy");
  EXPECT_EQ(Selection(), "8 8");
  EXPECT_EQ(Told("command selection"), (Lines{"selection 300", "command 300 768"}));
}

TEST_F(Editor, TellsNoCharacterForAPasteByTheAction) {
  MakeEditor(kId, u"");
  hands::CopyElsewhere(u"ab");
  platform::RunEditAction(kId, platform::EditAction::Paste);
  EXPECT_EQ(Told("typed"), Lines{});
}

TEST_F(Editor, TellsACharacterOfNoneForAPasteByKey) {
  MakeEditor(kId, u"");
  hands::CopyElsewhere(u"ab");
  PressCtrl('V');
  EXPECT_EQ(Told("typed"), Lines{"typed 300 0"});
}

TEST_F(Editor, CountsOneRevisionForAChange) {
  MakeEditor(kId, u"abc");
  std::uint64_t before = platform::EditorRevision(kId);
  const auto grown = [&before] {
    const std::uint64_t now = platform::EditorRevision(kId);
    return static_cast<int>(now - std::exchange(before, now));
  };
  hands::Type(u"x");
  EXPECT_EQ(grown(), 1);
  SetEditorText(kId, u"new");
  EXPECT_EQ(grown(), 1);
  SetEditorSelection(kId, {0, 2});
  EXPECT_EQ(grown(), 0);
  ReplaceSelection(kId, u"12", true);
  EXPECT_EQ(grown(), 1);
  ReplaceRange(kId, {0, 1}, u"7");
  EXPECT_EQ(grown(), 1);
  platform::UndoEditor(kId);
  EXPECT_EQ(grown(), 1);
  const platform::ColourRun run{0, 1, 0x123456, true};
  platform::SetLineRuns(kId, 0, &run, 1);
  platform::MarkEditorLine(kId, 0, 0x101010);
  EXPECT_EQ(grown(), 0);
}

TEST_F(Editor, LeavesTheCaretBehindWhatReplacesTheSelection) {
  MakeEditor(kId, u"one\r\ntwo");
  Select(0, 3);
  ReplaceSelection(kId, u"1\r\n11", true);
  EXPECT_EQ(Text(), u"1\r\n11\r\ntwo");
  EXPECT_EQ(Selection(), "4 4");
  EXPECT_EQ(Told("command selection typed"), (Lines{"selection 300", "command 300 768"}));
}

TEST_F(Editor, TellsNothingWhereNothingReplacesNothing) {
  MakeEditor(kId, u"abc");
  const std::uint64_t before = platform::EditorRevision(kId);
  ReplaceSelection(kId, u"", true);
  ReplaceRange(kId, {1, 1}, u"");
  EXPECT_EQ(Told("command selection"), Lines{});
  EXPECT_EQ(platform::EditorRevision(kId), before);
  EXPECT_FALSE(platform::CanUndoEditor(kId));
}

TEST_F(Editor, ReplacesARangeWhateverTheOrderOfItsEnds) {
  MakeEditor(kId, u"abcdef");
  ReplaceRange(kId, {4, 2}, u"-");
  EXPECT_EQ(Text(), u"ab-ef");
  ReplaceRange(kId, {3, 99}, u"");
  EXPECT_EQ(Text(), u"ab-");
  ReplaceRange(kId, {-7, 1}, u"");
  EXPECT_EQ(Text(), u"b-");
}

TEST_F(Editor, CarriesTheCaretOverAReplacedRangeOnlyAsFarAsItMust) {
  MakeEditor(kId, u"");
  const auto caretAfter = [](int caret, EditorRange range, std::u16string_view text) {
    SetEditorText(kId, u"0123456789");
    SetEditorSelection(kId, {caret, caret});
    ReplaceRange(kId, range, text);
    return EditorSelection(kId).to;
  };
  EXPECT_EQ(caretAfter(1, {3, 6}, u"abcdef"), 1);
  EXPECT_EQ(caretAfter(3, {3, 6}, u"abcdef"), 3);
  EXPECT_EQ(caretAfter(5, {3, 6}, u"abcdef"), 5);
  EXPECT_EQ(caretAfter(5, {3, 6}, u""), 3);
  EXPECT_EQ(caretAfter(8, {3, 6}, u"abcdef"), 11);
  EXPECT_EQ(caretAfter(3, {3, 3}, u"ab"), 5);
}

TEST_F(Editor, HasItsFinalCaretWhenItTellsAReplacedRange) {
  MakeEditor(kId, u"0123456789");
  Select(5, 5);
  Lines seen;
  listening.command = [&seen](int, int) { seen.push_back(Selection()); };
  listening.selection = [&seen](int, bool) { seen.push_back(Selection()); };
  ReplaceRange(kId, {3, 6}, u"abcdef");
  EXPECT_EQ(seen, Lines{"5 5"});
  EXPECT_EQ(Told("command selection"), Lines{"command 300 768"});
}

TEST_F(Editor, TellsNoSelectionWhereAReplacedRangeLeavesIt) {
  MakeEditor(kId, u"abcdef");
  Select(1, 1);
  ReplaceRange(kId, {3, 4}, u"xyz");
  EXPECT_EQ(Told("command selection"), Lines{"command 300 768"});
  Forget();
  ReplaceRange(kId, {0, 0}, u"12");
  EXPECT_EQ(Told("command selection"), (Lines{"selection 300", "command 300 768"}));
}

TEST_F(Editor, TellsWhoMovedTheCaret) {
  MakeEditor(kId, u"abcdef\nghijkl");
  std::vector<bool> byUser;
  listening.selection = [&byUser](int, bool user) { byUser.push_back(user); };
  SetEditorSelection(kId, {1, 1});
  ReplaceSelection(kId, u"xy", true);
  ReplaceRange(kId, {0, 0}, u"12");
  platform::UndoEditor(kId);
  platform::RedoEditor(kId);
  SetEditorText(kId, u"abcdef\nghijkl");
  ASSERT_GE(byUser.size(), 5u);
  EXPECT_EQ(std::count(byUser.begin(), byUser.end(), true), 0);
  byUser.clear();
  Press(platform::kKeyRight);
  hands::Type(u"x");
  hands::ClickAt(kId, 20, 30);
  RunEditAction(kId, platform::EditAction::SelectAll);
  ASSERT_GE(byUser.size(), 4u);
  EXPECT_EQ(std::count(byUser.begin(), byUser.end(), false), 0);
}

TEST_F(Editor, TellsThatTheProgramMovedTheCaretInsideAKeyOfTheUsers) {
  MakeEditor(kId, u"abcdef");
  std::vector<bool> byUser;
  listening.selection = [&byUser](int, bool user) { byUser.push_back(user); };
  listening.key = [](int, const platform::KeyEvent&) {
    SetEditorSelection(kId, {3, 3});
    return false;
  };
  Press(platform::kKeyRight);
  EXPECT_EQ(byUser, (std::vector<bool>{false, true}));
}

TEST_F(Editor, WalksByCharactersAndLines) {
  MakeEditor(kId, u"abcd\nef\nghij");
  Press(platform::kKeyRight);
  EXPECT_EQ(Selection(), "1 1");
  Press(platform::kKeyEnd);
  Press(platform::kKeyRight);
  EXPECT_EQ(Selection(), "5 5");
  Press(platform::kKeyLeft);
  EXPECT_EQ(Selection(), "4 4");
  PressCtrl(platform::kKeyEnd);
  EXPECT_EQ(Selection(), "12 12");
  Press(platform::kKeyHome);
  EXPECT_EQ(Selection(), "8 8");
  PressCtrl(platform::kKeyHome);
  Press(platform::kKeyLeft);
  EXPECT_EQ(Selection(), "0 0");
  EXPECT_EQ(Told("command typed"), Lines{});
}

TEST_F(Editor, RemembersItsColumnThroughAShorterLine) {
  MakeEditor(kId, u"abcd\nef\nghij");
  Select(3, 3);
  Press(platform::kKeyDown);
  EXPECT_EQ(Selection(), "7 7");
  Press(platform::kKeyDown);
  EXPECT_EQ(Selection(), "11 11");
  Press(platform::kKeyUp);
  Press(platform::kKeyUp);
  EXPECT_EQ(Selection(), "3 3");
}

TEST_F(Editor, StaysInItsFirstAndLastLine) {
  MakeEditor(kId, u"abcd\nefgh");
  Select(2, 2);
  Press(platform::kKeyUp);
  EXPECT_EQ(Selection(), "2 2");
  Select(7, 7);
  Press(platform::kKeyDown);
  EXPECT_EQ(Selection(), "7 7");
  EXPECT_EQ(Told("selection"), Lines{});
}

TEST_F(Editor, SelectsWithShift) {
  MakeEditor(kId, u"abcd\nef");
  Select(1, 1);
  PressShift(platform::kKeyRight);
  PressShift(platform::kKeyEnd);
  EXPECT_EQ(Selection(), "1 4");
  PressShift(platform::kKeyDown);
  EXPECT_EQ(Selection(), "1 7");
  hands::Type(u"x");
  EXPECT_EQ(Text(), u"ax");
}

TEST_F(Editor, LeavesASelectionAtTheEndThatTheArrowPointsTo) {
  MakeEditor(kId, u"abcdef");
  Select(2, 4);
  Press(platform::kKeyLeft);
  EXPECT_EQ(Selection(), "2 2");
  Select(2, 4);
  Press(platform::kKeyRight);
  EXPECT_EQ(Selection(), "4 4");
}

TEST_F(Editor, SelectsAllAndTypesOverIt) {
  MakeEditor(kId, u"abc\ndef");
  PressCtrl('A');
  EXPECT_EQ(Selection(), "0 7");
  hands::Type(u"x");
  EXPECT_EQ(Text(), u"x");
  platform::SelectAllText(kId);
  EXPECT_EQ(Selection(), "0 1");
}

TEST_F(Editor, ErasesALineEndAsOneCharacter) {
  MakeEditor(kId, u"a\nb");
  Select(2, 2);
  Press(platform::kKeyBackspace);
  EXPECT_EQ(Text(), u"ab");
  SetEditorText(kId, u"a\nb");
  Select(1, 1);
  Press(platform::kKeyDelete);
  EXPECT_EQ(Text(), u"ab");
}

TEST_F(Editor, TakesNothingFromTheUserWhereItIsReadOnly) {
  MakeEditor(kId, u"abc");
  platform::SetEditorReadOnly(kId, true);
  Forget();
  hands::Type(u"x\n");
  Press(platform::kKeyDelete);
  hands::CopyElsewhere(u"y");
  using platform::EditAction;
  for (const EditAction action : {EditAction::Paste, EditAction::Cut, EditAction::Delete}) {
    platform::SelectAllText(kId);
    platform::RunEditAction(kId, action);
  }
  EXPECT_EQ(Text(), u"abc");
  EXPECT_EQ(Told("command typed"), Lines{});
  EXPECT_EQ(hands::PasteElsewhere(), u"y");
  Select(0, 0);
  Press(platform::kKeyRight);
  EXPECT_EQ(Selection(), "1 1");
}

TEST_F(Editor, TakesTheProgramsTextWhereItIsReadOnly) {
  MakeEditor(kId, u"abc");
  platform::SetEditorReadOnly(kId, true);
  ReplaceSelection(kId, u"x", true);
  ReplaceRange(kId, {3, 4}, u"y");
  EXPECT_EQ(Text(), u"xaby");
  EXPECT_FALSE(platform::UndoEditor(kId));
  platform::SetEditorReadOnly(kId, false);
  EXPECT_TRUE(platform::UndoEditor(kId));
  hands::Type(u"z");
  EXPECT_EQ(Text().find(u'z') != std::u16string::npos, true);
}

TEST_F(Editor, IsLeftByShiftTabAndCtrlTabAndNotByTab) {
  MakeEditor(kId, u"");
  Make(1, platform::ControlKind::PushButton, u"b");
  Press(platform::kKeyTab);
  EXPECT_EQ(platform::FocusedId(), kId);
  PressShift(platform::kKeyTab);
  EXPECT_EQ(platform::FocusedId(), 1);
  platform::SetFocusTo(kId);
  PressCtrl(platform::kKeyTab);
  EXPECT_EQ(platform::FocusedId(), 1);
  EXPECT_EQ(Text(), u"\t");
}

TEST_F(Editor, IsLeftByTabWhereItIsReadOnly) {
  MakeEditor(kId, u"");
  Make(1, platform::ControlKind::PushButton, u"b");
  platform::SetEditorReadOnly(kId, true);
  Press(platform::kKeyTab);
  EXPECT_EQ(platform::FocusedId(), 1);
}

TEST_F(Editor, TakesAnotherTextWhileItTellsAChange) {
  MakeEditor(kId, u"");
  listening.command = [](int, int) {
    if (Text() == u"x") SetEditorText(kId, u"other");
  };
  hands::Type(u"x");
  EXPECT_EQ(Text(), u"other");
  EXPECT_EQ(Selection(), "0 0");
}

TEST_F(Editor, KeepsTheColoursOfLinesThatAreNotEdited) {
  MakeEditor(kId, u"one\ntwo\nthree");
  const platform::ColourRun run{0, 2, 0x2CD6DF, true};
  for (int line = 0; line < 3; ++line) platform::SetLineRuns(kId, line, &run, 1);
  Select(0, 0);
  hands::Type(u"x\n");
  platform::ColourRun back[2];
  ASSERT_EQ(platform::LineRuns(kId, 2, back, 2), 1);
  EXPECT_EQ(back[0].length, 2);
  EXPECT_EQ(back[0].colour, 0x2CD6DFu);
  EXPECT_TRUE(back[0].bold);
  ASSERT_EQ(platform::LineRuns(kId, 3, back, 2), 1);
}

TEST_F(Editor, TellsHowManyColoursALineHasAndHandsOutWhatFits) {
  MakeEditor(kId, u"one two\n");
  const platform::ColourRun runs[] = {{0, 3, 1, false}, {4, 3, 2, false}};
  platform::SetLineRuns(kId, 0, runs, 2);
  platform::ColourRun back{};
  EXPECT_EQ(platform::LineRuns(kId, 0, &back, 1), 2);
  EXPECT_EQ(back.colour, 1u);
  EXPECT_EQ(platform::LineRuns(kId, 1, &back, 1), 0);
  EXPECT_EQ(platform::LineRuns(kId, 2, &back, 1), 0);
  EXPECT_EQ(platform::LineRuns(kId, -1, &back, 1), 0);
  platform::SetLineRuns(kId, 0, runs, 0);
  EXPECT_EQ(platform::LineRuns(kId, 0, &back, 1), 0);
  platform::SetLineRuns(kId, 9, runs, 2);
  platform::SetLineRuns(kId, -1, runs, 2);
}

TEST_F(Editor, TakesBackATextThatWasLaidAsideWithItsColours) {
  MakeEditor(kId, u"one\ntwo");
  const platform::ColourRun run{0, 2, 0x2CD6DF, true};
  platform::SetLineRuns(kId, 1, &run, 1);
  hands::Type(u"x");
  const std::u16string first(Text());
  const std::uint64_t before = platform::EditorRevision(kId);
  platform::LayEditorTextAside(kId, 7);
  EXPECT_EQ(Text(), u"");
  EXPECT_EQ(platform::EditorLineCount(kId), 1);
  SetEditorText(kId, u"other\n1\n2\n3\n4\n5\n6\n7\n8\n9");
  platform::ScrollToLine(kId, 3);
  Select(2, 4);
  platform::LayEditorTextAside(kId, 8);
  Forget();
  ASSERT_TRUE(platform::TakeEditorText(kId, 7, first));
  EXPECT_EQ(Told("command selection typed"), (Lines{"command 300 768", "selection 300"}));
  EXPECT_EQ(Text(), first);
  EXPECT_EQ(Selection(), "0 0");
  EXPECT_EQ(platform::FirstVisibleLine(kId), 0);
  EXPECT_GT(platform::EditorRevision(kId), before);
  EXPECT_FALSE(platform::CanUndoEditor(kId));
  platform::ColourRun back{};
  EXPECT_EQ(platform::LineRuns(kId, 1, &back, 1), 1);
  EXPECT_EQ(back.colour, 0x2CD6DFu);
  hands::Type(u"y");
  EXPECT_EQ(Text(), u"y" + first);
  EXPECT_TRUE(platform::UndoEditor(kId));
  EXPECT_EQ(Text(), first);
  EXPECT_FALSE(platform::TakeEditorText(kId, 7, first));
}

TEST_F(Editor, TakesBackNoOtherTextThanTheOneThatIsWanted) {
  MakeEditor(kId, u"one");
  platform::LayEditorTextAside(kId, 7);
  SetEditorText(kId, u"two");
  EXPECT_FALSE(platform::TakeEditorText(kId, 6, u"one"));
  EXPECT_FALSE(platform::TakeEditorText(kId, 7, u"changed meanwhile"));
  EXPECT_FALSE(platform::TakeEditorText(kId, 7, u"one"));
  EXPECT_EQ(Text(), u"two");
}

TEST_F(Editor, ForgetsWhatLiesAsideWhenItIsTold) {
  MakeEditor(kId, u"one");
  platform::LayEditorTextAside(kId, 7);
  platform::DropEditorText(kId, 7);
  EXPECT_FALSE(platform::TakeEditorText(kId, 7, u"one"));
  for (const std::uint64_t number : {1, 2}) {
    SetEditorText(kId, u"one");
    platform::LayEditorTextAside(kId, number);
  }
  platform::DropEditorText(kId, 0);
  EXPECT_FALSE(platform::TakeEditorText(kId, 2, u"one"));
}

TEST_F(Editor, ShowsATextThatWasLaidAsideInTheWidthItHasNow) {
  std::u16string lines;
  for (int i = 0; i < 40; ++i) lines += u"line\r\n";
  MakeEditor(kId, lines);
  platform::LayEditorTextAside(kId, 7);
  SetEditorText(kId, u"x");
  platform::SetPlace(kId, {20, 20, 720, 130});
  ASSERT_TRUE(platform::TakeEditorText(kId, 7, lines));
  platform::ScrollToLine(kId, 20);
  EXPECT_EQ(platform::FirstVisibleLine(kId), 20);
  const auto top = [](int line) {
    return platform::PointOfPosition(kId, platform::EditorLineStart(kId, line)).y;
  };
  EXPECT_EQ(top(22), top(20) + 2 * platform::kEditorLineHeight);
}

// The changed lines of a text in the place of what stood there, as one who follows would put them.
std::u16string Followed(int id, const std::u16string& before, const platform::ChangedLines& lines) {
  std::vector<std::u16string> known(1);
  for (const char16_t c : before) {
    if (c == u'\n') {
      known.emplace_back();
    } else if (c != u'\r') {
      known.back() += c;
    }
  }
  const auto at =
      known.erase(known.begin() + lines.line, known.begin() + lines.line + lines.before);
  std::vector<std::u16string> put;
  for (int i = 0; i < lines.after; ++i) {
    put.push_back(platform::EditorLineText(id, lines.line + i));
  }
  known.insert(at, put.begin(), put.end());
  std::u16string text;
  for (const std::u16string& line : known) (text += line) += u"\r\n";
  return text.substr(0, text.size() - 2);
}

TEST_F(Editor, TellsWhichLinesChangedSinceARevision) {
  MakeEditor(kId, u"one\ntwo\nthree\nfour\nfive");
  const auto told = [this](const auto& act) {
    const std::u16string before = Text();
    const std::uint64_t since = platform::EditorRevision(kId);
    act();
    platform::ChangedLines lines;
    EXPECT_TRUE(platform::EditorChangedLines(kId, since, lines));
    EXPECT_EQ(Followed(kId, before, lines), Text());
    return std::to_string(lines.line) + " " + std::to_string(lines.before) + " " +
           std::to_string(lines.after);
  };
  const auto key = [](int code) {
    platform::KeyEvent event;
    event.key = code;
    hands::Press(event);
  };
  EXPECT_EQ(told([] {}), "0 0 0");
  Select(5, 5);
  EXPECT_EQ(told([] { hands::Type(u"x"); }), "1 1 1");
  EXPECT_EQ(told([] { hands::Type(u"\n"); }), "1 1 2");
  EXPECT_EQ(told([&] { key(platform::kKeyBackspace); }), "1 2 1");
  EXPECT_EQ(told([] { platform::UndoEditor(kId); }), "1 1 2");
  EXPECT_EQ(told([] { platform::RedoEditor(kId); }), "1 2 1");
  Select(2, 10);
  EXPECT_EQ(told([] { ReplaceSelection(kId, u"a\nb\nc\nd\ne", true); }), "0 3 5");
  EXPECT_EQ(told([] { platform::UndoEditor(kId); }), "0 5 3");
  // Several of them are told as one.
  EXPECT_EQ(told([] {
              ReplaceRange(kId, {0, 0}, u"z\n");
              ReplaceRange(kId, {platform::EditorLength(kId), platform::EditorLength(kId)}, u"!");
            }),
            "0 5 6");
}

TEST_F(Editor, TellsNoLinesWhereItGotATextAsAWholeOrTooMuchChanged) {
  MakeEditor(kId, u"one\ntwo");
  platform::ChangedLines lines;
  std::uint64_t since = platform::EditorRevision(kId);
  SetEditorText(kId, u"one\ntwo");
  EXPECT_FALSE(platform::EditorChangedLines(kId, since, lines));
  Select(0, 0);
  hands::Type(u"x");
  EXPECT_FALSE(platform::EditorChangedLines(kId, since, lines));
  EXPECT_FALSE(platform::EditorChangedLines(kId, platform::EditorRevision(kId) + 1, lines));
  since = platform::EditorRevision(kId);
  for (std::size_t i = 0; i < platform::kMaxKeptChanges; ++i) ReplaceRange(kId, {0, 0}, u"y");
  EXPECT_TRUE(platform::EditorChangedLines(kId, since, lines));
  ReplaceRange(kId, {0, 0}, u"y");
  EXPECT_FALSE(platform::EditorChangedLines(kId, since, lines));
  EXPECT_FALSE(platform::EditorChangedLines(99, 0, lines)) << "no such editor";
}

TEST_F(Editor, TakesTheColoursOfAllLinesAway) {
  MakeEditor(kId, u"one\ntwo");
  const platform::ColourRun run{0, 2, 0x2CD6DF, true};
  for (const int line : {0, 1}) platform::SetLineRuns(kId, line, &run, 1);
  platform::ClearLineRuns(kId);
  platform::ColourRun back{};
  for (const int line : {0, 1}) EXPECT_EQ(platform::LineRuns(kId, line, &back, 1), 0);
}

TEST_F(Editor, ColoursWithoutAChangeAnUndoStepOrACaretMove) {
  MakeEditor(kId, u"G1 X5\nM30");
  Select(2, 2);
  const platform::ColourRun run{0, 2, 0x2CD6DF, true};
  platform::HoldEditorRedraw(kId, true);
  platform::SetLineRuns(kId, 0, &run, 1);
  platform::SetLineRuns(kId, 1, &run, 1);
  platform::HoldEditorRedraw(kId, false);
  const platform::LineBand band{1, 0x123456};
  platform::SetLineBands(kId, &band, 1);
  platform::MarkEditorLine(kId, 1, 0x111111);
  EXPECT_FALSE(platform::CanUndoEditor(kId));
  EXPECT_EQ(Selection(), "2 2");
  EXPECT_EQ(Told("command selection typed"), Lines{});
}

}  // namespace
}  // namespace contract
