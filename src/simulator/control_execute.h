// What a block does, in the order of the control.
#pragma once

#include "simulator/control_block.h"
#include "simulator/control_run.h"

namespace morva {

// Acts on a block that was read whole. `blockStart` is its place.
void ExecuteBlock(ControlRun& run, const ControlBlock& block, const ControlPlace& blockStart);

}  // namespace morva
