// The unit switch: inch and millimetre for everything that the user types or reads.
//
// Program text is never converted. Library values stay in inches.
#pragma once

#include "text/length_units.h"

namespace morva {

// UnitsMetric. Only SetUnits changes it.
bool UnitsMetric();
// Converts the fields of every form in this unit, then switches and has the path drawn anew. To the
// active unit: captions only, no conversion and no message.
void SetUnits(bool metric);

void ResetUnits();
void RegisterUnitCommands();
// A further pair of keys, which does what those of the main window do.
void RegisterUnitKeys(int inch, int mm);

}  // namespace morva
