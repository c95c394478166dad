// How far objects of a sketch or of a saved shape reach.
#pragma once

#include "library/sketch_object.h"

namespace morva {

struct Extents {
  double minX = 0, minY = 0;
  double maxX = 0, maxY = 0;
};
inline double WidthOf(const Extents& extents) { return extents.maxX - extents.minX; }
inline double HeightOf(const Extents& extents) { return extents.maxY - extents.minY; }

// A work point counts as its place, an axis as both ends, a circle as centre and radius, the others
// as their outlines. False: nothing counted, and the extents are 0.
bool ObjectExtents(const SketchObject* objects, int count, Extents& extents);

}  // namespace morva
