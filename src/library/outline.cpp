#include "library/outline.h"

#include <cmath>

#include "text/codetext.h"
#include "text/series_trig.h"

namespace morva {

using platform::PointF;

namespace {

constexpr int kCircleSteps = 96;
constexpr int kCapSteps = 32;
// The caps of a slot keep these two constants; their outlines are compared with older files.
constexpr double kCapPi = 3.14159265359;
constexpr double kCapHalfPi = 1.570796326795;
constexpr double kMarkReach = 0.025;  // a work point's cross, drawing units
constexpr double kParallel = 1e-12;

double SquareBetween(PointF a, PointF b) {
  return (a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y);
}

// A point of the object's own frame, turned and moved to its anchor.
struct Frame {
  double x, y, sine, cosine;
  void Put(double lx, double ly, double& outX, double& outY) const {
    outX = x + lx * cosine - ly * sine;
    outY = y + lx * sine + ly * cosine;
  }
};

Frame FrameOf(const SketchObject& object) {
  return Frame{object.x, object.y, SketchSine(object.angle), SketchCosine(object.angle)};
}

int BoxCorners(const SketchObject& object, double* xs, double* ys) {
  const Frame frame = FrameOf(object);
  const double w = object.size / 2;
  const double h = object.size2 / 2;
  frame.Put(-w, -h, xs[0], ys[0]);
  frame.Put(w, -h, xs[1], ys[1]);
  frame.Put(w, h, xs[2], ys[2]);
  frame.Put(-w, h, xs[3], ys[3]);
  return 4;
}

int CircleOutline(const SketchObject& object, double* xs, double* ys) {
  const Frame frame = FrameOf(object);
  const double r = object.size / 2;
  for (int i = 0; i <= kCircleSteps; ++i) {
    const double a = kTwoPi * i / kCircleSteps;
    frame.Put(r * SeriesCosine(a), r * SeriesSine(a), xs[i], ys[i]);
  }
  return kCircleSteps + 1;
}

int SlotOutline(const SketchObject& object, double* xs, double* ys) {
  const Frame frame = FrameOf(object);
  const double r = object.size2 / 2;
  const double straight = (object.size - object.size2) / 2;
  const double s = straight > 0 ? straight : 0;
  int n = 0;
  for (int i = 0; i <= kCapSteps; ++i) {
    const double a = -kCapHalfPi + kCapPi * i / kCapSteps;
    frame.Put(s + r * SeriesCosine(a), r * SeriesSine(a), xs[n], ys[n]);
    ++n;
  }
  for (int i = 0; i <= kCapSteps; ++i) {
    const double a = kCapHalfPi + kCapPi * i / kCapSteps;
    frame.Put(-s + r * SeriesCosine(a), r * SeriesSine(a), xs[n], ys[n]);
    ++n;
  }
  xs[n] = xs[0];
  ys[n] = ys[0];
  return n + 1;
}

int MarkOutline(const SketchObject& object, double* xs, double* ys) {
  const Frame frame = FrameOf(object);
  frame.Put(-kMarkReach, 0, xs[0], ys[0]);
  frame.Put(kMarkReach, 0, xs[1], ys[1]);
  frame.Put(0, 0, xs[2], ys[2]);
  frame.Put(0, kMarkReach, xs[3], ys[3]);
  frame.Put(0, -kMarkReach, xs[4], ys[4]);
  return 5;
}

}  // namespace

double SketchSine(double degrees) { return SeriesSine(degrees * kRadiansPerDegree); }

double SketchCosine(double degrees) { return SeriesCosine(degrees * kRadiansPerDegree); }

double ExactCosine(double degrees) {
  double a = degrees;
  if (!(a > -1e9 && a < 1e9)) return 0;               // no direction is left in such an angle
  if (std::fabs(a) > 1000000) a = std::fmod(a, 360);  // no field takes it, a file may hold it
  while (a < 0) a += 360;
  while (a >= 360) a -= 360;
  double exact = 0;
  return QuarterCosine(a, exact) ? exact : SketchCosine(a);
}

double SketchRoot(double value) { return value > 0 ? std::sqrt(value) : 0; }

void LineEndPoint(const SketchObject& object, double& x, double& y) {
  x = object.x + object.size * SketchCosine(object.angle);
  y = object.y + object.size * SketchSine(object.angle);
}

int ObjectOutline(const SketchObject& object, double* xs, double* ys) {
  switch (object.type) {
    case kTypeLine:
    case kTypeWorkAxis:
      xs[0] = object.x;
      ys[0] = object.y;
      LineEndPoint(object, xs[1], ys[1]);
      return 2;
    case kTypeRectangle:
      BoxCorners(object, xs, ys);
      xs[4] = xs[0];
      ys[4] = ys[0];
      return 5;
    case kTypeCircle:
      return CircleOutline(object, xs, ys);
    case kTypeSlot:
      return SlotOutline(object, xs, ys);
    case kTypeWorkPoint:
      return MarkOutline(object, xs, ys);
    default:
      return 0;
  }
}

int ObjectSnapPoints(const SketchObject& object, double* xs, double* ys) {
  xs[0] = object.x;
  ys[0] = object.y;
  switch (object.type) {
    case kTypeLine:
    case kTypeWorkAxis:
      LineEndPoint(object, xs[1], ys[1]);
      xs[2] = (xs[0] + xs[1]) / 2;
      ys[2] = (ys[0] + ys[1]) / 2;
      return 3;
    case kTypeCircle: {
      const double r = object.size / 2;
      for (int i = 0; i < 4; ++i) {
        xs[i + 1] = object.x + r * SketchCosine(90.0 * i);
        ys[i + 1] = object.y + r * SketchSine(90.0 * i);
      }
      return 5;
    }
    case kTypeRectangle:
    case kTypeSlot:
      BoxCorners(object, xs + 1, ys + 1);
      for (int i = 0; i < 4; ++i) {
        const int next = (i + 1) % 4;
        xs[5 + i] = (xs[1 + i] + xs[1 + next]) / 2;
        ys[5 + i] = (ys[1 + i] + ys[1 + next]) / 2;
      }
      return 9;
    default:
      return 1;  // a work point
  }
}

bool LineIntersection(const Ray& a, const Ray& b, double& alongA, double& alongB) {
  const double determinant = a.dx * b.dy - a.dy * b.dx;
  if (std::fabs(determinant) < kParallel) return false;
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  alongA = (dx * b.dy - dy * b.dx) / determinant;
  alongB = (dx * a.dy - dy * a.dx) / determinant;
  return true;
}

bool TangentPoint(PointF from, const SketchObject& circle, PointF click, PointF& touch) {
  const double r = circle.size / 2;
  const double vx = from.x - circle.x;
  const double vy = from.y - circle.y;
  const double square = vx * vx + vy * vy;
  if (square <= r * r + 1e-12) return false;
  const double k = r * r / square;
  const double h = r * SketchRoot(square - r * r) / square;
  // The point on the plus side stands first and wins a tie.
  const PointF first{circle.x + k * vx - h * vy, circle.y + k * vy + h * vx};
  const PointF second{circle.x + k * vx + h * vy, circle.y + k * vy - h * vx};
  touch = SquareBetween(first, click) <= SquareBetween(second, click) ? first : second;
  return true;
}

void TurnObject(SketchObject& object, double pivotX, double pivotY, double degrees) {
  const double sine = ExactSine(degrees);
  const double cosine = ExactCosine(degrees);
  const double dx = object.x - pivotX;
  const double dy = object.y - pivotY;
  object.x = pivotX + dx * cosine - dy * sine;
  object.y = pivotY + dx * sine + dy * cosine;
  object.angle += degrees;
}

}  // namespace morva
