// What a program file cannot hold of a text.
#pragma once

#include <string_view>

#include "documents/file_text.h"

namespace morva {

// As MeasureOutput, for a file that is opened again: characters of generated code that is known as
// generated behind that, too, are not lost. What the user wrote or changed by hand is.
OutputFigures MeasureFile(std::u16string_view text);

}  // namespace morva
