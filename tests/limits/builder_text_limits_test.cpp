// The limits of the builders of short jobs: full, and one beyond.

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>

#include "app/limits.h"
#include "builders/shapes/pattern_text.h"
#include "builders/wizard/wizard_text.h"
#include "platform/file.h"
#include "skim/model/spiral_counts.h"
#include "text/code_writer.h"

namespace morva {
namespace {

WizardValues Job(int kind) {
  WizardValues values;
  values.kind = kind;
  const double numbers[] = {0, 0, 1500, 12, 0.5, -0.1, 0, 0, 4, 1};
  std::copy(std::begin(numbers), std::end(numbers), values.numbers);
  return values;
}

TEST(BuilderTextLimits, A401stHoleIsRefusedWithWords) {
  static_assert(kMaxWizardHoles == 400);
  WizardValues values = Job(kWizardDrill);
  values.numbers[kWizardNinth] = 400;
  EXPECT_EQ(CheckWizard(values).field, -1);
  EXPECT_EQ(WizardHoles(values).size(), 400u);
  values.numbers[kWizardNinth] = 401;
  EXPECT_NE(CheckWizard(values).words[0], 0);
  EXPECT_EQ(WizardHoles(values).size(), 400u);
}

TEST(BuilderTextLimits, A100thPassIsRefusedWithWords) {
  static_assert(kMaxFacePasses == 99);
  WizardValues values = Job(kWizardFace);
  values.numbers[kWizardTenth] = 98 * 0.4;
  EXPECT_EQ(CheckWizard(values).field, -1);
  EXPECT_EQ(WizardWay(values).size(), 2u * 99);
  values.numbers[kWizardTenth] = 99 * 0.4;
  EXPECT_NE(CheckWizard(values).words[0], 0);
  EXPECT_EQ(WizardWay(values).size(), 2u * 99);
}

TEST(BuilderTextLimits, TheLargestJobFitsItsText) {
  static_assert(kWizardTextUnits == 65536);
  EXPECT_EQ(WizardRoom(), 65535u);
  WizardValues values = Job(kWizardPeck);
  values.numbers[kWizardX] = values.numbers[kWizardY] = -1e15;
  values.numbers[kWizardTenth] = 400;
  CodeWriter out;
  out.most = WizardRoom();
  WriteWizard(values, out);
  EXPECT_FALSE(out.full);
}

TEST(BuilderTextLimits, A121stItemOfACircleIsLeftOut) {
  static_assert(kMaxCircularItems == 120);
  CircularValues values;
  values.numbers[kCircularQuantity] = 120;
  EXPECT_EQ(CircularQuantity(values), 120);
  values.numbers[kCircularQuantity] = 121;
  EXPECT_EQ(CircularQuantity(values), 120);
}

TEST(BuilderTextLimits, A401stItemOfAGridIsRefusedWithWords) {
  static_assert(kMaxGridItems == 400);
  GridValues values;
  const double numbers[] = {1, 1, 0, 0, 0, 1, 400, 1, 1, -1, 10, 1};
  std::copy(std::begin(numbers), std::end(numbers), values.numbers);
  EXPECT_EQ(CheckGrid(values).field, -1);
  values.numbers[kGridRows] = 401;
  EXPECT_EQ(std::u16string(CheckGrid(values).words).substr(0, 56),
            u"This pattern exceeds the audited limit of 400 generated ");
}

TEST(BuilderTextLimits, NumbersOfItemsAreShownUpTo60) {
  static_assert(kMaxNumberedItems == 60);
  CircularValues values;
  values.numbers[kCircularSize] = 1;
  values.numbers[kCircularQuantity] = 60;
  Picture few;
  DrawCircular(values, few);
  values.numbers[kCircularQuantity] = 61;
  Picture many;
  DrawCircular(values, many);
  EXPECT_EQ(few.labels.size(), many.labels.size() + 60);
}

TEST(BuilderTextLimits, PointsOfASpiralAreCountedUpToOneMore) {
  static_assert(kMaxSpiralPoints == 30000);
  EXPECT_EQ(CircleSegments(91189, false), 30000);
  EXPECT_EQ(CircleSegments(91190, false), 30001);
  EXPECT_EQ(SpiralPoints(1e6, 1, false), 30001);
}

// The frame holds the comments of the most items.
TEST(BuilderTextLimits, APatternHasRoomForItsComments) {
  static_assert(kPatternFrameUnits == 16384);
  GridValues values;
  values.numbers[kGridColumns] = values.numbers[kGridRows] = 20;
  const SavedShape empty;
  values.item.saved = &empty;
  CodeWriter out;
  out.most = kPatternFrameUnits;
  WriteGrid(values, out);
  EXPECT_FALSE(out.full);
}

}  // namespace
}  // namespace morva
