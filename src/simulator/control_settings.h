// What the settings file says of the control: rates and travel in [Simulator], offsets in
// [Offsets], findings that are not told in [Check]. docs/machine-motion.md lists the keys.
#pragma once

#include <vector>

#include "simulator/control_findings.h"
#include "simulator/control_table.h"

namespace morva {

// A key of [Simulator] that says what the control is like; a switch is 0 or 1.
struct ControlKey {
  const char16_t* key;
  double fallback;
  double least;
  double most;
};
std::vector<ControlKey> ControlKeys();

// Over the defaults in `table`. What is no number, or out of its range, is said in the log and
// leaves the default; what the last reading has said is not said again.
void ReadControlSettings(ControlTable& table);
// Puts the keys that are missing into the settings with what counts without them, so that the user
// finds a table to edit: rates, travel, switches and the offsets G54 to G59.
void WriteMissingControlSettings();
// Diameters of the tool library under their D numbers, where the settings name none.
void FillDiameters(ControlTable& table);
// Takes the findings out that [Check] turns off.
void DropUnwanted(Findings& findings);

}  // namespace morva
