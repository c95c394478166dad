#include "cad/panel/sketch_panels.h"

#include <cstdint>
#include <string>

#include "app/command_ids.h"
#include "app/commands.h"
#include "app/router.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/panel/operations_list.h"
#include "cad/panel/pattern_form.h"
#include "cad/tools/dimensions.h"
#include "cad/tools/edits.h"
#include "cad/tools/save_shape.h"
#include "cad/tools/sketch_units.h"
#include "forms/form.h"
#include "platform/control.h"
#include "platform/events.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr std::int64_t kFaceRow = -1;  // data of the row that stands in an empty list

// A group stands in the list once, on its first member.
bool HasOwnLine(int index) {
  const std::int32_t group = sketch.objects[index].group;
  if (group == 0) return true;
  for (int i = 0; i < index; ++i) {
    if (sketch.objects[i].group == group) return false;
  }
  return true;
}

std::u16string LineText(int index) {
  const SketchObject& object = sketch.objects[index];
  std::u16string text = sketch.locked[index] ? u"[locked] " : u"";
  text += IntegerText(index + 1);
  text += u"  ";
  text += object.group != 0 ? u"Trimmed part" : SketchTypeName(object.type);
  return text;
}

void PutLine(int row, const std::u16string& text, std::int64_t data) {
  if (row >= platform::RowCount(kIdCadOperations)) {
    platform::AddRow(kIdCadOperations, text, data);
  } else if (platform::RowText(kIdCadOperations, row) != text) {
    platform::SetRowText(kIdCadOperations, row, text);
  }
  platform::SetRowData(kIdCadOperations, row, data);
  platform::SetRowDim(kIdCadOperations, row, data == kFaceRow || sketch.hidden[data] != 0);
}

// Rows are rewritten in place where their number stays, so that the list keeps its scrolling.
void RefreshOperations() {
  if (!platform::Exists(kIdCadOperations)) return;
  int lines = 0;
  for (int i = 0; i < sketch.objectCount; ++i) lines += HasOwnLine(i) ? 1 : 0;
  platform::HoldListRedraw(kIdCadOperations, true);
  const int wanted = lines > 0 ? lines : 1;
  if (platform::RowCount(kIdCadOperations) > wanted) platform::ClearRows(kIdCadOperations);
  int row = 0;
  int current = -1;
  for (int i = 0; i < sketch.objectCount; ++i) {
    if (!HasOwnLine(i)) continue;
    if (InSelectedPart(i)) current = row;
    PutLine(row++, LineText(i), i);
  }
  if (lines == 0) PutLine(0, u"No geometry yet", kFaceRow);
  platform::SelectRow(kIdCadOperations, current);
  platform::HoldListRedraw(kIdCadOperations, false);
  platform::Repaint(kIdCadOperations);
}

void ShowSelection() {
  if (!HasSketchSelection()) {
    // Numbers of an object that is gone, perhaps of another drawing, must not stand there.
    for (const GeometryField& field : kGeometryFields) platform::SetText(field.id, u"");
    SetPassingStatus(kNothingSelected);
    return;
  }
  const SketchObject& object = sketch.objects[sketch.selected];
  for (const GeometryField& field : kGeometryFields) {
    platform::SetText(field.id, NumberText(field.id, object.*field.number));
  }
  const std::u16string words = u"Selected: " + std::u16string(SketchTypeName(object.type)) +
                               u"  \u2022  drag to move; use Dimension to resize.";
  SetPassingStatus(words.c_str());
}

void RefreshPanels() {
  RefreshOperations();
  ShowSelection();
  RefreshKeyStates();
  // A value left from another object would be applied to this one.
  if (tools.dimensionMode) ShowDimensionValue();
  RepaintPatternPictures();  // they show the selected object
  platform::Repaint(kViewCadCanvas);
}

void OnUndo(int, int) { SketchUndo(); }

}  // namespace

void RegisterSketchCommands() {
  cadHooks.refreshSketchPanels = RefreshPanels;
  RegisterCommand(RouterStage::Builder, kIdCadUndo, platform::kNotifyClick, OnUndo);
  RegisterSketchUnits();
  RegisterOperationsList();
  RegisterSaveShape();
}

}  // namespace morva
