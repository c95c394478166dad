// The panel of the shape builder on the whole application.

#include "builders/shapes/shape_panel.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "app/commands.h"
#include "builders/shapes/shape_text.h"
#include "documents/edit_link.h"
#include "documents/feature_blocks.h"
#include "documents/feature_operations.h"
#include "documents/tab_table.h"
#include "library/shapes.h"
#include "library/units.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "shell/modes.h"
#include "support/workbench.h"
#include "text/codetext.h"

namespace morva {
namespace {

constexpr int kField = kIdShapeField;

struct ShapePanel : support::Workbench {
  void SetUp() override {
    support::Workbench::SetUp();
    headless::Advance(200);  // the program gets its markers
    SetMode(kModeShapes);
  }
  static std::u16string FieldText(int field) { return platform::TextOf(kField + field); }
  static void Type(int field, std::u16string_view text) {
    EXPECT_TRUE(headless::TypeInto(kField + field, text)) << field;
  }
  static void Choose(int row) { EXPECT_TRUE(headless::SelectRows(kIdShapeCombo, {row})) << row; }
  static void Insert() { EXPECT_TRUE(headless::Click(kIdShapeInsert)); }
  // A plate of 2 by 1 with a hole in its middle, in inches.
  static int Save(const char16_t* name, double width = 2, double height = 1) {
    SavedShape shape;
    const std::u16string text = name;
    std::copy(text.begin(), text.end(), shape.name);
    shape.objects[shape.count++] = {kTypeRectangle, 0, 0, 0, width, height, 0};
    shape.objects[shape.count++] = {kTypeCircle, 0, 0, 0, 0.5, 0, 0};
    const int index = PutShape(shape);
    RefreshShapeLists();
    return index;
  }
  static std::vector<std::u16string> Rows() {
    std::vector<std::u16string> rows;
    for (int i = 0; i < platform::RowCount(kIdShapeCombo); ++i) {
      rows.push_back(platform::RowText(kIdShapeCombo, i));
    }
    return rows;
  }
  // The box that came up; nothing of the program changed.
  void ExpectRefused(const std::u16string& title, const std::u16string& words) {
    headless::TakeBoxes();
    const std::u16string before = Text();
    Insert();
    const auto boxes = headless::TakeBoxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].title, title);
    EXPECT_EQ(boxes[0].text, words);
    EXPECT_EQ(Text(), before);
  }
};

constexpr char16_t kCheckWords[] =
    u"Enter valid non-zero shape dimensions and a positive feed, with Safe Z above the cutting "
    u"depth.";

// Yes parts the user code at the caret; the Undo gives its whole text back, whose end is far away.
TEST_F(ShapePanel, LeavesTheCaretAtThePlaceOfTheSplitBehindAnUndo) {
  std::u16string program = u"%\r\nO1\r\nG20\r\n";
  for (int i = 0; i < 60; ++i) program += u"G01 X" + IntegerText(i) + u".\r\n";
  platform::SetEditorText(kIdEditor, program + u"M30\r\n%\r\n");
  headless::Advance(200);
  const std::u16string before = Text();
  const int place = platform::EditorLineStart(kIdEditor, 8);
  platform::SetEditorSelection(kIdEditor, {place, place});
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  Insert();
  ASSERT_EQ(headless::TakeBoxes().size(), 1u);
  headless::Advance(200);
  EXPECT_EQ(platform::TextOf(kIdFeatureHint), u"Feature added. Select it, then Edit Settings.");
  headless::Focus(kIdEditor);
  ASSERT_TRUE(platform::UndoEditor(kIdEditor));
  headless::Advance(200);
  EXPECT_EQ(Text(), before);
  EXPECT_EQ(platform::EditorSelection(kIdEditor).from, place);
  EXPECT_EQ(platform::EditorSelection(kIdEditor).to, place);
  EXPECT_LE(platform::FirstVisibleLine(kIdEditor), 8);
  EXPECT_EQ(platform::TextOf(kIdFeatureHint), u"All program features appear here.");
  // Once: the end of the program is a place like any other.
  const int end = platform::EditorLength(kIdEditor);
  platform::SetEditorSelection(kIdEditor, {end, end});
  headless::Advance(200);
  EXPECT_EQ(platform::EditorSelection(kIdEditor).to, end);
}

