// The operations of the feature list, over the whole application.

#include "documents/feature_operations.h"

#include <vector>

#include "app/hooks.h"
#include "app/outlets.h"
#include "app/router.h"
#include "app/stop.h"
#include "codetools/words_view.h"
#include "documents/block_text.h"
#include "documents/feature_blocks.h"
#include "documents/insertion.h"
#include "documents/program_tabs.h"
#include "platform/listing.h"
#include "platform/timer.h"
#include "platform/window.h"
#include "shell/inline_rename.h"
#include "simulator/line_highlight.h"
#include "simulator/motion_path.h"
#include "support/kinds.h"
#include "support/workbench.h"
#include "text/codetext.h"

namespace morva {
namespace {

class FeatureOps : public support::Workbench {
 protected:
  // The program with one block a line end pair, marked by hand.
  void Load(std::u16string_view text) {
    headless::EditorSetAll(kIdEditor, text);
    headless::Advance(200);
  }
  static void Select(int row) { headless::SelectRows(kIdFeatureList, {row}); }
  static std::u16string Hint() { return platform::TextOf(kIdFeatureHint); }
  static std::u16string Row(int row) { return platform::RowText(kIdFeatureList, row); }
};

const std::u16string kTwo =
    u"(MORVA TEXT 1)\r\n(MORVA NAME First)\r\nG0 X1\r\n(MORVA END 1)\r\n"
    u"(MORVA TEXT 2)\r\n(MORVA NAME Second)\r\nG1 X2\r\n(MORVA END 2)\r\n";

FeatureSettings SlotSettings(std::u16string_view code) {
  FeatureSettings record;
  record.version = 3;
  record.kind = kKindShape;
  record.a = 6;
  record.codeHash = CodeHash(code);
  return record;
}

TEST_F(FeatureOps, IncludesNoCodeThatTheProgramHasNoRoomFor) {
  Load(u"(MORVA TEXT 1)\r\n(MORVA NAME First)\r\n(" + std::u16string(400, u'Y') +
       u")\r\n(MORVA END 1)\r\n");
  Select(0);
  headless::Click(kIdFeatureInclude);
  std::u16string full(platform::EditorText(kIdEditor));
  while (full.size() + 100 <= 33554432 - 100) full += u"(" + std::u16string(96, u'X') + u")\r\n";
  Load(full);
  Select(0);
  headless::TakeBoxes();
  headless::Click(kIdFeatureInclude);
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
  EXPECT_EQ(platform::EditorText(kIdEditor), full);
}

TEST_F(FeatureOps, SelectingARowSelectsItsBlockInTheEditor) {
  Load(kTwo);
  Select(1);
  const platform::EditorRange range = platform::EditorSelection(kIdEditor);
  // Positions count a line end as one: the first block and its line end are 54 units long.
  EXPECT_EQ(range.from, 15 + 19 + 6 + 14);
  EXPECT_EQ(range.to, range.from + 15 + 20 + 6 + 13);
  EXPECT_EQ(Hint(), u"Selected block. Edit Settings reopens its builder.");
  EXPECT_EQ(platform::TextOf(kIdFeatureName), u"Second");
}

// What was said of a block of one program is not said of another's.
TEST_F(FeatureOps, AnotherTabTakesTheHintOfAFeatureAway) {
  headless::Click(kIdTabNew);
  headless::Advance(200);
  Load(kTwo);
  Select(1);
  ASSERT_EQ(Hint(), u"Selected block. Edit Settings reopens its builder.");
  headless::Click(kIdTabFirst);
  EXPECT_EQ(Hint(), u"All program features appear here.");
  headless::Advance(200);
  EXPECT_EQ(Hint(), u"All program features appear here.");
  Select(0);
  ASSERT_NE(Hint(), u"All program features appear here.");
  headless::Click(kIdTabFirst);  // which is up already
  EXPECT_NE(Hint(), u"All program features appear here.");
  headless::Click(kIdTabFirst + 1);
  EXPECT_EQ(Hint(), u"All program features appear here.");
}

TEST_F(FeatureOps, RenamesAnUnlockedBlockAndRefusesWhatCannotBeAName) {
  Load(kTwo);
  Select(0);
  headless::TypeInto(kIdFeatureName, u"Rough face");
  ASSERT_TRUE(headless::Click(kIdFeatureRename));
  EXPECT_EQ(Text().substr(0, 44), u"(MORVA TEXT 1)\r\n(MORVA NAME Rough face)\r\nG0 ");
  EXPECT_EQ(Row(0), u"#1  Rough face");
  const std::u16string refusal =
      u"Select an unlocked feature. Use 1-80 plain characters without parentheses.";
  for (const std::u16string& name : {std::u16string(), std::u16string(u"a(b"),
                                     std::u16string(u"caf\u00e9"), std::u16string(81, u'x')}) {
    EXPECT_EQ(RenameFeature(name), RenameAnswer::Refused);
  }
  EXPECT_EQ(RenameFeature(std::u16string(80, u'y')), RenameAnswer::Done);
  EXPECT_EQ(Row(0), u"#1  " + std::u16string(80, u'y'));
  headless::Click(kIdFeatureLock);
  headless::TypeInto(kIdFeatureName, u"Other");
  headless::Click(kIdFeatureRename);
  EXPECT_EQ(Hint(), refusal);
  EXPECT_EQ(Row(0), u"#1  " + std::u16string(80, u'y') + u" [locked]");
}

TEST_F(FeatureOps, GivesANameToABlockThatHasNone) {
  Load(u"(MORVA TEXT 1)\r\nG0 X1\r\n(MORVA END 1)");
  Select(0);
  EXPECT_EQ(platform::TextOf(kIdFeatureName), u"User code");
  EXPECT_EQ(RenameFeature(u"Bore"), RenameAnswer::Done);
  EXPECT_EQ(Text(), u"(MORVA TEXT 1)\r\n(MORVA NAME Bore)\r\nG0 X1\r\n(MORVA END 1)");
}

// An empty line between the two markers does not hide the name from the scan, so it must not
// hide it from the rename either: a second NAME line would cost the block its settings.
TEST_F(FeatureOps, RenamesAcrossAnEmptyLineWithoutASecondName) {
  std::u16string block = SettingsBlockText(1, u"Old", SlotSettings(u"G1 X1\r\n"), u"G1 X1\r\n");
  block.insert(block.find(u"(MORVA NAME"), u"\r\n");
  Load(block);
  Select(0);
  ASSERT_EQ(RenameFeature(u"New"), RenameAnswer::Done);
  EXPECT_EQ(Row(0), u"#1  New");
  block.replace(block.find(u"Old"), 3, u"New");
  EXPECT_EQ(Text(), block);
  ASSERT_EQ(features.count, 1);
  EXPECT_EQ(features.rows[0].settings.kind, kKindShape);
}

TEST_F(FeatureOps, RenamesABlockWithCodeBehindItsName) {
  Load(u"(MORVA TEXT 1)\r\n(MORVA NAME Face)G0 X1\r\nG0 X2\r\n(MORVA END 1)");
  Select(0);
  EXPECT_EQ(RenameFeature(u"Bore"), RenameAnswer::Done);
  EXPECT_EQ(Text(), u"(MORVA TEXT 1)\r\n(MORVA NAME Bore)\r\nG0 X1\r\nG0 X2\r\n(MORVA END 1)");
  EXPECT_EQ(Row(0), u"#1  Bore");
}

TEST_F(FeatureOps, NamesABlockWithBlankLinesBehindItsMarker) {
  Load(u"(MORVA TEXT 1)\r\n\r\n\r\nG0 X1\r\n(MORVA END 1)");
  Select(0);
  EXPECT_EQ(RenameFeature(u"Bore"), RenameAnswer::Done);
  EXPECT_EQ(Text(), u"(MORVA TEXT 1)\r\n\r\n\r\n(MORVA NAME Bore)\r\nG0 X1\r\n(MORVA END 1)");
  EXPECT_EQ(Row(0), u"#1  Bore");
  EXPECT_EQ(RenameFeature(u"Slot"), RenameAnswer::Done);
  EXPECT_EQ(Text(), u"(MORVA TEXT 1)\r\n\r\n\r\n(MORVA NAME Slot)\r\nG0 X1\r\n(MORVA END 1)");
}

TEST_F(FeatureOps, SaysWhyABlockOfOneLineGetsNoName) {
  const std::u16string text =
      u"(MORVA TEXT 1) M8 (MORVA END 1)\r\n(MORVA TEXT 2)\r\nM9\r\n(MORVA END 2)";
  const std::u16string words =
      u"This block is on one line. Put its END marker on a line of its own to name it.";
  Load(text);
  Select(0);
  headless::TypeInto(kIdFeatureName, u"Bore");
  headless::Click(kIdFeatureRename);
  EXPECT_EQ(Text(), text);
  EXPECT_EQ(Hint(), words);
  // Over the row it is told where that box tells its refusals. What is no name is told first.
  StartInlineRename();
  headless::TypeInto(kIdInlineName, u"Bore");
  platform::KeyEvent enter;
  enter.key = platform::kKeyEnter;
  headless::PressKey(enter);
  EXPECT_EQ(Text(), text);
  EXPECT_EQ(platform::TextOf(kIdStatusLine), words);
  headless::TypeInto(kIdFeatureName, u"a(b");
  headless::Click(kIdFeatureRename);
  EXPECT_EQ(Hint(), u"Select an unlocked feature. Use 1-80 plain characters without parentheses.");
}

TEST_F(FeatureOps, DeletesAfterAQuestionAndUndoBringsTheBlockBack) {
  Load(kTwo);
  Select(0);
  headless::QueueAnswer(platform::BoxAnswer::No);
  headless::Click(kIdFeatureDelete);
  EXPECT_EQ(Text(), kTwo);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdFeatureDelete);
  EXPECT_EQ(Text(), kTwo.substr(kTwo.find(u"\r\n(MORVA TEXT 2)")));
  EXPECT_EQ(platform::RowCount(kIdFeatureList), 1);
  headless::EditorUndo(kIdEditor);
  EXPECT_EQ(Text(), kTwo);
}

int textChanges = 0;
int pathBuilds = 0;

// Each operation, and its undo, is one change of the program.
TEST_F(FeatureOps, TellEachChangeOnce) {
  Load(kTwo);
  hooks.textChanged = [] { ++textChanges; };
  hooks.rebuildToolpath = [] { ++pathBuilds; };
  const auto once = [](int builds, auto act) {
    textChanges = pathBuilds = 0;
    const std::uint32_t before = ActiveTab()->save.changes;
    act();
    EXPECT_EQ(textChanges, 1);
    EXPECT_EQ(pathBuilds, builds);
    EXPECT_EQ(ActiveTab()->save.changes, before + 1);
    EXPECT_TRUE(platform::TimerRuns(platform::kMainWindow, kTimerAutosave));
    EXPECT_TRUE(platform::TimerRuns(platform::kMainWindow, kTimerText));
    headless::Advance(3000);
  };
  const auto undo = [] { RouteCommand(kIdFeatureUndo, platform::kNotifyClick); };
  Select(0);
  once(1, [] {
    headless::QueueAnswer(platform::BoxAnswer::Yes);
    headless::Click(kIdFeatureDelete);
  });
  once(1, undo);
  ASSERT_EQ(Text(), kTwo);
  Select(0);
  once(1, [] { headless::Click(kIdFeatureInclude); });
  once(1, undo);
  Select(0);
  once(0, [] { EXPECT_EQ(RenameFeature(u"Other"), RenameAnswer::Done); });
  once(0, [] { headless::Click(kIdFeatureNew); });
}

TEST_F(FeatureOps, DeletesNothingFromAProgramThatCameUpBehindTheQuestion) {
  Load(kTwo);
  Select(0);
  headless::WhileOpen([] { SwitchTab(OpenTab(u"", kTwo, u"received")); });
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdFeatureDelete);
  EXPECT_EQ(app.activeTab, 1);
  EXPECT_EQ(Text(), kTwo);
  SwitchTab(0);
  EXPECT_EQ(Text(), kTwo);
}

