// The pattern builders on the form of the drawing workspace, on the whole application.

#include "builders/shapes/pattern_builders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "builders/shapes/pattern_text.h"
#include "cad/model/cad_form.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"
#include "cad/panel/pattern_form.h"
#include "documents/builder.h"
#include "documents/edit_link.h"
#include "documents/feature_blocks.h"
#include "library/placed_shape.h"
#include "library/shapes.h"
#include "library/units.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "shell/modes.h"
#include "support/workbench.h"

namespace morva {
namespace {

struct PatternBuilders : support::Workbench {
  void SetUp() override {
    support::Workbench::SetUp();
    headless::Advance(200);  // the program gets its markers
  }
  static void Circular() { SetMode(kModeCircular); }
  static void Grid() { SetMode(kModeRectangular); }
  static void Type(int id, std::u16string_view text) {
    EXPECT_TRUE(headless::TypeInto(id, text)) << id;
  }
  static bool Holds(std::u16string_view code) { return Text().find(code) != Text().npos; }
  static int Count(std::u16string_view words) {
    int count = 0;
    const std::u16string text = Text();
    for (std::size_t at = text.find(words); at != text.npos; at = text.find(words, at + 1)) ++count;
    return count;
  }
  static void Insert(int key) {
    headless::TakeBoxes();
    EXPECT_TRUE(headless::Click(key));
    EXPECT_TRUE(headless::TakeBoxes().empty());
  }
  void ExpectRefused(int key, const std::u16string& title, const std::u16string& words) {
    headless::TakeBoxes();
    const std::u16string before = Text();
    EXPECT_TRUE(headless::Click(key));
    const auto boxes = headless::TakeBoxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].title, title);
    EXPECT_EQ(boxes[0].text, words);
    EXPECT_EQ(Text(), before);
  }
  // A line of an inch along X from the origin, with a work point beside it.
  static int SaveLine(const char16_t* name = u"Bar") {
    SavedShape shape;
    const std::u16string text = name;
    std::copy(text.begin(), text.end(), shape.name);
    shape.objects[shape.count++] = {kTypeLine, 0, 0, 0, 1, 0, 0};
    shape.objects[shape.count++] = {kTypeWorkPoint, 0, 5, 5, 0, 0, 0};
    const int index = PutShape(shape);
    RefreshShapeLists();
    return index;
  }
};

constexpr char16_t kCircularWords[] =
    u"Enter positive item size, pattern diameter, and feed, with Safe Z above cutting depth.";
constexpr char16_t kGridWords[] =
    u"Enter positive item dimensions and feed, with Safe Z above cutting depth.";
constexpr char16_t kLimitWords[] =
    u"This pattern exceeds the audited limit of 400 generated items. Reduce Rows or Columns to "
    u"keep the program reviewable and avoid unsafe oversized output.";

struct Known {
  int id;
  const char16_t* label;
  double fallback;
  bool length;
};
constexpr Known kCircularKnown[] = {{kIdCadCircSize, u"Size / length", 0.5, true},
                                    {kIdCadCircWidth, u"Width", 0.25, true},
                                    {kIdCadCircX, u"Center X", 0, true},
                                    {kIdCadCircY, u"Center Y", 0, true},
                                    {kIdCadCircDiameter, u"Pattern dia", 4, true},
                                    {kIdCadCircQuantity, u"Quantity", 6, false},
                                    {kIdCadCircStart, u"Start angle \u00B0", 0, false},
                                    {kIdCadCircRotation, u"Item rotation \u00B0", 0, false},
                                    {kIdCadCircDepth, u"Z depth", -0.1, true},
                                    {kIdCadCircFeed, u"Feed", 10, true},
                                    {kIdCadCircSafeZ, u"Safe Z", 0.5, true}};
constexpr Known kGridKnown[] = {{kIdCadRectSize, u"Size / length", 0.5, true},
                                {kIdCadRectWidth, u"Width", 0.25, true},
                                {kIdCadRectRotation, u"Item rotation \u00B0", 0, false},
                                {kIdCadRectX, u"Start X", 0, true},
                                {kIdCadRectY, u"Start Y", 0, true},
                                {kIdCadRectColumns, u"Columns X", 1, false},
                                {kIdCadRectRows, u"Rows Y", 1, false},
                                {kIdCadRectSpacingX, u"X spacing", 1, true},
                                {kIdCadRectSpacingY, u"Y spacing", 1, true},
                                {kIdCadRectDepth, u"Z depth", -0.1, true},
                                {kIdCadRectFeed, u"Feed", 10, true},
                                {kIdCadRectSafeZ, u"Safe Z", 0.5, true}};

