// Push buttons, check boxes and labels: captions, states, clicks by mouse and keys.

#include "contract/contract.h"

namespace contract {
namespace {

using platform::ControlKind;
using platform::IsChecked;
using platform::SetChecked;
using platform::SetText;
using platform::TextOf;

constexpr int kButton = 101;
constexpr int kCheck = 102;
constexpr int kLabel = 103;

class Buttons : public Contract {
 protected:
  void SetUp() override {
    Contract::SetUp();
    Make(kButton, ControlKind::PushButton, u"NEW");
    Make(kCheck, ControlKind::CheckBox, u"Whole word");
    Make(kLabel, ControlKind::Label, u"Feed");
    Forget();
  }
};

TEST_F(Buttons, TellTheirClickOnceWithTheKeyboardBeforeIt) {
  Click(kButton);
  EXPECT_EQ(Told("gained command"), (Lines{"gained 101", "command 101 0"}));
  Click(kButton);
  EXPECT_EQ(Told("command").size(), 2u);
}

TEST_F(Buttons, TurnACheckBoxOverBeforeItIsTold) {
  std::vector<bool> seen;
  listening.command = [&seen](int id, int) { seen.push_back(IsChecked(id)); };
  Click(kCheck);
  Click(kCheck);
  EXPECT_EQ(seen, (std::vector<bool>{true, false}));
  EXPECT_EQ(Told("command"), (Lines{"command 102 0", "command 102 0"}));
}

TEST_F(Buttons, TellWhereThePointerClickedThemAndNothingOfKeys) {
  std::vector<int> seen;
  listening.command = [&seen](int, int) { seen.push_back(platform::ClickedAt()); };
  hands::ClickAt(kButton, 7, 5);
  Press(platform::kKeySpace);
  Press(platform::kKeyEnter);
  hands::Assist(kButton);
  hands::ClickAt(kButton, 9, 5);
  EXPECT_EQ(seen, (std::vector<int>{7, -1, -1, -1, 9}));
  EXPECT_EQ(platform::ClickedAt(), -1);
}

TEST_F(Buttons, ArePressedBySpace) {
  platform::SetFocusTo(kButton);
  Press(platform::kKeySpace);
  platform::SetFocusTo(kCheck);
  Press(platform::kKeySpace);
  EXPECT_TRUE(IsChecked(kCheck));
  EXPECT_EQ(Told("key command"),
            (Lines{"key 101 259", "command 101 0", "key 102 259", "command 102 0"}));
}

TEST_F(Buttons, ArePressedByEnterAndACheckBoxIsNot) {
  platform::SetFocusTo(kButton);
  Press(platform::kKeyEnter);
  platform::SetFocusTo(kCheck);
  Press(platform::kKeyEnter);
  EXPECT_FALSE(IsChecked(kCheck));
  EXPECT_EQ(Told("command"), Lines{"command 101 0"});
}

TEST_F(Buttons, AreNotPressedByOtherKeysOrWithCtrlOrAlt) {
  platform::SetFocusTo(kButton);
  Press('N');
  Press(platform::kKeyEscape);
  EXPECT_EQ(Told("key command"), (Lines{"key 101 N", "key 101 258"}));
}

TEST_F(Buttons, HearNoKeyThatTheApplicationTook) {
  platform::SetFocusTo(kButton);
  listening.key = [](int, const platform::KeyEvent&) { return true; };
  Press(platform::kKeySpace);
  Press(platform::kKeyEnter);
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(Buttons, HandTheKeyboardOnByTheArrows) {
  platform::SetFocusTo(kButton);
  Press(platform::kKeyRight);
  EXPECT_EQ(platform::FocusedId(), kCheck);
  Press(platform::kKeyLeft);
  EXPECT_EQ(platform::FocusedId(), kButton);
  Press(platform::kKeyDown);
  EXPECT_EQ(platform::FocusedId(), kCheck);
  Press(platform::kKeyUp);
  EXPECT_EQ(platform::FocusedId(), kButton);
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(Buttons, AreNotClickedByTheRightOrTheMiddleButton) {
  Click(kButton, {false, false, platform::PointerButton::Right});
  Click(kCheck, {false, false, platform::PointerButton::Middle});
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(Buttons, AreNotClickedWhereThePointerLeavesThemBeforeTheRelease) {
  hands::PressAt(kButton, 10, 10);
  hands::MoveTo(kButton, 10, 300);
  hands::ReleaseAt(kButton, 10, 300);
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(Buttons, CountADoubleClickAsTwo) {
  hands::DoubleClickAt(kButton, 10, 10);
  EXPECT_EQ(Told("command"), (Lines{"command 101 0", "command 101 0"}));
}

TEST_F(Buttons, SayNothingWhenTheProgramChecksThem) {
  for (const int id : {kButton, kCheck}) {
    SetChecked(id, true);
    EXPECT_TRUE(IsChecked(id));
    SetChecked(id, false);
    EXPECT_FALSE(IsChecked(id));
  }
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(Buttons, KeepTheStateOfAPushButtonAtAClick) {
  SetChecked(kButton, true);
  Click(kButton);
  EXPECT_TRUE(IsChecked(kButton));
  EXPECT_EQ(Told("command"), Lines{"command 101 0"});
}

TEST_F(Buttons, AloneHaveAState) {
  Make(104, ControlKind::EditLine);
  for (const int id : {kLabel, 104}) {
    SetChecked(id, true);
    EXPECT_FALSE(IsChecked(id)) << id;
  }
}

TEST_F(Buttons, TakeAnyCaption) {
  for (const int id : {kButton, kCheck, kLabel}) {
    SetText(id, u"A & B\u2026");
    EXPECT_EQ(TextOf(id), u"A & B\u2026") << id;
    SetText(id, u"");
    EXPECT_EQ(TextOf(id), u"") << id;
  }
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(Buttons, KeepTheLineEndsOfACaption) {
  for (const int id : {kButton, kCheck, kLabel}) {
    SetText(id, u"one\ntwo");
    EXPECT_EQ(TextOf(id), u"one\ntwo") << id;
  }
}

TEST_F(Buttons, AreNotClickedWhileTheyAreDisabledOrHidden) {
  for (const int id : {kButton, kCheck}) {
    platform::SetEnabled(id, false);
    Click(id);
    platform::SetEnabled(id, true);
    platform::SetVisible(id, false);
    Click(id);
    platform::SetVisible(id, true);
  }
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(Buttons, SurviveTheirOwnEndInTheirNotification) {
  listening.command = [](int id, int) { platform::Destroy(id); };
  Click(kButton);
  Click(kCheck);
  EXPECT_FALSE(platform::Exists(kButton));
  EXPECT_FALSE(platform::Exists(kCheck));
  EXPECT_EQ(Told("command"), (Lines{"command 101 0", "command 102 0"}));
}

TEST_F(Buttons, SurviveBeingHiddenInTheirNotification) {
  listening.command = [](int id, int) { platform::SetVisible(id, false); };
  Click(kButton);
  EXPECT_FALSE(platform::IsVisible(kButton));
  EXPECT_NE(platform::FocusedId(), kButton);
  platform::SetVisible(kButton, true);
  Click(kButton);
  EXPECT_EQ(Told("command").size(), 2u);
}

TEST_F(Buttons, AreDrawnWithTheirState) {
  platform::DrawState drawn;
  listening.drawItem = [&drawn](int, const platform::DrawState& state, platform::Canvas&) {
    drawn = state;
  };
  platform::SetFocusTo(kButton);
  SetChecked(kButton, true);
  hands::Paint(kButton);
  EXPECT_TRUE(platform::SameRect(drawn.area, {0, 0, 220, 120}));
  EXPECT_EQ(drawn.row, -1);
  EXPECT_TRUE(drawn.focused);
  EXPECT_TRUE(drawn.checked);
  EXPECT_TRUE(drawn.enabled);
  EXPECT_FALSE(drawn.pressed);
  hands::PressAt(kButton, 10, 10);
  hands::Paint(kButton);
  EXPECT_TRUE(drawn.pressed);
  hands::ReleaseAt(kButton, 10, 10);
  platform::SetEnabled(kButton, false);
  hands::Paint(kButton);
  EXPECT_FALSE(drawn.enabled);
  EXPECT_FALSE(drawn.focused);
  EXPECT_FALSE(drawn.pressed);
}

}  // namespace
}  // namespace contract