// The list follows 60 ms behind the switch: until then its row is one of the other program's.
TEST_F(FeatureOps, DeletesNothingByTheRowOfTheProgramThatWasShownBefore) {
  Load(kTwo);
  Select(1);
  SwitchTab(OpenTab(u"", kTwo, u"received"));
  ASSERT_EQ(platform::SelectedRow(kIdFeatureList), 1);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdFeatureDelete);
  EXPECT_EQ(Text(), kTwo);
  headless::Advance(100);
  Select(1);
  headless::Click(kIdFeatureDelete);
  EXPECT_EQ(Text().find(u"Second"), std::u16string::npos);
}

TEST_F(FeatureOps, HidesNothingInAProgramThatCameUpBehindTheMenu) {
  Load(kTwo);
  Select(0);
  headless::WhileOpen([] {
    SwitchTab(OpenTab(u"", kTwo, u"received"));
    headless::Advance(100);
  });
  headless::QueuePick(kIdFeatureHideItem);
  ShowFeatureMenu(10, 10);
  EXPECT_EQ(app.activeTab, 1);
  EXPECT_EQ(tabs[1].hiddenIds[0], 0);
  EXPECT_EQ(tabs[0].hiddenIds[0], 0);
}

TEST_F(FeatureOps, DoesNotDeleteALockedBlock) {
  Load(kTwo);
  Select(0);
  headless::Click(kIdFeatureLock);
  headless::TakeBoxes();
  headless::Click(kIdFeatureDelete);
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_EQ(Text(), kTwo);
}

