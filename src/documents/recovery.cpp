#include "documents/recovery.h"

#include <cstdint>
#include <utility>

#include "app/app_state.h"
#include "app/outlets.h"
#include "documents/file_kinds.h"
#include "documents/file_names.h"
#include "documents/save_state.h"
#include "documents/tab_models.h"
#include "platform/clock.h"
#include "platform/file.h"
#include "text/codetext.h"

namespace morva {
namespace {

constexpr int kNameTries = 1000;

// A path that is free, empty for none.
std::u16string FreePath(std::u16string_view title) {
  if (!app.dataDirReady) return {};
  const std::u16string name = CleanedTitle(title);
  auto tick = static_cast<std::uint32_t>(platform::TickMilliseconds());
  for (int tries = 0; tries < kNameTries; ++tries, ++tick) {
    std::u16string path = PathInData(u"Recovery", name + u"-" + IntegerText(tick) + kProgramEnd);
    // What was handed over in the same millisecond may not stand there yet.
    if (!platform::FileExists(path) && !IsBeingSaved(path)) return path;
  }
  return {};
}

std::u16string lastKept;  // the program that was written last

// To a free path where `path` is empty.
bool HandOverProgram(const ProgramTab& tab, std::u16string& path,
                     void (*told)(const SaveResult& result)) {
  if (path.empty()) path = FreePath(tab.title);
  SaveJob job;
  job.program = path;
  job.told = told;
  if (path.empty() ||
      !AddProgramFiles(path, platform::ToUtf8(tab.text), tab.text, tab, job.files)) {
    return false;
  }
  HandOverSave(std::move(job));
  return true;
}

// It is told as kept when it is, and tried again where it is not.
void OnHeldCopy(const SaveResult& result) {
  int index = 0;
  while (index < app.tabCount && tabs[index].save.heldCopy != result.program) ++index;
  ProgramTab* const tab = index < app.tabCount ? TabOfSerial(tabs[index].serial) : nullptr;
  if (!tab) return;
  if (result.answer != SaveAnswer::Saved) return NoteHeldChanges(*tab, 0);
  if (!NoteHeldTold(*tab)) return;
  AppendOutput(u"Until " + std::u16string(tab->title) + u" is saved, its changes are kept in " +
               result.program);
}

}  // namespace

bool KeepInRecovery(std::u16string_view title, std::u16string_view text,
                    void (*told)(const SaveResult& result)) {
  SaveJob job;
  job.program = FreePath(title);
  if (job.program.empty()) return false;
  job.files.push_back({job.program, platform::ToUtf8(text)});
  job.told = told;
  HandOverSave(std::move(job));
  return true;
}

bool KeepProgramInRecovery(const ProgramTab& tab, std::u16string& path) {
  path.clear();
  return HandOverProgram(tab, path, nullptr);
}

bool KeepProgramNow(const ProgramTab& tab, std::u16string& path) {
  const auto note = [](const SaveResult& result) {
    if (result.answer == SaveAnswer::Saved) lastKept = result.program;
  };
  path.clear();
  return HandOverProgram(tab, path, note) && WaitForSavesOf(path, 0) && lastKept == path;
}

void KeepHeldCopy(ProgramTab& tab) {
  if (tab.save.heldCopy.empty()) NoteHeldCopy(tab, FreePath(tab.title));
  std::u16string path = tab.save.heldCopy;
  if (path.empty() || tab.save.heldChanges == tab.save.changes) return;
  if (&tab == ActiveTab()) {
    SyncActiveTab();
    StashActiveWorkspace();
  }
  // First: the results that are told meanwhile may close the program.
  NoteHeldChanges(tab, tab.save.changes);
  const std::uint64_t serial = tab.serial;
  if (HandOverProgram(tab, path, OnHeldCopy)) return;
  if (ProgramTab* const left = TabOfSerial(serial)) NoteHeldChanges(*left, 0);
}

void DropHeldCopy(ProgramTab& tab) {
  const std::u16string path = tab.save.heldCopy;
  if (path.empty()) return;
  NoteHeldCopy(tab, {});
  platform::EraseFile(path);
  EraseCompanions(path);
}

}  // namespace morva
