// Motion text: the G-code lines that the generators of shapes share.
//
// Buffers are zero-terminated, counted in units with the terminator, and cut silently at their
// capacity. X, Y, Z, I and J have 3 decimals, F 2 on a plunge and on the first arc of a
// circle, 1 elsewhere; half up on the absolute value, with "-" for every value below 0. I and
// J run from the unrounded start of their arc to its centre. The tool's centre follows the
// outline: no compensation, no lead-in.
#pragma once

namespace morva {

// One line: the word, X, Y and, `withFeed`, F with 1 decimal. At most 219 units of it are kept.
void EmitMotion(char16_t* buffer, int capacity, const char16_t* word, double x, double y,
                double feed, bool withFeed);
// The local point (lx, ly) turned counter-clockwise and moved to (cx, cy).
void RotatePoint(double cx, double cy, double lx, double ly, double angleDegrees, double& outX,
                 double& outY);
// A straight cut: rapid to the start, plunge, feed to the end, retract.
void EmitLine(char16_t* buffer, int capacity, double x, double y, double endX, double endY,
              double depth, double feed, double safeZ);
// A closed outline about its centre, from rapid to retract. Kind 0 circle of diameter `width`,
// 1 square, 2 rectangle, 3 triangle, 4 diamond, 5 slot `width` long and `height` wide; another
// kind writes nothing. Sizes count by magnitude; in kinds 1 to 4 a height below 1e-6 is the
// width. Squares and rectangles run counter-clockwise, triangles and diamonds clockwise.
void EmitClosedShape(char16_t* buffer, int capacity, int kind, double x, double y, double width,
                     double height, double angle, double depth, double feed, double safeZ);
// Clockwise in 16 arcs, because some controls refuse a full circle in one word. A diameter of
// 0 or less writes nothing.
void EmitCircle(char16_t* buffer, int capacity, double cx, double cy, double diameter, double depth,
                double feed, double safeZ);
// Counter-clockwise: straight, half circle, straight, half circle. A width below 1e-6 in size
// writes nothing; a length below the width leaves straights of no length between half circles.
void EmitSlot(char16_t* buffer, int capacity, double cx, double cy, double length, double width,
              double angle, double depth, double feed, double safeZ);

// A point of the kinds 1 to 4 in the shape's own frame, and how many there are; 0 for another.
int ShapeCorners(int kind, double width, double height, double* xs, double* ys);

}  // namespace morva
