// The keys of a program's plates: one a plate, one for a new one.
#pragma once

namespace morva {

void RefreshPlateTabs();
void RegisterPlateTabs();

}  // namespace morva
