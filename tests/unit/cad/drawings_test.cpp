// Drawings of a program: their keys, the record they are kept in, and the companion file.

#include "cad/model/drawings.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

#include "cad/model/drawing_blocks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_record.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/panel/drawing_tabs.h"
#include "documents/companions.h"
#include "documents/feature_blocks.h"
#include "documents/feature_operations.h"
#include "documents/saving.h"
#include "unit/cad/cad_stage.h"

namespace morva {
namespace {

struct Drawings : cad_test::DrawingsStage {
  static CadStore& Store() { return *tabs[app.activeTab].cadStore; }
  static std::u16string NameOf(int index) { return Store().drawings[index].name; }
};
using Texts = std::vector<std::u16string>;

TEST_F(Drawings, TheFirstCommandMakesASetOfOneDrawing) {
  ASSERT_EQ(tabs[0].cadStore, nullptr);
  Add(kTypeCircle, 1, 2, 3);
  headless::Click(kIdDrawingFirst);
  ASSERT_NE(tabs[0].cadStore, nullptr);
  EXPECT_EQ(Store().count, 1u);
  EXPECT_EQ(Store().active, 0u);
  EXPECT_EQ(NameOf(0), u"Drawing 1");
  EXPECT_EQ(Store().drawings[0].settings.itemCount, 1);
  EXPECT_EQ(sketch.objectCount, 1);
}

TEST_F(Drawings, AddKeepsTheOldDrawingAndStartsANewOne) {
  Add(kTypeCircle, 1, 2, 3);
  PushSketchUndo();
  headless::Click(kIdDrawingAdd);
  EXPECT_EQ(Store().count, 2u);
  EXPECT_EQ(Store().active, 1u);
  EXPECT_EQ(NameOf(1), u"Drawing 2");
  EXPECT_EQ(sketch.objectCount, 0);
  EXPECT_EQ(sketch.selected, -1);
  EXPECT_FALSE(sketch.metric);
  EXPECT_EQ(CutTexts(), (Texts{u"-0.100000", u"10.000000", u"0.500000"}));
  EXPECT_TRUE(app.editorDirty);
  EXPECT_EQ(TextOf(kIdDrawingFirst), u"Drawing 1");
  EXPECT_EQ(TextOf(kIdDrawingFirst + 1), u"Drawing 2");
  EXPECT_FALSE(platform::IsChecked(kIdDrawingFirst));
  EXPECT_TRUE(platform::IsChecked(kIdDrawingFirst + 1));
  EXPECT_TRUE(platform::IsVisible(kIdDrawingFirst + 1));
  EXPECT_FALSE(platform::IsVisible(kIdDrawingFirst + 2));
}

TEST_F(Drawings, ANewDrawingTakesTheApplicationsUnitNotThatOfTheOneItLeaves) {
  Add(kTypeLine, 0, 0, 1);
  ASSERT_FALSE(sketch.metric);
  SetUnits(true);
  headless::Click(kIdDrawingAdd);
  EXPECT_TRUE(sketch.metric);
  EXPECT_EQ(CutTexts(), (Texts{u"-2.540000", u"254.000000", u"12.700000"}));
  headless::Click(kIdDrawingFirst);
  EXPECT_FALSE(sketch.metric);
}

TEST_F(Drawings, ANinthPressChangesNothingAndShowsTheMessage) {
  for (int i = 0; i < 7; ++i) headless::Click(kIdDrawingAdd);
  ASSERT_EQ(Store().count, 8u);
  EXPECT_EQ(NameOf(7), u"Drawing 8");
  Add(kTypeLine, 0, 0, 1);
  PushSketchUndo();
  app.editorDirty = false;
  headless::Click(kIdDrawingAdd);
  EXPECT_EQ(Store().count, 8u);
  EXPECT_EQ(Store().active, 7u);
  EXPECT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.undoDepth, 1);
  EXPECT_FALSE(app.editorDirty);
  EXPECT_EQ(TextOf(kIdCadStatus),
            u"Eight drawings per program. Start another program for more drawings.");
}

TEST_F(Drawings, EveryDrawingKeepsItsObjectsFlagsUnitThicknessAndCuttingData) {
  Add(kTypeSlot, 1, -2, 3, 0.5, 30, 4);
  Add(kTypeWorkPoint, 5, 6, 0);
  sketch.hidden[1] = 1;
  sketch.thickness = 0.25;
  Cut(u"-0.375", u"12.5", u"0.75");
  headless::Click(kIdDrawingAdd);
  sketch.metric = true;
  Add(kTypeCircle, 10, 20, 30);
  sketch.locked[0] = 1;
  sketch.thickness = 6;
  Cut(u"-3", u"200", u"5");
  headless::Click(kIdDrawingFirst);
  ASSERT_EQ(sketch.objectCount, 2);
  const SketchObject& slot = sketch.objects[0];
  EXPECT_EQ(slot.type, kTypeSlot);
  EXPECT_EQ(slot.group, 4);
  EXPECT_EQ(slot.x, 1);
  EXPECT_EQ(slot.y, -2);
  EXPECT_EQ(slot.size, 3);
  EXPECT_EQ(slot.size2, 0.5);
  EXPECT_EQ(slot.angle, 30);
  EXPECT_EQ(sketch.hidden[0], 0);
  EXPECT_EQ(sketch.hidden[1], 1);
  EXPECT_EQ(sketch.locked[0], 0);
  EXPECT_EQ(sketch.thickness, 0.25);
  EXPECT_FALSE(sketch.metric);
  EXPECT_EQ(sketch.selected, 0);
  EXPECT_EQ(CutTexts(), (Texts{u"-0.375000", u"12.500000", u"0.750000"}));
  EXPECT_EQ(TextOf(kIdCadDrawingName), u"Drawing 1");
  headless::Click(kIdDrawingFirst + 1);
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.objects[0].size, 30);
  EXPECT_EQ(sketch.locked[0], 1);
  EXPECT_EQ(sketch.hidden[1], 0);
  EXPECT_EQ(sketch.thickness, 6);
  EXPECT_TRUE(sketch.metric);
  EXPECT_EQ(CutTexts(), (Texts{u"-3.000000", u"200.000000", u"5.000000"}));
  EXPECT_EQ(TextOf(kIdCadDrawingName), u"Drawing 2");
}

