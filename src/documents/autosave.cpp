// Saving a program with its companions, and the autosave.
//
// The stored code of excluded blocks goes out before the text that refers to it, so that a cut
// between two files leaves entries too many and none too few.

#include "documents/autosave.h"

#include <cstdint>
#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/limits.h"
#include "app/outlets.h"
#include "app/surfaces.h"
#include "documents/disabled_code.h"
#include "documents/feature_blocks.h"
#include "documents/file_text.h"
#include "documents/program_information.h"
#include "documents/tab_models.h"
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
constexpr char16_t kWriteFailed[] = u"Autosave failed. Changes remain unsaved; use Save As.";
constexpr char16_t kFolderFailed[] = u"Autosave failed: project directory unavailable.";

bool running = false;

bool SaveExcludedCode(const std::u16string& program, const ProgramTab& tab) {
  std::string bytes;
  return WriteDisabledCode(tab.disabledCode, bytes) &&
         SaveFileAtomic(program + u".features", bytes);
}

std::u16string CleanedTitle(std::u16string_view title) {
  std::u16string name(title);
  for (char16_t& unit : name) {
    if (std::u16string_view(u"\"*/:<>?\\|").find(unit) != std::u16string_view::npos) unit = u'_';
  }
  return name;
}

// Makes the folder of a program that was never saved; its file there, or an empty text. The
// ticks begin anew with the system and two programs may bear one title, so that a home which
// holds a program already is passed over: nothing that was autosaved is ever replaced.
std::u16string MakeProgramHome(const ProgramTab& tab) {
  const std::u16string name = CleanedTitle(tab.title);
  const char16_t separator = platform::PathSeparator();
  std::u16string projects = app.dataDir;
  projects += separator;
  projects += u"Projects";
  projects += separator;
  auto tick = static_cast<std::uint32_t>(platform::TickMilliseconds());
  for (int tries = 0; tries < kMaxProgramHomes; ++tries, ++tick) {
    const std::u16string folder = projects + name + u"-" + IntegerText(tick);
    if (platform::MakeFolder(folder) == platform::FolderAnswer::Failed) break;
    const std::u16string file = folder + separator + name;
    if (!platform::FileExists(file)) return file;
  }
  return std::u16string();
}

// Saves the active program where it belongs. False: the user was told why.
bool SaveActive(const ProgramTab& tab) {
  if (app.activePath[0]) {
    if (SaveProgram(app.activePath)) return true;
    ShowStatus(kWriteFailed);
    return false;
  }
  const std::u16string file = MakeProgramHome(tab);
  if (file.empty()) {
    ShowStatus(kFolderFailed);
    return false;
  }
  if (!SaveProgram(file)) {
    ShowStatus(kWriteFailed);
    return false;
  }
  NameActiveProgram(file);
  return true;
}

}  // namespace

bool SaveProgram(std::u16string_view path) {
  // Without an editor there is no text, and an empty file must not replace a program.
  if (!platform::Exists(kIdEditor)) return false;
  const std::u16string program(path);
  // Markers that are being undone stay out: a save comes in the middle of it by itself.
  TagAfterEdit();
  ProgramTab* tab = ActiveTab();
  if (tab && !SaveExcludedCode(program, *tab)) return false;
  if (!SaveFileAtomic(program, NormaliseOutputText(platform::EditorText(kIdEditor), false))) {
    return false;
  }
  StashActiveWorkspace();
  return !tab || SaveModels(program, *tab);
}

void ScheduleAutosave() {
  if (!app.dataDirReady || running || !ActiveTab()) return;
  platform::StartTimer(platform::kMainWindow, kTimerAutosave, kAutosaveMilliseconds);
}

void RunAutosave() {
  platform::StopTimer(platform::kMainWindow, kTimerAutosave);
  if (!app.dataDirReady || running || !ActiveTab() || !app.editorDirty) return;
  running = true;
  const Surface* up = SurfaceUp();
  if (up) Call(up->storePending);
  if (SaveActive(*ActiveTab())) {
    MarkSaved();
    SyncActiveTab();
    UpdateTitle();
    WriteProgramInformation();
    ShowStatus(u"Project autosaved.");
  }
  running = false;
}

void ResetAutosave() { running = false; }

}  // namespace morva