TEST_F(ShapePanel, OffersSevenShapesAndThoseThatWereSaved) {
  Save(u"Ear");
  EXPECT_EQ(Rows(),
            (std::vector<std::u16string>{u"Square", u"Rectangle", u"Circle", u"Triangle", u"Line",
                                         u"Diamond / Other", u"Slot", u"CUSTOM: Ear"}));
  for (int i = 0; i < 7; ++i) EXPECT_EQ(platform::RowData(kIdShapeCombo, i), i);
  EXPECT_EQ(platform::RowData(kIdShapeCombo, 7), 1000);
  EXPECT_EQ(platform::AccessibleName(kIdShapeCombo), u"Shape");
}

TEST_F(ShapePanel, LabelsItsFieldsAndStartsThemByTheShape) {
  const struct {
    std::array<const char16_t*, 4> labels;
    std::array<const char16_t*, 4> starts;
    std::array<const char16_t*, 4> startsMm;
  } kCases[] = {{{u"Origin X", u"Origin Y", u"Size", u""},
                 {u"0.000", u"0.000", u"2.000", u""},
                 {u"0.000", u"0.000", u"50.800", u""}},
                {{u"Origin X", u"Origin Y", u"Width", u"Height"},
                 {u"0.000", u"0.000", u"3.000", u"2.000"},
                 {u"0.000", u"0.000", u"76.200", u"50.800"}},
                {{u"Center X", u"Center Y", u"Radius", u"Circumf."},
                 {u"0.000", u"0.000", u"1.000", u"6.283"},
                 {u"0.000", u"0.000", u"25.400", u"159.588"}},
                {{u"Origin X", u"Origin Y", u"Width", u"Height"},
                 {u"0.000", u"0.000", u"3.000", u"2.000"},
                 {u"0.000", u"0.000", u"76.200", u"50.800"}},
                {{u"Start X", u"Start Y", u"Delta X", u"Delta Y"},
                 {u"0.000", u"0.000", u"3.000", u"1.500"},
                 {u"0.000", u"0.000", u"76.200", u"38.100"}},
                {{u"Center X", u"Center Y", u"Width", u"Height"},
                 {u"0.000", u"0.000", u"3.000", u"2.000"},
                 {u"0.000", u"0.000", u"76.200", u"50.800"}},
                {{u"Center X", u"Center Y", u"Length", u"Width"},
                 {u"0.000", u"0.000", u"2.000", u"0.500"},
                 {u"0.000", u"0.000", u"50.800", u"12.700"}},
                {{u"Place X", u"Place Y", u"Saved width", u"Saved height"},
                 {u"0.000", u"0.000", u"2.000", u"1.000"},
                 {u"0.000", u"0.000", u"50.800", u"25.400"}}};
  Save(u"Ear");
  for (const bool metric : {false, true}) {
    SetUnits(metric);
    for (int row = 7; row >= 0; --row) {
      Choose(row);
      for (int i = 0; i < 4; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const char16_t* label = kCases[row].labels[at];
        EXPECT_EQ(platform::IsVisible(kField + i), label[0] != 0) << row << " " << i;
        if (!label[0]) continue;
        EXPECT_EQ(platform::AccessibleName(kField + i), label) << row << " " << i;
        EXPECT_EQ(FieldText(i), (metric ? kCases[row].startsMm : kCases[row].starts)[at])
            << row << " " << i;
      }
      // The saved one has other starts in millimetres: one decimal of feed.
      const bool saved = row == 7;
      EXPECT_EQ(FieldText(kShapeDepth), metric ? u"-2.540" : u"-0.100");
      EXPECT_EQ(FieldText(kShapeFeed), !metric ? u"10.0" : saved ? u"254.0" : u"254.00");
      EXPECT_EQ(FieldText(kShapeSafeZ), metric ? u"12.700" : u"0.500");
      EXPECT_EQ(platform::AccessibleName(kField + kShapeDepth), u"Z depth");
      EXPECT_EQ(platform::AccessibleName(kField + kShapeFeed), u"Feed");
      EXPECT_EQ(platform::AccessibleName(kField + kShapeSafeZ), u"Safe Z");
    }
  }
}

