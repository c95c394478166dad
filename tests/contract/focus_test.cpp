// The keyboard: who gets it, who loses it, the way of Tab, and what is told.

#include <algorithm>

#include "contract/contract.h"

namespace contract {
namespace {

using platform::ControlKind;
using platform::FocusedId;
using platform::SetFocusTo;

class Focus : public Contract {
 protected:
  static void MakeButtons(int count) {
    for (int id = 1; id <= count; ++id) Make(id, ControlKind::PushButton, u"b");
    Forget();
  }
  // The ids that Tab, or with Shift, comes to from `from`, as many as asked for.
  static std::vector<int> Way(int from, int steps, bool shift = false) {
    SetFocusTo(from);
    std::vector<int> ids;
    for (int i = 0; i < steps; ++i) {
      hands::Press({platform::kKeyTab, false, shift, false});
      ids.push_back(FocusedId());
    }
    return ids;
  }
  using Ids = std::vector<int>;
};

TEST_F(Focus, IsNobodysInAnEmptyWindow) {
  EXPECT_EQ(FocusedId(), 0);
  MakeButtons(2);
  EXPECT_EQ(FocusedId(), 0);
}

TEST_F(Focus, GoesWhereTheProgramSetsItAndIsToldLostBeforeGained) {
  MakeButtons(2);
  SetFocusTo(1);
  EXPECT_EQ(FocusedId(), 1);
  SetFocusTo(2);
  EXPECT_EQ(FocusedId(), 2);
  SetFocusTo(2);
  EXPECT_EQ(Told("gained lost"), (Lines{"gained 1", "lost 1", "gained 2"}));
}

TEST_F(Focus, IsAlreadyThereWhenItIsTold) {
  MakeButtons(2);
  SetFocusTo(1);
  Ids seen;
  listening.focusChanged = [&seen](int, bool) { seen.push_back(FocusedId()); };
  SetFocusTo(2);
  EXPECT_EQ(seen, (Ids{2, 2}));
}

TEST_F(Focus, StaysWhereItIsWhenAHiddenDisabledOrUnknownThingIsToGetIt) {
  MakeButtons(4);
  SetFocusTo(1);
  platform::SetVisible(2, false);
  platform::SetEnabled(3, false);
  for (const int id : {2, 3, 99, 0}) {
    SetFocusTo(id);
    EXPECT_EQ(FocusedId(), 1) << id;
  }
  platform::SetVisible(2, true);
  platform::SetEnabled(3, true);
  hands::Settle();
  EXPECT_EQ(FocusedId(), 1);
  EXPECT_EQ(Told("gained lost"), Lines{"gained 1"});
}

TEST_F(Focus, StaysWhereItIsWhenTheChildOfAHiddenOrDisabledViewIsToGetIt) {
  MakeButtons(1);
  MakeView(50, {600, 0, 900, 300});
  Make(51, ControlKind::EditLine, u"", 50);
  SetFocusTo(1);
  platform::SetVisible(50, false);
  SetFocusTo(51);
  EXPECT_EQ(FocusedId(), 1);
  platform::SetVisible(50, true);
  EXPECT_EQ(FocusedId(), 1);
  platform::SetEnabled(50, false);
  SetFocusTo(51);
  EXPECT_EQ(FocusedId(), 1);
}

TEST_F(Focus, StaysWhereItIsWhenAThingThatTakesNoneIsToGetIt) {
  MakeButtons(1);
  SetFocusTo(1);
  Make(2, ControlKind::Label, u"Feed");
  MakeView(50, {600, 0, 900, 300});
  SetFocusTo(2);
  SetFocusTo(50);
  EXPECT_EQ(FocusedId(), 1);
}

TEST_F(Focus, IsGivenUpForTheMainWindow) {
  MakeButtons(1);
  SetFocusTo(1);
  SetFocusTo(platform::kMainWindow);
  EXPECT_EQ(FocusedId(), 0);
  EXPECT_EQ(Told("gained lost"), (Lines{"gained 1", "lost 1"}));
}

TEST_F(Focus, GoesOnToTheNextWhenItsHolderIsHidden) {
  MakeButtons(3);
  SetFocusTo(2);
  platform::SetVisible(2, false);
  EXPECT_EQ(FocusedId(), 3);
  EXPECT_EQ(Told("gained lost"), (Lines{"gained 2", "lost 2", "gained 3"}));
}

TEST_F(Focus, GoesOnToTheNextWhenItsHolderIsDisabled) {
  MakeButtons(3);
  SetFocusTo(2);
  platform::SetEnabled(2, false);
  EXPECT_EQ(FocusedId(), 3);
}

TEST_F(Focus, GoesOnToTheNextWhenItsHolderIsDestroyed) {
  MakeButtons(3);
  SetFocusTo(2);
  platform::Destroy(2);
  EXPECT_EQ(FocusedId(), 3);
  EXPECT_EQ(Told("gained lost"), (Lines{"gained 2", "lost 2", "gained 3"}));
}

TEST_F(Focus, GoesOnToTheNextWhenTheViewAroundItsHolderIsHidden) {
  MakeButtons(1);
  MakeView(50, {600, 0, 900, 300});
  Make(51, ControlKind::EditLine, u"", 50);
  Make(52, ControlKind::EditLine, u"", 50);
  SetFocusTo(51);
  platform::SetVisible(50, false);
  EXPECT_EQ(FocusedId(), 1);
}

TEST_F(Focus, GoesOnFromAnEditorToo) {
  MakeEditor(300, u"");
  MakeButtons(1);
  platform::SetVisible(300, false);
  EXPECT_EQ(FocusedId(), 1);
  platform::SetVisible(300, true);
  SetFocusTo(300);
  platform::SetEnabled(300, false);
  EXPECT_EQ(FocusedId(), 1);
}

TEST_F(Focus, IsNobodysWhenItsOnlyHolderGoes) {
  MakeButtons(1);
  SetFocusTo(1);
  platform::SetVisible(1, false);
  EXPECT_EQ(FocusedId(), 0);
  EXPECT_EQ(Told("gained lost"), (Lines{"gained 1", "lost 1"}));
}

TEST_F(Focus, IsNotTakenBackByAThingThatIsShownAgain) {
  MakeButtons(2);
  SetFocusTo(1);
  platform::SetVisible(1, false);
  platform::SetVisible(1, true);
  EXPECT_EQ(FocusedId(), 2);
}

TEST_F(Focus, TravelsByTabInTheOrderOfMakingAndRound) {
  MakeButtons(3);
  EXPECT_EQ(Way(1, 3), (Ids{2, 3, 1}));
  EXPECT_EQ(Way(1, 3, true), (Ids{3, 2, 1}));
}

TEST_F(Focus, TravelsByTabInTheOrderThatTheProgramSets) {
  MakeButtons(4);
  const int order[] = {3, 1, 4, 2};
  platform::SetTabOrder(order, 4);
  EXPECT_EQ(Way(3, 4), (Ids{1, 4, 2, 3}));
  EXPECT_EQ(Way(3, 4, true), (Ids{2, 4, 1, 3}));
}

TEST_F(Focus, PutsTheOthersBehindTheFirstOfAnOrder) {
  MakeButtons(5);
  const int order[] = {4, 1};
  platform::SetTabOrder(order, 2);
  EXPECT_EQ(Way(4, 5), (Ids{1, 5, 2, 3, 4}));
  const int more[] = {2, 5};
  platform::SetTabOrder(more, 2);
  EXPECT_EQ(Way(4, 5), (Ids{1, 2, 5, 3, 4}));
}

TEST_F(Focus, KeepsTheOrderWhereAnOrderNamesNothing) {
  MakeButtons(3);
  const int order[] = {2, 99, 1};
  platform::SetTabOrder(order, 1);
  platform::SetTabOrder(order, 0);
  EXPECT_EQ(Way(1, 3), (Ids{2, 3, 1}));
  platform::SetTabOrder(order, 3);
  EXPECT_EQ(Way(2, 3), (Ids{1, 3, 2}));
}

TEST_F(Focus, PassesByTabWhatIsHiddenDisabledOrTakesNone) {
  MakeButtons(5);
  platform::SetVisible(2, false);
  platform::SetEnabled(3, false);
  Make(6, ControlKind::Label, u"Feed");
  EXPECT_EQ(Way(1, 3), (Ids{4, 5, 1}));
  EXPECT_EQ(Way(1, 3, true), (Ids{5, 4, 1}));
}

TEST_F(Focus, PassesByTabWhatLiesInAHiddenOrDisabledView) {
  MakeButtons(1);
  MakeView(50, {600, 0, 900, 300});
  Make(51, ControlKind::EditLine, u"", 50);
  MakeView(60, {600, 300, 900, 600});
  Make(61, ControlKind::EditLine, u"", 60);
  Make(2, ControlKind::PushButton, u"b");
  EXPECT_EQ(Way(1, 4), (Ids{51, 61, 2, 1}));
  platform::SetVisible(50, false);
  platform::SetEnabled(60, false);
  EXPECT_EQ(Way(1, 2), (Ids{2, 1}));
}

TEST_F(Focus, ComesByTabToEveryKindThatTakesIt) {
  Make(1, ControlKind::PushButton, u"b");
  Make(2, ControlKind::CheckBox, u"c");
  Make(3, ControlKind::EditLine);
  Make(4, ControlKind::MultiEdit);
  Make(5, ControlKind::Log);
  MakeRows(6, platform::ListKind::Single, 3);
  MakeRows(7, platform::ListKind::Combo, 3);
  MakeView(8, {900, 600, 1000, 700}, true);
  MakeView(9, {1000, 600, 1100, 700}, false);
  EXPECT_EQ(Way(1, 8), (Ids{2, 3, 4, 5, 6, 7, 8, 1}));
}

TEST_F(Focus, ComesByTabToAThingThatIsMadeAnew) {
  MakeButtons(3);
  const int order[] = {3, 1, 2};
  platform::SetTabOrder(order, 3);
  platform::Destroy(1);
  EXPECT_EQ(Way(3, 2), (Ids{2, 3}));
  Make(1, ControlKind::PushButton, u"b");
  Ids way = Way(3, 3);
  std::sort(way.begin(), way.end());
  EXPECT_EQ(way, (Ids{1, 2, 3}));
}

TEST_F(Focus, ComesByTabToTheFirstWhereNobodyHasIt) {
  MakeButtons(2);
  Press(platform::kKeyTab);
  EXPECT_EQ(FocusedId(), 1);
  EXPECT_EQ(Told("key"), Lines{"key 20000 257"});
}

TEST_F(Focus, StaysWhereTheApplicationTookTab) {
  MakeButtons(2);
  listening.key = [](int, const platform::KeyEvent& key) { return key.key == platform::kKeyTab; };
  EXPECT_EQ(Way(1, 1), Ids{1});
  SetFocusTo(platform::kMainWindow);
  Press(platform::kKeyTab);
  EXPECT_EQ(FocusedId(), 0);
}

TEST_F(Focus, ComesByAClick) {
  MakeButtons(1);
  Make(2, ControlKind::EditLine);
  Make(3, ControlKind::Label, u"Feed");
  MakeView(50, {900, 600, 1000, 700}, true);
  Click(2);
  EXPECT_EQ(FocusedId(), 2);
  Click(3);
  EXPECT_EQ(FocusedId(), 2);
  Click(50);
  EXPECT_EQ(FocusedId(), 50);
  Click(1);
  EXPECT_EQ(FocusedId(), 1);
}

TEST_F(Focus, LetsAKeyBeHeardOnceByItsHolder) {
  MakeView(50, {600, 0, 900, 300}, true);
  Make(51, ControlKind::PushButton, u"b", 50);
  Make(52, ControlKind::EditLine, u"", 50);
  MakeRows(53, platform::ListKind::Single, 2, 50);
  platform::SetPlace(53, {0, 0, 100, 100});
  for (const int id : {50, 51, 52, 53}) {
    SetFocusTo(id);
    Forget();
    Press('Q');
    Press(platform::kKeyEscape);
    const std::string word = "key " + std::to_string(id);
    EXPECT_EQ(Told("key"), (Lines{word + " Q", word + " 258"}));
  }
}

TEST_F(Focus, LetsAKeyBeHeardByTheMainWindowWhereNobodyHasIt) {
  Press('Q');
  Press(platform::kKeyF1);
  hands::Press({'S', true, true, false});
  EXPECT_EQ(Told("key"), (Lines{"key 20000 Q", "key 20000 512", "key 20000 ctrl+shift+S"}));
}

TEST_F(Focus, MovesOnFromInsideItsOwnNotification) {
  MakeButtons(3);
  listening.focusChanged = [](int id, bool gained) {
    if (id == 2 && gained) SetFocusTo(3);
  };
  SetFocusTo(2);
  EXPECT_EQ(FocusedId(), 3);
}

TEST_F(Focus, SurvivesTheEndOfItsHolderInItsNotification) {
  MakeButtons(2);
  SetFocusTo(1);
  listening.focusChanged = [](int id, bool gained) {
    if (id == 1 && !gained) platform::Destroy(1);
  };
  SetFocusTo(2);
  EXPECT_FALSE(platform::Exists(1));
  EXPECT_EQ(FocusedId(), 2);
}

}  // namespace
}  // namespace contract
