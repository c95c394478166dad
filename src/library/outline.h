// Geometry of sketch objects, computed from anchor, size and angle. Pure functions.
//
// Sine and cosine are the program's own series, so that the points here are those of the code.
#pragma once

#include "library/sketch_object.h"
#include "platform/geometry.h"

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

// The point of a segment nearest to another one.
struct SegmentFoot {
  double x = 0, y = 0;
  double along = 0;   // 0 to 1, from a to b
  double square = 0;  // of its distance
};
// A segment shorter than `least` gives its start. Inline, as the points would else be stored and
// loaded again for each of some thousand segments.
inline SegmentFoot FootOnSegment(platform::PointF from, platform::PointF a, platform::PointF b,
                                 double least) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double square = dx * dx + dy * dy;
  SegmentFoot foot;
  if (square >= least * least && square > 0) {
    const double t = ((from.x - a.x) * dx + (from.y - a.y) * dy) / square;
    foot.along = t < 0 ? 0 : t > 1 ? 1 : t;
  }
  foot.x = a.x + foot.along * dx;
  foot.y = a.y + foot.along * dy;
  foot.square = (from.x - foot.x) * (from.x - foot.x) + (from.y - foot.y) * (from.y - foot.y);
  return foot;
}
// A line through a point along a vector of any length.
struct Ray {
  double x = 0, y = 0;
  double dx = 0, dy = 0;
};
// Where two lines meet, counted in the vectors as given. False: parallel, determinant of the
// vectors below 1e-12 in size.
bool LineIntersection(const Ray& a, const Ray& b, double& alongA, double& alongB);
// Of the two points where lines from `from` touch the circle, the one nearer to the click. False:
// `from` is not outside: the square of its distance is at most r^2 + 1e-12.
bool TangentPoint(platform::PointF from, const SketchObject& circle, platform::PointF click,
                  platform::PointF& touch);
// Turns an object about a pivot: its anchor moves, `degrees` is added to its angle.
void TurnObject(SketchObject& object, double pivotX, double pivotY, double degrees);

}  // namespace morva
