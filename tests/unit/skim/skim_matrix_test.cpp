// The code matrix, line by line.

#include "skim/geometry/skim_matrix.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/skim_plans.h"

namespace morva {
namespace {

using support::DrawnSkim;
using support::LinesOf;
using support::SmallSkim;
using Texts = std::vector<std::u16string>;

Texts Matrix(const SkimPlan& plan) { return LinesOf(SkimMatrixText(plan)); }
bool Holds(const SkimPlan& plan, std::u16string_view line) {
  const Texts lines = Matrix(plan);
  return std::find(lines.begin(), lines.end(), line) != lines.end();
}
bool HoldsPart(const SkimPlan& plan, std::u16string_view part) {
  return SkimMatrixText(plan).find(part) != std::u16string::npos;
}

TEST(SkimMatrix, SaysHowEachSettingLandsInTheCode) {
  EXPECT_EQ(Matrix(SmallSkim()), (Texts{
                                     u"LIVE SETTING -> CODE MATRIX (inch)",
                                     u"Alternate / continuous zigzag",
                                     u"Tool -> T5 M06 / G43 H5",
                                     u"Work offset -> G54",
                                     u"Stock X -> 0.0000 to 2.0000",
                                     u"Stock Y -> 0.0000 to 1.0000",
                                     u"Cutter diameter 1.0000 -> entry 0.6000 / exit 0.6000",
                                     u"X travel -> -0.6000 to 2.6000",
                                     u"Stepover 60.0000% -> Y step 0.6000 / rows 1.6667",
                                     u"Spindle -> S1500 M03",
                                     u"Cut feed -> G01 X/Y F12.0000",
                                     u"Plunge -> G01 Z... F4.0000",
                                     u"Surface Z -> 0.0000; pass increment 0.1250",
                                     u"Clearance 0.5000 -> G00 Z0.5000",
                                     u"Retract Z first, then G00 X0 Y0.",
                                     u"Pass-count mode -> passes 2",
                                     u"PASS    CUT       REMOVED       TARGET Z",
                                     u"1       0.1250    0.1250        -0.1250  M00",
                                     u"2       0.1250    0.2500        -0.2500  END",
                                     u"M00: Cycle Start continues the next pass.",
                                     u"Repeated coverage width 0.6000 / stepover direction +Y",
                                     u"Cutter OD coverage is illustrative; not material removal.",
                                 }));
}

TEST(SkimMatrix, OfASpiralTellsItsCircle) {
  SkimPlan plan;
  plan.strategy = kSkimSpiral;
  plan.xMax = 6;
  const Texts lines = Matrix(plan);
  EXPECT_EQ(lines[1], u"Circular spiral inward");
  EXPECT_EQ(lines[2], u"Circular diameter 4.0000 / radial step per turn 0.6000");
  EXPECT_EQ(lines[3], u"Inscribed circle only; rectangle corners are not faced.");
  EXPECT_EQ(lines[4], u"Outer cleanup circle then CCW spiral to center; G01 segments.");
  EXPECT_FALSE(HoldsPart(plan, u"X travel"));
  EXPECT_TRUE(Holds(plan, u"Repeated coverage width 0.6000 / radial step inward"));
}

TEST(SkimMatrix, TellsOfTheWayBackInOneDirection) {
  constexpr char16_t kWay[] = u"Each row: G00 Z safe -> G00 XY start -> G01 Z plunge.";
  SkimPlan plan = SmallSkim();
  for (std::int32_t strategy = 0; strategy < kSkimCustom; ++strategy) {
    plan.strategy = strategy;
    EXPECT_EQ(Holds(plan, kWay), strategy == 1 || strategy == 2) << strategy;
  }
}

TEST(SkimMatrix, NamesUnitModeAndRest) {
  SkimPlan plan = SmallSkim();
  plan.metric = true;
  plan.useTotalDepth = true;
  plan.totalDepth = 0.3;
  plan.zTop = 10;
  EXPECT_EQ(Matrix(plan)[0], u"LIVE SETTING -> CODE MATRIX (mm)");
  EXPECT_TRUE(Holds(plan, u"Total-removal mode -> passes 3 / removal 0.3000"));
  EXPECT_TRUE(Holds(plan, u"3       0.0500    0.3000        9.7000  END"));
}

TEST(SkimMatrix, ListsAHundredPasses) {
  SkimPlan plan = SmallSkim();
  plan.passCount = 100;
  const Texts lines = Matrix(plan);
  EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                          [](const auto& line) { return line.ends_with(u"  M00"); }),
            99);
  EXPECT_TRUE(Holds(plan, u"100     0.1250    12.5000       -12.5000  END"));
}

TEST(SkimMatrix, KeepsLongNumbersApart) {
  SkimPlan plan = SmallSkim();
  plan.depthPerPass = 12345.5;
  EXPECT_TRUE(Holds(plan, u"2       12345.5000 24691.0000   -24691.0000  END"));
}

TEST(SkimMatrix, OfADrawnLineTellsNoDirection) {
  EXPECT_TRUE(Holds(DrawnSkim(1), u"Repeated coverage width 0.6000"));
}

TEST(SkimMatrix, OfARefusedPlanSaysWhatToDo) {
  SkimPlan plan = SmallSkim();
  plan.rpm = 0;
  EXPECT_EQ(SkimMatrixText(plan),
            u"Complete valid numeric inputs to update the preview.\r\n"
            u"Check stock bounds, positive feeds/depths, stepover 0-100%, and the active pass "
            u"plan.");
}

}  // namespace
}  // namespace morva
