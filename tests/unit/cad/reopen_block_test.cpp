// A block of a sketch that is opened again: where it goes, and what Undo brings back where it took
// the live sketch's place.

#include <gtest/gtest.h>

#include "app/hooks.h"
#include "app/panels.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/drawing_blocks.h"
#include "cad/model/drawings.h"
#include "cad/model/former_drawing.h"
#include "cad/model/sketch.h"
#include "documents/builder_table.h"
#include "documents/feature_blocks.h"
#include "documents/feature_operations.h"
#include "unit/cad/cad_stage.h"

namespace morva {
namespace {

using Texts = std::vector<std::u16string>;

struct ReopenedBlock : cad_test::DrawingsStage {
  void SetUp() override {
    DrawingsStage::SetUp();
    Cut(u"-0.1", u"10", u"0.5");
  }
  static void Empty() {
    while (sketch.objectCount > 0) RemoveSketchObject(0);
    sketch.selected = -1;
  }
  // The live sketch as a block of the program; its row in the list.
  static int Send(const char16_t* code) {
    EXPECT_TRUE(InsertFeatureBlock(kKindSketch, code));
    RefreshFeatureList();
    return platform::SelectedRow(kIdFeatureList);
  }
  // Whatever is asked is answered with Yes.
  static void Reopen(int row) {
    headless::QueueAnswer(platform::BoxAnswer::Yes);
    platform::SelectRow(kIdFeatureList, row);
    EditFeature();
    headless::ClearQueues();
  }
  static CadStore& Store() { return *tabs[0].cadStore; }
  static std::u16string NameOf(std::uint32_t index) { return Store().drawings[index].name; }
  // Seven drawings that stand in no block, beside the first one, which is live and empty.
  static void FillDrawings() {
    Empty();
    for (int i = 1; i < kMaxDrawings; ++i) {
      headless::Click(kIdDrawingAdd);
      Add(kTypeWorkPoint, 100 + i, 0, 0);
    }
    headless::Click(kIdDrawingFirst);
    ASSERT_EQ(sketch.objectCount, 0);
  }
  // A circle of this size, sent, in an inch sketch that is empty afterwards.
  int SendCircle(double size, const char16_t* code) {
    Empty();
    Add(kTypeCircle, 0, 0, size);
    const int row = Send(code);
    Empty();
    return row;
  }
};

TEST_F(ReopenedBlock, GoesIntoADrawingOfItsOwnCalledAfterIt) {
  const int row = SendCircle(2, u"G1 X2\r\n");
  const std::int32_t id = SelectedFeatureId();
  ASSERT_EQ(RenameFeature(u"Flange"), RenameAnswer::Done);
  sketch.metric = true;
  sketch.thickness = 3;
  Add(kTypeRectangle, 10, 20, 30, 40, 15, 4);
  sketch.hidden[0] = 1;
  Cut(u"-2.5", u"300", u"7.125");
  app.editorDirty = false;
  headless::TakeBoxes();
  Reopen(row);
  EXPECT_TRUE(headless::TakeBoxes().empty());
  ASSERT_EQ(Store().count, 2u);
  EXPECT_EQ(Store().active, 1u);
  EXPECT_EQ(NameOf(1), u"Flange");
  EXPECT_EQ(platform::TextOf(kIdDrawingFirst + 1), u"Flange");
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.objects[0].size, 2);
  EXPECT_EQ(sketch.undoDepth, 0);
  EXPECT_EQ(editLink.kind, kKindSketch);
  EXPECT_EQ(editLink.id, id);
  EXPECT_FALSE(app.editorDirty);  // to look at a block changes nothing
  // The drawing stands whole in its own, also after a switch of programs.
  OpenTab(u"", u"G1\r\n", u"Other.NC");
  SwitchTab(1);
  SwitchTab(0);
  headless::Click(kIdDrawingFirst);
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.objects[0].type, kTypeRectangle);
  EXPECT_EQ(sketch.objects[0].angle, 15);
  EXPECT_EQ(sketch.hidden[0], 1);
  EXPECT_TRUE(sketch.metric);
  EXPECT_EQ(sketch.thickness, 3);
  EXPECT_EQ(CutTexts(), (Texts{u"-2.500000", u"300.000000", u"7.125000"}));
  // Opened once more it comes up where it stands.
  Reopen(row);
  EXPECT_EQ(Store().count, 2u);
  EXPECT_EQ(Store().active, 1u);
}

