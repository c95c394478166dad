// The end of the way of a move: stretches in shown places become points with their times.
#pragma once

#include "simulator/control_run.h"

namespace morva {

// Adds the points of a stretch to the path, arcs as chords that lie at most 0.0005 in off, rapids
// as each axis runs, and their seconds to the run's time. Told for the stretch's own line.
void EmitSegment(ControlRun& run, const ControlSegment& segment);

// Where an arc turns from one quarter of its plane to the next: the places in which an axis of the
// plane goes farthest. Answers how many of the four it has; 0 for a stretch that is no arc.
int TurningPlaces(const ControlSegment& segment, Vec3 (&places)[4]);

// Passes time where the tool stands.
void PassTime(ControlRun& run, double seconds);

// The same stretch as it is written, into the path of programmed lines. It takes no time.
void EmitProgrammed(ControlRun& run, const ControlSegment& segment);

}  // namespace morva
