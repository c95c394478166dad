// The line-to-feature index and the filter that isolating and hiding make of it.
#pragma once

#include <cstdint>
#include <string_view>

namespace morva {

// Rebuilds the index from the feature table, which must describe `text`.
void IndexFeatureLines(std::u16string_view text);
// Before a run: forgets the answers of the last one. Whether the active tab filters at all.
bool StartLineFilter();

}  // namespace morva
