// The keys of a program's drawings: one a drawing, one for a new one, one that renames.
#pragma once

namespace morva {

// Eight drawing tabs of the active program, index 0 to 7. Each is a command: the set of
// drawings is made at need, and an open name box closes without taking its text.
void SelectDrawingTab(int index);
void AddDrawingTab();
// A two-press toggle: shows the name box, then takes its text.
void RenameDrawingTab();
void CloseDrawingName();  // the name box goes without taking its text

void RegisterDrawingTabs();
void ResetDrawingTabs();

}  // namespace morva
