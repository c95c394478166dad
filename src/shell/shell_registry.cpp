#include "shell/shell_registry.h"

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/edit_menu.h"
#include "app/hooks.h"
#include "app/mode_table.h"
#include "app/panels.h"
#include "app/router.h"
#include "documents/feature_blocks.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "shell/icons.h"
#include "shell/inline_rename.h"
#include "shell/keys_page.h"
#include "shell/layout.h"
#include "shell/modes.h"
#include "shell/owner_draw.h"
#include "shell/shell_commands.h"
#include "shell/speed_slider.h"
#include "shell/strip.h"
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

// A key that its mode's row names.
void PressModeKey(int id, int) {
  for (int i = 0; i < ModeCount(); ++i) {
    for (const ModeKey& key : ModeAt(i).keys) {
      if (key.id == id) return SetMode(ModeAt(i).mode);
    }
  }
}

// The second route beside the modes': the window, the clipboard of whatever has the keyboard.
void PressOldClose(int, int) { platform::RequestClose(); }

void PressOldEdit(int id, int) {
  const int focused = platform::FocusedId();
  if (!platform::IsTextControl(focused)) return;
  platform::EditAction action = platform::EditAction::Undo;
  if (id == kIdOldCopy) action = platform::EditAction::Copy;
  if (id == kIdOldPaste) action = platform::EditAction::Paste;
  platform::RunEditAction(focused, action);
}

// Keys of a mode still to come do nothing.
void RegisterModeKeys() {
  for (int i = 0; i < ModeCount(); ++i) {
    if (!ModeExists(ModeAt(i).mode)) continue;
    for (const ModeKey& key : ModeAt(i).keys) {
      RegisterCommand(key.stage, key.id, platform::kNotifyClick, PressModeKey);
    }
  }
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
  list.keys = ModeListKeys();
  RegisterHandlers(list);
}

}  // namespace

void RegisterShellCommands() {
  AddCommands(EditCommands());
  AddCommands(ShellCommands());
  RegisterShellModes();
  RegisterInlineRename();
  RegisterKeysPage();
  RegisterSpeedSlider();
  RegisterStrip();
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
  RegisterModeKeys();
  RegisterCommand(RouterStage::Click, kIdBack, click, PressBack);
  RegisterCommand(RouterStage::Click, kIdOldClose, click, PressOldClose);
  RegisterCommand(RouterStage::Click, kIdOldUndo, kIdOldPaste, click, PressOldEdit);
}

void ResetShell() {
  ResetLayout();
  ResetModes();
  ResetSpeedSlider();
  ResetStrip();
}

}  // namespace morva
