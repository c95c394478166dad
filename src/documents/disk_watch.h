// Programs whose files other programs change.
#pragma once

#include <string_view>

namespace morva {

// The tab that shows this file, by this path or by another name or link of the same file; -1.
int TabOfFile(std::u16string_view path);
// Looks at the active program's file. Has another program changed it, a program that the user
// has not touched is offered for loading again; else the status line says once that it is not
// saved. One state of a file is asked about once.
void WatchDisk();
// Puts the file in the place of the active program's text, as one undo step, and its companions
// in the place of the drawings, plates and excluded code. False: it cannot be read; the user was
// told.
bool LoadAgain();

}  // namespace morva
