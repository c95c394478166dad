#include "cad/sketch.h"

#include <algorithm>

#include "cad/tool_state.h"
#include "documents/autosave.h"
#include "documents/program_tabs.h"

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
};
// A ring: a full stack gives its oldest place to the newest step and moves nothing.
SketchSnapshot steps[kMaxSketchUndo];
int oldestStep = 0;

SketchSnapshot& StepAt(int depth) { return steps[(oldestStep + depth) % kMaxSketchUndo]; }

constexpr const char16_t* kTypeNames[] = {u"Line", u"Rectangle",  u"Circle",
                                          u"Slot", u"Work point", u"Work axis"};
constexpr const char16_t* kTypeHeadings[] = {u"LINE", u"RECTANGLE",  u"CIRCLE",
                                             u"SLOT", u"WORK POINT", u"WORK AXIS"};

bool IsType(std::int32_t type) { return type >= kTypeLine && type <= kTypeWorkAxis; }

void TakeStep(SketchSnapshot& step) {
  std::copy_n(sketch.objects, kMaxItems, step.objects);
  std::copy_n(sketch.hidden, kMaxItems, step.hidden);
  std::copy_n(sketch.locked, kMaxItems, step.locked);
  step.objectCount = sketch.objectCount;
  step.selected = sketch.selected;
  step.metric = sketch.metric;
}

void PutStep(const SketchSnapshot& step) {
  std::copy_n(step.objects, kMaxItems, sketch.objects);
  std::copy_n(step.hidden, kMaxItems, sketch.hidden);
  std::copy_n(step.locked, kMaxItems, sketch.locked);
  sketch.objectCount = step.objectCount;
  sketch.selected = step.selected;
  sketch.metric = step.metric;
}

}  // namespace

const char16_t* SketchTypeName(std::int32_t type) { return IsType(type) ? kTypeNames[type] : u""; }

const char16_t* SketchTypeHeading(std::int32_t type) {
  return IsType(type) ? kTypeHeadings[type] : u"";
}

void PushSketchUndo() {
  if (sketch.trimPreviewing) return;
  MarkModified();
  ScheduleAutosave();
  if (sketch.undoDepth >= kMaxSketchUndo) {
    oldestStep = (oldestStep + 1) % kMaxSketchUndo;
    sketch.undoDepth = kMaxSketchUndo - 1;
  }
  TakeStep(StepAt(sketch.undoDepth++));
}

void SketchUndo() {
  ClearMultiSelect();
  if (sketch.undoDepth < 1) return;
  const SketchSnapshot& step = StepAt(--sketch.undoDepth);
  if (step.metric != sketch.metric) SwitchSketchUnits(step.metric);
  PutStep(step);
  // What hung on the objects that stood there.
  tools.hoverObject = -1;
  tools.previewSegmentCount = 0;
  // The step was pushed and perhaps saved since: going back is a change of its own.
  MarkModified();
  ScheduleAutosave();
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

bool InSelectedPart(int index) {
  if (!HasSketchSelection() || index < 0 || index >= sketch.objectCount) return false;
  if (index == sketch.selected) return true;
  const std::int32_t group = sketch.objects[sketch.selected].group;
  return group != 0 && sketch.objects[index].group == group;
}

std::int32_t NextSketchGroup() {
  std::int32_t largest = 0;
  for (int i = 0; i < sketch.objectCount; ++i) {
    largest = std::max(largest, sketch.objects[i].group);
  }
  return largest + 1;
}

int AppendSketchObject(const SketchObject& object) {
  if (sketch.objectCount >= kMaxItems) return -1;
  const int index = sketch.objectCount++;
  sketch.objects[index] = object;
  sketch.hidden[index] = 0;
  sketch.locked[index] = 0;
  tools.multiSelect[index] = 0;
  return index;
}

void RemoveSketchObject(int index) {
  if (index < 0 || index >= sketch.objectCount) return;
  for (int i = index; i + 1 < sketch.objectCount; ++i) {
    sketch.objects[i] = sketch.objects[i + 1];
    sketch.hidden[i] = sketch.hidden[i + 1];
    sketch.locked[i] = sketch.locked[i + 1];
    tools.multiSelect[i] = tools.multiSelect[i + 1];
  }
  --sketch.objectCount;
  sketch.hidden[sketch.objectCount] = 0;
  sketch.locked[sketch.objectCount] = 0;
  tools.multiSelect[sketch.objectCount] = 0;
}

void ResetSketch() {
  sketch = LiveSketch();
  tools = ToolState();
  SetSketchStatus(nullptr);
}

}  // namespace morva
