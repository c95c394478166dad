// The view cube. Places are those of a view whose right edge is 1000 and top is 0: the cube's
// middle lies at 916, 76. Faces are checked against rotation matrices of the test's own.
#include "library/view_cube.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "platform/headless/headless.h"
#include "platform/timer.h"
#include "support/stage.h"

namespace morva {
namespace {

using platform::Rect;

constexpr Rect kClient{0, 0, 1000, 700};
constexpr int kView = 700;
constexpr int kTimer = 1620;
constexpr ViewAngles kHome{-45, 28, 0};

ViewCube cube;
ViewAngles angles;

class Cube : public support::Stage {
 protected:
  Cube() {
    cube = ViewCube();
    cube.view = kView;
    cube.timer = kTimer;
    angles = kHome;
    static platform::Events events;
    events = platform::Events();
    events.timer = [](int view, int timer) {
      if (view == kView && timer == kTimer) TickCube(cube, angles);
    };
    events.paint = [](int view, platform::Canvas& canvas) {
      if (view == kView) PaintCube(canvas, CanvasArea(canvas), cube, angles);
    };
    platform::ListenTo(&events);
    platform::ViewSpec spec;
    spec.id = kView;
    spec.className = u"CubeView";
    platform::MakeView(spec);
    platform::SetPlace(kView, kClient);
  }

