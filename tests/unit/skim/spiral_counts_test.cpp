// Counts of spirals, against the chord's own formula and worked examples.

#include "skim/model/spiral_counts.h"

#include <gtest/gtest.h>

#include <cmath>

namespace morva {
namespace {

// 2 pi over the root of 0.004 / 2 is 140.496.
TEST(SpiralCounts, OfATwoInchRadius) {
  EXPECT_EQ(CircleSegments(2, false), 141);
  EXPECT_EQ(SpiralPoints(2, 0.6, false), 471);
}

TEST(SpiralCounts, TakeThePlansUnit) {
  // The root of 50.8 / 0.08 is 25.199, times 2 pi 158.33.
  EXPECT_EQ(CircleSegments(50.8, true), 159);
}

TEST(SpiralCounts, AreAtLeastSeventyThree) {
  EXPECT_EQ(CircleSegments(0.001, false), 73);
  EXPECT_EQ(CircleSegments(0, false), 73);
}

TEST(SpiralCounts, StandForAllThatIsTooMuch) {
  // The root of R / 0.004 reaches 30000 / 2 pi at 91189.
  EXPECT_EQ(CircleSegments(91189, false), 30000);
  EXPECT_EQ(CircleSegments(91190, false), 30001);
  EXPECT_EQ(CircleSegments(-1, false), 30001);
  EXPECT_EQ(SpiralPoints(2, 0, false), 30001);
  EXPECT_EQ(SpiralPoints(2, 0.001, false), 30001);
  EXPECT_EQ(SpiralPoints(0, 0, false), 30001);
}

// The middle of each chord lies no farther from the circle than half the tolerance says: the
// arrow of a chord is R (1 - cos(pi / n)).
TEST(SpiralCounts, KeepChordsNearTheCircle) {
  for (double radius = 1; radius < 500; radius *= 1.7) {
    const int count = CircleSegments(radius, false);
    EXPECT_LE(radius * (1 - std::cos(3.14159265358979 / count)), 0.004 / 2) << radius;
  }
}

}  // namespace
}  // namespace morva
