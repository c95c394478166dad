// Names and notes as a library keeps them, so that they come back from the settings file unit by
// unit.
#pragma once

#include <string>
#include <string_view>

namespace morva {

// At most `units` - 1 units, whole characters only, a blank for each control character and line
// break, and U+FFFD for half of a surrogate pair.
std::u16string KeptText(std::u16string_view text, int units);
// A name as a comment of a program holds it: without brackets, as the first ")" would end the
// comment and what follows would be code.
std::u16string NameInComment(std::u16string_view name);

}  // namespace morva
