// Where the program goes on: calls, returns, jumps and loops, within bounds.
#pragma once

#include "simulator/control_block.h"
#include "simulator/control_run.h"

namespace morva {

// M97 P, M98 P, G65 P, M99 and what a statement of a block asks for. The run's place is that of the
// next block; `blockStart` is that of the present one.
void CallLabel(ControlRun& run, const ControlBlock& block);
void CallProgram(ControlRun& run, const ControlBlock& block);
void CallMacro(ControlRun& run, const ControlBlock& block, const ControlPlace& blockStart);
// G150: its outline is called at each depth.
void CallPocket(ControlRun& run, const ControlBlock& block);
void ReturnFrom(ControlRun& run, const ControlBlock& block);
void FollowStatement(ControlRun& run, const ControlBlock& block, const ControlPlace& blockStart);
// The text ended, or another O word began: of a subprogram a return, of the main one the end.
void EndOfText(ControlRun& run);

}  // namespace morva
