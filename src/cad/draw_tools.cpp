#include "cad/draw_tools.h"

#include "app/command_ids.h"
#include "app/commands.h"
#include "app/router.h"
#include "cad/dimensions.h"
#include "cad/draw_parts.h"
#include "cad/geometry/canvas_view.h"
#include "cad/geometry/construct.h"
#include "cad/geometry/lines.h"
#include "cad/geometry/snap.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/hint_line.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "platform/control.h"
#include "platform/window.h"

namespace morva {

namespace {

constexpr int kSlotTool = kTypeSlot + 1;
constexpr int kPointTool = kTypeWorkPoint + 1;
constexpr int kAxisTool = kTypeWorkAxis + 1;
constexpr const char16_t* kSelecting = u"SELECT mode: click geometry on the canvas.";

// Where the pointer was last, in canvas pixels: the number boxes open beside it.
int lastX = 0;
int lastY = 0;

bool IsMethod(int command) {
  return command == kIdMethodLine || command == kIdMethodLineTangent ||
         (command >= kIdMethodCircleRadius && command <= kIdMethodCircleOnCircle) ||
         (command >= kIdMethodRectangle && command <= kIdMethodRectangleThree) ||
         command == kIdMethodSlotPoints || command == kIdMethodPolygon;
}

void AddWorkPoint(const platform::PointerEvent& event) {
  double x = 0;
  double y = 0;
  SnappedPosition(event, x, y);
  AppendDrawn(ObjectFromDrag(kPointTool, x, y, x, y), u"Added work point");
}

void BeginDrag(const platform::PointerEvent& event) {
  double x = 0;
  double y = 0;
  SnappedPosition(event, x, y);
  StartToolDrag(x, y);
  platform::CapturePointer(kViewCadCanvas);
}

void MoveDrag(const platform::PointerEvent& event) {
  double x = 0;
  double y = 0;
  SnappedPosition(event, x, y);
  MoveToolDrag(x, y);
}

void FinishDrag(const platform::PointerEvent& event) {
  MoveDrag(event);
  EndToolDrag();
  platform::ReleasePointer();
  AppendDrawn(ObjectFromDrag(tools.dragTool, tools.dragStartX, tools.dragStartY, tools.dragEndX,
                             tools.dragEndY),
              u"Created geometry");
  platform::Repaint(kViewCadCanvas);
}

void DropGeometryTool() {
  SetGeometryTool(kGeometryNone);
  SetHover(-1);
  SetJoinSource(-1);
  ClearPreviewSegments();
}

void EndDrag() {
  if (tools.dragActive) platform::ReleasePointer();
  EndToolDrag();
}

void EscapeKey() {
  if (tools.constructionMethod != 0 || tools.dimensionMode) {
    StopTools(true);
  } else {
    EndDrag();
    DropGeometryTool();
    SetDragTool(0);
  }
  SetSketchStatus(kSelecting);
  ShowToolChange();
}

void ShowSnapCaption() {
  ShowWords(kIdCadSnap, sketch.snapOn);
  platform::SetAccessibleName(kIdCadSnap, WordsOf(kIdCadSnap, sketch.snapOn));
}

// What a left click on a tool key starts.
void PressToolKey(int id, int) {
  KeepFlyoutShut();
  switch (id) {
    case kIdCadSelect:
      return StartDragTool(0);
    case kIdCadLine:
      return StartMethod(kIdMethodLine);
    case kIdCadRectangle:
      return StartMethod(kIdMethodRectangle);
    case kIdCadCircle:
      return StartMethod(kIdMethodCircleRadius);
    case kIdCadSlot:
      return StartMethod(kIdMethodSlotPoints);
    case kIdCadDimension:
      return StartMethod(kIdMethodDimension);
    case kIdCadPolygon:
      return StartMethod(kIdMethodPolygon);
    case kIdCadWorkAxis:
      return StartDragTool(kAxisTool);
    case kIdCadPoint:
      return StartDragTool(kPointTool);
    default:
      return CancelTools();
  }
}

void PressSnap(int, int) {
  SetSketchSnap(!sketch.snapOn);
  SetSnapResult(false, false);
  ShowSnapCaption();
  platform::Repaint(kViewCadCanvas);
}

}  // namespace

const char16_t* MethodPrompt(int command) {
  switch (command) {
    case kIdMethodLineTangent:
      return u"Tangent line: pick its start, then click the desired side of a circle.";
    case kIdMethodCircleOnLine:
      return u"Tangent circle: pick a line, then the new center.";
    case kIdMethodCircleOnCircle:
      return u"Tangent circle: pick a circle, then the new center.";
    default:
      return u"Click construction points on the canvas. Snapping is active; Esc cancels.";
  }
}

void StopTools(bool keepMarks) {
  EndDrag();
  ClearTools(keepMarks);
  HideSizeBoxes();
}

void ShowPlan() {
  EndPanTool();
  LeaveModelView();
}

void ShowToolChange() {
  // A choice of a popup that a timer opened is followed by no other event.
  RefreshCadTools();
  RefreshHintLine();
  platform::Repaint(kViewCadCanvas);
}

void FocusCanvas() {
  if (platform::IsVisible(kViewCadCanvas)) platform::SetFocusTo(kViewCadCanvas);
}

bool AppendDrawn(const SketchObject& object, const char16_t* logged) {
  if (sketch.objectCount >= kMaxItems || !WithinSketchLimit(object)) return false;
  PushSketchUndo();
  ClearMultiSelect();
  SetSelected(AppendSketchObject(object));
  RefreshSketchPanels();
  LogSketchOperation(logged);
  return true;
}

void StartMethod(int command) {
  if (command == kIdMethodDimension || command == kIdMethodMeasure) {
    EnterDimensionMode(command == kIdMethodMeasure);
    return;
  }
  if (command != kIdMethodSlotDrag && !IsMethod(command)) return;
  StopTools(false);
  ShowPlan();
  if (command == kIdMethodSlotDrag) {
    SetDragTool(kSlotTool);
    SetSketchStatus(u"Drag a slot centerline. Edit length and width in Selected Geometry.");
  } else {
    SetMethod(command);
    if (command == kIdMethodPolygon) SetPanelMode(kPanelPolygon);
    CaptionSizeBoxes();
    SetSketchStatus(MethodPrompt(command));
  }
  ShowToolChange();
  FocusCanvas();
}

void StartDragTool(int tool) {
  if (tool < 0 || tool > kAxisTool) return;
  StopTools(tool == 0);
  EndPanTool();
  if (tool != 0) LeaveModelView();
  SetDragTool(tool);
  SetSketchStatus(tool == 0 ? kSelecting : u"DRAW mode: click-drag on canvas to create geometry.");
  ShowToolChange();
  FocusCanvas();
}

void GiveUpTools(bool keepMarks) {
  const bool any = AnyToolInHand();
  EndPanTool();
  StopTools(keepMarks);
  if (any) SetSketchStatus(kSelecting);
}

void CancelTools() {
  GiveUpTools(true);
  ShowToolChange();
  FocusCanvas();
}

bool DrawToolPress(const platform::PointerEvent& event) {
  if (event.button != platform::PointerButton::Left || !DrawToolActive()) return false;
  lastX = event.x;
  lastY = event.y;
  if (tools.constructionMethod != 0) {
    ConstructionClick(event);
  } else if (tools.dragTool == kPointTool) {
    AddWorkPoint(event);
  } else {
    BeginDrag(event);
  }
  platform::Repaint(kViewCadCanvas);
  return true;
}

bool DrawToolMove(const platform::PointerEvent& event) {
  if (!DrawToolActive()) return false;
  lastX = event.x;
  lastY = event.y;
  if (tools.constructionMethod != 0) {
    ConstructionMove(event);
  } else if (tools.dragActive && !event.leftDown) {
    DrawToolCaptureLost();
  } else if (tools.dragActive) {
    MoveDrag(event);
  } else {
    // Only for the mark at the cursor that tells whether a snap is held.
    double x = 0;
    double y = 0;
    SnappedPosition(event, x, y);
  }
  platform::Repaint(kViewCadCanvas);
  return true;
}

bool DrawToolRelease(const platform::PointerEvent& event) {
  if (event.button != platform::PointerButton::Left || !tools.dragActive) return false;
  FinishDrag(event);
  return true;
}

void DrawToolCaptureLost() {
  if (!tools.dragActive) return;
  EndDrag();
  platform::Repaint(kViewCadCanvas);
}

bool DrawToolKey(const platform::KeyEvent& key) {
  switch (key.key) {
    case platform::kKeyEscape:
      if (!AnyToolInHand()) return false;
      EscapeKey();
      FocusCanvas();
      return true;
    case platform::kKeyTab:
      // Backwards it leaves the canvas as ever: no one may be held here.
      if (tools.constructionMethod == 0 || key.shift || key.ctrl) return false;
      // The size of what touches other geometry follows from where it is.
      if (tools.sizePanelShown) {
        FocusSizeBoxes();
      } else if (tools.previewValid && !IsTangentMethod(tools.constructionMethod)) {
        OpenSizeBoxes(lastX, lastY);
      }
      return true;
    case platform::kKeyEnter:
      return tools.sizePanelShown && (CommitTypedSize(false), true);
    default:
      return false;
  }
}

void RegisterDrawTools() {
  const int click = platform::kNotifyClick;
  const RouterStage stage = RouterStage::Builder;
  RegisterCommand(stage, kIdCadSelect, kIdCadSlot, click, PressToolKey);
  for (const int id : {kIdCadDimension, kIdCadPolygon, kIdCadWorkAxis, kIdCadPoint, kIdCadCancel}) {
    RegisterCommand(stage, id, click, PressToolKey);
  }
  constexpr int kMethods[][2] = {{kIdMethodLine, kIdMethodLineTangent},
                                 {kIdMethodCircleRadius, kIdMethodCircleOnCircle},
                                 {kIdMethodRectangle, kIdMethodRectangleThree},
                                 {kIdMethodSlotDrag, kIdMethodSlotPoints},
                                 {kIdMethodDimension, kIdMethodMeasure},
                                 {kIdMethodPolygon, kIdMethodPolygon}};
  for (const auto& [first, last] : kMethods) {
    RegisterCommand(stage, first, last, click, [](int id, int) { StartMethod(id); });
  }
  RegisterCommand(stage, kIdCadSnap, click, PressSnap);
  RegisterCommand(stage, kIdCadCreatePolygon, click, [](int, int) { CreatePolygonFromPanel(); });
  RegisterCommand(stage, kIdCadCreateTyped, click, [](int, int) { CommitTypedSize(true); });
  RegisterFlyouts();
}

void ResetDrawTools() {
  lastX = 0;
  lastY = 0;
  ResetSnap();
  ResetFlyouts();
}

}  // namespace morva