TEST_F(ReopenedBlock, TakesAnEmptyDrawingBeforeAFurtherOne) {
  const int row = SendCircle(2, u"G1 X2\r\n");
  headless::Click(kIdDrawingAdd);
  headless::Click(kIdDrawingFirst);
  Add(kTypeLine, 0, 0, 5);
  Reopen(row);
  EXPECT_EQ(Store().count, 2u);
  EXPECT_EQ(Store().active, 1u);
  EXPECT_EQ(NameOf(1), u"CAD sketch");
}

TEST_F(ReopenedBlock, ReplacesWhatStandsInABlockWhereItIs) {
  const int first = SendCircle(1, u"G1 X1\r\n");
  ASSERT_EQ(RenameFeature(u"One"), RenameAnswer::Done);
  const int second = SendCircle(2, u"G1 X2\r\n");
  ASSERT_EQ(RenameFeature(u"Two"), RenameAnswer::Done);
  Add(kTypeLine, 0, 0, 5);
  Reopen(first);
  EXPECT_EQ(NameOf(1), u"One");
  // The drawing called after a block goes on to the next one, with its name.
  Reopen(second);
  EXPECT_EQ(Store().count, 2u);
  EXPECT_EQ(NameOf(1), u"Two");
  EXPECT_EQ(sketch.objects[0].size, 2);
  // Changed and not sent, it stands in no block.
  sketch.objects[0].size = 9;
  Reopen(first);
  EXPECT_EQ(Store().count, 3u);
  headless::Click(kIdDrawingFirst + 1);
  EXPECT_EQ(sketch.objects[0].size, 9);
}

TEST_F(ReopenedBlock, KeepsADrawingWhoseBlockDoesNotHoldAllOfIt) {
  const int other = SendCircle(9, u"G1 X9\r\n");
  Add(kTypeCircle, 0, 0, 3);
  const int row = Send(u"G1 X3\r\n");
  RememberBlock(SelectedFeatureId());
  const Texts sent = CutTexts();
  struct Change {
    const char* what;
    void (*make)();
    bool (*stands)();
  };
  const Change changes[] = {
      {"depth", [] { Cut(u"-0.2", u"10", u"0.5"); }, [] { return CutTexts()[0] == u"-0.200000"; }},
      {"feed", [] { Cut(u"-0.1", u"11", u"0.5"); }, [] { return CutTexts()[1] == u"11.000000"; }},
      {"Safe Z", [] { Cut(u"-0.1", u"10", u"1"); }, [] { return CutTexts()[2] == u"1.000000"; }},
      {"thickness", [] { SetSketchThickness(2); }, [] { return sketch.thickness == 2; }},
      {"a hidden object", [] { sketch.hidden[0] = 1; }, [] { return sketch.hidden[0] == 1; }},
      {"a locked object", [] { sketch.locked[0] = 1; }, [] { return sketch.locked[0] == 1; }},
      {"a name of the user's", [] { NameActiveDrawing(tabs[0], u"Left"); },
       [] { return NameOf(0) == u"Left"; }},
  };
  for (const Change& change : changes) {
    for (const int opened : {other, row}) {
      if (opened == row && change.stands == changes[6].stands) continue;
      headless::Click(kIdDrawingFirst);
      Cut(u"-0.1", u"10", u"0.5");
      SetSketchThickness(0);
      ClearFlags();
      NameActiveDrawing(tabs[0], u"Drawing 1");
      change.make();
      headless::TakeBoxes();
      Reopen(opened);
      EXPECT_TRUE(headless::TakeBoxes().empty()) << change.what;
      EXPECT_NE(Store().active, 0u) << change.what;
      EXPECT_EQ(sketch.objects[0].size, opened == row ? 3 : 9) << change.what;
      headless::Click(kIdDrawingFirst);
      EXPECT_EQ(sketch.objects[0].size, 3) << change.what;
      EXPECT_TRUE(change.stands()) << change.what;
    }
  }
}

