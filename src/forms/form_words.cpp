#include "forms/form_words.h"

#include "forms/form_table.h"
#include "platform/control.h"
#include "text/strict_number.h"

namespace morva {

namespace {

// What would be a number in place of the text that stands in the field now.
const char16_t* HintFor(const FormRow& row) {
  double value = 0;
  if (ReadStrict(platform::TextOf(row.id), {.blanksBehind = true}, value) == Misread::TooLarge) {
    return u"It must lie between -1,000,000 and 1,000,000.";
  }
  return row.kind == RowKind::Count ? u"Write a whole number, such as 12."
                                    : u"Write 0.75, not 0,75.";
}

}  // namespace

std::u16string NoNumberWords(const FormRow& row, bool metric) {
  std::u16string words = LabelOf(row, metric) + std::u16string(u" holds no usable number. ");
  words += HintFor(row);
  return words + u" Nothing was changed.";
}

std::u16string ReplacedWords(const FormRow& row, bool metric, std::u16string_view used) {
  std::u16string words = LabelOf(row, metric);
  words += row.kind == RowKind::Count ? u" is not a whole number: " : u" is not a number: ";
  words += used;
  return words + u" was used. Check the code before you run it.";
}

}  // namespace morva