TEST_F(Drawings, ASwitchDropsUndoRecentLinesToolsAndTheLink) {
  headless::Click(kIdDrawingAdd);
  Add(kTypeLine, 0, 0, 1);
  PushSketchUndo();
  LogSketchOperation(u"Edited geometry");
  tools.geometryTool = kGeometryTrim;
  tools.dragTool = 2;
  tools.multiSelect[0] = 1;
  tools.snapHit = true;
  editLink.kind = kKindSketch;
  editLink.id = 3;
  headless::Click(kIdDrawingFirst);
  EXPECT_EQ(sketch.undoDepth, 0);
  EXPECT_EQ(platform::RowCount(kIdCadRecent), 0);
  EXPECT_EQ(tools.geometryTool, kGeometryNone);
  EXPECT_EQ(tools.dragTool, 0);
  EXPECT_EQ(tools.multiSelect[0], 0);
  EXPECT_FALSE(tools.snapHit);
  EXPECT_EQ(editLink.kind, 0);
  SketchUndo();
  EXPECT_EQ(sketch.objectCount, 0);
}

TEST_F(Drawings, TheActiveOneOrOneOutOfRangeIsNoSwitch) {
  headless::Click(kIdDrawingAdd);
  Add(kTypeLine, 0, 0, 1);
  PushSketchUndo();
  for (const int index : {1, 2, 7, 8, -1}) {
    SelectDrawingTab(index);
    EXPECT_EQ(Store().active, 1u) << index;
    EXPECT_EQ(sketch.undoDepth, 1) << index;
  }
}

TEST_F(Drawings, RenamingTakesTwoPresses) {
  headless::Click(kIdDrawingRename);
  EXPECT_TRUE(platform::IsVisible(kIdCadDrawingName));
  EXPECT_EQ(platform::FocusedId(), kIdCadDrawingName);
  EXPECT_EQ(TextOf(kIdCadDrawingName), u"Drawing 1");
  EXPECT_FALSE(app.editorDirty);
  platform::SetText(kIdCadDrawingName, u"Bracket, left");
  headless::Click(kIdDrawingRename);
  EXPECT_FALSE(platform::IsVisible(kIdCadDrawingName));
  EXPECT_EQ(NameOf(0), u"Bracket, left");
  EXPECT_EQ(TextOf(kIdDrawingFirst), u"Bracket, left");
  EXPECT_TRUE(app.editorDirty);
  EXPECT_EQ(TextOf(kIdCadStatus), u"Drawing renamed. Save the program to preserve all CAD tabs.");
}

