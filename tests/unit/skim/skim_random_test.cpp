// Random plans that pass: where their cutter may be, whatever the strategy, told from the code
// alone and from the points that the toolpath view reads out of it.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "documents/feature_blocks.h"
#include "library/units.h"
#include "simulator/control_stock.h"
#include "simulator/extract.h"
#include "simulator/motion_path.h"
#include "simulator/stock_envelope.h"
#include "skim/model/plan_measures.h"
#include "skim/model/plan_record.h"
#include "support/skim_plans.h"
#include "support/stage.h"
#include "text/codetext.h"
#include "unit/simulator/control_fixture.h"

namespace morva {
namespace {

constexpr double kPrinted = 0.000051;  // half a unit of the fourth decimal, and a bit
constexpr double kPlunging = 0.0006;   // of the third

struct Place {
  double x = 0, y = 0, z = 0;
};

struct Move {
  bool rapid = false;
  Place from;
  Place to;
  double feed = 0;
  int line = 0;
};

// A pass as its code says it.
struct Pass {
  double removed = 0;
  double target = 0;
  std::vector<Move> moves;
};

struct Code {
  std::vector<Pass> passes;
  std::vector<Place> places;  // all that are reached, each once in a row
};

double Behind(const std::u16string& line, std::u16string_view label) {
  const std::size_t at = line.find(label);
  return at == line.npos ? NAN : ParseDecimal(line.substr(at + label.size()), NAN);
}

Code Read(const std::u16string& text) {
  Code code;
  code.places.emplace_back();
  Place at;
  const std::vector<std::u16string> lines = support::LinesOf(text);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::u16string& line = lines[i];
    if (line.starts_with(u"(PASS ")) {
      code.passes.push_back({Behind(line, u"REMOVED "), Behind(line, u"TARGET Z "), {}});
    }
    if (!line.starts_with(u"G00") && !line.starts_with(u"G01")) continue;
    Move move{line.starts_with(u"G00"), at, at, Behind(line, u" F"), static_cast<int>(i)};
    if (line.find(u'X') != line.npos) move.to.x = Behind(line, u"X");
    if (line.find(u'Y') != line.npos) move.to.y = Behind(line, u"Y");
    if (line.find(u'Z') != line.npos) move.to.z = Behind(line, u"Z");
    at = move.to;
    if (!code.passes.empty()) code.passes.back().moves.push_back(move);
    const Place& last = code.places.back();
    if (at.x != last.x || at.y != last.y || at.z != last.z) code.places.push_back(at);
  }
  return code;
}

using Random = std::mt19937;

double Between(Random& random, double least, double most) {
  return std::uniform_real_distribution<double>(least, most)(random);
}
int Below(Random& random, int count) {
  return static_cast<int>(random() % static_cast<unsigned>(count));
}

SkimPlan AnyPlan(Random& random) {
  SkimPlan plan;
  plan.strategy = Below(random, kSkimStrategies);
  plan.metric = Below(random, 2) == 1;
  plan.xMin = Between(random, -20, 20);
  plan.yMin = Between(random, -20, 20);
  plan.xMax = plan.xMin + Between(random, 0.01, 15);
  plan.yMax = plan.yMin + Between(random, 0.01, 15);
  plan.diameter = Between(random, 0.2, 4);
  plan.stepoverPercent = Below(random, 3) == 0 ? 100 : Between(random, 20, 100);
  plan.rpm = 1 + Below(random, 9000);
  plan.feed = Between(random, 20, 400);
  plan.plunge = Between(random, 1, 15);
  plan.zTop = Below(random, 2) == 0 ? 0 : Between(random, -3, 3);
  plan.depthPerPass = Between(random, 0.01, 0.5);
  plan.useTotalDepth = Below(random, 2) == 1;
  plan.totalDepth = Between(random, 0.001, 2);
  plan.passCount = 1 + Below(random, 5);
  plan.clearance = Between(random, 0.0001, 2);
  plan.tool = Below(random, 4);
  plan.workOffset = 54 + Below(random, 6);
  plan.entry = Below(random, 3) == 0 ? 0 : Between(random, 0, 3);
  plan.exit = Below(random, 3) == 0 ? 0 : Between(random, 0, 3);
  plan.centerline.count = 1 + Below(random, 20);
  for (int i = 0; i < plan.centerline.count; ++i) {
    plan.centerline.segments[i] =
        support::SkimLine(Between(random, -9, 9), Between(random, -9, 9), Between(random, 0, 9),
                          Between(random, -360, 360));
  }
  return plan;
}

// Moves across go at the safe plane, cuts at the pass's own depth, plunges straight down.
void ExpectSafeMoves(const SkimPlan& plan, const Pass& pass) {
  const double safe = plan.zTop + plan.clearance;
  for (const Move& move : pass.moves) {
    const bool across = move.from.x != move.to.x || move.from.y != move.to.y;
    const bool level = move.from.z == move.to.z;
    if (move.rapid) {
      EXPECT_NEAR(move.to.z, safe, kPrinted) << move.line;
      EXPECT_TRUE(level || !across) << move.line;
    } else if (level) {
      EXPECT_NEAR(move.to.z, pass.target, 0) << move.line;
      EXPECT_NEAR(move.feed, plan.feed, kPlunging) << move.line;
    } else {
      EXPECT_FALSE(across) << move.line;
      EXPECT_EQ(move.to.z, pass.target) << move.line;
      EXPECT_NEAR(move.feed, plan.plunge, kPlunging) << move.line;
    }
  }
}

void ExpectEndAtZero(const SkimPlan& plan, const Pass& pass) {
  const Move& last = pass.moves.back();
  EXPECT_TRUE(last.rapid);
  EXPECT_EQ(last.to.x, 0);
  EXPECT_EQ(last.to.y, 0);
  EXPECT_NEAR(last.to.z, plan.zTop + plan.clearance, kPrinted);
}

void ExpectDepths(const SkimPlan& plan, const Code& code) {
  const double total = plan.useTotalDepth ? plan.totalDepth : plan.passCount * plan.depthPerPass;
  double before = 0;
  for (const Pass& pass : code.passes) {
    EXPECT_GT(pass.removed, before - kPrinted);
    EXPECT_LE(pass.removed - before, plan.depthPerPass + 2 * kPrinted);
    EXPECT_NEAR(pass.target, plan.zTop - pass.removed, 2 * kPrinted);
    EXPECT_GE(pass.target, plan.zTop - total - kPrinted);
    before = pass.removed;
  }
  EXPECT_NEAR(before, total, kPrinted);
}

struct Box {
  double xMin, yMin, xMax, yMax;
};

bool AlongY(const SkimPlan& plan, std::size_t pass) {
  return plan.strategy >= 4 && plan.strategy <= 7 && pass % 2 == 1;
}

// Where a raster may cut in a pass, the first being 0.
Box RasterBox(const SkimPlan& plan, std::size_t pass) {
  if (AlongY(plan, pass)) {
    return {plan.xMin, plan.yMin - plan.entry, plan.xMax, plan.yMax + plan.exit};
  }
  return {plan.xMin - plan.entry, plan.yMin, plan.xMax + plan.exit, plan.yMax};
}

bool IsCut(const Move& move) { return !move.rapid && move.from.z == move.to.z; }

// Rows begin at one edge and end at the other, no farther apart than a step.
void ExpectRaster(const SkimPlan& plan, std::size_t index, const Pass& pass) {
  const Box box = RasterBox(plan, index);
  const bool alongY = AlongY(plan, index);
  const double step = plan.diameter * plan.stepoverPercent / 100;
  double row = alongY ? box.xMin : box.yMin;
  for (const Move& move : pass.moves) {
    if (!IsCut(move)) continue;
    EXPECT_GE(move.to.x, box.xMin - kPrinted) << move.line;
    EXPECT_LE(move.to.x, box.xMax + kPrinted) << move.line;
    EXPECT_GE(move.to.y, box.yMin - kPrinted) << move.line;
    EXPECT_LE(move.to.y, box.yMax + kPrinted) << move.line;
    const double here = alongY ? move.to.x : move.to.y;
    EXPECT_GE(here, row - kPrinted) << move.line;
    EXPECT_LE(here - row, step + 2 * kPrinted) << move.line;
    row = here;
  }
  EXPECT_NEAR(row, alongY ? box.xMax : box.yMax, kPrinted);
}

// Never outside of the circle but for the way in, ever nearer to the middle once around.
void ExpectSpiral(const SkimPlan& plan, const Pass& pass) {
  const double x = (plan.xMin + plan.xMax) / 2;
  const double y = (plan.yMin + plan.yMax) / 2;
  const double radius = std::min(plan.xMax - plan.xMin, plan.yMax - plan.yMin) / 2;
  const double step = plan.diameter * plan.stepoverPercent / 100;
  double turned = 0;
  double before = radius;
  double angle = 0;
  bool first = true;
  for (const Move& move : pass.moves) {
    if (!IsCut(move)) continue;
    const double distance = std::hypot(move.to.x - x, move.to.y - y);
    EXPECT_LE(distance, radius + 2 * kPrinted) << move.line;
    EXPECT_LE(distance, before + 4 * kPrinted) << move.line;
    if (!first && distance > 0.05 && before > 0.05) {
      const double now = std::atan2(move.to.y - y, move.to.x - x);
      turned += std::remainder(now - angle, 2 * 3.14159265358979);
      angle = now;
      // A turn around, then inwards by a step a turn.
      const double inwards = std::max(0.0, turned / 6.28318530718 - 1) * step;
      EXPECT_NEAR(distance, radius - inwards, 0.01 + step / 70) << move.line;
    }
    first = false;
    before = distance;
  }
  EXPECT_NEAR(before, 0, 3 * kPrinted);
}

void ExpectCenterline(const SkimPlan& plan, const Pass& pass) {
  std::int32_t segment = 0;
  for (const Move& move : pass.moves) {
    if (!IsCut(move)) continue;
    ASSERT_LT(segment, plan.centerline.count);
    const SketchObject& line = plan.centerline.segments[segment++];
    const double angle = line.angle * 3.14159265358979323 / 180;
    EXPECT_NEAR(move.from.x, line.x, kPrinted) << move.line;
    EXPECT_NEAR(move.from.y, line.y, kPrinted) << move.line;
    EXPECT_NEAR(move.to.x, line.x + line.size * std::cos(angle), kPrinted) << move.line;
    EXPECT_NEAR(move.to.y, line.y + line.size * std::sin(angle), kPrinted) << move.line;
  }
  EXPECT_EQ(segment, plan.centerline.count);
}

void ExpectSamePoints(const SkimPlan& plan, const std::u16string& text, const Code& code) {
  ExtractInto(path, text, {.metric = plan.metric});
  const int most = std::min(static_cast<int>(code.places.size()), kMaxMotionPoints);
  ASSERT_EQ(path.count, most);
  for (int i = 0; i < most; ++i) {
    const Place& place = code.places[static_cast<std::size_t>(i)];
    ASSERT_EQ(path.points[i].x, place.x) << i;
    ASSERT_EQ(path.points[i].y, place.y) << i;
    ASSERT_EQ(path.points[i].z, place.z) << i;
  }
  EmptyPath(path);
}

TEST(SkimRandom, PlansKeepToTheirBounds) {
  Random random(1905);
  int tried = 0;
  int seen[kSkimStrategies] = {};
  while (tried < 900) {
    const SkimPlan plan = AnyPlan(random);
    if (!support::FaultOfSkim(plan).empty()) continue;
    SCOPED_TRACE("plan " + std::to_string(tried) + ", strategy " + std::to_string(plan.strategy));
    const std::u16string text = support::SkimCode(plan);
    const Code code = Read(text);
    ASSERT_EQ(static_cast<int>(code.passes.size()), PassCount(plan));
    ExpectDepths(plan, code);
    for (std::size_t i = 0; i < code.passes.size(); ++i) {
      const Pass& pass = code.passes[i];
      ExpectSafeMoves(plan, pass);
      ExpectEndAtZero(plan, pass);
      if (plan.strategy == kSkimSpiral) {
        ExpectSpiral(plan, pass);
      } else if (plan.strategy == kSkimCustom) {
        ExpectCenterline(plan, pass);
      } else {
        ExpectRaster(plan, i, pass);
      }
    }
    ExpectSamePoints(plan, text, code);
    ASSERT_FALSE(testing::Test::HasFailure());
    ++tried;
    ++seen[plan.strategy];
  }
  for (const int count : seen) EXPECT_GT(count, 20);
}

// The stock that the block tells, and the code beside it: no plan runs into its own stock by rapid.
TEST(SkimRandom, PlansRunIntoTheirOwnStockByFeedAlone) {
  Random random(2026);
  int tried = 0;
  int tools = 0;
  while (tried < 250) {
    const SkimPlan plan = AnyPlan(random);
    if (!support::FaultOfSkim(plan).empty()) continue;
    SCOPED_TRACE("plan " + std::to_string(tried) + ", strategy " + std::to_string(plan.strategy));
    SetUnits(plan.metric);
    features.count = 1;
    features.rows[0] = FeatureRecord{};
    StoreSkimPlan(plan, features.rows[0].settings);
    std::int32_t workOffset = 0;
    KnownStock stock;
    stock.box = StockOfSkim(workOffset);
    ASSERT_TRUE(stock.box.shown);
    EXPECT_EQ(workOffset, plan.workOffset);
    stock.workRow = workOffset - 53;
    stock.toolCount = 1;
    stock.tools[0] = {plan.tool, ToolShape::Flat, plan.diameter / 2, ToolCut::Centre};
    // Tool 0 is the machine's own, which nobody describes.
    tools += plan.tool > 0 ? 1 : 0;
    const std::u16string text = (plan.tool > 0 ? u"T" + IntegerText(plan.tool) + u" M6\r\n" : u"") +
                                support::SkimCode(plan);
    const ControlTrack& track =
        control_test::RunText(text, {.metric = plan.metric, .stock = &stock});
    for (const Finding kind : {Finding::RapidInStock, Finding::RapidBelowTop,
                               Finding::CutBelowStock, Finding::PlungeNoCentre}) {
      EXPECT_EQ(track.findings.ofKind[static_cast<int>(kind)], 0) << control_test::Found(track);
    }
    ASSERT_FALSE(testing::Test::HasFailure()) << support::Narrow(text);
    ++tried;
  }
  EXPECT_GT(tools, 100);
  features.count = 0;
  ResetUnits();
}

}  // namespace
}  // namespace morva
