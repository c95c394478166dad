// The snap search, by hand-made sketches and against a plain second search.

#include "cad/geometry/snap.h"

#include <algorithm>
#include <limits>

#include "cad/geometry/canvas_view.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"
#include "library/outline.h"
#include "support/program_maker.h"
#include "unit/cad/draw_stage.h"

namespace morva {
namespace {

// Ten pixels are 0.1 inch or 2.5 mm on this canvas at zoom 1; the grid is 0.05 inch or 1 mm.
class Snap : public DrawStage {
 protected:
  Snap() { sketch.snapOn = true; }

  static platform::PointF At(double x, double y, int exclude = -1) {
    SnapPoint(x, y, exclude, false);
    return {x, y};
  }
  static void Expect(double x, double y, double wantedX, double wantedY) {
    const platform::PointF to = At(x, y);
    EXPECT_NEAR(to.x, wantedX, 1e-6) << x << " " << y;
    EXPECT_NEAR(to.y, wantedY, 1e-6) << x << " " << y;
    EXPECT_TRUE(tools.snapHit);
  }
  static void ExpectNothing(double x, double y) {
    const platform::PointF to = At(x, y);
    EXPECT_EQ(to.x, x);
    EXPECT_EQ(to.y, y);
    EXPECT_FALSE(tools.snapHit);
    EXPECT_FALSE(tools.snapAtCentre);
  }