  static CubePart PartAt(int x, int y) { return HitCube(kClient, angles, x, y).part; }
  static bool Press(int x, int y) { return PressCube(cube, kClient, angles, x, y); }
  static bool Drag(int x, int y) { return MoveCube(cube, kClient, angles, x, y); }
  static ViewAngles TargetOf(CubePart part, const ViewAngles& from) {
    ViewAngles target;
    CubeHit hit;
    hit.part = part;
    EXPECT_TRUE(CubeTarget(hit, from, target));
    return target;
  }
  static ViewAngles Towards(int x, int y, int z) {
    ViewAngles target;
    EXPECT_TRUE(CubeTarget({CubePart::Face, x, y, z}, kHome, target));
    return target;
  }
  static void ExpectAngles(const ViewAngles& got, double yaw, double elevation, double roll) {
    EXPECT_NEAR(got.yaw, yaw, 1e-6);
    EXPECT_NEAR(got.elevation, elevation, 1e-6);
    EXPECT_NEAR(got.roll, roll, 1e-6);
  }
};

// A second method: the matrices about Z, X and the view axis, one after the other.
struct Place {
  double right, down, near;
};
Place Turned(const ViewAngles& a, double x, double y, double z) {
  const double r = M_PI / 180;
  const double x1 = std::cos(a.yaw * r) * x - std::sin(a.yaw * r) * y;
  const double y1 = std::sin(a.yaw * r) * x + std::cos(a.yaw * r) * y;
  // Laid back from the plan by 90 degrees less the elevation.
  const double t = (90 - a.elevation) * r;
  const double y2 = std::cos(t) * y1 + std::sin(t) * z;
  const double z2 = -std::sin(t) * y1 + std::cos(t) * z;
  const double w = a.roll * r;
  return {std::cos(w) * x1 + std::sin(w) * y2, std::sin(w) * x1 - std::cos(w) * y2, z2};
}

TEST_F(Cube, TurnsItsAxesAsTheMatricesDo) {
  for (const ViewAngles& a : {kHome, ViewAngles{10, 80, 30}, ViewAngles{-170, -35, -120},
                              ViewAngles{0, 90, 0}, ViewAngles{95, 0, 180}}) {
    const CubeAxes axes = AxesOfCube(a);
    for (int i = 0; i < 3; ++i) {
      const Place p = Turned(a, i == 0, i == 1, i == 2);
      EXPECT_NEAR(axes.x[i], p.right, 1e-6);
      EXPECT_NEAR(axes.y[i], p.down, 1e-6);
      EXPECT_NEAR(axes.depth[i], p.near, 1e-6);
    }
  }
}

TEST_F(Cube, FillsACornerOf172By171Pixels) {
  EXPECT_TRUE(InCubeCorner(kClient, 828, 170));
  EXPECT_TRUE(InCubeCorner(kClient, 999, 0));
  EXPECT_FALSE(InCubeCorner(kClient, 827, 100));
  EXPECT_FALSE(InCubeCorner(kClient, 900, 171));
  EXPECT_FALSE(InCubeCorner(kClient, 1000, 10));
}

TEST_F(Cube, GivesUpInAViewSmallerThanItsCorner) {
  EXPECT_FALSE(CubeFits({0, 0, 171, 400}));
  EXPECT_FALSE(CubeFits({0, 0, 400, 170}));
  EXPECT_TRUE(CubeFits({0, 0, 172, 171}));
  EXPECT_EQ(HitCube({0, 0, 171, 400}, angles, 87, 76).part, CubePart::None);
}

TEST_F(Cube, FindsItsKeysByTheirPlaces) {
  const struct {
    CubePart part;
    int left, right, top, bottom;
  } keys[] = {
      {CubePart::RollLeft, 1000 - 68, 1000 - 31, 10, 31},
      {CubePart::Home, 1000 - 152, 1000 - 124, 6, 30},
      {CubePart::YawLeft, 1000 - 146, 1000 - 123, 61, 85},
      {CubePart::YawRight, 1000 - 45, 1000 - 22, 61, 85},
      {CubePart::ElevationUp, 1000 - 96, 1000 - 72, 32, 40},
      {CubePart::ElevationDown, 1000 - 96, 1000 - 72, 115, 132},
  };
  for (const auto& key : keys) {
    EXPECT_EQ(PartAt(key.left, key.top), key.part);
    EXPECT_EQ(PartAt(key.right, key.bottom), key.part);
    EXPECT_NE(PartAt(key.left - 1, key.top), key.part);
    EXPECT_NE(PartAt(key.right, key.bottom + 1), key.part);
  }
  // The two roll keys overlap in a corner, where the left one is tested first.
  EXPECT_EQ(PartAt(1000 - 34, 30), CubePart::RollLeft);
  EXPECT_EQ(PartAt(1000 - 12, 58), CubePart::RollRight);
  EXPECT_EQ(PartAt(1000 - 36, 32), CubePart::RollRight);
}

TEST_F(Cube, FindsTheNearestFaceUnderThePointer) {
  angles = {0, 0, 0};  // the front: 48 by 48 pixels about 916, 76
  CubeHit hit = HitCube(kClient, angles, 916, 76);
  EXPECT_EQ(hit.part, CubePart::Face);
  EXPECT_EQ(hit.x, 0);
  EXPECT_EQ(hit.y, -1);
  EXPECT_EQ(hit.z, 0);
  angles = {0, 90, 0};
  hit = HitCube(kClient, angles, 916, 76);
  EXPECT_EQ(hit.z, 1);
  EXPECT_EQ(hit.y, 0);
  angles = {-90, 0, 0};
  hit = HitCube(kClient, angles, 916, 76);
  EXPECT_EQ(hit.x, 1);
}

TEST_F(Cube, CutsAFaceIntoNineCellsAt24And76Percent) {
  angles = {0, 0, 0};
  // 892 to 940 across and 52 to 100 down: the cuts lie at 11.52 and 36.48 pixels.
  const struct {
    int at, cell;
  } across[] = {{893, -1}, {903, -1}, {904, 0}, {916, 0}, {928, 0}, {929, 1}, {939, 1}};
  const struct { int at, cell; } down[] = {{53, 1}, {63, 1}, {64, 0}, {88, 0}, {89, -1}, {99, -1}};
  for (const auto& u : across) {
    for (const auto& v : down) {
      const CubeHit hit = HitCube(kClient, angles, u.at, v.at);
      ASSERT_EQ(hit.part, CubePart::Face) << u.at << " " << v.at;
      EXPECT_EQ(hit.x, u.cell) << u.at;
      EXPECT_EQ(hit.y, -1);
      EXPECT_EQ(hit.z, v.cell) << v.at;
    }
  }
  EXPECT_NE(PartAt(890, 76), CubePart::Face);
}

// A second method: every pixel of the cube against the nearest point that the matrices put there.
TEST_F(Cube, AgreesWithTheMatricesOnEveryFace) {
  for (const ViewAngles& a : {kHome, ViewAngles{30, -50, 0}, ViewAngles{-160, 20, 75}}) {
    angles = a;
    int faces = 0;
    for (int face = 0; face < 6; ++face) {
      const int axis = face / 2;
      const int side = face % 2 ? -1 : 1;
      double normal[3] = {0, 0, 0};
      normal[axis] = side;
      if (Turned(a, normal[0], normal[1], normal[2]).near < 0.1) continue;
      ++faces;
      for (const double u : {-0.85, -0.3, 0.0, 0.4, 0.85}) {
        for (const double v : {-0.85, -0.3, 0.0, 0.4, 0.85}) {
          double p[3];
          p[axis] = side;
          p[(axis + 1) % 3] = u;
          p[(axis + 2) % 3] = v;
          const Place at = Turned(a, p[0], p[1], p[2]);
          const double x = 916 + 24 * at.right;
          const double y = 76 + 24 * at.down;
          const int px = static_cast<int>(std::lround(x));
          const int py = static_cast<int>(std::lround(y));
          const CubeHit hit = HitCube(kClient, a, px, py);
          if (hit.part != CubePart::Face) continue;  // a key lies over it
          const auto cell = [](double at1) { return at1 < -0.52 ? -1 : at1 > 0.52 ? 1 : 0; };
          int wanted[3];
          wanted[axis] = side;
          wanted[(axis + 1) % 3] = cell(u);
          wanted[(axis + 2) % 3] = cell(v);
          EXPECT_EQ(hit.x, wanted[0]) << face << " " << u << " " << v;
          EXPECT_EQ(hit.y, wanted[1]) << face << " " << u << " " << v;
          EXPECT_EQ(hit.z, wanted[2]) << face << " " << u << " " << v;
        }
      }
    }
    EXPECT_EQ(faces, 3);
  }
}

TEST_F(Cube, FindsTheRingsAroundTheCube) {
  EXPECT_EQ(PartAt(916 + 35, 76 + 35), CubePart::YawRing);    // 49.5 from the middle
  EXPECT_EQ(PartAt(916 - 47, 76 + 47), CubePart::OuterRing);  // 66.5
  EXPECT_EQ(PartAt(916 + 41, 76 + 41), CubePart::None);       // 58: between the two
  EXPECT_EQ(PartAt(916 - 60, 76 + 60), CubePart::None);
}

TEST_F(Cube, LooksStraightAtEachFace) {
  ExpectAngles(Towards(0, -1, 0), 0, 0, 0);
  ExpectAngles(Towards(1, 0, 0), -90, 0, 0);
  ExpectAngles(Towards(-1, 0, 0), 90, 0, 0);
  EXPECT_NEAR(std::fabs(Towards(0, 1, 0).yaw), 180, 1e-6);
  // Top and bottom say nothing about the yaw, which stays.
  ExpectAngles(Towards(0, 0, 1), -45, 90, 0);
  ExpectAngles(Towards(0, 0, -1), -45, -90, 0);
}

TEST_F(Cube, LooksAtEdgesAndCornersFromTheirDirection) {
  ExpectAngles(Towards(1, -1, 0), -45, 0, 0);
  ExpectAngles(Towards(0, -1, 1), 0, 45, 0);
  ExpectAngles(Towards(1, 0, -1), -90, -45, 0);
  const double corner = std::atan(1 / std::sqrt(2.0)) * 180 / M_PI;
  ExpectAngles(Towards(1, -1, 1), -45, corner, 0);
  ExpectAngles(Towards(-1, 1, -1), 135, -corner, 0);
}

// The matrices again: what a target looks at faces the viewer.
TEST_F(Cube, BringsEveryDirectionToTheViewer) {
  for (int x = -1; x <= 1; ++x) {
    for (int y = -1; y <= 1; ++y) {
      for (int z = -1; z <= 1; ++z) {
        if (x == 0 && y == 0 && z == 0) continue;
        const Place p = Turned(Towards(x, y, z), x, y, z);
        EXPECT_NEAR(p.right, 0, 1e-5);
        EXPECT_NEAR(p.down, 0, 1e-5);
        EXPECT_NEAR(p.near, std::sqrt(x * x + y * y + z * z), 1e-5);
      }
    }
  }
}

TEST_F(Cube, FacesEndTheRoll) {
  ViewAngles target;
  ASSERT_TRUE(CubeTarget({CubePart::Face, 0, 0, 1}, {10, 20, 90}, target));
  ExpectAngles(target, 10, 90, 0);
}

TEST_F(Cube, TurnsByArrowsThroughNinetyDegrees) {
  ExpectAngles(TargetOf(CubePart::YawLeft, kHome), -135, 28, 0);
  ExpectAngles(TargetOf(CubePart::YawRight, kHome), 45, 28, 0);
  ExpectAngles(TargetOf(CubePart::RollLeft, kHome), -45, 28, -90);
  ExpectAngles(TargetOf(CubePart::RollRight, kHome), -45, 28, 90);
  ExpectAngles(TargetOf(CubePart::Home, {1, 2, 3}), -45, 28, 0);
}

TEST_F(Cube, FoldsTheElevationBackPastAPole) {
  ExpectAngles(TargetOf(CubePart::ElevationUp, {-45, 0, 0}), -45, 90, 0);  // just there
  ExpectAngles(TargetOf(CubePart::ElevationUp, {-45, 28, 0}), 135, 62, 0);
  ExpectAngles(TargetOf(CubePart::ElevationDown, {-45, 28, 0}), -45, -62, 0);
  ExpectAngles(TargetOf(CubePart::ElevationDown, {-45, -28, 0}), 135, -62, 0);
  ExpectAngles(TargetOf(CubePart::ElevationDown, {100, -28, 0}), -80, -62, 0);
}

TEST_F(Cube, AnimatesOver20StepsOf16Milliseconds) {
  angles = {0, 0, 0};
  AnimateCube(cube, angles, {40, 20, -10});
  EXPECT_TRUE(platform::TimerRuns(kView, kTimer));
  headless::Advance(15);
  ExpectAngles(angles, 0, 0, 0);
  headless::Advance(1);
  // t = 0.05: f = 0.0025 x 2.9 = 0.00725
  ExpectAngles(angles, 40 * 0.00725, 20 * 0.00725, -10 * 0.00725);
  headless::Advance(16 * 4);  // t = 0.25: f = 0.0625 x 2.5 = 0.15625
  ExpectAngles(angles, 6.25, 3.125, -1.5625);
  headless::Advance(16 * 5);  // t = 0.5: half-way
  ExpectAngles(angles, 20, 10, -5);
  headless::Advance(16 * 9);
  EXPECT_TRUE(cube.running);
  headless::Advance(16);
  EXPECT_FALSE(cube.running);
  EXPECT_FALSE(platform::TimerRuns(kView, kTimer));
  EXPECT_EQ(angles.yaw, 40);
  EXPECT_EQ(angles.elevation, 20);
  EXPECT_EQ(angles.roll, -10);
}

TEST_F(Cube, TravelsTwentyDegreesFromMinus170To170Through180) {
  angles = {-170, 0, 0};
  AnimateCube(cube, angles, {170, 0, 0});
  double last = -170;
  double travelled = 0;
  for (int i = 0; i < 20; ++i) {
    headless::Advance(16);
    const double step = WithinHalfTurn(angles.yaw - last);
    EXPECT_LE(step, 1e-9);
    travelled += std::fabs(step);
    last = angles.yaw;
    if (i == 9) {
      EXPECT_NEAR(WithinHalfTurn(angles.yaw - 180), 0, 1e-9);
    }
  }
  EXPECT_NEAR(travelled, 20, 1e-9);
  EXPECT_EQ(angles.yaw, 170);
}

TEST_F(Cube, AnyClickOnAPartCancelsARunningAnimation) {
  Press(1000 - 138, 18);  // Home, from home
  angles = {0, 0, 0};
  ASSERT_TRUE(Press(1000 - 34, 70));  // yaw right
  headless::Advance(16 * 10);
  EXPECT_NEAR(angles.yaw, 45, 1e-9);
  ASSERT_TRUE(Press(916 - 47, 76 + 47));  // a ring: nothing follows
  EXPECT_FALSE(cube.running);
  headless::Advance(1000);
  EXPECT_NEAR(angles.yaw, 45, 1e-9);
  ReleaseCube(cube);
  ASSERT_TRUE(Press(1000 - 134, 70));  // yaw left, counted from where it stopped
  headless::Advance(1000);
  EXPECT_NEAR(angles.yaw, -45, 1e-9);
}

TEST_F(Cube, APressBesideThePartsLeavesAnAnimationAlone) {
  angles = {0, 0, 0};
  Press(1000 - 34, 70);
  headless::Advance(16);
  EXPECT_FALSE(Press(1000 - 165, 160));
  EXPECT_TRUE(cube.running);
}

TEST_F(Cube, TurnsTheYawByItsRing) {
  angles = {0, 28, 0};
  ASSERT_TRUE(Press(916 + 35, 76 + 35));  // 45 degrees below the right
  EXPECT_EQ(cube.ring, CubePart::YawRing);
  EXPECT_TRUE(Drag(916 + 35, 76 - 35));  // a quarter counter-clockwise
  EXPECT_NEAR(angles.yaw, 90, 1e-6);
  EXPECT_TRUE(Drag(916 - 35, 76 - 35));
  EXPECT_NEAR(angles.yaw, 180, 1e-6);
  EXPECT_TRUE(Drag(916 - 35, 76 + 35));
  EXPECT_NEAR(angles.yaw, -90, 1e-6);
  EXPECT_EQ(angles.elevation, 28);
  EXPECT_TRUE(ReleaseCube(cube));
  EXPECT_FALSE(Drag(916, 200));
  EXPECT_NEAR(angles.yaw, -90, 1e-6);
  EXPECT_FALSE(ReleaseCube(cube));
}

TEST_F(Cube, BringsEachMoveOfARingWithinHalfATurn) {
  angles = {0, 0, 0};
  ASSERT_TRUE(Press(916 - 49, 76 + 12));
  Drag(916 - 49, 76 - 12);  // across the left, where the angle jumps from -180 to 180
  EXPECT_NEAR(angles.yaw, -2 * std::atan2(12, 49) * 180 / M_PI, 1e-6);
}

TEST_F(Cube, TurnsTheElevationByTheOuterRingUpToThePoles) {
  ASSERT_TRUE(Press(916 + 47, 76 + 47));
  EXPECT_EQ(cube.ring, CubePart::OuterRing);
  Drag(916 + 66, 76);
  EXPECT_NEAR(angles.elevation, 28 + 45, 1e-6);
  Drag(916, 76 - 66);
  EXPECT_EQ(angles.elevation, 90);
  EXPECT_EQ(angles.yaw, -45);
}

TEST_F(Cube, RollsByTheOuterRingWhereTheOwnerSaysSo) {
  cube.outerRolls = true;
  ASSERT_TRUE(Press(916 + 47, 76 + 47));
  Drag(916 - 47, 76 + 47);  // a quarter clockwise on the screen
  EXPECT_NEAR(angles.roll, 90, 1e-6);
  // The picture goes along: what was to the right lies below now.
  const Place before = Turned({-45, 28, 0}, 1, 0, 0);
  const Place after = Turned(angles, 1, 0, 0);
  EXPECT_NEAR(after.down, before.right, 1e-6);
  EXPECT_NEAR(after.right, -before.down, 1e-6);
  EXPECT_EQ(angles.elevation, 28);
}

TEST_F(Cube, LightsWhatIsUnderThePointer) {
  EXPECT_TRUE(HoverCube(cube, kClient, angles, 1000 - 138, 18));
  EXPECT_EQ(cube.over.part, CubePart::Home);
  EXPECT_TRUE(HoverCube(cube, kClient, angles, 1000 - 165, 160));
  EXPECT_EQ(cube.over.part, CubePart::None);
  EXPECT_FALSE(HoverCube(cube, kClient, angles, 400, 400));
  EXPECT_FALSE(HoverCube(cube, kClient, angles, -1, -1));
}

TEST_F(Cube, DrawsTheFacesThatAreSeenInsideItsCorner) {
  const auto faces = [] {
    int count = 0;
    for (const headless::DrawCall& call : headless::PaintOf(kView)) {
      // Corners of a side of 48 pixels, seen straight on or at a slant; its pen is the edge's.
      const bool four = call.name == "PaintPolygon" && call.numbers.size() == 8 + 3;
      count += four && call.colours[1] == 0x7FB2D4 ? 1 : 0;
      for (std::size_t i = 0; four && i + 1 < 8; i += 2) {
        EXPECT_GE(call.numbers[i], 828);
        EXPECT_LE(call.numbers[i], 1000);
        EXPECT_GE(call.numbers[i + 1], 0);
        EXPECT_LE(call.numbers[i + 1], 171);
      }
    }
    return count;
  };
  EXPECT_EQ(faces(), 3);
  angles = {0, 0, 0};
  EXPECT_EQ(faces(), 1);
  angles = {45, 0, 0};
  EXPECT_EQ(faces(), 2);
  platform::SetPlace(kView, {0, 0, 171, 700});
  EXPECT_TRUE(headless::PaintOf(kView).empty());
}

TEST_F(Cube, KeepsAnglesInHandThatAreNoDirections) {
  EXPECT_EQ(WithinHalfTurn(190), -170);
  EXPECT_EQ(WithinHalfTurn(-540), -180);
  EXPECT_EQ(WithinHalfTurn(180), 180);
  EXPECT_EQ(WithinHalfTurn(std::nan("")), 0);
  EXPECT_EQ(WithinHalfTurn(INFINITY), 0);
}

}  // namespace
}  // namespace morva
