#include "cad/model/sketch.h"

#include <algorithm>
#include <limits>

#include "cad/model/cad_hooks.h"
#include "cad/model/former_drawing.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "documents/edit_link.h"
#include "documents/program_changed.h"

namespace morva {

LiveSketch sketch;

namespace {

struct SketchSnapshot {
  SketchObject objects[kMaxItems];
  unsigned char hidden[kMaxItems] = {};
  unsigned char locked[kMaxItems] = {};
  std::int32_t objectCount = 0;
  std::int32_t selected = -1;
  bool metric = false;
  // A whole drawing that a block took the place of, with what ordinary steps leave out.
  bool former = false;
  double thickness = 0;
  FormerDrawing drawing;
};
// A ring: a full stack gives its oldest place to the newest step and moves nothing.
SketchSnapshot steps[kMaxSketchUndo];
int oldestStep = 0;

SketchSnapshot& StepAt(int depth) { return steps[(oldestStep + depth) % kMaxSketchUndo]; }

constexpr const char16_t* kTypeNames[] = {u"Line", u"Rectangle",  u"Circle",
                                          u"Slot", u"Work point", u"Work axis"};
constexpr const char16_t* kTypeHeadings[] = {u"LINE", u"RECTANGLE",  u"CIRCLE",
                                             u"SLOT", u"WORK POINT", u"WORK AXIS"};

unsigned char* FlagsOf(ObjectFlag flag) {
  return flag == ObjectFlag::Hidden ? sketch.hidden : sketch.locked;
}

bool IsType(std::int32_t type) { return type >= kTypeLine && type <= kTypeWorkAxis; }

void TakeStep(SketchSnapshot& step) {
  std::copy_n(sketch.objects, kMaxItems, step.objects);
  std::copy_n(sketch.hidden, kMaxItems, step.hidden);
  std::copy_n(sketch.locked, kMaxItems, step.locked);
  step.objectCount = sketch.objectCount;
  step.selected = sketch.selected;
  step.metric = sketch.metric;
  step.former = false;
}

void PutStep(const SketchSnapshot& step) {
  std::copy_n(step.objects, kMaxItems, sketch.objects);
  std::copy_n(step.hidden, kMaxItems, sketch.hidden);
  std::copy_n(step.locked, kMaxItems, sketch.locked);
  sketch.objectCount = step.objectCount;
  sketch.selected = step.selected;
  sketch.metric = step.metric;
}

void PushStep() {
  ++sketch.undoTurns;
  if (sketch.undoDepth >= kMaxSketchUndo) {
    oldestStep = (oldestStep + 1) % kMaxSketchUndo;
    sketch.undoDepth = kMaxSketchUndo - 1;
  }
  TakeStep(StepAt(sketch.undoDepth++));
}

bool GroupInUse(std::int32_t group) {
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (sketch.objects[i].group == group) return true;
  }
  return false;
}

void PutFormerDrawing(const SketchSnapshot& step) {
  sketch.thickness = step.thickness;
  Call(cadHooks.formerDrawingBack, step.drawing);
  // What is live now is not that block: Update must not replace it.
  DropEditLink();
}

}  // namespace

const char16_t* SketchTypeName(std::int32_t type) { return IsType(type) ? kTypeNames[type] : u""; }

const char16_t* SketchTypeHeading(std::int32_t type) {
  return IsType(type) ? kTypeHeadings[type] : u"";
}

void PushSketchUndo() {
  if (sketch.trimPreviewing) return;
  ProgramChanged({.autosave = true});
  PushStep();
}

void DropSketchUndo() {
  ++sketch.undoTurns;
  sketch.undoDepth = 0;
}

void DropSketchUndoForBlock(const FormerDrawing* live) {
  ++sketch.undoTurns;
  int kept = 0;
  for (int i = 0; i < sketch.undoDepth; ++i) {
    if (!StepAt(i).former) continue;
    if (kept != i) StepAt(kept) = StepAt(i);
    ++kept;
  }
  sketch.undoDepth = kept;
  if (!live) return;
  PushStep();
  SketchSnapshot& step = StepAt(sketch.undoDepth - 1);
  step.former = true;
  step.thickness = sketch.thickness;
  step.drawing = *live;
}

void SketchUndo() {
  ClearMultiSelect();
  if (sketch.undoDepth < 1) return;
  ++sketch.undoTurns;
  const SketchSnapshot& step = StepAt(--sketch.undoDepth);
  if (step.metric != sketch.metric) SwitchSketchUnits(step.metric);
  PutStep(step);
  if (step.former) PutFormerDrawing(step);
  // Marks, picks and previews hold indices of the former objects, so they end. Join and Tangent
  // go on with the selection of the step.
  ForgetHover();
  SetJoinSource(sketch.selected);
  // The step was pushed and perhaps saved since: going back is a change of its own.
  ProgramChanged({.autosave = true});
  RefreshSketchPanels();
  LogSketchOperation(u"Undo");
}

