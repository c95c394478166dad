// The room of the guided skim, joined to the others at start-up.
#pragma once

namespace morva {

void RegisterSkim();
void ResetSkim();

}  // namespace morva
