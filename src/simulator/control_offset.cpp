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

// Radians from the start of the arc to the direction of a place, in its sense; 0 to below a turn.
double SweepTo(const FlatStretch& arc, const Flat& place) {
  const auto angle = [&arc](const Flat& at) {
    return std::atan2(at.y - arc.centre.y, at.x - arc.centre.x);
  };
  const double turn = std::fmod(angle(place) - angle(arc.from), kTwoPi);
  const double swept = arc.clockwise ? -turn : turn;
  return swept < 0 ? swept + kTwoPi : swept;
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
  if (square < -kBeside * (radius + kBeside)) return {};
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
  if (square < -kBeside * (ra + kBeside)) return {};
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
    // An arc of the tool's own radius leaves its centre on the spot.
    if (radius < -kTiny) return false;
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

bool GoesBack(const FlatStretch& stretch, const Flat& from, const Flat& to) {
  if (!stretch.arc) return Dot(Minus(to, from), StartWay(stretch)) < -kBeside;
  const double radius =
      std::fmin(Length(Minus(from, stretch.centre)), Length(Minus(to, stretch.centre)));
  const double whole = SweepTo(stretch, stretch.to);
  const double beside = kBeside / std::fmax(radius, kBeside);
  if (radius < kBeside || whole < beside || whole > kTwoPi - beside) return false;
  // What lies beyond the end by less than before the start counts as behind the end.
  const auto along = [&](const Flat& place) {
    const double part = SweepTo(stretch, place);
    return part > (whole + kTwoPi) / 2 ? part - kTwoPi : part;
  };
  return along(to) < along(from) - beside;
}

bool LiesOn(const FlatStretch& stretch, const Flat& place) {
  if (!stretch.arc) {
    const Flat way = Minus(stretch.to, stretch.from);
    const double along = Dot(Minus(place, stretch.from), Unit(way));
    return along >= -kBeside && along <= Length(way) + kBeside;
  }
  const double whole = SweepTo(stretch, stretch.to);
  const double part = SweepTo(stretch, place);
  const double beside = kBeside / std::fmax(RadiusOf(stretch), kBeside);
  const bool full = whole < beside || whole > kTwoPi - beside;
  return full || part <= whole + beside || part >= kTwoPi - beside;
}

}  // namespace morva
