#include "cad/canvas/canvas_pointer.h"

#include <utility>

#include "app/command_ids.h"
#include "app/commands.h"
#include "app/panels.h"
#include "app/router.h"
#include "cad/canvas/canvas_model.h"
#include "cad/geometry/canvas_view.h"
#include "cad/geometry/hits.h"
#include "cad/geometry/snap.h"
#include "cad/model/cad_chords.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/dimensions.h"
#include "cad/tools/draw_tools.h"
#include "cad/tools/geometry_tools.h"
#include "cad/tools/select_drag.h"
#include "cad/tools/tool_change.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {
namespace {

using platform::KeyEvent;
using platform::PointerAction;
using platform::PointerButton;
using platform::PointerEvent;

constexpr int kKeyPixels = 20;  // a key's pan step

enum class Holder { Nobody, Pan, DrawTool, Select };

struct Drag {
  Holder holder = Holder::Nobody;
  PointerButton button = PointerButton::None;
  int x = 0;  // the last pixel of a pan
  int y = 0;
};
Drag drag;

bool rightSpent = false;  // the last click of the right button gave up a tool

int pointedX = -1;  // where the pointer itself was last, canvas pixels
int pointedY = -1;

double snapX = 0;  // where the last hover would snap to, drawing units
double snapY = 0;

void Refresh() { platform::Repaint(kViewCadCanvas); }

void Hold(Holder holder, const PointerEvent& event) {
  drag = Drag{holder, event.button, event.x, event.y};
  platform::CapturePointer(kViewCadCanvas);
}

// The holder is cleared first: what it is told may press or release in its turn.
Holder LetGo() {
  const Holder holder = drag.holder;
  drag = Drag();
  if (holder != Holder::Nobody) platform::ReleasePointer();
  return holder;
}

void LoseCapture() {
  const Holder holder = LetGo();
  if (holder == Holder::DrawTool) DrawToolCaptureLost();
  if (holder == Holder::Select) SelectCaptureLost();
  if (holder != Holder::Nobody) Refresh();
}

bool ButtonDown(const PointerEvent& event) {
  switch (drag.button) {
    case PointerButton::Left:
      return event.leftDown;
    case PointerButton::Middle:
      return event.middleDown;
    case PointerButton::Right:
      return event.rightDown;
    case PointerButton::None:
      break;
  }
  return false;
}

void PressLeft(const PointerEvent& event) {
  if (!canvasView.panTool && TakeWantedPress(event)) return;
  if (DimensionPress(event)) return;
  if (DrawToolPress(event)) return Hold(Holder::DrawTool, event);
  if (DrawToolActive()) return;
  if (GeometryPress(event)) return;
  if (SelectPress(event)) Hold(Holder::Select, event);
}

void PressCanvas(const PointerEvent& event) {
  platform::SetFocusTo(kViewCadCanvas);
  rightSpent = false;
  canvasView.cursorX = event.x;
  canvasView.cursorY = event.y;
  if (drag.holder != Holder::Nobody) {
    // A second button changes nothing while the first is held; without it the release got lost.
    if (event.button != drag.button) return;
    LoseCapture();
  }
  // Numbers of objects may change under the press.
  ForgetHover();
  const bool pans = event.button == PointerButton::Middle ||
                    (event.button == PointerButton::Left && canvasView.panTool);
  if (pans) {
    Hold(Holder::Pan, event);
  } else if (event.button == PointerButton::Left) {
    PressLeft(event);
  }
  Refresh();
}

void PanTo(int x, int y) {
  PanCanvas(x - drag.x, y - drag.y);
  drag.x = x;
  drag.y = y;
  Refresh();
}

// What lies under the pointer with no button down: snap, tool preview, edge, cursor text.
void Hover(const PointerEvent& event) {
  const int hoverBefore = tools.hoverObject;
  const int previewBefore = tools.previewSegmentCount;
  double x = 0;
  double y = 0;
  FromCanvas(event.x, event.y, x, y);
  bool changed = CrosshairShown();
  if (changed) {
    snapX = x;
    snapY = y;
    SnapPoint(snapX, snapY, -1, event.alt);
  }
  const bool draws = DrawToolActive();
  if (draws) {
    DrawToolMove(event);
    changed = true;
  }
  // With pan on a press touches nothing, so that nothing is offered.
  const bool offers = !draws && !canvasView.panTool;
  SetHover(offers ? HitEdge(x, y) : -1);
  ClearPreviewSegments();
  if (offers) GeometryHover(event);
  changed = changed || tools.hoverObject != hoverBefore || previewBefore != 0 ||
            tools.previewSegmentCount != 0;
  ShowCursorText(x, y);
  if (changed) Refresh();
}

void MoveOf(const PointerEvent& event) {
  canvasView.cursorX = event.x;
  canvasView.cursorY = event.y;
  if (drag.holder != Holder::Nobody && !ButtonDown(event)) LoseCapture();
  switch (drag.holder) {
    case Holder::Pan:
      PanTo(event.x, event.y);
      return;
    case Holder::DrawTool:
      DrawToolMove(event);
      Refresh();
      return;
    case Holder::Select:
      SelectMove(event);
      Refresh();
      return;
    case Holder::Nobody:
      break;
  }
  if (!event.leftDown && !event.middleDown && !event.rightDown) Hover(event);
}

void ReleaseOf(const PointerEvent& event) {
  if (event.button == PointerButton::Right && drag.holder == Holder::Nobody) {
    rightSpent = AnyToolInHand() || canvasView.panTool;
    CancelTools();
    return;
  }
  if (event.button != drag.button) return;
  if (drag.holder == Holder::Pan) PanTo(event.x, event.y);
  const Holder holder = LetGo();
  if (holder == Holder::DrawTool) DrawToolRelease(event);
  if (holder == Holder::Select) SelectRelease(event);
  Refresh();
}

void LeaveOf() {
  canvasView.cursorX = -1;
  canvasView.cursorY = -1;
  ForgetHover();
  Refresh();
}

template <int notches>
bool ZoomByKey() {
  const platform::Rect client = CanvasClient();
  ZoomAt(platform::RectWidth(client) / 2, platform::RectHeight(client) / 2, notches);
  return true;
}

template <int right, int down>
bool PanByKey() {
  PanCanvas(right * kKeyPixels, down * kKeyPixels);
  Refresh();
  return true;
}

constexpr KeyRow kKeys[] = {
    {PlainKey(kCanvasChords, '+'), u"Zoom in", ZoomByKey<1>},
    {PlainKey(kCanvasChords, '='), u"", ZoomByKey<1>},  // plus without Shift
    {PlainKey(kCanvasChords, platform::kKeyPageUp), u"Zoom in", ZoomByKey<1>},
    {PlainKey(kCanvasChords, '-'), u"Zoom out", ZoomByKey<-1>},
    {PlainKey(kCanvasChords, platform::kKeyPageDown), u"Zoom out", ZoomByKey<-1>},
    {CtrlKey(kCanvasChords, platform::kKeyLeft), u"Shift left", PanByKey<-1, 0>},
    {CtrlKey(kCanvasChords, platform::kKeyRight), u"Shift right", PanByKey<1, 0>},
    {CtrlKey(kCanvasChords, platform::kKeyUp), u"Shift up", PanByKey<0, -1>},
    {CtrlKey(kCanvasChords, platform::kKeyDown), u"Shift down", PanByKey<0, 1>},
};

// Zoom and pan without a pointer, as in the toolpath view.
bool ViewKey(const KeyEvent& key) {
  if (!RunKeyRow(kKeys, WithoutZoomModifiers(key))) return RouteChord(kCanvasChords, key);
  CrossFollows();
  return true;
}

void ResetOrPress(const PointerEvent& event) {
  LoseCapture();
  // Points picked in quick succession are no double click.
  if (event.button == PointerButton::Left && !AnyToolInHand()) {
    CanvasReset();
  } else {
    PressCanvas(event);
  }
}

void DropCross() {
  if (!ThePlace().kept) return;
  ForgetPlace();
  platform::TellViewValue(kViewCadCanvas);
  Refresh();
}

// While keys point: that the pointer stays where it was, leaves, or is no longer captured.
bool IsPassedOver(const PointerEvent& event) {
  const bool moves = event.action == PointerAction::Move;
  const bool same = moves && event.x == pointedX && event.y == pointedY;
  if (event.action == PointerAction::Leave) {
    pointedX = pointedY = -1;
  } else if (event.action != PointerAction::Lost) {
    pointedX = event.x;
    pointedY = event.y;
  }
  return ThePlace().kept && (same || event.action == PointerAction::Leave);
}

void OnFit(int, int) { CanvasFit(); }

void OnGrid(int, int) {
  SetSketchGrid(!sketch.gridOn);
  RefreshCadTools();
  Refresh();
}

// The tool in hand stays: a pan between two picks is what the key is for.
void OnPan(int, int) {
  LeaveModelView();
  SetPanTool(!canvasView.panTool);
  RefreshCadTools();
}

}  // namespace

