#include "documents/recovery.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "app/app_state.h"
#include "app/data_dir.h"
#include "app/limits.h"
#include "app/outlets.h"
#include "documents/file_kinds.h"
#include "documents/file_names.h"
#include "documents/save_state.h"
#include "documents/tab_models.h"
#include "platform/clock.h"
#include "platform/file.h"
#include "platform/real_path.h"
#include "text/codetext.h"

namespace morva {
namespace {

constexpr int kNameTries = 1000;

bool IsFree(std::u16string_view path) {
  // What was handed over in the same millisecond may not stand there yet.
  return !platform::FileExists(path) && !IsBeingSaved(path);
}

// A path that is free, empty for none.
std::u16string FreePath(std::u16string_view title) {
  if (!app.dataDirReady) return {};
  const std::u16string name = ShortTitle(title);
  auto tick = static_cast<std::uint32_t>(platform::TickMilliseconds());
  for (int tries = 0; tries < kNameTries; ++tries, ++tick) {
    std::u16string path = PathInData(u"Recovery", name + u"-" + IntegerText(tick) + kProgramEnd);
    if (IsFree(path)) return path;
  }
  return {};
}

// The copies of a program bear a number that is made of its path, so that they are found again when
// it is opened.
std::u16string CopiesOf(std::u16string_view program) {
  std::u16string file = platform::LinkTarget(program);
  file = platform::RealPath(file.empty() ? program : file);
  const auto hash = static_cast<std::uint32_t>(HashBytes(platform::ToUtf8(file)));
  return PathInData(u"Recovery", ShortTitle(BareFileName(file)) + u"-of-" + IntegerText(hash));
}

// `number` is from 1 to kMaxKeptCopies.
std::u16string NumberedCopy(std::u16string_view copies, int number) {
  std::u16string path(copies);
  if (number > 1) path += u"-" + IntegerText(number);
  return path + kProgramEnd;
}

// Where what is not saved of a program goes; empty for nowhere.
std::u16string PathOfCopy(const ProgramTab& tab) {
  if (!app.dataDirReady || !tab.path[0]) return FreePath(tab.title);
  const std::u16string copies = CopiesOf(tab.path);
  for (int number = 1; number <= kMaxKeptCopies; ++number) {
    std::u16string path = NumberedCopy(copies, number);
    if (IsFree(path)) return path;
  }
  return FreePath(tab.title);
}

// The user looks at it, and may write into it: it is neither written over nor erased.
bool IsOpen(std::u16string_view path) {
  const platform::FileFigures file = platform::FiguresOf(path);
  return std::any_of(tabs, tabs + app.tabCount, [&](const ProgramTab& tab) {
    return tab.path[0] != 0 &&
           (path == tab.path || platform::IsSameFile(file, platform::FiguresOf(tab.path)));
  });
}

// Copies that were dropped while they were still being written.
std::vector<std::u16string> dropped;

void EraseCopy(std::u16string_view path) {
  platform::EraseFile(path);
  EraseCompanions(path);
}

bool IsHeldCopy(std::u16string_view path) {
  return std::any_of(tabs, tabs + app.tabCount,
                     [path](const ProgramTab& tab) { return tab.save.heldCopy == path; });
}

std::u16string lastKept;  // the program that was written last

// A second window names the copy to its user, who may write into it.
bool IsAsWritten(const ProgramTab& tab) {
  const platform::FileFigures& written = tab.save.heldFile;
  return !written.exists || platform::FiguresOf(tab.save.heldCopy) == written;
}

bool HandOverProgram(const ProgramTab& tab, std::u16string_view path,
                     void (*told)(const SaveResult& result)) {
  SaveJob job;
  job.checked = path == tab.save.heldCopy && tab.save.heldFile.exists;
  job.known.figures = tab.save.heldFile;
  job.program = path;
  job.told = told;
  RemakeDataFolders();
  if (path.empty() ||
      !AddProgramFiles(path, platform::ToUtf8(tab.text), tab.text, tab, job.files)) {
    return false;
  }
  HandOverSave(std::move(job));
  return true;
}

// It is told as kept when it is, and tried again where it is not.
void OnHeldCopy(const SaveResult& result) {
  if (std::erase(dropped, result.program) > 0) {
    if (!IsOpen(result.program) && result.answer != SaveAnswer::Changed) EraseCopy(result.program);
    return;
  }
  int index = 0;
  while (index < app.tabCount && tabs[index].save.heldCopy != result.program) ++index;
  ProgramTab* const tab = index < app.tabCount ? TabOfSerial(tabs[index].serial) : nullptr;
  if (!tab) return;
  if (result.answer == SaveAnswer::Changed) {
    NoteHeldCopy(*tab, {});
    return KeepHeldCopy(*tab);
  }
  if (result.answer != SaveAnswer::Saved) return NoteHeldChanges(*tab, 0);
  NoteHeldFile(*tab, result.now.figures);
  if (!NoteHeldTold(*tab)) return;
  std::u16string words = u"Until " + std::u16string(tab->title) +
                         u" is saved, its changes are kept in " + result.program;
  if (tab->save.held == AutosaveHold::TooLarge) words += u" (too large to be opened here)";
  AppendOutput(words);
}

}  // namespace

bool KeepInRecovery(std::u16string_view title, std::u16string_view text,
                    void (*told)(const SaveResult& result)) {
  SaveJob job;
  job.program = FreePath(title);
  if (job.program.empty()) return false;
  job.files.push_back({job.program, platform::ToUtf8(text)});
  job.told = told;
  RemakeDataFolders();
  HandOverSave(std::move(job));
  return true;
}

bool KeepProgramInRecovery(const ProgramTab& tab, std::u16string& path) {
  const bool own = !tab.save.heldCopy.empty() && !IsOpen(tab.save.heldCopy) && IsAsWritten(tab);
  path = own ? tab.save.heldCopy : PathOfCopy(tab);
  return HandOverProgram(tab, path, nullptr);
}

bool KeepProgramNow(const ProgramTab& tab, std::u16string& path) {
  const auto note = [](const SaveResult& result) {
    if (result.answer == SaveAnswer::Saved) lastKept = result.program;
  };
  path = FreePath(tab.title);
  return HandOverProgram(tab, path, note) && WaitForSavesOf(path, 0) && lastKept == path;
}

void KeepHeldCopy(ProgramTab& tab) {
  if (!tab.save.heldCopy.empty() && IsOpen(tab.save.heldCopy)) {
    NoteHeldCopy(tab, {});
    NoteHeldChanges(tab, 0);
  }
  const bool first = tab.save.heldCopy.empty();
  if (first) NoteHeldCopy(tab, PathOfCopy(tab));
  const std::u16string path = tab.save.heldCopy;
  if (path.empty() || (!first && tab.save.heldChanges == tab.save.changes)) return;
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
  const bool mine = IsAsWritten(tab);
  NoteHeldCopy(tab, {});
  if (IsOpen(path) || !mine) return;
  if (IsBeingSaved(path)) return dropped.push_back(path);
  EraseCopy(path);
}

void TellKeptCopies(const ProgramTab& tab) {
  if (!app.dataDirReady || !tab.path[0]) return;
  const std::u16string copies = CopiesOf(tab.path);
  for (int number = 1; number <= kMaxKeptCopies; ++number) {
    const std::u16string path = NumberedCopy(copies, number);
    if (!platform::FiguresOf(path).exists || IsHeldCopy(path)) continue;
    AppendOutput(u"Changes of " + std::u16string(tab.title) +
                 u" that were never saved are kept in " + path +
                 u"; open it to look, erase it when it is not needed.");
  }
}

void ResetRecovery() { dropped.clear(); }

}  // namespace morva
