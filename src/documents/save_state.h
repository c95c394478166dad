// How a program stands to its file: how many changes it has and how many of them the file holds,
// what the file held when it was last seen, and why the autosave waits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "documents/tab_table.h"

namespace morva {

// Whether the user has changed the program since it was read or written. Markers alone are no
// change of the user's; they show the dirty mark and go into the file with the next save.
bool IsTouched(const ProgramTab& tab);

// The same but for what is shown only because the user did not load the file that another program
// has changed.
bool IsWorkedOn(const ProgramTab& tab);

// Whether closing the program would lose anything of the user's: such changes, a plate that no
// file can hold, or a program whose file was erased. Looks at the disk.
bool HoldsUnsaved(const ProgramTab& tab);
// Whether the file holds all changes, those of markers too, but for such a plate.
bool FileFollows(const ProgramTab& tab);

// The user, or what he asked for, changed the active program: the counts and the dirty mark; no
// timer, no autosave.
void MarkModified();
// The same for a program that need not be the active one.
void MarkModified(ProgramTab& tab);
// The same as the first for markers, which nobody asked for.
void MarkTagged();
// A save holds the program as it is now, for the file at `path`. If that is not the program's own,
// the program takes it when the save is done.
void NoteHandedOver(ProgramTab& tab, std::u16string_view path);
// The autosave has been tried: the five seconds begin anew with the next change.
void NoteTried(ProgramTab& tab);
// The save to `path` has failed, so that what it held is still to be saved.
void NoteSaveFailed(ProgramTab& tab, std::u16string_view path);
// The save that gives the program this path has been told. A newer one may still be under way.
void NotePathTaken(ProgramTab& tab, std::u16string_view path);
// The file that the user has chosen for the program, also while it is being written for the first
// time; empty for none.
std::u16string_view PathToBe(const ProgramTab& tab);
// Whether the program has changes of the user's that no save holds.
bool WaitsForSave(const ProgramTab& tab);
// The file holds the program as it was at this count of changes: nothing holds the autosave, and
// the dirty mark follows.
void NoteSaved(ProgramTab& tab, std::uint32_t changes);
// The program is what the file holds, as it was read: no change of the user's is left.
void NoteLoaded(ProgramTab& tab, const DiskState& disk);
void NoteDisk(ProgramTab& tab, const DiskState& disk);
// The companions, in the order of kCompanionCount, as they were read or written.
void NoteBeside(ProgramTab& tab, std::vector<KnownFile> beside);
// Whether the file and its companions hold what they held when they were last read or written. A
// difference stays noted until the program is saved or loaded.
bool DiskHoldsStill(ProgramTab& tab);
void NoteChangedOnDisk(ProgramTab& tab);
// What the tab shows is not what the file of another program holds, and stays: it is a change of
// the user's.
void NoteShownKept(ProgramTab& tab);
// True the first time for each state of these files: offer to load them again.
bool OfferLoading(ProgramTab& tab);
void AcceptLoss(ProgramTab& tab);
void NoteByteOrderMark(ProgramTab& tab, bool present);
// The bytes that the program's file has in front of its text, 0 or 3; null: no program.
std::size_t BytesInFront(const ProgramTab* tab);
// Keeps the reason why the autosave waits. True: it differs from the one before, so the user is
// to be told.
bool NoteHeld(ProgramTab& tab, AutosaveHold reason);
// The live plate is one that no file can hold, or fits again: the dirty mark follows.
void NotePlateLeftOut(ProgramTab& tab, bool leftOut);
void KeepHome(ProgramTab& tab, std::u16string_view home);
// Where the copy stands that is kept while the autosave is held; empty: there is none.
void NoteHeldCopy(ProgramTab& tab, std::u16string_view path);
// The changes that the copy was given; 0: it is to be written anew.
void NoteHeldChanges(ProgramTab& tab, std::uint32_t changes);
void NoteHeldFile(ProgramTab& tab, const platform::FileFigures& written);
// True the first time for each copy: tell where it stands.
bool NoteHeldTold(ProgramTab& tab);

}  // namespace morva
