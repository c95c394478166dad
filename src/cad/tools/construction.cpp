#include "cad/tools/construction.h"

#include "app/command_ids.h"
#include "cad/geometry/construct.h"
#include "cad/geometry/hits.h"
#include "cad/geometry/snap.h"
#include "cad/model/hint_line.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/edit_parts.h"
#include "cad/tools/polygon.h"
#include "cad/tools/size_boxes.h"
#include "cad/tools/tool_change.h"
#include "platform/window.h"

namespace morva {

namespace {

constexpr const char16_t* kPickSide = u"Click the desired tangent side of a circle.";

bool IsCircleTangent(int method) {
  return method == kIdMethodCircleOnLine || method == kIdMethodCircleOnCircle;
}

std::int32_t TargetType() {
  return tools.constructionMethod == kIdMethodCircleOnLine ? kTypeLine : kTypeCircle;
}

// The object picked first still stands: an undo may have taken it since.
bool TargetStands() {
  const int target = tools.tangentTarget;
  return target >= 0 && target < sketch.objectCount && sketch.objects[target].type == TargetType();
}

TangentFault TangentCircle(double x, double y, SketchObject& object) {
  const SketchObject& target = sketch.objects[tools.tangentTarget];
  return target.type == kTypeLine ? CircleOnLine(target, x, y, object)
                                  : CircleOnCircle(target, x, y, object);
}

const char16_t* FaultText(TangentFault fault) {
  switch (fault) {
    case TangentFault::OffSegment:
      return u"Choose a center whose tangent point is on the line segment.";
    case TangentFault::Concentric:
      return u"Concentric circles do not have a unique tangent point.";
    default:
      return u"Choose a non-degenerate circle center.";
  }
}

void Create(const SketchObject& object) {
  const bool room = sketch.objectCount < kMaxItems;
  const bool made = AppendDrawn(object, kDrawnByPoints);
  RestartMethod();
  if (!made && !room) {
    SetSketchStatus(u"The sketch holds 96 objects. Delete geometry before adding more.");
  }
}

void PickTarget(double x, double y) {
  const int hit = HitObject(x, y);
  if (hit < 0 || sketch.objects[hit].type != TargetType()) {
    SetSketchStatus(u"Pick the required line or circle first.");
    return;
  }
  PickTangentTarget(hit);
  SetSketchStatus(u"Click the new circle center; radius will meet the selected geometry.");
}

void ClickTangentCircle(double x, double y) {
  if (tools.constructionClicks == 0 || !TargetStands()) {
    RestartMethod();
    PickTarget(x, y);
    return;
  }
  SketchObject object;
  const TangentFault fault = TangentCircle(x, y, object);
  if (fault != TangentFault::None) {
    SetSketchStatus(FaultText(fault));
    return;
  }
  Create(object);
}

void ClickTangentLine(double x, double y) {
  const int hit = HitObject(x, y);
  if (hit < 0 || sketch.objects[hit].type != kTypeCircle) {
    SetSketchStatus(kPickSide);
    return;
  }
  SketchObject object;
  if (!LineOnCircle(tools.pointsX[0], tools.pointsY[0], sketch.objects[hit], x, y, object)) {
    SetSketchStatus(u"The line start must be outside the circle. Esc restarts.");
    return;
  }
  Create(object);
}

void FinishPoints() {
  const int method = tools.constructionMethod;
  if (method == kIdMethodPolygon) SetPolygonSides(PolygonSidesField());
  SketchObject object;
  if (!ObjectFromPoints(method, tools.pointsX, tools.pointsY, object)) {
    RestartMethod();
    SetSketchStatus(
        u"These points are degenerate. Pick distinct points; three-point circles need "
        u"non-collinear points.");
  } else if (method == kIdMethodPolygon) {
    RestartMethod();
    CreatePolygon(tools.polygonSides, object.size, object.x, object.y, object.angle);
  } else {
    Create(object);
  }
}

void ClickPoint(double x, double y) {
  const int needed = PointsOfMethod(tools.constructionMethod);
  PickPoint(tools.constructionClicks, x, y);
  if (tools.constructionClicks >= needed) {
    FinishPoints();
  } else if (tools.constructionClicks == 1) {
    SetSketchStatus(u"Pick the second construction point.");
    if (tools.constructionMethod == kIdMethodLineTangent) KeepPrompt(kPickSide);
  } else {
    SetSketchStatus(u"Pick the third point to set the circle, height or width.");
  }
}

// The object that a click at this place would make.
bool PreviewAt(double x, double y, SketchObject& object) {
  const int method = tools.constructionMethod;
  if (IsCircleTangent(method)) {
    return tools.constructionClicks == 1 && TargetStands() &&
           TangentCircle(x, y, object) == TangentFault::None;
  }
  const int clicks = tools.constructionClicks;
  if (clicks + 1 != PointsOfMethod(method)) return false;
  if (method == kIdMethodLineTangent) {
    const int hit = HitObject(x, y);
    return hit >= 0 && sketch.objects[hit].type == kTypeCircle &&
           LineOnCircle(tools.pointsX[0], tools.pointsY[0], sketch.objects[hit], x, y, object);
  }
  if (method == kIdMethodPolygon) {
    SetPolygonSides(PolygonSidesField());
    if (tools.polygonSides == 0) return false;
  }
  double xs[3] = {tools.pointsX[0], tools.pointsX[1], 0};
  double ys[3] = {tools.pointsY[0], tools.pointsY[1], 0};
  xs[clicks] = x;
  ys[clicks] = y;
  return ObjectFromPoints(method, xs, ys, object);
}

}  // namespace

void ConstructionClick(const platform::PointerEvent& event) {
  FocusCanvas();
  HideSizeBoxes();
  double x = 0;
  double y = 0;
  SnappedPosition(event, x, y);
  const int method = tools.constructionMethod;
  if (IsCircleTangent(method)) {
    ClickTangentCircle(x, y);
  } else if (method == kIdMethodLineTangent && tools.constructionClicks == 1) {
    ClickTangentLine(x, y);
  } else {
    ClickPoint(x, y);
  }
  platform::Repaint(kViewCadCanvas);
}

void ConstructionMove(const platform::PointerEvent& event) {
  if (tools.sizePanelShown) return;  // the sizes are being typed
  double x = 0;
  double y = 0;
  SnappedPosition(event, x, y);
  SketchObject object = tools.previewObject;
  SetPreview(PreviewAt(x, y, object), object);
  if (tools.previewValid) FillSizeBoxes();
  platform::Repaint(kViewCadCanvas);
}

}  // namespace morva
