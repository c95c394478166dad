// The code of plates; lines are worked out by hand.

#include "plate/geometry/plate_code.h"

#include <gtest/gtest.h>

#include <string>

#include "plate/model/plate.h"
#include "text/code_writer.h"

namespace {

using namespace morva;

class PlateCode : public testing::Test {
 protected:
  PlateCode() {
    ResetPlate();
    SetPlateName(u"Fixture");
  }
  ~PlateCode() override { ResetPlate(); }

  static std::u16string Text() {
    CodeWriter out;
    out.most = PlateCodeRoom(plate);
    WritePlate(plate, out);
    EXPECT_FALSE(out.full);
    return out.text;
  }
  static bool Holds(std::u16string_view words) {
    return Text().find(words) != std::u16string::npos;
  }
  static bool Passes() {
    Refusal refusal;
    int value = -1;
    return CheckPlate(plate, refusal, value);
  }
};

TEST_F(PlateCode, BeginsAsTheWorkedExample) {
  const std::u16string start =
      u"\r\n(PLATE TEMPLATE MAKER)\r\nG20 (INCH)\r\nG90 G17 G94\r\nG00 Z0.500\r\n"
      u"(PLATE OUTLINE)\r\n"
      u"G00 X-3.750 Y-3.000\r\nG01 Z-0.100 F10.00\r\n"
      u"G01 X3.750 Y-3.000 F10.0\r\nG03 X4.000 Y-2.750 I0.000 J0.250\r\n"
      u"G01 X4.000 Y2.750 F10.0\r\nG03 X3.750 Y3.000 I-0.250 J0.000\r\n"
      u"G01 X-3.750 Y3.000 F10.0\r\nG03 X-4.000 Y2.750 I0.000 J-0.250\r\n"
      u"G01 X-4.000 Y-2.750 F10.0\r\nG03 X-3.750 Y-3.000 I0.250 J0.000\r\n"
      u"G00 Z0.500\r\n(MOUNTING FEATURES)\r\n"
      u"G00 X-3.375 Y-2.500\r\nG01 Z-0.100 F10.00\r\n";
  EXPECT_EQ(Text().substr(0, start.size()), start);
  EXPECT_TRUE(Text().ends_with(u"G00 Z0.500\r\n(END PLATE TEMPLATE)\r\n"));
}

TEST_F(PlateCode, IgnoresTheWidthOfARoundPlate) {
  SetPlateShape(PlateShape::Round);
  SetPlateText(kPlateLength, u"6");
  SetPlateText(kPlateWidth, u"4");
  EXPECT_TRUE(Holds(u"(PLATE OUTLINE)\r\nG00 X3.000 Y0.000\r\n"));
}

TEST_F(PlateCode, LimitsTheEdgeRadiusToHalfTheShorterSide) {
  SetPlateText(kPlateLength, u"2");
  SetPlateText(kPlateWidth, u"2");
  SetPlateText(kPlateEdgeRadius, u"5");
  EXPECT_TRUE(
      Holds(u"(PLATE OUTLINE)\r\nG00 X0.000 Y-1.000\r\nG01 Z-0.100 F10.00\r\n"
            u"G01 X0.000 Y-1.000 F10.0\r\nG03 X1.000 Y0.000 I0.000 J1.000\r\n"
            u"G01 X1.000 Y0.000 F10.0\r\nG03 X0.000 Y1.000 I-1.000 J0.000\r\n"));
}

TEST_F(PlateCode, LeavesDeletedFeaturesOutAndCutsHiddenOnes) {
  SetFeatureFlag(0, FeatureFlag::Deleted, true);
  SetFeatureFlag(1, FeatureFlag::Hidden, true);
  EXPECT_TRUE(Holds(u"(MOUNTING FEATURES)\r\nG00 X3.625 Y-2.500\r\n"));
}

TEST_F(PlateCode, CutsAThroughFeatureToTheThicknessWhateverTheCutDepth) {
  SetFeatureFlag(0, FeatureFlag::Through, true);
  EXPECT_TRUE(Holds(u"G00 X-3.375 Y-2.500\r\nG01 Z-0.500 F10.00\r\n"));
}

TEST_F(PlateCode, TakesSafeZAndFeedByTheirMagnitude) {
  SetPlateText(kPlateSafeZ, u"-0.75");
  SetPlateText(kPlateFeed, u"-20");
  EXPECT_TRUE(Passes());
  EXPECT_TRUE(Holds(u"G00 Z0.750\r\n(PLATE OUTLINE)"));
  EXPECT_TRUE(Holds(u"G01 Z-0.100 F20.00\r\n"));
}

TEST_F(PlateCode, RefusesAPlateWithoutANameBeforeAllElse) {
  ResetPlate();
  SetPlateText(kPlateLength, u"0");
  Refusal refusal;
  int value = 0;
  EXPECT_FALSE(CheckPlate(plate, refusal, value));
  EXPECT_EQ(std::u16string(refusal.words), u"");
}

TEST_F(PlateCode, RefusesNumbersThatCutNothing) {
  EXPECT_TRUE(Passes());
  const struct {
    PlateValue value;
    const char16_t* text;
  } kCases[] = {{kPlateLength, u"0"},
                {kPlateWidth, u"-1"},
                {kPlateSize, u"0"},
                {kPlateFeed, u"0"},
                {kPlateCutDepth, u"0.5"}};
  for (const auto& each : kCases) {
    const std::u16string before = plate.values[each.value].text;
    SetPlateText(each.value, each.text);
    Refusal refusal;
    int value = 0;
    EXPECT_FALSE(CheckPlate(plate, refusal, value)) << each.value;
    EXPECT_EQ(value, -1);
    EXPECT_EQ(std::u16string(refusal.title), u"Plate Template Maker");
    EXPECT_EQ(std::u16string(refusal.words),
              u"Plate dimensions, feature size, and feed must be positive, with Safe Z above "
              u"cutting depth.");
    SetPlateText(each.value, before);
  }
  EXPECT_TRUE(Passes());
}

TEST_F(PlateCode, TellsTheFieldThatHoldsNoNumber) {
  for (const char16_t* text : {u"", u"0,75", u"two", u"1/2", u"1000000", u"5 "}) {
    for (const PlateValue field : {kPlateLength, kPlateCountX, kPlateSafeZ}) {
      const std::u16string before = plate.values[field].text;
      SetPlateText(field, text);
      Refusal refusal;
      int value = -1;
      EXPECT_FALSE(CheckPlate(plate, refusal, value));
      EXPECT_EQ(value, field);
      EXPECT_EQ(std::u16string(refusal.words), u"");
      SetPlateText(field, before);
    }
  }
  EXPECT_TRUE(Passes());
}

TEST_F(PlateCode, NeedsAThicknessOnlyForAThroughFeature) {
  SetPlateText(kPlateStock, u"0");
  EXPECT_TRUE(Passes());
  SetFeatureFlag(1, FeatureFlag::Through, true);
  EXPECT_FALSE(Passes());
  SetFeatureFlag(1, FeatureFlag::Deleted, true);
  EXPECT_TRUE(Passes());
}

}  // namespace