TEST_F(ShapePanel, ConvertsItsFieldsWithTheUnitKeys) {
  Type(kShapeX, u"1");
  Type(kShapeY, u"");
  Type(kShapeFeed, u"12.0");
  ASSERT_TRUE(headless::Click(kIdBuilderMm));
  EXPECT_EQ(FieldText(kShapeX), u"25.400");
  EXPECT_EQ(FieldText(kShapeY), u"");
  EXPECT_EQ(FieldText(kShapeSize), u"50.800");
  EXPECT_EQ(FieldText(kShapeFeed), u"304.80");
  EXPECT_EQ(platform::TextOf(kIdBuilderMm), u"MM *");
  ASSERT_TRUE(headless::Click(kIdBuilderInch));
  EXPECT_EQ(FieldText(kShapeX), u"1.000");
  EXPECT_EQ(FieldText(kShapeFeed), u"12.00");
}

TEST_F(ShapePanel, TakesTheQuickKeys) {
  for (int row = 0; row < 7; ++row) {
    ASSERT_TRUE(headless::Click(kIdQuickShapeFirst + row));
    EXPECT_EQ(ChosenShape(), row);
    EXPECT_TRUE(IsOn(kIdQuickShapeFirst + row));
    EXPECT_FALSE(IsOn(kIdQuickShapeFirst + (row + 1) % 7));
  }
  // What is chosen already keeps what was typed.
  Type(kShapeSize, u"7");
  ASSERT_TRUE(headless::Click(kIdQuickShapeLast));
  EXPECT_EQ(FieldText(kShapeSize), u"7");
  // From anywhere they bring the panel up.
  SetMode(kModeHome);
  RouteCommand(kIdQuickShapeFirst + kShapeCircle, platform::kNotifyClick);
  EXPECT_EQ(app.mode, kModeShapes);
  EXPECT_EQ(ChosenShape(), kShapeCircle);
}

TEST_F(ShapePanel, OffersTheSavedShapesInAPopup) {
  headless::TakeMenus();
  ASSERT_TRUE(headless::Click(kIdCustomShapes));
  auto menus = headless::TakeMenus();
  ASSERT_EQ(menus.size(), 1u);
  ASSERT_EQ(menus[0].items.size(), 1u);
  EXPECT_FALSE(menus[0].items[0].enabled);
  EXPECT_EQ(ChosenShape(), kShapeSquare);
  for (int i = 0; i < kMaxShapes; ++i)
    Save((u"S" + std::u16string(1, static_cast<char16_t>(u'A' + i))).c_str());
  headless::QueuePick(kIdCustomShapeLast);
  ASSERT_TRUE(headless::Click(kIdCustomShapes));
  menus = headless::TakeMenus();
  ASSERT_EQ(menus[0].items.size(), 24u);
  EXPECT_EQ(menus[0].items[23].text, u"SX");
  EXPECT_EQ(ChosenShape(), 7 + 23);
  EXPECT_EQ(platform::RowText(kIdShapeCombo, ChosenShape()), u"CUSTOM: SX");
  EXPECT_EQ(FieldText(kShapeSize), u"2.000");
  EXPECT_TRUE(IsOn(kIdCustomShapes));
}

