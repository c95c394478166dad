// The hits of Find among the lines in sight, marked while its pane is up.
//
// Only those lines are searched, so that a program of any length costs the same.
#pragma once

namespace morva {

// After anything that decides about them: what is searched for, the text, the lines in sight.
void RefreshFindMarks();

void ResetFindMarks();

}  // namespace morva
