// List boxes and combos.

#include "platform/listing.h"

#include <algorithm>

#include "platform/headless/headless_internal.h"

namespace headless {
namespace {

bool IsList(const Item& item) {
  return item.kind == Kind::List || item.kind == Kind::MultiList || item.kind == Kind::Combo;
}

Item* ListOf(int id) {
  Item* item = Find(id);
  return item && IsList(*item) ? item : nullptr;
}

// The row, null when list or row does not exist.
ListRow* RowOf(int id, int row) {
  Item* item = ListOf(id);
  if (!item || row < 0 || row >= static_cast<int>(item->list.rows.size())) return nullptr;
  return &item->list.rows[static_cast<std::size_t>(row)];
}

void SelectOnly(ListState& list, int row) {
  for (ListRow& each : list.rows) each.selected = false;
  const bool valid = row >= 0 && row < static_cast<int>(list.rows.size());
  list.current = list.anchor = valid ? row : -1;
  if (valid) list.rows[static_cast<std::size_t>(row)].selected = true;
}

// Combos have no rows in view.
void ShowRow(Item& item, int row) {
  ListState& list = item.list;
  if (item.kind == Kind::Combo) return;
  if (row < list.top) list.top = row;
  if (row >= list.top + RowsInView(item)) list.top = row - RowsInView(item) + 1;
}

// The user's choice is told, and then that the rows went along.
void TellChoice(int id, int row) {
  SendCommand(id, platform::kNotifyListSelect);
  Item* item = ListOf(id);
  if (!item || !RowOf(id, row)) return;
  const int before = item->list.top;
  ShowRow(*item, row);
  if (item->list.top != before) SendCommand(id, platform::kNotifyVScroll);
}

char16_t Small(char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c; }

}  // namespace

int RowsInView(const Item& item) {
  return std::max(1, platform::RectHeight(item.place) / std::max(1, item.list.rowHeight));
}

void FillList(Item& item) {
  const int last = static_cast<int>(item.list.rows.size()) - RowsInView(item);
  item.list.top = std::clamp(item.list.top, 0, std::max(0, last));
}

int RowBeginningWith(const Item& item, char16_t character) {
  const std::vector<ListRow>& rows = item.list.rows;
  const std::size_t count = rows.size();
  if (character <= u' ' || count == 0) return -1;
  for (std::size_t step = 1; step <= count; ++step) {
    const std::size_t row = (static_cast<std::size_t>(item.list.current + 1) + step - 1) % count;
    const std::u16string& text = rows[row].text;
    if (!text.empty() && Small(text[0]) == Small(character)) return static_cast<int>(row);
  }
  return -1;
}

void StretchRows(int id, int row) {
  Item* item = ListOf(id);
  if (!item || !RowOf(id, row)) return;
  ListState& list = item->list;
  if (list.anchor < 0) list.anchor = row;
  const int from = std::min(list.anchor, row);
  const int to = std::max(list.anchor, row);
  for (int i = 0; i < static_cast<int>(list.rows.size()); ++i) {
    list.rows[static_cast<std::size_t>(i)].selected = i >= from && i <= to;
  }
  list.current = row;
  TellChoice(id, row);
}

void ChooseAllRows(int id) {
  Item* item = ListOf(id);
  if (!item || item->kind != Kind::MultiList) return;
  for (ListRow& row : item->list.rows) row.selected = true;
  SendCommand(id, platform::kNotifyListSelect);
}

bool ChooseRow(int id, int row) {
  Item* item = ListOf(id);
  if (!item || !RowOf(id, row)) return false;
  const bool same = item->list.current == row;
  SelectOnly(item->list, row);
  if (item->kind != Kind::Combo) {
    TellChoice(id, row);
  } else if (!same) {
    SendCommand(id, platform::kNotifyComboSelect);
  }
  return true;
}

bool SelectRows(int id, const std::vector<int>& rows) {
  Item* item = ListOf(id);
  if (!item || !CanBeUsed(id)) return false;
  for (int row : rows) {
    if (!RowOf(id, row)) return false;
  }
  if (item->kind != Kind::MultiList) {
    if (rows.size() != 1) return false;
    platform::SetFocusTo(id);
    return ChooseRow(id, rows[0]);
  }
  platform::SetFocusTo(id);
  item = ListOf(id);
  if (!item) return true;
  SelectOnly(item->list, rows.empty() ? -1 : rows.back());
  for (int row : rows) {
    if (ListRow* each = RowOf(id, row)) each->selected = true;
  }
  SendCommand(id, platform::kNotifyListSelect);
  return true;
}

void PressRow(int id, int row, bool ctrl, bool shift) {
  platform::SetFocusTo(id);
  Item* item = ListOf(id);
  if (!item || !RowOf(id, row)) return;
  ListState& list = item->list;
  if (item->kind == Kind::MultiList && ctrl) {
    ListRow& each = list.rows[static_cast<std::size_t>(row)];
    each.selected = !each.selected;
    list.current = list.anchor = row;
    SendCommand(id, platform::kNotifyListSelect);
  } else if (item->kind == Kind::MultiList && shift) {
    StretchRows(id, row);
  } else {
    ChooseRow(id, row);
  }
}

}  // namespace headless

