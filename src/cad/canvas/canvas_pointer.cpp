#include "cad/canvas/canvas_pointer.h"

#include <utility>

#include "app/command_ids.h"
#include "app/commands.h"
#include "app/panels.h"
#include "app/router.h"
#include "cad/canvas/canvas_model.h"
#include "cad/canvas/key_cross.h"
#include "cad/geometry/canvas_view.h"
#include "cad/geometry/hits.h"
#include "cad/geometry/snap.h"
#include "cad/model/cad_chords.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/hint_line.h"
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
using platform::Point;
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

// The pixel of the last event of the pointer. The window tells moves to where the pointer is
// already, as after a popup: these move nothing.
int restX = -1;
int restY = -1;

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

bool EndCross() {
  if (!DropKeyCross()) return false;
  ForgetHover();
  platform::TellViewValue(kViewCadCanvas);
  Refresh();
  return true;
}

void PressCanvas(const PointerEvent& event) {
  EndCross();
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

// What lies under the pointer, or under the cross, with no button down: snap, tool preview, edge,
// cursor text.
void Hover(const PointerEvent& event) {
  const int hoverBefore = tools.hoverObject;
  const int previewBefore = tools.previewSegmentCount;
  double x = 0;
  double y = 0;
  FromCanvas(event.x, event.y, x, y);
  bool changed = CrosshairShown();
  if (changed && AnyToolInHand()) {
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

void HoverPointer(const PointerEvent& event) {
  double x = 0;
  double y = 0;
  FromCanvas(event.x, event.y, x, y);
  RememberPointed(x, y);
  Hover(event);
}

void MoveOf(const PointerEvent& event) {
  const bool rests = event.x == restX && event.y == restY;
  restX = canvasView.cursorX = event.x;
  restY = canvasView.cursorY = event.y;
  Point cross;
  if (rests && drag.holder == Holder::Nobody && KeyCrossPixel(cross)) return;
  EndCross();
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
  if (!event.leftDown && !event.middleDown && !event.rightDown) HoverPointer(event);
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
  Point cross;
  if (KeyCrossPixel(cross)) return;
  ForgetPointed();
  ForgetHover();
  Refresh();
}

// An event of the left button at the cross, which means the very place of it.
PointerEvent EventAtCross(PointerAction action, Point at) {
  PointerEvent event;
  event.action = action;
  event.x = at.x;
  event.y = at.y;
  if (action != PointerAction::Move) event.button = PointerButton::Left;
  event.leftDown = tools.dragActive;
  double x = 0;
  double y = 0;
  if (KeyCross(x, y)) PinPixel(at, x, y);
  return event;
}

void ShowAtCross() {
  Point at;
  if (KeyCrossPixel(at)) {
    Hover(EventAtCross(PointerAction::Move, at));
    UnpinPixel();
  }
  platform::TellViewValue(kViewCadCanvas);
  Refresh();
}

// The pointer's own drag goes on, and with Pan a press would take hold of the view.
bool CrossMayMove() { return drag.holder == Holder::Nobody && !canvasView.panTool; }

template <int right, int up, CrossStep step>
bool StepByKey() {
  if (!CrossMayMove()) return false;
  StepKeyCross(right, up, step);
  ShowAtCross();
  return true;
}

// A click, or one end of a drag: no button is held meanwhile, so that nobody has the capture.
void ClickAtCross(PointerEvent event) {
  ForgetHover();
  if (tools.dragActive) {
    event.action = PointerAction::Release;
    DrawToolRelease(event);
    return;
  }
  PressLeft(event);
  const Holder holder = LetGo();
  if (tools.dragActive) {
    KeepPrompt(u"Enter sets where it begins, Enter again where it ends.");
  } else if (holder == Holder::Select) {
    SelectRelease(event);
  }
}

template <bool ctrl, bool alt>
bool PressByKey() {
  if (!CrossMayMove()) return false;
  Point at;
  if (!KeyCrossPixel(at)) {
    BeginKeyCross();
    ShowAtCross();
    return true;
  }
  PointerEvent event = EventAtCross(PointerAction::Press, at);
  event.ctrl = ctrl;
  event.alt = alt;
  ClickAtCross(event);
  UnpinPixel();
  platform::TellViewValue(kViewCadCanvas);
  Refresh();
  return true;
}

template <int notches>
bool ZoomByKey() {
  const platform::Rect client = CanvasClient();
  Point at{platform::RectWidth(client) / 2, platform::RectHeight(client) / 2};
  KeyCrossPixel(at);
  ZoomAt(at.x, at.y, notches);
  return true;
}

template <int right, int down>
bool PanByKey() {
  PanCanvas(right * kKeyPixels, down * kKeyPixels);
  Refresh();
  return true;
}

// clang-format off
constexpr KeyRow kKeys[] = {
    {PlainKey(kCanvasChords, platform::kKeyLeft), u"Move the cross left", StepByKey<-1, 0, CrossStep::Grid>},
    {PlainKey(kCanvasChords, platform::kKeyRight), u"Move the cross right", StepByKey<1, 0, CrossStep::Grid>},
    {PlainKey(kCanvasChords, platform::kKeyUp), u"Move the cross up", StepByKey<0, 1, CrossStep::Grid>},
    {PlainKey(kCanvasChords, platform::kKeyDown), u"Move the cross down", StepByKey<0, -1, CrossStep::Grid>},
    {ShiftKey(kCanvasChords, platform::kKeyLeft), u"Move the cross far left", StepByKey<-1, 0, CrossStep::Far>},
    {ShiftKey(kCanvasChords, platform::kKeyRight), u"Move the cross far right", StepByKey<1, 0, CrossStep::Far>},
    {ShiftKey(kCanvasChords, platform::kKeyUp), u"Move the cross far up", StepByKey<0, 1, CrossStep::Far>},
    {ShiftKey(kCanvasChords, platform::kKeyDown), u"Move the cross far down", StepByKey<0, -1, CrossStep::Far>},
    {AltKey(kCanvasChords, platform::kKeyLeft), u"Move the cross a little left", StepByKey<-1, 0, CrossStep::Fine>},
    {AltKey(kCanvasChords, platform::kKeyRight), u"Move the cross a little right", StepByKey<1, 0, CrossStep::Fine>},
    {AltKey(kCanvasChords, platform::kKeyUp), u"Move the cross a little up", StepByKey<0, 1, CrossStep::Fine>},
    {AltKey(kCanvasChords, platform::kKeyDown), u"Move the cross a little down", StepByKey<0, -1, CrossStep::Fine>},
    {PlainKey(kCanvasChords, platform::kKeyEnter), u"Click at the cross", PressByKey<false, false>},
    {PlainKey(kCanvasChords, platform::kKeySpace), u"The same click", PressByKey<false, false>},
    {CtrlKey(kCanvasChords, platform::kKeyEnter), u"Ctrl+click at the cross", PressByKey<true, false>},
    {CtrlKey(kCanvasChords, platform::kKeySpace), u"The same Ctrl+click", PressByKey<true, false>},
    {AltKey(kCanvasChords, platform::kKeyEnter), u"Click at the cross, snap passed by", PressByKey<false, true>},
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
// clang-format on

// Zoom, pan and the cross, without a pointer.
bool ViewKey(const KeyEvent& key) {
  return RunKeyRow(kKeys, WithoutZoomModifiers(key)) || RouteChord(kCanvasChords, key);
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
  const std::u16string text = u"CAD cursor  " + CursorWords(x, y);
  SetPassingStatus(text.c_str());
}

std::u16string CursorWords(double x, double y) {
  std::u16string text = u"X ";
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
  return text;
}

bool TakeSpentRightClick() { return std::exchange(rightSpent, false); }

Point CanvasCursor() {
  Point at{canvasView.cursorX, canvasView.cursorY};
  KeyCrossPixel(at);
  return at;
}

bool CrosshairShown() {
  if (canvasView.panTool || canvasView.modelView) return false;
  Point at;
  if (KeyCrossPixel(at)) return true;
  return AnyToolInHand() &&
         platform::RectHolds(CanvasClient(), canvasView.cursorX, canvasView.cursorY);
}

bool SnapPlace(double& x, double& y) {
  if (!tools.snapHit) return false;
  x = tools.dragActive ? tools.dragEndX : snapX;
  y = tools.dragActive ? tools.dragEndY : snapY;
  return true;
}

bool CanvasPointer(const PointerEvent& event) {
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
  // The cross goes with the tool that Escape gives up.
  const bool crossEnds = escape && !SelectDragging() && EndCross();
  if (DrawToolKey(key) || (escape && SelectEscape()) || crossEnds) {
    Refresh();
    return true;
  }
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
  restX = restY = -1;
  snapX = snapY = 0;
  ResetKeyCross();
}

}  // namespace morva
