// Saving: which files are written, and what follows from it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "documents/tab_table.h"

namespace morva {

// Tags the active program, then hands ".features", the program, ".cadmv" and ".platemv" to the
// writer of files, in this order. Asks nothing. Where the path is the program's own, a file that
// another program has changed is left as it is. What became of it is told when it is known: with
// `byUser` by the log or a box, else on the status line. False: nothing was handed over, or it
// failed already.
bool SaveProgram(std::u16string_view path, bool byUser = false);
// The same for the user, without the look at what stands on disk.
bool SaveProgramOver(std::u16string_view path);

// What is said behind a save of a program whose plate takes more than the file can hold of one.
inline constexpr char16_t kPlateLeftOut[] =
    u"Saved program, but not its plate as shown: it takes more than the file can hold.";

// What a save would write of a program's text. Whether it may be written takes the same walk as the
// bytes do.
struct ProgramOutput {
  std::string bytes;
  std::uint64_t revision = 0;  // of the editor, where the program is the active one
};

// Why the autosave has to leave a program alone: a question is still to be answered. Where it need
// not, `output` gets what it would write.
AutosaveHold HoldOf(const ProgramTab& tab, ProgramOutput& output);
// Hands a program to the writer of files for the autosave, also one that is not the active one.
// One that failed is tried again some seconds later. `output` as HoldOf left it.
void AutosaveProgram(ProgramTab& tab, std::u16string_view path, ProgramOutput output);

// A stick or a share may be back in a moment, and the program's tab may have been left meanwhile:
// the autosave runs again some seconds later.
void TryAgainLater();
// From here on no save brings up a box: nobody is there to answer it.
void SaveWithoutBoxes();

// `askAboutChanged` is called when a save that the user asked for found another program's file.
void RegisterSaving(void (*askAboutChanged)(std::uint64_t serial));

}  // namespace morva
