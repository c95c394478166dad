// The find pane: Next Match, the queue of replacement rules, PROMPT EACH and DO ALL.
#pragma once

namespace morva {

void RegisterFindPane();
void ResetFindPane();

}  // namespace morva
