#include "cad/tools/tool_keys.h"

#include "app/command_ids.h"
#include "app/commands.h"
#include "app/router.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"
#include "cad/tools/draw_tools.h"
#include "cad/tools/flyout.h"
#include "cad/tools/polygon.h"
#include "cad/tools/size_boxes.h"
#include "cad/tools/tool_change.h"
#include "platform/control.h"
#include "platform/window.h"

namespace morva {

namespace {

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

void ShowSnapCaption() {
  ShowWords(kIdCadSnap, sketch.snapOn);
  platform::SetAccessibleName(kIdCadSnap, WordsOf(kIdCadSnap, sketch.snapOn));
}

void PressSnap(int, int) {
  SetSketchSnap(!sketch.snapOn);
  SetSnapResult(false, false);
  ShowSnapCaption();
  platform::Repaint(kViewCadCanvas);
}

}  // namespace

void RegisterToolKeys() {
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

}  // namespace morva
