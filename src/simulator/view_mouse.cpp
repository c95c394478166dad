// Mouse and keyboard of the toolpath view: orbit, pan, zoom, picks and the hover read-out.

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "app/command_ids.h"
#include "app/outlets.h"
#include "library/units.h"
#include "platform/clock.h"
#include "platform/window.h"
#include "simulator/place_pick.h"
#include "simulator/playback.h"
#include "simulator/shown_path.h"
#include "simulator/view.h"
#include "simulator/view_commands.h"
#include "simulator/view_parts.h"
#include "simulator/view_switches.h"
#include "text/codetext.h"

namespace morva {
namespace {

using platform::KeyEvent;
using platform::PointerAction;
using platform::PointerButton;
using platform::PointerEvent;
using platform::PointF;
using platform::Rect;

constexpr double kYawPerPixel = 0.55;  // degrees
constexpr double kElevationPerPixel = 0.45;
constexpr double kMostElevation = 89;  // degrees, either way
constexpr double kZoomIn = 1.12;
constexpr double kZoomOut = 0.89;
constexpr double kPickReach = 225;         // squared pixels
constexpr std::uint64_t kHoverPause = 29;  // ms; a search needs more than this since the last
constexpr int kKeyPixels = 20;             // a key's orbit or pan step

struct Drag {
  PointerButton button = PointerButton::None;  // None: no drag
  bool pans = false;
  int x = 0;
  int y = 0;
};
Drag drag;

bool hoverSearched = false;
std::uint64_t lastHover = 0;

void Orbit(int dx, int dy) {
  StopCube(viewCube);
  ViewState& shown = ShownPath().view;
  if (shown.topView) {
    // The plan seen from the same side, so that nothing jumps.
    shown.topView = false;
    shown.yawDegrees = 0;
    shown.elevationDegrees = 90;
  }
  shown.yawDegrees += dx * kYawPerPixel;
  shown.elevationDegrees =
      std::clamp(shown.elevationDegrees + dy * kElevationPerPixel, -kMostElevation, kMostElevation);
  ViewMoved();
}

void Pan(int dx, int dy) {
  ViewState& shown = ShownPath().view;
  shown.panX += dx;
  shown.panY += dy;
  ViewMoved();
}

void ZoomByNotches(int notches) {
  // The zoom is at a limit long before this many.
  const int count = std::min(std::abs(notches), 100);
  for (int i = 0; i < count; ++i) ZoomBy(notches > 0 ? kZoomIn : kZoomOut);
}

void StopDrag() {
  if (drag.button == PointerButton::None) return;
  drag = Drag();
  platform::ReleasePointer();
}

bool PressView(const PointerEvent& event) {
  if (event.button == PointerButton::None) return false;
  platform::SetFocusTo(kViewToolpath);
  if (drag.button != PointerButton::None || viewCube.ring != CubePart::None) return true;
  const Rect client = platform::ClientArea(kViewToolpath);
  if (event.button == PointerButton::Left &&
      PressCube(viewCube, CubeClient(client), ShownAngles(), event.x, event.y)) {
    return true;
  }
  if (event.button == PointerButton::Left && PlacePickPress(event.x, event.y)) return true;
  if (event.button == PointerButton::Left && switches.measureMode) {
    const std::int32_t hit = PickPathPoint(client, event.x, event.y);
    if (hit >= 0) {
      TakeMeasurePick(hit);
      platform::Repaint(kViewToolpath);
    }
    return true;
  }
  drag.button = event.button;
  drag.pans = event.button != PointerButton::Left || switches.panMode || event.shift;
  drag.x = event.x;
  drag.y = event.y;
  platform::CapturePointer(kViewToolpath);
  return true;
}

void DragTo(int x, int y) {
  const int dx = x - drag.x;
  const int dy = y - drag.y;
  drag.x = x;
  drag.y = y;
  if (dx == 0 && dy == 0) return;
  if (drag.pans) {
    Pan(dx, dy);
  } else {
    Orbit(dx, dy);
  }
}

void ShowPointUnder(int x, int y) {
  const std::uint64_t now = platform::TickMilliseconds();
  if (hoverSearched && now - lastHover <= kHoverPause) return;
  hoverSearched = true;
  lastHover = now;
  const std::int32_t hit = PickPathPoint(platform::ClientArea(kViewToolpath), x, y);
  if (hit < 0) return;
  const MotionPoint& point = ShownPath().path.points[hit];
  char16_t text[kReadOutUnits] = u"Toolpath point";
  AppendLabelNumber(text, kReadOutUnits, u"  X ", point.x, 4);
  AppendLabelNumber(text, kReadOutUnits, u"  Y ", point.y, 4);
  AppendLabelNumber(text, kReadOutUnits, u"  Z ", point.z, 4);
  AppendLabelInteger(text, kReadOutUnits, u"  source line ", point.sourceLine + 1);
  AppendBounded(text, kReadOutUnits, UnitsMetric() ? u" mm" : u" in");
  AppendBounded(text, kReadOutUnits, point.rapid ? u"  RAPID" : u"  CUT");
  ShowStatus(text);
}

void DragRing(const PointerEvent& event) {
  if (!event.leftDown) {
    ReleaseCube(viewCube);
    return;
  }
  ViewAngles angles = ShownAngles();
  MoveCube(viewCube, platform::ClientArea(kViewToolpath), angles, event.x, event.y);
  TakeAngles(angles);
  ViewMoved();
}

void Hover(int x, int y) {
  if (HoverCube(viewCube, CubeClient(platform::ClientArea(kViewToolpath)), ShownAngles(), x, y)) {
    ShowStatus(kCubeHelp);
  } else if (PlacePickWaits()) {
    PlacePickHover(x, y);
  } else {
    ShowPointUnder(x, y);
  }
}

void Move(const PointerEvent& event) {
  if (viewCube.ring != CubePart::None) return DragRing(event);
  if (drag.button != PointerButton::None) {
    DragTo(event.x, event.y);
  } else if (!event.leftDown && !event.middleDown && !event.rightDown) {
    Hover(event.x, event.y);
  }
}

// A key's step to the right and down.
template <int right, int down>
bool OrbitByKey() {
  Orbit(right * kKeyPixels, down * kKeyPixels);
  return true;
}

template <int right, int down>
bool PanByKey() {
  Pan(right * kKeyPixels, down * kKeyPixels);
  return true;
}

bool ZoomInByKey() {
  ZoomBy(kZoomIn);
  return true;
}

bool ZoomOutByKey() {
  ZoomBy(kZoomOut);
  return true;
}

// The keyboard's pick is the point at the head, which the playback keys move.
bool PickAtHead() {
  if (!switches.measureMode) return false;
  const OwnedPath& shown = ShownPath();
  const std::int32_t point = std::min(shown.play.playHead, shown.path.count) - 1;
  if (point >= 0) TakeMeasurePick(point);
  platform::Repaint(kViewToolpath);
  return true;
}

// clang-format off
constexpr KeyRow kKeys[] = {
    {PlainKey(kToolpathChords, '+'), u"Zoom in", ZoomInByKey},
    {PlainKey(kToolpathChords, '='), u"", ZoomInByKey},  // plus without Shift
    {PlainKey(kToolpathChords, platform::kKeyPageUp), u"Zoom in", ZoomInByKey},
    {PlainKey(kToolpathChords, '-'), u"Zoom out", ZoomOutByKey},
    {PlainKey(kToolpathChords, platform::kKeyPageDown), u"Zoom out", ZoomOutByKey},
    {ShiftKey(kToolpathChords, platform::kKeyLeft), u"Turn left", OrbitByKey<-1, 0>},
    {ShiftKey(kToolpathChords, platform::kKeyRight), u"Turn right", OrbitByKey<1, 0>},
    {ShiftKey(kToolpathChords, platform::kKeyUp), u"Tilt up", OrbitByKey<0, -1>},
    {ShiftKey(kToolpathChords, platform::kKeyDown), u"Tilt down", OrbitByKey<0, 1>},
    {CtrlKey(kToolpathChords, platform::kKeyLeft), u"Shift left", PanByKey<-1, 0>},
    {CtrlKey(kToolpathChords, platform::kKeyRight), u"Shift right", PanByKey<1, 0>},
    {CtrlKey(kToolpathChords, platform::kKeyUp), u"Shift up", PanByKey<0, -1>},
    {CtrlKey(kToolpathChords, platform::kKeyDown), u"Shift down", PanByKey<0, 1>},
    {PlainKey(kToolpathChords, platform::kKeyEnter), u"Measure: pick the point at the tool", PickAtHead},
};
// clang-format on

}  // namespace

std::span<const KeyRow> ToolpathKeys() { return kKeys; }

std::int32_t PickPathPoint(const Rect& client, int x, int y) {
  const PointF* points = ProjectedPoints(client);
  double nearest = kPickReach;
  std::int32_t found = -1;
  const std::int32_t count = ShownPath().path.count;
  for (std::int32_t i = 0; i < count; ++i) {
    const double dx = points[i].x - x;
    const double dy = points[i].y - y;
    const double distance = dx * dx + dy * dy;
    if (distance < nearest) {
      nearest = distance;
      found = i;
    }
  }
  return found;
}

bool ToolpathPointer(const PointerEvent& event) {
  switch (event.action) {
    case PointerAction::Press:
    case PointerAction::DoubleClick:
      return PressView(event);
    case PointerAction::Release:
      if (event.button == PointerButton::Left) ReleaseCube(viewCube);
      if (event.button == drag.button) StopDrag();
      return true;
    case PointerAction::Move:
      Move(event);
      return true;
    case PointerAction::Wheel:
      ZoomByNotches(event.wheel);
      return true;
    case PointerAction::Leave:
      viewCube.over = CubeHit();
      platform::Repaint(kViewToolpath);
      // The view lost the pointer in the middle of a drag, to a box or another window.
      if (!event.leftDown && !event.middleDown && !event.rightDown) StopDrag();
      return true;
    case PointerAction::Lost:
      ReleaseCube(viewCube);
      StopDrag();
      return true;
  }
  return false;
}

bool ToolpathKey(const KeyEvent& key) {
  if (PlacePickKey(key)) return true;
  return RunKeyRow(kKeys, WithoutZoomModifiers(key)) || RouteChord(kToolpathChords, key);
}

void LetGoOfView() {
  StopCube(viewCube);
  ReleaseCube(viewCube);
  StopDrag();
}

void ResetViewMouse() {
  drag = Drag();
  hoverSearched = false;
  lastHover = 0;
}

}  // namespace morva
