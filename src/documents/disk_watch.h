// Notices that another program changed an open file, and offers to load it again.
#pragma once

#include <string_view>

#include "documents/tab_table.h"

namespace morva {

// Index of the tab that shows this file, under this path or another name or link of it, or that a
// save under way gives this path; -1 for none.
int TabOfFile(std::u16string_view path);
// Looks whether another program has changed the active program's file. If so, and the user has
// not touched the program, a box offers to load it again, once for each state of the file. A
// program that the user has touched is left as it is; the status line says once that it is not
// saved.
void WatchDisk();
// Asks whether to load the active program's file again, and does it. Where the user keeps what he
// sees, that is the only version of it from here on: see KeepShown.
void OfferToLoadAgain();
// Another program has changed the file, and what the tab holds stays: no file holds that any more.
// It counts as changed by the user, is held, and has a copy in "Recovery".
void KeepShown(ProgramTab& tab);
// Puts the file in the place of the active program's text, as one undo step, and its companions
// in the place of drawings, plates and excluded code. What the user had changed is kept in
// "Recovery" first, and the log tells where; a box asks where that fails. False: the file cannot be
// read, as the user was told, or the user keeps the program as it is.
bool LoadAgain();

}  // namespace morva
