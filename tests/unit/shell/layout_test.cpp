#include "shell/layout.h"

#include <gtest/gtest.h>

#include <set>

#include "app/hover.h"
#include "dnc/serial_profile.h"
#include "unit/shell/main_stage.h"

namespace morva {
namespace {

using platform::PointerAction;
using platform::PointerButton;

class MainWindow : public shell_test::MainStage {
 protected:
  static bool Pointer(PointerAction action, int x) {
    platform::PointerEvent event;
    event.action = action;
    if (action != PointerAction::Move) event.button = PointerButton::Left;
    event.leftDown = action == PointerAction::Move;
    event.x = x;
    event.y = 500;
    return headless::Pointer(platform::kMainWindow, event);
  }
};

TEST_F(MainWindow, DragsThePanelFrom190To430) {
  ASSERT_TRUE(Pointer(PointerAction::Press, 300));
  Pointer(PointerAction::Move, 100);
  EXPECT_EQ(app.leftPanelWidth, 190);
  Pointer(PointerAction::Move, 900);
  EXPECT_EQ(app.leftPanelWidth, 430);
  Pointer(PointerAction::Move, 260);
  EXPECT_EQ(app.leftPanelWidth, 260);
  EXPECT_EQ(Areas().leftPanel.right, 260);
  Pointer(PointerAction::Release, 260);
  Pointer(PointerAction::Move, 350);
  EXPECT_EQ(app.leftPanelWidth, 260);
}

TEST_F(MainWindow, LetsThePanelEdgeGoWhenTheReleaseWentElsewhere) {
  Pointer(PointerAction::Press, 300);
  Pointer(PointerAction::Move, 260);
  platform::PointerEvent event;
  event.action = PointerAction::Move;
  event.x = 400;
  event.y = 500;
  headless::Pointer(platform::kMainWindow, event);
  Pointer(PointerAction::Move, 350);
  EXPECT_EQ(app.leftPanelWidth, 260);
}

TEST_F(MainWindow, TakesThePanelEdgeWithinItsGripOnly) {
  for (const int x : {295, 306}) {
    Pointer(PointerAction::Press, x);
    Pointer(PointerAction::Move, 250);
    EXPECT_EQ(app.leftPanelWidth, 300) << x;
    Pointer(PointerAction::Release, 250);
  }
  for (const int x : {296, 305}) {
    app.leftPanelWidth = 300;
    Pointer(PointerAction::Press, x);
    Pointer(PointerAction::Move, 250);
    EXPECT_EQ(app.leftPanelWidth, 250) << x;
    Pointer(PointerAction::Release, 250);
  }
}

TEST_F(MainWindow, HoldsItsLeastSize) {
  headless::Resize(900, 600);
  const platform::Rect client = platform::ClientArea(platform::kMainWindow);
  EXPECT_EQ(client.right, 1200);
  EXPECT_EQ(client.bottom, 800);
}

TEST_F(MainWindow, FollowsItsSize) {
  headless::Resize(1800, 1000);
  EXPECT_EQ(Areas().topBand.right, 1800);
  EXPECT_EQ(platform::PlaceOf(kIdCaretPlace).right, 1800 - 12);
}

TEST_F(MainWindow, ShowsOneTabButtonAProgram) {
  EXPECT_TRUE(Visible(kIdTabFirst));
  EXPECT_FALSE(Visible(kIdTabFirst + 1));
  OpenTab(u"", u"G0", u"Second.NC");
  SwitchTab(1);
  EXPECT_TRUE(Visible(kIdTabFirst + 1));
  EXPECT_GT(platform::PlaceOf(kIdTabFirst + 1).left, platform::PlaceOf(kIdTabFirst).right);
}

TEST_F(MainWindow, SpeaksItsFirstWords) {
  EXPECT_EQ(platform::TextOf(kIdStatusLine), u"Ready  \u2022  F5 Validate");
  EXPECT_EQ(platform::TextOf(kIdOutputLog),
            u"Ready. Press F5 to validate the active program. Verify unfamiliar programs in Haas "
            u"Graphics mode before machining.\r\n");
  EXPECT_EQ(platform::TextOf(kIdFeatureHint), u"All program features appear here.");
  EXPECT_EQ(platform::TextOf(kIdOutputHead), u"OUTPUT / VALIDATION");
}

TEST_F(MainWindow, WritesItsTextsInTheirColours) {
  const auto coloured = [](int id, platform::Colour text, platform::Colour background) {
    headless::ControlInfo info;
    return headless::Describe(id, info) && info.colours.text == text &&
           (info.colours.transparent || info.colours.background == background);
  };
  for (int id : {kIdDncPort, kIdDncBaud, kIdPanelHead, kIdOutputHead})
    EXPECT_TRUE(coloured(id, 0x00D3F2, 0x021726)) << id;
  for (int id : {kIdFeatureName, kIdOutputLog, kIdInfoPanel, kIdHelpText})
    EXPECT_TRUE(coloured(id, 0xDEE9F2, 0x03080E)) << id;
  for (int id : {kIdModeList, kIdFeatureList}) EXPECT_TRUE(coloured(id, 0xDEE9F2, 0x031929)) << id;
  for (int id : {kIdStatusLine, kIdFeatureHint})
    EXPECT_TRUE(coloured(id, 0xDEE9F2, 0x010F19)) << id;
}

TEST_F(MainWindow, ColoursTheStateOfTheLink) {
  const platform::Colour colours[] = {0x91AAC4, 0x22FF6E, 0xFFBE50, 0xFF6473, 0xFF6473};
  for (int state = kDncOffline; state <= kDncConnectionFailed; ++state) {
    SetDncState(state);
    headless::ControlInfo info;
    ASSERT_TRUE(headless::Describe(kIdDncState, info));
    EXPECT_EQ(info.colours.text, colours[state]) << state;
  }
  ResetSerialProfile();
}

TEST_F(MainWindow, HasEveryKeyWithItsCaption) {
  struct {
    int id;
    const char16_t* caption;
  } const rows[] = {{101, u"NEW"},
                    {102, u"OPEN"},
                    {103, u"SAVE  \u25BC"},
                    {106, u"SETUP"},
                    {108, u"SEND"},
                    {109, u"RECEIVE"},
                    {110, u"FIND"},
                    {440, u"RUN PROGRAM PREFLIGHT"},
                    {660, u"PATH"},
                    {661, u"PLAY"},
                    {663, u"VIEW"},
                    {664, u"-"},
                    {665, u"+"},
                    {666, u"RESET"},
                    {808, u"+"},
                    {809, u"COMPARE"},
                    {811, u"CLOSE"},
                    {919, u"COMMAND WORDS"},
                    {1210, u"FEATURES"},
                    {1211, u"CODE INDEX"},
                    {1213, u"Edit feature"},
                    {1214, u"New feature"},
                    {1216, u"RENAME"},
                    {1275, u"Include code: ON"},
                    {1276, u"Delete feature"},
                    {1280, u"INCH *"},
                    {1281, u"MM"},
                    {1290, u"Rewind"},
                    {1291, u"Fast forward"},
                    {1292, u"Dimensions"},
                    {1293, u"Measure"},
                    {1294, u"Pan"},
                    {1295, u"Fit"},
                    {2990, u"Machine: Haas VF-3  \u25BE"},
                    {2991, u"Lock feature"},
                    {2992, u"Show / hide feature"}};
  for (const auto& row : rows) {
    EXPECT_EQ(platform::TextOf(row.id), row.caption) << row.id;
    // Beside the view its own keys stand for these.
    const bool doubled = row.id == kIdPlay || (row.id >= kIdRewind && row.id <= kIdFit);
    EXPECT_NE(Visible(row.id), doubled) << row.id;
  }
}

TEST_F(MainWindow, DisablesExactlyTheKeysStillToCome) {
  for (const KeyLook& key : Keys()) {
    for (int id = key.id; id <= LastOf(key); ++id) {
      EXPECT_EQ(platform::IsEnabled(id), !IsPending(id)) << id;
    }
  }
}

TEST_F(MainWindow, NamesEveryVisibleControlOnce) {
  std::set<std::u16string> names;
  for (int id : headless::AllIds()) {
    headless::ControlInfo info;
    ASSERT_TRUE(headless::Describe(id, info));
    if (!info.visible || info.kind == u"label") continue;
    EXPECT_FALSE(info.name.empty()) << id;
    EXPECT_TRUE(names.insert(info.name).second) << id << " " << support::Narrow(info.name);
  }
}

TEST_F(MainWindow, PlacesEveryVisibleControl) {
  for (int id : headless::AllIds()) {
    headless::ControlInfo info;
    ASSERT_TRUE(headless::Describe(id, info));
    if (!info.visible) continue;
    EXPECT_GT(platform::RectWidth(info.place), 0) << id;
    EXPECT_GT(platform::RectHeight(info.place), 0) << id;
  }
}

TEST_F(MainWindow, KeepsTheLogWhenThePointerRestsOnStandingText) {
  ResetHover();
  const std::u16string log = platform::TextOf(kIdOutputLog);
  for (int id : {kIdInfoPanel, kIdHelpText, kIdStatusLine}) {
    headless::MovePointerOver(id);
    HoverTick();
    HoverTick();
    EXPECT_FALSE(platform::IsVisible(kIdOutputHelp)) << id;
    EXPECT_EQ(platform::TextOf(kIdOutputLog), log) << id;
  }
  headless::MovePointerOver(kIdNew);
  HoverTick();
  HoverTick();
  EXPECT_EQ(platform::TextOf(kIdOutputHelp), u"NEW");
  ResetHover();
}

TEST_F(MainWindow, LimitsTheFeatureNameTo80) {
  platform::SetEnabled(kIdFeatureName, true);
  EXPECT_TRUE(headless::TypeInto(kIdFeatureName, std::u16string(100, u'x')));
  EXPECT_EQ(platform::TextOf(kIdFeatureName).size(), 80u);
}

}  // namespace
}  // namespace morva
