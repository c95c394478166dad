#include "shell/start_up.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "app/data_dir.h"
#include "app/edit_menu.h"
#include "app/hooks.h"
#include "app/hover.h"
#include "app/outlets.h"
#include "app/panels.h"
#include "app/profile_keys.h"
#include "app/router.h"
#include "app/surfaces.h"
#include "builders/macros/macro_panel.h"
#include "builders/shapes/pattern_builders.h"
#include "builders/shapes/shape_panel.h"
#include "builders/tools/tool_panel.h"
#include "builders/wizard/wizard_panel.h"
#include "cad/panel/cad_room.h"
#include "codetools/caret_place.h"
#include "codetools/colours.h"
#include "codetools/completion_popup.h"
#include "codetools/editor_keys.h"
#include "codetools/find_pane.h"
#include "codetools/import_panel.h"
#include "codetools/index_panel.h"
#include "codetools/review.h"
#include "dnc/serial_profile.h"
#include "dnc/setup_panel.h"
#include "dnc/transfer.h"
#include "dnc/transfer_worker.h"
#include "documents/autosave.h"
#include "documents/builder_table.h"
#include "documents/destination.h"
#include "documents/disk_watch.h"
#include "documents/feature_operations.h"
#include "documents/insertion.h"
#include "documents/program_information.h"
#include "documents/program_tabs.h"
#include "documents/recent_files.h"
#include "documents/recovery.h"
#include "documents/save_state.h"
#include "documents/save_words.h"
#include "documents/saver.h"
#include "documents/saving.h"
#include "documents/tab_models.h"
#include "documents/text_refresh.h"
#include "forms/form.h"
#include "library/macros.h"
#include "library/shapes.h"
#include "library/tools.h"
#include "library/units.h"
#include "plate/panel/plate_room.h"
#include "platform/clock.h"
#include "platform/events.h"
#include "platform/message.h"
#include "platform/timer.h"
#include "platform/window.h"
#include "shell/inline_rename.h"
#include "shell/layout.h"
#include "shell/modes.h"
#include "shell/shell_commands.h"
#include "shell/shell_registry.h"
#include "shell/speed_slider.h"
#include "shell/strip.h"
#include "shell/theme.h"
#include "simulator/playback.h"
#include "simulator/toolpath.h"
#include "simulator/view.h"
#include "skim/panel/skim_room.h"

