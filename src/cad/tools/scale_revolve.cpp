#include "cad/tools/scale_revolve.h"

#include <cmath>
#include <string>

#include "app/command_ids.h"
#include "app/limits.h"
#include "app/router.h"
#include "cad/geometry/lines.h"
#include "cad/model/cad_form.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/edit_parts.h"
#include "cad/tools/tool_change.h"
#include "library/outline.h"
#include "platform/control.h"
#include "platform/events.h"

namespace morva {

namespace {

constexpr double kMostFactor = 1000;
constexpr double kMostDegrees = 36000;
constexpr double kNoAngle = 1e9;  // where a field has no number: beyond what is allowed
constexpr int kPivotDecimals = 4;

// Digits alone, -1 for anything else.
int CopiesOf(double value) {
  const std::u16string text = platform::TextOf(kIdCadRevolveCopies);
  const bool digits = text.find_first_not_of(u"0123456789") == std::u16string::npos;
  return digits ? static_cast<int>(value) : -1;
}

// A field that still shows the pivot, also after a change of unit, stands for all of its digits.
double PivotOf(int id, double held, double typed) {
  const std::u16string text = platform::TextOf(id);
  const bool shown = text == SketchNumber(held, kPivotDecimals) || text == NumberText(id, held);
  return shown ? held : typed;
}

void ApplyRevolve() {
  FormValues values;
  // "1,5" is no number here, nor "90x": half of what was typed would move the geometry.
  const bool read = ReadForm(kCadForm, kPanelRevolve, Reading::Strict, values);
  const double* n = values.numbers;
  const double heldX = tools.pivotX;
  const double heldY = tools.pivotY;
  SetPivot(PivotOf(kIdCadPivotX, heldX, n[kRevolvePivotX]),
           PivotOf(kIdCadPivotY, heldY, n[kRevolvePivotY]));
  if (Revolve(read ? n[kRevolveAngle] : kNoAngle, CopiesOf(n[kRevolveCopies]))) return;
  SetPivot(heldX, heldY);
}

void OnScale(int id, int) {
  if (id == kIdCadScale) OpenToolPanel(kPanelScale, kIdCadScaleFactor);
  if (id == kIdCadApplyScale) ScaleGeometry();
}

void OnRevolve(int id, int) {
  if (id == kIdCadRevolve) OpenToolPanel(kPanelRevolve, kIdCadRevolveAngle);
  if (id == kIdCadApplyRevolve) ApplyRevolve();
}

bool MayRevolve(double angle, int copies) {
  return HasSketchSelection() && !sketch.locked[sketch.selected] && copies >= 0 &&
         copies <= kMaxRevolveCopies && std::fabs(angle) <= kMostDegrees &&
         sketch.objectCount + copies <= kMaxItems && std::fabs(tools.pivotX) < kSketchLimit &&
         std::fabs(tools.pivotY) < kSketchLimit;
}

SketchObject TurnedObject(const SketchObject& source, double degrees) {
  SketchObject object = source;
  TurnObject(object, tools.pivotX, tools.pivotY, degrees);
  return object;
}

}  // namespace

void SetRevolvePivot(double x, double y) {
  SetPivot(x, y);
  platform::SetText(kIdCadPivotX, SketchNumber(x, kPivotDecimals));
  platform::SetText(kIdCadPivotY, SketchNumber(y, kPivotDecimals));
}

void ScaleGeometry() {
  if (!MayEditSelection()) return;
  double factor = 0;
  ReadStrictField(kIdCadScaleFactor, factor);
  if (!(factor > 0 && factor <= kMostFactor)) {
    SetSketchStatus(u"Scale factor must be greater than zero and at most 1000.");
    return;
  }
  const SketchObject fixed = sketch.objects[sketch.selected];
  static SketchObject scaled[kMaxItems];
  for (int i = 0; i < sketch.objectCount; ++i) {
    SketchObject& object = scaled[i];
    object = sketch.objects[i];
    if (!InSelectedPart(i)) continue;
    object.x = fixed.x + (object.x - fixed.x) * factor;
    object.y = fixed.y + (object.y - fixed.y) * factor;
    object.size *= factor;
    object.size2 *= factor;
    if (WithinSketchLimit(object)) continue;
    TellSketchLimit();
    return;
  }
  PushSketchUndo();
  for (int i = 0; i < sketch.objectCount; ++i) PutSketchObject(i, scaled[i]);
  RefreshSketchPanels();
  LogSketchOperation(u"Scaled geometry");
}

bool Revolve(double angle, int copies) {
  if (!MayRevolve(angle, copies)) {
    SetSketchStatus(u"Select unlocked geometry; copies must fit the sketch.");
    return false;
  }
  const SketchObject source = sketch.objects[sketch.selected];
  for (int k = 1; k <= (copies > 0 ? copies : 1); ++k) {
    if (WithinSketchLimit(TurnedObject(source, k * angle))) continue;
    TellSketchLimit();
    return false;
  }
  PushSketchUndo();
  if (copies == 0) PutSketchObject(sketch.selected, TurnedObject(source, angle));
  for (int k = 1; k <= copies; ++k) AppendSketchObject(TurnedObject(source, k * angle));
  RefreshSketchPanels();
  LogSketchOperation(u"Revolved geometry");
  return true;
}

void RegisterScaleRevolve() {
  RegisterCommand(RouterStage::Builder, kIdCadScale, kIdCadApplyScale, platform::kNotifyClick,
                  OnScale);
  RegisterCommand(RouterStage::Builder, kIdCadRevolve, platform::kNotifyClick, OnRevolve);
  RegisterCommand(RouterStage::Builder, kIdCadApplyRevolve, platform::kNotifyClick, OnRevolve);
}

}  // namespace morva
