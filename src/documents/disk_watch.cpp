#include "documents/disk_watch.h"

#include <string>

#include "app/app_state.h"
#include "app/change_guard.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "documents/file_text.h"
#include "documents/program_information.h"
#include "documents/recovery.h"
#include "documents/save_state.h"
#include "documents/save_words.h"
#include "documents/saver.h"
#include "documents/saving.h"
#include "documents/tab_models.h"
#include "documents/text_refresh.h"
#include "platform/editor.h"
#include "platform/message.h"
#include "platform/window.h"

namespace morva {
namespace {

constexpr int kRefreshMs = 60;

// The text of a program is replaced from outside; its change is no change of the user's.
void ReplaceText(std::u16string_view text) {
  const SuppressChanges guard;
  platform::SetEditorSelection(kIdEditor, {0, platform::EditorLength(kIdEditor)});
  platform::ReplaceSelection(kIdEditor, text, true);
  platform::SetEditorSelection(kIdEditor, {0, 0});
}

bool AskForLoading() {
  std::u16string text(BareFileName(app.activePath));
  text += u" was changed on disk by another program.\r\n\r\nLoad it again?";
  return platform::ShowBox(u"Changed on Disk", text, platform::BoxButtons::YesNo,
                           platform::BoxIcon::Question) == platform::BoxAnswer::Yes;
}

// Undo brings the text and its excluded code back, and neither drawings nor plates: before they go,
// what the user has changed is in a file. `words` tells where. False: the user keeps the program as
// it is.
bool KeepMine(ProgramTab& tab, std::u16string& words) {
  if (!IsTouched(tab)) return true;
  std::u16string kept;
  const std::uint64_t serial = tab.serial;
  if (KeepProgramNow(tab, kept)) {
    // That one holds everything, too. What was told meanwhile may have closed the program.
    if (ProgramTab* const left = TabOfSerial(serial)) DropHeldCopy(*left);
    words += u" Your version is kept in " + kept;
    return true;
  }
  return ConfirmedNoFirst(
      u"Load Again",
      u"Your version could not be kept in \"Recovery\". When the file is loaded "
      u"again, Undo brings your text and its excluded code back; your drawings and plates "
      u"are lost.\r\n\r\nLoad it all the same?");
}

std::u16string_view FolderOf(std::u16string_view path) {
  return path.substr(0, path.size() - BareFileName(path).size());
}

// Whether a save that is under way makes or replaces the file of a path, under whatever name.
bool TakesFile(const ProgramTab& tab, std::u16string_view path, const platform::FileFigures& file) {
  const std::u16string_view taking = tab.save.takingPath;
  if (taking.empty() || path.empty()) return false;
  if (taking == path || platform::IsSameFile(file, platform::FiguresOf(taking))) return true;
  // Of a file that does not stand yet, its folder.
  return BareFileName(taking) == BareFileName(path) &&
         platform::IsSameFile(platform::FiguresOf(FolderOf(path)),
                              platform::FiguresOf(FolderOf(taking)));
}

}  // namespace

int TabOfFile(std::u16string_view path) {
  const platform::FileFigures file = platform::FiguresOf(path);
  for (int i = 0; i < app.tabCount; ++i) {
    if (TakesFile(tabs[i], path, file)) return i;
    if (!tabs[i].path[0]) continue;
    if (std::u16string_view(tabs[i].path) == path) return i;
    if (platform::IsSameFile(file, platform::FiguresOf(tabs[i].path))) return i;
  }
  return -1;
}

void WatchDisk() {
  ProgramTab* tab = ActiveTab();
  if (!tab || !tab->path[0] || !tab->save.disk.figures.exists || IsBeingSaved(tab->path)) return;
  if (DiskHoldsStill(*tab)) return;
  if (IsWorkedOn(*tab)) {
    TellHeld(*tab, AutosaveHold::ChangedOnDisk);
    return;
  }
  if (OfferLoading(*tab)) OfferToLoadAgain();
}

void OfferToLoadAgain() {
  const std::uint64_t serial = ActiveSerial();
  if (AskForLoading() && ActiveSerial() == serial && LoadAgain()) return;
  if (ProgramTab* const left = TabOfSerial(serial)) KeepShown(*left);
}

void KeepShown(ProgramTab& tab) {
  if (!tab.save.changedOnDisk) return;
  NoteShownKept(tab);
  if (&tab == ActiveTab()) WriteProgramInformation();
  TellHeld(tab, AutosaveHold::ChangedOnDisk);
  KeepHeldCopy(tab);
}

bool LoadAgain() {
  ProgramTab* tab = ActiveTab();
  if (!tab) return false;
  std::string bytes;
  std::u16string text;
  DiskState state;
  // A file that holds NULs between its lines must not become the program that is saved over it.
  const bool read = ReadWithState(tab->path, bytes, state);
  if (!read || !TakeProgram(bytes, text)) {
    const std::u16string path = tab->path;
    AppendOutput(u"Not loaded again: " +
                 (read ? path + u"  (it holds NUL characters)" : UnreadFileWords(path)));
    platform::ShowBox(u"Open Error", kOpenFailed, platform::BoxButtons::Ok,
                      platform::BoxIcon::Error);
    return false;
  }
  const bool marked = TakeByteOrderMark(text);
  std::u16string words = u"Loaded again from disk.";
  SyncActiveTab();
  StashActiveWorkspace();
  const std::uint64_t serial = tab->serial;
  if (!KeepMine(*tab, words) || ActiveSerial() != serial) return false;
  tab = ActiveTab();
  ReadCompanions(tab->path, text, *tab);
  ReplaceText(text);
  RestoreWorkspace();
  NoteLoaded(*tab, state);
  NoteByteOrderMark(*tab, marked);
  NoteHeldCopy(*tab, {});  // it stays where it is the only version of the user's
  SyncActiveTab();
  if (app.commandWordsActive) Call(hooks.wordsFromEditor);
  ArmTextRefresh(kRefreshMs);
  WriteProgramInformation();
  Call(hooks.rebuildToolpath);
  AppendOutput(words);
  ShowStatus(words);
  return true;
}

}  // namespace morva
