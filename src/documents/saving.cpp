#include "documents/saving.h"

#include <algorithm>
#include <string>
#include <utility>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/limits.h"
#include "app/outlets.h"
#include "documents/feature_blocks.h"
#include "documents/file_text.h"
#include "documents/program_information.h"
#include "documents/save_state.h"
#include "documents/tab_models.h"
#include "platform/editor.h"
#include "platform/message.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {
namespace {

constexpr char16_t kWriteFailed[] = u"Autosave failed. Changes remain unsaved; use Save As.";

constexpr const char16_t* kHoldWords[] = {
    u"",
    u"Changed on disk by another program. Not saved; use Save or Open again.",
    u"Not autosaved: the file cannot hold some of the characters. Use Save.",
    u"Not autosaved: the file would be too large to be opened again. Use Save.",
};

std::uint64_t lastFailed = 0;  // ticket
void (*askAboutChangedFile)(std::uint64_t serial) = nullptr;

bool FillJob(std::u16string_view path, SaveJob& job) {
  // An autosave may come during an undo; it must not put the markers back.
  TagAfterEdit();
  job.program = path;
  std::string bytes = NormaliseOutputText(platform::EditorText(kIdEditor), false);
  StashActiveWorkspace();
  const ProgramTab* tab = ActiveTab();
  if (!tab) {
    job.files.push_back({job.program, std::move(bytes)});
    return true;
  }
  job.serial = tab->serial;
  job.changes = tab->save.changes;
  if (!AddProgramFiles(path, std::move(bytes), platform::EditorText(kIdEditor), *tab, job.files))
    return false;
  AddMoves(path, *tab, job);
  return true;
}

bool MakeJob(std::u16string_view path, SaveJob& job) {
  // Without an editor there is no text, and an empty file must not replace a program.
  if (!platform::Exists(kIdEditor) || !FillJob(path, job)) return false;
  return std::ranges::all_of(
      job.files, [](const SaveFile& file) { return file.path.size() <= kSavePathUnits; });
}

// What concerns a program that is not on the stage is told with its title.
void TellAutosave(const ProgramTab* tab, std::u16string_view words) {
  std::u16string told;
  if (tab && tab != ActiveTab()) told = std::u16string(tab->title) + u": ";
  ShowStatus(told.append(words));
}

void TellFailed(const ProgramTab* tab, bool byUser) {
  if (byUser) {
    platform::ShowBox(u"Save Error", u"Could not save the file.", platform::BoxButtons::Ok,
                      platform::BoxIcon::Error);
  } else {
    TellAutosave(tab, kWriteFailed);
  }
}

bool HandOver(std::u16string_view path, bool byUser, bool checked) {
  SaveJob job;
  if (!MakeJob(path, job)) {
    TellFailed(ActiveTab(), byUser);
    return false;
  }
  job.byUser = byUser;
  if (ProgramTab* tab = ActiveTab()) {
    job.takesPath = std::u16string_view(tab->path) != path;
    job.checked = checked && !job.takesPath && tab->save.disk.figures.exists;
    job.known = tab->save.disk;
    NoteHandedOver(*tab, job.takesPath);
  }
  const std::uint64_t ticket = HandOverSave(std::move(job));
  return lastFailed != ticket;
}

void FollowSaved(ProgramTab& tab, const SaveResult& result) {
  if (result.takesPath) NameProgram(tab, result.program, result.byUser);
  if (&tab == ActiveTab()) SyncActiveTab();
  NoteSaved(tab, result.changes);
  WriteProgramInformation();
  if (result.byUser) {
    AppendOutput(u"Saved program.");
  } else if (!tab.dirty) {
    TellAutosave(&tab, u"Project autosaved.");
  }
}

void FollowChanged(ProgramTab& tab, const SaveResult& result) {
  NoteChangedOnDisk(tab);
  if (result.byUser && askAboutChangedFile) {
    askAboutChangedFile(result.serial);
  } else {
    TellHeld(tab, AutosaveHold::ChangedOnDisk);
  }
}

void OnSaved(const SaveResult& result) {
  if (result.answer != SaveAnswer::Saved) lastFailed = result.ticket;
  ProgramTab* const found = TabOfSerial(result.serial);
  if (!found) {
    if (result.answer != SaveAnswer::Saved) TellFailed(nullptr, result.byUser);
    return;
  }
  ProgramTab& tab = *found;
  if (result.answer != SaveAnswer::Saved) NoteSaveFailed(tab);
  // The program was written even if a later companion failed.
  if (result.now.figures.exists) NoteDisk(tab, result.now);
  switch (result.answer) {
    case SaveAnswer::Saved:
      FollowSaved(tab, result);
      break;
    case SaveAnswer::Failed:
      TellFailed(found, result.byUser);
      break;
    case SaveAnswer::Changed:
      FollowChanged(tab, result);
      break;
  }
}

}  // namespace

bool SaveProgram(std::u16string_view path, bool byUser) { return HandOver(path, byUser, true); }

bool SaveProgramOver(std::u16string_view path) { return HandOver(path, true, false); }

AutosaveHold HoldOf(const ProgramTab& tab) {
  if (tab.save.changedOnDisk) return AutosaveHold::ChangedOnDisk;
  const OutputFigures figures = MeasureOutput(platform::EditorText(kIdEditor));
  if (figures.bytes > kMaxReadBytes) return AutosaveHold::TooLarge;
  return figures.lost > 0 && !tab.save.lossAccepted ? AutosaveHold::Loss : AutosaveHold::None;
}

void TellHeld(ProgramTab& tab, AutosaveHold reason) {
  if (NoteHeld(tab, reason)) TellAutosave(&tab, kHoldWords[static_cast<int>(reason)]);
}

void RegisterSaving(void (*askAboutChanged)(std::uint64_t serial)) {
  askAboutChangedFile = askAboutChanged;
  RegisterSaver();
  SetSaveListener(OnSaved);
}

}  // namespace morva
