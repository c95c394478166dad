// The room as a whole: joined to the workbench at start-up, and begun anew.
#pragma once

namespace morva {

void RegisterCad();  // every file of this room, once at start-up
void ResetCad();

}  // namespace morva