void ShowCursorText(double x, double y) {
  std::u16string text = u"CAD cursor  X ";
  text += SketchNumber(x, 4);
  text += u"  Y ";
  text += SketchNumber(y, 4);
  text += sketch.metric ? u" mm" : u" in";
  const int under = HitObject(x, y);
  if (under >= 0) {
    text += u"  Object ";
    text += IntegerText(under + 1);
    text += u"  size ";
    text += SketchNumber(sketch.objects[under].size, 4);
    if (sketch.locked[under]) text += u" LOCKED";
  }
  SetPassingStatus(text.c_str());
}

bool TakeSpentRightClick() { return std::exchange(rightSpent, false); }

bool CrosshairShown() {
  if (canvasView.panTool || canvasView.modelView) return false;
  if (!AnyToolInHand() && !ThePlace().kept) return false;
  return platform::RectHolds(CanvasClient(), canvasView.cursorX, canvasView.cursorY);
}

bool SnapPlace(double& x, double& y) {
  if (!tools.snapHit) return false;
  x = tools.dragActive ? tools.dragEndX : snapX;
  y = tools.dragActive ? tools.dragEndY : snapY;
  return true;
}

void PointByKey(const PointerEvent& event) {
  if (event.action == PointerAction::Press) {
    PressCanvas(event);
  } else if (event.action == PointerAction::Release) {
    ReleaseOf(event);
  } else {
    MoveOf(event);
  }
}

