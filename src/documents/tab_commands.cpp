// The commands of the tab bar and of the keys NEW, OPEN, SAVE and CLOSE.

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/panels.h"
#include "app/router.h"
#include "app/surfaces.h"
#include "documents/autosave.h"
#include "documents/disk_watch.h"
#include "documents/document_commands.h"
#include "documents/editor_changes.h"
#include "documents/file_kinds.h"
#include "documents/file_text.h"
#include "documents/program_information.h"
#include "documents/program_print.h"
#include "documents/program_tabs.h"
#include "documents/recent_files.h"
#include "documents/recovery.h"
#include "documents/save_state.h"
#include "documents/saver.h"
#include "documents/saving.h"
#include "documents/tab_table.h"
#include "documents/text_refresh.h"
#include "platform/control.h"
#include "platform/file.h"
#include "platform/message.h"
#include "platform/pick_file.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {
namespace {

constexpr platform::FileFilter kOpenFilters[] = {
    {u"Haas programs (*.NC;*.TAP;*.GCODE)", kProgramPatterns},
    kTextFiles,
    kAllFiles,
};

// The box that comes tells neither which file nor why.
void TellNotOpened(std::u16string_view words) {
  AppendOutput(u"Not opened: " + std::u16string(words));
}

void TellNoTabFor(const std::u16string& path) { TellNotOpened(path + u"  (8 programs are open)"); }

// NULs are left out of every text. A file that holds them between its lines may be no text at
// all, so that it is opened as a program without a path and no save can replace it.
int OpenWithoutNuls(std::u16string_view path, std::u16string text) {
  TakeByteOrderMark(text);
  const int index = OpenOwnedTab(u"", std::move(text), BareFileName(path));
  if (index >= 0) {
    AppendOutput(
        u"The file holds NUL characters. It was opened without them as a new program; the file "
        u"stays as it is.");
  }
  return index;
}

int OpenWhatWasRead(const std::u16string& path, std::string& bytes, const DiskState& state) {
  std::u16string text;
  if (!TakeProgram(bytes, text)) return OpenWithoutNuls(path, std::move(text));
  const bool marked = TakeByteOrderMark(text);
  const int index = OpenOwnedTab(path, std::move(text), u"Program.NC");
  if (index < 0) return index;
  NoteDisk(tabs[index], state);
  NoteByteOrderMark(tabs[index], marked);
  if (marked) {
    AppendOutput(
        u"The file begins with a byte order mark. A save keeps it in front of the program; it is "
        u"not shown and never sent.");
  }
  return index;
}

int OpenFromFile(const std::u16string& path) {
  std::string bytes;
  DiskState state;
  if (!ReadWithState(path, bytes, state)) {
    TellNotOpened(UnreadFileWords(path));
    return -1;
  }
  const int index = OpenWhatWasRead(path, bytes, state);
  if (index < 0) TellNoTabFor(path);
  return index;
}

// The user asked for this program: the keyboard is in its code or words.
void ShowTab(int index) {
  SwitchTab(index);
  platform::SetFocusTo(ShownEditor());
}

// True: the file is open already, and its tab is shown now.
bool ShowOpenFile(const std::u16string& path) {
  const int index = TabOfFile(path);
  if (index < 0) return false;
  // A tab that comes up asks for itself where the user has not touched it.
  const bool asks = index != app.activeTab && !IsTouched(tabs[index]);
  ShowTab(index);
  ShowStatus(u"This file is open already; its tab is shown.");
  if (!asks) SettleActiveFile();
  return true;
}

bool MayLosePlate() {
  std::u16string question = kPlateLeftOut;
  question += u"\n\nClose this program and lose the changes of its plate?";
  return ConfirmedNoFirst(u"Close Program", question);
}

enum class Settled { StaysOpen, Saved, ThrownAway };

// Asks about the active program and saves it where that is wanted.
Settled SettleChanges() {
  const std::uint64_t serial = ActiveSerial();
  const platform::BoxAnswer answer =
      platform::ShowBox(u"Close Program", u"Save changes before closing this program?",
                        platform::BoxButtons::YesNoCancel, platform::BoxIcon::Question);
  if (answer == platform::BoxAnswer::Cancel || !ReturnToTab(serial)) return Settled::StaysOpen;
  if (answer == platform::BoxAnswer::No) return Settled::ThrownAway;
  if (!SaveAndWait() || !ReturnToTab(serial)) return Settled::StaysOpen;
  const bool whole = !ActiveTab()->save.plateLeftOut || (MayLosePlate() && ReturnToTab(serial));
  return whole ? Settled::Saved : Settled::StaysOpen;
}

// What no file keeps is asked about too, unless all changes were thrown away. False: the active
// program stays open.
bool MayClose() {
  const Settled settled = HoldsUnsaved(*ActiveTab()) ? SettleChanges() : Settled::Saved;
  return settled != Settled::StaysOpen && (settled == Settled::ThrownAway || MayCloseProgram());
}

// The popup of a menu over the active program; what is picked is done to that program, also
// when another one came up meanwhile. -1 when no menu could be made.
template <typename ShowMenu>
int PickForActiveTab(ShowMenu show) {
  const std::uint64_t serial = ActiveSerial();
  const int picked = show();
  if (picked > 0 && ReturnToTab(serial)) RouteCommand(picked, 0);
  return picked;
}

}  // namespace

