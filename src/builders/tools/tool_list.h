// The list of tools in the panel, and what follows a change of the library.
#pragma once

#include <string>

#include "library/tools.h"

namespace morva {

// The selected record, -1 for none.
int SelectedTool();
// Selects a record, the last one where there is none with this index.
void SelectTool(int index);
// Rows of all tools into a list or combo, each with its index. The row that was selected stays so,
// else the first is.
void FillTools(int list, std::u16string (*words)(const ToolRecord& tool));
// The panel's list.
void RebuildToolList();
// Saves the library, fills every list anew and selects this record. `fromForm`: the log says that
// the tool of the form is saved, once it is; a failure is told in any case.
void StoreTools(int selected, bool fromForm);

}  // namespace morva
