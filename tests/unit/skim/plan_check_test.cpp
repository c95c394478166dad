// What the skim's form takes, and which plans pass.

#include "skim/model/plan_check.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "skim/model/plan_measures.h"
#include "support/skim_plans.h"

namespace morva {
namespace {

using support::DrawnSkim;
using support::FaultOfSkim;
using support::SmallSkim;

constexpr char16_t kNoNumber[] = u"Enter one valid decimal number.";
constexpr char16_t kNumbersOnly[] = u"Enter numbers only in wizard fields.";
constexpr char16_t kCutting[] =
    u"Diameter, feeds, depth per pass and clearance must be positive. Stepover must be 0-100 "
    u"percent; RPM must be a positive integer.";
constexpr char16_t kRows[] =
    u"Limit the plan to 100 depth passes, 1000 raster rows, and 20000 total rows.";
constexpr char16_t kPracticalOnly[] = u"Enter finite, practical numeric values in every field.";
constexpr char16_t kPasses[] = u"Limit the plan to 100 depth passes.";
constexpr char16_t kDepthMode[] =
    u"Choose a positive total depth or an integer pass count from 1 to 100.";
constexpr char16_t kSpiral[] =
    u"Spiral exceeds 30000 motion points. Increase stepover or reduce passes / diameter of the "
    u"area.";

// What comes of one text among texts that read.
struct OneField {
  bool read = false;
  double value = 0;
  std::u16string words;
  int field = -1;
};
OneField Read(int field, const std::u16string& text) {
  SkimTexts texts = TextsOf(SmallSkim());
  texts.fields[field] = text;
  SkimPlan plan;
  SkimRefusal refusal{-1, u""};
  OneField one;
  one.read = ReadSkimFields(texts, plan, refusal);
  one.value = SkimValue(plan, field);
  one.words = refusal.words;
  one.field = refusal.field;
  return one;
}

TEST(SkimFields, ReadASignAPointAndBlanksBehind) {
  EXPECT_EQ(Read(kSkimXMax, u"+4").value, 4);
  EXPECT_EQ(Read(kSkimXMax, u"4 ").value, 4);
  EXPECT_EQ(Read(kSkimXMax, u"4.   ").value, 4);
  EXPECT_EQ(Read(kSkimXMin, u"-.5").value, -0.5);
  EXPECT_EQ(Read(kSkimXMax, u"99999.9").value, 99999.9);
}

TEST(SkimFields, RefuseWhatIsNoNumber) {
  for (const char16_t* text :
       {u"", u" ", u" 4", u"4in", u"abc", u"1,5", u"1e3", u"--1", u"+-5", u"- 5", u"-", u".", u"-.",
        u"1.2.3", u"4 5", u"4\t", u"\t4", u"\u0664", u"4\u00a0"}) {
    const OneField one = Read(kSkimXMax, text);
    EXPECT_FALSE(one.read);
    EXPECT_EQ(one.words, kNoNumber);
    EXPECT_EQ(one.field, kSkimXMax);
  }
}

TEST(SkimFields, RefuseWhatIsTooLargeOrTooLong) {
  for (const std::u16string& text : {std::u16string(u"100000"), std::u16string(u"-100000.0 "),
                                     std::u16string(63, u'0'), std::u16string(400, u'9')}) {
    const OneField one = Read(kSkimYMax, text);
    EXPECT_FALSE(one.read);
    EXPECT_EQ(one.words, kNumbersOnly);
    EXPECT_EQ(one.field, kSkimYMax);
  }
  EXPECT_TRUE(Read(kSkimYMax, std::u16string(62, u'0') + u"  ").read);
  EXPECT_EQ(Read(kSkimYMax, std::u16string(63, u'0') + u"x").words, kNoNumber);
}

TEST(SkimFields, SayNothingOfAToolOrOffsetThatIsNotWhole) {
  for (const int field : {kSkimTool, kSkimWorkOffset}) {
    const OneField one = Read(field, u"1.5");
    EXPECT_FALSE(one.read);
    EXPECT_EQ(one.words, u"");
    EXPECT_EQ(one.field, field);
  }
  EXPECT_TRUE(Read(kSkimTool, u"7.0").read);
  EXPECT_TRUE(Read(kSkimRpm, u"1500.5").read);  // the check refuses it with words
}

// The silent test comes behind all fields.
TEST(SkimFields, AreAllReadBeforeTheWholeNumbersAreLookedAt) {
  SkimTexts texts = TextsOf(SmallSkim());
  texts.fields[kSkimTool] = u"1.5";
  texts.fields[kSkimExit] = u"";
  SkimPlan plan;
  SkimRefusal refusal;
  EXPECT_FALSE(ReadSkimFields(texts, plan, refusal));
  EXPECT_EQ(refusal.field, kSkimExit);
  EXPECT_EQ(refusal.words, std::u16string(kNoNumber));
}

TEST(SkimFields, ThatDoNotReadLeaveThePlan) {
  SkimTexts texts = TextsOf(SmallSkim());
  texts.fields[kSkimExit] = u"x";
  texts.strategy = 3;
  texts.depthRow = 1;
  SkimPlan plan;
  SkimRefusal refusal;
  EXPECT_FALSE(ReadSkimFields(texts, plan, refusal));
  EXPECT_EQ(plan.xMax, 4);
  EXPECT_EQ(plan.strategy, 0);
  EXPECT_FALSE(plan.useTotalDepth);
}

TEST(SkimFields, ComeBackAsThePlanThatTheyShow) {
  SkimPlan plan = SmallSkim();
  plan.strategy = kSkimLeftUp;
  plan.useTotalDepth = true;
  SkimPlan back;
  SkimRefusal refusal;
  ASSERT_TRUE(ReadSkimFields(TextsOf(plan), back, refusal));
  for (int field = 0; field < kSkimFields; ++field) {
    EXPECT_DOUBLE_EQ(SkimValue(back, field), SkimValue(plan, field)) << field;
  }
  EXPECT_EQ(back.strategy, kSkimLeftUp);
  EXPECT_TRUE(back.useTotalDepth);
}

TEST(SkimFields, TakeTheSelectedRowsOfBothLists) {
  SkimTexts texts = TextsOf(SmallSkim());
  texts.strategy = -1;  // no row is selected
  texts.depthRow = 1;
  SkimPlan plan;
  SkimRefusal refusal;
  ASSERT_TRUE(ReadSkimFields(texts, plan, refusal));
  EXPECT_TRUE(plan.useTotalDepth);
  EXPECT_EQ(FaultOfSkim(plan), u"Select a supported skim strategy.");
}

SkimPlan Total(double total, double perPass) {
  SkimPlan plan = SmallSkim();
  plan.useTotalDepth = true;
  plan.totalDepth = total;
  plan.depthPerPass = perPass;
  return plan;
}

TEST(SkimPasses, EndWithTheRestOfTheDepth) {
  EXPECT_EQ(PassCount(Total(1, 0.125)), 8);
  EXPECT_EQ(PassCount(Total(1.01, 0.125)), 9);
  EXPECT_NEAR(SkimRemoved(Total(1.01, 0.125), 9) - SkimRemoved(Total(1.01, 0.125), 8), 0.01, 1e-12);
  // A rest below 1e-8 takes no pass.
  EXPECT_EQ(PassCount(Total(1.000000009, 0.125)), 8);
  EXPECT_EQ(PassCount(Total(1.00000002, 0.125)), 9);
}

TEST(SkimPasses, AreAtMostAHundred) {
  EXPECT_EQ(PassCount(Total(12.5, 0.125)), 100);
  EXPECT_EQ(FaultOfSkim(Total(12.5, 0.125)), u"");
  EXPECT_EQ(FaultOfSkim(Total(12.6, 0.125)), kPasses);
  SkimPlan plan = SmallSkim();
  plan.passCount = 100;
  EXPECT_EQ(FaultOfSkim(plan), u"");
  plan.passCount = 101;
  EXPECT_EQ(FaultOfSkim(plan), kDepthMode);
}

// Depth by depth the slack of the quotient lets 100 and a bit in, which the rest makes 101.
TEST(SkimPasses, OfAQuotientJustAboveAHundredAreRefusedAsTooManyRows) {
  SkimPlan plan = Total(900 * 100.000000005, 900);
  EXPECT_EQ(PassCount(plan), 101);
  EXPECT_EQ(FaultOfSkim(plan), kRows);
}

TEST(SkimPasses, OfNextToNoDepthAreNone) {
  EXPECT_EQ(PassCount(Total(1e-9, 0.125)), 0);
  EXPECT_EQ(FaultOfSkim(Total(1e-9, 0.125)), kRows);
  EXPECT_EQ(PassCount(Total(1, 0)), std::numeric_limits<int>::max());
  EXPECT_EQ(PassCount(Total(std::nan(""), 1)), 0);
}

TEST(SkimCheck, TakesStepoversUpToAHundredPercent) {
  SkimPlan plan = SmallSkim();
  plan.stepoverPercent = 100;
  EXPECT_EQ(FaultOfSkim(plan), u"");
  plan.stepoverPercent = 100.01;
  EXPECT_EQ(FaultOfSkim(plan), kCutting);
  plan.stepoverPercent = 0;
  EXPECT_EQ(FaultOfSkim(plan), kCutting);
}

TEST(SkimCheck, WantsWholeTurnsOfTheSpindle) {
  SkimPlan plan = SmallSkim();
  plan.rpm = 1500.5;
  EXPECT_EQ(FaultOfSkim(plan), kCutting);
  plan.rpm = 0;
  EXPECT_EQ(FaultOfSkim(plan), kCutting);
  plan.rpm = 1;
  EXPECT_EQ(FaultOfSkim(plan), u"");
}

TEST(SkimCheck, HasLeastValuesForFeedsAndDepths) {
  const struct {
    int field;
    double least;
  } bounds[] = {{kSkimFeed, 0.001},
                {kSkimPlunge, 0.001},
                {kSkimClearance, 0.0001},
                {kSkimDepthPerPass, 0.0001}};
  for (const auto& bound : bounds) {
    SkimPlan plan = SmallSkim();
    SetSkimValue(plan, bound.field, bound.least);
    EXPECT_EQ(FaultOfSkim(plan), u"") << bound.field;
    SetSkimValue(plan, bound.field, std::nextafter(bound.least, 0));
    EXPECT_EQ(FaultOfSkim(plan), kCutting) << bound.field;
  }
  SkimPlan plan = SmallSkim();
  plan.diameter = 0;
  EXPECT_EQ(FaultOfSkim(plan), kCutting);
}

TEST(SkimCheck, WantsPracticalNumbersOnly) {
  for (int field = kSkimXMin; field <= kSkimClearance; ++field) {
    for (const double value : {100000.0, -100000.0, std::nan(""), double(INFINITY)}) {
      SkimPlan plan = SmallSkim();
      SetSkimValue(plan, field, value);
      EXPECT_EQ(FaultOfSkim(plan), kPracticalOnly) << field;
    }
  }
}

TEST(SkimCheck, BoundsToolAndOffset) {
  constexpr char16_t kWords[] =
      u"Tool must be 0-999 (0 keeps the current machine tool); work offset must be G54 through "
      u"G59.";
  for (const int tool : {-1, 1000}) {
    SkimPlan plan = SmallSkim();
    plan.tool = tool;
    EXPECT_EQ(FaultOfSkim(plan), kWords);
  }
  for (const int offset : {53, 60}) {
    SkimPlan plan = SmallSkim();
    plan.workOffset = offset;
    EXPECT_EQ(FaultOfSkim(plan), kWords);
  }
  SkimPlan plan = SmallSkim();
  plan.tool = 999;
  plan.workOffset = 59;
  EXPECT_EQ(FaultOfSkim(plan), u"");
}

TEST(SkimCheck, WantsDistancesFromZeroOn) {
  constexpr char16_t kWords[] = u"Entry and exit distances must be nonnegative finite values.";
  for (double SkimPlan::*distance : {&SkimPlan::entry, &SkimPlan::exit}) {
    for (const double value : {-0.0001, 100000.0, std::nan("")}) {
      SkimPlan plan = SmallSkim();
      plan.*distance = value;
      EXPECT_EQ(FaultOfSkim(plan), kWords);
    }
    SkimPlan plan = SmallSkim();
    plan.*distance = 0;
    EXPECT_EQ(FaultOfSkim(plan), u"");
  }
}

TEST(SkimCheck, WantsMaximaAboveMinima) {
  constexpr char16_t kWords[] = u"Stock X/Y maxima must be greater than their minima.";
  SkimPlan plan = SmallSkim();
  plan.xMin = plan.xMax;
  EXPECT_EQ(FaultOfSkim(plan), kWords);
  plan = SmallSkim();
  plan.yMin = plan.yMax + 1;
  EXPECT_EQ(FaultOfSkim(plan), kWords);
}

TEST(SkimCheck, LooksAtTheDepthOfItsModeAlone) {
  SkimPlan plan = SmallSkim();
  plan.totalDepth = -1;
  EXPECT_EQ(FaultOfSkim(plan), u"");
  plan.useTotalDepth = true;
  EXPECT_EQ(FaultOfSkim(plan), kDepthMode);
  plan.totalDepth = 1;
  plan.passCount = 2.5;
  EXPECT_EQ(FaultOfSkim(plan), u"");
  plan.useTotalDepth = false;
  EXPECT_EQ(FaultOfSkim(plan), kDepthMode);
}

TEST(SkimCheck, WantsADrawnLineForTheCustomStrategy) {
  EXPECT_EQ(FaultOfSkim(DrawnSkim(0)), u"Draw a custom centerline path first.");
  EXPECT_EQ(FaultOfSkim(DrawnSkim(1)), u"");
}

// A hundred inches by rows of 0.05 are 2000.
TEST(SkimCheck, BoundsTheRowsOfAPass) {
  SkimPlan plan = SmallSkim();
  plan.xMax = plan.yMax = 100;
  plan.diameter = 0.1;
  plan.stepoverPercent = 50;
  EXPECT_EQ(FaultOfSkim(plan), kRows);
  // So is a drawn line over tall stock, though it cuts no rows.
  plan.strategy = kSkimCustom;
  plan.centerline.count = 1;
  EXPECT_EQ(FaultOfSkim(plan), kRows);
}

SkimPlan WithRows(double rows) {
  SkimPlan plan = SmallSkim();
  plan.stepoverPercent = 100;
  plan.yMax = rows;  // a diameter of 1
  plan.passCount = 1;
  return plan;
}

TEST(SkimCheck, CountsRowsWithAFraction) {
  EXPECT_EQ(FaultOfSkim(WithRows(998)), u"");
  EXPECT_EQ(FaultOfSkim(WithRows(998.25)), kRows);
  EXPECT_EQ(RowEstimate(WithRows(998.25)), 998.25);
}

TEST(SkimCheck, BoundsTheRowsOfAllPasses) {
  SkimPlan plan = WithRows(198);
  plan.passCount = 100;
  EXPECT_EQ(FaultOfSkim(plan), u"");
  plan.yMax = 198.01;
  EXPECT_EQ(FaultOfSkim(plan), kRows);
}

TEST(SkimCheck, TakesTheLongerSideWhereRowsCross) {
  SkimPlan plan = SmallSkim();
  EXPECT_DOUBLE_EQ(RowEstimate(plan), 1 / 0.6);
  for (int strategy = 0; strategy < kSkimStrategies; ++strategy) {
    plan.strategy = strategy;
    EXPECT_DOUBLE_EQ(RowEstimate(plan), (strategy >= 4 && strategy <= 7 ? 2 : 1) / 0.6);
  }
}

// 141 and 471 points and 10 more make 622 a pass: 48 passes are 29856, 49 are 30478.
TEST(SkimCheck, BoundsThePointsOfASpiral) {
  SkimPlan plan;
  plan.strategy = kSkimSpiral;
  plan.passCount = 48;
  EXPECT_EQ(FaultOfSkim(plan), u"");
  plan.passCount = 49;
  EXPECT_EQ(FaultOfSkim(plan), kSpiral);
}

// In millimetres the tolerance is 0.08, not 0.1016: R 50.8 takes 159 segments, and 50.8 / 15.24 x
// 159 = 530 points, 531 with the end. 159 + 531 + 10 = 700: 42 passes are 29400, 43 are 30100.
TEST(SkimCheck, ReachesTheSpiralsLimitSoonerInMillimetres) {
  SkimPlan plan;
  plan.strategy = kSkimSpiral;
  ConvertSkimPlan(plan, true);
  plan.passCount = 42;
  EXPECT_EQ(FaultOfSkim(plan), u"");
  plan.passCount = 43;
  EXPECT_EQ(FaultOfSkim(plan), kSpiral);
}

// Each plan has the fault that is looked for and all that come behind it.
TEST(SkimCheck, TellsTheFirstFaultInItsOrder) {
  SkimPlan plan;
  plan.strategy = 9;
  plan.xMin = 100000;
  plan.tool = -1;
  plan.entry = -1;
  plan.yMin = 5;
  plan.rpm = 0.5;
  plan.passCount = 0;
  EXPECT_EQ(FaultOfSkim(plan), u"Select a supported skim strategy.");
  plan.strategy = kSkimCustom;
  EXPECT_EQ(FaultOfSkim(plan), u"Draw a custom centerline path first.");
  plan.strategy = kSkimSpiral;
  EXPECT_EQ(FaultOfSkim(plan), kPracticalOnly);
  plan.xMin = 0;
  EXPECT_EQ(FaultOfSkim(plan).substr(0, 10), u"Tool must ");
  plan.tool = 0;
  EXPECT_EQ(FaultOfSkim(plan).substr(0, 10), u"Entry and ");
  plan.entry = 0;
  EXPECT_EQ(FaultOfSkim(plan).substr(0, 10), u"Stock X/Y ");
  plan.yMin = 0;
  plan.yMax = 2000;
  plan.xMax = 3000;
  plan.diameter = 0.001;
  EXPECT_EQ(FaultOfSkim(plan), kCutting);
  plan.rpm = 1;
  EXPECT_EQ(FaultOfSkim(plan), kDepthMode);
  plan.useTotalDepth = true;
  plan.totalDepth = 13;
  EXPECT_EQ(FaultOfSkim(plan), kPasses);
  plan.totalDepth = 12;
  EXPECT_EQ(FaultOfSkim(plan), kSpiral);
  plan.strategy = kSkimZigzag;
  EXPECT_EQ(FaultOfSkim(plan), kRows);
}

}  // namespace
}  // namespace morva
