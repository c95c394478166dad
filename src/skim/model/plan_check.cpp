#include "skim/model/plan_check.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "skim/model/plan_measures.h"
#include "skim/model/spiral_counts.h"
#include "text/strict_number.h"

namespace morva {

namespace {

constexpr double kSkimLimit = 100000;  // sizes stay below it
constexpr std::size_t kNumberUnits = 62;
constexpr StrictRule kRule{
    .below = kSkimLimit, .units = std::numeric_limits<std::size_t>::max(), .blanksBehind = true};

constexpr std::int32_t kLargestTool = 999;
constexpr std::int32_t kFirstOffset = 54;
constexpr std::int32_t kLastOffset = 59;
constexpr double kLeastFeed = 0.001;
constexpr double kLeastDepth = 0.0001;
constexpr double kPassSlack = 0.00000001;  // of the quotient of the depths
constexpr int kOtherPoints = 10;           // of a spiral's pass, beside circle and spiral
constexpr int kOtherRows = 2;              // the first, and the last one at the stock's edge

std::size_t UnitsOfNumber(std::u16string_view text) {
  while (!text.empty() && text.back() == u' ') text.remove_suffix(1);
  return text.size();
}

// Null: it is a number.
const char16_t* FaultOfText(std::u16string_view text, double& value) {
  const Misread why = ReadStrict(text, kRule, value);
  if (why == Misread::Empty || why == Misread::NoNumber) return u"Enter one valid decimal number.";
  if (why != Misread::None || UnitsOfNumber(text) > kNumberUnits)
    return u"Enter numbers only in wizard fields.";
  return nullptr;
}

bool IsWhole(double value) { return value == std::trunc(value); }

// The first one out of bounds; kNoSkimField: none.
int ImpracticalNumber(const SkimPlan& plan) {
  for (int field = kSkimXMin; field <= kSkimClearance; ++field) {
    if (!(std::fabs(SkimValue(plan, field)) < kSkimLimit)) return field;
  }
  return kNoSkimField;
}

bool IsDistance(double value) { return value >= 0 && value < kSkimLimit; }

// The first field with a number that cuts nothing; kNoSkimField: none.
int BadCuttingNumber(const SkimPlan& plan) {
  if (!(plan.diameter > 0)) return kSkimDiameter;
  if (!(plan.stepoverPercent > 0 && plan.stepoverPercent <= 100)) return kSkimStepover;
  if (!(plan.rpm >= 1 && IsWhole(plan.rpm))) return kSkimRpm;
  if (!(plan.feed >= kLeastFeed)) return kSkimFeed;
  if (!(plan.plunge >= kLeastFeed)) return kSkimPlunge;
  if (!(plan.clearance >= kLeastDepth)) return kSkimClearance;
  return plan.depthPerPass >= kLeastDepth ? kNoSkimField : kSkimDepthPerPass;
}

bool HasDepth(const SkimPlan& plan) {
  if (plan.useTotalDepth) return plan.totalDepth > 0;
  return plan.passCount >= 1 && plan.passCount <= kMaxSkimPasses && IsWhole(plan.passCount);
}

bool SpiralFits(const SkimPlan& plan, int passes) {
  const double radius = CircleOfSkim(plan).radius;
  const std::int64_t points = CircleSegments(radius, plan.metric) +
                              SpiralPoints(radius, SkimStep(plan), plan.metric) + kOtherPoints;
  return points * passes <= kMaxSpiralPoints;
}

bool RowsFit(const SkimPlan& plan, int passes) {
  const double rows = RowEstimate(plan) + kOtherRows;
  return passes >= 1 && passes <= kMaxSkimPasses && rows <= kMaxSkimRasterRows &&
         rows * passes <= kMaxSkimRows;
}

bool IsTool(std::int32_t tool) { return tool >= 0 && tool <= kLargestTool; }
bool IsOffset(std::int32_t offset) { return offset >= kFirstOffset && offset <= kLastOffset; }

// What a plan asks for, before what it would make.
SkimFault FaultOfNumbers(const SkimPlan& plan) {
  if (plan.strategy < 0 || plan.strategy >= kSkimStrategies)
    return {u"Select a supported skim strategy."};
  if (plan.strategy == kSkimCustom && plan.centerline.count < 1)
    return {u"Draw a custom centerline path first."};
  if (const int field = ImpracticalNumber(plan); field != kNoSkimField)
    return {u"Enter finite, practical numeric values in every field.", field};
  if (!IsTool(plan.tool) || !IsOffset(plan.workOffset))
    return {
        u"Tool must be 0-999 (0 keeps the current machine tool); work offset must be G54 "
        u"through G59.",
        IsTool(plan.tool) ? kSkimWorkOffset : kSkimTool};
  if (!IsDistance(plan.entry) || !IsDistance(plan.exit))
    return {u"Entry and exit distances must be nonnegative finite values.",
            IsDistance(plan.entry) ? kSkimExit : kSkimEntry};
  if (!(plan.xMax > plan.xMin) || !(plan.yMax > plan.yMin))
    return {u"Stock X/Y maxima must be greater than their minima.",
            plan.xMax > plan.xMin ? kSkimYMax : kSkimXMax};
  if (const int field = BadCuttingNumber(plan); field != kNoSkimField)
    return {
        u"Diameter, feeds, depth per pass and clearance must be positive. Stepover must be "
        u"0-100 percent; RPM must be a positive integer.",
        field};
  return {};
}

// How much code the plan would make.
SkimFault FaultOfSize(const SkimPlan& plan) {
  const int depth = plan.useTotalDepth ? kSkimTotalDepth : kSkimPassCount;
  if (!HasDepth(plan))
    return {u"Choose a positive total depth or an integer pass count from 1 to 100.", depth};
  if (SkimTotal(plan) / plan.depthPerPass > kMaxSkimPasses + kPassSlack)
    return {u"Limit the plan to 100 depth passes.", depth};
  const int passes = PassCount(plan);
  if (plan.strategy == kSkimSpiral && !SpiralFits(plan, passes))
    return {
        u"Spiral exceeds 30000 motion points. Increase stepover or reduce passes / diameter of "
        u"the area.",
        kSkimStepover};
  if (!RowsFit(plan, passes))
    return {u"Limit the plan to 100 depth passes, 1000 raster rows, and 20000 total rows.",
            kSkimStepover};
  return {};
}

}  // namespace

SkimFault FaultOfSkimPlan(const SkimPlan& plan) {
  const SkimFault fault = FaultOfNumbers(plan);
  return fault.words[0] ? fault : FaultOfSize(plan);
}

SkimTexts TextsOf(const SkimPlan& plan) {
  SkimTexts texts;
  for (int field = 0; field < kSkimFields; ++field) texts.fields[field] = SkimText(plan, field);
  texts.strategy = plan.strategy;
  texts.depthRow = plan.useTotalDepth ? 1 : 0;
  return texts;
}

bool ReadSkimFields(const SkimTexts& texts, SkimPlan& plan, SkimRefusal& refusal) {
  double values[kSkimFields] = {};
  for (int field = 0; field < kSkimFields; ++field) {
    const char16_t* words = FaultOfText(texts.fields[field], values[field]);
    if (!words) continue;
    refusal = {field, words};
    return false;
  }
  for (const int field : {kSkimTool, kSkimWorkOffset}) {
    if (IsWhole(values[field])) continue;
    refusal = {field, u""};
    return false;
  }
  for (int field = 0; field < kSkimFields; ++field) SetSkimValue(plan, field, values[field]);
  plan.strategy = texts.strategy;
  plan.useTotalDepth = texts.depthRow == 1;
  return true;
}

bool ValidateSkimPlan(const SkimPlan& plan, const char16_t*& message) {
  const SkimFault fault = FaultOfSkimPlan(plan);
  if (!fault.words[0]) return true;
  message = fault.words;
  return false;
}

}  // namespace morva
