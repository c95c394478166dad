// Corners between two lines that ",C" cuts off and ",R" rounds.
#pragma once

#include "simulator/control_block.h"
#include "simulator/control_run.h"

namespace morva {

// A line of the block, G01, to a program place. With ",C" or ",R" it waits for the next one.
void RunLine(ControlRun& run, const ControlBlock& block, const Vec3& target);
// A move that is no line comes behind a line that waits: the corner stays sharp, which is a
// finding.
void DropCorner(ControlRun& run);

}  // namespace morva
