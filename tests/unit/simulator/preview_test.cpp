#include "simulator/preview.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "library/units.h"
#include "platform/timer.h"
#include "simulator/cut_surface.h"
#include "simulator/preview_context.h"
#include "simulator/tool_model.h"
#include "simulator/view_switches.h"
#include "unit/simulator/preview_fixture.h"

namespace morva {
namespace {

constexpr platform::Colour kFeedColour = 0x48D3B8;
constexpr platform::Colour kContextColour = 0x9A8BC9;

class Preview : public PreviewTest {};

std::size_t SegmentCount(const headless::DrawCall& call) { return (call.numbers.size() - 3) / 4; }

TEST_F(Preview, ShowsThePathOfATextInPlaceOfTheProgram) {
  OpenProgram(u"G1 X9\r\n");
  ShowPreview(Facing(u"G1 X1\r\nY1\r\n"));
  EXPECT_TRUE(PreviewIsShown());
  EXPECT_EQ(ShownOwner(), PathOwner::Builder);
  ASSERT_EQ(ShownPath().path.count, 3);
  EXPECT_EQ(ShownPath().path.points[2].y, 1);
  EXPECT_EQ(ShownPath().play.playHead, 3);
  EXPECT_FALSE(ShownPath().play.headInUse);
  EXPECT_EQ(path.points[1].x, 9);
}

TEST_F(Preview, ProgramWaitsBehindItToTheByte) {
  OpenProgram(u"G1 X1 Y1\r\nX3\r\nG0 Z1\r\nG1 Y5\r\n");
  view.zoom = 2.5;
  view.yawDegrees = 33;
  view.panX = 11;
  playback.headInUse = true;
  playback.playHead = 3;
  playback.segmentFraction = 0.25;
  SetPlaySpeed(6);
  measure = {1, 3};
  headless::Focus(kViewToolpath);
  const std::vector<headless::DrawCall> frame = Paint();
  const std::uint32_t generation = path.generation;
  const Playback play = playback;
  const ViewState seen = view;

  ShowPreview(Facing());
  SetPlaySpeed(9);
  PlayPause();
  for (int i = 0; i < 20; ++i) PlayTick();
  Press(100, 400);
  DragTo(160, 430);
  Release(160, 430);
  Wheel(3);
  TakeMeasurePick(1);
  ShowPreview(Facing(u"G1 X8\r\n"));
  MarkPreview({true, 1, 2, 3, u"here"});
  Paint();
  LeavePreview();

  EXPECT_EQ(ShownOwner(), PathOwner::Program);
  EXPECT_EQ(path.generation, generation);  // not even read anew
  EXPECT_EQ(playback.playHead, play.playHead);
  EXPECT_EQ(playback.headInUse, play.headInUse);
  EXPECT_EQ(playback.segmentFraction, play.segmentFraction);
  EXPECT_EQ(playback.speedIndex, 6);
  EXPECT_EQ(std::memcmp(&view, &seen, sizeof seen), 0);
  EXPECT_EQ(measure.a, 1);
  EXPECT_EQ(measure.b, 3);
  const std::vector<headless::DrawCall> after = Paint();
  ASSERT_EQ(after.size(), frame.size());
  for (std::size_t i = 0; i < frame.size(); ++i) {
    EXPECT_EQ(after[i].name, frame[i].name) << i;
    EXPECT_EQ(after[i].numbers, frame[i].numbers) << i;
    EXPECT_EQ(after[i].text, frame[i].text) << i;
  }
}

TEST_F(Preview, SameTextIsNotReadAgainAndPlaysOn) {
  ShowPreview(Facing());
  PlayPause();
  for (int i = 0; i < 20; ++i) PlayTick();
  const std::uint32_t generation = Builder().path.generation;
  const std::int32_t head = Builder().play.playHead;
  ASSERT_GT(head, 1);
  PathPreview next = Facing();
  next.coverage = true;
  next.stock.maxX = 6;
  ShowPreview(next);
  EXPECT_EQ(Builder().path.generation, generation);
  EXPECT_EQ(Builder().play.playHead, head);
  EXPECT_TRUE(Builder().play.playing);
  EXPECT_EQ(Builder().stock.maxX, 6);
  ShowPreview(Facing(u"G1 X8\r\n"));
  EXPECT_NE(Builder().path.generation, generation);
  EXPECT_FALSE(Builder().play.playing);
  EXPECT_FALSE(platform::TimerRuns(platform::kMainWindow, kTimerPlay));
  EXPECT_EQ(platform::TextOf(kIdPlay), u"PLAY");
}

TEST_F(Preview, AnotherUnitReadsTheSameTextAgain) {
  ShowPreview(Facing());
  EXPECT_EQ(Builder().path.points[4].x, 5);
  SetUnits(true);
  ShowPreview(Facing());
  EXPECT_DOUBLE_EQ(Builder().path.points[4].x, 127);
}

TEST_F(Preview, KeepsTheUsersViewWhileTheTextChanges) {
  ShowPreview(Facing());
  EXPECT_EQ(Builder().view.zoom, 1);
  ZoomBy(2);
  Builder().view.panX = 17;
  ShowPreview(Facing(u"G1 X8\r\n"));
  EXPECT_EQ(Builder().view.zoom, 2);
  EXPECT_EQ(Builder().view.panX, 17);
  LeavePreview();
  ShowPreview(Facing());
  EXPECT_EQ(Builder().view.zoom, 1);
  EXPECT_EQ(Builder().view.panX, 0);
}

TEST_F(Preview, NamesItsStockAndFitsIt) {
  ShowPreview(Facing());
  EXPECT_TRUE(Shows(u"SKIM AREA  4.0000 x 1.0000 x 0.5000 in"));
  PathPreview plain = Facing();
  plain.stockWords = u"";
  plain.stock.maxX = 40;
  ShowPreview(plain);
  EXPECT_TRUE(Shows(u"STOCK ENVELOPE  40.0000 x 1.0000 x 0.5000 in"));
  ExpectInView(40, 0, 0);
  ExpectInView(40, 1, -0.5);
  // The extents are those of the path.
  EXPECT_EQ(Bounds().maxX, 5);
  LeavePreview();
  EXPECT_FALSE(Builder().stock.shown);
}

TEST_F(Preview, ShowsWhatStandsFarAroundUntilTheUserMovesTheView) {
  OpenProgram(u"G0 X60 Y-20\r\nG1 X70\r\n");
  ShowPreview(Facing());
  EXPECT_LT(Builder().view.zoom, 1);
  ExpectInView(70, -20, 0);
  ExpectInView(-1, 0.6, 0.5);
  ShowPreview(Facing(u"G1 X400\r\n"));  // grows and is followed
  ExpectInView(400, 0, 0);
  EXPECT_EQ(Builder().view.zoom, 1);  // that shows the program's motion too
  ShowPreview(Facing());
  ExpectInView(70, -20, 0);
  ViewFit();  // the path alone
  ShowPreview(Facing(u"G1 X8\r\n"));
  EXPECT_EQ(Builder().view.zoom, 1);
  EXPECT_EQ(Builder().view.panX, 0);
}

TEST_F(Preview, DrawsTheDeepestLevelAloneWhereThereAreLevels) {
  PathPreview preview = Facing();
  ShowPreview(preview);
  EXPECT_EQ(SegmentCount(Calls("PaintSegments", kFeedColour)[0]), 3u);
  switches.skimCurrentDepthOnly = false;
  EXPECT_EQ(SegmentCount(Calls("PaintSegments", kFeedColour)[0]), 8u);  // with both plunges
  switches.skimCurrentDepthOnly = true;
  preview.levels = false;
  ShowPreview(preview);
  EXPECT_EQ(SegmentCount(Calls("PaintSegments", kFeedColour)[0]), 8u);
  // While the second level is not reached, the first is the deepest.
  preview.levels = true;
  ShowPreview(preview);
  GoToStart();
  Builder().play.playHead = 6;
  EXPECT_EQ(SegmentCount(Calls("PaintSegments", kFeedColour)[0]), 2u);
}

TEST_F(Preview, LevelsOfThePreviewLeaveTheProgramAlone) {
  OpenProgram(kTwoLevels);
  EXPECT_EQ(SegmentCount(Calls("PaintSegments", kFeedColour)[0]), 8u);
  ShowPreview(Facing());
  LeavePreview();
  EXPECT_EQ(SegmentCount(Calls("PaintSegments", kFeedColour)[0]), 8u);
}

TEST_F(Preview, ItsToolStandsInPlaceOfTheTexts) {
  AddTool(3, 0.75);
  AddTool(7, 2);
  PathPreview preview = Facing(u"T3 M06\r\nG1 Z-0.1\r\nX4\r\n");
  ShowPreview(preview);
  EXPECT_EQ(ToolModelNow().cutter.diameter, 0.75);
  // 0.375 to each side: the sample row a quarter up is cut by neither of them.
  ASSERT_NE(CutSurfaceNow(), nullptr);
  EXPECT_EQ(CutSurfaceNow()->heights[24][24], 0);
  preview.tool = 7;
  ShowPreview(preview);
  EXPECT_EQ(ToolModelNow().cutter.diameter, 2);
  EXPECT_EQ(CutSurfaceNow()->heights[24][24], -0.1);
  preview.tool = 8;
  ShowPreview(preview);
  EXPECT_FALSE(ToolModelNow().shown);
  EXPECT_EQ(CutSurfaceNow(), nullptr);
}

TEST_F(Preview, WithoutAToolThereIsNoModelAndNothingIsCut) {
  AddTool(3, 0.75);
  ShowPreview(Facing());
  EXPECT_FALSE(ToolModelNow().shown);
  EXPECT_EQ(CutSurfaceNow(), nullptr);
}

TEST_F(Preview, PointsAtAPlaceWithWords) {
  MarkPreview({true, 1, 1, 0, u"nobody looks"});
  EXPECT_FALSE(previewState.marked);
  ShowPreview(Facing());
  MarkPreview({true, 4, 0, 0, u"Stock X maximum = 4.0000 \u2014   Z 0.0000"});
  EXPECT_TRUE(Shows(u"Stock X maximum = 4.0000 \u2014   Z 0.0000"));
  std::size_t lines = 0;
  for (const headless::DrawCall& call : Paint()) {
    lines += call.name == "PaintLine" && call.colours[0] == 0xF08FC0 ? 1 : 0;
  }
  EXPECT_EQ(lines, 3u);
  const platform::PointF at = At(4, 0, 0);
  bool around = false;
  for (const headless::DrawCall& call : Calls("PaintEllipse", 0xF08FC0)) {
    around = around ||
             (std::abs(call.numbers[0] - at.x) < 1e-6 && std::abs(call.numbers[1] - at.y) < 1e-6);
  }
  EXPECT_TRUE(around);
  MarkPreview({});
  EXPECT_TRUE(Calls("PaintEllipse", 0xF08FC0).empty());
}

TEST_F(Preview, BreaksTheMarkersWordsBesideTheCube) {
  platform::SetPlace(kViewToolpath, {700, 100, 700 + 450, 100 + 600});
  ShowPreview(Facing());
  MarkPreview(
      {false, 0, 0, 0, u"Stepover (% of diameter) = 80 \u2014 Next row / stepover  Z 0.0000"});
  EXPECT_TRUE(Shows(u"Stepover (% of diameter) = 80"));
  EXPECT_TRUE(Shows(u"Next row / stepover  Z 0.0000"));
}

TEST_F(Preview, SaysThatTheFieldsAreAheadOfIt) {
  PathPreview preview = Facing();
  ShowPreview(preview);
  const auto told = [] {
    for (const std::u16string& text : Texts()) {
      if (text.find(u"last path shown") != text.npos) return true;
    }
    return false;
  };
  EXPECT_FALSE(told());
  preview.lags = true;
  ShowPreview(preview);
  EXPECT_TRUE(told());
  LeavePreview();
  EXPECT_FALSE(told());
}

TEST_F(Preview, ExampleAndPreviewMakeRoomForEachOther) {
  RegisterSimulatorCommands();
  OpenProgram(u"G1 X9\r\n");
  hooks.showExample(2);
  ASSERT_TRUE(ExampleIsShown());
  hooks.showPreview(Facing());
  EXPECT_FALSE(ExampleIsShown());
  EXPECT_TRUE(PreviewIsShown());
  EXPECT_FALSE(platform::TimerRuns(platform::kMainWindow, kTimerPlay));
  hooks.leaveExample();  // the wizard's page goes away behind it
  EXPECT_TRUE(PreviewIsShown());
  hooks.showExample(1);
  EXPECT_FALSE(PreviewIsShown());
  EXPECT_TRUE(ExampleIsShown());
  hooks.leaveExample();
  EXPECT_EQ(ShownOwner(), PathOwner::Program);
  hooks.leavePreview();
  EXPECT_EQ(ShownOwner(), PathOwner::Program);
  hooks = Hooks{};
}

TEST_F(Preview, ARebuildBehindItLeavesItAlone) {
  RegisterSimulatorCommands();
  OpenProgram(u"G1 X9\r\n");
  hooks.showPreview(Facing());
  const std::uint32_t generation = Builder().path.generation;
  platform::SetEditorText(kIdEditor, u"G1 X2\r\nY7\r\n");
  hooks.rebuildToolpath();
  EXPECT_EQ(Builder().path.generation, generation);
  EXPECT_TRUE(PreviewIsShown());
  EXPECT_EQ(Context(), (std::vector<std::string>{"0,0-2,0", "2,0-2,7"}));
  hooks = Hooks{};
}

// The menu of layers offers what means something where it opens.
class Layers : public PreviewTest {
 protected:
  static bool Enabled(int id) {
    ShowLayersMenu();
    const std::vector<headless::MenuRecord> menus = headless::TakeMenus();
    for (const headless::MenuItemRecord& item : menus.back().items) {
      if (item.id == id) return item.enabled;
    }
    ADD_FAILURE() << id;
    return false;
  }
};

TEST_F(Layers, OverlapNeedsACutterAndDepthNeedsLevels) {
  OpenProgram(kTwoLevels);
  EXPECT_FALSE(Enabled(kIdLayerOverlap));
  EXPECT_FALSE(Enabled(kIdLayerSkimDepth));
  EXPECT_TRUE(Enabled(kIdLayerRapids));
  PathPreview preview = Facing();
  ShowPreview(preview);
  EXPECT_TRUE(Enabled(kIdLayerOverlap));
  EXPECT_TRUE(Enabled(kIdLayerSkimDepth));
  preview.diameter = 0;
  preview.levels = false;
  ShowPreview(preview);
  EXPECT_FALSE(Enabled(kIdLayerOverlap));
  EXPECT_FALSE(Enabled(kIdLayerSkimDepth));
}

TEST_F(Layers, CutSurfaceNeedsAStock) {
  OpenProgram(u"G1 X9\r\n");
  EXPECT_FALSE(Enabled(kIdLayerCutSurface));
  ShowPreview(Facing());
  EXPECT_TRUE(Enabled(kIdLayerCutSurface));
}

TEST_F(Layers, AnExampleShowsItsTravelWhateverTheLayerSays) {
  RegisterSimulatorCommands();
  OpenProgram(u"G1 X9\r\n");
  hooks.showExample(2);
  EXPECT_FALSE(Enabled(kIdLayerRapids));
  EXPECT_FALSE(Enabled(kIdLayerDrawing));
  EXPECT_TRUE(Enabled(kIdLayerCutSurface));
  hooks.leaveExample();
  EXPECT_TRUE(Enabled(kIdLayerRapids));
  hooks = Hooks{};
}

class PreviewSurroundings : public PreviewTest {};

TEST_F(PreviewSurroundings, AreTheProgramsMotionAsItIsNow) {
  OpenProgram(u"G1 X1\r\nG0 X2\r\nG1 Y3\r\n");
  platform::SetEditorText(kIdEditor, u"G1 X1\r\nG0 X2\r\nG1 Y4\r\n");  // not read by the view yet
  ShowPreview(Facing());
  EXPECT_EQ(Context(), (std::vector<std::string>{"0,0-1,0", "2,0-2,4"}));
  EXPECT_EQ(path.points[3].y, 3);
  EXPECT_EQ(SegmentCount(Calls("PaintSegments", kContextColour)[0]), 2u);
  ExpectInView(2, 4, 0);
  switches.showDrawingPaths = false;
  EXPECT_TRUE(Calls("PaintSegments", kContextColour).empty());
  LeavePreview();
  EXPECT_EQ(Builder().context.count, 0);
}

TEST_F(PreviewSurroundings, HoldDrawingsAndStockOfTheProgramsBlocks) {
  OpenProgram(SketchBlock(1, u"\r\nG1 X4 Y2\r\n"));
  ShowPreview(Facing());
  EXPECT_EQ(Context(), (std::vector<std::string>{"0,0-4,2", "4,2.5-6,2.5", "6,2.5-6,3.5",
                                                 "6,3.5-4,3.5", "4,3.5-4,2.5"}));
  const StockEnvelope& stock = ContextOfPreview().stock;
  EXPECT_TRUE(stock.shown);
  EXPECT_NEAR(stock.maxX, 6, 1e-6);  // by the sine series
  EXPECT_EQ(stock.bottom, -0.75);
  // The twelve edges of that stock, and the feeds.
  const std::vector<headless::DrawCall> drawn = Calls("PaintSegments", kContextColour);
  ASSERT_EQ(drawn.size(), 2u);
  EXPECT_EQ(SegmentCount(drawn[0]), 12u);
  EXPECT_EQ(SegmentCount(drawn[1]), 5u);
}

TEST_F(PreviewSurroundings, AreInTheUnitThatTheUserWorksIn) {
  OpenProgram(SketchBlock(1, u"\r\nG20 G1 X4 Y2\r\n"));
  SetUnits(true);
  ShowPreview(Facing());
  EXPECT_EQ(Context()[0], "0,0-101.6,50.8");
  EXPECT_EQ(Context()[1], "101.6,63.5-152.4,63.5");
}

TEST_F(PreviewSurroundings, LeaveOutTheBlockUnderEditAndWhatIsHidden) {
  const std::u16string text = u"(MORVA TEXT 1)\r\nG1 X1\r\n(MORVA END 1)\r\n" +
                              SketchBlock(2, u"\r\nG1 X2\r\n") +
                              u"\r\n(MORVA TEXT 3)\r\nG1 X3\r\n(MORVA END 3)\r\n";
  OpenProgram(text);
  SetEditLink({kKindSketch, 2, 0, u""});
  ShowPreview(Facing());
  EXPECT_EQ(Context(), (std::vector<std::string>{"0,0-1,0"}));  // none leads over the gap
  EXPECT_EQ(Builder().context.points[2].x, 3);
  LeavePreview();
  editLink = EditLink{};
  tabs[0].hiddenIds[0] = 3;
  ShowPreview(Facing());
  EXPECT_EQ(Context().size(), 6u);
  LeavePreview();
  tabs[0].hiddenIds[0] = 0;
  tabs[0].isolatedId = 3;
  ShowPreview(Facing());
  EXPECT_TRUE(Context().empty());
  EXPECT_EQ(Builder().context.count, 1);
  EXPECT_EQ(Builder().context.points[0].x, 3);
}

TEST_F(PreviewSurroundings, AFullTableKeepsWhatFits) {
  std::u16string text;
  for (int i = 0; i < 40000; ++i) text += i % 2 == 0 ? u"G1 X1\r\n" : u"X2\r\n";
  OpenProgram(text);
  ShowPreview(Facing());
  EXPECT_EQ(Builder().context.count, kMaxMotionPoints);
  EXPECT_EQ(Builder().path.count, 14);
  Paint();
}

TEST_F(PreviewSurroundings, NoneWithoutAProgram) {
  app.activeTab = -1;
  app.tabCount = 0;
  platform::SetEditorText(kIdEditor, u"");
  ShowPreview(Facing());
  EXPECT_TRUE(Context().empty());
  EXPECT_FALSE(ContextOfPreview().drawn);
}

}  // namespace
}  // namespace morva
