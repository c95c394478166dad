// What the active program's record holds of its features: hidden, locked, simulated alone.
// Nothing happens where no program is active.
#pragma once

#include <cstdint>

namespace morva {

// Only this feature is simulated; 0 lifts it.
void IsolateFeature(std::int32_t id);
void ToggleFeatureHidden(std::int32_t id);
void ToggleFeatureLocked(std::int32_t id);
// The feature `to` becomes hidden and locked, or not, as `from` is; 0 for `from`: neither.
void CopyFeatureMarks(std::int32_t from, std::int32_t to);
// Nothing is hidden and nothing stands alone.
void ShowAllFeatures();

}  // namespace morva