bool CanvasPointer(const PointerEvent& event) {
  if (IsPassedOver(event)) return true;
  if (event.action != PointerAction::Lost) DropCross();
  if (canvasView.modelView && AnyToolInHand()) LeaveModelView();
  if (canvasView.modelView) return ModelPointer(event);
  switch (event.action) {
    case PointerAction::Press:
      PressCanvas(event);
      break;
    case PointerAction::Release:
      ReleaseOf(event);
      break;
    case PointerAction::Move:
      MoveOf(event);
      break;
    case PointerAction::DoubleClick:
      ResetOrPress(event);
      break;
    case PointerAction::Wheel:
      ZoomAt(event.x, event.y, event.wheel);
      break;
    case PointerAction::Leave:
      LeaveOf();
      break;
    case PointerAction::Lost:
      LoseCapture();
      break;
  }
  return true;
}

int SketchShortcut(const KeyEvent& key) {
  const int command = CommandOfChord(kDrawingChords, key);
  return command != 0 ? command : CommandOfChord(kCadChords, key);
}

std::span<const KeyRow> CanvasKeys() { return kKeys; }

bool CanvasKey(const KeyEvent& key) {
  const bool escape = key.key == platform::kKeyEscape && !key.ctrl && !key.shift && !key.alt;
  if (canvasView.modelView) {
    if (escape) LeaveModelView();
    // No edit of what cannot be seen as it lies.
    return escape || SketchShortcut(key) != 0;
  }
  if (escape && drag.holder == Holder::Pan) {
    LoseCapture();
    return true;
  }
  if (escape && ThePlace().kept && drag.holder != Holder::Nobody) {
    LoseCapture();
    return true;
  }
  if (DrawToolKey(key) || (escape && SelectEscape())) {
    Refresh();
    return true;
  }
  if (escape && ThePlace().kept) {
    DropCross();
    return true;
  }
  if (TakeCrossKey(key)) return true;
  if (const int command = SketchShortcut(key)) {
    RouteCommand(command, platform::kNotifyClick);
    Refresh();
    return true;
  }
  return ViewKey(key);
}

void RegisterCanvasKeys() {
  const auto answer = [](int id, CommandHandler handler) {
    RegisterCommand(RouterStage::Builder, id, platform::kNotifyClick, handler);
  };
  answer(kIdCadFit, OnFit);
  answer(kIdCadGrid, OnGrid);
  answer(kIdCadPan, OnPan);
}

void ResetCanvasPointer() {
  drag = Drag();
  rightSpent = false;
  snapX = snapY = 0;
  pointedX = pointedY = -1;
  ForgetPlace();
}

}  // namespace morva
