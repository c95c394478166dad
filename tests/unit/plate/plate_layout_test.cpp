// Where features stand: expected places are worked out by hand.

#include "plate/geometry/plate_layout.h"

#include <gtest/gtest.h>

#include "plate/model/plate.h"

namespace {

using namespace morva;
using platform::PointF;

class PlateLayoutTest : public testing::Test {
 protected:
  PlateLayoutTest() { ResetPlate(); }
  ~PlateLayoutTest() override { ResetPlate(); }

  static void ExpectPlace(int k, double x, double y) {
    const PointF at = FeaturePlace(NumbersOf(plate), plate.features[k], k);
    EXPECT_NEAR(at.x, x, 1e-6) << k;
    EXPECT_NEAR(at.y, y, 1e-6) << k;
  }
};

TEST_F(PlateLayoutTest, PutsFourCornersInTheirOrder) {
  ASSERT_EQ(FeatureCount(NumbersOf(plate)), 4);
  ExpectPlace(0, -3.5, -2.5);
  ExpectPlace(1, 3.5, -2.5);
  ExpectPlace(2, 3.5, 2.5);
  ExpectPlace(3, -3.5, 2.5);
}

TEST_F(PlateLayoutTest, NumbersAGridRowByRowFromTheLowLeft) {
  SetPlateLayout(PlateLayout::Grid);
  SetPlateText(kPlateCountX, u"3");
  ASSERT_EQ(FeatureCount(NumbersOf(plate)), 6);
  ExpectPlace(0, -3.5, -2.5);
  ExpectPlace(1, 0, -2.5);
  ExpectPlace(2, 3.5, -2.5);
  ExpectPlace(3, -3.5, 2.5);
  ExpectPlace(5, 3.5, 2.5);
}

TEST_F(PlateLayoutTest, PutsTheOnlyHoleOfAGridAtTheCentre) {
  SetPlateLayout(PlateLayout::Grid);
  SetPlateText(kPlateCountX, u"1");
  SetPlateText(kPlateCountY, u"1");
  ASSERT_EQ(FeatureCount(NumbersOf(plate)), 1);
  ExpectPlace(0, 0, 0);
}

TEST_F(PlateLayoutTest, TakesEdgesByTheirMagnitude) {
  SetPlateText(kPlateEdgeX, u"-1");
  ExpectPlace(0, -3, -2.5);
}

TEST_F(PlateLayoutTest, FillsTheTableWithAGridOfTwentyByTwenty) {
  SetPlateLayout(PlateLayout::Grid);
  SetPlateText(kPlateCountX, u"20");
  SetPlateText(kPlateCountY, u"20");
  EXPECT_EQ(FeatureCount(NumbersOf(plate)), kMaxPlateFeatures);
  ExpectPlace(399, 3.5, 2.5);
}

TEST_F(PlateLayoutTest, HoldsCountsToOneToTwenty) {
  SetPlateLayout(PlateLayout::Grid);
  const struct {
    const char16_t* text;
    int count;
  } kCases[] = {{u"0", 1}, {u"-3", 1}, {u"4.9", 4}, {u"20.9", 20}, {u"21", 20}, {u"999999", 20}};
  for (const auto& each : kCases) {
    SetPlateText(kPlateCountX, each.text);
    EXPECT_EQ(NumbersOf(plate).countX, each.count);
  }
}

TEST_F(PlateLayoutTest, HoldsACircleTo120Holes) {
  SetPlateLayout(PlateLayout::Circular);
  SetPlateText(kPlateCountX, u"20");
  SetPlateText(kPlateCountY, u"20");
  EXPECT_EQ(FeatureCount(NumbersOf(plate)), 120);
}

TEST_F(PlateLayoutTest, PutsTheFirstHoleOfACircleAtPlusX) {
  SetPlateLayout(PlateLayout::Circular);  // 2 by 2 on a diameter of 4
  ExpectPlace(0, 2, 0);
  ExpectPlace(1, 0, 2);
  ExpectPlace(2, -2, 0);
  ExpectPlace(3, 0, -2);
}

TEST_F(PlateLayoutTest, TakesAShareOfTheShorterSideForACircleWithoutDiameter) {
  SetPlateLayout(PlateLayout::Circular);
  SetPlateText(kPlatePatternDiameter, u"0");
  ExpectPlace(0, 0.35 * 6, 0);
  SetPlateText(kPlatePatternDiameter, u"-4");
  ExpectPlace(0, 2, 0);
}

TEST_F(PlateLayoutTest, AlternatesMixedFeatures) {
  SetPlateType(PlateFeatureType::Mixed);
  const PlateNumbers n = NumbersOf(plate);
  EXPECT_EQ(PlainFeature(n, 0, {}).shape, ItemShape::Circle);
  EXPECT_EQ(PlainFeature(n, 1, {}).shape, ItemShape::Slot);
  EXPECT_EQ(PlainFeature(n, 1, {}).angle, 90);
  EXPECT_EQ(PlainFeature(n, 2, {}).shape, ItemShape::Circle);
}

TEST_F(PlateLayoutTest, PlacesAnOverrideInInchesWhateverTheUnit) {
  PlaceFeature(2, 1, -0.5);
  ExpectPlace(2, 1, -0.5);
  SetPlateUnit(true);
  ExpectPlace(2, 25.4, -12.7);
  ExpectPlace(0, -88.9, -63.5);
}

TEST_F(PlateLayoutTest, CutsAThroughFeatureDownToTheThickness) {
  SetFeatureFlag(1, FeatureFlag::Through, true);
  SetFeatureDepth(1, 0.2);
  SetFeatureDepth(2, 0.2);
  SetPlateUnit(true);
  const PlateNumbers n = NumbersOf(plate);
  EXPECT_NEAR(FeatureZ(n, plate.features[0]), -2.54, 1e-9);
  EXPECT_NEAR(FeatureZ(n, plate.features[1]), -12.7, 1e-9);
  EXPECT_NEAR(FeatureZ(n, plate.features[2]), -5.08, 1e-9);
}

}  // namespace
