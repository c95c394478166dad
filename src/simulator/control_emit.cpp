#include "simulator/control_emit.h"

#include <algorithm>
#include <cmath>

#include "simulator/control_frame.h"
#include "simulator/control_stock.h"
#include "text/series_trig.h"

namespace morva {

namespace {

constexpr double kSame = 1e-6;           // points closer than this are one, display units
constexpr double kChordInches = 0.0005;  // how far a chord may lie off its arc
constexpr double kMostChords = 100000;
constexpr double kSharpCosine = 0.9;  // of the angle from which a corner costs time, 26 degrees

// What the tool meets on its way from the last point.
void NoteStock(ControlRun& run, const ControlSegment& of, const Vec3& to) {
  if (!run.stock) return;
  if (run.moved) NoteStockWay(run, run.reached, to, of.kind == ControlSegment::Kind::Rapid);
  if (!run.moved) NoteStockZero(run);
  run.reached = to;
}

void AddPoint(ControlRun& run, const ControlSegment& of, const Vec3& to, double seconds) {
  ControlTrack& track = *run.track;
  MotionPath& out = track.path;
  if (out.count > 0 && run.moved) {
    const MotionPoint& last = out.points[out.count - 1];
    if (std::fabs(to.of[0] - last.x) <= kSame && std::fabs(to.of[1] - last.y) <= kSame &&
        std::fabs(to.of[2] - last.z) <= kSame) {
      track.seconds[out.count - 1] = seconds;
      return;
    }
  }
  NoteStock(run, of, to);
  if (out.count >= kMaxControlPoints) {
    if (out.fullAtLine < 0) {
      out.fullAtLine = run.line;
      Report(run, Finding::PathFull);
    }
    return;
  }
  track.seconds[out.count] = seconds;
  MotionPoint& point = out.points[out.count++];
  point.x = to.of[0];
  point.y = to.of[1];
  point.z = to.of[2];
  point.rapid = of.kind == ControlSegment::Kind::Rapid;
  point.sourceLine = run.line;
  point.jump = !run.moved;
  point.machineAxes = of.machineAxes;
  point.tool = run.tool;
  run.moved = true;
}

double Distance(const Vec3& a, const Vec3& b) {
  const double x = b.of[0] - a.of[0];
  const double y = b.of[1] - a.of[1];
  const double z = b.of[2] - a.of[2];
  return std::sqrt(x * x + y * y + z * z);
}

// Seconds of an axis from rest to rest.
double TrapeziumSeconds(double way, double rate, double acceleration) {
  const double perSecond = rate / 60;
  if (way * acceleration >= perSecond * perSecond)
    return way / perSecond + perSecond / acceleration;
  return 2 * std::sqrt(way / acceleration);
}

void EmitRapid(ControlRun& run, const ControlSegment& segment) {
  double ways[3];
  double longest = 0;
  for (int axis = 0; axis < 3; ++axis) {
    ways[axis] = std::fabs(segment.to.of[axis] - segment.from.of[axis]);
    longest = std::max(longest, ways[axis]);
  }
  const ControlTable& table = run.table;
  const double began = run.time;
  run.time += TrapeziumSeconds(longest / run.perInch, table.rapidRate, table.acceleration);
  std::fill(std::begin(run.lastWay), std::end(run.lastWay), 0.0);
  // An axis with a shorter way has arrived earlier: a corner there.
  double arrivals[3] = {ways[0], ways[1], ways[2]};
  std::sort(std::begin(arrivals), std::end(arrivals));
  for (const double reached : arrivals) {
    if (reached <= kSame || reached >= longest - kSame || !run.moved) continue;
    Vec3 corner;
    for (int axis = 0; axis < 3; ++axis) {
      const double way = segment.to.of[axis] - segment.from.of[axis];
      corner.of[axis] = segment.from.of[axis] + std::copysign(std::min(ways[axis], reached), way);
    }
    AddPoint(run, segment, corner, began + (run.time - began) * reached / longest);
  }
  AddPoint(run, segment, segment.to, run.time);
}

double FeedSeconds(const ControlRun& run, const ControlSegment& segment, double length) {
  if (segment.feed <= 0 || length <= 0) return 0;
  const double minutes = segment.inverse ? 1 / segment.feed : length / segment.feed;
  return std::max(minutes * 60, run.table.leastBlockSeconds);
}

// The lag at a corner between the last feed and one that begins in this direction.
void AddCornerTime(ControlRun& run, const double way[3], const double leaves[3]) {
  double dot = 0;
  double before = 0;
  for (int axis = 0; axis < 3; ++axis) {
    dot += run.lastWay[axis] * way[axis];
    before += std::fabs(run.lastWay[axis]);
  }
  if (before > 0 && dot < kSharpCosine) run.time += run.table.reversalSeconds;
  std::copy(leaves, leaves + 3, run.lastWay);
}

void EmitLine(ControlRun& run, const ControlSegment& segment) {
  const double length = Distance(segment.from, segment.to);
  if (length <= kSame) return;
  double way[3];
  for (int axis = 0; axis < 3; ++axis) {
    way[axis] = (segment.to.of[axis] - segment.from.of[axis]) / length;
  }
  AddCornerTime(run, way, way);
  run.time += FeedSeconds(run, segment, length);
  AddPoint(run, segment, segment.to, run.time);
}

// Chords whose middle lies at most the tolerance inside the circle.
int ChordsOf(double radius, double sweep, double tolerance) {
  const double share = std::max(1 - tolerance / radius, 0.0);
  const double step = 2 * std::acos(share);
  const double chords = std::ceil(std::fabs(sweep) / std::max(step, 1e-9) - 1e-9);
  return static_cast<int>(std::clamp(chords, 1.0, kMostChords));
}

// An arc as angles and heights along it.
struct ArcShape {
  PlaneAxes axes;
  double radius, endRadius;
  double start, sweep;  // radians; the sweep is below 0 for a clockwise arc
  double from, rise;    // along the third axis
};

ArcShape ShapeOf(const ControlSegment& segment) {
  const PlaneAxes axes = AxesOf(segment.plane);
  const double startU = segment.from.of[axes.u] - segment.centreU;
  const double startV = segment.from.of[axes.v] - segment.centreV;
  const double endU = segment.to.of[axes.u] - segment.centreU;
  const double endV = segment.to.of[axes.v] - segment.centreV;
  ArcShape shape;
  shape.axes = axes;
  shape.radius = std::hypot(startU, startV);
  shape.endRadius = std::hypot(endU, endV);
  shape.start = std::atan2(startV, startU);
  shape.sweep = std::atan2(endV, endU) - shape.start;
  // An end on the start is a whole turn, whatever the last digits of the angles say.
  const bool whole = std::hypot(endU - startU, endV - startV) <= kSame;
  if (segment.clockwise) {
    while (shape.sweep >= (whole ? -kPi : 0)) shape.sweep -= kTwoPi;
  } else {
    while (shape.sweep <= (whole ? kPi : 0)) shape.sweep += kTwoPi;
  }
  shape.from = segment.from.of[axes.w];
  shape.rise = segment.to.of[axes.w] - shape.from;
  return shape;
}

Vec3 PointOf(const ArcShape& shape, const ControlSegment& segment, double part) {
  const double angle = shape.start + shape.sweep * part;
  const double radius = shape.radius + (shape.endRadius - shape.radius) * part;
  Vec3 point;
  point.of[shape.axes.u] = segment.centreU + radius * std::cos(angle);
  point.of[shape.axes.v] = segment.centreV + radius * std::sin(angle);
  point.of[shape.axes.w] = shape.from + shape.rise * part;
  return point;
}

// The direction of the way at an angle of the arc, of length 1.
void WayOf(const ArcShape& shape, double angle, double length, double (&way)[3]) {
  const double along = shape.radius * shape.sweep / length;
  way[shape.axes.u] = -std::sin(angle) * along;
  way[shape.axes.v] = std::cos(angle) * along;
  way[shape.axes.w] = shape.rise / length;
}

int ChordsOf(const ControlRun& run, const ArcShape& shape) {
  return ChordsOf(shape.radius, shape.sweep, kChordInches * run.perInch);
}

void EmitArc(ControlRun& run, const ControlSegment& segment) {
  const ArcShape shape = ShapeOf(segment);
  if (shape.radius <= kSame) return EmitLine(run, segment);
  const double length = std::hypot(shape.radius * shape.sweep, shape.rise);
  double way[3];
  double leaves[3];
  WayOf(shape, shape.start, length, way);
  WayOf(shape, shape.start + shape.sweep, length, leaves);
  AddCornerTime(run, way, leaves);
  const double began = run.time;
  run.time += FeedSeconds(run, segment, length);
  const int chords = ChordsOf(run, shape);
  // What is drawn no more is still looked at beside the stock.
  for (int i = 1; i < chords && (run.track->path.fullAtLine < 0 || run.stock); ++i) {
    const double part = static_cast<double>(i) / chords;
    AddPoint(run, segment, PointOf(shape, segment, part), began + (run.time - began) * part);
  }
  AddPoint(run, segment, segment.to, run.time);
}

// Points of the programmed path are only drawn: a full table ends them.
void AddProgrammed(ControlRun& run, const Vec3& to, bool jump) {
  MotionPath& out = run.track->programmed;
  if (out.count >= kMaxControlPoints) {
    if (out.fullAtLine < 0) out.fullAtLine = run.line;
    return;
  }
  MotionPoint& point = out.points[out.count++];
  point = MotionPoint{};
  point.x = to.of[0];
  point.y = to.of[1];
  point.z = to.of[2];
  point.sourceLine = run.line;
  point.jump = jump;
  point.tool = run.tool;
}

}  // namespace

void EmitSegment(ControlRun& run, const ControlSegment& segment) {
  const std::int32_t line = run.line;
  run.line = segment.line;
  switch (segment.kind) {
    case ControlSegment::Kind::Rapid:
      EmitRapid(run, segment);
      break;
    case ControlSegment::Kind::Line:
      EmitLine(run, segment);
      break;
    case ControlSegment::Kind::Arc:
      EmitArc(run, segment);
      break;
  }
  run.line = line;
}

int TurningPlaces(const ControlSegment& segment, Vec3 (&places)[4]) {
  if (segment.kind != ControlSegment::Kind::Arc) return 0;
  const ArcShape shape = ShapeOf(segment);
  if (shape.radius <= kSame) return 0;
  const double quarter = std::copysign(kPi / 2, shape.sweep);
  double angle = std::floor(shape.start / quarter) * quarter;
  int count = 0;
  while (count < 4) {
    angle += quarter;
    const double part = (angle - shape.start) / shape.sweep;
    if (part >= 1) break;
    places[count++] = PointOf(shape, segment, part);
  }
  return count;
}

void PassTime(ControlRun& run, double seconds) {
  run.time += seconds;
  ControlTrack& track = *run.track;
  if (track.path.count > 0) track.seconds[track.path.count - 1] = run.time;
}

void EmitProgrammed(ControlRun& run, const ControlSegment& segment) {
  const MotionPath& out = run.track->programmed;
  const bool goesOn = out.count > 0 && out.points[out.count - 1].x == segment.from.of[0] &&
                      out.points[out.count - 1].y == segment.from.of[1] &&
                      out.points[out.count - 1].z == segment.from.of[2];
  if (!goesOn) AddProgrammed(run, segment.from, true);
  if (segment.kind == ControlSegment::Kind::Arc) {
    const ArcShape shape = ShapeOf(segment);
    const int chords = shape.radius > kSame ? ChordsOf(run, shape) : 1;
    for (int i = 1; i < chords && out.fullAtLine < 0; ++i) {
      AddProgrammed(run, PointOf(shape, segment, static_cast<double>(i) / chords), false);
    }
  }
  AddProgrammed(run, segment.to, false);
}

}  // namespace morva
