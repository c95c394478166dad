#include "cad/geometry/lines.h"

#include "cad/model/sketch.h"
#include "library/outline.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr double kAngleLimit = 1000000000;  // what a stored drawing can hold

bool Below(double value, double limit = kSketchLimit) { return value > -limit && value < limit; }

}  // namespace

double PlainDistance(double ax, double ay, double bx, double by) {
  return SketchRoot((bx - ax) * (bx - ax) + (by - ay) * (by - ay));
}

void SetLineEnds(SketchObject& line, double ax, double ay, double bx, double by) {
  line.x = ax;
  line.y = ay;
  line.size = PlainDistance(ax, ay, bx, by);
  line.angle = AngleDegrees(by - ay, bx - ax);
}

SketchObject RectangleSide(const SketchObject& rectangle, int side) {
  double xs[kOutlinePoints];
  double ys[kOutlinePoints];
  ObjectOutline(rectangle, xs, ys);
  SketchObject line;
  line.x = xs[side];
  line.y = ys[side];
  line.size = side % 2 == 0 ? rectangle.size : rectangle.size2;
  line.angle = rectangle.angle + 90 * side;
  if (line.angle > 180) line.angle -= 360;
  return line;
}

bool WithinSketchLimit(const SketchObject& object) {
  return Below(object.x) && Below(object.y) && Below(object.size) && Below(object.size2) &&
         Below(object.angle, kAngleLimit);
}

}  // namespace morva
