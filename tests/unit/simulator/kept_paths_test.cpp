// The path of a program that comes back to the stage: as it left, or read again where anything
// that it depends on is another.
#include "simulator/kept_paths.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "app/hooks.h"
#include "documents/disk_watch.h"
#include "documents/feature_blocks.h"
#include "documents/program_tabs.h"
#include "documents/tab_table.h"
#include "simulator/extract.h"
#include "simulator/feature_lines.h"
#include "simulator/motion_path.h"
#include "simulator/toolpath.h"
#include "simulator/view_switches.h"
#include "support/program_stage.h"

namespace morva {
namespace {

constexpr char16_t kTwoBlocks[] =
    u"G0 Z1\r\n(MORVA TEXT 1)\r\n(MORVA NAME A)\r\nG20 G1 X1 Y2\r\nX3\r\n(MORVA END 1)\r\n"
    u"(MORVA TEXT 2)\r\n(MORVA NAME B)\r\nG2 X4 Y2 I.5\r\nG81 X5 Z-1 R.1\r\nG1 Z-2\r\n"
    u"(MORVA END 2)\r\nG1 X9\r\n";

struct KeptPaths : public support::OfflineProgramStage {
  KeptPaths() {
    ResetSimulator();
    support::MakeButton(kIdPlay, u"PLAY");
    hooks.rebuildToolpath = RebuildToolpath;
    Put("a.NC", support::Narrow(kTwoBlocks));
    OpenFile("a.NC");
    SwitchTab(0);
  }
  ~KeptPaths() override {
    app.unitsMetric = false;
    ResetSimulator();
  }
  // To the first program and back.
  static void GoAndReturn() {
    SwitchTab(0);
    SwitchTab(1);
  }
};

// What the text in the editor has for a path when it is read by itself.
void ExpectRead(int line) {
  SCOPED_TRACE(line);
  static MotionPoint points[kMaxMotionPoints];
  static MotionPath fresh{points};
  const std::u16string text(platform::EditorText(kIdEditor));
  const FeatureLineIndex index = featureLines;
  ScanProgramText(text);
  IndexFeatureLines(text);
  ExtractInto(fresh, text, {.metric = app.unitsMetric, .filtered = true});
  ASSERT_EQ(index.count, featureLines.count);
  for (std::int32_t i = 0; i < index.count; ++i) {
    EXPECT_EQ(index.rows[i].id, featureLines.rows[i].id);
    EXPECT_EQ(index.rows[i].firstLine, featureLines.rows[i].firstLine);
    EXPECT_EQ(index.rows[i].lastLine, featureLines.rows[i].lastLine);
  }
  ASSERT_EQ(path.count, fresh.count);
  EXPECT_EQ(path.fullAtLine, fresh.fullAtLine);
  for (std::int32_t i = 0; i < path.count; ++i) {
    const MotionPoint& a = path.points[i];
    const MotionPoint& b = fresh.points[i];
    EXPECT_TRUE(a.x == b.x && a.y == b.y && a.z == b.z && a.rapid == b.rapid && a.jump == b.jump &&
                a.sourceLine == b.sourceLine && a.tool == b.tool)
        << i;
  }
  for (int kind = 0; kind < kPathNotes; ++kind) {
    EXPECT_EQ(path.notes.rows[kind].lines, fresh.notes.rows[kind].lines);
    EXPECT_EQ(path.notes.rows[kind].first, fresh.notes.rows[kind].first);
  }
  const PathBounds shown = BoundsOf(path);
  const PathBounds wanted = BoundsOf(fresh);
  EXPECT_EQ(shown.minX, wanted.minX);
  EXPECT_EQ(shown.maxX, wanted.maxX);
  EXPECT_EQ(shown.maxY, wanted.maxY);
  EXPECT_EQ(shown.minZ, wanted.minZ);
  EXPECT_FALSE(PathIsStale());
}

TEST_F(KeptPaths, AProgramThatComesBackAsItLeftHasItsPathAgain) {
  SwitchTab(1);
  ExpectRead(__LINE__);
  const std::int32_t count = path.count;
  ASSERT_GT(count, 4);
  for (int i = 0; i < 3; ++i) {
    SwitchTab(0);
    EXPECT_LT(path.count, count);
    const std::uint32_t generation = path.generation;
    SwitchTab(1);
    // Nothing derived from the other program's points is taken for this one's.
    EXPECT_NE(path.generation, generation);
    EXPECT_TRUE(TakeKeptPath(false));
    EXPECT_EQ(path.count, count);
    ExpectRead(__LINE__);
  }
}

TEST_F(KeptPaths, AFullTableComesBackFull) {
  std::u16string text;
  for (int i = 0; i < kMaxMotionPoints; ++i) text += i % 2 == 0 ? u"G1 X1\r\n" : u"X2\r\n";
  SwitchTab(1);
  platform::SetEditorText(kIdEditor, text);
  RebuildToolpath();
  ASSERT_EQ(path.fullAtLine, kMaxMotionPoints - 1);
  SwitchTab(0);
  ExpectRead(__LINE__);
  SwitchTab(1);
  EXPECT_TRUE(TakeKeptPath(false));
  EXPECT_EQ(path.fullAtLine, kMaxMotionPoints - 1);
  ExpectRead(__LINE__);
}

TEST_F(KeptPaths, ATextThatChangedIsRead) {
  const auto type = [] { platform::ReplaceRange(kIdEditor, {0, 0}, u"G1 X7\r\n"); };
  const auto undo = [] {
    platform::ReplaceRange(kIdEditor, {0, 0}, u"G1 X7\r\n");
    EXPECT_TRUE(platform::UndoEditor(kIdEditor));
  };
  const auto whole = [] { platform::SetEditorText(kIdEditor, u"G1 X6 Y6\r\nX8\r\n"); };
  const auto asLong = [] { platform::ReplaceRange(kIdEditor, {4, 5}, u"5"); };
  for (void (*change)() : {+type, +undo, +whole, +asLong}) {
    SwitchTab(1);
    GoAndReturn();
    change();
    EXPECT_FALSE(TakeKeptPath(false));
    EXPECT_TRUE(PathIsStale());
    // The path lags behind as the program leaves; nobody keeps it.
    SwitchTab(0);
    SwitchTab(1);
    ExpectRead(__LINE__);
    GoAndReturn();
    EXPECT_TRUE(TakeKeptPath(false));
    ExpectRead(__LINE__);
  }
}

TEST_F(KeptPaths, ATextThatChangedAwayFromTheStageIsRead) {
  SwitchTab(1);
  SwitchTab(0);
  tabs[1].text.replace(3, 2, u"X9");
  SwitchTab(1);
  EXPECT_EQ(platform::EditorText(kIdEditor).substr(0, 5), u"G0 X9");
  ExpectRead(__LINE__);
  SwitchTab(0);
  platform::DropEditorText(kIdEditor, 0);
  SwitchTab(1);
  EXPECT_FALSE(path.count == 0);
  ExpectRead(__LINE__);
}

TEST_F(KeptPaths, AFileThatIsLoadedAgainIsRead) {
  SwitchTab(1);
  GoAndReturn();
  Put("a.NC", "G1 X2\r\nX4 Y4\r\n");
  ASSERT_TRUE(LoadAgain());
  ExpectRead(__LINE__);
  EXPECT_EQ(path.points[path.count - 1].y, 4);
  GoAndReturn();
  EXPECT_EQ(path.points[path.count - 1].y, 4);
  ExpectRead(__LINE__);
}

TEST_F(KeptPaths, AnotherUnitIsRead) {
  SwitchTab(1);
  SwitchTab(0);
  app.unitsMetric = true;
  SwitchTab(1);
  ExpectRead(__LINE__);
  SwitchTab(0);
  app.unitsMetric = false;
  SwitchTab(1);
  ExpectRead(__LINE__);
}

TEST_F(KeptPaths, WhatIsHiddenOrIsolatedIsRead) {
  SwitchTab(1);
  const std::int32_t whole = path.count;
  SwitchTab(0);
  ToggleListId(2, tabs[1].hiddenIds);
  SwitchTab(1);
  EXPECT_LT(path.count, whole);
  ExpectRead(__LINE__);
  SwitchTab(0);
  ToggleListId(2, tabs[1].hiddenIds);
  tabs[1].isolatedId = 1;
  SwitchTab(1);
  EXPECT_LT(path.count, whole);
  ExpectRead(__LINE__);
  SwitchTab(0);
  tabs[1].isolatedId = 0;
  SwitchTab(1);
  EXPECT_EQ(path.count, whole);
  ExpectRead(__LINE__);
}

TEST_F(KeptPaths, TheProgramAsWrittenIsReadBehindTheMachinesMotion) {
  SwitchTab(1);
  const std::int32_t whole = path.count;
  SwitchMachineMotion(true);
  GoAndReturn();
  EXPECT_EQ(path.count, 0);
  SwitchTab(0);
  SwitchMachineMotion(false);
  SwitchTab(1);
  EXPECT_EQ(path.count, whole);
  ExpectRead(__LINE__);
}

TEST_F(KeptPaths, APathThatIsNotTheEditorsIsNotKept) {
  SwitchTab(1);
  platform::ReplaceRange(kIdEditor, {0, 0}, u"G1 X6\r\n");
  RebuildToolpath();
  ExtractToolpath(u"G1 X7", false);
  GoAndReturn();
  ExpectRead(__LINE__);
}

TEST_F(KeptPaths, NoOtherTextGetsThatOfTheEditors) {
  SwitchTab(1);
  GoAndReturn();
  ASSERT_TRUE(TakeKeptPath(false));
  ExtractToolpath(u"G1 X7", false);
  ASSERT_EQ(path.count, 2);
  EXPECT_EQ(path.points[1].x, 7);
  RebuildToolpath();
  ExpectRead(__LINE__);
}

TEST_F(KeptPaths, AProgramThatIsClosedLeavesNoPathToALaterOne) {
  SwitchTab(1);
  SwitchTab(0);
  RemoveTab(1);
  SwitchTab(0);
  Put("a.NC", "G1 X2\r\nX4 Y4\r\n");
  OpenFile("a.NC");
  ASSERT_EQ(app.activeTab, 1);
  ExpectRead(__LINE__);
}

TEST_F(KeptPaths, EachOfAllOpenProgramsHasItsOwn) {
  while (app.tabCount < kMaxTabs) {
    std::u16string text = u"G1 X2\r\n";
    for (int i = 0; i < app.tabCount; ++i)
      text += u"Y" + support::Wide(std::to_string(i)) + u"\r\n";
    SwitchTab(OpenTab(u"", text, u"Further"));
  }
  for (int i = 0; i < kMaxTabs; ++i) SwitchTab(i);
  for (int i = 0; i < kMaxTabs; ++i) {
    SwitchTab(i);
    EXPECT_TRUE(TakeKeptPath(false)) << i;
    ExpectRead(__LINE__);
  }
  EXPECT_EQ(KeptPathCount(), kMaxTabs);
}

TEST_F(KeptPaths, ThatOfAClosedProgramIsGone) {
  for (int i = 0; i < 3 * kMaxTabs; ++i) {
    SwitchTab(OpenTab(u"", u"G1 X2\r\nX" + support::Wide(std::to_string(i)), u"Closed soon"));
    SwitchTab(0);
    SwitchTab(2);
    EXPECT_EQ(KeptPathCount(), 3);
    ExpectRead(__LINE__);
    // As the key does: the program leaves while it is on the stage.
    RemoveTab(2);
    SwitchTab(0);
    EXPECT_EQ(KeptPathCount(), 2);
    // One that never left before.
    SwitchTab(OpenTab(u"", u"G1 X2\r\nY3", u"Closed at once"));
    RemoveTab(2);
    SwitchTab(0);
    EXPECT_EQ(KeptPathCount(), 2);
    EXPECT_TRUE(TakeKeptPath(false));
    ExpectRead(__LINE__);
  }
  SwitchTab(1);
  EXPECT_TRUE(TakeKeptPath(false));
  ExpectRead(__LINE__);
}

// A copy of 32,768 points at each pause would be for nothing.
TEST_F(KeptPaths, ThatOfTheProgramOnTheStageIsNotKept) {
  ForgetKeptPaths();
  RebuildToolpath();
  RebuildToolpath();
  EXPECT_EQ(KeptPathCount(), 0);
  SwitchTab(1);
  EXPECT_EQ(KeptPathCount(), 1);
}

TEST_F(KeptPaths, NoneIsLeftBehindTheLastProgram) {
  SwitchTab(1);
  SwitchTab(0);
  FreeTabs();
  SwitchTab(OpenTab(u"", u"G1 X2\r\n", u"First again"));
  ExpectRead(__LINE__);
  EXPECT_EQ(KeptPathCount(), 0);
}

// A walk over three programs, the same each time: after each switch the path is the one that
// reading gives.
TEST_F(KeptPaths, AreNeverThoseOfAnEarlierState) {
  SwitchTab(OpenTab(u"", kTwoBlocks, u"Third"));
  std::uint32_t state = 1;
  const auto draw = [&state](std::uint32_t below) {
    state = state * 1664525u + 1013904223u;
    return (state >> 16) % below;
  };
  int taken = 0;
  for (int step = 0; step < 600 && !HasFailure(); ++step) {
    ProgramTab& any = tabs[draw(3)];
    const std::uint32_t what = draw(16);
    const std::u16string word = u"G1 X" + support::Wide(std::to_string(step)) + u"\r\n";
    if (what == 0) platform::ReplaceRange(kIdEditor, {0, 0}, word);
    if (what == 1) platform::UndoEditor(kIdEditor);
    if (what == 2) platform::SetEditorText(kIdEditor, word + kTwoBlocks);
    if (what == 3) ToggleListId(static_cast<std::int32_t>(1 + draw(2)), any.hiddenIds);
    if (what == 4) any.isolatedId = static_cast<std::int32_t>(draw(3));
    if (what == 5) app.unitsMetric = !app.unitsMetric;
    if (what == 6 && &any != ActiveTab()) any.text = word + any.text;
    if (what == 7) platform::DropEditorText(kIdEditor, any.serial);
    if (what == 8) RebuildToolpath();
    if (what > 8) {
      const bool another = &any != ActiveTab();
      SwitchTab(static_cast<int>(&any - tabs));
      if (!another) RebuildToolpath();
      ExpectRead(step);
      if (TakeKeptPath(app.unitsMetric)) ++taken;
      ExpectRead(step);
    }
  }
  EXPECT_GT(taken, 40);
}

// What lies aside has its bound in lines; the programs that no longer do come back by their text.
TEST_F(KeptPaths, AProgramThatNoLongerLiesAsideIsReadOnce) {
  SwitchTab(1);
  SwitchTab(0);
  platform::DropEditorText(kIdEditor, tabs[1].serial);
  SwitchTab(1);
  ExpectRead(__LINE__);
  GoAndReturn();
  EXPECT_TRUE(TakeKeptPath(false));
  ExpectRead(__LINE__);
}

// Nobody reads it anew while the user types.
TEST_F(KeptPaths, APathThatLagsBehindItsTextIsReadWhenItComesBack) {
  SwitchTab(1);
  hooks.rebuildToolpath = nullptr;
  platform::ReplaceRange(kIdEditor, {0, 5}, u"G0 Z8");
  hooks.rebuildToolpath = RebuildToolpath;
  ASSERT_TRUE(PathIsStale());
  GoAndReturn();
  EXPECT_EQ(path.points[1].z, 8);
  ExpectRead(__LINE__);
}

}  // namespace
}  // namespace morva