TEST_F(FeatureOps, ReservesANewBlockBehindTheSelectedOne) {
  Load(kTwo);
  Select(0);
  headless::Click(kIdFeatureNew);
  const std::u16string wanted =
      u"(MORVA TEXT 1)\r\n(MORVA NAME First)\r\nG0 X1\r\n(MORVA END 1)"
      u"\r\n(MORVA TEXT 3)\r\n(MORVA NAME User code)\r\n\r\n(MORVA END 3)\r\n"
      u"\r\n(MORVA TEXT 2)\r\n(MORVA NAME Second)\r\nG1 X2\r\n(MORVA END 2)\r\n";
  EXPECT_EQ(Text(), wanted);
  EXPECT_EQ(platform::TextOf(kIdStatusLine),
            u"New user-code feature reserved here. Paste or type at the cursor.");
  headless::EditorInsert(kIdEditor, u"M8");
  EXPECT_NE(Text().find(u"(MORVA NAME User code)\r\nM8\r\n(MORVA END 3)"), std::u16string::npos);
}

// One block of code that leaves the file so many bytes to its limit.
std::u16string ProgramWithRoomFor(std::size_t bytes) {
  const std::u16string head = u"(MORVA TEXT 1)\r\n(MORVA NAME First)\r\n";
  const std::u16string end = u"(MORVA END 1)";
  const std::u16string line = u"(" + std::u16string(96, u'X') + u")\r\n";
  const std::size_t most = kMaxReadBytes - bytes - end.size();
  std::u16string text = head;
  while (text.size() + line.size() <= most) text += line;
  text.insert(head.size(), most - text.size(), u' ');
  return text + end;
}

// A new block of two markers, a name and an empty line takes 61 bytes with the lines around it.
TEST_F(FeatureOps, ReservesNoBlockThatTheProgramHasNoRoomFor) {
  const std::u16string full = ProgramWithRoomFor(60);
  Load(full);
  Select(0);
  headless::TakeBoxes();
  headless::Click(kIdFeatureNew);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_NE(boxes[0].text.find(u"larger than 33554432 bytes"), boxes[0].text.npos);
  EXPECT_TRUE(Text() == full);
  EXPECT_EQ(platform::RowCount(kIdFeatureList), 1);
}

TEST_F(FeatureOps, GivesNoNameThatTheProgramHasNoRoomFor) {
  // Two bytes of it are the end of the last line, and each character is counted as two.
  const std::u16string full = ProgramWithRoomFor(5);
  Load(full);
  Select(0);
  headless::TakeBoxes();
  EXPECT_EQ(RenameFeature(u"First12"), RenameAnswer::NoRoom);
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
  EXPECT_TRUE(Text() == full);
  EXPECT_EQ(RenameFeature(u"First1"), RenameAnswer::Done);
}

std::u16string ProgramOfBlocks(int count) {
  std::u16string text;
  for (int id = 1; id <= count; ++id) {
    const std::u16string number = IntegerText(id);
    text += u"(MORVA TEXT " + number + u")\r\n(MORVA NAME Cut)\r\nG0 X1\r\n(MORVA END " + number +
            u")\r\n";
  }
  return text;
}

TEST_F(FeatureOps, ReservesNoBlockThatTheListHasNoRowFor) {
  const std::u16string full = ProgramOfBlocks(kMaxFeatures);
  Load(full);
  Select(0);
  headless::TakeBoxes();
  ShowStatus(u"before");
  headless::Click(kIdFeatureNew);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text, u"This program already has 128 editable blocks. Use another document.");
  EXPECT_TRUE(Text() == full);
  EXPECT_EQ(platform::TextOf(kIdStatusLine), u"before");
}

TEST_F(FeatureOps, ShowsTheRowOfTheLastBlockThatTheListTakes) {
  Load(ProgramOfBlocks(kMaxFeatures - 1));
  Select(0);
  headless::Click(kIdFeatureNew);
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_EQ(platform::RowCount(kIdFeatureList), kMaxFeatures);
  EXPECT_EQ(platform::SelectedRow(kIdFeatureList), 1);
}

TEST_F(FeatureOps, ExcludesCodeAndIncludesItAgainByteForByte) {
  Load(kTwo);
  Select(1);
  headless::Click(kIdFeatureInclude);
  EXPECT_EQ(Text(),
            u"(MORVA TEXT 1)\r\n(MORVA NAME First)\r\nG0 X1\r\n(MORVA END 1)\r\n"
            u"(MORVA TEXT 2)\r\n(MORVA NAME Second)\r\n(MORVA DISABLED 1)\r\n(MORVA END 2)\r\n");
  EXPECT_EQ(platform::TextOf(kIdFeatureInclude), u"Include code: OFF");
  EXPECT_TRUE(FeatureRowExcluded(1));
  // Its moves are no part of the path, but the view still has them apart.
  EXPECT_EQ(path.count, 2);
  EXPECT_EQ(ghostPath.count, 2);
  headless::Click(kIdFeatureInclude);
  EXPECT_EQ(Text(), kTwo);
  EXPECT_EQ(platform::TextOf(kIdFeatureInclude), u"Include code: ON");
}

// What is typed behind the line that stands for the stored code is in the program.
TEST_F(FeatureOps, SaysThatAnExcludedBlockHasCodeOfItsOwnAndKeepsItOnIncluding) {
  Load(kTwo);
  Select(1);
  headless::Click(kIdFeatureInclude);
  ASSERT_EQ(platform::TextOf(kIdFeatureInclude), u"Include code: OFF");
  const std::int32_t behind = static_cast<std::int32_t>(Text().find(u"(MORVA END 2)"));
  const int at = MapTextOffset(Text(), behind);
  headless::EditorSelect(kIdEditor, at, at);
  headless::EditorInsert(kIdEditor, u"G1 Y5\r\n");
  headless::Advance(200);
  EXPECT_EQ(platform::TextOf(kIdFeatureInclude), u"Include code: OFF, has code");
  EXPECT_EQ(Row(1), u"#2  Second [has code]");
  EXPECT_TRUE(FeatureRowExcluded(1));
  EXPECT_TRUE(FeatureRowHasLiveCode(1));
  // The path shows it with the program, the stored code apart.
  headless::Click(kIdPath);
  EXPECT_EQ(path.points[path.count - 1].y, 5.0);
  EXPECT_EQ(ghostPath.count, 2);
  const std::u16string before = Text();
  headless::Click(kIdFeatureInclude);
  std::u16string wanted = kTwo;
  wanted.insert(wanted.find(u"(MORVA END 2)"), u"G1 Y5\r\n");
  EXPECT_EQ(Text(), wanted);
  EXPECT_EQ(platform::TextOf(kIdFeatureInclude), u"Include code: ON");
  EXPECT_EQ(Row(1), u"#2  Second");
  // One step back, and out again as a whole.
  headless::EditorUndo(kIdEditor);
  EXPECT_EQ(Text(), before);
  platform::RedoEditor(kIdEditor);
  headless::Advance(200);
  headless::Click(kIdFeatureInclude);
  EXPECT_EQ(platform::TextOf(kIdFeatureInclude), u"Include code: OFF");
  headless::Click(kIdFeatureInclude);
  EXPECT_EQ(Text(), wanted);
}

