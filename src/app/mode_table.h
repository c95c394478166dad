// Modes: what the main window says of each, as rows that their rooms hand in.
//
// A row comes with the panel, the builder or the surface that the mode belongs to. The shell
// itself hands in what it shows without one, and in words what is still to come.
#pragma once

#include <span>

#include "app/icon_names.h"
#include "app/router.h"

namespace morva {

// A command that goes to the mode.
struct ModeKey {
  int id = 0;
  RouterStage stage = RouterStage::Click;
};

struct ModeRow {
  int mode = -1;  // WorkspaceMode
  int place = 0;  // in the mode list, from 1 at the top on; 0: it does not stand there
  const char16_t* words = u"";   // in the mode list
  const char16_t* header = u"";  // of the right panel
  const char16_t* help = u"";    // below the panel, or beside the output
  int icon = kIconLink;          // in the mode list
  bool remembers = false;        // the back key leads to where it was entered from
  bool wide = false;             // the work area has no right panel
  bool bare = false;             // it is there without a panel and a surface
  bool coming = false;           // only words of what is still to come; any other row replaces it
  std::span<const ModeKey> keys = {};
  void (*fill)() = nullptr;  // the mode was entered and nothing is laid out yet
};

// The row is copied, what it points to is not. A full table, a row without a mode and a mode that
// has a row already stop the program with words.
void RegisterMode(const ModeRow& row);
int ModeCount();
const ModeRow& ModeAt(int index);
// The row of a mode; one without words where it has none.
const ModeRow& ModeOf(int mode);
// The n-th row of the mode list, null past the last.
const ModeRow* ListedMode(int n);
void ClearModes();

}  // namespace morva
