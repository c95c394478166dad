// The stop: how a fault of the program itself ends, before it costs the user work.
//
// Rooms fill tables when they are joined at start-up. A table that is full and a row that makes
// no sense are such faults. Had the program started all the same, a key would be dead or a
// panel would never show, and nobody would know why.
#pragma once

#include <string_view>

namespace morva {

inline constexpr int kStopExitCode = 3;

// Writes the words to standard error, shows them in a box titled "MORVA" where a window system
// stands, and ends the process with kStopExitCode. Nothing is saved and no destructor runs.
[[noreturn]] void StopProgram(std::u16string_view words);

}  // namespace morva
