// Placed things: ids, names, rectangles, visible and enabled, order on top, their end.

#include "contract/contract.h"

namespace contract {
namespace {

using platform::AccessibleName;
using platform::ClientArea;
using platform::ControlKind;
using platform::IsEnabled;
using platform::IsVisible;
using platform::PlaceInMainWindow;
using platform::PlaceOf;
using platform::Rect;
using platform::SetPlace;

class Placed : public Contract {
 protected:
  static std::string Words(const Rect& r) {
    return std::to_string(r.left) + " " + std::to_string(r.top) + " " + std::to_string(r.right) +
           " " + std::to_string(r.bottom);
  }
  static bool MakeKind(ControlKind kind, int id, const char16_t* text = u"",
                       const char16_t* name = u"") {
    platform::ControlSpec spec;
    spec.id = id;
    spec.kind = kind;
    spec.text = text;
    spec.accessibleName = name;
    return platform::MakeControl(spec);
  }
};

TEST_F(Placed, TakesAnIdOnlyOnce) {
  EXPECT_TRUE(MakeKind(ControlKind::Label, 1, u"first"));
  EXPECT_FALSE(MakeKind(ControlKind::PushButton, 1, u"second"));
  platform::ListSpec list;
  list.id = 1;
  EXPECT_FALSE(platform::MakeList(list));
  platform::EditorSpec editor;
  editor.id = 1;
  EXPECT_FALSE(platform::MakeEditor(editor));
  platform::ViewSpec view;
  view.id = 1;
  EXPECT_FALSE(platform::MakeView(view));
  view.id = platform::kMainWindow;
  EXPECT_FALSE(platform::MakeView(view));
  EXPECT_FALSE(platform::MakeMainWindow({}));
  EXPECT_EQ(platform::TextOf(1), u"first");
}

TEST_F(Placed, NeedsAParentThatExists) {
  platform::ControlSpec control;
  control.id = 1;
  control.parent = 77;
  EXPECT_FALSE(platform::MakeControl(control));
  platform::ListSpec list;
  list.id = 1;
  list.parent = 77;
  EXPECT_FALSE(platform::MakeList(list));
  platform::EditorSpec editor;
  editor.id = 1;
  editor.parent = 77;
  EXPECT_FALSE(platform::MakeEditor(editor));
  platform::ViewSpec view;
  view.id = 1;
  view.parent = 77;
  EXPECT_FALSE(platform::MakeView(view));
  EXPECT_FALSE(platform::Exists(1));
}

TEST_F(Placed, IsSilentWhileItIsMade) {
  MakeKind(ControlKind::EditLine, 1, u"text");
  MakeKind(ControlKind::MultiEdit, 2, u"text");
  MakeKind(ControlKind::CheckBox, 3, u"text");
  MakeRows(4, platform::ListKind::Single, 3);
  MakeRows(5, platform::ListKind::Combo, 3);
  EXPECT_EQ(Told("command selection gained lost typed"), Lines{});
}

TEST_F(Placed, IsNamedByItsCaptionWhereItHasOne) {
  for (const ControlKind kind :
       {ControlKind::PushButton, ControlKind::CheckBox, ControlKind::Label}) {
    MakeKind(kind, 1, u"A & B");
    EXPECT_EQ(AccessibleName(1), u"A & B");
    platform::SetText(1, u"C");
    EXPECT_EQ(AccessibleName(1), u"C");
    platform::SetAccessibleName(1, u"Given");
    platform::SetText(1, u"D");
    EXPECT_EQ(AccessibleName(1), u"Given");
    platform::SetAccessibleName(1, u"");
    EXPECT_EQ(AccessibleName(1), u"D");
    platform::Destroy(1);
  }
}

TEST_F(Placed, IsNamedByNoTextThatTheUserWrites) {
  for (const ControlKind kind : {ControlKind::EditLine, ControlKind::MultiEdit, ControlKind::Log}) {
    MakeKind(kind, 1, u"0.500");
    EXPECT_EQ(AccessibleName(1), u"");
    platform::SetText(1, u"0.750");
    EXPECT_EQ(AccessibleName(1), u"");
    platform::SetAccessibleName(1, u"Feed");
    EXPECT_EQ(AccessibleName(1), u"Feed");
    platform::Destroy(1);
  }
  MakeRows(2, platform::ListKind::Single, 3);
  platform::SelectRow(2, 1);
  EXPECT_EQ(AccessibleName(2), u"");
  MakeEditor(300, u"G0");
  EXPECT_EQ(AccessibleName(300), u"");
}

TEST_F(Placed, KeepsTheNameThatItIsMadeWith) {
  MakeKind(ControlKind::EditLine, 1, u"0.500", u"Feed");
  EXPECT_EQ(AccessibleName(1), u"Feed");
  MakeKind(ControlKind::PushButton, 2, u"+", u"New program");
  EXPECT_EQ(AccessibleName(2), u"New program");
  platform::ViewSpec view;
  view.id = 3;
  view.accessibleName = u"Path";
  platform::MakeView(view);
  EXPECT_EQ(AccessibleName(3), u"Path");
  platform::ListSpec list;
  list.id = 4;
  list.accessibleName = u"Tools";
  platform::MakeList(list);
  EXPECT_EQ(AccessibleName(4), u"Tools");
  platform::EditorSpec editor;
  editor.id = 5;
  editor.accessibleName = u"Program";
  platform::MakeEditor(editor);
  EXPECT_EQ(AccessibleName(5), u"Program");
}

TEST_F(Placed, HasATextOnlyWhereItsKindHasOne) {
  MakeRows(1, platform::ListKind::Single, 2);
  MakeRows(2, platform::ListKind::Combo, 2);
  MakeView(3, {0, 0, 10, 10});
  MakeEditor(4, u"G0");
  for (const int id : {1, 2, 3, 4, platform::kMainWindow}) platform::SetText(id, u"text");
  for (const int id : {1, 2, 3, platform::kMainWindow}) {
    EXPECT_EQ(platform::TextOf(id), u"") << id;
    EXPECT_EQ(AccessibleName(id), u"") << id;
  }
  EXPECT_EQ(platform::TextOf(4), u"G0");
  EXPECT_EQ(platform::WindowTitle(), u"contract");
}

TEST_F(Placed, IsFoundByItsClass) {
  platform::ViewSpec view;
  view.id = 50;
  view.className = u"ContractView";
  ASSERT_TRUE(platform::MakeView(view));
  EXPECT_EQ(platform::ViewByClass(u"ContractView"), 50);
  EXPECT_EQ(platform::ClassOf(50), u"ContractView");
  EXPECT_EQ(platform::ViewByClass(u"ContractWindow"), platform::kMainWindow);
  EXPECT_EQ(platform::ClassOf(platform::kMainWindow), u"ContractWindow");
  platform::Destroy(50);
  EXPECT_EQ(platform::ViewByClass(u"ContractView"), 0);
}

TEST_F(Placed, IsNotFoundByAnEmptyOrUnknownClass) {
  MakeView(50, {0, 0, 10, 10});
  Make(1, ControlKind::Label);
  EXPECT_EQ(platform::ViewByClass(u""), 0);
  EXPECT_EQ(platform::ViewByClass(u"Nobody"), 0);
  EXPECT_EQ(platform::ClassOf(50), u"");
  EXPECT_EQ(platform::ClassOf(1), u"");
}

TEST_F(Placed, IsTheFirstMadeOfTwoWithTheSameClass) {
  platform::ViewSpec view;
  view.className = u"Twice";
  for (const int id : {70, 50, 60}) {
    view.id = id;
    ASSERT_TRUE(platform::MakeView(view));
  }
  EXPECT_EQ(platform::ViewByClass(u"Twice"), 70);
}

TEST_F(Placed, HasAnEmptyPlaceUntilItIsPlaced) {
  MakeKind(ControlKind::PushButton, 1);
  MakeKind(ControlKind::EditLine, 2);
  MakeKind(ControlKind::MultiEdit, 3);
  platform::ListSpec list;
  list.id = 4;
  platform::MakeList(list);
  platform::EditorSpec editor;
  editor.id = 5;
  platform::MakeEditor(editor);
  platform::ViewSpec view;
  view.id = 6;
  platform::MakeView(view);
  for (int id = 1; id <= 6; ++id) EXPECT_EQ(Words(PlaceOf(id)), "0 0 0 0") << id;
}

TEST_F(Placed, StandsWhereItIsPlacedAndMovesWhole) {
  Make(1, ControlKind::PushButton);
  SetPlace(1, {10, 20, 110, 60});
  EXPECT_EQ(Words(PlaceOf(1)), "10 20 110 60");
  EXPECT_EQ(Words(ClientArea(1)), "0 0 100 40");
  SetPlace(1, {300, 400, 400, 440});
  EXPECT_EQ(Words(PlaceOf(1)), "300 400 400 440");
  EXPECT_EQ(Words(PlaceInMainWindow(1)), "300 400 400 440");
  EXPECT_EQ(Told("command resized"), Lines{});
}

TEST_F(Placed, IsEmptyAtTheCornerOfAnInvertedRectangle) {
  Make(1, ControlKind::PushButton);
  SetPlace(1, {100, 80, 60, 50});
  EXPECT_EQ(Words(PlaceOf(1)), "100 80 100 80");
  EXPECT_EQ(Words(ClientArea(1)), "0 0 0 0");
  SetPlace(1, {100, 80, 60, 90});
  EXPECT_EQ(Words(PlaceOf(1)), "100 80 100 90");
  SetPlace(1, {100, 80, 120, 50});
  EXPECT_EQ(Words(PlaceOf(1)), "100 80 120 80");
  EXPECT_TRUE(IsVisible(1));
}

TEST_F(Placed, MayBeEmptyAndIsVisibleAllTheSame) {
  Make(1, ControlKind::EditLine);
  SetPlace(1, {10, 10, 10, 10});
  EXPECT_EQ(Words(PlaceOf(1)), "10 10 10 10");
  EXPECT_TRUE(IsVisible(1));
}

TEST_F(Placed, MayLieOutsideItsParent) {
  MakeView(50, {100, 100, 200, 200});
  Make(51, ControlKind::PushButton, u"b", 50);
  for (const Rect& place : {Rect{-500, -40, -400, -10}, Rect{150, 150, 900, 900}}) {
    SetPlace(51, place);
    EXPECT_EQ(Words(PlaceOf(51)), Words(place));
    EXPECT_TRUE(IsVisible(51));
  }
}

TEST_F(Placed, IsToldInMainWindowPixelsThroughItsParents) {
  MakeView(50, {100, 200, 500, 600});
  MakeView(60, {10, 20, 300, 300}, false, 50);
  Make(61, ControlKind::PushButton, u"b", 60);
  SetPlace(61, {1, 2, 31, 22});
  EXPECT_EQ(Words(PlaceOf(61)), "1 2 31 22");
  EXPECT_EQ(Words(PlaceInMainWindow(61)), "111 222 141 242");
  EXPECT_EQ(Words(PlaceInMainWindow(platform::kMainWindow)), "0 0 1200 800");
}

TEST_F(Placed, LeavesTheMainWindowWhereItIs) {
  SetPlace(platform::kMainWindow, {0, 0, 500, 500});
  EXPECT_EQ(Words(PlaceOf(platform::kMainWindow)), "0 0 1200 800");
}

TEST_F(Placed, IsVisibleWithAllItsParents) {
  MakeView(50, {0, 0, 500, 600});
  MakeView(60, {0, 0, 300, 300}, false, 50);
  Make(61, ControlKind::PushButton, u"b", 60);
  EXPECT_TRUE(IsVisible(61));
  platform::SetVisible(50, false);
  EXPECT_FALSE(IsVisible(61));
  platform::SetVisible(61, false);
  platform::SetVisible(50, true);
  EXPECT_TRUE(IsVisible(60));
  EXPECT_FALSE(IsVisible(61));
  platform::SetVisible(61, true);
  EXPECT_TRUE(IsVisible(61));
}

TEST_F(Placed, IsHiddenWhenItIsMadeSo) {
  platform::ControlSpec control;
  control.id = 1;
  control.hidden = true;
  ASSERT_TRUE(platform::MakeControl(control));
  platform::ListSpec list;
  list.id = 2;
  list.hidden = true;
  ASSERT_TRUE(platform::MakeList(list));
  platform::EditorSpec editor;
  editor.id = 3;
  editor.hidden = true;
  ASSERT_TRUE(platform::MakeEditor(editor));
  for (const int id : {1, 2, 3}) {
    EXPECT_FALSE(IsVisible(id));
    platform::SetVisible(id, true);
    EXPECT_TRUE(IsVisible(id));
  }
}

TEST_F(Placed, IsEnabledWithAllItsParents) {
  MakeView(50, {0, 0, 500, 600});
  Make(51, ControlKind::PushButton, u"b", 50);
  Make(52, ControlKind::PushButton, u"b", 50);
  platform::SetEnabled(52, false);
  EXPECT_TRUE(IsEnabled(51));
  platform::SetEnabled(50, false);
  EXPECT_FALSE(IsEnabled(51));
  EXPECT_FALSE(IsEnabled(50));
  platform::SetEnabled(50, true);
  EXPECT_TRUE(IsEnabled(51));
  EXPECT_FALSE(IsEnabled(52));
  EXPECT_TRUE(IsEnabled(platform::kMainWindow));
}

TEST_F(Placed, TakesTheProgramsTextWhileItIsHiddenOrDisabled) {
  Make(1, ControlKind::EditLine);
  platform::SetVisible(1, false);
  platform::SetEnabled(1, false);
  platform::SetText(1, u"text");
  EXPECT_EQ(platform::TextOf(1), u"text");
  EXPECT_EQ(Marked(1), u"|text");
}

TEST_F(Placed, LiesUnderWhatIsMadeLater) {
  MakeKind(ControlKind::PushButton, 1);
  MakeKind(ControlKind::PushButton, 2);
  SetPlace(1, {100, 100, 200, 200});
  SetPlace(2, {150, 100, 250, 200});
  hands::ClickAt(platform::kMainWindow, 175, 150);
  hands::ClickAt(platform::kMainWindow, 125, 150);
  EXPECT_EQ(Told("command"), (Lines{"command 2 0", "command 1 0"}));
}

TEST_F(Placed, ComesToTheTopWhenItIsBroughtThere) {
  MakeKind(ControlKind::PushButton, 1);
  MakeKind(ControlKind::PushButton, 2);
  SetPlace(1, {100, 100, 200, 200});
  SetPlace(2, {150, 100, 250, 200});
  platform::BringToTop(1);
  hands::ClickAt(platform::kMainWindow, 175, 150);
  platform::BringToTop(2);
  hands::ClickAt(platform::kMainWindow, 175, 150);
  EXPECT_EQ(Told("command"), (Lines{"command 1 0", "command 2 0"}));
}

TEST_F(Placed, StaysBelowTheTopOfItsOwnParentOnly) {
  MakeView(50, {100, 100, 200, 200});
  MakeView(60, {100, 100, 200, 200});
  Make(51, ControlKind::PushButton, u"b", 50);
  SetPlace(51, {0, 0, 100, 100});
  platform::BringToTop(51);
  hands::ClickAt(platform::kMainWindow, 150, 150);
  EXPECT_EQ(Told("command"), Lines{});
  platform::BringToTop(50);
  hands::ClickAt(platform::kMainWindow, 150, 150);
  EXPECT_EQ(Told("command"), Lines{"command 51 0"});
}

TEST_F(Placed, IsCutOffAtTheEdgesOfItsParent) {
  MakeView(50, {100, 100, 200, 200});
  Make(51, ControlKind::PushButton, u"b", 50);
  SetPlace(51, {50, 50, 300, 300});
  hands::ClickAt(platform::kMainWindow, 250, 250);
  EXPECT_EQ(Told("command"), Lines{});
  hands::ClickAt(platform::kMainWindow, 175, 175);
  EXPECT_EQ(Told("command"), Lines{"command 51 0"});
}

TEST_F(Placed, GoesWithItsChildrenAndFreesTheirIds) {
  MakeView(50, {0, 0, 500, 600});
  MakeView(60, {0, 0, 300, 300}, false, 50);
  Make(61, ControlKind::EditLine, u"old", 60);
  platform::Destroy(50);
  for (const int id : {50, 60, 61}) EXPECT_FALSE(platform::Exists(id)) << id;
  platform::Destroy(50);
  Make(61, ControlKind::EditLine, u"new");
  EXPECT_EQ(platform::TextOf(61), u"new");
}

TEST_F(Placed, BeginsAnewWhenItsIdIsMadeAgain) {
  Make(1, ControlKind::EditLine, u"old");
  platform::SetAccessibleName(1, u"Old");
  platform::SetTextLimit(1, 1);
  platform::SetEnabled(1, false);
  platform::SetVisible(1, false);
  platform::Destroy(1);
  ASSERT_TRUE(MakeKind(ControlKind::EditLine, 1));
  EXPECT_EQ(Words(PlaceOf(1)), "0 0 0 0");
  EXPECT_EQ(AccessibleName(1), u"");
  EXPECT_TRUE(IsEnabled(1));
  EXPECT_TRUE(IsVisible(1));
  SetPlace(1, {10, 10, 210, 40});
  Click(1);
  hands::Type(u"abc");
  EXPECT_EQ(platform::TextOf(1), u"abc");
  EXPECT_EQ(Told("command").size(), 3u);
}

TEST_F(Placed, MayBeMadeAnewInItsOwnNotification) {
  Make(1, ControlKind::PushButton, u"old");
  listening.command = [](int id, int) {
    platform::Destroy(id);
    Make(id, ControlKind::PushButton, u"new");
  };
  Click(1);
  EXPECT_EQ(platform::TextOf(1), u"new");
  listening.command = nullptr;
  Click(1);
  EXPECT_EQ(Told("command"), (Lines{"command 1 0", "command 1 0"}));
}

TEST_F(Placed, MayDestroyTheViewAroundItInItsNotification) {
  MakeView(50, {0, 0, 500, 600});
  Make(51, ControlKind::EditLine, u"", 50);
  listening.command = [](int, int) { platform::Destroy(50); };
  Click(51);
  hands::Type(u"x");
  EXPECT_FALSE(platform::Exists(51));
  EXPECT_EQ(Told("command"), Lines{"command 51 768"});
}

TEST_F(Placed, ShowsItsHelpWhileThePointerRests) {
  Make(1, ControlKind::PushButton, u"b");
  platform::SetToolTip(1, u"A new program");
  EXPECT_EQ(hands::TipOver(1), u"A new program");
  platform::HideToolTips();
}

TEST_F(Placed, ShowsNoHelpWithoutWords) {
  Make(1, ControlKind::PushButton, u"b");
  platform::SetToolTip(1, u"A new program");
  platform::SetToolTip(1, u"");
  EXPECT_EQ(hands::TipOver(1), u"");
}

}  // namespace
}  // namespace contract
