#include "shell/modes.h"

#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/panels.h"
#include "app/router.h"
#include "cad/tool_state.h"
#include "cad/workspace.h"
#include "dnc/serial_profile.h"
#include "documents/feature_blocks.h"
#include "documents/program_tabs.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "platform/timer.h"
#include "platform/window.h"
#include "shell/inline_rename.h"
#include "shell/layout.h"
#include "shell/owner_draw.h"
#include "shell/theme.h"

namespace morva {

const ModeRow kModeRows[kModeRowCount] = {
    {kModeHome, u"Home"},
    {kModeCadItem, u"CAD"},
    {kModePlateItem, u"Plate builder"},
    {kModeWizard, u"Machining wizard"},
    {kModeShapes, u"Shapes and slots"},
    {kModeTools, u"Tool library"},
    {kModeMacros, u"Macro library"},
    {kModeCodeIndex, u"Code index"},
    {kModeFind, u"Find and replace"},
    {kModeSimulator, u"Simulator"},
    {kModeDnc, u"DNC / RS-232"},
};

namespace {

constexpr const char16_t* kHeaders[] = {
    u"PROGRAM",        u"MACHINING WIZARD", u"TOOL LIBRARY",
    u"PROGRAM",        u"MACRO LIBRARY",    u"SHAPES / SLOTS",
    u"SLOT BUILDER",   u"CIRCULAR PATTERN", u"RECTANGULAR PATTERN",
    u"TOOLPATH",       u"DNC / RS-232",     u"DIAGNOSTICS",
    u"FIND / REPLACE",
};

constexpr const char16_t* kBuilderHelp =
    u"ACTIVE TOOL HELP\r\n\r\nAll generated code remains editable. Verify offsets, tooling, "
    u"compensation, workholding, and clearances before machining.";

BackHistory history;
bool returning = false;  // a return must not overwrite where it came from

// Remembers where the user stands before a change of mode that the back key undoes.
void RememberPlace(int mode) {
  const bool counts = mode == kModeWizard || mode == kModeTools || mode == kModeCodeIndex ||
                      mode == kModeSimulator || mode == kModeDnc || mode == kModeFind;
  if (!counts || mode == app.mode || returning) return;
  history.surface = app.surface;
  history.mode = app.mode;
}

void ShowModeWords() {
  platform::SelectRow(kIdModeList, ModeListRow(app.mode));
  platform::SetText(kIdPanelHead, ModeHeader(app.mode));
  platform::SetText(kIdHelpText, ModeHelp(app.mode));
  const bool home = app.mode == kModeHome && app.surface == kSurfaceCode;
  platform::SetText(kIdBack, home ? u"\u2190  Home" : u"\u2190");
}

void FillModePanel() {
  switch (app.mode) {
    case kModeHome:
    case kModeCodeIndex:
      WriteProgramInformation();
      break;
    case kModeSimulator:
      Call(hooks.rebuildToolpath);
      break;
    case kModeDnc:
      SetDncState(dncState);
      break;
    default:
      break;
  }
}

void EnterPanels() {
  for (int i = 0; i < PanelCount(); ++i) {
    if (PanelAt(i).mode == app.mode) Call(PanelAt(i).enter);
  }
}

void SelectInModeList(int, int) {
  const int row = platform::SelectedRow(kIdModeList);
  if (row < 0) return;
  const int mode = static_cast<int>(platform::RowData(kIdModeList, row));
  if (!ModeExists(mode)) {
    platform::SelectRow(kIdModeList, ModeListRow(app.mode));
    return;
  }
  if (mode == kModeCadItem) return SetSurface(kSurfaceCad);
  if (mode == kModePlateItem) return SetSurface(kSurfacePlate);
  SetMode(mode);
}

void PressSurface(int id, int) { SetSurface(id - kIdSurfaceCode); }

void PressFeatures(int, int) {
  app.sidebarShowsFeatures = true;
  RefreshFeatureList();
  SetMode(kModeHome);
}

void PressBack(int, int) { GoBack(); }
void PressDnc(int, int) { SetMode(kModeDnc); }
void PressFind(int, int) { SetMode(kModeFind); }

// The second route: modes by number, the window, the clipboard of whatever has the keyboard.
struct OldRoute {
  int id;
  int mode;
};
constexpr OldRoute kOldRoutes[] = {
    {901, kModeCodeIndex}, {902, kModeMacros},    {903, kModeShapes},      {904, kModeTools},
    {905, kModeWizard},    {906, kModeSimulator}, {907, kModeFind},        {908, kModeHome},
    {909, kModeCircular},  {910, kModeSlot},      {911, kModeRectangular}, {912, kModeCadItem},
};

void PressOldMode(int id, int) {
  for (const OldRoute& route : kOldRoutes) {
    if (route.id == id) return SetMode(route.mode);
  }
}

void PressOldClose(int, int) { platform::RequestClose(); }

void PressOldEdit(int id, int) {
  const int focused = platform::FocusedId();
  if (!platform::IsTextControl(focused)) return;
  platform::EditAction action = platform::EditAction::Undo;
  if (id == 915) action = platform::EditAction::Copy;
  if (id == 916) action = platform::EditAction::Paste;
  platform::RunEditAction(focused, action);
}

void RegisterWhereModeExists(int mode, RouterStage stage, int id, CommandHandler handler) {
  if (ModeExists(mode)) RegisterCommand(stage, id, platform::kNotifyClick, handler);
}

// The compare review and the pending completion belong to the code surface.
void EnterCad() {
  if (!returning) {
    history.surface = app.surface;
    history.mode = app.mode;
  }
  if (app.compareActive) Call(hooks.leaveCompare);
  app.surface = kSurfaceCad;
  ShowModeWords();
  Layout();
  FocusCadCanvas();
}

// Both pattern forms are panels of the CAD workspace; Home is the mode to return to.
void EnterPatternPanel(int mode) {
  app.mode = kModeHome;
  SetSurface(kSurfaceCad);
  OpenCadPattern(mode == kModeCircular ? kPanelCircular : kPanelRectangular);
}

}  // namespace

const char16_t* ModeHeader(int mode) {
  return mode >= kModeHome && mode <= kModeFind ? kHeaders[mode] : u"";
}

const char16_t* ModeHelp(int mode) {
  switch (mode) {
    case kModeHome:
      return u"QUICK WORKFLOW\r\n\r\n1. Open or create a program.\r\n2. Use COMMAND WORDS for an "
             u"editable plain-language project.\r\n3. Press F5 to run preflight.\r\n4. Refresh "
             u"PATH for a basic preview; verify motion at the control.";
    case kModeShapes:
    case kModeSlot:
      return kBuilderHelp;
    case kModeCircular:
      return u"CIRCULAR PATTERN\r\n\r\nPreview quantity, diameter, orientation, rotation, depth, "
             u"and safe Z before inserting editable G-code.";
    case kModeRectangular:
      return u"RECTANGULAR PATTERN\r\n\r\nPreview and verify row/column count, spacing, rotation, "
             u"depth, and safe Z before inserting editable G-code.";
    default:
      return u"";
  }
}

int ModeListRow(int mode) {
  for (int row = 0; row < kModeRowCount; ++row) {
    if (kModeRows[row].mode == mode) return row;
  }
  return -1;
}

bool ModeExists(int mode) {
  switch (mode) {
    case kModeHome:
    case kModeSimulator:
    case kModeCadItem:
    case kModeCircular:
    case kModeRectangular:
      return true;
    default:
      return HasPanel(mode);
  }
}

const BackHistory& History() { return history; }

void SetMode(int mode) {
  if (!ModeExists(mode)) return;
  if (mode == kModeCadItem) return SetSurface(kSurfaceCad);
  if (mode == kModeCircular || mode == kModeRectangular) return EnterPatternPanel(mode);
  RememberPlace(mode);
  if (app.compareActive) Call(hooks.leaveCompare);
  Call(hooks.hideCompletion);
  app.surface = kSurfaceCode;
  app.mode = mode;
  ShowModeWords();
  FillModePanel();
  Layout();
  EnterPanels();
  platform::Repaint(platform::kMainWindow);
}

void SetSurface(int surface) {
  if (surface != kSurfaceCode && surface != kSurfaceCad) return;  // still to come
  if (surface == kSurfaceCode) {
    const bool came = app.surface != kSurfaceCode;
    SetMode(app.mode);
    if (came) platform::SetFocusTo(ShownEditor());
  } else if (app.surface != surface) {
    EnterCad();
  }
  platform::StopTimer(platform::kMainWindow, kTimerCompletion);
  Call(hooks.hideCompletion);
  Call(hooks.refreshBuilderKeys);
  platform::Repaint(platform::kMainWindow);
}

void GoBack() {
  returning = true;
  const bool wasCode = app.surface == kSurfaceCode;
  SetMode(history.mode);
  if (!wasCode && app.surface == kSurfaceCode) platform::SetFocusTo(ShownEditor());
  if (history.surface != kSurfaceCode) SetSurface(history.surface);
  returning = false;
}

bool ModeListKey(const platform::KeyEvent& key) {
  if (key.ctrl || key.alt || key.shift) return false;
  int row = platform::SelectedRow(kIdModeList);
  int step = 0;
  if (key.key == platform::kKeyDown) step = 1;
  if (key.key == platform::kKeyUp) step = -1;
  if (key.key == platform::kKeyHome) row = -1, step = 1;
  if (key.key == platform::kKeyEnd) row = kModeRowCount, step = -1;
  if (step == 0) return false;
  for (row += step; row >= 0 && row < kModeRowCount; row += step) {
    const int mode = kModeRows[row].mode;
    if (!ModeExists(mode)) continue;
    platform::SelectRow(kIdModeList, row);
    if (mode == kModeCadItem || mode == kModePlateItem) {
      // A whole other workspace: the arrows only pass over it.
      ShowStatus(u"Enter opens this workspace.");
      break;
    }
    SelectInModeList(kIdModeList, platform::kNotifyListSelect);
    break;
  }
  return true;
}

void RegisterShellCommands() {
  RegisterInlineRename();
  hooks.layout = Layout;
  hooks.setMode = SetMode;
  hooks.setSurface = SetSurface;
  hooks.makeControls = MakeMainControls;
  hooks.drawListRow = DrawListRow;
  hooks.drawIcon = DrawIcon;
  const int click = platform::kNotifyClick;
  RegisterCommand(RouterStage::Notified, kIdModeList, platform::kNotifyListSelect,
                  SelectInModeList);
  RegisterCommand(RouterStage::Notified, kIdModeList, platform::kNotifyListDouble,
                  SelectInModeList);
  RegisterCommand(RouterStage::Surface, kIdSurfaceCode, click, PressSurface);
  if (ModeExists(kModeCadItem)) {
    RegisterCommand(RouterStage::Surface, kIdSurfaceCad, click, PressSurface);
  }
  if (ModeExists(kModePlateItem)) {
    RegisterCommand(RouterStage::Surface, kIdSurfacePlate, click, PressSurface);
  }
  RegisterCommand(RouterStage::Surface, kIdShowFeatures, click, PressFeatures);
  RegisterWhereModeExists(kModeDnc, RouterStage::FeatureSwitch, kIdMachine, PressDnc);
  for (int id : {kIdSetup, kIdSetupSecond, kIdOpenDncSetup}) {
    RegisterWhereModeExists(kModeDnc, RouterStage::Click, id, PressDnc);
  }
  for (int id : {kIdFind, kIdFindSecond}) {
    RegisterWhereModeExists(kModeFind, RouterStage::Click, id, PressFind);
  }
  RegisterCommand(RouterStage::Click, kIdBack, click, PressBack);
  RegisterCommand(RouterStage::Click, kIdOldFirst, click, PressOldClose);
  for (const OldRoute& route : kOldRoutes) {
    RegisterWhereModeExists(route.mode, RouterStage::Click, route.id, PressOldMode);
  }
  RegisterCommand(RouterStage::Click, kIdOldLast - 2, kIdOldLast, click, PressOldEdit);
}

void ResetModes() {
  history = BackHistory();
  returning = false;
}

}  // namespace morva
