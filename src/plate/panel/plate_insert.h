// The code of the live plate into a program, and a plate's block back into the workspace.
#pragma once

namespace morva {

void RegisterPlateInsert();
void ResetPlateInsert();

}  // namespace morva
