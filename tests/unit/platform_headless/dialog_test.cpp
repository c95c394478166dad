#include "platform/dialog.h"

#include <vector>

#include "machine_for_test.h"
#include "platform/timer.h"

namespace {

constexpr int kDialog = 500;
constexpr int kEdit = 501;
constexpr int kInsert = 502;
constexpr int kCancel = 503;
constexpr int kBehind = 600;  // in the main window

using headless_test::heard;

struct Spoken {
  int id;
  int notification;
};
std::vector<Spoken> spoken;  // to the dialog

void OnDialog(int id, int notification) {
  spoken.push_back({id, notification});
  if (notification != platform::kNotifyClick) return;
  if (id == kInsert) platform::EndDialog(kDialog, 7);
  if (id == kCancel) platform::EndDialog(kDialog, 0);
}

void MakeIn(int parent, int id, platform::ControlKind kind) {
  platform::ControlSpec spec;
  spec.id = id;
  spec.kind = kind;
  spec.text = u"x";
  spec.parent = parent;
  platform::MakeControl(spec);
}

struct DialogTest : headless_test::HeadlessTest {
  void SetUp() override {
    HeadlessTest::SetUp();
    spoken.clear();
    platform::MakeMainWindow({u"Main", u"Main", {0, 0, 1200, 800}, 400, 300, 0});
    platform::ShowMainWindow();
    MakeIn(platform::kMainWindow, kBehind, platform::ControlKind::PushButton);
    platform::SetFocusTo(kBehind);
    platform::DialogSpec spec;
    spec.id = kDialog;
    spec.className = u"TestDialog";
    spec.title = u"A question";
    spec.place = {100, 120, 640, 460};
    spec.defaultButton = kInsert;
    spec.cancelButton = kCancel;
    spec.command = OnDialog;
    EXPECT_TRUE(platform::MakeDialog(spec));
    MakeIn(kDialog, kEdit, platform::ControlKind::EditLine);
    MakeIn(kDialog, kInsert, platform::ControlKind::PushButton);
    MakeIn(kDialog, kCancel, platform::ControlKind::PushButton);
    heard.clear();
  }
  static void Press(int key) {
    platform::KeyEvent event;
    event.key = key;
    headless::PressKey(event);
  }
};

TEST_F(DialogTest, IsHiddenUntilItRunsAndGoneAfterwards) {
  EXPECT_FALSE(platform::IsVisible(kDialog));
  EXPECT_EQ(headless::OpenDialog(), 0);
  headless::InDialog([] {
    EXPECT_TRUE(platform::IsVisible(kEdit));
    EXPECT_EQ(headless::OpenDialog(), kDialog);
    EXPECT_EQ(headless::DialogTitle(), u"A question");
    EXPECT_EQ(platform::ViewByClass(u"TestDialog"), kDialog);
  });
  EXPECT_EQ(platform::RunDialog(kDialog), 0);
  EXPECT_EQ(headless::OpenDialog(), 0);
  for (const int id : {kDialog, kEdit, kInsert, kCancel}) EXPECT_FALSE(platform::Exists(id));
}

TEST_F(DialogTest, IsCancelledByItsButtonWhenNothingIsHandedIn) {
  EXPECT_EQ(platform::RunDialog(kDialog), 0);
  ASSERT_EQ(spoken.size(), 1u);
  EXPECT_EQ(spoken[0].id, kCancel);
}

TEST_F(DialogTest, EndsWithTheCodeOfItsFunction) {
  headless::InDialog([] { EXPECT_TRUE(headless::TypeInto(kEdit, u"12")); });
  headless::InDialog([] { EXPECT_TRUE(headless::Click(kInsert)); });
  EXPECT_EQ(platform::RunDialog(kDialog), 7);
  ASSERT_EQ(spoken.size(), 2u);
  EXPECT_EQ(spoken[0].id, kEdit);
  EXPECT_EQ(spoken[0].notification, platform::kNotifyEditChange);
  EXPECT_TRUE(heard.empty());  // its controls speak to nobody else
}

TEST_F(DialogTest, HasItsKeysToItself) {
  headless::InDialog([] {
    EXPECT_EQ(platform::FocusedId(), kEdit);
    Press(platform::kKeyTab);
    EXPECT_EQ(platform::FocusedId(), kInsert);
    Press(platform::kKeyTab);
    Press(platform::kKeyTab);
    EXPECT_EQ(platform::FocusedId(), kEdit);  // the ring stays inside
    Press('7');
  });
  headless::InDialog([] { EXPECT_EQ(platform::TextOf(kEdit), u"7"); });
  platform::RunDialog(kDialog);
  EXPECT_TRUE(heard.empty());
  EXPECT_EQ(platform::FocusedId(), kBehind);
}

TEST_F(DialogTest, EnterPressesTheDefaultButtonFromAnyField) {
  headless::InDialog([] { Press(platform::kKeyEnter); });
  EXPECT_EQ(platform::RunDialog(kDialog), 7);
}

TEST_F(DialogTest, EnterPressesTheButtonThatHasTheKeyboard) {
  headless::InDialog([] {
    platform::SetFocusTo(kCancel);
    Press(platform::kKeyEnter);
  });
  EXPECT_EQ(platform::RunDialog(kDialog), 0);
  EXPECT_EQ(spoken.back().id, kCancel);
}

TEST_F(DialogTest, EscapeAndTheCloseKeyPressCancel) {
  headless::InDialog([] { Press(platform::kKeyEscape); });
  EXPECT_EQ(platform::RunDialog(kDialog), 0);
  EXPECT_EQ(spoken.back().id, kCancel);
}

TEST_F(DialogTest, TheCloseKeyCancelsItAndLeavesTheMainWindow) {
  headless::InDialog([] { EXPECT_FALSE(headless::CloseKey()); });
  headless::InDialog([] { ADD_FAILURE() << "the dialog stayed"; });
  EXPECT_EQ(platform::RunDialog(kDialog), 0);
  EXPECT_FALSE(headless::WindowClosed());
}

TEST_F(DialogTest, KeepsTheUserFromTheMainWindow) {
  headless::InDialog([] {
    EXPECT_FALSE(headless::Click(kBehind));
    EXPECT_FALSE(headless::Focus(kBehind));
    platform::PointerEvent press;
    press.action = platform::PointerAction::Press;
    EXPECT_FALSE(headless::Pointer(platform::kMainWindow, press));
    headless::ControlInfo info;
    EXPECT_TRUE(headless::Describe(kBehind, info));
    EXPECT_TRUE(info.behind);
    EXPECT_TRUE(headless::Describe(kEdit, info));
    EXPECT_FALSE(info.behind);
  });
  platform::RunDialog(kDialog);
  EXPECT_TRUE(heard.empty());
  EXPECT_TRUE(headless::Click(kBehind));
}

TEST_F(DialogTest, LetsTimersRun) {
  platform::StartTimer(platform::kMainWindow, 5, 100);
  headless::InDialog([] { headless::Advance(250); });
  platform::RunDialog(kDialog);
  EXPECT_EQ(heard, (std::vector<std::string>{"timer 5", "timer 5"}));
}

int turns = 0;

TEST_F(DialogTest, AsksTheTurnForMoreUntilItHasNone) {
  turns = 0;
  headless::SetDialogTurn([] { return ++turns < 3; });
  EXPECT_EQ(platform::RunDialog(kDialog), 0);
  EXPECT_EQ(turns, 3);
  EXPECT_EQ(spoken.back().id, kCancel);
}

TEST_F(DialogTest, EndsThoughItsFunctionIsDeafToCancel) {
  platform::Destroy(kDialog);
  platform::DialogSpec spec;
  spec.id = kDialog;
  ASSERT_TRUE(platform::MakeDialog(spec));
  EXPECT_EQ(platform::RunDialog(kDialog), 0);
}

TEST_F(DialogTest, GivesUpWhenItIsDestroyedMeanwhile) {
  headless::InDialog([] { platform::Destroy(kDialog); });
  EXPECT_EQ(platform::RunDialog(kDialog), 0);
  EXPECT_EQ(headless::OpenDialog(), 0);
}

TEST_F(DialogTest, CannotBeMadeTwiceOrWithoutAMainWindow) {
  platform::DialogSpec spec;
  spec.id = kDialog;
  EXPECT_FALSE(platform::MakeDialog(spec));
  headless::Reset(home_.u16string());
  EXPECT_FALSE(platform::MakeDialog(spec));
  EXPECT_EQ(platform::RunDialog(kDialog), 0);
}

}  // namespace
