// The programs that the user opened or named last, and the folder that the dialogs begin in.
//
// Both stand in the settings file, so that they last from run to run.
#pragma once

#include <string>
#include <string_view>

namespace morva {

void LoadRecentFiles();
// The file is the first of the list from now on, and its folder that of the dialogs. A path that
// fits on no line of the settings is left out.
void NoteRecentFile(std::u16string_view path);
// The folder of `path` alone.
void NoteFolderOf(std::u16string_view path);
// Of the last file; empty for none.
std::u16string LastFolder();

int RecentFileCount();
std::u16string RecentFile(int index);  // 0 is the last one; empty behind the end
void DropRecentFile(int index);

void ResetRecentFiles();

}  // namespace morva
