#include "plate/tools/plate_list.h"

#include <string>

#include "app/command_ids.h"
#include "app/router.h"
#include "plate/geometry/plate_layout.h"
#include "plate/model/plate.h"
#include "plate/tools/plate_edit.h"
#include "plate/tools/plate_editor.h"
#include "platform/events.h"
#include "platform/listing.h"
#include "platform/window.h"

namespace morva {

namespace {

// The data of a row is the target that it opens.
void PutRow(int row, const std::u16string& text, int target, bool dim) {
  if (row >= platform::RowCount(kIdPlateFeatures)) {
    platform::AddRow(kIdPlateFeatures, text, target);
  } else if (platform::RowText(kIdPlateFeatures, row) != text) {
    platform::SetRowText(kIdPlateFeatures, row, text);
  }
  platform::SetRowData(kIdPlateFeatures, row, target);
  platform::SetRowDim(kIdPlateFeatures, row, dim);
}

int Listed(int features) {
  int listed = 1;  // the outline
  for (int k = 0; k < features; ++k) listed += plate.features[k].deleted ? 0 : 1;
  return listed;
}

void OpenRow(Keyboard keyboard) {
  const int row = platform::SelectedRow(kIdPlateFeatures);
  if (row < 0) return;
  OpenPlateTarget(static_cast<int>(platform::RowData(kIdPlateFeatures, row)), keyboard);
}

}  // namespace

void ShowPlateList() {
  if (!platform::Exists(kIdPlateFeatures)) return;
  const int features = plate.unnamed ? 0 : FeatureCount(NumbersOf(plate));
  platform::HoldListRedraw(kIdPlateFeatures, true);
  const int wanted = plate.unnamed ? 0 : Listed(features);
  if (platform::RowCount(kIdPlateFeatures) > wanted) platform::ClearRows(kIdPlateFeatures);
  int row = 0;
  int current = -1;
  if (wanted > 0) {
    if (plateEditor.target == kDepthSection) current = 0;
    PutRow(row++, kOutlineRow, kDepthSection, false);
  }
  for (int k = 0; k < features; ++k) {
    if (plate.features[k].deleted) continue;
    if (k == CurrentFeature()) current = row;
    PutRow(row++, FeatureRowWords(plate, k), FeatureTarget(k), plate.features[k].hidden);
  }
  if (platform::SelectedRow(kIdPlateFeatures) != current)
    platform::SelectRow(kIdPlateFeatures, current);
  platform::HoldListRedraw(kIdPlateFeatures, false);
}

void RegisterPlateList() {
  RegisterCommand(RouterStage::Notified, kIdPlateFeatures, platform::kNotifyListSelect,
                  [](int, int) { OpenRow(Keyboard::Stays); });
  RegisterCommand(RouterStage::Notified, kIdPlateFeatures, platform::kNotifyListDouble,
                  [](int, int) { OpenRow(Keyboard::ToEditor); });
}

}  // namespace morva
