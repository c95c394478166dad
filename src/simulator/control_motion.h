// Moves of the control: from a program place to the points of the path.
#pragma once

#include "simulator/control_block.h"
#include "simulator/control_run.h"

namespace morva {

// Display units of a length word; a number without a point counts as the control's setting says.
double LengthOf(ControlRun& run, const ControlBlock& block, char letter);
double LengthFrom(ControlRun& run, double value, bool pointed);

// Each axis at its own full rate: a rapid is a broken line unless it runs along one axis or at 45
// degrees.
void RapidTo(ControlRun& run, const Vec3& program);
// In machine places, as G53 and G28 move. `home` moves do not count in the path's extents.
void RapidToShown(ControlRun& run, const Vec3& shown);
void FeedTo(ControlRun& run, const Vec3& program);
// `centre` in the plane's two axes, a program place; the third axis goes along evenly. A whole turn
// where the end is the start.
void ArcTo(ControlRun& run, const Vec3& program, double centreU, double centreV, bool clockwise);
void Wait(ControlRun& run, double seconds);
// Draws the moves of a pocket's outline that were noted, as they came.
void DrawNotedMoves(ControlRun& run);
// Where the ground of a pocket cannot be followed: a finding, and what was noted is drawn.
void DropGround(ControlRun& run);
// What the words of a block ask for: X, Y and Z of the target; true where one of them stands.
bool TakeTarget(ControlRun& run, const ControlBlock& block, Vec3& target);
// An arc of the block, by I, J, K or by R.
void RunArc(ControlRun& run, const ControlBlock& block, const Vec3& target);

}  // namespace morva