TEST_F(ReopenedBlock, TakesADrawingWithItsNameAndUndoBringsBothBack) {
  const int row = SendCircle(2, u"G1 X2\r\n");
  ASSERT_EQ(RenameFeature(u"Flange"), RenameAnswer::Done);
  FillDrawings();
  Add(kTypeLine, 0, 0, 5);
  NameActiveDrawing(tabs[0], u"Left");
  Reopen(row);
  EXPECT_EQ(sketch.objects[0].size, 2);
  EXPECT_EQ(NameOf(0), u"Flange");
  SketchUndo();
  EXPECT_EQ(sketch.objects[0].type, kTypeLine);
  EXPECT_EQ(NameOf(0), u"Left");
  EXPECT_EQ(platform::TextOf(kIdDrawingFirst), u"Left");
  EXPECT_EQ(BlockOfLiveDrawing(), 0);
}

TEST_F(ReopenedBlock, AsksWhereNoDrawingIsFree) {
  const int row = SendCircle(2, u"G1 X2\r\n");
  FillDrawings();
  Add(kTypeLine, 0, 0, 5);
  headless::TakeBoxes();
  platform::SelectRow(kIdFeatureList, row);
  headless::QueueAnswer(platform::BoxAnswer::No);
  EditFeature();
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Open a block");
  EXPECT_EQ(
      boxes[0].text,
      u"No drawing tab is free. The block would take the place of \u201CDrawing 1\u201D, which "
      u"stands in no block of the program. Replace it?");
  EXPECT_EQ(boxes[0].buttons, platform::BoxButtons::NoYes);
  EXPECT_EQ(sketch.objects[0].type, kTypeLine);
  EXPECT_EQ(editLink.kind, 0);
  EXPECT_EQ(sketch.undoDepth, 0);
}

TEST_F(ReopenedBlock, LeavesTheDrawingThatItReplacedOneUndoAway) {
  const int row = SendCircle(2, u"G1 X2\r\n");
  FillDrawings();
  sketch.metric = true;
  sketch.thickness = 3;
  Add(kTypeRectangle, 10, 20, 30, 40, 15, 4);
  Add(kTypeLine, 1, 2, 3, 0, 45, 4);
  sketch.hidden[0] = 1;
  sketch.locked[1] = 1;
  sketch.selected = 1;
  Cut(u"-2.5", u"300", u"7.125");
  PushSketchUndo();
  app.editorDirty = false;
  tabs[0].dirty = false;
  Reopen(row);
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.objects[0].size, 2);
  EXPECT_FALSE(sketch.metric);
  EXPECT_EQ(sketch.thickness, 0);
  EXPECT_EQ(sketch.selected, -1);
  EXPECT_EQ(sketch.undoDepth, 1);
  EXPECT_EQ(editLink.kind, kKindSketch);
  EXPECT_EQ(Rows(kIdCadRecent), Texts{u"Opened a block (Undo: former drawing)"});
  EXPECT_FALSE(app.editorDirty);  // to look at a block changes nothing

  headless::Click(kIdCadUndo);
  ASSERT_EQ(sketch.objectCount, 2);
  EXPECT_EQ(sketch.objects[0].type, kTypeRectangle);
  EXPECT_EQ(sketch.objects[0].size2, 40);
  EXPECT_EQ(sketch.objects[1].angle, 45);
  EXPECT_EQ(sketch.objects[1].group, 4);
  EXPECT_EQ(sketch.hidden[0], 1);
  EXPECT_EQ(sketch.locked[1], 1);
  EXPECT_EQ(sketch.selected, 1);
  EXPECT_TRUE(sketch.metric);
  EXPECT_EQ(sketch.thickness, 3);
  EXPECT_EQ(CutTexts(), (Texts{u"-2.500000", u"300.000000", u"7.125000"}));
  EXPECT_EQ(sketch.undoDepth, 0);
  EXPECT_TRUE(app.editorDirty);
}

