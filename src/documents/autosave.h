// The autosave after each pause.
#pragma once

namespace morva {

// Arms the autosave 700 ms from now, and at the latest 5 s after the first change that no save
// has taken, where the data directory is ready.
void ScheduleAutosave();
// Saves each program that has unsaved changes over its own file, or into a home of its own under
// "Projects": the active one, and those whose save was put off or failed before their tab was left.
// One that the user has not touched is left alone, and one that a question must be asked about.
void RunAutosave();
// Whether a program was left out of the last run because a Save As of its own was under way.
bool AutosaveWaits();
// The same of the programs that have a file, where the data directory is not ready: for a moment at
// which nobody can be asked.
void SaveOpenFiles();
void ResetAutosave();

}  // namespace morva