TEST_F(Drawings, AnEmptyNameLeavesTheOldOneAndStillMarksTheProgramModified) {
  headless::Click(kIdDrawingRename);
  platform::SetText(kIdCadDrawingName, u"");
  headless::Click(kIdDrawingRename);
  EXPECT_EQ(NameOf(0), u"Drawing 1");
  EXPECT_TRUE(app.editorDirty);
}

TEST_F(Drawings, ANameIsCutAt63Units) {
  headless::Click(kIdDrawingRename);
  platform::SetText(kIdCadDrawingName, std::u16string(64, u'n'));
  headless::Click(kIdDrawingRename);
  EXPECT_EQ(NameOf(0), std::u16string(63, u'n'));
}

TEST_F(Drawings, AnyOtherDrawingKeyClosesTheNameBoxWithoutTakingItsText) {
  for (const int key : {kIdDrawingFirst, kIdDrawingAdd}) {
    headless::Click(kIdDrawingRename);
    platform::SetText(kIdCadDrawingName, u"Lost");
    headless::Click(key);
    EXPECT_FALSE(platform::IsVisible(kIdCadDrawingName)) << key;
    EXPECT_EQ(NameOf(0), u"Drawing 1") << key;
  }
  EXPECT_EQ(NameOf(1), u"Drawing 2");
}

// Little-endian numbers put together by hand, not by the program's writer.
std::uint32_t Word(const unsigned char* bytes, int at) {
  return bytes[at] | bytes[at + 1] << 8 | bytes[at + 2] << 16 |
         static_cast<std::uint32_t>(bytes[at + 3]) << 24;
}
double Real(const unsigned char* bytes, int at) {
  std::uint64_t bits = 0;
  for (int i = 7; i >= 0; --i) bits = bits << 8 | bytes[at + i];
  double value = 0;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

TEST_F(Drawings, TheRecordHasItsFieldsAtTheirPlaces) {
  Add(kTypeRectangle, 1.5, -2.25, 3, 4, 45, 6);
  Add(kTypeWorkAxis, 7, 8, 9, 0, -90);
  sketch.metric = true;
  sketch.thickness = 0.125;
  Cut(u"-0.5", u"20", u"0.25");
  FeatureSettings record;
  ASSERT_TRUE(StoreLiveSketch(record));
  unsigned char bytes[kSettingsBytes];
  WriteSettings(record, bytes);
  EXPECT_EQ(Word(bytes, 0), 3u);  // version
  EXPECT_EQ(Word(bytes, 4), 4u);  // kind
  EXPECT_EQ(Word(bytes, 8), 1u);  // millimetre
  for (const int at : {12, 16, 20, 28}) EXPECT_EQ(Word(bytes, at), 0u) << at;
  EXPECT_EQ(Word(bytes, 24), 2u);  // objects
  EXPECT_EQ(Real(bytes, 32), -0.5);
  EXPECT_EQ(Real(bytes, 40), 20);
  EXPECT_EQ(Real(bytes, 48), 0.25);
  for (int at = 56; at < 152; at += 8) EXPECT_EQ(Real(bytes, at), 0) << at;
  EXPECT_EQ(Real(bytes, 152), 0.125);  // thickness, the last of sixteen
  EXPECT_EQ(Word(bytes, 160), 1u);     // rectangle
  EXPECT_EQ(Word(bytes, 164), 6u);     // group
  const double numbers[] = {1.5, -2.25, 3, 4, 45};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(Real(bytes, 168 + 8 * i), numbers[i]) << i;
  EXPECT_EQ(Word(bytes, 208), 5u);  // work axis, 48 bytes on
  EXPECT_EQ(Real(bytes, 248), -90);
  for (int at = 256; at < kSettingsBytes; ++at) ASSERT_EQ(bytes[at], 0) << at;
}

TEST_F(Drawings, AnEmptyOrWordyCuttingFieldIsStoredAsZero) {
  Cut(u"", u"fast", u"0.5");
  FeatureSettings record;
  ASSERT_TRUE(StoreLiveSketch(record));
  EXPECT_EQ(record.values[0], 0);
  EXPECT_EQ(record.values[1], 0);
  EXPECT_EQ(record.values[2], 0.5);
}

TEST_F(Drawings, HalfANumberLeavesTheCuttingFieldAsItWas) {
  Cut(u"-0.5", u"12", u"0.25");
  SaveLiveDrawing();
  Cut(u"-0,75", u"8 in", u"0.3");
  SaveLiveDrawing();
  LoadSketchForProgram();
  EXPECT_EQ(CutTexts(), (Texts{u"-0.500000", u"12.000000", u"0.300000"}));
}

TEST_F(Drawings, ACuttingFieldBeyondEveryRecordDoesNotCostTheDrawing) {
  Add(kTypeCircle, 1, 2, 3);
  Cut(u"-0.5", u"1000000000", u"0.25");
  FeatureSettings record;
  StartSketchRecord(record, false);
  EXPECT_FALSE(StoreSketchItems(record));  // what an insertion refuses
  headless::Click(kIdDrawingAdd);
  headless::Click(kIdDrawingFirst);
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.objects[0].size, 3);
  EXPECT_EQ(CutTexts(), (Texts{u"-0.500000", u"0.000000", u"0.250000"}));
}