TEST_F(ReopenedBlock, IsUnlinkedByThatUndoSoThatUpdateCannotReplaceItByTheFormerDrawing) {
  const int row = SendCircle(2, u"G1 X2\r\n");
  FillDrawings();
  Add(kTypeLine, 0, 0, 5);
  static int refreshed = 0;
  Reopen(row);
  static const Builder listening{.linked = [] { ++refreshed; }};
  AddBuilder(listening);
  refreshed = 0;
  SketchUndo();
  EXPECT_EQ(editLink.kind, 0);
  EXPECT_EQ(editLink.id, 0);
  EXPECT_GT(refreshed, 0);
  // An undo of an edit of the block's own sketch keeps the link.
  Reopen(row);
  PushSketchUndo();
  sketch.objects[0].size = 9;
  SketchUndo();
  EXPECT_EQ(sketch.objects[0].size, 2);
  EXPECT_EQ(editLink.kind, kKindSketch);
}

TEST_F(ReopenedBlock, KeepsNoStepForAnEmptySketchOrTheSameGeometry) {
  const int row = SendCircle(2, u"G1 X2\r\n");
  PushSketchUndo();
  Reopen(row);
  EXPECT_EQ(sketch.undoDepth, 0);
  EXPECT_EQ(platform::RowCount(kIdCadRecent), 0);
  sketch.hidden[0] = 1;
  PushSketchUndo();
  Reopen(row);
  EXPECT_EQ(sketch.undoDepth, 0);
  EXPECT_EQ(sketch.hidden[0], 0);
}

TEST_F(ReopenedBlock, AnyNumberThatDiffersIsOtherGeometry) {
  const int row = SendCircle(2, u"G1 X2\r\n");
  FillDrawings();
  Reopen(row);
  const SketchObject same = sketch.objects[0];
  for (int what = 0; what < 9; ++what) {
    LoadSketchForProgram();
    Empty();
    sketch.metric = what == 0;
    SketchObject object = same;
    if (what == 1) object.type = kTypeSlot;
    if (what == 2) object.group = 1;
    if (what == 3) object.x += 1e-9;
    if (what == 4) object.y += 1e-9;
    if (what == 5) object.size += 1e-9;
    if (what == 6) object.size2 += 1e-9;
    if (what == 7) object.angle += 1e-9;
    AppendSketchObject(object);
    if (what == 8) AppendSketchObject(same);
    Reopen(row);
    EXPECT_EQ(sketch.undoDepth, 1) << what;
  }
}

TEST_F(ReopenedBlock, WalkingThroughManyBlocksKeepsTheDrawingAndNoneOfTheirs) {
  std::vector<int> rows;
  for (int i = 0; i < 30; ++i) rows.push_back(SendCircle(1 + i, u"G1 X2\r\n"));
  FillDrawings();
  Add(kTypeSlot, 7, 7, 7, 1);
  for (const int row : rows) {
    Reopen(row);
    EXPECT_EQ(sketch.undoDepth, 1);
  }
  EXPECT_EQ(sketch.objects[0].size, 30);
  SketchUndo();
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.objects[0].type, kTypeSlot);
}

TEST_F(ReopenedBlock, ABlocksSketchThatWasChangedIsADrawingOfItsOwn) {
  const int first = SendCircle(1, u"G1 X1\r\n");
  const int second = SendCircle(2, u"G1 X2\r\n");
  FillDrawings();
  Add(kTypeLine, 0, 0, 5);
  Reopen(first);
  for (int i = 0; i < 3; ++i) {
    PushSketchUndo();
    Add(kTypeWorkPoint, i, 0, 0);
  }
  Reopen(second);
  EXPECT_EQ(sketch.undoDepth, 2);  // its three edits are no steps any more
  SketchUndo();
  EXPECT_EQ(sketch.objectCount, 4);
  EXPECT_EQ(sketch.objects[0].size, 1);
  SketchUndo();
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.objects[0].type, kTypeLine);
  SketchUndo();
  EXPECT_EQ(sketch.objectCount, 1);
}

TEST_F(ReopenedBlock, WhatUndoBroughtBackIsNoBlocksSketch) {
  const int first = SendCircle(1, u"G1 X1\r\n");
  FillDrawings();
  Add(kTypeLine, 0, 0, 5);
  Reopen(first);
  SketchUndo();
  Reopen(first);
  EXPECT_EQ(sketch.undoDepth, 1);
  SketchUndo();
  EXPECT_EQ(sketch.objects[0].type, kTypeLine);
}

