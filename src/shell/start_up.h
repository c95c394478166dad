// Start-up, the event record and shutdown: where the rooms are joined.
#pragma once

#include <string>
#include <vector>

namespace morva {

// Joins the rooms, makes the window and everything in it, finds the data directory and shows
// the window; then opens the programs at these full paths as OPEN does, up to the eighth tab. 0, or
// the exit code after a message box: 2 when the window could not be made.
int StartApplication(const std::vector<std::u16string>& programs = {});
// Everything as before start-up, for tests: controls, tabs, tables, timers.
void ResetApplication();

}  // namespace morva