  // Crowded about the cursor, so that every step has its candidates.
  static void RandomSketch(reference::Dice& dice) {
    sketch.objectCount = 0;
    const int count = static_cast<int>(dice.Roll(25));
    for (int i = 0; i < count; ++i) {
      const SketchType type = static_cast<SketchType>(dice.Roll(6));
      const int index = Put(type, dice.Roll(4000) / 1000.0 - 2, dice.Roll(3000) / 1000.0 - 1.5,
                            dice.Roll(2000) / 1000.0, dice.Roll(1000) / 1000.0,
                            dice.Roll(7200) / 10.0 - 360, static_cast<int>(dice.Roll(4)));
      sketch.hidden[index] = dice.Roll(6) == 0;
      if (type == kTypeCircle || type == kTypeWorkPoint) sketch.objects[index].angle = 0;
    }
  }
};

TEST_F(Snap, WithSnapOffCoordinatesStayExact) {
  sketch.snapOn = false;
  tools.snapHit = tools.snapAtCentre = true;
  ExpectNothing(0.01, 0.01);
}

TEST_F(Snap, WithSnapOnButAltHeldCoordinatesStayExact) {
  At(0.01, 0.01);
  ASSERT_TRUE(tools.snapHit);
  double x = 0.01;
  double y = 0.02;
  SnapPoint(x, y, -1, true);
  EXPECT_EQ(x, 0.01);
  EXPECT_EQ(y, 0.02);
  EXPECT_FALSE(tools.snapHit);
  EXPECT_FALSE(tools.snapAtCentre);
}

TEST_F(Snap, TheOriginIsATargetAndACentre) {
  Expect(0.06, -0.06, 0, 0);
  EXPECT_TRUE(tools.snapAtCentre);
}

TEST_F(Snap, TheToleranceIsTenPixels) {
  Put(kTypeWorkPoint, 1.013, 2, 0);
  Expect(1.013 + 0.0999, 2, 1.013, 2);
  Expect(1.013 + 0.1001, 2, 1.1, 2);  // the grid instead
  canvasView.zoom = 2;
  Expect(1.013 + 0.0499, 2, 1.013, 2);
  Expect(1.013 + 0.0501, 2, 1.05, 2);
}

TEST_F(Snap, TheToleranceInMillimetres) {
  sketch.metric = true;
  Put(kTypeWorkPoint, 10.3, 0.2, 0);
  Expect(10.3 + 2.499, 0.2, 10.3, 0.2);
  Expect(10.3 + 2.501, 0.2, 13, 0);
}

TEST_F(Snap, ANarrowCanvasStillHasATolerance) {
  platform::SetPlace(kViewCadCanvas, {0, 0, 20, 600});
  // max(w, 41) - 40 is one pixel for ten inches: ten pixels reach 100 inches.
  Expect(60, 60, 0, 0);
  Expect(99, 0, 0, 0);
}

TEST_F(Snap, ObjectPointsBeatEdges) {
  Put(kTypeLine, 1, 1, 2);
  // 0.01 from the edge, but the end is within reach.
  Expect(1.08, 1.01, 1, 1);
  EXPECT_FALSE(tools.snapAtCentre);  // the start of a line is no centre
  Expect(2.05, 1.01, 2, 1);          // its middle
  Expect(2.95, 0.96, 3, 1);          // its end
}

TEST_F(Snap, TheNearestPointWins) {
  Put(kTypeWorkPoint, 1, 1, 0);
  Put(kTypeWorkPoint, 1.1, 1, 0);
  Expect(1.04, 1, 1, 1);
  Expect(1.06, 1, 1.1, 1);
}

TEST_F(Snap, OfPointsEquallyFarTheFirstStays) {
  Put(kTypeWorkPoint, 1, 1.125, 0);
  Put(kTypeWorkPoint, 1.125, 1, 0);
  Expect(1.0625, 1.0625, 1, 1.125);
}

TEST_F(Snap, AnchorsOfShapesAreCentresAndOtherPointsAreNot) {
  Put(kTypeRectangle, 1, 1, 1, 1);
  Put(kTypeCircle, 3, 1, 1);
  Put(kTypeSlot, -2, 1, 1, 0.5);
  Put(kTypeWorkPoint, -4, 1, 0);
  Put(kTypeWorkAxis, 1, -2, 1);
  for (const double x : {1.0, 3.0, -2.0, -4.0}) {
    Expect(x + 0.02, 1.02, x, 1);
    EXPECT_TRUE(tools.snapAtCentre) << x;
  }
  Expect(1.51, 1.52, 1.5, 1.5);  // corner of the rectangle
  EXPECT_FALSE(tools.snapAtCentre);
  Expect(3.01, 1.51, 3, 1.5);  // quadrant of the circle
  EXPECT_FALSE(tools.snapAtCentre);
  Expect(-1.51, 1.26, -1.5, 1.25);  // corner of the slot's box, off the slot
  EXPECT_FALSE(tools.snapAtCentre);
  Expect(1.01, -2.01, 1, -2);  // start of the axis
  EXPECT_FALSE(tools.snapAtCentre);
}

TEST_F(Snap, EdgesAreFollowedWhereNoPointIsNear) {
  Put(kTypeLine, 1, 1, 2);
  Expect(1.43, 1.07, 1.43, 1);
  EXPECT_FALSE(tools.snapAtCentre);
}

TEST_F(Snap, RectangleEdgesAreFollowedTurnedOrNot) {
  Put(kTypeRectangle, 2, 1, 2, 1);
  Expect(1.33, 0.53, 1.33, 0.5);
  Expect(2.96, 1.23, 3, 1.23);
  Put(kTypeRectangle, -3, 0, 2, 2, 45);
  // The upper right edge runs from (-3 + root 2, 0) to (-3, root 2); a point 0.05 outside it.
  const double foot = std::sqrt(2) / 4;
  const double out = 0.05 / std::sqrt(2);
  Expect(-3 + foot + out, 3 * foot + out, -3 + foot, 3 * foot);
}

TEST_F(Snap, TheRimOfACircleIsFollowedTowardsTheCursor) {
  Put(kTypeCircle, 2, 1, 2);
  // On the ray at 36.87 degrees, 0.05 outside and inside.
  Expect(2 + 1.05 * 0.8, 1 + 1.05 * 0.6, 2.8, 1.6);
  Expect(2 + 0.95 * 0.8, 1 + 0.95 * 0.6, 2.8, 1.6);
}

TEST_F(Snap, SlotsHaveNoEdgesToFollow) {
  Put(kTypeSlot, 2, 1.013, 3, 0.5);
  // On the straight side of the slot, between its points: the grid is what is left.
  Expect(1.223, 1.263, 1.2, 1.25);
}

TEST_F(Snap, AnEdgeWithoutLengthIsPassedOver) {
  Put(kTypeLine, 1.013, 1, 1e-7);
  Expect(1.02, 1, 1.013, 1);  // its points still count
  Put(kTypeCircle, 3.013, 1, 0);
  Expect(3.02, 1, 3.013, 1);
}

TEST_F(Snap, IntersectionsBeatPointsThatAreFarther) {
  Put(kTypeLine, 1, 1, 1);            // middle at 1.5, end at 2
  Put(kTypeLine, 1.55, 0, 3, 0, 90);  // crosses at (1.55, 1); middle at 1.5
  Expect(1.56, 1.02, 1.55, 1);
  EXPECT_FALSE(tools.snapAtCentre);
}

TEST_F(Snap, AnIntersectionClearsTheCentreMark) {
  Put(kTypeCircle, 1.5, 1.05, 5);
  Put(kTypeLine, 0.313, 1, 2.3);
  Put(kTypeLine, 1.5, 0, 2.7, 0, 90);
  Expect(1.5, 1.06, 1.5, 1.05);
  EXPECT_TRUE(tools.snapAtCentre);
  Expect(1.5, 1.01, 1.5, 1);
  EXPECT_FALSE(tools.snapAtCentre);
}

TEST_F(Snap, AnEdgeBeatsAnIntersectionThatIsFarther) {
  Put(kTypeLine, 1, 1, 2.4);
  Put(kTypeLine, 1.8, 0, 3.1, 0, 90);  // crosses at (1.8, 1)
  // 0.02 from the first line, 0.06 from the second and from their crossing.
  Expect(1.74, 1.02, 1.74, 1);
}

TEST_F(Snap, AWorkAxisSnapsIntersectionsAlongItsWholeLengthAndALineOnlyWithinItsOwn) {
  Put(kTypeWorkAxis, -4.3, 2, 0.3);                   // y = 2, drawn far to the left
  Put(kTypeLine, 2.013, 1, 3, 0, 90);                 // x = 2.013, y from 1 to 4; middle at 2.5
  Expect(2.013 + 0.01, 2 + 0.005, 2.013, 2 + 0.005);  // the edge of the line is nearer here
  Expect(2.013 + 0.01, 2 + 0.02, 2.013, 2 + 0.02);
  // Off the line's side by 0.06 and level with the axis: the edge's foot is the crossing.
  Expect(2.073, 2, 2.013, 2);
  sketch.objects[1].y = 2.02;  // the line now begins above the axis
  Expect(2.013, 1.99, 2.013, 2.02);
  sketch.objects[1].y = 2.2;
  Expect(2.013, 2.001, 2, 2);  // no crossing within the line: the grid
}

TEST_F(Snap, TwoWorkAxesCrossAnywhere) {
  Put(kTypeWorkAxis, -4, 1.013, 0.3);
  Put(kTypeWorkAxis, 2.513, -2, 0.3, 0, 90);
  Expect(2.5, 1.05, 2.513, 1.013);
}

TEST_F(Snap, ALineIsMetUpToTheToleranceBeyondItsEnds) {
  // Two lines that meet at their ends; their points are the same place.
  Put(kTypeLine, 1.013, 1, 1);
  Put(kTypeLine, 2.013, 1, 1, 0, 90);
  Expect(2.07, 0.95, 2.013, 1);
  // Parallel lines do not cross.
  Put(kTypeLine, 1.013, 2.04, 1);
  Put(kTypeLine, 1.013, 2.0, 1);
  Expect(1.3, 2.03, 1.3, 2.04);
}

TEST_F(Snap, TheGridIsTheLastResort) {
  Expect(1.02, 1.03, 1, 1.05);
  Expect(-1.02, -1.03, -1, -1.05);
  EXPECT_FALSE(tools.snapAtCentre);
  sketch.metric = true;
  Expect(26.4, -26.6, 26, -27);
}

TEST_F(Snap, HalfAGridStepRoundsAwayFromZero) {
  sketch.metric = true;
  Expect(10.5, -10.5, 11, -11);
}

TEST_F(Snap, AGridPointBeyondTheToleranceIsNotTaken) {
  canvasView.zoom = 10;  // ten pixels are 0.01 inch
  Expect(1.006, 1.006, 1, 1);
  ExpectNothing(1.008, 1.008);  // 0.0113 from the grid point
}

TEST_F(Snap, HiddenObjectsAreNoTargets) {
  Put(kTypeWorkPoint, 1.013, 1.013, 0);
  Put(kTypeLine, 2, 1.513, 2);
  Put(kTypeLine, 2.413, 0.713, 2, 0, 90);
  sketch.hidden[0] = sketch.hidden[1] = sketch.hidden[2] = 1;
  Expect(1.011, 1.011, 1, 1);
  Expect(2.411, 1.511, 2.4, 1.5);
  sketch.hidden[0] = 0;
  Expect(1.011, 1.011, 1.013, 1.013);
}

TEST_F(Snap, LockedObjectsAreTargets) {
  Put(kTypeWorkPoint, 1.013, 1.013, 0);
  sketch.locked[0] = 1;
  Expect(1, 1, 1.013, 1.013);
}

TEST_F(Snap, AnExcludedObjectAndItsGroupAreNoTargets) {
  Put(kTypeWorkPoint, 1.013, 1, 0, 0, 0, 4);
  Put(kTypeWorkPoint, 2.013, 1, 0, 0, 0, 4);
  Put(kTypeWorkPoint, 3.013, 1, 0, 0, 0, 5);
  EXPECT_EQ(At(1.02, 1, 0).x, 1);
  EXPECT_EQ(At(2.02, 1, 0).x, 2);
  EXPECT_EQ(At(3.02, 1, 0).x, 3.013);
  EXPECT_EQ(At(1.02, 1, 2).x, 1.013);
  EXPECT_EQ(At(1.02, 1, -1).x, 1.013);
  EXPECT_EQ(At(1.02, 1, 96).x, 1.013);
}

TEST_F(Snap, AnExcludedObjectWithoutAGroupLeavesTheOthers) {
  Put(kTypeWorkPoint, 1.013, 1, 0);
  Put(kTypeWorkPoint, 2.013, 1, 0);
  EXPECT_EQ(At(1.02, 1, 0).x, 1);
  EXPECT_EQ(At(2.02, 1, 0).x, 2.013);
}

TEST_F(Snap, WhileTrimmingThePositionStaysAndTheHitIsTold) {
  Put(kTypeCircle, 1, 1, 1);
  tools.geometryTool = kGeometryTrim;
  const platform::PointF to = At(1.02, 1.02);
  EXPECT_EQ(to.x, 1.02);
  EXPECT_EQ(to.y, 1.02);
  EXPECT_TRUE(tools.snapHit);
  EXPECT_TRUE(tools.snapAtCentre);
}

TEST_F(Snap, AChangedObjectIsSeenAtOnce) {
  Put(kTypeLine, 1, 1, 1);
  Expect(2.02, 1, 2, 1);
  sketch.objects[0].angle = 90;
  Expect(1.02, 2.02, 1, 2);
  sketch.objects[0].size = 0.5;
  Expect(1.02, 1.52, 1, 1.5);
  sketch.objects[0].x = 1.013;
  Expect(1.02, 1.52, 1.013, 1.5);
  sketch.objects[0].type = kTypeWorkPoint;
  Expect(1.02, 1.02, 1.013, 1);
}

TEST_F(Snap, APositionThatIsNoNumberStaysAsItIs) {
  const platform::PointF to = At(std::numeric_limits<double>::quiet_NaN(), 1);
  EXPECT_TRUE(std::isnan(to.x));
  EXPECT_EQ(to.y, 1);
  EXPECT_FALSE(tools.snapHit);
}

// A second search: every candidate of each step in a list, no caches, no early exits.
struct Candidate {
  double x, y;
  bool centre;
};

struct Found {
  bool hit = false;
  bool centre = false;
  double x = 0, y = 0;
  double margin = 1e9;  // how much worse the next other place is
};

void Better(Found& best, double& least, double px, double py, const std::vector<Candidate>& all) {
  for (const Candidate& c : all) {
    const double d = std::hypot(c.x - px, c.y - py);
    if (best.hit && std::hypot(c.x - best.x, c.y - best.y) < 1e-9) {
      // The same place again: only a nearly equal distance may decide about the mark.
      if (best.centre != c.centre) best.margin = 0;
      continue;
    }
    best.margin = std::min(best.margin, std::fabs(d - least));
    if (d < least) {
      least = d;
      best.hit = true;
      best.centre = c.centre;
      best.x = c.x;
      best.y = c.y;
    }
  }
}

bool Visible(int i, int exclude) {
  if (sketch.hidden[i] || i == exclude) return false;
  const int group = exclude >= 0 ? sketch.objects[exclude].group : 0;
  return group == 0 || sketch.objects[i].group != group;
}

void AddFoot(std::vector<Candidate>& all, double px, double py, double ax, double ay, double bx,
             double by) {
  const double length = std::hypot(bx - ax, by - ay);
  if (length < 1e-6) return;
  const double ux = (bx - ax) / length;
  const double uy = (by - ay) / length;
  const double along = std::clamp((px - ax) * ux + (py - ay) * uy, 0.0, length);
  all.push_back({ax + ux * along, ay + uy * along, false});
}

Found SlowSnap(double px, double py, int exclude) {
  Found best;
  double least = 0.1 / canvasView.zoom;
  const double reach = least;
  std::vector<Candidate> points{{0, 0, true}};
  std::vector<Candidate> edges;
  std::vector<int> linear;
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (!Visible(i, exclude)) continue;
    const SketchObject& o = sketch.objects[i];
    double xs[9];
    double ys[9];
    const int count = ObjectSnapPoints(o, xs, ys);
    const bool line = o.type == kTypeLine || o.type == kTypeWorkAxis;
    for (int k = 0; k < count; ++k) points.push_back({xs[k], ys[k], k == 0 && !line});
    double ox[kOutlinePoints];
    double oy[kOutlinePoints];
    if (line || o.type == kTypeRectangle) {
      const int n = ObjectOutline(o, ox, oy);
      for (int k = 0; k + 1 < n; ++k) AddFoot(edges, px, py, ox[k], oy[k], ox[k + 1], oy[k + 1]);
    } else if (o.type == kTypeCircle) {
      const double a = std::atan2(py - o.y, px - o.x);
      edges.push_back({o.x + o.size / 2 * std::cos(a), o.y + o.size / 2 * std::sin(a), false});
    }
    if (line) linear.push_back(i);
  }
  Better(best, least, px, py, points);
  if (!best.hit) Better(best, least, px, py, edges);
  std::vector<Candidate> crossings;
  for (std::size_t a = 0; a < linear.size(); ++a) {
    for (std::size_t b = a + 1; b < linear.size(); ++b) {
      double ex[2][2];
      double ey[2][2];
      bool axis[2];
      for (int side = 0; side < 2; ++side) {
        const SketchObject& o = sketch.objects[linear[side == 0 ? a : b]];
        ex[side][0] = o.x;
        ey[side][0] = o.y;
        LineEndPoint(o, ex[side][1], ey[side][1]);
        axis[side] = o.type == kTypeWorkAxis;
      }
      // Cramer's rule on the two lines' normal forms.
      double n[2][3];
      for (int side = 0; side < 2; ++side) {
        n[side][0] = ey[side][1] - ey[side][0];
        n[side][1] = ex[side][0] - ex[side][1];
        n[side][2] = n[side][0] * ex[side][0] + n[side][1] * ey[side][0];
      }
      const double det = n[0][0] * n[1][1] - n[0][1] * n[1][0];
      if (std::fabs(det) < 1e-12) continue;
      const double x = (n[0][2] * n[1][1] - n[0][1] * n[1][2]) / det;
      const double y = (n[0][0] * n[1][2] - n[0][2] * n[1][0]) / det;
      bool on = true;
      for (int side = 0; side < 2; ++side) {
        if (axis[side]) continue;
        const double dx = ex[side][1] - ex[side][0];
        const double dy = ey[side][1] - ey[side][0];
        const double t = ((x - ex[side][0]) * dx + (y - ey[side][0]) * dy) / (dx * dx + dy * dy);
        if (std::min(std::fabs(t), std::fabs(t - 1)) < 1e-7) best.margin = 0;
        const bool near = px >= std::min(ex[side][0], ex[side][1]) - reach &&
                          px <= std::max(ex[side][0], ex[side][1]) + reach &&
                          py >= std::min(ey[side][0], ey[side][1]) - reach &&
                          py <= std::max(ey[side][0], ey[side][1]) + reach;
        on = on && near && t >= 0 && t <= 1;
      }
      if (on) crossings.push_back({x, y, false});
    }
  }
  Better(best, least, px, py, crossings);
  if (!best.hit) {
    Better(best, least, px, py,
           {{std::round(px / 0.05) * 0.05, std::round(py / 0.05) * 0.05, false}});
  }
  return best;
}

TEST_F(Snap, AgreesWithAPlainSearchOverRandomSketches) {
  reference::Dice dice{20260};
  int compared = 0;
  int steps[2] = {0, 0};
  for (int round = 0; round < 400; ++round) {
    RandomSketch(dice);
    canvasView.zoom = 0.5 + dice.Roll(40) / 10.0;
    for (int i = 0; i < 25; ++i) {
      const double x = dice.Roll(40000) / 10000.0 - 2;
      const double y = dice.Roll(30000) / 10000.0 - 1.5;
      const int exclude =
          sketch.objectCount > 0 && dice.Roll(3) == 0
              ? static_cast<int>(dice.Roll(static_cast<std::uint32_t>(sketch.objectCount)))
              : -1;
      const Found wanted = SlowSnap(x, y, exclude);
      if (wanted.margin < 1e-7) continue;  // rounding may decide either way
      const platform::PointF got = At(x, y, exclude);
      ++compared;
      ++steps[wanted.hit];
      EXPECT_EQ(tools.snapHit, wanted.hit);
      if (!wanted.hit) continue;
      EXPECT_NEAR(got.x, wanted.x, 1e-6);
      EXPECT_NEAR(got.y, wanted.y, 1e-6);
      EXPECT_EQ(tools.snapAtCentre, wanted.centre);
    }
  }
  EXPECT_GT(compared, 5000);
  EXPECT_GT(steps[1], 1000);
}

}  // namespace
}  // namespace morva
