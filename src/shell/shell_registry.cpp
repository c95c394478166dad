#include "shell/shell_registry.h"

#include <iterator>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/edit_menu.h"
#include "app/hooks.h"
#include "app/panels.h"
#include "app/router.h"
#include "documents/feature_blocks.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "shell/icons.h"
#include "shell/inline_rename.h"
#include "shell/layout.h"
#include "shell/modes.h"
#include "shell/owner_draw.h"
#include "shell/shell_commands.h"
#include "shell/speed_slider.h"
#include "shell/theme.h"

namespace morva {

namespace {

void PickMode(int, int) { TakeListedMode(); }
void PressCode(int, int) { SetSurface(kSurfaceCode); }

void PressFeatures(int, int) {
  ShowFeaturesInSidebar(true);
  RefreshFeatureList();
  SetMode(kModeHome);
}

void PressBack(int, int) { GoBack(); }
void PressDnc(int, int) { SetMode(kModeDnc); }
void PressFind(int, int) { SetMode(kModeFind); }

// The second route: modes by number, the window, the clipboard of whatever has the keyboard.
constexpr int kOldModes[] = {kModeCodeIndex, kModeMacros,    kModeShapes,      kModeTools,
                             kModeWizard,    kModeSimulator, kModeFind,        kModeHome,
                             kModeCircular,  kModeSlot,      kModeRectangular, kModeCadItem,
                             kModePlateItem};
static_assert(std::size(kOldModes) == kIdOldModeLast - kIdOldModeFirst + 1);

void PressOldMode(int id, int) { SetMode(kOldModes[id - kIdOldModeFirst]); }

void PressOldClose(int, int) { platform::RequestClose(); }

void PressOldEdit(int id, int) {
  const int focused = platform::FocusedId();
  if (!platform::IsTextControl(focused)) return;
  platform::EditAction action = platform::EditAction::Undo;
  if (id == kIdOldCopy) action = platform::EditAction::Copy;
  if (id == kIdOldPaste) action = platform::EditAction::Paste;
  platform::RunEditAction(focused, action);
}

void RegisterWhereModeExists(int mode, RouterStage stage, int id, CommandHandler handler) {
  if (ModeExists(mode)) RegisterCommand(stage, id, platform::kNotifyClick, handler);
}

void ListenToWindow() {
  Handlers window;
  window.id = platform::kMainWindow;
  window.paint = PaintMainWindow;
  window.pointer = MainPointer;
  RegisterHandlers(window);
  Handlers list;
  list.id = kIdModeList;
  list.key = ModeListKey;
  RegisterHandlers(list);
}

}  // namespace

void RegisterShellCommands() {
  AddCommands(EditCommands());
  AddCommands(ShellCommands());
  RegisterInlineRename();
  RegisterSpeedSlider();
  ListenToWindow();
  hooks.layout = Layout;
  hooks.setMode = SetMode;
  hooks.setSurface = SetSurface;
  hooks.drawListRow = DrawListRow;
  hooks.drawIcon = DrawIcon;
  const int click = platform::kNotifyClick;
  RegisterCommand(RouterStage::Notified, kIdModeList, platform::kNotifyListSelect, PickMode);
  RegisterCommand(RouterStage::Notified, kIdModeList, platform::kNotifyListDouble, PickMode);
  RegisterCommand(RouterStage::Surface, kIdSurfaceCode, click, PressCode);
  RegisterCommand(RouterStage::Surface, kIdShowFeatures, click, PressFeatures);
  RegisterWhereModeExists(kModeDnc, RouterStage::FeatureSwitch, kIdMachine, PressDnc);
  for (int id : {kIdSetup, kIdSetupSecond, kIdOpenDncSetup}) {
    RegisterWhereModeExists(kModeDnc, RouterStage::Click, id, PressDnc);
  }
  for (int id : {kIdFind, kIdFindSecond}) {
    RegisterWhereModeExists(kModeFind, RouterStage::Click, id, PressFind);
  }
  RegisterCommand(RouterStage::Click, kIdBack, click, PressBack);
  RegisterCommand(RouterStage::Click, kIdOldClose, click, PressOldClose);
  for (int id = kIdOldModeFirst; id <= kIdOldModeLast; ++id) {
    RegisterWhereModeExists(kOldModes[id - kIdOldModeFirst], RouterStage::Click, id, PressOldMode);
  }
  RegisterCommand(RouterStage::Click, kIdOldUndo, kIdOldPaste, click, PressOldEdit);
}

void ResetShell() {
  ResetLayout();
  ResetModes();
  ResetSpeedSlider();
}

}  // namespace morva
