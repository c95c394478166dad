#include "cad/edit_parts.h"

#include "cad/model/cad_hooks.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"

namespace morva {

void TellSketchLimit() { SetSketchStatus(u"Geometry exceeds the sketch coordinate limit."); }

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
