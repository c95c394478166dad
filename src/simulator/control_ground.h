// The ground of a general pocket: rows of strokes within its outline.
//
// Plane geometry in display units. How a machine orders its strokes is not known for sure.
#pragma once

#include <cstdint>
#include <vector>

#include "simulator/control_offset.h"
#include "simulator/control_run.h"

namespace morva {

// A move of the outline, as the program says it, goes into the ground's outline.
void NoteOutline(PocketGround& ground, const ControlSegment& segment, double tolerance);

// Finds the strokes of an outline that was run once: rows `step` apart, from the least place up,
// each as long as the tool keeps off the walls, every second one the other way. False: the outline
// is not closed, or has more rows, or asks for more looks at its lines, than there may be; then
// there are none. `work` is what may still be looked at.
bool FindStrokes(PocketGround& ground, std::int64_t& work);

// Whether a tool that keeps `radius` off the walls gets straight from one place to another.
bool IsFreeWay(const PocketGround& ground, Flat from, Flat to, double slack);

}  // namespace morva
