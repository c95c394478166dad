#include "cad/motion_text.h"

#include <cmath>

#include "library/codetext.h"
#include "library/series_trig.h"

namespace morva {

namespace {

constexpr int kLineUnits = 220;
constexpr int kNumberUnits = 64;
constexpr double kLeastSize = 1e-6;
constexpr int kArcs = 16;
constexpr int kPointDecimals = 3;
constexpr int kPlungeFeedDecimals = 2;
constexpr int kCutFeedDecimals = 1;

// Sixteenths of a clockwise turn, rounded to seven decimals: these digits are what is cut.
constexpr double kArcCosine[kArcs + 1] = {1.0,        0.9238795,  0.7071068,  0.3826834, 0.0,
                                          -0.3826834, -0.7071068, -0.9238795, -1.0,      -0.9238795,
                                          -0.7071068, -0.3826834, 0.0,        0.3826834, 0.7071068,
                                          0.9238795,  1.0};
constexpr double kArcSine[kArcs + 1] = {0.0,        -0.3826834, -0.7071068, -0.9238795, -1.0,
                                        -0.9238795, -0.7071068, -0.3826834, 0.0,        0.3826834,
                                        0.7071068,  0.9238795,  1.0,        0.9238795,  0.7071068,
                                        0.3826834,  0.0};

// The end of a bounded text. The length is counted once, so that a long program does not walk
// its buffer again for every word.
struct Writer {
  char16_t* buffer;
  int capacity;
  int length = 0;

