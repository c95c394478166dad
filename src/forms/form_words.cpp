#include "forms/form_words.h"

#include "forms/form_table.h"

namespace morva {

std::u16string NoNumberWords(const FormRow& row, bool metric) {
  return LabelOf(row, metric) +
         std::u16string(u" holds no usable number. Write 0.75, not 0,75. Nothing was changed.");
}

std::u16string ReplacedWords(const FormRow& row, bool metric, std::u16string_view used) {
  std::u16string words = LabelOf(row, metric);
  words += row.kind == RowKind::Count ? u" is not a whole number: " : u" is not a number: ";
  words += used;
  return words + u" was used. Check the code before you run it.";
}

}  // namespace morva
