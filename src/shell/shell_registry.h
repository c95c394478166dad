// Ties the shell to the router, the hooks and the controls.
#pragma once

namespace morva {

void RegisterShellCommands();
// Forgets the layout, the mode history and the states of keys.
void ResetShell();

}  // namespace morva