TEST_F(FeatureOps, CodeTypedInFrontOfTheStoredCodeStaysThereToo) {
  Load(kTwo);
  Select(1);
  headless::Click(kIdFeatureInclude);
  const std::int32_t line = static_cast<std::int32_t>(Text().find(u"(MORVA DISABLED 1)"));
  const int at = MapTextOffset(Text(), line);
  headless::EditorSelect(kIdEditor, at, at);
  headless::EditorInsert(kIdEditor, u"M8\r\n");
  headless::Advance(200);
  EXPECT_EQ(platform::TextOf(kIdFeatureInclude), u"Include code: OFF, has code");
  headless::Click(kIdFeatureInclude);
  std::u16string wanted = kTwo;
  wanted.insert(wanted.find(u"G1 X2"), u"M8\r\n");
  EXPECT_EQ(Text(), wanted);
}

TEST_F(FeatureOps, DeletingAnExcludedBlockWithCodeIsUndoneWithBoth) {
  Load(kTwo);
  Select(1);
  headless::Click(kIdFeatureInclude);
  std::u16string text = Text();
  const std::int32_t behind = static_cast<std::int32_t>(text.find(u"(MORVA END 2)"));
  headless::EditorSelect(kIdEditor, MapTextOffset(text, behind), MapTextOffset(text, behind));
  headless::EditorInsert(kIdEditor, u"M8\r\n");
  headless::Advance(200);
  text = Text();
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdFeatureDelete);
  EXPECT_EQ(Text().find(u"M8"), std::u16string::npos);
  headless::EditorUndo(kIdEditor);
  EXPECT_EQ(Text(), text);
  headless::Advance(200);
  Select(1);
  headless::Click(kIdFeatureInclude);
  EXPECT_NE(Text().find(u"G1 X2\r\nM8\r\n(MORVA END 2)"), std::u16string::npos);
}

TEST_F(FeatureOps, SaysThatNoFurtherCodeCanBeTakenOut) {
  Load(kTwo);
  Select(1);
  DisabledCodeEntry*& list = ActiveTab()->disabledCode;
  for (int i = 1; i <= kMaxDisabledEntries; ++i) ASSERT_EQ(AddDisabledCode(list, u""), i);
  for (const bool words : {false, true}) {
    SetWordsView(words);
    ShowFeatureHint(u"");
    headless::Click(kIdFeatureInclude);
    EXPECT_EQ(Text(), kTwo) << words;
    EXPECT_EQ(platform::TextOf(kIdFeatureInclude), u"Include code: ON");
    EXPECT_EQ(Hint(), u"Disabled code storage is full. No code was changed.");
  }
}

TEST_F(FeatureOps, SaysThatCodeIsTooLongToBeTakenOut) {
  std::u16string code(kMaxDisabledUnits + 1, u'G');
  for (std::size_t i = 1; i < code.size(); i += 100) code[i] = u'\n';
  const std::u16string text = u"(MORVA TEXT 1)\r\n" + code + u"\r\n(MORVA END 1)\r\n";
  Load(text);
  const std::u16string before = Text();
  Select(0);
  headless::Click(kIdFeatureInclude);
  EXPECT_EQ(Text(), before);
  EXPECT_EQ(platform::TextOf(kIdFeatureInclude), u"Include code: ON");
  EXPECT_EQ(Hint(), u"This code is longer than 8,000,000 characters and cannot be excluded.");
}

// The program was copied without the file of its excluded code.
TEST_F(FeatureOps, TakesNoNumberThatTheTextNamesAlready) {
  Load(
      u"(MORVA TEXT 1)\r\n(MORVA DISABLED 1)\r\n(MORVA END 1)\r\n"
      u"(MORVA TEXT 2)\r\nG1 X2\r\n(MORVA END 2)\r\n");
  Select(1);
  headless::Click(kIdFeatureInclude);
  EXPECT_NE(Text().find(u"(MORVA DISABLED 2)\r\n(MORVA END 2)"), std::u16string::npos);
  Select(0);
  headless::Click(kIdFeatureInclude);
  EXPECT_EQ(Hint(), u"Disabled code storage is missing. Restore this program's .features file.");
  EXPECT_EQ(Text().find(u"G1 X2"), std::u16string::npos);
}

// The block comes from another program, where the number stands for other code.
TEST_F(FeatureOps, AsksBeforeAPastedBlockTakesTheCodeOfAnotherOne) {
  Load(kTwo);
  Select(1);
  headless::Click(kIdFeatureInclude);
  const int end = platform::EditorLength(kIdEditor);
  headless::EditorSelect(kIdEditor, end, end);
  headless::EditorInsert(kIdEditor, u"(MORVA TEXT 9)\r\n(MORVA DISABLED 1)\r\n(MORVA END 9)\r\n");
  headless::Advance(200);
  const std::u16string before = Text();
  headless::TakeBoxes();
  Select(2);
  headless::QueueAnswer(platform::BoxAnswer::No);
  headless::Click(kIdFeatureInclude);
  const std::vector<headless::BoxRecord> boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_NE(boxes[0].text.find(u"G1 X2"), std::u16string::npos);
  EXPECT_EQ(Text(), before);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdFeatureInclude);
  EXPECT_NE(Text().find(u"(MORVA TEXT 9)\r\nG1 X2\r\n(MORVA END 9)"), std::u16string::npos);
  // Its own block gets it without a question.
  headless::TakeBoxes();
  Select(1);
  headless::Click(kIdFeatureInclude);
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_NE(Text().find(u"G1 X2\r\n(MORVA END 2)"), std::u16string::npos);
}

TEST_F(FeatureOps, UndoAfterExcludeLeavesAnUnusedEntryThatIsSavedAndDoesNoHarm) {
  WriteFile("part.NC", "G0 X1\r\n");
  Open("part.NC");
  headless::Advance(900);
  const std::u16string before = Text();
  const auto included = [&] {
    return platform::TextOf(kIdFeatureInclude) == u"Include code: ON" && Text() == before;
  };
  Select(0);
  headless::Click(kIdFeatureInclude);
  headless::EditorUndo(kIdEditor);
  EXPECT_EQ(Text(), before);
  ASSERT_NE(ActiveTab()->disabledCode, nullptr);
  EXPECT_EQ(ActiveTab()->disabledCode->text, u"G0 X1\r\n");
  headless::Advance(900);
  // Magic, a count of one, id 1, seven units: "G0 X1" and its line end.
  const std::string stored("MVC1\1\0\0\0\1\0\0\0\7\0\0\0G\0000\0 \0X\0001\0\r\0\n\0", 30);
  EXPECT_EQ(ReadFile("part.NC.features"), stored);
  headless::Click(kIdClose);
  Open("part.NC");
  headless::Advance(900);
  Select(0);
  EXPECT_TRUE(included());
  // The next exclusion has a number of its own and finds its own code again.
  headless::Click(kIdFeatureInclude);
  EXPECT_NE(Text().find(u"(MORVA DISABLED 2)\r\n"), std::u16string::npos);
  headless::Click(kIdFeatureInclude);
  EXPECT_TRUE(included());
}

