// The guided skim's counts, full and one beyond.

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "app/limits.h"
#include "skim/model/centerline.h"
#include "skim/model/plan_measures.h"
#include "support/skim_plans.h"

namespace morva {
namespace {

constexpr char16_t kRows[] =
    u"Limit the plan to 100 depth passes, 1000 raster rows, and 20000 total rows.";

std::ptrdiff_t LinesWith(const SkimPlan& plan, std::u16string_view head) {
  const std::vector<std::u16string> lines = support::LinesOf(support::SkimCode(plan));
  return std::count_if(lines.begin(), lines.end(),
                       [&](const auto& line) { return line.starts_with(head); });
}

// Rows of 1 inch.
SkimPlan Rows(double height, double passes) {
  SkimPlan plan = support::SmallSkim();
  plan.stepoverPercent = 100;
  plan.yMax = height;
  plan.passCount = passes;
  return plan;
}

TEST(SkimLimits, AHundredPasses) {
  static_assert(kMaxSkimPasses == 100);
  SkimPlan plan = support::SmallSkim();
  plan.useTotalDepth = true;
  plan.totalDepth = 12.5;
  EXPECT_EQ(LinesWith(plan, u"(PASS "), 100);
  plan.totalDepth = 12.51;
  EXPECT_EQ(support::FaultOfSkim(plan), u"Limit the plan to 100 depth passes.");
}

// Two rows are kept back for the first one and the last.
TEST(SkimLimits, AThousandRowsOfAPass) {
  static_assert(kMaxSkimRasterRows == 1000);
  EXPECT_EQ(LinesWith(Rows(998, 1), u"G01 X"), 999);
  EXPECT_EQ(LinesWith(Rows(997.5, 1), u"G01 X"), 999);
  EXPECT_EQ(support::FaultOfSkim(Rows(999, 1)), kRows);
}

TEST(SkimLimits, TwentyThousandRows) {
  static_assert(kMaxSkimRows == 20000);
  EXPECT_EQ(LinesWith(Rows(198, 100), u"G01 X"), 19900);
  EXPECT_EQ(support::FaultOfSkim(Rows(199, 100)), kRows);
  EXPECT_EQ(LinesWith(Rows(998, 20), u"G01 X"), 19980);
  EXPECT_EQ(support::FaultOfSkim(Rows(998, 21)), kRows);
}

// A radius of 2 takes 141 segments a turn, and with a step of 0.6 a spiral of 471: a pass has 613
// points, and 10 more are kept back for what is around them.
TEST(SkimLimits, ThirtyThousandPointsOfASpiral) {
  static_assert(kMaxSpiralPoints == 30000);
  SkimPlan plan;
  plan.strategy = kSkimSpiral;
  plan.passCount = 48;
  EXPECT_EQ(LinesWith(plan, u"G01 X"), 48 * (1 + 141 + 471));
  plan.passCount = 49;
  EXPECT_EQ(support::FaultOfSkim(plan),
            u"Spiral exceeds 30000 motion points. Increase stepover or reduce passes / diameter "
            u"of the area.");
}

TEST(SkimLimits, NinetyFiveSegments) {
  static_assert(kMaxSkimSegments == 95 && kMaxSkimSegments == kMaxItems - 1);
  const std::vector<SketchObject> lines(96, support::SkimLine(0, 0, 1, 0));
  const unsigned char hidden[kMaxItems] = {};
  SkimPlan plan = support::DrawnSkim(1);
  EXPECT_EQ(TakeCenterline(std::span(lines).first(95), hidden, 1, plan.centerline), nullptr);
  EXPECT_EQ(plan.centerline.count, 95);
  EXPECT_EQ(LinesWith(plan, u"G01 X"), 2 * 95);
  plan.centerline.count = 1;
  const char16_t* words = TakeCenterline(lines, hidden, 1, plan.centerline);
  ASSERT_NE(words, nullptr);
  EXPECT_EQ(std::u16string(words), u"Limit the custom path to 95 line segments.");
  EXPECT_EQ(plan.centerline.count, 1);
}

}  // namespace
}  // namespace morva
