// The list of the plate's outline and features.
#pragma once

namespace morva {

// Its rows as the plate stands, the one under edit marked. A plate without a name has none.
void ShowPlateList();

void RegisterPlateList();

}  // namespace morva
