#include "cad/tools/edit_parts.h"

#include <string>

#include "cad/geometry/lines.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr double kOffsetInch = 0.2;
constexpr double kOffsetMm = 5.0;

}  // namespace

bool AppendDrawn(const SketchObject& object, const char16_t* logged) {
  if (sketch.objectCount >= kMaxItems || !WithinSketchLimit(object)) return false;
  PushSketchUndo();
  ClearMultiSelect();
  SetSelected(AppendSketchObject(object));
  RefreshSketchPanels();
  LogSketchOperation(logged);
  return true;
}

void SelectSketchObject(int index) {
  SetSelected(index >= 0 && index < sketch.objectCount ? index : -1);
  for (int i = 0; i < kMaxItems; ++i) SetMark(i, InSelectedPart(i));
  RefreshSketchPanels();
}

void DeleteGeometry() {
  unsigned char goes[kMaxItems] = {};
  for (int i = 0; i < sketch.objectCount; ++i) {
    goes[i] = !sketch.locked[i] && (InSelectedPart(i) || IsMultiSelected(i)) ? 1 : 0;
  }
  for (int i = sketch.objectCount - 1; i >= 0; --i) {
    if (goes[i]) RemoveSketchObject(i);
  }
  SetSelected(sketch.objectCount - 1);
  ClearMultiSelect();
  ForgetIndices();
  RefreshSketchPanels();
}

void ShiftByOffset(SketchObject& object) {
  object.x += BySketchUnit(kOffsetInch, kOffsetMm);
  object.y += BySketchUnit(kOffsetInch, kOffsetMm);
}

void TellSketchLimit() { SetSketchStatus(u"Geometry exceeds the sketch coordinate limit."); }

bool HasSketchRoom(int more) {
  if (sketch.objectCount + more <= kMaxItems) return true;
  const std::u16string words = u"No room: the sketch holds " + IntegerText(sketch.objectCount) +
                               u" of " + IntegerText(kMaxItems) + u" objects, " +
                               IntegerText(more) + u" more do not fit. Nothing was changed.";
  SetSketchStatus(words.c_str());
  return false;
}

void TogglePartFlag(ObjectFlag flag, int index, const char16_t* logged) {
  if (index < 0 || index >= sketch.objectCount) return;
  PushSketchUndo();
  const bool on = !HasFlag(flag, index);
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (SamePart(index, i)) SetFlag(flag, i, on);
  }
  RefreshSketchPanels();
  LogSketchOperation(logged);
}

void ForgetIndices() {
  SetHover(-1);
  SetJoinSource(-1);
  ForgetTangentTarget();
  ClearPreviewSegments();
}

}  // namespace morva