// The words of the include key are the block's state, whoever changed it.
TEST_F(FeatureOps, UndoAndAnotherProgramTakeTheIncludeKeyAlong) {
  Load(kTwo);
  Select(1);
  headless::Click(kIdFeatureInclude);
  ASSERT_EQ(platform::TextOf(kIdFeatureInclude), u"Include code: OFF");
  headless::EditorUndo(kIdEditor);
  headless::Advance(200);
  EXPECT_EQ(platform::TextOf(kIdFeatureInclude), u"Include code: ON");
  headless::Click(kIdFeatureInclude);
  ASSERT_EQ(platform::TextOf(kIdFeatureInclude), u"Include code: OFF");
  SwitchTab(OpenTab(u"", u"(MORVA TEXT 2)\r\n(MORVA NAME Other)\r\nM8\r\n(MORVA END 2)", u"O"));
  headless::Advance(200);
  // The block of the same number is another one: nothing is selected that DELETE would act on.
  EXPECT_EQ(platform::SelectedRow(kIdFeatureList), -1);
  EXPECT_EQ(platform::TextOf(kIdFeatureInclude), u"Include code: ON");
  EXPECT_EQ(platform::TextOf(kIdFeatureName), u"");
}

// Otherwise RENAME would give the new block the name of the one that was selected before it.
TEST_F(FeatureOps, AnInsertedBlockTakesTheNameBoxAlong) {
  Load(kTwo);
  Select(1);
  headless::Click(kIdFeatureInclude);
  support::TakeKind(kKindShape, [](FeatureSettings& record) {
    record = SlotSettings(u"");
    return true;
  });
  ASSERT_TRUE(InsertFeatureBlock(kKindShape, u"G1 X1\r\n"));
  EXPECT_EQ(SelectedFeatureId(), 3);
  EXPECT_EQ(platform::TextOf(kIdFeatureName), u"Shape");
  EXPECT_EQ(platform::TextOf(kIdFeatureInclude), u"Include code: ON");
}

TEST_F(FeatureOps, PlaybackTakesTheNameBoxAlong) {
  Load(kTwo);
  Select(0);
  headless::Click(kIdPath);
  HighlightSourceLine(6);
  ASSERT_EQ(platform::SelectedRow(kIdFeatureList), 1);
  EXPECT_EQ(platform::TextOf(kIdFeatureName), u"Second");
  headless::Click(kIdFeatureRename);
  EXPECT_EQ(Text(), kTwo);
}

TEST_F(FeatureOps, ARefreshLeavesTheNameThatIsBeingTyped) {
  Load(kTwo);
  Select(0);
  headless::TypeInto(kIdFeatureName, u"Half a na");
  platform::ReplaceRange(kIdEditor, {0, 0}, u"%\r\n");
  headless::Advance(200);
  EXPECT_EQ(platform::TextOf(kIdFeatureName), u"Half a na");
  // A block that is gone takes its name along.
  headless::EditorSetAll(kIdEditor, u"%");
  headless::Advance(200);
  EXPECT_EQ(platform::TextOf(kIdFeatureName), u"");
}

TEST_F(FeatureOps, TellsOfMissingStorageAfterTheCompanionIsGone) {
  WriteFile("part.NC", "G0 X1\r\n");
  Open("part.NC");
  headless::Advance(900);
  Select(0);
  headless::Click(kIdFeatureInclude);
  headless::Advance(900);
  EXPECT_GT(ReadFile("part.NC.features").size(), 8u);
  headless::Click(kIdClose);
  std::filesystem::remove(home_ / "part.NC.features");
  Open("part.NC");
  headless::Advance(200);
  Select(0);
  EXPECT_EQ(platform::TextOf(kIdFeatureInclude), u"Include code: OFF");
  const std::u16string before = Text();
  headless::Click(kIdFeatureInclude);
  EXPECT_EQ(Hint(), u"Disabled code storage is missing. Restore this program's .features file.");
  EXPECT_EQ(Text(), before);
}

TEST_F(FeatureOps, RefusesToEditCopiedBlocksButStillSelectsRenamesAndDeletesTheFirst) {
  const std::u16string block = SettingsBlockText(4, u"", SlotSettings(u"G1 X1\r\n"), u"G1 X1\r\n");
  const std::u16string both = block + u"\r\n" + block + u"\r\n";
  for (const int row : {0, 1}) {
    Load(both);
    ASSERT_EQ(platform::RowCount(kIdFeatureList), 2);
    Select(row);
    EXPECT_EQ(Hint(), u"Selected block. Edit Settings reopens its builder.");
    EXPECT_EQ(platform::EditorSelection(kIdEditor).from, 0);
    headless::DoubleClickRow(kIdFeatureList, row);
    EXPECT_EQ(Hint(), u"Duplicate IDs: edit copied blocks as text.");
    // Inclusion wants exactly one block with the number and says nothing.
    headless::Click(kIdFeatureInclude);
    EXPECT_EQ(Text(), both);
    EXPECT_EQ(RenameFeature(u"Copy"), RenameAnswer::Done);
    EXPECT_EQ(Row(0), u"#1  Copy");
    EXPECT_EQ(Row(1), u"#2  Shape");
    headless::QueueAnswer(platform::BoxAnswer::Yes);
    headless::Click(kIdFeatureDelete);
    EXPECT_EQ(Text(), u"\r\n" + block + u"\r\n");
  }
}

TEST_F(FeatureOps, EditsUserCodeInPlace) {
  Load(kTwo);
  Select(0);
  headless::Click(kIdFeatureEdit);
  EXPECT_EQ(Hint(), u"User code: edit the selected block directly. Rename below.");
  EXPECT_EQ(platform::FocusedId(), kIdEditor);
}

std::vector<FeatureSettings> opened;
bool Opener(const FeatureSettings& record) {
  opened.push_back(record);
  return true;
}

TEST_F(FeatureOps, ABuilderOfAnUnknownKindStopsTheProgram) {
  for (const int kind : {-1, 0, 8}) {
    EXPECT_EXIT(SetBuilderOpener(kind, Opener), testing::ExitedWithCode(kStopExitCode),
                "builder has the unknown kind");
  }
}

TEST_F(FeatureOps, ASecondBuilderOfAKindStopsTheProgram) {
  const BuilderOpener other = [](const FeatureSettings&) { return false; };
  support::TakeKind(kKindShape, Opener);
  SetBuilderOpener(kKindShape, Opener);  // the same once more
  EXPECT_EXIT(SetBuilderOpener(kKindShape, other), testing::ExitedWithCode(kStopExitCode),
              "Two builders have kind 1");
}

