// What the tab commands do to the table behind the public operations of program_tabs.h.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace morva {

// OpenTab for a text that may be kept as it is; it holds no NUL.
int OpenOwnedTab(std::u16string_view path, std::u16string text, std::u16string_view title);
// Frees the record and moves the later ones down; no tab is active afterwards.
void RemoveTab(int index);
// Where the record with this serial stands now, -1 when it is gone. A dialog may let other
// commands run, so that an index from before it says nothing.
int IndexOfSerial(std::uint64_t serial);
std::uint64_t ActiveSerial();  // 0 when no tab is active
// Puts the program that a dialog was about back on the stage. False: it is gone.
bool ReturnToTab(std::uint64_t serial);
// The title's hook: the active record's dirty mark and its button follow editorDirty.
void TabTitleChanged();

}  // namespace morva
