// The commands that save, and what they have to ask before.

#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/outlets.h"
#include "documents/disk_watch.h"
#include "documents/document_commands.h"
#include "documents/file_kinds.h"
#include "documents/file_loss.h"
#include "documents/file_text.h"
#include "documents/program_tabs.h"
#include "documents/recent_files.h"
#include "documents/save_state.h"
#include "documents/saver.h"
#include "documents/saving.h"
#include "platform/editor.h"
#include "platform/message.h"
#include "platform/pick_file.h"
#include "text/codetext.h"

namespace morva {
namespace {

constexpr platform::FileFilter kSaveFilters[] = {
    {u"Haas programs (*.NC;*.TAP)", u"*.NC;*.TAP"},
    {u"G-code (*.GCODE)", u"*.GCODE"},
    kTextFiles,
    kAllFiles,
};

bool AskAboutLoss(const OutputFigures& figures) {
  std::u16string text(BareFileName(app.activePath));
  if (text.empty()) text = u"The program";
  text += u" holds characters that the file cannot hold: " + IntegerText(figures.lost);
  text += u", the first in line " + IntegerText(figures.firstLostLine);
  text += u". Each is written as \"?\".\r\n\r\nSave it so?";
  return Confirmed(u"Save", text);
}

bool AskAboutSize(std::size_t bytes) {
  std::u16string text = u"The file would have ";
  text += IntegerText(static_cast<std::int64_t>(bytes));
  text +=
      u" bytes. MORVA opens files of up to 33554432 bytes, so that it could not open this one "
      u"again.\r\n\r\nSave it all the same?";
  return Confirmed(u"Save", text);
}

// Asks about characters that would be lost and about the size. False: do not save.
bool SettleText() {
  const std::uint64_t serial = ActiveSerial();
  const OutputFigures figures = MeasureFile(platform::EditorText(kIdEditor));
  ProgramTab* tab = ActiveTab();
  if (tab && figures.lost > 0 && !tab->save.lossAccepted) {
    if (!AskAboutLoss(figures) || !ReturnToTab(serial)) return false;
    AcceptLoss(*ActiveTab());
  }
  const std::size_t bytes = figures.bytes + BytesInFront(ActiveTab());
  if (bytes <= kMaxReadBytes) return true;
  return AskAboutSize(bytes) && ReturnToTab(serial);
}

// The file that Save writes: behind a Save As it is the new one, also while that is under way.
std::u16string PathOfUser() {
  const ProgramTab* tab = ActiveTab();
  return std::u16string(tab ? PathToBe(*tab) : std::u16string_view(app.activePath));
}

bool ChangedBeneath(ProgramTab& tab) {
  if (PathToBe(tab) != std::u16string_view(tab.path)) return false;
  if (!tab.path[0] || !tab.save.disk.figures.exists || IsBeingSaved(tab.path)) return false;
  return !DiskHoldsStill(tab);
}

// Whether SettleText has asked already.
enum class Text { Settled, ToSettle };

bool AnswerChangedFile(std::uint64_t serial, Text asked) {
  std::u16string text(BareFileName(app.activePath));
  text +=
      u" was changed on disk by another program since it was opened or last saved.\r\n\r\n"
      u"Write over that file, load it again in place of yours";
  if (const ProgramTab* const tab = ActiveTab(); tab && IsTouched(*tab)) {
    text += u" (one Undo brings your text back; a copy of all goes into \"Recovery\")";
  }
  text += u", or save yours under another name?";
  const platform::BoxAnswer answer = platform::ShowBox(
      u"Changed on Disk", text, platform::BoxButtons::YesNoOtherCancel, platform::BoxIcon::Warning,
      {u"Write over it", u"Load again", u"Save as...", u"Cancel"});
  if (!ReturnToTab(serial)) return false;
  switch (answer) {
    case platform::BoxAnswer::Yes:
      if (asked == Text::ToSettle && !SettleText()) return false;
      return SaveProgramOver(app.activePath);
    case platform::BoxAnswer::No:
      LoadAgain();
      return false;
    case platform::BoxAnswer::Other:
      return SaveProgramAs();
    case platform::BoxAnswer::Ok:
    case platform::BoxAnswer::Cancel:
      break;
  }
  return false;
}

// Asks what to do with a file that another program has changed, and does it. True: it is being
// written.
bool SettleChangedFile(Text asked) {
  const std::uint64_t serial = ActiveSerial();
  const bool handedOver = AnswerChangedFile(serial, asked);
  if (ProgramTab* const left = TabOfSerial(serial); left && !handedOver) KeepShown(*left);
  return handedOver;
}

bool PickSavePath(std::u16string& path) {
  const std::u16string initial = app.activePath[0] ? app.activePath : u"O1000.NC";
  platform::PickFileSpec spec;
  spec.title = u"Save Haas Program";
  spec.filters = kSaveFilters;
  spec.filterCount = static_cast<int>(std::size(kSaveFilters));
  spec.initialName = initial.c_str();
  spec.defaultExtension = u"NC";
  spec.capacity = kPathUnits;
  const std::u16string folder = LastFolder();
  spec.folder = folder.c_str();
  return platform::PickFileToSave(spec, path);
}

// Two tabs on one file would take each other's place at each save.
bool StandsInAnotherTab(std::u16string_view path) {
  const int other = TabOfFile(path);
  if (other < 0 || other == app.activeTab) return false;
  platform::ShowBox(u"Save Error",
                    u"This file is open in another tab. Close it there, or choose another name.",
                    platform::BoxButtons::Ok, platform::BoxIcon::Warning);
  return true;
}

void AskAboutChangedFile(std::uint64_t serial) {
  if (ReturnToTab(serial)) SettleChangedFile(Text::ToSettle);
}

}  // namespace

void SettleActiveFile() {
  ProgramTab* const tab = ActiveTab();
  if (!tab || !ChangedBeneath(*tab)) return;
  // Asked here, and not once more when the window comes to the front.
  (void)OfferLoading(*tab);
  if (IsWorkedOn(*tab)) {
    SettleChangedFile(Text::ToSettle);
  } else {
    OfferToLoadAgain();
  }
}

bool SaveProgramCommand() {
  if (PathOfUser().empty()) return SaveProgramAs();
  if (!SettleText()) return false;
  ProgramTab* tab = ActiveTab();
  if (tab && ChangedBeneath(*tab)) return SettleChangedFile(Text::Settled);
  return SaveProgram(PathOfUser(), true);
}

bool SaveProgramAs() {
  const std::uint64_t serial = ActiveSerial();
  std::u16string path;
  if (!PickSavePath(path) || !ReturnToTab(serial) || StandsInAnotherTab(path)) return false;
  if (!SettleText()) return false;
  // The dialog has asked before a file is replaced.
  return SaveProgramOver(path);
}

bool SaveAndWait() {
  const std::uint64_t serial = ActiveSerial();
  if (!SaveProgramCommand() || !WaitForSavesOf(PathOfUser(), serial)) return false;
  const int index = IndexOfSerial(serial);
  return index >= 0 && FileFollows(tabs[index]);
}

void RegisterSaveCommands() { RegisterSaving(AskAboutChangedFile); }

}  // namespace morva
