#include "simulator/shown_path.h"

#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include "app/command_ids.h"
#include "app/router.h"
#include "documents/feature_blocks.h"
#include "documents/insertion.h"
#include "documents/program_tabs.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/timer.h"
#include "simulator/extract.h"
#include "simulator/feature_lines.h"
#include "simulator/line_highlight.h"
#include "simulator/motion_path.h"
#include "simulator/playback.h"
#include "simulator/stock_envelope.h"
#include "simulator/toolpath.h"
#include "simulator/view.h"
#include "simulator/view_switches.h"
#include "unit/simulator/view_fixture.h"

namespace morva {
namespace {

using Bytes = std::vector<unsigned char>;

template <typename Record>
Bytes BytesOf(const Record& record) {
  static_assert(std::is_trivially_copyable_v<Record>);
  Bytes bytes(sizeof record);
  std::memcpy(bytes.data(), &record, sizeof record);
  return bytes;
}

// Everything of an owner, with its points.
struct Kept {
  Bytes path, points, play, picks, view, stock;
};

Kept Keep(PathOwner owner) {
  const OwnedPath& owned = OwnedBy(owner);
  Kept kept;
  kept.path = BytesOf(owned.path);
  kept.points.resize(sizeof(MotionPoint) * static_cast<std::size_t>(owned.path.count));
  if (!kept.points.empty()) {
    std::memcpy(kept.points.data(), owned.path.points, kept.points.size());
  }
  kept.play = BytesOf(owned.play);
  kept.picks = BytesOf(owned.picks);
  kept.view = BytesOf(owned.view);
  kept.stock = BytesOf(owned.stock);
  return kept;
}

void ExpectSame(const Kept& a, const Kept& b) {
  EXPECT_EQ(a.path, b.path);
  EXPECT_EQ(a.points, b.points);
  EXPECT_EQ(a.play, b.play);
  EXPECT_EQ(a.picks, b.picks);
  EXPECT_EQ(a.view, b.view);
  EXPECT_EQ(a.stock, b.stock);
}

class ShownPathTest : public ViewTest {
 protected:
  ShownPathTest() {
    Clear();
    support::MakeButton(kIdPlay, u"PLAY");
  }
  ~ShownPathTest() override { Clear(); }

  static void Clear() {
    FreeDisabledCode(tabs[0].disabledCode);
    tabs[0] = ProgramTab{};
    ResetFeatures();
    editLink = EditLink{};
  }

  static const OwnedPath& Builder() { return OwnedBy(PathOwner::Builder); }

  // A program in the editor, its path shown from some side of the user's.
  static void OpenProgram(std::u16string_view text) {
    app.activeTab = 0;
    app.tabCount = 1;
    platform::SetEditorText(kIdEditor, text);
    RebuildToolpath();
  }
  static void OpenExample(std::u16string_view text = u"G1 X2\r\nY1\r\nX0\r\nY0\r\n") {
    ExtractPathOf(PathOwner::Builder, text, false);
    ShowPathOf(PathOwner::Builder);
  }

