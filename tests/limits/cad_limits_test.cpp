// The CAD workspace's tables, full and one beyond.

#include <gtest/gtest.h>

#include "app/command_ids.h"
#include "cad/sketch.h"
#include "library/shapes.h"
#include "support/stage.h"

namespace morva {
namespace {

TEST(SketchLimits, TwentyFourUndoStepsAreKeptAndTheOldestStateIsLost) {
  ResetSketch();
  for (int i = 0; i <= kMaxSketchUndo; ++i) {
    sketch.thickness = i;
    PushSketchUndo();
    SketchObject line;
    line.size = i + 1.0;
    ASSERT_EQ(AppendSketchObject(line), i);
  }
  EXPECT_EQ(sketch.undoDepth, 24);
  for (int i = 0; i < kMaxSketchUndo; ++i) SketchUndo();
  // The empty sketch of the very first step cannot be reached any more.
  EXPECT_EQ(sketch.objectCount, 1);
  SketchUndo();
  EXPECT_EQ(sketch.objectCount, 1);
  ResetSketch();
}

TEST(SketchLimits, NinetySevenObjectsAreOneTooMany) {
  ResetSketch();
  SketchObject line;
  for (int i = 0; i < kMaxItems; ++i) ASSERT_EQ(AppendSketchObject(line), i);
  EXPECT_EQ(AppendSketchObject(line), -1);
  EXPECT_EQ(sketch.objectCount, kMaxItems);
  RemoveSketchObject(3);
  EXPECT_EQ(AppendSketchObject(line), kMaxItems - 1);
  ResetSketch();
}

TEST(ShapeLimits, TwentyFourShapesOf64ObjectsAndNamesOf71Units) {
  static_assert(kMaxShapes == 24 && kMaxShapeObjects == 64 && kShapeNameUnits == 72);
  ResetShapeLibrary();
  for (int i = 0; i < kMaxShapes; ++i) ASSERT_EQ(AppendShape(std::u16string(72, u'n')), i);
  EXPECT_EQ(AppendShape(u"one more"), -1);
  EXPECT_EQ(shapeLibrary.count, 24);
  EXPECT_EQ(std::u16string(shapeLibrary.shapes[0].name), std::u16string(71, u'n'));
  --shapeLibrary.count;
  EXPECT_EQ(AppendShape(u"again"), 23);
  ResetShapeLibrary();
}

using SketchLists = support::Stage;

TEST_F(SketchLists, FortyRecentOperationsAreKeptAndTheOldestGoes) {
  static_assert(kMaxRecentOperations == 40);
  platform::ListSpec list;
  list.id = kIdCadRecent;
  platform::MakeList(list);
  for (int i = 0; i < kMaxRecentOperations; ++i) LogSketchOperation(i == 0 ? u"first" : u"next");
  EXPECT_EQ(platform::RowText(kIdCadRecent, 0), u"first");
  LogSketchOperation(u"last");
  EXPECT_EQ(platform::RowCount(kIdCadRecent), 40);
  EXPECT_EQ(platform::RowText(kIdCadRecent, 0), u"next");
  EXPECT_EQ(platform::RowText(kIdCadRecent, 39), u"last");
}

}  // namespace
}  // namespace morva
