// Connectivity: which outlines touch, and the group numbers that follow from it.
#pragma once

namespace morva {

// Group numbers of all visible, unlocked objects anew: touching outlines make one part.
void RecomputeConnectivity();

}  // namespace morva
