// What an edit line and a multi-line edit answer alike.

#include "contract/text_stages.h"

namespace contract {
namespace {

using platform::ControlKind;
using platform::EditAction;
using platform::RunEditAction;
using platform::SetText;
using platform::TextOf;

class EditOfAnyLines : public TypedText, public testing::WithParamInterface<ControlKind> {
 protected:
  void SetUp() override {
    Contract::SetUp();
    Make(1, GetParam());
  }
};

INSTANTIATE_TEST_SUITE_P(, EditOfAnyLines,
                         testing::Values(ControlKind::EditLine, ControlKind::MultiEdit),
                         [](const auto& asked) {
                           return asked.param == ControlKind::EditLine ? "One" : "Several";
                         });

TEST_P(EditOfAnyLines, WritesNothingWithCtrlOrAlt) {
  Start(u"");
  PressCtrl('B');
  PressAlt('B');
  EXPECT_EQ(TextOf(1), u"");
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_P(EditOfAnyLines, TakesATextBeyondItsLimitFromTheProgram) {
  Start(u"");
  platform::SetTextLimit(1, 3);
  SetText(1, u"longer");
  EXPECT_EQ(TextOf(1), u"longer");
  hands::Type(u"7");
  EXPECT_EQ(TextOf(1), u"longer");
  Press(platform::kKeyDelete);
  EXPECT_EQ(TextOf(1), u"onger");
}

TEST_P(EditOfAnyLines, LeavesASelectionAtTheEndThatTheArrowPointsTo) {
  Start(u"abcd");
  Press(platform::kKeyRight);
  PressShift(platform::kKeyRight);
  PressShift(platform::kKeyRight);
  Press(platform::kKeyLeft);
  EXPECT_EQ(Marked(1), u"a|bcd");
  Start(u"abcd");
  PressShift(platform::kKeyRight);
  PressShift(platform::kKeyRight);
  Press(platform::kKeyRight);
  EXPECT_EQ(Marked(1), u"ab|cd");
}

TEST_P(EditOfAnyLines, TakesAPasteBackAlone) {
  Start(u"");
  hands::Type(u"ab");
  hands::CopyElsewhere(u"12");
  RunEditAction(1, EditAction::Paste);
  RunEditAction(1, EditAction::Paste);
  hands::Type(u"c");
  EXPECT_EQ(TextOf(1), u"ab1212c");
  RunEditAction(1, EditAction::Undo);
  EXPECT_EQ(TextOf(1), u"ab1212");
  RunEditAction(1, EditAction::Undo);
  EXPECT_EQ(TextOf(1), u"ab12");
  RunEditAction(1, EditAction::Undo);
  EXPECT_EQ(TextOf(1), u"ab");
  RunEditAction(1, EditAction::Undo);
  EXPECT_EQ(TextOf(1), u"");
}

TEST_P(EditOfAnyLines, UndoesByItsKeys) {
  Start(u"");
  hands::Type(u"x");
  PressCtrl('Z');
  EXPECT_EQ(TextOf(1), u"");
  PressCtrl('Y');
  EXPECT_EQ(TextOf(1), u"x");
  PressAlt('Z');
  EXPECT_EQ(TextOf(1), u"");
  hands::Press({'Z', true, true, false});
  EXPECT_EQ(TextOf(1), u"x");
}

}  // namespace
}  // namespace contract
