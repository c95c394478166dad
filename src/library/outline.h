// Geometry of sketch objects, computed from anchor, size and angle. Pure functions.
//
// Sine and cosine are the program's own series, so that the points here are those of the code.
#pragma once

#include "library/sketch_object.h"

namespace morva {

inline constexpr int kOutlinePoints = 100;  // room that a caller's arrays must have

// The polyline of an object: line and axis 2 points, rectangle 5, circle 97, slot 67, work
// point 5. 0 for another type.
int ObjectOutline(const SketchObject& object, double* xs, double* ys);
// Candidates to snap to, the anchor first: work point 1, line and axis 3, circle 5, rectangle
// and slot 9. Arrays of 9.
int ObjectSnapPoints(const SketchObject& object, double* xs, double* ys);
void LineEndPoint(const SketchObject& object, double& x, double& y);

double SketchSine(double degrees);
double SketchCosine(double degrees);
// Exactly 1, 0, -1, 0 at the quarter turns, else the series. The sine is that of 90 - a.
double ExactCosine(double degrees);
inline double ExactSine(double degrees) { return ExactCosine(90 - degrees); }
double SketchRoot(double value);  // 0 for an argument of 0 or less

// The foot of (px, py) on the segment, held to its ends; a segment shorter than `least` gives
// its start. The parameter 0 to 1.
double FootOnSegment(double px, double py, double ax, double ay, double bx, double by, double least,
                     double& fx, double& fy);
// Two lines through their start points along their directions. False: parallel, determinant
// of the directions below 1e-12 in size. t and s run along each direction vector as given.
bool LineIntersection(double ax, double ay, double adx, double ady, double bx, double by,
                      double bdx, double bdy, double& t, double& s);
// The two tangent points of the lines from P to the circle (cx, cy, r), the one nearer to the
// click. False: P is not outside (|P-C|^2 at most r^2 + 1e-12).
bool TangentPoint(double px, double py, double cx, double cy, double r, double clickX,
                  double clickY, double& tx, double& ty);
// Turns an object about a pivot: its anchor moves, `degrees` is added to its angle.
void TurnObject(SketchObject& object, double pivotX, double pivotY, double degrees);

}  // namespace morva
