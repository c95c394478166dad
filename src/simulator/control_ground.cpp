#include "simulator/control_ground.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "text/series_trig.h"

namespace morva {

namespace {

constexpr double kSame = 1e-6;
constexpr double kTouch = 1e-10;     // a row along a wall meets it by no more
constexpr double kMostChords = 720;  // of an arc

void AddPoint(PocketGround& ground, Flat point) {
  if (ground.outline.size() < kMaxGroundPoints) {
    ground.outline.push_back(point);
  } else {
    ground.full = true;
  }
}

double DistanceOf(Flat a, Flat b) { return std::hypot(b.x - a.x, b.y - a.y); }

// How far a place lies off a straight line between two.
double DistanceTo(Flat from, Flat to, Flat place) {
  const double length = DistanceOf(from, to);
  if (length <= kSame) return DistanceOf(from, place);
  const double x = (to.x - from.x) / length;
  const double y = (to.y - from.y) / length;
  const double along = std::clamp((place.x - from.x) * x + (place.y - from.y) * y, 0.0, length);
  return DistanceOf({from.x + x * along, from.y + y * along}, place);
}

// Above 0 where the place lies to the left of the line.
double SideOf(Flat from, Flat to, Flat place) {
  return (to.x - from.x) * (place.y - from.y) - (to.y - from.y) * (place.x - from.x);
}

bool Cross(Flat a, Flat b, Flat c, Flat d) {
  const double least = kSame * kSame;
  const double one = SideOf(a, b, c) * SideOf(a, b, d);
  const double other = SideOf(c, d, a) * SideOf(c, d, b);
  return one < -least && other < -least;
}

// Whether the boxes about two lines lie no farther apart than the distance.
bool IsNear(Flat a, Flat b, Flat c, Flat d, double distance) {
  return std::max(a.x, b.x) + distance >= std::min(c.x, d.x) &&
         std::max(c.x, d.x) + distance >= std::min(a.x, b.x) &&
         std::max(a.y, b.y) + distance >= std::min(c.y, d.y) &&
         std::max(c.y, d.y) + distance >= std::min(a.y, b.y);
}

struct Span {
  double first = std::numeric_limits<double>::max();
  double last = std::numeric_limits<double>::lowest();
  void Take(double value) {
    first = std::min(first, value);
    last = std::max(last, value);
  }
};

// Where the row at y comes nearer to a line than the radius.
Span NearRow(Flat from, Flat to, double y, double radius) {
  Span near;
  for (const Flat& end : {from, to}) {
    const double off = y - end.y;
    if (std::fabs(off) >= radius) continue;
    const double half = std::sqrt(radius * radius - off * off);
    near.Take(end.x - half);
    near.Take(end.x + half);
  }
  const double length = DistanceOf(from, to);
  if (length <= kSame) return near;
  for (const double side : {-radius, radius}) {
    const double dx = -(to.y - from.y) / length * side;
    const double dy = (to.x - from.x) / length * side;
    const double y0 = from.y + dy;
    const double y1 = to.y + dy;
    if ((y < y0) == (y < y1)) continue;
    near.Take(from.x + dx + (to.x - from.x) * (y - y0) / (y1 - y0));
  }
  return near;
}

// The loop of the outline: from where its last point was passed before. False: it is open.
bool CloseOutline(PocketGround& ground) {
  std::vector<Flat>& points = ground.outline;
  if (ground.full || points.size() < 4) return false;
  const auto first = std::find_if(points.begin(), points.end() - 1, [&](const Flat& point) {
    return DistanceOf(point, points.back()) <= kSame;
  });
  if (points.end() - first < 4) return false;
  points.erase(points.begin(), first);
  return true;
}

Flat Turned(Flat point, bool alongX) { return alongX ? point : Flat{point.y, point.x}; }

// What of a row lies within the outline and off its walls, from left to right.
std::vector<Span> RowWithin(const PocketGround& ground, double y, double off) {
  std::vector<double> crossings;
  std::vector<Span> near;
  for (std::size_t i = 0; i + 1 < ground.outline.size(); ++i) {
    const Flat a = Turned(ground.outline[i], ground.alongX);
    const Flat b = Turned(ground.outline[i + 1], ground.alongX);
    if ((a.y <= y) != (b.y <= y)) crossings.push_back(a.x + (b.x - a.x) * (y - a.y) / (b.y - a.y));
    if (off <= kSame || std::min(a.y, b.y) > y + off || std::max(a.y, b.y) < y - off) continue;
    const Span span = NearRow(a, b, y, off - kTouch);
    if (span.first <= span.last) near.push_back(span);
  }
  std::sort(crossings.begin(), crossings.end());
  std::sort(near.begin(), near.end(),
            [](const Span& a, const Span& b) { return a.first < b.first; });
  std::vector<Span> within;
  std::size_t next = 0;
  double reach = std::numeric_limits<double>::lowest();
  for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
    double from = std::max(crossings[i], reach);
    const double to = crossings[i + 1];
    for (; next < near.size() && near[next].first < to; ++next) {
      if (near[next].first > from + kSame) within.push_back({from, near[next].first});
      reach = std::max(reach, near[next].last);
      from = std::max(from, reach);
    }
    if (to > from + kSame) within.push_back({from, to});
  }
  return within;
}

}  // namespace

