// Multi-line edits and logs: lines, caret, limits, appending, undo and what is told.

#include "contract/text_stages.h"

namespace contract {
namespace {

using platform::AppendText;
using platform::ControlKind;
using platform::EditAction;
using platform::RunEditAction;
using platform::SetText;
using platform::TextOf;

class TextArea : public TypedText {
 protected:
  void SetUp() override {
    Contract::SetUp();
    Make(1, ControlKind::MultiEdit);
    Make(2, ControlKind::Log);
  }
};

TEST_F(TextArea, HandsOutCrLfWhateverLineEndsItGets) {
  for (const int id : {1, 2}) {
    SetText(id, u"a\r\nb\nc\rd\r\n");
    EXPECT_EQ(TextOf(id), u"a\r\nb\r\nc\r\nd\r\n");
    SetText(id, u"\n\r");
    EXPECT_EQ(TextOf(id), u"\r\n\r\n");
    SetText(id, u"");
    EXPECT_EQ(TextOf(id), u"");
  }
}

TEST_F(TextArea, KeepsCharactersThatAreNoLineEnds) {
  for (const int id : {1, 2}) {
    SetText(id, u"a\tb\u00A0c\u2014d");
    EXPECT_EQ(TextOf(id), u"a\tb\u00A0c\u2014d");
  }
}

TEST_F(TextArea, HoldsAMarkInThePlaceOfWhatNoToolkitHolds) {
  for (const int id : {1, 2}) {
    SetText(id, u"a\u2028b\u2029c");
    EXPECT_EQ(TextOf(id), u"a\uFFFDb\uFFFDc");
  }
}

TEST_F(TextArea, HasItsCaretAtTheFrontOfATextThatTheProgramSets) {
  SetText(1, u"abc\nd");
  EXPECT_EQ(Marked(1), u"|abc\r\nd");
  SetText(1, u"xyz");
  EXPECT_EQ(Marked(1), u"|xyz");
}

TEST_F(TextArea, PastesEveryLineEndAsALineEnd) {
  Start(u"");
  hands::CopyElsewhere(u"a\r\nb\nc\rd");
  RunEditAction(1, EditAction::Paste);
  EXPECT_EQ(TextOf(1), u"a\r\nb\r\nc\r\nd");
  EXPECT_EQ(Told("command"), Lines{"command 1 768"});
  EXPECT_EQ(Marked(1), u"a\r\nb\r\nc\r\nd|");
}

TEST_F(TextArea, TypesLinesAndTellsEachKey) {
  Start(u"");
  hands::Type(u"a\nb");
  EXPECT_EQ(TextOf(1), u"a\r\nb");
  EXPECT_EQ(Told("command").size(), 3u);
}

TEST_F(TextArea, MakesShiftEnterALineEnd) {
  Start(u"");
  PressShift(platform::kKeyEnter);
  EXPECT_EQ(TextOf(1), u"\r\n");
}

TEST_F(TextArea, TellsNoTextThatTheProgramSets) {
  SetText(1, u"a");
  AppendText(1, u"b");
  SetText(2, u"a");
  AppendText(2, u"b");
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(TextArea, AppendsLinesAtItsEnd) {
  for (const int id : {1, 2}) {
    SetText(id, u"Ready.\r\n");
    AppendText(id, u"one\r\n");
    AppendText(id, u"two\nthree");
    AppendText(id, u"");
    EXPECT_EQ(TextOf(id), u"Ready.\r\none\r\ntwo\r\nthree");
  }
}

TEST_F(TextArea, KeepsItsCaretWhereTheProgramAppends) {
  Start(u"abc");
  Press(platform::kKeyRight);
  AppendText(1, u"def");
  EXPECT_EQ(Marked(1), u"a|bcdef");
}

TEST_F(TextArea, KeepsACaretAtTheEndInFrontOfWhatIsAppended) {
  Start(u"abc");
  PressCtrl(platform::kKeyEnd);
  AppendText(1, u"def");
  EXPECT_EQ(Marked(1), u"abc|def");
}

TEST_F(TextArea, KeepsItsSelectionWhereTheProgramAppends) {
  Start(u"abc");
  platform::SelectAllText(1);
  AppendText(1, u"def");
  EXPECT_EQ(Marked(1), u"|def");
}

TEST_F(TextArea, KeepsTheSelectionOfALogForCopying) {
  SetText(2, u"one\r\ntwo");
  platform::SelectAllText(2);
  AppendText(2, u"\r\nthree");
  RunEditAction(2, EditAction::Copy);
  EXPECT_EQ(hands::PasteElsewhere(), u"one\ntwo");
}

TEST_F(TextArea, UndoesNothingFromBeforeAnAppend) {
  Start(u"");
  hands::Type(u"x");
  AppendText(1, u"y");
  RunEditAction(1, EditAction::Undo);
  EXPECT_EQ(TextOf(1), u"xy");
}

TEST_F(TextArea, AppendsToNothingElse) {
  Make(3, ControlKind::EditLine, u"a");
  Make(4, ControlKind::Label, u"a");
  AppendText(3, u"b");
  AppendText(4, u"b");
  EXPECT_EQ(TextOf(3), u"a");
  EXPECT_EQ(TextOf(4), u"a");
}

TEST_F(TextArea, CountsALineEndAsTwoUnitsOfItsLimit) {
  Start(u"");
  platform::SetTextLimit(1, 5);
  hands::Type(u"ab\ncdef");
  EXPECT_EQ(TextOf(1), u"ab\r\nc");
}

TEST_F(TextArea, WritesNoLineEndThatIsHalfBeyondItsLimit) {
  Start(u"");
  platform::SetTextLimit(1, 3);
  hands::Type(u"ab\nc");
  EXPECT_EQ(TextOf(1), u"abc");
}

TEST_F(TextArea, PastesAsMuchAsTheLimitLeaves) {
  Start(u"");
  platform::SetTextLimit(1, 6);
  hands::CopyElsewhere(u"ab\ncdefg");
  RunEditAction(1, EditAction::Paste);
  EXPECT_EQ(TextOf(1), u"ab\r\ncd");
  SetText(1, u"");
  platform::SetTextLimit(1, 3);
  RunEditAction(1, EditAction::Paste);
  EXPECT_EQ(TextOf(1), u"ab");
}

TEST_F(TextArea, TellsNothingAtItsLimit) {
  Start(u"abc");
  platform::SetTextLimit(1, 3);
  hands::Type(u"d\n");
  hands::CopyElsewhere(u"d");
  RunEditAction(1, EditAction::Paste);
  EXPECT_EQ(TextOf(1), u"abc");
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(TextArea, WalksByCharactersOverALineEndAsOne) {
  Start(u"a\nb");
  Press(platform::kKeyRight);
  Press(platform::kKeyRight);
  EXPECT_EQ(Marked(1), u"a\r\n|b");
  Press(platform::kKeyBackspace);
  Press(platform::kKeyBackspace);
  EXPECT_EQ(TextOf(1), u"ab");
}

TEST_F(TextArea, WalksByLines) {
  Start(u"abc\nd\nefg");
  Press(platform::kKeyEnd);
  Press(platform::kKeyDown);
  EXPECT_EQ(Marked(1), u"abc\r\nd|\r\nefg");
  Press(platform::kKeyHome);
  Press(platform::kKeyUp);
  EXPECT_EQ(Marked(1), u"|abc\r\nd|\r\nefg");
  PressCtrl(platform::kKeyEnd);
  EXPECT_EQ(Marked(1), u"|abc\r\nd|\r\nefg|");
  PressCtrl(platform::kKeyHome);
  EXPECT_EQ(Marked(1), u"||abc\r\nd|\r\nefg|");
}

TEST_F(TextArea, IsLeftByTabAndShiftTab) {
  Start(u"a");
  Press(platform::kKeyTab);
  EXPECT_EQ(platform::FocusedId(), 2);
  PressShift(platform::kKeyTab);
  EXPECT_EQ(platform::FocusedId(), 1);
  EXPECT_EQ(TextOf(1), u"a");
}

TEST_F(TextArea, UndoesTypingAndPasting) {
  Start(u"");
  hands::Type(u"ab");
  hands::CopyElsewhere(u"12\n3");
  RunEditAction(1, EditAction::Paste);
  RunEditAction(1, EditAction::Undo);
  EXPECT_EQ(TextOf(1), u"ab");
  RunEditAction(1, EditAction::Undo);
  EXPECT_EQ(TextOf(1), u"");
  RunEditAction(1, EditAction::Redo);
  EXPECT_EQ(TextOf(1), u"ab");
}

TEST_F(TextArea, EndsARunOfTypingAtALineEnd) {
  Start(u"");
  hands::Type(u"ab\ncd");
  RunEditAction(1, EditAction::Undo);
  EXPECT_EQ(TextOf(1), u"ab\r\n");
  RunEditAction(1, EditAction::Undo);
  EXPECT_EQ(TextOf(1), u"ab");
}

TEST_F(TextArea, TakesNothingFromTheUserAsALog) {
  SetText(2, u"one");
  platform::SetFocusTo(2);
  Forget();
  hands::Type(u"x");
  Press(platform::kKeyBackspace);
  Press(platform::kKeyDelete);
  hands::CopyElsewhere(u"z");
  for (const EditAction action : {EditAction::Paste, EditAction::Cut, EditAction::Delete,
                                  EditAction::Undo, EditAction::Redo}) {
    platform::SelectAllText(2);
    RunEditAction(2, action);
  }
  EXPECT_EQ(TextOf(2), u"one");
  EXPECT_EQ(Told("command"), Lines{});
  EXPECT_EQ(hands::PasteElsewhere(), u"z");
}

TEST_F(TextArea, TellsADoubleClickAndEnterOnALineOfALog) {
  SetText(2, u"one\r\ntwo\r\nthree\r\n");
  platform::SetFocusTo(2);
  PressCtrl(platform::kKeyHome);
  EXPECT_EQ(platform::LogCaretLine(2), 0);
  Press(platform::kKeyDown);
  Press(platform::kKeyDown);
  Forget();
  Press(platform::kKeyEnter);
  EXPECT_EQ(Told("command"), Lines{"command 2 2"});
  EXPECT_EQ(platform::LogCaretLine(2), 2);
  for (const int id : {1, 99}) EXPECT_EQ(platform::LogCaretLine(id), -1);
}

TEST_F(TextArea, ScrollsToItsFirstLineAndLeavesTextAndCaret) {
  platform::SetFocusTo(2);
  for (int line = 0; line < 200; ++line) AppendText(2, u"line\r\n");
  PressCtrl(platform::kKeyHome);
  Press(platform::kKeyDown);
  AppendText(2, u"last");
  const std::u16string text = TextOf(2);
  Forget();
  platform::ScrollToTop(2);
  EXPECT_EQ(TextOf(2), text);
  EXPECT_EQ(platform::LogCaretLine(2), 1);
  EXPECT_EQ(Told("command selection"), Lines{});
}

TEST_F(TextArea, ColoursALineOfALogAndLeavesItsTextAndItsCaret) {
  SetText(2, u"one\r\ntwo\r\n");
  platform::SetFocusTo(2);
  PressCtrl(platform::kKeyHome);
  Press(platform::kKeyDown);
  Forget();
  for (const int line : {-1, 0, 1, 2, 9}) platform::SetLogLineColour(2, line, 0xFF6473);
  for (const int id : {1, 99}) platform::SetLogLineColour(id, 0, 0xFF6473);
  EXPECT_EQ(TextOf(2), u"one\r\ntwo\r\n");
  EXPECT_EQ(platform::LogCaretLine(2), 1);
  AppendText(2, u"three\r\n");
  EXPECT_EQ(TextOf(2), u"one\r\ntwo\r\nthree\r\n");
  EXPECT_EQ(platform::LogCaretLine(2), 1);
  EXPECT_EQ(Told("command selection"), Lines{});
}

TEST_F(TextArea, TakesTheKeyboardAsALog) {
  Click(2);
  EXPECT_EQ(platform::FocusedId(), 2);
  Press('A');
  EXPECT_EQ(Told("key"), Lines{"key 2 A"});
}

}  // namespace
}  // namespace contract