TEST_F(ShapePanel, HasTheSlotInAModeOfItsOwn) {
  Choose(kShapeDiamond);
  SetMode(kModeSlot);
  EXPECT_EQ(platform::TextOf(kIdPanelHead), u"SLOT BUILDER");
  EXPECT_EQ(ChosenShape(), kShapeSlot);
  EXPECT_EQ(FieldText(kShapeSize2), u"0.500");
  EXPECT_TRUE(platform::IsVisible(kIdShapeInsert));
  SetMode(kModeShapes);
  EXPECT_EQ(ChosenShape(), kShapeDiamond);
  EXPECT_EQ(platform::TextOf(kIdPanelHead), u"SHAPES / SLOTS");
  // A slot that is chosen there stays, and goes when the mode is entered anew.
  Choose(kShapeSlot);
  EXPECT_EQ(app.mode, kModeShapes);
  SetMode(kModeShapes);
  EXPECT_EQ(ChosenShape(), kShapeDiamond);
  // Another shape in the slot builder is one of the other mode.
  SetMode(kModeSlot);
  Choose(kShapeLine);
  EXPECT_EQ(app.mode, kModeShapes);
  EXPECT_EQ(ChosenShape(), kShapeLine);
  EXPECT_EQ(FieldText(kShapeSize2), u"1.500");
  RouteCommand(kIdOldModeFirst + 9, platform::kNotifyClick);
  EXPECT_EQ(app.mode, kModeSlot);
  RouteCommand(kIdOldModeFirst + 2, platform::kNotifyClick);
  EXPECT_EQ(app.mode, kModeShapes);
}

TEST_F(ShapePanel, WritesAShapeByEnterInAField) {
  Choose(kShapeLine);
  Type(kShapeSize, u"0");
  Type(kShapeSize2, u"1");
  headless::Focus(kField + kShapeSize2);
  headless::PressKey({platform::kKeyEnter});
  EXPECT_NE(Text().find(u"(SHAPE: LINE)\r\nG20 (INCH)\r\nG90 G17 G94\r\nG00 Z0.500\r\n"
                        u"G00 X0.000 Y0.000\r\nG01 Z-0.100 F10.0\r\nG01 X0.000 Y1.000 F10.0\r\n"
                        u"G00 Z0.500\r\n"),
            Text().npos);
  EXPECT_TRUE(OutputHas(
      u"Shape inserted. Verify tool, offset, workholding, and clearances before running."));
  EXPECT_EQ(features.rows[features.count - 1].settings.kind, kKindShape);
  EXPECT_EQ(features.rows[features.count - 1].settings.a, kShapeLine);
}

TEST_F(ShapePanel, TakesTheCircumferenceWhereTheRadiusIsNothing) {
  Choose(kShapeCircle);
  Type(kShapeSize, u"0");
  Type(kShapeSize2, u"12.566370614");
  Insert();
  EXPECT_NE(Text().find(u"G02 X2.000 Y0.000 I-2.000 J0.000 F10.0"), Text().npos);
}

TEST_F(ShapePanel, WritesASavedShapeScaledToItsFields) {
  const int index = Save(u"Ear");
  Choose(7 + index);
  Type(kShapeX, u"10");
  Type(kShapeSize, u"4");
  // The hole would be no circle in a plate that is twice as wide and as high as saved.
  ExpectRefused(u"Shape Builder",
                u"A circle, and a rectangle or slot at an angle, cannot be stretched. Type width "
                u"and height in the ratio of the saved ones.");
  Type(kShapeSize2, u"2");
  Insert();
  // Twice as large: corners at 10 - 2 and -1.
  const std::u16string text = Text();
  EXPECT_NE(text.find(u"(SAVED CUSTOM SHAPE: Ear)\r\nG20 (INCH)\r\nG90 G17 G94\r\n"
                      u"G00 X8.000 Y-1.000\r\nG01 Z-0.100 F10.00\r\nG01 X12.000 Y-1.000 F10.0\r\n"),
            text.npos);
  EXPECT_NE(text.find(u"G00 X10.500 Y0.000\r\n"), text.npos);
  EXPECT_NE(text.find(u"(END SAVED CUSTOM SHAPE)\r\n"), text.npos);
  EXPECT_TRUE(OutputHas(u"Saved Custom Shape inserted from the reusable shape library."));
}

