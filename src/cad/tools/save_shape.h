// Sketch objects as reusable shapes.
#pragma once

#include "library/sketch_object.h"

namespace morva {

struct Extents {
  double minX = 0;
  double minY = 0;
  double maxX = 0;
  double maxY = 0;
};

// Around lines and axes by their ends, circles by their diameter, rectangles and slots by their
// turned outlines, work points by their positions. False: no object, `extents` is zero.
bool ObjectExtents(const SketchObject* objects, int count, Extents& extents);

// The "Save shape" command: up to 64 objects of the live sketch, about the centre of their
// extents and in inches, under the name in the name box. A shape of that name is replaced.
void SaveDrawingAsShape();

void RegisterSaveShape();

}  // namespace morva
