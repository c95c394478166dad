#include "cad/tools/strict_fields.h"

#include <cmath>
#include <string>

#include "cad/model/sketch_words.h"
#include "forms/form_words.h"
#include "platform/control.h"
#include "platform/window.h"
#include "text/strict_number.h"

namespace morva {

namespace {

const FormRow& RowAt(int index) { return kCadForm.rows[static_cast<std::size_t>(index)]; }

bool RefuseField(const FormRow& row) {
  SetSketchStatus(NoNumberWords(row).c_str());
  if (platform::IsVisible(row.id)) {
    platform::SetFocusTo(row.id);
    platform::SelectAllText(row.id);
  }
  return false;
}

}  // namespace

bool TakeFieldNumber(int id, double& value) {
  if (!platform::Exists(id) || platform::TextOf(id).empty()) return true;
  if (ReadStrictField(id, value)) return true;
  // Too large a number is refused by what it would make.
  const double large = FieldNumber(id, 0);
  if (std::fabs(large) >= kStrictLimit) {
    value = large;
    return true;
  }
  const int row = RowOfControl(kCadForm, id);
  return row >= 0 && RefuseField(RowAt(row));
}

bool TakePage(int page, FormValues& values) {
  for (const FormRow& row : kCadForm.rows) {
    double value = 0;
    const bool read = row.kind == RowKind::Number && (row.pages & PageBit(page)) != 0;
    if (read && !TakeFieldNumber(row.id, value)) return false;
  }
  return ReadForm(kCadForm, page, Reading::Lax, values);
}

bool LengthsAreNumbers() {
  for (const FormRow& row : kCadForm.rows) {
    double value = 0;
    const bool length = row.kind == RowKind::Number && row.follows == Follows::Length;
    if (length && !TakeFieldNumber(row.id, value)) return false;
  }
  return true;
}

}  // namespace morva
