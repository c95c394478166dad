// Heights of the cut surface, worked out by hand: stock of 4.8 by 4.8 by 1, so that samples stand
// a tenth apart, and cutters of half an inch, so that a sample at two tenths is cut and one at
// three is not.
#include "simulator/cut_surface.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include "library/tools.h"
#include "simulator/motion_path.h"
#include "simulator/shown_path.h"
#include "simulator/view_switches.h"
#include "unit/simulator/view_fixture.h"

namespace morva {
namespace {

constexpr StockEnvelope kStock{true, 0, 4.8, 0, 4.8, 0, -1, 1};
constexpr double kTiny = 1e-9;

MotionPoint Spot(double x, double y, double z, std::int32_t tool = 1) {
  MotionPoint point;
  point.x = x;
  point.y = y;
  point.z = z;
  point.tool = tool;
  return point;
}

Cutter Half(ToolShape shape) { return {1, shape, 0.5, 1, 2}; }

ToolRecord Tool(std::int32_t number, std::u16string_view type, double diameter) {
  ToolRecord tool;
  tool.number = number;
  std::copy(type.begin(), type.end(), tool.type);
  tool.diameter = diameter;
  tool.stickout = 1;
  tool.gaugeLength = 2;
  return tool;
}

class CutSurfaceTest : public ViewTest {
 protected:
  CutSurfaceTest() {
    ResetToolLibrary();
    ClearSurface(surface, kStock);
  }
  ~CutSurfaceTest() override { ResetToolLibrary(); }

  // The height at a sample, counted from the lower left corner.
  double Height(int column, int row) const { return surface.heights[row][column]; }
  void Stamp(const MotionPoint& from, const MotionPoint& to, ToolShape shape) {
    StampWay(surface, from, to, Half(shape));
  }

  // Two cuts of a half inch mill along Y 2.4 and Y 3.4, from X 1 to 3, with a rapid between.
  static void TwoCuts() {
    AppendTool(Tool(1, u"End Mill", 0.5));
    stockEnvelope = kStock;
    Feed(1, 2.4, -0.3).tool = 1;
    Feed(3, 2.4, -0.3).tool = 1;
    RapidTo(1, 3.4, -0.3).tool = 1;
    Feed(3, 3.4, -0.3).tool = 1;
    playback.headInUse = true;
  }
  static double Now(int column, int row) {
    const CutSurface* const now = CutSurfaceNow();
    return now ? now->heights[row][column] : std::numeric_limits<double>::quiet_NaN();
  }
  static std::int32_t Stamped() { return CutSurfaceNow()->stamped; }

