// The find pane: Next Match, the queue of replacement rules, PROMPT EACH and DO ALL.
#pragma once

#include "app/mode_table.h"

namespace morva {

extern const ModeRow kFindMode;

void RegisterFindPane();
void ResetFindPane();

}  // namespace morva
