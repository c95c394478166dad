// A made-up workspace: its row alone makes it a surface of the program.
#include "app/surfaces.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/commands.h"
#include "app/mode_table.h"
#include "app/outlets.h"
#include "app/panels.h"
#include "app/router.h"
#include "documents/autosave.h"
#include "documents/program_tabs.h"
#include "documents/save_state.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "shell/layout.h"
#include "shell/modes.h"
#include "support/workbench.h"

namespace morva {
namespace {

using Trail = std::vector<std::string>;

constexpr int kSurfaceMadeUp = 9;
constexpr int kModeMadeUp = 90;
constexpr int kViewMadeUp = 20900;
constexpr int kIdMadeUpKey = 29000;
constexpr int kIdMadeUpField = 29001;
constexpr int kIdMadeUpHint = 29002;
constexpr int kPages[] = {kModeSlot};
constexpr Command kKey[] = {{.id = kIdMadeUpKey, .words = u"Made up", .on = IsSurfaceKeyOn}};
constexpr ModeRow kModes[] = {{.mode = kModeMadeUp, .place = 90, .words = u"Made up"}};

Trail trail;          // what the record was told
bool answers;         // of the calls that may use an event up
bool lets;            // of mayLeave
platform::Rect last;  // the area of the last show

void Tell(std::string words) { trail.push_back(std::move(words)); }
std::string Of(int number) { return " " + std::to_string(number); }

void Show(const platform::Rect& area) {
  if (!platform::Exists(kViewMadeUp)) {
    platform::ViewSpec view;
    view.id = kViewMadeUp;
    view.className = u"MadeUp";
    platform::MakeView(view);
    for (const int id : {kIdMadeUpField, kIdMadeUpHint}) {
      platform::ControlSpec spec;
      spec.id = id;
      spec.kind =
          id == kIdMadeUpField ? platform::ControlKind::PushButton : platform::ControlKind::Label;
      spec.text = id == kIdMadeUpField ? u"Bore" : u"";
      spec.parent = kViewMadeUp;
      platform::MakeControl(spec);
      platform::SetPlace(id, {10, id - 29000, 90, id - 28950});
    }
  }
  last = area;
  platform::SetPlace(kViewMadeUp, area);
  platform::SetVisible(kViewMadeUp, true);
  Tell("show");
}

Surface MadeUp() {
  Surface surface;
  surface.surface = kSurfaceMadeUp;
  surface.button = kIdMadeUpKey;
  surface.modes = kModes;
  surface.row = kModeMadeUp;
  surface.pages = kPages;
  surface.title = u"Made-up Workspace";
  surface.subtitle = u"for a test";
  surface.hintLabel = kIdMadeUpHint;
  surface.show = Show;
  surface.hide = [] {
    platform::SetVisible(kViewMadeUp, false);
    Tell("hide");
  };
  surface.enter = [] {
    platform::SetFocusTo(kIdMadeUpField);
    Tell("enter");
  };
  surface.openPage = [](int mode) { Tell("page" + Of(mode)); };
  surface.mayLeave = [] {
    Tell("may leave");
    return lets;
  };
  surface.left = [] { Tell("left for" + Of(app.surface)); };
  surface.back = [] {
    Tell("back");
    return answers;
  };
  surface.key = [](int id, const platform::KeyEvent& key) {
    Tell("key" + Of(id) + Of(key.key));
    return answers;
  };
  surface.rightClick = [] {
    Tell("right click");
    return answers;
  };
  surface.contextMenu = [](int id, int row, int, int) {
    if (id != kIdMadeUpField) return false;
    Tell("menu" + Of(id) + Of(row));
    return true;
  };
  surface.focusChanged = [](int id, bool gained) {
    Tell((gained ? "focus" : "no focus") + Of(id));
  };
  surface.settled = [] { Tell("settled"); };
  surface.logged = [](std::u16string_view text) {
    Tell("logged " + platform::ToUtf8(std::u16string(text)));
  };
  surface.storePending = [] { Tell("store"); };
  surface.cancelInput = [] { Tell("cancel"); };
  surface.pointerOver = [](int id) { Tell("over" + Of(id)); };
  return surface;
}

class Surfaces : public support::Workbench {
 protected:
  void SetUp() override {
    Workbench::SetUp();
    AddCommands(kKey);
    MakeCommandKey(kIdMadeUpKey, platform::kMainWindow, platform::FontRole::Body, false);
    RegisterSurface(MadeUp());
    platform::AddRow(kIdModeList, u"Made up", kModeMadeUp);  // the list was filled at the start
    answers = false;
    lets = true;
    trail.clear();
  }
  // What was told since the last call.
  static Trail Told() { return std::exchange(trail, {}); }
  static bool Heard(const Trail& told, const std::string& words) {
    return std::count(told.begin(), told.end(), words) == 1;
  }
  // What a click on a key tells, the keyboard apart.
  static Trail Press(int id) {
    headless::Focus(id);
    Told();
    EXPECT_TRUE(headless::Click(id)) << id;
    return Told();
  }
  static void BringUp() {
    ASSERT_TRUE(headless::Click(kIdMadeUpKey));
    Told();
  }
  static bool Paints(std::u16string_view text) {
    for (const headless::DrawCall& call : headless::PaintOf(platform::kMainWindow)) {
      if (call.text == text) return true;
    }
    return false;
  }
};

TEST_F(Surfaces, ComeUpByTheirKeyAndTakeAllBelowTheTabs) {
  EXPECT_FALSE(Paints(u"Made-up Workspace"));
  ASSERT_TRUE(headless::Click(kIdMadeUpKey));
  EXPECT_EQ(app.surface, kSurfaceMadeUp);
  EXPECT_EQ(Told(), (Trail{"show", "no focus 29000", "focus 29001", "enter", "settled"}));
  // The band and the tabs end at 108, the status line begins 28 above the lower edge.
  EXPECT_EQ(last.left, 0);
  EXPECT_EQ(last.top, 108);
  EXPECT_EQ(last.right, 1560);
  EXPECT_EQ(last.bottom, Areas().status.top);
  EXPECT_EQ(platform::FocusedId(), kIdMadeUpField);
  EXPECT_FALSE(platform::IsVisible(kIdEditor));
  EXPECT_TRUE(platform::IsVisible(kIdTabFirst));
  EXPECT_TRUE(Paints(u"Made-up Workspace"));
  EXPECT_TRUE(Paints(u"for a test"));
  EXPECT_FALSE(Paints(u"MORVA"));
  EXPECT_TRUE(platform::IsChecked(kIdMadeUpKey));
  headless::Resize(1200, 800);
  EXPECT_EQ(Told(), Trail{"show"});
  EXPECT_EQ(last.right, 1200);
}

TEST_F(Surfaces, GiveWayToAnotherOne) {
  BringUp();
  const Trail told = Press(kIdSurfaceCad);
  EXPECT_EQ(app.surface, kSurfaceCad);
  ASSERT_GE(told.size(), 3u);
  EXPECT_EQ(Trail(told.begin(), told.begin() + 3), (Trail{"may leave", "left for 1", "hide"}));
  EXPECT_FALSE(platform::IsVisible(kViewMadeUp));
  EXPECT_TRUE(platform::IsVisible(kViewCad));
  ASSERT_TRUE(headless::Click(kIdMadeUpKey));
  EXPECT_FALSE(platform::IsVisible(kViewCad));
  EXPECT_TRUE(platform::IsVisible(kViewMadeUp));
}

TEST_F(Surfaces, StayWhereTheyDoNotLetAnotherOneComeAndAreAskedOnce) {
  SetMode(kModeSimulator);
  BringUp();
  lets = false;
  for (const int id : {kIdSurfaceCode, kIdSurfaceCad}) {
    EXPECT_EQ(Press(id), (Trail{"may leave", "settled"})) << id;
  }
  EXPECT_EQ(Press(kIdBack), (Trail{"back", "may leave", "settled"}));
  SetMode(kModeFind);
  SetMode(kModeCircular);
  EXPECT_EQ(Told(), (Trail{"may leave", "may leave"}));
  EXPECT_EQ(app.surface, kSurfaceMadeUp);
  EXPECT_EQ(app.mode, kModeSimulator);
}

TEST_F(Surfaces, AreLeftByTheBackKeyUnlessTheyUseIt) {
  SetMode(kModeSimulator);
  BringUp();
  answers = true;
  EXPECT_EQ(Press(kIdBack), (Trail{"back", "settled"}));
  EXPECT_EQ(app.surface, kSurfaceMadeUp);
  answers = false;
  const Trail told = Press(kIdBack);
  EXPECT_TRUE(Heard(told, "back"));
  EXPECT_TRUE(Heard(told, "may leave"));
  EXPECT_TRUE(Heard(told, "left for 0"));
  EXPECT_TRUE(Heard(told, "hide"));
  EXPECT_EQ(app.surface, kSurfaceCode);
  EXPECT_EQ(app.mode, kModeHome);  // where the simulator was entered from
  EXPECT_EQ(platform::FocusedId(), kIdEditor);
}

TEST_F(Surfaces, ReturnToWhereTheyWereEnteredFromIfTheySaySo) {
  ClearSurfaces();
  ClearCommands();
  Surface surface = MadeUp();
  surface.button = 0;
  surface.modes = {};  // they stand already
  surface.returns = true;
  RegisterSurface(surface);
  SetMode(kModeSimulator);
  SetSurface(kSurfaceMadeUp);
  GoBack();
  EXPECT_EQ(app.surface, kSurfaceCode);
  EXPECT_EQ(app.mode, kModeSimulator);
}

TEST_F(Surfaces, StandInTheModeListAndOpenTheirPages) {
  EXPECT_TRUE(ModeExists(kModeMadeUp));
  ASSERT_TRUE(headless::Focus(kIdModeList));
  ASSERT_TRUE(headless::PressKey({platform::kKeyEnd}));
  EXPECT_EQ(platform::SelectedRow(kIdModeList), ModeListRow(kModeMadeUp));
  EXPECT_EQ(app.surface, kSurfaceCode);
  ASSERT_TRUE(headless::PressKey({platform::kKeyEnter}));
  EXPECT_EQ(app.surface, kSurfaceMadeUp);
  SetMode(kModeSimulator);
  Told();
  SetMode(kModeSlot);
  EXPECT_EQ(app.surface, kSurfaceMadeUp);
  EXPECT_EQ(app.mode, kModeHome);
  EXPECT_TRUE(Heard(Told(), "page 6"));
}

TEST_F(Surfaces, SeeAKeyBeforeTheControlThatHasIt) {
  BringUp();
  ASSERT_TRUE(headless::Focus(kIdTabFirst));
  Told();
  answers = true;
  ASSERT_TRUE(headless::PressKey({platform::kKeyF1 + 7}));
  EXPECT_EQ(Told(), (Trail{"key 800" + Of(platform::kKeyF1 + 7), "settled"}));
  answers = false;
  headless::PressKey({platform::kKeyF1 + 7});
  EXPECT_EQ(Told(), Trail{"key 800" + Of(platform::kKeyF1 + 7)});
}

TEST_F(Surfaces, SeeARightClickBeforeEveryMenu) {
  BringUp();
  answers = true;
  EXPECT_TRUE(headless::ContextMenu(kIdTabFirst, -1));
  EXPECT_EQ(Told(), Trail{"right click"});
  EXPECT_TRUE(headless::TakeMenus().empty());
  answers = false;
  EXPECT_TRUE(headless::ContextMenu(kIdTabFirst, -1));
  EXPECT_TRUE(Heard(Told(), "right click"));
  EXPECT_EQ(headless::TakeMenus().size(), 1u);
  EXPECT_TRUE(headless::ContextMenu(kIdMadeUpField, -1));
  EXPECT_EQ(Told(), (Trail{"right click", "menu 29001 -1"}));
}

TEST_F(Surfaces, HearOfTheKeyboardOfCommandsAndOfTheLog) {
  BringUp();
  ASSERT_TRUE(headless::Focus(kIdTabFirst));
  EXPECT_EQ(Told(), (Trail{"no focus 29001", "focus 800"}));
  headless::Click(kIdMadeUpField);
  EXPECT_TRUE(Heard(Told(), "settled"));
  AppendOutput(u"Done.");
  EXPECT_EQ(Told(), Trail{"logged Done."});
}

TEST_F(Surfaces, TakeTheHelpOfAKeyOnTheirOwnLabel) {
  BringUp();
  const std::u16string log = Output();
  headless::MovePointerOver(kIdMadeUpField);
  headless::Advance(150);
  EXPECT_TRUE(Heard(Told(), "over 29001"));
  headless::Advance(150);
  EXPECT_EQ(platform::TextOf(kIdMadeUpHint), u"Bore");
  EXPECT_EQ(Output(), log);
}

TEST_F(Surfaces, AreToldOfAnAutosaveWhileTheyAreUpAndOfANewProgramAlways) {
  MarkModified();
  RunAutosave();
  EXPECT_EQ(Told(), Trail());
  BringUp();
  MarkModified();
  RunAutosave();
  EXPECT_TRUE(Heard(Told(), "store"));
  SetSurface(kSurfaceCode);
  Told();
  SwitchTab(0);
  EXPECT_EQ(Told(), Trail{"cancel"});
}

TEST_F(Surfaces, AreFoundByNoModeThatIsNoMode) { EXPECT_EQ(SurfaceOfMode(-1), nullptr); }

// Another one beside it; the program's own leave no room in the table for both.
constexpr int kSurfaceBeside = 8;

TEST_F(Surfaces, MayShowTheToolpathViewBesideThemselves) {
  ClearSurfaces();
  Surface plain = MadeUp();
  plain.button = 0;
  plain.modes = {};
  RegisterSurface(plain);
  Surface beside;
  beside.surface = kSurfaceBeside;
  beside.withView = true;
  beside.show = Show;
  beside.hide = [] { platform::SetVisible(kViewMadeUp, false); };
  RegisterSurface(beside);
  SetSurface(kSurfaceBeside);
  EXPECT_TRUE(platform::IsVisible(kViewToolpath));
  EXPECT_LT(last.right, platform::PlaceOf(kViewToolpath).left);
  EXPECT_TRUE(platform::IsVisible(kIdPlayStop));
  EXPECT_FALSE(platform::IsVisible(kIdPlayNext));
  SetSurface(kSurfaceMadeUp);
  EXPECT_FALSE(platform::IsVisible(kViewToolpath));
  EXPECT_EQ(last.right, 1560);
  SetSurface(kSurfaceCode);
  EXPECT_TRUE(platform::IsVisible(kIdPlayNext));
}

TEST_F(Surfaces, ComeUpByTheirNumberOnlyOnceTheyAreRegistered) {
  SetSurface(kSurfaceBeside);
  EXPECT_EQ(app.surface, kSurfaceCode);
  ClearSurfaces();
  Surface beside;
  beside.surface = kSurfaceBeside;
  RegisterSurface(beside);
  SetSurface(kSurfaceBeside);
  EXPECT_EQ(app.surface, kSurfaceBeside);
  // A record that has nothing to say is no obstacle.
  headless::PressKey({platform::kKeyF1 + 7});
  headless::ContextMenu(kIdTabFirst, -1);
  headless::Advance(300);
  ASSERT_TRUE(headless::Click(kIdBack));
  EXPECT_EQ(app.surface, kSurfaceCode);
}

}  // namespace
}  // namespace morva
