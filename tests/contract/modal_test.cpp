// What stands over the main window: dialogs, message boxes, popup menus.

#include "contract/contract.h"
#include "platform/menu.h"
#include "platform/message.h"
#include "platform/post.h"
#include "platform/timer.h"

namespace contract {
namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::ControlKind;
using platform::EndDialog;
using platform::RunDialog;

constexpr int kDialog = 500;
constexpr int kEdit = 501;
constexpr int kCheck = 502;
constexpr int kAccept = 503;
constexpr int kCancel = 504;
constexpr int kBehind = 1;

Lines spoken;  // to the dialog's own function

void OnDialog(int id, int notification) {
  spoken.push_back(std::to_string(id) + " " + std::to_string(notification));
  if (notification != platform::kNotifyClick) return;
  if (id == kAccept) EndDialog(kDialog, 7);
  if (id == kCancel) EndDialog(kDialog, 2);
}

class Dialogs : public Contract {
 protected:
  void SetUp() override {
    Contract::SetUp();
    spoken.clear();
    Make(kBehind, ControlKind::EditLine, u"behind");
    platform::SetFocusTo(kBehind);
    MakeOne();
    Forget();
  }
  static void MakeOne() {
    platform::DialogSpec spec;
    spec.id = kDialog;
    spec.className = u"ContractDialog";
    spec.title = u"A question";
    spec.place = {100, 120, 640, 460};
    spec.defaultButton = kAccept;
    spec.cancelButton = kCancel;
    spec.command = OnDialog;
    ASSERT_TRUE(platform::MakeDialog(spec));
    MakeIn(kEdit, ControlKind::EditLine, 10);
    MakeIn(kCheck, ControlKind::CheckBox, 50);
    MakeIn(kAccept, ControlKind::PushButton, 90);
    MakeIn(kCancel, ControlKind::PushButton, 130);
  }
  static void MakeIn(int id, ControlKind kind, int top) {
    Make(id, kind, kind == ControlKind::EditLine ? u"" : u"text", kDialog);
    platform::SetPlace(id, {10, top, 200, top + 30});
  }
  // Runs it and does this once it stands.
  static int RunAnd(const std::function<void()>& act) {
    hands::InDialog(kDialog, act);
    return RunDialog(kDialog);
  }
};

TEST_F(Dialogs, EndWithTheCodeOfTheirFunctionAndAreGone) {
  EXPECT_EQ(RunAnd([] { Click(kAccept); }), 7);
  EXPECT_EQ(spoken, Lines{"503 0"});
  for (const int id : {kDialog, kEdit, kCheck, kAccept, kCancel}) {
    EXPECT_FALSE(platform::Exists(id)) << id;
  }
}

TEST_F(Dialogs, AreHiddenUntilTheyRun) {
  EXPECT_TRUE(platform::Exists(kDialog));
  EXPECT_FALSE(platform::IsVisible(kDialog));
  EXPECT_FALSE(platform::IsVisible(kEdit));
  EXPECT_EQ(platform::ClassOf(kDialog), u"ContractDialog");
  EXPECT_EQ(platform::ViewByClass(u"ContractDialog"), kDialog);
  EXPECT_EQ(platform::AccessibleName(kDialog), u"A question");
  bool shown = false;
  RunAnd([&shown] { shown = platform::IsVisible(kEdit); });
  EXPECT_TRUE(shown);
}

TEST_F(Dialogs, StandAtTheirPlaceInTheMainWindow) {
  platform::Rect place;
  platform::Rect inside;
  platform::Rect client;
  RunAnd([&] {
    hands::Until([] { return platform::PlaceInMainWindow(kDialog).left == 100; });
    place = platform::PlaceInMainWindow(kDialog);
    inside = platform::PlaceInMainWindow(kAccept);
    client = platform::ClientArea(kDialog);
  });
  EXPECT_TRUE(platform::SameRect(place, {100, 120, 640, 460}));
  EXPECT_TRUE(platform::SameRect(inside, {110, 210, 300, 240}));
  EXPECT_TRUE(platform::SameRect(client, {0, 0, 540, 340}));
}

TEST_F(Dialogs, HaveTheKeyboardInTheirFirstControlAndGiveItBack) {
  int holder = 0;
  RunAnd([&holder] { holder = platform::FocusedId(); });
  EXPECT_EQ(holder, kEdit);
  EXPECT_TRUE(hands::Until([] { return platform::FocusedId() == kBehind; }));
}

TEST_F(Dialogs, LeaveTheCaretOfTheirFirstEditLineAtTheFront) {
  platform::SetText(kEdit, u"abc");
  std::u16string text;
  RunAnd([&text] {
    hands::Type(u"x");
    text = platform::TextOf(kEdit);
  });
  EXPECT_EQ(text, u"xabc");
}

TEST_F(Dialogs, HaveTheKeyboardWhereItWasSetBeforeTheyRan) {
  platform::SetFocusTo(kCheck);
  EXPECT_EQ(platform::FocusedId(), kBehind);
  int holder = 0;
  RunAnd([&holder] { holder = platform::FocusedId(); });
  EXPECT_EQ(holder, kCheck);
  EXPECT_TRUE(hands::Until([] { return platform::FocusedId() == kBehind; }));
}

TEST_F(Dialogs, PressTheirDefaultAtEnter) {
  EXPECT_EQ(RunAnd([] { Press(platform::kKeyEnter); }), 7);
  EXPECT_EQ(spoken, Lines{"503 0"});
}

TEST_F(Dialogs, PressTheirDefaultAtEnterOnACheckBox) {
  EXPECT_EQ(RunAnd([] {
              platform::SetFocusTo(kCheck);
              Press(platform::kKeyEnter);
            }),
            7);
  EXPECT_EQ(spoken, Lines{"503 0"});
}

TEST_F(Dialogs, PressTheButtonThatHasTheKeyboardAtEnter) {
  EXPECT_EQ(RunAnd([] {
              platform::SetFocusTo(kCancel);
              Press(platform::kKeyEnter);
            }),
            2);
  EXPECT_EQ(spoken, Lines{"504 0"});
}

TEST_F(Dialogs, PressNoDefaultThatIsDisabledOrHidden) {
  platform::SetEnabled(kAccept, false);
  RunAnd([] {
    Press(platform::kKeyEnter);
    platform::SetEnabled(kAccept, true);
    platform::SetVisible(kAccept, false);
    Press(platform::kKeyEnter);
    EXPECT_EQ(spoken, Lines{});
  });
}

TEST_F(Dialogs, WriteALineAtEnterInAMultiLineEdit) {
  MakeIn(505, ControlKind::MultiEdit, 170);
  std::u16string text;
  RunAnd([&text] {
    platform::SetFocusTo(505);
    platform::SelectAllText(505);
    hands::Type(u"a\nb");
    text = platform::TextOf(505);
  });
  EXPECT_EQ(text, u"a\r\nb");
}

TEST_F(Dialogs, PressTheirDefaultAtEnterInALog) {
  MakeIn(505, ControlKind::Log, 170);
  EXPECT_EQ(RunAnd([] {
              platform::SetFocusTo(505);
              Press(platform::kKeyEnter);
            }),
            7);
}

TEST_F(Dialogs, TellEnterOnARowAsADoubleClick) {
  MakeRows(505, platform::ListKind::Single, 3, kDialog);
  platform::SetPlace(505, {10, 170, 200, 290});
  RunAnd([] {
    platform::SetFocusTo(505);
    platform::SelectRow(505, 1);
    Press(platform::kKeyEnter);
    EXPECT_EQ(spoken, Lines{"505 2"});
  });
}

TEST_F(Dialogs, PressTheirCancelButtonAtEscape) {
  EXPECT_EQ(RunAnd([] { Press(platform::kKeyEscape); }), 2);
  EXPECT_EQ(spoken, Lines{"504 0"});
}

TEST_F(Dialogs, SpeakToTheirOwnFunctionAlone) {
  RunAnd([] {
    hands::Type(u"x");
    Click(kCheck);
  });
  EXPECT_EQ(spoken[0], "501 768");
  EXPECT_EQ(spoken[1], "502 0");
  EXPECT_EQ(Told("command key"), Lines{});
}

TEST_F(Dialogs, KeepTabAmongTheirControls) {
  std::vector<int> way;
  RunAnd([&way] {
    for (int i = 0; i < 5; ++i) {
      Press(platform::kKeyTab);
      way.push_back(platform::FocusedId());
    }
    PressShift(platform::kKeyTab);
    way.push_back(platform::FocusedId());
  });
  EXPECT_EQ(way, (std::vector<int>{kCheck, kAccept, kCancel, kEdit, kCheck, kEdit}));
}

TEST_F(Dialogs, KeepTheUserFromTheMainWindow) {
  Make(2, ControlKind::PushButton, u"b");
  RunAnd([] { Click(2); });
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(Dialogs, LetTimersAndMessagesGoOn) {
  platform::StartTimer(platform::kMainWindow, 1, 5);
  listening.timer = [](int window, int timer) {
    platform::StopTimer(window, timer);
    platform::PostToMain(4, 0, 0);
  };
  Lines told;
  RunAnd([&told] {
    hands::Until([] { return Told("posted").size() == 1; });
    told = Told("timer posted");
  });
  EXPECT_EQ(told, (Lines{"timer 20000 1", "posted 4 0"}));
}

TEST_F(Dialogs, ReturnZeroWhenTheyAreDestroyedMeanwhile) {
  EXPECT_EQ(RunAnd([] { platform::Destroy(kDialog); }), 0);
  EXPECT_FALSE(platform::Exists(kEdit));
}

TEST_F(Dialogs, ReturnTheirCodeAtOnceWhenTheyWereEndedBefore) {
  EndDialog(kDialog, 3);
  EXPECT_EQ(RunDialog(kDialog), 3);
  EXPECT_FALSE(platform::Exists(kDialog));
}

TEST_F(Dialogs, KeepTheFirstCode) {
  EXPECT_EQ(RunAnd([] {
              EndDialog(kDialog, 4);
              EndDialog(kDialog, 5);
            }),
            4);
}

TEST_F(Dialogs, DoNotRunWhereTheyDoNotExist) {
  EXPECT_EQ(RunDialog(99), 0);
  EXPECT_EQ(RunDialog(kBehind), 0);
  EndDialog(99, 1);
  platform::DialogSpec spec;
  spec.id = kBehind;
  EXPECT_FALSE(platform::MakeDialog(spec));
}

TEST_F(Dialogs, StandOverEachOther) {
  constexpr int kInner = 600;
  int inner = 0;
  const int outer = RunAnd([&inner] {
    platform::DialogSpec spec;
    spec.id = kInner;
    spec.place = {0, 0, 300, 200};
    spec.defaultButton = 601;
    spec.cancelButton = 602;
    spec.command = [](int id, int) { EndDialog(kInner, id); };
    platform::MakeDialog(spec);
    Make(601, ControlKind::PushButton, u"ok", kInner);
    hands::InDialog(kInner, [] { Press(platform::kKeyEnter); });
    inner = RunDialog(kInner);
    hands::Until([] { return platform::FocusedId() == kEdit; });
    Press(platform::kKeyEnter);
  });
  EXPECT_EQ(inner, 601);
  EXPECT_EQ(outer, 7);
}

TEST_F(Dialogs, PutOffTheWordThatTheApplicationIsAtTheFrontAgain) {
  Lines meanwhile;
  RunAnd([&meanwhile] {
    hands::ComeToFront();
    meanwhile = Told("activated");
  });
  EXPECT_EQ(meanwhile, Lines{});
  EXPECT_TRUE(hands::Until([] { return WasTold("activated"); }));
}

TEST_F(Dialogs, MayBeMadeAnewBehindTheirEnd) {
  EXPECT_EQ(RunAnd([] { Press(platform::kKeyEscape); }), 2);
  MakeOne();
  EXPECT_EQ(RunAnd([] { Press(platform::kKeyEnter); }), 7);
}

class Boxes : public Contract {
 protected:
  static BoxAnswer Show(BoxButtons buttons) {
    return platform::ShowBox(u"contract", u"words", buttons, BoxIcon::Question);
  }
};

TEST_F(Boxes, AnswerWithTheButtonThatIsPressed) {
  hands::AnswerBox(BoxAnswer::Ok);
  EXPECT_EQ(Show(BoxButtons::Ok), BoxAnswer::Ok);
  for (const BoxAnswer answer : {BoxAnswer::Yes, BoxAnswer::No}) {
    hands::AnswerBox(answer);
    EXPECT_EQ(Show(BoxButtons::YesNo), answer);
  }
  for (const BoxAnswer answer : {BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Cancel}) {
    hands::AnswerBox(answer);
    EXPECT_EQ(Show(BoxButtons::YesNoCancel), answer);
  }
}

TEST_F(Boxes, AnswerWithOneOfFourWays) {
  constexpr platform::BoxCaptions kCaptions{u"Write over it", u"Load again", u"Save as...",
                                            u"Leave"};
  const auto ask = [&] {
    return platform::ShowBox(u"contract", u"words", BoxButtons::YesNoOtherCancel, BoxIcon::Question,
                             kCaptions);
  };
  for (const BoxAnswer answer :
       {BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Other, BoxAnswer::Cancel}) {
    hands::AnswerBox(answer);
    EXPECT_EQ(ask(), answer);
  }
  hands::EscapeFromBox();
  EXPECT_EQ(ask(), BoxAnswer::Cancel);
}

TEST_F(Boxes, AnswerEscapeWithCancelElseNoElseOk) {
  hands::EscapeFromBox();
  EXPECT_EQ(Show(BoxButtons::YesNoCancel), BoxAnswer::Cancel);
  hands::EscapeFromBox();
  EXPECT_EQ(Show(BoxButtons::YesNo), BoxAnswer::No);
  hands::EscapeFromBox();
  EXPECT_EQ(Show(BoxButtons::Ok), BoxAnswer::Ok);
}

TEST_F(Boxes, LetTimersAndMessagesGoOn) {
  platform::StartTimer(platform::kMainWindow, 1, 5);
  listening.timer = [](int window, int timer) { platform::StopTimer(window, timer); };
  Lines told;
  hands::AnswerBox(BoxAnswer::Yes, [&told] {
    platform::PostToMain(4, 0, 0);
    hands::Until([] { return Told("timer posted").size() == 2; });
    told = Told("timer posted");
  });
  EXPECT_EQ(Show(BoxButtons::YesNo), BoxAnswer::Yes);
  EXPECT_EQ(told.size(), 2u);
}

TEST_F(Boxes, TakeTheKeyboardAndGiveItBack) {
  Make(1, ControlKind::EditLine);
  platform::SetFocusTo(1);
  Forget();
  int holder = -1;
  hands::AnswerBox(BoxAnswer::Ok, [&holder] { holder = platform::FocusedId(); });
  Show(BoxButtons::Ok);
  EXPECT_TRUE(hands::Until([] { return platform::FocusedId() == 1; }));
  EXPECT_EQ(holder, 0);
  EXPECT_EQ(Told("gained lost"), (Lines{"lost 1", "gained 1"}));
}

TEST_F(Boxes, TakeThePointerFromAViewWithAButtonDown) {
  MakeView(50, {100, 100, 300, 300});
  hands::PressAt(50, 7, 9);
  hands::AnswerBox(BoxAnswer::Ok);
  Show(BoxButtons::Ok);
  EXPECT_TRUE(WasTold("pointer 50 lost"));
  hands::ReleaseAt(platform::kMainWindow, 700, 700);
}

TEST_F(Boxes, PutOffTheWordThatTheApplicationIsAtTheFrontAgainUntilAllAreAnswered) {
  Lines between;
  hands::AnswerBox(BoxAnswer::Ok, [] { hands::ComeToFront(); });
  platform::ShowBox(u"", u"Words", BoxButtons::Ok, BoxIcon::None);
  hands::AnswerBox(BoxAnswer::Ok, [&between] {
    hands::Settle();
    between = Told("activated");
  });
  platform::ShowBox(u"", u"More words", BoxButtons::Ok, BoxIcon::None);
  EXPECT_EQ(between, Lines{});
  EXPECT_TRUE(hands::Until([] { return WasTold("activated"); }));
}

TEST_F(Boxes, StandOverADialogThatRuns) {
  platform::DialogSpec spec;
  spec.id = kDialog;
  spec.place = {100, 100, 400, 300};
  spec.defaultButton = kAccept;
  spec.command = OnDialog;
  spoken.clear();
  ASSERT_TRUE(platform::MakeDialog(spec));
  Make(kAccept, ControlKind::PushButton, u"ok", kDialog);
  BoxAnswer answer = BoxAnswer::Ok;
  hands::InDialog(kDialog, [&answer] {
    hands::AnswerBox(BoxAnswer::No);
    answer = Show(BoxButtons::YesNo);
    hands::Until([] { return platform::FocusedId() == kAccept; });
    Press(platform::kKeyEnter);
  });
  EXPECT_EQ(RunDialog(kDialog), 7);
  EXPECT_EQ(answer, BoxAnswer::No);
}

class Popups : public Contract {
 protected:
  static int Show() {
    const platform::MenuItem items[] = {{7, u"Undo\tAlt+Z", false, true},
                                        {0, u"", false, true},
                                        {9, u"Grid & axes", true, true},
                                        {11, u"Gone", false, false}};
    return platform::ShowPopup(items, 4, 40, 40);
  }
};

TEST_F(Popups, AnswerTheChosenItem) {
  hands::PickFromMenu(7);
  EXPECT_EQ(Show(), 7);
  hands::PickFromMenu(9);
  EXPECT_EQ(Show(), 9);
}

TEST_F(Popups, AnswerZeroWhereNothingIsChosen) {
  hands::PickFromMenu(0);
  EXPECT_EQ(Show(), 0);
}

TEST_F(Popups, AnswerZeroWhereADimmedItemIsPressed) {
  hands::PickFromMenu(11);
  EXPECT_EQ(Show(), 0);
}

TEST_F(Popups, AnswerZeroWithoutItems) { EXPECT_EQ(platform::ShowPopup(nullptr, 0, 40, 40), 0); }

TEST_F(Popups, SendNoCommandThemselves) {
  hands::PickFromMenu(7);
  Show();
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(Popups, LeaveTheKeyboardWhereItWas) {
  Make(1, ControlKind::EditLine);
  platform::SetFocusTo(1);
  hands::PickFromMenu(7);
  Show();
  EXPECT_TRUE(hands::Until([] { return platform::FocusedId() == 1; }));
}

}  // namespace
}  // namespace contract
