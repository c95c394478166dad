#include "documents/tab_table.h"

#include <string_view>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/outlets.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

ProgramTab tabs[kMaxTabs];

namespace {

void LabelTabButton(int index) {
  const ProgramTab& tab = tabs[index];
  char16_t label[kTabLabelUnits] = {};
  if (index == app.activeTab) AppendBounded(label, kTabLabelUnits, u"> ");
  if (tab.compareSelected) AppendBounded(label, kTabLabelUnits, u"[C] ");
  AppendBounded(label, kTabLabelUnits, tab.title);
  if (tab.dirty) AppendBounded(label, kTabLabelUnits, u" *");
  platform::SetText(kIdTabFirst + index, label);
}

}  // namespace

ProgramTab* ActiveTab() {
  const bool valid = app.activeTab >= 0 && app.activeTab < app.tabCount;
  return valid ? &tabs[app.activeTab] : nullptr;
}

int IndexOfSerial(std::uint64_t serial) {
  for (int i = 0; i < app.tabCount; ++i) {
    if (tabs[i].serial == serial) return i;
  }
  return -1;
}

ProgramTab* TabOfSerial(std::uint64_t serial) {
  const int index = IndexOfSerial(serial);
  return index >= 0 ? &tabs[index] : nullptr;
}

std::uint64_t ActiveSerial() {
  const ProgramTab* tab = ActiveTab();
  return tab ? tab->serial : 0;
}

int ShownEditor() {
  return app.commandWordsActive && platform::Exists(kIdWordsEditor) ? kIdWordsEditor : kIdEditor;
}

void SyncActiveTab() {
  ProgramTab* tab = ActiveTab();
  if (!tab || !platform::Exists(kIdEditor)) return;
  tab->text = platform::EditorText(kIdEditor);
  CopyBounded(tab->path, kPathUnits, app.activePath);
  tab->dirty = app.editorDirty;
  if (app.activePath[0]) CopyBounded(tab->title, kTitleUnits, BareFileName(app.activePath));
}

// No form: there are as many tabs as programs are open.
void RefreshTabButtons() {
  for (int i = 0; i < kMaxTabs; ++i) {
    if (i < app.tabCount) LabelTabButton(i);
    platform::SetVisible(kIdTabFirst + i, i < app.tabCount);
  }
}

void TabTitleChanged() {
  ProgramTab* tab = ActiveTab();
  if (!tab) return;
  tab->dirty = app.editorDirty;
  LabelTabButton(app.activeTab);
}

void StageFile(std::u16string_view path, bool dirty) {
  CopyBounded(app.activePath, kPathUnits, path);
  app.editorDirty = dirty;
}

void NameProgram(ProgramTab& tab, std::u16string_view path, bool title) {
  const std::u16string_view name = BareFileName(path);
  CopyBounded(tab.path, kPathUnits, path);
  if (title) CopyBounded(tab.title, kTitleUnits, name.empty() ? u"Program.NC" : name);
  if (&tab == ActiveTab()) CopyBounded(app.activePath, kPathUnits, path);
}

void SetDirtyMark(ProgramTab* tab, bool dirty) {
  if (tab) tab->dirty = dirty;
  if (tab != ActiveTab()) return RefreshTabButtons();
  app.editorDirty = dirty;
  UpdateTitle();
}

void SelectForCompare(int index, bool selected) { tabs[index].compareSelected = selected; }
bool IdListHolds(const std::int32_t (&list)[kMaxIdList], std::int32_t id) {
  for (const std::int32_t held : list) {
    if (id != 0 && held == id) return true;
  }
  return false;
}

void ToggleListId(std::int32_t id, std::int32_t (&list)[kMaxIdList]) {
  // 0 marks a free slot and cannot be held.
  if (id == 0) return;
  for (std::int32_t& held : list) {
    if (held != id) continue;
    held = 0;
    return;
  }
  for (std::int32_t& held : list) {
    if (held != 0) continue;
    held = id;
    return;
  }
}

}  // namespace morva
