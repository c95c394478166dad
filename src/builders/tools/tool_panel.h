// The tool library's panel: the list of tools and its keys, and the tools at Home.
#pragma once

#include "app/mode_table.h"

namespace morva {

extern const ModeRow kToolsMode;

// After a question.
void DeleteSelectedTool();
// The tool's block behind the caret's line.
void InsertToolBlock();

void RegisterTools();
void ResetTools();

}  // namespace morva
