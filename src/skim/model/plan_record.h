// A skim plan as the settings of a block, kind 6, and back.
#pragma once

#include "documents/feature_settings.h"
#include "skim/model/plan.h"

namespace morva {

inline constexpr std::int32_t kSkimRecordVersion = 2;  // as written

// The record of the plan: numbers, strategy and thickness, and of the custom strategy its segments.
// Its hash is 0. It passes ValidateSettings if the plan passes ValidateSkimPlan and its thickness
// is not negative.
void StoreSkimPlan(const SkimPlan& plan, FeatureSettings& record);
// The plan of a record that passed ValidateSettings. False: it is of another kind, and `plan`
// stays. The plan may be one that ValidateSkimPlan refuses; what the record does not hold gets its
// default.
bool LoadSkimPlan(const FeatureSettings& record, SkimPlan& plan);

}  // namespace morva
