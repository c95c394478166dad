#include "cad/tools/geometry_drag.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "app/command_ids.h"
#include "cad/geometry/canvas_view.h"
#include "cad/geometry/lines.h"
#include "cad/geometry/snap.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "library/outline.h"
#include "platform/window.h"

namespace morva {

namespace {

constexpr double kHandleReach = 10;      // pixels
constexpr double kLeastMovement = 1e-6;  // drawing units, |dx| + |dy| from the press
constexpr double kLeastSize = 1e-9;      // a pulled size below keeps its last value
constexpr int kSides = 4;

struct Drag {
  bool active = false;
  bool moved = false;  // the undo step of this drag has been taken
  int index = -1;
  int count = 0;                // objects at the last step
  std::uint32_t undoTurns = 0;  // of the sketch, this drag's own step among them
  int handle = kWholeObject;
  double startX = 0;
  double startY = 0;
  SketchObject original;
  SketchObject before[kMaxItems];
  unsigned char moving[kMaxItems] = {};
  int skewFirst = -1;  // first of the three lines that a rectangle's sides were added as
};
Drag drag;
SketchObject planned[kMaxItems];  // the next state of what moves
SketchObject sides[kSides];       // and of a rectangle's sides

// Geometry that moves with the drag is no snap target.
void SnapBesideMoving(double& x, double& y, bool bypass) {
  unsigned char hidden[kMaxItems];
  unsigned char locked[kMaxItems];
  StoreFlags(hidden, locked);
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (drag.moving[i]) SetFlag(ObjectFlag::Hidden, i, true);
  }
  SnapPoint(x, y, drag.index, bypass);
  LoadFlags(hidden, locked);
}

bool PlanWhole(double x, double y, bool bypass) {
  double anchorX = drag.original.x + (x - drag.startX);
  double anchorY = drag.original.y + (y - drag.startY);
  SnapBesideMoving(anchorX, anchorY, bypass);
  const double dx = anchorX - drag.original.x;
  const double dy = anchorY - drag.original.y;
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (!drag.moving[i]) continue;
    planned[i] = drag.before[i];
    planned[i].x += dx;
    planned[i].y += dy;
    if (!WithinSketchLimit(planned[i])) return false;
  }
  planned[drag.index].x = anchorX;
  planned[drag.index].y = anchorY;
  return true;
}

bool PlanLine(SketchObject& line, double x, double y) {
  double endX = 0;
  double endY = 0;
  LineEndPoint(line, endX, endY);
  if (drag.handle == 0) {
    SetLineEnds(line, x, y, endX, endY);
  } else {
    SetLineEnds(line, line.x, line.y, x, y);
  }
  return line.size >= kLeastSize;
}

// A corner of the box around a slot gives both sizes, the middle of a side its own one.
void PlanSlot(SketchObject& slot, double x, double y) {
  const double sine = SketchSine(slot.angle);
  const double cosine = SketchCosine(slot.angle);
  const double dx = x - slot.x;
  const double dy = y - slot.y;
  const double length = 2 * std::fabs(dx * cosine + dy * sine);
  const double width = 2 * std::fabs(dy * cosine - dx * sine);
  const bool isEnd = drag.handle == 6 || drag.handle == 8;
  const bool isFlank = drag.handle == 5 || drag.handle == 7;
  if (!isFlank && length >= kLeastSize) slot.size = length;
  if (!isEnd && width >= kLeastSize) slot.size2 = width;
  slot.size = std::max(slot.size, slot.size2);
}

// The sides from the corner list, one corner or the two of an edge moved.
bool PlanSkew(double x, double y, bool bypass) {
  double xs[kOutlinePoints];
  double ys[kOutlinePoints];
  ObjectOutline(drag.original, xs, ys);
  if (drag.handle <= kSides) {
    SnapBesideMoving(x, y, bypass);
    xs[drag.handle - 1] = x;
    ys[drag.handle - 1] = y;
  } else {
    const int a = drag.handle - 5;
    const int b = (a + 1) % kSides;
    const double middleX = (xs[a] + xs[b]) / 2;
    const double middleY = (ys[a] + ys[b]) / 2;
    double toX = middleX + (x - drag.startX);
    double toY = middleY + (y - drag.startY);
    SnapBesideMoving(toX, toY, bypass);
    for (const int corner : {a, b}) {
      xs[corner] += toX - middleX;
      ys[corner] += toY - middleY;
    }
  }
  for (int i = 0; i < kSides; ++i) {
    const int next = (i + 1) % kSides;
    sides[i] = SketchObject();
    sides[i].group = drag.original.group;
    SetLineEnds(sides[i], xs[i], ys[i], xs[next], ys[next]);
    if (!WithinSketchLimit(sides[i])) return false;
  }
  return true;
}

