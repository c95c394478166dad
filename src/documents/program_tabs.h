// Program documents: what opens, shows, saves and closes the programs of the tab table.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "documents/tab_table.h"
#include "platform/events.h"

namespace morva {

// Appends a record and reads its companions; does not activate it. NULs in the text, filling
// from a serial line, are left out. Its index, or -1 after the user was told that eight are
// open.
int OpenTab(std::u16string_view path, std::u16string_view text, std::u16string_view title);
// The same for a text that may be kept as it is; it holds no NUL.
int OpenOwnedTab(std::u16string_view path, std::u16string text, std::u16string_view title);
// Whether one more program can be opened. False: the user was told that eight are open.
bool RoomForTab();
void SwitchTab(int index);
// Puts the program that a dialog was about back on the stage. False: it is gone.
bool ReturnToTab(std::uint64_t serial);
// Frees the record and moves the later ones down; no tab is active afterwards.
void RemoveTab(int index);

void NewProgram();
void OpenProgram();
// Opens the file at a full path in a tab, or shows its tab. What cannot be opened is refused in a
// box.
void OpenProgramFile(const std::u16string& path);
// Several, from the command line or dropped on the window. Those that find no free tab, and those
// that cannot be opened, are named in the output.
void OpenProgramFiles(std::span<const std::u16string> paths);
// These ask what has to be asked. False: cancelled, or failed already.
bool SaveProgramCommand();
bool SaveProgramAs();
// Saves by the command and waits for the disk. True: the file holds the program as it is.
bool SaveAndWait();
void CloseProgram();
void SaveAll();
// Ctrl with N, O, S or W: new, open, save, close. False: another key.
bool ProgramKey(const platform::KeyEvent& key);
void ShowSaveMenu();
// The programs that were opened last, below OPEN, with printing and the page of keys; the chosen
// one opens. One that is not there any
// more is said with words and goes off the list.
void ShowRecentMenu();
void ShowTabMenu(int index, int x, int y);
// The dialog for a program file that exists, under this title. False: cancelled.
bool PickProgramToOpen(const char16_t* title, std::u16string& path);

// Frees every record; all tabs closed, nothing asked.
void FreeTabs();
void RegisterDocumentCommands();
void ResetDocuments();

}  // namespace morva