TEST_F(PatternBuilders, HaveTheFieldsOfTheirTexts) {
  const struct {
    const Builder* builder;
    std::span<const BuilderField> fields;
    std::span<const Known> known;
  } kForms[] = {{&kCircularBuilder, CircularFields(), kCircularKnown},
                {&kGridBuilder, GridFields(), kGridKnown}};
  for (const auto& form : kForms) {
    SetMode(form.builder->modeOf({}));
    ASSERT_EQ(form.fields.size(), form.known.size());
    for (std::size_t i = 0; i < form.fields.size(); ++i) {
      const BuilderField& field = form.fields[i];
      const Known& known = form.known[i];
      EXPECT_EQ(std::u16string(field.label), known.label);
      EXPECT_EQ(field.fallback, known.fallback) << i;
      EXPECT_EQ(field.follows == Follows::Length, known.length) << i;
      // What is counted is whole; alone on its page a field is called by its label.
      const bool counted = field.kind == RowKind::Count;
      EXPECT_EQ(counted, !known.length && known.fallback > 0) << i;
      EXPECT_EQ(platform::AccessibleName(known.id), known.label) << i;
    }
  }
}

TEST_F(PatternBuilders, CallTheirListsAndKeysByTheirNames) {
  Circular();
  EXPECT_EQ(platform::AccessibleName(kIdCircularItem), u"Item");
  EXPECT_EQ(platform::AccessibleName(kIdCircularOrientation), u"Orientation");
  EXPECT_EQ(platform::FocusedId(), kIdCircularItem);
  const char16_t* const items[] = {u"Circle",   u"Square",  u"Rectangle",
                                   u"Triangle", u"Diamond", u"Slot"};
  const char16_t* const turns[] = {u"Fixed angle", u"Radial", u"Tangential"};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(platform::RowText(kIdCircularItem, i), items[i]);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(platform::RowText(kIdCircularOrientation, i), turns[i]);
  EXPECT_EQ(platform::SelectedRow(kIdCircularOrientation), 1);
  SaveLine();
  EXPECT_EQ(platform::RowText(kIdCircularItem, 6), u"CUSTOM: Bar");
  EXPECT_EQ(platform::RowData(kIdCircularItem, 6), 1000);
  EXPECT_FALSE(platform::IsVisible(kIdCadQuantity));
  Grid();
  EXPECT_EQ(platform::AccessibleName(kIdRectItem), u"Item");
  EXPECT_EQ(platform::RowText(kIdRectItem, 6), u"CUSTOM: Bar");
  EXPECT_TRUE(platform::IsVisible(kIdRectInsert));
  EXPECT_FALSE(platform::IsVisible(kIdCircularInsert));
  // The workspace's own key brings the quick pattern as well, and both have names of their own.
  ASSERT_TRUE(headless::Click(kIdCadCircularPanel));
  EXPECT_TRUE(platform::IsVisible(kIdCadQuantity));
  EXPECT_TRUE(platform::IsVisible(kIdCircularInsert));
  EXPECT_EQ(platform::AccessibleName(kIdCadCircQuantity), u"Pattern quantity");
}

TEST_F(PatternBuilders, WriteTheirFallbacksForWhatIsNoCount) {
  Circular();
  Type(kIdCadCircQuantity, u"abc");
  Insert(kIdCircularInsert);
  EXPECT_EQ(Count(u"(PATTERN "), 6);
  EXPECT_TRUE(OutputHas(u"Quantity is not a whole number: 6 was used."));
  EXPECT_TRUE(
      OutputHas(u"Circular Pattern inserted with item rotation/orientation. Verify pattern "
                u"diameter, spacing, "
                u"cutter compensation, and clearances."));
}

TEST_F(PatternBuilders, SayWhatACountHasToBe) {
  Circular();
  const struct {
    const char16_t* text;
    const char16_t* words;
  } rows[] = {{u"2.7", u"Quantity holds no usable number. Write a whole number, such as 12."},
              {u"1/2", u"Quantity holds no usable number. Write a whole number, such as 12."},
              {u"-1000000",
               u"Quantity holds no usable number. It must lie between -1,000,000 and 1,000,000."},
              {u"1000000",
               u"Quantity holds no usable number. It must lie between -1,000,000 and 1,000,000."}};
  for (const auto& row : rows) {
    Type(kIdCadCircQuantity, row.text);
    ExpectRefused(kIdCircularInsert, u"Circular Pattern",
                  row.words + std::u16string(u" Nothing was changed."));
  }
}

TEST_F(PatternBuilders, CutACountOfACircleToWhatThereMayBe) {
  Circular();
  Type(kIdCadCircQuantity, u"0");
  Insert(kIdCircularInsert);
  EXPECT_EQ(Count(u"(PATTERN "), 1);
  EXPECT_TRUE(OutputHas(u"Quantity 0 counts as 1."));
  Type(kIdCadCircQuantity, u"500");
  Insert(kIdCircularInsert);
  EXPECT_TRUE(OutputHas(u"Quantity 500 counts as 120."));
  EXPECT_EQ(Count(u"(PATTERN "), 121);
  EXPECT_TRUE(Holds(u"(PATTERN 120  ANGLE 357.0)"));
}

