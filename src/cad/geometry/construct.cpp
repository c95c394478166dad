#include "cad/geometry/construct.h"

#include <cmath>

#include "app/command_ids.h"
#include "cad/geometry/lines.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"
#include "library/outline.h"
#include "text/codetext.h"

namespace morva {

namespace {

// Three points count as lying on one line below this share of their spread.
constexpr double kCollinear = 1e-9;

SketchObject MakeLine(double ax, double ay, double bx, double by) {
  SketchObject line;
  SetLineEnds(line, ax, ay, bx, by);
  return line;
}

SketchObject MakeCircle(double x, double y, double diameter) {
  SketchObject circle;
  circle.type = kTypeCircle;
  circle.x = x;
  circle.y = y;
  circle.size = diameter;
  return circle;
}

SketchObject MakeBox(std::int32_t type, double x, double y, double size, double size2,
                     double angle) {
  SketchObject box;
  box.type = type;
  box.x = x;
  box.y = y;
  box.size = size;
  box.size2 = size2;
  box.angle = angle;
  return box;
}

bool CircleThroughThree(const double* xs, const double* ys, SketchObject& circle) {
  const double ax = xs[1] - xs[0];
  const double ay = ys[1] - ys[0];
  const double bx = xs[2] - xs[0];
  const double by = ys[2] - ys[0];
  const double a = ax * ax + ay * ay;
  const double b = bx * bx + by * by;
  const double d = 2 * (ax * by - ay * bx);
  if (!(std::fabs(d) >= (a + b) * kCollinear)) return false;
  const double ux = (by * a - ay * b) / d;
  const double uy = (ax * b - bx * a) / d;
  circle = MakeCircle(xs[0] + ux, ys[0] + uy, 2 * PlainDistance(0, 0, ux, uy));
  return true;
}

// The rectangle on a side, or the slot about its centreline: the third point gives how far it
// reaches from the line through the first two.
bool BoxFromThree(int method, const double* xs, const double* ys, SketchObject& box) {
  const double dx = xs[1] - xs[0];
  const double dy = ys[1] - ys[0];
  const double length = PlainDistance(xs[0], ys[0], xs[1], ys[1]);
  // The left normal of the side.
  const double nx = -dy / length;
  const double ny = dx / length;
  const double h = (xs[2] - xs[0]) * nx + (ys[2] - ys[0]) * ny;
  const double reach = std::fabs(h);
  if (!(reach >= kLeastSize)) return false;
  const double middleX = (xs[0] + xs[1]) / 2;
  const double middleY = (ys[0] + ys[1]) / 2;
  const double angle = AngleDegrees(dy, dx);
  if (method == kIdMethodRectangleThree) {
    box = MakeBox(kTypeRectangle, middleX + nx * (h / 2), middleY + ny * (h / 2), length, reach,
                  angle);
  } else {
    box = MakeBox(kTypeSlot, middleX, middleY, length + 2 * reach, 2 * reach, angle);
  }
  return true;
}

bool BoxFromCorners(const double* xs, const double* ys, bool fromCentre, SketchObject& box) {
  const double w = std::fabs(xs[1] - xs[0]);
  const double h = std::fabs(ys[1] - ys[0]);
  if (!(w >= kLeastSize && h >= kLeastSize)) return false;
  if (fromCentre) {
    box = MakeBox(kTypeRectangle, xs[0], ys[0], 2 * w, 2 * h, 0);
  } else {
    box = MakeBox(kTypeRectangle, (xs[0] + xs[1]) / 2, (ys[0] + ys[1]) / 2, w, h, 0);
  }
  return true;
}

TangentFault Touching(double x, double y, double radius, SketchObject& object) {
  const SketchObject circle = MakeCircle(x, y, 2 * radius);
  if (!(circle.size > kLeastSize) || !WithinSketchLimit(circle)) return TangentFault::Degenerate;
  object = circle;
  return TangentFault::None;
}

}  // namespace

SketchObject ObjectFromDrag(int tool, double startX, double startY, double endX, double endY) {
  const double least = BySketchUnit(0.04, 1.0);
  const double dx = endX - startX;
  const double dy = endY - startY;
  double d = PlainDistance(startX, startY, endX, endY);
  if (d < least) d = BySketchUnit(0.4, 10.0);
  const double middleX = (startX + endX) / 2;
  const double middleY = (startY + endY) / 2;
  SketchObject object;
  switch (tool - 1) {
    case kTypeRectangle: {
      const double w = std::fabs(dx);
      const double h = std::fabs(dy);
      object = MakeBox(kTypeRectangle, middleX, middleY, w < least ? d : w, h < least ? d : h, 0);
      break;
    }
    case kTypeCircle:
      object = MakeCircle(startX, startY, 2 * d);
      break;
    case kTypeSlot: {
      const double width = BySketchUnit(0.25, 6.0);
      object =
          MakeBox(kTypeSlot, middleX, middleY, d < width ? width : d, width, AngleDegrees(dy, dx));
      break;
    }
    case kTypeWorkPoint:
      object.type = kTypeWorkPoint;
      object.x = startX;
      object.y = startY;
      break;
    default:
      object = MakeLine(startX, startY, endX, endY);
      object.size = d;
      object.type = tool - 1 == kTypeWorkAxis ? kTypeWorkAxis : kTypeLine;
      break;
  }
  return object;
}

int PointsOfMethod(int method) {
  return method == kIdMethodCircleThree || method == kIdMethodRectangleThree ||
                 method == kIdMethodSlotPoints
             ? 3
             : 2;
}

bool IsTangentMethod(int method) {
  return method == kIdMethodLineTangent || method == kIdMethodCircleOnLine ||
         method == kIdMethodCircleOnCircle;
}

bool ObjectFromPoints(int method, const double* xs, const double* ys, SketchObject& object) {
  const double dx = xs[1] - xs[0];
  const double dy = ys[1] - ys[0];
  const double distance = PlainDistance(xs[0], ys[0], xs[1], ys[1]);
  if (!(distance >= kLeastSize)) return false;
  SketchObject made;
  bool whole = true;
  switch (method) {
    case kIdMethodLine:
      made = MakeLine(xs[0], ys[0], xs[1], ys[1]);
      break;
    case kIdMethodCircleRadius:
      made = MakeCircle(xs[0], ys[0], 2 * distance);
      break;
    case kIdMethodCircleDiameter:
      made = MakeCircle((xs[0] + xs[1]) / 2, (ys[0] + ys[1]) / 2, distance);
      break;
    case kIdMethodCircleThree:
      whole = CircleThroughThree(xs, ys, made);
      break;
    case kIdMethodRectangle:
    case kIdMethodRectangleCentre:
      whole = BoxFromCorners(xs, ys, method == kIdMethodRectangleCentre, made);
      break;
    case kIdMethodRectangleThree:
    case kIdMethodSlotPoints:
      whole = BoxFromThree(method, xs, ys, made);
      break;
    case kIdMethodPolygon:
      made = MakeCircle(xs[0], ys[0], distance);
      made.size2 = tools.polygonSides;
      made.angle = AngleDegrees(dy, dx);
      break;
    default:
      return false;
  }
  if (!whole || !(made.size > kLeastSize) || !WithinSketchLimit(made)) return false;
  object = made;
  return true;
}

TangentFault CircleOnLine(const SketchObject& line, double centreX, double centreY,
                          SketchObject& object) {
  const double sine = SketchSine(line.angle);
  const double cosine = SketchCosine(line.angle);
  const double dx = centreX - line.x;
  const double dy = centreY - line.y;
  const double u = dx * cosine + dy * sine;
  if (!(u >= 0 && u <= line.size)) return TangentFault::OffSegment;
  return Touching(centreX, centreY, std::fabs(dy * cosine - dx * sine), object);
}

TangentFault CircleOnCircle(const SketchObject& circle, double centreX, double centreY,
                            SketchObject& object) {
  const double d = PlainDistance(centreX, centreY, circle.x, circle.y);
  if (!(d >= kLeastSize)) return TangentFault::Concentric;
  return Touching(centreX, centreY, std::fabs(d - circle.size / 2), object);
}

bool LineOnCircle(double startX, double startY, const SketchObject& circle, double clickX,
                  double clickY, SketchObject& object) {
  platform::PointF touch;
  if (!TangentPoint({startX, startY}, circle, {clickX, clickY}, touch)) return false;
  const SketchObject line = MakeLine(startX, startY, touch.x, touch.y);
  if (!(line.size > kLeastSize) || !WithinSketchLimit(line)) return false;
  object = line;
  return true;
}

bool ObjectFromTypedSizes(int method, double size, double size2, double firstX, double firstY,
                          SketchObject& object) {
  const bool twoSizes = HasTwoSizes(object);
  if (!(size > 0)) return false;
  if (twoSizes && !(size2 > 0)) return false;
  if (object.type == kTypeSlot && size < size2) return false;
  SketchObject made = object;
  made.size = size;
  made.size2 = twoSizes ? size2 : 0;
  if (method == kIdMethodCircleDiameter) {
    const double dx = object.x - firstX;
    const double dy = object.y - firstY;
    const double distance = PlainDistance(object.x, object.y, firstX, firstY);
    if (!(distance > kLeastSize)) return false;
    made.x = firstX + dx / distance * (size / 2);
    made.y = firstY + dy / distance * (size / 2);
  } else if (method == kIdMethodRectangle) {
    made.x = firstX + (object.x >= firstX ? size / 2 : -size / 2);
    made.y = firstY + (object.y >= firstY ? size2 / 2 : -size2 / 2);
  }
  if (!WithinSketchLimit(made)) return false;
  object = made;
  return true;
}

}  // namespace morva
