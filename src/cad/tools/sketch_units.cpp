#include "cad/tools/sketch_units.h"

#include <cmath>

#include "app/command_ids.h"
#include "app/commands.h"
#include "app/router.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/strict_fields.h"
#include "cad/tools/tool_change.h"
#include "forms/form.h"
#include "library/units.h"
#include "platform/events.h"
#include "platform/window.h"

namespace morva {

namespace {

void SwitchUnits(bool metric) {
  if (metric != sketch.metric) {
    const double factor = metric ? kMmPerInch : kInchPerMm;
    const std::int32_t panel = tools.panelMode;
    CancelTools();  // points that were picked are numbers of the old unit
    // A panel of numbers stays, for its numbers are converted; one of a tool went with the tool.
    if (panel != kPanelPolygon && panel != kPanelDimension) SetPanelMode(panel);
    RefreshCadPanel();
    SetPivot(tools.pivotX * factor, tools.pivotY * factor);
    SetSketchThickness(sketch.thickness * factor);
    for (int i = 0; i < sketch.objectCount; ++i) {
      SketchObject object = sketch.objects[i];
      ScaleLengths(object, factor);
      PutSketchObject(i, object);
    }
    SetSketchUnit(metric);
    ConvertForms(SketchIsMetric, factor);
  }
  RefreshKeyStates();
  platform::Repaint(kViewCadCanvas);
}

bool StaysInLimit(double factor) {
  for (int i = 0; i < sketch.objectCount; ++i) {
    const SketchObject& object = sketch.objects[i];
    for (const double value : {object.x, object.y, object.size, object.size2}) {
      if (!(std::fabs(value * factor) < kSketchLimit)) return false;
    }
  }
  return true;
}

// One undo step for the user's own switch, so that Undo brings back the very numbers.
void OnUnitKey(int id, int /*notification*/) {
  const bool metric = id == kIdCadMm;
  if (metric != sketch.metric) {
    // What is no number would be converted to 0.
    if (!LengthsAreNumbers()) return;
    if (!StaysInLimit(metric ? kMmPerInch : kInchPerMm)) {
      SetSketchStatus(u"Units unchanged: millimetres would exceed the sketch coordinate limit.");
      return;
    }
    PushSketchUndo();
  }
  SwitchUnits(metric);
}

}  // namespace

void RegisterSketchUnits() {
  cadHooks.switchSketchUnits = SwitchUnits;
  RegisterCommand(RouterStage::Builder, kIdCadInch, kIdCadMm, platform::kNotifyClick, OnUnitKey);
}

}  // namespace morva
