// The tables of a plate: full, and one beyond.

#include <gtest/gtest.h>

#include "app/limits.h"
#include "documents/former_hashes.h"
#include "plate/geometry/plate_layout.h"
#include "plate/model/plate.h"
#include "plate/model/plate_record.h"

namespace {

using namespace morva;

class PlateLimits : public testing::Test {
 protected:
  PlateLimits() { ResetPlate(); }
  ~PlateLimits() override { ResetPlate(); }
};

TEST_F(PlateLimits, FeaturesOfAGrid) {
  static_assert(kMaxPlateFeatures == 400 && kMaxPlateLines == 20);
  SetPlateLayout(PlateLayout::Grid);
  for (const char16_t* count : {u"20", u"21", u"19", u"20"}) {
    SetPlateText(kPlateCountX, count);
    SetPlateText(kPlateCountY, count);
    const int lines = count[1] == u'9' ? 19 : kMaxPlateLines;
    EXPECT_EQ(FeatureCount(NumbersOf(plate)), lines * lines);
  }
  PlaceFeature(kMaxPlateFeatures - 1, 1, 2);
  EXPECT_TRUE(plate.features[kMaxPlateFeatures - 1].placed);
  const std::uint32_t changes = plate.changes;
  PlaceFeature(kMaxPlateFeatures, 1, 2);
  PlaceFeature(-1, 1, 2);
  EXPECT_EQ(plate.changes, changes);
}

TEST_F(PlateLimits, FeaturesOfACircle) {
  static_assert(kMaxPlateCircle == 120);
  SetPlateLayout(PlateLayout::Circular);
  SetPlateText(kPlateCountX, u"12");
  for (const char16_t* count : {u"10", u"11", u"9", u"10"}) {
    SetPlateText(kPlateCountY, count);
    EXPECT_EQ(FeatureCount(NumbersOf(plate)), count[0] == u'9' ? 108 : kMaxPlateCircle);
  }
}

TEST_F(PlateLimits, LabelsThatWereMoved) {
  static_assert(kMaxPlateLabels == 900 && kMaxPlateSectionLabels == 15);
  const std::int32_t numbers[kSectionNumbers] = {1, 2, 3, 4, 5};
  EXPECT_TRUE(SetDimensionLabel(kMaxPlateLabels - 1, 0.1, 0.2));
  EXPECT_FALSE(SetDimensionLabel(kMaxPlateLabels, 0.1, 0.2));
  EXPECT_TRUE(SetSectionLabel(kMaxPlateSectionLabels - 1, numbers));
  EXPECT_FALSE(SetSectionLabel(kMaxPlateSectionLabels, numbers));
}

TEST_F(PlateLimits, UpdatesOfABlockWhoseUndoIsKnown) {
  static_assert(kMaxFormerHashes == 16);
  FormerHashes former;
  EXPECT_FALSE(HasFormerHash(former, 0));
  for (std::uint32_t hash = 1; hash <= 16; ++hash) AddFormerHash(former, hash);
  AddFormerHash(former, 16);  // known already
  EXPECT_TRUE(HasFormerHash(former, 1));
  AddFormerHash(former, 17);  // takes the place of the oldest
  EXPECT_FALSE(HasFormerHash(former, 1));
  for (std::uint32_t hash = 2; hash <= 17; ++hash) EXPECT_TRUE(HasFormerHash(former, hash)) << hash;
}

TEST_F(PlateLimits, ItemsOfARecord) {
  static_assert(kMaxItems == 96);
  FeatureSettings record;
  for (int k = 0; k < kMaxItems; ++k) PlaceFeature(k, k, 0);
  EXPECT_TRUE(SavePlateSettings(record));
  EXPECT_EQ(record.itemCount, kMaxItems);
  PlaceFeature(kMaxItems, 1, 0);
  EXPECT_EQ(PlateItems(plate), kMaxItems + 1);
  EXPECT_FALSE(SavePlateSettings(record));
  EXPECT_EQ(record.itemCount, kMaxItems);
  PutFeature(0, {});
  EXPECT_TRUE(SavePlateSettings(record));
}

}  // namespace
