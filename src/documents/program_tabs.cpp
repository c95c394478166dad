// The store of open programs and the stage's way in and out of it.

#include "documents/program_tabs.h"

#include <utility>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/surfaces.h"
#include "documents/autosave.h"
#include "documents/feature_blocks.h"
#include "documents/insertion.h"
#include "documents/tab_models.h"
#include "documents/tab_table.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/message.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

ProgramTab tabs[kMaxTabs];

namespace {

constexpr int kSwitchRefreshMilliseconds = 60;

std::uint64_t lastSerial = 0;

std::u16string TemplateText(std::u16string_view title) {
  std::u16string text = u"(FILE: ";
  text += title;
  text += app.unitsMetric ? u")\r\nG21 (MILLIMETERS)\r\n" : u")\r\nG20 (INCHES)\r\n";
  text += u"G90 G17 G94\r\nG54 (WORK COORDINATE SYSTEM)\r\nG40 G80\r\n(OPERATION CODE BELOW)\r\n";
  return text;
}

void LabelTabButton(int index) {
  const ProgramTab& tab = tabs[index];
  char16_t label[kTabLabelUnits] = {};
  if (index == app.activeTab) AppendBounded(label, kTabLabelUnits, u"> ");
  if (tab.compareSelected) AppendBounded(label, kTabLabelUnits, u"[C] ");
  AppendBounded(label, kTabLabelUnits, tab.title);
  if (tab.dirty) AppendBounded(label, kTabLabelUnits, u" *");
  platform::SetText(kIdTabFirst + index, label);
}

// Puts the active record's text into the editor. It is no change of the program.
void StageText(const ProgramTab& tab) {
  const bool suppressed = app.suppressChange;
  app.suppressChange = true;
  platform::SetEditorText(kIdEditor, tab.text);
  app.suppressChange = suppressed;
}

}  // namespace

ProgramTab* ActiveTab() {
  const bool valid = app.activeTab >= 0 && app.activeTab < app.tabCount;
  return valid ? &tabs[app.activeTab] : nullptr;
}

int OpenOwnedTab(std::u16string_view path, std::u16string text, std::u16string_view title) {
  if (app.tabCount >= kMaxTabs) {
    platform::ShowBox(u"MORVA Tabs", u"The workspace supports up to 8 open programs in this build.",
                      platform::BoxButtons::Ok, platform::BoxIcon::Warning);
    return -1;
  }
  const int index = app.tabCount;
  ProgramTab& tab = tabs[index];
  tab = ProgramTab();
  tab.serial = ++lastSerial;
  ++app.tabCount;
  CopyBounded(tab.path, kPathUnits, path);
  if (path.empty() && title.empty()) title = u"Untitled.NC";
  CopyBounded(tab.title, kTitleUnits, path.empty() ? title : BareFileName(path));
  tab.text = path.empty() && text.empty() ? TemplateText(tab.title) : std::move(text);
  if (tab.path[0]) ReadCompanions(tab.path, tab);
  RefreshTabButtons();
  return index;
}

int OpenTab(std::u16string_view path, std::u16string_view text, std::u16string_view title) {
  std::u16string kept(text);
  std::erase(kept, u'\0');
  return OpenOwnedTab(path, std::move(kept), title);
}

void SwitchTab(int index) {
  RunAutosave();
  CancelSurfaceInput();
  if (index < 0 || index >= app.tabCount || index == app.activeTab) return;
  Call(hooks.hideCompletion);
  StashActiveWorkspace();
  DropEditLink();
  SyncActiveTab();
  app.activeTab = index;
  RestoreWorkspace();
  const ProgramTab& tab = tabs[index];
  StageText(tab);
  CopyBounded(app.activePath, kPathUnits, tab.path);
  app.editorDirty = tab.dirty;
  UpdateTitle();
  RefreshTabButtons();
  if (app.commandWordsActive) Call(hooks.wordsFromEditor);
  ArmTextRefresh(kSwitchRefreshMilliseconds);
  WriteProgramInformation();
  Call(hooks.rebuildToolpath);
  Call(hooks.layout);
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

void MarkModified() {
  app.editorDirty = true;
  if (ProgramTab* tab = ActiveTab()) tab->dirty = true;
  UpdateTitle();
}

void WriteProgramInformation() {
  // The code index shows the panel too, beside its own page.
  if (app.mode != kModeHome && app.mode != kModeCodeIndex) return;
  std::u16string text = u"PROGRAM\r\n\r\nFile: ";
  text += app.activePath[0] ? BareFileName(app.activePath) : u"Unsaved / New";
  text += u"\r\nLines: " + IntegerText(platform::EditorLineCount(kIdEditor));
  text += u"\r\nState: ";
  text += app.editorDirty ? u"Modified" : u"Saved / clean";
  text +=
      u"\r\n\r\nUse Tool Library for reusable cutters, Code Index for quick inserts, and PATH "
      u"for a basic coordinate preview.";
  if (platform::TextOf(kIdInfoPanel) != text) platform::SetText(kIdInfoPanel, text);
}

void RemoveTab(int index) {
  FreeTab(tabs[index]);
  for (int i = index; i + 1 < app.tabCount; ++i) tabs[i] = std::move(tabs[i + 1]);
  --app.tabCount;
  tabs[app.tabCount] = ProgramTab();
  app.activeTab = -1;
}

int IndexOfSerial(std::uint64_t serial) {
  for (int i = 0; i < app.tabCount; ++i) {
    if (tabs[i].serial == serial) return i;
  }
  return -1;
}

std::uint64_t ActiveSerial() {
  const ProgramTab* tab = ActiveTab();
  return tab ? tab->serial : 0;
}

bool ReturnToTab(std::uint64_t serial) {
  const int index = IndexOfSerial(serial);
  if (index < 0) return false;
  if (index != app.activeTab) SwitchTab(index);
  return true;
}

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

void FreeTabs() {
  for (ProgramTab& tab : tabs) FreeTab(tab);
  app.tabCount = 0;
  app.activeTab = -1;
}

void ResetDocuments() {
  FreeTabs();
  ResetAutosave();
  ResetInsertion();
  features.count = 0;
  features.nextId = 1;
  liveModels = LiveModels();
}

}  // namespace morva
