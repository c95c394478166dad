// Making a form's controls, each once and hidden.

#include <cstddef>
#include <string>

#include "app/commands.h"
#include "app/wells.h"
#include "forms/form_table.h"
#include "forms/sheet.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/listing.h"

namespace morva {

namespace {

using platform::ControlKind;
using platform::FontRole;

void MakeLabel(const FormEntry& entry, int index) {
  const Form& form = *entry.form;
  const FormRow& row = form.rows[static_cast<std::size_t>(index)];
  const FormLook& look = *form.look;
  const bool head = row.kind == RowKind::Head;
  platform::ControlSpec spec;
  spec.id = LabelId(entry, index);
  if (platform::Exists(spec.id)) return;
  spec.kind = ControlKind::Label;
  spec.text = LabelOf(row, IsMetric(form));
  spec.accessibleName = row.kind == RowKind::Note ? row.name : u"";
  spec.font = head ? FontRole::Emphasis : look.labelFont;
  spec.parent = GroundOf(form);
  spec.hidden = true;
  platform::MakeControl(spec);
  platform::Colour colour = head ? kBrightAccent : look.labelColour;
  if (row.kind == RowKind::Note) colour = look.noteColour;
  platform::SetColours(spec.id, {colour, kPanelBackground, true});
}

void MakeField(const Form& form, const FormRow& row) {
  const std::u16string start = StartText(form, row);
  platform::ControlSpec spec;
  spec.id = row.id;
  spec.kind = row.kind == RowKind::Log ? ControlKind::Log : ControlKind::EditLine;
  spec.text = start.c_str();
  spec.accessibleName = NameOf(row, IsMetric(form));
  spec.font = row.wide || row.kind == RowKind::Log ? form.look->listFont : form.look->fieldFont;
  spec.parent = GroundOf(form);
  spec.hidden = true;
  spec.readOnly = row.readOnly;
  platform::MakeControl(spec);
  platform::SetColours(spec.id, kWellColours);
  if (row.kind != RowKind::Log && row.limit > 0) platform::SetTextLimit(spec.id, row.limit);
}

void MakeRows(const Form& form, const FormRow& row) {
  platform::ListSpec spec;
  spec.id = row.id;
  spec.kind = platform::ListKind::Combo;
  if (row.kind == RowKind::List) spec.kind = platform::ListKind::Single;
  if (row.kind == RowKind::Multi) spec.kind = platform::ListKind::Multi;
  spec.accessibleName = NameOf(row, IsMetric(form));
  spec.font = form.look->listFont;
  spec.rowHeight = form.look->listRowHeight;
  spec.ownerDrawn = false;
  spec.parent = GroundOf(form);
  spec.hidden = true;
  platform::MakeList(spec);
  for (std::size_t i = 0; i < row.rows.size(); ++i) {
    platform::AddRow(row.id, row.rows[i], static_cast<std::int64_t>(i));
  }
  if (!row.rows.empty()) platform::SelectRow(row.id, row.chosen);
}

void MakePreview(const Form& form, const FormRow& row) {
  platform::EditorSpec spec;
  spec.id = row.id;
  spec.accessibleName = NameOf(row, IsMetric(form));
  spec.text = kEditorText;
  spec.background = kOutputBackground;
  spec.parent = GroundOf(form);
  spec.hidden = true;
  spec.readOnly = true;
  platform::MakeEditor(spec);
}

void MakeView(const Form& form, const FormRow& row) {
  platform::ViewSpec spec;
  spec.id = row.id;
  spec.className = row.className;
  spec.accessibleName = NameOf(row, IsMetric(form));
  spec.background = kOutputBackground;
  spec.takesFocus = true;
  spec.parent = GroundOf(form, row);
  platform::MakeView(spec);
  platform::SetVisible(spec.id, false);
}

void MakeChecks(const Form& form, const FormRow& row) {
  for (int i = 0; i < KeyCount(row); ++i) {
    MakeCommandCheck(row.keys[i], GroundOf(form), form.look->labelFont, true);
    platform::SetColours(row.keys[i], {kMainText, kPanelBackground, true});
  }
}

void MakeKeys(const Form& form, const FormRow& row) {
  for (int i = 0; i < KeyCount(row); ++i) {
    if (platform::Exists(row.keys[i])) continue;
    MakeCommandKey(row.keys[i], GroundOf(form, row), form.look->keyFont, true);
  }
}

void MakeControlOf(const Form& form, const FormRow& row) {
  switch (row.kind) {
    case RowKind::Number:
    case RowKind::Count:
    case RowKind::Words:
    case RowKind::Log:
      return MakeField(form, row);
    case RowKind::Choice:
    case RowKind::List:
    case RowKind::Multi:
      return MakeRows(form, row);
    case RowKind::Preview:
      return MakePreview(form, row);
    case RowKind::View:
      return MakeView(form, row);
    default:
      return;
  }
}

}  // namespace

void MakeForm(const Form& form) {
  const FormEntry* entry = EntryOf(form);
  if (!entry) return;
  if (form.sheet) MakeSheet(*form.sheet);
  for (std::size_t i = 0; i < form.rows.size(); ++i) {
    const FormRow& row = form.rows[i];
    const bool words = row.kind == RowKind::Head || row.kind == RowKind::Note;
    if (words || HasLabel(form, row)) MakeLabel(*entry, static_cast<int>(i));
    if (!words && row.id != 0 && !platform::Exists(row.id)) MakeControlOf(form, row);
    if (row.kind == RowKind::Checks) {
      if (!platform::Exists(row.keys[0])) MakeChecks(form, row);
    } else {
      MakeKeys(form, row);
    }
  }
}

}  // namespace morva
