// Belts: two circles and their outer tangents, trimmed to one closed outline. The tangents are
// worked out here, with the library's own square root.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "cad/geometry/connectivity.h"
#include "cad/geometry/lines.h"
#include "cad/geometry/trim_cuts.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"
#include "cad/tools/geometry_tools.h"
#include "cad/tools/trim.h"
#include "edits_stage.h"
#include "library/outline.h"

namespace morva {
namespace {

struct Point {
  double x = 0, y = 0;
};

// Two circles; the second lies `apart` away in the direction `turn`, in radians.
struct Pair {
  Point a, b;
  double r = 1, q = 1;
};

// The unit normal of a tangent line, on the left or right of the way from a to b: a and b lie r and
// q off the line, on the same side.
Point NormalOf(const Pair& pair, double side) {
  const double dx = pair.b.x - pair.a.x;
  const double dy = pair.b.y - pair.a.y;
  const double apart = std::hypot(dx, dy);
  const double along = (pair.r - pair.q) / apart;
  const double across = side * std::sqrt(1 - along * along);
  return {(dx * along - dy * across) / apart, (dy * along + dx * across) / apart};
}

struct Belt : public cad_test::EditsStage {
  void SetUp() override {
    EditsStage::SetUp();
    Command(kIdCadTrimAt);
  }
  static void AddLine(const Point& a, const Point& b) {
    SketchObject line;
    SetLineEnds(line, a.x, a.y, b.x, b.y);
    ASSERT_GE(AppendSketchObject(line), 0);
  }
  static void Draw(const Pair& pair, bool backwards) {
    ResetSketch();
    Add(kTypeCircle, pair.a.x, pair.a.y, 2 * pair.r);
    Add(kTypeCircle, pair.b.x, pair.b.y, 2 * pair.q);
    for (const double side : {1.0, -1.0}) {
      const Point n = NormalOf(pair, side);
      const Point on{pair.a.x + pair.r * n.x, pair.a.y + pair.r * n.y};
      const Point off{pair.b.x + pair.q * n.x, pair.b.y + pair.q * n.y};
      backwards ? AddLine(off, on) : AddLine(on, off);
    }
  }
  // Takes the inner section of both circles away, as two clicks do.
  static bool CutInside(const Pair& pair) {
    const double dx = pair.b.x - pair.a.x;
    const double dy = pair.b.y - pair.a.y;
    const double apart = std::hypot(dx, dy);
    const bool second =
        TrimObject(1, pair.b.x - dx / apart * pair.q, pair.b.y - dy / apart * pair.q);
    const bool first =
        TrimObject(0, pair.a.x + dx / apart * pair.r, pair.a.y + dy / apart * pair.r);
    RecomputeConnectivity();
    return first && second;
  }
  // The ends of lines that no other line's end meets within this distance.
  static int LooseEnds(double within) {
    std::vector<Point> ends;
    for (int i = 0; i < sketch.objectCount; ++i) {
      Point end;
      LineEndPoint(sketch.objects[i], end.x, end.y);
      ends.push_back({sketch.objects[i].x, sketch.objects[i].y});
      ends.push_back(end);
    }
    int loose = 0;
    for (std::size_t i = 0; i < ends.size(); ++i) {
      int met = 0;
      for (std::size_t k = 0; k < ends.size(); ++k) {
        if (k / 2 != i / 2 && std::hypot(ends[i].x - ends[k].x, ends[i].y - ends[k].y) <= within)
          ++met;
      }
      loose += met == 1 ? 0 : 1;
    }
    return loose;
  }
  static void ExpectOneClosedPart(double size) {
    ASSERT_GT(sketch.objectCount, 4);
    for (int i = 0; i < sketch.objectCount; ++i) {
      EXPECT_EQ(sketch.objects[i].type, kTypeLine);
      EXPECT_EQ(sketch.objects[i].group, 1);
    }
    EXPECT_EQ(LooseEnds(1e-6 * size), 0);
  }
};

TEST_F(Belt, OfAThousandRandomPairsClosesIntoOnePart) {
  std::mt19937 random(20);
  const auto between = [&random](double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random);
  };
  for (int i = 0; i < 1000; ++i) {
    const bool metric = i % 2 == 1;
    const double unit = metric ? 25.4 : 1;
    Pair pair;
    // From 0.05 to 20 inches, as often small as large.
    pair.r = unit * std::pow(10, between(-1.3, 1.3));
    pair.q = i % 5 == 0 ? pair.r : unit * std::pow(10, between(-1.3, 1.3));
    const double apart = (pair.r + pair.q) * std::pow(10, between(0.01, 1.3));
    const double turn = i % 7 == 0 ? (i % 4) * std::acos(0.0) : between(0, 6.283185307179586);
    pair.a = {between(-5, 5) * unit, between(-5, 5) * unit};
    pair.b = {pair.a.x + apart * std::cos(turn), pair.a.y + apart * std::sin(turn)};
    SCOPED_TRACE(testing::Message() << i << ": radii " << pair.r << " and " << pair.q << ", "
                                    << apart << " apart, turned " << turn);
    Draw(pair, i % 3 == 0);
    sketch.metric = metric;
    ASSERT_TRUE(CutInside(pair));
    ExpectOneClosedPart(std::max(pair.r, pair.q));
    if (HasFailure()) return;
  }
}

double Rounded(double value, int decimals) {
  const double scale = std::pow(10, decimals);
  return std::round(value * scale) / scale;
}
Point Rounded(const Point& point, int decimals) {
  return {Rounded(point.x, decimals), Rounded(point.y, decimals)};
}

// The user has worked the tangents out and types the ends of them, or X, Y, length and angle. No
// tool draws a line that touches two circles.
TEST_F(Belt, OfTypedTangentsClosesIntoOnePart) {
  for (const int decimals : {3, 4, 5, 6}) {
    for (const bool form : {false, true}) {
      std::mt19937 random(static_cast<unsigned>(decimals * 2 + (form ? 1 : 0)));
      const auto between = [&random](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
      };
      for (int i = 0; i < 100; ++i) {
        const bool metric = i % 2 == 1;
        const double unit = metric ? 25.4 : 1;
        Pair pair;
        // From 0.25 to 10 inches, not closer than a quarter of both radii.
        pair.r = Rounded(unit * std::pow(10, between(-0.6, 1)), decimals);
        pair.q = Rounded(unit * std::pow(10, between(-0.6, 1)), decimals);
        const double apart = (pair.r + pair.q) * between(1.25, 10);
        const double turn = between(0, 6.283185307179586);
        pair.a = Rounded({between(-5, 5) * unit, between(-5, 5) * unit}, decimals);
        pair.b = Rounded({pair.a.x + apart * std::cos(turn), pair.a.y + apart * std::sin(turn)},
                         decimals);
        SCOPED_TRACE(testing::Message()
                     << i << ": " << decimals << (form ? " decimals, form" : " decimals")
                     << ", radii " << pair.r << " and " << pair.q << ", " << apart
                     << " apart, turned " << turn);
        ResetSketch();
        Add(kTypeCircle, pair.a.x, pair.a.y, 2 * pair.r);
        Add(kTypeCircle, pair.b.x, pair.b.y, 2 * pair.q);
        for (const double side : {1.0, -1.0}) {
          const Point n = NormalOf(pair, side);
          Point on{pair.a.x + pair.r * n.x, pair.a.y + pair.r * n.y};
          Point off{pair.b.x + pair.q * n.x, pair.b.y + pair.q * n.y};
          if (i % 3 == 0) std::swap(on, off);
          const double length = std::hypot(off.x - on.x, off.y - on.y);
          const double angle = std::atan2(off.y - on.y, off.x - on.x) * 90 / std::acos(0.0);
          on = Rounded(on, decimals);
          if (form) {
            Add(kTypeLine, on.x, on.y, Rounded(length, decimals), 0, Rounded(angle, decimals));
          } else {
            AddLine(on, Rounded(off, decimals));
          }
        }
        sketch.metric = metric;
        ASSERT_TRUE(CutInside(pair));
        ExpectOneClosedPart(std::max(pair.r, pair.q));
        if (HasFailure()) return;
      }
    }
  }
}

// A line from the place of a touch, off by so much, is no cut: what lies farther off than fields
// resolve was drawn so.
TEST_F(Belt, MakesNoCutWhereALinePlainlyMissesOrCrosses) {
  for (const double r : {0.5, 8.0, 40.0}) {
    const auto cuts = [r](double x, double y, double length, double angle) {
      ResetSketch();
      Add(kTypeCircle, 0, 0, 2 * r);
      Add(kTypeLine, x, y, length, 0, angle);
      CircleCuts found;
      CutsOfCircle(0, found);
      return found;
    };
    // Above the circle: within a field's thousandth it touches, beyond it misses.
    EXPECT_EQ(cuts(0, r + 0.0008, 2 * r, 0).count, 1) << r;
    EXPECT_EQ(cuts(0, r + 0.002 + 2e-7 * r, 2 * r, 0).count, 0) << r;
    // Below: it touches, or goes out again at the end of the chord.
    EXPECT_EQ(cuts(0, r - 0.0008, 2 * r, 0).count, 1) << r;
    EXPECT_NEAR(cuts(0, r - 0.0008, 2 * r, 0).values[0].x, 0, 1e-9) << r;
    const CircleCuts chord = cuts(0, r - 0.002, 2 * r, 0);
    ASSERT_EQ(chord.count, 1) << r;
    EXPECT_NEAR(chord.values[0].x, std::sqrt(r * r - (r - 0.002) * (r - 0.002)), 1e-6) << r;
    // It ends on the circle, but comes in steeply or goes on inside.
    const CircleCuts steep = cuts(0, r, 2 * r, 20);
    EXPECT_LE(steep.count, 1) << r;
    const CircleCuts inwards = cuts(0, r, 2 * r, -2);
    ASSERT_GE(inwards.count, 1) << r;
    EXPECT_NEAR(inwards.values[0].x, r * std::sin(4 * std::acos(0.0) / 90), 1e-6 * r) << r;
    // A short chord keeps both of its ends.
    const double half = 0.008 * r;
    const CircleCuts both = cuts(-half * 1.01, std::sqrt(r * r - half * half), 2.02 * half, 0);
    ASSERT_EQ(both.count, 2) << r;
    EXPECT_NEAR(std::fabs(both.values[0].x - both.values[1].x), 2 * half, 1e-6 * r) << r;
    // A line that passes crosses: twice within the circle's height, else never.
    EXPECT_EQ(cuts(-r, r - 0.0008, 2 * r, 0).count, 2) << r;
    EXPECT_EQ(cuts(-r, r + 0.0008, 2 * r, 0).count, 0) << r;
    // It overshoots the touch by what is seen: the cut is the touch.
    const CircleCuts beyond = cuts(-0.01 * r - 0.004, r, 3 * r, 0);
    ASSERT_EQ(beyond.count, 1) << r;
    EXPECT_NEAR(beyond.values[0].x, 0, 1e-9) << r;
  }
}

// A step at either end turns a short line by far; what lies more than a degree from the touching
// place is none.
TEST_F(Belt, TakesNoEndOfAShortLineBesideTheTouchForATouch) {
  for (const double x : {0.6, 0.75}) {
    ResetSketch();
    Add(kTypeCircle, 0, 0, 80);
    Add(kTypeLine, x, 40, 0.1);
    CircleCuts cuts;
    CutsOfCircle(0, cuts);
    EXPECT_EQ(cuts.count, x < 0.7 ? 1 : 0);
  }
}

// Drawn by hand: the tangents go from snapped quadrant to snapped quadrant.
TEST_F(Belt, OfSnappedQuadrantsClosesIntoOnePart) {
  for (const bool metric : {false, true}) {
    for (const double r : {0.125, 1.0, 7.5, 63.5, 400.0}) {
      for (const bool upright : {false, true}) {
        const double far = 3 * r;
        const Pair pair{{1, 2}, {upright ? 1 : 1 + far, upright ? 2 + far : 2}, r, r};
        ResetSketch();
        sketch.metric = metric;
        Add(kTypeCircle, pair.a.x, pair.a.y, 2 * r);
        Add(kTypeCircle, pair.b.x, pair.b.y, 2 * r);
        double xs[2][9];
        double ys[2][9];
        for (int i = 0; i < 2; ++i) ObjectSnapPoints(sketch.objects[i], xs[i], ys[i]);
        // The quadrants beside the way: 90 and 270 degrees, or 0 and 180.
        for (const int k : {upright ? 1 : 2, upright ? 3 : 4}) {
          AddLine({xs[0][k], ys[0][k]}, {xs[1][k], ys[1][k]});
        }
        SCOPED_TRACE(testing::Message() << r << (upright ? " upright" : " level"));
        ASSERT_TRUE(CutInside(pair));
        ExpectOneClosedPart(r);
      }
    }
  }
}

TEST_F(Belt, TellsAChordFromATouchAtAThousandthOfTheRadius) {
  for (const double r : {0.5, 40.0}) {
    for (const bool chord : {false, true}) {
      ResetSketch();
      Add(kTypeCircle, 0, 0, 2 * r);
      // Half the distance of the two places: 0.45 and 0.55 thousandths of the radius.
      const double half = (chord ? 0.55e-3 : 0.45e-3) * r;
      Add(kTypeLine, -2 * r, std::sqrt(r * r - half * half), 4 * r);
      EXPECT_EQ(TrimObject(0, 0, -r), chord);
    }
  }
}

}  // namespace
}  // namespace morva
