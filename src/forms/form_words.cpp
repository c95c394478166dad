#include "forms/form_words.h"

#include "forms/form_table.h"
#include "platform/control.h"
#include "text/strict_number.h"

namespace morva {

namespace {

// Digits and a point, and yet beyond what a form takes.
bool IsTooLarge(const FormRow& row) {
  double value = 0;
  return ReadStrict(platform::TextOf(row.id), {.blanksBehind = true}, value) == Misread::TooLarge;
}

}  // namespace

std::u16string NoNumberWords(const FormRow& row, bool metric) {
  std::u16string words = LabelOf(row, metric) + std::u16string(u" holds no usable number. ");
  words += IsTooLarge(row) ? u"It must be below 1,000,000." : u"Write 0.75, not 0,75.";
  return words + u" Nothing was changed.";
}

std::u16string ReplacedWords(const FormRow& row, bool metric, std::u16string_view used) {
  std::u16string words = LabelOf(row, metric);
  words += row.kind == RowKind::Count ? u" is not a whole number: " : u" is not a number: ";
  words += used;
  return words + u" was used. Check the code before you run it.";
}

}  // namespace morva
