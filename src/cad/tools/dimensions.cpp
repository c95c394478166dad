#include "cad/tools/dimensions.h"

#include "app/command_ids.h"
#include "app/router.h"
#include "cad/geometry/canvas_view.h"
#include "cad/geometry/hits.h"
#include "cad/geometry/snap.h"
#include "cad/model/cad_form.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/hint_line.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/dimension_paint.h"
#include "cad/tools/edit_parts.h"
#include "cad/tools/tool_change.h"
#include "forms/form.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "platform/window.h"

namespace morva {

namespace {

constexpr const char16_t* kDimensionPrompt =
    u"Dimension: click an object or dimension label, change its value, and press Enter.";

// The last label painted under a pixel, which lies on top: its object, or -1.
int LabelAt(int x, int y, int& part) {
  int found = -1;
  for (int i = 0; i < sketch.objectCount; ++i) {
    for (int k = 0; k < kDimensionLabels; ++k) {
      if (!platform::RectHolds(DimensionLabel(i, k), x, y)) continue;
      found = i;
      part = k;
    }
  }
  return found;
}

void PickDimension(const platform::PointerEvent& event) {
  int part = 0;
  int hit = LabelAt(event.x, event.y, part);
  if (hit < 0) {
    double x = 0;
    double y = 0;
    FromCanvas(event.x, event.y, x, y);
    hit = HitObject(x, y);
  }
  SetDimensionPart(part);
  SetPanelMode(kPanelDimension);
  SelectSketchObject(hit);  // shows the value too
  ShowToolChange();
  if (hit >= 0) {
    platform::SetFocusTo(kIdCadDimensionValue);
    platform::SelectAllText(kIdCadDimensionValue);
  } else {
    FocusCanvas();
  }
}

void PickMeasure(const platform::PointerEvent& event) {
  FocusCanvas();
  double x = 0;
  double y = 0;
  SnappedPosition(event, x, y);
  const int place = tools.constructionClicks == 1 ? 1 : 0;
  PickPoint(place, x, y);
  SetSketchStatus(place == 0
                      ? u"Measure: click second point."
                      : u"Reference distance shown. Click to measure another pair; Esc exits.");
  platform::Repaint(kViewCadCanvas);
}

void ApplyFromPanel(int, int) {
  double value = 0;
  const bool read = ReadStrictField(kIdCadDimensionValue, value);
  if (!read || tools.measureMode || !ApplyDimension(sketch.selected, tools.dimensionPart, value)) {
    SetSketchStatus(
        u"Choose a supported dimension on unlocked geometry and enter a positive size. Slot "
        u"length must be at least its width.");
    return;
  }
  KeepPrompt(kDimensionPrompt);
}

void ChoosePart(int, int) {
  const int row = platform::SelectedRow(kIdCadDimensionPart);
  if (row < 0 || row > 2) return;
  SetDimensionPart(row);
  ShowDimensionValue();
}

}  // namespace

void EnterDimensionMode(bool measure) {
  StopTools(false);
  ShowPlan();
  SetDimensionMode(measure);
  SetPanelMode(kPanelDimension);
  SetSketchStatus(
      measure ? u"Reference measurement: pick two points; this value does not resize geometry."
              : kDimensionPrompt);
  ShowToolChange();
  ShowDimensionValue();
  FocusCanvas();
}

void ShowDimensionValue() {
  platform::SelectRow(kIdCadDimensionPart, tools.dimensionPart);
  if (!HasSketchSelection() || sketch.objects[sketch.selected].type == kTypeWorkPoint) {
    platform::SetText(kIdCadDimensionValue, kClickGeometry);
    return;
  }
  const SketchObject& object = sketch.objects[sketch.selected];
  double value = object.size;
  if (tools.dimensionPart == 1) value = object.size2;
  if (tools.dimensionPart == 2) value = object.size / 2;
  platform::SetText(kIdCadDimensionValue, SketchNumber(value, 4));
}

bool ApplyDimension(int index, int part, double value) {
  if (index < 0 || index >= sketch.objectCount || sketch.locked[index]) return false;
  if (!(value > 0 && value < kSketchLimit)) return false;
  SketchObject changed = sketch.objects[index];
  switch (part) {
    case 0:
      if (changed.type == kTypeWorkPoint) return false;
      changed.size = value;
      break;
    case 1:
      if (changed.type != kTypeRectangle && changed.type != kTypeSlot) return false;
      changed.size2 = value;
      break;
    case 2:
      if (changed.type != kTypeCircle) return false;
      changed.size = 2 * value;
      break;
    default:
      return false;
  }
  if (!(changed.size < kSketchLimit)) return false;
  if (changed.type == kTypeSlot && changed.size < changed.size2) return false;
  PushSketchUndo();
  PutSketchObject(index, changed);
  RefreshSketchPanels();
  LogSketchOperation(u"Changed driving dimension");
  return true;
}

bool DimensionPress(const platform::PointerEvent& event) {
  if (!tools.dimensionMode || event.button != platform::PointerButton::Left) return false;
  if (tools.measureMode) {
    PickMeasure(event);
  } else {
    PickDimension(event);
  }
  return true;
}

void RegisterDimensions() {
  RegisterCommand(RouterStage::Builder, kIdCadApplyDimension, platform::kNotifyClick,
                  ApplyFromPanel);
  RegisterCommand(RouterStage::Notified, kIdCadDimensionPart, platform::kNotifyListSelect,
                  ChoosePart);
}

void ResetDimensions() { ForgetDimensionLabels(); }

}  // namespace morva
