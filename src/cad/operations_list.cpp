#include "cad/operations_list.h"

#include <cstdint>

#include "app/command_ids.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/router.h"
#include "cad/dimensions.h"
#include "cad/sketch.h"
#include "cad/tool_state.h"
#include "platform/listing.h"

namespace morva {

namespace {

constexpr int kHideSpot = 30;  // pixels of the eye at a row's left end

void OnSelect(int, int) {
  const int index = OperationObject(platform::SelectedRow(kIdCadOperations));
  if (index < 0) return;
  SelectSketchObject(index);
}

void OnClick(int row, int x, int) {
  const int index = OperationObject(row);
  if (index >= 0 && x >= 0 && x < kHideSpot) ToggleOperationHidden(index);
}

bool OnKey(const platform::KeyEvent& key) {
  if (key.key != platform::kKeySpace || key.ctrl || key.alt || key.shift) return false;
  if (!HasSketchSelection()) return false;
  // The selected object alone, whatever its group.
  PushSketchUndo();
  sketch.hidden[sketch.selected] = sketch.hidden[sketch.selected] ? 0 : 1;
  RefreshSketchPanels();
  LogSketchOperation(u"Visibility changed");
  return true;
}

}  // namespace

int OperationObject(int row) {
  if (row < 0 || row >= platform::RowCount(kIdCadOperations)) return -1;
  const std::int64_t data = platform::RowData(kIdCadOperations, row);
  return data >= 0 && data < sketch.objectCount ? static_cast<int>(data) : -1;
}

void SelectSketchObject(int index) {
  sketch.selected = index >= 0 && index < sketch.objectCount ? index : -1;
  for (int i = 0; i < kMaxItems; ++i) tools.multiSelect[i] = InSelectedPart(i) ? 1 : 0;
  RefreshSketchPanels();
  // A value of another object must not stand there to be applied to this one.
  if (tools.dimensionMode) ShowDimensionValue();
}

void ToggleOperationHidden(int index) {
  if (index < 0 || index >= sketch.objectCount) return;
  PushSketchUndo();
  const unsigned char hidden = sketch.hidden[index] ? 0 : 1;
  const std::int32_t group = sketch.objects[index].group;
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (i == index || (group != 0 && sketch.objects[i].group == group)) sketch.hidden[i] = hidden;
  }
  RefreshSketchPanels();
  LogSketchOperation(u"Visibility changed");
}

void RegisterOperationsList() {
  RegisterCommand(RouterStage::Notified, kIdCadOperations, platform::kNotifyListSelect, OnSelect);
  Handlers list;
  list.id = kIdCadOperations;
  list.key = OnKey;
  list.listClick = OnClick;
  RegisterHandlers(list);
}

}  // namespace morva
