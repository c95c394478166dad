// List boxes: rows, selection, scrolling, keys, mouse and what is told in which order.

#include <set>

#include "contract/contract.h"

namespace contract {
namespace {

using platform::IsRowSelected;
using platform::ListKind;
using platform::RowCount;
using platform::RowPlace;
using platform::SelectedRow;
using platform::SelectRow;
using platform::TopRow;

constexpr int kList = 1212;

class List : public Contract {
 protected:
  // Five rows are in view.
  static void Start(int rows, ListKind kind = ListKind::Single) {
    MakeRows(kList, kind, rows);
    Forget();
  }
  static std::vector<int> Selected() {
    std::vector<int> rows;
    for (int row = 0; row < RowCount(kList); ++row) {
      if (IsRowSelected(kList, row)) rows.push_back(row);
    }
    return rows;
  }
};

TEST_F(List, StartsWithoutRowsAndWithoutAChoice) {
  Start(0);
  EXPECT_EQ(RowCount(kList), 0);
  EXPECT_EQ(SelectedRow(kList), -1);
  EXPECT_EQ(TopRow(kList), 0);
  EXPECT_EQ(platform::AddRow(kList, u"a", 7), 0);
  EXPECT_EQ(platform::AddRow(kList, u"b", 8), 1);
  EXPECT_EQ(SelectedRow(kList), -1);
}

TEST_F(List, KeepsTextAndNumberOfEveryRow) {
  Start(3);
  EXPECT_EQ(platform::RowText(kList, 1), u"row b");
  EXPECT_EQ(platform::RowData(kList, 1), 10);
  platform::SetRowText(kList, 1, u"other");
  platform::SetRowData(kList, 1, -5000000000);
  EXPECT_EQ(platform::RowText(kList, 1), u"other");
  EXPECT_EQ(platform::RowData(kList, 1), -5000000000);
  EXPECT_EQ(platform::RowText(kList, 2), u"row c");
}

TEST_F(List, AnswersForARowThatDoesNotExistWithNothing) {
  Start(2);
  for (const int row : {-1, 2, 99}) {
    platform::SetRowText(kList, row, u"x");
    platform::SetRowData(kList, row, 1);
    EXPECT_EQ(platform::RowText(kList, row), u"");
    EXPECT_EQ(platform::RowData(kList, row), 0);
    EXPECT_FALSE(IsRowSelected(kList, row));
    EXPECT_TRUE(platform::SameRect(RowPlace(kList, row), {}));
  }
  EXPECT_EQ(RowCount(kList), 2);
}

TEST_F(List, SaysNothingWhenTheProgramSelects) {
  Start(9);
  SelectRow(kList, 8);
  EXPECT_EQ(SelectedRow(kList), 8);
  EXPECT_EQ(Selected(), std::vector<int>{8});
  EXPECT_EQ(TopRow(kList), 4);
  platform::SetTopRow(kList, 1);
  platform::ClearRows(kList);
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(List, SelectsNothingWhereTheRowDoesNotExist) {
  Start(3);
  for (const int row : {-1, 3, 99}) {
    SelectRow(kList, 1);
    SelectRow(kList, row);
    EXPECT_EQ(SelectedRow(kList), -1);
    EXPECT_EQ(Selected(), std::vector<int>{});
  }
}

TEST_F(List, KeepsItsChoiceWhenRowsAreAdded) {
  Start(3);
  SelectRow(kList, 1);
  platform::AddRow(kList, u"new");
  EXPECT_EQ(SelectedRow(kList), 1);
  EXPECT_EQ(platform::RowData(kList, 3), 0);
}

TEST_F(List, IsClearedAndFilledAnew) {
  Start(20);
  SelectRow(kList, 19);
  platform::ClearRows(kList);
  EXPECT_EQ(RowCount(kList), 0);
  EXPECT_EQ(SelectedRow(kList), -1);
  EXPECT_EQ(TopRow(kList), 0);
  for (int row = 0; row < 20; ++row) platform::AddRow(kList, u"new");
  EXPECT_EQ(SelectedRow(kList), -1);
  EXPECT_EQ(TopRow(kList), 0);
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(List, TellsAClickAsSelectionAndThenAsClick) {
  Start(5);
  ClickRow(kList, 2);
  EXPECT_EQ(SelectedRow(kList), 2);
  EXPECT_EQ(Told("gained command listclick"),
            (Lines{"gained 1212", "command 1212 1", "listclick 1212 2"}));
}

TEST_F(List, TellsAClickOnTheChosenRowToo) {
  Start(5);
  SelectRow(kList, 2);
  ClickRow(kList, 2);
  EXPECT_EQ(Told("command listclick"), (Lines{"command 1212 1", "listclick 1212 2"}));
}

TEST_F(List, TellsADoubleClickBehindTheFirstClick) {
  Start(5);
  hands::DoubleClickAt(kList, 20, 60);
  EXPECT_EQ(Told("command listclick"),
            (Lines{"command 1212 1", "listclick 1212 2", "command 1212 2"}));
}

TEST_F(List, KeepsItsChoiceAtAClickBelowTheRows) {
  Start(2);
  SelectRow(kList, 1);
  hands::ClickAt(kList, 20, 100);
  hands::DoubleClickAt(kList, 20, 100);
  EXPECT_EQ(SelectedRow(kList), 1);
  EXPECT_EQ(Told("command listclick"), Lines{});
}

TEST_F(List, AsksForTheMenuOfARowAndKeepsItsChoice) {
  Start(5);
  SelectRow(kList, 1);
  ClickRow(kList, 3, {false, false, platform::PointerButton::Right});
  EXPECT_EQ(Told("menu command"), Lines{"menu 1212 3"});
  EXPECT_EQ(SelectedRow(kList), 1);
  Forget();
  platform::ClearRows(kList);
  hands::ClickAt(kList, 20, 60, {false, false, platform::PointerButton::Right});
  EXPECT_EQ(Told("menu"), Lines{"menu 1212 -1"});
}

TEST_F(List, WalksByKeysAndTellsEveryRow) {
  Start(5);
  platform::SetFocusTo(kList);
  EXPECT_EQ(SelectedRow(kList), -1);
  Press(platform::kKeyDown);
  EXPECT_EQ(SelectedRow(kList), 0);
  Press(platform::kKeyDown);
  Press(platform::kKeyEnd);
  EXPECT_EQ(SelectedRow(kList), 4);
  Press(platform::kKeyUp);
  Press(platform::kKeyHome);
  EXPECT_EQ(SelectedRow(kList), 0);
  EXPECT_EQ(Told("command"), Lines(5, "command 1212 1"));
}

TEST_F(List, TellsNothingWhereAKeyFindsNoOtherRow) {
  Start(2);
  platform::SetFocusTo(kList);
  SelectRow(kList, 1);
  Press(platform::kKeyDown);
  Press(platform::kKeyEnd);
  SelectRow(kList, 0);
  Press(platform::kKeyUp);
  Press(platform::kKeyHome);
  EXPECT_EQ(SelectedRow(kList), 0);
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(List, WalksAPageAtATime) {
  Start(20);
  platform::SetFocusTo(kList);
  SelectRow(kList, 0);
  Press(platform::kKeyPageDown);
  EXPECT_GE(SelectedRow(kList), 4);
  EXPECT_LE(SelectedRow(kList), 5);
  for (int i = 0; i < 6; ++i) Press(platform::kKeyPageDown);
  EXPECT_EQ(SelectedRow(kList), 19);
  for (int i = 0; i < 6; ++i) Press(platform::kKeyPageUp);
  EXPECT_EQ(SelectedRow(kList), 0);
}

TEST_F(List, TellsEnterOnARowAsADoubleClick) {
  Start(3);
  platform::SetFocusTo(kList);
  SelectRow(kList, 2);
  Press(platform::kKeyEnter);
  EXPECT_EQ(Told("command"), Lines{"command 1212 2"});
}

TEST_F(List, ScrollsWithTheChoiceOfTheUserAndTellsIt) {
  Start(9);
  platform::SetFocusTo(kList);
  SelectRow(kList, 4);
  Forget();
  Press(platform::kKeyDown);
  EXPECT_EQ(TopRow(kList), 1);
  EXPECT_EQ(Told("command"), (Lines{"command 1212 1", "command 1212 1538"}));
}

TEST_F(List, ScrollsByTheWheelAndTellsItWhereItMoved) {
  Start(12);
  hands::WheelAt(kList, 20, 60, -1);
  EXPECT_EQ(TopRow(kList), 3);
  EXPECT_EQ(SelectedRow(kList), -1);
  EXPECT_EQ(Told("command"), Lines{"command 1212 1538"});
  hands::WheelAt(kList, 20, 60, -1);
  hands::WheelAt(kList, 20, 60, -1);
  EXPECT_EQ(TopRow(kList), 7);
  EXPECT_EQ(Told("command").size(), 3u);
  hands::WheelAt(kList, 20, 60, -1);
  EXPECT_EQ(Told("command").size(), 3u);
  hands::WheelAt(kList, 20, 60, 1);
  EXPECT_EQ(TopRow(kList), 4);
}

TEST_F(List, TurnsAsManyRowsANotchAsItWasMadeFor) {
  platform::ListSpec spec;
  spec.id = kList;
  spec.wheelRows = 1;
  ASSERT_TRUE(platform::MakeList(spec));
  platform::SetPlace(kList, {600, 400, 800, 520});
  for (int row = 0; row < 12; ++row) platform::AddRow(kList, u"row");
  Forget();
  hands::WheelAt(kList, 20, 60, -2);
  EXPECT_EQ(TopRow(kList), 2);
}

TEST_F(List, KeepsItsTopRowWithinItsRows) {
  Start(9);
  platform::SetTopRow(kList, 3);
  EXPECT_EQ(TopRow(kList), 3);
  platform::SetTopRow(kList, 99);
  EXPECT_EQ(TopRow(kList), 4);
  platform::SetTopRow(kList, -1);
  EXPECT_EQ(TopRow(kList), 0);
}

TEST_F(List, LaysItsRowsOneBelowTheOther) {
  Start(9);
  platform::SetTopRow(kList, 2);
  EXPECT_EQ(RowPlace(kList, 2).top, 0);
  EXPECT_EQ(RowPlace(kList, 2).bottom, 24);
  EXPECT_EQ(RowPlace(kList, 6).top, 96);
  EXPECT_EQ(RowPlace(kList, 2).left, 0);
  EXPECT_GT(RowPlace(kList, 2).right, 150);
  EXPECT_EQ(platform::RectHeight(RowPlace(kList, 1)), 0);
  EXPECT_EQ(platform::RectHeight(RowPlace(kList, 7)), 0);
}

TEST_F(List, KnowsTheRowsInViewBeforeItIsShown) {
  Start(9);
  platform::SetVisible(kList, false);
  platform::SetPlace(kList, {600, 400, 800, 472});
  SelectRow(kList, 8);
  EXPECT_EQ(TopRow(kList), 6);
  EXPECT_EQ(RowPlace(kList, 8).top, 48);
}

TEST_F(List, SaysNothingWhenItsPlaceChangesItsTopRow) {
  Start(9);
  platform::SetTopRow(kList, 4);
  platform::SetPlace(kList, {600, 400, 800, 568});
  hands::Settle();
  EXPECT_EQ(TopRow(kList), 2);
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(List, GivesTheKeyboardAwayWhereItTakesNone) {
  platform::ListSpec spec;
  spec.id = kList;
  spec.takesFocus = false;
  ASSERT_TRUE(platform::MakeList(spec));
  platform::SetPlace(kList, {600, 400, 800, 520});
  platform::AddRow(kList, u"row");
  Make(1, platform::ControlKind::EditLine);
  platform::SetFocusTo(1);
  ClickRow(kList, 0);
  EXPECT_EQ(platform::FocusedId(), 1);
  platform::SetFocusTo(kList);
  EXPECT_EQ(platform::FocusedId(), 1);
  Press(platform::kKeyTab);
  EXPECT_EQ(platform::FocusedId(), 1);
}

TEST_F(List, HoldsOneRowOnly) {
  Start(5);
  SelectRow(kList, 0);
  platform::SetRowSelected(kList, 3, true);
  EXPECT_EQ(Selected(), std::vector<int>{0});
  ClickRow(kList, 2, {true, false});
  ClickRow(kList, 4, {false, true});
  EXPECT_EQ(Selected(), std::vector<int>{4});
}

TEST_F(List, HoldsSeveralRowsWhereItIsMadeForThem) {
  Start(5, ListKind::Multi);
  SelectRow(kList, 0);
  platform::SetRowSelected(kList, 3, true);
  EXPECT_EQ(Selected(), (std::vector<int>{0, 3}));
  EXPECT_EQ(SelectedRow(kList), 3);
  platform::SetRowSelected(kList, 0, false);
  EXPECT_EQ(Selected(), std::vector<int>{3});
  EXPECT_EQ(SelectedRow(kList), 3);
  SelectRow(kList, 1);
  EXPECT_EQ(Selected(), std::vector<int>{1});
  SelectRow(kList, -1);
  EXPECT_EQ(Selected(), std::vector<int>{});
  EXPECT_EQ(SelectedRow(kList), -1);
  EXPECT_EQ(Told("command"), Lines{});
}

TEST_F(List, AddsARowWithCtrlAndStretchesWithShift) {
  Start(5, ListKind::Multi);
  ClickRow(kList, 1);
  ClickRow(kList, 3, {true, false});
  EXPECT_EQ(Selected(), (std::vector<int>{1, 3}));
  EXPECT_EQ(SelectedRow(kList), 3);
  ClickRow(kList, 1, {true, false});
  EXPECT_EQ(Selected(), std::vector<int>{3});
  ClickRow(kList, 0);
  ClickRow(kList, 2, {false, true});
  EXPECT_EQ(Selected(), (std::vector<int>{0, 1, 2}));
  ClickRow(kList, 1, {false, true});
  EXPECT_EQ(Selected(), (std::vector<int>{0, 1}));
  EXPECT_EQ(Told("command"), Lines(6, "command 1212 1"));
}

TEST_F(List, StretchesByKeysWithShift) {
  Start(5, ListKind::Multi);
  platform::SetFocusTo(kList);
  SelectRow(kList, 1);
  PressShift(platform::kKeyDown);
  PressShift(platform::kKeyDown);
  EXPECT_EQ(Selected(), (std::vector<int>{1, 2, 3}));
  PressShift(platform::kKeyUp);
  EXPECT_EQ(Selected(), (std::vector<int>{1, 2}));
  Press(platform::kKeyDown);
  EXPECT_EQ(Selected(), std::vector<int>{3});
  PressCtrl('A');
  EXPECT_EQ(Selected(), (std::vector<int>{0, 1, 2, 3, 4}));
}

TEST_F(List, LosesEverySelectedRowWhenItIsCleared) {
  Start(5, ListKind::Multi);
  platform::SetRowSelected(kList, 3, true);
  platform::ClearRows(kList);
  EXPECT_EQ(SelectedRow(kList), -1);
  platform::AddRow(kList, u"new");
  EXPECT_EQ(Selected(), std::vector<int>{});
}

TEST_F(List, TakesItsNewRowsWhileItTellsASelection) {
  Start(5);
  listening.command = [](int id, int notification) {
    if (notification != platform::kNotifyListSelect) return;
    platform::ClearRows(id);
    for (int row = 0; row < 3; ++row) platform::AddRow(id, u"new");
    SelectRow(id, 1);
  };
  ClickRow(kList, 4);
  EXPECT_EQ(RowCount(kList), 3);
  EXPECT_EQ(SelectedRow(kList), 1);
}

TEST_F(List, SurvivesItsEndInItsNotification) {
  Start(5);
  listening.command = [](int id, int) { platform::Destroy(id); };
  ClickRow(kList, 2);
  EXPECT_FALSE(platform::Exists(kList));
  EXPECT_EQ(Told("command"), Lines{"command 1212 1"});
}

TEST_F(List, TakesNoClickWhileItIsDisabled) {
  Start(5);
  platform::SetEnabled(kList, false);
  ClickRow(kList, 2);
  hands::WheelAt(kList, 20, 60, -1);
  EXPECT_EQ(SelectedRow(kList), -1);
  EXPECT_EQ(Told("command listclick"), Lines{});
}

TEST_F(List, IsDrawnRowByRowInView) {
  Start(9);
  SelectRow(kList, 1);
  std::set<int> rows;
  std::set<int> selected;
  listening.drawItem = [&](int, const platform::DrawState& state, platform::Canvas&) {
    rows.insert(state.row);
    if (state.selected) selected.insert(state.row);
  };
  hands::Paint(kList);
  EXPECT_EQ(rows, (std::set<int>{0, 1, 2, 3, 4}));
  EXPECT_EQ(selected, std::set<int>{1});
}

TEST_F(List, GoesToTheRowThatBeginsWithATypedLetter) {
  Start(0);
  for (const char16_t* words : {u"Drill", u"Mill", u"Tap", u"Turn"}) {
    platform::AddRow(kList, words);
  }
  platform::SetFocusTo(kList);
  Press('T');
  EXPECT_EQ(SelectedRow(kList), 2);
  EXPECT_EQ(Told("key command"), (Lines{"key 1212 T", "command 1212 1"}));
}

}  // namespace
}  // namespace contract
