// Lines that hold plain words where code should stand.
#pragma once

#include <string_view>

namespace morva {

// Whether a line holds what no control reads: outside comments a letter without a number, several
// letters that are no macro statement, or a character of no word. Lines with `#` or brackets are
// not looked at: they are expressions.
bool IsPlainText(std::u16string_view line);

}  // namespace morva
