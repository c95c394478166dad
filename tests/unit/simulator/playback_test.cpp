#include "simulator/playback.h"

#include <cstdint>
#include <string>

#include "app/command_ids.h"
#include "app/router.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/headless/headless.h"
#include "platform/listing.h"
#include "platform/timer.h"
#include "platform/window.h"
#include "simulator/feature_lines.h"
#include "simulator/line_highlight.h"
#include "simulator/motion_path.h"
#include "simulator/shown_path.h"
#include "simulator/toolpath.h"
#include "simulator/view_switches.h"
#include "unit/simulator/simulator_fixture.h"

namespace morva {
namespace {

class PlaybackTest : public SimulatorTest {
 protected:
  PlaybackTest() { support::MakeButton(kIdPlay, u"PLAY"); }

  // A path of `count` points, the origin with it, one line each: point i is line i - 1.
  static void MakePath(int count) {
    const std::u16string text = Moves(count - 1);
    platform::SetEditorText(kIdEditor, text);
    ResetFeatures();
    ExtractToolpath(text, false);
    ASSERT_EQ(path.count, count);
  }
  static bool TimerOn() { return platform::TimerRuns(platform::kMainWindow, kTimerPlay); }
  static void PutHead(std::int32_t head) {
    playback.playHead = head;
    playback.headInUse = true;
  }
  static int MarkedLine() {
    platform::Colour band = 0;
    return headless::EditorMark(kIdEditor, band);
  }
  static std::u16string Status() { return platform::TextOf(kIdStatusLine); }
};

TEST_F(PlaybackTest, StartsAtOneTimesWithRapidsHidden) {
  EXPECT_EQ(playback.speedIndex, 3);
  EXPECT_FALSE(playback.playing);
  EXPECT_FALSE(switches.showRapids);
  EXPECT_FALSE(switches.showOverlap);
  EXPECT_TRUE(switches.showDrawingPaths);
  EXPECT_TRUE(switches.showCutSurface);
  EXPECT_TRUE(switches.skimCurrentDepthOnly);
  EXPECT_FALSE(switches.showExtents);
  EXPECT_FALSE(switches.measureMode);
  EXPECT_FALSE(switches.panMode);
  EXPECT_EQ(measure.a, -1);
  EXPECT_EQ(measure.b, -1);
}

TEST_F(PlaybackTest, SpeedsDoubleFromAnEighthTo64) {
  double factor = 0.125;
  for (int i = 0; i < kSpeedCount; ++i, factor *= 2) EXPECT_EQ(SpeedFactor(i), factor);
  EXPECT_EQ(SpeedFactor(-5), 0.125);
  EXPECT_EQ(SpeedFactor(10), 64);
  EXPECT_EQ(std::u16string(SpeedWord(0)), u"0.125x");
  EXPECT_EQ(std::u16string(SpeedWord(3)), u"1x");
  EXPECT_EQ(std::u16string(SpeedWord(9)), u"64x");
}

TEST_F(PlaybackTest, PlayAtTheEndRestartsFromTheFirstPoint) {
  MakePath(20);
  PlayPause();
  EXPECT_TRUE(playback.playing);
  EXPECT_TRUE(playback.headInUse);
  EXPECT_EQ(playback.playHead, 1);
  EXPECT_TRUE(TimerOn());
  EXPECT_EQ(platform::TextOf(kIdPlay), u"Pause");
}

TEST_F(PlaybackTest, PauseKeepsTheHeadAndDropsTheFraction) {
  MakePath(20);
  PutHead(7);
  PlayPause();
  PlayTick();
  EXPECT_GT(playback.segmentFraction, 0);
  PlayPause();
  EXPECT_FALSE(playback.playing);
  EXPECT_EQ(playback.playHead, 7);
  EXPECT_EQ(playback.segmentFraction, 0);
  EXPECT_FALSE(TimerOn());
  EXPECT_EQ(platform::TextOf(kIdPlay), u"Play");
}

TEST_F(PlaybackTest, OneTimesTakesFifteenTicksAPoint) {
  MakePath(20);
  PutHead(1);
  PlayPause();
  for (int i = 0; i < 14; ++i) PlayTick();
  EXPECT_EQ(playback.playHead, 1);
  EXPECT_NEAR(playback.segmentFraction, 14.0 / 15.0, 1e-12);
  PlayTick();
  PlayTick();
  EXPECT_EQ(playback.playHead, 2);
}

TEST_F(PlaybackTest, At64TheFractionCarriesFourPointsATick) {
  MakePath(40);
  PutHead(1);
  playback.speedIndex = 9;
  PlayPause();
  PlayTick();
  EXPECT_EQ(playback.playHead, 5);
  EXPECT_NEAR(playback.segmentFraction, 64.0 * 16 / 240 - 4, 1e-12);
  // Four ticks are 17.07 points.
  for (int i = 0; i < 3; ++i) PlayTick();
  EXPECT_EQ(playback.playHead, 18);
}

TEST_F(PlaybackTest, ATickThatLandsExactlyOnAPointReachesIt) {
  MakePath(20);
  PutHead(1);
  playback.speedIndex = 6;  // 8 * 16 / 240 of a segment a tick
  PlayPause();
  playback.segmentFraction = 1.0 - SpeedFactor(6) * 16 / 240;
  ASSERT_EQ(playback.segmentFraction + SpeedFactor(6) * 16 / 240, 1.0);
  PlayTick();
  EXPECT_EQ(playback.playHead, 2);
  EXPECT_EQ(playback.segmentFraction, 0.0);
  EXPECT_EQ(MarkedLine(), 0);
}

TEST_F(PlaybackTest, TheTimerDrivesTheHeadToTheEndAndStops) {
  MakePath(4);
  RegisterTimer(kTimerPlay, PlayTick);
  static const platform::Events kTimers = [] {
    platform::Events events;
    events.timer = [](int /*window*/, int timer) { RouteTimer(timer); };
    return events;
  }();
  platform::ListenTo(&kTimers);
  PlayPause();
  headless::Advance(3 * 240 - 48);
  EXPECT_TRUE(playback.playing);
  EXPECT_EQ(playback.playHead, 3);
  headless::Advance(100);
  EXPECT_FALSE(playback.playing);
  EXPECT_EQ(playback.playHead, 4);
  EXPECT_EQ(playback.segmentFraction, 0);
  EXPECT_FALSE(TimerOn());
  // The end of the path leaves the key's word alone.
  EXPECT_EQ(platform::TextOf(kIdPlay), u"Pause");
}

TEST_F(PlaybackTest, JumpsAndRapidsPassAtTheSamePace) {
  platform::SetEditorText(kIdEditor, u"G4\nG0 X1\nX2\nG1 X3");
  ExtractToolpath(u"G4\nG0 X1\nX2\nG1 X3", false);
  ASSERT_TRUE(path.points[1].jump);
  PutHead(1);
  playback.speedIndex = 7;  // 16 * 16 / 240 = 1.067 points a tick
  PlayPause();
  PlayTick();
  EXPECT_EQ(playback.playHead, 2);
  PlayTick();
  EXPECT_EQ(playback.playHead, 3);
}

TEST_F(PlaybackTest, OnAnEmptyProgramPlayEndsAtOnce) {
  RebuildToolpath();
  ASSERT_EQ(path.count, 1);
  PlayPause();
  EXPECT_TRUE(playback.playing);
  EXPECT_EQ(playback.playHead, 1);
  PlayTick();
  EXPECT_FALSE(playback.playing);
  EXPECT_EQ(playback.playHead, 1);
}

TEST_F(PlaybackTest, APathOfNoPointsIsGuarded) {
  platform::Destroy(kIdEditor);
  ResetSimulator();
  void (*const commands[])() = {PlayPause, PlayTick,          Rewind,       FastForward,
                                PlayTick,  StopPlayback,      GoToStart,    GoToEnd,
                                PlayTick,  PreviousOperation, NextOperation};
  for (auto command : commands) {
    command();
    EXPECT_EQ(playback.playHead, 0);
    EXPECT_EQ(path.count, 0);
  }
  EXPECT_FALSE(playback.playing);
}

TEST_F(PlaybackTest, AShortPathIsRebuiltFirst) {
  platform::SetEditorText(kIdEditor, u"X1\nX2\nX3");
  OneTab();
  PlayPause();
  EXPECT_EQ(path.count, 4);
  EXPECT_TRUE(playback.playing);
  EXPECT_EQ(playback.playHead, 1);
}

TEST_F(PlaybackTest, RewindGoesBackTenPointsAndNeverBelowOne) {
  MakePath(40);
  for (const auto& [from, to] : {std::pair{5, 1}, {11, 1}, {12, 2}, {40, 30}, {0, 1}}) {
    PutHead(from);
    playback.playing = true;
    playback.headInUse = false;
    Rewind();
    EXPECT_EQ(playback.playHead, to);
    EXPECT_FALSE(playback.playing);
    EXPECT_TRUE(playback.headInUse);
  }
}

TEST_F(PlaybackTest, FastForwardPlaysOneStepFasterButAtLeastTwoTimes) {
  MakePath(20);
  playback.speedIndex = 0;
  FastForward();
  EXPECT_TRUE(playback.playing);
  EXPECT_EQ(playback.playHead, 1);
  EXPECT_EQ(playback.speedIndex, 4);
  EXPECT_TRUE(TimerOn());
  EXPECT_EQ(Status(), u"Simulation speed: 2x. Drag left to slow down, right to speed up.");
  FastForward();
  EXPECT_EQ(playback.speedIndex, 5);
  for (int i = 0; i < 9; ++i) FastForward();
  EXPECT_EQ(playback.speedIndex, 9);
}

TEST_F(PlaybackTest, SetPlaySpeedIsClampedAndStartsNothing) {
  MakePath(20);
  SetPlaySpeed(-3);
  EXPECT_EQ(playback.speedIndex, 0);
  EXPECT_EQ(Status(), u"Simulation speed: 0.125x. Drag left to slow down, right to speed up.");
  SetPlaySpeed(99);
  EXPECT_EQ(playback.speedIndex, 9);
  EXPECT_FALSE(TimerOn());
}

TEST_F(PlaybackTest, StopReturnsToTheFirstPoint) {
  MakePath(20);
  PutHead(9);
  PlayPause();
  StopPlayback();
  EXPECT_FALSE(playback.playing);
  EXPECT_FALSE(TimerOn());
  EXPECT_EQ(playback.playHead, 1);
  EXPECT_TRUE(playback.headInUse);
}

TEST_F(PlaybackTest, StartAndEndMarkTheirLine) {
  MakePath(20);
  PlayPause();
  GoToEnd();
  EXPECT_FALSE(playback.playing);
  EXPECT_EQ(playback.playHead, 20);
  EXPECT_EQ(MarkedLine(), 18);
  playback.headInUse = false;
  GoToStart();
  EXPECT_EQ(playback.playHead, 1);
  EXPECT_TRUE(playback.headInUse);
  EXPECT_EQ(MarkedLine(), 0);
}

// Point n + 1 was drawn by line n, and the first stands in line 0 too.
TEST_F(PlaybackTest, RewindMarksTheLineThatItGoesBackTo) {
  MakePath(20);
  GoToEnd();
  ASSERT_EQ(MarkedLine(), 18);
  Rewind();
  ASSERT_EQ(playback.playHead, 10);
  EXPECT_EQ(MarkedLine(), 8);
  Rewind();
  ASSERT_EQ(playback.playHead, 1);
  EXPECT_EQ(MarkedLine(), 0);
}

TEST_F(PlaybackTest, TicksFollowTheSourceLine) {
  MakePath(20);
  PutHead(3);
  playback.speedIndex = 7;
  PlayPause();
  PlayTick();
  ASSERT_EQ(playback.playHead, 4);
  // Point 3 was drawn by line 2.
  EXPECT_EQ(MarkedLine(), 2);
}

// Three blocks of two lines each, one free line before, between and behind.
class Operations : public PlaybackTest {
 protected:
  Operations() {
    std::u16string text;
    for (int line = 0; line < 10; ++line) {
      const std::size_t start = text.size();
      text += line == 0 ? u"G1 X1\r\n" : line % 2 ? u"X2\r\n" : u"X1\r\n";
      if (line % 3 == 1) {
        AddFeature(line / 3 + 11, start, text.size() + 4);
        platform::AddRow(kIdFeatureList, u"block", line / 3 + 11);
      }
    }
    platform::SetEditorText(kIdEditor, text);
    ExtractToolpath(text, false);
  }
  // Point i + 1 belongs to line i; blocks hold lines 1 2, 4 5 and 7 8.
  static std::int32_t HeadOfLine(int line) { return line + 2; }
};

TEST_F(Operations, IndexStandsAsTheTestsTakeIt) {
  ASSERT_EQ(path.count, 11);
  ASSERT_EQ(featureLines.count, 3);
  EXPECT_EQ(featureLines.rows[1].firstLine, 4);
  EXPECT_EQ(featureLines.rows[1].lastLine, 5);
  EXPECT_EQ(featureLines.rows[2].id, 13);
}

TEST_F(Operations, NextGoesToTheFirstPointOfTheNextBlock) {
  PutHead(HeadOfLine(2));
  NextOperation();
  EXPECT_EQ(playback.playHead, HeadOfLine(4));
  NextOperation();
  EXPECT_EQ(playback.playHead, HeadOfLine(7));
  NextOperation();
  EXPECT_EQ(playback.playHead, path.count);
}

TEST_F(Operations, PreviousGoesToTheFirstPointOfTheBlockBefore) {
  PutHead(HeadOfLine(8));
  PreviousOperation();
  EXPECT_EQ(playback.playHead, HeadOfLine(4));
  PreviousOperation();
  EXPECT_EQ(playback.playHead, HeadOfLine(1));
  PreviousOperation();
  EXPECT_EQ(playback.playHead, 1);
}

TEST_F(Operations, FromOutsideNextIsTheFirstBlockAndPreviousTheStart) {
  PutHead(HeadOfLine(3));
  NextOperation();
  EXPECT_EQ(playback.playHead, HeadOfLine(1));
  PutHead(HeadOfLine(3));
  PreviousOperation();
  EXPECT_EQ(playback.playHead, 1);
}

TEST_F(Operations, SteppingStopsPlaying) {
  PutHead(HeadOfLine(1));
  PlayPause();
  NextOperation();
  EXPECT_FALSE(playback.playing);
  EXPECT_FALSE(TimerOn());
  EXPECT_EQ(MarkedLine(), 4);
}

TEST_F(Operations, WithoutFeaturesNextIsTheEndAndPreviousTheStart) {
  MakePath(20);
  PutHead(5);
  NextOperation();
  EXPECT_EQ(playback.playHead, 20);
  PreviousOperation();
  EXPECT_EQ(playback.playHead, 1);
}

TEST_F(Operations, ABlockWithoutPointsBehindItGoesToTheEndOrTheStart) {
  // All points lie before the last block.
  featureLines.rows[2].firstLine = 50;
  featureLines.rows[2].lastLine = 51;
  PutHead(HeadOfLine(5));
  NextOperation();
  EXPECT_EQ(playback.playHead, path.count);
  featureLines.rows[0].firstLine = 60;
  featureLines.rows[0].lastLine = 61;
  PutHead(HeadOfLine(5));
  PreviousOperation();
  EXPECT_EQ(playback.playHead, 1);
}

TEST_F(Operations, HighlightingSelectsTheFeaturesRow) {
  HighlightSourceLine(5);
  EXPECT_EQ(HighlightedFeature(), 12);
  EXPECT_EQ(platform::SelectedRow(kIdFeatureList), 1);
  // The same feature again leaves what the user selected meanwhile.
  platform::SelectRow(kIdFeatureList, 0);
  HighlightSourceLine(4);
  EXPECT_EQ(platform::SelectedRow(kIdFeatureList), 0);
  HighlightSourceLine(-1);
  EXPECT_EQ(HighlightedFeature(), 12);
  EXPECT_EQ(MarkedLine(), 4);
  HighlightSourceLine(3);
  EXPECT_EQ(HighlightedFeature(), 0);
  EXPECT_EQ(platform::SelectedRow(kIdFeatureList), 0);
}

TEST_F(Operations, ABuilderUnderEditKeepsTheSelection) {
  editLink.kind = 4;
  platform::SelectRow(kIdFeatureList, 2);
  HighlightSourceLine(1);
  EXPECT_EQ(HighlightedFeature(), 11);
  EXPECT_EQ(platform::SelectedRow(kIdFeatureList), 2);
}

TEST_F(Operations, TheWordsViewFollows) {
  platform::EditorSpec spec;
  spec.id = kIdWordsEditor;
  platform::MakeEditor(spec);
  platform::SetEditorText(kIdWordsEditor, u"ab\r\ncdef\r\n");
  HighlightSourceLine(1);
  EXPECT_EQ(platform::EditorSelection(kIdWordsEditor).to, 0);
  app.commandWordsActive = true;
  HighlightSourceLine(1);
  // Line 1 starts behind two characters and one line end.
  EXPECT_EQ(platform::EditorSelection(kIdWordsEditor).from, 3);
  EXPECT_EQ(platform::EditorSelection(kIdWordsEditor).to, 7);
}

TEST_F(PlaybackTest, AFarLineIsScrolledIntoView) {
  platform::SetPlace(kIdEditor, {0, 0, 600, 400});
  MakePath(2000);
  HighlightSourceLine(1500);
  const int top = platform::FirstVisibleLine(kIdEditor);
  EXPECT_LE(top, 1500);
  EXPECT_GT(top, 0);
  EXPECT_GT(top + platform::VisibleLineCount(kIdEditor), 1500);
  HighlightSourceLine(1501);
  EXPECT_EQ(platform::FirstVisibleLine(kIdEditor), top);
}

TEST_F(PlaybackTest, ALineBehindAShortenedTextMarksNothing) {
  MakePath(20);
  GoToEnd();
  ASSERT_EQ(MarkedLine(), 18);
  platform::SetEditorText(kIdEditor, u"G1 X1\r\nX2");
  GoToStart();
  EXPECT_EQ(MarkedLine(), 0);
  GoToEnd();
  EXPECT_EQ(MarkedLine(), -1);
  EXPECT_EQ(platform::FirstVisibleLine(kIdEditor), 0);
  // The last line there is can still be marked.
  HighlightSourceLine(1);
  EXPECT_EQ(MarkedLine(), 1);
}

TEST_F(PlaybackTest, PlayingGoesOnWhileTheTextIsEdited) {
  MakePath(20);
  PutHead(1);
  playback.speedIndex = 9;
  PlayPause();
  for (int i = 0; i < 12 && playback.playing; ++i) {
    PlayTick();
    platform::SetEditorText(kIdEditor, i % 2 == 0 ? u"" : u"(NEW)\r\nG1 X1\r\n");
  }
  EXPECT_FALSE(playback.playing);
  EXPECT_EQ(playback.playHead, 20);
}

TEST_F(PlaybackTest, ARebuildForgetsWhatWasPlayed) {
  MakePath(20);
  OneTab();
  PlayPause();
  GoToEnd();
  ASSERT_EQ(MarkedLine(), 18);
  RebuildToolpath();
  EXPECT_EQ(MarkedLine(), -1);
  EXPECT_EQ(HighlightedFeature(), 0);
  EXPECT_FALSE(TimerOn());
  EXPECT_FALSE(playback.headInUse);
}

TEST_F(PlaybackTest, PicksFillAThenBThenStartAnew) {
  MakePath(20);
  ToggleMeasure();
  TakeMeasurePick(4);
  EXPECT_EQ(measure.a, 4);
  EXPECT_EQ(measure.b, -1);
  TakeMeasurePick(9);
  EXPECT_EQ(measure.b, 9);
  TakeMeasurePick(2);
  EXPECT_EQ(measure.a, 2);
  EXPECT_EQ(measure.b, -1);
  TakeMeasurePick(-1);
  TakeMeasurePick(20);
  EXPECT_EQ(measure.a, 2);
  EXPECT_EQ(measure.b, -1);
  ToggleMeasure();
  EXPECT_EQ(measure.a, -1);
  EXPECT_FALSE(switches.measureMode);
}

TEST_F(PlaybackTest, KeysReachTheirOperations) {
  RegisterSimulatorCommands();
  MakePath(40);
  EXPECT_TRUE(RouteCommand(kIdPlayToggle, 0));
  EXPECT_TRUE(playback.playing);
  EXPECT_TRUE(RouteCommand(kIdPlay, 0));
  EXPECT_FALSE(playback.playing);
  RouteCommand(kIdPlayEnd, 0);
  EXPECT_EQ(playback.playHead, 40);
  RouteCommand(kIdRewind, 0);
  EXPECT_EQ(playback.playHead, 30);
  RouteCommand(kIdPlayRewind, 0);
  EXPECT_EQ(playback.playHead, 20);
  RouteCommand(kIdPlayStart, 0);
  EXPECT_EQ(playback.playHead, 1);
  RouteCommand(kIdPlayNext, 0);
  EXPECT_EQ(playback.playHead, 40);
  RouteCommand(kIdPlayPrevious, 0);
  EXPECT_EQ(playback.playHead, 1);
  RouteCommand(kIdFastForward, 0);
  EXPECT_EQ(playback.speedIndex, 4);
  RouteCommand(kIdPlayForward, 0);
  EXPECT_EQ(playback.speedIndex, 5);
  PutHead(7);
  RouteCommand(kIdPlayStop, 0);
  EXPECT_EQ(playback.playHead, 1);
  RouteCommand(kIdDimensions, 0);
  EXPECT_TRUE(switches.showExtents);
  RouteCommand(kIdViewExtents, 0);
  EXPECT_FALSE(switches.showExtents);
  RouteCommand(kIdMeasure, 0);
  EXPECT_TRUE(switches.measureMode);
  RouteCommand(kIdViewMeasure, 0);
  EXPECT_FALSE(switches.measureMode);
  RouteCommand(kIdPan, 0);
  EXPECT_TRUE(switches.panMode);
  const std::uint32_t before = pathGeneration;
  RouteCommand(kIdPath, 0);
  RouteCommand(kIdViewRefresh, 0);
  EXPECT_EQ(pathGeneration, before + 2);
  EXPECT_FALSE(RouteCommand(kIdPath, 1));
}

}  // namespace
}  // namespace morva
