// Edit lines: text, caret, limits, undo and what is told.

#include "contract/text_stages.h"

namespace contract {
namespace {

using platform::ControlKind;
using platform::EditAction;
using platform::RunEditAction;
using platform::SetText;
using platform::TextOf;

class EditLine : public TypedText {
 protected:
  void SetUp() override {
    Contract::SetUp();
    Make(1, ControlKind::EditLine);
  }
};

TEST_F(EditLine, HasItsCaretAtTheFrontOfATextThatTheProgramSets) {
  SetText(1, u"abc");
  EXPECT_EQ(Marked(1), u"|abc");
  SetText(1, u"xyz");
  EXPECT_EQ(Marked(1), u"|xyz");
}

TEST_F(EditLine, HasItsCaretAtTheFrontOfTheTextThatItIsMadeWith) {
  Make(2, ControlKind::EditLine, u"abc");
  EXPECT_EQ(TextOf(2), u"abc");
  EXPECT_EQ(Marked(2), u"|abc");
}

TEST_F(EditLine, KeepsItsCaretBehindWhatIsTyped) {
  Start(u"abc");
  hands::Type(u"xy");
  EXPECT_EQ(TextOf(1), u"xyabc");
  EXPECT_EQ(Marked(1), u"xy|abc");
}

TEST_F(EditLine, TellsTypingCharacterByCharacterAndSettingNever) {
  Start(u"");
  SetText(1, u"5");
  EXPECT_EQ(Told("command"), Lines{});
  hands::Type(u"ab");
  EXPECT_EQ(Told("key command"), (Lines{"key 1 A", "command 1 768", "key 1 B", "command 1 768"}));
}

TEST_F(EditLine, WritesSmallLettersAndWithShiftCapitalOnes) {
  Start(u"");
  Press('G');
  PressShift('G');
  EXPECT_EQ(TextOf(1), u"gG");
  EXPECT_EQ(Told("key"), (Lines{"key 1 G", "key 1 shift+G"}));
}

TEST_F(EditLine, TakesSignsAndLettersOutsideAscii) {
  Start(u"");
  hands::Type(u"-1.5(\u00B0");
  EXPECT_EQ(TextOf(1), u"-1.5(\u00B0");
}

TEST_F(EditLine, WritesNothingAtEnterAndEscape) {
  Start(u"abc");
  Press(platform::kKeyEnter);
  Press(platform::kKeyEscape);
  EXPECT_EQ(TextOf(1), u"abc");
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(EditLine, HoldsNoLineEndThatTheProgramSets) {
  SetText(1, u"a\r\nb\nc\rd");
  EXPECT_EQ(TextOf(1), u"abcd");
  SetText(1, u"12\r\n");
  EXPECT_EQ(TextOf(1), u"12");
}

TEST_F(EditLine, HoldsNoLineEndThatItIsMadeWith) {
  Make(2, ControlKind::EditLine, u"1\r\n2");
  EXPECT_EQ(TextOf(2), u"12");
}

TEST_F(EditLine, HoldsNoLineEndThatIsPasted) {
  Start(u"");
  hands::CopyElsewhere(u"a\r\nb\nc\rd\n");
  RunEditAction(1, EditAction::Paste);
  EXPECT_EQ(TextOf(1), u"abcd");
  EXPECT_EQ(Told("command"), Lines{"command 1 768"});
  EXPECT_EQ(Marked(1), u"abcd|");
}

TEST_F(EditLine, PastesByItsKeysAsByTheAction) {
  Start(u"");
  hands::CopyElsewhere(u"1\r\n2");
  PressCtrl('V');
  EXPECT_EQ(TextOf(1), u"12");
  PressAlt('V');
  EXPECT_EQ(TextOf(1), u"1212");
  RunEditAction(1, EditAction::Undo);
  EXPECT_EQ(TextOf(1), u"12");
}

TEST_F(EditLine, IsOnlyReadWhereItWasMadeSo) {
  platform::ControlSpec spec;
  spec.id = 2;
  spec.kind = ControlKind::EditLine;
  spec.text = u"12";
  spec.readOnly = true;
  ASSERT_TRUE(platform::MakeControl(spec));
  platform::SetPlace(2, {0, 100, 100, 130});
  platform::SetVisible(2, true);
  platform::SetFocusTo(2);
  EXPECT_EQ(platform::FocusedId(), 2);
  platform::SelectAllText(2);
  hands::CopyElsewhere(u"9");
  hands::Type(u"7");
  Press(platform::kKeyBackspace);
  Press(platform::kKeyDelete);
  PressCtrl('V');
  PressCtrl('X');
  PressCtrl('Z');
  for (const EditAction action : {EditAction::Cut, EditAction::Paste, EditAction::Delete,
                                  EditAction::Undo, EditAction::Redo}) {
    RunEditAction(2, action);
  }
  EXPECT_EQ(TextOf(2), u"12");
  EXPECT_EQ(Told("command"), Lines{});
  SetText(2, u"34");
  EXPECT_EQ(TextOf(2), u"34");
  platform::SelectAllText(2);
  RunEditAction(2, EditAction::Copy);
  platform::SetFocusTo(1);
  Start(u"");
  RunEditAction(1, EditAction::Paste);
  EXPECT_EQ(TextOf(1), u"34");
}

TEST_F(EditLine, TellsNothingAboutAnEmptyPaste) {
  Start(u"abc");
  platform::SelectAllText(1);
  RunEditAction(1, EditAction::Paste);
  EXPECT_EQ(TextOf(1), u"abc");
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(EditLine, TakesNoMoreThanItsLimitFromTheUser) {
  Start(u"");
  platform::SetTextLimit(1, 3);
  hands::Type(u"12345");
  EXPECT_EQ(TextOf(1), u"123");
  EXPECT_EQ(Told("command").size(), 3u);
}

TEST_F(EditLine, PastesAsMuchAsTheLimitLeaves) {
  Start(u"");
  platform::SetTextLimit(1, 4);
  hands::Type(u"1");
  hands::CopyElsewhere(u"2\r\n345678");
  RunEditAction(1, EditAction::Paste);
  EXPECT_EQ(TextOf(1), u"1234");
}

TEST_F(EditLine, KeepsATextThatALaterLimitIsTooSmallFor) {
  Start(u"longer");
  platform::SetTextLimit(1, 3);
  EXPECT_EQ(TextOf(1), u"longer");
}

TEST_F(EditLine, TypesOverASelectionAtItsLimit) {
  Start(u"abc");
  platform::SetTextLimit(1, 3);
  platform::SelectAllText(1);
  hands::Type(u"x");
  EXPECT_EQ(TextOf(1), u"x");
}

TEST_F(EditLine, HasNoLimitAtZeroAndBelow) {
  Start(u"");
  platform::SetTextLimit(1, 2);
  platform::SetTextLimit(1, 0);
  hands::Type(u"123");
  platform::SetTextLimit(1, -1);
  hands::Type(u"4");
  EXPECT_EQ(TextOf(1), u"1234");
}

TEST_F(EditLine, TakesThirtyTwoThousandUnitsWithoutALimit) {
  Start(u"");
  hands::CopyElsewhere(std::u16string(40000, u'x'));
  RunEditAction(1, EditAction::Paste);
  EXPECT_EQ(TextOf(1).size(), 32767u);
}

TEST_F(EditLine, SelectsAllAndTypesOverIt) {
  Start(u"abc");
  platform::SelectAllText(1);
  hands::Type(u"x");
  EXPECT_EQ(TextOf(1), u"x");
  Start(u"abc");
  PressCtrl('A');
  hands::Type(u"y");
  EXPECT_EQ(TextOf(1), u"y");
}

TEST_F(EditLine, ErasesBeforeAndBehindItsCaret) {
  Start(u"abcd");
  Press(platform::kKeyRight);
  Press(platform::kKeyRight);
  Press(platform::kKeyBackspace);
  EXPECT_EQ(TextOf(1), u"acd");
  Press(platform::kKeyDelete);
  EXPECT_EQ(TextOf(1), u"ad");
  EXPECT_EQ(Told("command"), (Lines{"command 1 768", "command 1 768"}));
}

TEST_F(EditLine, TellsNothingWhereThereIsNothingToErase) {
  Start(u"a");
  Press(platform::kKeyBackspace);
  Press(platform::kKeyEnd);
  Press(platform::kKeyDelete);
  RunEditAction(1, EditAction::Delete);
  EXPECT_EQ(TextOf(1), u"a");
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(EditLine, WalksToItsEndsAndStops) {
  Start(u"abc");
  Press(platform::kKeyEnd);
  Press(platform::kKeyRight);
  EXPECT_EQ(Marked(1), u"abc|");
  Press(platform::kKeyHome);
  Press(platform::kKeyLeft);
  EXPECT_EQ(Marked(1), u"|abc|");
}

TEST_F(EditLine, SelectsWithShift) {
  Start(u"abc");
  PressShift(platform::kKeyRight);
  PressShift(platform::kKeyRight);
  EXPECT_EQ(Marked(1), u"|c");
  PressShift(platform::kKeyEnd);
  EXPECT_EQ(Marked(1), u"||");
}

TEST_F(EditLine, StaysWhereItIsAtUpAndDown) {
  Start(u"abc");
  Press(platform::kKeyRight);
  Press(platform::kKeyUp);
  Press(platform::kKeyDown);
  EXPECT_EQ(TextOf(1), u"abc");
  EXPECT_EQ(platform::FocusedId(), 1);
}

TEST_F(EditLine, TakesARunOfTypedCharactersBackAtOnce) {
  Start(u"abc");
  hands::Type(u"xyz");
  RunEditAction(1, EditAction::Undo);
  EXPECT_EQ(TextOf(1), u"abc");
  RunEditAction(1, EditAction::Redo);
  EXPECT_EQ(TextOf(1), u"xyzabc");
}

TEST_F(EditLine, PutsTheCaretWhereAnUndoOrRedoChangedTheText) {
  Start(u"abc");
  Press(platform::kKeyRight);
  hands::Type(u"xy");
  Press(platform::kKeyEnd);
  RunEditAction(1, EditAction::Undo);
  hands::Type(u"|");
  EXPECT_EQ(TextOf(1), u"a|bc");
  RunEditAction(1, EditAction::Undo);
  EXPECT_EQ(TextOf(1), u"abc");
}

TEST_F(EditLine, EndsARunOfTypingWhereTheCaretIsMoved) {
  Start(u"abc");
  hands::Type(u"x");
  Press(platform::kKeyEnd);
  hands::Type(u"y");
  RunEditAction(1, EditAction::Undo);
  EXPECT_EQ(TextOf(1), u"xabc");
  RunEditAction(1, EditAction::Undo);
  EXPECT_EQ(TextOf(1), u"abc");
}

TEST_F(EditLine, TakesARunOfErasingBackAtOnce) {
  Start(u"abcdef");
  Press(platform::kKeyEnd);
  Press(platform::kKeyBackspace);
  Press(platform::kKeyBackspace);
  RunEditAction(1, EditAction::Undo);
  EXPECT_EQ(TextOf(1), u"abcdef");
  Press(platform::kKeyHome);
  Press(platform::kKeyDelete);
  Press(platform::kKeyDelete);
  RunEditAction(1, EditAction::Undo);
  EXPECT_EQ(TextOf(1), u"abcdef");
}

TEST_F(EditLine, BringsBackWhatWasTypedOver) {
  Start(u"abc");
  platform::SelectAllText(1);
  hands::Type(u"x");
  while (TextOf(1) != u"abc" && !Told("command").empty()) {
    Forget();
    RunEditAction(1, EditAction::Undo);
  }
  EXPECT_EQ(TextOf(1), u"abc");
}

TEST_F(EditLine, TellsAnUndoAndNoneWithoutAStep) {
  Start(u"");
  hands::Type(u"x");
  Forget();
  RunEditAction(1, EditAction::Undo);
  EXPECT_EQ(Told("command"), Lines{"command 1 768"});
  RunEditAction(1, EditAction::Undo);
  EXPECT_EQ(Told("command"), Lines{"command 1 768"});
}

TEST_F(EditLine, HasNothingToUndoInATextThatTheProgramSets) {
  Start(u"");
  hands::Type(u"x");
  SetText(1, u"abc");
  RunEditAction(1, EditAction::Undo);
  EXPECT_EQ(TextOf(1), u"abc");
}

TEST_F(EditLine, TakesNoKeyThatTheApplicationTook) {
  Start(u"");
  listening.key = [](int, const platform::KeyEvent& key) { return key.key == 'A'; };
  hands::Type(u"abc");
  EXPECT_EQ(TextOf(1), u"bc");
}

TEST_F(EditLine, TakesTheProgramsTextWhileItTellsAChange) {
  Start(u"");
  listening.command = [](int id, int) {
    if (TextOf(id) == u"x") SetText(id, u"other");
  };
  hands::Type(u"x");
  EXPECT_EQ(TextOf(1), u"other");
  EXPECT_EQ(Told("command"), Lines{"command 1 768"});
}

TEST_F(EditLine, ComesWithAllOfItsTextSelectedByTab) {
  Make(2, ControlKind::PushButton, u"b");
  SetText(1, u"abc");
  platform::SetFocusTo(2);
  Press(platform::kKeyTab);
  ASSERT_EQ(platform::FocusedId(), 1);
  hands::Type(u"x");
  EXPECT_EQ(TextOf(1), u"x");
}

TEST_F(EditLine, KeepsItsCaretWhereTheProgramGivesItTheKeyboard) {
  Start(u"abc");
  hands::Type(u"x");
  EXPECT_EQ(TextOf(1), u"xabc");
}

TEST_F(EditLine, ForgetsItsSelectionWithTheKeyboard) {
  Make(2, ControlKind::PushButton, u"b");
  Start(u"abc");
  platform::SelectAllText(1);
  platform::SetFocusTo(2);
  platform::SetFocusTo(1);
  EXPECT_EQ(Marked(1), u"abc|");
}

TEST_F(EditLine, KeepsWhatItHoldsInOneLineOfAnyCharacters) {
  SetText(1, u"a\tb\u00A0c\u2014d");
  EXPECT_EQ(TextOf(1), u"a\tb\u00A0c\u2014d");
}

}  // namespace
}  // namespace contract
