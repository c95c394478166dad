// The mode of the machining wizard: cards and a list of operations, their fields, the picture of
// what is cut, and the looping example in the toolpath view.
#pragma once

#include "documents/builder_table.h"

namespace morva {

extern const ModeRow kWizardMode;
extern const Builder kWizardBuilder;

// The operation that is chosen, 0 to 4.
int ChosenWizardKind();
// Chooses it as the user does in the list: its fields start anew. The one that is chosen already
// keeps its fields.
void ChooseWizardKind(int kind);

void RegisterWizard();

}  // namespace morva
