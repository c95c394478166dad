// The program's path of each program that left the stage, for when it comes back as it left.
#pragma once

namespace morva {

// What stands in the program's path now is the whole of the code editor's program, in these units:
// its feature line index too.
void NoteProgramPath(bool metric);
// Before the program's path is read: that of a program which left the stage is kept.
void KeepLeftPath();
// The path of the code editor's program, with its feature line index, out of what was kept, as
// reading it would give. False: it has to be read; nothing changed.
bool TakeKeptPath(bool metric);
// How many are kept: one for each program that is open, at most, of up to 1.3 MB each.
int KeptPathCount();
void ForgetKeptPaths();

}  // namespace morva
