// Trim: the section of an object at a place goes, between where other geometry cuts it.
//
// There are no arcs in a sketch: what is left of a circle becomes lines of about 10 degrees
// each, of a slot its outline's steps, of a rectangle its sides.
#pragma once

namespace morva {

// The section of object `index` at the drawing position. The first remaining piece keeps the
// object's place in the list, the others are appended; an object that goes whole is removed.
// One undo step. False: no such section, an object that cannot be trimmed, or no room for the
// pieces; nothing changed.
// With sketch.trimPreviewing set the sketch is never changed and tools.previewSegments hold what
// would go.
bool TrimObject(int index, double x, double y);

}  // namespace morva
