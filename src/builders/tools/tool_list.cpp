#include "builders/tools/tool_list.h"

#include <algorithm>
#include <cstdint>

#include "app/command_ids.h"
#include "app/outlets.h"
#include "library/tools.h"
#include "library/units.h"
#include "platform/listing.h"
#include "platform/window.h"

namespace morva {

namespace {

constexpr std::int64_t kNoTool = -1;  // data of the row that says so

void TellFailure(bool saved) {
  if (saved) return;
  constexpr char16_t kWords[] =
      u"MORVA.ini could not be written \u2014 the tool library lasts for this run only.";
  AppendOutput(kWords);
  ShowStatus(kWords);
}

void TellSaved(bool saved) {
  if (saved) AppendOutput(u"Tool Library updated and saved.");
  TellFailure(saved);
}

std::u16string WholeRow(const ToolRecord& tool) { return ToolRowText(tool, UnitsMetric()); }

}  // namespace

void FillTools(int list, std::u16string (*words)(const ToolRecord& tool)) {
  const int before = std::clamp(platform::SelectedRow(list), 0, std::max(toolLibrary.count - 1, 0));
  platform::HoldListRedraw(list, true);
  platform::ClearRows(list);
  for (int i = 0; i < toolLibrary.count; ++i) {
    platform::AddRow(list, words(toolLibrary.tools[i]), i);
  }
  platform::HoldListRedraw(list, false);
  if (toolLibrary.count > 0) platform::SelectRow(list, before);
}

int SelectedTool() {
  const int row = platform::SelectedRow(kIdToolList);
  if (row < 0) return -1;
  const auto index = static_cast<int>(platform::RowData(kIdToolList, row));
  return index < toolLibrary.count ? index : -1;
}

void SelectTool(int index) {
  platform::SelectRow(kIdToolList, std::min(index, toolLibrary.count - 1));
}

void RebuildToolList() {
  if (!platform::Exists(kIdToolList)) return;
  FillTools(kIdToolList, WholeRow);
  if (toolLibrary.count > 0) return;
  platform::AddRow(kIdToolList, u"No tools yet", kNoTool);
  platform::SetRowDim(kIdToolList, 0, true);
}

void StoreTools(int selected, bool fromForm) {
  SaveToolLibrary(fromForm ? TellSaved : TellFailure);
  RefreshToolLists();
  SelectTool(selected);
}

}  // namespace morva