void NewProgram() {
  Call(hooks.leaveCompare);
  const std::u16string title = u"Untitled-" + IntegerText(app.tabCount + 1) + kProgramEnd;
  const int index = OpenTab(u"", u"", title);
  if (index < 0) return;
  ShowTab(index);
  AppendOutput(u"New program opened in a workspace tab.");
}

bool PickProgramToOpen(const char16_t* title, std::u16string& path) {
  platform::PickFileSpec spec;
  spec.title = title;
  spec.filters = kOpenFilters;
  spec.filterCount = static_cast<int>(std::size(kOpenFilters));
  spec.capacity = kPathUnits;
  const std::u16string folder = LastFolder();
  spec.folder = folder.c_str();
  if (!platform::PickFileToOpen(spec, path)) return false;
  NoteFolderOf(path);
  return true;
}

void OpenProgram() {
  Call(hooks.leaveCompare);
  std::u16string path;
  if (PickProgramToOpen(u"Open Haas Program", path)) OpenProgramFile(path);
}

void OpenProgramFile(const std::u16string& path) {
  // A program whose file is still being written is read when it is whole.
  const int open = TabOfFile(path);
  WaitForSavesOf(path, open >= 0 ? tabs[open].serial : 0);
  if (ShowOpenFile(path)) return NoteRecentFile(path);
  const int index = OpenFromFile(path);
  if (index < 0) {
    platform::ShowBox(u"Open Error", kOpenFailed, platform::BoxButtons::Ok,
                      platform::BoxIcon::Error);
    return;
  }
  ShowTab(index);
  NoteRecentFile(path);
  AppendOutput(u"Opened program in a new workspace tab.  " + path);
  TellKeptCopies(tabs[index]);
}

void OpenProgramFiles(std::span<const std::u16string> paths) {
  Call(hooks.leaveCompare);
  bool full = false;
  for (const std::u16string& path : paths) {
    const bool shown = TabOfFile(path) >= 0;
    full = full || (!shown && !RoomForTab());
    // A path that is cut leads to another file.
    const bool whole = path.size() < kPathUnits;
    if (shown || (!full && whole)) {
      OpenProgramFile(path);
    } else if (full) {
      TellNoTabFor(path);
    } else {
      TellNotOpened(path + u"  (its path is too long)");
    }
  }
}

void CloseProgram() {
  if (!ActiveTab()) return;
  Call(hooks.leaveCompare);
  const std::uint64_t serial = ActiveSerial();
  WaitForSavesOf(PathToBe(*ActiveTab()), serial);
  // Another program may have come up while the disk was waited for.
  if (!ReturnToTab(serial) || !MayClose() || !ReturnToTab(serial)) return;
  Call(hooks.leaveImport);
  const int closed = app.activeTab;
  RemoveTab(closed);
  if (app.tabCount == 0) OpenTab(u"", u"", u"Untitled-1.NC");
  SwitchTab(std::min(closed, app.tabCount - 1));
  RefreshTabButtons();
  Call(hooks.layout);
  platform::SetFocusTo(ShownEditor());
}

