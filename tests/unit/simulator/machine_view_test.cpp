// The switch "Machine motion": what the view, the player and the read-outs do with the program as
// the control runs it, and that nothing differs while it is off.

#include <algorithm>
#include <filesystem>
#include <string>

#include "app/command_ids.h"
#include "app/outlets.h"
#include "documents/feature_blocks.h"
#include "documents/program_tabs.h"
#include "documents/stored_code.h"
#include "library/tools.h"
#include "platform/editor.h"
#include "platform/headless/headless.h"
#include "platform/window.h"
#include "simulator/control_settings.h"
#include "simulator/machine_motion.h"
#include "simulator/machine_path.h"
#include "simulator/playback.h"
#include "simulator/preview.h"
#include "simulator/program_finder.h"
#include "simulator/toolpath.h"
#include "simulator/view_switches.h"
#include "simulator/view_words.h"
#include "text/codetext.h"
#include "unit/simulator/view_fixture.h"

namespace morva {
namespace {

class MachineView : public ViewTest {
 protected:
  MachineView() {
    Clear();
    ResetToolLibrary();
    support::MakeButton(kIdPlay, u"PLAY");
  }
  ~MachineView() override {
    Clear();
    ResetToolLibrary();
  }
  static void Clear() {
    tabs[0] = ProgramTab{};
    ResetFeatures();
    ResetSimulator();
    ResetView();
  }

  static void OpenProgram(std::u16string_view text) {
    app.activeTab = 0;
    app.tabCount = 1;
    platform::SetEditorText(kIdEditor, text);
    RebuildToolpath();
  }
  static void PickLayer(int id) {
    headless::QueuePick(id);
    ShowLayersMenu();
  }
  void Settings(std::string_view text) const { Put("bin/MORVA.ini", std::string(text)); }
  static std::u16string Log() { return platform::TextOf(kIdOutputLog); }
  static bool Has(std::u16string_view text, std::u16string_view words) {
    return text.find(words) != text.npos;
  }
  // Whether a move of the shown path ends there, or a feed.
  static bool Reaches(double x, double y, double z, bool cuts = false) {
    const MotionPath& of = ShownPath().path;
    return std::any_of(of.points, of.points + of.count, [&](const MotionPoint& p) {
      return !(cuts && p.rapid) && std::abs(p.x - x) < 1e-9 && std::abs(p.y - y) < 1e-9 &&
             std::abs(p.z - z) < 1e-9;
    });
  }

  static bool CutsTo(double x, double y, double z) { return Reaches(x, y, z, true); }

