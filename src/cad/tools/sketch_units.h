// The unit switch of the live sketch: what it converts beside the objects.
#pragma once

namespace morva {

void RegisterSketchUnits();

}  // namespace morva