void SaveAll() {
  if (app.tabCount == 0) return;
  SyncActiveTab();
  const std::uint64_t before = ActiveSerial();
  bool complete = true;
  bool leftOut = false;
  for (int i = 0; complete && i < app.tabCount; ++i) {
    if (!tabs[i].dirty && !HoldsUnsaved(tabs[i])) continue;
    SwitchTab(i);
    const std::uint64_t serial = ActiveSerial();
    complete = SaveAndWait();
    SyncActiveTab();
    // "Load again" settles it as well: nothing is left to be saved.
    const ProgramTab* const tab = TabOfSerial(serial);
    complete = complete || (tab && !tab->dirty);
    leftOut = leftOut || (tab && tab->save.plateLeftOut);
  }
  const int index = IndexOfSerial(before);
  if (index >= 0) SwitchTab(index);
  if (complete && leftOut) return AppendOutput(u"Save All complete, but for a plate as shown.");
  AppendOutput(complete ? u"Save All complete."
                        : u"Save All stopped; some programs remain unsaved.");
}

void ShowSaveMenu() {
  constexpr MenuRow kRows[] = {{kIdSave}, {kIdSaveAs}, {kIdSaveAll}};
  const platform::Rect place = platform::PlaceInMainWindow(kIdSaveMenu);
  const int picked = PickForActiveTab(
      [&] { return ShowCommandMenu(kRows, place.left, place.bottom, MenuStyle::Captions); });
  if (picked < 0) SaveProgramCommand();
}

namespace {

// The name, and the end of a long folder: what tells one job from another stands there.
std::u16string RecentWords(const std::u16string& path) {
  constexpr std::size_t kShownFolder = 60;
  const std::u16string_view name = BareFileName(path);
  std::u16string folder = path.substr(0, path.size() - name.size());
  if (folder.size() > 1) folder.pop_back();
  if (folder.size() > kShownFolder)
    folder = u"\u2026" + folder.substr(folder.size() - kShownFolder);
  return std::u16string(name) + u"\t" + folder;
}

// The user chose it from the list.
void OpenRecentFile(int index) {
  const std::u16string path = RecentFile(index);
  if (path.empty()) return;
  if (!platform::FileExists(path)) {
    DropRecentFile(index);
    platform::ShowBox(u"Open Error",
                      path + u"\r\n\r\nThis file is not there any more. It goes off the list.",
                      platform::BoxButtons::Ok, platform::BoxIcon::Warning);
    return;
  }
  Call(hooks.leaveCompare);
  OpenProgramFile(path);
}

void PressOpen() {
  const int at = platform::ClickedAt();
  const int arrow = RectWidth(platform::PlaceOf(kIdOpen)) - kOpenArrowWidth;
  if (at >= 0 && at >= arrow) return ShowRecentMenu();
  OpenProgram();
}

}  // namespace

void ShowRecentMenu() {
  std::vector<std::u16string> words;
  std::vector<MenuRow> rows;
  words.reserve(kMaxRecentFiles);
  for (int i = 0; i < RecentFileCount(); ++i) {
    words.push_back(RecentWords(RecentFile(i)));
    rows.push_back({.id = kIdRecentFirst + i, .words = words.back().c_str()});
  }
  if (rows.empty()) {
    rows.push_back({.id = kIdRecentFirst, .enabled = false, .words = u"No program opened yet"});
  }
  rows.push_back({});
  for (const int id : {kIdPrintProgram, kIdKeysPage}) {
    if (CommandOf(id)) rows.push_back({id});
  }
  const platform::Rect place = platform::PlaceInMainWindow(kIdOpen);
  const int picked = ShowCommandMenu(rows, place.left, place.bottom);
  if (picked > 0) RouteCommand(picked, platform::kNotifyClick);
}

