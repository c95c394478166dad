#include "cad/geometry/construct.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "app/command_ids.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"
#include "cad/tools/draw_tools.h"
#include "library/outline.h"
#include "support/program_maker.h"

// Expected values are worked out by hand, or by a second way that the test names. The library's
// own sine and root stand in here; the program's series is good to about 6e-8.
namespace morva {
namespace {

constexpr double kSeries = 1e-6;

class Construct : public ::testing::Test {
 protected:
  Construct() {
    sketch = LiveSketch();
    tools = ToolState();
  }
  ~Construct() override {
    sketch = LiveSketch();
    tools = ToolState();
  }

  static void Expect(const SketchObject& object, SketchType type, double x, double y, double size,
                     double size2, double angle) {
    EXPECT_EQ(object.type, type);
    EXPECT_NEAR(object.x, x, 1e-9);
    EXPECT_NEAR(object.y, y, 1e-9);
    EXPECT_NEAR(object.size, size, 1e-9);
    EXPECT_NEAR(object.size2, size2, 1e-9);
    EXPECT_NEAR(object.angle, angle, kSeries);
    EXPECT_EQ(object.group, 0);
  }
  static bool Points(int method, double x0, double y0, double x1, double y1, double x2, double y2,
                     SketchObject& object) {
    const double xs[] = {x0, x1, x2};
    const double ys[] = {y0, y1, y2};
    return ObjectFromPoints(method, xs, ys, object);
  }
  static bool Points(int method, double x0, double y0, double x1, double y1, SketchObject& object) {
    return Points(method, x0, y0, x1, y1, 0, 0, object);
  }
  static double Far(double x0, double y0, double x1, double y1) {
    return std::hypot(x1 - x0, y1 - y0);
  }
};

enum Tool { kLineTool = 1, kRectangleTool, kCircleTool, kSlotTool, kPointTool, kAxisTool };

TEST_F(Construct, ADragMakesALineFromItsStart) {
  Expect(ObjectFromDrag(kLineTool, 1, 2, 4, 6), kTypeLine, 1, 2, 5, 0, 53.13010235415598);
}

TEST_F(Construct, ADragMakesAWorkAxisLikeALine) {
  Expect(ObjectFromDrag(kAxisTool, 0, 0, 0, -3), kTypeWorkAxis, 0, 0, 3, 0, -90);
}

TEST_F(Construct, ADragMakesARectangleAboutItsMiddle) {
  Expect(ObjectFromDrag(kRectangleTool, 3, 1, 1, 2), kTypeRectangle, 2, 1.5, 2, 1, 0);
}

TEST_F(Construct, ADragMakesACircleAboutItsStart) {
  Expect(ObjectFromDrag(kCircleTool, 1, 1, 4, 5), kTypeCircle, 1, 1, 10, 0, 0);
}

TEST_F(Construct, ADragMakesASlotOfTheStandingWidth) {
  Expect(ObjectFromDrag(kSlotTool, 0, 0, 2, 2), kTypeSlot, 1, 1, std::sqrt(8), 0.25, 45);
  sketch.metric = true;
  Expect(ObjectFromDrag(kSlotTool, 0, 0, 40, 0), kTypeSlot, 20, 0, 40, 6, 0);
}

TEST_F(Construct, ASlotIsNeverShorterThanWide) {
  Expect(ObjectFromDrag(kSlotTool, 0, 0, 0.1, 0), kTypeSlot, 0.05, 0, 0.25, 0.25, 0);
  sketch.metric = true;
  Expect(ObjectFromDrag(kSlotTool, 0, 0, 2, 0), kTypeSlot, 1, 0, 6, 6, 0);
}

TEST_F(Construct, AClickWithoutMovementMakesTheDefaultObject) {
  Expect(ObjectFromDrag(kLineTool, 1, 1, 1, 1), kTypeLine, 1, 1, 0.4, 0, 0);
  Expect(ObjectFromDrag(kCircleTool, 1, 1, 1, 1), kTypeCircle, 1, 1, 0.8, 0, 0);
  Expect(ObjectFromDrag(kRectangleTool, 1, 1, 1, 1), kTypeRectangle, 1, 1, 0.4, 0.4, 0);
  Expect(ObjectFromDrag(kSlotTool, 1, 1, 1, 1), kTypeSlot, 1, 1, 0.4, 0.25, 0);
  sketch.metric = true;
  Expect(ObjectFromDrag(kLineTool, 1, 1, 1, 1), kTypeLine, 1, 1, 10, 0, 0);
  Expect(ObjectFromDrag(kCircleTool, 1, 1, 1, 1), kTypeCircle, 1, 1, 20, 0, 0);
}

TEST_F(Construct, ADragBelowTheMinimumCountsAsTheDefaultLength) {
  Expect(ObjectFromDrag(kLineTool, 0, 0, 0, 0.039), kTypeLine, 0, 0, 0.4, 0, 90);
  Expect(ObjectFromDrag(kLineTool, 0, 0, 0, 0.04), kTypeLine, 0, 0, 0.04, 0, 90);
  sketch.metric = true;
  Expect(ObjectFromDrag(kLineTool, 0, 0, 0.99, 0), kTypeLine, 0, 0, 10, 0, 0);
  Expect(ObjectFromDrag(kLineTool, 0, 0, 1, 0), kTypeLine, 0, 0, 1, 0, 0);
}

TEST_F(Construct, AThinRectangleDragTakesTheDiagonalAsItsThinSide) {
  Expect(ObjectFromDrag(kRectangleTool, 0, 0, 0, 2), kTypeRectangle, 0, 1, 2, 2, 0);
  // 0.03 is thin; the diagonal of 0.03 by 2.
  Expect(ObjectFromDrag(kRectangleTool, 0, 0, 0.03, 2), kTypeRectangle, 0.015, 1,
         std::hypot(0.03, 2), 2, 0);
}

TEST_F(Construct, TwoPointsMakeALine) {
  SketchObject object;
  ASSERT_TRUE(Points(kIdMethodLine, 1, 1, -2, 5, object));
  Expect(object, kTypeLine, 1, 1, 5, 0, 126.86989764584402);
}

TEST_F(Construct, ACentreAndAPointMakeACircle) {
  SketchObject object;
  ASSERT_TRUE(Points(kIdMethodCircleRadius, 1, 1, 4, 5, object));
  Expect(object, kTypeCircle, 1, 1, 10, 0, 0);
}

TEST_F(Construct, TwoEndsOfADiameterMakeACircle) {
  SketchObject object;
  ASSERT_TRUE(Points(kIdMethodCircleDiameter, 1, 1, 4, 5, object));
  Expect(object, kTypeCircle, 2.5, 3, 5, 0, 0);
}

TEST_F(Construct, ThreePointsMakeTheCircleThatIsEquallyFarFromAll) {
  reference::Dice dice{4711};
  int made = 0;
  for (int i = 0; i < 2000; ++i) {
    double p[6];
    for (double& value : p) value = dice.Roll(4001) / 200.0 - 10;
    SketchObject object;
    if (!Points(kIdMethodCircleThree, p[0], p[1], p[2], p[3], p[4], p[5], object)) continue;
    ++made;
    const double r = object.size / 2;
    for (int k = 0; k < 6; k += 2) {
      // A nearly straight triple has a far centre, so the tolerance grows with the radius.
      EXPECT_NEAR(Far(object.x, object.y, p[k], p[k + 1]), r, 1e-9 * (1 + r * r));
    }
  }
  EXPECT_GT(made, 1900);
}

TEST_F(Construct, ThreePointsByHandLieOnTheUnitCircle) {
  SketchObject object;
  ASSERT_TRUE(Points(kIdMethodCircleThree, 3, 2, 2, 3, 1, 2, object));
  Expect(object, kTypeCircle, 2, 2, 2, 0, 0);
}

TEST_F(Construct, CollinearPointsMakeNoCircle) {
  SketchObject object;
  object.size = 77;
  EXPECT_FALSE(Points(kIdMethodCircleThree, 0, 0, 1, 1, 3, 3, object));
  EXPECT_FALSE(Points(kIdMethodCircleThree, 0, 0, 1, 0, 0.5, 0, object));
  // D is 2 times the height here; it fails below (1 + 0.25 + h^2) times 1e-9.
  EXPECT_FALSE(Points(kIdMethodCircleThree, 0, 0, 1, 0, 0.5, 6e-10, object));
  EXPECT_TRUE(Points(kIdMethodCircleThree, 0, 0, 1, 0, 0.5, 7e-7, object));
  EXPECT_NE(object.size, 77);
}

TEST_F(Construct, ACircleWhoseCentreLiesBeyondTheSketchIsRefused) {
  SketchObject object;
  // The sagitta of 7e-10 over a chord of 1 gives a radius of 1.8e8.
  EXPECT_FALSE(Points(kIdMethodCircleThree, 0, 0, 1, 0, 0.5, 7e-10, object));
}

TEST_F(Construct, TwoCornersMakeARectangleOnTheirMiddle) {
  SketchObject object;
  ASSERT_TRUE(Points(kIdMethodRectangle, 4, 1, 1, 3, object));
  Expect(object, kTypeRectangle, 2.5, 2, 3, 2, 0);
}

TEST_F(Construct, ACentreAndACornerMakeARectangleOfTwiceTheDistances) {
  SketchObject object;
  ASSERT_TRUE(Points(kIdMethodRectangleCentre, 1, 1, -1, 2.5, object));
  Expect(object, kTypeRectangle, 1, 1, 4, 3, 0);
}

TEST_F(Construct, ARectangleWithoutASideIsRefused) {
  SketchObject object;
  EXPECT_FALSE(Points(kIdMethodRectangle, 1, 1, 4, 1, object));
  EXPECT_FALSE(Points(kIdMethodRectangle, 1, 1, 1, 4, object));
  EXPECT_FALSE(Points(kIdMethodRectangleCentre, 1, 1, 1, 4, object));
  EXPECT_FALSE(Points(kIdMethodRectangleThree, 0, 0, 2, 0, 5, 0, object));
  EXPECT_FALSE(Points(kIdMethodSlotPoints, 0, 0, 2, 0, 1, 0, object));
}

TEST_F(Construct, ThreePointsMakeARectangleOnTheSideOfTheThird) {
  SketchObject object;
  ASSERT_TRUE(Points(kIdMethodRectangleThree, 0, 0, 4, 0, 9, 2, object));
  Expect(object, kTypeRectangle, 2, 1, 4, 2, 0);
  ASSERT_TRUE(Points(kIdMethodRectangleThree, 0, 0, 4, 0, 1, -3, object));
  Expect(object, kTypeRectangle, 2, -1.5, 4, 3, 0);
  ASSERT_TRUE(Points(kIdMethodRectangleThree, 1, 0, 1, 2, -2, 1, object));
  Expect(object, kTypeRectangle, -0.5, 1, 2, 3, 90);
}

TEST_F(Construct, TheRectangleOfThreePointsHasTheFirstTwoAsCornersAndReachesTheThird) {
  reference::Dice dice{99};
  int made = 0;
  for (int i = 0; i < 500; ++i) {
    double p[6];
    for (double& value : p) value = dice.Roll(4001) / 200.0 - 10;
    SketchObject object;
    if (!Points(kIdMethodRectangleThree, p[0], p[1], p[2], p[3], p[4], p[5], object)) continue;
    ++made;
    double xs[kOutlinePoints];
    double ys[kOutlinePoints];
    ASSERT_EQ(ObjectOutline(object, xs, ys), 5);
    for (int k = 0; k < 4; k += 2) {
      double nearest = 1e9;
      for (int c = 0; c < 4; ++c) nearest = std::fmin(nearest, Far(p[k], p[k + 1], xs[c], ys[c]));
      EXPECT_LT(nearest, 2e-6 * (1 + object.size + object.size2));
    }
    // The third point lies on the far side's line: its distance from the first side is size2.
    const double cross = (p[2] - p[0]) * (p[5] - p[1]) - (p[3] - p[1]) * (p[4] - p[0]);
    EXPECT_NEAR(object.size2, std::fabs(cross) / object.size, 1e-9 * (1 + object.size2));
  }
  EXPECT_GT(made, 490);
}

TEST_F(Construct, ThreePointsMakeASlotWhoseArcCentresAreTheFirstTwo) {
  SketchObject object;
  ASSERT_TRUE(Points(kIdMethodSlotPoints, 1, 1, 5, 1, 2, 1.5, object));
  Expect(object, kTypeSlot, 3, 1, 5, 1, 0);
  const double straight = (object.size - object.size2) / 2;
  EXPECT_NEAR(object.x - straight, 1, 1e-12);
  EXPECT_NEAR(object.x + straight, 5, 1e-12);
  ASSERT_TRUE(Points(kIdMethodSlotPoints, 0, 0, 0, 2, 1, 7, object));
  Expect(object, kTypeSlot, 0, 1, 4, 2, 90);
}

TEST_F(Construct, APolygonsPreviewHoldsRadiusSidesAndTheFirstCornersDirection) {
  tools.polygonSides = 8;
  SketchObject object;
  ASSERT_TRUE(Points(kIdMethodPolygon, 1, 1, 1, 3, object));
  Expect(object, kTypeCircle, 1, 1, 2, 8, 90);
}

TEST_F(Construct, TheSamePointTwiceIsRefusedByEveryMethod) {
  SketchObject object;
  object.size = 77;
  for (int method = kIdMethodLine; method <= kIdMethodPolygon; ++method) {
    EXPECT_FALSE(Points(method, 2, 2, 2, 2, 5, 5, object)) << method;
    EXPECT_FALSE(Points(method, 2, 2, 2 + 5e-9, 2, 5, 5, object)) << method;
  }
  EXPECT_EQ(object.size, 77);
}

TEST_F(Construct, TheLeastSideIsAHundredMillionth) {
  SketchObject object;
  EXPECT_FALSE(Points(kIdMethodLine, 0, 0, 0.99e-8, 0, object));
  EXPECT_TRUE(Points(kIdMethodLine, 0, 0, 1.01e-8, 0, object));
  EXPECT_FALSE(Points(kIdMethodRectangle, 0, 0, 0.99e-8, 1, object));
  EXPECT_TRUE(Points(kIdMethodRectangle, 0, 0, 1.01e-8, 1, object));
  EXPECT_FALSE(Points(kIdMethodRectangleCentre, 0, 0, 1, 0.99e-8, object));
  EXPECT_TRUE(Points(kIdMethodRectangleCentre, 0, 0, 1, 1.01e-8, object));
  for (const int method : {kIdMethodRectangleThree, kIdMethodSlotPoints}) {
    EXPECT_FALSE(Points(method, 0, 0, 1, 0, 0.5, -0.99e-8, object)) << method;
    EXPECT_TRUE(Points(method, 0, 0, 1, 0, 0.5, -1.01e-8, object)) << method;
  }
}

TEST_F(Construct, ATangentStartsFartherOutThanTheRimByItsTolerance) {
  // |v|^2 must be above r^2 + 1e-12; the tangent from there has a length of its root.
  const SketchObject circle{kTypeCircle, 0, 0, 0, 0.002, 0, 0};
  SketchObject line;
  EXPECT_FALSE(LineOnCircle(std::sqrt(1e-6 + 0.9e-12), 0, circle, 0, 1, line));
  EXPECT_TRUE(LineOnCircle(std::sqrt(1e-6 + 1.1e-12), 0, circle, 0, 1, line));
  EXPECT_NEAR(line.size, std::sqrt(1.1e-12), 1e-9);
}

TEST_F(Construct, WhatIsNotMadeOfPointsAloneIsRefused) {
  SketchObject object;
  for (const int method : {kIdMethodLineTangent, kIdMethodCircleOnLine, kIdMethodCircleOnCircle,
                           kIdMethodSlotDrag, kIdMethodDimension, kIdMethodMeasure, 0}) {
    EXPECT_FALSE(Points(method, 0, 0, 1, 1, 2, 0, object)) << method;
  }
}

TEST_F(Construct, SizesAndPlacesStayBelowAMillion) {
  SketchObject object;
  EXPECT_TRUE(Points(kIdMethodLine, 0, 0, 999999, 0, object));
  EXPECT_FALSE(Points(kIdMethodLine, 0, 0, 1000000, 0, object));
  EXPECT_TRUE(Points(kIdMethodCircleRadius, 0, 0, 499999, 0, object));
  EXPECT_FALSE(Points(kIdMethodCircleRadius, 0, 0, 500000, 0, object));
  EXPECT_FALSE(Points(kIdMethodRectangleCentre, 0, 0, 1, 500000, object));
  EXPECT_FALSE(Points(kIdMethodRectangleThree, 0, 0, 1, 0, 0, 1000000, object));
  EXPECT_FALSE(Points(kIdMethodSlotPoints, 0, 0, 900000, 0, 0, 50000, object));
  EXPECT_FALSE(Points(kIdMethodLine, 1000000, 0, 999999, 0, object));
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(Points(kIdMethodLine, 0, 0, nan, 0, object));
  EXPECT_FALSE(Points(kIdMethodCircleThree, 0, 0, 1, 0, nan, 1, object));
}

TEST_F(Construct, ACircleOnALineReachesExactlyToTheLine) {
  const SketchObject line{kTypeLine, 0, 1, 1, 10, 0, 30};
  reference::Dice dice{7};
  for (int i = 0; i < 500; ++i) {
    const double u = dice.Roll(1001) / 100.0;
    const double v = dice.Roll(801) / 100.0 - 4;
    if (u < 0.01 || u > 9.99 || std::fabs(v) < 0.01) continue;
    // A centre u along the line and v to its left.
    const double c = std::cos(M_PI / 6);
    const double s = std::sin(M_PI / 6);
    SketchObject circle;
    ASSERT_EQ(CircleOnLine(line, 1 + u * c - v * s, 1 + u * s + v * c, circle), TangentFault::None);
    EXPECT_EQ(circle.type, kTypeCircle);
    EXPECT_NEAR(circle.size / 2, std::fabs(v), kSeries * 10);
  }
}

TEST_F(Construct, ACircleOnALineNeedsItsFootOnTheLine) {
  const SketchObject line{kTypeLine, 0, 0, 0, 4, 0, 0};
  SketchObject circle;
  circle.size = 77;
  EXPECT_EQ(CircleOnLine(line, -0.001, 1, circle), TangentFault::OffSegment);
  EXPECT_EQ(CircleOnLine(line, 4.001, 1, circle), TangentFault::OffSegment);
  EXPECT_EQ(CircleOnLine(line, 2, 0, circle), TangentFault::Degenerate);
  EXPECT_EQ(circle.size, 77);
  EXPECT_EQ(CircleOnLine(line, 3.999, 1, circle), TangentFault::None);
  EXPECT_EQ(CircleOnLine(line, 2, 600000, circle), TangentFault::Degenerate);
}

TEST_F(Construct, ACircleOnACircleTouchesFromOutsideOrInside) {
  const SketchObject circle{kTypeCircle, 0, 0, 0, 4, 0, 0};
  SketchObject made;
  ASSERT_EQ(CircleOnCircle(circle, 5, 0, made), TangentFault::None);
  Expect(made, kTypeCircle, 5, 0, 6, 0, 0);  // from 2 to 5, outside
  ASSERT_EQ(CircleOnCircle(circle, 0, 0.5, made), TangentFault::None);
  Expect(made, kTypeCircle, 0, 0.5, 3, 0, 0);  // from 0.5 to 2, inside
}

TEST_F(Construct, AConcentricOrTouchingCentreMakesNoCircle) {
  const SketchObject circle{kTypeCircle, 0, 1, 1, 4, 0, 0};
  SketchObject made;
  EXPECT_EQ(CircleOnCircle(circle, 1, 1, made), TangentFault::Concentric);
  EXPECT_EQ(CircleOnCircle(circle, 1 + 9e-9, 1, made), TangentFault::Concentric);
  EXPECT_EQ(CircleOnCircle(circle, 3, 1, made), TangentFault::Degenerate);
  EXPECT_EQ(CircleOnCircle(circle, 600000, 1, made), TangentFault::Degenerate);
}

TEST_F(Construct, ATangentLineEndsOnTheCircleAtRightAnglesToTheRadius) {
  reference::Dice dice{31};
  int made = 0;
  for (int i = 0; i < 500; ++i) {
    const double px = dice.Roll(2001) / 100.0 - 10;
    const double py = dice.Roll(2001) / 100.0 - 10;
    const SketchObject circle{kTypeCircle,
                              0,
                              dice.Roll(1001) / 100.0 - 5,
                              dice.Roll(1001) / 100.0 - 5,
                              0.1 + dice.Roll(400) / 100.0,
                              0,
                              0};
    SketchObject line;
    const bool outside = Far(px, py, circle.x, circle.y) > circle.size / 2 + 1e-6;
    const bool drawn = LineOnCircle(px, py, circle, circle.x + 1, circle.y, line);
    EXPECT_EQ(drawn, outside);
    if (!drawn) continue;
    ++made;
    const double a = line.angle * M_PI / 180;
    const double ex = line.x + line.size * std::cos(a);
    const double ey = line.y + line.size * std::sin(a);
    EXPECT_EQ(line.x, px);
    EXPECT_EQ(line.y, py);
    EXPECT_NEAR(Far(ex, ey, circle.x, circle.y), circle.size / 2, 1e-7);
    EXPECT_NEAR((ex - px) * (ex - circle.x) + (ey - py) * (ey - circle.y), 0, 1e-6);
  }
  EXPECT_GT(made, 300);
}

TEST_F(Construct, TheTangentPointNearerToTheClickIsTaken) {
  const SketchObject circle{kTypeCircle, 0, 5, 0, 6, 0, 0};
  SketchObject line;
  // From the origin: r 3, distance 5, so the tangent is 4 long at an angle with sine 3/5.
  ASSERT_TRUE(LineOnCircle(0, 0, circle, 4, 3, line));
  Expect(line, kTypeLine, 0, 0, 4, 0, 36.86989764584402);
  ASSERT_TRUE(LineOnCircle(0, 0, circle, 4, -3, line));
  Expect(line, kTypeLine, 0, 0, 4, 0, -36.86989764584402);
}

TEST_F(Construct, OnATieTheTangentPointOfThePlusSideIsTaken) {
  const SketchObject circle{kTypeCircle, 0, 5, 0, 6, 0, 0};
  SketchObject line;
  ASSERT_TRUE(LineOnCircle(0, 0, circle, 5, 0, line));
  // v is (-5, 0), so plus h times (-vy, vx) lies below.
  Expect(line, kTypeLine, 0, 0, 4, 0, -36.86989764584402);
}

TEST_F(Construct, TypedSizesReplaceThoseOfThePreview) {
  SketchObject object{kTypeLine, 0, 1, 1, 5, 0, 30};
  ASSERT_TRUE(ObjectFromTypedSizes(kIdMethodLine, 2.5, 9, 1, 1, object));
  Expect(object, kTypeLine, 1, 1, 2.5, 0, 30);
  SketchObject slot{kTypeSlot, 0, 1, 1, 5, 1, 30};
  ASSERT_TRUE(ObjectFromTypedSizes(kIdMethodSlotPoints, 3, 2, 0, 0, slot));
  Expect(slot, kTypeSlot, 1, 1, 3, 2, 30);
}

TEST_F(Construct, ATypedSlotIsNotShorterThanWide) {
  SketchObject slot{kTypeSlot, 0, 1, 1, 5, 1, 0};
  EXPECT_FALSE(ObjectFromTypedSizes(kIdMethodSlotPoints, 1.999, 2, 0, 0, slot));
  EXPECT_EQ(slot.size, 5);
  EXPECT_TRUE(ObjectFromTypedSizes(kIdMethodSlotPoints, 2, 2, 0, 0, slot));
}

TEST_F(Construct, ATypedDiameterKeepsTheFirstPointOnTheCircle) {
  SketchObject circle{kTypeCircle, 0, 1.5, 2, 5, 0, 0};  // from the origin to (3, 4)
  ASSERT_TRUE(ObjectFromTypedSizes(kIdMethodCircleDiameter, 10, 0, 0, 0, circle));
  Expect(circle, kTypeCircle, 3, 4, 10, 0, 0);
  EXPECT_FALSE(ObjectFromTypedSizes(kIdMethodCircleDiameter, 10, 0, 3, 4, circle));
}

TEST_F(Construct, TypedSizesOfTwoCornersGrowFromTheFirst) {
  for (const double sx : {1.0, -1.0}) {
    for (const double sy : {1.0, -1.0}) {
      SketchObject box{kTypeRectangle, 0, 2 + sx, 3 + sy * 0.5, 2, 1, 0};
      ASSERT_TRUE(ObjectFromTypedSizes(kIdMethodRectangle, 4, 6, 2, 3, box));
      Expect(box, kTypeRectangle, 2 + sx * 2, 3 + sy * 3, 4, 6, 0);
    }
  }
}

TEST_F(Construct, TypedSizesAreAboveZero) {
  SketchObject box{kTypeRectangle, 0, 2, 3, 2, 1, 0};
  EXPECT_FALSE(ObjectFromTypedSizes(kIdMethodRectangle, 0, 1, 0, 0, box));
  EXPECT_FALSE(ObjectFromTypedSizes(kIdMethodRectangle, 1, 0, 0, 0, box));
  EXPECT_FALSE(ObjectFromTypedSizes(kIdMethodRectangle, -1, 1, 0, 0, box));
  EXPECT_EQ(box.size, 2);
}

}  // namespace
}  // namespace morva
