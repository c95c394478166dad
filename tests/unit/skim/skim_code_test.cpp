// The code of a skim, against texts written out by hand.

#include "skim/geometry/skim_code.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "skim/model/plan_measures.h"
#include "skim/model/spiral_counts.h"
#include "support/skim_plans.h"

namespace morva {
namespace {

using support::DrawnSkim;
using support::LinesOf;
using support::SkimCode;
using support::SkimLine;
using support::SmallSkim;
using support::WithCrLf;

using Texts = std::vector<std::u16string>;

// Two inches by one, two passes, rows at 0, 0.6 and 1.
TEST(SkimCode, OfAZigzagInTwoPasses) {
  EXPECT_EQ(SkimCode(SmallSkim()), WithCrLf(u"\n"
                                            "(WIZARD: GUIDED SKIM / FACE)\n"
                                            "(STRATEGY: Alternate / continuous zigzag)\n"
                                            "G20\n"
                                            "G90 G17 G94 G40 G80\n"
                                            "T5 M06\n"
                                            "G54\n"
                                            "G00 G43 H5 Z0.5000\n"
                                            "(PASS 1 TOTAL REMOVED 0.1250 TARGET Z -0.1250)\n"
                                            "G20\n"
                                            "G90 G17 G94 G40 G80\n"
                                            "G54\n"
                                            "S1500 M03\n"
                                            "M08\n"
                                            "G00 Z0.5000\n"
                                            "G00 X-0.6000 Y0.0000\n"
                                            "G01 Z-0.1250 F4.000\n"
                                            "G01 X2.6000 F12.000\n"
                                            "G01 Y0.6000 F12.000\n"
                                            "G01 X-0.6000 F12.000\n"
                                            "G01 Y1.0000 F12.000\n"
                                            "G01 X2.6000 F12.000\n"
                                            "G00 Z0.5000\n"
                                            "G00 X0.0000 Y0.0000\n"
                                            "M09\n"
                                            "M05\n"
                                            "(NEXT CUT 0.1250 TOTAL 0.2500 Z -0.2500)\n"
                                            "M00 (CYCLE START FOR NEXT PASS)\n"
                                            "(PASS 2 TOTAL REMOVED 0.2500 TARGET Z -0.2500)\n"
                                            "G20\n"
                                            "G90 G17 G94 G40 G80\n"
                                            "G54\n"
                                            "S1500 M03\n"
                                            "M08\n"
                                            "G00 Z0.5000\n"
                                            "G00 X-0.6000 Y0.0000\n"
                                            "G01 Z-0.2500 F4.000\n"
                                            "G01 X2.6000 F12.000\n"
                                            "G01 Y0.6000 F12.000\n"
                                            "G01 X-0.6000 F12.000\n"
                                            "G01 Y1.0000 F12.000\n"
                                            "G01 X2.6000 F12.000\n"
                                            "G00 Z0.5000\n"
                                            "G00 X0.0000 Y0.0000\n"
                                            "M09\n"
                                            "M05\n"
                                            "(END GUIDED SKIM - AT XY ZERO AND SAFE Z)\n"));
}

// Lines that begin with these words, in their order.
Texts LinesWith(const SkimPlan& plan, std::u16string_view head) {
  Texts found;
  for (const std::u16string& line : LinesOf(SkimCode(plan))) {
    if (line.starts_with(head)) found.push_back(line);
  }
  return found;
}

// The cuts of the first pass: what stands between its plunge and its retract.
Texts FirstPass(const SkimPlan& plan) {
  const Texts lines = LinesOf(SkimCode(plan));
  const auto plunge = std::find_if(lines.begin(), lines.end(), [](const std::u16string& line) {
    return line.starts_with(u"G01 Z");
  });
  const auto zero = std::find(plunge, lines.end(), u"G00 X0.0000 Y0.0000");
  return {plunge + 1, zero - 1};
}

SkimPlan OnePass(std::int32_t strategy) {
  SkimPlan plan = SmallSkim();
  plan.strategy = strategy;
  plan.passCount = 1;
  return plan;
}

TEST(SkimCode, OfTheMachinesOwnToolChangesNoTool) {
  SkimPlan plan = SmallSkim();
  plan.tool = 0;
  const Texts lines = LinesOf(SkimCode(plan));
  EXPECT_EQ(lines[5], u"(T0: KEEP CURRENT TOOL AND ACTIVE LENGTH OFFSET)");
  EXPECT_EQ(lines[6], u"G54");
  EXPECT_EQ(lines[7], u"G00 Z0.5000");
  EXPECT_EQ(SkimCode(plan).find(u"M06"), std::u16string::npos);
  EXPECT_EQ(SkimCode(plan).find(u"G43"), std::u16string::npos);
}

TEST(SkimCode, OfOnePassStopsNowhere) {
  const std::u16string code = SkimCode(OnePass(kSkimZigzag));
  EXPECT_EQ(code.find(u"M00"), std::u16string::npos);
  EXPECT_EQ(code.find(u"NEXT CUT"), std::u16string::npos);
}

TEST(SkimCode, ShortensTheLastPass) {
  SkimPlan plan = SmallSkim();
  plan.useTotalDepth = true;
  plan.totalDepth = 0.3;
  EXPECT_EQ(LinesWith(plan, u"(PASS "), (Texts{u"(PASS 1 TOTAL REMOVED 0.1250 TARGET Z -0.1250)",
                                               u"(PASS 2 TOTAL REMOVED 0.2500 TARGET Z -0.2500)",
                                               u"(PASS 3 TOTAL REMOVED 0.3000 TARGET Z -0.3000)"}));
  EXPECT_EQ(LinesWith(plan, u"(NEXT CUT "), (Texts{u"(NEXT CUT 0.1250 TOTAL 0.2500 Z -0.2500)",
                                                   u"(NEXT CUT 0.0500 TOTAL 0.3000 Z -0.3000)"}));
}

TEST(SkimCode, RetractsAboveTheSurfaceAndReturnsToZero) {
  SkimPlan plan = OnePass(kSkimZigzag);
  plan.zTop = 0.25;
  EXPECT_EQ(LinesWith(plan, u"G00 Z"), (Texts{u"G00 Z0.7500", u"G00 Z0.7500"}));
  EXPECT_EQ(LinesWith(plan, u"G00 G43"), Texts{u"G00 G43 H5 Z0.7500"});
  EXPECT_EQ(LinesWith(plan, u"G00 X").back(), u"G00 X0.0000 Y0.0000");
}

TEST(SkimCode, InMillimetresHasTheSameDecimals) {
  SkimPlan plan = SmallSkim();
  ConvertSkimPlan(plan, true);
  EXPECT_EQ(FirstPass(plan)[0], u"G01 X66.0400 F304.800");
  EXPECT_EQ(LinesOf(SkimCode(plan))[3], u"G21");
}

TEST(SkimCode, KeepsTheSignOfANumberThatRoundsToZero) {
  SkimPlan plan = OnePass(kSkimZigzag);
  plan.xMin = -0.00001;
  plan.entry = 0;
  EXPECT_EQ(LinesWith(plan, u"G00 X")[0], u"G00 X-0.0000 Y0.0000");
}

TEST(SkimCode, SaysTheDirectionOfCrossingPasses) {
  SkimPlan plan = SmallSkim();
  plan.strategy = kSkimRightUp;
  plan.passCount = 3;
  EXPECT_EQ(LinesWith(plan, u"(X D"), (Texts{u"(X DIRECTION PASS)", u"(X DIRECTION PASS)"}));
  EXPECT_EQ(LinesWith(plan, u"(Y D"), Texts{u"(Y DIRECTION PASS)"});
  const std::u16string code = SkimCode(plan);
  EXPECT_LT(code.find(u"(X D"), code.find(u"(Y D"));
  EXPECT_LT(code.find(u"(Y D"), code.rfind(u"(X D"));
}

TEST(SkimRows, LieAStepApartAndEndAtTheEdge) {
  EXPECT_EQ(FirstPass(OnePass(kSkimZigzag)),
            (Texts{u"G01 X2.6000 F12.000", u"G01 Y0.6000 F12.000", u"G01 X-0.6000 F12.000",
                   u"G01 Y1.0000 F12.000", u"G01 X2.6000 F12.000"}));
}

TEST(SkimRows, OfAMultipleOfTheStepHaveNoneTooMuch) {
  SkimPlan plan = OnePass(kSkimZigzag);
  plan.yMax = 1.8;  // three steps of 0.6
  EXPECT_EQ(LinesWith(plan, u"G01 Y"),
            (Texts{u"G01 Y0.6000 F12.000", u"G01 Y1.2000 F12.000", u"G01 Y1.8000 F12.000"}));
}

TEST(SkimRows, OfAStockBelowTheCutterAreItsTwoEdges) {
  SkimPlan plan = OnePass(kSkimZigzag);
  plan.stepoverPercent = 100;
  plan.yMax = 0.75;
  EXPECT_EQ(FirstPass(plan),
            (Texts{u"G01 X2.6000 F12.000", u"G01 Y0.7500 F12.000", u"G01 X-0.6000 F12.000"}));
}

TEST(SkimRows, WithoutEntryAndExitRunFromEdgeToEdge) {
  SkimPlan plan = OnePass(kSkimLeftToRight);
  plan.entry = plan.exit = 0;
  EXPECT_EQ(LinesWith(plan, u"G00 X")[0], u"G00 X0.0000 Y0.0000");
  EXPECT_EQ(FirstPass(plan)[0], u"G01 X2.0000 F12.000");
}

TEST(SkimRows, InOneDirectionGoBackAboveTheStock) {
  EXPECT_EQ(FirstPass(OnePass(kSkimRightToLeft)),
            (Texts{u"G01 X-0.6000 F12.000", u"G00 Z0.5000", u"G00 X2.6000 Y0.6000",
                   u"G01 Z-0.1250 F4.000", u"G01 X-0.6000 F12.000", u"G00 Z0.5000",
                   u"G00 X2.6000 Y1.0000", u"G01 Z-0.1250 F4.000", u"G01 X-0.6000 F12.000"}));
}

TEST(SkimRows, OfLeftThenUpCrossFromTheBottomLeft) {
  SkimPlan plan = SmallSkim();
  plan.strategy = kSkimLeftUp;
  EXPECT_EQ(LinesWith(plan, u"G00 X"), (Texts{u"G00 X2.6000 Y0.0000", u"G00 X0.0000 Y0.0000",
                                              u"G00 X0.0000 Y-0.6000", u"G00 X0.0000 Y0.0000"}));
}

// Even passes begin at the top of strategies 6 and 7, at the bottom of 4 and 5; odd ones at the
// right of 5 and 7, at the left of 4 and 6.
TEST(SkimRows, OfCrossingPassesBeginAtTheirFourCorners) {
  const struct {
    std::int32_t strategy;
    const char16_t *odd, *even;
  } starts[] = {{4, u"G00 X-0.6000 Y0.0000", u"G00 X0.0000 Y-0.6000"},
                {5, u"G00 X2.6000 Y0.0000", u"G00 X0.0000 Y-0.6000"},
                {6, u"G00 X-0.6000 Y0.0000", u"G00 X0.0000 Y1.6000"},
                {7, u"G00 X2.6000 Y0.0000", u"G00 X0.0000 Y1.6000"}};
  for (const auto& start : starts) {
    SkimPlan plan = SmallSkim();
    plan.strategy = start.strategy;
    const Texts rapids = LinesWith(plan, u"G00 X");
    EXPECT_EQ(rapids[0], start.odd);
    EXPECT_EQ(rapids[2], start.even);
  }
}

TEST(SkimSpiral, CoversTheCircleInTheStock) {
  SkimPlan plan;
  EXPECT_EQ(CircleOfSkim(plan).radius, 2);
  plan.yMax = 2;
  const SkimCircle circle = CircleOfSkim(plan);
  EXPECT_EQ(circle.radius, 1);
  EXPECT_EQ(circle.x, 2);
  EXPECT_EQ(circle.y, 1);
}

// The points of a radius of 2 with a step of 0.6: lead-in, 141 of the circle, 471 of the spiral.
TEST(SkimSpiral, LeadsInGoesAroundAndEndsInTheMiddle) {
  SkimPlan plan;
  plan.strategy = kSkimSpiral;
  plan.passCount = 1;
  plan.clearance = 0.0001;
  EXPECT_EQ(LinesWith(plan, u"G00 X")[0], u"G00 X4.6000 Y2.0000");
  const Texts cuts = FirstPass(plan);
  EXPECT_EQ(cuts[0], u"(CIRCULAR AREA: INSCRIBED IN XY BOUNDS - RECTANGLE CORNERS NOT FACED)");
  ASSERT_EQ(cuts.size(), 1u + 1 + 141 + 471);
  EXPECT_EQ(cuts[1], u"G01 X4.0000 Y2.0000 F12.000");
  EXPECT_EQ(cuts[1 + 141], cuts[1]);
  EXPECT_EQ(cuts.back(), u"G01 X2.0000 Y2.0000 F12.000");
}

TEST(SkimSpiral, WithoutALeadInPlungesOnTheCircle) {
  SkimPlan plan;
  plan.strategy = kSkimSpiral;
  plan.entry = 0;
  EXPECT_EQ(LinesWith(plan, u"G00 X")[0], u"G00 X4.0000 Y2.0000");
}

// Around the middle the points that lie on an axis bear no sign by chance where the circle closes.
TEST(SkimSpiral, ClosesItsCircleExactly) {
  SkimPlan plan;
  plan.xMin = plan.yMin = -2;
  plan.xMax = plan.yMax = 2;
  plan.strategy = kSkimSpiral;
  const Texts cuts = FirstPass(plan);
  EXPECT_EQ(cuts[1 + 141], u"G01 X2.0000 Y0.0000 F12.000");
}

TEST(SkimCenterline, OfOneSegmentRetractsAtItsEndAlone) {
  EXPECT_EQ(FirstPass(DrawnSkim(1)),
            (Texts{u"(CUSTOM CUTTER CENTERLINE)", u"G01 X1.0000 Y0.0000 F12.000"}));
}

TEST(SkimCenterline, RetractsBetweenSegmentsThatTouch) {
  SkimPlan plan = DrawnSkim(2);
  plan.centerline.segments[1] = SkimLine(1, 0, 0.5, 90);
  EXPECT_EQ(FirstPass(plan), (Texts{u"(CUSTOM CUTTER CENTERLINE)", u"G01 X1.0000 Y0.0000 F12.000",
                                    u"G00 Z0.5000", u"G00 X1.0000 Y0.0000", u"G01 Z-0.1250 F4.000",
                                    u"G01 X1.0000 Y0.5000 F12.000"}));
}

TEST(SkimCode, OfARefusedPlanIsNone) {
  SkimPlan plan = SmallSkim();
  plan.rpm = 0;
  CodeWriter out{u"before", 6};
  EXPECT_FALSE(BuildSkimProgram(plan, out));
  EXPECT_EQ(out.text, u"before");
  EXPECT_EQ(SkimProgramUnits(plan), 0u);
}

// What is told beforehand holds the longest numbers, with the room made once.
TEST(SkimCode, FitsIntoTheRoomThatIsToldBeforehand) {
  for (std::int32_t strategy = 0; strategy < kSkimStrategies; ++strategy) {
    SkimPlan plan = DrawnSkim(95);
    plan.strategy = strategy;
    plan.metric = true;
    plan.xMin = plan.yMin = -99999.9999;
    plan.xMax = plan.yMax = -99899.9999;
    plan.diameter = 80;
    plan.entry = plan.exit = 99999.9999;
    plan.feed = plan.plunge = 99999.999;
    plan.zTop = -99999;
    plan.clearance = 0.5;
    plan.passCount = 20;
    plan.tool = 999;
    CodeWriter out;
    ASSERT_TRUE(BuildSkimProgram(plan, out)) << strategy;
    EXPECT_FALSE(out.full) << strategy;
    EXPECT_EQ(out.most, SkimProgramUnits(plan));
    EXPECT_LE(out.text.size(), out.most);
    EXPECT_TRUE(out.text.ends_with(u"(END GUIDED SKIM - AT XY ZERO AND SAFE Z)\r\n"));
  }
}

TEST(SkimCode, StandsBehindWhatTheWriterHolds) {
  CodeWriter out{u"before", 6};
  ASSERT_TRUE(BuildSkimProgram(SmallSkim(), out));
  EXPECT_EQ(out.text, u"before" + SkimCode(SmallSkim()));
}

}  // namespace
}  // namespace morva
