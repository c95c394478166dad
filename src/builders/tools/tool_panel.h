// The tool library's panel: the list of tools and its keys, and the tools at Home.
#pragma once

namespace morva {

// The selected record, -1 for none.
int SelectedTool();
// Selects a record, the nearest one where there is none with this index.
void SelectTool(int index);
// Saves the library, fills every list anew and selects this record.
void StoreTools(int selected);
// The list anew; what was selected stays so, else the first tool is.
void RebuildToolList();
// After a question.
void DeleteSelectedTool();
// The tool's block behind the caret's line.
void InsertToolBlock();

void RegisterTools();
void ResetTools();

}  // namespace morva
