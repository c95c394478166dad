// Opening and closing the wizard of the guided skim.
#pragma once

#include "documents/feature_settings.h"

namespace morva {

// From the machining wizard, whose fields the plan takes; a block under edit is dropped. False: the
// surface that is up stays, as does the plan.
bool OpenSkimWizard();
// With the plan of a block, whose unit is in force already. False: the record is none of a skim,
// or the surface that is up stays; the plan stays then too.
bool OpenSkimFromFeature(const FeatureSettings& record);
// The surface came up: the form, the view and the keyboard are the plan's.
void EnterSkim();
// Back to where it was opened; the plan stays.
void CancelSkim();
// Home, with the keyboard in the program.
void CloseSkimAtHome();

}  // namespace morva
