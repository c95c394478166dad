#include "cad/tools/tool_change.h"

#include "app/command_ids.h"
#include "cad/geometry/canvas_view.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/hint_line.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "platform/control.h"
#include "platform/window.h"

namespace morva {

namespace {

void DropGeometryTool() {
  SetGeometryTool(kGeometryNone);
  SetHover(-1);
  SetJoinSource(-1);
  ClearPreviewSegments();
}

}  // namespace

void EndDrag() {
  if (tools.dragActive) platform::ReleasePointer();
  EndToolDrag();
}

// No form: the boxes stand over the canvas only while a tool takes sizes.
void HideSizeBoxes() {
  SetSizePanelShown(false);
  for (const int id : {kIdCadSizeBox1, kIdCadSizeBox2, kIdCadSizeCaption, kIdCadCreateTyped}) {
    platform::SetVisible(id, false);
  }
}

void StopTools(bool keepMarks) {
  EndDrag();
  ClearTools(keepMarks);
  HideSizeBoxes();
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

bool EscapeTool() {
  if (!AnyToolInHand()) return false;
  if (tools.constructionMethod != 0 || tools.dimensionMode) {
    StopTools(true);
  } else {
    EndDrag();
    DropGeometryTool();
    SetDragTool(0);
  }
  SetSketchStatus(kSelecting);
  ShowToolChange();
  FocusCanvas();
  return true;
}

void ShowPlan() {
  EndPanTool();
  LeaveModelView();
}

void OpenToolPanel(int panelMode, int field) {
  GiveUpTools(false);
  SetPanelMode(panelMode);
  RefreshCadTools();
  platform::SetFocusTo(field);
  platform::SelectAllText(field);
  platform::Repaint(kViewCadCanvas);
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

void RestartMethod() {
  ForgetPicks();
  HideSizeBoxes();
  KeepPrompt(MethodPrompt(tools.constructionMethod));
  platform::Repaint(kViewCadCanvas);
}

}  // namespace morva
