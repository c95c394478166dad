#include "cad/tools/clipboard.h"

#include "app/command_ids.h"
#include "app/router.h"
#include "cad/geometry/lines.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/edit_parts.h"
#include "library/units.h"
#include "platform/events.h"

namespace morva {

namespace {

struct Clipboard {
  SketchObject objects[kMaxItems];
  int count = 0;
  bool valid = false;
  bool metric = false;
};
Clipboard clipboard;

// The selected part; without its locked members where they stay in the drawing.
bool Store(bool lockedToo) {
  if (!HasSketchSelection()) return false;
  clipboard.count = 0;
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (!InSelectedPart(i) || (sketch.locked[i] && !lockedToo)) continue;
    clipboard.objects[clipboard.count++] = sketch.objects[i];
  }
  clipboard.valid = true;
  clipboard.metric = sketch.metric;
  return true;
}

// As it will be pasted: an inch stays an inch in a drawing of the other unit.
SketchObject PastedObject(int index, std::int32_t group) {
  SketchObject object = clipboard.objects[index];
  if (clipboard.metric != sketch.metric) {
    ScaleLengths(object, sketch.metric ? kMmPerInch : kInchPerMm);
  }
  object.group = group;
  ShiftByOffset(object);
  return object;
}

void OnClipboard(int id, int) {
  if (id == kIdCadCopy) CopyGeometry();
  if (id == kIdCadCut) CutGeometry();
  if (id == kIdCadPaste) PasteGeometry();
}

}  // namespace

void CopyGeometry() {
  if (Store(true)) LogSketchOperation(u"Copied part");
}

void CutGeometry() {
  if (!MayEditSelection() || !Store(false)) return;
  PushSketchUndo();
  // Marked objects beside the part are not in the clipboard and stay.
  ClearMultiSelect();
  DeleteGeometry();
  LogSketchOperation(u"Cut part");
}

void PasteGeometry() {
  if (!clipboard.valid || clipboard.count < 1) return;
  if (!HasSketchRoom(clipboard.count)) return;
  const std::int32_t group = clipboard.count > 1 ? NextSketchGroup() : 0;
  for (int i = 0; i < clipboard.count; ++i) {
    if (WithinSketchLimit(PastedObject(i, group))) continue;
    TellSketchLimit();
    return;
  }
  PushSketchUndo();
  ClearMultiSelect();
  SetSelected(sketch.objectCount);
  for (int i = 0; i < clipboard.count; ++i) AppendSketchObject(PastedObject(i, group));
  RefreshSketchPanels();
  LogSketchOperation(u"Pasted part");
}

void RegisterSketchClipboard() {
  RegisterCommand(RouterStage::Builder, kIdCadCopy, kIdCadPaste, platform::kNotifyClick,
                  OnClipboard);
}

void EmptySketchClipboard() { clipboard = Clipboard(); }

}  // namespace morva
