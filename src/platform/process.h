// The process itself: what must stand before the first window, and after the last.
#pragma once

#include <string_view>

namespace platform {

// Before everything else. What the toolkit understands of the arguments is taken out of them.
void BeginProcess(int& argc, char** argv);
// After the loop.
void EndProcess();

// Ends the process at once, for a fault of the program itself. The words go to standard error
// and, where a window system stands, into a box that waits for the user. No destructor runs.
[[noreturn]] void StopProcess(std::u16string_view title, std::u16string_view words, int exitCode);

}  // namespace platform
