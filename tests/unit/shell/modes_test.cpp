#include "shell/modes.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "app/icon_names.h"
#include "app/mode_table.h"
#include "app/panels.h"
#include "documents/builder_table.h"
#include "platform/timer.h"
#include "unit/shell/main_stage.h"

namespace morva {
namespace {

class Modes : public shell_test::MainStage {
 protected:
  static int Selected() { return platform::SelectedRow(kIdModeList); }
};

TEST_F(Modes, ListElevenRowsInTheirOrder) {
  const char16_t* const words[] = {
      u"Home",         u"CAD",           u"Plate builder", u"Machining wizard", u"Shapes and slots",
      u"Tool library", u"Macro library", u"Code index",    u"Find and replace", u"Simulator",
      u"DNC / RS-232"};
  const int data[] = {0, 13, 14, 1, 5, 2, 4, 3, 12, 9, 10};
  ASSERT_EQ(platform::RowCount(kIdModeList), 11);
  for (int row = 0; row < 11; ++row) {
    EXPECT_EQ(platform::RowText(kIdModeList, row), words[row]);
    EXPECT_EQ(platform::RowData(kIdModeList, row), data[row]);
  }
}

TEST_F(Modes, HeadCodeIndexAsHome) {
  EXPECT_STREQ(std::string(support::Narrow(ModeOf(kModeCodeIndex).header)).c_str(), "PROGRAM");
  EXPECT_EQ(std::u16string(ModeOf(kModeHome).header), u"PROGRAM");
  EXPECT_EQ(std::u16string(ModeOf(kModeSimulator).header), u"TOOLPATH");
  EXPECT_EQ(std::u16string(ModeOf(kModeFind).header), u"FIND / REPLACE");
  EXPECT_EQ(std::u16string(ModeOf(13).header), u"");
  EXPECT_EQ(std::u16string(ModeOf(-1).header), u"");
}

TEST_F(Modes, HaveTheirHeadersAndTheirHelp) {
  const char16_t* const headers[] = {u"PROGRAM",
                                     u"MACHINING WIZARD",
                                     u"TOOL LIBRARY",
                                     u"PROGRAM",
                                     u"MACRO LIBRARY",
                                     u"SHAPES / SLOTS",
                                     u"SLOT BUILDER",
                                     u"CIRCULAR PATTERN",
                                     u"RECTANGULAR PATTERN",
                                     u"TOOLPATH",
                                     u"DNC / RS-232",
                                     u"DIAGNOSTICS",
                                     u"FIND / REPLACE",
                                     u"",
                                     u""};
  for (int mode = 0; mode < 15; ++mode)
    EXPECT_EQ(std::u16string(ModeOf(mode).header), headers[mode]);
  const std::u16string builders =
      u"ACTIVE TOOL HELP\r\n\r\nAll generated code remains editable. Verify offsets, tooling, "
      u"compensation, workholding, and clearances before machining.";
  for (const int mode : {int{kModeWizard}, int{kModeTools}, int{kModeMacros}}) {
    EXPECT_EQ(std::u16string(ModeOf(mode).help), u"") << mode;
  }
  EXPECT_EQ(ModeOf(kModeShapes).help, builders);
  EXPECT_EQ(ModeOf(kModeSlot).help, builders);
  EXPECT_EQ(std::u16string(ModeOf(kModeCircular).help),
            u"CIRCULAR PATTERN\r\n\r\nPreview quantity, diameter, orientation, rotation, depth, "
            u"and safe Z before inserting editable G-code.");
  EXPECT_EQ(std::u16string(ModeOf(kModeRectangular).help),
            u"RECTANGULAR PATTERN\r\n\r\nPreview and verify row/column count, spacing, rotation, "
            u"depth, and safe Z before inserting editable G-code.");
}

TEST_F(Modes, HaveTheirIcons) {
  EXPECT_EQ(ModeOf(kModeHome).icon, 9);
  EXPECT_EQ(ModeOf(kModeWizard).icon, 12);
  EXPECT_EQ(ModeOf(kModeTools).icon, 14);
  EXPECT_EQ(ModeOf(kModeCodeIndex).icon, 16);
  EXPECT_EQ(ModeOf(kModeMacros).icon, 15);
  EXPECT_EQ(ModeOf(kModeShapes).icon, 13);
  for (int mode : {6, 7, 8, 10, 11, 15, -1, 99}) EXPECT_EQ(ModeOf(mode).icon, 18) << mode;
  EXPECT_EQ(ModeOf(kModeSimulator).icon, 17);
  EXPECT_EQ(ModeOf(kModeFind).icon, 7);
  EXPECT_EQ(ModeOf(kModeCadItem).icon, 10);
  EXPECT_EQ(ModeOf(kModePlateItem).icon, 11);
}

// A made-up builder on the wizard's mode: its row stands in the list in place of the words of what
// was to come, and its command goes there.
TEST_F(Modes, AreWhatTheRowOfTheirRoomSays) {
  static constexpr ModeKey kKeys[] = {{kIdOldModeFirst + 4}};
  static const ModeRow kRow{.mode = kModeWizard,
                            .place = 4,
                            .words = u"Made up",
                            .header = u"MADE-UP BUILDER",
                            .help = u"Help of the builder.",
                            .icon = kIconLayers,
                            .keys = kKeys};
  Panel panel;
  panel.mode = kModeWizard;
  panel.row = &kRow;
  RegisterPanel(panel);
  ASSERT_NE(ListedMode(3), nullptr);
  EXPECT_EQ(std::u16string(ListedMode(3)->words), u"Made up");
  EXPECT_EQ(ModeListRow(kModeWizard), 3);
  SetMode(kModeSimulator);
  SetMode(kModeWizard);
  EXPECT_EQ(app.mode, kModeWizard);
  EXPECT_EQ(platform::TextOf(kIdPanelHead), u"MADE-UP BUILDER");
  EXPECT_EQ(platform::TextOf(kIdHelpText), u"Help of the builder.");
  // The back key leads where the simulator came from: this row is not remembered.
  EXPECT_EQ(History().mode, kModeHome);
}

TEST_F(Modes, DoWhatEachOneNeedsOnEntering) {
  static int paths;
  static int compares;
  paths = compares = 0;
  hooks.rebuildToolpath = [] { ++paths; };
  hooks.leaveCompare = [] { ++compares; };
  SetMode(kModeSimulator);
  EXPECT_EQ(paths, 1);
  EXPECT_EQ(compares, 0);
  platform::SetText(kIdInfoPanel, u"stale");
  app.compareActive = true;
  SetMode(kModeHome);
  EXPECT_EQ(paths, 1);
  EXPECT_EQ(compares, 1);
  EXPECT_EQ(platform::TextOf(kIdInfoPanel).substr(0, 7), u"PROGRAM");
}

TEST_F(Modes, SetTheCodeSurfaceWithTheCompletionListAway) {
  static int hidden;
  static int keys;
  hidden = keys = 0;
  hooks.hideCompletion = [] { ++hidden; };
  static const Builder listening{.linked = [] { ++keys; }};
  AddBuilder(listening);
  platform::StartTimer(platform::kMainWindow, kTimerCompletion, 60);
  SetSurface(kSurfaceCode);
  EXPECT_FALSE(platform::TimerRuns(platform::kMainWindow, kTimerCompletion));
  // The change of mode and the surface both put the list away.
  EXPECT_EQ(hidden, 2);
  EXPECT_EQ(keys, 1);
  EXPECT_EQ(app.surface, kSurfaceCode);
}

TEST_F(Modes, StartInHomeWithItsWords) {
  EXPECT_EQ(app.mode, kModeHome);
  EXPECT_EQ(Selected(), 0);
  EXPECT_EQ(platform::TextOf(kIdPanelHead), u"PROGRAM");
  EXPECT_EQ(platform::TextOf(kIdBack), u"\u2190  Home");
  EXPECT_EQ(platform::TextOf(kIdHelpText),
            u"QUICK WORKFLOW\r\n\r\n1. Open or create a program.\r\n2. Use COMMAND WORDS for an "
            u"editable plain-language project.\r\n3. Press F5 to run preflight.\r\n4. Refresh PATH "
            u"for a basic preview; verify motion at the control.");
  EXPECT_TRUE(Visible(kIdInfoPanel));
  EXPECT_TRUE(Visible(kIdHelpText));
  EXPECT_TRUE(Visible(kViewToolpath));
}

TEST_F(Modes, ShowTheSimulatorByItsRow) {
  ASSERT_TRUE(headless::SelectRows(kIdModeList, {9}));
  EXPECT_EQ(app.mode, kModeSimulator);
  EXPECT_EQ(platform::TextOf(kIdPanelHead), u"TOOLPATH");
  EXPECT_EQ(platform::TextOf(kIdBack), u"\u2190");
  EXPECT_FALSE(Visible(kIdInfoPanel));
  EXPECT_FALSE(Visible(kIdHelpText));
  EXPECT_TRUE(Visible(kViewToolpath));
}

TEST_F(Modes, GiveTheSelectionBackFromARowStillToCome) {
  for (int row : {3, 4, 5, 6, 7, 8, 10}) {
    ASSERT_TRUE(headless::SelectRows(kIdModeList, {row}));
    EXPECT_EQ(Selected(), 0) << row;
    EXPECT_EQ(app.mode, kModeHome) << row;
    EXPECT_EQ(app.surface, kSurfaceCode) << row;
  }
}

TEST_F(Modes, StepOverRowsStillToComeByKeyboard) {
  ASSERT_TRUE(headless::Focus(kIdModeList));
  EXPECT_TRUE(headless::PressKey({platform::kKeyDown}));
  EXPECT_EQ(Selected(), 1);  // CAD, not entered by an arrow
  EXPECT_TRUE(headless::PressKey({platform::kKeyDown}));
  EXPECT_EQ(Selected(), 2);  // nor is the plate
  EXPECT_EQ(app.surface, kSurfaceCode);
  EXPECT_TRUE(headless::PressKey({platform::kKeyDown}));
  EXPECT_EQ(app.mode, kModeSimulator);
  EXPECT_EQ(Selected(), 9);
  EXPECT_TRUE(headless::PressKey({platform::kKeyDown}));
  EXPECT_EQ(app.mode, kModeSimulator);
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(headless::PressKey({platform::kKeyUp}));
  EXPECT_EQ(app.mode, kModeHome);
  EXPECT_TRUE(headless::PressKey({platform::kKeyEnd}));
  EXPECT_EQ(app.mode, kModeSimulator);
  EXPECT_TRUE(headless::PressKey({platform::kKeyHome}));
  EXPECT_EQ(app.mode, kModeHome);
}

TEST_F(Modes, ReturnByTheBackKeyWithoutCycling) {
  SetMode(kModeSimulator);
  EXPECT_EQ(History().mode, kModeHome);
  ASSERT_TRUE(headless::Click(kIdBack));
  EXPECT_EQ(app.mode, kModeHome);
  ASSERT_TRUE(headless::Click(kIdBack));
  EXPECT_EQ(app.mode, kModeHome);
  EXPECT_EQ(History().mode, kModeHome);
}

TEST_F(Modes, RememberNothingWhenTheModeStaysTheSame) {
  SetMode(kModeSimulator);
  SetMode(kModeSimulator);
  EXPECT_EQ(History().mode, kModeHome);
}

TEST_F(Modes, LeaveEverythingAsItIsForAModeStillToCome) {
  for (int mode : {1, 2, 3, 4, 5, 6, 10, 11, 12}) {
    SetMode(mode);
    EXPECT_EQ(app.mode, kModeHome) << mode;
  }
}

TEST_F(Modes, ShowTheCadSurfaceAndReturnByTheBackKey) {
  SetMode(kModeSimulator);
  ASSERT_TRUE(headless::Click(kIdSurfaceCad));
  EXPECT_EQ(app.surface, kSurfaceCad);
  EXPECT_TRUE(Visible(kViewCadCanvas));
  EXPECT_FALSE(Visible(kIdEditor));
  EXPECT_FALSE(Visible(kIdModeList));
  EXPECT_TRUE(Visible(kIdTabFirst));
  ASSERT_TRUE(headless::Click(kIdBack));
  EXPECT_EQ(app.surface, kSurfaceCode);
  EXPECT_EQ(app.mode, kModeSimulator);
  EXPECT_TRUE(Visible(kIdEditor));
  EXPECT_FALSE(Visible(kViewCad));
}

TEST_F(Modes, ShowThePatternFormsOnTheCadSurfaceAndKeepHomeToReturnTo) {
  SetMode(kModeCircular);
  EXPECT_EQ(app.surface, kSurfaceCad);
  EXPECT_EQ(app.mode, kModeHome);
  ASSERT_TRUE(headless::Click(kIdBack));
  EXPECT_EQ(app.surface, kSurfaceCode);
  EXPECT_EQ(app.mode, kModeHome);
}

TEST_F(Modes, EnterOnTheCadRowOpensTheWorkspace) {
  ASSERT_TRUE(headless::Focus(kIdModeList));
  EXPECT_TRUE(headless::PressKey({platform::kKeyDown}));
  EXPECT_TRUE(headless::PressKey({platform::kKeyEnter}));
  EXPECT_EQ(app.surface, kSurfaceCad);
}

TEST_F(Modes, ShowFeaturesInHome) {
  SetMode(kModeSimulator);
  ASSERT_TRUE(headless::Click(kIdShowFeatures));
  EXPECT_EQ(app.mode, kModeHome);
  EXPECT_TRUE(app.sidebarShowsFeatures);
}

TEST_F(Modes, TakeTheSecondRouteByNumber) {
  EXPECT_TRUE(RouteCommand(906, 0));
  EXPECT_EQ(app.mode, kModeSimulator);
  EXPECT_TRUE(RouteCommand(908, 0));
  EXPECT_EQ(app.mode, kModeHome);
  EXPECT_FALSE(IsPending(901));
  EXPECT_FALSE(IsPending(906));
  EXPECT_TRUE(RouteCommand(913, 0));
  EXPECT_EQ(app.surface, kSurfacePlate);
}

TEST_F(Modes, SendOldEditCommandsToTheFocusedEditor) {
  platform::SetEditorText(kIdEditor, u"G0");
  ASSERT_TRUE(headless::Focus(kIdEditor));
  headless::EditorSelect(kIdEditor, 2, 2);
  headless::EditorInsert(kIdEditor, u"1");
  EXPECT_EQ(Text(), u"G01");
  EXPECT_TRUE(RouteCommand(914, 0));
  EXPECT_EQ(Text(), u"G0");
}

}  // namespace
}  // namespace morva