TEST_F(ShapePanel, RefusesInTheOrderOfItsChecks) {
  const struct {
    int row;
    int field;
    const char16_t* text;
  } kCases[] = {{kShapeSquare, kShapeSafeZ, u"-0.1"}, {kShapeSquare, kShapeFeed, u"0"},
                {kShapeSquare, kShapeSize, u"0"},     {kShapeSquare, kShapeSize, u"0.0000009"},
                {kShapeRectangle, kShapeSize2, u"0"}, {kShapeSlot, kShapeSize2, u"-0"},
                {kShapeTriangle, kShapeSize, u"0"},   {kShapeDiamond, kShapeSize2, u"0"}};
  for (const auto& each : kCases) {
    Choose(each.row == kShapeSquare ? kShapeRectangle : kShapeSquare);
    Choose(each.row);
    Type(each.field, each.text);
    SCOPED_TRACE(each.field);
    ExpectRefused(u"Shape Builder", kCheckWords);
    EXPECT_EQ(platform::FocusedId(), kField + each.field);
    EXPECT_EQ(FieldText(each.field), each.text);
  }
}

TEST_F(ShapePanel, RefusesATextOfWhichAPartWouldBeCut) {
  for (const char16_t* text : {u"1/2", u"1e3", u"0,5", u"abc", u"12abc", u"- 5"}) {
    Type(kShapeSize, text);
    ExpectRefused(u"Shape Builder",
                  u"Size holds no usable number. Write 0.75, not 0,75. Nothing was changed.");
    EXPECT_EQ(platform::FocusedId(), kField + kShapeSize);
  }
}

TEST_F(ShapePanel, TellsWhatAnEmptyFieldCountsAs) {
  Type(kShapeDepth, u"");
  Insert();
  EXPECT_NE(Text().find(u"G01 Z-0.100 F10.0"), Text().npos);
  EXPECT_TRUE(OutputHas(u"Z depth is not a number: -0.100 was used. Check the code"));
}

TEST_F(ShapePanel, TellsThatASlotIsNotShorterThanWide) {
  Choose(kShapeSlot);
  Insert();
  EXPECT_FALSE(OutputHas(u"not shorter than wide"));
  Type(kShapeSize, u"0.5");
  Type(kShapeSize2, u"2");
  Insert();
  EXPECT_TRUE(OutputHas(u"Length 0.500 counts as 2.000: a slot is not shorter than wide."));
}

TEST_F(ShapePanel, KeepsTheChosenShapeWhenTheLibraryChanges) {
  const int ear = Save(u"Ear");
  Save(u"Foot");
  Choose(7 + 1);
  Type(kShapeSize2, u"9");
  shapeLibrary.shapes[ear] = shapeLibrary.shapes[1];
  shapeLibrary.count = 1;
  RefreshShapeLists();
  EXPECT_EQ(ChosenShape(), 7);
  EXPECT_EQ(platform::RowText(kIdShapeCombo, 7), u"CUSTOM: Foot");
  EXPECT_EQ(FieldText(kShapeSize2), u"9");
}

TEST_F(ShapePanel, FollowsAShapeThatIsSavedAnewWithOtherSizes) {
  Choose(7 + Save(u"Ear"));
  Type(kShapeSize2, u"9");
  Save(u"Ear", 3, 2);
  EXPECT_EQ(ChosenShape(), 7);
  EXPECT_EQ(FieldText(kShapeSize), u"3.000");
  EXPECT_EQ(FieldText(kShapeSize2), u"9") << "what the user typed stays";
}

TEST_F(ShapePanel, FollowsAShapeThatIsSavedAnewAfterAChangeOfTheUnit) {
  Choose(7 + Save(u"Ear"));
  SetUnits(true);
  Save(u"Ear", 3, 2);
  EXPECT_EQ(FieldText(kShapeSize), u"76.200");
  EXPECT_EQ(FieldText(kShapeSize2), u"50.800");
}

