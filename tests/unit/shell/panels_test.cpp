// Panels of rooms in the main window, and the events of their controls.

#include "app/panels.h"

#include <utility>
#include <vector>

#include "app/palette.h"
#include "app/router.h"
#include "app/stop.h"
#include "platform/window.h"
#include "shell/layout.h"
#include "shell/modes.h"
#include "support/workbench.h"

namespace morva {
namespace {

constexpr int kMadeUpMode = 93;  // no mode of the program
std::vector<std::string> heard;
bool workShown = false;

class Panels : public support::Workbench {
 protected:
  void SetUp() override {
    heard.clear();
    workShown = false;
    support::Workbench::SetUp();
  }
};

TEST_F(Panels, AWorkPanelCoversTheEditorAndTheViewAndGivesThemBack) {
  Panel panel;
  panel.spot = PanelSpot::Work;
  panel.active = [] { return workShown; };
  panel.place = [](const platform::Rect& area) {
    heard.push_back(platform::SameRect(area, Areas().work) ? "placed" : "misplaced");
  };
  panel.hide = [] { heard.push_back("hidden"); };
  RegisterPanel(panel);
  RelayPanels();
  EXPECT_EQ(heard, std::vector<std::string>{"hidden"});
  EXPECT_TRUE(platform::IsVisible(kIdEditor));
  workShown = true;
  RelayPanels();
  EXPECT_EQ(heard.back(), "placed");
  for (const int id : {kIdEditor, kViewGutter, kViewToolpath, kIdPlayStop, kIdSpeedSlider}) {
    EXPECT_FALSE(platform::IsVisible(id)) << id;
  }
  EXPECT_TRUE(platform::IsVisible(kIdOutputLog));
  EXPECT_TRUE(platform::IsVisible(kIdFeatureList));
  workShown = false;
  RelayPanels();
  EXPECT_TRUE(platform::IsVisible(kIdEditor));
  EXPECT_TRUE(platform::IsVisible(kViewToolpath));
}

struct Standing {
  int id;
  platform::Rect place;
};

std::vector<Standing> StandingControls() {
  std::vector<Standing> standing;
  for (const int id : headless::AllIds()) {
    if (id == platform::kMainWindow || !platform::IsVisible(id)) continue;
    standing.push_back({id, platform::PlaceInMainWindow(id)});
  }
  return standing;
}

bool Cross(const platform::Rect& a, const platform::Rect& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

void ExpectNothingOverAnother(const char* what) {
  SCOPED_TRACE(what);
  const std::vector<Standing> standing = StandingControls();
  ASSERT_GT(standing.size(), 40u);
  const platform::Rect client = platform::ClientArea(platform::kMainWindow);
  for (std::size_t i = 0; i < standing.size(); ++i) {
    const platform::Rect& a = standing[i].place;
    EXPECT_TRUE(a.left >= 0 && a.top >= 0 && a.right <= client.right && a.bottom <= client.bottom)
        << standing[i].id;
    for (std::size_t k = i + 1; k < standing.size(); ++k) {
      EXPECT_FALSE(Cross(a, standing[k].place)) << standing[i].id << " and " << standing[k].id;
    }
  }
}

// The smallest window is 1200 by 800; a smaller wish is refused by the window.
TEST_F(Panels, NothingLiesOverAnotherWithAnyOfThemShown) {
  while (app.tabCount < 2) headless::Click(kIdTabNew);
  for (const int tabCount : {2, 8}) {
    while (app.tabCount < tabCount) headless::Click(kIdTabNew);
    for (const auto& [width, height] :
         {std::pair(1, 1), std::pair(1200, 800), std::pair(1560, 940), std::pair(1920, 1080)}) {
      headless::Resize(width, height);
      for (const int panel : {190, 300, 430}) {
        DragSplitter(panel);
        for (const int mode : {int{kModeHome}, int{kModeSimulator}, int{kModeFind}}) {
          SCOPED_TRACE(testing::Message() << width << " by " << height << ", panel " << panel
                                          << ", mode " << mode << ", tabs " << tabCount);
          SetMode(mode);
          ExpectNothingOverAnother("the code editor");
          headless::Click(kIdCommandWords);
          EXPECT_TRUE(platform::IsVisible(kIdWordsEditor));
          ExpectNothingOverAnother("the words view");
          headless::Click(kIdCompareSecond);
          EXPECT_TRUE(platform::IsVisible(kIdReviewRightPane));
          EXPECT_TRUE(platform::IsVisible(kIdRenumber));
          ExpectNothingOverAnother("the review");
          headless::Click(kIdCompareSecond);
          headless::Click(kIdCommandWords);
          RouteCommand(kIdImport, 0);
          EXPECT_TRUE(platform::IsVisible(kIdImportHead));
          EXPECT_TRUE(platform::IsVisible(kIdRenumber));
          ExpectNothingOverAnother("the import panel");
          headless::Click(kIdImportCancel);
          ASSERT_TRUE(platform::IsVisible(kIdEditor));
        }
      }
    }
  }
}

// Editor, gutter and view come back where they were; the output keys never move in Home.
TEST_F(Panels, TheOutputKeysStayWhereTheyAreInHome) {
  const platform::Rect key = platform::PlaceOf(kIdPreflight);
  const platform::Rect view = platform::PlaceOf(kViewToolpath);
  RouteCommand(kIdImport, 0);
  EXPECT_TRUE(platform::SameRect(platform::PlaceOf(kIdPreflight), key));
  EXPECT_EQ(Areas().work.bottom, platform::PlaceOf(kIdEditor).bottom);
  EXPECT_LE(Areas().work.bottom, key.top);
  headless::Click(kIdImportCancel);
  EXPECT_TRUE(platform::SameRect(platform::PlaceOf(kViewToolpath), view));
}

// A view that is away leaves its width to the output.
TEST_F(Panels, TheOutputTakesTheWidthOfTheViewInTheSimulator) {
  SetMode(kModeSimulator);
  const int before = platform::RectWidth(platform::PlaceOf(kIdOutputLog));
  RouteCommand(kIdImport, 0);
  EXPECT_EQ(platform::PlaceOf(kIdOutputLog).right, Areas().work.right);
  EXPECT_GT(platform::RectWidth(platform::PlaceOf(kIdOutputLog)), before);
  headless::Click(kIdImportCancel);
  EXPECT_EQ(platform::RectWidth(platform::PlaceOf(kIdOutputLog)), before);
}

TEST_F(Panels, AnEditorPanelLeavesTheGutter) {
  Panel panel;
  panel.spot = PanelSpot::Editor;
  panel.active = [] { return true; };
  RegisterPanel(panel);
  RelayPanels();
  EXPECT_FALSE(platform::IsVisible(kIdEditor));
  EXPECT_TRUE(platform::IsVisible(kViewGutter));
}

TEST_F(Panels, ALeftPanelCoversTheFeatureListAndItsKeys) {
  Panel panel;
  panel.spot = PanelSpot::LeftLower;
  panel.active = [] { return true; };
  RegisterPanel(panel);
  RelayPanels();
  for (const int id : {kIdFeatureList, kIdFeatureEdit, kIdFeatureName, kIdFeatureHint}) {
    EXPECT_FALSE(platform::IsVisible(id)) << id;
  }
  EXPECT_TRUE(platform::IsVisible(kIdShowFeatures));
  EXPECT_TRUE(platform::IsVisible(kIdModeList));
}

TEST_F(Panels, AModeExistsOnceAPanelBelongsToIt) {
  EXPECT_FALSE(ModeExists(kMadeUpMode));
  Panel panel;
  panel.mode = kMadeUpMode;
  panel.enter = [] { heard.push_back("entered"); };
  panel.place = [](const platform::Rect& area) {
    heard.push_back(platform::RectWidth(area) > 200 ? "placed" : "narrow");
  };
  RegisterPanel(panel);
  EXPECT_TRUE(ModeExists(kMadeUpMode));
  SetMode(kMadeUpMode);
  EXPECT_EQ(heard, (std::vector<std::string>{"placed", "entered"}));
  SetMode(kModeHome);
}

// What a panel shows beside itself, such as an example, goes when another mode or surface comes.
TEST_F(Panels, AreLeftOnceForWhatWasEntered) {
  Panel panel;
  panel.mode = kMadeUpMode;
  panel.enter = [] { heard.push_back("entered"); };
  panel.left = [] { heard.push_back("left"); };
  RegisterPanel(panel);
  using Heard = std::vector<std::string>;
  SetMode(kMadeUpMode);
  SetMode(kMadeUpMode);
  EXPECT_EQ(heard, (Heard{"entered", "entered"}));
  heard.clear();
  SetMode(kModeSimulator);
  SetMode(kModeHome);
  EXPECT_EQ(heard, Heard{"left"});
  heard.clear();
  SetMode(kMadeUpMode);
  SetSurface(kSurfaceCad);
  EXPECT_EQ(heard, (Heard{"entered", "left"}));
  SetSurface(kSurfaceCode);
  EXPECT_EQ(heard, (Heard{"entered", "left", "entered"}));
  heard.clear();
  SetMode(kModeCircular);  // a page of the drawing surface
  EXPECT_EQ(heard, Heard{"left"});
}

constexpr int kViewMadeUp = 20900;

// A panel of a mode that fills its area and asks for the toolpath view.
void RegisterPanelWithView() {
  platform::ViewSpec form;
  form.id = kViewMadeUp;
  form.className = u"MadeUp";
  platform::MakeView(form);
  Panel panel;
  panel.mode = kMadeUpMode;
  panel.heightAboveView = 300;
  panel.place = [](const platform::Rect& area) { ShowAt(kViewMadeUp, area); };
  panel.hide = [] { platform::SetVisible(kViewMadeUp, false); };
  RegisterPanel(panel);
}

TEST_F(Panels, AModesPanelMayShowTheToolpathViewWithItself) {
  RegisterPanelWithView();
  const struct { int width, height; } sizes[] = {{1200, 800}, {1560, 940}, {1920, 1080}};
  for (const auto& size : sizes) {
    SCOPED_TRACE(testing::Message() << size.width << " by " << size.height);
    headless::Resize(size.width, size.height);
    SetMode(kMadeUpMode);
    ExpectNothingOverAnother("the code editor");
    const platform::Rect form = platform::PlaceOf(kViewMadeUp);
    const platform::Rect view = platform::PlaceOf(kViewToolpath);
    EXPECT_GE(platform::RectWidth(form), 300);
    EXPECT_GE(platform::RectHeight(form), 240);
    EXPECT_GE(platform::RectHeight(view), 200);
    EXPECT_LT(view.right, form.left);
    // The slider lies on the ground of the work area.
    EXPECT_EQ(headless::PaintOf(kIdSpeedSlider).at(0).colours.at(0), kWorkArea);
    for (const int id : {kIdPlayStart, kIdPlayRewind, kIdPlayToggle, kIdPlayForward, kIdPlayEnd,
                         kIdPlayStop, kIdViewRefresh, kIdViewLayers, kIdSpeedSlider}) {
      EXPECT_TRUE(platform::IsVisible(id)) << id;
    }
    EXPECT_FALSE(platform::IsVisible(kIdPlayPrevious));
    EXPECT_FALSE(platform::IsVisible(kIdPlayNext));
    headless::Click(kIdCompareSecond);  // takes the editor's place and that of a view beside it
    ExpectNothingOverAnother("the review");
    EXPECT_TRUE(platform::IsVisible(kViewToolpath));
    headless::Click(kIdCompareSecond);
    SetMode(kModeHome);
    EXPECT_TRUE(platform::IsVisible(kIdPlayPrevious));
    EXPECT_FALSE(platform::IsVisible(kViewMadeUp));
  }
}

TEST_F(Panels, OneThatIsNotActiveKeepsNoHeightAndNoHelp) {
  static bool active;
  active = true;
  Panel panel;
  panel.mode = kMadeUpMode;
  panel.active = [] { return active; };
  panel.heightAboveView = 300;
  panel.helpBelow = true;
  RegisterPanel(panel);
  SetMode(kMadeUpMode);
  EXPECT_EQ(HeightAboveView(), 300);
  EXPECT_TRUE(IsHelpBelow());
  EXPECT_TRUE(platform::IsVisible(kIdHelpText));
  active = false;
  Layout();
  EXPECT_EQ(HeightAboveView(), 0);
  EXPECT_FALSE(IsHelpBelow());
  EXPECT_FALSE(platform::IsVisible(kViewToolpath));
  EXPECT_FALSE(platform::IsVisible(kIdHelpText));
}

// Controls in the way of the eye, whatever the order in which they are made.
TEST_F(Panels, HandInTheStopsOfTab) {
  SetMode(kModeCodeIndex);
  headless::Focus(kIdIndexSearch);
  for (const int id :
       {kIdIndexClear, kIdIndexAll, kIdIndexG, kIdIndexM, kIdIndexN, kIdIndexMacro, kIdIndexText,
        kIdIndexList, kIdIndexDetail, kIdIndexInsertion, kIdIndexInsert, kIdTabFirst}) {
    headless::PressKey({platform::kKeyTab});
    EXPECT_EQ(platform::FocusedId(), id);
  }
}

TEST_F(Panels, RoomsHearTheEventsOfTheirIds) {
  Handlers first;
  first.id = kIdEditor;
  first.key = [](const platform::KeyEvent& key) {
    heard.push_back("key");
    return key.key == platform::kKeyEscape;
  };
  first.typed = [](char16_t c) { heard.push_back(std::string(1, static_cast<char>(c))); };
  RegisterHandlers(first);
  headless::Focus(kIdEditor);
  platform::KeyEvent escape;
  escape.key = platform::kKeyEscape;
  headless::PressKey(escape);
  headless::EditorInsert(kIdEditor, u"G");
  EXPECT_EQ(heard, (std::vector<std::string>{"key", "key", "G"}));
}

TEST(PanelTable, StopsTheProgramAtAHandlerWithoutAnId) {
  ClearPanels();
  EXPECT_EXIT(RegisterHandlers(Handlers()), testing::ExitedWithCode(kStopExitCode),
              "control handler has no id");
}

}  // namespace
}  // namespace morva
