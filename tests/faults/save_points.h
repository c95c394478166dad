// Saves of every kind by a real process, which is killed or refused at each of its file calls.
//
// A run is one forked process: it opens and types, then saves with one deed set, then looks at
// what stands on disk and at what its user was told, and saves once more. A violation is what
// must never be: a file that is neither the old nor the new one, a later file new before an
// earlier one, a program beside the excluded code of another, a stray, a lost handle, "saved" where
// it is not, silence where it is not saved, a further save that fails.
#pragma once

#include <string>
#include <vector>

namespace faults {

struct Tally {
  long points = 0;  // at which a process was killed
  long errors = 0;  // that were injected
  std::vector<std::string> violations;
};

// Of all runs every `of`-th is done, beginning with number `first`.
struct Share {
  unsigned first = 0;
  unsigned of = 1;
};

// Starts the workbench in a fresh folder; once in a process, which has a single thread and keeps
// to that, because every run is forked from it.
void Begin();
void End();

Tally RunSavePoints(const Share& share);

// A user types a key each 400 ms for a minute, on a disk of 300 ms a flush, and the process is
// killed behind a key. What is lost is at most what was typed in the last 7 s.
Tally RunTypingPoints(const Share& share);

}  // namespace faults
