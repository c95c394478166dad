// What a new program begins with.
#pragma once

#include <string>
#include <string_view>

namespace morva {

// The unit's line and what follows it, up to where the user's code goes; lines end in CR LF.
std::u16string NewProgramLines(bool metric);
// The same behind a line that names the file.
std::u16string NewProgramText(std::u16string_view title, bool metric);

}  // namespace morva
