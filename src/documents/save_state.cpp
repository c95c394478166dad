#include "documents/save_state.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "documents/file_text.h"
#include "platform/clock.h"
#include "platform/file.h"

namespace morva {

bool IsTouched(const ProgramTab& tab) { return tab.save.userChanges > tab.save.savedChanges; }

bool IsWorkedOn(const ProgramTab& tab) {
  return IsTouched(tab) && tab.save.userChanges != tab.save.shownChanges;
}

bool HoldsUnsaved(const ProgramTab& tab) {
  if (IsTouched(tab) || tab.save.plateLeftOut) return true;
  // The tab is the last that is left of a file which another program has erased.
  if (!tab.path[0] || !tab.save.disk.figures.exists) return false;
  const platform::FileFigures file = platform::FiguresOf(tab.path);
  return !file.exists && !file.unknown;
}

bool FileFollows(const ProgramTab& tab) { return tab.save.changes <= tab.save.savedChanges; }

void MarkModified(ProgramTab& tab) {
  tab.save.userChanges = ++tab.save.changes;
  // 0 says that nothing waits.
  if (tab.save.unsavedSince == 0) tab.save.unsavedSince = platform::TickMilliseconds() | 1;
  // A failure is told once for each text.
  if (tab.save.held == AutosaveHold::Failed) tab.save.held = AutosaveHold::None;
  SetDirtyMark(&tab, true);
}

void MarkModified() {
  if (ProgramTab* tab = ActiveTab()) return MarkModified(*tab);
  SetDirtyMark(nullptr, true);
}

void MarkTagged() {
  ProgramTab* tab = ActiveTab();
  if (tab) ++tab->save.changes;
  SetDirtyMark(tab, true);
}

void NoteTried(ProgramTab& tab) { tab.save.unsavedSince = 0; }

void NoteHandedOver(ProgramTab& tab, std::u16string_view path) {
  NoteTried(tab);
  tab.save.handedChanges = tab.save.changes;
  if (std::u16string_view(tab.path) != path || !tab.save.takingPath.empty())
    tab.save.takingPath = path;
}

void NoteSaveFailed(ProgramTab& tab, std::u16string_view path) {
  tab.save.handedChanges = tab.save.savedChanges;
  NotePathTaken(tab, path);
}

void NotePathTaken(ProgramTab& tab, std::u16string_view path) {
  if (tab.save.takingPath == path) tab.save.takingPath.clear();
}

std::u16string_view PathToBe(const ProgramTab& tab) {
  const SaveState& save = tab.save;
  if (save.takingPath.empty() || save.takingPath == save.home) return tab.path;
  return save.takingPath;
}

bool WaitsForSave(const ProgramTab& tab) {
  return IsTouched(tab) && tab.save.userChanges > tab.save.handedChanges;
}

void NoteSaved(ProgramTab& tab, std::uint32_t changes) {
  SaveState& save = tab.save;
  save.savedChanges = std::max(save.savedChanges, changes);
  save.changedOnDisk = false;
  save.held = AutosaveHold::None;
  save.home.clear();
  SetDirtyMark(&tab, !FileFollows(tab) || save.plateLeftOut);
}

void NoteLoaded(ProgramTab& tab, const DiskState& disk) {
  tab.save.disk = disk;
  tab.save.lossAccepted = false;  // it was said of another text
  NoteSaved(tab, ++tab.save.changes);
}

void NoteDisk(ProgramTab& tab, const DiskState& disk) { tab.save.disk = disk; }

void NoteBeside(ProgramTab& tab, std::vector<KnownFile> beside) {
  tab.save.beside = std::move(beside);
}

bool DiskHoldsStill(ProgramTab& tab) {
  if (StandingOf(tab.path, tab.save.disk) == FileStanding::Changed) tab.save.changedOnDisk = true;
  if (StandingOfAll(tab.save.beside) == FileStanding::Changed) tab.save.changedOnDisk = true;
  return !tab.save.changedOnDisk;
}

void NoteChangedOnDisk(ProgramTab& tab) { tab.save.changedOnDisk = true; }

void NoteShownKept(ProgramTab& tab) {
  if (IsTouched(tab)) return;
  MarkModified(tab);
  tab.save.shownChanges = tab.save.userChanges;
}

bool OfferLoading(ProgramTab& tab) {
  std::vector<platform::FileFigures> now{platform::FiguresOf(tab.path)};
  for (const KnownFile& file : tab.save.beside) now.push_back(platform::FiguresOf(file.path));
  return std::exchange(tab.save.askedAbout, now) != now;
}

void AcceptLoss(ProgramTab& tab) { tab.save.lossAccepted = true; }

void NoteByteOrderMark(ProgramTab& tab, bool present) { tab.save.byteOrderMark = present; }

std::size_t BytesInFront(const ProgramTab* tab) {
  return tab && tab->save.byteOrderMark ? kByteOrderMark.size() : 0;
}

bool NoteHeld(ProgramTab& tab, AutosaveHold reason) {
  return std::exchange(tab.save.held, reason) != reason;
}

void NotePlateLeftOut(ProgramTab& tab, bool leftOut) {
  if (std::exchange(tab.save.plateLeftOut, leftOut) == leftOut) return;
  SetDirtyMark(&tab, leftOut || !FileFollows(tab));
}

void KeepHome(ProgramTab& tab, std::u16string_view home) { tab.save.home = home; }

void NoteHeldCopy(ProgramTab& tab, std::u16string_view path) {
  tab.save.heldCopy = path;
  tab.save.heldChanges = 0;
  tab.save.heldTold = false;
  tab.save.heldFile = {};
}

void NoteHeldFile(ProgramTab& tab, const platform::FileFigures& written) {
  tab.save.heldFile = written;
}

void NoteHeldChanges(ProgramTab& tab, std::uint32_t changes) { tab.save.heldChanges = changes; }

bool NoteHeldTold(ProgramTab& tab) { return !std::exchange(tab.save.heldTold, true); }

}  // namespace morva
