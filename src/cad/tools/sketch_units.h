// The unit switch of the live sketch: what it converts beside the objects.
#pragma once

namespace morva {

// The unit of the live sketch, which the fields of the workspace follow.
bool SketchIsMetric();

void RegisterSketchUnits();

}  // namespace morva
