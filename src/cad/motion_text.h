// Motion text: the G-code lines that the generators of shapes share.
//
// Buffers are bounded and cut silently at their capacity. X, Y, Z, I and J have 3 decimals, F
// 2 on a plunge and on the first arc of a circle, 1 elsewhere; half up on the absolute value,
// with "-" for every value below 0.
#pragma once

namespace morva {

// "G01 X1.000 Y2.000 F10.0" and CR LF.
void EmitMotion(char16_t* buffer, int capacity, const char16_t* word, double x, double y,
                double feed, bool withFeed);
void RotatePoint(double cx, double cy, double lx, double ly, double angleDegrees, double& outX,
                 double& outY);
// Kind 0 circle, 1 square, 2 rectangle, 3 triangle, 4 diamond, 5 slot.
void EmitClosedShape(char16_t* buffer, int capacity, int kind, double x, double y, double width,
                     double height, double angle, double depth, double feed, double safeZ);
// Clockwise in 16 arcs. A diameter of 0 or less writes nothing.
void EmitCircle(char16_t* buffer, int capacity, double cx, double cy, double diameter, double depth,
                double feed, double safeZ);
// Counter-clockwise. A width below 1e-6 in size writes nothing.
void EmitSlot(char16_t* buffer, int capacity, double cx, double cy, double length, double width,
              double angle, double depth, double feed, double safeZ);

}  // namespace morva
