// The macro library's panel: the ready templates, and the programs that the user saved for reuse.
#pragma once

#include "app/mode_table.h"

namespace morva {

extern const ModeRow kMacrosMode;

// The selected macro, -1 for none.
int SelectedMacro();
// The list anew; what was selected stays so.
void FillMacroList();
// The name of the selected macro into the name box, nothing without one.
void ShowMacroName();

// The active program under the name in the box, in place of a macro that has it, after a question.
void SaveProgramAsMacro();
// The selected macro's text behind the caret's line.
void InsertCustomMacro();
void DuplicateCustomMacro();
// The selected macro takes the name in the box.
void RenameCustomMacro();
// After a question.
void DeleteCustomMacro();

void RegisterMacros();

}  // namespace morva