TEST_F(Drawings, AFreshDrawingTakesTheUnitThatTheApplicationShows) {
  for (const bool metric : {true, false}) {
    SetUnits(metric);
    LoadSketchForProgram();
    EXPECT_EQ(sketch.metric, metric);
    EXPECT_EQ(CutTexts(), metric ? (Texts{u"-2.540000", u"254.000000", u"12.700000"})
                                 : (Texts{u"-0.100000", u"10.000000", u"0.500000"}));
  }
}

TEST_F(Drawings, AnEmptyDrawingFollowsTheUnitAndOneThatHoldsAnythingStays) {
  LoadSketchForProgram();
  SetUnits(true);
  FollowUnit();
  EXPECT_TRUE(sketch.metric);
  EXPECT_EQ(CutTexts()[0], u"-2.540000");
  Add(kTypeLine, 0, 0, 1);
  SetUnits(false);
  FollowUnit();
  EXPECT_TRUE(sketch.metric);
  // The user's own switch of the drawing is a step, and stands.
  RemoveSketchObject(0);
  PushSketchUndo();
  SetUnits(true);
  FollowUnit();
  SetUnits(false);
  FollowUnit();
  EXPECT_TRUE(sketch.metric);
}

TEST_F(Drawings, WhatWasTypedInAnEmptyDrawingIsConvertedWithItsUnit) {
  LoadSketchForProgram();
  headless::TypeInto(kIdCadDepth, u"-0.0625");
  headless::TypeInto(kIdCadFeed, u"4");
  headless::TypeInto(kIdCadSafeZ, u"");
  SetUnits(true);
  FollowUnit();
  EXPECT_TRUE(sketch.metric);
  EXPECT_EQ(CutTexts(), (Texts{u"-1.587500", u"101.600000", u""}));
  SetUnits(false);
  FollowUnit();
  EXPECT_FALSE(sketch.metric);
  EXPECT_EQ(CutTexts(), (Texts{u"-0.062500", u"4.000000", u""}));
  // A thickness is the drawing's own as well.
  LoadSketchForProgram();
  SetSketchThickness(0.5);
  SetUnits(true);
  FollowUnit();
  EXPECT_EQ(sketch.thickness, 12.7);
}

TEST_F(Drawings, AnEmptyDrawingWaitsWithItsUnitWhileALengthIsHalfTyped) {
  LoadSketchForProgram();
  headless::TypeInto(kIdCadDepth, u"-0,5");
  SetUnits(true);
  FollowUnit();
  EXPECT_FALSE(sketch.metric);
  EXPECT_EQ(CutTexts()[0], u"-0,5");
  headless::TypeInto(kIdCadDepth, u"-0.5");
  FollowUnit();
  EXPECT_TRUE(sketch.metric);
  EXPECT_EQ(CutTexts()[0], u"-12.700000");
}

