#include "cad/panel/operations_list.h"

#include <cstdint>
#include <string>
#include <string_view>

#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/icon_names.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/router.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/tools/edit_parts.h"
#include "platform/listing.h"

namespace morva {

namespace {

constexpr int kHideSpot = 30;  // pixels of the eye at a row's left end
constexpr int kEye = 18;       // its size

int Centre(int from, int to) { return (from + to) / 2; }

void DrawFace(const platform::DrawState& state, std::u16string_view text,
              platform::Canvas& canvas) {
  const platform::Rect& area = state.area;
  const int words = platform::TextWidth(platform::FontRole::Body, text);
  const int room = platform::RectWidth(area) - words - kHideSpot;
  const int left = room > 0 ? room / 2 : 0;
  platform::DrawState plain = state;
  plain.selected = false;
  hooks.drawListRow(plain, left + kHideSpot, text, kDimText, canvas);
  hooks.drawIcon(canvas, kIconCad, area.left + left + kHideSpot / 2, Centre(area.top, area.bottom),
                 kEye, kDimText);
}

void OnSelect(int, int) {
  const int index = OperationObject(platform::SelectedRow(kIdCadOperations));
  if (index < 0) return;
  SelectSketchObject(index);
}

void OnClick(int row, int x, int) {
  const int index = OperationObject(row);
  if (index < 0 || x < 0 || x >= kHideSpot) return;
  TogglePartFlag(ObjectFlag::Hidden, index, kVisibilityChanged);
}

bool ToggleHidden() {
  if (!HasSketchSelection()) return false;
  // The selected object alone, whatever its group.
  PushSketchUndo();
  SetFlag(ObjectFlag::Hidden, sketch.selected, !sketch.hidden[sketch.selected]);
  RefreshSketchPanels();
  LogSketchOperation(kVisibilityChanged);
  return true;
}

constexpr ChordPlace kListChords{u"list of the drawing"};
constexpr KeyRow kKeys[] = {
    {PlainKey(kListChords, platform::kKeySpace), u"Hide or show what is selected", ToggleHidden},
};

bool OnKey(const platform::KeyEvent& key) { return RunKeyRow(kKeys, key); }

}  // namespace

int OperationObject(int row) {
  if (row < 0 || row >= platform::RowCount(kIdCadOperations)) return -1;
  const std::int64_t data = platform::RowData(kIdCadOperations, row);
  return data >= 0 && data < sketch.objectCount ? static_cast<int>(data) : -1;
}

void DrawOperationRow(const platform::DrawState& state, platform::Canvas& canvas) {
  if (!hooks.drawListRow || !hooks.drawIcon) return;
  const std::u16string text = platform::RowText(kIdCadOperations, state.row);
  const int index = OperationObject(state.row);
  if (index < 0) return DrawFace(state, text, canvas);
  const bool hidden = sketch.hidden[index] != 0;
  const platform::Colour colour = hidden ? kDimText : kMainText;
  hooks.drawListRow(state, kHideSpot, text, colour, canvas);
  const int x = state.area.left + kHideSpot / 2;
  const int y = Centre(state.area.top, state.area.bottom);
  hooks.drawIcon(canvas, kIconEye, x, y, kEye, colour);
  if (!hidden) return;
  platform::Pen slash;
  slash.colour = kDimText;
  slash.width = 2;
  slash.smooth = true;
  PaintLine(canvas, {x - 8.0, y + 7.0}, {x + 8.0, y - 7.0}, slash);
}

void RegisterOperationsList() {
  RegisterCommand(RouterStage::Notified, kIdCadOperations, platform::kNotifyListSelect, OnSelect);
  Handlers list;
  list.id = kIdCadOperations;
  list.drawItem = DrawOperationRow;
  list.key = OnKey;
  list.keys = kKeys;
  list.listClick = OnClick;
  RegisterHandlers(list);
}

}  // namespace morva