TEST_F(ShapePanel, RefusesAShapeThatCutsNothing) {
  SavedShape points;
  points.name[0] = u'P';
  points.objects[points.count++] = {kTypeWorkPoint, 0, 1, 1, 0, 0, 0};
  ASSERT_EQ(PutShape(points), 0);
  RefreshShapeLists();
  Choose(7);
  ExpectRefused(u"Shape Builder",
                u"The saved shape holds work points and axes alone: there is nothing to cut.");
  EXPECT_EQ(platform::FocusedId(), kIdShapeCombo);
}

// The list lets go of a shape that is gone: nothing may be cut in its place.
TEST_F(ShapePanel, CutsNothingForAShapeThatIsGone) {
  Choose(7 + Save(u"Ear"));
  shapeLibrary.count = 0;
  RefreshShapeLists();
  ExpectRefused(u"Shape Builder",
                u"Choose a shape in the list first. A saved shape that the library no longer holds "
                u"cannot be cut.");
  EXPECT_EQ(platform::FocusedId(), kIdShapeCombo);
}

TEST_F(ShapePanel, StoresNoShapeThatARecordCannotHold) {
  SavedShape empty;
  empty.name[0] = u'E';
  ASSERT_EQ(PutShape(empty), 0);
  RefreshShapeLists();
  Choose(7);
  ExpectRefused(u"Invalid shape settings",
                u"Shape settings could not be stored. Check the dimensions and selected shape. "
                u"Nothing was inserted.");
  Choose(kShapeSquare);
  Type(kShapeX, u"1000000000");
  headless::TakeBoxes();
  Insert();
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
}

struct ShapeBlock : ShapePanel {
  // Inserts what the panel says and opens the block again.
  static void InsertAndEdit() {
    Insert();
    ASSERT_TRUE(headless::Click(kIdFeatureEdit));
    ASSERT_EQ(editLink.kind, kKindShape);
  }
};

TEST_F(ShapeBlock, OpensInItsUnitWithItsShapeAndNumbers) {
  SetUnits(true);
  Choose(kShapeSlot);
  Type(kShapeX, u"12.7");
  Type(kShapeSize2, u"10");
  Insert();
  SetUnits(false);
  SetMode(kModeHome);
  ASSERT_TRUE(headless::Click(kIdFeatureEdit));
  EXPECT_TRUE(UnitsMetric());
  EXPECT_EQ(app.mode, kModeSlot);
  EXPECT_EQ(ChosenShape(), kShapeSlot);
  EXPECT_EQ(FieldText(kShapeX), u"12.700000");
  EXPECT_EQ(FieldText(kShapeSize), u"50.800000");
  EXPECT_EQ(FieldText(kShapeSize2), u"10.000000");
  EXPECT_EQ(FieldText(kShapeFeed), u"254.000000");
  EXPECT_EQ(platform::TextOf(kIdShapeInsert), u"UPDATE SHAPE");
}

TEST_F(ShapeBlock, IsUpdatedInPlaceAsAnotherShapeToo) {
  InsertAndEdit();
  Choose(kShapeCircle);
  Insert();
  EXPECT_EQ(Text().find(u"(SHAPE: SQUARE)"), Text().npos);
  EXPECT_NE(Text().find(u"(SHAPE: CIRCLE)"), Text().npos);
  EXPECT_EQ(features.rows[features.count - 1].settings.a, kShapeCircle);
  EXPECT_EQ(platform::TextOf(kIdShapeInsert), u"INSERT SHAPE G-CODE");
  EXPECT_TRUE(OutputHas(u"Shape inserted. Verify tool"));  // before it was edited
  EXPECT_TRUE(OutputHas(u"Shape updated. Verify tool"));
}

