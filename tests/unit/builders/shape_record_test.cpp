// The shapes of records of kinds 1 to 3, through the bytes of a block and back.

#include "builders/shapes/shape_record.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/stage.h"

namespace morva {
namespace {

struct ShapeRecords : support::Stage {
  void SetUp() override { ResetShapeLibrary(); }
  void TearDown() override { ResetShapeLibrary(); }
  static int Saved(std::vector<SketchObject> objects) {
    SavedShape shape;
    shape.name[0] = u'S';
    shape.name[1] = static_cast<char16_t>(u'0' + shapeLibrary.count);
    for (const SketchObject& object : objects) shape.objects[shape.count++] = object;
    return PutShape(shape);
  }
  // A record as a builder fills it in.
  static FeatureSettings Record(std::int32_t kind) {
    FeatureSettings record;
    record.version = kSettingsVersion;
    record.kind = kind;
    record.metric = 1;
    for (int i = 0; i < 12; ++i) record.values[i] = i - 0.375;
    return record;
  }
  static FeatureSettings Again(const FeatureSettings& record) {
    std::vector<unsigned char> bytes(kSettingsBytes);
    WriteSettings(record, bytes.data());
    const auto length = static_cast<std::size_t>(SettingsLength(record));
    FeatureSettings read;
    ReadSettings(bytes.data(), length, read);
    EXPECT_TRUE(ValidateSettings(read, length));
    return read;
  }
};

TEST_F(ShapeRecords, HoldABuiltInRow) {
  for (const std::int32_t kind : {kKindShape, kKindCircular, kKindRectangular}) {
    FeatureSettings record = Record(kind);
    ASSERT_TRUE(StoreShape(5, record));
    const FeatureSettings read = Again(record);
    EXPECT_EQ(read.a, 5);
    EXPECT_EQ(read.itemCount, 0);
    EXPECT_EQ(SavedShapeOf(read.a), nullptr);
  }
}

TEST_F(ShapeRecords, HoldTheObjectsOfASavedShape) {
  Saved({{kTypeLine, 0, 0, 0, 1, 0, 0}});
  const int index = Saved({{kTypeSlot, 4, -0.1, 2, 3, 0.3, -45}, {kTypeWorkPoint, 0, 1, 1}});
  FeatureSettings record = Record(kKindShape);
  ASSERT_TRUE(StoreShape(kCustomShapeData + index, record));
  const FeatureSettings read = Again(record);
  EXPECT_EQ(read.a, -1);
  ASSERT_EQ(read.itemCount, 2);
  EXPECT_EQ(read.items[0].p4, -45);
  EXPECT_EQ(RecoverProjectShape(read), index);
  EXPECT_EQ(SavedShapeOf(kCustomShapeData + index), &shapeLibrary.shapes[index]);
}

TEST_F(ShapeRecords, RefuseWhatARecordCannotHold) {
  FeatureSettings record = Record(kKindShape);
  EXPECT_FALSE(StoreShape(kCustomShapeData, record)) << "no such shape";
  EXPECT_FALSE(StoreShape(-1, record)) << "nothing is chosen";
  EXPECT_FALSE(StoreShape(kCustomShapeData + Saved({}), record)) << "an empty shape";
  EXPECT_FALSE(StoreShape(kCustomShapeData + Saved({{kTypeCircle, 0, 0, 0, -1, 0, 0}}), record));
  EXPECT_FALSE(StoreShape(kCustomShapeData + Saved({{7, 0, 0, 0, 1, 0, 0}}), record));
  EXPECT_FALSE(StoreShape(kCustomShapeData + Saved({{kTypeLine, 0, 1e9, 0, 1, 0, 0}}), record));
}

}  // namespace
}  // namespace morva