  // Two holes, with a way to machine zero behind them.
  static constexpr char16_t kHoles[] =
      u"G20 G90 G54\r\nT1 M6\r\nS1000 M3\r\nG0 X0 Y0\r\nG43 H1 Z1.\r\nG81 Z-0.5 R0.1 "
      u"F10.\r\nX1.\r\n"
      u"G80\r\nG53 G0 Z0\r\nM30\r\n";
};

TEST_F(MachineView, IsOffAtFirstAndReadsNothing) {
  OpenProgram(kHoles);
  EXPECT_EQ(ShownOwner(), PathOwner::Program);
  EXPECT_EQ(machinePath.count, 0);
  EXPECT_EQ(machineTrack.findings.count, 0);
  EXPECT_EQ(MachineWords(), u"");
}

TEST_F(MachineView, TheLayerShowsTheCyclesStrokesAndTheRowNamesTheWayBack) {
  OpenProgram(kHoles);
  EXPECT_FALSE(Reaches(1, 0, 0.1));
  const std::int32_t written = path.count;
  PickLayer(kIdLayerMachine);
  EXPECT_EQ(ShownOwner(), PathOwner::Machine);
  EXPECT_TRUE(CutsTo(0, 0, -0.5));
  EXPECT_TRUE(CutsTo(1, 0, -0.5));
  EXPECT_TRUE(Reaches(1, 0, 0.1));
  EXPECT_EQ(path.count, 0);  // nobody sees it, and no time is spent on it
  headless::TakeMenus();
  headless::QueuePick(0);
  ShowLayersMenu();
  EXPECT_EQ(headless::TakeMenus()[0].items[8].text, u"Path as written");
  PickLayer(kIdLayerMachine);
  EXPECT_EQ(ShownOwner(), PathOwner::Program);
  EXPECT_EQ(path.count, written);
  EXPECT_EQ(machinePath.count, 0);
}

TEST_F(MachineView, TheSwitchStandsInTheSettingsAndHoldsOverARestart) {
  OpenProgram(kHoles);
  PickLayer(kIdLayerMachine);
  PickLayer(kIdLayerPlayByTime);
  EXPECT_TRUE(Has(support::Wide(Raw("bin/MORVA.ini")), u"MachineMotion=1\r\nPlayByTime=1\r\n"));
  ResetSimulator();
  ResetView();
  RebuildToolpath();
  EXPECT_EQ(ShownOwner(), PathOwner::Machine);
  EXPECT_TRUE(CutsTo(1, 0, -0.5));
  EXPECT_TRUE(switches.playByTime);
}

TEST_F(MachineView, ThePickPutsATableOfTheMachineIntoTheSettings) {
  Settings("[Simulator]\r\nRapidRate=900\r\n[Offsets]\r\nG55=1,2,3\r\n");
  OpenProgram(kHoles);
  EXPECT_FALSE(Has(support::Wide(Raw("bin/MORVA.ini")), u"Travel"));
  PickLayer(kIdLayerMachine);
  const std::u16string file = support::Wide(Raw("bin/MORVA.ini"));
  for (const char16_t* line :
       {u"RapidRate=900\r\n", u"ToolChangeSeconds=6\r\n", u"BlockSeconds=0.0025\r\n",
        u"TravelX=40\r\n", u"TravelY=20\r\n", u"TravelZ=25\r\n", u"BlockDelete=0\r\n",
        u"DrillsInPlace=1\r\n", u"G54=0,0,0\r\n", u"G55=1,2,3\r\n", u"Unit=in\r\n"}) {
    EXPECT_TRUE(Has(file, line));
  }
  EXPECT_FALSE(Has(file, u"G55=0"));
  EXPECT_FALSE(Has(file, u"RapidRate=710"));
  // What it wrote is what counts without it.
  ControlTable written, before;
  ReadControlSettings(written);
  EXPECT_EQ(written.rapidRate, 900);
  EXPECT_DOUBLE_EQ(written.leastBlockSeconds, before.leastBlockSeconds);
  EXPECT_DOUBLE_EQ(written.reversalSeconds, before.reversalSeconds);
  EXPECT_EQ(written.drillsInPlace, before.drillsInPlace);
}

TEST_F(MachineView, AnotherNumberThanOneInTheSettingsLeavesItOff) {
  Settings("[Simulator]\r\nMachineMotion=2\r\n");
  OpenProgram(kHoles);
  EXPECT_EQ(ShownOwner(), PathOwner::Program);
}

TEST_F(MachineView, ExtentsLeavePlacesOfTheMachineOut) {
  OpenProgram(kHoles);
  PickLayer(kIdLayerMachine);
  const PathBounds& bounds = Bounds();
  EXPECT_NEAR(bounds.minX, 0, 1e-9);
  EXPECT_NEAR(bounds.maxX, 1, 1e-9);
  EXPECT_NEAR(bounds.minZ, -0.5, 1e-9);
  EXPECT_NEAR(bounds.maxZ, 1, 1e-9);
  // Home itself is drawn: the last rapid leads there.
  EXPECT_GT(ShownPath().path.points[ShownPath().path.count - 1].z, 10);
}

TEST_F(MachineView, LeavesHiddenFeaturesOutOfThePath) {
  const std::u16string text = u"G20 G90 F10. G0 X0 Y0 Z0\r\nG1 X1.\r\nG1 Y2.\r\nG1 X3.\r\n";
  OpenProgram(text);
  PickLayer(kIdLayerMachine);
  ASSERT_TRUE(CutsTo(1, 2, 0));
  features.count = 1;
  FeatureRecord& row = features.rows[0];
  row = FeatureRecord{};
  row.id = 7;
  row.start = static_cast<std::int32_t>(text.find(u"G1 Y2"));
  row.end = static_cast<std::int32_t>(text.find(u"G1 X3"));
  tabs[0].hiddenIds[0] = 7;
  ExtractToolpath(text, false);
  EXPECT_FALSE(CutsTo(1, 2, 0));
  const MotionPoint& last = machinePath.points[machinePath.count - 1];
  EXPECT_NEAR(last.x, 3, 1e-9);
  EXPECT_TRUE(last.jump);  // nothing is drawn from where the hidden lines began
}

TEST_F(MachineView, DrawsTheLinesAsWrittenBesideACompensatedPath) {
  // A radius of 0.5 to the left of a line along X.
  Settings("[Simulator]\r\nMachineMotion=1\r\n[Offsets]\r\nT1=0,0,1\r\n");
  OpenProgram(u"G20 G90 F10. G0 X0 Y-2. Z0\r\nG41 D1 G1 Y0\r\nX4.\r\nX8.\r\nG40 Y-2.\r\nM30\r\n");
  ASSERT_EQ(ShownOwner(), PathOwner::Machine);
  const MotionPath& written = ShownPath().context;
  ASSERT_GT(written.count, 0);
  bool onLine = false;
  for (int i = 0; i < written.count; ++i) {
    onLine = onLine || (std::abs(written.points[i].x - 4) < 1e-9 && written.points[i].y == 0);
  }
  EXPECT_TRUE(onLine);
  EXPECT_TRUE(CutsTo(4, 0.5, 0));
}

TEST_F(MachineView, TakesADiameterFromTheToolLibraryWhereTheSettingsHaveNone) {
  ToolRecord tool;
  tool.number = 3;
  tool.dOffset = 5;
  tool.diameter = 0.25;
  AppendTool(tool);
  ControlTable table;
  table.tools[6].diameter = 0.75;
  FillDiameters(table);
  EXPECT_EQ(table.tools[5].diameter, 0.25);
  table.tools[5].diameter = 0.5;
  FillDiameters(table);
  EXPECT_EQ(table.tools[5].diameter, 0.5);
  EXPECT_EQ(table.tools[6].diameter, 0.75);
}

// A pocket as a CAM system writes it for the middle of a tool of .5: its corners have .05.
constexpr char16_t kMiddle[] =
    u"G20 G90 G17\r\nS900 M3\r\nG0 X0 Y0 Z0\r\nG1 G41 D5 X.05 Y-.05 F9.\r\nG3 X.1 Y0. J.05\r\n"
    u"G1 Y.5\r\nG3 X.05 Y.55 I-.05\r\nG1 X-.5\r\nG40 X-.6 Y.5\r\nM30\r\n";

TEST_F(MachineView, TakesNoDiameterOfTheLibraryThatThePathWasNotDrawnFor) {
  ToolRecord tool;
  tool.number = 5;
  tool.dOffset = 5;
  tool.diameter = 0.5;
  AppendTool(tool);
  OpenProgram(kMiddle);
  PickLayer(kIdLayerMachine);
  ASSERT_EQ(machineTrack.findings.count, 1);
  EXPECT_EQ(machineTrack.findings.found[0].kind, Finding::CompAsWear);
  EXPECT_TRUE(CutsTo(0.1, 0.5, 0));
}

// A long entry, and so many inside corners of .05 that a tool of .5 does not fit.
std::u16string Corners(int count) {
  std::u16string text =
      u"G20 G90 G17\r\nS900 M3\r\nG0 X0 Y0 Z0\r\nG1 G41 D5 X0 Y-2. F9.\r\nG91 X2.\r\n";
  for (int i = 0; i < count; ++i) {
    text += u"G1 X2.\r\nG3 X.05 Y.05 J.05\r\nG1 Y2.\r\nG2 X.6 Y.6 I.6\r\n";
  }
  return text + u"G90 G1 G40 X50. Y50.\r\nM30\r\n";
}

TEST_F(MachineView, TakesNoDiameterOfTheLibraryThatThreePlacesDoNotFit) {
  ToolRecord tool;
  tool.dOffset = 5;
  tool.diameter = 0.5;
  AppendTool(tool);
  for (const int corners : {1, 2, 3}) {
    OpenProgram(Corners(corners).c_str());
    PickLayer(kIdLayerMachine);
    ASSERT_EQ(machineTrack.findings.count, corners < 3 ? corners : 1) << corners;
    const auto expected = corners < 3 ? Finding::CompCorner : Finding::CompAsWear;
    EXPECT_EQ(machineTrack.findings.found[0].kind, expected) << corners;
    PickLayer(kIdLayerMachine);
  }
}

TEST_F(MachineView, TakesNoDiameterOfTheLibraryThatTheEntryDoesNotFit) {
  ToolRecord tool;
  tool.dOffset = 5;
  tool.diameter = 0.5;
  AppendTool(tool);
  OpenProgram(
      u"G20 G90 G17\r\nS900 M3\r\nG0 X0 Y0 Z0\r\nG1 G41 D5 X.1 F9.\r\nX4.\r\nG40 X5.\r\n"
      u"M30\r\n");
  PickLayer(kIdLayerMachine);
  ASSERT_EQ(machineTrack.findings.count, 1);
  EXPECT_EQ(machineTrack.findings.found[0].kind, Finding::CompAsWear);
  EXPECT_EQ(
      WordsOf(machineTrack.findings.found[0]),
      u"Line 4: The entry or the corners are too small for the tool that the library has for "
      u"D5: D5 is taken for wear alone, and the path is not offset. If D5 holds the diameter, "
      u"the control stops.");
  EXPECT_TRUE(CutsTo(4, 0, 0));
}

TEST_F(MachineView, HoldsADiameterOfTheOffsetsWhateverThePath) {
  Settings("[Offsets]\r\nT5=0,0,.5\r\n");
  OpenProgram(kMiddle);
  PickLayer(kIdLayerMachine);
  ASSERT_GT(machineTrack.findings.count, 0);
  EXPECT_EQ(machineTrack.findings.found[0].kind, Finding::CompEntryShort);
}

TEST_F(MachineView, HoldsADiameterOf0ThatTheOffsetsSay) {
  for (const int number : {5, 6}) {
    ToolRecord tool;
    tool.number = number;
    tool.dOffset = number;
    tool.diameter = 0.02;  // it would fit
    AppendTool(tool);
  }
  Settings("[Offsets]\r\nT5=6,0,0\r\nT6=6,0\r\n");
  ControlTable table;
  ReadControlSettings(table);
  FillDiameters(table);
  EXPECT_EQ(table.tools[5].diameter, 0);
  EXPECT_EQ(table.tools[6].diameter, 0.02);  // nothing was said of it
}

TEST_F(MachineView, ReadsRatesOffsetsAndSwitchesFromTheSettings) {
  Settings(
      "[Simulator]\r\nRapidRate=900\r\nToolChangeSeconds=4.5\r\nTimeFactor=1.25\r\nTravelZ="
      "30\r\nBlockDelete=1\r\n"
      "ShiftDirection=3\r\n[Offsets]\r\nUnit=mm\r\nG54=-254, -127,-25.4\r\nG154P99=25.4,0,0\r\n"
      "T12=50.8,0,12.7,-2.54\r\n");
  ControlTable table;
  ReadControlSettings(table);
  EXPECT_EQ(table.rapidRate, 900);
  EXPECT_EQ(table.toolChangeSeconds, 4.5);
  EXPECT_EQ(table.timeFactor, 1.25);
  EXPECT_EQ(table.travel[2], 30);
  EXPECT_EQ(table.travel[0], 40);
  EXPECT_TRUE(table.blockDelete);
  EXPECT_FALSE(table.optionalStop);
  EXPECT_EQ(table.shiftDirection, 3);
  EXPECT_NEAR(table.work[kFirstWorkRow][0], -10, 1e-12);
  EXPECT_NEAR(table.work[kFirstWorkRow][1], -5, 1e-12);
  EXPECT_NEAR(table.work[kFirstWorkRow][2], -1, 1e-12);
  EXPECT_NEAR(table.work[kFurtherWorkRow + 98][0], 1, 1e-12);
  EXPECT_NEAR(table.tools[12].length, 2, 1e-12);
  EXPECT_TRUE(table.tools[12].lengthSaid);
  EXPECT_FALSE(table.tools[11].lengthSaid);
  EXPECT_NEAR(table.tools[12].diameter, 0.5, 1e-12);
  EXPECT_NEAR(table.tools[12].diameterWear, -0.1, 1e-12);
  EXPECT_EQ(Log(), u"");
}

TEST_F(MachineView, SaysWhichSettingItCannotTakeAndKeepsTheDefault) {
  Settings(
      "[Simulator]\r\nRapidRate=fast\r\nTravelX=0\r\n[Offsets]\r\nG55=1,2,3,4\r\nG56=1,,3\r\n"
      "T1=1e3\r\n");
  ControlTable table;
  ReadControlSettings(table);
  EXPECT_EQ(table.rapidRate, 710);
  EXPECT_EQ(table.travel[0], 40);
  EXPECT_EQ(table.work[kFirstWorkRow + 1][0], 0);
  EXPECT_EQ(table.work[kFirstWorkRow + 2][0], 0);
  EXPECT_EQ(table.tools[1].length, 0);
  EXPECT_TRUE(Has(Log(),
                  u"[Simulator] RapidRate=fast in the settings is no value in its range; it counts "
                  u"as not set."));
  for (const char16_t* key : {u"TravelX=0", u"G55=1,2,3,4", u"G56=1,,3", u"T1=1e3"}) {
    EXPECT_TRUE(Has(Log(), key));
  }
}

TEST_F(MachineView, SaysWhichKeyOfOffsetsAndCheckNobodyReads) {
  Settings(
      "[Offsets]\r\nG60=1,2,3\r\ng54=1,2,3\r\nT201=1\r\nG154P99=1,1,1\r\nT200=1\r\n; T300=1\r\n"
      "unit=in\r\n[Check]\r\nNoFed=0\r\nNoFeed=0\r\n[Other]\r\nG61=1\r\n");
  ControlTable table;
  ReadControlSettings(table);
  EXPECT_EQ(Log(),
            u"[Offsets] G60=1,2,3 in the settings is no key that is read.\r\n"
            u"[Offsets] T201=1 in the settings is no key that is read.\r\n"
            u"[Check] NoFed=0 in the settings is no key that is read.\r\n");
  EXPECT_EQ(table.work[kFirstWorkRow][0], 1);
}

TEST_F(MachineView, SaysWhichSwitchIsNeitherOnNorOff) {
  Settings(
      "[Simulator]\r\nOptionalStop=yes\r\nDrillsInPlace=2\r\nBlockDelete=1\r\nShiftDirection=1."
      "5\r\n"
      "[Offsets]\r\nUnit=cm\r\nG54=1,2,3\r\n[Check]\r\nNoFeed=off\r\nSpindleOff=0\r\n");
  ControlTable table;
  ReadControlSettings(table);
  EXPECT_FALSE(table.optionalStop);
  EXPECT_TRUE(table.drillsInPlace);
  EXPECT_TRUE(table.blockDelete);
  EXPECT_EQ(table.shiftDirection, 0);
  EXPECT_EQ(table.work[kFirstWorkRow][0], 1);
  for (const char16_t* key :
       {u"[Simulator] OptionalStop=yes in", u"[Simulator] DrillsInPlace=2 in",
        u"[Simulator] ShiftDirection=1.5 in", u"[Offsets] Unit=cm in", u"[Check] NoFeed=off in"}) {
    EXPECT_TRUE(Has(Log(), key)) << support::Narrow(key);
  }
  EXPECT_FALSE(Has(Log(), u"BlockDelete"));
  EXPECT_FALSE(Has(Log(), u"SpindleOff"));
}

TEST_F(MachineView, SaysOnceWhatASettingIsRefusedFor) {
  ControlTable table;
  Settings("[Simulator]\r\nTravelY=0.5\r\n");
  ReadControlSettings(table);
  const std::u16string once = Log();
  EXPECT_TRUE(Has(once, u"[Simulator] TravelY=0.5 in"));
  ReadControlSettings(table);
  EXPECT_EQ(Log(), once);
  Settings("[Simulator]\r\nTravelY=0.6\r\n");
  ReadControlSettings(table);
  EXPECT_TRUE(Has(Log(), u"[Simulator] TravelY=0.6 in"));
  // Behind a right one the wrong one is new again.
  Settings("[Simulator]\r\nTravelY=20\r\n");
  ReadControlSettings(table);
  const std::u16string twice = Log();
  Settings("[Simulator]\r\nTravelY=0.6\r\n");
  ReadControlSettings(table);
  EXPECT_NE(Log(), twice);
}

TEST_F(MachineView, AFindingThatIsSwitchedOffIsNotTold) {
  const char16_t* text = u"G20 G90 G0 X0 Y0 Z0\r\nG1 X1.\r\nM30\r\n";  // no F, no spindle
  Settings("[Simulator]\r\nMachineMotion=1\r\n");
  OpenProgram(text);
  ASSERT_EQ(machineTrack.findings.count, 1);
  EXPECT_EQ(machineTrack.findings.found[0].kind, Finding::NoFeed);
  Settings("[Simulator]\r\nMachineMotion=1\r\n[Check]\r\nNoFeed=0\r\n");
  RebuildToolpath();
  EXPECT_EQ(machineTrack.findings.count, 0);
}

TEST_F(MachineView, TheReadOutTellsTimesAndTheWorstFinding) {
  Settings("[Simulator]\r\nMachineMotion=1\r\n");
  // Line 5 has no feed; 20 in at 60 in/min on line 6 take 20 s, the change of the tool 6 s.
  OpenProgram(
      u"G20 G90\r\nT4 M6\r\nS900 M3\r\nG43 H4 G0 X0 Y0 Z0\r\nG1 X1.\r\nG1 X21. F60.\r\nM30\r\n");
  const std::u16string words = MachineWords();
  EXPECT_TRUE(Has(words, u"Machine motion  0:00:")) << words.size();
  EXPECT_TRUE(Has(words, u"  T4 0:00:2"));
  EXPECT_TRUE(Has(words, u"1 finding, at line 5 (PREFLIGHT lists them)"));
  EXPECT_GT(machineTrack.totalSeconds, 26);
  EXPECT_LT(machineTrack.totalSeconds, 36);
  EXPECT_TRUE(Has(MachineTip(), u"From line 2: T4 0:00:2"));
  EXPECT_TRUE(Has(ToolpathWords(), words));
  GoToStart();
  // The first point is reached behind the change of the tool and the start of the spindle.
  EXPECT_TRUE(Has(MachineWords(), u"Machine motion  " + ClockText(machineSeconds[0]) + u" of " +
                                      ClockText(machineTrack.totalSeconds) + u"  T4"));
}

TEST_F(MachineView, ReportsWorstFirstWithTimesAndWhatWasPrinted) {
  Settings("[Simulator]\r\nMachineMotion=1\r\n");
  // No M30 is worth a look, at the end of the text; no feed is an alarm.
  OpenProgram(u"G20 G90 G0 X0 Y0 Z0\r\n#1=2.5\r\nDPRNT[DEPTH*#1[42]]\r\nG1 X1.\r\n");
  const std::u16string report = MachineCheckReport();
  EXPECT_EQ(report,
            u"MACHINE CHECK \u2014 the program as the control runs it: 1 error(s), 1 warning(s)\r\n"
            u"ERROR: Line 4: A feed move has no F.\r\n"
            u"WARNING: Line 5: The text ends without M30, M02 or M99.\r\n"
            u"Printed by DPRNT:\r\nDEPTH 2.50\r\n"
            u"Machine check complete: 1 error(s), 1 warning(s), cycle time " +
                ClockText(machineTrack.totalSeconds) + u".\r\n");
  PickLayer(kIdLayerMachine);
  EXPECT_EQ(MachineCheckReport(), u"");
}

TEST_F(MachineView, CountsErrorsThatItDoesNotList) {
  Settings("[Simulator]\r\nMachineMotion=1\r\n");
  std::u16string text = u"G20\r\n";
  for (int i = 0; i < 50; ++i) text += u"X\r\nM199\r\n";
  OpenProgram(text.c_str());
  const std::u16string report = MachineCheckReport();
  EXPECT_TRUE(Has(report, u"as the control runs it: 50 error(s), 51 warning(s)\r\n"));
  EXPECT_TRUE(Has(report, u"20 more findings are not listed.\r\n"));
}

// A rapid at Z .1 over the middle of stock whose surface is .25: the skim's block alone tells it.
TEST_F(MachineView, MeasuresAgainstTheStockOfASkimWhereNothingElseTellsIt) {
  Settings("[Simulator]\r\nMachineMotion=1\r\n");
  const std::u16string text =
      u"G20 G90 G54\r\nT4 M6\r\nS900 M3\r\nG43 H4 G0 X-3. Y0 Z.1\r\nX3.\r\nM30\r\n";
  const auto met = [&] {
    ExtractToolpath(text, false);
    return machineTrack.findings.ofKind[static_cast<int>(Finding::RapidBelowTop)];
  };
  OpenProgram(text);
  EXPECT_EQ(met(), 0);
  features.count = 1;
  FeatureRecord& skim = features.rows[0];
  skim = FeatureRecord{};
  skim.settings.kind = kKindSkim;
  skim.settings.b = 54;
  const double edges[] = {-2, -2, 2, 2};
  std::copy(std::begin(edges), std::end(edges), skim.settings.values);
  skim.settings.values[9] = 0.25;
  EXPECT_EQ(met(), 1);
  EXPECT_EQ(machineTrack.findings.found[0].line, 4);
  // It stands in another work offset.
  skim.settings.b = 55;
  EXPECT_EQ(met(), 0);
  skim.settings.b = 54;
  // A plate says more: its top is Z 0.
  features.count = 2;
  FeatureRecord& plate = features.rows[1];
  plate = FeatureRecord{};
  plate.settings.kind = kKindPlate;
  plate.settings.values[0] = plate.settings.values[1] = 4;
  plate.settings.values[13] = 0.5;
  EXPECT_EQ(met(), 0);
}

TEST_F(MachineView, LinesNotShownNameTheSwitch) {
  OpenProgram(u"G81 X1. Z-1. R0.1 F10.\r\nM30\r\n");
  EXPECT_TRUE(Has(WarningWords(),
                  u"1 line not shown, first 1  /  Machine motion in the layers "
                  u"menu runs them"));
  PickLayer(kIdLayerMachine);
  EXPECT_FALSE(Has(WarningWords(), u"not shown"));
  EXPECT_FALSE(Has(WarningWords(), u"layers menu"));
}

TEST_F(MachineView, PlaysByTimeOrByPoints) {
  Settings("[Simulator]\r\nMachineMotion=1\r\nPlayByTime=1\r\n");
  // 10 in at 60 in/min, behind a corner that costs 0.0375 s.
  OpenProgram(u"G20 G90\r\nG0 X0 Y0 Z1.\r\nG1 Z0 F60.\r\nX10.\r\n");
  const OwnedPath& shown = ShownPath();
  const std::int32_t last = shown.path.count - 1;
  ASSERT_NEAR(shown.path.points[last].x, 10, 1e-9);
  ASSERT_NEAR(shown.seconds[last] - shown.seconds[last - 1], 10.0375, 1e-9);
  PlayPause();
  shown.play.playHead = last;  // at the start of the last move
  shown.play.segmentFraction = 0;
  PlayTick();
  EXPECT_NEAR(shown.play.segmentFraction, 0.016 / 10.0375, 1e-12);
  PickLayer(kIdLayerPlayByTime);
  shown.play.segmentFraction = 0;
  PlayTick();
  EXPECT_NEAR(shown.play.segmentFraction, 16.0 / 240, 1e-12);
  PickLayer(kIdLayerPlayByTime);
  SetPlaySpeed(9);
  for (int i = 0; i < 10; ++i) PlayTick();  // 10.24 s at 64x
  EXPECT_EQ(shown.play.playHead, shown.path.count);
  EXPECT_FALSE(shown.play.playing);
}

TEST_F(MachineView, APreviewGivesTheMachinesPathBack) {
  OpenProgram(kHoles);
  PickLayer(kIdLayerMachine);
  GoToStart();
  PathPreview preview;
  preview.text = u"G1 X1.\r\n";
  ShowPreview(preview);
  EXPECT_EQ(ShownOwner(), PathOwner::Builder);
  headless::TakeMenus();
  headless::QueuePick(0);
  ShowLayersMenu();
  EXPECT_FALSE(headless::TakeMenus()[0].items[8].enabled);
  LeavePreview();
  EXPECT_EQ(ShownOwner(), PathOwner::Machine);
  EXPECT_EQ(ShownPath().play.playHead, 1);
  EXPECT_TRUE(ShownPath().play.headInUse);
}

TEST_F(MachineView, AnEditMakesThePathStale) {
  OpenProgram(kHoles);
  PickLayer(kIdLayerMachine);
  platform::SetEditorText(kIdEditor, u"G1 X1.\r\n");
  EXPECT_TRUE(Has(WarningWords(), u"text changed, press PATH"));
}

TEST_F(MachineView, StepsThroughOperationsInTheOrderOfTheRun) {
  // The subprogram stands behind the end of the main program; its call comes first.
  const std::u16string text =
      u"G20 G90 F10. G0 X0 Y0 Z0\r\nM97 P100\r\nG1 X5.\r\nM30\r\nN100 G1 Y9.\r\nM99\r\n";
  OpenProgram(text);
  PickLayer(kIdLayerMachine);
  features.count = 1;
  FeatureRecord& row = features.rows[0];
  row = FeatureRecord{};
  row.id = 1;
  row.start = static_cast<std::int32_t>(text.find(u"G1 X5"));
  row.end = static_cast<std::int32_t>(text.find(u"M30"));
  ExtractToolpath(text, false);
  GoToStart();
  NextOperation();
  const OwnedPath& shown = ShownPath();
  ASSERT_GT(shown.play.playHead, 0);
  EXPECT_EQ(shown.path.points[shown.play.playHead - 1].sourceLine, 2);
}

TEST_F(MachineView, RunsAProgramOfAnotherTabThatACallNames) {
  app.tabCount = 2;
  tabs[1] = ProgramTab{};
  tabs[1].text = u"%\r\n(A BORE) O2000 (BORE)\r\nG1 X7. F5.\r\nM99\r\n";
  Settings("[Simulator]\r\nMachineMotion=1\r\n");
  app.activeTab = 0;
  platform::SetEditorText(kIdEditor, u"G20 G90 G0 X0 Y0 Z0\r\nM98 P2000\r\nM30\r\n");
  RebuildToolpath();
  EXPECT_TRUE(CutsTo(7, 0, 0));
  EXPECT_EQ(machineTrack.findings.count, 0);
  // Its line is that of the call.
  EXPECT_EQ(machinePath.points[machinePath.count - 1].sourceLine, 1);
  tabs[1] = ProgramTab{};
  RebuildToolpath();
  ASSERT_EQ(machineTrack.findings.count, 1);
  EXPECT_EQ(machineTrack.findings.found[0].kind, Finding::ProgramMissing);
}

TEST_F(MachineView, RunsAProgramOfAFileBesideTheProgram) {
  Settings("[Simulator]\r\nMachineMotion=1\r\n");
  std::filesystem::create_directory(folder / "jobs");
  Put("jobs/O02000.MIN", "%\nO2000\nG1 X9. F5.\nM99\n");
  Put("jobs/3000", "G1 Y8. F5.\nM99\n");
  const std::u16string path = support::Wide((folder / "jobs/main.MIN").string());
  std::copy(path.begin(), path.end(), tabs[0].path);
  Put("jobs/o0077.nc", "G1 Z7. F5.\nM99\n");
  OpenProgram(u"G20 G90 G0 X0 Y0 Z0\r\nM98 P2000\r\nM98 P3000\r\nM98 P4000\r\nM98 P77\r\nM30\r\n");
  EXPECT_TRUE(CutsTo(9, 0, 0));
  EXPECT_TRUE(CutsTo(9, 8, 0));
  EXPECT_TRUE(CutsTo(9, 8, 7));
  ASSERT_EQ(machineTrack.findings.count, 1);
  EXPECT_EQ(machineTrack.findings.found[0].line, 3);
  // A file that comes later is found when the path is asked for again.
  Put("jobs/O4000.nc", "G1 X1. F5.\nM99\n");
  RebuildToolpath();
  EXPECT_EQ(machineTrack.findings.count, 1);
  ForgetControlSettings();
  RebuildToolpath();
  EXPECT_EQ(machineTrack.findings.count, 0);
}

// Points of the machine's path are moved, so that they tell whether they come from a new run.
class MachineRunAgain : public MachineView {
 protected:
  static constexpr double kMoved = 77;

