// The line-to-feature index and the filter that isolating and hiding make of it.
#pragma once

#include <cstdint>
#include <string_view>

#include "app/limits.h"

namespace morva {

struct FeatureLines {
  std::int32_t firstLine = 0;
  std::int32_t lastLine = 0;
  std::int32_t id = 0;
};

struct FeatureLineIndex {
  std::int32_t count = 0;
  FeatureLines rows[kMaxFeatureLines];
};

extern FeatureLineIndex featureLines;

// Rebuilds the index from the feature table, which must describe `text`.
void IndexFeatureLines(std::u16string_view text);
void IndexFeatureLines(std::u16string_view text, FeatureLineIndex& out);
// The index as it was copied before.
void RestoreFeatureLines(const FeatureLineIndex& from);
// Leaves the index empty.
void EmptyFeatureLines();
// First row of the index that holds the line, -1 for none.
int FeatureRowOfLine(std::int32_t line);

// Before a run: forgets the answers of the last one. Whether the active tab filters at all.
bool StartLineFilter();
// Whether the filter drops the points of a line. Lines are asked in rising order mostly, so the
// answer is kept for as long as it holds.
bool LineIsDropped(std::int32_t line);

}  // namespace morva
