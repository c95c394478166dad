#include "cad/tools/geometry_tools.h"

#include <algorithm>
#include <cmath>

#include "app/command_ids.h"
#include "app/router.h"
#include "cad/geometry/canvas_view.h"
#include "cad/geometry/connectivity.h"
#include "cad/geometry/hits.h"
#include "cad/geometry/lines.h"
#include "cad/geometry/snap.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/pattern_direction.h"
#include "cad/tools/scale_revolve.h"
#include "cad/tools/tool_change.h"
#include "cad/tools/trim.h"
#include "library/outline.h"
#include "platform/events.h"
#include "platform/window.h"

namespace morva {

namespace {

constexpr double kLeastLength = 1e-9;
constexpr double kCollinear = 1e-6;  // drawing units, across and along

struct Line {
  double x = 0, y = 0;
  double endX = 0, endY = 0;
  double ux = 0, uy = 0;
};

Line LineOf(const SketchObject& object) {
  Line line;
  line.x = object.x;
  line.y = object.y;
  LineEndPoint(object, line.endX, line.endY);
  line.ux = SketchCosine(object.angle);
  line.uy = SketchSine(object.angle);
  return line;
}

bool IsFreeLine(int index) {
  return index >= 0 && index < sketch.objectCount && !sketch.locked[index] &&
         sketch.objects[index].type == kTypeLine;
}

void Fault() {
  SetSketchStatus(
      u"Choose compatible geometry. Join uses two lines; tangent uses a line start outside a "
      u"circle.");
  LogSketchOperation(u"No valid intersection / target");
}

void Done() {
  RefreshSketchPanels();
  SetSketchStatus(
      u"Done. Trim stays active; curved remainders use editable segments. Undo restores the "
      u"original.");
  LogSketchOperation(u"Geometry tool completed");
}

// From the end farther from the point to the point.
SketchObject LineTo(const SketchObject& object, double x, double y) {
  const Line line = LineOf(object);
  const double toStart = PlainDistance(line.x, line.y, x, y);
  const double toEnd = PlainDistance(line.endX, line.endY, x, y);
  const bool keepsStart = toStart >= toEnd;
  SketchObject joined = object;
  SetLineEnds(joined, keepsStart ? line.x : line.endX, keepsStart ? line.y : line.endY, x, y);
  return joined;
}

bool JoinAtPoint(int first, int second, double x, double y) {
  if (!(std::fabs(x) <= kSketchLimit && std::fabs(y) <= kSketchLimit)) return false;
  const SketchObject one = LineTo(sketch.objects[first], x, y);
  const SketchObject other = LineTo(sketch.objects[second], x, y);
  if (!WithinSketchLimit(one) || !WithinSketchLimit(other)) return false;
  PushSketchUndo();
  PutSketchObject(first, one);
  PutSketchObject(second, other);
  return true;
}

// The second line becomes part of the first and goes. Places along the first are measured in its
// own direction vector, whose length is 1 but for the rounding of the sine, so that an end that
// stays does not move.
bool JoinCollinear(int first, int second) {
  SketchObject line = sketch.objects[first];
  const Line a = LineOf(line);
  const Line b = LineOf(sketch.objects[second]);
  const double length = line.size;
  if (length < kLeastLength) return false;
  if (std::fabs(a.ux * (b.y - a.y) - a.uy * (b.x - a.x)) > kCollinear) return false;
  const double square = a.ux * a.ux + a.uy * a.uy;
  const double start = ((b.x - a.x) * a.ux + (b.y - a.y) * a.uy) / square;
  const double end = ((b.endX - a.x) * a.ux + (b.endY - a.y) * a.uy) / square;
  const double low = std::min(start, end);
  const double high = std::max(start, end);
  if (low > length + kCollinear || high < -kCollinear) return false;
  const double from = std::min(0.0, low);
  line.x = a.x + from * a.ux;
  line.y = a.y + from * a.uy;
  line.size = std::max(length, high) - from;
  if (!WithinSketchLimit(line)) return false;
  PushSketchUndo();
  PutSketchObject(first, line);
  RemoveSketchObject(second);
  SetHover(-1);
  SetJoinSource(second < first ? first - 1 : first);
  return true;
}

bool Join(int second) {
  const int first = tools.joinSource;
  if (second == first || !IsFreeLine(first) || !IsFreeLine(second)) return false;
  const Line a = LineOf(sketch.objects[first]);
  const Line b = LineOf(sketch.objects[second]);
  double t = 0;
  double s = 0;
  const bool meets = LineIntersection({a.x, a.y, a.ux, a.uy}, {b.x, b.y, b.ux, b.uy}, t, s);
  const bool joined = meets ? JoinAtPoint(first, second, a.x + t * a.ux, a.y + t * a.uy)
                            : JoinCollinear(first, second);
  if (!joined) return false;
  SetSelected(tools.joinSource);
  ClearMultiSelect();
  RecomputeConnectivity();
  return true;
}

bool Tangent(int target, double x, double y) {
  if (!IsFreeLine(tools.joinSource) || target < 0) return false;
  const SketchObject& circle = sketch.objects[target];
  if (circle.type != kTypeCircle) return false;
  SketchObject line = sketch.objects[tools.joinSource];
  platform::PointF touch;
  if (!TangentPoint({line.x, line.y}, circle, {x, y}, touch)) return false;
  SetLineEnds(line, line.x, line.y, touch.x, touch.y);
  if (!WithinSketchLimit(line)) return false;
  PushSketchUndo();
  PutSketchObject(tools.joinSource, line);
  return true;
}

bool Trim(double x, double y) {
  if (!TrimObject(HitEdge(x, y), x, y)) return false;
  ForgetHover();
  ClearMultiSelect();
  RecomputeConnectivity();
  return true;
}

void PickPivot(const platform::PointerEvent& event, double x, double y) {
  const int hit = HitObject(x, y);
  const std::int32_t type = hit < 0 ? kTypeLine : sketch.objects[hit].type;
  if (type == kTypeCircle || type == kTypeWorkPoint || type == kTypeWorkAxis) {
    x = sketch.objects[hit].x;
    y = sketch.objects[hit].y;
  } else {
    SnapPoint(x, y, -1, event.alt);
  }
  SetRevolvePivot(x, y);
  platform::Repaint(kViewCadCanvas);
}

void OnTool(int id, int) {
  if (id == kIdCadJoin) StartGeometryTool(kGeometryJoin);
  if (id == kIdCadTrimAt) StartGeometryTool(kGeometryTrim);
  if (id == kIdCadTangent) StartGeometryTool(kGeometryTangent);
  if (id == kIdCadPickPivot) StartGeometryTool(kGeometryPivot);
}

const char16_t* PromptOf(int tool) {
  switch (tool) {
    case kGeometryJoin:
      return u"Join: click a second line.";
    case kGeometryTrim:
      return u"Trim: click the section to remove between line/circle intersections. Esc exits.";
    case kGeometryTangent:
      return u"Tangent: click near the desired side of a circle. The line start stays fixed.";
    case kGeometryPivot:
      return u"Click a pivot: point marker, circle center, box corner or work-axis origin.";
    default:
      return u"Pick a line, work axis, rectangle edge or circle tangent for this pattern "
             u"direction.";
  }
}

}  // namespace

void StartGeometryTool(int tool) {
  const bool needsLine = tool == kGeometryJoin || tool == kGeometryTangent;
  if (needsLine && !(HasSketchSelection() && sketch.objects[sketch.selected].type == kTypeLine)) {
    SetSketchStatus(u"Select a line first, then choose Join or Tangent.");
    return;
  }
  // The panel whose field is picked for stays open.
  const bool picks = tool >= kGeometryPivot;
  const std::int32_t panel = tool == kGeometryPivot ? kPanelRevolve : tools.panelMode;
  StopTools(false);
  ShowPlan();
  if (picks) SetPanelMode(panel);
  SetGeometryTool(tool);
  if (needsLine) SetJoinSource(sketch.selected);
  SetSketchStatus(PromptOf(tool));
  ShowToolChange();
  FocusCanvas();
}

void PickPatternDirection(int command) {
  if (command == kIdReverseDirection1 || command == kIdReverseDirection2) {
    ReversePatternDirection(command);
    return;
  }
  if (command == kIdPickDirection1) StartGeometryTool(kGeometryDirection1);
  if (command == kIdPickDirection2) StartGeometryTool(kGeometryDirection2);
}

bool GeometryPress(const platform::PointerEvent& event) {
  if (tools.geometryTool == kGeometryNone || event.button != platform::PointerButton::Left) {
    return false;
  }
  double x = 0;
  double y = 0;
  FromCanvas(event.x, event.y, x, y);
  bool done = false;
  switch (tools.geometryTool) {
    case kGeometryJoin:
      done = Join(HitObject(x, y));
      break;
    case kGeometryTrim:
      done = Trim(x, y);
      break;
    case kGeometryTangent:
      done = Tangent(HitObject(x, y), x, y);
      break;
    case kGeometryPivot:
      PickPivot(event, x, y);
      return true;
    default:
      PatternDirectionClick(x, y);
      return true;
  }
  if (done) {
    Done();
  } else {
    Fault();
  }
  return true;
}

void GeometryHover(const platform::PointerEvent& event) {
  if (tools.geometryTool != kGeometryTrim) return;
  double x = 0;
  double y = 0;
  FromCanvas(event.x, event.y, x, y);
  SetHover(HitEdge(x, y));
  SetTrimPreview(true);
  TrimObject(tools.hoverObject, x, y);
  SetTrimPreview(false);
  platform::Repaint(kViewCadCanvas);
}

void RegisterGeometryTools() {
  RegisterCommand(RouterStage::Builder, kIdCadJoin, kIdCadTangent, platform::kNotifyClick, OnTool);
  RegisterCommand(RouterStage::Builder, kIdCadPickPivot, platform::kNotifyClick, OnTool);
  RegisterCommand(RouterStage::Builder, kIdPickDirection1, kIdReverseDirection2,
                  platform::kNotifyClick, [](int id, int) { PickPatternDirection(id); });
}

void ResetGeometryTools() { SetTrimPreview(false); }

}  // namespace morva
