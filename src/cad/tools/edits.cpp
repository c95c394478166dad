#include "cad/tools/edits.h"

#include <algorithm>
#include <cmath>

#include "app/command_ids.h"
#include "app/router.h"
#include "cad/geometry/lines.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/clipboard.h"
#include "cad/tools/edit_parts.h"
#include "cad/tools/scale_revolve.h"
#include "cad/tools/strict_fields.h"
#include "forms/form.h"
#include "library/outline.h"
#include "platform/control.h"
#include "platform/events.h"
#include "platform/message.h"

namespace morva {

namespace {

constexpr double kLeastInch = 0.01;  // what Trim leaves of a size
constexpr double kLeastMm = 0.25;

bool IsLineOrSlot(const SketchObject& object) {
  return object.type == kTypeLine || object.type == kTypeSlot;
}

const SketchObject& Selected() { return sketch.objects[sketch.selected]; }

// What still shows the object's number is not read, or it would be rounded to the decimals shown,
// and an end that is snapped or touches would not meet any more. False: a field holds no number.
bool AppliedObject(SketchObject& object) {
  object = Selected();
  for (const GeometryField& field : kGeometryFields) {
    if (platform::TextOf(field.id) == NumberText(field.id, object.*field.number)) continue;
    if (!TakeFieldNumber(field.id, object.*field.number)) return false;
  }
  object.size = std::fabs(object.size);
  object.size2 = std::fabs(object.size2);
  if (object.type == kTypeSlot) object.size = std::max(object.size, object.size2);
  if (object.type == kTypeCircle) object.size2 = 0;
  return true;
}

bool GrownObject(bool extend, SketchObject& object) {
  object = Selected();
  double typed = FieldFallback(kIdCadAmount);
  if (!TakeFieldNumber(kIdCadAmount, typed)) return false;
  const double amount = extend ? std::fabs(typed) : -std::fabs(typed);
  if (object.type == kTypeCircle) {
    object.size += 2 * amount;
  } else {
    object.size += amount;
    if (!IsLineOrSlot(object)) object.size2 += amount;
  }
  const double least = BySketchUnit(kLeastInch, kLeastMm);
  object.size = std::max(object.size, least);
  // A second size below 0, which only construction geometry could get, would make the whole
  // drawing unreadable once it is stored.
  object.size2 = std::max(object.size2, HasTwoSizes(object) ? least : 0);
  if (object.type == kTypeSlot) object.size = std::max(object.size, object.size2);
  return true;
}

bool Writable(const SketchObject& object) {
  if (WithinSketchLimit(object)) return true;
  TellSketchLimit();
  return false;
}

void WriteSelected(const SketchObject& object) {
  PushSketchUndo();
  PutSketchObject(sketch.selected, object);
  RefreshSketchPanels();
}

bool MaySplit() {
  if (Selected().type != kTypeLine) {
    platform::ShowBox(u"Custom Shape Editor",
                      u"CUT/SPLIT currently splits a selected line at its midpoint. Use TRIM on "
                      u"rectangles, circles, and slots.",
                      platform::BoxButtons::Ok, platform::BoxIcon::Information);
    return false;
  }
  return HasSketchRoom(1);
}

bool MayDuplicate(SketchObject& copy) {
  if (!HasSketchRoom(1)) return false;
  copy = Selected();
  ShiftByOffset(copy);
  return Writable(copy);
}

// What would refuse is asked before the undo step, so that a refusal leaves none.
bool MayRun(int id) {
  SketchObject copy;
  switch (id) {
    case kIdCadApply:
      return AppliedObject(copy) && Writable(copy);
    case kIdCadExtend:
    case kIdCadTrim:
      return GrownObject(id == kIdCadExtend, copy) && Writable(copy);
    case kIdCadSplit:
      return MaySplit();
    case kIdCadDuplicate:
      return MayDuplicate(copy);
    default:
      return true;
  }
}

// The key stands beside that which saves the drawing.
bool MayClear() {
  return sketch.objectCount == 0 ||
         platform::ShowBox(
             u"Clear all", u"Remove every object of this drawing?\r\nUndo brings them back.",
             platform::BoxButtons::NoYes, platform::BoxIcon::Question) == platform::BoxAnswer::Yes;
}

void OnGeometryButton(int id, int) {
  if (id == kIdCadClear) {
    if (MayClear()) ClearSketch();
    return;
  }
  if (!MayEditSelection() || !MayRun(id)) return;
  PushSketchUndo();
  switch (id) {
    case kIdCadApply:
      ApplyGeometryFields();
      break;
    case kIdCadExtend:
    case kIdCadTrim:
      ExtendOrTrim(id == kIdCadExtend);
      break;
    case kIdCadSplit:
      SplitLine();
      break;
    case kIdCadDuplicate:
      DuplicateObject();
      break;
    case kIdCadDelete:
      DeleteGeometry();
      break;
    default:
      break;
  }
  LogSketchOperation(id == kIdCadDelete ? u"Deleted geometry" : u"Edited geometry");
}

void OnFlag(int id, int) {
  if (id == kIdCadHide) ToggleGeometryHidden();
  if (id == kIdCadLock) ToggleGeometryLocked();
}

}  // namespace

void ApplyGeometryFields() {
  if (!MayEditSelection()) return;
  SketchObject object;
  if (AppliedObject(object) && Writable(object)) WriteSelected(object);
}

void ExtendOrTrim(bool extend) {
  if (!MayEditSelection()) return;
  SketchObject object;
  if (!GrownObject(extend, object) || !Writable(object)) return;
  WriteSelected(object);
  SetSketchStatus(extend ? u"EXTEND applied to selected geometry."
                         : u"TRIM applied to selected geometry.");
}

void SplitLine() {
  if (!MayEditSelection() || !MaySplit()) return;
  SketchObject line = Selected();
  line.size /= 2;
  PutSketchObject(sketch.selected, line);
  SketchObject rest = line;
  LineEndPoint(line, rest.x, rest.y);
  AppendSketchObject(rest);
  RefreshSketchPanels();
  SetSketchStatus(u"CUT complete: selected line split into two independent segments.");
}

void DuplicateObject() {
  SketchObject copy;
  if (!MayEditSelection() || !MayDuplicate(copy)) return;
  ClearMultiSelect();
  SetSelected(AppendSketchObject(copy));
  RefreshSketchPanels();
}

void ToggleGeometryHidden() {
  TogglePartFlag(ObjectFlag::Hidden, sketch.selected, kVisibilityChanged);
}

void ToggleGeometryLocked() {
  TogglePartFlag(ObjectFlag::Locked, sketch.selected, u"Lock changed");
}

void ClearSketch() {
  PushSketchUndo();
  ReplaceSketch(nullptr, 0, sketch.metric, sketch.thickness);
  ClearFlags();
  ClearMultiSelect();
  ForgetIndices();
  RefreshSketchPanels();
}

void RegisterEdits() {
  RegisterCommand(RouterStage::Builder, kIdCadApply, kIdCadClear, platform::kNotifyClick,
                  OnGeometryButton);
  RegisterCommand(RouterStage::Builder, kIdCadHide, kIdCadLock, platform::kNotifyClick, OnFlag);
  RegisterSketchClipboard();
  RegisterScaleRevolve();
}

void ResetEdits() { EmptySketchClipboard(); }

}  // namespace morva
