// The CAD workspace's tables, full and one beyond.

#include <gtest/gtest.h>

#include "cad/sketch.h"

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

}  // namespace
}  // namespace morva
