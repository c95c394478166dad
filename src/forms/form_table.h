// What the files of this room share: the registered forms and what is shown of each.
#pragma once

#include "forms/form.h"

namespace morva {

struct FormEntry {
  const Form* form = nullptr;
  int firstRow = 0;  // of its rows in the tables below
  int page = 0;      // placed last
};

// Null for a form that nobody registered.
const FormEntry* EntryOf(const Form& form);
// Notes the page that was placed last.
void SetPlacedPage(const FormEntry& entry, int page);
// The n-th entry, null past the last.
const FormEntry* EntryAt(int index);

struct RowState {
  bool shown = false;
  bool keys = false;  // its keys are shown with it
  int top = -1;       // pixels of the row on its parent while it is shown
};
RowState& StateOf(const FormEntry& entry, int row);

// The view that the form's controls stand on, and that of a row, which may be a fixed one.
int GroundOf(const Form& form);
int GroundOf(const Form& form, const FormRow& row);
// Id of a row's label, or of the Head or Note itself.
int LabelId(const FormEntry& entry, int row);
inline bool IsField(RowKind kind) {
  return kind == RowKind::Number || kind == RowKind::Count || kind == RowKind::Words;
}
bool IsMetric(const Form& form);
// The row's label, and its name for assistive technology, in one unit; below 0: on any page.
const char16_t* LabelOf(const FormRow& row, bool metric);
const char16_t* NameOf(const FormRow& row, bool metric, int page = -1);
// What a field says when it is made, in the form's unit.
std::u16string StartText(const Form& form, const FormRow& row);
// Whether the row's words stand in a label of their own beside or above its control.
bool HasLabel(const Form& form, const FormRow& row);
inline bool OnPage(const FormRow& row, int page) { return (row.pages & PageBit(page)) != 0; }
inline bool HasKeys(const FormRow& row, int page) {
  return OnPage(row, page) && (row.keyPages & PageBit(page)) != 0;
}
inline int KeyCount(const FormRow& row) {
  int count = 0;
  while (count < kMaxRowKeys && row.keys[count] != 0) ++count;
  return count;
}
// The form and row of a control: a row that is shown before one that is not. False: none.
bool FindControl(int id, const FormEntry*& entry, int& row);

}  // namespace morva
