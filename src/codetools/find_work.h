// What the find pane's keys do to the program; the pane itself is find_pane.
#pragma once

#include <string>

namespace morva {

// The fields as they are used: at most 255 units each.
std::u16string FindField();
std::u16string ReplaceField();
void ResetFindWork();

}  // namespace morva
