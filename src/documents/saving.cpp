#include "documents/saving.h"

#include <algorithm>
#include <string>
#include <utility>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/limits.h"
#include "app/outlets.h"
#include "documents/feature_blocks.h"
#include "documents/file_loss.h"
#include "documents/file_text.h"
#include "documents/program_information.h"
#include "documents/recent_files.h"
#include "documents/recovery.h"
#include "documents/save_state.h"
#include "documents/save_words.h"
#include "documents/tab_models.h"
#include "platform/editor.h"
#include "platform/message.h"
#include "platform/timer.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {
namespace {

constexpr int kRetryMs = 5000;  // of a save that failed
std::uint64_t lastFailed = 0;   // ticket
bool alone = false;             // nobody is there to answer a box
void (*askAboutChangedFile)(std::uint64_t serial) = nullptr;

std::u16string_view TextOf(const ProgramTab* tab) {
  if (tab == ActiveTab()) return platform::EditorText(kIdEditor);
  return tab->text;
}

// The revision that a text's output is known by; a program that is not the active one stands still
// while it is saved.
std::uint64_t RevisionOf(const ProgramTab* tab) {
  return tab == ActiveTab() ? platform::EditorRevision(kIdEditor) : 0;
}

// Bytes that were made already, where they are those of the text as it stands now.
std::string BytesOf(const ProgramTab* tab, ProgramOutput* made) {
  if (made && !made->bytes.empty() && made->revision == RevisionOf(tab)) {
    return std::move(made->bytes);
  }
  return NormaliseOutputText(TextOf(tab), false);
}

// `tab` is null where no program is open. `over`: whatever stands there may be written over.
bool FillJob(const ProgramTab* tab, std::u16string_view path, bool over, ProgramOutput* made,
             SaveJob& job) {
  const bool staged = tab == ActiveTab();
  // An autosave may come during an undo; it must not put the markers back.
  if (staged) TagAfterEdit();
  job.program = path;
  std::string bytes = BytesOf(tab, made);
  if (staged) StashActiveWorkspace();
  if (ProgramTab* const shown = ActiveTab(); staged && shown) FollowBlocksOfDrawings(*shown);
  if (!tab) {
    job.files.push_back({job.program, std::move(bytes)});
    return true;
  }
  if (tab->save.byteOrderMark) bytes.insert(0, kByteOrderMark);
  job.serial = tab->serial;
  job.changes = tab->save.changes;
  if (!AddProgramFiles(path, std::move(bytes), TextOf(tab), *tab, job.files)) return false;
  AddMoves(path, *tab, over, job);
  return true;
}

bool MakeJob(const ProgramTab* tab, std::u16string_view path, bool over, ProgramOutput* made,
             SaveJob& job) {
  // Without an editor there is no text, and an empty file must not replace a program.
  if (!platform::Exists(kIdEditor) || !FillJob(tab, path, over, made, job)) return false;
  return std::ranges::all_of(
      job.files, [](const SaveFile& file) { return file.path.size() <= kSavePathUnits; });
}

void TellFailed(ProgramTab* tab, bool byUser) {
  if (byUser) {
    platform::ShowBox(u"Save Error", u"Could not save the file.", platform::BoxButtons::Ok,
                      platform::BoxIcon::Error);
  } else if (tab) {
    TellHeld(*tab, AutosaveHold::Failed);
  } else {
    ShowStatus(HoldWords(AutosaveHold::Failed));
  }
}

bool HandOver(ProgramTab* tab, std::u16string_view path, bool byUser, bool checked,
              ProgramOutput* made = nullptr) {
  SaveJob job;
  if (!MakeJob(tab, path, !checked, made, job)) {
    TellFailed(tab, byUser);
    return false;
  }
  job.byUser = byUser;
  if (tab) {
    // Also the program's own path, where a save under way is about to give it another.
    job.takesPath = std::u16string_view(tab->path) != path || PathToBe(*tab) != path;
    job.checked = checked && !job.takesPath && tab->save.disk.figures.exists;
    job.known = tab->save.disk;
    NoteHandedOver(*tab, path);
  }
  const std::uint64_t ticket = HandOverSave(std::move(job));
  return lastFailed != ticket;
}

void FollowSaved(ProgramTab& tab, const SaveResult& result) {
  if (&tab == ActiveTab()) SyncActiveTab();
  const bool toldHeld = StatusTellsHold(tab);
  NoteSaved(tab, result.changes);
  const bool all = FileFollows(tab);
  if (all) DropHeldCopy(tab);
  WriteProgramInformation();
  if (all && tab.save.plateLeftOut) {
    if (result.byUser) AppendOutput(kPlateLeftOut);
    TellAutosave(tab, kPlateLeftOut);
  } else if (result.byUser) {
    AppendOutput(u"Saved program.");
    // What the status line said of the autosave is true no more.
    if (toldHeld) TellStored(tab, u"Saved program.");
  } else if (all) {
    TellStored(tab, u"Project autosaved.");
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

// What stood beside the program that was replaced.
void LogMoved(const std::vector<SaveMove>& moved) {
  for (const SaveMove& move : moved) {
    AppendOutput(std::u16string(BareFileName(move.from)) + u" of the replaced program is kept as " +
                 std::u16string(BareFileName(move.to)));
  }
}

// It would be read as this program's when that is opened again.
void TellLeft(ProgramTab& tab, const std::vector<SaveMove>& left) {
  for (const SaveMove& move : left) {
    KeepLeft(tab, move);
    AppendOutput(u"The program is saved, but " + std::u16string(BareFileName(move.from)) +
                 u" of the replaced program could not be put away; move it, or the next opening "
                 u"takes it as this program's.");
  }
}

// A result belongs to the file that it was made for: only what is said of the program's own file
// counts for the program.
void FollowResult(ProgramTab& tab, const SaveResult& result) {
  if (result.answer == SaveAnswer::Saved && result.takesPath) {
    NameProgram(tab, result.program, result.byUser);
    NotePathTaken(tab, result.program);
    if (result.byUser) NoteRecentFile(result.program);
  }
  const bool own = std::u16string_view(tab.path) == result.program;
  if (!result.checked) {
    LogMoved(result.moved);
    LogMoved(result.copied);
    TellLeft(tab, result.left);
  }
  // The program was written even if a later companion failed.
  if (own && result.now.figures.exists) NoteDisk(tab, result.now);
  if (own && !result.beside.empty()) NoteBeside(tab, result.beside);
  switch (result.answer) {
    case SaveAnswer::Saved:
      if (own) FollowSaved(tab, result);
      break;
    case SaveAnswer::Failed:
      TellFailed(&tab, result.byUser);
      break;
    case SaveAnswer::Changed:
      if (own) FollowChanged(tab, result);
      break;
  }
}

void OnSaved(const SaveResult& given) {
  SaveResult result = given;
  result.byUser = given.byUser && !alone;
  const bool saved = result.answer == SaveAnswer::Saved;
  if (!saved) lastFailed = result.ticket;
  ProgramTab* const tab = TabOfSerial(result.serial);
  if (!tab) {
    if (!saved) TellFailed(nullptr, result.byUser);
    return;
  }
  if (!saved) NoteSaveFailed(*tab, result.program);
  if (!saved && HoldsUnsaved(*tab)) KeepHeldCopy(*tab);
  if (result.answer == SaveAnswer::Failed) TryAgainLater();
  FollowResult(*tab, result);
}

}  // namespace

bool SaveProgram(std::u16string_view path, bool byUser) {
  return HandOver(ActiveTab(), path, byUser, true);
}

bool SaveProgramOver(std::u16string_view path) { return HandOver(ActiveTab(), path, true, false); }

void AutosaveProgram(ProgramTab& tab, std::u16string_view path, ProgramOutput output) {
  HandOver(&tab, path, false, true, &output);
}

AutosaveHold HoldOf(const ProgramTab& tab, ProgramOutput& output) {
  if (tab.save.changedOnDisk) return AutosaveHold::ChangedOnDisk;
  const std::u16string_view text = TextOf(&tab);
  bool lost = false;
  output = {ProgramBytes(text, lost), RevisionOf(&tab)};
  if (output.bytes.size() + BytesInFront(&tab) > kMaxReadBytes) return AutosaveHold::TooLarge;
  const bool held = lost && !tab.save.lossAccepted && MeasureFile(text).lost > 0;
  return held ? AutosaveHold::Loss : AutosaveHold::None;
}

void TryAgainLater() {
  if (platform::TimerRuns(platform::kMainWindow, kTimerAutosave)) return;
  platform::StartTimer(platform::kMainWindow, kTimerAutosave, kRetryMs);
}

void SaveWithoutBoxes() { alone = true; }

void RegisterSaving(void (*askAboutChanged)(std::uint64_t serial)) {
  askAboutChangedFile = askAboutChanged;
  ResetSaveWords();
  alone = false;
  RegisterSaver();
  SetSaveListener(OnSaved);
}

}  // namespace morva
