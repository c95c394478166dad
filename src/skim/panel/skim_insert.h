// The skim as a builder: its block goes into the program, or takes the place of the one it was
// opened from.
#pragma once

namespace morva {

void RegisterSkimBuilder();

}  // namespace morva
