// The plate room joins the program.
#pragma once

namespace morva {

void RegisterPlateRoom();  // once, when rooms are joined
void ResetPlateRoom();

}  // namespace morva
