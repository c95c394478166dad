// The autosave: after a pause, and at the latest some seconds after the first change.

#include "documents/autosave.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/data_dir.h"
#include "app/hooks.h"
#include "app/limits.h"
#include "app/outlets.h"
#include "app/surfaces.h"
#include "documents/file_names.h"
#include "documents/recovery.h"
#include "documents/save_state.h"
#include "documents/save_words.h"
#include "documents/saving.h"
#include "documents/tab_table.h"
#include "platform/clock.h"
#include "platform/editor.h"
#include "platform/file.h"
#include "platform/timer.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {
namespace {

constexpr int kAutosaveMilliseconds = 700;
// Who types without a pause waits no longer than this.
constexpr std::uint64_t kLongestUnsavedMs = 5000;
constexpr std::size_t kRoomForTitle = 240;  // bytes in the name of a folder
constexpr char16_t kFolderFailed[] = u"Autosave failed: project directory unavailable.";

bool running = false;

// By another program, whose first save may not stand there yet.
bool IsTaken(const std::u16string& home) {
  return std::any_of(tabs, tabs + app.tabCount,
                     [&home](const ProgramTab& tab) { return tab.save.home == home; });
}

// Makes the folder of a program that was never saved; its file there, or an empty text. The
// ticks begin anew with the system and two programs may bear one title, so that a home which
// holds a program already is passed over: nothing that was autosaved is ever replaced.
std::u16string MakeProgramHome(const ProgramTab& tab) {
  const std::u16string name = CleanedTitle(tab.title);
  // A name that a file may bear can be too long for a folder that is named by it and the ticks.
  const bool fits = platform::ToUtf8(name).size() <= kRoomForTitle;
  const std::u16string folders =
      PathInData(u"Projects", fits ? name : ShortTitle(tab.title)) + u"-";
  RemakeDataFolders();
  auto tick = static_cast<std::uint32_t>(platform::TickMilliseconds());
  for (int tries = 0; tries < kMaxProgramHomes; ++tries, ++tick) {
    const std::u16string folder = folders + IntegerText(tick);
    if (platform::MakeFolder(folder) == platform::FolderAnswer::Failed) break;
    const std::u16string file = folder + platform::PathSeparator() + name;
    if (!platform::FileExists(file) && !IsTaken(file)) return file;
  }
  return std::u16string();
}

// Where a program belongs; its home is made where it has none. Empty: the user was told that there
// is none.
std::u16string PathOf(ProgramTab& tab) {
  if (tab.path[0]) return tab.path;
  if (tab.save.home.empty()) KeepHome(tab, MakeProgramHome(tab));
  if (!tab.save.home.empty()) return tab.save.home;
  TellHeld(tab, AutosaveHold::Failed, kFolderFailed);
  TryAgainLater();
  return {};
}

bool waits = false;  // a program, for a save of its own

// True: the program has to wait for a save under way.
bool Autosave(ProgramTab& tab) {
  if (!WaitsForSave(tab)) return false;
  // Whatever comes of it, it is not tried again at every key.
  NoteTried(tab);
  // The old file must not get what was typed since the program was saved under another name.
  if (PathToBe(tab) != std::u16string_view(tab.path)) return true;
  ProgramOutput output;
  const AutosaveHold hold = HoldOf(tab, output);
  if (hold != AutosaveHold::None) {
    TellHeld(tab, hold);
    KeepHeldCopy(tab);
  } else if (const std::u16string path = PathOf(tab); !path.empty()) {
    AutosaveProgram(tab, path, std::move(output));
  } else {
    KeepHeldCopy(tab);
  }
  return false;
}

}  // namespace

void ScheduleAutosave() {
  const ProgramTab* tab = ActiveTab();
  if (!app.dataDirReady || running || !tab) return;
  int pause = kAutosaveMilliseconds;
  if (tab->save.unsavedSince != 0) {
    const std::uint64_t passed = platform::TickMilliseconds() -
                                 std::min(platform::TickMilliseconds(), tab->save.unsavedSince);
    const std::uint64_t left = kLongestUnsavedMs - std::min(kLongestUnsavedMs, passed);
    pause = std::min(pause, static_cast<int>(left));
  }
  platform::StartTimer(platform::kMainWindow, kTimerAutosave, pause);
}

void RunAutosave() {
  platform::StopTimer(platform::kMainWindow, kTimerAutosave);
  if (!app.dataDirReady || running) return;
  running = true;
  StoreWhatIsOwed();  // first: what fails behind this line waits for the next time
  if (const Surface* up = SurfaceUp()) Call(up->storePending);
  waits = false;
  for (int i = 0; i < app.tabCount; ++i) waits = Autosave(tabs[i]) || waits;
  running = false;
  if (waits) platform::StartTimer(platform::kMainWindow, kTimerAutosave, kAutosaveMilliseconds);
}

void SaveOpenFiles() {
  for (int i = 0; i < app.tabCount; ++i) {
    if (tabs[i].path[0]) Autosave(tabs[i]);
  }
}

bool AutosaveWaits() { return waits; }

void ResetAutosave() { running = waits = false; }

}  // namespace morva