bool HasSketchSelection() { return sketch.selected >= 0 && sketch.selected < sketch.objectCount; }

bool MayEditSelection() {
  if (!HasSketchSelection()) return false;
  if (!sketch.locked[sketch.selected]) return true;
  SetSketchStatus(u"This object is locked. Right-click it in Operations to unlock.");
  return false;
}

bool SamePart(int a, int b) {
  const std::int32_t group = sketch.objects[a].group;
  return a == b || (group != 0 && sketch.objects[b].group == group);
}

bool InSelectedPart(int index) {
  if (!HasSketchSelection() || index < 0 || index >= sketch.objectCount) return false;
  return SamePart(sketch.selected, index);
}

std::int32_t NextSketchGroup() {
  std::int32_t largest = 0;
  for (int i = 0; i < sketch.objectCount; ++i) {
    largest = std::max(largest, sketch.objects[i].group);
  }
  if (largest < std::numeric_limits<std::int32_t>::max()) return largest + 1;
  // A file may hold any number. 96 objects leave one of 1 to 97 free.
  std::int32_t free = 1;
  while (GroupInUse(free)) ++free;
  return free;
}

bool IsMultiSelected(int index) {
  return index >= 0 && index < sketch.objectCount && tools.multiSelect[index] != 0;
}

int MultiSelectCount() {
  int count = 0;
  for (int i = 0; i < sketch.objectCount; ++i) count += tools.multiSelect[i] != 0 ? 1 : 0;
  return count;
}

void SetSelected(std::int32_t index) { sketch.selected = index; }

void PutSketchObject(int index, const SketchObject& object) {
  if (index >= 0 && index < sketch.objectCount) sketch.objects[index] = object;
}

void SetSketchGroup(int index, std::int32_t group) {
  if (index >= 0 && index < sketch.objectCount) sketch.objects[index].group = group;
}

void SetSketchUnit(bool metric) { sketch.metric = metric; }
void SetSketchThickness(double thickness) { sketch.thickness = thickness; }
void SetSketchSnap(bool on) { sketch.snapOn = on; }
void SetSketchGrid(bool on) { sketch.gridOn = on; }
void SetTrimPreview(bool on) { sketch.trimPreviewing = on; }

void ReplaceSketch(const SketchObject* objects, int count, bool metric, double thickness) {
  sketch.objectCount = std::clamp(count, 0, kMaxItems);
  sketch.metric = metric;
  sketch.thickness = thickness;
  sketch.selected = -1;
  for (int i = 0; i < kMaxItems; ++i) {
    sketch.objects[i] = i < sketch.objectCount ? objects[i] : SketchObject();
  }
}

bool HasFlag(ObjectFlag flag, int index) { return FlagsOf(flag)[index] != 0; }

void SetFlag(ObjectFlag flag, int index, bool on) { FlagsOf(flag)[index] = on ? 1 : 0; }

void ClearFlags() {
  std::fill_n(sketch.hidden, kMaxItems, static_cast<unsigned char>(0));
  std::fill_n(sketch.locked, kMaxItems, static_cast<unsigned char>(0));
}

void StoreFlags(unsigned char (&hidden)[kMaxItems], unsigned char (&locked)[kMaxItems]) {
  std::copy_n(sketch.hidden, kMaxItems, hidden);
  std::copy_n(sketch.locked, kMaxItems, locked);
}

void LoadFlags(const unsigned char (&hidden)[kMaxItems], const unsigned char (&locked)[kMaxItems]) {
  std::copy_n(hidden, kMaxItems, sketch.hidden);
  std::copy_n(locked, kMaxItems, sketch.locked);
}

int AppendSketchObject(const SketchObject& object) {
  if (sketch.objectCount >= kMaxItems) return -1;
  // What is drawn anew is another drawing than what was sent.
  if (sketch.objectCount == 0) Call(cadHooks.sketchBegun);
  const int index = sketch.objectCount++;
  sketch.objects[index] = object;
  sketch.hidden[index] = 0;
  sketch.locked[index] = 0;
  SetMark(index, false);
  return index;
}

void RemoveSketchObject(int index) {
  if (index < 0 || index >= sketch.objectCount) return;
  for (int i = index; i + 1 < sketch.objectCount; ++i) {
    sketch.objects[i] = sketch.objects[i + 1];
    sketch.hidden[i] = sketch.hidden[i + 1];
    sketch.locked[i] = sketch.locked[i + 1];
    SetMark(i, tools.multiSelect[i + 1] != 0);
  }
  --sketch.objectCount;
  sketch.hidden[sketch.objectCount] = 0;
  sketch.locked[sketch.objectCount] = 0;
  SetMark(sketch.objectCount, false);
}

void ResetSketch() {
  sketch = LiveSketch();
  ResetToolState();
  SetSketchStatus(nullptr);
}

}  // namespace morva
