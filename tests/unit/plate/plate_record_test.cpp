// The record of a plate: items, their order, and that nothing is lost on the way to and fro.

#include "plate/model/plate_record.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>

#include "library/shapes.h"
#include "plate/geometry/plate_layout.h"
#include "plate/model/plate.h"

namespace {

using namespace morva;

constexpr std::int32_t kNumbers[kSectionNumbers] = {1, -2, 3, 4, 5};

class PlateSettings : public testing::Test {
 protected:
  PlateSettings() {
    ResetPlate();
    ResetShapeLibrary();
  }
  ~PlateSettings() override {
    ResetPlate();
    ResetShapeLibrary();
  }

  static FeatureSettings Saved() {
    FeatureSettings record;
    EXPECT_TRUE(SavePlateSettings(record));
    return record;
  }
  static std::string BytesOf(const FeatureSettings& record) {
    std::string bytes(kSettingsBytes, '\0');
    WriteSettings(record, reinterpret_cast<unsigned char*>(bytes.data()));
    return bytes;
  }
  static void ExpectItem(const FeatureItem& item, const FeatureItem& wanted) {
    EXPECT_EQ(item.type, wanted.type);
    EXPECT_EQ(item.tag, wanted.tag);
    EXPECT_EQ(item.p0, wanted.p0);
    EXPECT_EQ(item.p1, wanted.p1);
    EXPECT_EQ(item.p2, wanted.p2);
    EXPECT_EQ(item.p3, wanted.p3);
    EXPECT_EQ(item.p4, wanted.p4);
  }
  static SavedShape Cross() {
    SavedShape shape;
    shape.count = 2;
    shape.objects[0] = {kTypeRectangle, 7, 0, 0, 1, 0.25, 0};
    shape.objects[1] = {kTypeRectangle, 7, 0, 0, 0.25, 1, 0};
    return shape;
  }
  // Something of each kind.
  static void SetOneOfEach() {
    ASSERT_EQ(AppendShape(u"Outline"), 0);
    SavedShape outline;
    outline.count = 2;
    outline.objects[0] = {kTypeRectangle, 0, 0, 0, 4, 2, 0};
    outline.objects[1] = {kTypeWorkPoint, 0, 1, 1, 0, 0, 0};
    ASSERT_EQ(PutShapeAt(0, outline), 0);
    ASSERT_TRUE(SetPlateOutline(0));
    SetSectionLabel(14, kNumbers);
    SetDimensionLabel(899, 0.25, -0.5);
    SetDimensionLabel(0, 0, 0);
    SetFeatureFlag(399, FeatureFlag::Deleted, true);
    PlateFeature feature;
    feature.shape = Cross();
    feature.x = 1.5;
    feature.y = -2;
    feature.placed = true;
    feature.locked = true;
    feature.depth = 0.2;
    PutFeature(1, feature);
    SetFeatureFlag(0, FeatureFlag::Through, true);
    SetFeatureFlag(0, FeatureFlag::Hidden, true);
  }
};

TEST_F(PlateSettings, HoldTheFormAndThreeNumbersMore) {
  SetPlateShape(PlateShape::Obround);
  SetPlateType(PlateFeatureType::Mixed);
  SetPlateLayout(PlateLayout::Circular);
  SetPlateText(kPlateSize, u"0.375");
  const FeatureSettings record = Saved();
  EXPECT_EQ(record.version, 3);
  EXPECT_EQ(record.kind, 5);
  EXPECT_EQ(record.metric, 0);
  EXPECT_EQ(record.a, 2);
  EXPECT_EQ(record.b, 3);
  EXPECT_EQ(record.c, 2);
  EXPECT_EQ(record.itemCount, 0);
  // The digits are summed up one by one, which leaves a last bit more.
  const double wanted[] = {
      8, 6, 0.25, 0.37500000000000006, 0.75, 2, 2, 0.5, 0.5, 4, -0.1, 10, 0.5, 0.5, 0.0, 1.0};
  for (int i = 0; i < kSettingsValues; ++i) EXPECT_NEAR(record.values[i], wanted[i], 1e-12) << i;
  EXPECT_EQ(record.values[kPlateSize], wanted[kPlateSize]);
}

TEST_F(PlateSettings, ListItemsInTheOrderOfTheirKinds) {
  SetOneOfEach();
  const FeatureSettings record = Saved();
  ASSERT_EQ(record.itemCount, 12);
  EXPECT_EQ(record.values[14], 2);
  ExpectItem(record.items[0], {1, 0, 0, 0, 4, 2, 0});
  ExpectItem(record.items[1], {4, 0, 1, 1, 0, 0, 0});
  ExpectItem(record.items[2], {1, 2, 0, 0, 1, 0.25, 0});
  ExpectItem(record.items[3], {1, 2, 0, 0, 0.25, 1, 0});
  ExpectItem(record.items[4], {4, 1001, 0, 1, 0, 0, 0});
  ExpectItem(record.items[5], {4, 1002, 0.2, 0, 0, 0, 0});
  ExpectItem(record.items[6], {5, 2014, 1, -2, 3, 4, 5});
  ExpectItem(record.items[7], {5, 3000, 0, 0, 0, 0, 0});
  ExpectItem(record.items[8], {5, 3899, 0.25, -0.5, 0, 0, 0});
  ExpectItem(record.items[9], {5, 4000, 0, 0, 2, 0, 0});
  ExpectItem(record.items[10], {5, 4001, 1.5, -2, 5, 0, 0});
  ExpectItem(record.items[11], {5, 4399, 0, 0, 8, 0, 0});
}

TEST_F(PlateSettings, ComeBackAsTheSameBytes) {
  SetOneOfEach();
  SetPlateName(u"Fixture");
  const FeatureSettings first = Saved();
  StartPlate(true);
  ASSERT_TRUE(LoadPlateSettings(first));
  EXPECT_EQ(BytesOf(Saved()), BytesOf(first));
  EXPECT_EQ(plate.customOutlineIndex, 0);
  EXPECT_EQ(std::u16string(plate.values[kPlateLength].text), u"8.000000");
  EXPECT_FALSE(plate.unnamed);
}

TEST_F(PlateSettings, AreReadInAnyOrderOfTheirItems) {
  SetOneOfEach();
  const FeatureSettings first = Saved();
  FeatureSettings mixed = first;
  std::mt19937 random(11);
  // The objects of one shape keep their own order.
  std::swap(mixed.items[0], mixed.items[9]);
  std::swap(mixed.items[5], mixed.items[11]);
  std::reverse(mixed.items + 6, mixed.items + 9);
  std::swap(mixed.items[0], mixed.items[1]);
  std::swap(mixed.items[1], mixed.items[9]);
  ASSERT_TRUE(LoadPlateSettings(mixed));
  FeatureSettings again = Saved();
  // Of the outline the first object came last.
  std::swap(again.items[0], again.items[1]);
  if (BytesOf(again) != BytesOf(first)) std::swap(again.items[0], again.items[1]);
  EXPECT_EQ(BytesOf(again), BytesOf(first));
}

TEST_F(PlateSettings, TakeTheCutDepthForAThicknessThatIsMissing) {
  FeatureSettings record = Saved();
  record.values[kPlateThickness] = 0;
  record.values[kPlateDepth] = -0.375;
  ASSERT_TRUE(LoadPlateSettings(record));
  EXPECT_EQ(plate.values[kPlateStock].value, 0.375);
}

TEST_F(PlateSettings, RefuseWhatIsNoPlate) {
  SetPlateText(kPlateLength, u"9");
  const FeatureSettings good = Saved();
  const std::uint32_t changes = plate.changes;
  FeatureSettings bad = good;
  bad.kind = kKindSketch;
  EXPECT_FALSE(LoadPlateSettings(bad));
  bad = good;
  bad.c = 3;
  EXPECT_FALSE(LoadPlateSettings(bad));
  bad = good;
  bad.values[kPlateOutlineItems] = 0.5;
  EXPECT_FALSE(LoadPlateSettings(bad));
  bad = good;
  bad.itemCount = 65;  // one object more than a feature's shape holds
  for (int i = 0; i < 65; ++i) bad.items[i] = {kTypeCircle, 1, 0, 0, 1, 0, 0};
  EXPECT_FALSE(LoadPlateSettings(bad));
  EXPECT_EQ(plate.changes, changes);
  EXPECT_EQ(plate.values[kPlateLength].value, 9);
}

TEST_F(PlateSettings, PassOverItemsThatBelongToNothing) {
  FeatureSettings record = Saved();
  record.itemCount = 4;
  record.items[0] = {5, 4400, 1, 1, 1, 0, 0};
  record.items[1] = {5, 2015, 1, 1, 1, 0, 0};
  record.items[2] = {4, 1000, 1, 1, 1, 0, 0};
  record.items[3] = {2, 401, 1, 1, 1, 0, 0};
  ASSERT_TRUE(LoadPlateSettings(record));
  EXPECT_EQ(PlateItems(plate), 0);
}

TEST_F(PlateSettings, BringAnOutlineBackThatTheLibraryLacks) {
  SetOneOfEach();
  const FeatureSettings record = Saved();
  ResetShapeLibrary();
  ASSERT_TRUE(LoadPlateSettings(record));
  ASSERT_EQ(shapeLibrary.count, 1);
  EXPECT_EQ(std::u16string(shapeLibrary.shapes[0].name), u"Recovered project shape");
  EXPECT_EQ(plate.customOutlineIndex, 0);
  ASSERT_TRUE(LoadPlateSettings(record));
  EXPECT_EQ(shapeLibrary.count, 1);
}

TEST_F(PlateSettings, KeepAnOutlineForWhichTheLibraryHasNoRoom) {
  SetOneOfEach();
  const FeatureSettings record = Saved();
  ResetShapeLibrary();
  for (int i = 0; i < kMaxShapes; ++i) ASSERT_EQ(AppendShape(u"Other"), i);
  ASSERT_TRUE(LoadPlateSettings(record));
  EXPECT_EQ(plate.customOutlineIndex, -1);
  EXPECT_EQ(plate.outline.count, 2);
  EXPECT_EQ(BytesOf(Saved()), BytesOf(record));
}

TEST_F(PlateSettings, FailBeyond96ItemsAndThePlateCanStillBeEdited) {
  for (int k = 0; k < kMaxItems + 1; ++k) SetFeatureFlag(k, FeatureFlag::Locked, true);
  FeatureSettings record;
  record.kind = kKindSkim;
  EXPECT_FALSE(SavePlateSettings(record));
  EXPECT_EQ(record.kind, kKindSkim);
  EXPECT_EQ(PlateItemsOutOfUse(plate, 4), 93);
  SetFeatureFlag(96, FeatureFlag::Locked, false);
  EXPECT_TRUE(SavePlateSettings(record));
  EXPECT_EQ(record.itemCount, 96);
}

TEST_F(PlateSettings, KeepAPlacedFeatureOfAMetricPlateWhereItIs) {
  SetPlateUnit(true);
  PlaceFeature(1, 12.7 / 25.4, -20 / 25.4);
  SetPlateLayout(PlateLayout::Grid);
  ASSERT_TRUE(LoadPlateSettings(Saved()));
  const platform::PointF at = FeaturePlace(NumbersOf(plate), plate.features[1], 1);
  EXPECT_NEAR(at.x, 12.7, 1e-9);
  EXPECT_NEAR(at.y, -20, 1e-9);
}

// The k-th of some numbers between the two.
double Between(std::mt19937& random, double low, double high) {
  const double share = static_cast<double>(random() % 100001) / 100000.0;
  return low + (high - low) * share;
}

TEST_F(PlateSettings, OfAnyPlateComeBackAsTheSameBytes) {
  std::mt19937 random(4711);
  for (int round = 0; round < 200; ++round) {
    StartPlate(random() % 2 == 0);
    for (int i = 0; i < kPlateValues; ++i) {
      SetPlateNumber(i, Between(random, i == kPlateStock ? 0.1 : -500, 500), 6);
    }
    SetPlateShape(static_cast<PlateShape>(random() % 3));
    SetPlateType(static_cast<PlateFeatureType>(random() % 4));
    SetPlateLayout(static_cast<PlateLayout>(random() % 3));
    for (int i = 0; i < 25; ++i) {
      const int k = static_cast<int>(random() % kMaxPlateFeatures);
      PlateFeature feature;
      feature.x = Between(random, -30, 30);
      feature.y = Between(random, -30, 30);
      feature.placed = true;
      feature.hidden = random() % 2 == 0;
      feature.locked = random() % 2 == 0;
      feature.deleted = random() % 4 == 0;
      feature.through = random() % 2 == 0;
      feature.depth = random() % 2 == 0 ? Between(random, 0.01, 2) : 0;
      feature.shape.count = random() % 2 == 0 ? 1 : 0;
      feature.shape.objects[0] = {
          kTypeSlot, 0, 0, 0, Between(random, 1, 2), 0.5, Between(random, -360, 360)};
      if (feature.shape.count == 0) feature.shape = SavedShape();
      PutFeature(k, feature);
    }
    for (int i = 0; i < 10; ++i) {
      SetDimensionLabel(static_cast<int>(random() % kMaxPlateLabels), Between(random, -1, 1),
                        Between(random, -1, 1));
    }
    const FeatureSettings first = Saved();
    StartPlate(false);
    ASSERT_TRUE(LoadPlateSettings(first));
    ASSERT_EQ(BytesOf(Saved()), BytesOf(first)) << round;
  }
}

TEST_F(PlateSettings, OfANewPlateAreItsStartValues) {
  FeatureSettings record;
  StartPlateRecord(record, false);
  EXPECT_EQ(BytesOf(Saved()), BytesOf(record));
  StartPlateRecord(record, true);
  EXPECT_EQ(record.metric, 1);
  EXPECT_NEAR(record.values[kPlateLength], 203.2, 1e-9);
  EXPECT_NEAR(record.values[kPlateFeed], 254, 1e-9);
  EXPECT_EQ(record.values[kPlateCountX], 2);
  EXPECT_EQ(record.values[kPlateCountY], 2);
  EXPECT_EQ(record.values[kPlateUnnamed], 1);
  ASSERT_TRUE(LoadPlateSettings(record));
  EXPECT_TRUE(plate.unnamed);
  EXPECT_EQ(std::u16string(plate.values[kPlateLength].text), u"203.200000");
}

TEST_F(PlateSettings, KeepTheLastNumberOfAFieldThatIsHalfTyped) {
  SetPlateText(kPlateLength, u"9.5");
  FinishPlateTexts();
  SetPlateText(kPlateLength, u"9");
  SetPlateText(kPlateLength, u"9,75");
  EXPECT_EQ(Saved().values[kPlateLength], 9.5);
  EXPECT_FALSE(PlateTextReads(kPlateLength));
}

}  // namespace
