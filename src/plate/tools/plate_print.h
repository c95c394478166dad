// Printing the plate at 1:1, as a template to lay on stock.
#pragma once

namespace morva {

inline constexpr char16_t kPrinted[] =
    u"Printed at true 1:1 scale. Verify the paper template with a ruler/caliper before "
    u"transferring hole locations to stock.";

// Asks for a printer and prints the live plate on one page, never shrunk. What stands in the way is
// told in a box, and nothing is printed then; only a cancelled dialog says nothing.
void PrintPlate();

}  // namespace morva
