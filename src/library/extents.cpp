#include "library/extents.h"

#include <algorithm>

#include "library/outline.h"

namespace morva {

namespace {

// The points that bound an object; arrays of kOutlinePoints.
int BoundingPoints(const SketchObject& object, double* xs, double* ys) {
  if (object.type == kTypeWorkPoint) {
    xs[0] = object.x;
    ys[0] = object.y;
    return 1;
  }
  if (object.type != kTypeCircle) return ObjectOutline(object, xs, ys);
  const double r = object.size / 2;
  xs[0] = object.x - r;
  ys[0] = object.y - r;
  xs[1] = object.x + r;
  ys[1] = object.y + r;
  return 2;
}

}  // namespace

bool ObjectExtents(const SketchObject* objects, int count, Extents& extents) {
  extents = Extents();
  bool any = false;
  for (int i = 0; i < count; ++i) {
    double xs[kOutlinePoints];
    double ys[kOutlinePoints];
    const int points = BoundingPoints(objects[i], xs, ys);
    for (int k = 0; k < points; ++k) {
      if (!any) extents = {xs[k], ys[k], xs[k], ys[k]};
      any = true;
      extents.minX = std::min(extents.minX, xs[k]);
      extents.minY = std::min(extents.minY, ys[k]);
      extents.maxX = std::max(extents.maxX, xs[k]);
      extents.maxY = std::max(extents.maxY, ys[k]);
    }
  }
  return any;
}

}  // namespace morva