TEST_F(FeatureOps, ReopensABlockWhoseCodeWasOnlyReformatted) {
  opened.clear();
  support::TakeKind(kKindShape, Opener);
  const std::u16string code = u"G1 X1 Y2\r\n";
  Load(SettingsBlockText(1, u"", SlotSettings(code), u"G1  X1Y2\r\n\r\n"));
  Select(0);
  headless::Click(kIdFeatureEdit);
  ASSERT_EQ(opened.size(), 1u);
  EXPECT_EQ(opened[0].a, 6);
  EXPECT_EQ(editLink.kind, kKindShape);
  EXPECT_EQ(editLink.id, 1);
  EXPECT_EQ(Hint(), u"Editing existing block. Update replaces it; New unlinks.");
}

TEST_F(FeatureOps, RefusesABlockWithAChangedNumber) {
  opened.clear();
  support::TakeKind(kKindShape, Opener);
  Load(SettingsBlockText(1, u"", SlotSettings(u"G1 X1\r\n"), u"G1 X2\r\n"));
  Select(0);
  headless::TakeBoxes();
  headless::Click(kIdFeatureEdit);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Shape has manual changes");
  EXPECT_EQ(boxes[0].text,
            u"This block has manual G-code edits. Its saved settings no longer describe that "
            u"code. Keep editing it as text, or create a new shape; the existing block is "
            u"preserved.");
  EXPECT_TRUE(opened.empty());
}

TEST_F(FeatureOps, RefusesABlockWithCodeOnTheLinesOfItsMarkers) {
  support::TakeKind(kKindShape, Opener);
  const std::u16string block = SettingsBlockText(1, u"n", SlotSettings(u"G1 X1\r\n"), u"G1 X1\r\n");
  const auto with = [&block](std::u16string_view before, std::u16string_view code) {
    std::u16string text = block;
    return text.insert(text.find(before), code);
  };
  const struct {
    std::u16string text;
    bool edited;
  } cases[] = {{block, false},
               {with(u"\r\n(MORVA NAME", u"G0 X9"), true},
               {with(u"\r\n(MORVA NAME", u" (note)"), false},
               {with(u"\r\n(MORVA DATA", u"G0 X9"), true},
               {with(u"(MORVA END 1)", u"(MORVA END 77)\r\nG0 X9\r\n"), true}};
  for (const auto& each : cases) {
    opened.clear();
    Load(each.text);
    Select(0);
    headless::TakeBoxes();
    headless::Click(kIdFeatureEdit);
    EXPECT_EQ(headless::TakeBoxes().size(), each.edited ? 1u : 0u);
    EXPECT_EQ(opened.size(), each.edited ? 0u : 1u);
    DropEditLink();
  }
}

TEST_F(FeatureOps, RefusesAnExcludedBlockThatHasCodeOfItsOwn) {
  opened.clear();
  support::TakeKind(kKindShape, Opener);
  const std::u16string code = u"G1 X1\r\n";
  ASSERT_EQ(AddDisabledCode(ActiveTab()->disabledCode, code), 1);
  for (const bool live : {false, true}) {
    Load(SettingsBlockText(1, u"", SlotSettings(code),
                           live ? u"(MORVA DISABLED 1)\r\nG1 X1\r\n" : u"(MORVA DISABLED 1)\r\n"));
    Select(0);
    headless::TakeBoxes();
    headless::Click(kIdFeatureEdit);
    EXPECT_EQ(headless::TakeBoxes().size(), live ? 1u : 0u);
    EXPECT_EQ(opened.size(), 1u);
    DropEditLink();
  }
}

// An excluded block without its stored code counts as edited: nobody knows what it was.
TEST_F(FeatureOps, RefusesAnExcludedBlockWhoseStoredCodeIsMissing) {
  opened.clear();
  support::TakeKind(kKindShape, Opener);
  Load(SettingsBlockText(1, u"", SlotSettings(u""), u"(MORVA DISABLED 9)\r\n"));
  Select(0);
  headless::TakeBoxes();
  headless::Click(kIdFeatureEdit);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Shape has manual changes");
  EXPECT_TRUE(opened.empty());
}

TEST_F(FeatureOps, ABuilderThatDoesNotOpenLeavesNoBlockUnderEdit) {
  support::TakeKind(kKindShape, [](const FeatureSettings&) { return false; });
  Load(SettingsBlockText(1, u"", SlotSettings(u"G1 X1\r\n"), u"G1 X1\r\n"));
  Select(0);
  headless::Click(kIdFeatureEdit);
  EXPECT_EQ(editLink.kind, 0);
  EXPECT_EQ(editLink.tab, -1);
}

TEST_F(FeatureOps, EveryOperationDropsTheBlockUnderEdit) {
  support::TakeKind(kKindShape, Opener);
  const std::u16string block = SettingsBlockText(1, u"", SlotSettings(u"G1 X1\r\n"), u"G1 X1\r\n");
  const auto underEdit = [&] {
    Load(block);
    Select(0);
    headless::Click(kIdFeatureEdit);
    return editLink.kind == kKindShape;
  };
  ASSERT_TRUE(underEdit());
  RenameFeature(u"Other");
  EXPECT_EQ(editLink.kind, 0);
  ASSERT_TRUE(underEdit());
  headless::Click(kIdFeatureInclude);
  EXPECT_EQ(editLink.kind, 0);
  ASSERT_TRUE(underEdit());
  headless::Click(kIdFeatureNew);
  EXPECT_EQ(editLink.kind, 0);
  ASSERT_TRUE(underEdit());
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdFeatureDelete);
  EXPECT_EQ(editLink.kind, 0);
}

TEST_F(FeatureOps, ReopensAnExcludedBlockByItsStoredCode) {
  opened.clear();
  support::TakeKind(kKindShape, Opener);
  Load(SettingsBlockText(1, u"", SlotSettings(u"G1 X1\r\n"), u"G1 X1\r\n"));
  Select(0);
  headless::Click(kIdFeatureInclude);
  headless::Click(kIdFeatureEdit);
  EXPECT_EQ(opened.size(), 1u);
}

TEST_F(FeatureOps, RestoresAProjectShapeOrSaysThatTheLibraryIsFull) {
  opened.clear();
  support::TakeKind(kKindShape, Opener);
  FeatureSettings record = SlotSettings(u"G1 X1\r\n");
  record.a = -1;
  record.itemCount = 1;
  Load(SettingsBlockText(1, u"", record, u"G1 X1\r\n"));
  Select(0);
  SetShapeRecovery([](const FeatureSettings&) { return -1; });
  headless::Click(kIdFeatureEdit);
  EXPECT_EQ(Hint(), u"Shape library full; cannot restore project shape.");
  SetShapeRecovery([](const FeatureSettings&) { return 5; });
  headless::Click(kIdFeatureEdit);
  ASSERT_EQ(opened.size(), 1u);
  EXPECT_EQ(opened[0].a, 12);
}