TEST_F(PatternBuilders, TakeFourHundredItemsAndRefuseMore) {
  Grid();
  Type(kIdCadRectColumns, u"20");
  Type(kIdCadRectRows, u"20");
  Insert(kIdRectInsert);
  EXPECT_EQ(Count(u"(ROW "), 400);
  EXPECT_TRUE(
      OutputHas(u"Rectangular Pattern inserted. Verify X/Y spacing, rotation, work offset, "
                u"tool compensation, and clearances."));
  Type(kIdCadRectColumns, u"21");
  ExpectRefused(kIdRectInsert, u"Rectangular Pattern", kLimitWords);
  // The limit is looked at before the sizes.
  Type(kIdCadRectSize, u"0");
  ExpectRefused(kIdRectInsert, u"Rectangular Pattern", kLimitWords);
  Type(kIdCadRectColumns, u"100");
  Type(kIdCadRectRows, u"999999");
  ExpectRefused(kIdRectInsert, u"Rectangular Pattern", kLimitWords);
  Type(kIdCadRectColumns, u"2");
  Type(kIdCadRectRows, u"2");
  ExpectRefused(kIdRectInsert, u"Rectangular Pattern", kGridWords);
  EXPECT_EQ(platform::FocusedId(), kIdCadRectSize);
}

TEST_F(PatternBuilders, PutASingleItemAtTheStart) {
  Grid();
  platform::SelectRow(kIdRectItem, 1);
  Type(kIdCadRectX, u"3");
  Type(kIdCadRectY, u"-2");
  Type(kIdCadRectColumns, u"1");
  Type(kIdCadRectRows, u"1");
  Insert(kIdRectInsert);
  EXPECT_TRUE(Holds(u"(ROW 1 COL 1)\r\nG00 X2.750 Y-2.250\r\nG01 Z-0.100 F10.00\r\n"));
}

TEST_F(PatternBuilders, PutTheFirstItemStraightAboveTheCenterAtNinetyDegrees) {
  Circular();
  platform::SelectRow(kIdCircularOrientation, 0);
  platform::SelectRow(kIdCircularItem, 1);
  Type(kIdCadCircQuantity, u"4");
  Type(kIdCadCircStart, u"90");
  Insert(kIdCircularInsert);
  // A square of a half about (0, 2).
  EXPECT_TRUE(Holds(u"(PATTERN 1  ANGLE 90.0)\r\nG00 X-0.250 Y1.750\r\n"));
}

TEST_F(PatternBuilders, RefuseInTheOrderOfTheirChecks) {
  const struct {
    int id;
    const char16_t* text;
  } kCases[] = {{kIdCadCircSize, u"0.0000009"},
                {kIdCadCircFeed, u"0"},
                {kIdCadCircSafeZ, u"-0.1"},
                {kIdCadCircSize, u"-1"}};
  for (const auto& each : kCases) {
    Circular();
    Type(each.id, each.text);
    ExpectRefused(kIdCircularInsert, u"Circular Pattern", kCircularWords);
    EXPECT_EQ(platform::FocusedId(), each.id);
    StartForm(kCadForm, kReadCircle);
  }
  // Only a slot needs its width.
  Type(kIdCadCircWidth, u"0");
  Insert(kIdCircularInsert);
  platform::SelectRow(kIdCircularItem, 5);
  ExpectRefused(kIdCircularInsert, u"Circular Pattern", kCircularWords);
  for (const char16_t* text : {u"1/2", u"1e3", u"0,5", u"abc"}) {
    Type(kIdCadCircWidth, text);
    ExpectRefused(kIdCircularInsert, u"Circular Pattern",
                  u"Width holds no usable number. Write 0.75, not 0,75. Nothing was changed.");
  }
}

// A pattern diameter of 0 puts every item on the centre; a negative size of a grid counts by its
// magnitude.
TEST_F(PatternBuilders, TakeWhatTheChecksLetPass) {
  Circular();
  Type(kIdCadCircDiameter, u"0");
  Insert(kIdCircularInsert);
  EXPECT_EQ(Count(u"G00 X0.250 Y0.000\r\n"), 6);
  Grid();
  platform::SelectRow(kIdRectItem, 1);
  Type(kIdCadRectSize, u"-1");
  Insert(kIdRectInsert);
  EXPECT_TRUE(Holds(u"(ROW 1 COL 1)\r\nG00 X-0.500 Y-0.500\r\n"));
}

