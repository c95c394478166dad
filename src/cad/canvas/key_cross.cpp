#include "cad/canvas/key_cross.h"

#include <algorithm>
#include <cmath>

#include "app/command_ids.h"
#include "cad/canvas/canvas_pointer.h"
#include "cad/geometry/canvas_view.h"
#include "cad/geometry/snap.h"
#include "cad/model/cad_chords.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "platform/window.h"

namespace morva {
namespace {

using platform::PointerAction;
using platform::PointerButton;
using platform::PointerEvent;

constexpr int kLeastStep = 5;   // pixels; less can hardly be seen
constexpr int kEdge = 24;       // pixels that the cross keeps from the edge of the view
constexpr int kManySteps = 10;  // with Shift
constexpr double kFarthest = 1e5;

// A multiple of the snap grid that can be seen at this zoom, drawing units.
double Step() {
  const double scale = CanvasScale(platform::RectWidth(CanvasClient()));
  double step = SnapGrid();
  for (const double times : {2.0, 2.0, 2.5, 2.0, 2.0, 2.5, 2.0, 2.0, 2.5}) {
    if (step * scale >= kLeastStep) break;
    step *= times;
  }
  return step;
}

double OnGrid(double value, double step) { return std::round(value / step) * step; }

// The middle of the view, or where the pointer was last.
platform::Point StartPixel() {
  const platform::Rect client = CanvasClient();
  if (platform::RectHolds(client, canvasView.cursorX, canvasView.cursorY)) {
    return {canvasView.cursorX, canvasView.cursorY};
  }
  return {platform::RectWidth(client) / 2, platform::RectHeight(client) / 2};
}

// The view follows what leaves it.
void BringIntoView(double x, double y) {
  const platform::Rect client = CanvasClient();
  const platform::Point at = ToCanvas(x, y);
  const int right = std::max(platform::RectWidth(client) - kEdge, kEdge);
  const int foot = std::max(platform::RectHeight(client) - kEdge, kEdge);
  const int dx = std::clamp(at.x, kEdge, right) - at.x;
  const int dy = std::clamp(at.y, kEdge, foot) - at.y;
  if (dx != 0 || dy != 0) PanCanvas(dx, dy);
}

PointerEvent EventAt(PointerAction action) {
  const KeptPlace& place = ThePlace();
  const platform::Point at = ToCanvas(place.x, place.y);
  PointerEvent event;
  event.action = action;
  event.x = at.x;
  event.y = at.y;
  event.leftDown = tools.dragActive;
  return event;
}

void Tell() {
  const KeptPlace& place = ThePlace();
  ShowCursorText(place.x, place.y);
  platform::TellViewValue(kViewCadCanvas);
}

void StandAt(double x, double y) {
  KeepPlace(std::clamp(x, -kFarthest, kFarthest), std::clamp(y, -kFarthest, kFarthest));
  const KeptPlace& place = ThePlace();
  BringIntoView(place.x, place.y);
  PointByKey(EventAt(PointerAction::Move));
  Tell();
  platform::Repaint(kViewCadCanvas);
}

bool Begin() {
  const platform::Point start = StartPixel();
  double x = 0;
  double y = 0;
  FromCanvas(start.x, start.y, x, y);
  const double step = Step();
  StandAt(OnGrid(x, step), OnGrid(y, step));
  return true;
}

bool MayStand() { return !canvasView.modelView && !canvasView.panTool; }

template <int right, int above, int steps>
bool MoveByKey() {
  if (!MayStand()) return false;
  if (!KeyCrossUp()) return Begin();
  const double x = ThePlace().x;
  const double y = ThePlace().y;
  const double step = Step();
  StandAt(right != 0 ? OnGrid(x + right * steps * step, step) : x,
          above != 0 ? OnGrid(y + above * steps * step, step) : y);
  return true;
}

bool Press() {
  if (!MayStand() || (!KeyCrossUp() && !AnyToolInHand())) return false;
  // Nobody is to press at a place that he does not see.
  if (!KeyCrossUp()) return Begin();
  PointerEvent event = EventAt(tools.dragActive ? PointerAction::Release : PointerAction::Press);
  event.button = PointerButton::Left;
  event.leftDown = event.action == PointerAction::Press;
  PointByKey(event);
  if (event.action == PointerAction::Press && !tools.dragActive) {
    event.action = PointerAction::Release;
    event.leftDown = false;
    PointByKey(event);
  }
  // What the press made may be seen, and snapped to, at once.
  if (KeyCrossUp() && MayStand()) StandAt(ThePlace().x, ThePlace().y);
  return true;
}

// The view has another zoom or shift: the cross stays at its place of the drawing, in sight or not.
void FollowView() {
  if (!KeyCrossUp() || !MayStand()) return;
  PointByKey(EventAt(PointerAction::Move));
  Tell();
}

constexpr KeyRow kKeys[] = {
    {PlainKey(kCanvasChords, platform::kKeyLeft), u"Move the cross left", MoveByKey<-1, 0, 1>},
    {PlainKey(kCanvasChords, platform::kKeyRight), u"Move the cross right", MoveByKey<1, 0, 1>},
    {PlainKey(kCanvasChords, platform::kKeyUp), u"Move the cross up", MoveByKey<0, 1, 1>},
    {PlainKey(kCanvasChords, platform::kKeyDown), u"Move the cross down", MoveByKey<0, -1, 1>},
    {ShiftKey(kCanvasChords, platform::kKeyLeft), u"Ten steps left", MoveByKey<-1, 0, kManySteps>},
    {ShiftKey(kCanvasChords, platform::kKeyRight), u"Ten steps right", MoveByKey<1, 0, kManySteps>},
    {ShiftKey(kCanvasChords, platform::kKeyUp), u"Ten steps up", MoveByKey<0, 1, kManySteps>},
    {ShiftKey(kCanvasChords, platform::kKeyDown), u"Ten steps down", MoveByKey<0, -1, kManySteps>},
    {PlainKey(kCanvasChords, platform::kKeyEnter), u"Press at the cross", Press},
    {PlainKey(kCanvasChords, platform::kKeySpace), u"", Press},
};

}  // namespace

bool KeyCrossUp() { return ThePlace().kept; }

std::span<const KeyRow> KeyCrossKeys() { return kKeys; }

std::u16string KeyCrossWords() {
  if (!KeyCrossUp()) return {};
  return u"cross at X " + SketchNumber(ThePlace().x, 4) + u"  Y " + SketchNumber(ThePlace().y, 4);
}

void RegisterKeyCross() {
  cadHooks.crossKey = [](const platform::KeyEvent& key) { return RunKeyRow(kKeys, key); };
  cadHooks.crossFollows = FollowView;
}

}  // namespace morva
