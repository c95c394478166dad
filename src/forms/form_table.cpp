#include "forms/form_table.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/join_table.h"
#include "app/outlets.h"
#include "app/panels.h"
#include "app/router.h"
#include "app/stop.h"
#include "forms/sheet.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "text/codetext.h"

namespace morva {

namespace {

FormEntry entries[kMaxForms];
JoinTable entryFill{u"forms", kMaxForms};
RowState states[kMaxFormRows];
JoinTable rowFill{u"rows of forms", kMaxFormRows};

bool Holds(const FormRow& row, int id) {
  if (row.id == id) return true;
  for (const int key : row.keys) {
    if (key == id) return true;
  }
  return false;
}

// The pages where the row shows this control.
unsigned PagesWith(const FormRow& row, int id) {
  if (row.id == id) return row.pages;
  return Holds(row, id) ? row.pages & row.keyPages : 0;
}

void Stop(int id, const char16_t* where) {
  StopProgram(u"MORVA cannot start. Control " + IntegerText(id) + where);
}

bool IsKeyOn(const Form& form, int id) {
  const int row = RowOfControl(form, id);
  return row >= 0 && form.rows[static_cast<std::size_t>(row)].kind == RowKind::Keys;
}

// Of forms that share a sheet one is up at a time, so they may share push buttons as well.
bool MayShare(const Form& one, const Form& other, int id) {
  return one.sheet && one.sheet == other.sheet && IsKeyOn(one, id) && IsKeyOn(other, id);
}

// One control must not be asked for by two forms, nor by two rows that are up at once.
void CheckControl(const Form& form, std::size_t row, int id) {
  if (id == 0) return;
  for (int i = 0; i < entryFill.count; ++i) {
    const Form& other = *entries[i].form;
    if (RowOfControl(other, id) < 0 || MayShare(form, other, id)) continue;
    Stop(id, u" stands on two forms.");
  }
  for (std::size_t i = 0; i < row; ++i) {
    if ((PagesWith(form.rows[i], id) & PagesWith(form.rows[row], id)) != 0) {
      Stop(id, u" stands on two rows of one page.");
    }
  }
}

void CheckControls(const Form& form) {
  for (std::size_t i = 0; i < form.rows.size(); ++i) {
    CheckControl(form, i, form.rows[i].id);
    for (const int key : form.rows[i].keys) CheckControl(form, i, key);
  }
}

// The page that a list picks, -1 for a form without such a list.
int PickedPage(const Form& form) {
  for (const FormRow& row : form.rows) {
    if (row.picks > 0) return std::clamp(platform::SelectedRow(row.id), 0, row.picks - 1);
  }
  return -1;
}

// The command of Enter in a row's control, 0 for none.
int EnterOf(const Form& form, const FormRow& row) {
  return row.enter == 0 && IsField(row.kind) ? form.enter : row.enter;
}

// Enter and the page keys are for what is typed into and for keys, not for lists.
bool TakesPageKeys(const FormRow& row, int id) { return IsField(row.kind) || row.id != id; }

}  // namespace

void RegisterForm(const Form& form) {
  if (EntryOf(form)) return;
  CheckControls(form);
  entries[NextRow(entryFill)] = {&form, rowFill.count};
  for (std::size_t i = 0; i < form.rows.size(); ++i) states[NextRow(rowFill)] = RowState();
}

const Form* FormAt(int index) { return index < entryFill.count ? entries[index].form : nullptr; }

void ResetForm(const Form& form) {
  const FormEntry* entry = EntryOf(form);
  if (!entry) return;
  for (std::size_t i = 0; i < form.rows.size(); ++i) {
    StateOf(*entry, static_cast<int>(i)) = RowState();
  }
  if (form.sheet) ResetSheet(*form.sheet);
}

void ResetForms() {
  entryFill.count = 0;
  rowFill.count = 0;
  for (RowState& state : states) state = RowState();
  ResetSheets();
}

const FormEntry* EntryOf(const Form& form) {
  for (int i = 0; i < entryFill.count; ++i) {
    if (entries[i].form == &form) return &entries[i];
  }
  return nullptr;
}

const FormEntry* EntryAt(int index) { return index < entryFill.count ? &entries[index] : nullptr; }

void SetPlacedPage(const FormEntry& entry, int page) { entries[&entry - entries].page = page; }

RowState& StateOf(const FormEntry& entry, int row) { return states[entry.firstRow + row]; }

int GroundOf(const Form& form) { return form.sheet ? form.sheet->paper.id : form.parent; }

int GroundOf(const Form& form, const FormRow& row) {
  return form.sheet && row.fixed ? form.sheet->parent : GroundOf(form);
}

int LabelId(const FormEntry& entry, int row) {
  const Form& form = *entry.form;
  const FormRow& r = form.rows[static_cast<std::size_t>(row)];
  if ((r.kind == RowKind::Head || r.kind == RowKind::Note) && r.id != 0) return r.id;
  return form.firstLabel != 0 ? form.firstLabel + row : kIdFormLabelFirst + entry.firstRow + row;
}

bool HasLabel(const Form& form, const FormRow& row) {
  if (row.wide || !row.label[0] || form.look->labels == Labels::None) return false;
  switch (row.kind) {
    case RowKind::Choice:
      return form.look->choiceLabels;
    case RowKind::Number:
    case RowKind::Count:
    case RowKind::Words:
      return true;
    case RowKind::List:
    case RowKind::Multi:
    case RowKind::Log:
    case RowKind::View:
      return form.look->labels == Labels::Above;
    default:
      return false;
  }
}

bool IsRowShown(const Form& form, int row) {
  const FormEntry* entry = EntryOf(form);
  return entry && StateOf(*entry, row).shown;
}

int PageOf(const Form& form) {
  if (form.page) return form.page();
  const int picked = PickedPage(form);
  if (picked >= 0) return picked;
  const FormEntry* entry = EntryOf(form);
  return entry ? entry->page : 0;
}

int RowOfControl(const Form& form, int id) {
  int first = -1;
  int shown = -1;
  int up = -1;
  int page = -1;
  for (std::size_t i = form.rows.size(); i-- > 0;) {
    if (!Holds(form.rows[i], id)) continue;
    if (page < 0) page = PageOf(form);
    first = static_cast<int>(i);
    if (IsRowShown(form, first)) shown = first;
    if ((PagesWith(form.rows[i], id) & PageBit(page)) != 0) up = first;
  }
  if (up >= 0) return up;
  return shown >= 0 ? shown : first;
}

bool FindControl(int id, const FormEntry*& entry, int& row) {
  if (id == 0) return false;
  entry = nullptr;
  for (int i = 0; i < entryFill.count; ++i) {
    const int found = RowOfControl(*entries[i].form, id);
    if (found < 0) continue;
    const bool shown = StateOf(entries[i], found).shown;
    if (entry && !shown) continue;
    entry = &entries[i];
    row = found;
    if (shown) return true;
  }
  return entry != nullptr;
}

int FormOrder(const Form& form, int* ids, int capacity) {
  int count = 0;
  const auto put = [&](int id) {
    for (int i = 0; i < count; ++i) {
      if (ids[i] == id) return;
    }
    if (id == 0) return;
    if (count >= capacity) StopFull(u"tab stops", capacity);
    ids[count++] = id;
  };
  // What is fixed stands below all that scrolls.
  for (const bool fixed : {false, true}) {
    for (const FormRow& row : form.rows) {
      if (row.fixed != fixed) continue;
      if (row.kind != RowKind::Head && row.kind != RowKind::Note) put(row.id);
      for (const int key : row.keys) put(key);
    }
  }
  return count;
}

int FieldCommand(int id) {
  const FormEntry* entry = nullptr;
  int row = 0;
  if (!FindControl(id, entry, row)) return 0;
  const FormRow& r = entry->form->rows[static_cast<std::size_t>(row)];
  return r.id == id ? EnterOf(*entry->form, r) : 0;
}

bool FormKey(int id, const platform::KeyEvent& key) {
  if (key.ctrl || key.alt) return false;
  const FormEntry* entry = nullptr;
  int row = 0;
  if (!FindControl(id, entry, row)) return false;
  const Form& form = *entry->form;
  const FormRow& r = form.rows[static_cast<std::size_t>(row)];
  const bool down = key.key == platform::kKeyPageDown;
  if ((down || key.key == platform::kKeyPageUp) && form.sheet && TakesPageKeys(r, id)) {
    PageSheet(*form.sheet, down ? 1 : -1);
    return true;
  }
  const int enter = r.id == id ? EnterOf(form, r) : 0;
  if (key.key == platform::kKeyEnter && enter != 0) {
    const bool selects = form.look->selectsAfterEnter;
    RouteCommand(enter, platform::kNotifyClick);
    // The field may show its number anew: the next one takes its place, not a place within it.
    if (selects && platform::FocusedId() == id) platform::SelectAllText(id);
    return true;
  }
  if (key.key == platform::kKeyEscape && form.escape != 0) {
    RouteCommand(form.escape, platform::kNotifyClick);
    return true;
  }
  return false;
}

void FormNotified(int id, int notification) {
  if (notification != platform::kNotifyEditChange && notification != platform::kNotifyComboSelect &&
      notification != platform::kNotifyListSelect) {
    return;
  }
  const FormEntry* entry = nullptr;
  int row = 0;
  if (!FindControl(id, entry, row)) return;
  const Form& form = *entry->form;
  const FormRow& said = form.rows[static_cast<std::size_t>(row)];
  if (said.id == id && said.picks > 0) {
    StartForm(form, PageOf(form));
    RelayPanels();
  }
  for (const FormRow& r : form.rows) {
    if (r.kind == RowKind::View) platform::Repaint(r.id);
  }
  if (form.changed) form.changed(id);
}

void FormFocusChanged(int id, bool gained) {
  const FormEntry* entry = nullptr;
  int row = 0;
  if (!FindControl(id, entry, row)) return;
  const Form& form = *entry->form;
  const FormRow& r = form.rows[static_cast<std::size_t>(row)];
  if (r.id == id && r.help[0]) {
    if (gained) {
      ShowStatus(r.help);
    } else if (SameFolded(app.statusText, r.help)) {
      // The hint goes with the keyboard, into whatever room.
      ShowStanding();
    }
  }
  if (!form.sheet) return;
  // A press of the pointer hits what it points at: the form must not move away under it.
  if (gained && platform::IdUnderPointer() != id) ShowFormControl(id);
  platform::Repaint(form.sheet->paper.id);
}

void ShowFormControl(int id) {
  const FormEntry* entry = nullptr;
  int row = 0;
  if (!FindControl(id, entry, row) || !entry->form->sheet || !platform::IsVisible(id)) return;
  if (entry->form->rows[static_cast<std::size_t>(row)].fixed) return;
  ShowOnSheet(*entry->form->sheet, platform::PlaceOf(id));
}

}  // namespace morva