TEST_F(FeatureOps, RefusesToEditALockedBlockAndLeavesTheRestFree) {
  Load(kTwo);
  Select(0);
  headless::Click(kIdFeatureLock);
  headless::Click(kIdFeatureEdit);
  EXPECT_EQ(Hint(), u"Feature settings are locked. Right-click to unlock.");
  headless::Click(kIdFeatureHide);
  EXPECT_EQ(Row(0), u"#1  First [hidden] [locked]");
  Select(1);
  Select(0);
  EXPECT_EQ(Hint(), u"Selected block. Edit Settings reopens its builder.");
  EXPECT_EQ(platform::EditorSelection(kIdEditor).from, 0);
  headless::EditorSelect(kIdEditor, 0, 0);
  headless::EditorInsert(kIdEditor, u" ");
  EXPECT_EQ(Text()[0], u' ');
}

// The row's place of every bad thing in the text: the words are told and the text stays.
TEST_F(FeatureOps, ADamagedBlockIsListedAsUserCodeWithItsMarkersInside) {
  std::u16string block = SettingsBlockText(6, u"", SlotSettings(u"G1 X1\r\n"), u"G1 X1\r\n");
  block.replace(block.find(u"(MORVA DATA ") + 12, 1, u"x");
  Load(block);
  ASSERT_EQ(platform::RowCount(kIdFeatureList), 1);
  EXPECT_EQ(Row(0), u"#1  User code");
  EXPECT_EQ(Text(), u"(MORVA TEXT 7)\r\n(MORVA NAME User code)\r\n" + block + u"\r\n(MORVA END 7)");
  Select(0);
  headless::Click(kIdFeatureEdit);
  EXPECT_EQ(Hint(), u"User code: edit the selected block directly. Rename below.");
}

TEST_F(FeatureOps, SayWhenThereAreMoreSectionsThanTheListHolds) {
  std::u16string text;
  for (int i = 0; i < 129; ++i) {
    const std::string digits = std::to_string(i + 1);
    const std::u16string id(digits.begin(), digits.end());
    text += u"(MORVA TEXT " + id + u")\r\nM8\r\n(MORVA END " + id + u")\r\n";
  }
  Load(text);
  EXPECT_EQ(platform::RowCount(kIdFeatureList), 128);
  EXPECT_EQ(Hint(), u"Feature browser limit: 128 sections. Split this program to index more.");
  EXPECT_EQ(Text(), text);
}

TEST_F(FeatureOps, SelectingARowLeavesTheReviewAndKeepsTheKeyboardInTheList) {
  Load(kTwo);
  headless::Click(kIdCompareSecond);
  ASSERT_TRUE(app.compareActive);
  ASSERT_TRUE(headless::Focus(kIdFeatureList));
  platform::KeyEvent down;
  down.key = platform::kKeyDown;
  headless::PressKey(down);
  EXPECT_FALSE(app.compareActive);
  EXPECT_TRUE(platform::IsVisible(kIdEditor));
  EXPECT_EQ(platform::FocusedId(), kIdFeatureList);
  EXPECT_EQ(platform::EditorSelection(kIdEditor).to, 15 + 19 + 6 + 13);
}

// The words view has the same lines; what is selected there is the block's.
TEST_F(FeatureOps, SelectsAndEditsInTheCommandWordsView) {
  Load(kTwo);
  headless::Click(kIdCommandWords);
  headless::Focus(kIdFeatureList);
  Select(1);
  const platform::EditorRange range = platform::EditorSelection(kIdWordsEditor);
  EXPECT_EQ(platform::EditorLineOf(kIdWordsEditor, range.from), 4);
  EXPECT_EQ(platform::EditorLineStart(kIdWordsEditor, 4), range.from);
  EXPECT_EQ(platform::EditorLineOf(kIdWordsEditor, range.to), 7);
  EXPECT_EQ(range.to, platform::EditorLineStart(kIdWordsEditor, 7) + 13);
  headless::Click(kIdFeatureEdit);
  EXPECT_EQ(platform::FocusedId(), kIdWordsEditor);
}

TEST_F(FeatureOps, ARefusalUnderTheCommandWordsViewLeavesTheCodeAsItIs) {
  const std::u16string text =
      u"(MORVA TEXT 1)\r\nG0 X1\r\n(MORVA END 1)\r\n(MORVA TEXT 2)\r\n(MORVA DISABLED 9)\r\n"
      u"(MORVA END 2)\r\n";
  Load(text);
  headless::Click(kIdCommandWords);
  Select(1);
  headless::Click(kIdFeatureInclude);
  EXPECT_EQ(Hint(), u"Disabled code storage is missing. Restore this program's .features file.");
  EXPECT_EQ(Text(), text);
  // What is done is done to the code, and the view shows it.
  ASSERT_EQ(RenameFeature(u"Tap"), RenameAnswer::Done);
  EXPECT_NE(Text().find(u"(MORVA TEXT 2)\r\n(MORVA NAME Tap)\r\n(MORVA DISABLED 9)"),
            std::u16string::npos);
  EXPECT_EQ(platform::EditorText(kIdWordsEditor).find(u"(MORVA NAME Tap)"),
            platform::EditorText(kIdWordsEditor).find(u"(MORVA TEXT 2)") + 16);
}

TEST_F(FeatureOps, ExcludesDeletesAndIncludesUnderTheCommandWordsView) {
  Load(kTwo);
  headless::Click(kIdCommandWords);
  Select(1);
  headless::Click(kIdFeatureInclude);
  EXPECT_NE(Text().find(u"(MORVA NAME Second)\r\n(MORVA DISABLED 1)\r\n(MORVA END 2)"),
            std::u16string::npos);
  EXPECT_NE(platform::EditorText(kIdWordsEditor).find(u"(MORVA DISABLED 1)"),
            std::u16string_view::npos);
  headless::Click(kIdFeatureInclude);
  EXPECT_EQ(Text(), kTwo);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdFeatureDelete);
  EXPECT_EQ(Text().find(u"(MORVA TEXT 2)"), std::u16string::npos);
  EXPECT_EQ(platform::EditorText(kIdWordsEditor).find(u"(MORVA TEXT 2)"),
            std::u16string_view::npos);
  EXPECT_TRUE(app.commandWordsActive);
}

TEST_F(FeatureOps, ReservesANewBlockInTheCommandWordsViewWithTheCaretInside) {
  Load(kTwo);
  headless::Click(kIdCommandWords);
  Select(0);
  headless::Click(kIdFeatureNew);
  EXPECT_EQ(platform::FocusedId(), kIdWordsEditor);
  // Four lines of the first block, the marker and its name lie before it.
  const int caret = platform::EditorSelection(kIdWordsEditor).to;
  EXPECT_EQ(platform::EditorLineOf(kIdWordsEditor, caret), 6);
  headless::EditorInsert(kIdWordsEditor, u"M8");
  EXPECT_NE(Text().find(u"(MORVA NAME User code)\r\nM8\r\n(MORVA END 3)"), std::u16string::npos);
}

