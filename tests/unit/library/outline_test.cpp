// Outlines, snap points and the plane geometry of the sketch. Points are worked out by hand;
// turned ones are compared with a rotation by complex numbers and the library's own sine, the
// series being good to 6e-8.

#include "library/outline.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <random>
#include <vector>

namespace morva {
namespace {

using Point = std::complex<double>;
constexpr double kPi = 3.14159265358979323846;

std::vector<Point> Outline(const SketchObject& object) {
  double xs[kOutlinePoints];
  double ys[kOutlinePoints];
  std::vector<Point> points;
  const int count = ObjectOutline(object, xs, ys);
  for (int i = 0; i < count; ++i) points.emplace_back(xs[i], ys[i]);
  return points;
}

std::vector<Point> Snaps(const SketchObject& object) {
  double xs[9];
  double ys[9];
  std::vector<Point> points;
  const int count = ObjectSnapPoints(object, xs, ys);
  for (int i = 0; i < count; ++i) points.emplace_back(xs[i], ys[i]);
  return points;
}

// The point of the object's own frame, by the second method.
Point Turned(const SketchObject& object, double lx, double ly) {
  return Point(object.x, object.y) + Point(lx, ly) * std::polar(1.0, object.angle * kPi / 180);
}

void ExpectPoints(const std::vector<Point>& found, const std::vector<Point>& wanted,
                  double tolerance = 1e-12) {
  ASSERT_EQ(found.size(), wanted.size());
  for (std::size_t i = 0; i < found.size(); ++i) {
    EXPECT_NEAR(found[i].real(), wanted[i].real(), tolerance) << i;
    EXPECT_NEAR(found[i].imag(), wanted[i].imag(), tolerance) << i;
  }
}

TEST(Outline, OfALineOrAxisIsItsStartAndEnd) {
  ExpectPoints(Outline({kTypeLine, 0, 1, 2, 3, 0, 90}), {{1, 2}, {1, 5}}, 3e-7);
  // At 90 degrees the cosine is exactly zero: the end stands exactly above the start.
  EXPECT_EQ(Outline({kTypeLine, 0, 1, 2, 3, 0, 90})[1].real(), 1);
  ExpectPoints(Outline({kTypeWorkAxis, 0, 0, 0, 2, 0, 30}), {{0, 0}, {1.7320508075688772, 1}},
               3e-7);
}

TEST(Outline, OfARectangleIsItsFourCornersAndTheFirstAgain) {
  // At 0 degrees the series cosine is 1 to within 6e-8.
  ExpectPoints(Outline({kTypeRectangle, 0, 10, 20, 4, 2, 0}),
               {{8, 19}, {12, 19}, {12, 21}, {8, 21}, {8, 19}}, 3e-7);
  ExpectPoints(Outline({kTypeRectangle, 0, 10, 20, 4, 2, 90}),
               {{11, 18}, {11, 22}, {9, 22}, {9, 18}, {11, 18}}, 3e-7);
}

TEST(Outline, OfACircleHas97PointsFromItsOwnRotationOn) {
  const SketchObject circle{kTypeCircle, 0, 1, -1, 4, 0, 0};
  const auto points = Outline(circle);
  ASSERT_EQ(points.size(), 97u);
  ExpectPoints({points[0], points[24], points[48], points[72], points[96]},
               {{3, -1}, {1, 1}, {-1, -1}, {1, -3}, {3, -1}}, 3e-7);
  // An eighth of a turn: 2 times root one half.
  EXPECT_NEAR(points[12].real(), 1 + 1.4142135623730951, 3e-7);
  EXPECT_NEAR(points[12].imag(), -1 + 1.4142135623730951, 3e-7);
  const auto turned = Outline({kTypeCircle, 0, 1, -1, 4, 0, 90});
  EXPECT_NEAR(turned[0].real(), 1, 3e-7);
  EXPECT_NEAR(turned[0].imag(), 1, 3e-7);
}

TEST(Outline, OfASlotHasTwoCapsOf33PointsAndTheFirstAgain) {
  // Length 6, width 2: caps of radius 1 about (2, 0) and (-2, 0).
  const auto points = Outline({kTypeSlot, 0, 0, 0, 6, 2, 0});
  ASSERT_EQ(points.size(), 67u);
  ExpectPoints({points[0], points[16], points[32], points[33], points[49], points[65], points[66]},
               {{2, -1}, {3, 0}, {2, 1}, {-2, 1}, {-3, 0}, {-2, -1}, {2, -1}}, 3e-7);
  EXPECT_EQ(points[66], points[0]);
  // Ten steps of pi/32 from -90 degrees are -33.75 degrees: (2 + 0.8314696, -0.5555702).
  EXPECT_NEAR(points[10].real(), 2.8314696123025452, 3e-7);
  EXPECT_NEAR(points[10].imag(), -0.5555702330196022, 3e-7);
}

TEST(Outline, OfASlotShorterThanItsWidthIsACircleOfItsWidth) {
  const auto points = Outline({kTypeSlot, 0, 5, 5, 1, 3, 20});
  ASSERT_EQ(points.size(), 67u);
  for (const Point& point : points) EXPECT_NEAR(std::abs(point - Point(5, 5)), 1.5, 3e-7);
}

TEST(Outline, OfAWorkPointIsACrossOfTheSameSizeInEveryUnit) {
  ExpectPoints(Outline({kTypeWorkPoint, 0, 1, 2, 0, 0, 0}),
               {{0.975, 2}, {1.025, 2}, {1, 2}, {1, 2.025}, {1, 1.975}}, 1e-8);
  ExpectPoints(Outline({kTypeWorkPoint, 0, 0, 0, 0, 0, 90}),
               {{0, -0.025}, {0, 0.025}, {0, 0}, {-0.025, 0}, {0.025, 0}}, 1e-8);
}

TEST(Outline, OfAnotherTypeHasNoPoints) {
  EXPECT_TRUE(Outline({6, 0, 1, 1, 1, 1, 0}).empty());
  EXPECT_TRUE(Outline({-1, 0, 1, 1, 1, 1, 0}).empty());
}

TEST(Outline, AgreesWithARotationByComplexNumbers) {
  std::mt19937 random(17);
  std::uniform_real_distribution<double> place(-50, 50);
  std::uniform_real_distribution<double> size(0.01, 20);
  std::uniform_real_distribution<double> angle(-720, 720);
  for (int round = 0; round < 200; ++round) {
    SketchObject object{round % 6,    0, place(random), place(random), size(random), size(random),
                        angle(random)};
    const double w = object.size / 2;
    const double h = object.size2 / 2;
    const double s = std::max(0.0, w - h);
    std::vector<Point> wanted;
    switch (object.type) {
      case kTypeLine:
      case kTypeWorkAxis:
        wanted = {Turned(object, 0, 0), Turned(object, object.size, 0)};
        break;
      case kTypeRectangle:
        wanted = {Turned(object, -w, -h), Turned(object, w, -h), Turned(object, w, h),
                  Turned(object, -w, h), Turned(object, -w, -h)};
        break;
      case kTypeCircle:
        for (int i = 0; i <= 96; ++i) {
          wanted.push_back(Turned(object, w * std::cos(i * kPi / 48), w * std::sin(i * kPi / 48)));
        }
        break;
      case kTypeSlot:
        for (int i = 0; i <= 65; ++i) {
          const double side = i <= 32 ? 1 : -1;
          const double a = i <= 32 ? -kPi / 2 + i * kPi / 32 : kPi / 2 + (i - 33) * kPi / 32;
          wanted.push_back(Turned(object, side * s + h * std::cos(a), h * std::sin(a)));
        }
        wanted.push_back(wanted[0]);
        break;
      default:
        wanted = {Turned(object, -0.025, 0), Turned(object, 0.025, 0), Turned(object, 0, 0),
                  Turned(object, 0, 0.025), Turned(object, 0, -0.025)};
    }
    ExpectPoints(Outline(object), wanted, 5e-6);
  }
}

TEST(SnapPoints, StandInTheOrderAnchorFirst) {
  ExpectPoints(Snaps({kTypeWorkPoint, 0, 3, 4, 0, 0, 45}), {{3, 4}});
  ExpectPoints(Snaps({kTypeLine, 0, 1, 2, 4, 0, 90}), {{1, 2}, {1, 6}, {1, 4}}, 3e-7);
  ExpectPoints(Snaps({kTypeWorkAxis, 0, 1, 2, 4, 0, 180}), {{1, 2}, {-3, 2}, {-1, 2}}, 3e-7);
  ExpectPoints(Snaps({kTypeCircle, 0, 1, 2, 6, 0, 0}), {{1, 2}, {4, 2}, {1, 5}, {-2, 2}, {1, -1}},
               3e-7);
  ExpectPoints(Snaps({kTypeRectangle, 0, 0, 0, 4, 2, 0}),
               {{0, 0}, {-2, -1}, {2, -1}, {2, 1}, {-2, 1}, {0, -1}, {2, 0}, {0, 1}, {-2, 0}},
               3e-7);
}

TEST(SnapPoints, OfASlotAreTheCornersOfItsBoxWhichDoNotLieOnIt) {
  const SketchObject slot{kTypeSlot, 0, 0, 0, 4, 2, 0};
  ExpectPoints(Snaps(slot),
               {{0, 0}, {-2, -1}, {2, -1}, {2, 1}, {-2, 1}, {0, -1}, {2, 0}, {0, 1}, {-2, 0}},
               3e-7);
}

TEST(ExactCosine, IsExactAtQuarterTurnsAndTheSeriesElsewhere) {
  EXPECT_EQ(ExactCosine(0), 1);
  EXPECT_EQ(ExactCosine(90), 0);
  EXPECT_EQ(ExactCosine(180), -1);
  EXPECT_EQ(ExactCosine(270), 0);
  EXPECT_EQ(ExactCosine(360), 1);
  EXPECT_EQ(ExactCosine(450), 0);
  EXPECT_EQ(ExactCosine(-90), 0);
  EXPECT_EQ(ExactSine(90), 1);
  EXPECT_EQ(ExactSine(-90), -1);
  EXPECT_EQ(ExactSine(180), 0);
  EXPECT_NEAR(ExactCosine(60), 0.5, 1e-7);
  EXPECT_NEAR(ExactSine(390), 0.5, 1e-7);
}

TEST(ExactCosine, TakesOffMillionsOfTurnsAtOnce) {
  EXPECT_EQ(ExactCosine(360.0 * 2700000 + 90), 0);
  EXPECT_EQ(ExactCosine(-360.0 * 2700000 - 180), -1);
  EXPECT_EQ(ExactCosine(360.0 * 2700000 + 60), SketchCosine(60));
}

TEST(SketchRoot, IsZeroForWhatHasNoRoot) {
  EXPECT_EQ(SketchRoot(4), 2);
  EXPECT_EQ(SketchRoot(0), 0);
  EXPECT_EQ(SketchRoot(-1), 0);
  EXPECT_EQ(SketchRoot(std::nan("")), 0);
}

TEST(FootOnSegment, IsHeldToTheEndsAndGivesTheStartOfAShortOne) {
  const platform::PointF a{0, 0};
  const platform::PointF b{10, 0};
  SegmentFoot foot = FootOnSegment({3, 4}, a, b, 1e-8);
  EXPECT_EQ(foot.along, 0.3);
  EXPECT_EQ(foot.x, 3);
  EXPECT_EQ(foot.y, 0);
  EXPECT_EQ(foot.square, 16);
  foot = FootOnSegment({-3, 4}, a, b, 1e-8);
  EXPECT_EQ(foot.along, 0);
  EXPECT_EQ(foot.x, 0);
  EXPECT_EQ(foot.square, 25);
  foot = FootOnSegment({13, 4}, a, b, 1e-8);
  EXPECT_EQ(foot.along, 1);
  EXPECT_EQ(foot.x, 10);
  foot = FootOnSegment({5, 5}, {1, 2}, {1 + 1e-9, 2}, 1e-8);
  EXPECT_EQ(foot.along, 0);
  EXPECT_EQ(foot.x, 1);
  EXPECT_EQ(foot.y, 2);
}

TEST(LineIntersection, GivesTheParametersAlongBothDirections) {
  double t = 0;
  double s = 0;
  // y = 0 from the origin along (2, 0), and x = 3 from (3, -4) along (0, 8).
  ASSERT_TRUE(LineIntersection({0, 0, 2, 0}, {3, -4, 0, 8}, t, s));
  EXPECT_EQ(t, 1.5);
  EXPECT_EQ(s, 0.5);
  EXPECT_FALSE(LineIntersection({0, 0, 1, 1}, {5, 0, 2, 2}, t, s));
  // The determinant is the bound: 1e-12 still counts as crossing, half of it as parallel.
  EXPECT_TRUE(LineIntersection({0, 0, 1, 0}, {0, 1, 1, 1e-12}, t, s));
  EXPECT_FALSE(LineIntersection({0, 0, 1, 0}, {0, 1, 1, 5e-13}, t, s));
}

TEST(TangentPoint, LiesOnTheCircleWithARightAngleAtIt) {
  const SketchObject unit{kTypeCircle, 0, 0, 0, 2, 0, 0};
  platform::PointF touch;
  // From (5, 0) to the unit circle: x = 1/5, y = root of 24/25.
  ASSERT_TRUE(TangentPoint({5, 0}, unit, {0, 10}, touch));
  EXPECT_NEAR(touch.x, 0.2, 1e-12);
  EXPECT_NEAR(touch.y, 0.9797958971132712, 1e-12);
  ASSERT_TRUE(TangentPoint({5, 0}, unit, {0, -10}, touch));
  EXPECT_NEAR(touch.y, -0.9797958971132712, 1e-12);
  EXPECT_FALSE(TangentPoint({1, 0}, unit, {0, 10}, touch));
  EXPECT_FALSE(TangentPoint({0.5, 0}, unit, {0, 10}, touch));
}

TEST(TurnObject, MovesTheAnchorAboutThePivotAndAddsTheAngleUnreduced) {
  SketchObject line{kTypeLine, 0, 3, 1, 5, 0, 300};
  TurnObject(line, 1, 1, 90);
  EXPECT_EQ(line.x, 1);
  EXPECT_EQ(line.y, 3);
  EXPECT_EQ(line.angle, 390);
  EXPECT_EQ(line.size, 5);
}

}  // namespace
}  // namespace morva