void NoteOutline(PocketGround& ground, const ControlSegment& segment, double tolerance) {
  if (ground.outline.empty()) AddPoint(ground, {segment.from.of[0], segment.from.of[1]});
  const Flat to{segment.to.of[0], segment.to.of[1]};
  if (segment.kind == ControlSegment::Kind::Arc && segment.plane == 17) {
    const double x = segment.from.of[0] - segment.centreU;
    const double y = segment.from.of[1] - segment.centreV;
    const double start = std::atan2(y, x);
    double sweep = std::atan2(to.y - segment.centreV, to.x - segment.centreU) - start;
    const bool whole = DistanceOf({segment.from.of[0], segment.from.of[1]}, to) <= kSame;
    if (segment.clockwise) {
      while (sweep >= (whole ? -kPi : 0)) sweep -= kTwoPi;
    } else {
      while (sweep <= (whole ? kPi : 0)) sweep += kTwoPi;
    }
    const double radius = std::hypot(x, y);
    const double share = std::max(1 - tolerance / std::max(radius, tolerance), 0.0);
    const double step = std::max(2 * std::acos(share), kTwoPi / kMostChords);
    const double chords = std::ceil(std::fabs(sweep) / step);
    for (double i = 1; i < chords; ++i) {
      const double angle = start + sweep * i / chords;
      AddPoint(ground, {segment.centreU + radius * std::cos(angle),
                        segment.centreV + radius * std::sin(angle)});
    }
  }
  AddPoint(ground, to);
}

bool FindStrokes(PocketGround& ground, std::int64_t& work) {
  ground.strokes.clear();
  if (!CloseOutline(ground)) return false;
  const double off = ground.radius + ground.finish;
  Span rows;
  for (const Flat& point : ground.outline) rows.Take(Turned(point, ground.alongX).y);
  // A row along a wall counts as within.
  const double first = rows.first + std::max(off, kTouch);
  const double last = rows.last - std::max(off, kTouch);
  // Narrower than the tool: the outline clears it.
  if (last < first) return true;
  const double count = std::ceil((last - first) / ground.step - kSame);
  if (!(count < kMaxGroundRows)) return false;
  bool back = false;
  for (double i = 0; i <= count; ++i) {
    if ((work -= static_cast<std::int64_t>(ground.outline.size())) < 0) break;
    const double y = std::min(first + i * ground.step, last);
    std::vector<Span> row = RowWithin(ground, y, off);
    if (back) std::reverse(row.begin(), row.end());
    for (const Span& span : row) {
      const Flat left = Turned({span.first, y}, ground.alongX);
      const Flat right = Turned({span.last, y}, ground.alongX);
      ground.strokes.push_back(back ? GroundStroke{right, left} : GroundStroke{left, right});
    }
    back = !back;
  }
  // Each way to a stroke looks at every line once more.
  const std::size_t strokes = ground.strokes.size();
  work -= static_cast<std::int64_t>((strokes + 1) * ground.outline.size());
  if (work >= 0 && strokes <= kMaxGroundStrokes) return true;
  ground.strokes.clear();
  return false;
}

bool IsFreeWay(const PocketGround& ground, Flat from, Flat to, double slack) {
  const Flat middle{(from.x + to.x) / 2, (from.y + to.y) / 2};
  bool within = false;
  for (std::size_t i = 0; i + 1 < ground.outline.size(); ++i) {
    const Flat a = ground.outline[i];
    const Flat b = ground.outline[i + 1];
    if (IsNear(from, to, a, b, ground.radius)) {
      if (Cross(from, to, a, b)) return false;
      const double off = std::min({DistanceTo(a, b, from), DistanceTo(a, b, to),
                                   DistanceTo(from, to, a), DistanceTo(from, to, b)});
      if (off < ground.radius - slack) return false;
    }
    const bool crosses = (a.y <= middle.y) != (b.y <= middle.y);
    if (crosses && a.x + (b.x - a.x) * (middle.y - a.y) / (b.y - a.y) > middle.x) within = !within;
  }
  if (within) return true;
  // Along a wall that the tool's middle may touch.
  for (std::size_t i = 0; i + 1 < ground.outline.size(); ++i) {
    if (DistanceTo(ground.outline[i], ground.outline[i + 1], middle) <= kSame) return true;
  }
  return false;
}

}  // namespace morva
