// The ground of a general pocket: rows of strokes within its outline.
//
// Plane geometry in display units. How a machine orders its strokes is presumed, not known.
#pragma once

#include <cstdint>

#include "simulator/control_offset.h"
#include "simulator/control_run.h"

namespace morva {

// Makes the outline of the noted moves, and finds the strokes: rows `step` apart, from the least
// place up, each as long as the tool keeps its radius and the finish off the walls, every second
// one the other way. Behind a wall a row goes on once the ground before it is cleared. `work` is
// how many lines may still be looked at. False: the outline is no loop, or a bound is met.
bool FindStrokes(PocketGround& ground, Flat start, double perInch, std::int64_t& work);

// Whether a tool gets straight from one place to another within the outline and so far off it.
bool IsFreeWay(const PocketGround& ground, Flat from, Flat to, double off);

}  // namespace morva
