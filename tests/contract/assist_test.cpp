// What assistive technology does to the placed things, and reads of the drawn views.

#include "contract/contract.h"

namespace contract {
namespace {

using platform::ControlKind;
using platform::ListKind;

constexpr int kThing = 1214;

class Assist : public Contract {};

TEST_F(Assist, PressesAButtonAndTurnsOneThatHasAState) {
  Make(kThing, ControlKind::PushButton, u"Key");
  hands::Assist(kThing);
  EXPECT_EQ(Told("command"), (Lines{"command 1214 0"}));
  platform::SetChecked(kThing, false);
  for (const bool turn : {false, true}) {
    Forget();
    hands::Assist(kThing, turn);
    EXPECT_EQ(Told("command"), (Lines{"command 1214 0"}));
    // The state is the application's.
    EXPECT_FALSE(platform::IsChecked(kThing));
  }
}

TEST_F(Assist, TurnsACheckBoxOverBeforeItIsTold) {
  Make(kThing, ControlKind::CheckBox, u"Box");
  bool told = false;
  listening.command = [&told](int, int) { told = platform::IsChecked(kThing); };
  hands::Assist(kThing, true);
  EXPECT_TRUE(told);
  EXPECT_EQ(Told("command"), (Lines{"command 1214 0"}));
  hands::Assist(kThing);
  EXPECT_FALSE(platform::IsChecked(kThing));
}

TEST_F(Assist, WorksNothingThatIsDisabledOrHidden) {
  for (const ControlKind kind : {ControlKind::PushButton, ControlKind::CheckBox}) {
    Make(kThing, kind, u"Key");
    platform::SetEnabled(kThing, false);
    hands::Assist(kThing);
    platform::SetEnabled(kThing, true);
    platform::SetVisible(kThing, false);
    hands::Assist(kThing);
    EXPECT_EQ(Told("command"), Lines());
    EXPECT_FALSE(platform::IsChecked(kThing));
    platform::Destroy(kThing);
  }
}

TEST_F(Assist, WorksNothingBehindADialog) {
  constexpr int kDialog = 500;
  Make(kThing, ControlKind::PushButton, u"Key");
  platform::DialogSpec spec;
  spec.id = kDialog;
  spec.place = {0, 0, 300, 200};
  ASSERT_TRUE(platform::MakeDialog(spec));
  Make(kDialog + 1, ControlKind::PushButton, u"Key", kDialog);
  hands::InDialog(kDialog, [] {
    hands::Assist(kThing);
    hands::Assist(kDialog + 1);
    platform::EndDialog(kDialog, 1);
  });
  platform::RunDialog(kDialog);
  EXPECT_EQ(Told("command"), Lines());
}

TEST_F(Assist, PressesARowAsAClickDoes) {
  MakeRows(kThing, ListKind::Single, 4);
  Forget();
  for (int i = 0; i < 2; ++i) {
    hands::AssistRow(kThing, 2);
    EXPECT_EQ(platform::SelectedRow(kThing), 2);
    EXPECT_EQ(Told("command listclick"), (Lines{"command 1214 1", "listclick 1214 2"}));
    Forget();
  }
  EXPECT_EQ(platform::FocusedId(), kThing);
}

TEST_F(Assist, TurnsOneOfSeveralRowsAndLeavesTheOthers) {
  MakeRows(kThing, ListKind::Multi, 4);
  hands::AssistRow(kThing, 1);
  hands::AssistRow(kThing, 3, true);
  EXPECT_TRUE(platform::IsRowSelected(kThing, 1));
  EXPECT_TRUE(platform::IsRowSelected(kThing, 3));
  hands::AssistRow(kThing, 1, true);
  EXPECT_FALSE(platform::IsRowSelected(kThing, 1));
  EXPECT_TRUE(platform::IsRowSelected(kThing, 3));
  Forget();
  hands::AssistRow(kThing, 0);
  EXPECT_FALSE(platform::IsRowSelected(kThing, 3));
  EXPECT_EQ(Told("command"), (Lines{"command 1214 1"}));
}

TEST_F(Assist, ChoosesARowOfAComboThatIsShut) {
  MakeRows(kThing, ListKind::Combo, 3);
  platform::SelectRow(kThing, 0);
  Forget();
  hands::AssistRow(kThing, 2);
  EXPECT_EQ(platform::SelectedRow(kThing), 2);
  EXPECT_EQ(Told("command"), (Lines{"command 1214 1"}));
}

TEST_F(Assist, KeepsWhichRowsAreDimAndChoosesThemAsOthers) {
  MakeRows(kThing, ListKind::Single, 3);
  platform::SetRowDim(kThing, 1, true);
  EXPECT_TRUE(platform::IsRowDim(kThing, 1));
  EXPECT_FALSE(platform::IsRowDim(kThing, 2));
  hands::AssistRow(kThing, 1);
  EXPECT_EQ(platform::SelectedRow(kThing), 1);
  platform::SetRowDim(kThing, 1, false);
  EXPECT_FALSE(platform::IsRowDim(kThing, 1));
  for (const int row : {-1, 3}) {
    platform::SetRowDim(kThing, row, true);
    EXPECT_FALSE(platform::IsRowDim(kThing, row));
  }
  platform::SetRowDim(kThing, 1, true);
  platform::ClearRows(kThing);
  platform::AddRow(kThing, u"new");
  EXPECT_FALSE(platform::IsRowDim(kThing, 0));
}

TEST_F(Assist, AsksWhatAViewShows) {
  MakeView(kThing, {10, 10, 210, 40});
  EXPECT_EQ(hands::ValueRead(kThing).words, u"");
  listening.viewValue = [](int view, platform::ViewValue& value) {
    if (view == kThing) value.words = u"two circles";
  };
  EXPECT_EQ(hands::ValueRead(kThing).words, u"two circles");
  hands::AssistValue(kThing, 3);
  EXPECT_EQ(Told("value"), Lines());
}

TEST_F(Assist, SetsASliderWithinItsSteps) {
  platform::ViewSpec spec;
  spec.id = kThing;
  spec.role = platform::ViewRole::Slider;
  ASSERT_TRUE(platform::MakeView(spec));
  platform::SetPlace(kThing, {10, 10, 210, 40});
  listening.viewValue = [](int, platform::ViewValue& value) { value = {u"half", 2, 8, 5}; };
  const platform::ViewValue read = hands::ValueRead(kThing);
  EXPECT_EQ(read.words, u"half");
  EXPECT_EQ(read.least, 2);
  EXPECT_EQ(read.most, 8);
  EXPECT_EQ(read.now, 5);
  for (const int step : {3, 1, 9}) hands::AssistValue(kThing, step);
  EXPECT_EQ(Told("value"), (Lines{"value 1214 3", "value 1214 2", "value 1214 8"}));
  platform::SetEnabled(kThing, false);
  hands::AssistValue(kThing, 4);
  EXPECT_EQ(Told("value").size(), 3u);
}

// Nobody can set how far a transfer has come.
TEST_F(Assist, ReadsABarAndSetsItNever) {
  platform::ViewSpec spec;
  spec.id = kThing;
  spec.role = platform::ViewRole::Progress;
  ASSERT_TRUE(platform::MakeView(spec));
  platform::SetPlace(kThing, {10, 10, 210, 40});
  listening.viewValue = [](int, platform::ViewValue& value) { value = {u"all", 0, 100, 40}; };
  EXPECT_EQ(hands::ValueRead(kThing).now, 40);
  hands::AssistValue(kThing, 60);
  EXPECT_EQ(Told("value"), Lines());
}

}  // namespace
}  // namespace contract