TEST_F(ShapeBlock, TellsWhereItLeavesTheOtherUnitOn) {
  platform::SetEditorText(kIdEditor, u"O1\r\nG20 G90\r\nG1 X1.\r\n");
  Choose(kShapeSquare);
  Insert();
  EXPECT_FALSE(OutputHas(u"names no unit"));
  SetUnits(true);
  Insert();
  EXPECT_TRUE(
      OutputHas(u"The program was in inches. Code behind this block that names no unit runs in "
                u"millimeters."));
  SetUnits(false);
  Insert();
  EXPECT_TRUE(OutputHas(
      u"The program was in millimeters. Code behind this block that names no unit runs in "
      u"inches."));
}

TEST_F(ShapeBlock, IsNotUpdatedAfterAHandEdit) {
  InsertAndEdit();
  const std::size_t at = Text().find(u"G01 X2.000 Y0.000");
  ASSERT_NE(at, Text().npos);
  std::u16string text = Text();
  text.replace(at, 9, u"G01 X2.5 ");
  platform::SetEditorText(kIdEditor, text);
  ExpectRefused(u"Shape update stopped",
                u"This shape's code changed, was removed, or has duplicate IDs. Reopen its "
                u"settings from Features, or choose New / Unlink to insert a separate shape. No "
                u"code was replaced.");
}

// "Shapes and slots" is the only row that leads back to the form.
TEST_F(ShapeBlock, KeepsItsSlotWhenTheListLeadsBackToTheShapes) {
  Choose(kShapeSlot);
  InsertAndEdit();
  Type(kShapeSize2, u"0.75");
  SetMode(kModeShapes);
  EXPECT_EQ(ChosenShape(), kShapeSlot);
  EXPECT_EQ(FieldText(kShapeSize2), u"0.75");
  SetMode(kModeShapes);
  Insert();
  EXPECT_EQ(Text().find(u"(SHAPE: SQUARE)"), Text().npos);
  EXPECT_NE(Text().find(u"(SHAPE: SLOT)"), Text().npos);
  EXPECT_EQ(features.rows[features.count - 1].settings.a, kShapeSlot);
}

// A double click on UPDATE SHAPE updates, and then inserts: the key has changed under the pointer.
TEST_F(ShapePanel, TellsThatAnotherBlockHoldsTheSameCode) {
  constexpr char16_t kSame[] = u"hold the same code";
  Insert();
  EXPECT_FALSE(OutputHas(kSame));
  Type(0, u"4");
  Insert();
  EXPECT_FALSE(OutputHas(kSame));
  Insert();
  EXPECT_TRUE(OutputHas(u"Blocks #3, #4 hold the same code; each of them is cut."));
}

TEST_F(ShapeBlock, IsNamedWhileAnotherOneIsSelected) {
  Insert();
  InsertAndEdit();
  const auto hint = [] { return platform::TextOf(kIdFeatureHint); };
  ASSERT_TRUE(headless::SelectRows(kIdFeatureList, {features.count - 1}));
  EXPECT_EQ(hint(), u"Selected block. Edit Settings reopens its builder.");
  ASSERT_TRUE(headless::SelectRows(kIdFeatureList, {features.count - 2}));
  EXPECT_EQ(hint(), u"Selected block. The form still edits #" + IntegerText(features.count) +
                        u"; Edit Settings opens this one.");
}

TEST_F(ShapeBlock, IsInsertedAnewWhenItIsGone) {
  const std::u16string before = Text();
  InsertAndEdit();
  Type(kShapeSize, u"3");
  platform::SetEditorText(kIdEditor, before);
  headless::TakeBoxes();
  Insert();
  ASSERT_EQ(headless::TakeBoxes().size(), 1u);
  EXPECT_EQ(Text(), before);
  EXPECT_EQ(platform::TextOf(kIdShapeInsert), u"INSERT SHAPE G-CODE");
  EXPECT_EQ(FieldText(kShapeSize), u"3") << "what was typed stays";
  Insert();
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_NE(Text().find(u"(SHAPE: SQUARE)"), Text().npos);
}