TEST_F(PatternBuilders, TurnASavedShapeWithItsItem) {
  Circular();
  const int index = SaveLine();
  ASSERT_TRUE(headless::SelectRows(kIdCircularItem, {6 + index}));
  Type(kIdCadCircQuantity, u"4");
  Type(kIdCadCircDepth, u"-0.25");
  Insert(kIdCircularInsert);
  // Radial: the second bar stands at (0, 2) and points up. The work point cuts nothing.
  EXPECT_TRUE(
      Holds(u"(PATTERN 1  ANGLE 0.0)\r\nG00 X2.000 Y0.000\r\nG01 Z-0.250 F10.00\r\n"
            u"G01 X3.000 Y0.000 F10.0\r\nG00 Z0.500\r\n(PATTERN 2  ANGLE 90.0)\r\n"));
  EXPECT_TRUE(Holds(u"Y3.000 F10.0\r\nG00 Z0.500\r\n(PATTERN 3  ANGLE 180.0)\r\n"));
  const FeatureSettings& record = features.rows[features.count - 1].settings;
  EXPECT_EQ(record.kind, kKindCircular);
  EXPECT_EQ(record.a, -1);
  EXPECT_EQ(record.b, 1);
  EXPECT_EQ(record.itemCount, 2);
}

TEST_F(PatternBuilders, RefuseAShapeThatCutsNothing) {
  SavedShape points;
  points.name[0] = u'P';
  points.objects[points.count++] = {kTypeWorkPoint, 0, 1, 1, 0, 0, 0};
  ASSERT_EQ(PutShape(points), 0);
  RefreshShapeLists();
  Grid();
  ASSERT_TRUE(headless::SelectRows(kIdRectItem, {6}));
  ExpectRefused(kIdRectInsert, u"Rectangular Pattern",
                u"The saved shape holds work points and axes alone: there is nothing to cut.");
}

// The code repeats what the list says, so that it does not take the selected object's sizes for it.
TEST_F(PatternBuilders, RefuseCodeWhileTheSourceIsTheSelection) {
  for (const bool circular : {true, false}) {
    ASSERT_TRUE(headless::Click(kIdSurfaceCad));
    OpenPatternPanel(circular ? kPanelCircular : kPanelRectangular, false);
    ASSERT_TRUE(headless::Click(kIdCadPatternSource));
    const int key = circular ? kIdCircularInsert : kIdRectInsert;
    ExpectRefused(key, circular ? u"Circular Pattern" : u"Rectangular Pattern",
                  u"The code repeats the item of the list. Set the source to the shape library "
                  u"first, or press CREATE SKETCH PATTERN.");
    ASSERT_TRUE(headless::Click(kIdCadPatternSource));
    Insert(key);
  }
}

TEST_F(PatternBuilders, RefuseTheSelectionWhileAnotherKindIsUnderEdit) {
  ASSERT_TRUE(headless::Click(kIdSurfaceCad));
  OpenPatternPanel(kPanelRectangular, false);
  ASSERT_TRUE(headless::Click(kIdCadPatternSource));
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  Circular();
  Insert(kIdCircularInsert);
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  ASSERT_TRUE(headless::Click(kIdFeatureEdit));
  ASSERT_EQ(editLink.kind, kKindCircular);
  // The form of the block under edit has an item of its own.
  EXPECT_EQ(platform::TextOf(kIdCadPatternSource).find(u"selected"), std::u16string::npos);
  EXPECT_FALSE(platform::IsEnabled(kIdCadPatternSource));
  OpenPatternPanel(kPanelRectangular, false);
  EXPECT_NE(platform::TextOf(kIdCadPatternSource).find(u"selected"), std::u16string::npos);
  EXPECT_TRUE(platform::IsEnabled(kIdCadPatternSource));
  ExpectRefused(kIdRectInsert, u"Rectangular Pattern",
                u"The code repeats the item of the list. Set the source to the shape library "
                u"first, or press CREATE SKETCH PATTERN.");
  ASSERT_TRUE(headless::Click(kIdCadPatternSource));
  Insert(kIdRectInsert);
}

TEST_F(PatternBuilders, SayWhereItemsLieOnEachOther) {
  Circular();
  Insert(kIdCircularInsert);
  EXPECT_FALSE(OutputHas(u"lie on each other"));
  Type(kIdCadCircDiameter, u"0.0004");
  Type(kIdCadCircQuantity, u"1");
  Insert(kIdCircularInsert);
  EXPECT_FALSE(OutputHas(u"lie on each other")) << "a single one";
  Type(kIdCadCircQuantity, u"2");
  Insert(kIdCircularInsert);
  EXPECT_TRUE(OutputHas(u"All items lie on each other. Check the pattern's diameter."));
  Grid();
  Insert(kIdRectInsert);
  EXPECT_FALSE(OutputHas(u"the spacings of the grid"));
  Type(kIdCadRectSpacingY, u"-0.0004");
  Insert(kIdRectInsert);
  EXPECT_TRUE(OutputHas(u"Items lie on each other. Check the spacings of the grid."));
}

