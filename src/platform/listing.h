// List boxes and combos: rows of text with a number behind each.
//
// Rows count from 0. Selecting and scrolling from here sends no notification; the user's
// selecting sends kNotifyListSelect, kNotifyListDouble or kNotifyComboSelect; the user's scrolling
// of a list sends kNotifyVScroll, behind the selection that it follows. A click is told as
// kNotifyListSelect, also on the chosen row, then as Events::listClick; a choice in a combo only
// where it is another one. A letter goes to the next row that begins with it. A double click is
// told to the list that took its first press, also when something else lies over the row by the
// second. List rows are drawn by the application through Events::drawItem when `ownerDrawn` is set.
//
// Assistive technology works a row as a click in its middle does, and turns over one of several.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/window.h"

namespace platform {

enum class ListKind { Single, Multi, Combo };

struct ListSpec {
  int id = 0;
  ListKind kind = ListKind::Single;
  const char16_t* accessibleName = u"";
  FontRole font = FontRole::Body;
  int rowHeight = 24;
  bool ownerDrawn = true;
  int parent = kMainWindow;
  bool hidden = false;
  bool takesFocus = true;  // false: the keyboard stays where it is, even at a click
  int wheelRows = 3;       // rows that one notch of the wheel scrolls
};

bool MakeList(const ListSpec& spec);

int AddRow(int id, std::u16string_view text, std::int64_t data = 0);  // its index
void ClearRows(int id);
int RowCount(int id);
void SetRowText(int id, int row, std::u16string_view text);
std::u16string RowText(int id, int row);
std::int64_t RowData(int id, int row);
void SetRowData(int id, int row, std::int64_t data);
// Tells assistive technology of a list's row that the application draws dim that it is disabled.
// It is chosen as any other row.
void SetRowDim(int id, int row, bool dim);
bool IsRowDim(int id, int row);
int SelectedRow(int id);  // the current row, -1 for none
// And no other; it comes into view. A row that does not exist: none.
void SelectRow(int id, int row);
bool IsRowSelected(int id, int row);
void SetRowSelected(int id, int row, bool selected);  // several rows: ListKind::Multi only
// 0 of a combo. The row set is kept within the rows.
int TopRow(int id);
void SetTopRow(int id, int row);
// The rectangle of a row in list pixels, empty when it is not in view. Top and places are those
// of the size that was set last, also of a hidden list.
Rect RowPlace(int id, int row);
void HoldListRedraw(int id, bool hold);

}  // namespace platform
