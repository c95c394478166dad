#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "app/outlets.h"
#include "platform/timer.h"
#include "support/program_maker.h"
#include "text/codetext.h"
#include "unit/documents/block_builder.h"
#include "unit/documents/blocks_stage.h"

namespace morva {
namespace {

using namespace testing_blocks;
using Texts = std::vector<std::u16string>;

struct AutoTag : BlocksStage {};
struct FeatureList : BlocksStage {};

std::vector<std::u16string> TableWords() {
  std::vector<std::u16string> words{IntegerText(features.nextId)};
  for (int i = 0; i < features.count; ++i) {
    const FeatureRecord& row = features.rows[i];
    std::u16string line = row.name;
    for (const std::int32_t number :
         {row.id, row.start, row.end, row.settings.kind, std::int32_t{row.needsMarkers},
          std::int32_t{row.holdsDisabled}}) {
      line += u" " + IntegerText(number);
    }
    words.push_back(line);
  }
  return words;
}

// Behind every edit, undo and scan of another text the table is that of the text as it stands.
TEST_F(AutoTag, ScansTheEditorAnewWheneverItIsAnotherText) {
  const std::u16string pieces[] = {UserBlock(3, u"G0"),
                                   u"G1 X2",
                                   u"(MORVA DISABLED 2)",
                                   u"\r\n",
                                   u"",
                                   SketchBlock(5, u"G1"),
                                   u"(SHAPE: A)\r\nG0",
                                   u"(MORVA END 3)"};
  reference::Dice dice{71};
  Load(u"%\r\nO1000\r\n");
  for (int round = 0; round < 400; ++round) {
    const int length = platform::EditorLength(kIdEditor);
    const int from = static_cast<int>(dice.Roll(static_cast<std::uint32_t>(length + 1)));
    const int to = std::min(length, from + static_cast<int>(dice.Roll(30)));
    switch (dice.Roll(8)) {
      case 0:
        platform::UndoEditor(kIdEditor);
        break;
      case 1:
        ScanProgramText(pieces[dice.Roll(8)]);
        break;
      case 2:
        BlocksOf(pieces[dice.Roll(8)]);
        break;
      case 3:
        ResetFeatures();
        break;
      case 4:
        Load(pieces[dice.Roll(8)] + u"\r\n" + pieces[dice.Roll(8)]);
        break;
      default:
        platform::ReplaceRange(kIdEditor, {from, to}, pieces[dice.Roll(8)]);
    }
    ScanEditorText();
    const std::vector<std::u16string> kept = TableWords();
    ScanProgramText(Text());
    ASSERT_EQ(kept, TableWords()) << round;
    if (dice.Roll(2) == 0) ScanEditorText();
  }
}

TEST_F(AutoTag, ScansATextOnceHoweverOftenItIsAsked) {
  Load(UserBlock(3, u"G0"));
  ScanEditorText();
  features.rows[0].name[0] = u'x';
  BlocksOf(u"G0");
  ScanEditorText();
  EXPECT_EQ(features.rows[0].name[0], u'x');
  platform::ReplaceRange(kIdEditor, {0, 0}, u"%");
  platform::UndoEditor(kIdEditor);
  ScanEditorText();
  EXPECT_NE(features.rows[0].name[0], u'x');
}

TEST_F(AutoTag, WrapsForeignTextInOneUserCodeBlock) {
  Load(u"%\r\nO1000 (BRACKET)\r\nG0 X1\r\nM30\r\n%\r\n");
  AutoTagBlocks();
  EXPECT_EQ(Text(),
            u"%\r\n(MORVA TEXT 1)\r\n(MORVA NAME User code)\r\nO1000 (BRACKET)\r\nG0 X1\r\nM30\r\n"
            u"(MORVA END 1)\r\n%\r\n");
}

TEST_F(AutoTag, LeavesAMarkedProgramAlone) {
  const std::u16string text = u"%\r\n" + UserBlock(4, u"G0") + u"\r\n%\r\n";
  Load(text);
  const auto revision = platform::EditorRevision(kIdEditor);
  AutoTagBlocks();
  EXPECT_EQ(Text(), text);
  EXPECT_EQ(platform::EditorRevision(kIdEditor), revision);
  EXPECT_FALSE(app.editorDirty);
}

TEST_F(AutoTag, LeavesPercentLinesAndBlanksAlone) {
  Load(u"%\r\n \r\n%\r\n");
  AutoTagBlocks();
  EXPECT_EQ(Text(), u"%\r\n \r\n%\r\n");
  EXPECT_FALSE(app.editorDirty);
}

TEST_F(AutoTag, DoesNothingMoreTheSecondTime) {
  for (const std::u16string text :
       {u"G0", u"  G0 X1", u"%O1000\r\nM30", u"\t G0\r\n%", u"(SHAPE: A)\r\nG0\r\n\r\nG1",
        u"(MORVA TEXT 1)\r\n(MORVA END 1) G0 (MORVA END 5)", u"(MORVA BEGIN 3)\r\nG0", u"% G0 %"}) {
    Load(text);
    AutoTagBlocks();
    const std::u16string once = Text();
    EXPECT_NE(once, text);
    AutoTagBlocks();
    EXPECT_EQ(Text(), once);
    for (int i = 0; i < features.count; ++i) EXPECT_FALSE(features.rows[i].needsMarkers);
  }
}

// Numbers that do not move the next free id, each behind the number that would be given out.
TEST_F(AutoTag, ComesToRestWhateverNumbersTheTextHolds) {
  for (const std::u16string& text :
       {std::u16string(u"G0 (morva end 1) G1 (morva end 2) G2 (morva end 3) (morva end 4)"),
        std::u16string(u"(SHAPE: A)\r\nG0 (morva end 2)\r\n\r\nG1 (morva end 1)"),
        UserBlock(1999999999, u"G0") + u"\r\nG1 (MORVA END 2000000000) G2",
        UserBlock(2000000000, u"G0") + UserBlock(1999999999, u"G0") + u"\r\nG1"}) {
    Load(text);
    AutoTagBlocks();
    const std::u16string once = Text();
    AutoTagBlocks();
    EXPECT_EQ(Text(), once);
    ScanProgramText(once);
    for (int i = 0; i < features.count; ++i) EXPECT_EQ(CountFeatures(features.rows[i].id), 1);
  }
}

std::u16string WithoutLineEnds(const std::u16string& text) {
  std::u16string kept;
  for (const char16_t c : text) {
    if (c != u'\r' && c != u'\n') kept += c;
  }
  return kept;
}

// Takes the two lines of a prefix and the line of the suffix out again, found by a number that
// stood nowhere before.
void TakeMarkersOut(std::u16string& text, int id) {
  const std::size_t prefix = text.find(u"(MORVA TEXT " + Digits(id) + u")\r\n(MORVA NAME ");
  ASSERT_NE(prefix, text.npos);
  const std::size_t name = text.find(u"(MORVA NAME ", prefix);
  text.erase(prefix, text.find(u"\r\n", name) + 2 - prefix);
  const std::u16string end = u"\r\n(MORVA END " + Digits(id) + u")";
  const std::size_t suffix = text.find(end);
  ASSERT_NE(suffix, text.npos);
  text.erase(suffix, end.size());
}

std::u16string RandomPieces(std::uint32_t& state) {
  static const std::u16string kPieces[] = {u"G0 X1",
                                           u"  G1 Y2",
                                           u"%",
                                           u"%O1000",
                                           u"(SHAPE: A)",
                                           u"(WIZARD: B)",
                                           u"M30",
                                           u"m30",
                                           u"\t",
                                           u" ",
                                           u"(morva end 1)",
                                           u"(MORVA END 3)",
                                           u"(x)",
                                           u"(MORVA TEXT 2)",
                                           u"(MORVA NAME n)",
                                           u"(MORVA BEGIN 4)",
                                           u"(MORVA CODE)",
                                           u"(MORVA",
                                           u"(morva end 7)",
                                           u"(Morva End 12)",
                                           UserBlock(5, u"G5"),
                                           SketchBlock(6, u"G6"),
                                           u"(MORVA DISABLED 1)"};
  static const std::u16string kEnds[] = {u"\r\n", u"\r\n", u"\r\n\r\n", u"", u" ", u"\n"};
  const auto roll = [&](std::uint32_t sides) {
    state = state * 1664525u + 1013904223u;
    return (state >> 8) % sides;
  };
  std::u16string text;
  for (std::uint32_t n = roll(14); n > 0; --n) {
    text += kPieces[roll(static_cast<std::uint32_t>(std::size(kPieces)))];
    text += kEnds[roll(static_cast<std::uint32_t>(std::size(kEnds)))];
  }
  return text;
}

TEST_F(AutoTag, RestsAfterOneRunAndLosesNoTextWhateverTheProgramHolds) {
  std::uint32_t state = 20260412;
  for (int run = 0; run < 1500 && !HasFailure(); ++run) {
    Load(RandomPieces(state));
    const std::u16string before = Text();
    ScanProgramText(before);
    std::vector<int> given;
    for (int i = 0; i < features.count; ++i) {
      if (features.rows[i].needsMarkers) given.push_back(features.rows[i].id);
    }
    AutoTagBlocks();
    const std::u16string once = Text();
    AutoTagBlocks();
    EXPECT_EQ(Text(), once) << run;
    std::u16string without = once;
    for (const int id : given) TakeMarkersOut(without, id);
    EXPECT_EQ(WithoutLineEnds(without), WithoutLineEnds(before)) << run;
  }
}

TEST_F(AutoTag, PutsThePrefixBeforeBlanksThatBeginTheLine) {
  Load(u"%\r\n \tG0 X1");
  AutoTagBlocks();
  EXPECT_EQ(Text(), u"%\r\n(MORVA TEXT 1)\r\n(MORVA NAME User code)\r\n \tG0 X1\r\n(MORVA END 1)");
}

TEST_F(AutoTag, StartsANewLineWhereSomethingPrecedes) {
  Load(u"%O1000\r\nM30");
  AutoTagBlocks();
  EXPECT_EQ(Text(),
            u"%\r\n(MORVA TEXT 1)\r\n(MORVA NAME User code)\r\nO1000\r\nM30\r\n(MORVA END 1)");
  Load(UserBlock(1, u"G0") + u" G1");
  AutoTagBlocks();
  EXPECT_EQ(Text(), UserBlock(1, u"G0") + u" \r\n" + UserBlock(2, u"G1"));
}

TEST_F(AutoTag, NamesALegacyBlockAfterItsLabelWithoutBrackets) {
  Load(u"(SHAPE: SLOT)\r\nG0 X1\r\nM30\r\n%\r\n");
  AutoTagBlocks();
  EXPECT_EQ(Text(),
            u"(MORVA TEXT 2)\r\n(MORVA NAME SHAPE: SLOT [text])\r\n(SHAPE: SLOT)\r\nG0 X1\r\n"
            u"(MORVA END 2)\r\n"
            u"(MORVA TEXT 1)\r\n(MORVA NAME User code)\r\nM30\r\n(MORVA END 1)\r\n%\r\n");
}

TEST_F(AutoTag, WrapsADamagedBlockWithItsMarkersInside) {
  Load(u"(MORVA BEGIN 3)\r\n(MORVA CODE)\r\nG0\r\n(MORVA END 3)");
  AutoTagBlocks();
  EXPECT_EQ(Text(), UserBlock(4, u"(MORVA BEGIN 3)\r\n(MORVA CODE)\r\nG0\r\n(MORVA END 3)"));
}

TEST_F(AutoTag, WrapsEachStretchBetweenMarkedBlocks) {
  const std::u16string block = SketchBlock(9, u"G1");
  Load(u"G0\r\n" + block + u"\r\nG2\r\n");
  AutoTagBlocks();
  EXPECT_EQ(Text(),
            UserBlock(10, u"G0") + u"\r\n" + block + u"\r\n" + UserBlock(11, u"G2") + u"\r\n");
}

TEST_F(AutoTag, LeavesWhatLiesBehindARowOneHundredAndTwentyEight) {
  std::u16string text;
  for (int i = 1; i <= 128; ++i) text += UserBlock(i, u"G1") + u"\r\n";
  text += u"M30\r\n";
  Load(text);
  AutoTagBlocks();
  EXPECT_EQ(Text(), text);
}

TEST_F(AutoTag, CanBeTakenBackStepByStep) {
  Load(u"G0");
  AutoTagBlocks();
  EXPECT_TRUE(platform::UndoEditor(kIdEditor));
  EXPECT_EQ(Text(), u"G0\r\n(MORVA END 1)");
  EXPECT_TRUE(platform::UndoEditor(kIdEditor));
  EXPECT_EQ(Text(), u"G0");
  // The next run writes the markers again.
  AutoTagBlocks();
  EXPECT_EQ(Text(), UserBlock(1, u"G0"));
}

TEST_F(AutoTag, PutsAnUndonePrefixBackInsteadOfWrappingItsEnd) {
  for (const std::u16string& program :
       {std::u16string(u"G0"), std::u16string(u"(CIRCULAR PATTERN)\r\nG0\r\n\r\nG1"),
        u"G0\r\n" + UserBlock(7, u"G1") + u"\r\nG2"}) {
    Load(program);
    AutoTagBlocks();
    const std::u16string marked = Text();
    for (int round = 0; round < 3; ++round) {
      EXPECT_TRUE(platform::UndoEditor(kIdEditor));
      EXPECT_NE(Text(), marked);
      AutoTagBlocks();
      EXPECT_EQ(Text(), marked);
    }
    EXPECT_FALSE(platform::CanRedoEditor(kIdEditor));
  }
}

TEST_F(AutoTag, LetsASlowHandUndoWhatStandsBeforeTheMarkers) {
  const std::u16string block = UserBlock(1, u"G0");
  const std::u16string pasted = block + u"\r\nX1 Y1";
  Load(block);
  platform::ReplaceRange(kIdEditor,
                         {platform::EditorLength(kIdEditor), platform::EditorLength(kIdEditor)},
                         u"\r\nX1 Y1");
  TagAfterEdit();
  const std::u16string marked = block + u"\r\n" + UserBlock(2, u"X1 Y1");
  EXPECT_EQ(Text(), marked);
  // The tick follows every undo. The first one finds the markers back, the second leaves them
  // out whole, the third takes the pasted line.
  EXPECT_TRUE(platform::UndoEditor(kIdEditor));
  TagAfterEdit();
  EXPECT_EQ(Text(), marked);
  EXPECT_TRUE(platform::UndoEditor(kIdEditor));
  TagAfterEdit();
  EXPECT_EQ(Text(), pasted);
  TagAfterEdit();
  EXPECT_EQ(Text(), pasted);
  EXPECT_TRUE(platform::UndoEditor(kIdEditor));
  TagAfterEdit();
  EXPECT_EQ(Text(), block);
  // And all the way forward again.
  while (platform::RedoEditor(kIdEditor)) TagAfterEdit();
  EXPECT_EQ(Text(), marked);
}

TEST_F(AutoTag, MarksWhatWasLeftOutBeforeAnOperationAndAfterTheNextEdit) {
  for (const bool edits : {false, true}) {
    Load(u"G0");
    TagAfterEdit();
    for (int round = 0; round < 2; ++round) {
      EXPECT_TRUE(platform::UndoEditor(kIdEditor));
      TagAfterEdit();
    }
    EXPECT_EQ(Text(), u"G0");
    if (edits) {
      platform::ReplaceRange(kIdEditor, {2, 2}, u" X1");
      TagAfterEdit();
    } else {
      AutoTagBlocks();
    }
    EXPECT_EQ(Text(), UserBlock(1, edits ? u"G0 X1" : u"G0"));
  }
}

TEST_F(AutoTag, TakesAnUndoOfTypingInsideABlockForNothingElse) {
  Load(u"G0");
  TagAfterEdit();
  const std::u16string marked = Text();
  platform::ReplaceRange(kIdEditor, {40, 40}, u" X1");
  TagAfterEdit();
  EXPECT_TRUE(platform::UndoEditor(kIdEditor));
  TagAfterEdit();
  EXPECT_EQ(Text(), marked);
  EXPECT_TRUE(platform::CanRedoEditor(kIdEditor));
}

TEST_F(AutoTag, MarksTheProgramModifiedWithoutATimer) {
  Load(u"G0");
  AutoTagBlocks();
  EXPECT_TRUE(app.editorDirty);
  EXPECT_TRUE(tabs[0].dirty);
  EXPECT_FALSE(platform::TimerRuns(platform::kMainWindow, kTimerAutosave));
  EXPECT_FALSE(platform::TimerRuns(platform::kMainWindow, kTimerText));
}

TEST_F(AutoTag, KeepsTheCaretWithItsText) {
  // The prefix "(MORVA TEXT 1)", "(MORVA NAME User code)" is 15 and 23 positions long.
  constexpr int kPrefix = 38;
  constexpr int kSuffix = 14;
  const auto moved = [&](int caret) {
    Load(u"%\r\nG0 X1\r\n\r\n%\r\n");
    Caret(caret);
    AutoTagBlocks();
    EXPECT_EQ(Selection().from, Selection().to);
    return Selection().to - caret;
  };
  EXPECT_EQ(moved(0), 0);
  EXPECT_EQ(moved(1), 0);
  EXPECT_EQ(moved(2), kPrefix);            // before "G0": it stays before it, inside the block
  EXPECT_EQ(moved(4), kPrefix);            // in the middle of it
  EXPECT_EQ(moved(7), kPrefix);            // behind "X1": typing goes on in the block
  EXPECT_EQ(moved(8), kPrefix + kSuffix);  // on the empty line behind
}

TEST_F(AutoTag, KeepsASelectionOverSeveralBlocks) {
  const std::u16string block = UserBlock(1, u"G1");
  Load(u"G0\r\n" + block + u"\r\nG2");
  const int behind = platform::EditorLength(kIdEditor);
  platform::SetEditorSelection(kIdEditor, {1, behind - 1});
  AutoTagBlocks();
  const std::u16string text = Text();
  EXPECT_EQ(TextIndexOf(text, Selection().from), static_cast<int>(text.find(u"G0")) + 1);
  EXPECT_EQ(TextIndexOf(text, Selection().to), static_cast<int>(text.find(u"G2")) + 1);
}

int changes = 0;
int guardedChanges = 0;
void NestedCommand(int id, int notification) {
  if (id != kIdEditor || notification != platform::kNotifyEditChange) return;
  ++changes;
  if (app.suppressChange) ++guardedChanges;
  AutoTagBlocks();  // must do nothing while the markers are being written
}

TEST_F(AutoTag, IsGuardedAgainstItself) {
  Load(u"G0\r\n(SHAPE: A)\r\nG1");
  changes = guardedChanges = 0;
  platform::Events events;
  events.command = NestedCommand;
  platform::ListenTo(&events);
  AutoTagBlocks();
  EXPECT_EQ(changes, 4);
  EXPECT_EQ(guardedChanges, 4);
  EXPECT_FALSE(app.suppressChange);
  EXPECT_EQ(Text(), UserBlock(1, u"G0") +
                        u"\r\n(MORVA TEXT 2)\r\n(MORVA NAME SHAPE: A [text])\r\n(SHAPE: "
                        u"A)\r\nG1\r\n(MORVA END 2)");
  static const platform::Events kNobody;
  platform::ListenTo(&kNobody);
}

TEST_F(AutoTag, NeedsAnEditor) {
  platform::Destroy(kIdEditor);
  AutoTagBlocks();
  EXPECT_FALSE(app.editorDirty);
}

int wordsRebuilt = 0;

TEST_F(AutoTag, RebuildsTheCommandWordsView) {
  wordsRebuilt = 0;
  hooks.wordsFromEditor = [] { ++wordsRebuilt; };
  Load(u"G0");
  AutoTagBlocks();
  EXPECT_EQ(wordsRebuilt, 0);
  app.commandWordsActive = true;
  Load(u"G0");
  AutoTagBlocks();
  EXPECT_EQ(wordsRebuilt, 1);
}

TEST_F(AutoTag, WrapsAProgramOfManyGapsAtTheRightPlaces) {
  std::u16string text;
  std::u16string expected;
  for (int i = 1; i <= 60; ++i) {
    text += u"G0 X" + Digits(i) + u"\r\n" + UserBlock(i, u"G1") + u"\r\n";
    expected += UserBlock(60 + i, u"G0 X" + Digits(i)) + u"\r\n" + UserBlock(i, u"G1") + u"\r\n";
  }
  Load(text);
  AutoTagBlocks();
  EXPECT_EQ(Text(), expected);
}

TEST_F(FeatureList, ShowsNamesOrTheKindsWords) {
  Load(UserBlock(3, u"G0", u"Rough") + u"\r\n" + SketchBlock(8, u"G1") + u"\r\nG2");
  RefreshFeatureList();
  EXPECT_EQ(RowTexts(), Texts({u"#1  Rough", u"#2  CAD sketch", u"#3  User code"}));
  EXPECT_EQ(platform::RowData(kIdFeatureList, 0), 3);
  EXPECT_EQ(platform::RowData(kIdFeatureList, 1), 8);
  EXPECT_EQ(platform::RowData(kIdFeatureList, 2), 9);
}

TEST_F(FeatureList, ShowsALegacyBlockByItsLabel) {
  Load(u"(SHAPE: SLOT)\r\nG0");
  RefreshFeatureList();
  EXPECT_EQ(RowTexts(), Texts({u"#1  (SHAPE: SLOT) [text]"}));
}

TEST_F(FeatureList, SaysWhatIsHiddenAndLocked) {
  Load(UserBlock(1, u"G0", u"A") + UserBlock(2, u"G0", u"B") + UserBlock(3, u"G0", u"C") +
       UserBlock(4, u"G0", u"D"));
  tabs[0].hiddenIds[5] = 2;
  tabs[0].lockedIds[7] = 3;
  tabs[0].hiddenIds[127] = 4;
  tabs[0].lockedIds[0] = 4;
  RefreshFeatureList();
  EXPECT_EQ(RowTexts(),
            Texts({u"#1  A", u"#2  B [hidden]", u"#3  C [locked]", u"#4  D [hidden] [locked]"}));
}

TEST_F(FeatureList, NotesExcludedRowsForDrawing) {
  Load(UserBlock(1, u"G0") + u"\r\n" + UserBlock(2, u"(morva disabled 1)"));
  RefreshFeatureList();
  EXPECT_FALSE(FeatureRowExcluded(0));
  EXPECT_TRUE(FeatureRowExcluded(1));
  EXPECT_FALSE(FeatureRowExcluded(2));
  EXPECT_FALSE(FeatureRowExcluded(-1));
  Load(u"");
  RefreshFeatureList();
  EXPECT_FALSE(FeatureRowExcluded(1));
}

TEST_F(FeatureList, KeepsTheSelectedBlockSelected) {
  Load(UserBlock(7, u"G0"));
  RefreshFeatureList();
  platform::SelectRow(kIdFeatureList, 0);
  Load(UserBlock(5, u"G0") + u"\r\n" + UserBlock(7, u"G0"));
  RefreshFeatureList();
  EXPECT_EQ(platform::SelectedRow(kIdFeatureList), 1);
  Load(UserBlock(5, u"G0"));
  RefreshFeatureList();
  EXPECT_EQ(platform::SelectedRow(kIdFeatureList), -1);
}

TEST_F(FeatureList, StaysScrolledWhereItWas) {
  std::u16string text;
  for (int i = 1; i <= 60; ++i) text += UserBlock(i, u"G1") + u"\r\n";
  Load(text);
  platform::SetPlace(kIdFeatureList, {0, 0, 200, 240});
  RefreshFeatureList();
  platform::SelectRow(kIdFeatureList, 2);
  platform::SetTopRow(kIdFeatureList, 30);
  RefreshFeatureList();
  EXPECT_EQ(platform::TopRow(kIdFeatureList), 30);
  EXPECT_EQ(platform::SelectedRow(kIdFeatureList), 2);
  // As far as a shorter list goes.
  Load(UserBlock(1, u"G1"));
  RefreshFeatureList();
  EXPECT_EQ(platform::TopRow(kIdFeatureList), 0);
}

TEST_F(FeatureList, SelectsARowByItsBlocksId) {
  Load(UserBlock(5, u"G0") + u"\r\n" + UserBlock(7, u"G0"));
  RefreshFeatureList();
  SelectFeatureRow(7);
  EXPECT_EQ(platform::SelectedRow(kIdFeatureList), 1);
  SelectFeatureRow(9);
  EXPECT_EQ(platform::SelectedRow(kIdFeatureList), -1);
}

TEST_F(FeatureList, TellsHowToBeginAndWhenItIsFull) {
  Load(u"");
  RefreshFeatureList();
  EXPECT_EQ(Hint(), u"Features appear automatically as you add or type code.");
  ShowFeatureHint(u"before");
  Load(u"G0");
  RefreshFeatureList();
  EXPECT_EQ(Hint(), u"before");
  std::u16string text;
  for (int i = 1; i <= 128; ++i) text += UserBlock(i, u"G1") + u"\r\n";
  Load(text);
  RefreshFeatureList();
  EXPECT_EQ(Hint(), u"Feature browser limit: 128 sections. Split this program to index more.");
  EXPECT_EQ(platform::RowCount(kIdFeatureList), 128);
}

TEST_F(FeatureList, SaysNothingOfAProgramThatIsNoLongerShown) {
  std::u16string full;
  for (int i = 1; i <= 128; ++i) full += UserBlock(i, u"G1") + u"\r\n";
  for (const std::u16string& before : {std::u16string(), full}) {
    Load(before);
    RefreshFeatureList();
    ASSERT_NE(Hint(), u"All program features appear here.");
    Load(UserBlock(1, u"G0"));
    RefreshFeatureList();
    EXPECT_EQ(Hint(), u"All program features appear here.");
  }
}

}  // namespace
}  // namespace morva