TEST_F(PatternBuilders, SayWhatColumnsAndRowsCountAs) {
  Grid();
  Insert(kIdRectInsert);
  EXPECT_FALSE(OutputHas(u"counts as"));
  Type(kIdCadRectColumns, u"0");
  Type(kIdCadRectRows, u"-3");
  Insert(kIdRectInsert);
  EXPECT_TRUE(OutputHas(u"Columns X 0 counts as 1."));
  EXPECT_TRUE(OutputHas(u"Rows Y -3 counts as 1."));
}

TEST_F(PatternBuilders, SayThatTheCodeKnowsNoDirections) {
  ASSERT_TRUE(headless::Click(kIdSurfaceCad));
  OpenPatternPanel(kPanelRectangular, false);
  Insert(kIdRectInsert);
  EXPECT_FALSE(OutputHas(u"count for the sketch only"));
  Type(kIdCadDirection1, u"30");
  Insert(kIdRectInsert);
  EXPECT_TRUE(
      OutputHas(u"The code's rows run along X and Y; the two directions count for the "
                u"sketch only."));
}

TEST_F(PatternBuilders, CutNothingForAShapeThatIsGone) {
  for (const int mode : {int{kModeCircular}, int{kModeRectangular}}) {
    SetMode(mode);
    const bool circular = mode == kModeCircular;
    const int list = circular ? kIdCircularItem : kIdRectItem;
    ASSERT_TRUE(headless::SelectRows(list, {6 + SaveLine()}));
    shapeLibrary.count = 0;
    RefreshShapeLists();
    ExpectRefused(circular ? kIdCircularInsert : kIdRectInsert,
                  circular ? u"Circular Pattern" : u"Rectangular Pattern",
                  u"Choose the pattern's item in the list first. A saved shape that the library no "
                  u"longer holds cannot be cut.");
    EXPECT_EQ(platform::FocusedId(), list);
  }
}

TEST_F(PatternBuilders, OpenTheirBlocksAndUpdateThemInPlace) {
  Circular();
  ASSERT_TRUE(headless::SelectRows(kIdCircularOrientation, {2}));
  ASSERT_TRUE(headless::SelectRows(kIdCircularItem, {5}));
  Type(kIdCadCircX, u"1.25");
  Type(kIdCadCircQuantity, u"3");
  Insert(kIdCircularInsert);
  StartForm(kCadForm, kReadCircle);
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  ASSERT_TRUE(headless::Click(kIdFeatureEdit));
  EXPECT_EQ(app.surface, kSurfaceCad);
  EXPECT_EQ(platform::SelectedRow(kIdCircularOrientation), 2);
  EXPECT_EQ(platform::SelectedRow(kIdCircularItem), 5);
  EXPECT_EQ(platform::TextOf(kIdCadCircX), u"1.250000");
  EXPECT_EQ(platform::TextOf(kIdCadCircQuantity), u"3");
  EXPECT_EQ(platform::TextOf(kIdCircularInsert), u"UPDATE PATTERN");
  EXPECT_EQ(platform::TextOf(kIdCadCreatePattern), u"UPDATE PATTERN FEATURE");
  EXPECT_FALSE(platform::IsEnabled(kIdCadPatternSource));
  // Both keys update.
  EXPECT_TRUE(OutputHas(u"Circular Pattern inserted with item"));
  EXPECT_FALSE(OutputHas(u"counts as"));
  Type(kIdCadCircQuantity, u"2");
  Insert(kIdCadCreatePattern);
  EXPECT_TRUE(OutputHas(u"Circular Pattern updated with item"));
  EXPECT_EQ(Count(u"(PATTERN "), 2);
  EXPECT_EQ(Count(u"(CIRCULAR PATTERN)"), 1);
  EXPECT_EQ(sketch.objectCount, 0);
  EXPECT_EQ(platform::TextOf(kIdCircularInsert), u"INSERT CIRCULAR PATTERN");
  EXPECT_EQ(platform::TextOf(kIdCadCreatePattern), u"CREATE SKETCH PATTERN");
  EXPECT_TRUE(platform::IsEnabled(kIdCadPatternSource));
}

// A block of one kind is not what the key of the other form updates.
TEST_F(PatternBuilders, UpdateOnlyTheirOwnKind) {
  Grid();
  Insert(kIdRectInsert);
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  ASSERT_TRUE(headless::Click(kIdFeatureEdit));
  ASSERT_EQ(editLink.kind, kKindRectangular);
  EXPECT_EQ(platform::TextOf(kIdRectInsert), u"UPDATE PATTERN");
  Circular();
  EXPECT_EQ(platform::TextOf(kIdCadCreatePattern), u"CREATE SKETCH PATTERN");
  EXPECT_EQ(platform::TextOf(kIdCircularInsert), u"INSERT CIRCULAR PATTERN");
}

