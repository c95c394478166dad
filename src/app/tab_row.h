// The keys of a workspace's tabs: one for each drawing or plate of the program that is shown.
#pragma once

#include <span>
#include <string>

namespace morva {

// Shows the first keys of a range of `most` ids under these names, the active one as chosen, and
// hides the others.
void ShowTabRow(int firstId, int most, std::span<const std::u16string> names, int active);

}  // namespace morva
