#include "cad/geometry/connectivity.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "cad/geometry/lines.h"
#include "cad/geometry/outlines.h"
#include "cad/model/sketch.h"
#include "library/outline.h"

// Every segment of one outline against every segment of another says whether two objects touch.
// Boxes around outlines, runs of eight segments and single segments, each widened by more than
// the tolerances, leave out only what cannot touch, so that the answer is the plain one.

namespace morva {

namespace {

constexpr double kParallel = 1e-12;  // determinant of unit directions
constexpr double kPastEnd = 1e-6;    // share of a segment's length
constexpr double kSameEnd = 1e-5;    // drawing units, |dx| + |dy|
constexpr double kWiden = 2e-5;      // of the boxes, beyond that share of the length
constexpr int kRun = 8;              // segments in a run
constexpr int kRuns = (kOutlinePoints + kRun - 1) / kRun;

struct Box {
  double left = 0, bottom = 0, right = 0, top = 0;
};

struct Segment {
  double ax = 0, ay = 0, bx = 0, by = 0;
  double ux = 0, uy = 0, length = 0;
  Box box;
};

struct Chain {
  Segment segments[kOutlinePoints];
  int count = 0;
  Box runs[kRuns];
  Box box;
};
Chain chains[kMaxItems];

bool Apart(const Box& a, const Box& b) {
  return a.left > b.right || b.left > a.right || a.bottom > b.top || b.bottom > a.top;
}

void Widen(Box& box, const Box& by) {
  box.left = std::min(box.left, by.left);
  box.bottom = std::min(box.bottom, by.bottom);
  box.right = std::max(box.right, by.right);
  box.top = std::max(box.top, by.top);
}

void PutSegment(Segment& s, double ax, double ay, double bx, double by) {
  s.ax = ax;
  s.ay = ay;
  s.bx = bx;
  s.by = by;
  s.length = PlainDistance(ax, ay, bx, by);
  s.ux = s.length > 0 ? (bx - ax) / s.length : 0;
  s.uy = s.length > 0 ? (by - ay) / s.length : 0;
  const double slack = kWiden + 2 * kPastEnd * s.length;
  s.box = {std::min(ax, bx) - slack, std::min(ay, by) - slack, std::max(ax, bx) + slack,
           std::max(ay, by) + slack};
}

void PutChain(int index) {
  const OutlineOf& outline = OutlineAt(index);
  Chain& chain = chains[index];
  chain.count = std::max(0, outline.count - 1);
  for (int i = 0; i < chain.count; ++i) {
    Segment& s = chain.segments[i];
    PutSegment(s, outline.xs[i], outline.ys[i], outline.xs[i + 1], outline.ys[i + 1]);
    Box& ofRun = chain.runs[i / kRun];
    if (i % kRun == 0) ofRun = s.box;
    Widen(ofRun, s.box);
    if (i == 0) chain.box = s.box;
    Widen(chain.box, s.box);
  }
}

bool SameEnd(double ax, double ay, double bx, double by) {
  return std::fabs(ax - bx) + std::fabs(ay - by) <= kSameEnd;
}

bool WithinEnds(double along, double length) {
  return along >= -kPastEnd * length && along <= (1 + kPastEnd) * length;
}

bool SegmentsTouch(const Segment& a, const Segment& b) {
  if (SameEnd(a.ax, a.ay, b.ax, b.ay) || SameEnd(a.ax, a.ay, b.bx, b.by) ||
      SameEnd(a.bx, a.by, b.ax, b.ay) || SameEnd(a.bx, a.by, b.bx, b.by)) {
    return true;
  }
  const double determinant = a.ux * b.uy - a.uy * b.ux;
  if (!(std::fabs(determinant) > kParallel)) return false;
  const double dx = b.ax - a.ax;
  const double dy = b.ay - a.ay;
  return WithinEnds((dx * b.uy - dy * b.ux) / determinant, a.length) &&
         WithinEnds((dx * a.uy - dy * a.ux) / determinant, b.length);
}

// The segments of one run against those of a run of the other.
bool RunsTouch(const Chain& a, int runA, const Chain& b, int runB) {
  const int endA = std::min(a.count, (runA + 1) * kRun);
  const int endB = std::min(b.count, (runB + 1) * kRun);
  for (int i = runA * kRun; i < endA; ++i) {
    if (Apart(a.segments[i].box, b.runs[runB])) continue;
    for (int k = runB * kRun; k < endB; ++k) {
      if (Apart(a.segments[i].box, b.segments[k].box)) continue;
      if (SegmentsTouch(a.segments[i], b.segments[k])) return true;
    }
  }
  return false;
}

bool ChainsTouch(const Chain& a, const Chain& b) {
  if (a.count == 0 || b.count == 0 || Apart(a.box, b.box)) return false;
  for (int i = 0; i * kRun < a.count; ++i) {
    if (Apart(a.runs[i], b.box)) continue;
    for (int k = 0; k * kRun < b.count; ++k) {
      if (!Apart(a.runs[i], b.runs[k]) && RunsTouch(a, i, b, k)) return true;
    }
  }
  return false;
}

// The first number from `wanted` on that no object bears; 1 where a stored sketch has used the
// numbers up to the end.
std::int32_t FreeGroup(std::int64_t wanted) {
  const bool beyond = wanted > std::numeric_limits<std::int32_t>::max();
  std::int32_t number = beyond ? 1 : static_cast<std::int32_t>(wanted);
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (sketch.objects[i].group != number) continue;
    ++number;
    i = -1;
  }
  return number;
}

}  // namespace

void RecomputeConnectivity() {
  bool waits[kMaxItems] = {};
  std::int64_t largest = 0;
  for (int i = 0; i < sketch.objectCount; ++i) {
    waits[i] = !sketch.hidden[i] && !sketch.locked[i];
    if (waits[i]) {
      SetSketchGroup(i, 0);
      PutChain(i);
    } else {
      largest = std::max<std::int64_t>(largest, sketch.objects[i].group);
    }
  }
  for (int first = 0; first < sketch.objectCount; ++first) {
    if (!waits[first]) continue;
    int reached[kMaxItems] = {first};
    int count = 1;
    waits[first] = false;
    for (int next = 0; next < count; ++next) {
      for (int i = 0; i < sketch.objectCount; ++i) {
        if (!waits[i] || !ChainsTouch(chains[reached[next]], chains[i])) continue;
        waits[i] = false;
        reached[count++] = i;
      }
    }
    if (count < 2) continue;
    const std::int32_t group = FreeGroup(largest + 1);
    largest = group;
    for (int i = 0; i < count; ++i) SetSketchGroup(reached[i], group);
  }
}

}  // namespace morva
