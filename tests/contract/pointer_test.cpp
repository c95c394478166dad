// The pointer on drawn views and on the bare main window: who is told what, and who is not.

#include "contract/contract.h"

namespace contract {
namespace {

using platform::ControlKind;
using platform::IdUnderPointer;
using platform::PointerButton;

constexpr int kView = 50;
constexpr int kOther = 60;

class Pointer : public Contract {
 protected:
  void SetUp() override {
    Contract::SetUp();
    MakeView(kView, {100, 100, 300, 300}, true);
    MakeView(kOther, {400, 100, 600, 300});
    Forget();
  }
  // Without the moves, which a window system may add to a press.
  static Lines Presses() {
    Lines lines;
    for (const std::string& line : Told("pointer menu command")) {
      const bool move = line.find(" move ") != line.npos || line.find(" leave") != line.npos;
      if (!move) lines.push_back(line);
    }
    return lines;
  }
};

TEST_F(Pointer, IsToldInPixelsOfTheView) {
  hands::PressAt(kView, 7, 9);
  hands::ReleaseAt(kView, 8, 10);
  hands::PressAt(platform::kMainWindow, 700, 500);
  hands::ReleaseAt(platform::kMainWindow, 700, 500);
  EXPECT_EQ(Presses(), (Lines{"pointer 50 press 7 9", "pointer 50 release 8 10",
                              "pointer 20000 press 700 500", "pointer 20000 release 700 500"}));
}

TEST_F(Pointer, TellsButtonsAndModifiers) {
  std::vector<platform::PointerEvent> events;
  listening.pointer = [&events](int, const platform::PointerEvent& event) {
    const bool move = event.action == platform::PointerAction::Move;
    if (!move || event.leftDown || event.rightDown) events.push_back(event);
    return true;
  };
  hands::PressAt(kView, 7, 9, {true, false, PointerButton::Left});
  hands::MoveTo(kView, 20, 20);
  hands::ReleaseAt(kView, 20, 20, {false, true, PointerButton::Left});
  ASSERT_EQ(events.size(), 3u);
  EXPECT_EQ(events[0].button, PointerButton::Left);
  EXPECT_TRUE(events[0].leftDown);
  EXPECT_TRUE(events[0].ctrl);
  EXPECT_FALSE(events[0].shift);
  EXPECT_EQ(events[1].button, PointerButton::None);
  EXPECT_TRUE(events[1].leftDown);
  EXPECT_EQ(events[2].button, PointerButton::Left);
  EXPECT_FALSE(events[2].leftDown);
  EXPECT_TRUE(events[2].shift);
}

TEST_F(Pointer, GivesAViewTheKeyboardBeforeThePressIsTold) {
  int holder = -1;
  listening.pointer = [&holder](int, const platform::PointerEvent& event) {
    if (event.action == platform::PointerAction::Press) holder = platform::FocusedId();
    return true;
  };
  hands::ClickAt(kView, 7, 9);
  EXPECT_EQ(holder, kView);
  hands::ClickAt(kOther, 7, 9);
  EXPECT_EQ(holder, kView);
}

TEST_F(Pointer, TellsADoubleClickInThePlaceOfTheSecondPress) {
  hands::DoubleClickAt(kView, 7, 9);
  EXPECT_EQ(Presses(), (Lines{"pointer 50 press 7 9", "pointer 50 release 7 9",
                              "pointer 50 double 7 9", "pointer 50 release 7 9"}));
}

TEST_F(Pointer, TellsAPressWhereADoubleClickIsOfNoUse) {
  listening.pointer = [](int, const platform::PointerEvent& event) {
    return event.action != platform::PointerAction::DoubleClick;
  };
  hands::DoubleClickAt(kView, 7, 9);
  EXPECT_EQ(Presses(),
            (Lines{"pointer 50 press 7 9", "pointer 50 release 7 9", "pointer 50 double 7 9",
                   "pointer 50 press 7 9", "pointer 50 release 7 9"}));
}

TEST_F(Pointer, StaysWithTheViewWhereAButtonWentDown) {
  hands::PressAt(kView, 7, 9);
  hands::MoveTo(kOther, 20, 30);
  hands::ReleaseAt(kOther, 20, 30);
  EXPECT_TRUE(WasTold("pointer 50 move 320 30"));
  EXPECT_TRUE(WasTold("pointer 50 release 320 30"));
  EXPECT_FALSE(WasTold("pointer 60 move 20 30"));
}

TEST_F(Pointer, GoesToTheViewThatCapturedIt) {
  platform::CapturePointer(kView);
  hands::MoveTo(kOther, 20, 30);
  EXPECT_TRUE(WasTold("pointer 50 move 320 30"));
  platform::ReleasePointer();
  hands::MoveTo(kOther, 25, 35);
  EXPECT_TRUE(WasTold("pointer 60 move 25 35"));
}

TEST_F(Pointer, IsFreeAgainOnceTheButtonIsUp) {
  listening.pointer = [](int id, const platform::PointerEvent& event) {
    if (event.action == platform::PointerAction::Press) platform::CapturePointer(id);
    return true;
  };
  hands::PressAt(kView, 7, 9);
  hands::MoveTo(kOther, 20, 30);
  hands::ReleaseAt(kOther, 20, 30);
  hands::MoveTo(kOther, 25, 35);
  EXPECT_TRUE(WasTold("pointer 60 move 25 35"));
}

TEST_F(Pointer, IsLostWhenItsViewIsHiddenWithAButtonDown) {
  hands::PressAt(kView, 7, 9);
  platform::SetVisible(kView, false);
  EXPECT_TRUE(WasTold("pointer 50 lost"));
  hands::ReleaseAt(platform::kMainWindow, 700, 700);
}

TEST_F(Pointer, IsNotLostWithNothingHeld) {
  hands::ClickAt(kView, 7, 9);
  Forget();
  platform::SetVisible(kView, false);
  for (const std::string& line : Told("pointer")) EXPECT_NE(line, "pointer 50 lost");
}

TEST_F(Pointer, IsToldToTheViewAroundALabel) {
  Make(1, ControlKind::Label, u"Feed", kView);
  platform::SetPlace(1, {10, 10, 60, 40});
  hands::ClickAt(1, 5, 5);
  EXPECT_EQ(Presses(), (Lines{"pointer 50 press 15 15", "pointer 50 release 15 15"}));
}

TEST_F(Pointer, IsNotToldOnAControl) {
  Make(1, ControlKind::PushButton, u"b", kView);
  Make(2, ControlKind::EditLine, u"", kView);
  Make(3, ControlKind::CheckBox, u"c", kView);
  for (const int id : {1, 2, 3}) {
    platform::SetPlace(id, {10, 10, 60, 40});
    platform::BringToTop(id);
    hands::ClickAt(id, 5, 5);
  }
  EXPECT_EQ(Presses(), (Lines{"command 1 0", "command 3 0"}));
}

TEST_F(Pointer, IsNotToldOnADisabledView) {
  platform::SetEnabled(kView, false);
  hands::ClickAt(kView, 7, 9);
  for (const std::string& line : Presses()) EXPECT_EQ(line.find("pointer 50"), line.npos);
}

TEST_F(Pointer, TurnsTheWheelOfTheViewUnderIt) {
  hands::WheelAt(kView, 7, 9, 2);
  hands::WheelAt(kView, 7, 9, -1);
  EXPECT_EQ(Presses(), (Lines{"pointer 50 wheel 1", "pointer 50 wheel 1", "pointer 50 wheel -1"}));
}

TEST_F(Pointer, TurnsTheWheelOfTheViewAroundWhatDoesNotScroll) {
  Make(1, ControlKind::PushButton, u"b", kView);
  MakeRows(2, platform::ListKind::Combo, 3, kView);
  Make(3, ControlKind::EditLine, u"", kView);
  Make(4, ControlKind::Label, u"l", kView);
  for (const int id : {1, 2, 3, 4}) {
    platform::SetPlace(id, {10, 10, 60, 40});
    platform::BringToTop(id);
    hands::WheelAt(id, 5, 5, 1);
  }
  EXPECT_EQ(Presses(), Lines(4, "pointer 50 wheel 1"));
}

TEST_F(Pointer, AsksForTheMenuOfWhatIsUnderTheRightButton) {
  Make(1, ControlKind::EditLine, u"abc");
  Make(2, ControlKind::PushButton, u"b");
  MakeEditor(300, u"G0");
  platform::SetPlace(300, {700, 500, 900, 700});
  const hands::Held right{false, false, PointerButton::Right};
  for (const int id : {1, 2, 300}) {
    Forget();
    hands::ClickAt(id, 5, 5, right);
    EXPECT_EQ(Told("menu command"), Lines{"menu " + std::to_string(id) + " -1"});
  }
}

TEST_F(Pointer, AsksForTheMenuOfAView) {
  hands::ClickAt(kView, 5, 5, {false, false, PointerButton::Right});
  EXPECT_EQ(Told("menu"), Lines{"menu 50 -1"});
}

TEST_F(Pointer, KnowsWhatLiesUnderIt) {
  Make(1, ControlKind::PushButton, u"b", kView);
  platform::SetPlace(1, {10, 10, 60, 40});
  const auto comes = [](int id) { return hands::Until([id] { return IdUnderPointer() == id; }); };
  hands::PointTo(kView, 100, 100);
  EXPECT_TRUE(comes(kView));
  hands::PointTo(kView, 20, 20);
  EXPECT_TRUE(comes(1));
  hands::PointTo(platform::kMainWindow, 700, 700);
  EXPECT_TRUE(comes(platform::kMainWindow));
  hands::PointAway();
  EXPECT_TRUE(comes(0));
}

TEST_F(Pointer, HasMovedOnlyWhereTheUserMovedIt) {
  Make(1, ControlKind::PushButton, u"b", kView);
  platform::SetPlace(1, {10, 10, 60, 40});
  const auto comes = [](int id) { return hands::Until([id] { return IdUnderPointer() == id; }); };
  const unsigned before = platform::PointerMoves();
  hands::PointTo(kView, 35, 25);
  ASSERT_TRUE(comes(1));
  const unsigned there = platform::PointerMoves();
  EXPECT_NE(there, before);
  EXPECT_EQ(platform::PointerMoves(), there);
  hands::PointTo(kView, 150, 150);
  ASSERT_TRUE(comes(kView));
  EXPECT_NE(platform::PointerMoves(), there);
}

TEST_F(Pointer, HasMovedWhereItWentAwayAndCameBackBetweenTwoLooks) {
  hands::PointTo(kView, 35, 25);
  ASSERT_TRUE(hands::Until([] { return IdUnderPointer() == kView; }));
  const unsigned before = platform::PointerMoves();
  hands::PointTo(platform::kMainWindow, 700, 700);
  ASSERT_TRUE(hands::Until([] { return WasTold("pointer 50 leave"); }));
  hands::PointTo(kView, 35, 25);
  EXPECT_TRUE(hands::Until([before] { return platform::PointerMoves() != before; }));
}

TEST_F(Pointer, HasNotMovedWhereThingsComeAndGoUnderIt) {
  Make(1, ControlKind::PushButton, u"b", kView);
  platform::SetPlace(1, {10, 10, 60, 40});
  const auto comes = [](int id) { return hands::Until([id] { return IdUnderPointer() == id; }); };
  hands::PointTo(kView, 35, 25);
  ASSERT_TRUE(comes(1));
  const unsigned there = platform::PointerMoves();
  platform::SetVisible(1, false);
  EXPECT_TRUE(comes(kView));
  EXPECT_EQ(platform::PointerMoves(), there);
  platform::SetVisible(1, true);
  EXPECT_TRUE(comes(1));
  platform::Destroy(1);
  EXPECT_TRUE(comes(kView));
  platform::SetVisible(kView, false);
  EXPECT_TRUE(comes(platform::kMainWindow));
  EXPECT_EQ(platform::PointerMoves(), there);
}

TEST_F(Pointer, KnowsWhetherAButtonOrCtrlIsDown) {
  std::vector<bool> held;
  listening.pointer = [&held](int, const platform::PointerEvent& event) {
    const bool press = event.action == platform::PointerAction::Press;
    if (press || event.action == platform::PointerAction::Release) {
      held.push_back(platform::ButtonHeld());
      held.push_back(platform::CtrlHeld());
    }
    return true;
  };
  hands::PressAt(kView, 7, 9, {true, false, PointerButton::Left});
  EXPECT_TRUE(platform::ButtonHeld());
  hands::ReleaseAt(kView, 7, 9);
  EXPECT_EQ(held, (std::vector<bool>{true, true, false, false}));
  EXPECT_FALSE(platform::ButtonHeld());
}

TEST_F(Pointer, SurvivesTheEndOfItsViewInItsNotification) {
  listening.pointer = [](int, const platform::PointerEvent& event) {
    if (event.action == platform::PointerAction::Press) platform::Destroy(kView);
    return true;
  };
  hands::PressAt(kView, 7, 9);
  hands::ReleaseAt(platform::kMainWindow, 107, 109);
  EXPECT_FALSE(platform::Exists(kView));
  hands::ClickAt(kOther, 5, 5);
  EXPECT_TRUE(WasTold("pointer 60 release 5 5"));
}

}  // namespace
}  // namespace contract
