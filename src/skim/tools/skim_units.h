// The unit of the live plan.
#pragma once

namespace morva {

// The plan, and the wizard where it is up, into this unit. False: the wizard's fields do not read
// as a usable plan, the user was told, and the unit stays.
bool SetSkimUnits(bool metric);
// A unit key of the wizard: the plan first, then everything else that the user types.
void SwitchSkimUnits(bool metric);

}  // namespace morva
