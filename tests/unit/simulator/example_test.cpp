#include "simulator/example.h"

#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "documents/feature_blocks.h"
#include "documents/program_tabs.h"
#include "platform/editor.h"
#include "platform/timer.h"
#include "simulator/cut_surface.h"
#include "simulator/playback.h"
#include "simulator/shown_path.h"
#include "simulator/tool_model.h"
#include "simulator/toolpath.h"
#include "simulator/view_commands.h"
#include "simulator/view_switches.h"
#include "unit/simulator/view_fixture.h"

namespace morva {
namespace {

class ExampleTest : public ViewTest {
 protected:
  ExampleTest() {
    support::MakeButton(kIdPlay, u"PLAY");
    tabs[0] = ProgramTab{};
    ResetFeatures();
    app.activeTab = 0;
    app.tabCount = 1;
    platform::SetEditorText(kIdEditor, u"G1 X1 F10\r\nX2\r\nX3\r\n");
    RebuildToolpath();
  }

  static std::u16string Text(int operation) {
    CodeWriter out;
    out.most = 8192;
    WriteExample(operation, out);
    EXPECT_FALSE(out.full);
    return out.text;
  }
  // Head and tail around a body.
  static std::u16string Around(const std::u16string& body) {
    return u"(DEMONSTRATION ONLY)\r\nG20 G90 G17 G94\r\nG00 Z0.6\r\n" + body +
           u"G00 Z0.6\r\nG00 X0 Y0\r\nM30";
  }
  static std::u16string Holes(const std::u16string& hole) {
    std::u16string body;
    for (const char16_t* place : {u"G00 X-1.300 Y-0.650\r\n", u"G00 X1.300 Y-0.650\r\n",
                                  u"G00 X-1.300 Y0.650\r\n", u"G00 X1.300 Y0.650\r\n"}) {
      body += place + hole + u"G00 Z0.6\r\n";
    }
    return body;
  }
  static const OwnedPath& Shown() { return ShownPath(); }
  static bool TimerOn() { return platform::TimerRuns(platform::kMainWindow, kTimerPlay); }
};

TEST_F(ExampleTest, FacesInSevenStrokesToAndFro) {
  EXPECT_EQ(Text(0), Around(u"G00 X-2.300 Y-1.050\r\nG01 Z-0.100 F6\r\nG01 X2.300 Y-1.050\r\n"
                            u"G01 X2.300 Y-0.700\r\nG01 X-2.300 Y-0.700\r\n"
                            u"G01 X-2.300 Y-0.350\r\nG01 X2.300 Y-0.350\r\n"
                            u"G01 X2.300 Y0.000\r\nG01 X-2.300 Y0.000\r\n"
                            u"G01 X-2.300 Y0.350\r\nG01 X2.300 Y0.350\r\n"
                            u"G01 X2.300 Y0.700\r\nG01 X-2.300 Y0.700\r\n"
                            u"G01 X-2.300 Y1.050\r\nG01 X2.300 Y1.050\r\n"));
}

TEST_F(ExampleTest, GoesRoundAProfileAndThroughABore) {
  EXPECT_EQ(Text(1),
            Around(u"G00 X-1.8 Y-0.8\r\nG01 Z-0.15 F8\r\nG01 X1.8 F20\r\nG01 Y0.8\r\nG01 X-1.8\r\n"
                   u"G01 Y-0.8\r\nG00 Z0.6\r\nG00 X0.6 Y0\r\nG01 Z-0.25 F8\r\n"
                   u"G03 X-0.6 Y0 I-0.6 J0 F20\r\nG03 X0.6 Y0 I0.6 J0\r\n"));
}

TEST_F(ExampleTest, DrillsPecksAndTapsFourHoles) {
  EXPECT_EQ(Text(2), Around(Holes(u"G01 Z-0.450 F6\r\n")));
  EXPECT_EQ(Text(3), Around(Holes(u"G01 Z-0.120 F6\r\nG01 Z-0.240 F6\r\nG01 Z-0.360 F6\r\n"
                                  u"G01 Z-0.480 F6\r\n")));
  EXPECT_EQ(Text(4),
            Around(Holes(u"(TAP MOTION DEMO: CONTROL SYNCHRONIZES SPINDLE)\r\n"
                         u"M03 S400\r\nG01 Z-0.4 F20\r\nM04\r\nG01 Z0.15 F20\r\nM03\r\n")));
}

TEST_F(ExampleTest, AnUnknownOperationWritesNoMovesAndShowsNothing) {
  EXPECT_EQ(Text(-1), Around(u""));
  EXPECT_EQ(Text(kExamples), Around(u""));
  ShowExample(kExamples);
  ShowExample(-1);
  EXPECT_FALSE(ExampleIsShown());
  EXPECT_FALSE(TimerOn());
}

TEST_F(ExampleTest, PlaysFromItsOwnSideAtHalfSpeedOverItsOwnStock) {
  ShowExample(2);
  EXPECT_TRUE(ExampleIsShown());
  EXPECT_TRUE(Shown().play.playing);
  EXPECT_EQ(Shown().play.speedIndex, 2);
  EXPECT_EQ(Shown().play.playHead, 1);
  EXPECT_TRUE(TimerOn());
  const ViewState& from = Shown().view;
  EXPECT_EQ(from.yawDegrees, -45);
  EXPECT_EQ(from.elevationDegrees, 32);
  EXPECT_EQ(from.rollDegrees, 0);
  EXPECT_EQ(from.zoom, 0.85);
  EXPECT_EQ(from.panX, 0);
  EXPECT_EQ(from.panY, 0);
  EXPECT_FALSE(from.topView);
  const StockEnvelope& stock = Shown().stock;
  EXPECT_TRUE(stock.shown);
  EXPECT_EQ(stock.minX, -2);
  EXPECT_EQ(stock.maxX, 2);
  EXPECT_EQ(stock.minY, -1.2);
  EXPECT_EQ(stock.maxY, 1.2);
  EXPECT_EQ(stock.top, 0);
  EXPECT_EQ(stock.bottom, -0.5);
}

TEST_F(ExampleTest, InMillimetresItIsTheSamePart) {
  SetUnits(true);
  ShowExample(2);
  EXPECT_DOUBLE_EQ(Shown().stock.minX, -50.8);
  EXPECT_DOUBLE_EQ(Shown().stock.maxY, 30.48);
  EXPECT_DOUBLE_EQ(Shown().stock.bottom, -12.7);
  EXPECT_DOUBLE_EQ(Shown().path.points[2].x, -33.02);
  EXPECT_DOUBLE_EQ(ToolModelNow().cutter.diameter, 6.35);
}

TEST_F(ExampleTest, FollowsTheUnitThatTheUserWorksIn) {
  RegisterSimulatorCommands();
  hooks.showExample(2);
  PlayTick();
  const std::uint32_t before = Shown().path.generation;
  hooks.rebuildToolpath();
  EXPECT_EQ(Shown().path.generation, before);
  SetUnits(true);
  EXPECT_DOUBLE_EQ(Shown().stock.maxX, 50.8);
  EXPECT_DOUBLE_EQ(Shown().path.points[2].x, -33.02);
  EXPECT_TRUE(Shown().play.playing);
  hooks.leaveExample();
  EXPECT_FALSE(ExampleIsShown());
  hooks = Hooks{};
}

TEST_F(ExampleTest, BringsItsOwnCutter) {
  ShowExample(0);
  EXPECT_EQ(ToolModelNow().cutter.diameter, 0.5);
  EXPECT_EQ(ToolModelNow().cutter.shape, ToolShape::Flat);
  ShowExample(3);
  EXPECT_EQ(ToolModelNow().cutter.diameter, 0.25);
  EXPECT_EQ(ToolModelNow().cutter.shape, ToolShape::Drill);
  LeaveExample();
  EXPECT_FALSE(ToolModelNow().shown);
}

TEST_F(ExampleTest, LeavesItsCutterToNoOtherPathOfTheBuilder) {
  ShowExample(0);
  ExtractPathOf(PathOwner::Builder, u"G1 X1 F10\r\nX2\r\n", false);
  EXPECT_FALSE(ExampleIsShown());
  EXPECT_FALSE(ToolModelNow().shown);
}

TEST_F(ExampleTest, GivesTheBuilderItsOwnSideAndSpeedBack) {
  const OwnedPath& builder = OwnedBy(PathOwner::Builder);
  LookFrom(PathOwner::Builder, 10, 20, 3);
  builder.view.panX = 7;
  builder.view.topView = true;
  builder.play.speedIndex = 6;
  ShowExample(0);
  ShowExample(1);  // another operation
  builder.view.panY = 9;
  LeaveExample();
  EXPECT_EQ(builder.view.yawDegrees, 10);
  EXPECT_EQ(builder.view.elevationDegrees, 20);
  EXPECT_EQ(builder.view.zoom, 3);
  EXPECT_EQ(builder.view.panX, 7);
  EXPECT_EQ(builder.view.panY, 0);
  EXPECT_TRUE(builder.view.topView);
  EXPECT_EQ(builder.play.speedIndex, 6);
}

TEST_F(ExampleTest, CutsItsStock) {
  ShowExample(2);
  GoToEnd();
  const CutSurface* const surface = CutSurfaceNow();
  ASSERT_NE(surface, nullptr);
  // The hole at X -1.3, Y -0.65: row 11 runs through it, column 8 stands 1/30 beside it, and
  // six tenths of that higher.
  EXPECT_NEAR(surface->heights[11][8], -0.45 + 0.02, 1e-9);
  EXPECT_EQ(surface->heights[24][24], 0);
  EXPECT_TRUE(Shows(u"Looping G-code example · blue travel / teal cut"));
}

TEST_F(ExampleTest, IsDrawnWithTravelWithoutGridAndWithEveryFourthLineOfTheMesh) {
  ShowExample(2);
  for (int i = 0; i < 100; ++i) PlayTick();
  EXPECT_FALSE(switches.showRapids);
  EXPECT_EQ(Calls("PaintSegments", 0x4889D2).size(), 2u);  // travel, and the piece in progress
  EXPECT_TRUE(Calls("PaintSegments", 0x1A2C3C).empty());
  Shown().play.playHead = 1;
  Shown().play.segmentFraction = 0;
  const std::vector<headless::DrawCall> mesh = Calls("PaintSegments", 0x577B93);
  ASSERT_EQ(mesh.size(), 1u);
  EXPECT_EQ((mesh[0].numbers.size() - 3) / 4, 26u);
  for (const std::u16string& text : Texts()) EXPECT_EQ(text.find(u"XY grid"), text.npos);
}

TEST_F(ExampleTest, BeginsAgainAtItsEnd) {
  ShowExample(0);
  bool wentOn = false;
  for (int i = 0; i < 2000 && !wentOn; ++i) {
    const std::int32_t before = Shown().play.playHead;
    PlayTick();
    wentOn = Shown().play.playHead < before;
  }
  EXPECT_TRUE(wentOn);
  EXPECT_TRUE(Shown().play.playing);
  EXPECT_EQ(CutSurfaceNow()->stamped, 1);
}

TEST_F(ExampleTest, AnotherOperationBeginsAnew) {
  ShowExample(0);
  SetPlaySpeed(9);
  ZoomBy(2);
  PlayTick();
  ShowExample(1);
  EXPECT_EQ(Shown().play.playHead, 1);
  EXPECT_EQ(Shown().play.segmentFraction, 0);
  EXPECT_EQ(Shown().play.speedIndex, 2);
  EXPECT_EQ(Shown().view.zoom, 0.85);
  // Two half circles of 180 chords each.
  EXPECT_GT(Shown().path.count, 360);
}

TEST_F(ExampleTest, LeavingShowsTheProgramAsItWas) {
  SetPlaySpeed(6);
  SetViewRight();
  ZoomBy(1.12);
  view.panX = 17;
  const ViewState before = view;
  ShowExample(0);
  SetPlaySpeed(1);
  SetViewTop();
  PlayTick();
  platform::SetEditorText(kIdEditor, u"G1 X7 F10\r\n");
  LeaveExample();
  EXPECT_EQ(ShownOwner(), PathOwner::Program);
  EXPECT_FALSE(TimerOn());
  EXPECT_FALSE(playback.playing);
  EXPECT_EQ(playback.speedIndex, 6);
  EXPECT_EQ(view.yawDegrees, before.yawDegrees);
  EXPECT_EQ(view.elevationDegrees, before.elevationDegrees);
  EXPECT_EQ(view.zoom, before.zoom);
  EXPECT_EQ(view.panX, 17);
  EXPECT_EQ(view.topView, before.topView);
  ASSERT_EQ(path.count, 2);  // read anew
  EXPECT_EQ(path.points[1].x, 7);
  EXPECT_EQ(platform::TextOf(kIdPlay), u"PLAY");
}

TEST_F(ExampleTest, LeavingWithoutAnExampleChangesNothing) {
  const std::uint32_t before = pathGeneration;
  LeaveExample();
  EXPECT_EQ(pathGeneration, before);
}

TEST_F(ExampleTest, WhatIsIsolatedInTheProgramIsNoMatterOfItsOwn) {
  tabs[0].isolatedId = 4;
  ShowExample(2);
  EXPECT_GT(Shown().path.count, 12);
  tabs[0] = ProgramTab{};
}

}  // namespace
}  // namespace morva
