#include "library/motion_text.h"

#include <cmath>

#include "app/limits.h"
#include "text/series_trig.h"

namespace morva {

namespace {

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

// To (x, y) about a centre that lies (i, j) from the arc's start; the line is left open.
void PutArc(CodeWriter& out, std::u16string_view word, double x, double y, double i, double j) {
  Put(out, word);
  Put(out, u" X", x, kPointDecimals);
  Put(out, u" Y", y, kPointDecimals);
  Put(out, u" I", i, kPointDecimals);
  Put(out, u" J", j, kPointDecimals);
}

struct Point {
  double x = 0;
  double y = 0;
};

// A point of the item's own frame in the drawing.
Point Turned(const ClosedShape& item, double lx, double ly) {
  Point point;
  RotatePoint(item.x, item.y, lx, ly, item.angle, point.x, point.y);
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

void PutHead(CodeWriter& out, std::u16string_view comment, bool metric) {
  Line(out, u"");
  Line(out, comment);
  Line(out, UnitLine(metric));
  Line(out, kPlainModes);
}

void EmitMotion(CodeWriter& out, std::u16string_view word, double x, double y, double feed,
                bool withFeed) {
  const std::size_t start = out.text.size();
  Put(out, word);
  Put(out, u" X", x, kPointDecimals);
  Put(out, u" Y", y, kPointDecimals);
  if (withFeed) Put(out, u" F", feed, kCutFeedDecimals);
  Line(out, u"");
  const std::size_t most = start + kMotionLineUnits - 1;
  if (out.text.size() > most) out.text.resize(most);
}

void EmitStart(CodeWriter& out, double x, double y, const CutData& cut) {
  EmitMotion(out, u"G00", x, y, 0, false);
  Put(out, u"G01 Z", cut.depth, kPointDecimals);
  Line(out, u" F", cut.feed, kPlungeFeedDecimals);
}

void EmitRetract(CodeWriter& out, const CutData& cut) {
  Line(out, u"G00 Z", cut.safeZ, kPointDecimals);
}

void EmitLine(CodeWriter& out, double x, double y, double endX, double endY, const CutData& cut) {
  EmitStart(out, x, y, cut);
  EmitMotion(out, u"G01", endX, endY, cut.feed, true);
  EmitRetract(out, cut);
}

void EmitArc(CodeWriter& out, std::u16string_view word, double x, double y, double i, double j) {
  PutArc(out, word, x, y, i, j);
  Line(out, u"");
}

void EmitPolyline(CodeWriter& out, const double* xs, const double* ys, int count,
                  const CutData& cut) {
  if (count < 1) return;
  EmitStart(out, xs[0], ys[0], cut);
  for (int i = 1; i < count; ++i) EmitMotion(out, u"G01", xs[i], ys[i], cut.feed, true);
  EmitRetract(out, cut);
}

int ShapeCorners(ItemShape shape, double width, double height, double* xs, double* ys) {
  const double w = std::fabs(width);
  const double h =
      shape == ItemShape::Square || std::fabs(height) < kLeastSize ? w : std::fabs(height);
  const auto put = [xs, ys](int i, double x, double y) {
    xs[i] = x;
    ys[i] = y;
  };
  switch (shape) {
    case ItemShape::Square:
    case ItemShape::Rectangle:
      put(0, -w / 2, -h / 2);
      put(1, w / 2, -h / 2);
      put(2, w / 2, h / 2);
      put(3, -w / 2, h / 2);
      return 4;
    case ItemShape::Triangle:
      put(0, 0, h / 2);
      put(1, w / 2, -h / 2);
      put(2, -w / 2, -h / 2);
      return 3;
    case ItemShape::Diamond:
      put(0, 0, h / 2);
      put(1, w / 2, 0);
      put(2, 0, -h / 2);
      put(3, -w / 2, 0);
      return 4;
    default:
      return 0;
  }
}

void EmitClosedShape(CodeWriter& out, const ClosedShape& item, const CutData& cut) {
  if (item.shape == ItemShape::Circle) return EmitCircle(out, item, cut);
  if (item.shape == ItemShape::Slot) return EmitSlot(out, item, cut);
  double xs[4];
  double ys[4];
  const int count = ShapeCorners(item.shape, item.width, item.height, xs, ys);
  if (count == 0) return;
  const Point first = Turned(item, xs[0], ys[0]);
  EmitStart(out, first.x, first.y, cut);
  for (int i = 1; i < count; ++i) {
    const Point corner = Turned(item, xs[i], ys[i]);
    EmitMotion(out, u"G01", corner.x, corner.y, cut.feed, true);
  }
  EmitMotion(out, u"G01", first.x, first.y, cut.feed, true);
  EmitRetract(out, cut);
}

void EmitCircle(CodeWriter& out, const ClosedShape& circle, const CutData& cut) {
  const double r = circle.width / 2;
  if (!(r > 0)) return;
  Point from{circle.x + r, circle.y};
  EmitStart(out, from.x, from.y, cut);
  for (int i = 1; i <= kArcs; ++i) {
    const Point to{kArcCosine[i] * r + circle.x, kArcSine[i] * r + circle.y};
    PutArc(out, u"G02", to.x, to.y, circle.x - from.x, circle.y - from.y);
    if (i == 1) Put(out, u" F", cut.feed, kPlungeFeedDecimals);
    Line(out, u"");
    from = to;
  }
  EmitRetract(out, cut);
}

void EmitSlot(CodeWriter& out, const ClosedShape& slot, const CutData& cut) {
  const double length = std::fabs(slot.width);
  const double w = std::fabs(slot.height);
  if (!(w >= kLeastSize)) return;
  const double r = w / 2;
  const double s = ((length > w ? length : w) - w) / 2;
  const Point a = Turned(slot, s, r);
  const Point b = Turned(slot, -s, r);
  const Point c = Turned(slot, -s, -r);
  const Point d = Turned(slot, s, -r);
  const Point e = Turned(slot, -s, 0);
  const Point f = Turned(slot, s, 0);
  EmitStart(out, a.x, a.y, cut);
  EmitMotion(out, u"G01", b.x, b.y, cut.feed, true);
  EmitArc(out, u"G03", c.x, c.y, e.x - b.x, e.y - b.y);
  EmitMotion(out, u"G01", d.x, d.y, cut.feed, true);
  EmitArc(out, u"G03", a.x, a.y, f.x - d.x, f.y - d.y);
  EmitRetract(out, cut);
}

}  // namespace morva