  MachineRunAgain() {
    Settings("[Simulator]\r\nMachineMotion=1\r\n");
    OpenProgram(u"G20 G90 G0 X0 Y0 Z0 H1\r\nG43 H1 Z1\r\nF5.\r\nG41 D1 G1 X5.\r\nY5.\r\nM30\r\n");
  }
  static void Path() {
    ForgetControlSettings();
    RebuildToolpath();
  }
  // Whether PATH runs the program anew.
  static bool RunsAgain() {
    machinePath.points[0].x = kMoved;
    Path();
    return machinePath.points[0].x != kMoved;
  }
};

TEST_F(MachineRunAgain, DoesNotWhileNothingChanges) {
  const std::uint32_t generation = machinePath.generation;
  EXPECT_FALSE(RunsAgain());
  EXPECT_FALSE(RunsAgain());
  EXPECT_EQ(machinePath.generation, generation);
  EXPECT_EQ(OwnedBy(PathOwner::Machine).play.playHead, machinePath.count);
}

TEST_F(MachineRunAgain, DoesWhenTheTextIsAnotherOne) {
  platform::SetEditorText(kIdEditor, platform::EditorText(kIdEditor));
  EXPECT_FALSE(RunsAgain());
  const std::u16string text(platform::EditorText(kIdEditor));
  platform::SetEditorText(kIdEditor, u"G4\r\n" + text);
  EXPECT_TRUE(RunsAgain());
  EXPECT_FALSE(RunsAgain());
  ExtractToolpath(u"G1 X1 F5.", false);  // not of the editor
  EXPECT_TRUE(RunsAgain());
}

TEST_F(MachineRunAgain, DoesWhenASettingOfTheControlChanges) {
  for (const char* line : {"[Simulator]\r\nRapidRate=100\r\n", "[Simulator]\r\nWholeLengths=1\r\n",
                           "[Offsets]\r\nG54=1,2,3\r\n", "[Offsets]\r\nT1=3,0,.5,0\r\n"}) {
    Settings("[Simulator]\r\nMachineMotion=1\r\n" + std::string(line));
    EXPECT_TRUE(RunsAgain()) << line;
    EXPECT_FALSE(RunsAgain()) << line;
  }
}

TEST_F(MachineRunAgain, DoesWhenAToolOfTheLibraryChanges) {
  toolLibrary.count = 1;
  toolLibrary.tools[0].dOffset = 1;
  toolLibrary.tools[0].diameter = .25;
  EXPECT_TRUE(RunsAgain());
}

// The check measures the motion against the tools and the stock too.
TEST_F(MachineRunAgain, DoesWhenTheKindOfAToolChanges) {
  toolLibrary.count = 1;
  CopyBounded(toolLibrary.tools[0].type, kToolTypeUnits, u"Face mill");
  EXPECT_TRUE(RunsAgain());
  EXPECT_FALSE(RunsAgain());
  CopyBounded(toolLibrary.tools[0].type, kToolTypeUnits, u"Drill");
  EXPECT_TRUE(RunsAgain());
  toolLibrary.count = 0;
}

TEST_F(MachineRunAgain, DoesWhenTheUnitChanges) {
  SetUnits(true);
  EXPECT_TRUE(RunsAgain());
  SetUnits(false);
}

TEST_F(MachineRunAgain, DoesWhenLinesHaveLeftThePathOrComeBack) {
  features.count = 1;
  FeatureRecord& row = features.rows[0];
  row = FeatureRecord{};
  row.id = 1;
  const std::u16string text(platform::EditorText(kIdEditor));
  ExtractToolpath(text, false);
  Path();
  // As though a filter had taken a point.
  ++machinePath.generation;
  EXPECT_TRUE(RunsAgain());
}

TEST_F(MachineRunAgain, DoesAlwaysForAProgramThatCallsAnother) {
  app.tabCount = 2;
  tabs[1] = ProgramTab{};
  tabs[1].text = u"O2000\r\nG1 X7. F5.\r\nM99\r\n";
  OpenProgram(u"G20 G90 G0 X0 Y0 Z0\r\nM98 P2000\r\nM30\r\n");
  EXPECT_TRUE(RunsAgain());
  EXPECT_TRUE(RunsAgain());
  tabs[1] = ProgramTab{};
}

TEST_F(MachineRunAgain, TellsAFindingAgainThatTheSettingsDoNotTurnOffAnyMore) {
  OpenProgram(u"G20 G90 G0 X0 Y0 Z0\r\nG1 X1.\r\nM30\r\n");
  ASSERT_EQ(machineTrack.findings.ofKind[static_cast<int>(Finding::NoFeed)], 1);
  const std::string name = support::Narrow(NameOf(Finding::NoFeed));
  Settings("[Simulator]\r\nMachineMotion=1\r\n[Check]\r\n" + name + "=0\r\n");
  EXPECT_FALSE(RunsAgain());
  EXPECT_EQ(machineTrack.findings.ofKind[static_cast<int>(Finding::NoFeed)], 0);
  Settings("[Simulator]\r\nMachineMotion=1\r\n[Check]\r\n" + name + "=1\r\n");
  EXPECT_FALSE(RunsAgain());
  EXPECT_EQ(machineTrack.findings.ofKind[static_cast<int>(Finding::NoFeed)], 1);
}

TEST_F(MachineView, KnowsTheNumberThatAProgramBeginsWith) {
  EXPECT_EQ(NumberOfProgram(u"%\r\n(O7) ; O8\r\no0123 (X)"), 123);
  EXPECT_EQ(NumberOfProgram(u"G1 X1\r\nO5"), -1);
  EXPECT_EQ(NumberOfProgram(u"O"), -1);
  EXPECT_EQ(NumberOfProgram(u""), -1);
  EXPECT_EQ(NumberOfProgram(u"(O5"), -1);
}

TEST_F(MachineView, WritesTimesAsAClockDoes) {
  EXPECT_EQ(ClockText(0), u"0:00:00");
  EXPECT_EQ(ClockText(59.6), u"0:01:00");
  EXPECT_EQ(ClockText(3725), u"1:02:05");
  EXPECT_EQ(ClockText(-1), u"0:00:00");
  EXPECT_EQ(ClockText(1e300), u"1000000:00:00");
}

}  // namespace
}  // namespace morva
