// The outlines of the live sketch, kept from one question to the next, and the bounds around them.
#pragma once

#include "library/outline.h"

namespace morva {

// An object's outline and its bounds, computed anew when the object is another than last time.
struct OutlineOf {
  SketchObject object;  // what the points were computed from
  int count = -1;       // -1: nothing kept yet
  double xs[kOutlinePoints] = {};
  double ys[kOutlinePoints] = {};
  double minX = 0, minY = 0, maxX = 0, maxY = 0;
};
// Of object `index` of the live sketch, which must exist.
const OutlineOf& OutlineAt(int index);

struct Bounds {
  double minX = 0, minY = 0, maxX = 0, maxY = 0;  // drawing units
};
// Around the outlines of the objects that `taken` takes; false, with nothing changed, where
// there is none.
bool BoundsOf(bool (*taken)(int index), Bounds& bounds);

}  // namespace morva
