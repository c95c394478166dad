// Characters that a program file cannot hold and that are put back, where they matter, once the
// file is opened again: nothing is lost with them.
#pragma once

#include <cstddef>
#include <string_view>

namespace morva {

// Whether the character of `text` at `at` is one of those of a room's generated code.
using RestoredTest = bool (*)(std::u16string_view text, std::size_t at);
// The room that knows; null: nobody does.
void SetRestoredTest(RestoredTest test);
// False as long as nobody knows.
bool IsRestored(std::u16string_view text, std::size_t at);

}  // namespace morva
