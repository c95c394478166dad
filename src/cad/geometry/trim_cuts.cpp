#include "cad/geometry/trim_cuts.h"

#include <algorithm>
#include <cmath>

#include "cad/geometry/lines.h"
#include "cad/geometry/outlines.h"
#include "cad/model/sketch.h"
#include "library/outline.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr double kOpenEnd = 1e-8;      // a cut this close to an end of the target is none
constexpr double kCutterSlack = 1e-8;  // share of its length that a cutter may fall short by
constexpr double kLeastLength = 1e-9;
constexpr double kSameAngle = 1e-6;     // degrees
constexpr double kSamePosition = 1e-7;  // steps of a slot's run
constexpr double kTouchShare = 2.5e-7;  // of r^2: a half chord below its root is a touch
constexpr double kTouchLeast = 1e-12;
constexpr double kTouchReach = 1e-3;     // radii that a touching line may end beside the place
constexpr double kFieldStep = 1e-3;      // units; the last decimal that fields show
constexpr double kAngleStep = 8.73e-6;   // half the third decimal of an angle, as a sine
constexpr double kMostStep = 0.02;       // radii that such a step may be in a small circle
constexpr double kTouchSlant = 0.01745;  // sine of a degree between a touching line and the tangent
constexpr double kAcrossError = 2.5e-9;  // share of its length that the sine puts a line aside
constexpr int kCapPoints = 17;

// A directed straight piece; `length` along its unit direction, or no ends at all.
struct Piece {
  double x = 0, y = 0;
  double ux = 0, uy = 0;
  double length = 0;
  bool endless = false;
  double minX = 0, minY = 0, maxX = 0, maxY = 0;  // widened by more than a cutter's slack
};

Ray RayOf(const Piece& piece) { return {piece.x, piece.y, piece.ux, piece.uy}; }

bool PieceBetween(double ax, double ay, double bx, double by, Piece& piece) {
  piece.x = ax;
  piece.y = ay;
  piece.length = PlainDistance(ax, ay, bx, by);
  if (piece.length < kLeastLength) return false;
  piece.ux = (bx - ax) / piece.length;
  piece.uy = (by - ay) / piece.length;
  piece.endless = false;
  const double slack = 1e-6 * piece.length;
  piece.minX = std::min(ax, bx) - slack;
  piece.minY = std::min(ay, by) - slack;
  piece.maxX = std::max(ax, bx) + slack;
  piece.maxY = std::max(ay, by) + slack;
  return true;
}

// Whether a place `along` the piece belongs to it.
bool Holds(const Piece& piece, double along) {
  return piece.endless ||
         (along >= -kCutterSlack * piece.length && along <= (1 + kCutterSlack) * piece.length);
}

// The straight pieces of a line, axis or rectangle; their count, at most 4.
int PiecesOf(int index, Piece* pieces) {
  const SketchObject& object = sketch.objects[index];
  const OutlineOf& outline = OutlineAt(index);
  int count = 0;
  if (object.type == kTypeWorkAxis) {
    Piece& axis = pieces[count++];
    axis.x = object.x;
    axis.y = object.y;
    axis.ux = SketchCosine(object.angle);
    axis.uy = SketchSine(object.angle);
    axis.endless = true;
  } else if (object.type == kTypeLine || object.type == kTypeRectangle) {
    for (int i = 0; i + 1 < outline.count; ++i) {
      if (PieceBetween(outline.xs[i], outline.ys[i], outline.xs[i + 1], outline.ys[i + 1],
                       pieces[count])) {
        ++count;
      }
    }
  }
  return count;
}

// Where the endless line of a piece meets a circle: none, one touching place or two.
int MeetCircle(const Piece& piece, double cx, double cy, double r, double* along) {
  const double dx = cx - piece.x;
  const double dy = cy - piece.y;
  const double foot = dx * piece.ux + dy * piece.uy;
  const double off = piece.ux * dy - piece.uy * dx;
  const double square = r * r - off * off;
  const double aside = 2 * r * kAcrossError * std::fabs(foot);
  const double touch = kTouchShare * r * r + aside + kTouchLeast;
  if (!(square >= -touch)) return 0;
  along[0] = foot;
  if (square <= touch) return 1;
  const double half = SketchRoot(square);
  along[0] = foot - half;
  along[1] = foot + half;
  return 2;
}

void Add(CutList& cuts, double value) {
  if (cuts.count < kMaxCuts) cuts.values[cuts.count++] = value;
}

void AddInside(CutList& cuts, double t) {
  if (t > kOpenEnd && t < 1 - kOpenEnd) Add(cuts, t);
}

// A value of a closed scale from 0 to `turn`, unless it is there already.
void AddOnce(CutList& cuts, double value, double turn, double same) {
  if (value < 0) value += turn;
  if (value >= turn) value -= turn;
  for (int i = 0; i < cuts.count; ++i) {
    const double apart = std::fabs(cuts.values[i] - value);
    if (apart <= same || apart >= turn - same) return;
  }
  Add(cuts, value);
}

