// Cutter compensation: G41 and G42 move the tool's centre to the side of the programmed lines.
#pragma once

#include "simulator/control_block.h"
#include "simulator/control_run.h"

namespace morva {

// A stretch of the program in shown places, on its way to the path. It waits where the next one
// decides how the tool gets round the corner.
void CompensateSegment(ControlRun& run, const ControlSegment& segment);
// What waits for the next move is drawn.
void FlushMoves(ControlRun& run);
// G40, G41 or G42 of a block, with its D.
void TakeCompensation(ControlRun& run, int code, const ControlBlock& block);

}  // namespace morva