TEST_F(ShapeBlock, StaysExcludedWhenItIsUpdated) {
  Insert();
  ASSERT_TRUE(headless::Click(kIdFeatureInclude));
  ASSERT_NE(Text().find(u"(MORVA DISABLED 1)"), Text().npos);
  ASSERT_TRUE(headless::Click(kIdFeatureEdit));
  Type(kShapeSize, u"5");
  Insert();
  EXPECT_NE(Text().find(u"(MORVA DISABLED 2)"), Text().npos);
  EXPECT_EQ(Text().find(u"(SHAPE: SQUARE)"), Text().npos);
  ASSERT_TRUE(headless::Click(kIdFeatureInclude));
  EXPECT_NE(Text().find(u"G01 X5.000 Y0.000 F10.0"), Text().npos);
}

// Of the list's choice before, whose extents are 2 by 1, one is the size in the block's field.
TEST_F(ShapeBlock, KeepsItsSizesWhenAnyShapeIsSaved) {
  const int frame = Save(u"Frame", 4, 3);
  const int ear = Save(u"Ear", 2, 1);
  Choose(7 + frame);
  Type(kShapeSize, u"2");
  Type(kShapeSize2, u"1.5");
  Insert();
  Choose(7 + ear);
  SetMode(kModeHome);
  ASSERT_TRUE(headless::Click(kIdFeatureEdit));
  ASSERT_EQ(FieldText(kShapeSize), u"2.000000");
  Save(u"Nose");
  EXPECT_EQ(FieldText(kShapeSize), u"2.000000");
}

// The block holds the objects, so the library gets them back.
TEST_F(ShapeBlock, BringsASavedShapeBackThatTheLibraryLost) {
  Choose(7 + Save(u"Ear"));
  Type(kShapeSize, u"4");
  Type(kShapeSize2, u"2");
  Insert();
  EXPECT_EQ(features.rows[features.count - 1].settings.a, -1);
  EXPECT_EQ(features.rows[features.count - 1].settings.itemCount, 2);
  shapeLibrary.count = 0;
  RefreshShapeLists();
  ASSERT_TRUE(headless::Click(kIdFeatureEdit));
  ASSERT_EQ(shapeLibrary.count, 1);
  EXPECT_EQ(std::u16string(shapeLibrary.shapes[0].name), u"Recovered project shape");
  EXPECT_EQ(ChosenShape(), 7);
  EXPECT_EQ(FieldText(kShapeSize), u"4.000000");
  Insert();
  EXPECT_NE(Text().find(u"(SAVED CUSTOM SHAPE: Recovered project shape)"), Text().npos);
  EXPECT_NE(Text().find(u"G01 X2.000 Y-1.000 F10.0"), Text().npos);
}

TEST_F(ShapeBlock, OpensNothingWhereTheLibraryIsFull) {
  Choose(7 + Save(u"Ear"));
  Insert();
  shapeLibrary.count = 0;
  for (int i = 0; i < kMaxShapes; ++i)
    Save((u"S" + std::u16string(1, static_cast<char16_t>(u'A' + i))).c_str(), 5, 5);
  const std::u16string before = Text();
  Choose(kShapeSquare);
  ASSERT_TRUE(headless::Click(kIdFeatureEdit));
  EXPECT_EQ(editLink.kind, 0);
  EXPECT_EQ(platform::TextOf(kIdFeatureHint), u"Shape library full; cannot restore project shape.");
  EXPECT_EQ(ChosenShape(), kShapeSquare);
  EXPECT_EQ(Text(), before);
}

// Two commands without keys work on the insertion line of the code index.
TEST_F(ShapePanel, LeavesTheQuickInsertsToTheIndex) {
  SetMode(kModeCodeIndex);
  ASSERT_TRUE(headless::TypeInto(kIdIndexInsertion, u"M88"));
  EXPECT_TRUE(RouteCommand(kIdQuickInsertFirst, platform::kNotifyClick));
  EXPECT_NE(Text().find(u"M88"), Text().npos);
  EXPECT_TRUE(RouteCommand(kIdQuickInsertLast, platform::kNotifyClick));
  EXPECT_EQ(platform::TextOf(kIdIndexInsertion), u"");
}

}  // namespace
}  // namespace morva
