// Shapes as program text, written out by hand, and what the shape builder refuses.

#include "builders/shapes/shape_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "app/limits.h"
#include "platform/file.h"
#include "text/code_writer.h"
#include "text/codetext.h"

namespace morva {
namespace {

ShapeValues Start(int kind) {
  ShapeValues values;
  values.kind = kind;
  const auto fields = ShapeFields(kind);
  for (std::size_t i = 0; i < fields.size(); ++i) {
    values.numbers[i] = ParseDecimal(fields[i].start, fields[i].fallback);
  }
  return values;
}

SavedShape Saved(std::vector<SketchObject> objects) {
  SavedShape shape;
  CopyBounded(shape.name, kShapeNameUnits, u"Plate");
  for (const SketchObject& object : objects) shape.objects[shape.count++] = object;
  return shape;
}

// What the form shows of a saved shape before anybody types.
ShapeValues StartOf(const SavedShape& saved, bool metric = false) {
  ShapeValues values;
  values.kind = kShapeSaved;
  values.metric = metric;
  values.saved = &saved;
  for (int i = 0; i < kShapeNumbers; ++i) {
    values.numbers[i] = ParseDecimal(SavedShapeStart(saved, metric, i), 0);
  }
  return values;
}

std::string Written(const ShapeValues& values) {
  CodeWriter out;
  out.most = ShapeRoom(values);
  WriteShape(values, out);
  EXPECT_FALSE(out.full);
  return platform::ToUtf8(out.text);
}

std::string Head(const char* comment) {
  return std::string("\r\n(SHAPE: ") + comment + ")\r\nG20 (INCH)\r\nG90 G17 G94\r\nG00 Z0.500\r\n";
}

TEST(ShapeText, CutsASquareFromItsCorner) {
  EXPECT_EQ(Written(Start(kShapeSquare)),
            Head("SQUARE") +
                "G00 X0.000 Y0.000\r\nG01 Z-0.100 F10.0\r\nG01 X2.000 Y0.000 F10.0\r\n"
                "G01 X2.000 Y2.000 F10.0\r\nG01 X0.000 Y2.000 F10.0\r\nG01 X0.000 Y0.000 F10.0\r\n"
                "G00 Z0.500\r\n");
}

TEST(ShapeText, CutsARectangleByMagnitudeOfItsSizes) {
  ShapeValues values = Start(kShapeRectangle);
  values.numbers[kShapeX] = 1;
  values.numbers[kShapeSize] = -3;
  values.metric = true;
  EXPECT_EQ(Written(values),
            "\r\n(SHAPE: RECTANGLE)\r\nG21 (MM)\r\nG90 G17 G94\r\nG00 Z0.500\r\n"
            "G00 X1.000 Y0.000\r\nG01 Z-0.100 F10.0\r\nG01 X4.000 Y0.000 F10.0\r\n"
            "G01 X4.000 Y2.000 F10.0\r\nG01 X1.000 Y2.000 F10.0\r\nG01 X1.000 Y0.000 F10.0\r\n"
            "G00 Z0.500\r\n");
}

TEST(ShapeText, CutsACircleInOneTurn) {
  EXPECT_EQ(Written(Start(kShapeCircle)),
            Head("CIRCLE") +
                "G00 X1.000 Y0.000\r\nG01 Z-0.100 F10.0\r\n"
                "G02 X1.000 Y0.000 I-1.000 J0.000 F10.0\r\nG00 Z0.500\r\n");
  ShapeValues values = Start(kShapeCircle);
  values.numbers[kShapeSize] = 0;
  values.numbers[kShapeSize2] = 6.283;
  EXPECT_NE(Written(values).find("G02 X1.000 Y0.000 I-1.000 J0.000 F10.0"), std::string::npos);
}

TEST(ShapeText, CutsATriangleALineAndADiamond) {
  EXPECT_EQ(Written(Start(kShapeTriangle)),
            Head("TRIANGLE") +
                "G00 X0.000 Y0.000\r\nG01 Z-0.100 F10.0\r\nG01 X3.000 Y0.000 F10.0\r\n"
                "G01 X1.500 Y2.000 F10.0\r\nG01 X0.000 Y0.000 F10.0\r\nG00 Z0.500\r\n");
  EXPECT_EQ(Written(Start(kShapeLine)),
            Head("LINE") +
                "G00 X0.000 Y0.000\r\nG01 Z-0.100 F10.0\r\nG01 X3.000 Y1.500 F10.0\r\n"
                "G00 Z0.500\r\n");
  EXPECT_EQ(
      Written(Start(kShapeDiamond)),
      Head("DIAMOND") +
          "G00 X0.000 Y1.000\r\nG01 Z-0.100 F10.0\r\nG01 X1.500 Y0.000 F10.0\r\n"
          "G01 X0.000 Y-1.000 F10.0\r\nG01 X-1.500 Y0.000 F10.0\r\nG01 X0.000 Y1.000 F10.0\r\n"
          "G00 Z0.500\r\n");
}

TEST(ShapeText, CutsASlotWithItsOwnRetract) {
  EXPECT_EQ(Written(Start(kShapeSlot)),
            Head("SLOT") +
                "G00 X0.750 Y0.250\r\nG01 Z-0.100 F10.00\r\nG01 X-0.750 Y0.250 F10.0\r\n"
                "G03 X-0.750 Y-0.250 I0.000 J-0.250\r\nG01 X0.750 Y-0.250 F10.0\r\n"
                "G03 X0.750 Y0.250 I0.000 J0.250\r\nG00 Z0.500\r\nG00 Z0.500\r\n");
}

TEST(SavedShapeText, IsCutAtItsPlace) {
  const SavedShape saved = Saved({{kTypeRectangle, 0, 0, 0, 2, 1, 0}, {kTypeWorkPoint, 0, 1, 1}});
  ShapeValues values = StartOf(saved);
  EXPECT_EQ(values.numbers[kShapeSize], 2);
  EXPECT_EQ(values.numbers[kShapeSize2], 1.5);  // the work point lies above the rectangle
  values.numbers[kShapeX] = 10;
  EXPECT_EQ(Written(values),
            "(SAVED CUSTOM SHAPE: Plate)\r\nG20 (INCH)\r\nG90 G17 G94\r\nG00 X9.000 Y-0.500\r\n"
            "G01 Z-0.100 F10.00\r\nG01 X11.000 Y-0.500 F10.0\r\nG01 X11.000 Y0.500 F10.0\r\n"
            "G01 X9.000 Y0.500 F10.0\r\nG01 X9.000 Y-0.500 F10.0\r\nG00 Z0.500\r\n"
            "(END SAVED CUSTOM SHAPE)\r\n");
}

TEST(SavedShapeText, LeavesBracketsOfTheNameOutOfTheComment) {
  SavedShape saved = Saved({{kTypeLine, 0, -1, 0, 2, 0, 0}});
  CopyBounded(saved.name, kShapeNameUnits, u"Plate (left)");
  EXPECT_EQ(Written(StartOf(saved)).substr(0, 35), "(SAVED CUSTOM SHAPE: Plate left)\r\nG");
}

TEST(SavedShapeText, IsInMillimetresWhereTheUserIs) {
  const SavedShape saved = Saved({{kTypeLine, 0, -1, 0, 2, 0, 0}});
  const ShapeValues values = StartOf(saved, true);
  EXPECT_EQ(Written(values),
            "(SAVED CUSTOM SHAPE: Plate)\r\nG21 (MM)\r\nG90 G17 G94\r\nG00 X-25.400 Y0.000\r\n"
            "G01 Z-2.540 F254.00\r\nG01 X25.400 Y0.000 F254.0\r\nG00 Z12.700\r\n"
            "(END SAVED CUSTOM SHAPE)\r\n");
}

TEST(SavedShapePlace, KeepsTheSavedSizeWhileTheFieldShowsIt) {
  // A third of an inch is shown as 0.333 and must not be cut as that.
  const SavedShape saved = Saved({{kTypeRectangle, 0, 0, 0, 1.0 / 3, 2, 0}});
  EXPECT_EQ(PlaceOfSaved(StartOf(saved)).scaleX, 1);
  EXPECT_EQ(PlaceOfSaved(StartOf(saved, true)).scaleX, 25.4);
  // Neither after a switch of the unit, which converts the field's text.
  ShapeValues switched = StartOf(saved);
  switched.metric = true;
  switched.numbers[kShapeSize] = ParseDecimal(FixedText(0.333 * 25.4, 3), 0);
  EXPECT_EQ(switched.numbers[kShapeSize], 8.458);
  EXPECT_EQ(PlaceOfSaved(switched).scaleX, 25.4);
  ShapeValues wide = StartOf(saved);
  wide.numbers[kShapeSize] = 1;
  wide.numbers[kShapeSize2] = -1;
  EXPECT_NEAR(PlaceOfSaved(wide).scaleX, 3, 1e-6);
  EXPECT_NEAR(PlaceOfSaved(wide).scaleY, 0.5, 1e-6);
}

TEST(SavedShapePlace, StretchesLinesAndUprightSidesByTheirOwnDirections) {
  const ShapePlace place{.x = 5, .scaleX = 3, .scaleY = 2};
  const SketchObject upright = PlacedObject({kTypeLine, 0, 1, 1, 4, 0, 90}, place);
  EXPECT_NEAR(upright.x, 8, 1e-6);
  EXPECT_NEAR(upright.y, 2, 1e-6);
  EXPECT_NEAR(upright.size, 8, 1e-6);
  EXPECT_EQ(upright.angle, 90);
  // Three to the right and four up become nine and eight.
  const SketchObject slanted = PlacedObject({kTypeLine, 0, 0, 0, 5, 0, AngleDegrees(4, 3)}, place);
  EXPECT_NEAR(slanted.size, std::hypot(9, 8), 1e-6);
  EXPECT_NEAR(slanted.angle, AngleDegrees(8, 9), 1e-6);
  const SketchObject level = PlacedObject({kTypeRectangle, 0, 0, 0, 2, 1, 180}, place);
  EXPECT_EQ(level.size, 6);
  EXPECT_EQ(level.size2, 2);
  const SketchObject slot = PlacedObject({kTypeSlot, 0, 0, 0, 2, 0.5, 90}, place);
  EXPECT_EQ(slot.size, 4) << "it stands upright: its length is the height";
  EXPECT_EQ(slot.size2, 1.5);
}

// Four lines of a square that gets twice as wide and stays as high.
TEST(SavedShapeText, MeetsItsOwnEndsWhenItIsStretched) {
  const SavedShape saved = Saved({{kTypeLine, 0, -1, -1, 2, 0, 0},
                                  {kTypeLine, 0, 1, -1, 2, 0, 90},
                                  {kTypeLine, 0, 1, 1, 2, 0, 180},
                                  {kTypeLine, 0, -1, 1, 2, 0, -90}});
  ShapeValues values = StartOf(saved);
  values.numbers[kShapeSize] = 4;
  EXPECT_EQ(CheckShape(values).field, -1);
  const std::string text = Written(values);
  const char* corners[] = {"X-2.000 Y-1.000", "X2.000 Y-1.000", "X2.000 Y1.000", "X-2.000 Y1.000"};
  for (int i = 0; i < 4; ++i) {
    EXPECT_NE(text.find(std::string("G00 ") + corners[i] + "\r\n"), std::string::npos) << i;
    EXPECT_NE(text.find(std::string("G01 ") + corners[(i + 1) % 4] + " F10.0"), std::string::npos)
        << i << text;
  }
}

TEST(SavedShapePlace, TakesSizesThatShowOneFactorAsOne) {
  // A third doubled shows as 0.667, which is not twice a third to the last bit.
  const SavedShape saved = Saved({{kTypeRectangle, 0, 0, 0, 1.0 / 3, 2, 0}});
  ShapeValues values = StartOf(saved);
  values.numbers[kShapeSize] = 0.667;
  values.numbers[kShapeSize2] = 4;
  EXPECT_NEAR(PlaceOfSaved(values).scaleX, 2, 1e-6);
  EXPECT_EQ(PlaceOfSaved(values).scaleX, PlaceOfSaved(values).scaleY);
}

TEST(ShapeCheck, RefusesToStretchWhatWouldLoseItsForm) {
  const struct {
    SketchObject object;
    bool kept;
  } cases[] = {
      {{kTypeCircle, 0, 0, 0, 2, 0, 0}, false},     {{kTypeRectangle, 0, 0, 0, 2, 2, 90}, true},
      {{kTypeRectangle, 0, 0, 0, 2, 2, 45}, false}, {{kTypeSlot, 0, 0, 0, 4, 1, 0}, true},
      {{kTypeSlot, 0, 0, 0, 4, 1, 30}, false},      {{kTypeSlot, 0, 0, 0, 2, 1.9, 90}, false}};
  for (const auto& each : cases) {
    const SavedShape saved = Saved({each.object});
    ShapeValues values = StartOf(saved);
    EXPECT_EQ(CheckShape(values).field, -1);
    const double width = values.numbers[kShapeSize];
    const double height = values.numbers[kShapeSize2];
    values.numbers[kShapeSize] = width * 2;
    EXPECT_EQ(CheckShape(values).field, each.kept ? -1 : kShapeSize2)
        << each.object.type << " " << each.object.angle;
    values.numbers[kShapeSize2] = height * 2;
    EXPECT_EQ(CheckShape(values).field, -1) << "in the saved ratio";
  }
}

// A hand-drawn line that is level but for less than its height can show.
TEST(ShapeCheck, TakesASavedShapeWhoseHeightShowsAsNothing) {
  const SavedShape saved = Saved({{kTypeLine, 0, -1, 0, 2, 0, 0.004}});
  const ShapeValues values = StartOf(saved);
  ASSERT_EQ(values.numbers[kShapeSize2], 0);
  EXPECT_EQ(CheckShape(values).field, -1);
}

TEST(SavedShapePlace, TurnsAboutItsOrigin) {
  const SketchObject slot{kTypeSlot, 0, 1, 0, 2, 0.5, 30};
  const SketchObject turned = PlacedObject(slot, {.x = 10, .y = 20, .rotation = 90});
  EXPECT_NEAR(turned.x, 10, 1e-6);
  EXPECT_NEAR(turned.y, 21, 1e-6);
  EXPECT_EQ(turned.angle, 120);
}

TEST(ShapeCheck, PassesWhatTheFormsStartWith) {
  for (int kind = 0; kind < kShapeSaved; ++kind) EXPECT_EQ(CheckShape(Start(kind)).field, -1);
  const SavedShape line = Saved({{kTypeLine, 0, -1, 0, 2, 0, 0}});
  EXPECT_EQ(CheckShape(StartOf(line)).field, -1) << "a line has no height to give";
  ShapeValues values = StartOf(line);
  values.numbers[kShapeSize] = 0;
  EXPECT_EQ(CheckShape(values).field, kShapeSize);
}

TEST(ShapeCheck, WantsClearanceAndFeed) {
  ShapeValues values = Start(kShapeSquare);
  values.numbers[kShapeSafeZ] = -0.1;
  EXPECT_EQ(CheckShape(values).field, kShapeSafeZ);
  values = Start(kShapeSquare);
  values.numbers[kShapeFeed] = 0.000001;
  EXPECT_EQ(CheckShape(values).field, kShapeFeed);
  EXPECT_EQ(platform::ToUtf8(CheckShape(values).words),
            "Enter valid non-zero shape dimensions and a positive feed, with Safe Z above the "
            "cutting depth.");
}

TEST(ShapeCheck, WantsSizes) {
  for (const int kind : {kShapeRectangle, kShapeTriangle, kShapeDiamond, kShapeSlot}) {
    ShapeValues values = Start(kind);
    values.numbers[kShapeSize] = -0.0000001;
    EXPECT_EQ(CheckShape(values).field, kShapeSize) << kind;
    values = Start(kind);
    values.numbers[kShapeSize2] = 0;
    EXPECT_EQ(CheckShape(values).field, kShapeSize2) << kind;
  }
  ShapeValues square = Start(kShapeSquare);
  square.numbers[kShapeSize2] = 0;
  EXPECT_EQ(CheckShape(square).field, -1);
}

// Code has three decimals, a feed one: "F0.0" and an arc of no radius stop a control.
TEST(ShapeCheck, WantsNumbersThatTheCodeDoesNotWriteAsZero) {
  const struct {
    int kind;
    int field;
    double bad;
    double good;
  } rows[] = {
      {kShapeSquare, kShapeFeed, 0.04, 0.06},         {kShapeSquare, kShapeSize, -0.0004, -0.0006},
      {kShapeRectangle, kShapeSize2, 0.0004, 0.0006}, {kShapeTriangle, kShapeSize, 0.0004, 0.0006},
      {kShapeCircle, kShapeSize, 0.0004, 0.0006},     {kShapeDiamond, kShapeSize, 0.0008, 0.0012},
      {kShapeDiamond, kShapeSize2, 0.0008, 0.0012},   {kShapeSlot, kShapeSize, 0.0004, 0.0006},
      {kShapeSlot, kShapeSize2, 0.0008, 0.0012}};
  for (const auto& row : rows) {
    ShapeValues values = Start(row.kind);
    values.numbers[row.field] = row.bad;
    EXPECT_EQ(CheckShape(values).field, row.field) << row.kind;
    values.numbers[row.field] = row.good;
    EXPECT_EQ(CheckShape(values).field, -1) << row.kind;
  }
  ShapeValues line = Start(kShapeLine);
  line.numbers[kShapeSize] = line.numbers[kShapeSize2] = 0.0004;
  EXPECT_EQ(CheckShape(line).field, kShapeSize);
  line.numbers[kShapeSize2] = -0.0006;
  EXPECT_EQ(CheckShape(line).field, -1);
  ShapeValues square = Start(kShapeSquare);
  square.numbers[kShapeDepth] = -0.0004;
  square.numbers[kShapeSafeZ] = 0.0004;
  EXPECT_EQ(CheckShape(square).field, kShapeSafeZ);
  square.numbers[kShapeSafeZ] = 0.0006;
  EXPECT_EQ(CheckShape(square).field, -1);
}

TEST(ShapeCheck, TakesALineAlongOneAxis) {
  ShapeValues values = Start(kShapeLine);
  values.numbers[kShapeSize] = 0;
  values.numbers[kShapeSize2] = 1;
  EXPECT_EQ(CheckShape(values).field, -1);
  values.numbers[kShapeSize2] = 0;
  EXPECT_EQ(CheckShape(values).field, kShapeSize);
}

TEST(ShapeCheck, TakesACircleByItsCircumference) {
  ShapeValues values = Start(kShapeCircle);
  values.numbers[kShapeSize] = 0;
  EXPECT_EQ(CheckShape(values).field, -1);
  values.numbers[kShapeSize2] = 0;
  EXPECT_EQ(CheckShape(values).field, kShapeSize);
  values.numbers[kShapeSize2] = -6;
  EXPECT_EQ(CheckShape(values).field, kShapeSize);
}

TEST(ShapeRoomTest, HoldsEveryObjectOfTheLargestShape) {
  SavedShape saved = Saved({});
  for (int i = 0; i < kMaxShapeObjects; ++i) {
    saved.objects[saved.count++] = {kTypeCircle, 0, 1e15, -1e15, 1e15, 0, 0};
  }
  CodeWriter out;
  ShapeValues values = StartOf(saved);
  out.most = ShapeRoom(values);
  WriteShape(values, out);
  EXPECT_FALSE(out.full);
  EXPECT_EQ(ShapeRoom(Start(kShapeSquare)), 131071u);
}

TEST(SavedShapeStartTest, ShowsExtentsAndAPlainCut) {
  const SavedShape saved = Saved({{kTypeCircle, 0, 0, 0, 0.0625, 0, 0}});
  const std::u16string inch[] = {u"0.000",  u"0.000", u"0.063", u"0.063",
                                 u"-0.100", u"10.0",  u"0.500"};
  const std::u16string mm[] = {u"0.000",  u"0.000", u"1.588", u"1.588",
                               u"-2.540", u"254.0", u"12.700"};
  for (int i = 0; i < kShapeNumbers; ++i) {
    EXPECT_EQ(SavedShapeStart(saved, false, i), inch[i]) << i;
    EXPECT_EQ(SavedShapeStart(saved, true, i), mm[i]) << i;
  }
}

TEST(ShapePicture, ShowsTheOutlineWithItsSizes) {
  Picture picture;
  ClearPicture(picture, false);
  DrawShape(Start(kShapeRectangle), picture);
  EXPECT_EQ(platform::ToUtf8(PictureText(picture)),
            "picture inch\n"
            "loop feature 0.0000,0.0000 3.0000,0.0000 3.0000,2.0000 0.0000,2.0000\n"
            "cross construction 0.0000,0.0000\n"
            "dimension across dimension 0.0000,0.0000 3.0000,0.0000 row -1 outside: 3.000\n"
            "dimension upright dimension 3.0000,0.0000 3.0000,2.0000 row 1 outside: 2.000\n");
}

}  // namespace
}  // namespace morva
