// The quick patterns. They repeat the selected object and stop where the sketch is full.
#pragma once

namespace morva {

// The selected object around a centre: it becomes the first instance. Reads the panel.
void QuickCircularPattern();
// The selected object in columns and rows: it keeps its place.
void QuickGridPattern();

void RegisterPatterns();

}  // namespace morva