  Writer(char16_t* to, int units) : buffer(to), capacity(to ? units : 0) {
    while (length < capacity && buffer[length]) ++length;
  }
  void Put(const char16_t* text) {
    for (; *text && length < capacity - 1; ++text) buffer[length++] = *text;
    if (length < capacity) buffer[length] = 0;
  }
  void Put(const char16_t* label, double value, int decimals) {
    char16_t number[kNumberUnits];
    FormatFixed(value, decimals, number, kNumberUnits);
    Put(label);
    Put(number);
  }
};

void PutMotion(Writer& out, const char16_t* word, double x, double y, double feed, bool withFeed) {
  char16_t line[kLineUnits] = {};
  Writer words(line, kLineUnits);
  words.Put(word);
  words.Put(u" X", x, kPointDecimals);
  words.Put(u" Y", y, kPointDecimals);
  if (withFeed) words.Put(u" F", feed, kCutFeedDecimals);
  words.Put(u"\r\n");
  out.Put(line);
}

// Rapid to the start and down to the depth.
void PutStart(Writer& out, double x, double y, double depth, double feed) {
  PutMotion(out, u"G00", x, y, 0, false);
  out.Put(u"G01 Z", depth, kPointDecimals);
  out.Put(u" F", feed, kPlungeFeedDecimals);
  out.Put(u"\r\n");
}

void PutRetract(Writer& out, double safeZ) {
  out.Put(u"G00 Z", safeZ, kPointDecimals);
  out.Put(u"\r\n");
}

// To (x, y) about a centre that lies (i, j) from the arc's start; the line is left open.
void PutArc(Writer& out, const char16_t* word, double x, double y, double i, double j) {
  out.Put(word);
  out.Put(u" X", x, kPointDecimals);
  out.Put(u" Y", y, kPointDecimals);
  out.Put(u" I", i, kPointDecimals);
  out.Put(u" J", j, kPointDecimals);
}

struct Point {
  double x = 0;
  double y = 0;
};

Point Turned(double cx, double cy, double lx, double ly, double angleDegrees) {
  Point point;
  RotatePoint(cx, cy, lx, ly, angleDegrees, point.x, point.y);
  return point;
}

}  // namespace

void RotatePoint(double cx, double cy, double lx, double ly, double angleDegrees, double& outX,
                 double& outY) {
  const double a = angleDegrees * kRadiansPerDegree;
  const double sine = SeriesSine(a);
  const double cosine = SeriesCosine(a);
  outX = cx + lx * cosine - ly * sine;
  outY = cy + lx * sine + ly * cosine;
}

void EmitMotion(char16_t* buffer, int capacity, const char16_t* word, double x, double y,
                double feed, bool withFeed) {
  Writer out(buffer, capacity);
  PutMotion(out, word, x, y, feed, withFeed);
}

void EmitLine(char16_t* buffer, int capacity, double x, double y, double endX, double endY,
              double depth, double feed, double safeZ) {
  Writer out(buffer, capacity);
  PutStart(out, x, y, depth, feed);
  PutMotion(out, u"G01", endX, endY, feed, true);
  PutRetract(out, safeZ);
}

int ShapeCorners(int kind, double width, double height, double* xs, double* ys) {
  const double w = std::fabs(width);
  const double h = kind == 1 || std::fabs(height) < kLeastSize ? w : std::fabs(height);
  const auto put = [xs, ys](int i, double x, double y) {
    xs[i] = x;
    ys[i] = y;
  };
  switch (kind) {
    case 1:
    case 2:
      put(0, -w / 2, -h / 2);
      put(1, w / 2, -h / 2);
      put(2, w / 2, h / 2);
      put(3, -w / 2, h / 2);
      return 4;
    case 3:
      put(0, 0, h / 2);
      put(1, w / 2, -h / 2);
      put(2, -w / 2, -h / 2);
      return 3;
    case 4:
      put(0, 0, h / 2);
      put(1, w / 2, 0);
      put(2, 0, -h / 2);
      put(3, -w / 2, 0);
      return 4;
    default:
      return 0;
  }
}

void EmitClosedShape(char16_t* buffer, int capacity, int kind, double x, double y, double width,
                     double height, double angle, double depth, double feed, double safeZ) {
  if (kind == 0) {
    EmitCircle(buffer, capacity, x, y, width, depth, feed, safeZ);
    return;
  }
  if (kind == 5) {
    EmitSlot(buffer, capacity, x, y, width, height, angle, depth, feed, safeZ);
    return;
  }
  double xs[4];
  double ys[4];
  const int count = ShapeCorners(kind, width, height, xs, ys);
  if (count == 0) return;
  Writer out(buffer, capacity);
  const Point first = Turned(x, y, xs[0], ys[0], angle);
  PutStart(out, first.x, first.y, depth, feed);
  for (int i = 1; i < count; ++i) {
    const Point corner = Turned(x, y, xs[i], ys[i], angle);
    PutMotion(out, u"G01", corner.x, corner.y, feed, true);
  }
  PutMotion(out, u"G01", first.x, first.y, feed, true);
  PutRetract(out, safeZ);
}

void EmitCircle(char16_t* buffer, int capacity, double cx, double cy, double diameter, double depth,
                double feed, double safeZ) {
  const double r = diameter / 2;
  if (!(r > 0)) return;
  Writer out(buffer, capacity);
  Point from{cx + r, cy};
  PutStart(out, from.x, from.y, depth, feed);
  for (int i = 1; i <= kArcs; ++i) {
    const Point to{kArcCosine[i] * r + cx, kArcSine[i] * r + cy};
    PutArc(out, u"G02", to.x, to.y, cx - from.x, cy - from.y);
    if (i == 1) out.Put(u" F", feed, kPlungeFeedDecimals);
    out.Put(u"\r\n");
    from = to;
  }
  PutRetract(out, safeZ);
}

void EmitSlot(char16_t* buffer, int capacity, double cx, double cy, double length, double width,
              double angle, double depth, double feed, double safeZ) {
  const double w = std::fabs(width);
  if (!(w >= kLeastSize)) return;
  const double r = w / 2;
  const double s = ((std::fabs(length) > w ? std::fabs(length) : w) - w) / 2;
  const Point a = Turned(cx, cy, s, r, angle);
  const Point b = Turned(cx, cy, -s, r, angle);
  const Point c = Turned(cx, cy, -s, -r, angle);
  const Point d = Turned(cx, cy, s, -r, angle);
  const Point e = Turned(cx, cy, -s, 0, angle);
  const Point f = Turned(cx, cy, s, 0, angle);
  Writer out(buffer, capacity);
  PutStart(out, a.x, a.y, depth, feed);
  PutMotion(out, u"G01", b.x, b.y, feed, true);
  PutArc(out, u"G03", c.x, c.y, e.x - b.x, e.y - b.y);
  out.Put(u"\r\n");
  PutMotion(out, u"G01", d.x, d.y, feed, true);
  PutArc(out, u"G03", a.x, a.y, f.x - d.x, f.y - d.y);
  out.Put(u"\r\n");
  PutRetract(out, safeZ);
}

}  // namespace morva
