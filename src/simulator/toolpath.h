// The path of an owner out of program text, and the program's out of the active editor.
#pragma once

#include <cstdint>
#include <string_view>

#include "simulator/shown_path.h"

namespace morva {

// Fills the owner's path, puts its play head to the end and clears its picks. Isolating and
// hiding leave lines out of the program's path alone; for that one the feature table must
// describe `text`.
void ExtractPathOf(PathOwner owner, std::u16string_view text, bool metric);
// The same for the program's path.
void ExtractToolpath(std::u16string_view text, bool metric);

// Reads the active editor and refreshes the program's path, its ghosts and its envelope. The
// path of another owner goes on undisturbed where that is shown.
void RebuildToolpath();

// The switch "Machine motion": the program's path is read anew and shown from its end on, as it is
// written or as the control runs it. A builder's path that is shown stays.
void SwitchMachineMotion(bool on);

// The text was tagged: lines moved, moves did not. The program's path is read again, and its head,
// play and view go on where they stood. Picks go on too where the path was that of the text as
// it stood at `revisionBefore`, the editor's revision before the tag.
void FollowTag(std::uint64_t revisionBefore);

// Whether the editor's text is another one than the program's path was read from.
bool PathIsStale();
// The text changed: the view says so where it does not yet.
void ShowStalePath();

// From now on the view shows the owner's path, with its head, speed, angles, zoom and stock.
// Only the path that is shown plays: the one that is left halts where its head stands. A turn of
// the view that is under way ends where it is. Nothing happens where the owner is shown already.
void ShowPathOf(PathOwner owner);

// Writes on the play key what a press leads to. The user's own pause has a caption of its own.
void ShowPlayWords(bool paused = false);

// Every path empty, the program's shown, switches as at the start. Generations go on counting.
void ResetSimulator();

}  // namespace morva
