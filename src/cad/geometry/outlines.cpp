#include "cad/geometry/outlines.h"

#include <algorithm>

#include "app/limits.h"
#include "cad/model/sketch.h"

namespace morva {

namespace {

OutlineOf outlines[kMaxItems];

}  // namespace

const OutlineOf& OutlineAt(int index) {
  OutlineOf& kept = outlines[index];
  const SketchObject& object = sketch.objects[index];
  if (kept.count >= 0 && SameGeometry(kept.object, object)) return kept;
  kept.object = object;
  kept.count = ObjectOutline(object, kept.xs, kept.ys);
  if (kept.count > 0) {
    kept.minX = *std::min_element(kept.xs, kept.xs + kept.count);
    kept.maxX = *std::max_element(kept.xs, kept.xs + kept.count);
    kept.minY = *std::min_element(kept.ys, kept.ys + kept.count);
    kept.maxY = *std::max_element(kept.ys, kept.ys + kept.count);
  }
  return kept;
}

bool BoundsOf(bool (*taken)(int index), Bounds& bounds) {
  bool any = false;
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (!taken(i)) continue;
    const OutlineOf& outline = OutlineAt(i);
    if (outline.count < 1) continue;
    bounds.minX = any ? std::min(bounds.minX, outline.minX) : outline.minX;
    bounds.minY = any ? std::min(bounds.minY, outline.minY) : outline.minY;
    bounds.maxX = any ? std::max(bounds.maxX, outline.maxX) : outline.maxX;
    bounds.maxY = any ? std::max(bounds.maxY, outline.maxY) : outline.maxY;
    any = true;
  }
  return any;
}

}  // namespace morva
