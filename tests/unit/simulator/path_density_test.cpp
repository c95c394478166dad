#include "simulator/path_density.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "unit/simulator/simulator_fixture.h"

namespace morva {
namespace {

using platform::PointF;
using platform::Rect;

constexpr Rect kClient{0, 0, 400, 300};

// A path by its places on the picture; the first point begins it.
class PathDensity : public testing::Test {
 protected:
  void SetUp() override { ResetSimulator(); }
  void TearDown() override { ResetSimulator(); }
  void To(double x, double y, bool rapid = false, bool jump = false) {
    MotionPoint& point = path.points[path.count++];
    point = MotionPoint();
    point.rapid = rapid;
    point.jump = jump;
    places_.push_back({x, y});
  }
  // Strokes to and fro across a square of 100 pixels, so far apart.
  void Strokes(double apart) {
    for (double y = 100; y <= 200; y += apart) {
      To(100, y);
      To(200, y);
      y += apart;
      To(200, y);
      To(100, y);
    }
  }
  [[nodiscard]] double Covered() const { return CoveredPart(path, places_.data(), kClient); }
  std::vector<PointF> places_;
};

TEST_F(PathDensity, IsTheLengthTimesTheWidthOverTheAreaAround) {
  To(100, 100);
  To(200, 100);
  To(200, 200);
  To(100, 200);
  To(100, 100);
  EXPECT_NEAR(Covered(), 400.0 * 2 / 10000, 1e-9);
}

TEST_F(PathDensity, RisesAboveOneWhereLinesLieCloserThanTheyAreWide) {
  Strokes(1);
  EXPECT_GT(Covered(), 1.9);
  EXPECT_LT(Covered(), 2.2);
}

TEST_F(PathDensity, LeavesOutRapidsAndJumps) {
  To(100, 100);
  To(200, 100);
  To(200, 200, true);
  To(100, 200, false, true);
  EXPECT_NEAR(Covered(), 100.0 * 2 / 1024, 1e-9);
}

TEST_F(PathDensity, CountsWhatLiesInsideTheClientAlone) {
  To(-1000, 150);
  To(1000, 150);   // 400 of it inside
  To(1000, 5000);  // beyond
  To(-3000, 400);  // beyond, though its corners' lines cross the client
  To(100, 3000);
  To(-100, 100);
  To(100, -100);  // touches the corner alone
  EXPECT_NEAR(Covered(), 400.0 * 2 / 1024, 1e-9);
}

TEST_F(PathDensity, IsNoneOfNothing) {
  EXPECT_EQ(Covered(), 0);
  To(1, 1);
  EXPECT_EQ(Covered(), 0);
  To(1, 1);
  EXPECT_EQ(Covered(), 0);
  To(std::numeric_limits<double>::quiet_NaN(), 1);
  To(std::numeric_limits<double>::infinity(), 1);
  To(2, 2);
  EXPECT_EQ(PartOfDense(Covered()), 0);
}

TEST_F(PathDensity, TakesSomePointsOfALongPathForAll) {
  for (int i = 0; i < 15; ++i) Strokes(0.1);
  ASSERT_GT(path.count, 16384);
  EXPECT_NEAR(Covered(), 15 * 20, 15 * 20 * 0.05);
}

TEST_F(PathDensity, GoesFromLinesApartToLinesTogether) {
  EXPECT_EQ(PartOfDense(0), 0);
  EXPECT_EQ(PartOfDense(0.8), 0);
  EXPECT_NEAR(PartOfDense(1.4), 0.5, 1e-12);
  EXPECT_EQ(PartOfDense(2), 1);
  EXPECT_EQ(PartOfDense(40), 1);
}

}  // namespace
}  // namespace morva