  static std::u16string Moves(int count) {
    std::u16string text;
    for (int i = 0; i < count; ++i) text += i % 2 == 0 ? u"G1 X1\r\n" : u"X2\r\n";
    return text;
  }
  static bool TimerOn() { return platform::TimerRuns(platform::kMainWindow, kTimerPlay); }
  static int MarkedLine() {
    platform::Colour band = 0;
    return headless::EditorMark(kIdEditor, band);
  }
  static std::u16string Status() { return platform::TextOf(kIdStatusLine); }
};

TEST_F(ShownPathTest, TheProgramIsShownAtFirst) {
  EXPECT_EQ(ShownOwner(), PathOwner::Program);
  EXPECT_EQ(&ShownPath().path, &path);
  EXPECT_EQ(&ShownPath().play, &playback);
  EXPECT_EQ(&ShownPath().picks, &measure);
  EXPECT_EQ(&ShownPath().view, &view);
  EXPECT_EQ(&ShownPath().stock, &stockEnvelope);
  EXPECT_EQ(&ShownPath().context, &ghostPath);
}

TEST_F(ShownPathTest, OwnersShareNoRecord) {
  EXPECT_EQ(OwnedPaths().size(), 3u);
  EXPECT_NE(Builder().path.points, path.points);
  EXPECT_NE(Builder().path.points, ghostPath.points);
  EXPECT_NE(&Builder().play, &playback);
  EXPECT_NE(&Builder().picks, &measure);
  EXPECT_NE(&Builder().view, &view);
  EXPECT_NE(&Builder().stock, &stockEnvelope);
}

TEST_F(ShownPathTest, TheMachineHasViewAndStockOfTheProgramAlone) {
  const OwnedPath& machine = OwnedBy(PathOwner::Machine);
  EXPECT_EQ(&machine.view, &view);
  EXPECT_EQ(&machine.stock, &stockEnvelope);
  EXPECT_NE(machine.path.points, path.points);
  EXPECT_NE(machine.context.points, ghostPath.points);
  EXPECT_NE(&machine.play, &playback);
  EXPECT_NE(&machine.picks, &measure);
  EXPECT_NE(machine.seconds, nullptr);
  EXPECT_EQ(OwnedBy(PathOwner::Program).seconds, nullptr);
}

TEST_F(ShownPathTest, TwoOwnersKeepTheirPathsApart) {
  OpenProgram(u"G1 X1 T2\r\nY3\r\n");
  ExtractPathOf(PathOwner::Builder, u"G0 Z5\r\n", false);
  ASSERT_EQ(path.count, 3);
  EXPECT_EQ(path.points[2].y, 3);
  EXPECT_EQ(path.points[2].tool, 2);
  ASSERT_EQ(Builder().path.count, 2);
  EXPECT_EQ(Builder().path.points[1].z, 5);
  EXPECT_EQ(Builder().path.points[1].tool, 0);
  EXPECT_EQ(Builder().play.playHead, 2);
  ExtractToolpath(u"X9", false);
  EXPECT_EQ(path.count, 2);
  EXPECT_EQ(Builder().path.points[1].z, 5);
}

TEST_F(ShownPathTest, ARunChangesNothingButItsTable) {
  OpenProgram(u"G1 X1\r\nX2\r\n");
  playback.playHead = 2;
  playback.headInUse = true;
  measure.a = 1;
  const Kept program = Keep(PathOwner::Program);
  Kept builder = Keep(PathOwner::Builder);
  ExtractInto(Builder().path, u"G91 G1 X1\r\nX1\r\n", {});
  ExpectSame(Keep(PathOwner::Program), program);
  EXPECT_EQ(Builder().path.count, 3);
  builder.path = Keep(PathOwner::Builder).path;
  builder.points = Keep(PathOwner::Builder).points;
  ExpectSame(Keep(PathOwner::Builder), builder);
}

TEST_F(ShownPathTest, PointsAreInTheUnitThatTheRunIsGiven) {
  ExtractInto(Builder().path, u"G20 G1 X1\r\n", {.metric = true});
  EXPECT_EQ(Builder().path.points[1].x, 25.4);
  ExtractPathOf(PathOwner::Builder, u"G20 G1 X1\r\n", false);
  EXPECT_EQ(Builder().path.points[1].x, 1);
}

// Line 0 in feature 1, line 1 in feature 2, line 2 in none; and a block whose code is excluded.
class Filters : public ShownPathTest {
 protected:
  static constexpr std::u16string_view kText =
      u"(MORVA TEXT 1)\r\nG1 X1\r\n(MORVA END 1)\r\n"
      u"(MORVA TEXT 2)\r\nX2\r\n(MORVA END 2)\r\n"
      u"X3\r\n"
      u"(MORVA TEXT 3)\r\n(MORVA DISABLED 1)\r\n(MORVA END 3)\r\n";
  Filters() { AddDisabledCode(tabs[0].disabledCode, u"G1 X7 Y7\r\n"); }
};

TEST_F(Filters, AnUnfilteredRunIgnoresIsolationAndHiding) {
  tabs[0].isolatedId = 2;
  OpenProgram(kText);
  ASSERT_EQ(path.count, 1);
  EXPECT_EQ(path.points[0].x, 2);
  ExtractPathOf(PathOwner::Builder, kText, false);
  ASSERT_EQ(Builder().path.count, 4);
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(Builder().path.points[i].x, i);
    EXPECT_FALSE(Builder().path.points[i].jump);
  }
  tabs[0].isolatedId = 0;
  tabs[0].hiddenIds[0] = 1;
  RebuildToolpath();
  EXPECT_EQ(path.count, 2);  // X2 and X3: the origin counts as line 0, which is hidden
  ExtractPathOf(PathOwner::Builder, kText, false);
  EXPECT_EQ(Builder().path.count, 4);
}

TEST_F(Filters, ARunThatAsksForTheFilterGetsIt) {
  OpenProgram(kText);
  tabs[0].hiddenIds[0] = 2;
  ExtractInto(Builder().path, kText, {.filtered = true});
  ASSERT_EQ(Builder().path.count, 3);
  EXPECT_EQ(Builder().path.points[2].x, 3);
  EXPECT_TRUE(Builder().path.points[2].jump);
}

TEST_F(Filters, AnotherPathHasNoGhosts) {
  OpenProgram(kText);
  ASSERT_EQ(ghostPath.count, 2);
  constexpr platform::Colour kGhost = 0x53687C;
  EXPECT_EQ(Calls("PaintSegments", kGhost).size(), 1u);
  OpenExample();
  EXPECT_TRUE(Calls("PaintSegments", kGhost).empty());
  // An empty path has no bounds; the program's would be those of its ghosts.
  EmptyPath(Builder().path);
  EXPECT_EQ(Bounds().maxX, 0);
  ShowPathOf(PathOwner::Program);
  EmptyPath(path);
  EXPECT_EQ(Bounds().maxX, 7);
  EXPECT_EQ(Calls("PaintSegments", kGhost).size(), 1u);
}

TEST_F(Filters, AGhostThatBeginsWhereTheLastOneEndedKeepsItsFirstPoint) {
  AddDisabledCode(tabs[0].disabledCode, u"G1 X4\r\nX0\r\n");
  OpenProgram(
      u"(MORVA TEXT 1)\r\n(MORVA DISABLED 2)\r\n(MORVA END 1)\r\n"
      u"(MORVA TEXT 2)\r\n(MORVA DISABLED 1)\r\n(MORVA END 2)\r\nX5\r\n");
  ASSERT_EQ(ghostPath.count, 5);
  EXPECT_EQ(ghostPath.points[2].x, 0);
  EXPECT_FALSE(ghostPath.points[2].jump);
  EXPECT_EQ(ghostPath.points[3].x, 0);
  EXPECT_TRUE(ghostPath.points[3].jump);
  EXPECT_FALSE(ghostPath.points[4].jump);
  EXPECT_EQ(path.count, 2);
}

TEST_F(ShownPathTest, TheProgramComesBackToTheByte) {
  OpenProgram(u"G1 X1 Y1\r\nX3\r\nG0 Z1\r\nG1 Y5\r\n");
  view.zoom = 2.5;
  view.yawDegrees = 33;
  view.elevationDegrees = -12;
  view.rollDegrees = 7;
  view.panX = 11;
  view.panY = -8;
  stockEnvelope = {true, 0, 4, 0, 5, 0, -1, 1};
  measure = {1, 3};
  playback.headInUse = true;
  playback.playHead = 3;
  playback.segmentFraction = 0.25;
  SetPlaySpeed(6);
  headless::Focus(kViewToolpath);
  const std::vector<headless::DrawCall> frame = Paint();
  const Kept before = Keep(PathOwner::Program);

  Builder().view.yawDegrees = 10;
  Builder().stock = {true, -2, 2, -1, 1, 0, -0.5, 0.5};
  Builder().play.loops = true;
  OpenExample();
  SetPlaySpeed(9);
  PlayPause();
  for (int i = 0; i < 50; ++i) PlayTick();
  for (void (*command)() : {FastForward, Rewind, NextOperation, PreviousOperation, GoToEnd,
                            GoToStart, StopPlayback, FastForward}) {
    command();
  }
  Press(100, 400);
  DragTo(160, 430);
  Release(160, 430);
  Wheel(3);
  Key(platform::kKeyRight, true);
  TakeMeasurePick(1);
  SetViewRight();
  Hover(100, 100);
  ExtractPathOf(PathOwner::Builder, u"G2 I1\r\n", false);
  Paint();

  ShowPathOf(PathOwner::Program);
  ExpectSame(Keep(PathOwner::Program), before);
  const std::vector<headless::DrawCall> after = Paint();
  ASSERT_EQ(after.size(), frame.size());
  for (std::size_t i = 0; i < frame.size(); ++i) {
    EXPECT_EQ(after[i].name, frame[i].name) << i;
    EXPECT_EQ(after[i].numbers, frame[i].numbers) << i;
    EXPECT_EQ(after[i].text, frame[i].text) << i;
  }
}

TEST_F(ShownPathTest, ARebuildBehindAnExampleDoesNotDisturbIt) {
  OpenProgram(u"G1 X1\r\n");
  OpenExample();
  PlayPause();
  for (int i = 0; i < 20; ++i) PlayTick();
  TakeMeasurePick(1);
  const Kept example = Keep(PathOwner::Builder);
  ASSERT_GT(Builder().play.playHead, 1);
  platform::SetEditorText(kIdEditor, u"G1 X1\r\nX2\r\nX3\r\n");
  RebuildToolpath();
  ExpectSame(Keep(PathOwner::Builder), example);
  EXPECT_TRUE(Builder().play.playing);
  EXPECT_TRUE(TimerOn());
  EXPECT_EQ(platform::TextOf(kIdPlay), u"Pause");
  EXPECT_EQ(Bounds().maxX, 2);
  PlayTick();
  EXPECT_NE(Keep(PathOwner::Builder).play, example.play);

  ShowPathOf(PathOwner::Program);
  ASSERT_EQ(path.count, 4);
  EXPECT_EQ(playback.playHead, 4);
  EXPECT_FALSE(playback.headInUse);
  EXPECT_EQ(Bounds().maxX, 3);
}

TEST_F(ShownPathTest, AFullTableTellsItsLineForItsOwnerAlone) {
  OpenProgram(Moves(3));
  OpenExample(Moves(40000));
  EXPECT_EQ(Builder().path.count, kMaxMotionPoints);
  EXPECT_EQ(Builder().path.fullAtLine, 32767);
  EXPECT_EQ(path.fullAtLine, -1);
  const auto told = [] {
    std::u16string all;
    for (const std::u16string& text : Texts()) all += text + u"|";
    return all.find(u"path shown to line 32767") != all.npos;
  };
  EXPECT_TRUE(told());
  ShowPathOf(PathOwner::Program);
  EXPECT_FALSE(told());

  OpenProgram(Moves(40000));
  ExtractPathOf(PathOwner::Builder, u"X1\r\n", false);
  EXPECT_EQ(path.fullAtLine, 32767);
  EXPECT_EQ(Builder().path.fullAtLine, -1);
  EXPECT_TRUE(told());
  ShowPathOf(PathOwner::Builder);
  EXPECT_FALSE(told());
}

TEST_F(ShownPathTest, OnlyThePathThatIsShownPlays) {
  OpenProgram(Moves(20));
  PlayPause();
  for (int i = 0; i < 40; ++i) PlayTick();
  ASSERT_EQ(playback.playHead, 3);
  const double fraction = playback.segmentFraction;
  OpenExample();
  EXPECT_FALSE(playback.playing);
  EXPECT_FALSE(TimerOn());
  EXPECT_EQ(platform::TextOf(kIdPlay), u"PLAY");
  PlayTick();
  EXPECT_EQ(playback.playHead, 3);
  EXPECT_EQ(playback.segmentFraction, fraction);
  PlayPause();
  EXPECT_TRUE(Builder().play.playing);
  EXPECT_FALSE(playback.playing);
  EXPECT_TRUE(TimerOn());
  ShowPathOf(PathOwner::Program);
  EXPECT_FALSE(Builder().play.playing);
  EXPECT_FALSE(TimerOn());
  EXPECT_TRUE(playback.headInUse);
  EXPECT_EQ(playback.playHead, 3);
}

TEST_F(ShownPathTest, ShowingWhatIsShownChangesNothing) {
  OpenProgram(Moves(20));
  PlayPause();
  ShowPathOf(PathOwner::Program);
  EXPECT_TRUE(playback.playing);
  EXPECT_TRUE(TimerOn());
  EXPECT_EQ(platform::TextOf(kIdPlay), u"Pause");
}

TEST_F(ShownPathTest, ANewPathBehindThePlayingOneLeavesItsTimerAlone) {
  OpenProgram(Moves(20));
  PlayPause();
  ExtractPathOf(PathOwner::Builder, Moves(5), false);
  EXPECT_TRUE(playback.playing);
  EXPECT_TRUE(TimerOn());
}

TEST_F(ShownPathTest, ALoopBeginsAgainAtItsEnd) {
  OpenExample();  // five points
  Builder().play.loops = true;
  SetPlaySpeed(9);  // 4.27 points a tick
  PlayPause();
  PlayTick();
  EXPECT_TRUE(Builder().play.playing);
  EXPECT_EQ(Builder().play.playHead, 1);
  EXPECT_EQ(Builder().play.segmentFraction, 0);
  EXPECT_TRUE(TimerOn());
  SetPlaySpeed(8);  // 2.13 points
  PlayTick();
  EXPECT_EQ(Builder().play.playHead, 3);
}

TEST_F(ShownPathTest, ALoopOfOnePointEnds) {
  OpenExample(u"");
  Builder().play.loops = true;
  PlayPause();
  PlayTick();
  EXPECT_FALSE(Builder().play.playing);
  EXPECT_FALSE(TimerOn());
}

TEST_F(ShownPathTest, LinesOfAnotherPathAreNotMarkedInTheEditor) {
  OpenProgram(u"(MORVA TEXT 1)\r\nG1 X1\r\nX2\r\n(MORVA END 1)\r\nX3\r\n");
  GoToStart();
  EXPECT_EQ(MarkedLine(), 0);
  OpenExample();
  EXPECT_EQ(MarkedLine(), 0);
  ForgetHighlight();
  GoToEnd();
  EXPECT_EQ(MarkedLine(), -1);
  GoToStart();
  SetPlaySpeed(9);
  PlayPause();
  PlayTick();
  EXPECT_EQ(Builder().play.playHead, 5);
  EXPECT_EQ(MarkedLine(), -1);
}

TEST_F(ShownPathTest, AnotherPathHasNoOperationsToStepThrough) {
  OpenProgram(u"X1\r\n(MORVA TEXT 1)\r\nG1 X2\r\n(MORVA END 1)\r\n");
  ASSERT_EQ(featureLines.count, 2);  // what stands before a block is one as well
  OpenExample();
  GoToStart();
  NextOperation();
  EXPECT_EQ(Builder().play.playHead, 5);
  PreviousOperation();
  EXPECT_EQ(Builder().play.playHead, 1);
}

TEST_F(ShownPathTest, PlayingAnEmptyPathRebuildsOnlyTheProgram) {
  OpenProgram(u"");
  platform::SetEditorText(kIdEditor, u"G1 X1\r\n");
  OpenExample(u"");
  PlayPause();
  EXPECT_EQ(path.count, 1);
  EXPECT_EQ(Builder().path.count, 1);
  ShowPathOf(PathOwner::Program);
  PlayPause();
  EXPECT_EQ(path.count, 2);
}

TEST_F(ShownPathTest, MeasureExtentsAndHoverReadThePathThatIsShown) {
  OpenProgram(u"G1 X9 Y9\r\n");
  Builder().view.topView = true;
  OpenExample(u"G1 X4\r\nY2\r\nX0\r\n");
  switches.showExtents = true;
  TakeMeasurePick(0);
  TakeMeasurePick(2);
  TakeMeasurePick(99);
  EXPECT_EQ(Builder().picks.b, 2);
  EXPECT_EQ(measure.a, -1);
  EXPECT_TRUE(Shows(u"PATH EXTENTS (in)   X 4.0000   Y 2.0000   Z 0.0000"));
  EXPECT_TRUE(Shows(u"MEASURE  dX 4.0000  dY 2.0000  dZ 0.0000  distance 4.4721"));
  // Four by two in plan: X 4 Y 2 lies at 335 + 2 x 129, 329 - 129.
  Hover(593, 200);
  EXPECT_EQ(Status(), u"Toolpath point  X 4.0000  Y 2.0000  Z 0.0000  source line 2 in  CUT");
}

TEST_F(ShownPathTest, PointsOfOnePathAreNotTakenForThoseOfAnother) {
  // Four by two in plan, round one way and the other: bounds, count and generation are the same.
  OpenProgram(u"G1 X4\r\nY2\r\nX0\r\n");
  ExtractPathOf(PathOwner::Builder, u"G1 Y2\r\nX4\r\nY0\r\n", false);
  view.topView = true;
  Builder().view.topView = true;
  Builder().path.generation = path.generation;
  const platform::Rect client = platform::ClientArea(kViewToolpath);
  EXPECT_EQ(PickPathPoint(client, 593, 458), 1);  // X4 Y0
  ShowPathOf(PathOwner::Builder);
  EXPECT_EQ(PickPathPoint(client, 593, 458), 3);
  ShowPathOf(PathOwner::Program);
  EXPECT_EQ(PickPathPoint(client, 593, 458), 1);
}

TEST_F(ShownPathTest, ThePickOfTheKeyboardIsTheShownHead) {
  OpenProgram(Moves(8));
  OpenExample();
  switches.measureMode = true;
  GoToStart();
  Key(platform::kKeyEnter);
  EXPECT_EQ(Builder().picks.a, 0);
  EXPECT_EQ(measure.a, -1);
}

TEST_F(ShownPathTest, TheModeOfMeasuringIsOneForAllAndClearsEveryPick) {
  OpenProgram(Moves(8));
  TakeMeasurePick(1);
  OpenExample();
  TakeMeasurePick(2);
  ToggleMeasure();
  EXPECT_EQ(Builder().picks.a, -1);
  EXPECT_EQ(measure.a, -1);
}

TEST_F(ShownPathTest, EachPathHasItsStock) {
  OpenProgram(u"X1\r\n");
  Builder().stock = {true, -2, 2, -1.25, 1.25, 0, -0.5, 0.5};
  EXPECT_FALSE(Shows(u"STOCK ENVELOPE  4.0000 x 2.5000 x 0.5000 in"));
  OpenExample();
  EXPECT_TRUE(Shows(u"STOCK ENVELOPE  4.0000 x 2.5000 x 0.5000 in"));
  RebuildToolpath();
  EXPECT_TRUE(Shows(u"STOCK ENVELOPE  4.0000 x 2.5000 x 0.5000 in"));
}

TEST_F(ShownPathTest, TheGridIsOneForAll) {
  OpenProgram(u"X1\r\n");
  OpenExample();
  app.mode = kModeSimulator;
  Paint();  // reads the settings
  view.gridColour = 3;
  EXPECT_EQ(Calls("PaintSegments", 0x79562B).size(), 1u);
  view.gridOn = false;
  EXPECT_TRUE(Calls("PaintSegments", 0x79562B).empty());
}

TEST_F(ShownPathTest, ATurnUnderWayEndsWhereItIsWhenAnotherPathIsShown) {
  OpenProgram(u"G1 X1\r\n");
  Press(670 - 34, 70);  // a quarter turn
  Release(670 - 34, 70);
  headless::Advance(16 * 3);
  const double yaw = view.yawDegrees;
  ASSERT_NE(yaw, -45);
  OpenExample();
  headless::Advance(1000);
  EXPECT_EQ(view.yawDegrees, yaw);
  EXPECT_EQ(Builder().view.yawDegrees, -45);
}

TEST_F(ShownPathTest, ADragEndsWhenAnotherPathIsShown) {
  OpenProgram(u"G1 X1\r\n");
  Press(100, 400);
  DragTo(110, 400);
  const double yaw = view.yawDegrees;
  EXPECT_NEAR(yaw, -45 + 5.5, 1e-12);
  OpenExample();
  DragTo(150, 400);
  EXPECT_EQ(view.yawDegrees, yaw);
  EXPECT_EQ(Builder().view.yawDegrees, -45);
}

TEST_F(ShownPathTest, TheHookFitsTheProgram) {
  RegisterSimulatorCommands();
  OpenProgram(u"G1 X1\r\n");
  view.zoom = 4;
  Builder().view.zoom = 3;
  OpenExample();
  hooks.fitView();
  EXPECT_EQ(view.zoom, 1);
  EXPECT_EQ(Builder().view.zoom, 3);
  ViewFit();
  EXPECT_EQ(Builder().view.zoom, 1);
}

TEST_F(ShownPathTest, AResetShowsTheProgramAndEmptiesEveryPath) {
  OpenProgram(Moves(4));
  Builder().play.loops = true;
  Builder().stock.shown = true;
  Builder().view.zoom = 5;
  OpenExample(Moves(40000));
  PlayPause();
  TakeMeasurePick(1);
  ResetSimulator();
  ResetView();
  EXPECT_EQ(ShownOwner(), PathOwner::Program);
  EXPECT_FALSE(TimerOn());
  for (const OwnedPath& owned : OwnedPaths()) {
    EXPECT_EQ(owned.path.count, 0);
    EXPECT_EQ(owned.path.fullAtLine, -1);
    EXPECT_FALSE(owned.play.playing);
    EXPECT_FALSE(owned.play.loops);
    EXPECT_EQ(owned.play.speedIndex, 3);
    EXPECT_EQ(owned.picks.a, -1);
    EXPECT_FALSE(owned.stock.shown);
    EXPECT_EQ(owned.view.zoom, 1);
  }
}

}  // namespace
}  // namespace morva
