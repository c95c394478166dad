// The CAD workspace's window in the whole application: places, panels, right click, keys.

#include "cad/workspace.h"

#include <vector>

#include "cad/canvas.h"
#include "cad/sketch.h"
#include "cad/tool_state.h"
#include "cad/workspace_form.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "support/workbench.h"

namespace morva {
namespace {

using platform::Rect;

class Workspace : public support::Workbench {
 protected:
  void SetUp() override {
    support::Workbench::SetUp();
    ASSERT_TRUE(headless::Click(kIdSurfaceCad));
  }

  struct Seen {
    int id;
    Rect place;
  };
  // Controls that can be seen: not views that hold others, and of the form only what is in view.
  static std::vector<Seen> SeenControls() {
    std::vector<Seen> seen;
    for (const int id : headless::AllIds()) {
      if (id == platform::kMainWindow || id == kViewCad || id == kViewCadForm ||
          id == kViewCadSheet || !platform::IsVisible(id)) {
        continue;
      }
      seen.push_back({id, platform::PlaceInMainWindow(id)});
    }
    return seen;
  }
  static bool Overlap(const Rect& a, const Rect& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
  }
  // Of the form, which scrolls: only what lies in its view counts against the rest.
  static bool InForm(int id) {
    const int* ids = nullptr;
    const int count = CadFormOrder(ids);
    for (int i = 0; i < count; ++i) {
      if (ids[i] == id) return true;
    }
    return id >= kIdCadLabelFirst && id < kIdCadLabelLast - 1;
  }
  static void ExpectNothingOverlaps(int panel) {
    const std::vector<Seen> seen = SeenControls();
    const Rect client = platform::ClientArea(platform::kMainWindow);
    for (std::size_t i = 0; i < seen.size(); ++i) {
      const bool form = InForm(seen[i].id);
      EXPECT_LT(seen[i].place.left, seen[i].place.right) << seen[i].id << " in " << panel;
      EXPECT_GE(seen[i].place.left, 0) << seen[i].id;
      EXPECT_LE(seen[i].place.right, client.right) << seen[i].id;
      EXPECT_TRUE(form || seen[i].place.bottom <= client.bottom) << seen[i].id;
      for (std::size_t k = i + 1; k < seen.size(); ++k) {
        if (form != InForm(seen[k].id)) continue;
        EXPECT_FALSE(Overlap(seen[i].place, seen[k].place))
            << seen[i].id << " and " << seen[k].id << " in panel " << panel;
      }
    }
  }
  static void Press(platform::PointerButton button, platform::PointerAction action) {
    platform::PointerEvent event;
    event.action = action;
    event.button = button;
    event.x = 200;
    event.y = 150;
    headless::Pointer(kViewCadCanvas, event);
  }
};

TEST_F(Workspace, HidesTheCodeSurfaceAndKeepsTheProgramTabs) {
  EXPECT_EQ(app.surface, kSurfaceCad);
  for (const int id : {kIdEditor, kViewGutter, kViewToolpath, kIdModeList, kIdFeatureList,
                       kIdOutputLog, kIdSend, kIdPlay}) {
    EXPECT_FALSE(platform::IsVisible(id)) << id;
  }
  for (const int id : {kIdTabFirst, kIdTabNew, kIdBack, kIdSurfaceCode, kIdSaveMenu, kIdStatusLine,
                       kViewCadCanvas, kIdCadOperations, kIdCadRecent}) {
    EXPECT_TRUE(platform::IsVisible(id)) << id;
  }
  EXPECT_EQ(platform::FocusedId(), kViewCadCanvas);
}

TEST_F(Workspace, OverlapsNowhereInAnyPanelAtAnySize) {
  constexpr struct { int width, height; } kSizes[] = {{1200, 800}, {1560, 940}, {1920, 1080}};
  for (const auto& size : kSizes) {
    headless::Resize(size.width, size.height);
    for (const int panel : {0, 1, 2, 3, 4, 5, 6, 7, 9}) {
      tools.panelMode = panel;
      RefreshCadTools();
      ASSERT_EQ(ShownCadPanel(), panel);
      ExpectNothingOverlaps(panel);
    }
  }
}

TEST_F(Workspace, FitsEveryPanelIntoTheFormThatScrolls) {
  headless::Resize(1200, 800);
  const int* ids = nullptr;
  const int count = CadFormOrder(ids);
  for (const int panel : {0, 1, 2, 3, 4, 5, 6, 7, 9}) {
    tools.panelMode = panel;
    RefreshCadTools();
    for (int i = 0; i < count; ++i) {
      if (!platform::IsVisible(ids[i])) continue;
      EXPECT_LE(platform::PlaceOf(ids[i]).bottom, kFormHeight) << ids[i] << " in " << panel;
    }
  }
}

TEST_F(Workspace, ScrollsTheFormByLinesAndToAFieldThatGetsTheKeyboard) {
  headless::Resize(1200, 800);
  EXPECT_EQ(CadFormTop(), 0);
  platform::PointerEvent wheel;
  wheel.action = platform::PointerAction::Wheel;
  wheel.wheel = -1;
  headless::Pointer(kViewCadForm, wheel);
  EXPECT_EQ(CadFormTop(), 36);
  wheel.wheel = 5;
  headless::Pointer(kViewCadForm, wheel);
  EXPECT_EQ(CadFormTop(), 0);
  wheel.wheel = -100;
  headless::Pointer(kViewCadForm, wheel);
  const int end = CadFormTop();
  EXPECT_EQ(end, kFormHeight - platform::ClientArea(kViewCadForm).bottom);
  ASSERT_TRUE(headless::Focus(kIdCadX));
  EXPECT_LT(CadFormTop(), end);
  const Rect place = platform::PlaceOf(kIdCadX);
  EXPECT_GE(place.top, CadFormTop());
}

TEST_F(Workspace, ARightClickAnywhereGivesUpTheToolInHand) {
  tools.dragTool = 1;
  ASSERT_TRUE(headless::ContextMenu(kIdCadGenerate, -1));
  EXPECT_EQ(tools.dragTool, 0);
  EXPECT_TRUE(headless::TakeMenus().empty());
}

TEST_F(Workspace, ARightClickOnAnObjectWithNoToolSelectsItAndShowsItsMenu) {
  SketchObject circle;
  circle.type = kTypeCircle;
  FromCanvas(200, 150, circle.x, circle.y);
  circle.size = 1;
  AppendSketchObject(circle);
  sketch.selected = -1;
  Press(platform::PointerButton::None, platform::PointerAction::Move);
  Press(platform::PointerButton::Right, platform::PointerAction::Press);
  Press(platform::PointerButton::Right, platform::PointerAction::Release);
  const auto menus = headless::TakeMenus();
  ASSERT_EQ(menus.size(), 1u);
  const char16_t* kTexts[] = {u"Undo\tCtrl+Z",
                              u"",
                              u"Cut\tCtrl+X",
                              u"Copy\tCtrl+C",
                              u"Paste\tCtrl+V",
                              u"Duplicate",
                              u"",
                              u"Scale...",
                              u"Circular pattern...",
                              u"Rectangular pattern...",
                              u"",
                              u"Hide / Show",
                              u"Lock / Unlock",
                              u"",
                              u"Delete",
                              u"",
                              u"Save reusable shape\u2026"};
  ASSERT_EQ(menus[0].items.size(), std::size(kTexts));
  for (std::size_t i = 0; i < std::size(kTexts); ++i) {
    EXPECT_EQ(menus[0].items[i].text, kTexts[i]) << i;
  }
  EXPECT_EQ(sketch.selected, 0);
}

TEST_F(Workspace, ARightClickKeepsTheMarksOnAMarkedObjectAndDropsThemOnAnother) {
  double x = 0;
  double y = 0;
  FromCanvas(200, 150, x, y);
  for (const double aside : {0.0, 2.0, 4.0}) {
    AppendSketchObject({kTypeLine, 0, x - 0.2 + aside, y, 0.4, 0, 0});
  }
  sketch.selected = 1;
  tools.multiSelect[0] = tools.multiSelect[1] = 1;
  const auto rightClick = [] {
    Press(platform::PointerButton::None, platform::PointerAction::Move);
    Press(platform::PointerButton::Right, platform::PointerAction::Press);
    Press(platform::PointerButton::Right, platform::PointerAction::Release);
  };
  rightClick();
  EXPECT_EQ(sketch.selected, 0);
  EXPECT_EQ(MultiSelectCount(), 2);
  sketch.selected = 1;
  tools.multiSelect[0] = 0;
  tools.multiSelect[2] = 1;
  rightClick();
  EXPECT_EQ(sketch.selected, 0);
  EXPECT_EQ(MultiSelectCount(), 0);
}

TEST_F(Workspace, ShowsItsHintsOnItsOwnLineAndLeavesTheLogAlone) {
  const std::u16string log = Output();
  headless::MovePointerOver(kIdCadScale);
  headless::Advance(200);
  EXPECT_EQ(platform::TextOf(kIdCadHint), u"Scale dimensions around the selected object's anchor.");
  EXPECT_EQ(platform::TextOf(kIdStatusLine),
            u"Scale dimensions around the selected object's anchor.");
  EXPECT_EQ(Output(), log);
}

TEST_F(Workspace, TellsItsToolsByWordsAndState) {
  EXPECT_TRUE(platform::IsChecked(kIdCadSelect));
  tools.dragTool = 6;
  RefreshCadTools();
  EXPECT_FALSE(platform::IsChecked(kIdCadSelect));
  EXPECT_TRUE(platform::IsChecked(kIdCadWorkAxis));
  sketch.snapOn = false;
  RefreshCadTools();
  EXPECT_EQ(platform::TextOf(kIdCadSnap), u"Snap OFF");
  sketch.metric = true;
  RefreshCadTools();
  EXPECT_EQ(platform::TextOf(kIdCadInch), u"INCH");
  EXPECT_EQ(platform::TextOf(kIdCadMm), u"MM *");
}

TEST_F(Workspace, CutDataOpensItsPanelWithTheDepthReadyToType) {
  tools.dragTool = 2;
  ASSERT_TRUE(headless::Click(kIdCadCutData));
  EXPECT_EQ(tools.dragTool, 0);
  EXPECT_EQ(ShownCadPanel(), kPanelCutData);
  EXPECT_EQ(platform::FocusedId(), kIdCadDepth);
  EXPECT_EQ(platform::TextOf(kIdCadFeed), u"10.000000");
}

TEST_F(Workspace, SurvivesItsWindowBeingHidden) {
  SketchObject line;
  line.size = 2;
  AppendSketchObject(line);
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  EXPECT_FALSE(platform::IsVisible(kViewCadCanvas));
  EXPECT_EQ(platform::FocusedId(), kIdEditor);
  ASSERT_TRUE(headless::Click(kIdSurfaceCad));
  EXPECT_EQ(sketch.objectCount, 1);
}

}  // namespace
}  // namespace morva