TEST_F(Drawings, AProgramWithoutADrawingLoadsAnEmptySketch) {
  Add(kTypeCircle, 1, 2, 3);
  sketch.metric = true;
  sketch.thickness = 4;
  sketch.selected = 0;
  LoadSketchForProgram();
  EXPECT_EQ(sketch.objectCount, 0);
  EXPECT_FALSE(sketch.metric);
  EXPECT_EQ(sketch.thickness, 0);
  EXPECT_EQ(sketch.selected, -1);
  EXPECT_EQ(CutTexts(), (Texts{u"-0.100000", u"10.000000", u"0.500000"}));
  EXPECT_EQ(TextOf(kIdDrawingFirst), u"Drawing 1");
}

TEST_F(Drawings, ASwitchOfProgramsKeepsBothSketchesAndDropsUndo) {
  Add(kTypeCircle, 1, 2, 3);
  sketch.hidden[0] = 1;
  PushSketchUndo();
  OpenTab(u"", u"", u"Second.NC");
  SwitchTab(1);
  EXPECT_EQ(sketch.objectCount, 0);
  EXPECT_EQ(sketch.hidden[0], 0);
  EXPECT_EQ(sketch.undoDepth, 0);
  Add(kTypeLine, 9, 9, 9);
  PushSketchUndo();
  SwitchTab(0);
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.objects[0].type, kTypeCircle);
  EXPECT_EQ(sketch.hidden[0], 1);
  EXPECT_EQ(sketch.undoDepth, 0);
  SwitchTab(1);
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.objects[0].x, 9);
}

TEST_F(Drawings, EightDrawingsSurviveTheCompanionFile) {
  for (int i = 0; i < 8; ++i) {
    if (i > 0) headless::Click(kIdDrawingAdd);
    sketch.metric = i % 2 == 1;
    for (int k = 0; k <= i; ++k) Add(static_cast<SketchType>(k % 6), i, k, 1 + k, 0.5, 10.0 * k, k);
    sketch.hidden[i] = 1;
    sketch.locked[i / 2] = 1;
    sketch.thickness = 0.5 * i;
    const std::u16string depth = u"-" + support::Wide(std::to_string(i)) + u".5";
    Cut(depth.c_str(), u"33", u"2");
  }
  headless::Click(kIdDrawingFirst + 3);
  headless::Click(kIdDrawingRename);
  platform::SetText(kIdCadDrawingName, u"Fourth \u00D8");
  headless::Click(kIdDrawingRename);
  ASSERT_TRUE(SaveProgram(PathOf("Job.NC")));
  const std::string bytes = Raw("Job.NC.cadmv");
  ASSERT_EQ(bytes.size(), 40712u);
  const auto* raw = reinterpret_cast<const unsigned char*>(bytes.data());
  EXPECT_EQ(Word(raw, 0), 8u);
  EXPECT_EQ(Word(raw, 4), 3u);
  for (int i = 0; i < 8; ++i) {
    const unsigned char* slot = raw + 8 + 5088 * i;
    EXPECT_EQ(Word(slot, 4), 4u);
    EXPECT_EQ(Word(slot, 8), i % 2 == 1 ? 1u : 0u);
    EXPECT_EQ(Word(slot, 24), i + 1u);
    EXPECT_EQ(Real(slot, 32), -(i + 0.5));
    EXPECT_EQ(Real(slot, 152), 0.5 * i);
    EXPECT_EQ(slot[4768 + i], 1);
    EXPECT_EQ(slot[4864 + i / 2], 1);
    EXPECT_EQ(slot[4960], i == 3 ? 'F' : 'D');
  }
  EXPECT_EQ(raw[8 + 5088 * 3 + 4960 + 14], 0xD8);  // the eighth unit of the name

  const int index = OpenTab(PathOf("Job.NC"), u"G1\r\n", u"");
  SwitchTab(index);
  EXPECT_EQ(Store().count, 8u);
  EXPECT_EQ(Store().active, 3u);
  EXPECT_EQ(NameOf(3), u"Fourth \u00D8");
  for (int i = 0; i < 8; ++i) {
    SelectDrawingTab(i);
    ASSERT_EQ(sketch.objectCount, i + 1) << i;
    EXPECT_EQ(sketch.metric, i % 2 == 1) << i;
    EXPECT_EQ(sketch.thickness, 0.5 * i) << i;
    EXPECT_EQ(sketch.hidden[i], 1) << i;
    EXPECT_EQ(sketch.locked[i / 2], 1) << i;
    for (int k = 0; k <= i; ++k) {
      EXPECT_EQ(sketch.objects[k].type, k % 6);
      EXPECT_EQ(sketch.objects[k].group, k);
      EXPECT_EQ(sketch.objects[k].x, i);
      EXPECT_EQ(sketch.objects[k].angle, 10.0 * k);
    }
  }
}

