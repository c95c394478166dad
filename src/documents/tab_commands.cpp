// The commands of the tab bar and of the keys NEW, OPEN, SAVE and CLOSE.

#include <algorithm>
#include <string>
#include <utility>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/router.h"
#include "documents/autosave.h"
#include "documents/file_text.h"
#include "documents/program_tabs.h"
#include "documents/tab_table.h"
#include "library/codetext.h"
#include "platform/menu.h"
#include "platform/message.h"
#include "platform/pick_file.h"
#include "platform/window.h"

namespace morva {
namespace {

constexpr platform::FileFilter kOpenFilters[] = {
    {u"Haas programs (*.NC;*.TAP;*.GCODE)", u"*.NC;*.TAP;*.GCODE"},
    {u"Text (*.TXT)", u"*.TXT"},
    {u"All files (*.*)", u"*.*"},
};
constexpr platform::FileFilter kSaveFilters[] = {
    {u"Haas programs (*.NC;*.TAP)", u"*.NC;*.TAP"},
    {u"G-code (*.GCODE)", u"*.GCODE"},
    {u"Text (*.TXT)", u"*.TXT"},
    {u"All files (*.*)", u"*.*"},
};

std::uint64_t ActiveSerial() {
  const ProgramTab* tab = ActiveTab();
  return tab ? tab->serial : 0;
}

// Puts the program that a dialog was about back on the stage. False: it is gone.
bool ReturnToTab(std::uint64_t serial) {
  const int index = IndexOfSerial(serial);
  if (index < 0) return false;
  if (index != app.activeTab) SwitchTab(index);
  return true;
}

void TellSaveFailed() {
  platform::ShowBox(u"Save Error", u"Could not save the file.", platform::BoxButtons::Ok,
                    platform::BoxIcon::Error);
}

void TellSaved() {
  app.editorDirty = false;
  if (ProgramTab* tab = ActiveTab()) tab->dirty = false;
  UpdateTitle();
  AppendOutput(u"Saved program.");
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
  return platform::PickFileToSave(spec, path);
}

// Whether anything but filling stands behind a file's first NUL.
bool HoldsMoreBehindNul(const std::string& bytes) {
  const std::size_t nul = bytes.find('\0');
  return nul != bytes.npos &&
         bytes.find_first_not_of(std::string_view("\0\t\n\r \x1A", 6), nul) != bytes.npos;
}

// A text ends at its first NUL. Where that leaves a part of the file out, the rest is opened
// as a program of its own without a path, so that no save can cut the file.
int OpenCutProgram(std::u16string_view path, std::u16string_view text) {
  if (text.empty()) return -1;
  const int index = OpenTab(u"", text, BareFileName(path));
  if (index >= 0) {
    AppendOutput(
        u"The file holds a NUL character. What stands before it was opened as a new program; "
        u"the file stays as it is.");
  }
  return index;
}

int OpenFromFile(const std::u16string& path) {
  std::string bytes;
  if (!ReadWholeFile(path, bytes)) return -1;
  std::u16string text = DecodeProgram(bytes);
  if (HoldsMoreBehindNul(bytes)) return OpenCutProgram(path, text);
  return OpenOwnedTab(path, std::move(text), u"Program.NC");
}

bool SaveChangesFirst() {
  const platform::BoxAnswer answer =
      platform::ShowBox(u"Close Program", u"Save changes before closing this program?",
                        platform::BoxButtons::YesNoCancel, platform::BoxIcon::Question);
  return answer == platform::BoxAnswer::No ||
         (answer == platform::BoxAnswer::Yes && SaveProgramCommand());
}

}  // namespace

void NewProgram() {
  Call(hooks.leaveCompare);
  const std::u16string title = u"Untitled-" + IntegerText(app.tabCount + 1) + u".NC";
  const int index = OpenTab(u"", u"", title);
  if (index < 0) return;
  SwitchTab(index);
  AppendOutput(u"New program opened in a workspace tab.");
}

void OpenProgram() {
  Call(hooks.leaveCompare);
  platform::PickFileSpec spec;
  spec.title = u"Open Haas Program";
  spec.filters = kOpenFilters;
  spec.filterCount = static_cast<int>(std::size(kOpenFilters));
  spec.capacity = kPathUnits;
  std::u16string path;
  if (!platform::PickFileToOpen(spec, path)) return;
  const int index = OpenFromFile(path);
  if (index < 0) {
    platform::ShowBox(u"Open Error", u"Could not open the selected file.", platform::BoxButtons::Ok,
                      platform::BoxIcon::Error);
    return;
  }
  SwitchTab(index);
  AppendOutput(u"Opened program in a new workspace tab.");
}

bool SaveProgramCommand() {
  if (!app.activePath[0]) return SaveProgramAs();
  if (!SaveProgram(app.activePath)) {
    TellSaveFailed();
    return false;
  }
  TellSaved();
  return true;
}

bool SaveProgramAs() {
  const std::uint64_t serial = ActiveSerial();
  std::u16string path;
  if (!PickSavePath(path) || !ReturnToTab(serial)) return false;
  if (!SaveProgram(path)) {
    TellSaveFailed();
    return false;
  }
  CopyBounded(app.activePath, kPathUnits, path);
  if (ProgramTab* tab = ActiveTab()) {
    const std::u16string_view name = BareFileName(path);
    CopyBounded(tab->path, kPathUnits, path);
    CopyBounded(tab->title, kTitleUnits, name.empty() ? u"Program.NC" : name);
  }
  TellSaved();
  return true;
}

void CloseProgram() {
  if (!ActiveTab()) return;
  Call(hooks.leaveCompare);
  if (app.editorDirty) {
    const std::uint64_t serial = ActiveSerial();
    if (!SaveChangesFirst() || !ReturnToTab(serial)) return;
  }
  const int closed = app.activeTab;
  RemoveTab(closed);
  if (app.tabCount == 0) OpenTab(u"", u"", u"Untitled-1.NC");
  SwitchTab(std::min(closed, app.tabCount - 1));
  RefreshTabButtons();
  Call(hooks.layout);
}

void SaveAll() {
  if (app.tabCount == 0) return;
  SyncActiveTab();
  const std::uint64_t before = ActiveSerial();
  bool complete = true;
  for (int i = 0; complete && i < app.tabCount; ++i) {
    if (!tabs[i].dirty) continue;
    SwitchTab(i);
    complete = SaveProgramCommand();
    if (complete) SyncActiveTab();
  }
  const int index = IndexOfSerial(before);
  if (index >= 0) SwitchTab(index);
  AppendOutput(complete ? u"Save All complete."
                        : u"Save All stopped; some programs remain unsaved.");
}

void ShowSaveMenu() {
  const platform::MenuItem items[] = {
      {kIdSave, u"Save        Ctrl+S"},
      {kIdSaveAs, u"Save As\u2026"},
      {kIdSaveAll, u"Save All"},
  };
  const platform::Rect place = platform::PlaceInMainWindow(kIdSaveMenu);
  const int picked =
      platform::ShowPopup(items, static_cast<int>(std::size(items)), place.left, place.bottom);
  if (picked < 0) SaveProgramCommand();
  if (picked > 0) RouteCommand(picked, 0);
}

void ShowTabMenu(int index, int x, int y) {
  if (index < 0 || index >= app.tabCount) return;
  Call(hooks.leaveCompare);
  SwitchTab(index);
  const platform::MenuItem items[] = {
      {kIdSave, u"Save\tCtrl+S"},
      {kIdSaveAs, u"Save as..."},
      {0},
      {kIdComparePopup, u"Compare programs..."},
      {0},
      {kIdClosePopup, u"Close program"},
  };
  const int picked = platform::ShowPopup(items, static_cast<int>(std::size(items)), x, y);
  if (picked > 0) RouteCommand(picked, 0);
}

namespace {

void ClickTab(int id, int) {
  const int index = id - kIdTabFirst;
  if (index >= app.tabCount) return;
  if (platform::CtrlHeld()) {
    tabs[index].compareSelected = !tabs[index].compareSelected;
    RefreshTabButtons();
    ShowStatus(u"Compare selection changed. Ctrl+click another tab, then press COMPARE.");
    return;
  }
  Call(hooks.leaveCompare);
  SwitchTab(index);
}

void SaveAsFromMenu(int, int) {
  SaveProgramAs();
  SyncActiveTab();
  WriteProgramInformation();
}

void OpenFirstTab() { SwitchTab(OpenTab(u"", u"", u"Untitled-1.NC")); }

struct Command {
  int first;
  int last;
  CommandHandler handler;
};

constexpr Command kCommands[] = {
    {kIdNew, kIdNew, [](int, int) { NewProgram(); }},
    {kIdOpen, kIdOpen, [](int, int) { OpenProgram(); }},
    {kIdSaveMenu, kIdSaveMenu, [](int, int) { ShowSaveMenu(); }},
    {kIdSaveAll, kIdSaveAll, [](int, int) { SaveAll(); }},
    {kIdTabFirst, kIdTabLast, ClickTab},
    {kIdTabNew, kIdTabNew, [](int, int) { NewProgram(); }},
    {kIdClose, kIdClose, [](int, int) { CloseProgram(); }},
    {kIdSaveAs, kIdSaveAs, SaveAsFromMenu},
    {kIdSave, kIdSave, [](int, int) { SaveProgramCommand(); }},
    {kIdClosePopup, kIdClosePopup, [](int, int) { CloseProgram(); }},
    {kIdComparePopup, kIdComparePopup, [](int, int) { RouteCommand(kIdCompare, 0); }},
};

}  // namespace

void RegisterDocumentCommands() {
  hooks.titleChanged = TabTitleChanged;
  hooks.openFirstTab = OpenFirstTab;
  for (const Command& row : kCommands) {
    RegisterCommand(RouterStage::Click, row.first, row.last, 0, row.handler);
  }
  RegisterCommand(RouterStage::Notified, kIdSaveAs, kNotifyBelowThree, SaveAsFromMenu);
  RegisterTimer(kTimerText, RunTextRefresh);
  RegisterTimer(kTimerAutosave, RunAutosave);
}

}  // namespace morva
