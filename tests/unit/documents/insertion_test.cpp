// Blocks are compared with texts put together by the tests' own builder.
#include "documents/insertion.h"

#include <gtest/gtest.h>

#include <string>

#include "app/stop.h"
#include "documents/builder_table.h"
#include "support/kinds.h"
#include "unit/documents/block_builder.h"
#include "unit/documents/blocks_stage.h"

namespace morva {
namespace {

using namespace testing_blocks;

constexpr char16_t kCode[] = u"\r\nfoobar\r\n";  // its hash is a published vector, BF9CF968

bool WriteSketch(FeatureSettings& record) {
  record.version = 3;
  record.kind = kKindSketch;
  return true;
}
bool WriteShape(FeatureSettings& record) {
  record.version = 3;
  record.kind = kKindShape;
  return true;
}
bool WriteCircular(FeatureSettings& record) {
  record.version = 3;
  record.kind = kKindCircular;
  return true;
}
bool WriteNothing(FeatureSettings&) { return false; }
bool WriteDamaged(FeatureSettings& record) {
  WriteShape(record);
  record.values[0] = 1e9;
  return true;
}

// The block that kCode gives, of a kind without items; the hash stands in bytes 28 to 31.
std::u16string GeneratedBlock(int id, int kind, const std::u16string& name = u"",
                              const std::u16string& body = kCode) {
  std::vector<unsigned char> bytes = RecordBytes(3, kind, 0, 0);
  bytes[28] = 0x68;
  bytes[29] = 0xF9;
  bytes[30] = 0x9C;
  bytes[31] = 0xBF;
  std::u16string text = u"(MORVA BEGIN " + Digits(id) + u")\r\n";
  if (!name.empty()) text += u"(MORVA NAME " + name + u")\r\n";
  return text + DataLines(bytes) + u"(MORVA CODE)\r\n" + body + u"\r\n(MORVA END " + Digits(id) +
         u")";
}

struct InsertText : BlocksStage {
  static std::u16string Status() { return app.statusText; }
};

struct InsertBlock : BlocksStage {
  static std::u16string Output() { return platform::TextOf(kIdOutputLog); }
  InsertBlock() {
    support::TakeKind(kKindShape, WriteShape);
    support::TakeKind(kKindCircular, WriteCircular);
    support::TakeKind(kKindSketch, WriteSketch);
  }
  static headless::BoxRecord Box() {
    const auto boxes = headless::TakeBoxes();
    EXPECT_EQ(boxes.size(), 1u);
    return boxes.empty() ? headless::BoxRecord() : boxes[0];
  }
  // The link as it is made when the block with this id is opened for edit.
  static void Link(int kind, int id) {
    const std::u16string text = Text();
    ScanProgramText(text);
    const int row = FindFeature(id);
    ASSERT_GE(row, 0);
    const FeatureRecord& r = features.rows[row];
    editLink.kind = kind;
    editLink.id = id;
    editLink.tab = 0;
    editLink.original =
        text.substr(static_cast<std::size_t>(r.start), static_cast<std::size_t>(r.end - r.start));
  }
  static void CaretAt(std::u16string_view wanted) {
    const std::u16string text = Text();
    Caret(MapTextOffset(text, static_cast<std::int32_t>(text.find(wanted))));
  }
};

TEST_F(InsertText, DoesNothingForEmptyText) {
  Load(u"G0");
  const auto revision = platform::EditorRevision(kIdEditor);
  EXPECT_FALSE(InsertTextAtCaret(u"", false));
  EXPECT_FALSE(InsertTextAtCaret(u"", true));
  EXPECT_FALSE(InsertTextAtCaret(u"\r\n\r\n", true));
  EXPECT_EQ(platform::EditorRevision(kIdEditor), revision);
  EXPECT_EQ(Status(), u"");
}

TEST_F(InsertText, DoesNothingWithoutAnEditor) {
  platform::Destroy(kIdEditor);
  InsertTextAtCaret(u"G0", true);
  EXPECT_EQ(Status(), u"");
}

TEST_F(InsertText, ReplacesTheSelectionWhenNotABlock) {
  Load(u"G0 X1\r\nG1");
  platform::SetEditorSelection(kIdEditor, {3, 5});
  InsertTextAtCaret(u"Y2", false);
  EXPECT_EQ(Text(), u"G0 Y2\r\nG1");
  EXPECT_EQ(Selection().to, 5);
  EXPECT_EQ(Status(), u"");
  EXPECT_TRUE(platform::UndoEditor(kIdEditor));
  EXPECT_EQ(Text(), u"G0 X1\r\nG1");
}

TEST_F(InsertText, PutsABlockOnALineOfItsOwnBehindTheCaretsLine) {
  Load(u"G0 X1\r\nG1\r\n");
  Caret(2);
  InsertTextAtCaret(u"\r\nM8\r\nM9\r\n\r\n", true);
  EXPECT_EQ(Text(), u"G0 X1\r\nM8\r\nM9\r\nG1\r\n");
  EXPECT_EQ(Selection().to, 11);
  EXPECT_EQ(Selection().from, 11);
  EXPECT_EQ(Status(),
            u"Generated block inserted after editor line 1. The caret is ready for the next "
            u"insert.");
  EXPECT_TRUE(platform::UndoEditor(kIdEditor));
  EXPECT_EQ(Text(), u"G0 X1\r\nG1\r\n");
}

TEST_F(InsertText, FillsAnEmptyLine) {
  Load(u"G0\r\n\r\nG1");
  Caret(3);
  InsertTextAtCaret(u"M8", true);
  EXPECT_EQ(Text(), u"G0\r\nM8\r\nG1");
  EXPECT_EQ(Status(),
            u"Generated block inserted after editor line 2. The caret is ready for the next "
            u"insert.");
}

TEST_F(InsertText, EndsTheLineAtTheEndOfTheDocument) {
  Load(u"G0");
  Caret(0);
  InsertTextAtCaret(u"M8", true);
  EXPECT_EQ(Text(), u"G0\r\nM8\r\n");
  InsertTextAtCaret(u"M9", true);
  EXPECT_EQ(Text(), u"G0\r\nM8\r\nM9\r\n");
  Load(u"");
  InsertTextAtCaret(u"M8", true);
  EXPECT_EQ(Text(), u"M8\r\n");
}

TEST_F(InsertText, ShowsTheCaretBehindTheText) {
  std::u16string text;
  for (int i = 0; i < 100; ++i) text += u"G0\r\n";
  Load(text);
  platform::SetPlace(kIdEditor, {0, 0, 400, 200});
  for (const bool asBlock : {true, false}) {
    Caret(platform::EditorLineStart(kIdEditor, 80));
    platform::ScrollToLine(kIdEditor, 0);
    ASSERT_EQ(platform::FirstVisibleLine(kIdEditor), 0);
    InsertTextAtCaret(u"M8\r\nM9", asBlock);
    const int first = platform::FirstVisibleLine(kIdEditor);
    const int line = platform::EditorLineOf(kIdEditor, Selection().to);
    EXPECT_GE(line, 81);
    EXPECT_LE(first, line);
    EXPECT_LT(line, first + platform::VisibleLineCount(kIdEditor));
  }
}

int guarded = 0;

TEST_F(InsertText, HoldsTheInsertGuard) {
  guarded = 0;
  platform::Events events;
  events.command = [](int id, int notification) {
    if (id == kIdEditor && notification == platform::kNotifyEditChange && app.insertingText)
      ++guarded;
  };
  Load(u"G0");
  platform::ListenTo(&events);
  InsertTextAtCaret(u"M8", true);
  static const platform::Events kNobody;
  platform::ListenTo(&kNobody);
  EXPECT_EQ(guarded, 1);
  EXPECT_FALSE(app.insertingText);
}

int copiedBack = 0;
int rebuilt = 0;

TEST_F(InsertText, TakesTheLineFromTheCommandWordsView) {
  platform::EditorSpec words;
  words.id = kIdWordsEditor;
  words.accessibleName = u"Command words";
  platform::MakeEditor(words);
  platform::SetEditorText(kIdWordsEditor, u"Rapid Motion\r\nDwell\r\nEnd");
  platform::SetEditorSelection(kIdWordsEditor, {15, 15});
  Load(u"G0\r\nG4\r\nM30");
  Caret(0);
  app.commandWordsActive = true;
  copiedBack = rebuilt = 0;
  hooks.editorFromWords = [] { ++copiedBack; };
  hooks.wordsFromEditor = [] { ++rebuilt; };
  InsertTextAtCaret(u"M8", true);
  EXPECT_EQ(Text(), u"G0\r\nG4\r\nM8\r\nM30");
  EXPECT_EQ(copiedBack, 1);
  EXPECT_EQ(rebuilt, 1);
}

TEST_F(InsertBlock, WritesABlockBehindTheCaretsLine) {
  Load(u"%\r\n");
  Caret(1);
  EXPECT_TRUE(InsertFeatureBlock(kKindShape, kCode));
  EXPECT_EQ(Text(), u"%\r\n" + GeneratedBlock(1, kKindShape) + u"\r\n");
  EXPECT_FALSE(tabs[0].dirty);  // who asked for it tells the change
  EXPECT_EQ(Hint(), u"Feature added. Select it, then Edit Settings.");
  EXPECT_EQ(RowTexts(), std::vector<std::u16string>({u"#1  Shape"}));
  EXPECT_EQ(platform::SelectedRow(kIdFeatureList), 0);
  EXPECT_TRUE(headless::TakeBoxes().empty());
}

TEST_F(InsertBlock, ShowsTheFeaturesInTheLeftPanel) {
  static int laidOut;
  laidOut = 0;
  hooks.layout = [] { laidOut += app.sidebarShowsFeatures ? 1 : 100; };
  app.sidebarShowsFeatures = false;
  EXPECT_TRUE(InsertFeatureBlock(kKindShape, kCode));
  EXPECT_TRUE(app.sidebarShowsFeatures);
  EXPECT_EQ(laidOut, 1);
}

TEST_F(InsertBlock, IsReadBackWithTheHashOfItsCode) {
  EXPECT_TRUE(InsertFeatureBlock(kKindCircular, kCode));
  ScanProgramText(Text());
  ASSERT_EQ(features.count, 1);
  EXPECT_EQ(features.rows[0].settings.codeHash, 0xBF9CF968u);
  EXPECT_EQ(features.rows[0].settings.kind, kKindCircular);
}

TEST_F(InsertBlock, TagsForeignTextFirstAndTakesTheNextIdOfTheTable) {
  Load(u"G0\r\n");
  Caret(0);
  EXPECT_TRUE(InsertFeatureBlock(kKindShape, kCode));
  EXPECT_EQ(Text(), UserBlock(1, u"G0") + u"\r\n" + GeneratedBlock(2, kKindShape) + u"\r\n");
}

TEST_F(InsertBlock, CountsTheTableAndNotStrayNumbers) {
  Load(UserBlock(4, u"(MORVA END 90)"));
  EXPECT_TRUE(InsertFeatureBlock(kKindShape, kCode));
  EXPECT_NE(Text().find(GeneratedBlock(5, kKindShape)), std::u16string::npos);
}

TEST_F(InsertBlock, NeverNestsBlocks) {
  const std::u16string first = UserBlock(1, u"G0\r\nG1");
  const std::u16string second = SketchBlock(2, u"G2");
  for (const std::u16string_view inside : {u"(MORVA TEXT 1", u"G1", u"MORVA END 1"}) {
    Load(first + u"\r\n" + second + u"\r\n%\r\n");
    CaretAt(inside);
    EXPECT_TRUE(InsertFeatureBlock(kKindShape, kCode));
    EXPECT_EQ(Text(),
              first + u"\r\n" + GeneratedBlock(3, kKindShape) + u"\r\n" + second + u"\r\n%\r\n");
  }
  Load(first + u"\r\n" + second + u"\r\n%\r\n");
  CaretAt(u"(MORVA CODE)");
  EXPECT_TRUE(InsertFeatureBlock(kKindShape, kCode));
  EXPECT_EQ(Text(),
            first + u"\r\n" + second + u"\r\n" + GeneratedBlock(3, kKindShape) + u"\r\n%\r\n");
}

TEST_F(InsertBlock, GoesBetweenTwoBlocksThatFollowEachOtherDirectly) {
  const std::u16string first = UserBlock(1, u"G0");
  const std::u16string second = UserBlock(2, u"G1");
  Load(first + second);
  CaretAt(u"G0");
  EXPECT_TRUE(InsertFeatureBlock(kKindShape, kCode));
  EXPECT_EQ(Text(), first + u"\r\n" + GeneratedBlock(3, kKindShape) + u"\r\n" + second);
  EXPECT_EQ(platform::SelectedRow(kIdFeatureList), 1);
}

TEST_F(InsertBlock, CanBeTakenBackInOneStep) {
  const std::u16string text = UserBlock(1, u"G0") + u"\r\n";
  Load(text);
  EXPECT_TRUE(InsertFeatureBlock(kKindShape, kCode));
  EXPECT_TRUE(platform::UndoEditor(kIdEditor));
  EXPECT_EQ(Text(), text);
}

TEST_F(InsertBlock, RefusesAModelThatCannotBeStored) {
  const auto refused = [&](int kind) {
    const std::u16string before = Text();
    EXPECT_FALSE(InsertFeatureBlock(kind, kCode));
    EXPECT_EQ(Text(), before);
    const headless::BoxRecord box = Box();
    EXPECT_EQ(box.title, u"Invalid shape settings");
    EXPECT_EQ(box.text,
              u"Shape settings could not be stored. Check the dimensions and selected shape. "
              u"Nothing was inserted.");
    EXPECT_EQ(box.icon, platform::BoxIcon::Warning);
    EXPECT_EQ(box.buttons, platform::BoxButtons::Ok);
  };
  support::TakeKind(kKindShape, WriteNothing);
  refused(kKindShape);
  support::TakeKind(kKindShape, WriteDamaged);
  refused(kKindShape);
  support::TakeKind(kKindShape, WriteSketch);  // another kind than asked for
  refused(kKindShape);
  refused(kKindSkim);  // nobody writes this kind
  refused(0);
  refused(8);
  refused(-1);
}

TEST_F(InsertBlock, AWriterOfAnUnknownKindStopsTheProgram) {
  for (const int kind : {-1, 0, 8}) {
    EXPECT_EXIT(SetSettingsWriter(kind, WriteNothing), testing::ExitedWithCode(kStopExitCode),
                "settings writer has the unknown kind");
  }
}

TEST_F(InsertBlock, ASecondWriterOfAKindStopsTheProgram) {
  SetSettingsWriter(kKindShape, WriteShape);  // the same once more
  EXPECT_EXIT(SetSettingsWriter(kKindShape, WriteNothing), testing::ExitedWithCode(kStopExitCode),
              "Two settings writers have kind 1");
}

int picked = 0;
Destination PickCancel(int kind, std::int32_t /*units*/) {
  picked = kind;
  return Destination::Cancelled;
}

TEST_F(InsertBlock, AsksForADestinationWhereItIsToldTo) {
  SetDestinationPicker(PickCancel);
  picked = 0;
  EXPECT_TRUE(InsertFeatureBlock(kKindSketch, kCode));
  EXPECT_EQ(picked, 0);
  const std::u16string before = Text();
  EXPECT_FALSE(InsertFeatureBlock(kKindSketch, kCode, true));
  EXPECT_EQ(picked, kKindSketch);
  EXPECT_EQ(Text(), before);
  EXPECT_TRUE(headless::TakeBoxes().empty());
}

TEST_F(InsertBlock, RefusesUnstorableSettingsBeforeThePicker) {
  SetDestinationPicker(PickCancel);
  support::TakeKind(kKindSketch, WriteNothing);
  picked = 0;
  EXPECT_FALSE(InsertFeatureBlock(kKindSketch, kCode, true));
  EXPECT_EQ(picked, 0);
}

TEST_F(InsertBlock, RefusesAPickedProgramWithoutRoomForIt) {
  static const std::u16string full(kMaxReadBytes - 100, u'G');
  SetDestinationPicker([](int, std::int32_t) {
    Load(full);
    return Destination::Caret;
  });
  EXPECT_FALSE(InsertFeatureBlock(kKindSketch, kCode, true));
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_NE(boxes[0].text.find(u"larger than 33554432 bytes"), std::u16string::npos);
  EXPECT_TRUE(Text() == full);
}

TEST_F(InsertBlock, GoesInAtTheStartOfThePickedBlocksLine) {
  const std::u16string first = UserBlock(1, u"G0");
  const std::u16string second = UserBlock(2, u"G1");
  Load(u"%\r\n" + first + u"\r\n" + second + u"\r\n%");
  SetDestinationPicker([](int, std::int32_t) {
    CaretAt(u"(MORVA TEXT 2)");
    return Destination::Placed;
  });
  EXPECT_TRUE(InsertFeatureBlock(kKindSketch, kCode, true));
  EXPECT_EQ(Text(), u"%\r\n" + first + u"\r\n" + GeneratedBlock(3, kKindSketch) + u"\r\n" + second +
                        u"\r\n%");
  EXPECT_EQ(platform::SelectedRow(kIdFeatureList), 1);
}

TEST_F(InsertBlock, GoesInBehindTheLastBlockAtTheLastPosition) {
  const std::u16string first = UserBlock(1, u"G0");
  Load(u"%\r\n" + first + u"\r\n%");
  SetDestinationPicker([](int, std::int32_t) {
    CaretAt(u"(MORVA END 1)");
    return Destination::Placed;
  });
  EXPECT_TRUE(InsertFeatureBlock(kKindSketch, kCode, true));
  EXPECT_EQ(Text(), u"%\r\n" + first + u"\r\n" + GeneratedBlock(2, kKindSketch) + u"\r\n%");
}

TEST_F(InsertBlock, StartsALineWhereThePickedBlockFollowsAnotherDirectly) {
  const std::u16string first = UserBlock(1, u"G0");
  const std::u16string second = UserBlock(2, u"G1");
  Load(first + second);
  SetDestinationPicker([](int, std::int32_t) {
    CaretAt(u"(MORVA END 1)");
    return Destination::Placed;
  });
  EXPECT_TRUE(InsertFeatureBlock(kKindSketch, kCode, true));
  EXPECT_EQ(Text(), first + u"\r\n" + GeneratedBlock(3, kKindSketch) + u"\r\n" + second);
}

TEST_F(InsertBlock, AcceptsTheCaretWithoutAPicker) {
  const std::u16string first = UserBlock(1, u"G0");
  Load(first + u"\r\n%");
  Caret(0);
  EXPECT_TRUE(InsertFeatureBlock(kKindSketch, kCode, true));
  EXPECT_EQ(Text(), first + u"\r\n" + GeneratedBlock(2, kKindSketch) + u"\r\n%");
}

// Code at the caret.

constexpr char16_t kForeignHead[] = u"O1001\r\nT1 M06";
constexpr char16_t kForeignTail[] = u"G00 X0\r\nM30";

std::u16string ForeignProgram() {
  return u"%\r\n" + UserBlock(1, std::u16string(kForeignHead) + u"\r\n" + kForeignTail, u"Job") +
         u"\r\n%\r\n";
}
std::u16string PartedProgram(const std::u16string& block) {
  return u"%\r\n" + UserBlock(1, kForeignHead, u"Job") + u"\r\n" + block + u"\r\n" +
         UserBlock(3, kForeignTail, u"Job") + u"\r\n%\r\n";
}
Destination PickSplit(int, std::int32_t) { return Destination::Split; }

TEST_F(InsertBlock, PartsTheUserCodeBeforeTheCaretsLineInOneStep) {
  SetDestinationPicker(PickSplit);
  for (const std::u16string_view at : {u"G00 X0", u"X0\r\n"}) {
    Load(ForeignProgram());
    CaretAt(at);
    EXPECT_TRUE(InsertFeatureBlock(kKindSketch, kCode, true));
    const std::u16string block = GeneratedBlock(2, kKindSketch);
    EXPECT_EQ(Text(), PartedProgram(block));
    // The caret stands behind the block, so that the next one follows it.
    const std::u16string text = Text();
    const auto end = static_cast<std::int32_t>(text.find(block) + block.size());
    EXPECT_EQ(Selection().to, MapTextOffset(text, end));
    EXPECT_EQ(
        app.statusText,
        std::u16string(u"Generated block inserted after editor line 6. The caret is ready for "
                       u"the next insert."));
    AutoTagBlocks();
    EXPECT_EQ(Text(), text);
    EXPECT_TRUE(platform::UndoEditor(kIdEditor));
    EXPECT_EQ(Text(), ForeignProgram());
    EXPECT_FALSE(platform::CanUndoEditor(kIdEditor));
  }
}

TEST_F(InsertBlock, BothHalvesOfPartedUserCodeAreHiddenAndLockedAsItWas) {
  SetDestinationPicker(PickSplit);
  for (const bool marked : {true, false}) {
    Load(ForeignProgram());
    CaretAt(u"G00 X0");
    tabs[0].hiddenIds[0] = tabs[0].lockedIds[0] = marked ? 1 : 0;
    EXPECT_TRUE(InsertFeatureBlock(kKindSketch, kCode, true));
    EXPECT_EQ(IdListHolds(tabs[0].hiddenIds, 1), marked);
    EXPECT_EQ(IdListHolds(tabs[0].hiddenIds, 3), marked);
    EXPECT_EQ(IdListHolds(tabs[0].lockedIds, 3), marked);
    EXPECT_FALSE(IdListHolds(tabs[0].hiddenIds, 2));
    EXPECT_FALSE(IdListHolds(tabs[0].lockedIds, 2));
  }
}

TEST_F(InsertBlock, ANewBlockIsShownWhateverABlockOfItsNumberWasBeforeAnUndo) {
  Load(ForeignProgram());
  CaretAt(u"O1");
  headless::QueueAnswer(platform::BoxAnswer::No);
  tabs[0].hiddenIds[4] = tabs[0].lockedIds[7] = 2;
  EXPECT_TRUE(InsertFeatureBlock(kKindShape, kCode));
  EXPECT_FALSE(IdListHolds(tabs[0].hiddenIds, 2));
  EXPECT_FALSE(IdListHolds(tabs[0].lockedIds, 2));
}

TEST_F(InsertBlock, TakesACaretBehindALineForTheNextLine) {
  SetDestinationPicker(PickSplit);
  Load(ForeignProgram());
  CaretAt(u"\r\nG00 X0");
  EXPECT_TRUE(InsertFeatureBlock(kKindSketch, kCode, true));
  EXPECT_EQ(Text(), PartedProgram(GeneratedBlock(2, kKindSketch)));
}

TEST_F(InsertBlock, PartsNothingWhereOneSideOfTheCaretIsEmpty) {
  SetDestinationPicker(PickSplit);
  const std::u16string block = UserBlock(1, u"O1\r\nG0");
  for (const std::u16string_view at : {u"(MORVA TEXT 1", u"O1", u"(MORVA NAME"}) {
    Load(block + u"\r\n");
    CaretAt(at);
    EXPECT_TRUE(InsertFeatureBlock(kKindSketch, kCode, true));
    EXPECT_EQ(Text(), GeneratedBlock(2, kKindSketch) + u"\r\n" + block + u"\r\n");
  }
  for (const std::u16string_view at : {u"\r\n(MORVA END 1", u"(MORVA END 1", u"END 1"}) {
    Load(block + u"\r\n");
    CaretAt(at);
    EXPECT_TRUE(InsertFeatureBlock(kKindSketch, kCode, true));
    EXPECT_EQ(Text(), block + u"\r\n" + GeneratedBlock(2, kKindSketch) + u"\r\n");
  }
}

TEST_F(InsertBlock, GivesTheRestANumberThatNoEndOfTheTextBears) {
  SetDestinationPicker(PickSplit);
  Load(UserBlock(1, u"O1\r\nG0\r\n(morva end 3)"));
  CaretAt(u"G0");
  EXPECT_TRUE(InsertFeatureBlock(kKindSketch, kCode, true));
  EXPECT_EQ(Text(), UserBlock(1, u"O1") + u"\r\n" + GeneratedBlock(2, kKindSketch) + u"\r\n" +
                        UserBlock(4, u"G0\r\n(morva end 3)"));
}

TEST_F(InsertBlock, RefusesToPartTheLastFreeRecord) {
  SetDestinationPicker(PickSplit);
  std::u16string text = UserBlock(1, u"O1\r\nG0") + u"\r\n";
  for (int i = 2; i <= 127; ++i) text += UserBlock(i, u"G1") + u"\r\n";
  Load(text);
  CaretAt(u"G0");
  EXPECT_FALSE(InsertFeatureBlock(kKindSketch, kCode, true));
  EXPECT_EQ(Box().title, u"Shape limit");
  EXPECT_EQ(Text(), text);
}

// Kinds that no picker asks for.

struct InsertBehindEnd : InsertBlock {
  void SetUp() override {
    Load(ForeignProgram());
    CaretAt(u"G00 X0");
    headless::TakeBoxes();
  }
};

TEST_F(InsertBehindEnd, AsksBeforeABlockGoesBehindTheEnd) {
  headless::QueueAnswer(platform::BoxAnswer::Cancel);
  EXPECT_FALSE(InsertFeatureBlock(kKindShape, kCode));
  EXPECT_EQ(Text(), ForeignProgram());
  const headless::BoxRecord box = Box();
  EXPECT_EQ(box.title, u"Insert code");
  EXPECT_EQ(box.text,
            u"The code would stand behind M30, where it is never run.\r\n\r\n"
            u"Yes: split the user code at line 6 and insert the code at the caret.\r\n"
            u"No: insert it behind M30.\r\nCancel: insert nothing.");
  EXPECT_EQ(box.buttons, platform::BoxButtons::YesNoCancel);
}

TEST_F(InsertBehindEnd, PartsTheUserCodeAtYesAndKeepsThePlaceAtNo) {
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  EXPECT_TRUE(InsertFeatureBlock(kKindShape, kCode));
  EXPECT_EQ(Text(), PartedProgram(GeneratedBlock(2, kKindShape)));
  Load(ForeignProgram());
  CaretAt(u"G00 X0");
  headless::QueueAnswer(platform::BoxAnswer::No);
  EXPECT_TRUE(InsertFeatureBlock(kKindShape, kCode));
  EXPECT_LT(Text().find(u"M30"), Text().find(u"(MORVA BEGIN 2)"));
}

TEST_F(InsertBehindEnd, OffersNoSplitWhereTheCaretLiesThereItself) {
  for (const std::u16string_view at : {u"\r\n(MORVA END 1", u"%\r\n"}) {
    const std::u16string text = ForeignProgram();
    Load(text);
    const std::size_t place = text.rfind(at);
    Caret(MapTextOffset(text, static_cast<std::int32_t>(place)));
    EXPECT_FALSE(InsertFeatureBlock(kKindShape, kCode));
    const headless::BoxRecord box = Box();
    EXPECT_EQ(box.buttons, platform::BoxButtons::NoYes);
    EXPECT_NE(box.text.find(u"Insert it there all the same?"), box.text.npos);
    EXPECT_EQ(Text(), text);
  }
}

TEST_F(InsertBehindEnd, AsksNothingForAnUpdateOrInsideASubprogram) {
  Load(UserBlock(1, u"O1\r\nM30") + u"\r\n" + SketchBlock(6, u"G1"));
  Link(kKindSketch, 6);
  EXPECT_TRUE(InsertFeatureBlock(kKindSketch, kCode));
  Load(UserBlock(1, u"O1\r\nM30\r\nO2\r\nG1"));
  CaretAt(u"G1");
  EXPECT_TRUE(InsertFeatureBlock(kKindShape, kCode));
  EXPECT_TRUE(headless::TakeBoxes().empty());
}

TEST_F(InsertBehindEnd, AsksForPlainTextBehindTheCaretsLineToo) {
  EXPECT_TRUE(InsertTextAsBlock(u"G4"));
  CaretAt(u"M30");
  EXPECT_FALSE(InsertTextAsBlock(u"G4"));
  EXPECT_EQ(Box().buttons, platform::BoxButtons::NoYes);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  EXPECT_TRUE(InsertTextAsBlock(u"G4"));
}

// What a builder wrote is one cut: a tool change in the middle of it would leave half of it to
// another tool.
TEST_F(InsertBlock, PutsPlainTextBehindTheGeneratedBlockThatHoldsTheCaret) {
  const std::u16string block = SketchBlock(6, u"G1 X1\r\nG1 X2");
  const std::u16string before = UserBlock(1, u"G90\r\nG1 X7") + u"\r\n";
  const std::u16string behind = u"\r\n" + UserBlock(2, u"M30");
  for (const char16_t* line : {u"(MORVA BEGIN 6", u"(MORVA DATA ", u"G1 X1", u"G1 X2"}) {
    const std::u16string text = before + block + behind;
    ASSERT_NE(text.find(line), text.npos);
    Load(text);
    Caret(MapTextOffset(text, static_cast<std::int32_t>(text.find(line, before.size()) + 2)));
    platform::SetText(kIdOutputLog, u"");
    EXPECT_TRUE(InsertTextAsBlock(u"\r\nT5 M06\r\n"));
    EXPECT_EQ(Text(), before + block + u"\r\nT5 M06" + behind);
    EXPECT_NE(Output().find(u"The caret stood in #2 "), std::u16string::npos);
    EXPECT_NE(Output().find(u": the code was inserted behind that block."), std::u16string::npos);
    EXPECT_TRUE(headless::TakeBoxes().empty());
  }
  // On its last line, and in the user's own code, it stays behind the caret's line.
  for (const char16_t* line : {u"(MORVA END 6", u"G1 X7"}) {
    const std::u16string text = before + block + behind;
    const std::size_t at = text.find(line);
    Load(text);
    Caret(MapTextOffset(text, static_cast<std::int32_t>(at + 2)));
    platform::SetText(kIdOutputLog, u"");
    EXPECT_TRUE(InsertTextAsBlock(u"T5 M06"));
    std::u16string wanted = text;
    wanted.insert(text.find(u"\r\n", at), u"\r\nT5 M06");
    EXPECT_EQ(Text(), wanted);
    EXPECT_EQ(Output(), u"");
  }
}

// A program that was opened has its caret there.
TEST_F(InsertBlock, PutsPlainTextBehindTheNameOfABlock) {
  Load(u"(MORVA TEXT 1)\r\n(MORVA NAME Side A)\r\nG0 X1\r\n(MORVA END 1)\r\n");
  for (const int caret : {0, 5}) {
    platform::SetEditorSelection(kIdEditor, {caret, caret});
    EXPECT_TRUE(InsertTextAsBlock(u"T5 M06"));
  }
  EXPECT_EQ(Text(),
            u"(MORVA TEXT 1)\r\n(MORVA NAME Side A)\r\nT5 M06\r\nT5 M06\r\nG0 X1\r\n"
            u"(MORVA END 1)\r\n");
}

TEST_F(InsertBlock, PutsPlainTextBehindAllGeneratedBlocksThatTouch) {
  const std::u16string blocks = SketchBlock(6, u"G1 X1") + SketchBlock(7, u"G1 X2");
  Load(blocks + u"\r\nM30");
  CaretAt(u"G1 X1");
  EXPECT_TRUE(InsertTextAsBlock(u"T5 M06"));
  EXPECT_EQ(Text(), blocks + u"\r\nT5 M06\r\nM30");
}

TEST_F(InsertBlock, RefusesAHundredAndTwentyNinthBlock) {
  std::u16string text;
  for (int i = 1; i <= 127; ++i) text += UserBlock(i, u"G1") + u"\r\n";
  Load(text);
  EXPECT_TRUE(InsertFeatureBlock(kKindShape, kCode));
  EXPECT_EQ(Hint(), u"Feature added. Select it, then Edit Settings.");
  const std::u16string full = Text();
  EXPECT_FALSE(InsertFeatureBlock(kKindShape, kCode));
  EXPECT_EQ(Text(), full);
  const headless::BoxRecord box = Box();
  EXPECT_EQ(box.title, u"Shape limit");
  EXPECT_EQ(box.text, u"This program already has 128 editable blocks. Use another document.");
  EXPECT_EQ(box.icon, platform::BoxIcon::Warning);
  // An update needs no room.
  Link(kKindShape, 128);
  EXPECT_TRUE(InsertFeatureBlock(kKindShape, u"G9"));
}

TEST_F(InsertBlock, UpdatesInPlaceAndKeepsIdAndName) {
  const std::u16string before = UserBlock(1, u"G0") + u"\r\n";
  const std::u16string old = SketchBlock(6, u"G1", u"Pocket (deep");
  const std::u16string behind = u"\r\n" + UserBlock(2, u"G2") + u"\r\n%";
  Load(before + old + behind);
  Caret(0);
  Link(kKindSketch, 6);
  static int keysRefreshed;
  keysRefreshed = 0;
  static const Builder listening{.linked = [] { ++keysRefreshed; }};
  AddBuilder(listening);
  EXPECT_TRUE(InsertFeatureBlock(kKindSketch, kCode, true));
  EXPECT_EQ(Text(), before + GeneratedBlock(6, kKindSketch, u"Pocket (deep") + behind);
  EXPECT_EQ(Hint(), u"Feature updated in place. Undo restores the prior block.");
  EXPECT_EQ(editLink.kind, 0);
  EXPECT_EQ(editLink.id, 0);
  EXPECT_EQ(editLink.tab, -1);
  EXPECT_EQ(editLink.original, u"");
  EXPECT_EQ(keysRefreshed, 1);
  EXPECT_EQ(platform::SelectedRow(kIdFeatureList), 1);
  EXPECT_TRUE(platform::UndoEditor(kIdEditor));
  EXPECT_EQ(Text(), before + old + behind);
}

TEST_F(InsertBlock, InsertsANewBlockWhenTheLinkIsOfAnotherKind) {
  const std::u16string old = SketchBlock(6, u"G1");
  Load(old);
  Link(kKindSketch, 6);
  EXPECT_TRUE(InsertFeatureBlock(kKindShape, kCode));
  EXPECT_EQ(Text(), old + u"\r\n" + GeneratedBlock(7, kKindShape) + u"\r\n");
  EXPECT_EQ(editLink.kind, 0);
}

TEST_F(InsertBlock, RefusesToUpdateALockedBlock) {
  const std::u16string old = SketchBlock(6, u"G1");
  Load(old);
  Link(kKindSketch, 6);
  tabs[0].lockedIds[3] = 6;
  EXPECT_FALSE(InsertFeatureBlock(kKindSketch, kCode, true));
  const headless::BoxRecord box = Box();
  EXPECT_EQ(box.title, u"Shape locked");
  EXPECT_EQ(box.text, u"Unlock this shape in the browser before updating it.");
  EXPECT_EQ(Text(), old);
  EXPECT_EQ(editLink.id, 6);
}

TEST_F(InsertBlock, StopsAnUpdateWhoseBlockIsNoLongerTheOneThatWasOpened) {
  const std::u16string old = SketchBlock(6, u"G1");
  const auto refused = [&](const std::u16string& now) {
    Load(now);
    EXPECT_FALSE(InsertFeatureBlock(kKindSketch, kCode, true));
    EXPECT_EQ(Text(), now);
    const headless::BoxRecord box = Box();
    EXPECT_EQ(box.title, u"Shape update stopped");
    EXPECT_EQ(box.text,
              u"This shape's code changed, was removed, or has duplicate IDs. Reopen its settings "
              u"from Features, or choose New / Unlink to insert a separate shape. No code was "
              u"replaced.");
    EXPECT_EQ(box.icon, platform::BoxIcon::Warning);
    EXPECT_EQ(editLink.id, 6);
  };
  Load(old);
  Link(kKindSketch, 6);
  refused(SketchBlock(6, u"G1 "));
  refused(SketchBlock(6, u"G1", u"Renamed"));
  refused(UserBlock(1, u"G0"));
  refused(old + u"\r\n" + old);
  editLink.tab = 1;
  refused(old);
}

TEST_F(InsertBlock, KeepsAnExcludedBlockExcludedOnAnUpdate) {
  Load(SketchBlock(6, u"(MORVA DISABLED 1)"));
  ASSERT_EQ(AddDisabledCode(tabs[0].disabledCode, u"G1"), 1);
  Link(kKindSketch, 6);
  EXPECT_TRUE(InsertFeatureBlock(kKindSketch, kCode, true));
  EXPECT_EQ(Text(), GeneratedBlock(6, kKindSketch, u"", u"(MORVA DISABLED 2)\r\n"));
  const DisabledCodeEntry* stored = FindDisabledCode(tabs[0].disabledCode, 2);
  ASSERT_NE(stored, nullptr);
  EXPECT_EQ(stored->text, kCode);
  EXPECT_EQ(FindDisabledCode(tabs[0].disabledCode, 1)->text, u"G1");
  EXPECT_TRUE(FeatureRowExcluded(0));
}

// An update writes the whole block; what was typed beside the line would be gone.
TEST_F(InsertBlock, StopsWhereAnExcludedBlockHasCodeOfItsOwn) {
  const std::u16string old = SketchBlock(6, u"(MORVA DISABLED 1)\r\nM8");
  Load(old);
  ASSERT_EQ(AddDisabledCode(tabs[0].disabledCode, u"G1"), 1);
  Link(kKindSketch, 6);
  EXPECT_FALSE(InsertFeatureBlock(kKindSketch, kCode, true));
  EXPECT_EQ(Text(), old);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Shape update stopped");
}

TEST_F(InsertBlock, StopsWhenTheExcludedCodeCannotBeKept) {
  const std::u16string old = SketchBlock(6, u"(MORVA DISABLED 1)");
  Load(old);
  Link(kKindSketch, 6);
  EXPECT_FALSE(InsertFeatureBlock(kKindSketch, std::u16string(8000001, u'G'), true));
  EXPECT_EQ(Text(), old);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Shape update stopped");
  EXPECT_EQ(boxes[0].text,
            u"The new code of this excluded shape could not be stored: it is too long, or the "
            u"storage is full. No code was replaced.");
  EXPECT_EQ(editLink.id, 6);
}

TEST_F(InsertBlock, CopiesTheCommandWordsBackAndShowsThemAnew) {
  Load(UserBlock(1, u"G0"));
  app.commandWordsActive = true;
  copiedBack = rebuilt = 0;
  hooks.editorFromWords = [] { ++copiedBack; };
  hooks.wordsFromEditor = [] { ++rebuilt; };
  EXPECT_TRUE(InsertFeatureBlock(kKindShape, kCode));
  EXPECT_EQ(copiedBack, 1);
  EXPECT_EQ(rebuilt, 1);
}

TEST_F(InsertBlock, DropsTheLinkAndTellsTheBuilders) {
  static int told;
  told = 0;
  static const Builder listening{.linked = [] { told += editLink.kind == 0 ? 1 : 100; }};
  AddBuilder(listening);
  editLink.kind = 4;
  editLink.id = 3;
  DropEditLink();
  EXPECT_EQ(editLink.id, 0);
  EXPECT_EQ(told, 1);
}

}  // namespace
}  // namespace morva
