// Patterns as program text, written out by hand, and what their forms refuse.

#include "builders/shapes/pattern_text.h"

#include <gtest/gtest.h>

#include <string>

#include "app/limits.h"
#include "platform/file.h"
#include "text/code_writer.h"
#include "text/codetext.h"

namespace morva {
namespace {

template <typename Values>
Values Filled(std::span<const BuilderField> fields) {
  Values values;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    values.numbers[i] = ParseDecimal(fields[i].start, fields[i].fallback);
  }
  return values;
}
CircularValues StartCircular(ItemShape shape = ItemShape::Square) {
  CircularValues values = Filled<CircularValues>(CircularFields());
  values.item.shape = shape;
  return values;
}
GridValues StartGrid(ItemShape shape = ItemShape::Square) {
  GridValues values = Filled<GridValues>(GridFields());
  values.item.shape = shape;
  return values;
}

std::string Written(const CircularValues& values) {
  CodeWriter out;
  out.most = CircularRoom(values);
  WriteCircular(values, out);
  EXPECT_FALSE(out.full);
  return platform::ToUtf8(out.text);
}
std::string Written(const GridValues& values) {
  CodeWriter out;
  out.most = GridRoom(values);
  WriteGrid(values, out);
  EXPECT_FALSE(out.full);
  return platform::ToUtf8(out.text);
}

int CountOf(const std::string& text, const std::string& wanted) {
  int count = 0;
  for (std::size_t at = text.find(wanted); at != text.npos; at = text.find(wanted, at + 1)) ++count;
  return count;
}

// A square of 1 at 2 to the right of the centre, then turned by 180 degrees on the left.
TEST(CircularText, TurnsItsItemsWithTheCircle) {
  CircularValues values = StartCircular();
  values.numbers[kCircularSize] = 1;
  values.numbers[kCircularQuantity] = 2;
  EXPECT_EQ(Written(values),
            "\r\n(CIRCULAR PATTERN)\r\nG20 (INCH)\r\nG90 G17 G94\r\n"
            "(PATTERN 1  ANGLE 0.0)\r\nG00 X1.500 Y-0.500\r\nG01 Z-0.100 F10.00\r\n"
            "G01 X2.500 Y-0.500 F10.0\r\nG01 X2.500 Y0.500 F10.0\r\nG01 X1.500 Y0.500 F10.0\r\n"
            "G01 X1.500 Y-0.500 F10.0\r\nG00 Z0.500\r\n"
            "(PATTERN 2  ANGLE 180.0)\r\nG00 X-1.500 Y0.500\r\nG01 Z-0.100 F10.00\r\n"
            "G01 X-2.500 Y0.500 F10.0\r\nG01 X-2.500 Y-0.500 F10.0\r\nG01 X-1.500 Y-0.500 F10.0\r\n"
            "G01 X-1.500 Y0.500 F10.0\r\nG00 Z0.500\r\n"
            "(END CIRCULAR PATTERN)\r\n");
}

TEST(CircularText, TurnsItsItemsAsTheListSays) {
  CircularValues values = StartCircular(ItemShape::Triangle);
  values.numbers[kCircularQuantity] = 1;
  values.numbers[kCircularStart] = 90;
  values.numbers[kCircularX] = 10;
  // The tip, half a width of 0.25 from the centre at 10,2, is where the cut begins.
  values.orientation = Orientation::Fixed;
  EXPECT_NE(Written(values).find("ANGLE 90.0)\r\nG00 X10.000 Y2.125\r\n"), std::string::npos);
  values.orientation = Orientation::Radial;
  EXPECT_NE(Written(values).find("G00 X9.875 Y2.000\r\n"), std::string::npos);
  values.orientation = Orientation::Tangential;
  EXPECT_NE(Written(values).find("G00 X10.000 Y1.875\r\n"), std::string::npos);
  values.numbers[kCircularTurn] = 90;
  EXPECT_NE(Written(values).find("G00 X10.125 Y2.000\r\n"), std::string::npos);
}

TEST(CircularText, DoesNotReduceItsAngles) {
  CircularValues values = StartCircular();
  values.numbers[kCircularStart] = 450;
  values.numbers[kCircularQuantity] = 4;
  EXPECT_NE(Written(values).find("(PATTERN 1  ANGLE 450.0)"), std::string::npos);
  EXPECT_NE(Written(values).find("(PATTERN 4  ANGLE 720.0)"), std::string::npos);
}

TEST(CircularText, PutsTheFirstOfFourAboveTheCentre) {
  CircularValues values = StartCircular(ItemShape::Circle);
  values.numbers[kCircularStart] = 90;
  values.numbers[kCircularQuantity] = 4;
  EXPECT_NE(Written(values).find("(PATTERN 1  ANGLE 90.0)\r\nG00 X0.250 Y2.000\r\n"),
            std::string::npos);
}

TEST(CircularText, CutsTheQuantityTo120WithoutAWord) {
  CircularValues values = StartCircular();
  const struct {
    double typed;
    int cut;
  } rows[] = {{500, 120}, {121, 120}, {120, 120}, {6, 6}, {1, 1}, {0, 1}, {-7, 1}};
  for (const auto& row : rows) {
    values.numbers[kCircularQuantity] = row.typed;
    EXPECT_EQ(CircularQuantity(values), row.cut);
    EXPECT_EQ(CountOf(Written(values), "(PATTERN "), row.cut);
    EXPECT_EQ(CheckCircular(values).field, -1);
  }
}

TEST(CircularText, CutsASavedShapeInTheUsersUnit) {
  SavedShape saved;
  saved.count = 2;
  saved.objects[0] = {kTypeLine, 0, 0, 0, 1, 0, 0};
  saved.objects[1] = {kTypeWorkAxis, 0, 0, 0, 1, 0, 0};
  CircularValues values = StartCircular();
  values.item.saved = &saved;
  values.metric = true;
  values.numbers[kCircularQuantity] = 1;
  values.numbers[kCircularStart] = 90;
  values.numbers[kCircularDiameter] = 100;
  EXPECT_EQ(Written(values),
            "\r\n(CIRCULAR PATTERN)\r\nG21 (MM)\r\nG90 G17 G94\r\n(PATTERN 1  ANGLE 90.0)\r\n"
            "G00 X0.000 Y50.000\r\nG01 Z-0.100 F10.00\r\nG01 X0.000 Y75.400 F10.0\r\n"
            "G00 Z0.500\r\n(END CIRCULAR PATTERN)\r\n");
}

TEST(CircularCheck, WantsSizeFeedClearanceAndTheSlotsWidth) {
  const int fields[] = {kCircularSize, kCircularFeed};
  for (const int field : fields) {
    CircularValues values = StartCircular();
    values.numbers[field] = 0.000001 / 2;
    EXPECT_EQ(CheckCircular(values).field, field);
    values.numbers[field] = -1;
    EXPECT_EQ(CheckCircular(values).field, field);
  }
  CircularValues values = StartCircular();
  values.numbers[kCircularSafeZ] = -0.1;
  EXPECT_EQ(CheckCircular(values).field, kCircularSafeZ);
  values = StartCircular(ItemShape::Rectangle);
  values.numbers[kCircularWidth] = 0;
  EXPECT_EQ(CheckCircular(values).field, -1);
  values.item.shape = ItemShape::Slot;
  EXPECT_EQ(CheckCircular(values).field, kCircularWidth);
  EXPECT_EQ(platform::ToUtf8(CheckCircular(values).words),
            "Enter positive item size, pattern diameter, and feed, with Safe Z above cutting "
            "depth.");
  const SavedShape saved;
  values.item.saved = &saved;
  EXPECT_EQ(CheckCircular(values).field, -1);
}

// An item lies about its middle: half of its size is what the code has, in three decimals.
TEST(PatternCheck, WantsNumbersThatTheCodeDoesNotWriteAsZero) {
  const struct {
    int circular;
    int grid;
    double bad;
    double good;
  } rows[] = {{kCircularSize, kGridSize, 0.0008, 0.0012},
              {kCircularWidth, kGridWidth, 0.0008, 0.0012},
              {kCircularFeed, kGridFeed, 0.04, 0.06},
              {kCircularSafeZ, kGridSafeZ, -0.0996, -0.099}};
  for (const auto& row : rows) {
    CircularValues circular = StartCircular(ItemShape::Slot);
    circular.numbers[row.circular] = row.bad;
    EXPECT_EQ(CheckCircular(circular).field, row.circular);
    circular.numbers[row.circular] = row.good;
    EXPECT_EQ(CheckCircular(circular).field, -1);
    GridValues grid = StartGrid(ItemShape::Slot);
    grid.numbers[row.grid] = row.bad;
    EXPECT_EQ(CheckGrid(grid).field, row.grid);
    grid.numbers[row.grid] = row.good;
    EXPECT_EQ(CheckGrid(grid).field, -1);
  }
}

TEST(GridText, GoesRowByRowFromItsStart) {
  GridValues values = StartGrid(ItemShape::Slot);
  values.numbers[kGridColumns] = 2;
  values.numbers[kGridRows] = 1;
  values.numbers[kGridX] = 1;
  values.numbers[kGridStepX] = -3;
  EXPECT_EQ(
      Written(values),
      "\r\n(RECTANGULAR PATTERN)\r\nG20 (INCH)\r\nG90 G17 G94\r\n"
      "(ROW 1 COL 1)\r\nG00 X1.125 Y0.125\r\nG01 Z-0.100 F10.00\r\nG01 X0.875 Y0.125 F10.0\r\n"
      "G03 X0.875 Y-0.125 I0.000 J-0.125\r\nG01 X1.125 Y-0.125 F10.0\r\n"
      "G03 X1.125 Y0.125 I0.000 J0.125\r\nG00 Z0.500\r\n"
      "(ROW 1 COL 2)\r\nG00 X-1.875 Y0.125\r\nG01 Z-0.100 F10.00\r\n"
      "G01 X-2.125 Y0.125 F10.0\r\nG03 X-2.125 Y-0.125 I0.000 J-0.125\r\n"
      "G01 X-1.875 Y-0.125 F10.0\r\nG03 X-1.875 Y0.125 I0.000 J0.125\r\nG00 Z0.500\r\n"
      "(END RECTANGULAR PATTERN)\r\n");
}

TEST(GridText, TurnsItsItemsAndNotItself) {
  GridValues values = StartGrid(ItemShape::Diamond);
  values.numbers[kGridTurn] = 90;
  const std::string text = Written(values);
  EXPECT_EQ(CountOf(text, "(ROW "), 6);
  // The tip of 0.125 above the place is turned to its left.
  EXPECT_NE(text.find("(ROW 2 COL 3)\r\nG00 X1.875 Y1.000\r\n"), std::string::npos);
}

TEST(GridText, HasItsSingleItemAtTheStart) {
  GridValues values = StartGrid();
  values.numbers[kGridColumns] = values.numbers[kGridRows] = 0;
  values.numbers[kGridX] = 3;
  values.numbers[kGridSize] = -1;
  EXPECT_EQ(CountOf(Written(values), "(ROW "), 1);
  EXPECT_NE(Written(values).find("(ROW 1 COL 1)\r\nG00 X2.500 Y-0.500\r\n"), std::string::npos);
}

TEST(GridCheck, RefusesMoreThan400ItemsBeforeItLooksAtValues) {
  GridValues values = StartGrid();
  values.numbers[kGridColumns] = values.numbers[kGridRows] = 20;
  EXPECT_EQ(CheckGrid(values).field, -1);
  EXPECT_EQ(CountOf(Written(values), "(ROW "), 400);
  values.numbers[kGridColumns] = 21;
  values.numbers[kGridFeed] = 0;
  EXPECT_EQ(platform::ToUtf8(CheckGrid(values).words),
            "This pattern exceeds the audited limit of 400 generated items. Reduce Rows or "
            "Columns to keep the program reviewable and avoid unsafe oversized output.");
  // What would overflow 32 bits is too many as well, and a row without items counts as one.
  values.numbers[kGridColumns] = values.numbers[kGridRows] = 65536;
  EXPECT_EQ(GridCount(values), 4294967296);
  EXPECT_NE(CheckGrid(values).field, -1);
  values.numbers[kGridColumns] = -2147483648.0;
  values.numbers[kGridRows] = 400;
  values.numbers[kGridFeed] = 10;
  EXPECT_EQ(CheckGrid(values).field, -1);
}

TEST(GridCheck, WantsSizesByMagnitudeFeedAndClearance) {
  GridValues values = StartGrid(ItemShape::Slot);
  values.numbers[kGridSize] = -0.5;
  values.numbers[kGridWidth] = -0.25;
  EXPECT_EQ(CheckGrid(values).field, -1);
  values.numbers[kGridWidth] = 0;
  EXPECT_EQ(CheckGrid(values).field, kGridWidth);
  EXPECT_EQ(platform::ToUtf8(CheckGrid(values).words),
            "Enter positive item dimensions and feed, with Safe Z above cutting depth.");
  values.numbers[kGridSize] = 0;
  EXPECT_EQ(CheckGrid(values).field, kGridSize);
  values = StartGrid();
  values.numbers[kGridSafeZ] = -0.1;
  EXPECT_EQ(CheckGrid(values).field, kGridSafeZ);
}

TEST(PatternRoom, HoldsTheLargestPatternOfTheLargestShape) {
  SavedShape saved;
  for (SketchObject& object : saved.objects) {
    object = {kTypeCircle, 0, 12345.678, -12345.678, 999.5, 0, 0};
  }
  saved.count = kMaxShapeObjects;
  GridValues values = StartGrid();
  values.item.saved = &saved;
  values.numbers[kGridColumns] = values.numbers[kGridRows] = 20;
  EXPECT_EQ(CountOf(Written(values), "G02"), 400 * 64 * 16);
  EXPECT_EQ(CircularRoom(StartCircular()), 6u * 2200 + 16383);
}

TEST(PatternPicture, HoldsTheLargestPatternOfTheLargestShape) {
  SavedShape saved;
  for (SketchObject& object : saved.objects) object = {kTypeRectangle, 0, 0, 0, 1, 1, 10};
  saved.count = kMaxShapeObjects;
  GridValues values = StartGrid();
  values.item.saved = &saved;
  values.numbers[kGridColumns] = values.numbers[kGridRows] = 20;
  Picture picture;
  DrawGrid(values, picture);
  EXPECT_FALSE(picture.full);
  EXPECT_EQ(picture.marks.size(), 400u * 64);
}

TEST(PatternPicture, NumbersItsItems) {
  Picture picture;
  ClearPicture(picture, false);
  CircularValues values = StartCircular();
  values.numbers[kCircularQuantity] = 2;
  DrawCircular(values, picture);
  EXPECT_EQ(platform::ToUtf8(PictureText(picture)),
            "picture inch\n"
            "loop feature part 0 1.7500,-0.2500 2.2500,-0.2500 2.2500,0.2500 1.7500,0.2500\n"
            "loop feature part 1 -1.7500,0.2500 -2.2500,0.2500 -2.2500,-0.2500 -1.7500,-0.2500\n"
            "cross construction 0.0000,0.0000\n"
            "arc construction 0.0000,0.0000 radius 2.0000\n"
            "label dimension part 0 2.0000,0.0000 right clear 0.3536: 1\n"
            "dimension along dimension 1.7500,-0.2500 2.2500,-0.2500 row -1: 0.500\n"
            "label dimension part 1 -2.0000,0.0000 left clear 0.3536: 2\n"
            "dimension diameter dimension 0.0000,0.0000 radius 2.0000 leader 90.0000: "
            "\u00D84.000\n");
}

// Six slots of 0.5 by 0.25 take 2.5: a number in one would cover its sides.
TEST(PatternPicture, NumbersNarrowItemsBesideThem) {
  for (const ItemShape shape : {ItemShape::Slot, ItemShape::Rectangle}) {
    Picture picture;
    ClearPicture(picture, false);
    GridValues values = StartGrid(shape);
    DrawGrid(values, picture);
    EXPECT_NE(platform::ToUtf8(PictureText(picture))
                  .find("label dimension part 0 0.0000,0.0000 above clear 0.2795: 1\n"),
              std::string::npos);
    values.numbers[kGridSize] = 0.75;
    values.numbers[kGridWidth] = 0.6;
    ClearPicture(picture, false);
    DrawGrid(values, picture);
    EXPECT_NE(
        platform::ToUtf8(PictureText(picture)).find("label dimension part 0 0.0000,0.0000 on: 1\n"),
        std::string::npos)
        << "large enough";
  }
}

// The width of a slot stands in the picture too, left of all others.
TEST(PatternPicture, MeasuresLengthAndWidthOfAnItem) {
  Picture picture;
  ClearPicture(picture, false);
  GridValues values = StartGrid(ItemShape::Slot);
  values.numbers[kGridTurn] = 90;
  DrawGrid(values, picture);
  const std::string text = platform::ToUtf8(PictureText(picture));
  // Of the last row: the length at its last item, the width at its first.
  EXPECT_NE(text.find("dimension along dimension 1.8750,0.7500 1.8750,1.2500 row 1: 0.500\n"),
            std::string::npos)
      << text;
  EXPECT_NE(text.find("dimension along dimension 0.1250,0.7500 -0.1250,0.7500 row 1: 0.250\n"),
            std::string::npos)
      << text;
}

TEST(PatternPicture, TakesValuesThatDoNotPass) {
  for (const double value : {0.0, -1.0, 1e79, -1e79, 3.7}) {
    CircularValues circular = StartCircular(ItemShape::Slot);
    GridValues grid = StartGrid(ItemShape::Circle);
    for (double& number : circular.numbers) number = value;
    for (double& number : grid.numbers) number = value;
    // A count comes from 32 bits.
    circular.numbers[kCircularQuantity] = 2147483647;
    grid.numbers[kGridColumns] = 2147483647;
    grid.numbers[kGridRows] = -2147483648.0;
    Picture picture;
    DrawCircular(circular, picture);
    DrawGrid(grid, picture);
    EXPECT_LE(picture.marks.size(), 600u);
  }
}

}  // namespace
}  // namespace morva