bool PlanHandle(double x, double y, bool bypass) {
  SketchObject& object = planned[drag.index];
  object = drag.original;
  if (object.type == kTypeRectangle) return PlanSkew(x, y, bypass);
  SnapBesideMoving(x, y, bypass);
  if (HasEnds(object)) {
    if (!PlanLine(object, x, y)) return false;
  } else if (object.type == kTypeSlot) {
    PlanSlot(object, x, y);
  } else {
    object.size = 2 * PlainDistance(object.x, object.y, x, y);
    if (object.size < kLeastSize) return false;
  }
  return WithinSketchLimit(object);
}

bool Skews() { return drag.handle != kWholeObject && drag.original.type == kTypeRectangle; }

void WriteSides() {
  if (drag.skewFirst < 0) {
    drag.skewFirst = sketch.objectCount;
    for (int i = 1; i < kSides; ++i) drag.moving[AppendSketchObject(sides[i])] = 1;
    drag.count = sketch.objectCount;
  }
  PutSketchObject(drag.index, sides[0]);
  for (int i = 1; i < kSides; ++i) PutSketchObject(drag.skewFirst + i - 1, sides[i]);
}

// Another command may have changed the sketch while the button was down.
bool StillThere() {
  return sketch.selected == drag.index && sketch.objectCount == drag.count &&
         sketch.undoTurns == drag.undoTurns;
}

}  // namespace

bool HandleAt(const SketchObject& object, int px, int py, int& handle) {
  double xs[9];
  double ys[9];
  const int count = ObjectSnapPoints(object, xs, ys);
  const auto square = [&](int i) {
    const platform::Point at = ToCanvas(xs[i], ys[i]);
    const double dx = at.x - px;
    const double dy = at.y - py;
    return dx * dx + dy * dy;
  };
  handle = kWholeObject;
  double best = kHandleReach * kHandleReach;
  if (object.type == kTypeCircle) {
    double x = 0;
    double y = 0;
    FromCanvas(px, py, x, y);
    const double off = PlainDistance(object.x, object.y, x, y) - object.size / 2;
    if (std::fabs(off) < CanvasTolerance(kHandleReach)) {
      handle = 1;
      return true;
    }
    return square(0) < best;
  }
  const int first = HasEnds(object) ? 0 : 1;
  const int last = HasEnds(object) ? 1 : count - 1;
  for (int i = first; i <= last; ++i) {
    if (square(i) >= best) continue;
    best = square(i);
    handle = i;
  }
  return handle != kWholeObject;
}

void BeginGeometryDrag(int handle, double x, double y) {
  drag.active = true;
  drag.moved = false;
  drag.index = sketch.selected;
  drag.count = sketch.objectCount;
  drag.undoTurns = sketch.undoTurns;
  drag.original = sketch.objects[drag.index];
  const bool whole = drag.original.group != 0 || MultiSelectCount() > 1;
  drag.handle = whole ? kWholeObject : handle;
  drag.startX = x;
  drag.startY = y;
  drag.skewFirst = -1;
  std::copy_n(sketch.objects, kMaxItems, drag.before);
  for (int i = 0; i < kMaxItems; ++i) {
    drag.moving[i] = InSelectedPart(i) || IsMultiSelected(i) ? 1 : 0;
  }
}

void DragGeometryTo(double x, double y, bool bypassSnap) {
  if (!drag.active) return;
  if (!StillThere()) {
    drag.active = false;
    return;
  }
  const double movement = std::fabs(x - drag.startX) + std::fabs(y - drag.startY);
  if (!drag.moved && movement < kLeastMovement) return;
  if (!drag.moved && Skews() && sketch.objectCount + kSides - 1 > kMaxItems) {
    SetSketchStatus(u"Not enough room to create skewable sides.");
    drag.active = false;
    return;
  }
  const bool whole = drag.handle == kWholeObject;
  if (whole ? !PlanWhole(x, y, bypassSnap) : !PlanHandle(x, y, bypassSnap)) return;
  if (!drag.moved) {
    PushSketchUndo();
    drag.moved = true;
    drag.undoTurns = sketch.undoTurns;
  }
  if (Skews()) {
    WriteSides();
  } else {
    for (int i = 0; i < sketch.objectCount; ++i) {
      if (whole ? drag.moving[i] != 0 : i == drag.index) PutSketchObject(i, planned[i]);
    }
  }
  platform::Repaint(kViewCadCanvas);
}

void EndGeometryDrag() {
  if (!drag.active) return;
  drag.active = false;
  if (!drag.moved || !StillThere()) return;
  RefreshSketchPanels();
  LogSketchOperation(drag.handle == kWholeObject ? u"Moved geometry" : u"Pulled geometry handle");
}

void UndoGeometryDrag() {
  if (!drag.active) return;
  drag.active = false;
  if (drag.moved && StillThere()) SketchUndo();
}

bool GeometryDragging() { return drag.active; }

void ForgetGeometryDrag() { drag.active = false; }

}  // namespace morva
