// Pockets: the round ones of G12 and G13, and the depths of the general one of G150.
#pragma once

#include "simulator/control_block.h"
#include "simulator/control_run.h"

namespace morva {

// G12 and G13: a round pocket about the place of the tool.
void RunCirclePocket(ControlRun& run, const ControlBlock& block, bool clockwise);

// G150: to the pocket's start, to R, and down to the first depth. The outline is then to be called.
// False: the words are missing or out of range, which is a finding, and nothing moved.
bool BeginPocket(ControlRun& run, const ControlBlock& block, bool ofProgram);
// The outline was run: back to the start, and down to the next depth, where it is to be called
// again. False: it was the last one, and the tool stands at R.
bool GoToNextDepth(ControlRun& run);

// The outline has no end: its pocket ends with it.
void LeavePocket(ControlRun& run);

}  // namespace morva