// Drawn, sent, saved and opened again; then its diameter changes. The block that Generate asks
// about, 0 for none.
struct ReopenedProgram : Drawings {
  std::int32_t sent = 0;

  void Send(double size) {
    Add(kTypeCircle, 1, 2, size);
    ASSERT_TRUE(InsertFeatureBlock(kKindSketch, u"G1 X2\r\n"));
    sent = SelectedFeatureId();
    RememberBlock(sent);
  }
  static void Resize(double size) {
    SketchObject object = sketch.objects[0];
    object.size = size;
    PutSketchObject(0, object);
  }
  void SaveAndReopen() {
    const std::u16string path = PathOf("Job.NC");
    ASSERT_TRUE(SaveProgram(path));
    const std::u16string text(platform::EditorText(kIdEditor));
    app.editorDirty = false;
    tabs[0].dirty = false;
    CloseProgram();
    SwitchTab(OpenTab(path, text, u""));
  }
  // As a program writes it that keeps nothing of the block.
  void SaveWithoutHash() {
    ASSERT_TRUE(SaveProgram(PathOf("Job.NC")));
    std::string bytes = Raw("Job.NC.cadmv");
    for (int i = 0; i < 8; ++i) bytes.replace(static_cast<std::size_t>(8 + 5088 * i + 28), 4, 4, 0);
    Put("Job.NC.cadmv", bytes);
    const std::u16string text(platform::EditorText(kIdEditor));
    app.editorDirty = false;
    tabs[0].dirty = false;
    CloseProgram();
    SwitchTab(OpenTab(PathOf("Job.NC"), text, u""));
  }
};

TEST_F(ReopenedProgram, ADrawingIsKnownByItsBlockAlsoWhereItWasChangedBeforeAndAfter) {
  Send(3);
  Resize(4);  // changed and saved, it is equal to no block
  SaveAndReopen();
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(BlockOfLiveDrawing(), sent);
  Resize(5);
  EXPECT_EQ(BlockOfLiveDrawing(), sent);
  // Begun anew it is another one, in this run and the next.
  RemoveSketchObject(0);
  Add(kTypeCircle, 9, 9, 9);
  EXPECT_EQ(BlockOfLiveDrawing(), 0);
  SaveAndReopen();
  EXPECT_EQ(BlockOfLiveDrawing(), 0);
}

TEST_F(ReopenedProgram, TheFileKeepsTheHashOfTheBlocksCodeInTheRecord) {
  Send(3);
  ASSERT_TRUE(SaveProgram(PathOf("Job.NC")));
  const std::string bytes = Raw("Job.NC.cadmv");
  // FNV-1a over the units of "G1X2".
  std::uint32_t hash = 2166136261u;
  for (const char16_t unit : std::u16string_view(u"G1X2")) hash = (hash ^ unit) * 16777619u;
  EXPECT_EQ(Word(reinterpret_cast<const unsigned char*>(bytes.data()), 8 + 28), hash);
}

TEST_F(ReopenedProgram, WithoutAHashItIsKnownByTheGeometryOfTheFile) {
  Send(3);
  SaveWithoutHash();
  Resize(5);
  EXPECT_EQ(BlockOfLiveDrawing(), sent);
  RemoveSketchObject(0);
  Add(kTypeCircle, 9, 9, 9);
  EXPECT_EQ(BlockOfLiveDrawing(), 0);
}

TEST_F(ReopenedProgram, WithoutAHashItIsKnownByTheNameOfItsBlock) {
  Send(3);
  RefreshFeatureList();
  ASSERT_EQ(RenameFeature(u"Flange"), RenameAnswer::Done);
  NameActiveDrawing(tabs[0], u"Flange");
  Resize(4);
  SaveWithoutHash();
  EXPECT_EQ(BlockOfLiveDrawing(), sent);
  NameActiveDrawing(*ActiveTab(), u"Cover");
  EXPECT_EQ(BlockOfLiveDrawing(), 0);
}

