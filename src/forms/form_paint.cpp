// What a form paints around its controls: wells and the lines above its heads.

#include <cstddef>

#include "app/wells.h"
#include "forms/form_table.h"
#include "platform/canvas.h"
#include "platform/window.h"

namespace morva {

namespace {

using platform::Rect;

bool IsWell(const FormLook& look, RowKind kind) {
  switch (kind) {
    case RowKind::Head:
    case RowKind::Note:
    case RowKind::Keys:
    case RowKind::Checks:
      return false;
    case RowKind::Choice:
      return look.framesChoices;
    default:
      return true;
  }
}

// What stands on `parent`.
void PaintForm(platform::Canvas& canvas, const FormEntry& entry, int parent, int focused) {
  const Form& form = *entry.form;
  const FormLook& look = *form.look;
  const Rect ground = platform::CanvasArea(canvas);
  for (std::size_t i = 0; i < form.rows.size(); ++i) {
    const FormRow& row = form.rows[i];
    const RowState& state = StateOf(entry, static_cast<int>(i));
    if (!state.shown || GroundOf(form, row) != parent) continue;
    // No line above the head that begins the form.
    if (row.kind == RowKind::Head && look.headLines && state.top > 0) {
      FillArea(canvas, Rect{look.edge, state.top, ground.right - look.edge, state.top + 1},
               kPanelLine);
    }
    if (IsWell(look, row.kind) && platform::IsVisible(row.id)) {
      FrameWell(canvas, platform::PlaceOf(row.id), focused == row.id);
    }
  }
}

}  // namespace

void PaintForms(platform::Canvas& canvas, int parent) {
  const int focused = platform::FocusedId();
  for (int i = 0; const FormEntry* entry = EntryAt(i); ++i) {
    PaintForm(canvas, *entry, parent, focused);
  }
}

}  // namespace morva
