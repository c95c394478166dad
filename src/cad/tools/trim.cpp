#include "cad/tools/trim.h"

#include <algorithm>
#include <cmath>

#include "cad/geometry/lines.h"
#include "cad/geometry/trim_cuts.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"
#include "library/outline.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr double kOpenEnd = 1e-8;
constexpr double kHoldsBy = 1e-9;  // a click this far before a cut counts as behind it
constexpr double kLeastLength = 1e-9;
constexpr double kLeastDiameter = 2e-9;
constexpr double kChordDegrees = 10;
constexpr double kPreviewDegrees = 5;
constexpr double kLeastSteps = 1e-8;  // of a slot's run; a shorter line is dropped
constexpr int kSides = 4;

// What an object becomes. Static: a preview runs at every movement of the pointer.
struct Plan {
  SketchObject pieces[kMaxItems + 1];
  int count = 0;
  bool tooMany = false;
};
Plan plan;
CutList cuts;
CircleCuts circleCuts;
SlotRun run;

void AddPiece(const SketchObject& piece) {
  if (plan.count > kMaxItems) {
    plan.tooMany = true;
    return;
  }
  plan.pieces[plan.count++] = piece;
}

void Preview(double ax, double ay, double bx, double by) {
  if (!sketch.trimPreviewing) return;
  AddPreviewSegment({ax, ay, bx, by});
}

bool PlanLine(const SketchObject& line, int target, double x, double y) {
  double endX = 0;
  double endY = 0;
  LineEndPoint(line, endX, endY);
  const double dx = endX - line.x;
  const double dy = endY - line.y;
  if (PlainDistance(line.x, line.y, endX, endY) < kLeastLength) return false;
  CutsOfSegment(target, line.x, line.y, endX, endY, cuts);
  const double click = FootOnSegment({x, y}, {line.x, line.y}, {endX, endY}, kLeastLength).along;
  int from = 0;
  while (from + 2 < cuts.count && cuts.values[from + 1] <= click + kHoldsBy) ++from;
  const double a = cuts.values[from];
  const double b = cuts.values[from + 1];
  SketchObject piece = line;
  if (a > kOpenEnd) {
    piece.size = line.size * a;
    AddPiece(piece);
  }
  if (b < 1 - kOpenEnd) {
    piece.x = line.x + dx * b;
    piece.y = line.y + dy * b;
    piece.size = line.size * (1 - b);
    AddPiece(piece);
  }
  Preview(line.x + dx * a, line.y + dy * a, line.x + dx * b, line.y + dy * b);
  return true;
}

int NearestSide(const SketchObject& rectangle, double x, double y) {
  double xs[kOutlinePoints];
  double ys[kOutlinePoints];
  ObjectOutline(rectangle, xs, ys);
  int nearest = 0;
  double best = 0;
  for (int i = 0; i < kSides; ++i) {
    const double square =
        FootOnSegment({x, y}, {xs[i], ys[i]}, {xs[i + 1], ys[i + 1]}, kLeastLength).square;
    if (i > 0 && square >= best) continue;
    nearest = i;
    best = square;
  }
  return nearest;
}

// The sides meet each other at their ends only, so that only other objects cut one. What is left
// of the clicked side stands first and keeps the rectangle's place.
bool PlanRectangle(const SketchObject& rectangle, int target, double x, double y, bool& keeps) {
  if (sketch.objectCount > kMaxItems - (kSides - 1)) return false;
  const int side = NearestSide(rectangle, x, y);
  if (!PlanLine(RectangleSide(rectangle, side), target, x, y)) return false;
  keeps = plan.count > 0;
  for (int i = 1; i < kSides; ++i) AddPiece(RectangleSide(rectangle, (side + i) % kSides));
  return true;
}

// The two neighbouring cuts of a closed scale around a value; `to` lies above `from`, by a turn
// where the section runs through 0.
void SectionAround(double value, double turn, double& from, double& to) {
  int after = 0;
  while (after < cuts.count && cuts.values[after] <= value + kHoldsBy) ++after;
  from = after > 0 ? cuts.values[after - 1] : cuts.values[cuts.count - 1] - turn;
  to = after < cuts.count ? cuts.values[after] : cuts.values[0] + turn;
}

void PointOnCircle(const SketchObject& circle, double degrees, double& x, double& y) {
  x = circle.x + circle.size / 2 * SketchCosine(degrees);
  y = circle.y + circle.size / 2 * SketchSine(degrees);
}

// Chords from one cut to another, each to AddPiece or to the preview. They begin and end in the
// points of the cuts, which the computed circle misses by the rounding of the sine.
void Chords(const SketchObject& circle, const CircleCut& from, const CircleCut& to, int count,
            bool keep) {
  double ax = from.x;
  double ay = from.y;
  for (int i = 1; i <= count; ++i) {
    double bx = to.x;
    double by = to.y;
    if (i < count) {
      PointOnCircle(circle, from.angle + (to.angle - from.angle) * i / count, bx, by);
    }
    SketchObject line;
    line.group = circle.group;
    SetLineEnds(line, ax, ay, bx, by);
    if (keep) {
      AddPiece(line);
    } else {
      Preview(ax, ay, bx, by);
    }
    ax = bx;
    ay = by;
  }
}

