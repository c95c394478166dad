#include "skim/model/plan_seeds.h"

#include <cmath>
#include <string_view>

#include "library/tools.h"
#include "text/codetext.h"
#include "text/length_units.h"

namespace morva {

namespace {

constexpr std::int32_t kNoTool = 0;
constexpr std::int32_t kFirstOffset = 54;
constexpr std::int32_t kUsualRpm = 1500;

std::u16string_view BehindG(std::u16string_view text) {
  if (!text.empty() && FoldUpper(text[0]) == u'G') text.remove_prefix(1);
  return text;
}

// Half of "12,7" must not become a feed that nobody typed.
double NumberOf(std::u16string_view text, double fallback) {
  return text.find(u',') == text.npos ? ParseDecimal(text, fallback) : fallback;
}

// What the seeds make of the usual plan, in inches.
SkimPlan InInches(const SkimSeeds& seeds, bool metric) {
  SkimPlan plan = SeededSkimPlan(SkimPlan(), seeds, metric);
  ConvertSkimPlan(plan, false);
  return plan;
}

}  // namespace

bool SameSeeds(const SkimSeeds& a, bool aMetric, const SkimSeeds& b, bool bMetric) {
  if (a.diameter != b.diameter) return false;
  constexpr double kRounding = 0.001;  // inches; a text that goes from unit to unit is rounded
  const SkimPlan one = InInches(a, aMetric);
  const SkimPlan other = InInches(b, bMetric);
  return one.tool == other.tool && one.workOffset == other.workOffset && one.rpm == other.rpm &&
         std::fabs(one.feed - other.feed) < kRounding &&
         std::fabs(one.clearance - other.clearance) < kRounding;
}

SkimPlan SeededSkimPlan(const SkimPlan& plan, const SkimSeeds& seeds, bool metric) {
  SkimPlan seeded = plan;
  ConvertSkimPlan(seeded, metric);
  seeded.tool = ParseInteger(seeds.tool, kNoTool);
  seeded.workOffset = ParseInteger(BehindG(seeds.workOffset), kFirstOffset);
  seeded.rpm = ParseInteger(seeds.rpm, kUsualRpm);
  seeded.feed = NumberOf(seeds.feed, seeded.feed);
  seeded.clearance = NumberOf(seeds.safeZ, seeded.clearance);
  const int index = FindTool(seeded.tool);
  if (index >= 0) {
    seeded.diameter = toolLibrary.tools[index].diameter * (metric ? kMmPerInch : 1);
  }
  return seeded;
}

}  // namespace morva