TEST_F(PatternBuilders, BringALostShapeBackFromTheirBlocks) {
  Grid();
  ASSERT_TRUE(headless::SelectRows(kIdRectItem, {6 + SaveLine()}));
  Insert(kIdRectInsert);
  shapeLibrary.count = 0;
  RefreshShapeLists();
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  ASSERT_TRUE(headless::Click(kIdFeatureEdit));
  EXPECT_EQ(platform::RowText(kIdRectItem, platform::SelectedRow(kIdRectItem)),
            u"CUSTOM: Recovered project shape");
  Insert(kIdRectInsert);
  EXPECT_EQ(Count(u"(RECTANGULAR PATTERN)"), 1);
}

// Blocks of the two kinds, each by its mode, list, key and a number of its own.
struct PatternKind {
  int mode, list, key, field;
  const char16_t* head;
};
struct PatternBlock : PatternBuilders, testing::WithParamInterface<PatternKind> {
  static void InsertAndEdit() {
    SetMode(GetParam().mode);
    Insert(GetParam().key);
    Edit();
  }
  static void Edit() {
    ASSERT_TRUE(headless::Click(kIdSurfaceCode));
    ASSERT_TRUE(headless::Click(kIdFeatureEdit));
  }
};
INSTANTIATE_TEST_SUITE_P(Kinds, PatternBlock,
                         testing::Values(PatternKind{kModeCircular, kIdCircularItem,
                                                     kIdCircularInsert, kIdCadCircQuantity,
                                                     u"(CIRCULAR PATTERN)"},
                                         PatternKind{kModeRectangular, kIdRectItem, kIdRectInsert,
                                                     kIdCadRectColumns, u"(RECTANGULAR PATTERN)"}));

TEST_P(PatternBlock, IsNotUpdatedAfterAHandEdit) {
  InsertAndEdit();
  std::u16string text = Text();
  const std::size_t at = text.find(u"G01 Z-0.100");
  ASSERT_NE(at, text.npos);
  text.replace(at, 11, u"G01 Z-0.200");
  platform::SetEditorText(kIdEditor, text);
  Type(GetParam().field, u"1");
  headless::TakeBoxes();
  ASSERT_TRUE(headless::Click(GetParam().key));
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_NE(boxes[0].text.find(u"No code was replaced."), std::u16string::npos);
  EXPECT_EQ(Text(), text);
}

TEST_P(PatternBlock, StaysExcludedWhenItIsUpdated) {
  SetMode(GetParam().mode);
  Insert(GetParam().key);
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  ASSERT_TRUE(headless::Click(kIdFeatureInclude));
  ASSERT_EQ(Count(GetParam().head), 0);
  Edit();
  Type(GetParam().field, u"1");
  Insert(GetParam().key);
  EXPECT_EQ(Count(GetParam().head), 0);
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  ASSERT_TRUE(headless::Click(kIdFeatureInclude));
  EXPECT_EQ(Count(GetParam().head), 1);
  EXPECT_EQ(Count(u"G01 Z-0.100"), GetParam().mode == kModeCircular ? 1 : 2);
}

TEST_P(PatternBlock, OpensNothingWhereTheLibraryIsFull) {
  SetMode(GetParam().mode);
  ASSERT_TRUE(headless::SelectRows(GetParam().list, {6 + SaveLine()}));
  Insert(GetParam().key);
  shapeLibrary.count = 0;
  while (shapeLibrary.count < kMaxShapes) AppendShape(u"other");
  RefreshShapeLists();
  const std::u16string before = Text();
  Edit();
  EXPECT_EQ(editLink.kind, 0);
  EXPECT_EQ(platform::TextOf(kIdFeatureHint), u"Shape library full; cannot restore project shape.");
  EXPECT_EQ(Text(), before);
}

