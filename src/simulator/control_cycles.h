// Canned cycles and the hole patterns that run them, stroke by stroke.
#pragma once

#include "simulator/control_block.h"
#include "simulator/control_run.h"

namespace morva {

// Keeps what the block says of the cycle in force: R, Z, Q, P, I, J, K, F stays with the feed.
// `begins`: the block names the cycle's code.
void TakeCycleWords(ControlRun& run, const ControlBlock& block, bool begins);
// The same of R, Z, Q and P alone, where I, J and K belong to a hole pattern in the block.
void TakeDepths(ControlRun& run, const ControlBlock& block);
// Names what the first line of a cycle lacks: Z or R.
void NoteDepths(ControlRun& run, const ControlBlock& block);
// The cycle at the block's place, L times.
void RunCycle(ControlRun& run, const ControlBlock& block, bool begins);
// G70, G71 and G72: the cycle in force at each hole of a circle, an arc or a line.
void RunHolePattern(ControlRun& run, const ControlBlock& block, int code);

}  // namespace morva