void ShowTabMenu(int index, int x, int y) {
  if (index < 0 || index >= app.tabCount) return;
  Call(hooks.leaveCompare);
  SwitchTab(index);
  constexpr MenuRow kRows[] = {
      {kIdSave}, {kIdSaveAs}, {}, {kIdComparePopup}, {}, {kIdClosePopup},
  };
  PickForActiveTab([&] { return ShowCommandMenu(kRows, x, y); });
}

namespace {

void ClickTab(int id, int) {
  const int index = id - kIdTabFirst;
  if (index >= app.tabCount) return;
  if (platform::CtrlHeld()) {
    SelectForCompare(index, !tabs[index].compareSelected);
    RefreshTabButtons();
    ShowStatus(kCompareMarkedWords);
    return;
  }
  Call(hooks.leaveCompare);
  ShowTab(index);
}

void SaveAsFromMenu(int, int) {
  SaveProgramAs();
  SyncActiveTab();
  WriteProgramInformation();
}

struct Answer {
  int first;
  int last;
  CommandHandler handler;
};

constexpr Answer kAnswers[] = {
    {kIdNew, kIdNew, [](int, int) { NewProgram(); }},
    {kIdOpen, kIdOpen, [](int, int) { PressOpen(); }},
    {kIdPrintProgram, kIdPrintProgram, [](int, int) { PrintProgram(); }},
    {kIdRecentMenu, kIdRecentMenu, [](int, int) { ShowRecentMenu(); }},
    {kIdRecentFirst, kIdRecentLast, [](int id, int) { OpenRecentFile(id - kIdRecentFirst); }},
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

template <int index>
void ListenToTab() {
  Handlers handlers;
  handlers.id = kIdTabFirst + index;
  handlers.contextMenu = [](int, int x, int y) {
    if (index >= app.tabCount) return false;
    ShowTabMenu(index, x, y);
    return true;
  };
  RegisterHandlers(handlers);
}

template <int... indices>
void ListenToTabs(std::integer_sequence<int, indices...>) {
  (ListenToTab<indices>(), ...);
}

bool OpenRecent() {
  ShowRecentMenu();
  return true;
}

constexpr ChordPlace kOpenChords{u"OPEN"};
constexpr KeyRow kOpenKeys[] = {
    {PlainKey(kOpenChords, platform::kKeyDown), u"Choose from the last ones", OpenRecent},
};

}  // namespace

bool ProgramKey(const platform::KeyEvent& key) { return RouteChord(kProgramChords, key); }

void RegisterDocumentCommands() {
  AddCommands(DocumentCommands());
  hooks.titleChanged = TabTitleChanged;
  hooks.twinWords = [] { return ActiveTab() ? TwinWords(app.activeTab) : std::u16string(); };
  for (const Answer& row : kAnswers) {
    RegisterCommand(RouterStage::Click, row.first, row.last, 0, row.handler);
  }
  for (const int id : {kIdEditor, kIdWordsEditor}) {
    RegisterCommand(RouterStage::Notified, id, platform::kNotifyEditChange,
                    [](int editor, int) { EditorChanged(editor); });
  }
  Handlers open;
  open.id = kIdOpen;
  open.key = [](const platform::KeyEvent& key) { return RunKeyRow(kOpenKeys, key); };
  open.keys = kOpenKeys;
  open.contextMenu = [](int, int, int) {
    ShowRecentMenu();
    return true;
  };
  RegisterHandlers(open);
  ListenToTabs(std::make_integer_sequence<int, kMaxTabs>());
  RegisterSaveCommands();
  RegisterCommand(RouterStage::Notified, kIdSaveAs, kNotifyBelowThree, SaveAsFromMenu);
  RegisterTimer(kTimerText, RunTextRefresh);
  RegisterTimer(kTimerAutosave, RunAutosave);
  RegisterTimer(kTimerCompletion, RunCompletionRefresh);
  RegisterMessage(kMessageCompletion,
                  [](unsigned long long, unsigned long long) { Call(hooks.refreshCompletion); });
}

}  // namespace morva