void Sort(CutList& cuts) { std::sort(cuts.values, cuts.values + cuts.count); }

bool MayCut(int index, int target) { return index != target && !sketch.hidden[index]; }

bool Apart(const OutlineOf& a, const OutlineOf& b) {
  const double slack = 1e-6 * (1 + std::fabs(a.maxX - a.minX) + std::fabs(a.maxY - a.minY));
  return a.minX > b.maxX + slack || b.minX > a.maxX + slack || a.minY > b.maxY + slack ||
         b.minY > a.maxY + slack;
}

void AddPoint(CircleCuts& cuts, const SketchObject& circle, double x, double y) {
  double angle = AngleDegrees(y - circle.y, x - circle.x);
  if (angle < 0) angle += 360;
  if (angle >= 360) angle -= 360;
  for (int i = 0; i < cuts.count; ++i) {
    const double apart = std::fabs(cuts.values[i].angle - angle);
    if (apart <= kSameAngle || apart >= 360 - kSameAngle) return;
  }
  if (cuts.count < kMaxCuts) cuts.values[cuts.count++] = {angle, x, y};
}

// The end of a line that ends beside the place where it touches, or the place itself.
double EndAtTouch(const Piece& piece, double along, double r) {
  const double reach = kTouchReach * r;
  if (piece.endless) return along;
  if (std::fabs(along) <= reach) return 0;
  return std::fabs(along - piece.length) <= reach ? piece.length : along;
}

// Whether the end of a piece, `along` it, is where the piece would touch the circle but for numbers
// that were typed with the decimals of a field: its ends moved by such a step make it a touch
// there.
bool EndsAtTouch(const Piece& piece, double along, const SketchObject& circle, double r) {
  const double step = std::min(kFieldStep + kAngleStep * piece.length, kMostStep * r);
  const double dx = circle.x - piece.x;
  const double dy = circle.y - piece.y;
  const double aside = std::fabs(piece.ux * dy - piece.uy * dx) - r;
  // Turned by a step at either end, a line touches so much farther on.
  const double reach = std::min(step * (1 + 2 * r / piece.length), kTouchSlant * r);
  const double beside = along - (dx * piece.ux + dy * piece.uy);
  return std::fabs(aside) <= step && std::fabs(beside) <= reach;
}

// The end that a piece touches the circle with, if one end does: a short chord meets it with both.
bool TouchingEnd(const Piece& piece, const SketchObject& circle, double r, double& along) {
  if (piece.endless) return false;
  const bool first = EndsAtTouch(piece, 0, circle, r);
  const bool last = EndsAtTouch(piece, piece.length, circle, r);
  along = first ? 0 : piece.length;
  return first != last;
}

void CircleByPiece(const SketchObject& circle, const Piece& piece, CircleCuts& cuts) {
  const double r = circle.size / 2;
  double end = 0;
  if (TouchingEnd(piece, circle, r, end)) {
    AddPoint(cuts, circle, piece.x + end * piece.ux, piece.y + end * piece.uy);
    return;
  }
  double along[2];
  const int places = MeetCircle(piece, circle.x, circle.y, r, along);
  if (places == 1) along[0] = EndAtTouch(piece, along[0], r);
  for (int n = 0; n < places; ++n) {
    if (!Holds(piece, along[n])) continue;
    AddPoint(cuts, circle, piece.x + along[n] * piece.ux, piece.y + along[n] * piece.uy);
  }
}

void CircleByCircle(const SketchObject& circle, const SketchObject& other, CircleCuts& cuts) {
  const double r = circle.size / 2;
  const double q = other.size / 2;
  const double apart = PlainDistance(circle.x, circle.y, other.x, other.y);
  Piece line;
  if (!PieceBetween(circle.x, circle.y, other.x, other.y, line)) return;
  const double foot = (r * r - q * q + apart * apart) / (2 * apart);
  const double square = r * r - foot * foot;
  const double touch = kTouchShare * r * r + kTouchLeast;
  if (!(square >= -touch)) return;
  const double half = square <= touch ? 0 : SketchRoot(square);
  const double x = circle.x + foot * line.ux;
  const double y = circle.y + foot * line.uy;
  AddPoint(cuts, circle, x - half * line.uy, y + half * line.ux);
  if (half > 0) AddPoint(cuts, circle, x + half * line.uy, y - half * line.ux);
}

// One step of a slot's run against the cutters' pieces.
void StepByPiece(const Piece& step, int number, const Piece& piece, CutList& cuts) {
  double t = 0;
  double s = 0;
  if (!LineIntersection(RayOf(step), RayOf(piece), t, s)) return;
  if (!Holds(step, t) || !Holds(piece, s)) return;
  AddOnce(cuts, number + t / step.length, kSlotSteps, kSamePosition);
}