TEST_F(ReopenedBlock, ADrawingThatComesInByItsKeyDropsTheFormerOne) {
  const int row = SendCircle(2, u"G1 X2\r\n");
  FillDrawings();
  Add(kTypeLine, 0, 0, 5);
  Reopen(row);
  headless::Click(kIdDrawingFirst + 1);
  EXPECT_EQ(sketch.undoDepth, 0);
  Empty();
  Add(kTypeSlot, 1, 1, 2, 1);
  headless::Click(kIdDrawingFirst);
  Empty();
  Add(kTypeSlot, 1, 1, 2, 1);
  Reopen(row);
  EXPECT_EQ(sketch.undoDepth, 1);
  SketchUndo();
  EXPECT_EQ(sketch.objects[0].type, kTypeSlot);
}

// A circle of 1 that was sent, with the drawing that knows its block.
struct UndoneUpdate : ReopenedBlock {
  void SetUp() override {
    ReopenedBlock::SetUp();
    Empty();
    Add(kTypeCircle, 0, 0, 1);
    Send(u"G1 X1\r\n");
    block = SelectedFeatureId();
    RememberBlock(block);
  }
  static void Draw(double size) { sketch.objects[0].size = size; }
  // The drawing goes into the block that it is known to stand in, with another size.
  void Update(double size, const char16_t* code) const {
    Draw(size);
    ASSERT_EQ(BlockOfLiveDrawing(), block);
    ASSERT_TRUE(LinkFeature(block));
    Send(code);
    RememberBlock(SelectedFeatureId());
  }
  static void Undo() { headless::EditorUndo(kIdEditor); }
  std::int32_t block = 0;
};

TEST_F(UndoneUpdate, StandsInItsBlockAllTheSame) {
  Update(1.5, u"G1 X1.5\r\n");
  const std::u16string updated(platform::EditorText(kIdEditor));
  Undo();
  ASSERT_TRUE(platform::EditorText(kIdEditor) != updated);
  Draw(2.5);
  EXPECT_EQ(BlockOfLiveDrawing(), block);
}

TEST_F(UndoneUpdate, StandsInItsBlockBehindTwoOfThemAndASecondRound) {
  Update(1.5, u"G1 X1.5\r\n");
  Update(1.75, u"G1 X1.75\r\n");
  Undo();
  Undo();
  Draw(2.5);
  EXPECT_EQ(BlockOfLiveDrawing(), block);
  Update(3, u"G1 X3\r\n");
  Undo();
  Draw(4);
  EXPECT_EQ(BlockOfLiveDrawing(), block);
}

TEST_F(UndoneUpdate, IsForgottenWithADrawingThatIsBegunAnew) {
  Update(1.5, u"G1 X1.5\r\n");
  Undo();
  Call(cadHooks.sketchBegun);
  Draw(2.5);
  EXPECT_EQ(BlockOfLiveDrawing(), 0);
}

TEST_F(UndoneUpdate, ComesBackWithTheFormerDrawing) {
  Update(1.5, u"G1 X1.5\r\n");
  Undo();
  const Drawing& drawing = Store().drawings[Store().active];
  FormerDrawing former;
  former.block = drawing.block;
  SetDrawingBlock(tabs[0], {});
  ASSERT_EQ(BlockOfLiveDrawing(), 0);
  Call(cadHooks.formerDrawingBack, former);
  EXPECT_EQ(BlockOfLiveDrawing(), block);
}

TEST_F(ReopenedBlock, NeedsTheWorkspace) {
  const int row = SendCircle(2, u"G1 X2\r\n");
  Add(kTypeLine, 0, 0, 5);
  liveModels.cadWindowExists = [] { return false; };
  Reopen(row);
  EXPECT_EQ(editLink.kind, 0);
  EXPECT_EQ(sketch.objects[0].type, kTypeLine);
  EXPECT_EQ(sketch.undoDepth, 0);
}

}  // namespace
}  // namespace morva
