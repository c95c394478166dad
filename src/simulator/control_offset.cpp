#include "simulator/control_offset.h"

#include <cmath>

#include "text/series_trig.h"

namespace morva {

namespace {

constexpr double kTiny = 1e-9;
constexpr double kBeside = 1e-6;

Flat Minus(const Flat& a, const Flat& b) { return {a.x - b.x, a.y - b.y}; }
double Dot(const Flat& a, const Flat& b) { return a.x * b.x + a.y * b.y; }
double Cross(const Flat& a, const Flat& b) { return a.x * b.y - a.y * b.x; }
double Length(const Flat& a) { return std::hypot(a.x, a.y); }

Flat Unit(const Flat& a) {
  const double length = Length(a);
  return length > kTiny ? Flat{a.x / length, a.y / length} : Flat{};
}

// The way along the circle at a place on it.
Flat WayAt(const FlatStretch& arc, const Flat& place) {
  const Flat out = Unit(Minus(place, arc.centre));
  return arc.clockwise ? Flat{out.y, -out.x} : Flat{-out.y, out.x};
}

double RadiusOf(const FlatStretch& arc) { return Length(Minus(arc.from, arc.centre)); }

struct Meetings {
  int count = 0;
  Flat first, second;
};

Meetings LineLine(const FlatStretch& a, const FlatStretch& b) {
  const Flat u = Unit(Minus(a.to, a.from));
  const Flat v = Unit(Minus(b.to, b.from));
  const double cross = Cross(u, v);
  if (std::fabs(cross) < kTiny) return {};
  const double along = Cross(Minus(b.from, a.from), v) / cross;
  return {1, {a.from.x + u.x * along, a.from.y + u.y * along}, {}};
}

Meetings LineArc(const FlatStretch& line, const FlatStretch& arc) {
  const Flat u = Unit(Minus(line.to, line.from));
  const Flat to = Minus(line.from, arc.centre);
  const double radius = RadiusOf(arc);
  const double middle = -Dot(to, u);
  const double beside = Cross(u, to);
  double square = radius * radius - beside * beside;
  if (square < -kBeside * radius) return {};
  square = square > 0 ? std::sqrt(square) : 0;
  const auto at = [&](double along) {
    return Flat{line.from.x + u.x * along, line.from.y + u.y * along};
  };
  return {2, at(middle - square), at(middle + square)};
}

Meetings ArcArc(const FlatStretch& a, const FlatStretch& b) {
  const Flat between = Minus(b.centre, a.centre);
  const double apart = Length(between);
  if (apart < kTiny) return {};
  const double ra = RadiusOf(a);
  const double rb = RadiusOf(b);
  const double along = (apart * apart + ra * ra - rb * rb) / (2 * apart);
  double square = ra * ra - along * along;
  if (square < -kBeside * ra) return {};
  square = square > 0 ? std::sqrt(square) : 0;
  const Flat u = Unit(between);
  const Flat foot = {a.centre.x + u.x * along, a.centre.y + u.y * along};
  return {2,
          {foot.x - u.y * square, foot.y + u.x * square},
          {foot.x + u.y * square, foot.y - u.x * square}};
}

}  // namespace

Flat StartWay(const FlatStretch& stretch) {
  return stretch.arc ? WayAt(stretch, stretch.from) : Unit(Minus(stretch.to, stretch.from));
}

Flat EndWay(const FlatStretch& stretch) {
  return stretch.arc ? WayAt(stretch, stretch.to) : Unit(Minus(stretch.to, stretch.from));
}

bool OffsetBy(const FlatStretch& stretch, double left, FlatStretch& out) {
  if (stretch.arc) {
    // To the left of a counter-clockwise arc lies its centre.
    const double radius = RadiusOf(stretch) + (stretch.clockwise ? left : -left);
    if (radius <= kTiny) return false;
  }
  const Flat start = StartWay(stretch);
  const Flat end = EndWay(stretch);
  FlatStretch moved = stretch;
  moved.from = {stretch.from.x - start.y * left, stretch.from.y + start.x * left};
  moved.to = {stretch.to.x - end.y * left, stretch.to.y + end.x * left};
  out = moved;
  return true;
}

bool MeetNear(const FlatStretch& first, const FlatStretch& second, const Flat& near, Flat& meets) {
  Meetings found;
  if (!first.arc && !second.arc) found = LineLine(first, second);
  if (!first.arc && second.arc) found = LineArc(first, second);
  if (first.arc && !second.arc) found = LineArc(second, first);
  if (first.arc && second.arc) found = ArcArc(first, second);
  if (found.count == 0) return false;
  meets = found.first;
  if (found.count == 2 && Length(Minus(found.second, near)) < Length(Minus(meets, near))) {
    meets = found.second;
  }
  return true;
}

bool LiesOn(const FlatStretch& stretch, const Flat& place) {
  if (!stretch.arc) {
    const Flat way = Minus(stretch.to, stretch.from);
    const double along = Dot(Minus(place, stretch.from), Unit(way));
    return along >= -kBeside && along <= Length(way) + kBeside;
  }
  const auto angle = [&stretch](const Flat& at) {
    return std::atan2(at.y - stretch.centre.y, at.x - stretch.centre.x);
  };
  const double sense = stretch.clockwise ? -1 : 1;
  const auto turned = [sense](double radians) {
    const double t = std::fmod(radians * sense, kTwoPi);
    return t < 0 ? t + kTwoPi : t;
  };
  const double whole = turned(angle(stretch.to) - angle(stretch.from));
  const double part = turned(angle(place) - angle(stretch.from));
  const double beside = kBeside / std::fmax(RadiusOf(stretch), kBeside);
  const bool full = whole < beside || whole > kTwoPi - beside;
  return full || part <= whole + beside || part >= kTwoPi - beside;
}

}  // namespace morva
