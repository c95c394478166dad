#include "plate/tools/plate_fields.h"

#include <string>
#include <string_view>

#include "app/command_ids.h"
#include "app/router.h"
#include "library/shape_menu.h"
#include "library/shapes.h"
#include "plate/geometry/plate_layout.h"
#include "plate/model/plate.h"
#include "plate/tools/plate_editor.h"
#include "plate/tools/plate_saving.h"
#include "platform/control.h"
#include "platform/events.h"
#include "platform/listing.h"
#include "platform/window.h"

namespace morva {

namespace {

constexpr int kCustomRow = static_cast<int>(PlateShape::Custom);

void OnField(int id, int) {
  const int value = id - kIdPlateField;
  const std::u16string text = platform::TextOf(id);
  if (text == plate.values[value].text) return;
  SetPlateText(value, text);
  // What is half typed is told where it counts: when code is asked for.
  PlateEdited();
}

void TakeShape(PlateShape shape) {
  SetPlateShape(shape);
  PlateEdited();
}

void ChooseOutline() {
  if (shapeLibrary.count == 0) return SayOnPlate(kNoSavedShape);
  const int index = PickSavedShape(kIdPlateShape, plate.customOutlineIndex);
  if (index < 0 || !SetPlateOutline(index)) return;
  TakeShape(PlateShape::Custom);
}

// A shape is where a new plate begins: it asks for the name next.
void OnShape(int, int) {
  const int row = platform::SelectedRow(kIdPlateShape);
  if (row == kCustomRow) {
    ChooseOutline();
  } else if (row >= 0) {
    TakeShape(static_cast<PlateShape>(row));
  }
  ShowPlateFields();
  if (plate.unnamed && static_cast<int>(plate.shape) == row) OpenPlateNaming(true);
}

void OnOutline(int, int) {
  ChooseOutline();
  ShowPlateFields();
}

void OnType(int, int) {
  const int row = platform::SelectedRow(kIdPlateType);
  if (row < 0) return;
  SetPlateType(static_cast<PlateFeatureType>(row));
  PlateEdited();
}

void OnLayout(int, int) {
  const int row = platform::SelectedRow(kIdPlateLayout);
  if (row < 0) return;
  SetPlateLayout(static_cast<PlateLayout>(row));
  PlateEdited();
}

void OnUnit(int, int) {
  SetPlateUnit(!plate.metric);
  ShowPlateFields();
  if (plateEditor.page != PlatePage::Name) ShowPlateEditor();
  PlateEdited();
}

void ShowRow(int list, int row) {
  if (platform::SelectedRow(list) != row) platform::SelectRow(list, row);
}

}  // namespace

int FieldOfPlateValue(int value) { return kIdPlateField + value; }

void ShowPlateFields() {
  for (int i = 0; i < kPlateFormValues; ++i) {
    const std::u16string_view text = plate.values[i].text;
    if (platform::TextOf(kIdPlateField + i) != text) platform::SetText(kIdPlateField + i, text);
  }
  ShowRow(kIdPlateShape, static_cast<int>(plate.shape));
  ShowRow(kIdPlateType, static_cast<int>(plate.type));
  ShowRow(kIdPlateLayout, static_cast<int>(plate.layout));
}

void RegisterPlateFields() {
  const int chosen = platform::kNotifyComboSelect;
  RegisterCommand(RouterStage::Notified, kIdPlateField, kIdPlateField + kPlateFormValues - 1,
                  platform::kNotifyEditChange, OnField);
  RegisterCommand(RouterStage::Notified, kIdPlateShape, chosen, OnShape);
  RegisterCommand(RouterStage::Notified, kIdPlateType, chosen, OnType);
  RegisterCommand(RouterStage::Notified, kIdPlateLayout, chosen, OnLayout);
  RegisterCommand(RouterStage::Builder, kIdPlateUnit, platform::kNotifyClick, OnUnit);
  RegisterCommand(RouterStage::Builder, kIdPlateOutline, platform::kNotifyClick, OnOutline);
}

}  // namespace morva
