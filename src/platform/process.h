// The process itself: what must stand before the first window, and after the last.
#pragma once

namespace platform {

// Before everything else. The application reads no arguments; they belong to the toolkit.
void BeginProcess(int argc, char** argv);
// After the loop.
void EndProcess();

}  // namespace platform