void StepByCircle(const Piece& step, int number, const SketchObject& circle, CutList& cuts) {
  double along[2];
  const int places = MeetCircle(step, circle.x, circle.y, circle.size / 2, along);
  for (int i = 0; i < places; ++i) {
    if (!Holds(step, along[i])) continue;
    AddOnce(cuts, number + along[i] / step.length, kSlotSteps, kSamePosition);
  }
}

bool PiecesApart(const Piece& a, const Piece& b) {
  return a.minX > b.maxX || b.minX > a.maxX || a.minY > b.maxY || b.minY > a.maxY;
}

int StepsOf(const SlotRun& run, Piece* steps, int* numbers) {
  int count = 0;
  for (int i = 0; i < kSlotSteps; ++i) {
    if (!PieceBetween(run.xs[i], run.ys[i], run.xs[i + 1], run.ys[i + 1], steps[count])) continue;
    numbers[count++] = i;
  }
  return count;
}

void SlotBySlot(const Piece* steps, const int* numbers, int count, int other, CutList& cuts) {
  static Piece otherSteps[kSlotSteps];
  int otherNumbers[kSlotSteps];
  SlotRun run;
  SlotRunOf(other, run);
  const int otherCount = StepsOf(run, otherSteps, otherNumbers);
  for (int k = 0; k < otherCount; ++k) {
    for (int i = 0; i < count; ++i) {
      if (PiecesApart(steps[i], otherSteps[k])) continue;
      StepByPiece(steps[i], numbers[i], otherSteps[k], cuts);
    }
  }
}

}  // namespace

void CutsOfSegment(int target, double ax, double ay, double bx, double by, CutList& cuts) {
  cuts.count = 0;
  Add(cuts, 0);
  Add(cuts, 1);
  Piece line;
  if (!PieceBetween(ax, ay, bx, by, line)) return;
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (!MayCut(i, target)) continue;
    const SketchObject& other = sketch.objects[i];
    if (other.type == kTypeCircle) {
      double along[2];
      const int places = MeetCircle(line, other.x, other.y, other.size / 2, along);
      for (int k = 0; k < places; ++k) AddInside(cuts, along[k] / line.length);
      continue;
    }
    Piece pieces[4];
    const int count = PiecesOf(i, pieces);
    for (int k = 0; k < count; ++k) {
      const Piece& piece = pieces[k];
      double t = 0;
      double s = 0;
      const bool meets = LineIntersection(RayOf(line), RayOf(piece), t, s) && Holds(piece, s);
      if (meets) AddInside(cuts, t / line.length);
    }
  }
  Sort(cuts);
}

void CutsOfCircle(int target, CircleCuts& cuts) {
  cuts.count = 0;
  const SketchObject& circle = sketch.objects[target];
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (!MayCut(i, target)) continue;
    if (sketch.objects[i].type == kTypeCircle) {
      CircleByCircle(circle, sketch.objects[i], cuts);
      continue;
    }
    Piece pieces[4];
    const int count = PiecesOf(i, pieces);
    for (int k = 0; k < count; ++k) CircleByPiece(circle, pieces[k], cuts);
  }
  std::sort(cuts.values, cuts.values + cuts.count,
            [](const CircleCut& a, const CircleCut& b) { return a.angle < b.angle; });
}

void SlotRunOf(int index, SlotRun& run) {
  const OutlineOf& outline = OutlineAt(index);
  for (int i = 0; i < kCapPoints; ++i) {
    run.xs[i] = outline.xs[2 * i];
    run.ys[i] = outline.ys[2 * i];
    run.xs[kCapPoints + i] = outline.xs[33 + 2 * i];
    run.ys[kCapPoints + i] = outline.ys[33 + 2 * i];
  }
  run.xs[kSlotSteps] = run.xs[0];
  run.ys[kSlotSteps] = run.ys[0];
}

void CutsOfSlot(int target, const SlotRun& run, CutList& cuts) {
  cuts.count = 0;
  Piece steps[kSlotSteps];
  int numbers[kSlotSteps];
  const int stepCount = StepsOf(run, steps, numbers);
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (!MayCut(i, target)) continue;
    const SketchObject& other = sketch.objects[i];
    if (other.type != kTypeWorkAxis && Apart(OutlineAt(target), OutlineAt(i))) continue;
    if (other.type == kTypeSlot) {
      SlotBySlot(steps, numbers, stepCount, i, cuts);
      continue;
    }
    Piece pieces[4];
    const int count = PiecesOf(i, pieces);
    for (int n = 0; n < stepCount; ++n) {
      if (other.type == kTypeCircle) StepByCircle(steps[n], numbers[n], other, cuts);
      for (int k = 0; k < count; ++k) StepByPiece(steps[n], numbers[n], pieces[k], cuts);
    }
  }
  Sort(cuts);
}

}  // namespace morva