// The fields are in the drawing's unit, the code in the application's: what is cut stays as large.
TEST_F(PatternBuilders, WriteTheApplicationsUnitFromADrawingInTheOther) {
  Circular();
  Type(kIdCadCircX, u"1");
  ASSERT_TRUE(headless::Click(kIdCadMm));
  EXPECT_EQ(platform::TextOf(kIdCadCircX), u"25.400");
  EXPECT_EQ(platform::TextOf(kIdCadCircFeed), u"254.00");
  ASSERT_TRUE(headless::SelectRows(kIdCircularItem, {1}));
  ASSERT_TRUE(headless::SelectRows(kIdCircularOrientation, {0}));
  Insert(kIdCircularInsert);
  EXPECT_TRUE(Holds(u"(CIRCULAR PATTERN)\r\nG20 (INCH)\r\n"));
  EXPECT_TRUE(Holds(u"G00 X2.750 Y-0.250\r\nG01 Z-0.100 F10.00\r\n"));
  EXPECT_EQ(features.rows[features.count - 1].settings.metric, 0);
  EXPECT_NEAR(features.rows[features.count - 1].settings.values[kCircularX], 1, 1e-9);
  // Opened again its numbers are the drawing's.
  AppendSketchObject({kTypeCircle, 0, 0, 0, 1, 0, 0});
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  ASSERT_TRUE(headless::Click(kIdFeatureEdit));
  EXPECT_TRUE(sketch.metric);
  EXPECT_EQ(platform::TextOf(kIdCadCircX), u"25.400000");
  Insert(kIdCircularInsert);
  EXPECT_TRUE(Holds(u"G00 X2.750 Y-0.250\r\nG01 Z-0.100 F10.00\r\n"));
}

TEST_F(PatternBuilders, FollowTheApplicationsUnitInAFreshDrawing) {
  Circular();
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  ASSERT_TRUE(headless::Click(kIdMm));
  Circular();
  EXPECT_EQ(platform::TextOf(kIdCadCircSize), u"12.700");
  EXPECT_EQ(platform::TextOf(kIdCadCircFeed), u"254.00");
  EXPECT_EQ(platform::TextOf(kIdCadCircQuantity), u"6");
  Insert(kIdCircularInsert);
  EXPECT_TRUE(
      Holds(u"G21 (MM)\r\nG90 G17 G94\r\n(PATTERN 1  ANGLE 0.0)\r\nG00 X57.150 Y0.000\r\n"));
}

// The outlines of a picture in one ink, without the numbers of their parts.
std::vector<std::u16string> OutlinesOf(const Picture& picture, std::u16string_view ink) {
  std::vector<std::u16string> outlines;
  const std::u16string text = PictureText(picture);
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find(u'\n', at);
    std::u16string line = text.substr(at, end - at);
    at = end + 1;
    const std::size_t part = line.find(u" part ");
    if (line.find(ink) == line.npos || line.starts_with(u"dimension")) continue;
    if (part != line.npos) line.erase(part, line.find(u' ', part + 6) - part);
    outlines.push_back(line);
  }
  std::sort(outlines.begin(), outlines.end());
  return outlines;
}

// Rounding may take the last of the four decimals another way.
void ExpectSame(const std::vector<std::u16string>& shown, const std::vector<std::u16string>& made) {
  ASSERT_EQ(shown.size(), made.size());
  for (std::size_t i = 0; i < shown.size(); ++i) {
    std::istringstream one(platform::ToUtf8(shown[i]));
    std::istringstream other(platform::ToUtf8(made[i]));
    std::string a;
    std::string b;
    while (std::getline(one, a, ' ') && std::getline(other, b, ' ')) {
      double x[2] = {};
      double y[2] = {};
      const int numbers = std::sscanf(a.c_str(), "%lf,%lf", &x[0], &x[1]);
      ASSERT_EQ(std::sscanf(b.c_str(), "%lf,%lf", &y[0], &y[1]), numbers);
      ASSERT_TRUE(numbers > 0 || a == b) << a << " " << b;
      ASSERT_NEAR(x[0], y[0], 0.00011) << platform::ToUtf8(shown[i]);
      ASSERT_NEAR(x[1], y[1], 0.00011) << platform::ToUtf8(shown[i]);
    }
    EXPECT_EQ(one.eof(), true);
  }
}

struct PatternPictures : PatternBuilders {
  static constexpr std::u16string_view kCut = u" feature ";
  static constexpr std::u16string_view kDashed = u" construction ";
  // What the view above the fields shows.
  static const Picture& Shown(bool circular) {
    static Picture picture;
    FormValues values;
    ReadForm(kCadForm, circular ? kReadCircle : kReadGrid, Reading::Lax, values);
    ClearPicture(picture, values.metric);
    (circular ? kCircularBuilder : kGridBuilder).draw(values, picture);
    return picture;
  }
  // The sketch's own objects from this one on, drawn in this ink.
  static const Picture& Sketched(int first, Ink ink) {
    static Picture picture;
    ClearPicture(picture, sketch.metric);
    for (int i = first; i < sketch.objectCount; ++i) {
      SavedShape one;
      one.count = 1;
      one.objects[0] = sketch.objects[i];
      AddSavedShape(picture, one, {}, ink);
    }
    return picture;
  }
  static void Open(bool circular) {
    ASSERT_TRUE(headless::Click(kIdSurfaceCad));
    OpenPatternPanel(circular ? kPanelCircular : kPanelRectangular, false);
  }
};