namespace platform {

using headless::Item;
using headless::ListOf;
using headless::ListRow;
using headless::RowOf;

bool MakeList(const ListSpec& spec) {
  headless::Kind kind = headless::Kind::List;
  if (spec.kind == ListKind::Multi) kind = headless::Kind::MultiList;
  if (spec.kind == ListKind::Combo) kind = headless::Kind::Combo;
  Item* item = headless::NewItem(spec.id, kind, spec.parent, spec.hidden);
  if (!item) return false;
  item->name = spec.accessibleName;
  item->font = spec.font;
  item->takesFocus = spec.takesFocus;
  item->list.rowHeight = spec.rowHeight;
  item->list.ownerDrawn = spec.ownerDrawn;
  item->list.wheelRows = spec.wheelRows;
  return true;
}

int AddRow(int id, std::u16string_view text, std::int64_t data) {
  Item* item = ListOf(id);
  if (!item) return -1;
  item->list.rows.push_back({std::u16string(text), data, false});
  return static_cast<int>(item->list.rows.size()) - 1;
}

void ClearRows(int id) {
  Item* item = ListOf(id);
  if (!item) return;
  item->list.rows.clear();
  item->list.current = item->list.anchor = -1;
  item->list.top = 0;
}

int RowCount(int id) {
  const Item* item = ListOf(id);
  return item ? static_cast<int>(item->list.rows.size()) : 0;
}

void SetRowText(int id, int row, std::u16string_view text) {
  if (ListRow* r = RowOf(id, row)) r->text = text;
}

std::u16string RowText(int id, int row) {
  const ListRow* r = RowOf(id, row);
  return r ? r->text : std::u16string();
}

std::int64_t RowData(int id, int row) {
  const ListRow* r = RowOf(id, row);
  return r ? r->data : 0;
}

void SetRowData(int id, int row, std::int64_t data) {
  if (ListRow* r = RowOf(id, row)) r->data = data;
}

void SetRowDim(int id, int row, bool dim) {
  const Item* item = ListOf(id);
  ListRow* r = RowOf(id, row);
  if (r && item->kind != headless::Kind::Combo) r->dim = dim;
}

bool IsRowDim(int id, int row) {
  const ListRow* r = RowOf(id, row);
  return r && r->dim;
}

int SelectedRow(int id) {
  const Item* item = ListOf(id);
  return item ? item->list.current : -1;
}

void SelectRow(int id, int row) {
  Item* item = ListOf(id);
  if (!item) return;
  headless::SelectOnly(item->list, row);
  if (item->list.current >= 0) headless::ShowRow(*item, row);
}

bool IsRowSelected(int id, int row) {
  const ListRow* r = RowOf(id, row);
  return r && r->selected;
}

void SetRowSelected(int id, int row, bool selected) {
  Item* item = ListOf(id);
  ListRow* r = RowOf(id, row);
  if (!r || item->kind != headless::Kind::MultiList) return;
  r->selected = selected;
  if (selected) item->list.current = item->list.anchor = row;
}

int TopRow(int id) {
  const Item* item = ListOf(id);
  return item ? item->list.top : 0;
}

void SetTopRow(int id, int row) {
  Item* item = ListOf(id);
  if (!item || item->kind == headless::Kind::Combo) return;
  item->list.top = row;
  headless::FillList(*item);
}

Rect RowPlace(int id, int row) {
  const Item* item = ListOf(id);
  if (!item || !RowOf(id, row) || item->kind == headless::Kind::Combo) return {};
  const int top = (row - item->list.top) * item->list.rowHeight;
  if (top < 0 || top >= RectHeight(item->place)) return {};
  return {0, top, RectWidth(item->place), top + item->list.rowHeight};
}

void HoldListRedraw(int, bool) {}

}  // namespace platform
