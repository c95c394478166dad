// What the status line says of the saves of a program, and for how long.
#pragma once

#include <string_view>

#include "documents/tab_table.h"

namespace morva {

// Says on the status line what concerns this program; with its name where another one is active.
void TellAutosave(const ProgramTab& tab, std::u16string_view words);
// The same for words that say that the file holds the program: they go with its next change.
void TellStored(const ProgramTab& tab, std::u16string_view words);
// Says how a transfer ended. For 10 s no words of TellStored take their place, which come by
// themselves a second or two behind it.
void TellResult(std::u16string_view words);
// The program has changed: what the status line says of a save that held all of it goes.
void TakeBackStored(const ProgramTab& tab);

// Says once why the autosave leaves the program alone.
void TellHeld(ProgramTab& tab, AutosaveHold reason);
// The same in words of the caller's.
void TellHeld(ProgramTab& tab, AutosaveHold reason, std::u16string_view words);
// The words for it; empty for AutosaveHold::None.
std::u16string_view HoldWords(AutosaveHold reason);
// Why the autosave leaves the active program alone, for as long as it does; empty where it does
// not.
std::u16string_view HeldWords();
// Whether the status line says that the program is held, whatever holds it now.
bool StatusTellsHold(const ProgramTab& tab);
// Says on the status line why the autosave leaves the active program alone. False: it does not
// leave it alone; then what the line says of the saves of a program names it where another one is
// shown, no more where it is shown itself, and goes where it is closed.
bool TellHoldOfShown();

void ResetSaveWords();

}  // namespace morva
