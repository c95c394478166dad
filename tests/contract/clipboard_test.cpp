// The clipboard between controls and to and from other programs.

#include "contract/contract.h"

namespace contract {
namespace {

using platform::ControlKind;
using platform::EditAction;
using platform::RunEditAction;
using platform::TextOf;

constexpr int kLine = 1;
constexpr int kArea = 2;
constexpr int kLog = 3;
constexpr int kEditor = 300;

class Clipboard : public Contract {
 protected:
  void SetUp() override {
    Contract::SetUp();
    Make(kLine, ControlKind::EditLine);
    Make(kArea, ControlKind::MultiEdit);
    Make(kLog, ControlKind::Log);
    MakeEditor(kEditor, u"");
    platform::SetPlace(kEditor, {20, 500, 420, 610});
  }
  static void SetAny(int id, std::u16string_view text) {
    if (id == kEditor) {
      platform::SetEditorText(id, text);
    } else {
      platform::SetText(id, text);
    }
  }
};

TEST_F(Clipboard, GetsWhatIsCopiedAndLeavesTheText) {
  for (const int id : {kLine, kArea, kLog, kEditor}) {
    SetAny(id, u"abc");
    platform::SelectAllText(id);
    Forget();
    RunEditAction(id, EditAction::Copy);
    EXPECT_EQ(hands::PasteElsewhere(), u"abc") << id;
    EXPECT_EQ(TextOf(id), u"abc") << id;
    EXPECT_EQ(Told("command"), Lines{}) << id;
    hands::CopyElsewhere(u"");
  }
}

TEST_F(Clipboard, GetsWhatIsCutOutOfTheText) {
  for (const int id : {kLine, kArea, kEditor}) {
    SetAny(id, u"abc");
    platform::SelectAllText(id);
    Forget();
    RunEditAction(id, EditAction::Cut);
    EXPECT_EQ(hands::PasteElsewhere(), u"abc") << id;
    EXPECT_EQ(TextOf(id), u"") << id;
    EXPECT_EQ(Told("command"), Lines{"command " + std::to_string(id) + " 768"});
    RunEditAction(id, EditAction::Undo);
    EXPECT_EQ(TextOf(id), u"abc") << id;
  }
}

TEST_F(Clipboard, KeepsWhatItHasWhereNothingIsSelected) {
  hands::CopyElsewhere(u"kept");
  for (const int id : {kLine, kArea, kLog, kEditor}) {
    SetAny(id, u"abc");
    RunEditAction(id, EditAction::Copy);
    RunEditAction(id, EditAction::Cut);
    EXPECT_EQ(TextOf(id), u"abc") << id;
  }
  EXPECT_EQ(hands::PasteElsewhere(), u"kept");
}

TEST_F(Clipboard, CarriesLinesBetweenControls) {
  SetAny(kEditor, u"G0 X1\r\nM30");
  platform::SelectAllText(kEditor);
  RunEditAction(kEditor, EditAction::Copy);
  EXPECT_EQ(hands::PasteElsewhere(), u"G0 X1\nM30");
  RunEditAction(kArea, EditAction::Paste);
  EXPECT_EQ(TextOf(kArea), u"G0 X1\r\nM30");
  RunEditAction(kLine, EditAction::Paste);
  EXPECT_EQ(TextOf(kLine), u"G0 X1M30");
  platform::SelectAllText(kArea);
  RunEditAction(kArea, EditAction::Cut);
  SetAny(kEditor, u"");
  RunEditAction(kEditor, EditAction::Paste);
  EXPECT_EQ(TextOf(kEditor), u"G0 X1\r\nM30");
}

TEST_F(Clipboard, CarriesCharactersUnchanged) {
  for (const int id : {kLine, kArea, kLog, kEditor}) {
    SetAny(id, u"a\tb\u00A0c\u2014d");
    platform::SelectAllText(id);
    RunEditAction(id, EditAction::Copy);
    EXPECT_EQ(hands::PasteElsewhere(), u"a\tb\u00A0c\u2014d") << id;
    SetAny(kEditor, u"");
    RunEditAction(kEditor, EditAction::Paste);
    EXPECT_EQ(TextOf(kEditor), u"a\tb\u00A0c\u2014d") << id;
    SetAny(kArea, u"");
    RunEditAction(kArea, EditAction::Paste);
    EXPECT_EQ(TextOf(kArea), u"a\tb\u00A0c\u2014d") << id;
  }
}

TEST_F(Clipboard, IsReachedByKeys) {
  platform::SetText(kLine, u"abc");
  platform::SetFocusTo(kLine);
  PressCtrl('A');
  PressCtrl('X');
  EXPECT_EQ(TextOf(kLine), u"");
  PressCtrl('V');
  PressAlt('V');
  EXPECT_EQ(TextOf(kLine), u"abcabc");
  PressCtrl('A');
  PressAlt('C');
  platform::SetFocusTo(kEditor);
  PressAlt('V');
  EXPECT_EQ(TextOf(kEditor), u"abcabc");
}

TEST_F(Clipboard, IsReachedByCutWithShiftAndDelete) {
  for (const int id : {kLine, kArea, kEditor}) {
    SetAny(id, u"abc");
    platform::SetFocusTo(id);
    platform::SelectAllText(id);
    PressShift(platform::kKeyDelete);
    EXPECT_EQ(TextOf(id), u"") << id;
    EXPECT_EQ(hands::PasteElsewhere(), u"abc") << id;
  }
}

TEST_F(Clipboard, PastesOverASelection) {
  hands::CopyElsewhere(u"xy");
  for (const int id : {kLine, kArea, kEditor}) {
    SetAny(id, u"abc");
    platform::SelectAllText(id);
    RunEditAction(id, EditAction::Paste);
    EXPECT_EQ(TextOf(id), u"xy") << id;
    EXPECT_EQ(Marked(id), u"xy|") << id;
    hands::CopyElsewhere(u"xy");
  }
}

TEST_F(Clipboard, HasNothingToPasteWhileItIsEmpty) {
  for (const int id : {kLine, kArea, kEditor}) {
    SetAny(id, u"abc");
    platform::SelectAllText(id);
    Forget();
    RunEditAction(id, EditAction::Paste);
    EXPECT_EQ(TextOf(id), u"abc") << id;
    EXPECT_EQ(Told("command"), Lines{}) << id;
  }
}

TEST_F(Clipboard, DeletesWithoutIt) {
  hands::CopyElsewhere(u"kept");
  for (const int id : {kLine, kArea, kEditor}) {
    SetAny(id, u"abc");
    RunEditAction(id, EditAction::Delete);
    EXPECT_EQ(TextOf(id), u"bc") << id;
    platform::SelectAllText(id);
    RunEditAction(id, EditAction::Delete);
    EXPECT_EQ(TextOf(id), u"") << id;
  }
  EXPECT_EQ(hands::PasteElsewhere(), u"kept");
}

TEST_F(Clipboard, WorksOnNoOtherControl) {
  Make(4, ControlKind::PushButton, u"b");
  hands::CopyElsewhere(u"kept");
  for (const int id : {4, 99}) {
    EXPECT_FALSE(platform::IsTextControl(id));
    RunEditAction(id, EditAction::SelectAll);
    RunEditAction(id, EditAction::Copy);
    RunEditAction(id, EditAction::Paste);
  }
  EXPECT_EQ(TextOf(4), u"b");
  EXPECT_EQ(hands::PasteElsewhere(), u"kept");
  for (const int id : {kLine, kArea, kLog, kEditor}) EXPECT_TRUE(platform::IsTextControl(id));
}

}  // namespace
}  // namespace contract