TEST_F(PatternPictures, ShowTheDirectionsAsCreateTakesThem) {
  for (const int item : {0, 1, 2, 5}) {
    SCOPED_TRACE(item);
    Open(false);
    ASSERT_TRUE(headless::SelectRows(kIdRectItem, {item}));
    Type(kIdCadRectX, u"1.5");
    Type(kIdCadRectRotation, u"20");
    Type(kIdCadDirection1, u"0");
    Type(kIdCadDirection2, u"90");
    EXPECT_TRUE(OutlinesOf(Shown(false), kDashed).empty()) << "the code's own directions";
    const auto code = OutlinesOf(Shown(false), kCut);
    Type(kIdCadDirection1, u"30");
    Type(kIdCadDirection2, u"135");
    EXPECT_EQ(OutlinesOf(Shown(false), kCut), code) << "what the code cuts stays";
    EXPECT_NE(PictureText(Shown(false)).find(u": sketch\n"), std::u16string::npos);
    const auto shown = OutlinesOf(Shown(false), kDashed);
    const int before = sketch.objectCount;
    ASSERT_TRUE(headless::Click(kIdCadCreatePattern));
    ASSERT_EQ(sketch.objectCount, before + 6);
    ExpectSame(shown, OutlinesOf(Sketched(before, Ink::Construction), kDashed));
  }
}

TEST_F(PatternPictures, ShowTheSelectedObjectAsCreateRepeatsIt) {
  const SketchObject kObjects[] = {{kTypeCircle, 0, 1, 2, 0.5, 0, 0},
                                   {kTypeRectangle, 0, 1, 2, 1.5, 0.5, 15},
                                   {kTypeSlot, 0, 1, 2, 1.5, 0.5, -40},
                                   {kTypeLine, 0, 1, 2, 1.25, 0, 70}};
  for (const bool metric : {false, true}) {
    for (const bool circular : {true, false}) {
      for (const SketchObject& object : kObjects) {
        SCOPED_TRACE(object.type);
        Open(circular);
        ASSERT_TRUE(headless::Click(metric ? kIdCadMm : kIdCadInch));
        SketchObject first = object;
        if (metric) ScaleLengths(first, 25.4);
        const int before = sketch.objectCount;
        AppendSketchObject(first);
        SetSelected(before);
        if (PatternSourceIsSelection(circular ? kPanelCircular : kPanelRectangular)) {
          ASSERT_TRUE(headless::Click(kIdCadPatternSource));
        }
        ASSERT_TRUE(headless::Click(kIdCadPatternSource));
        if (circular) {
          ASSERT_TRUE(headless::SelectRows(kIdCircularOrientation, {2}));
          Type(kIdCadCircRotation, u"10");
          Type(kIdCadCircQuantity, u"5");
        } else {
          Type(kIdCadRectRotation, u"10");
          Type(kIdCadDirection1, u"30");
        }
        const auto shown = OutlinesOf(Shown(circular), kCut);
        const bool byDiameter =
            PictureText(Shown(circular)).find(metric ? u"\u00D812.70" : u"\u00D80.500") !=
            std::u16string::npos;
        EXPECT_EQ(byDiameter, object.type == kTypeCircle);
        ASSERT_TRUE(headless::Click(kIdCadCreatePattern));
        ASSERT_EQ(sketch.objectCount, before + (circular ? 5 : 6));
        ExpectSame(shown, OutlinesOf(Sketched(before, Ink::Feature), kCut));
        while (sketch.objectCount > 0) RemoveSketchObject(sketch.objectCount - 1);
      }
    }
  }
}

TEST_F(PatternPictures, SayThatNothingIsSelected) {
  Open(false);
  ASSERT_TRUE(headless::Click(kIdCadPatternSource));
  const std::u16string text = PictureText(Shown(false));
  EXPECT_NE(text.find(u"No object is selected"), text.npos);
  EXPECT_TRUE(OutlinesOf(Shown(false), kCut).empty());
}

TEST_F(PatternBuilders, ShowWhatTheyCutAboveTheirFields) {
  for (const int mode : {int{kModeCircular}, int{kModeRectangular}}) {
    SetMode(mode);
    const bool circular = mode == kModeCircular;
    const int view = circular ? kViewCircularPicture : kViewRectPicture;
    EXPECT_TRUE(platform::IsVisible(view));
    EXPECT_FALSE(platform::IsVisible(circular ? kViewRectPicture : kViewCircularPicture));
    const auto before = headless::PaintOf(view);
    EXPECT_GT(before.size(), 20u);
    Type(circular ? kIdCadCircQuantity : kIdCadRectColumns, u"1");
    const auto after = headless::PaintOf(view);
    EXPECT_LT(after.size(), before.size());
  }
  ASSERT_TRUE(headless::Click(kIdCadScale));
  EXPECT_FALSE(platform::IsVisible(kViewRectPicture));
}

}  // namespace
}  // namespace morva
