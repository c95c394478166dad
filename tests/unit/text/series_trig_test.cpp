#include "text/series_trig.h"

#include <gtest/gtest.h>

#include <cmath>

namespace morva {
namespace {

TEST(SeriesTrig, QuarterTurnsGiveExactZeros) {
  EXPECT_EQ(SeriesCosine(90 * kRadiansPerDegree), 0.0);
  EXPECT_EQ(SeriesSine(180 * kRadiansPerDegree), 0.0);
  EXPECT_EQ(SeriesCosine(270 * kRadiansPerDegree), 0.0);
  EXPECT_EQ(SeriesSine(0), 0.0);
}

TEST(SeriesTrig, TheCosineOfZeroIsWhatTheSeriesSums) {
  // The first term left out is x^13 / 13! = 5.7e-8 at half pi, and it would be added.
  EXPECT_LT(SeriesCosine(0), 1.0);
  EXPECT_NEAR(SeriesCosine(0), 1.0, 6e-8);
}

TEST(SeriesTrig, StaysWithinItsErrorOverSeveralTurns) {
  for (int degree = -1000; degree <= 1000; ++degree) {
    const double a = degree * kRadiansPerDegree;
    EXPECT_NEAR(SeriesSine(a), std::sin(a), 6e-8) << degree;
    EXPECT_NEAR(SeriesCosine(a), std::cos(a), 6e-8) << degree;
  }
}

TEST(SeriesTrig, MillionsOfTurnsAreTakenOffAtOnceAndNotAddedUpToAnError) {
  // Turn by turn the rounding of 2.7 million subtractions would be seen in the third decimal.
  for (const double degrees : {1e6, 123456789.0, -999999999.0, 999999999.0}) {
    const double a = degrees * kRadiansPerDegree;
    EXPECT_NEAR(SeriesSine(a), std::sin(a), 1e-7) << degrees;
    EXPECT_NEAR(SeriesCosine(a), std::cos(a), 1e-7) << degrees;
  }
}

TEST(QuarterCosine, IsExactAtQuarterTurnsOfAnySignAndNumberAndNothingBetween) {
  const double kCosines[] = {1, 0, -1, 0};
  for (int quarter = -400; quarter <= 400; ++quarter) {
    double cosine = 7;
    ASSERT_TRUE(QuarterCosine(90.0 * quarter, cosine)) << quarter;
    EXPECT_EQ(cosine, kCosines[(quarter + 400) % 4]) << quarter;
  }
  double cosine = 7;
  for (const double none : {89.999999999, 45.0, -270.0001, 1e-300, std::nan(""), HUGE_VAL}) {
    EXPECT_FALSE(QuarterCosine(none, cosine)) << none;
  }
  EXPECT_EQ(cosine, 7);
}

TEST(SeriesTrig, WhatIsNoAngleGivesZero) {
  EXPECT_EQ(SeriesSine(1e300), 0.0);
  EXPECT_EQ(SeriesSine(std::nan("")), 0.0);
}

}  // namespace
}  // namespace morva
