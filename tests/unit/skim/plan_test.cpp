// The plan's record, its fields and its unit.

#include "skim/model/plan.h"

#include <gtest/gtest.h>

#include <set>

#include "support/skim_plans.h"

namespace morva {
namespace {

TEST(SkimPlan, StartsAsAFourInchSquare) {
  const SkimPlan plan;
  const double values[kSkimFields] = {0,  54, 0, 0,     4, 4, 1,   60,  1500,
                                      12, 4,  0, 0.125, 1, 3, 0.5, 0.6, 0.6};
  for (int field = 0; field < kSkimFields; ++field) {
    EXPECT_EQ(SkimValue(plan, field), values[field]) << field;
  }
  EXPECT_EQ(plan.strategy, kSkimZigzag);
  EXPECT_EQ(plan.stockThickness, 0.5);
  EXPECT_FALSE(plan.metric || plan.useTotalDepth);
  EXPECT_EQ(plan.centerline.count, 0);
  EXPECT_EQ(support::FaultOfSkim(plan), u"");
}

TEST(SkimPlan, ShowsFourDecimalsAndWholeNumbersWithoutAny) {
  SkimPlan plan;
  plan.depthPerPass = 0.12345;
  EXPECT_EQ(SkimText(plan, kSkimDepthPerPass), u"0.1235");
  EXPECT_EQ(SkimText(plan, kSkimTool), u"0");
  EXPECT_EQ(SkimText(plan, kSkimWorkOffset), u"54");
  EXPECT_EQ(SkimText(plan, kSkimRpm), u"1500");
  EXPECT_EQ(SkimText(plan, kSkimPassCount), u"3");
  EXPECT_EQ(SkimText(plan, kSkimStepover), u"60.0000");
}

TEST(SkimPlan, LabelsEveryFieldOnce) {
  std::set<std::u16string> labels;
  for (int field = 0; field < kSkimFields; ++field) labels.insert(SkimRow(field).label);
  EXPECT_EQ(labels.size(), 18u);
  EXPECT_EQ(SkimRow(kSkimStepover).label, std::u16string(u"Stepover (% of diameter)"));
  EXPECT_EQ(SkimRow(kSkimClearance).label, std::u16string(u"Safe clearance"));
}

TEST(SkimPlan, NamesItsStrategies) {
  EXPECT_EQ(SkimStrategyNames().size(), 9u);
  EXPECT_EQ(SkimStrategyName(3), u"Circular spiral inward");
  EXPECT_EQ(SkimStrategyName(7), u"Alternate X/Y \u00b7 left then down");
  EXPECT_EQ(SkimStrategyName(-1), u"");
  EXPECT_EQ(SkimStrategyName(9), u"");
}

TEST(SkimPlan, TakesAllLengthsAndFeedsIntoAnotherUnit) {
  SkimPlan plan = support::DrawnSkim(1);
  plan.centerline.segments[0] = support::SkimLine(1, 2, 3, 45);
  plan.centerline.segments[0].size2 = 4;
  ConvertSkimPlan(plan, true);
  EXPECT_TRUE(plan.metric);
  const std::set<int> kept = {kSkimTool, kSkimWorkOffset, kSkimStepover, kSkimRpm, kSkimPassCount};
  for (int field = 0; field < kSkimFields; ++field) {
    const double before = SkimValue(support::SmallSkim(), field);
    EXPECT_DOUBLE_EQ(SkimValue(plan, field), before * (kept.count(field) ? 1 : 25.4)) << field;
  }
  EXPECT_DOUBLE_EQ(plan.stockThickness, 12.7);
  const SketchObject& line = plan.centerline.segments[0];
  EXPECT_DOUBLE_EQ(line.x, 25.4);
  EXPECT_DOUBLE_EQ(line.y, 50.8);
  EXPECT_DOUBLE_EQ(line.size, 76.2);
  EXPECT_DOUBLE_EQ(line.size2, 101.6);
  EXPECT_EQ(line.angle, 45);
  const SkimPlan metric = plan;
  ConvertSkimPlan(plan, true);
  EXPECT_EQ(plan.xMax, metric.xMax);
  ConvertSkimPlan(plan, false);
  EXPECT_FALSE(plan.metric);
  EXPECT_NEAR(plan.feed, 12, 1e-12);
}

TEST(SkimPlan, MovesTheStockAndKeepsItsSize) {
  SkimPlan plan = support::SmallSkim();
  PlaceSkimStock(plan, -3, 5, 0.25);
  EXPECT_EQ(plan.xMin, -3);
  EXPECT_EQ(plan.xMax, -1);
  EXPECT_EQ(plan.yMin, 5);
  EXPECT_EQ(plan.yMax, 6);
  EXPECT_EQ(plan.zTop, 0.25);
}

TEST(SkimPlan, IsOneForTheApplication) {
  SetSkimPlan(support::SmallSkim());
  EXPECT_EQ(skimPlan.tool, 5);
  ResetSkimPlan();
  EXPECT_EQ(skimPlan.tool, 0);
  EXPECT_EQ(skimPlan.xMax, 4);
}

}  // namespace
}  // namespace morva