TEST_F(Drawings, ADamagedCompanionIsIgnored) {
  Add(kTypeCircle, 1, 2, 3);
  ASSERT_TRUE(SaveProgram(PathOf("Job.NC")));
  const std::string good = Raw("Job.NC.cadmv");
  struct Damage {
    const char* what;
    std::size_t at;
    char byte;
  };
  const Damage damages[] = {{"no drawing in use", 0, 0},
                            {"nine drawings", 0, 9},
                            {"an active one not in use", 4, 1},
                            {"another kind", 8 + 4, 5},
                            {"version 4", 8, 4},
                            {"97 objects", 8 + 24, 97},
                            {"an object of type 6", 8 + 160, 6}};
  for (const Damage& damage : damages) {
    std::string bytes = good;
    bytes[damage.at] = damage.byte;
    Put("Bad.NC.cadmv", bytes);
    const int index = OpenTab(PathOf("Bad.NC"), u"G1\r\n", u"");
    SwitchTab(index);
    EXPECT_EQ(tabs[index].cadStore, nullptr) << damage.what;
    EXPECT_EQ(sketch.objectCount, 0) << damage.what;
    EXPECT_EQ(Raw("Bad.NC.cadmv"), bytes) << damage.what;
    app.editorDirty = false;
    tabs[index].dirty = false;
    CloseProgram();
  }
  for (const std::size_t size : {std::size_t{0}, std::size_t{40711}, std::size_t{40713}}) {
    std::string bytes = good;
    bytes.resize(size);
    Put("Bad.NC.cadmv", bytes);
    SwitchTab(OpenTab(PathOf("Bad.NC"), u"G1\r\n", u""));
    EXPECT_EQ(sketch.objectCount, 0) << size;
    app.editorDirty = false;
    CloseProgram();
  }
}

TEST_F(Drawings, AnAutosaveKeepsTheDrawingAfterAnUndoToo) {
  app.dataDirReady = true;
  NameProgram(tabs[0], PathOf("Job.NC"), false);
  RegisterTimer(kTimerAutosave, RunAutosave);
  RegisterSaving(nullptr);
  PushSketchUndo();
  Add(kTypeCircle, 1, 2, 3);
  headless::Advance(700);
  EXPECT_EQ(Raw("Job.NC.cadmv")[8 + 24], 1);
  EXPECT_FALSE(app.editorDirty);
  SketchUndo();
  headless::Advance(700);
  EXPECT_EQ(Raw("Job.NC.cadmv")[8 + 24], 0);
}

TEST_F(Drawings, ABlockReopensWithoutFlagsAndWithoutSelection) {
  Add(kTypeCircle, 1, 2, 3);
  Add(kTypeLine, 4, 5, 6, 0, 30, 2);
  sketch.hidden[0] = 1;
  sketch.locked[1] = 1;
  sketch.thickness = 0.5;
  Cut(u"-0.25", u"8", u"1");
  ASSERT_TRUE(InsertFeatureBlock(kKindSketch, u"G1 X2\r\n"));
  sketch.objectCount = 0;
  sketch.hidden[0] = sketch.locked[1] = 1;
  RefreshFeatureList();
  ASSERT_EQ(platform::RowCount(kIdFeatureList), 2);
  platform::SelectRow(kIdFeatureList, 1);
  EditFeature();
  ASSERT_EQ(sketch.objectCount, 2);
  EXPECT_EQ(sketch.objects[1].group, 2);
  EXPECT_EQ(sketch.objects[1].angle, 30);
  EXPECT_EQ(sketch.hidden[0], 0);
  EXPECT_EQ(sketch.locked[1], 0);
  EXPECT_EQ(sketch.selected, -1);
  EXPECT_EQ(sketch.thickness, 0.5);
  EXPECT_EQ(sketch.undoDepth, 0);
  EXPECT_EQ(CutTexts(), (Texts{u"-0.250000", u"8.000000", u"1.000000"}));
  EXPECT_EQ(editLink.kind, kKindSketch);
}

