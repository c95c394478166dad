// Group numbers from outlines that touch: single cases by hand, and random sketches beside a
// plain loop over all pairs of segments.

#include "cad/geometry/connectivity.h"

#include <cmath>
#include <utility>

#include "cad/model/sketch.h"
#include "edits_stage.h"
#include "support/program_maker.h"

namespace morva {
namespace {

struct Connectivity : public cad_test::EditsStage {
  static std::vector<int> Groups() {
    std::vector<int> groups;
    for (int i = 0; i < sketch.objectCount; ++i) groups.push_back(sketch.objects[i].group);
    return groups;
  }
};

using Numbers = std::vector<int>;

TEST_F(Connectivity, NumbersPartsInTheOrderOfTheirFirstObjects) {
  Add(kTypeLine, 0, 0, 1);
  Add(kTypeLine, 3, 0, 1);  // alone
  Add(kTypeLine, 0, 2, 1);
  Add(kTypeLine, 1, 0, 1, 0, 90);      // end to end with the first
  Add(kTypeLine, 0.5, 1.5, 1, 0, 90);  // crosses the third
  RecomputeConnectivity();
  EXPECT_EQ(Groups(), (Numbers{1, 0, 2, 1, 2}));
}

TEST_F(Connectivity, FollowsAChainWhateverItsOrder) {
  for (int i = 0; i < 5; ++i) Add(kTypeLine, i * 0.5 * (i % 2 ? -1 : 1), 0, 0.1);
  for (int i = 0; i < 8; ++i) Add(kTypeLine, (i * 5 % 8) * 0.5, 2, 0.5, 0, 0, 4);
  RecomputeConnectivity();
  EXPECT_EQ(Groups(), (Numbers{0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1, 1}));
}

TEST_F(Connectivity, UndoesFormerGroups) {
  Add(kTypeLine, 0, 0, 1, 0, 0, 5);
  Add(kTypeLine, 0, 1, 1, 0, 0, 5);
  RecomputeConnectivity();
  EXPECT_EQ(Groups(), (Numbers{0, 0}));
}

TEST_F(Connectivity, LeavesHiddenAndLockedObjectsAndCountsAboveTheirNumbers) {
  Add(kTypeLine, 0, 0, 1, 0, 0, 3);
  Add(kTypeLine, 1, 0, 1, 0, 0, 9);
  Add(kTypeLine, 1, 0, 1, 0, 90, 6);
  Add(kTypeLine, 1, 1, 1, 0, 90);
  Add(kTypeLine, 1, 1, 1, 0, 0, 20);
  sketch.hidden[0] = 1;
  sketch.locked[1] = 1;
  RecomputeConnectivity();
  EXPECT_EQ(Groups(), (Numbers{3, 9, 10, 10, 10}));
}

TEST_F(Connectivity, FindsANumberWhereTheyAreUsedUp) {
  Add(kTypeLine, 0, 0, 1, 0, 0, 2147483647);
  Add(kTypeLine, 0, 1, 1, 0, 0, 1);
  Add(kTypeLine, 0, 2, 1);
  Add(kTypeLine, 1, 2, 1);
  sketch.locked[0] = 1;
  sketch.locked[1] = 1;
  RecomputeConnectivity();
  EXPECT_EQ(Groups(), (Numbers{2147483647, 1, 2, 2}));
}

TEST_F(Connectivity, JoinsEndsWithinTheToleranceOnly) {
  Add(kTypeLine, 0, 0, 1);
  Add(kTypeLine, -1, 0.000009, 1);  // its end 9e-6 above the other's start
  RecomputeConnectivity();
  EXPECT_EQ(Groups(), (Numbers{1, 1}));
  sketch.objects[1].y = 0.00002;
  RecomputeConnectivity();
  EXPECT_EQ(Groups(), (Numbers{0, 0}));
}

TEST_F(Connectivity, JoinsNoOverlappingParallelLinesBesidesTheirEnds) {
  Add(kTypeLine, 0, 0, 2);
  Add(kTypeLine, 1, 0, 2);
  RecomputeConnectivity();
  EXPECT_EQ(Groups(), (Numbers{0, 0}));
}

TEST_F(Connectivity, KeepsACircleWithinACircleApart) {
  Add(kTypeCircle, 0, 0, 2);
  Add(kTypeCircle, 0, 0, 1);
  Add(kTypeCircle, 1, 0, 0.5);
  RecomputeConnectivity();
  EXPECT_EQ(Groups(), (Numbers{1, 0, 1}));
}

// The plain answer, from the outlines alone, without any box.
bool PlainTouch(const SketchObject& a, const SketchObject& b) {
  double ax[kOutlinePoints], ay[kOutlinePoints], bx[kOutlinePoints], by[kOutlinePoints];
  const int countA = ObjectOutline(a, ax, ay);
  const int countB = ObjectOutline(b, bx, by);
  for (int i = 0; i + 1 < countA; ++i) {
    for (int k = 0; k + 1 < countB; ++k) {
      for (const auto& [p, q] :
           {std::pair{i, k}, std::pair{i + 1, k}, std::pair{i, k + 1}, std::pair{i + 1, k + 1}}) {
        if (std::fabs(ax[p] - bx[q]) + std::fabs(ay[p] - by[q]) <= 1e-5) return true;
      }
      const double lengthA = std::hypot(ax[i + 1] - ax[i], ay[i + 1] - ay[i]);
      const double lengthB = std::hypot(bx[k + 1] - bx[k], by[k + 1] - by[k]);
      if (lengthA == 0 || lengthB == 0) continue;
      double t = 0;
      double s = 0;
      const Ray rayA{ax[i], ay[i], (ax[i + 1] - ax[i]) / lengthA, (ay[i + 1] - ay[i]) / lengthA};
      const Ray rayB{bx[k], by[k], (bx[k + 1] - bx[k]) / lengthB, (by[k + 1] - by[k]) / lengthB};
      if (!LineIntersection(rayA, rayB, t, s)) continue;
      t /= lengthA;
      s /= lengthB;
      if (t >= -0.000001 && t <= 1.000001 && s >= -0.000001 && s <= 1.000001) return true;
    }
  }
  return false;
}

// Groups by repeated merging over all pairs, numbered by first member.
Numbers PlainGroups() {
  const int count = sketch.objectCount;
  int largest = 0;
  Numbers part(static_cast<std::size_t>(count), -1);
  const auto Free = [](int i) { return !sketch.hidden[i] && !sketch.locked[i]; };
  for (int i = 0; i < count; ++i) {
    if (Free(i)) {
      part[static_cast<std::size_t>(i)] = i;
    } else {
      largest = std::max(largest, sketch.objects[i].group);
    }
  }
  for (int i = 0; i < count; ++i) {
    for (int k = 0; k < count; ++k) {
      if (i == k || !Free(i) || !Free(k)) continue;
      const int a = part[static_cast<std::size_t>(i)];
      const int b = part[static_cast<std::size_t>(k)];
      if (a == b || !PlainTouch(sketch.objects[i], sketch.objects[k])) continue;
      for (int& p : part) {
        if (p == std::max(a, b)) p = std::min(a, b);
      }
    }
  }
  Numbers groups(static_cast<std::size_t>(count), 0);
  for (int first = 0; first < count; ++first) {
    int members = 0;
    for (const int p : part) members += p == first ? 1 : 0;
    if (members > 1) ++largest;
    for (int i = 0; i < count; ++i) {
      if (members > 1 && part[static_cast<std::size_t>(i)] == first) {
        groups[static_cast<std::size_t>(i)] = largest;
      }
    }
  }
  for (int i = 0; i < count; ++i) {
    if (!Free(i)) groups[static_cast<std::size_t>(i)] = sketch.objects[i].group;
  }
  return groups;
}

TEST_F(Connectivity, AgreesWithThePlainLoopOnRandomSketches) {
  int touching = 0;
  int alone = 0;
  for (std::uint32_t seed = 1; seed <= 300; ++seed) {
    reference::Dice dice{seed * 2654435761u};
    ResetSketch();
    const int count = 2 + static_cast<int>(dice.Roll(24));
    for (int i = 0; i < count; ++i) {
      SketchObject o;
      o.type = static_cast<std::int32_t>(dice.Roll(6));
      o.group = static_cast<std::int32_t>(dice.Roll(4));
      // A coarse raster, so that ends and edges often meet exactly.
      const double spread = seed % 2 ? 0.5 : 0.0137;
      o.x = dice.Roll(20) * spread * 2;
      o.y = dice.Roll(20) * spread * 2;
      o.size = (1 + dice.Roll(4)) * 0.5;
      o.size2 = o.type == kTypeRectangle || o.type == kTypeSlot ? 0.5 : 0;
      o.angle = dice.Roll(3) ? 45.0 * dice.Roll(8) : dice.Roll(360);
      AppendSketchObject(o);
      sketch.hidden[i] = dice.Roll(12) == 0;
      sketch.locked[i] = dice.Roll(12) == 0;
    }
    const Numbers expected = PlainGroups();
    RecomputeConnectivity();
    ASSERT_EQ(Groups(), expected) << seed;
    for (const int group : expected) (group ? touching : alone) += 1;
  }
  EXPECT_GT(touching, 500);
  EXPECT_GT(alone, 500);
}

TEST_F(Connectivity, AgreesWithThePlainLoopOnCirclesThatTouch) {
  for (int i = 0; i < 24; ++i) {
    Add(kTypeCircle, i % 6 * 1.0, i / 6 * 1.0, i % 5 == 0 ? 0.98 : 1.0);
  }
  const Numbers expected = PlainGroups();
  RecomputeConnectivity();
  EXPECT_EQ(Groups(), expected);
}

TEST_F(Connectivity, AgreesWithThePlainLoopInMillimetresFarOut) {
  for (std::uint32_t seed = 1; seed <= 40; ++seed) {
    reference::Dice dice{seed * 2654435761u};
    ResetSketch();
    for (int i = 0; i < 16; ++i) {
      const double x = 5000 + dice.Roll(200);
      const double y = -8000 + dice.Roll(200);
      const auto type = static_cast<SketchType>(dice.Roll(4));
      Add(type, x, y, 10 + dice.Roll(90), type % 2 ? 10 : 0, dice.Roll(24) * 15);
    }
    const Numbers expected = PlainGroups();
    RecomputeConnectivity();
    ASSERT_EQ(Groups(), expected) << seed;
  }
}

}  // namespace
}  // namespace morva