TEST_F(FeatureOps, ReservesANewBlockBehindTheCaretsOneOrAtTheCaret) {
  Load(kTwo);
  platform::SelectRow(kIdFeatureList, -1);
  headless::EditorSelect(kIdEditor, 20, 20);
  headless::Click(kIdFeatureNew);
  EXPECT_EQ(Text().find(u"(MORVA TEXT 3)"), Text().find(u"(MORVA END 1)") + 15);
  const std::u16string apart =
      u"(MORVA TEXT 1)\r\nM8\r\n(MORVA END 1)\r\n\r\n\r\n(MORVA TEXT 2)\r\nM9\r\n(MORVA END 2)";
  Load(apart);
  platform::SelectRow(kIdFeatureList, -1);
  // 15 + 3 + 14 positions are the first block with its line end, then one empty line.
  headless::EditorSelect(kIdEditor, 33, 33);
  headless::Click(kIdFeatureNew);
  EXPECT_EQ(Text(),
            u"(MORVA TEXT 1)\r\nM8\r\n(MORVA END 1)\r\n\r\n"
            u"\r\n(MORVA TEXT 3)\r\n(MORVA NAME User code)\r\n\r\n(MORVA END 3)\r\n"
            u"\r\n(MORVA TEXT 2)\r\nM9\r\n(MORVA END 2)");
}

// A whole program in one block, as every program of other hands is, the caret at its first move.
struct NewFeatureBehindEnd : FeatureOps {
  const std::u16string head_ = u"(MORVA TEXT 1)\r\n(MORVA NAME Job)\r\nO1\r\n";
  const std::u16string tail_ = u"G0 X1\r\nM30\r\n(MORVA END ";
  const std::u16string empty_ =
      u"(MORVA TEXT 2)\r\n(MORVA NAME User code)\r\n\r\n(MORVA END 2)\r\n";
  void SetUp() override {
    FeatureOps::SetUp();
    Start();
  }
  void Start() {
    Load(head_ + tail_ + u"1)\r\n");
    const int caret = MapTextOffset(Text(), static_cast<std::int32_t>(head_.size()));
    headless::EditorSelect(kIdEditor, caret, caret);
    headless::TakeBoxes();
  }
};

TEST_F(NewFeatureBehindEnd, AsksAndLeavesTheProgramAsItIsAtCancel) {
  headless::QueueAnswer(platform::BoxAnswer::Cancel);
  headless::Click(kIdFeatureNew);
  EXPECT_EQ(Text(), head_ + tail_ + u"1)\r\n");
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text,
            u"The code would stand behind M30, where it is never run.\r\n\r\n"
            u"Yes: split the user code at line 4 and insert the code at the caret.\r\n"
            u"No: insert it behind M30.\r\nCancel: insert nothing.");
}

TEST_F(NewFeatureBehindEnd, PartsTheCodeAtTheCaretAtYesInOneStep) {
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdFeatureNew);
  EXPECT_EQ(Text(), head_ + u"(MORVA END 1)\r\n" + empty_ +
                        u"(MORVA TEXT 3)\r\n(MORVA NAME Job)\r\n" + tail_ + u"3)\r\n");
  EXPECT_EQ(SelectedFeatureId(), 2);
  headless::EditorInsert(kIdEditor, u"M8");
  EXPECT_NE(Text().find(u"(MORVA NAME User code)\r\nM8\r\n(MORVA END 2)"), Text().npos);
  platform::UndoEditor(kIdEditor);
  platform::UndoEditor(kIdEditor);
  EXPECT_EQ(Text(), head_ + tail_ + u"1)\r\n");
}

TEST_F(NewFeatureBehindEnd, GoesThereAtNo) {
  headless::QueueAnswer(platform::BoxAnswer::No);
  headless::Click(kIdFeatureNew);
  EXPECT_EQ(Text(), head_ + tail_ + u"1)\r\n" + empty_ + u"\r\n");
}

TEST_F(NewFeatureBehindEnd, PartsTheCodeAtTheLineOfTheWordsView) {
  headless::Click(kIdCommandWords);
  const int start = platform::EditorLineStart(kIdWordsEditor, 3);
  headless::EditorSelect(kIdWordsEditor, start, start);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdFeatureNew);
  headless::EditorInsert(kIdWordsEditor, u"M8");
  EXPECT_NE(Text().find(u"O1\r\n(MORVA END 1)\r\n(MORVA TEXT 2)\r\n(MORVA NAME User code)\r\nM8"),
            Text().npos);
}

TEST_F(FeatureOps, HidingABlockTakesItOutOfThePath) {
  Load(kTwo);
  headless::Click(kIdPath);
  EXPECT_EQ(path.count, 3);
  Select(1);
  headless::Click(kIdFeatureHide);
  EXPECT_EQ(path.count, 2);
  headless::Click(kIdFeatureHide);
  EXPECT_EQ(path.count, 3);
}

TEST_F(FeatureOps, TheContextMenuIsolatesAndShowsAll) {
  Load(kTwo);
  headless::TakeMenus();
  headless::QueuePick(kIdFeatureIsolate);
  ASSERT_TRUE(headless::ContextMenu(kIdFeatureList, 1));
  const auto menus = headless::TakeMenus();
  ASSERT_EQ(menus.size(), 1u);
  std::vector<std::u16string> words;
  for (const auto& item : menus[0].items) words.push_back(item.id ? item.text : u"-");
  EXPECT_EQ(words, (std::vector<std::u16string>{
                       u"Edit feature", u"Toggle code inclusion", u"-",
                       u"Simulate only this feature", u"Simulate all visible features", u"-",
                       u"Hide feature", u"Show all features", u"-", u"Lock settings"}));
  EXPECT_EQ(tabs[app.activeTab].isolatedId, 2);
  EXPECT_EQ(Hint(), u"Visibility changes viewing only, never machine code.");
  headless::QueuePick(kIdFeatureLockItem);
  headless::ContextMenu(kIdFeatureList, 1);
  EXPECT_EQ(Hint(), u"Lock affects builder edits; G-code remains editable.");
  headless::QueuePick(kIdFeatureShowAll);
  headless::ContextMenu(kIdFeatureList, 1);
  EXPECT_EQ(tabs[app.activeTab].isolatedId, 0);
}

TEST_F(FeatureOps, TogglingOneIdMoreThanTheListHoldsDoesNothing) {
  ProgramTab& tab = tabs[app.activeTab];
  for (std::int32_t i = 0; i < kMaxIdList; ++i) ToggleListId(i + 1, tab.hiddenIds);
  ToggleListId(500, tab.hiddenIds);
  EXPECT_FALSE(IdListHolds(tab.hiddenIds, 500));
  ToggleListId(7, tab.hiddenIds);
  ToggleListId(500, tab.hiddenIds);
  EXPECT_TRUE(IdListHolds(tab.hiddenIds, 500));
}

}  // namespace
}  // namespace morva
