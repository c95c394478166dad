// The folder "Recovery" of the data directory: what could be kept nowhere else.
#pragma once

#include <string>
#include <string_view>

#include "documents/saver.h"
#include "documents/tab_table.h"

namespace morva {

// Hands the text, as UTF-8, to the writer of files, under the title and the tick; `told` hears what
// became of it. False: there is no data directory, or no name is free there.
bool KeepInRecovery(std::u16string_view title, std::u16string_view text,
                    void (*told)(const SaveResult& result));
// Hands a whole program, as its record holds it, to the writer of files: text, excluded code,
// drawings and plates. They go over the copy that is held already, where there is one. False: there
// is no data directory, or no name is free there.
bool KeepProgramInRecovery(const ProgramTab& tab, std::u16string& path);
// The same into files of their own, and waits until they are written. False: they are not.
bool KeepProgramNow(const ProgramTab& tab, std::u16string& path);

// While the autosave has to leave a program alone: one copy of it, written over when there is more
// to keep. The log names it once, when it stands.
void KeepHeldCopy(ProgramTab& tab);
// The program's own file holds everything: the copy goes.
void DropHeldCopy(ProgramTab& tab);
// A program was opened: the log names the copies in which an earlier run left changes of it.
void TellKeptCopies(const ProgramTab& tab);
void ResetRecovery();

}  // namespace morva
