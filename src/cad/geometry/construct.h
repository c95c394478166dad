// Geometry of new objects: from a drag, from picked points, tangent to what stands.
//
// Pure functions: nothing here reads the pointer or changes the sketch. Lengths are in the
// sketch's unit, angles in degrees counter-clockwise from +X. What cannot be built is refused
// as a whole: the object handed in keeps its fields.
#pragma once

#include "library/sketch_object.h"

namespace morva {

// The least distance, side and size that counts as one.
inline constexpr double kLeastSize = 1e-8;

// The object that a drag from start to end makes with this tool, 1 to 6, type plus 1. A drag
// shorter than 0.04 inch or 1 mm counts as 0.4 inch or 10 mm, so a mere click draws something
// that can be seen and resized. A rectangle's side below that minimum takes the drag's length.
SketchObject ObjectFromDrag(int tool, double startX, double startY, double endX, double endY);

// Points that a method takes, 2 or 3; a pick of an object counts as one.
int PointsOfMethod(int method);
// Methods whose last click picks geometry or is measured from it: their size is not typed.
bool IsTangentMethod(int method);

// The object of a method from its 2 or 3 points. False: degenerate, beyond the limits of the
// sketch, or a method that is not made of points alone. A polygon comes as a circle that is
// never stored: `size` its circumradius, `size2` tools.polygonSides, `angle` the direction of
// its first corner.
bool ObjectFromPoints(int method, const double* xs, const double* ys, SketchObject& object);

enum class TangentFault {
  None,
  OffSegment,  // the foot of the centre lies beyond the line's ends
  Concentric,  // no single point of contact
  Degenerate,  // no radius, or beyond the limits of the sketch
};
// The circle about a centre that touches a line, or another circle from outside or inside.
TangentFault CircleOnLine(const SketchObject& line, double centreX, double centreY,
                          SketchObject& object);
TangentFault CircleOnCircle(const SketchObject& circle, double centreX, double centreY,
                            SketchObject& object);
// The line from a start to the point of contact nearer to the click. False: the start is not
// outside the circle.
bool LineOnCircle(double startX, double startY, const SketchObject& circle, double clickX,
                  double clickY, SketchObject& object);

// The preview of a method with typed sizes instead of its own. Its place stays, but a circle by
// its diameter's ends and a rectangle by two corners keep the first point, (firstX, firstY),
// on their edge. False: sizes not above 0, or beyond the limits, or a slot shorter than wide.
bool ObjectFromTypedSizes(int method, double size, double size2, double firstX, double firstY,
                          SketchObject& object);

}  // namespace morva