TEST_F(Drawings, ARecordThatDoesNotValidateLeavesTheSketchAlone) {
  Add(kTypeCircle, 1, 2, 3);
  sketch.locked[0] = 1;
  PushSketchUndo();
  FeatureSettings record;
  ASSERT_TRUE(StoreLiveSketch(record));
  for (int fault = 0; fault < 4; ++fault) {
    FeatureSettings bad = record;
    if (fault == 0) bad.kind = kKindPlate;
    if (fault == 1) bad.itemCount = 97;
    if (fault == 2) bad.items[0].p2 = -1;
    if (fault == 3) bad.values[15] = 1e9;
    EXPECT_FALSE(OpenSketchBlock(bad)) << fault;
    EXPECT_EQ(sketch.objectCount, 1) << fault;
    EXPECT_EQ(sketch.locked[0], 1) << fault;
    EXPECT_EQ(sketch.undoDepth, 1) << fault;
  }
}

TEST_F(Drawings, APlateIsStoredBeforeItIsLoadedAgain) {
  static std::vector<int> calls;
  calls.clear();
  liveModels.plateWindowExists = [] { return true; };
  liveModels.storePlate = [](FeatureSettings& record) {
    record = FeatureSettings();
    record.a = 77;
    calls.push_back(1);
    return true;
  };
  liveModels.loadPlate = [](const FeatureSettings* record) {
    calls.push_back(record ? record->a : -1);
  };
  headless::Click(kIdDrawingAdd);
  EXPECT_EQ(calls, (std::vector<int>{1, 77}));
}

TEST_F(Drawings, BeforeTheWorkspaceStandsNoCommandTouchesTheProgramsDrawings) {
  Add(kTypeCircle, 1, 2, 3);
  Cut(u"-0.375", u"12.5", u"0.75");
  ASSERT_TRUE(SaveProgram(PathOf("Job.NC")));
  const std::string saved = Raw("Job.NC.cadmv");
  liveModels.cadWindowExists = [] { return false; };
  const int index = OpenTab(PathOf("Job.NC"), u"G1\r\n", u"");
  SwitchTab(index);
  sketch.objectCount = 0;
  Cut(u"", u"", u"");
  app.editorDirty = false;
  AddDrawingTab();
  SelectDrawingTab(1);
  RenameDrawingTab();
  SaveLiveDrawing();
  EXPECT_EQ(Store().count, 1u);
  EXPECT_FALSE(app.editorDirty);
  ASSERT_TRUE(SaveProgram(PathOf("Job.NC")));
  EXPECT_EQ(Raw("Job.NC.cadmv"), saved);
}

TEST_F(Drawings, TypedCuttingDataIsAChangeOfTheProgramAndASetOneIsNot) {
  for (const int id : {kIdCadDepth, kIdCadFeed, kIdCadSafeZ}) {
    app.editorDirty = false;
    platform::SetText(id, u"1.25");
    EXPECT_FALSE(app.editorDirty) << id;
    headless::TypeInto(id, u"2.5");
    EXPECT_TRUE(app.editorDirty) << id;
    EXPECT_TRUE(tabs[0].dirty) << id;
  }
}

TEST_F(Drawings, TypedCuttingDataIsAutosaved) {
  app.dataDirReady = true;
  NameProgram(tabs[0], PathOf("Job.NC"), false);
  RegisterTimer(kTimerAutosave, RunAutosave);
  headless::TypeInto(kIdCadFeed, u"12.5");
  headless::Advance(700);
  const std::string bytes = Raw("Job.NC.cadmv");
  ASSERT_EQ(bytes.size(), 40712u);
  EXPECT_EQ(Real(reinterpret_cast<const unsigned char*>(bytes.data()), 8 + 40), 12.5);
}

TEST_F(Drawings, WithoutAProgramNothingHappens) {
  FreeTabs();
  app.activeTab = -1;
  app.tabCount = 0;
  Add(kTypeCircle, 1, 2, 3);
  AddDrawingTab();
  SelectDrawingTab(1);
  RenameDrawingTab();
  SaveLiveDrawing();
  EXPECT_EQ(sketch.objectCount, 1);
  EXPECT_FALSE(platform::IsVisible(kIdCadDrawingName));
}

}  // namespace
}  // namespace morva
