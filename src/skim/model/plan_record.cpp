#include "skim/model/plan_record.h"

#include <algorithm>

namespace morva {

namespace {

// The plan's numbers in the order of a record's values.
constexpr double SkimPlan::*kValues[] = {
    &SkimPlan::xMin,      &SkimPlan::yMin,         &SkimPlan::xMax,
    &SkimPlan::yMax,      &SkimPlan::diameter,     &SkimPlan::stepoverPercent,
    &SkimPlan::rpm,       &SkimPlan::feed,         &SkimPlan::plunge,
    &SkimPlan::zTop,      &SkimPlan::depthPerPass, &SkimPlan::totalDepth,
    &SkimPlan::passCount, &SkimPlan::clearance,    &SkimPlan::entry,
    &SkimPlan::exit,
};
static_assert(std::size(kValues) == kSettingsValues);
static_assert(kValues[kSkimEdges] == &SkimPlan::xMin && kValues[kSkimEdges + 3] == &SkimPlan::yMax);
static_assert(kValues[kSkimSurface] == &SkimPlan::zTop && kSkimRoundStrategy == kSkimSpiral);

// Of the first item, which holds what the values have no room for.
constexpr std::int32_t kExtraItem = 4;

}  // namespace

void StoreSkimPlan(const SkimPlan& plan, FeatureSettings& record) {
  record = FeatureSettings();
  record.version = kSkimRecordVersion;
  record.kind = kKindSkim;
  record.metric = plan.metric ? 1 : 0;
  record.a = plan.tool;
  record.b = plan.workOffset;
  record.c = plan.useTotalDepth ? 1 : 0;
  for (int i = 0; i < kSettingsValues; ++i) record.values[i] = plan.*kValues[i];
  record.items[0].type = kExtraItem;
  record.items[0].p2 = plan.stockThickness;
  record.items[0].p3 = plan.strategy;
  record.itemCount = 1;
  if (plan.strategy != kSkimCustom) return;
  for (std::int32_t i = 0; i < plan.centerline.count; ++i) {
    record.items[record.itemCount++] = ItemOf(plan.centerline.segments[i]);
  }
}

bool LoadSkimPlan(const FeatureSettings& record, SkimPlan& plan) {
  if (record.kind != kKindSkim) return false;
  plan = SkimPlan();
  plan.metric = record.metric != 0;
  plan.tool = record.a;
  plan.workOffset = record.b;
  plan.useTotalDepth = record.c != 0;
  for (int i = 0; i < kSettingsValues; ++i) plan.*kValues[i] = record.values[i];
  if (record.itemCount < 1 || record.items[0].type != kExtraItem) return true;
  plan.stockThickness = record.items[0].p2;
  plan.strategy = static_cast<std::int32_t>(record.items[0].p3);
  if (plan.strategy != kSkimCustom) return true;
  plan.centerline.count = std::min(record.itemCount - 1, kMaxSkimSegments);
  for (std::int32_t i = 0; i < plan.centerline.count; ++i) {
    plan.centerline.segments[i] = ObjectOf(record.items[i + 1]);
  }
  return true;
}

}  // namespace morva
