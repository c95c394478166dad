// Panels of rooms in the main window, and the events of their controls.

#include "app/panels.h"

#include <vector>

#include "platform/window.h"
#include "shell/layout.h"
#include "shell/modes.h"
#include "support/workbench.h"

namespace morva {
namespace {

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
  ASSERT_TRUE(RegisterPanel(panel));
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
  EXPECT_FALSE(ModeExists(kModeTools));
  Panel panel;
  panel.mode = kModeTools;
  panel.enter = [] { heard.push_back("entered"); };
  panel.place = [](const platform::Rect& area) {
    heard.push_back(platform::RectWidth(area) > 200 ? "placed" : "narrow");
  };
  RegisterPanel(panel);
  EXPECT_TRUE(ModeExists(kModeTools));
  SetMode(kModeTools);
  EXPECT_EQ(heard, (std::vector<std::string>{"placed", "entered"}));
  SetMode(kModeHome);
}

TEST_F(Panels, RoomsHearTheEventsOfTheirIds) {
  Handlers first;
  first.id = kIdEditor;
  first.key = [](const platform::KeyEvent& key) {
    heard.push_back("key");
    return key.key == platform::kKeyEscape;
  };
  first.typed = [](char16_t c) { heard.push_back(std::string(1, static_cast<char>(c))); };
  ASSERT_TRUE(RegisterHandlers(first));
  headless::Focus(kIdEditor);
  platform::KeyEvent escape;
  escape.key = platform::kKeyEscape;
  headless::PressKey(escape);
  headless::EditorInsert(kIdEditor, u"G");
  EXPECT_EQ(heard, (std::vector<std::string>{"key", "key", "G"}));
}

TEST(PanelTable, RefusesOneMoreThanItHolds) {
  ClearPanels();
  for (int i = 0; i < kMaxPanels; ++i) EXPECT_TRUE(RegisterPanel(Panel()));
  EXPECT_FALSE(RegisterPanel(Panel()));
  for (int i = 0; i < kMaxHandlers; ++i) EXPECT_TRUE(RegisterHandlers(Handlers()));
  EXPECT_FALSE(RegisterHandlers(Handlers()));
  ClearPanels();
  EXPECT_EQ(PanelCount(), 0);
}

}  // namespace
}  // namespace morva
