#include "shell/modes.h"

#include "app/command_ids.h"
#include "app/commands.h"
#include "app/hooks.h"
#include "app/mode_table.h"
#include "app/outlets.h"
#include "app/panels.h"
#include "app/surfaces.h"
#include "documents/builder_table.h"
#include "documents/edit_link.h"
#include "documents/program_information.h"
#include "documents/tab_table.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "platform/timer.h"
#include "platform/window.h"
#include "shell/layout.h"

namespace morva {

namespace {

constexpr ModeKey kHomeKeys[] = {{kIdOldModeFirst + 7}};
constexpr ModeKey kSimulatorKeys[] = {{kIdOldModeFirst + 5}};
constexpr ModeRow kModes[] = {
    {.mode = kModeHome,
     .place = 1,
     .words = u"Home",
     .header = u"PROGRAM",
     .help = u"QUICK WORKFLOW\r\n\r\n1. Open or create a program.\r\n2. Use COMMAND WORDS for an "
             u"editable plain-language project.\r\n3. Press F5 to run preflight.\r\n4. Refresh "
             u"PATH for a basic preview; verify motion at the control.",
     .icon = kIconHome,
     .wide = true,
     .bare = true,
     .keys = kHomeKeys,
     .fill = WriteProgramInformation},
    {.mode = kModeSimulator,
     .place = 10,
     .words = u"Simulator",
     .header = u"TOOLPATH",
     .icon = kIconSimulator,
     .remembers = true,
     .wide = true,
     .bare = true,
     .keys = kSimulatorKeys,
     .fill = [] { Call(hooks.rebuildToolpath); }},
};

BackHistory history;
BackHistory behind;      // where it led before a surface that may be done with by now
BackHistory unfinished;  // the surface to be finished that was left last, where looks lie over it
bool returning = false;  // a return must not overwrite where it came from
int entered = -1;        // the mode whose panels were entered and not left yet

// A surface that is not done with, as a wizard is until it is inserted or cancelled.
bool IsUnfinished(const Surface* surface) {
  return surface && surface->mayReturn && surface->mayReturn();
}

// Where the user stands is where the back key leads.
void Remember() {
  const Surface* up = SurfaceUp();
  if (up && up->mayReturn && history.surface != app.surface) behind = history;
  history = {app.surface, app.mode};
}

// What is not done with must not be lost behind several looks at something else.
void RememberUnfinished() {
  if (IsUnfinished(SurfaceUp())) unfinished = {app.surface, app.mode};
}

// Whether the back key has nowhere to go but to what is still to be finished.
bool OnlyUnfinishedIsLeft() {
  const bool here = history.surface == app.surface && history.mode == app.mode;
  return here && unfinished.surface != app.surface && IsUnfinished(SurfaceOf(unfinished.surface));
}

// Remembers where the user stands before a change of mode that the back key undoes.
void RememberPlace(int mode) {
  if (ModeOf(mode).remembers && mode != app.mode && !returning) Remember();
}

void ShowModeWords() {
  platform::SelectRow(kIdModeList, ModeListRow(app.mode));
  platform::SetText(kIdPanelHead, ModeOf(app.mode).header);
  platform::SetText(kIdHelpText, ModeOf(app.mode).help);
  const bool home = app.mode == kModeHome && app.surface == kSurfaceCode;
  const bool leads = IsUnfinished(SurfaceOf(history.surface)) || OnlyUnfinishedIsLeft();
  ShowWords(kIdBack, !home || leads);
}

void EnterPanels() {
  entered = app.mode;
  for (int i = 0; i < PanelCount(); ++i) {
    if (IsPanelOf(PanelAt(i), app.mode)) Call(PanelAt(i).enter);
  }
}

// `mode` is up now, -1 for a surface.
void LeavePanels(int mode) {
  if (entered < 0 || entered == mode) return;
  const int former = entered;
  entered = -1;
  for (int i = 0; i < PanelCount(); ++i) {
    if (PanelAt(i).mode == former) Call(PanelAt(i).left);
  }
}

// Whether the surface that is up, if it is another one, lets this one come.
bool MayBringUp(int surface) {
  const Surface* up = SurfaceUp();
  return !up || up->surface == surface || !up->mayLeave || up->mayLeave();
}

// Makes `surface` the current one and tells the former that it was left.
void TakeSurface(int surface) {
  const Surface* former = SurfaceUp();
  app.surface = surface;
  if (former && former->surface != surface) Call(former->left);
}

void ShowMode(int mode) {
  RememberPlace(mode);
  RememberUnfinished();
  if (app.compareActive) Call(hooks.leaveCompare);
  Call(hooks.hideCompletion);
  app.mode = mode;
  const int keyboard = platform::FocusedId();
  TakeSurface(kSurfaceCode);
  LeavePanels(mode);
  ShowModeWords();
  Call(ModeOf(app.mode).fill);
  Layout();
  // From a control that went, the toolkit takes the keyboard to the first one of the window: NEW.
  if (keyboard != 0 && !platform::IsVisible(keyboard)) platform::SetFocusTo(ShownEditor());
  EnterPanels();
  platform::Repaint(platform::kMainWindow);
}

// The compare review and the pending completion belong to the code surface.
void EnterSurface(const Surface& surface) {
  if (!returning && surface.returns) Remember();
  RememberUnfinished();
  if (app.compareActive) Call(hooks.leaveCompare);
  TakeSurface(surface.surface);
  LeavePanels(-1);
  ShowModeWords();
  Layout();
  Call(surface.enter);
}

// Without a question, where the surface exists.
void BringUp(int surface) {
  const bool came = app.surface != surface;
  const Surface* record = SurfaceOf(surface);
  if (surface == kSurfaceCode) {
    if (!returning && IsUnfinished(SurfaceUp())) Remember();
    ShowMode(app.mode);
    if (came) platform::SetFocusTo(ShownEditor());
  } else if (came && record) {
    EnterSurface(*record);
  }
  platform::StopTimer(platform::kMainWindow, kTimerCompletion);
  Call(hooks.hideCompletion);
  ShowBuilderKeys(editLink.kind);
  platform::Repaint(platform::kMainWindow);
}

// A mode that is a page of a surface: Home is the mode to return to.
void OpenPage(const Surface& surface, int mode) {
  if (!MayBringUp(surface.surface)) return;
  app.mode = kModeHome;
  BringUp(surface.surface);
  Call(surface.openPage, mode);
}

}  // namespace

void RegisterShellModes() {
  for (const ModeRow& row : kModes) RegisterMode(row);
}

int ModeListRow(int mode) {
  for (int row = 0; const ModeRow* listed = ListedMode(row); ++row) {
    if (listed->mode == mode) return row;
  }
  return -1;
}

bool ModeExists(int mode) { return ModeOf(mode).bare || HasPanel(mode) || SurfaceOfMode(mode); }

const BackHistory& History() { return history; }

void SetMode(int mode) {
  if (!ModeExists(mode)) return;
  const Surface* surface = SurfaceOfMode(mode);
  if (surface && mode == surface->row) return SetSurface(surface->surface);
  if (surface) return OpenPage(*surface, mode);
  if (MayBringUp(kSurfaceCode)) ShowMode(mode);
}

void SetSurface(int surface) {
  if (surface != kSurfaceCode && !SurfaceOf(surface)) return;  // still to come
  if (MayBringUp(surface)) BringUp(surface);
}

void GoBack() {
  const Surface* up = SurfaceUp();
  if (up && up->back && up->back()) return;
  for (int i = 0; i < PanelCount(); ++i) {
    if (IsPanelActive(PanelAt(i)) && Call(PanelAt(i).back)) return;
  }
  const Surface* former = SurfaceOf(history.surface);
  if (former && former->mayReturn && !former->mayReturn()) history = behind;
  if (OnlyUnfinishedIsLeft()) history = unfinished;
  if (!MayBringUp(history.surface)) return;
  returning = true;
  const bool wasCode = app.surface == kSurfaceCode;
  ShowMode(history.mode);
  if (!wasCode) platform::SetFocusTo(ShownEditor());
  if (history.surface != kSurfaceCode) BringUp(history.surface);
  returning = false;
}

void TakeListedMode() {
  const int row = platform::SelectedRow(kIdModeList);
  if (row < 0) return;
  const int mode = static_cast<int>(platform::RowData(kIdModeList, row));
  if (!ModeExists(mode)) {
    platform::SelectRow(kIdModeList, ModeListRow(app.mode));
    return;
  }
  SetMode(mode);
}

namespace {

constexpr std::u16string_view kEnterOpens = u"Enter opens this workspace.";

// From the row behind `row`, the next one in steps of `step` whose mode exists.
bool StepModes(int row, int step) {
  const int rows = platform::RowCount(kIdModeList);
  for (row += step; row >= 0 && row < rows; row += step) {
    const int mode = static_cast<int>(platform::RowData(kIdModeList, row));
    if (!ModeExists(mode)) continue;
    platform::SelectRow(kIdModeList, row);
    if (SurfaceOfMode(mode)) {
      // A whole other workspace: the arrows only pass over it.
      ShowStatus(kEnterOpens);
      break;
    }
    if (app.statusText == kEnterOpens) ShowStanding();
    TakeListedMode();
    // A panel may take the keyboard as it comes up: Enter leads there, the arrows lead on.
    if (app.mode == mode) platform::SetFocusTo(kIdModeList);
    break;
  }
  return true;
}

bool OpenListedMode() {
  TakeListedMode();
  return true;
}

constexpr ChordPlace kListChords{u"list of workspaces"};
constexpr KeyRow kListKeys[] = {
    {PlainKey(kListChords, platform::kKeyUp), u"Go to the workspace above",
     [] { return StepModes(platform::SelectedRow(kIdModeList), -1); }},
    {PlainKey(kListChords, platform::kKeyDown), u"Go to the workspace below",
     [] { return StepModes(platform::SelectedRow(kIdModeList), 1); }},
    {PlainKey(kListChords, platform::kKeyHome), u"First workspace",
     [] { return StepModes(-1, 1); }},
    {PlainKey(kListChords, platform::kKeyEnd), u"Last workspace",
     [] { return StepModes(platform::RowCount(kIdModeList), -1); }},
    {PlainKey(kListChords, platform::kKeyEnter), u"Open the workspace", OpenListedMode},
};

}  // namespace

std::span<const KeyRow> ModeListKeys() { return kListKeys; }

bool ModeListKey(const platform::KeyEvent& key) { return RunKeyRow(kListKeys, key); }

void ResetModes() {
  history = BackHistory();
  behind = BackHistory();
  unfinished = BackHistory();
  returning = false;
  entered = -1;
}

}  // namespace morva
