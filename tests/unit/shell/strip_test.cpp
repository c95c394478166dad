// The strip below the editor: dragged, closed and opened, with the pointer and by keys.

#include "shell/strip.h"

#include "app/hover.h"
#include "platform/window.h"
#include "shell/layout.h"
#include "shell/modes.h"
#include "support/workbench.h"

namespace morva {
namespace {

using platform::PlaceOf;
using platform::PointerAction;
using platform::PointerButton;
using platform::RectHeight;
using platform::RectWidth;

class StripBelow : public support::Workbench {
 protected:
  static void Pointer(PointerAction action, int x, int y) {
    platform::PointerEvent event;
    event.action = action;
    if (action != PointerAction::Move) event.button = PointerButton::Left;
    event.leftDown = action == PointerAction::Move;
    event.x = x;
    event.y = y;
    headless::Pointer(platform::kMainWindow, event);
  }
  // Takes the edge in its middle and leaves it `down` pixels lower.
  static void Drag(int down) {
    const platform::Rect edge = Areas().stripEdge;
    const int x = (edge.left + edge.right) / 2;
    const int y = (edge.top + edge.bottom) / 2;
    Pointer(PointerAction::Press, x, y);
    Pointer(PointerAction::Move, x, y + down);
    Pointer(PointerAction::Release, x, y + down);
  }
  static int LogHeight() { return RectHeight(PlaceOf(kIdOutputLog)); }
  static int EditorFoot() { return PlaceOf(kIdEditor).bottom; }
  static bool Shows(int id) { return platform::IsVisible(id); }
};

TEST_F(StripBelow, FollowsItsEdgeAndKeepsTheHeightInEveryMode) {
  for (const int mode : {int{kModeHome}, int{kModeSimulator}, int{kModeMacros}}) {
    SetMode(mode);
    Drag(0);
    const int log = LogHeight();
    const int foot = EditorFoot();
    Drag(-30);
    EXPECT_EQ(LogHeight(), log + 30) << mode;
    EXPECT_EQ(EditorFoot(), foot - 30) << mode;
    Drag(60);
    EXPECT_EQ(LogHeight(), log - 30) << mode;
  }
  const int log = LogHeight();
  SetMode(kModeHome);
  EXPECT_EQ(LogHeight(), log);
}

TEST_F(StripBelow, KeepsThreeLinesAndClosesBelowOne) {
  const int log = LogHeight();
  Drag(log - 40);
  EXPECT_EQ(LogHeight(), 54);
  EXPECT_FALSE(IsStripClosed());
  Drag(54 - 10);
  EXPECT_TRUE(IsStripClosed());
  EXPECT_FALSE(Shows(kIdOutputLog));
  EXPECT_FALSE(Shows(kIdInfoPanel));
  EXPECT_FALSE(Shows(kIdHelpText));
  // The head with its keys is the last row above the status line.
  EXPECT_TRUE(Shows(kIdOutputHead));
  EXPECT_TRUE(Shows(kIdPreflight));
  EXPECT_EQ(PlaceOf(kIdPreflight).bottom, Areas().status.top - 6);
  EXPECT_EQ(platform::TextOf(kIdStrip), u"\u25B2");
  // The edge opens it again.
  Drag(-100);
  EXPECT_TRUE(Shows(kIdOutputLog));
  EXPECT_EQ(platform::TextOf(kIdStrip), u"\u25BC");
}

TEST_F(StripBelow, LeavesTheEditorEightLines) {
  Drag(-2000);
  EXPECT_EQ(RectHeight(PlaceOf(kIdEditor)), 160);
  Drag(20);
  EXPECT_EQ(RectHeight(PlaceOf(kIdEditor)), 180);
}

TEST_F(StripBelow, ClosesAndOpensByItsKeyAndByItsChord) {
  const int log = LogHeight();
  const int editor = RectHeight(PlaceOf(kIdEditor));
  headless::Click(kIdStrip);
  EXPECT_FALSE(Shows(kIdOutputLog));
  EXPECT_EQ(RectHeight(PlaceOf(kIdEditor)), editor + log + 5);
  headless::Click(kIdStrip);
  EXPECT_EQ(LogHeight(), log);
  for (const int id : {kIdEditor, kIdFeatureList, kIdOutputLog}) {
    headless::Focus(id);
    EXPECT_TRUE(headless::PressKey({'J', true})) << id;
    EXPECT_FALSE(Shows(kIdOutputLog)) << id;
    EXPECT_TRUE(headless::PressKey({'J', true})) << id;
    EXPECT_TRUE(Shows(kIdOutputLog)) << id;
  }
}

TEST_F(StripBelow, MovesItsEdgeByTheArrowsOnItsKey) {
  headless::Focus(kIdStrip);
  const int log = LogHeight();
  headless::PressKey({platform::kKeyUp});
  EXPECT_EQ(LogHeight(), log + 20);
  for (int i = 0; i < 60; ++i) headless::PressKey({platform::kKeyUp});
  const int most = LogHeight();
  EXPECT_EQ(RectHeight(PlaceOf(kIdEditor)), 160);
  headless::PressKey({platform::kKeyDown});
  EXPECT_EQ(LogHeight(), most - 20);
  for (int i = 0; i < 60; ++i) headless::PressKey({platform::kKeyDown});
  EXPECT_TRUE(IsStripClosed());
  EXPECT_EQ(platform::FocusedId(), kIdStrip);
  headless::PressKey({platform::kKeyUp});
  EXPECT_EQ(LogHeight(), 54);
}

TEST_F(StripBelow, LetsTheQuickWorkflowYieldFirst) {
  headless::Resize(1200, 800);
  ASSERT_TRUE(Shows(kIdHelpText));
  const int width = RectWidth(PlaceOf(kIdOutputLog));
  Drag(10);
  EXPECT_FALSE(Shows(kIdHelpText));
  EXPECT_TRUE(Shows(kIdInfoPanel));
  EXPECT_GT(RectWidth(PlaceOf(kIdOutputLog)), width + 200);
  Drag(-10);
  EXPECT_TRUE(Shows(kIdHelpText));
  // Nor does it stand beside an output that is too narrow for its lines.
  DragSplitter(430);
  EXPECT_FALSE(Shows(kIdHelpText));
  EXPECT_GE(RectWidth(PlaceOf(kIdOutputLog)), 330);
}

TEST_F(StripBelow, OpensForAReportAndForThePageOfTheCodeIndex) {
  headless::Click(kIdStrip);
  headless::Focus(kIdEditor);
  headless::PressKey({platform::kKeyF1 + 4});
  EXPECT_TRUE(Shows(kIdOutputLog));
  EXPECT_TRUE(OutputHas(u"Validation complete"));
  headless::Click(kIdStrip);
  ASSERT_FALSE(Shows(kIdOutputLog));
  headless::Click(kIdShowIndex);
  EXPECT_TRUE(Shows(kIdIndexSearch));
  EXPECT_TRUE(Shows(kIdOutputLog));
}

TEST_F(StripBelow, IsClosedInTheReviewAndAsBeforeBehindIt) {
  const int log = LogHeight();
  headless::Click(kIdCompareSecond);
  EXPECT_FALSE(Shows(kIdOutputLog));
  const int pane = PlaceOf(kIdReviewLeftPane).bottom;
  // It can be opened there; the panes make room.
  headless::PressKey({'J', true});
  EXPECT_TRUE(Shows(kIdOutputLog));
  EXPECT_EQ(PlaceOf(kIdReviewLeftPane).bottom, pane - log - 5);
  headless::Click(kIdCompareSecond);
  EXPECT_EQ(LogHeight(), log);
  headless::Click(kIdCompareSecond);
  EXPECT_FALSE(Shows(kIdOutputLog));
  headless::Click(kIdCompareSecond);
  headless::Click(kIdStrip);
  headless::Click(kIdCompareSecond);
  headless::Click(kIdCompareSecond);
  EXPECT_FALSE(Shows(kIdOutputLog));
}

// A screen of 1280 by 720, less its own bar and a title.
TEST_F(StripBelow, StandsInAWindowThatFillsASmallScreen) {
  headless::CloseKey();
  ResetApplication();
  headless::Reset(platform::FromUtf8(home_.string()));
  headless::SetScreen(1280, 640);
  ASSERT_EQ(StartApplication(), 0);
  EXPECT_EQ(platform::ClientArea(platform::kMainWindow).bottom, 640);
  EXPECT_EQ(platform::ClientArea(platform::kMainWindow).right, 1280);
  EXPECT_LE(PlaceOf(kIdStatusLine).bottom, 640);
  EXPECT_GE(RectHeight(PlaceOf(kIdEditor)), 160);
  // It can be made lower, but not as narrow as the keys of the top are long.
  headless::Resize(900, 500);
  EXPECT_EQ(platform::ClientArea(platform::kMainWindow).bottom, 600);
  EXPECT_EQ(platform::ClientArea(platform::kMainWindow).right, 1200);
}

TEST_F(StripBelow, DoesNothingByItsChordOnAnotherSurface) {
  headless::Click(kIdSurfaceCad);
  headless::PressKey({'J', true});
  headless::Click(kIdSurfaceCode);
  EXPECT_TRUE(Shows(kIdOutputLog));
}

}  // namespace
}  // namespace morva
