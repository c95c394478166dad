#include "cad/panel/drawing_tabs.h"

#include <cstdint>
#include <string>
#include <vector>

#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/router.h"
#include "app/tab_row.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/drawings.h"
#include "cad/model/sketch_words.h"
#include "documents/program_changed.h"
#include "documents/tab_table.h"
#include "platform/control.h"
#include "platform/events.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

bool Renaming() { return platform::IsVisible(kIdCadDrawingName); }

void RefreshTabs() {
  const ProgramTab* tab = ActiveTab();
  const CadStore* store = tab ? tab->cadStore : nullptr;
  std::vector<std::u16string> names;
  for (std::uint32_t i = 0; store && i < store->count; ++i) {
    names.emplace_back(store->drawings[i].name);
  }
  if (!store) names.emplace_back(u"Drawing 1");
  ShowTabRow(kIdDrawingFirst, kMaxDrawings, names, store ? static_cast<int>(store->active) : 0);
}

void OnTabKey(int id, int) { SelectDrawingTab(id - kIdDrawingFirst); }

void OnAdd(int, int) { AddDrawingTab(); }

void OnRename(int, int) { RenameDrawingTab(); }

}  // namespace

void CloseDrawingName() {
  if (!Renaming()) return;
  platform::SetVisible(kIdCadDrawingName, false);
  Call(hooks.layout);
}

void SelectDrawingTab(int index) {
  ProgramTab* tab = ProvideDrawings();
  if (!tab) return;
  CloseDrawingName();
  if (index >= 0) SwitchDrawing(*tab, static_cast<std::uint32_t>(index));
}

void AddDrawingTab() {
  ProgramTab* tab = ProvideDrawings();
  if (!tab) return;
  CloseDrawingName();
  if (tab->cadStore->count >= kMaxDrawings) {
    SetSketchStatus(u"Eight drawings per program. Start another program for more drawings.");
    return;
  }
  ProgramChanged({.autosave = true});
  SwitchDrawing(*tab, AddDrawing(*tab));
  Call(hooks.layout);  // one key more
}

void RenameDrawingTab() {
  ProgramTab* tab = ProvideDrawings();
  if (!tab) return;
  const Drawing& drawing = tab->cadStore->drawings[tab->cadStore->active];
  if (!Renaming()) {
    // No form: the name box lies over the tab for as long as it is renamed.
    platform::SetTextLimit(kIdCadDrawingName, kDrawingNameUnits - 1);
    platform::SetText(kIdCadDrawingName, drawing.name);
    platform::SetVisible(kIdCadDrawingName, true);
    platform::BringToTop(kIdCadDrawingName);
    Call(hooks.layout);
    platform::SetFocusTo(kIdCadDrawingName);
    platform::SelectAllText(kIdCadDrawingName);
    return;
  }
  CloseDrawingName();
  ProgramChanged({.autosave = true});
  const std::u16string name = platform::TextOf(kIdCadDrawingName);
  if (!name.empty()) NameActiveDrawing(*tab, name);
  RefreshDrawingTabs();
  SetSketchStatus(u"Drawing renamed. Save the program to preserve all CAD tabs.");
}

void RegisterDrawingTabs() {
  cadHooks.refreshDrawingTabs = RefreshTabs;
  RegisterCommand(RouterStage::Builder, kIdDrawingFirst, kIdDrawingLast, platform::kNotifyClick,
                  OnTabKey);
  RegisterCommand(RouterStage::Builder, kIdDrawingAdd, platform::kNotifyClick, OnAdd);
  RegisterCommand(RouterStage::Builder, kIdDrawingRename, platform::kNotifyClick, OnRename);
}

void ResetDrawingTabs() { platform::SetVisible(kIdCadDrawingName, false); }

}  // namespace morva
