// Saving a program with its companions, and the autosave after each pause.
#pragma once

#include <string_view>

namespace morva {

// Tags, then writes ".features", the program, ".cadmv" and ".platemv" in this order, each
// atomically. False at the first failure; files already written stay.
bool SaveProgram(std::u16string_view path);
// Arms the autosave 700 ms from now, where the data directory is ready.
void ScheduleAutosave();
// Saves the active program over its own file, or into a home of its own under "Projects".
void RunAutosave();
void ResetAutosave();

}  // namespace morva
