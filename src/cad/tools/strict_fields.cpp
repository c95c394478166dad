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

// A quantity: a part of "0,75", "3/8" or "2.9" is none. An empty field counts as its fallback.
bool TakeCount(const FormRow& row) {
  if (!platform::Exists(row.id) || platform::TextOf(row.id).empty()) return true;
  double value = 0;
  if (ReadStrictField(row.id, value) && value == std::trunc(value)) return true;
  // The most that the pattern takes counts for more.
  return std::fabs(FieldNumber(row.id, 0)) >= kStrictLimit || RefuseField(row);
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
    if ((row.pages & PageBit(page)) == 0) continue;
    double value = 0;
    if (row.kind == RowKind::Number && !TakeFieldNumber(row.id, value)) return false;
    if (row.kind == RowKind::Count && !TakeCount(row)) return false;
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
