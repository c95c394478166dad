// The line interpreter: one pass over the text, a table of character classes, numbers parsed
// where they stand.
//
// A word acts at once, a line acts at its end. Numbers must equal ParseDecimal's to the last
// bit, so fractions are summed digit by digit from the same places.
#pragma once

#include <string_view>

namespace morva {

// Walks the text line by line (the first NUL ends it) and adds its points to the run under way,
// in millimetres or in inches. Linear in the text, allocates nothing.
void ScanMotion(std::u16string_view text, bool metric);

}  // namespace morva
