// The program changed: what follows a change of the active program, in one place.
//
// A room that writes into the program or its drawings says here what has to follow. It arms no
// timer of its own and asks for no path itself.
#pragma once

#include <string_view>

namespace morva {

inline constexpr int kChangeRefreshMs = 150;  // the text refresh behind an edit

struct ProgramChange {
  bool autosave = false;     // after the pause of an autosave, where the data folder is ready
  int refreshMs = 0;         // the text refresh, so many milliseconds from now; 0: as it stands
  bool rebuildPath = false;  // the toolpath, at once
  std::u16string_view logged = {};  // a line of the output log, empty: none
};

// Marks the active program as modified, then does what `change` asks for in the order of its
// fields. Without an open program nothing is marked but the title.
void ProgramChanged(const ProgramChange& change);

}  // namespace morva
