#include "cad/canvas/canvas_model.h"

#include <algorithm>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/palette.h"
#include "app/router.h"
#include "cad/geometry/canvas_view.h"
#include "cad/geometry/outlines.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/tool_change.h"
#include "documents/program_changed.h"
#include "forms/form.h"
#include "library/view_cube.h"
#include "platform/control.h"
#include "platform/window.h"

namespace morva {
namespace {

using platform::Canvas;
using platform::Colour;
using platform::FontRole;
using platform::Pen;
using platform::PointerAction;
using platform::PointerButton;
using platform::PointerEvent;
using platform::PointF;
using platform::Rect;
using platform::Segment;

constexpr ViewAngles kPlan{0, 90, 0};
constexpr ViewAngles kFirstLook{-45, 28, 0};
constexpr double kSameAngle = 0.001;  // degrees
constexpr double kMiddleAcross = 0.5;
constexpr double kMiddleDown = 0.55;
constexpr double kFill = 0.7;        // of the height, for the larger model size
constexpr double kLeastSize = 1e-6;  // a model without size is drawn as one of 1
constexpr int kVerticalStep = 8;     // outline points from one vertical of a curve to the next
constexpr int kCaptionTop = 12;
constexpr const char16_t* kCaption =
    u"MODEL VIEW \u2014 use the cube; select a draw tool to sketch on XY";

ViewCube NewModelCube() {
  ViewCube cube;
  cube.view = kViewCadCanvas;
  cube.timer = kTimerView;
  cube.outerRolls = true;
  return cube;
}

ViewCube modelCube = NewModelCube();
double planZoom = 1;  // of the plan, while the 3D view is up
Segment lowerSegments[kMaxItems * 2 * kOutlinePoints];
Segment upperSegments[kMaxItems * kOutlinePoints];
Segment brightSegments[kMaxItems * 3 * kOutlinePoints];

void Refresh() { platform::Repaint(kViewCadCanvas); }

ViewAngles ModelAngles() {
  return {canvasView.modelYaw, canvasView.modelPitch, canvasView.modelRoll};
}

void TakeModelAngles(const ViewAngles& angles) {
  canvasView.modelYaw = angles.yaw;
  canvasView.modelPitch = angles.elevation;
  canvasView.modelRoll = angles.roll;
  canvasView.modelViewTouched = true;
}

bool IsPlan(const ViewAngles& angles) {
  const auto near = [](double a, double b) {
    const double apart = WithinHalfTurn(a - b);
    return apart > -kSameAngle && apart < kSameAngle;
  };
  return near(angles.yaw, kPlan.yaw) && near(angles.elevation, kPlan.elevation) &&
         near(angles.roll, kPlan.roll);
}

// Without one of its own the sketch shows what the panel proposes.
double ShownThickness() {
  return sketch.thickness > 0 ? sketch.thickness : FieldFallback(kIdCadThicknessValue);
}

// The panel's number. False: there is none above 0, and the status says so.
bool TakeThickness() {
  double value = ShownThickness();
  const bool read =
      !platform::Exists(kIdCadThicknessValue) || ReadStrictField(kIdCadThicknessValue, value);
  if (!read || !(value > 0 && value < kSketchLimit)) {
    SetSketchStatus(u"Wireframe thickness must be above 0 and below 1000000.");
    return false;
  }
  if (value != sketch.thickness) {
    SetSketchThickness(value);
    ProgramChanged({.autosave = true});
  }
  return true;
}

bool IsDrawn(int index) {
  const std::int32_t type = sketch.objects[index].type;
  return !sketch.hidden[index] && type >= kTypeLine && type <= kTypeSlot;
}

struct ModelProjection {
  CubeAxes axes;
  double scale = 1;
  double x0 = 0, y0 = 0, z0 = 0;  // the model's middle
  PointF middle;                  // on the screen
};

ModelProjection ProjectionOf(const Rect& client) {
  Bounds b;
  BoundsOf(IsDrawn, b);
  const double thickness = ShownThickness();
  double size = std::max({b.maxX - b.minX, b.maxY - b.minY, thickness});
  if (size < kLeastSize) size = 1;
  ModelProjection p;
  p.axes = AxesOfCube(ModelAngles());
  p.scale = kFill * platform::RectHeight(client) / size * canvasView.zoom;
  p.x0 = (b.minX + b.maxX) / 2;
  p.y0 = (b.minY + b.maxY) / 2;
  p.z0 = thickness / 2;
  p.middle = {kMiddleAcross * platform::RectWidth(client),
              kMiddleDown * platform::RectHeight(client)};
  return p;
}

PointF Place(const ModelProjection& p, double x, double y, double z) {
  const double dx = (x - p.x0) * p.scale;
  const double dy = (y - p.y0) * p.scale;
  const double dz = (z - p.z0) * p.scale;
  return {p.middle.x + dx * p.axes.x[0] + dy * p.axes.x[1] + dz * p.axes.x[2],
          p.middle.y + dx * p.axes.y[0] + dy * p.axes.y[1] + dz * p.axes.y[2]};
}

int AddOutline(const ModelProjection& p, const OutlineOf& outline, double z, Segment* to) {
  int count = 0;
  for (int i = 0; i + 1 < outline.count; ++i) {
    to[count++] = SegmentOf(Place(p, outline.xs[i], outline.ys[i], z),
                            Place(p, outline.xs[i + 1], outline.ys[i + 1], z));
  }
  return count;
}

int AddVerticals(const ModelProjection& p, const OutlineOf& outline, double thickness,
                 Segment* to) {
  const bool curve = outline.object.type == kTypeCircle || outline.object.type == kTypeSlot;
  // The last point of a closed outline is its first again.
  const int points = outline.object.type == kTypeLine ? outline.count : outline.count - 1;
  int count = 0;
  for (int i = 0; i < points; i += curve ? kVerticalStep : 1) {
    to[count++] = SegmentOf(Place(p, outline.xs[i], outline.ys[i], 0),
                            Place(p, outline.xs[i], outline.ys[i], thickness));
  }
  return count;
}

void PaintWires(Canvas& canvas, const ModelProjection& p) {
  const double thickness = ShownThickness();
  int lower = 0;
  int upper = 0;
  int bright = 0;
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (!IsDrawn(i)) continue;
    const OutlineOf& outline = OutlineAt(i);
    if (IsMultiSelected(i) || InSelectedPart(i)) {
      bright += AddOutline(p, outline, 0, brightSegments + bright);
      bright += AddOutline(p, outline, thickness, brightSegments + bright);
      bright += AddVerticals(p, outline, thickness, brightSegments + bright);
    } else {
      lower += AddOutline(p, outline, 0, lowerSegments + lower);
      lower += AddVerticals(p, outline, thickness, lowerSegments + lower);
      upper += AddOutline(p, outline, thickness, upperSegments + upper);
    }
  }
  const auto paint = [&canvas](const Segment* segments, int count, Colour colour) {
    Pen pen;
    pen.colour = colour;
    if (count > 0) PaintSegments(canvas, segments, count, pen);
  };
  paint(lowerSegments, lower, kCadModelLower);
  paint(upperSegments, upper, kCadModelUpper);
  paint(brightSegments, bright, kBrightAccent);
}

void LeaveView() {
  if (!canvasView.modelView) return;
  StopCube(modelCube);
  ReleaseCube(modelCube);
  modelCube.over = CubeHit();
  canvasView.modelView = false;
  SetCanvasZoom(planZoom);
  // After turning back to the plan, the next opening starts from a tilted view.
  if (IsPlan(ModelAngles())) canvasView.modelViewTouched = false;
  // The cube's help ends with the 3D view.
  if (SketchStatus() == kCubeHelp) SetSketchStatus(kSelecting);
  if (tools.panelMode == kPanelThickness) SetPanelMode(kPanelNone);
  RefreshCadTools();
  Refresh();
}

void PressModel(const PointerEvent& event) {
  platform::SetFocusTo(kViewCadCanvas);
  if (event.button != PointerButton::Left || modelCube.ring != CubePart::None) return;
  PressCube(modelCube, CanvasClient(), ModelAngles(), event.x, event.y);
}

void EndRing() {
  if (ReleaseCube(modelCube) && IsPlan(ModelAngles())) LeaveModelView();
}

void MoveModel(const PointerEvent& event) {
  if (modelCube.ring != CubePart::None && !event.leftDown) EndRing();
  ViewAngles angles = ModelAngles();
  if (MoveCube(modelCube, CanvasClient(), angles, event.x, event.y)) {
    TakeModelAngles(angles);
  } else if (HoverCube(modelCube, CanvasClient(), angles, event.x, event.y)) {
    SetSketchStatus(kCubeHelp);
  }
}

// The panel with its number, and the view at once: the proposed number is a good one.
void OnPreview(int, int) {
  if (tools.panelMode != kPanelThickness) {
    CancelTools();
    SetPanelMode(kPanelThickness);
    platform::SetText(kIdCadThicknessValue, NumberText(kIdCadThicknessValue, ShownThickness()));
    RefreshCadPanel();
  }
  EnterModelView();
}

void OnApply(int, int) { EnterModelView(); }

void OnReturn(int, int) { LeaveModelView(); }

}  // namespace

