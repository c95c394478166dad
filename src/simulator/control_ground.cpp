#include "simulator/control_ground.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>

#include "app/limits.h"
#include "text/series_trig.h"

namespace morva {

namespace {

constexpr double kSame = 1e-6;
constexpr double kTouch = 1e-10;         // a row along a wall meets it by no more
constexpr double kFarAway = 1e6;         // display units; no machine is so large
constexpr double kChordInches = 0.0005;  // of chords of an outline off its arcs
constexpr double kSlackInches = 0.001;   // chords of two arcs besides
constexpr double kMostChords = 720;      // of a whole turn

// False: there are too many, or it lies nowhere.
bool AddPoint(std::vector<Flat>& points, Flat point) {
  if (points.size() == kMaxGroundPoints) return false;
  if (!(std::fabs(point.x) < kFarAway && std::fabs(point.y) < kFarAway)) return false;
  points.push_back(point);
  return true;
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
    if (std::fabs(off) >= radius - kTouch) continue;
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

// The chords of an arc in the plane up to its end.
bool AddChords(std::vector<Flat>& points, const ControlSegment& segment, double tolerance) {
  const Flat from{segment.from.of[0], segment.from.of[1]};
  const Flat to{segment.to.of[0], segment.to.of[1]};
  const double x = from.x - segment.centreU;
  const double y = from.y - segment.centreV;
  const double radius = std::hypot(x, y);
  if (!(radius < kFarAway)) return false;
  const double start = std::atan2(y, x);
  double sweep = std::atan2(to.y - segment.centreV, to.x - segment.centreU) - start;
  const bool whole = DistanceOf(from, to) <= kSame;
  if (segment.clockwise) {
    while (sweep >= (whole ? -kPi : 0)) sweep -= kTwoPi;
  } else {
    while (sweep <= (whole ? kPi : 0)) sweep += kTwoPi;
  }
  const double share = std::max(1 - tolerance / std::max(radius, tolerance), 0.0);
  const double step = std::max(2 * std::acos(share), kTwoPi / kMostChords);
  const double chords = std::ceil(std::fabs(sweep) / step);
  for (double i = 1; i < chords; ++i) {
    const double angle = start + sweep * i / chords;
    const Flat point{segment.centreU + radius * std::cos(angle),
                     segment.centreV + radius * std::sin(angle)};
    if (!AddPoint(points, point)) return false;
  }
  return true;
}

bool MakeOutline(PocketGround& ground, double tolerance) {
  std::vector<Flat>& points = ground.outline;
  points.clear();
  for (const OutlineMove& noted : ground.moves) {
    const ControlSegment& move = noted.segment;
    if (points.empty() && !AddPoint(points, {move.from.of[0], move.from.of[1]})) return false;
    const bool arc = move.kind == ControlSegment::Kind::Arc && move.plane == 17;
    if (arc && !AddChords(points, move, tolerance)) return false;
    const Flat to{move.to.of[0], move.to.of[1]};
    if (DistanceOf(points.back(), to) > kSame && !AddPoint(points, to)) return false;
  }
  return true;
}

// The loop of the outline: from where its last point was passed before. A way in that is the way
// out too is no part of it. False: it is open.
bool CloseOutline(std::vector<Flat>& points) {
  if (points.size() < 4) return false;
  const Flat last = points.back();
  const auto first = std::find_if(points.begin(), points.end() - 1, [last](const Flat& point) {
    return DistanceOf(point, last) <= kSame;
  });
  points.erase(points.begin(), first);
  auto begin = points.begin();
  auto end = points.end();
  while (end - begin >= 4 && DistanceOf(*(begin + 1), *(end - 2)) <= kSame) {
    ++begin;
    --end;
  }
  points.assign(begin, end);
  return points.size() >= 4;
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
    const Span span = NearRow(a, b, y, off);
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

struct Piece {  // of a row
  Flat one, other;
  bool cleared = false;
};

// The pieces of all rows, and where those of each row begin.
struct Rows {
  std::vector<Piece> pieces;
  std::vector<std::size_t> begins;
};

// Of its two ends that from which a place is nearer.
Flat StartOf(const Piece& piece, Flat place) {
  // The last digits choose no end.
  const bool one = DistanceOf(piece.one, place) <= DistanceOf(piece.other, place) + kSame;
  return one ? piece.one : piece.other;
}

// Rows from the least place up.
bool FindRows(const PocketGround& ground, Rows& rows, std::int64_t& work) {
  const double off = ground.radius + ground.finish;
  Span all;
  for (const Flat& point : ground.outline) all.Take(Turned(point, ground.alongX).y);
  const double first = all.first + off;
  // A row along the last wall counts as within, as one along the first does.
  const double last = all.last - std::max(off, kTouch);
  // Narrower than the tool: the outline clears it.
  if (!(last >= first)) return true;
  const double count = std::ceil((last - first) / ground.step - kSame);
  if (!(count < kMaxGroundRows)) return false;
  for (double i = 0; i <= count; ++i) {
    if ((work -= std::ssize(ground.outline)) < 0) return false;
    const double y = std::min(first + i * ground.step, last);
    rows.begins.push_back(rows.pieces.size());
    for (const Span& span : RowWithin(ground, y, off)) {
      rows.pieces.push_back(
          {Turned({span.first, y}, ground.alongX), Turned({span.last, y}, ground.alongX)});
    }
  }
  rows.begins.push_back(rows.pieces.size());
  return rows.pieces.size() <= kMaxGroundStrokes;
}

}  // namespace

bool FindStrokes(PocketGround& ground, Flat start, double perInch, std::int64_t& work) {
  ground.strokes.clear();
  if (!MakeOutline(ground, kChordInches * perInch) || !CloseOutline(ground.outline)) return false;
  Rows rows;
  if (!FindRows(ground, rows, work)) return false;
  const double off = ground.radius - kSlackInches * perInch;
  Flat at = start;
  const auto reaches = [&](Flat to) {
    return (work -= std::ssize(ground.outline)) >= 0 && IsFreeWay(ground, at, to, off);
  };
  const auto clear = [&](Piece& piece, bool over) {
    const Flat from = StartOf(piece, at);
    const bool one = from.x == piece.one.x && from.y == piece.one.y;
    at = one ? piece.other : piece.one;
    ground.strokes.push_back({from, at, over});
    piece.cleared = true;
  };
  for (std::size_t row = 0; row + 1 < rows.begins.size(); ++row) {
    for (std::size_t i = rows.begins[row]; i < rows.begins[row + 1]; ++i) {
      if (rows.pieces[i].cleared) continue;
      clear(rows.pieces[i], !reaches(StartOf(rows.pieces[i], at)));
      // On from row to row as long as no wall stands between.
      for (std::size_t next = row + 1; next + 1 < rows.begins.size(); ++next) {
        Piece* reached = nullptr;
        for (std::size_t k = rows.begins[next]; k < rows.begins[next + 1] && !reached; ++k) {
          Piece& piece = rows.pieces[k];
          if (!piece.cleared && reaches(StartOf(piece, at))) reached = &piece;
        }
        if (!reached) break;
        clear(*reached, false);
      }
      if (work < 0) return false;
    }
  }
  ground.backOver = !reaches(start);
  return work >= 0;
}

bool IsFreeWay(const PocketGround& ground, Flat from, Flat to, double off) {
  const Flat middle{(from.x + to.x) / 2, (from.y + to.y) / 2};
  bool within = false;
  for (std::size_t i = 0; i + 1 < ground.outline.size(); ++i) {
    const Flat a = ground.outline[i];
    const Flat b = ground.outline[i + 1];
    if (IsNear(from, to, a, b, std::max(off, 0.0))) {
      if (Cross(from, to, a, b)) return false;
      const double away = std::min({DistanceTo(a, b, from), DistanceTo(a, b, to),
                                    DistanceTo(from, to, a), DistanceTo(from, to, b)});
      if (away < off) return false;
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
