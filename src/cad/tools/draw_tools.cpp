#include "cad/tools/draw_tools.h"

#include "app/command_ids.h"
#include "app/commands.h"
#include "cad/geometry/canvas_view.h"
#include "cad/geometry/construct.h"
#include "cad/geometry/snap.h"
#include "cad/model/cad_chords.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/construction.h"
#include "cad/tools/dimensions.h"
#include "cad/tools/edit_parts.h"
#include "cad/tools/size_boxes.h"
#include "cad/tools/tool_change.h"
#include "platform/window.h"

namespace morva {

namespace {

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

}  // namespace

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

namespace {

bool TypeSizes() {
  if (tools.constructionMethod == 0) return false;
  // The size of what touches other geometry follows from where it is.
  if (tools.sizePanelShown) {
    FocusSizeBoxes();
  } else if (tools.previewValid && !IsTangentMethod(tools.constructionMethod)) {
    OpenSizeBoxes(lastX, lastY);
  }
  return true;
}

bool TakeTypedSizes() { return tools.sizePanelShown && (CommitTypedSize(false), true); }

constexpr KeyRow kKeys[] = {
    {PlainKey(kCanvasChords, platform::kKeyEscape), u"Give up the tool in hand", EscapeTool},
    {PlainKey(kCanvasChords, platform::kKeyTab), u"Type the sizes of what is drawn", TypeSizes},
    {PlainKey(kCanvasChords, platform::kKeyEnter), u"Take the typed sizes", TakeTypedSizes},
};

}  // namespace

std::span<const KeyRow> DrawToolKeys() { return kKeys; }

bool DrawToolKey(const platform::KeyEvent& key) {
  // Backwards Tab leaves the canvas as ever: no one may be held here.
  if (key.key == platform::kKeyTab && (key.shift || key.ctrl)) return false;
  return RunKeyRow(kKeys, {key.key});
}

void ResetDrawTools() {
  lastX = 0;
  lastY = 0;
  ResetSnap();
}

}  // namespace morva