namespace morva {

namespace {

// The title at creation and in start-up boxes bears another number than the running one.
constexpr char16_t kStartTitle[] = u"MORVA v4.12.0";
constexpr platform::Rect kStartPlace{50, 35, 50 + 1560, 35 + 940};
constexpr int kLeastWidth = 1200;
constexpr int kLeastHeight = 800;
constexpr int kSmallHeight = 600;  // where the screen has no room for that
constexpr int kFirstRefreshMs = 80;
constexpr int kHoverMs = 150;

// Keys, lists and views tell of the pointer in ways of their own.
void NotePress() { NoteUserPress(platform::TickMilliseconds()); }

void OnCommand(int id, int notification) {
  if (notification <= platform::kNotifyListDouble) NotePress();
  if (notification == platform::kNotifyClick) HoverPressed(id);
  RouteCommand(id, notification);
  FormNotified(id, notification);
  SettleSurface();
  RefreshKeyStates();
  RefreshSpeedSlider();
  WriteProgramInformation();
}

// Offers an event to the rooms that listen to this id, until one answers true.
template <typename Offer>
bool OfferToRooms(int id, Offer offer) {
  for (int n = 0; const Handlers* handlers = HandlersOf(id, n); ++n) {
    if (offer(*handlers)) return true;
  }
  return false;
}

bool OnKey(int id, const platform::KeyEvent& key) {
  NoteUserKey(platform::TickMilliseconds());
  if (EditKey(id, key) || StripChord(key)) return true;
  const Surface* up = SurfaceUp();
  if (up && up->key && up->key(id, key)) {
    SettleSurface();
    return true;
  }
  if (OfferToRooms(id, [&key](const Handlers& h) { return h.key && h.key(key); })) return true;
  return FormKey(id, key) || RouteChord(kWindowChords, key);
}

void OnSelection(int id, bool byUser) {
  if (byUser) NotePress();
  OfferToRooms(id, [byUser](const Handlers& h) {
    Call(h.selection, byUser);
    return false;
  });
}

// A screen keyboard or an input method types without keys.
void OnTyped(int id, char16_t character) {
  NoteUserKey(platform::TickMilliseconds());
  OfferToRooms(id, [character](const Handlers& h) {
    if (h.typed) h.typed(character);
    return false;
  });
}

void OnFocusChanged(int id, bool gained) {
  OfferToRooms(id, [gained](const Handlers& h) {
    if (h.focusChanged) h.focusChanged(gained);
    return false;
  });
  FormFocusChanged(id, gained);
  const Surface* up = SurfaceUp();
  if (up) Call(up->focusChanged, id, gained);
  // The frame of a well tells that it has the keyboard.
  platform::Repaint(platform::kMainWindow);
}

void OnListClick(int id, int row, int x, int y) {
  NotePress();
  OfferToRooms(id, [row, x, y](const Handlers& h) {
    if (h.listClick) h.listClick(row, x, y);
    return false;
  });
  SettleSurface();
}

void OnDrawItem(int id, const platform::DrawState& state, platform::Canvas& canvas) {
  const bool drawn = OfferToRooms(id, [&](const Handlers& h) {
    if (h.drawItem) h.drawItem(state, canvas);
    return h.drawItem != nullptr;
  });
  if (!drawn) DrawOwnerItem(id, state, canvas);
}

void OnTimer(int window, int timer) {
  if (window == platform::kMainWindow) {
    RouteTimer(timer);
  } else {
    OfferToRooms(window, [timer](const Handlers& h) {
      if (h.timer) h.timer(timer);
      return h.timer != nullptr;
    });
  }
  RefreshKeyStates();
  RefreshSpeedSlider();
  // Markers and autosaves come by timer and change what the panel tells.
  if (timer == kTimerText || timer == kTimerAutosave) WriteProgramInformation();
  if (timer == kTimerText) FollowRenamedRow();
}

void OnPosted(std::uint32_t message, std::uint64_t first, std::uint64_t second) {
  RouteMessage(message, first, second);
}

void OnPaint(int id, platform::Canvas& canvas) {
  OfferToRooms(id, [&canvas](const Handlers& h) {
    if (h.paint) h.paint(canvas);
    return h.paint != nullptr;
  });
}

void OnViewValue(int id, platform::ViewValue& value) {
  OfferToRooms(id, [&value](const Handlers& h) {
    if (h.value) h.value(value);
    return h.value != nullptr;
  });
}

void OnChooseValue(int id, int step) {
  OfferToRooms(id, [step](const Handlers& h) {
    if (h.chooseValue) h.chooseValue(step);
    return h.chooseValue != nullptr;
  });
  RefreshSpeedSlider();
}

bool OnPointer(int id, const platform::PointerEvent& event) {
  using platform::PointerAction;
  if (event.action == PointerAction::Press || event.action == PointerAction::Release ||
      event.action == PointerAction::DoubleClick) {
    NotePress();
  }
  const bool used =
      OfferToRooms(id, [&event](const Handlers& h) { return h.pointer && h.pointer(event); });
  SettleSurface();
  return used;
}

bool OnContextMenu(int id, int row, int x, int y) {
  NotePress();
  // The right button first stops what a tool is doing.
  const Surface* up = SurfaceUp();
  if (up && Call(up->rightClick)) return true;
  if (OfferToRooms(id, [row, x, y](const Handlers& h) {
        return h.contextMenu && h.contextMenu(row, x, y);
      })) {
    return true;
  }
  if (EditContextMenu(id, x, y)) return true;
  up = SurfaceUp();
  return up && Call(up->contextMenu, id, row, x, y);
}

void OnResized(int width, int height) {
  (void)width;
  (void)height;
  Call(hooks.hideCompletion);
  Layout();
}

bool HasUnsavedTab() {
  SyncActiveTab();
  return std::ranges::any_of(std::span(tabs, static_cast<std::size_t>(app.tabCount)), HoldsUnsaved);
}

// Beside a question that names none of them.
void LogUnsavedTabs() {
  std::u16string names;
  for (int i = 0; i < app.tabCount; ++i) {
    if (!HoldsUnsaved(tabs[i])) continue;
    names += names.empty() ? u"" : u", ";
    names += NameOfTab(i);
  }
  AppendOutput(u"Unsaved changes in: " + names);
}

bool MayLoseUnsaved() {
  if (!HasUnsavedTab()) return true;
  LogUnsavedTabs();
  return Confirmed(u"MORVA", u"One or more project tabs have unsaved changes. Close MORVA anyway?");
}

// For a question about something else; empty where nothing is unsaved.
const char16_t* UnsavedToo() {
  if (!HasUnsavedTab()) return u"";
  LogUnsavedTabs();
  return u"\n\nUnsaved changes of one or more project tabs are lost too.";
}

// One question about all that would be lost. What comes whole while it stands is lost by no
// answer to it: a program that was received meanwhile is asked about like any other.
bool MayEndTransfer() {
  const bool receives = transfer.isReceive;
  std::u16string question = receives ? u"A program is being received. Abort it and close MORVA?"
                                     : u"A program is being sent. Abort it and close MORVA?";
  question += receives ? u"\n\nWhat has arrived so far is dropped."
                       : u"\n\nThe control keeps what has arrived so far: a part of a program.";
  question += UnsavedToo();
  if (!ConfirmedNoFirst(u"DNC Transfer", question)) return false;
  const bool cameWhole = receives && !transfer.active;
  EndTransferForGood();
  return !cameWhole || MayLoseUnsaved();
}

// A program that was received while no tab was free and no file took it.
bool MayLoseReceived() {
  return KeepHeldProgram() ||
         ConfirmedNoFirst(u"DNC Transfer",
                          u"A received program is in no tab, and no file could be written for it. "
                          u"Close MORVA and lose it?");
}

// A program that waits for its own Save As is saved behind it. False: the disk does not answer.
bool SaveAllForEnd() {
  RunAutosave();
  const bool waits = AutosaveWaits();
  if (!WaitForSaves()) return false;
  if (!waits) return true;
  RunAutosave();
  return WaitForSaves();
}

bool OnClosing() {
  if (!MayEndPanels()) return false;
  if (!SaveAllForEnd()) {
    std::u16string question =
        u"The disk does not answer; a save is still under way. Close MORVA anyway?";
    // The question about a transfer, which comes next, tells it then, unless the transfer ends
    // while this one stands.
    const bool told = !TransferRuns();
    if (told) question += UnsavedToo();
    if (!Confirmed(u"MORVA", question)) return false;
    const bool may = TransferRuns() ? MayEndTransfer() : told || MayLoseUnsaved();
    return may && MayLoseReceived();
  }
  // The abort comes last: what it ended cannot be taken back by a No.
  return MayCloseSurfaces() && (TransferRuns() ? MayEndTransfer() : MayLoseUnsaved()) &&
         MayLoseReceived();
}

// Nobody is there to answer. What may not go into its own file unasked is kept in the data
// directory.
void OnTerminated() {
  SaveWithoutBoxes();
  EndTransferForGood();
  SaveAllForEnd();
  if (!app.dataDirReady) SaveOpenFiles();
  SyncActiveTab();
  StashActiveWorkspace();
  for (int i = 0; i < app.tabCount; ++i) {
    std::u16string kept;
    if (HoldsUnsaved(tabs[i])) KeepProgramInRecovery(tabs[i], kept);
  }
  WaitForSaves();
}

void OnDropped(const std::vector<std::u16string>& paths) {
  OpenProgramFiles(paths);
  SettleSurface();
  RefreshKeyStates();
  WriteProgramInformation();
}

void OnActivated() { WatchDisk(); }

void OnDestroyed() {
  FreeTabs();
  platform::QuitLoop(0);
}

const platform::Events& EventRecord() {
  static platform::Events events;
  events.command = OnCommand;
  events.selection = OnSelection;
  events.key = OnKey;
  events.timer = OnTimer;
  events.posted = OnPosted;
  events.paint = OnPaint;
  events.viewValue = OnViewValue;
  events.chooseValue = OnChooseValue;
  events.drawItem = OnDrawItem;
  events.typed = OnTyped;
  events.focusChanged = OnFocusChanged;
  events.listClick = OnListClick;
  events.pointer = OnPointer;
  events.contextMenu = OnContextMenu;
  events.dropped = OnDropped;
  events.resized = OnResized;
  events.closing = OnClosing;
  events.activated = OnActivated;
  events.terminated = OnTerminated;
  events.destroyed = OnDestroyed;
  return events;
}

void JoinRooms() {
  ClearCommands();
  ClearPanels();
  ClearSurfaces();
  ResetCommandWords();
  ResetForms();
  ResetBuilders();
  RegisterDocumentCommands();
  RegisterFeatureCommands();
  RegisterDestinationPicker();
  RegisterCodeToolCommands();
  RegisterSimulatorCommands();
  RegisterUnitCommands();
  RegisterShapeLibrary();
  RegisterTools();
  RegisterMacros();
  RegisterWizard();
  RegisterShapeBuilder();
  RegisterTransferCommands();
  RegisterSetupPanel();
  RegisterCad();
  RegisterPlateRoom();
  RegisterPatternBuilders();
  RegisterSkim();
  RegisterShellCommands();
  RegisterTimer(kTimerHover, HoverTick);
  hooks.tellStanding = [] { return TellTransfer() || TellHoldOfShown(); };
}

// Everything that stands in the window before it is shown.
void FillMainWindow() {
  MakeMainControls();
  SwitchTab(OpenTab(u"", u"", u"Untitled-1.NC"));
  LoadToolLibrary();
  RefreshToolLists();
  LoadMacroLibrary();
  FillMacroList();
  LoadShapeLibrary();
  RefreshShapeLists();
  RebuildToolpath();
  LoadSerialProfile();
  LoadRecentFiles();
  SetDncState(kDncOffline);
  SetMode(kModeHome);
  Layout();
  RefreshSpeedSlider();
  ArmTextRefresh(kFirstRefreshMs);
  platform::StartTimer(platform::kMainWindow, kTimerHover, kHoverMs);
}

}  // namespace

int StartApplication(const std::vector<std::u16string>& programs) {
  JoinRooms();
  platform::ListenTo(&EventRecord());
  platform::MainWindowSpec spec;
  spec.className = u"MorvaDeskWnd";
  spec.title = kStartTitle;
  spec.place = kStartPlace;
  spec.minimumWidth = kLeastWidth;
  spec.minimumHeight = kLeastHeight;
  spec.smallHeight = kSmallHeight;
  spec.background = kWindowBackground;
  if (!platform::MakeMainWindow(spec)) {
    platform::ShowBox(kStartTitle, u"Could not create the main window.", platform::BoxButtons::Ok,
                      platform::BoxIcon::Error);
    return 2;
  }
  FillMainWindow();
  FindDataDirectory();
  TellWhereSettingsAre();
  platform::DarkTitleBar();
  platform::SetWindowIcon(PaintWindowIcon);
  platform::ShowMainWindow();
  platform::SetFocusTo(kIdEditor);
  if (!programs.empty()) OpenProgramFiles(programs);
  return 0;
}

void ResetApplication() {
  ClearCommands();
  ClearPanels();
  ClearSurfaces();
  ResetCommandWords();
  hooks = Hooks();
  ResetHover();
  ResetTransfer();
  ResetSetupPanel();
  ResetSerialProfile();
  ResetAutosave();
  ResetInsertion();
  ResetCompletion();
  ResetCaretPlace();
  ResetFindPane();
  ResetIndexPanel();
  ResetReview();
  ResetImportPanel();
  ResetFeatureOperations();
  ResetCad();
  ResetSkim();
  ResetPlateRoom();
  ResetDocuments();
  ResetSimulator();
  ResetView();
  ResetUnits();
  ResetTools();
  ResetMacroLibrary();
  ResetShapeLibrary();
  ResetShapeBuilder();
  ResetInlineRename();
  ResetShell();
  ResetForms();
  ResetBuilders();
  ResetAppState();
}

}  // namespace morva
