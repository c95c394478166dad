#include "cad/tools/select_drag.h"

#include <algorithm>

#include "app/command_ids.h"
#include "cad/geometry/canvas_view.h"
#include "cad/geometry/hits.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"
#include "cad/tools/geometry_drag.h"
#include "cad/tools/tool_change.h"
#include "library/outline.h"
#include "platform/window.h"

namespace morva {

namespace {

constexpr double kPickReach = 10;  // pixels
constexpr double kShortSegment = 1e-8;

struct Band {
  bool active = false;
  int startX = 0, startY = 0;  // canvas pixels
  int endX = 0, endY = 0;
};
Band band;

bool OnOutline(const SketchObject& object, double x, double y) {
  double xs[kOutlinePoints];
  double ys[kOutlinePoints];
  const int count = ObjectOutline(object, xs, ys);
  const double reach = CanvasTolerance(kPickReach);
  for (int i = 0; i + 1 < count; ++i) {
    const SegmentFoot foot =
        FootOnSegment({x, y}, {xs[i], ys[i]}, {xs[i + 1], ys[i + 1]}, kShortSegment);
    if (foot.square <= reach * reach) return true;
  }
  return false;
}

// The nearest edge of geometry that may be cut; else the topmost construction or, to tell that
// it is locked, locked object whose outline is under the pointer.
int PickObject(double x, double y, bool lockedToo) {
  const int edge = HitEdge(x, y);
  if (edge >= 0) return edge;
  for (int i = sketch.objectCount - 1; i >= 0; --i) {
    if (sketch.hidden[i]) continue;
    const bool offered = sketch.locked[i] ? lockedToo : sketch.objects[i].type > kTypeSlot;
    if (offered && OnOutline(sketch.objects[i], x, y)) return i;
  }
  return -1;
}

void MarkPart(int index, unsigned char mark) {
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (SamePart(index, i)) SetMark(i, mark != 0);
  }
}

void StartBand(const platform::PointerEvent& event) {
  band = {true, event.x, event.y, event.x, event.y};
  platform::CapturePointer(kViewCadCanvas);
}

// Toggles the marks of a part; empty ground keeps them and starts a band.
void PressWithCtrl(const platform::PointerEvent& event, double x, double y) {
  const int hit = PickObject(x, y, false);
  if (hit < 0) {
    StartBand(event);
    return;
  }
  MarkPart(hit, tools.multiSelect[hit] ? 0 : 1);
  SetSelected(-1);
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (tools.multiSelect[i]) SetSelected(i);
  }
  RefreshSketchPanels();
}

void PressPlain(const platform::PointerEvent& event, double x, double y) {
  int handle = kWholeObject;
  int hit = -1;
  if (HasSketchSelection() && !sketch.hidden[sketch.selected] &&
      HandleAt(sketch.objects[sketch.selected], event.x, event.y, handle)) {
    hit = sketch.selected;
  } else {
    hit = PickObject(x, y, true);
    if (hit >= 0) HandleAt(sketch.objects[hit], event.x, event.y, handle);
  }
  if (hit < 0) {
    ClearMultiSelect();
    SetSelected(-1);
    RefreshSketchPanels();
    StartBand(event);
    return;
  }
  if (!IsMultiSelected(hit)) {
    ClearMultiSelect();
    MarkPart(hit, 1);
  }
  SetSelected(hit);
  RefreshSketchPanels();
  if (!MayEditSelection()) return;
  BeginGeometryDrag(handle, x, y);
  platform::CapturePointer(kViewCadCanvas);
}

bool OutlineInside(const SketchObject& object, double left, double bottom, double right,
                   double top) {
  double xs[kOutlinePoints];
  double ys[kOutlinePoints];
  const int count = ObjectOutline(object, xs, ys);
  for (int i = 0; i < count; ++i) {
    if (xs[i] < left || xs[i] > right || ys[i] < bottom || ys[i] > top) return false;
  }
  return count > 0;
}

void SelectInBand() {
  double ax = 0, ay = 0, bx = 0, by = 0;
  FromCanvas(band.startX, band.startY, ax, ay);
  FromCanvas(band.endX, band.endY, bx, by);
  const double left = std::min(ax, bx);
  const double right = std::max(ax, bx);
  const double bottom = std::min(ay, by);
  const double top = std::max(ay, by);
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (sketch.hidden[i] || sketch.locked[i]) continue;
    if (!OutlineInside(sketch.objects[i], left, bottom, right, top)) continue;
    SetMark(i, true);
    SetSelected(i);
  }
  RefreshSketchPanels();
}

void LetGo() {
  if (!SelectDragging()) platform::ReleasePointer();
  platform::Repaint(kViewCadCanvas);
}

}  // namespace

bool SelectPress(const platform::PointerEvent& event) {
  if (event.button != platform::PointerButton::Left) return false;
  SelectCaptureLost();  // a release that never came
  double x = 0;
  double y = 0;
  FromCanvas(event.x, event.y, x, y);
  if (event.ctrl) {
    PressWithCtrl(event, x, y);
  } else {
    PressPlain(event, x, y);
  }
  return true;
}

bool SelectMove(const platform::PointerEvent& event) {
  if (band.active) {
    band.endX = event.x;
    band.endY = event.y;
    platform::Repaint(kViewCadCanvas);
    return true;
  }
  if (!GeometryDragging()) return false;
  double x = 0;
  double y = 0;
  FromCanvas(event.x, event.y, x, y);
  DragGeometryTo(x, y, event.alt);
  if (!GeometryDragging()) LetGo();
  return true;
}

bool SelectRelease(const platform::PointerEvent& event) {
  if (!SelectMove(event)) return false;
  if (band.active) {
    band.active = false;
    SelectInBand();
  }
  EndGeometryDrag();
  LetGo();
  return true;
}

void SelectCaptureLost() {
  if (!SelectDragging()) return;
  band.active = false;
  EndGeometryDrag();
  LetGo();
}

bool SelectEscape() {
  if (!SelectDragging()) return false;
  band.active = false;
  UndoGeometryDrag();
  LetGo();
  return true;
}

bool SelectDragging() { return band.active || GeometryDragging(); }

bool RubberBand(platform::Rect& place) {
  if (!band.active) return false;
  place.left = std::min(band.startX, band.endX);
  place.right = std::max(band.startX, band.endX);
  place.top = std::min(band.startY, band.endY);
  place.bottom = std::max(band.startY, band.endY);
  return true;
}

int SelectionHandles(platform::PointF* points) {
  if (!HasSketchSelection() || sketch.hidden[sketch.selected]) return 0;
  const SketchObject& object = sketch.objects[sketch.selected];
  double xs[9];
  double ys[9];
  const int count = ObjectSnapPoints(object, xs, ys);
  const int first = HasEnds(object) || object.type == kTypeCircle ? 0 : 1;
  const int last = HasEnds(object) ? 1 : count - 1;
  int n = 0;
  for (int i = first; i <= last; ++i) {
    const platform::Point at = ToCanvas(xs[i], ys[i]);
    points[n++] = {static_cast<double>(at.x), static_cast<double>(at.y)};
  }
  return n;
}

void RegisterSelectDrag() {
  cadHooks.dropTools = [] {
    StopTools(false);
    ResetSelectDrag();
  };
}

void ResetSelectDrag() {
  band = Band();
  ForgetGeometryDrag();
}

}  // namespace morva
