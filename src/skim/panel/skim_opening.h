// Opening and closing the wizard of the guided skim.
#pragma once

#include "documents/feature_settings.h"

namespace morva {

// From the machining wizard, whose fields the plan takes; a block under edit is dropped. A wizard
// that is neither inserted nor cancelled comes back as it was left, where those fields are the
// same. False: the surface that is up stays, as does the plan.
bool OpenSkimWizard();
// With the plan of a block, whose unit is in force already. False: the record is none of a skim,
// or the surface that is up stays; the plan stays then too.
bool OpenSkimFromFeature(const FeatureSettings& record);
// The surface came up: the form, the view and the keyboard are the plan's.
void EnterSkim();
// Another program comes up: remembers the block under edit.
void NoteEditedSkim();
// A program came up. The block that was under edit there is under edit again where it stands with
// the same code; otherwise the status line says that a new one would be written.
void FollowEditedSkim();
// Back to where it was opened; the plan stays.
void CancelSkim();
// Home, with the keyboard in the program.
void CloseSkimAtHome();

}  // namespace morva
