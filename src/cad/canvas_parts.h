// What the files of the canvas share; not for other rooms.
#pragma once

#include "cad/canvas.h"
#include "cad/outline.h"
#include "platform/canvas.h"
#include "platform/geometry.h"

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

platform::Rect CanvasClient();
// A drawing position as pixels with fractions, for curves; within a pixel of ToCanvas.
platform::PointF ToCanvasExact(double x, double y);
void ZoomAt(int px, int py, int notches);

}  // namespace morva
