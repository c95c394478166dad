// Combos: rows, choices by the user and by the program.

#include "contract/contract.h"

namespace contract {
namespace {

using platform::ListKind;
using platform::RowCount;
using platform::SelectedRow;
using platform::SelectRow;

constexpr int kCombo = 400;

class Combo : public Contract {
 protected:
  static void Start(int rows) {
    MakeRows(kCombo, ListKind::Combo, rows);
    platform::SetPlace(kCombo, {100, 100, 320, 128});
    Forget();
  }
};

TEST_F(Combo, StartsWithoutAChoice) {
  Start(4);
  EXPECT_EQ(RowCount(kCombo), 4);
  EXPECT_EQ(SelectedRow(kCombo), -1);
}

TEST_F(Combo, SaysNothingWhenTheProgramChooses) {
  Start(4);
  SelectRow(kCombo, 2);
  EXPECT_EQ(SelectedRow(kCombo), 2);
  EXPECT_TRUE(platform::IsRowSelected(kCombo, 2));
  EXPECT_FALSE(platform::IsRowSelected(kCombo, 1));
  for (const int row : {-1, 4}) {
    SelectRow(kCombo, 1);
    SelectRow(kCombo, row);
    EXPECT_EQ(SelectedRow(kCombo), -1);
  }
  platform::AddRow(kCombo, u"more", 99);
  platform::SetRowText(kCombo, 0, u"other");
  platform::ClearRows(kCombo);
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(Combo, TellsTheUsersChoiceOfAnotherRow) {
  Start(4);
  hands::ChooseInCombo(kCombo, 2);
  EXPECT_EQ(SelectedRow(kCombo), 2);
  EXPECT_EQ(Told("command"), Lines{"command 400 1"});
  hands::ChooseInCombo(kCombo, 2);
  EXPECT_EQ(Told("command"), Lines{"command 400 1"});
  hands::ChooseInCombo(kCombo, 0);
  EXPECT_EQ(Told("command"), (Lines{"command 400 1", "command 400 1"}));
}

TEST_F(Combo, HasTheKeyboardBehindAChoice) {
  Start(4);
  hands::ChooseInCombo(kCombo, 2);
  EXPECT_TRUE(hands::Until([] { return platform::FocusedId() == kCombo; }));
}

TEST_F(Combo, WalksByKeysAndTellsEveryRow) {
  Start(4);
  platform::SetFocusTo(kCombo);
  SelectRow(kCombo, 1);
  Press(platform::kKeyDown);
  EXPECT_EQ(SelectedRow(kCombo), 2);
  Press(platform::kKeyEnd);
  EXPECT_EQ(SelectedRow(kCombo), 3);
  Press(platform::kKeyDown);
  EXPECT_EQ(SelectedRow(kCombo), 3);
  Press(platform::kKeyUp);
  Press(platform::kKeyHome);
  EXPECT_EQ(SelectedRow(kCombo), 0);
  EXPECT_EQ(Told("command"), Lines(4, "command 400 1"));
}

TEST_F(Combo, StartsAtItsFirstRowByKey) {
  Start(4);
  platform::SetFocusTo(kCombo);
  Press(platform::kKeyDown);
  EXPECT_EQ(SelectedRow(kCombo), 0);
}

TEST_F(Combo, KeepsItsChoiceAndTellsNothingAtEnter) {
  Start(4);
  SelectRow(kCombo, 1);
  platform::SetFocusTo(kCombo);
  Press(platform::kKeyEnter);
  EXPECT_EQ(SelectedRow(kCombo), 1);
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(Combo, KeepsItsChoiceUnderTheWheel) {
  Start(4);
  SelectRow(kCombo, 1);
  hands::WheelAt(kCombo, 50, 10, -1);
  EXPECT_EQ(SelectedRow(kCombo), 1);
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(Combo, KeepsTextAndNumberOfEveryRow) {
  Start(3);
  EXPECT_EQ(platform::RowText(kCombo, 1), u"row b");
  EXPECT_EQ(platform::RowData(kCombo, 2), 20);
  platform::SetRowText(kCombo, 1, u"a & b");
  platform::SetRowData(kCombo, 1, -7);
  EXPECT_EQ(platform::RowText(kCombo, 1), u"a & b");
  EXPECT_EQ(platform::RowData(kCombo, 1), -7);
  EXPECT_EQ(platform::RowText(kCombo, 3), u"");
  EXPECT_EQ(platform::RowData(kCombo, -1), 0);
}

TEST_F(Combo, IsClearedAndFilledAnewWithoutAChoice) {
  Start(3);
  SelectRow(kCombo, 1);
  platform::ClearRows(kCombo);
  EXPECT_EQ(RowCount(kCombo), 0);
  EXPECT_EQ(SelectedRow(kCombo), -1);
  EXPECT_EQ(platform::AddRow(kCombo, u"new", 5), 0);
  EXPECT_EQ(SelectedRow(kCombo), -1);
  EXPECT_EQ(platform::RowData(kCombo, 0), 5);
}

TEST_F(Combo, HasNoTopRowAndNoPlacesOfRows) {
  Start(20);
  SelectRow(kCombo, 19);
  platform::SetTopRow(kCombo, 5);
  EXPECT_EQ(platform::TopRow(kCombo), 0);
  EXPECT_TRUE(platform::SameRect(platform::RowPlace(kCombo, 19), {}));
}

TEST_F(Combo, HoldsOneRowOnly) {
  Start(4);
  SelectRow(kCombo, 1);
  platform::SetRowSelected(kCombo, 2, true);
  EXPECT_EQ(SelectedRow(kCombo), 1);
}

TEST_F(Combo, GoesToTheRowThatBeginsWithATypedLetter) {
  Start(0);
  for (const char16_t* words : {u"Drill", u"Mill", u"Tap"}) platform::AddRow(kCombo, words);
  SelectRow(kCombo, 0);
  platform::SetFocusTo(kCombo);
  Press('T');
  EXPECT_EQ(SelectedRow(kCombo), 2);
  EXPECT_EQ(Told("key command"), (Lines{"key 400 T", "command 400 1"}));
}

TEST_F(Combo, TakesItsNewRowsWhileItTellsAChoice) {
  Start(4);
  listening.command = [](int id, int) {
    platform::ClearRows(id);
    platform::AddRow(id, u"only", 3);
    SelectRow(id, 0);
  };
  hands::ChooseInCombo(kCombo, 2);
  EXPECT_EQ(RowCount(kCombo), 1);
  EXPECT_EQ(SelectedRow(kCombo), 0);
  EXPECT_EQ(Told("command"), Lines{"command 400 1"});
}

}  // namespace
}  // namespace contract
