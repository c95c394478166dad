// A path that lags behind the text, and one that is read again after a tag.
#include <cstdint>
#include <string>

#include "app/command_ids.h"
#include "platform/editor.h"
#include "platform/headless/headless.h"
#include "platform/timer.h"
#include "platform/window.h"
#include "simulator/motion_path.h"
#include "simulator/playback.h"
#include "simulator/shown_path.h"
#include "simulator/toolpath.h"
#include "unit/simulator/simulator_fixture.h"

namespace morva {
namespace {

class PathStale : public SimulatorTest {
 protected:
  PathStale() {
    support::MakeButton(kIdPlay, u"PLAY");
    platform::SetEditorText(kIdEditor, Moves(9));
    RebuildToolpath();
  }
  static void Put(std::u16string_view text) { platform::ReplaceRange(kIdEditor, {0, 0}, text); }
  // Two lines in front, as a tag puts them.
  static void Tag() {
    const std::uint64_t before = platform::EditorRevision(kIdEditor);
    Put(u"(MORVA TEXT 1)\r\n(MORVA NAME A)\r\n");
    FollowTag(before);
  }
};

TEST_F(PathStale, FollowsTheTextThatItWasReadFrom) {
  EXPECT_FALSE(PathIsStale());
  Put(u" ");
  EXPECT_TRUE(PathIsStale());
  RebuildToolpath();
  EXPECT_FALSE(PathIsStale());
  // A path that is not the editor's never lags behind it.
  ExtractToolpath(u"G1 X1", false);
  Put(u" ");
  EXPECT_FALSE(PathIsStale());
}

TEST_F(PathStale, ATagMovesTheLinesAndNothingElse) {
  PlayPause();
  for (int i = 0; i < 40; ++i) PlayTick();
  TakeMeasurePick(1);
  TakeMeasurePick(4);
  view.zoom = 3;
  const Playback before = playback;
  ASSERT_EQ(before.playHead, 3);
  ASSERT_EQ(path.points[2].sourceLine, 1);
  Tag();
  EXPECT_FALSE(PathIsStale());
  EXPECT_EQ(path.points[2].sourceLine, 3);
  EXPECT_TRUE(playback.playing);
  EXPECT_TRUE(playback.headInUse);
  EXPECT_EQ(playback.playHead, 3);
  EXPECT_EQ(playback.segmentFraction, before.segmentFraction);
  EXPECT_TRUE(platform::TimerRuns(platform::kMainWindow, kTimerPlay));
  EXPECT_EQ(measure.a, 1);
  EXPECT_EQ(measure.b, 4);
  EXPECT_EQ(view.zoom, 3);
  platform::Colour band = 0;
  EXPECT_EQ(headless::EditorMark(kIdEditor, band), 3);
  view = ViewState{};
}

TEST_F(PathStale, ATagOfAnotherTextForgetsThePicksAndKeepsTheHeadWithin) {
  GoToEnd();
  ASSERT_EQ(playback.playHead, 10);
  TakeMeasurePick(8);
  platform::SetEditorText(kIdEditor, Moves(3));
  Tag();
  EXPECT_EQ(path.count, 4);
  EXPECT_EQ(playback.playHead, 4);
  EXPECT_EQ(measure.a, -1);
}

TEST_F(PathStale, APathThatIsDrawnWholeStaysWholeAfterATag) {
  platform::SetEditorText(kIdEditor, Moves(12));
  Tag();
  EXPECT_FALSE(playback.headInUse);
  EXPECT_EQ(playback.playHead, 13);
}

TEST_F(PathStale, PlayAndFastForwardBeginWithTheTextAsItStands) {
  for (void (*play)() : {PlayPause, FastForward}) {
    platform::SetEditorText(kIdEditor, Moves(9));
    RebuildToolpath();
    GoToEnd();
    Rewind();
    Put(u"G0 X9 Y9\r\n");
    play();
    EXPECT_EQ(path.count, 11);
    EXPECT_TRUE(playback.playing);
    EXPECT_EQ(playback.playHead, 1);
    // What plays goes on; a press that halts it builds nothing.
    Put(u"G0 X8 Y8\r\n");
    FastForward();
    EXPECT_EQ(path.count, 11);
    PlayPause();
    EXPECT_EQ(path.count, 11);
    EXPECT_FALSE(playback.playing);
  }
}

TEST_F(PathStale, AnotherPathPlaysOnWhileTheProgramsIsStale) {
  ExtractPathOf(PathOwner::Builder, Moves(5), false);
  ShowPathOf(PathOwner::Builder);
  PlayPause();
  Put(u"G0 X9 Y9\r\n");
  PlayPause();
  PlayPause();
  EXPECT_EQ(path.count, 10);
  EXPECT_TRUE(PathIsStale());
  Tag();
  EXPECT_EQ(path.count, 11);
  EXPECT_TRUE(OwnedBy(PathOwner::Builder).play.playing);
  EXPECT_TRUE(platform::TimerRuns(platform::kMainWindow, kTimerPlay));
}

}  // namespace
}  // namespace morva
