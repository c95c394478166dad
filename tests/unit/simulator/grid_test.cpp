#include <gtest/gtest.h>

#include <cmath>

#include "simulator/motion_path.h"
#include "simulator/playback.h"
#include "simulator/shown_path.h"
#include "simulator/toolpath.h"
#include "simulator/view.h"
#include "unit/simulator/view_fixture.h"

namespace morva {
namespace {

class Grid : public ViewTest {
 protected:
  static double SpacingFor(double spanX, double spanY) {
    path.count = 0;
    Feed(0, 0, 0);
    Feed(spanX, spanY, 0);
    return GridSpacing();
  }
  void Settings(std::string_view text) const {
    Put("bin/MORVA.ini", std::string("[Simulator]\r\n").append(text));
  }
};

TEST_F(Grid, RoundsATwelfthOfTheLargerSpanUpToTwoFiveOrTen) {
  EXPECT_DOUBLE_EQ(SpacingFor(4, 1), 0.5);  // 0.3333 is 3.3 tenths
  EXPECT_DOUBLE_EQ(SpacingFor(1, 4), 0.5);  // the larger span, whichever axis
  EXPECT_DOUBLE_EQ(SpacingFor(12, 0), 2);   // 1 exactly goes to 2, never to 1
  EXPECT_DOUBLE_EQ(SpacingFor(24, 0), 2);   // 2 stays
  EXPECT_DOUBLE_EQ(SpacingFor(24.5, 0), 5);
  EXPECT_DOUBLE_EQ(SpacingFor(60, 0), 5);  // 5 stays
  EXPECT_DOUBLE_EQ(SpacingFor(60.5, 0), 10);
  EXPECT_DOUBLE_EQ(SpacingFor(119, 0), 10);
  EXPECT_DOUBLE_EQ(SpacingFor(120, 0), 20);  // 10 is the next power
  EXPECT_DOUBLE_EQ(SpacingFor(1.25, 0), 0.2);
  EXPECT_DOUBLE_EQ(SpacingFor(0.0006, 0), 0.00005);
}

TEST_F(Grid, TakesFourInchesOrAHundredMillimetresForAPathWithoutSpan) {
  EXPECT_DOUBLE_EQ(GridSpacing(), 0.5);
  SetUnits(true);
  EXPECT_DOUBLE_EQ(GridSpacing(), 10);  // 8.33 of a hundred
  EXPECT_DOUBLE_EQ(SpacingFor(0.00009, 0), 10);
}

TEST_F(Grid, ScalesByPowersOfTwo) {
  view.gridScale = 1;
  EXPECT_DOUBLE_EQ(SpacingFor(4, 1), 1);
  view.gridScale = 6;
  EXPECT_DOUBLE_EQ(GridSpacing(), 32);
  view.gridScale = -6;
  EXPECT_DOUBLE_EQ(GridSpacing(), 0.0078125);
}

TEST_F(Grid, SurvivesEnormousSpans) {
  EXPECT_GT(SpacingFor(1e60, 0), 1e58);
  Paint();
}

TEST_F(Grid, StartsWithTheDefaultsWithoutSettings) {
  Paint();
  EXPECT_TRUE(view.gridOn);
  EXPECT_EQ(view.gridColour, 0);
  EXPECT_EQ(view.gridScale, 0);
}

TEST_F(Grid, ReadsItsSettingsAtTheFirstDraw) {
  Settings("Grid=0\r\nGridColor=3\r\nGridScale=-2\r\n");
  EXPECT_TRUE(view.gridOn);
  Paint();
  EXPECT_FALSE(view.gridOn);
  EXPECT_EQ(view.gridColour, 3);
  EXPECT_EQ(view.gridScale, -2);
  Settings("Grid=1\r\nGridColor=4\r\nGridScale=1\r\n");
  Paint();  // only the first draw reads
  EXPECT_FALSE(view.gridOn);
  EXPECT_EQ(view.gridColour, 3);
  EXPECT_EQ(view.gridScale, -2);
}

TEST_F(Grid, ReadsValuesOutOfRangeAsZero) {
  Settings("GridColor=9\r\nGridScale=7\r\n");
  LoadViewSettings();
  EXPECT_EQ(view.gridColour, 0);
  EXPECT_EQ(view.gridScale, 0);
  ResetView();
  Settings("GridColor=-1\r\nGridScale=-7\r\n");
  LoadViewSettings();
  EXPECT_EQ(view.gridColour, 0);
  EXPECT_EQ(view.gridScale, 0);
  ResetView();
  Settings("GridColor=5\r\nGridScale=6\r\n");
  LoadViewSettings();
  EXPECT_EQ(view.gridColour, 5);
  EXPECT_EQ(view.gridScale, 6);
}

TEST_F(Grid, IsOnWhenItsKeyHasNoDigits) {
  Settings("Grid=off\r\n");
  LoadViewSettings();
  EXPECT_TRUE(view.gridOn);
  ResetView();
  Settings("Grid=2\r\n");
  LoadViewSettings();
  EXPECT_TRUE(view.gridOn);
}

TEST_F(Grid, OffersSixColoursAndThreeSpacings) {
  headless::QueuePick(0);
  ShowGridMenu();
  const std::vector<headless::MenuRecord> menus = headless::TakeMenus();
  ASSERT_EQ(menus.size(), 1u);
  const std::vector<headless::MenuItemRecord>& items = menus[0].items;
  ASSERT_EQ(items.size(), 10u);
  const char16_t* names[] = {u"Slate blue",
                             u"Teal",
                             u"Green",
                             u"Amber",
                             u"Violet",
                             u"Neutral gray",
                             u"",
                             u"Grid spacing: automatic",
                             u"Grid spacing: half (finer)",
                             u"Grid spacing: double (coarser)"};
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (i == 6) {
      EXPECT_EQ(items[i].id, 0);
      continue;
    }
    EXPECT_EQ(items[i].text, names[i]);
  }
  EXPECT_TRUE(items[0].checked);
  EXPECT_FALSE(items[1].checked);
  EXPECT_TRUE(items[7].checked);
}

TEST_F(Grid, KeepsEachPickInTheSettingsFile) {
  headless::QueuePick(kIdGridColourFirst + 4);
  ShowGridMenu();
  EXPECT_EQ(view.gridColour, 4);
  headless::QueuePick(kIdGridDouble);
  ShowGridMenu();
  headless::QueuePick(kIdGridDouble);
  ShowGridMenu();
  headless::QueuePick(kIdGridHalf);
  ShowGridMenu();
  EXPECT_EQ(view.gridScale, 1);
  EXPECT_EQ(Raw("bin/MORVA.ini"),
            "[Simulator]\r\nGrid=1\r\nGridColor=4\r\nGridScale=1\r\nShadeByDepth=0\r\n"
            "MachineMotion=0\r\nPlayByTime=0\r\n");
  ResetView();
  LoadViewSettings();
  EXPECT_EQ(view.gridColour, 4);
  EXPECT_EQ(view.gridScale, 1);
  headless::QueuePick(kIdGridAutomatic);
  ShowGridMenu();
  EXPECT_EQ(view.gridScale, 0);
}

TEST_F(Grid, TheSwitchHoldsOverARestart) {
  Settings("Grid=1\r\nGridColor=4\r\nGridScale=-1\r\n");
  RegisterSimulatorCommands();
  RouteCommand(kIdViewGrid, 0);  // before any draw: the settings are read first
  EXPECT_FALSE(view.gridOn);
  EXPECT_EQ(Raw("bin/MORVA.ini"),
            "[Simulator]\r\nGrid=0\r\nGridColor=4\r\nGridScale=-1\r\nShadeByDepth=0\r\n"
            "MachineMotion=0\r\nPlayByTime=0\r\n");
  ResetView();
  Paint();
  EXPECT_FALSE(view.gridOn);
  EXPECT_EQ(view.gridColour, 4);
  RouteCommand(kIdViewGrid, 0);
  ResetView();
  Paint();
  EXPECT_TRUE(view.gridOn);
}

TEST_F(Grid, StopsAtSixHalvesAndSixDoubles) {
  for (int i = 0; i < 8; ++i) {
    headless::QueuePick(kIdGridHalf);
    ShowGridMenu();
  }
  EXPECT_EQ(view.gridScale, -6);
  for (int i = 0; i < 15; ++i) {
    headless::QueuePick(kIdGridDouble);
    ShowGridMenu();
  }
  EXPECT_EQ(view.gridScale, 6);
}

TEST_F(Grid, ChangesReadTheSettingsFirst) {
  Settings("GridColor=2\r\nGridScale=3\r\n");
  headless::QueuePick(kIdGridDouble);
  ShowGridMenu();  // before any draw
  EXPECT_EQ(view.gridColour, 2);
  EXPECT_EQ(view.gridScale, 4);
}

TEST_F(Grid, HasSixColours) {
  const platform::Colour colours[] = {0x344A60, 0x286973, 0x436F48, 0x79562B, 0x634478, 0x686C72};
  for (int i = 0; i < 6; ++i) {
    view.gridColour = i;
    EXPECT_EQ(GridColour(false), colours[i]);
  }
}

TEST_F(Grid, TonesItsColourHalfWayToTheBackground) {
  // Slate blue 52, 74, 96: 2650, 4450 and 6050 hundredths.
  EXPECT_EQ(GridColour(true), platform::Rgb(26, 44, 60));
  view.gridColour = 3;  // 121, 86, 43: 6100, 5050 and 3400
  EXPECT_EQ(GridColour(true), platform::Rgb(61, 50, 34));
}

TEST_F(Grid, IsTonedInTheProgramWorkspaceOnly) {
  FlatPart();
  EXPECT_EQ(Calls("PaintSegments", 0x1A2C3C).size(), 1u);
  app.mode = kModeSimulator;
  EXPECT_EQ(Calls("PaintSegments", 0x1A2C3C).size(), 0u);
  EXPECT_EQ(Calls("PaintSegments", 0x344A60).size(), 1u);
}

TEST_F(Grid, ReachesOneSpacingBeyondTheBoundsOnThePlaneZ0) {
  FlatPart();  // spacing 0.5, lines at -0.5 to 4.5 and -0.5 to 2.5
  app.mode = kModeSimulator;
  const std::vector<headless::DrawCall> calls = Calls("PaintSegments", 0x344A60);
  ASSERT_EQ(calls.size(), 1u);
  // Eleven lines along Y and seven along X, four coordinates each; then the pen.
  const std::vector<double>& n = calls[0].numbers;
  ASSERT_EQ(n.size(), (11u + 7u) * 4 + 3);
  EXPECT_EQ(n[n.size() - 3], 1);
  // 129 pixels a unit: X -0.5 lies at 77 - 64.5, Y -0.5 at 458 + 64.5, Y 2.5 at 200 - 64.5. A level
  // or upright line is drawn on the nearest pixel, where it is sharp.
  EXPECT_NEAR(n[0], 12.5, 0.51);
  EXPECT_EQ(n[0], std::floor(n[0]));
  EXPECT_EQ(n[2], n[0]);
  EXPECT_NEAR(n[1], 522.5, 1e-3);
  EXPECT_NEAR(n[3], 135.5, 1e-3);
  // The last line along X: from X -0.5 to X 4.5 at Y 2.5.
  EXPECT_NEAR(n[17 * 4 + 0], 12.5, 1e-3);
  EXPECT_NEAR(n[17 * 4 + 1], 135.5, 0.51);
  EXPECT_EQ(n[17 * 4 + 1], std::floor(n[17 * 4 + 1]));
  EXPECT_NEAR(n[17 * 4 + 2], 657.5, 1e-3);
}

TEST_F(Grid, ReadsOutItsSpacing) {
  FlatPart();
  EXPECT_TRUE(Shows(u"XY grid Z0  /  spacing 0.5000 in"));
  SetUnits(true);
  EXPECT_TRUE(Shows(u"XY grid Z0  /  spacing 0.5000 mm"));
}

TEST_F(Grid, ShowsNeitherLinesNorReadOutWhenOff) {
  FlatPart();
  app.mode = kModeSimulator;
  Paint();
  view.gridOn = false;
  EXPECT_EQ(Calls("PaintSegments", 0x344A60).size(), 0u);
  for (const std::u16string& text : Texts()) EXPECT_EQ(text.find(u"grid"), std::u16string::npos);
}

TEST_F(Grid, TellsTheLastLineThatAFullTableShows) {
  // The origin takes the first of 32,768 places, so the line that counts 32767 takes the last.
  std::u16string text;
  for (int line = 0; line < 40000; ++line) text += line % 2 == 0 ? u"G1 X4 Y0\n" : u"X0 Y2\n";
  ExtractToolpath(text, false);
  EXPECT_TRUE(Shows(u"XY grid Z0  /  spacing 0.5000 in  /  path shown to line 32767"));
  view.gridOn = false;
  EXPECT_TRUE(Shows(u"Grid off  /  path shown to line 32767"));
}

TEST_F(Grid, SaysOnceThatTheSettingsCannotBeKept) {
  headless::FailCall("new", 1);
  headless::QueuePick(kIdGridDouble);
  ShowGridMenu();
  EXPECT_EQ(view.gridScale, 1);  // holds for this run
  EXPECT_NE(TextOf(kIdStatusLine), u"");
}

}  // namespace
}  // namespace morva