// The cuts around an angle; `to` lies above `from`, by a turn where the section runs through 0.
void CutsAround(double degrees, CircleCut& from, CircleCut& to) {
  const int count = circleCuts.count;
  int after = 0;
  while (after < count && circleCuts.values[after].angle <= degrees + kHoldsBy) ++after;
  from = circleCuts.values[(after + count - 1) % count];
  to = circleCuts.values[after % count];
  if (after == 0) from.angle -= 360;
  if (after == count) to.angle += 360;
}

bool PlanCircle(const SketchObject& circle, int target, double x, double y) {
  if (!(circle.size > kLeastDiameter)) return false;
  CutsOfCircle(target, circleCuts);
  if (circleCuts.count < 2) return false;
  double click = AngleDegrees(y - circle.y, x - circle.x);
  if (click < 0) click += 360;
  CircleCut from;
  CircleCut to;
  CutsAround(click, from, to);
  const double section = to.angle - from.angle;
  const int more = static_cast<int>((360 - section) / kChordDegrees);  // beside the first
  if (more < 0 || sketch.objectCount + more > kMaxItems) return false;
  CircleCut end = from;
  end.angle += 360;
  Chords(circle, to, end, more + 1, true);
  const int shown = static_cast<int>(section / kPreviewDegrees) + 1;
  if (sketch.trimPreviewing) Chords(circle, from, to, shown, false);
  return true;
}

double PositionOnRun(double x, double y) {
  double position = 0;
  double best = 0;
  for (int i = 0; i < kSlotSteps; ++i) {
    const SegmentFoot foot =
        FootOnSegment({x, y}, {run.xs[i], run.ys[i]}, {run.xs[i + 1], run.ys[i + 1]}, kLeastLength);
    if (i > 0 && foot.square >= best) continue;
    best = foot.square;
    position = i + foot.along;
  }
  return position < kSlotSteps ? position : position - kSlotSteps;
}

void PointOnRun(double position, double& x, double& y) {
  double whole = std::floor(position);
  const double t = position - whole;
  while (whole < 0) whole += kSlotSteps;
  const int step = static_cast<int>(whole) % kSlotSteps;
  x = run.xs[step] + (run.xs[step + 1] - run.xs[step]) * t;
  y = run.ys[step] + (run.ys[step + 1] - run.ys[step]) * t;
}

// The steps of the run from one position to a later one, the first and last in part.
void Steps(std::int32_t group, double from, double to, bool keep) {
  double at = from;
  while (at < to) {
    const double next = std::min(std::floor(at) + 1, to);
    double ax = 0, ay = 0, bx = 0, by = 0;
    PointOnRun(at, ax, ay);
    PointOnRun(next, bx, by);
    SketchObject line;
    line.group = group;
    SetLineEnds(line, ax, ay, bx, by);
    const bool counts = next - at >= kLeastSteps && line.size >= kLeastLength;
    if (counts && keep) AddPiece(line);
    if (counts && !keep) Preview(ax, ay, bx, by);
    at = next;
  }
}

bool PlanSlot(const SketchObject& slot, int target, double x, double y) {
  SlotRunOf(target, run);
  CutsOfSlot(target, run, cuts);
  if (cuts.count < 2) return false;
  double from = 0;
  double to = 0;
  SectionAround(PositionOnRun(x, y), kSlotSteps, from, to);
  Steps(slot.group, to, from + kSlotSteps, true);
  if (sketch.trimPreviewing) Steps(slot.group, from, to, false);
  return plan.count > 0;
}

void Carry(int index, bool keeps) {
  PushSketchUndo();
  int first = 0;
  if (keeps) {
    PutSketchObject(index, plan.pieces[first++]);
  } else {
    RemoveSketchObject(index);
    if (sketch.selected == index) {
      SetSelected(-1);
    } else if (sketch.selected > index) {
      SetSelected(sketch.selected - 1);
    }
  }
  for (int i = first; i < plan.count; ++i) AppendSketchObject(plan.pieces[i]);
}

}  // namespace

bool TrimObject(int index, double x, double y) {
  ClearPreviewSegments();
  if (index < 0 || index >= sketch.objectCount || sketch.locked[index]) return false;
  const SketchObject target = sketch.objects[index];
  plan.count = 0;
  plan.tooMany = false;
  bool planned = false;
  bool keeps = false;
  switch (target.type) {
    case kTypeLine:
      planned = PlanLine(target, index, x, y);
      keeps = plan.count > 0;
      break;
    case kTypeRectangle:
      planned = PlanRectangle(target, index, x, y, keeps);
      break;
    case kTypeCircle:
      planned = PlanCircle(target, index, x, y);
      keeps = true;
      break;
    case kTypeSlot:
      planned = PlanSlot(target, index, x, y);
      keeps = true;
      break;
    default:
      break;
  }
  if (!planned || plan.tooMany || sketch.objectCount - 1 + plan.count > kMaxItems) {
    ClearPreviewSegments();
    return false;
  }
  if (!sketch.trimPreviewing) Carry(index, keeps);
  return true;
}

}  // namespace morva
