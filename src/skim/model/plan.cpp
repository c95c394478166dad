#include "skim/model/plan.h"

#include "text/codetext.h"
#include "text/length_units.h"

namespace morva {

SkimPlan skimPlan;

namespace {

constexpr const char16_t* kNames[] = {
    u"Alternate / continuous zigzag",
    u"Right to left / retract",
    u"Left to right / retract",
    u"Circular spiral inward",
    u"Alternate X/Y \u00b7 right then up",
    u"Alternate X/Y \u00b7 left then up",
    u"Alternate X/Y \u00b7 right then down",
    u"Alternate X/Y \u00b7 left then down",
    u"Custom drawn centerline",
};
static_assert(std::size(kNames) == kSkimStrategies);

constexpr SkimFieldRow kRows[] = {
    {.label = u"Tool / H offset", .integer = &SkimPlan::tool, .whole = true},
    {.label = u"Work offset (54 to 59)", .integer = &SkimPlan::workOffset, .whole = true},
    {.label = u"Stock X minimum", .number = &SkimPlan::xMin, .length = true},
    {.label = u"Stock Y minimum", .number = &SkimPlan::yMin, .length = true},
    {.label = u"Stock X maximum", .number = &SkimPlan::xMax, .length = true},
    {.label = u"Stock Y maximum", .number = &SkimPlan::yMax, .length = true},
    {.label = u"Cutter diameter", .number = &SkimPlan::diameter, .length = true},
    {.label = u"Stepover (% of diameter)", .number = &SkimPlan::stepoverPercent},
    {.label = u"Spindle speed (RPM)", .number = &SkimPlan::rpm, .whole = true},
    {.label = u"Cut feed / minute", .number = &SkimPlan::feed, .length = true},
    {.label = u"Z plunge feed / minute", .number = &SkimPlan::plunge, .length = true},
    {.label = u"Starting surface Z", .number = &SkimPlan::zTop, .length = true},
    {.label = u"Depth of cut per pass", .number = &SkimPlan::depthPerPass, .length = true},
    {.label = u"Total material to remove", .number = &SkimPlan::totalDepth, .length = true},
    {.label = u"Number of passes", .number = &SkimPlan::passCount, .whole = true},
    {.label = u"Safe clearance", .number = &SkimPlan::clearance, .length = true},
    {.label = u"Entry beyond left edge", .number = &SkimPlan::entry, .length = true},
    {.label = u"Exit beyond right edge", .number = &SkimPlan::exit, .length = true},
};
static_assert(std::size(kRows) == kSkimFields);

}  // namespace

std::span<const char16_t* const> SkimStrategyNames() { return kNames; }

std::u16string_view SkimStrategyName(std::int32_t strategy) {
  return strategy >= 0 && strategy < kSkimStrategies ? kNames[strategy] : u"";
}

const SkimFieldRow& SkimRow(int field) { return kRows[field]; }

double SkimValue(const SkimPlan& plan, int field) {
  const SkimFieldRow& row = kRows[field];
  return row.number ? plan.*row.number : plan.*row.integer;
}

void SetSkimValue(SkimPlan& plan, int field, double value) {
  const SkimFieldRow& row = kRows[field];
  if (row.number) {
    plan.*row.number = value;
  } else {
    plan.*row.integer = static_cast<std::int32_t>(value);
  }
}

std::u16string SkimText(const SkimPlan& plan, int field) {
  return FixedText(SkimValue(plan, field), kRows[field].whole ? 0 : kSkimDecimals);
}

void ConvertSkimPlan(SkimPlan& plan, bool metric) {
  if (plan.metric == metric) return;
  const double factor = metric ? kMmPerInch : kInchPerMm;
  plan.metric = metric;
  for (const SkimFieldRow& row : kRows) {
    if (row.length) plan.*row.number *= factor;
  }
  plan.stockThickness *= factor;
  for (std::int32_t i = 0; i < plan.centerline.count; ++i) {
    ScaleLengths(plan.centerline.segments[i], factor);
  }
}

void PlaceSkimStock(SkimPlan& plan, double x, double y, double zTop) {
  const double width = plan.xMax - plan.xMin;
  const double height = plan.yMax - plan.yMin;
  plan.xMin = x;
  plan.yMin = y;
  plan.xMax = x + width;
  plan.yMax = y + height;
  plan.zTop = zTop;
}

void SetSkimPlan(const SkimPlan& plan) { skimPlan = plan; }

void ResetSkimPlan() { skimPlan = SkimPlan(); }

}  // namespace morva
