// The picture of a wizard's job, seen from above, from the same places as its text.
#pragma once

#include "builders/wizard/wizard_text.h"
#include "forms/picture.h"

namespace morva {

// `cutter` is the diameter of the tool in the unit of the values, 0 where it is not known. Values
// need not pass the check.
void DrawWizard(const WizardValues& values, double cutter, Picture& picture);
// The diameter of the library's tool with the wizard's number; 0 for the current tool and for an
// unknown one.
double WizardCutter(const WizardValues& values);

}  // namespace morva