  CutSurface surface;
};

TEST_F(CutSurfaceTest, StartsAtTheTopOfTheStock) {
  StockEnvelope high = kStock;
  high.top = 0.25;
  ClearSurface(surface, high);
  for (int row = 0; row < kSurfaceSamples; ++row) {
    for (int column = 0; column < kSurfaceSamples; ++column) {
      ASSERT_EQ(Height(column, row), 0.25);
    }
  }
  EXPECT_EQ(surface.stamped, 0);
}

TEST_F(CutSurfaceTest, AFlatCutterLeavesASlotWithRoundEnds) {
  Stamp(Spot(1, 2.4, -0.3), Spot(3, 2.4, -0.3), ToolShape::Flat);
  for (int row = 22; row <= 26; ++row) {
    for (int column = 10; column <= 30; ++column) EXPECT_EQ(Height(column, row), -0.3);
  }
  EXPECT_EQ(Height(20, 21), 0);
  EXPECT_EQ(Height(20, 27), 0);
  // Behind the end: 0.2 away, 0.224 away, 0.283 away, 0.3 away.
  EXPECT_EQ(Height(8, 24), -0.3);
  EXPECT_EQ(Height(8, 25), -0.3);
  EXPECT_EQ(Height(8, 26), 0);
  EXPECT_EQ(Height(7, 24), 0);
  EXPECT_EQ(Height(32, 25), -0.3);
  EXPECT_EQ(Height(32, 26), 0);
}

TEST_F(CutSurfaceTest, ARampIsAsDeepAsTheCutterStandsThere) {
  Stamp(Spot(1, 2.4, 0), Spot(3, 2.4, -0.4), ToolShape::Flat);
  EXPECT_EQ(Height(9, 24), 0);
  EXPECT_NEAR(Height(15, 24), -0.1, kTiny);
  EXPECT_NEAR(Height(20, 26), -0.2, kTiny);
  EXPECT_NEAR(Height(32, 24), -0.4, kTiny);
}

TEST_F(CutSurfaceTest, ABallLeavesARoundBottom) {
  Stamp(Spot(1, 2.4, -0.3), Spot(3, 2.4, -0.3), ToolShape::Ball);
  EXPECT_NEAR(Height(20, 24), -0.3, kTiny);
  // 0.25 - sqrt(0.25 * 0.25 - 0.1 * 0.1) and, of a triangle of 15, 20 and 25, 0.25 - 0.15.
  EXPECT_NEAR(Height(20, 25), -0.3 + 0.0208712153, kTiny);
  EXPECT_NEAR(Height(20, 22), -0.3 + 0.1, kTiny);
  EXPECT_EQ(Height(20, 21), 0);
}

TEST_F(CutSurfaceTest, ADrillLeavesACone) {
  Stamp(Spot(2, 2, 0.5), Spot(2, 2, -0.6), ToolShape::Drill);
  EXPECT_NEAR(Height(20, 20), -0.6, kTiny);
  EXPECT_NEAR(Height(21, 20), -0.54, kTiny);
  EXPECT_NEAR(Height(20, 18), -0.48, kTiny);
  EXPECT_EQ(Height(23, 20), 0);
}

TEST_F(CutSurfaceTest, AChamferToolHasTheSlopeOfADrill) {
  Stamp(Spot(1, 2.4, -0.1), Spot(3, 2.4, -0.1), ToolShape::Chamfer);
  EXPECT_NEAR(Height(20, 24), -0.1, kTiny);
  EXPECT_NEAR(Height(20, 25), -0.04, kTiny);
  EXPECT_EQ(Height(20, 26), 0);  // 0.02 above the top
}

TEST_F(CutSurfaceTest, NothingIsCutBelowTheStock) {
  Stamp(Spot(2, 2, -0.2), Spot(2, 2, -7), ToolShape::Drill);
  EXPECT_EQ(Height(20, 20), -1);
  EXPECT_EQ(Height(21, 20), -1);
}

TEST_F(CutSurfaceTest, AHigherCutLeavesTheDeeperOne) {
  Stamp(Spot(1, 2.4, -0.3), Spot(3, 2.4, -0.3), ToolShape::Flat);
  Stamp(Spot(1, 2.4, -0.2), Spot(4, 2.4, -0.2), ToolShape::Flat);
  EXPECT_EQ(Height(20, 24), -0.3);
  EXPECT_EQ(Height(40, 24), -0.2);
}

TEST_F(CutSurfaceTest, APlungeCutsAtItsEnd) {
  Stamp(Spot(2, 2, 0.5), Spot(2 + 1e-7, 2, -0.4), ToolShape::Flat);
  EXPECT_EQ(Height(20, 20), -0.4);
  // And on its way up as well.
  ClearSurface(surface, kStock);
  Stamp(Spot(2, 2, -0.4), Spot(2, 2, -0.1), ToolShape::Flat);
  EXPECT_NEAR(Height(20, 20), -0.1, kTiny);
}

TEST_F(CutSurfaceTest, WaysOutsideTheStockAndNumbersWithoutSenseCutNothing) {
  const double huge = 1e300;
  const double none = std::numeric_limits<double>::quiet_NaN();
  Stamp(Spot(-5, -5, -0.3), Spot(-5, 9, -0.3), ToolShape::Flat);
  Stamp(Spot(-huge, huge, -0.3), Spot(-huge, 2 * huge, -0.3), ToolShape::Ball);
  Stamp(Spot(none, 1, -0.3), Spot(2, none, -0.3), ToolShape::Drill);
  StampWay(surface, Spot(1, 1, -1), Spot(2, 2, -1), {1, ToolShape::Flat, 0, 1, 2});
  StampWay(surface, Spot(1, 1, -1), Spot(2, 2, -1), {1, ToolShape::Flat, -1, 1, 2});
  for (const auto& row : surface.heights) {
    for (const double height : row) ASSERT_EQ(height, 0);
  }
}

TEST_F(CutSurfaceTest, RapidsAndArrivalsCutNothing) {
  TwoCuts();
  EXPECT_EQ(Now(20, 24), -0.3);
  EXPECT_EQ(Now(20, 34), -0.3);
  EXPECT_EQ(Now(20, 29), 0);  // the rapid went over it
  path.points[3].jump = true;
  ++path.generation;
  EXPECT_EQ(Now(20, 34), 0);
  EXPECT_EQ(Now(20, 24), -0.3);
}

TEST_F(CutSurfaceTest, AToolThatIsNotInTheLibraryCutsNothing) {
  TwoCuts();
  path.points[1].tool = 7;
  ++path.generation;
  EXPECT_EQ(Now(20, 24), 0);
  EXPECT_EQ(Now(20, 34), -0.3);
  // It is described later, thinner and with a point.
  AppendTool(Tool(7, u"spot DRILL", 0.3));
  EXPECT_NEAR(Now(20, 24), -0.3, kTiny);
  EXPECT_NEAR(Now(20, 25), -0.24, kTiny);
  EXPECT_EQ(Now(20, 26), 0);
}

TEST_F(CutSurfaceTest, OfTwoToolsWithANumberTheFirstCuts) {
  TwoCuts();
  AppendTool(Tool(1, u"End Mill", 2));
  EXPECT_EQ(Now(20, 27), 0);
  RemoveTool(0);
  EXPECT_EQ(Now(20, 27), -0.3);
}

TEST_F(CutSurfaceTest, AChangedToolCutsAnew) {
  TwoCuts();
  EXPECT_EQ(Now(20, 26), -0.3);
  ReplaceTool(0, Tool(1, u"End Mill", 0.3));
  EXPECT_EQ(Now(20, 26), 0);
  EXPECT_EQ(Now(20, 25), -0.3);
}

TEST_F(CutSurfaceTest, InMillimetresTheCutterIsAsWideAsItIs) {
  TwoCuts();
  SetUnits(true);
  // 12.7 wide over samples a tenth of a millimetre apart: all of the stock.
  EXPECT_EQ(Now(0, 0), -0.3);
  EXPECT_EQ(Now(48, 48), -0.3);
}

TEST_F(CutSurfaceTest, OnlyWhatTheHeadHasPassedIsCut) {
  TwoCuts();
  for (int head = 0; head <= 1; ++head) {
    playback.playHead = head;
    EXPECT_EQ(Now(20, 24), 0);
    EXPECT_EQ(Stamped(), head);
  }
  playback.playHead = 2;
  EXPECT_EQ(Now(20, 24), -0.3);
  EXPECT_EQ(Now(20, 34), 0);
  playback.playHead = 4;
  EXPECT_EQ(Now(20, 34), -0.3);
  EXPECT_EQ(Stamped(), 4);
}

TEST_F(CutSurfaceTest, AHeadThatIsNotInUseCutsAll) {
  TwoCuts();
  playback.headInUse = false;
  playback.playHead = 1;
  EXPECT_EQ(Stamped(), 4);
  EXPECT_EQ(Now(20, 34), -0.3);
}

TEST_F(CutSurfaceTest, AnEarlierHeadStartsAnew) {
  TwoCuts();
  EXPECT_EQ(Now(20, 34), -0.3);
  playback.playHead = 2;
  EXPECT_EQ(Now(20, 34), 0);
  EXPECT_EQ(Now(20, 24), -0.3);
  EXPECT_EQ(Stamped(), 2);
}

TEST_F(CutSurfaceTest, TheSegmentInProgressIsTakenBack) {
  TwoCuts();
  playback.playHead = 1;
  playback.segmentFraction = 0.5;  // at X 2
  EXPECT_EQ(Now(22, 24), -0.3);
  EXPECT_EQ(Now(23, 24), 0);
  EXPECT_EQ(Stamped(), 1);
  playback.segmentFraction = 0.25;  // at X 1.5
  EXPECT_EQ(Now(17, 24), -0.3);
  EXPECT_EQ(Now(18, 24), 0);
  playback.segmentFraction = 0;
  EXPECT_EQ(Now(10, 24), 0);
}

TEST_F(CutSurfaceTest, TheSegmentInProgressMustCutAsAWholeOneDoes) {
  TwoCuts();
  playback.playHead = 2;
  playback.segmentFraction = 0.5;  // of the rapid
  EXPECT_EQ(Now(20, 29), 0);
  path.points[1].jump = true;
  ++path.generation;
  playback.playHead = 1;
  EXPECT_EQ(Now(12, 24), 0);
  path.points[1].jump = false;
  path.points[1].tool = 9;
  ++path.generation;
  EXPECT_EQ(Now(12, 24), 0);
}

TEST_F(CutSurfaceTest, OtherStockStartsAnew) {
  TwoCuts();
  EXPECT_EQ(Now(20, 24), -0.3);
  stockEnvelope.maxX = 9.6;  // samples two tenths apart in X
  EXPECT_EQ(Now(10, 24), -0.3);
  EXPECT_EQ(Now(20, 24), 0);
  stockEnvelope.bottom = -0.2;
  EXPECT_EQ(Now(10, 24), -0.2);
  stockEnvelope.top = 0.5;
  EXPECT_EQ(Now(40, 40), 0.5);
}

TEST_F(CutSurfaceTest, AnotherPathStartsAnew) {
  TwoCuts();
  EXPECT_EQ(Now(20, 24), -0.3);
  for (int i = 0; i < 2; ++i) path.points[i].y = 1;
  EXPECT_EQ(Now(20, 24), -0.3);  // nobody said so
  ++path.generation;
  EXPECT_EQ(Now(20, 24), 0);
  EXPECT_EQ(Now(20, 10), -0.3);
}

TEST_F(CutSurfaceTest, NeedsTheLayerAPathAndStock) {
  TwoCuts();
  ASSERT_NE(CutSurfaceNow(), nullptr);
  switches.showCutSurface = false;
  EXPECT_EQ(CutSurfaceNow(), nullptr);
  switches.showCutSurface = true;
  stockEnvelope.shown = false;
  EXPECT_EQ(CutSurfaceNow(), nullptr);
  stockEnvelope = kStock;
  stockEnvelope.bottom = stockEnvelope.top;
  EXPECT_EQ(CutSurfaceNow(), nullptr);
  stockEnvelope = kStock;
  path.count = 1;
  EXPECT_EQ(CutSurfaceNow(), nullptr);
}

// Every sample, every segment, no box around the way and nothing kept from frame to frame.
void ByDefinition(const MotionPath& of, std::int32_t head, const StockEnvelope& box,
                  CutSurface& out) {
  ClearSurface(out, box);
  for (int row = 0; row < kSurfaceSamples; ++row) {
    for (int column = 0; column < kSurfaceSamples; ++column) {
      const double x = box.minX + (box.maxX - box.minX) * column / 48;
      const double y = box.minY + (box.maxY - box.minY) * row / 48;
      for (std::int32_t i = 1; i < head; ++i) {
        const MotionPoint& a = of.points[i - 1];
        const MotionPoint& b = of.points[i];
        const int found = FindTool(b.tool);
        if (b.rapid || b.jump || found < 0) continue;
        const double radius = toolLibrary.tools[found].diameter / 2;
        const double length = std::hypot(b.x - a.x, b.y - a.y);
        double t = 1;
        if (length > 1e-6) {
          t = ((x - a.x) * (b.x - a.x) + (y - a.y) * (b.y - a.y)) / (length * length);
          t = t < 0 ? 0 : t > 1 ? 1 : t;
        }
        const double away = std::hypot(x - a.x - (b.x - a.x) * t, y - a.y - (b.y - a.y) * t);
        if (away > radius) continue;
        const ToolShape shape = ShapeOfTool(toolLibrary.tools[found].type);
        double z = a.z + (b.z - a.z) * t;
        if (shape == ToolShape::Ball) z += radius - std::sqrt(radius * radius - away * away);
        if (shape == ToolShape::Drill || shape == ToolShape::Chamfer) z += 0.6 * away;
        double& height = out.heights[row][column];
        height = std::min(height, std::max(z, box.bottom));
      }
    }
  }
}

TEST_F(CutSurfaceTest, GoesOnAsIfItHadBegunAnew) {
  AppendTool(Tool(1, u"End Mill", 0.37));
  AppendTool(Tool(2, u"Ball End Mill", 0.61));
  AppendTool(Tool(3, u"Drill", 0.29));
  AppendTool(Tool(4, u"Chamfer Mill", 0.83));
  stockEnvelope = {true, -1.3, 2.1, 0.2, 1.9, 0.1, -0.45, 0.55};
  std::mt19937 random(41);
  std::uniform_real_distribution<double> across(-2, 3), down(-0.6, 0.2), part(0, 1);
  for (int i = 0; i < 150; ++i) {
    MotionPoint& point = Feed(across(random), across(random), down(random));
    point.tool = static_cast<std::int32_t>(random() % 6);  // 0 and 5 are no tools
    point.rapid = random() % 5 == 0;
    point.jump = random() % 9 == 0;
    if (i > 0 && random() % 6 == 0) {
      point.x = path.points[i - 1].x;
      point.y = path.points[i - 1].y;
    }
  }
  playback.headInUse = true;
  CutSurface anew;
  for (int look = 0; look < 40; ++look) {
    const std::int32_t ahead = static_cast<std::int32_t>(random() % 12);
    const bool back = random() % 7 == 0;
    playback.playHead = std::clamp(playback.playHead % 150 + (back ? -ahead : ahead), 0, 150);
    playback.segmentFraction = part(random);
    ASSERT_NE(CutSurfaceNow(), nullptr);  // stamps the segment in progress, to be taken back
    playback.segmentFraction = 0;
    const CutSurface* const now = CutSurfaceNow();
    ByDefinition(path, playback.playHead, stockEnvelope, anew);
    for (int row = 0; row < kSurfaceSamples; ++row) {
      for (int column = 0; column < kSurfaceSamples; ++column) {
        ASSERT_NEAR(now->heights[row][column], anew.heights[row][column], kTiny)
            << playback.playHead << " at " << column << ", " << row;
      }
    }
    // To the last bit what a grid gets that starts at this head.
    const CutSurface kept = *now;
    ++path.generation;
    EXPECT_EQ(std::memcmp(CutSurfaceNow()->heights, kept.heights, sizeof kept.heights), 0);
  }
}

constexpr platform::Colour kMeshColour = 0x577B93;
std::size_t Lines(const headless::DrawCall& call) { return (call.numbers.size() - 3) / 4; }

TEST_F(CutSurfaceTest, LevelStockIsAMeshOfWholeLines) {
  TwoCuts();
  playback.playHead = 1;
  const std::vector<headless::DrawCall> calls = Calls("PaintSegments", kMeshColour);
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(Lines(calls[0]), 98u);
  EXPECT_TRUE(Shows(u"Approximate cut surface · 48 × 48 samples · library tool required"));
}

TEST_F(CutSurfaceTest, ASlotBreaksTheMeshWhereItsWallsStand) {
  TwoCuts();
  playback.playHead = 2;
  // Rows 23 to 25 are cut from column 8 to 32, rows 22 and 26 from 9 or 10 to 30 or 31: five lines
  // in place of one each, in X. Of the columns 8 to 32 each is cut in one stretch as well.
  EXPECT_EQ(Lines(Calls("PaintSegments", kMeshColour)[0]), 98u + 5 * 4 + 25 * 4);
}

TEST_F(CutSurfaceTest, WithTheLayerOffNothingIsDrawnOrSaid) {
  TwoCuts();
  switches.showCutSurface = false;
  EXPECT_TRUE(Calls("PaintSegments", kMeshColour).empty());
  for (const std::u16string& text : Texts()) EXPECT_EQ(text.find(u"cut surface"), text.npos);
}

}  // namespace
}  // namespace morva
