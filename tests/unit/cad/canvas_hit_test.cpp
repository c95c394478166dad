// Boundaries are worked out by hand: at zoom 1 the object tolerance is 0.08 inch, the edge
// tolerance 0.1.
#include <algorithm>
#include <cmath>

#include "cad/canvas/canvas_pointer.h"
#include "cad/geometry/canvas_view.h"
#include "cad/geometry/hits.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "unit/cad/canvas_fixture.h"

namespace morva {
namespace {

class CanvasHit : public CanvasTest {};

constexpr double kIn = 1e-6;  // how far inside or outside of a boundary a test points; the
                              // series is good to 6e-8

TEST_F(CanvasHit, HitsALineWithinEightPixels) {
  Put(kTypeLine, 1, 1, 2);
  EXPECT_EQ(HitObject(2, 1.08 - kIn), 0);
  EXPECT_EQ(HitObject(2, 1.08 + kIn), -1);
  EXPECT_EQ(HitObject(2, 0.92 + kIn), 0);
  EXPECT_EQ(HitObject(2, 0.92 - kIn), -1);
}

TEST_F(CanvasHit, RoundsTheEndsOfALine) {
  Put(kTypeLine, 1, 1, 2);
  EXPECT_EQ(HitObject(3.08 - kIn, 1), 0);
  EXPECT_EQ(HitObject(3.08 + kIn, 1), -1);
  EXPECT_EQ(HitObject(0.92 + kIn, 1), 0);
  // 0.06 and 0.06 lie 0.0849 from the end; a square end would take them.
  EXPECT_EQ(HitObject(3.06, 1.06), -1);
  EXPECT_EQ(HitObject(3.05, 1.05), 0);
}

TEST_F(CanvasHit, TurnsTheClickIntoTheObjectsFrame) {
  Put(kTypeLine, 0, 0, 2, 0, 90);
  EXPECT_EQ(HitObject(0.08 - kIn, 1.5), 0);
  EXPECT_EQ(HitObject(0.08 + kIn, 1.5), -1);
  EXPECT_EQ(HitObject(1.5, 0), -1);
  Put(kTypeRectangle, 5, 5, 2, 0.5, 30);
  // Along the long side at 30 degrees: 1.08 from the centre.
  EXPECT_EQ(HitObject(5 + 1.07 * std::cos(M_PI / 6), 5 + 1.07 * std::sin(M_PI / 6)), 1);
  EXPECT_EQ(HitObject(5 + 1.09 * std::cos(M_PI / 6), 5 + 1.09 * std::sin(M_PI / 6)), -1);
  EXPECT_EQ(HitObject(5 + 1.07 * std::cos(-M_PI / 6), 5 + 1.07 * std::sin(-M_PI / 6)), -1);
}

TEST_F(CanvasHit, HitsAWorkAxisAsALine) {
  Put(kTypeWorkAxis, 0, 0, 3);
  EXPECT_EQ(HitObject(1, 0.079), 0);
  EXPECT_EQ(HitObject(3.2, 0), -1);  // it is drawn no longer than its length
}

TEST_F(CanvasHit, CountsTheInsideOfACircle) {
  Put(kTypeCircle, 2, 2, 2);
  EXPECT_EQ(HitObject(2, 2), 0);
  EXPECT_EQ(HitObject(2, 3.08 - kIn), 0);
  EXPECT_EQ(HitObject(2, 3.08 + kIn), -1);
}

TEST_F(CanvasHit, SelectsACircleByItsInsideInTheObjectTestOnly) {
  Put(kTypeCircle, 2, 2, 2);
  EXPECT_EQ(HitObject(2, 2.5), 0);
  EXPECT_EQ(HitEdge(2, 2.5), -1);
}

TEST_F(CanvasHit, HitsAWorkPointWithinEightPixels) {
  Put(kTypeWorkPoint, -1, -1, 0);
  EXPECT_EQ(HitObject(-1 + 0.08 - kIn, -1), 0);
  EXPECT_EQ(HitObject(-1 + 0.08 + kIn, -1), -1);
  EXPECT_EQ(HitObject(-1 + 0.06, -1 + 0.06), -1);
}

TEST_F(CanvasHit, CountsTheInsideOfRectanglesAndSlotsWithSquareCorners) {
  for (const SketchType type : {kTypeRectangle, kTypeSlot}) {
    ResetSketch();
    Put(type, 0, 0, 4, 2);
    EXPECT_EQ(HitObject(0, 0), 0);
    EXPECT_EQ(HitObject(2.08 - kIn, 1.08 - kIn), 0);
    EXPECT_EQ(HitObject(2.08 + kIn, 0), -1);
    EXPECT_EQ(HitObject(0, -1.08 - kIn), -1);
    EXPECT_EQ(HitObject(-2.08 + kIn, -1.08 + kIn), 0);
  }
}

TEST_F(CanvasHit, TakesTheTopmostObject) {
  Put(kTypeLine, 0, 0, 2);
  Put(kTypeRectangle, 1, 0, 4, 2);
  EXPECT_EQ(HitObject(1, 0), 1);
}

TEST_F(CanvasHit, PicksALineUnderARectangleWhenTheRectangleIsHidden) {
  Put(kTypeLine, 0, 0, 2);
  Put(kTypeRectangle, 1, 0, 4, 2);
  sketch.hidden[1] = 1;
  EXPECT_EQ(HitObject(1, 0), 0);
}

TEST_F(CanvasHit, HitsALockedObjectByItsBodyAndNotByItsEdge) {
  Put(kTypeLine, 0, 0, 2);
  sketch.locked[0] = 1;
  EXPECT_EQ(HitObject(1, 0), 0);
  EXPECT_EQ(HitEdge(1, 0), -1);
}

TEST_F(CanvasHit, KeepsItsToleranceInPixelsAtEveryZoom) {
  Put(kTypeLine, 0, 0, 2);
  for (const double zoom : {0.1, 0.5, 1.0, 7.0, 40.0}) {
    canvasView.zoom = zoom;
    const double pixel = 1 / CanvasScale(1040);
    EXPECT_EQ(HitObject(1, 7.99 * pixel), 0) << zoom;
    EXPECT_EQ(HitObject(1, 8.01 * pixel), -1) << zoom;
    EXPECT_EQ(HitEdge(1, 9.99 * pixel), 0) << zoom;
    EXPECT_EQ(HitEdge(1, 10.01 * pixel), -1) << zoom;
  }
  sketch.metric = true;
  canvasView.zoom = 1;
  EXPECT_EQ(HitObject(1, 7.99 / 4), 0);
  EXPECT_EQ(HitObject(1, 8.01 / 4), -1);
}

TEST_F(CanvasHit, PicksEdgesOfTypes0To3Only) {
  Put(kTypeLine, 0, 0, 1);
  Put(kTypeRectangle, 3, 0, 1, 1);
  Put(kTypeCircle, 6, 0, 1);
  Put(kTypeSlot, 9, 0, 2, 1);
  Put(kTypeWorkPoint, 12, 0, 0);
  Put(kTypeWorkAxis, 15, 0, 1);
  EXPECT_EQ(HitEdge(0.5, 0.09), 0);
  EXPECT_EQ(HitEdge(3.45, 0.3), 1);
  EXPECT_EQ(HitEdge(6.5, 0), 2);
  EXPECT_EQ(HitEdge(9, 0.5), 3);
  EXPECT_EQ(HitEdge(12, 0), -1);
  EXPECT_EQ(HitEdge(15.5, 0), -1);
}

TEST_F(CanvasHit, PicksTheNearestEdge) {
  Put(kTypeLine, 0, 0, 2);
  Put(kTypeLine, 0, 0.1, 2);
  EXPECT_EQ(HitEdge(1, 0.04), 0);
  EXPECT_EQ(HitEdge(1, 0.06), 1);
}

TEST_F(CanvasHit, KeepsTheEarlierEdgeOnATie) {
  Put(kTypeLine, 0, 0, 2);
  Put(kTypeLine, 0, 0, 2);
  Put(kTypeLine, 0, 0, 2);
  EXPECT_EQ(HitEdge(1, 0.03), 0);
}

TEST_F(CanvasHit, PassesHiddenEdgesBy) {
  Put(kTypeLine, 0, 0, 2);
  Put(kTypeLine, 0, 0.05, 2);
  sketch.hidden[0] = 1;
  EXPECT_EQ(HitEdge(1, 0), 1);
}

TEST_F(CanvasHit, HoldsTheFootToTheEndsOfAnEdge) {
  Put(kTypeLine, 0, 0, 2);
  EXPECT_EQ(HitEdge(2.1 - kIn, 0), 0);
  EXPECT_EQ(HitEdge(2.1 + kIn, 0), -1);
  EXPECT_EQ(HitEdge(2.08, 0.08), -1);  // 0.113 from the end
}

TEST_F(CanvasHit, TakesTheStartOfAnEdgeWithoutLength) {
  Put(kTypeLine, 1, 1, 0);
  EXPECT_EQ(HitEdge(1, 1.05), 0);
  EXPECT_EQ(HitEdge(1, 1.2), -1);
}

TEST_F(CanvasHit, FollowsAnObjectThatChanged) {
  SketchObject& line = Put(kTypeLine, 0, 0, 2);
  EXPECT_EQ(HitEdge(1, 0), 0);
  line.y = 3;
  EXPECT_EQ(HitEdge(1, 0), -1);
  EXPECT_EQ(HitEdge(1, 3), 0);
  line.type = kTypeCircle;
  EXPECT_EQ(HitEdge(1, 3), 0);
  EXPECT_EQ(HitEdge(0, 4), 0);
}

// A second method: a dense walk along every edge.
TEST_F(CanvasHit, AgreesWithAWalkAlongTheEdges) {
  Put(kTypeRectangle, 0.3, -0.2, 2, 1, 17);
  Put(kTypeSlot, -1.5, 1, 1.5, 0.4, -40);
  Put(kTypeCircle, 1, 1, 1.3);
  Put(kTypeLine, -2, -1, 3, 0, 63);
  unsigned dice = 5;
  int hits = 0;
  for (int n = 0; n < 400; ++n) {
    dice = dice * 1664525u + 1013904223u;
    const double x = (dice >> 8) % 6000 / 1000.0 - 3;
    dice = dice * 1664525u + 1013904223u;
    const double y = (dice >> 8) % 4000 / 1000.0 - 2;
    double distances[4] = {1e9, 1e9, 1e9, 1e9};
    for (int i = 0; i < sketch.objectCount; ++i) {
      const SketchObject& o = sketch.objects[i];
      const double a = o.angle * M_PI / 180;
      const auto walk = [&](double u, double v) {
        const double wx = o.x + u * std::cos(a) - v * std::sin(a);
        const double wy = o.y + u * std::sin(a) + v * std::cos(a);
        distances[i] = std::min(distances[i], std::hypot(wx - x, wy - y));
      };
      for (int k = 0; k <= 2000; ++k) {
        const double t = k / 2000.0;
        const double turn = 2 * M_PI * t;
        if (o.type == kTypeLine) walk(o.size * t, 0);
        if (o.type == kTypeCircle) {
          walk(o.size / 2 * std::cos(turn), o.size / 2 * std::sin(turn));
        }
        if (o.type == kTypeRectangle) {
          for (const double side : {-0.5, 0.5}) {
            walk(o.size * (t - 0.5), o.size2 * side);
            walk(o.size * side, o.size2 * (t - 0.5));
          }
        }
        if (o.type == kTypeSlot) {
          const double s = (o.size - o.size2) / 2;
          const double r = o.size2 / 2;
          for (const double side : {-1.0, 1.0}) {
            walk(s * (2 * t - 1), side * r);
            walk(side * (s + r * std::sin(turn / 2)), r * std::cos(turn / 2));
          }
        }
      }
    }
    const double best = *std::min_element(distances, distances + 4);
    // What lies within a chord's sag or a step of the walk of a boundary is left out.
    if (std::fabs(best - 0.1) < 0.003) continue;
    const int hit = HitEdge(x, y);
    if (best > 0.1) {
      EXPECT_EQ(hit, -1) << x << " " << y;
    } else {
      ++hits;
      ASSERT_GE(hit, 0) << x << " " << y;
      EXPECT_NEAR(distances[hit], best, 0.003) << x << " " << y;
    }
  }
  EXPECT_GT(hits, 20);
}

TEST_F(CanvasHit, HitsNothingInAnEmptySketch) {
  EXPECT_EQ(HitObject(0, 0), -1);
  EXPECT_EQ(HitEdge(0, 0), -1);
}

TEST_F(CanvasHit, TellsThePositionUnderTheCursor) {
  ShowCursorText(1.23456, -2);
  EXPECT_EQ(SketchStatus(), u"CAD cursor  X 1.2346  Y -2.0000 in");
  sketch.metric = true;
  ShowCursorText(0.5, 0);
  EXPECT_EQ(SketchStatus(), u"CAD cursor  X 0.5000  Y 0.0000 mm");
}

TEST_F(CanvasHit, TellsTheObjectUnderTheCursorAndItsLock) {
  Put(kTypeLine, 5, 5, 1);
  Put(kTypeCircle, 0, 0, 1.5);
  ShowCursorText(0, 0);
  EXPECT_EQ(SketchStatus(), u"CAD cursor  X 0.0000  Y 0.0000 in  Object 2  size 1.5000");
  sketch.locked[1] = 1;
  ShowCursorText(0, 0);
  EXPECT_EQ(SketchStatus(), u"CAD cursor  X 0.0000  Y 0.0000 in  Object 2  size 1.5000 LOCKED");
}

}  // namespace
}  // namespace morva
