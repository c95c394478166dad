// Renumbering: every code line gets a fresh N word, counting 10, 20, 30 and so on.
#pragma once

#include <string>
#include <string_view>

namespace morva {

std::u16string RenumberedText(std::u16string_view text);
// Lines that name another line by its number: M97 P, M99 P, GOTO. What stands in comments does not
// count.
int CountLineJumps(std::u16string_view text);
void RenumberProgram();

}  // namespace morva
