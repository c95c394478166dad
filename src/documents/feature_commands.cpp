// The feature list's keys, menu items and popup, as the router asks for them.
#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/panels.h"
#include "app/router.h"
#include "documents/feature_blocks.h"
#include "documents/feature_marks.h"
#include "documents/feature_operations.h"
#include "documents/new_feature.h"
#include "documents/tab_table.h"
#include "platform/control.h"
#include "platform/events.h"
#include "platform/listing.h"

namespace morva {

namespace {

void OnSelect(int, int) { SelectFeature(); }
void OnEdit(int, int) { EditFeature(); }
void OnNew(int, int) { NewUserFeature(); }
void OnDelete(int, int) { DeleteFeature(); }
void OnInclude(int, int) { ToggleInclude(); }
void OnLockKey(int, int) { ToggleFeatureLock(); }
void OnHideKey(int, int) { ToggleFeatureHide(); }

void OnRename(int, int) {
  switch (RenameFeature(platform::TextOf(kIdFeatureName))) {
    case RenameAnswer::Done:
    case RenameAnswer::NoRoom:
      return;
    case RenameAnswer::OneLine:
      return ShowFeatureHint(kOneLineWords);
    case RenameAnswer::Refused:
      ShowFeatureHint(
          u"Select an unlocked feature. Use 1-80 plain characters without parentheses.");
  }
}

// Back to the program with the whole path in view, so that the change can be seen.
void ShowVisibility(std::u16string_view hint) {
  Call(hooks.setSurface, static_cast<int>(kSurfaceCode));
  Call(hooks.setMode, static_cast<int>(kModeHome));
  RefreshFeatureList();
  Call(hooks.rebuildToolpath);
  Call(hooks.fitView);
  ShowFeatureHint(hint);
}

void OnVisibility(int id, int) {
  const ProgramTab* tab = ActiveTab();
  const std::int32_t feature = SelectedFeatureId();
  if (!tab || feature == 0) return;
  switch (id) {
    case kIdFeatureIsolate:
      IsolateFeature(feature);
      break;
    case kIdFeatureAll:
      IsolateFeature(0);
      break;
    case kIdFeatureHideItem:
      ToggleFeatureHidden(feature);
      break;
    case kIdFeatureShowAll:
      ShowAllFeatures();
      break;
    default:
      ToggleFeatureLocked(feature);
      break;
  }
  ShowVisibility(id == kIdFeatureLockItem
                     ? u"Lock affects builder edits; G-code remains editable."
                     : u"Visibility changes viewing only, never machine code.");
}

// The menu is that of the row under the pointer, which becomes the selected one.
bool ListMenu(int row, int x, int y) {
  if (row >= 0 && row != platform::SelectedRow(kIdFeatureList)) {
    platform::SelectRow(kIdFeatureList, row);
    UpdateFeatureCaptions();
  }
  ShowFeatureMenu(x, y);
  return true;
}

}  // namespace

void ShowFeatureMenu(int x, int y) {
  const ProgramTab* tab = ActiveTab();
  const std::int32_t id = SelectedFeatureId();
  if (!tab || id == 0) return;
  const bool hidden = IdListHolds(tab->hiddenIds, id);
  const bool locked = IdListHolds(tab->lockedIds, id);
  const MenuRow rows[] = {
      {kIdFeatureEdit},
      {kIdFeatureInclude},
      {},
      {kIdFeatureIsolate},
      {kIdFeatureAll},
      {},
      {.id = kIdFeatureHideItem, .on = hidden},
      {kIdFeatureShowAll},
      {},
      {.id = kIdFeatureLockItem, .on = locked},
  };
  const std::uint64_t serial = ActiveSerial();
  const int chosen = ShowCommandMenu(rows, x, y);
  // The list behind the menu may be another program's by now.
  if (chosen > 0 && ActiveSerial() == serial) RouteCommand(chosen, platform::kNotifyClick);
}

void RegisterFeatureCommands() {
  using platform::kNotifyClick;
  RegisterCommand(RouterStage::Surface, kIdFeatureRename, kNotifyClick, OnRename);
  RegisterCommand(RouterStage::FeatureSelect, kIdFeatureList, platform::kNotifyListSelect,
                  OnSelect);
  RegisterCommand(RouterStage::FeatureEdit, kIdFeatureEdit, kNotifyClick, OnEdit);
  RegisterCommand(RouterStage::FeatureSwitch, kIdFeatureLock, kNotifyClick, OnLockKey);
  RegisterCommand(RouterStage::FeatureSwitch, kIdFeatureHide, kNotifyClick, OnHideKey);
  RegisterCommand(RouterStage::FeatureKeys, kIdFeatureDelete, kNotifyClick, OnDelete);
  RegisterCommand(RouterStage::FeatureKeys, kIdFeatureInclude, kNotifyClick, OnInclude);
  RegisterCommand(RouterStage::FeatureKeys, kIdFeatureNew, kNotifyClick, OnNew);
  Handlers list;
  list.id = kIdFeatureList;
  list.contextMenu = ListMenu;
  RegisterHandlers(list);
  RegisterCommand(RouterStage::Click, kIdFeatureIsolate, kIdFeatureShowAll, kNotifyClick,
                  OnVisibility);
}

}  // namespace morva
