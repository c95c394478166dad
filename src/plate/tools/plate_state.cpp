#include "plate/tools/plate_state.h"

#include "plate/model/plate.h"

namespace morva {

PlateEditor plateEditor;

bool PlateIsMetric() { return plate.metric; }

}  // namespace morva
