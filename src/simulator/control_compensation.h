// Cutter compensation: G41 and G42 move the tool's centre to the side of the programmed lines.
//
// A move waits until the next one in the XY plane tells how the tool gets round the corner between
// them: to where both offset lines meet on the inside, rolling about the corner on the outside.
#pragma once

#include "simulator/control_block.h"
#include "simulator/control_run.h"

namespace morva {

// A stretch of the program in shown places, on its way to the path.
void CompensateSegment(ControlRun& run, const ControlSegment& segment);
// A wait behind a move whose end is not known yet is passed when that is. False: none waits.
bool HoldWait(ControlRun& run, double seconds);
// What waits for the next move is drawn.
void FlushMoves(ControlRun& run);
// The machine goes home, or changes the tool: that is no move beside a line. A finding where
// compensation is on. Returns what ResumeCompensation gets behind these moves; the next one in the
// plane begins it anew.
int InterruptCompensation(ControlRun& run);
void ResumeCompensation(ControlRun& run, int wanted);
// Off where the tool's centre stands, which the next move leads on from.
void StopCompensation(ControlRun& run);
// G40, G41 or G42 of a block, with its D. It begins, or ends, with the next move in the plane.
void TakeCompensation(ControlRun& run, int code, const ControlBlock& block);
// The program is over: what waits is drawn, and compensation that is still on is a finding.
void EndCompensation(ControlRun& run);

}  // namespace morva