void EnterModelView() {
  if (!TakeThickness()) return;
  if (canvasView.modelView) return Refresh();
  const std::int32_t panel = tools.panelMode;
  CancelTools();
  SetPanelMode(panel);
  canvasView.modelView = true;
  canvasView.panTool = false;
  planZoom = canvasView.zoom;
  SetCanvasZoom(1);  // the whole model, however near the plan was looked at
  if (!canvasView.modelViewTouched) {
    TakeModelAngles(kPlan);
    AnimateCube(modelCube, kPlan, kFirstLook);
  }
  SetSketchStatus(kCubeHelp);
  RefreshCadTools();
  Refresh();
}

void CanvasTimer(int timer) {
  if (timer != kTimerView || !modelCube.running) return;
  ViewAngles angles = ModelAngles();
  const bool ended = TickCube(modelCube, angles);
  TakeModelAngles(angles);
  if (ended && IsPlan(angles)) LeaveModelView();
}

bool ModelPointer(const PointerEvent& event) {
  switch (event.action) {
    case PointerAction::Press:
    case PointerAction::DoubleClick:
      PressModel(event);
      break;
    case PointerAction::Release:
      if (event.button == PointerButton::Left) EndRing();
      break;
    case PointerAction::Lost:
      EndRing();
      break;
    case PointerAction::Move:
      MoveModel(event);
      break;
    case PointerAction::Leave:
      HoverCube(modelCube, CanvasClient(), ModelAngles(), -1, -1);
      break;
    case PointerAction::Wheel:
      break;
  }
  return true;
}

void PaintModel(Canvas& canvas) {
  const Rect client = CanvasArea(canvas);
  PaintWires(canvas, ProjectionOf(client));
  const int right = CubeFits(client) ? client.right - kCubeWidth : client.right;
  const Rect caption{client.left + kCaptionTop, client.top + kCaptionTop, right,
                     client.top + kCaptionTop + 3 * platform::TextHeight(FontRole::Small)};
  PaintText(canvas, caption, kCaption, FontRole::Small, kDimText,
            platform::kAlignLeft | platform::kAlignTop | platform::kTextWrap);
  PaintCube(canvas, client, modelCube, ModelAngles());
}

void RegisterModelView() {
  cadHooks.leaveModelView = LeaveView;
  const auto answer = [](int id, CommandHandler handler) {
    RegisterCommand(RouterStage::Builder, id, platform::kNotifyClick, handler);
  };
  answer(kIdCadThickness, OnPreview);
  answer(kIdCadApplyThickness, OnApply);
  answer(kIdCadReturnTo2D, OnReturn);
}

void ResetModelView() {
  StopCube(modelCube);
  modelCube = NewModelCube();
  planZoom = 1;
}

}  // namespace morva
