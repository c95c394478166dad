// What is said of numbers that a form could not read.
#pragma once

#include <string>

#include "forms/form.h"

namespace morva {

// "Cut Z holds no usable number. ..." with the label of the form's unit, and what would be one in
// place of the text that stands in the field now.
std::u16string NoNumberWords(const FormRow& row, bool metric = false);
// That this number counts in place of what stands in the field.
std::u16string ReplacedWords(const FormRow& row, bool metric, std::u16string_view used);

}  // namespace morva
