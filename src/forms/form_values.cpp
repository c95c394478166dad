// What the fields say: read, shown, started and converted.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>

#include "forms/form_table.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "text/codetext.h"
#include "text/length_units.h"
#include "text/strict_number.h"

namespace morva {

namespace {

// The text of a field, cut to what a field can hold.
std::u16string FieldText(int id) {
  std::u16string text = platform::TextOf(id);
  if (text.size() > kFieldUnits - 1) text.resize(kFieldUnits - 1);
  return text;
}

double FallbackOf(const Form& form, const FormRow& row) {
  return IsMetric(form) ? row.fallback.mm : row.fallback.inch;
}

bool IsNumber(const FormRow& row) {
  return row.kind == RowKind::Number || row.kind == RowKind::Count;
}

constexpr double kLeastThread = 0.000001;

// Threads an inch and the pitch turn into each other by one division. What is no number, or no
// thread, stays as it was typed, to be refused: a part of "12,7" or "1/2" must not become a number
// that nobody typed.
std::u16string ConvertedText(const FormRow& row, std::u16string_view text, double factor) {
  std::u16string_view number = text;
  number.remove_prefix(std::min(text.find_first_not_of(u" \t"), text.size()));
  double value = 0;
  if (ReadStrict(number, {.blanksBehind = true}, value) != Misread::None) {
    return std::u16string(text);
  }
  if (row.follows != Follows::Thread) return FixedText(value * factor, row.decimals);
  if (!(value > kLeastThread)) return std::u16string(text);
  return FixedText(kMmPerInch / value, row.decimals);
}

// What a field says by the rule. `value` is the number, if it is one.
Misread ReadRow(const FormRow& row, const StrictRule& rule, double& value) {
  const Misread why = ReadStrict(platform::TextOf(row.id), rule, value);
  if (why == Misread::Empty && row.optional) return Misread::None;
  const bool whole = value == std::trunc(value);
  return why == Misread::None && row.kind == RowKind::Count && !whole ? Misread::NotWhole : why;
}

// False: it is no number by the strict rule.
bool ReadNumber(const Form& form, const FormRow& row, const Reading& reading, FormValues& values) {
  const std::u16string text = FieldText(row.id);
  double& value = values.numbers[row.value];
  double strict = value;
  const Misread why = ReadRow(row, reading.rule, strict);
  values.misread[row.value] = why;
  if (reading.strict && !(row.optional && text.empty())) {
    value = strict;
    return why == Misread::None;
  }
  const double fallback = FallbackOf(form, row);
  value = row.kind == RowKind::Number ? ParseDecimal(text, fallback)
                                      : ParseInteger(text, static_cast<int>(fallback));
  // "+5" is a number, but none to the lax rule of counts.
  if (why == Misread::None && value != strict) values.misread[row.value] = Misread::NoNumber;
  return true;
}

// Words that name their unit, after it changed.
void ShowUnitWords(const FormEntry& entry, bool metric) {
  const Form& form = *entry.form;
  for (std::size_t i = 0; i < form.rows.size(); ++i) {
    const FormRow& row = form.rows[i];
    if (!row.labelMm[0]) continue;
    const int index = static_cast<int>(i);
    platform::SetText(LabelId(entry, index), LabelOf(row, metric));
    if (RowOfControl(form, row.id) == index) {
      platform::SetAccessibleName(row.id, NameOf(row, metric, PageOf(form)));
    }
  }
}

}  // namespace

bool IsMetric(const Form& form) { return form.metric && form.metric(); }

const char16_t* LabelOf(const FormRow& row, bool metric) {
  return metric && row.labelMm[0] ? row.labelMm : row.label;
}

const char16_t* NameOf(const FormRow& row, bool metric, int page) {
  const bool named = page < 0 || (row.namePages & PageBit(page)) != 0;
  return row.name[0] && named ? row.name : LabelOf(row, metric);
}

std::u16string StartText(const Form& form, const FormRow& row) {
  if (IsMetric(form) && row.startMm[0]) return row.startMm;
  if (row.follows == Follows::Nothing || !IsMetric(form)) return row.start;
  return ConvertedText(row, row.start, kMmPerInch);
}

void StartForm(const Form& form, int page) {
  for (const FormRow& row : form.rows) {
    if (!OnPage(row, page) || row.filled) continue;
    if (IsField(row.kind)) platform::SetText(row.id, StartText(form, row));
    if (row.kind == RowKind::Choice && !row.rows.empty() && row.picks == 0) {
      platform::SelectRow(row.id, row.chosen);
    }
  }
}

bool ReadForm(const Form& form, int page, const Reading& reading, FormValues& values) {
  values.metric = IsMetric(form);
  values.refused = -1;
  for (std::size_t i = 0; i < form.rows.size(); ++i) {
    const FormRow& row = form.rows[i];
    if (!OnPage(row, page)) continue;
    if (row.kind == RowKind::Choice && row.choice >= 0) {
      values.choices[row.choice] = platform::SelectedRow(row.id);
    }
    if (row.words >= 0) values.words[row.words] = platform::TextOf(row.id);
    if (!IsNumber(row) || row.value < 0) continue;
    if (!ReadNumber(form, row, reading, values)) {
      values.refused = static_cast<int>(i);
      return false;
    }
  }
  return true;
}

void ConvertValues(const Form& form, int page, bool metric, FormValues& values) {
  if (values.metric == metric) return;
  values.metric = metric;
  for (const FormRow& row : form.rows) {
    if (!OnPage(row, page) || !IsNumber(row) || row.value < 0) continue;
    double& value = values.numbers[row.value];
    if (row.follows == Follows::Length) value *= metric ? kMmPerInch : kInchPerMm;
    if (row.follows == Follows::Thread && value > kLeastThread) value = kMmPerInch / value;
  }
}

void ShowChoices(const Form& form, int page, const FormValues& values) {
  for (const FormRow& row : form.rows) {
    if (OnPage(row, page) && row.kind == RowKind::Choice && row.choice >= 0) {
      platform::SelectRow(row.id, values.choices[row.choice]);
    }
  }
}

void ShowForm(const Form& form, int page, const FormValues& values, int decimals) {
  ShowChoices(form, page, values);
  for (const FormRow& row : form.rows) {
    if (!OnPage(row, page)) continue;
    if (row.words >= 0) platform::SetText(row.id, values.words[row.words]);
    if (!IsNumber(row) || row.value < 0) continue;
    int digits = decimals == kRowDecimals ? row.decimals : decimals;
    if (row.kind == RowKind::Count) digits = 0;
    platform::SetText(row.id, FixedText(values.numbers[row.value], digits));
  }
}

double FieldFallback(int id) {
  const FormEntry* entry = nullptr;
  int row = 0;
  if (!FindControl(id, entry, row)) return 0;
  return FallbackOf(*entry->form, entry->form->rows[static_cast<std::size_t>(row)]);
}

std::u16string NumberText(int id, double value) {
  const FormEntry* entry = nullptr;
  int row = 0;
  if (!FindControl(id, entry, row)) return u"";
  return FixedText(value, entry->form->rows[static_cast<std::size_t>(row)].decimals);
}

double FieldNumber(int id) { return FieldNumber(id, FieldFallback(id)); }

double FieldNumber(int id, double fallback) { return ParseDecimal(FieldText(id), fallback); }

std::int32_t FieldCount(int id) {
  return ParseInteger(FieldText(id), static_cast<std::int32_t>(FieldFallback(id)));
}

bool ReadStrictField(int id, double& value) {
  return ReadStrictNumber(platform::TextOf(id), value);
}

void ConvertForms(bool (*metric)(), double factor) {
  for (int n = 0; const FormEntry* entry = EntryAt(n); ++n) {
    const Form* form = entry->form;
    if (!metric || form->metric != metric) continue;
    ShowUnitWords(*entry, factor > 1);
    for (std::size_t i = 0; i < form->rows.size(); ++i) {
      const FormRow& row = form->rows[i];
      if (row.kind == RowKind::View && platform::IsVisible(row.id)) platform::Repaint(row.id);
      // A control of several rows is converted once, as the row of the page that is up says.
      if (row.follows == Follows::Nothing || row.id == 0) continue;
      if (RowOfControl(*form, row.id) != static_cast<int>(i)) continue;
      const std::u16string text = platform::TextOf(row.id);
      if (!text.empty()) platform::SetText(row.id, ConvertedText(row, text, factor));
    }
  }
}

}  // namespace morva
