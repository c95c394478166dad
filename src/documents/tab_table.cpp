#include "documents/tab_table.h"

#include <string>
#include <string_view>

#include "app/app_state.h"
#include "app/change_guard.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "app/outlets.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

ProgramTab tabs[kMaxTabs];

namespace {

// The last folders of a path, so many of them; all where there are no more.
std::u16string_view FolderEnd(std::u16string_view path, int folders) {
  const std::size_t name = BareFileName(path).size();
  if (name == path.size()) return {};
  path.remove_suffix(name + 1);
  std::size_t at = path.size();
  for (int i = 0; i < folders && at != path.npos; ++i) {
    at = at == 0 ? path.npos : path.find_last_of(u"/\\", at - 1);
  }
  return at == path.npos ? path : path.substr(at + 1);
}

bool IsTwin(int index, int other) {
  return other != index &&
         std::u16string_view(tabs[other].title) == std::u16string_view(tabs[index].title);
}

bool HasTwin(int index) {
  for (int other = 0; other < app.tabCount; ++other) {
    if (IsTwin(index, other)) return true;
  }
  return false;
}

bool TwinEndsSo(int index, int folders) {
  const std::u16string_view end = FolderEnd(tabs[index].path, folders);
  for (int other = 0; other < app.tabCount; ++other) {
    if (IsTwin(index, other) && FolderEnd(tabs[other].path, folders) == end) return true;
  }
  return false;
}

// The second one of a title that has no file has a 2, and so on.
std::u16string WordsOfUnsaved(int index) {
  int number = 1;
  for (int other = 0; other < index; ++other) {
    if (IsTwin(index, other) && !tabs[other].path[0]) ++number;
  }
  return number == 1 ? u" (not saved)" : u" (not saved, " + IntegerText(number) + u")";
}

void LabelTabButton(int index) {
  const ProgramTab& tab = tabs[index];
  char16_t label[kTabLabelUnits] = {};
  if (index == app.activeTab) AppendBounded(label, kTabLabelUnits, u"> ");
  if (tab.compareSelected) AppendBounded(label, kTabLabelUnits, u"[C] ");
  // The mark behind it has its room however long the folders are.
  constexpr int kMarkUnits = 3;  // with the end
  const std::size_t room = kTabLabelUnits - kMarkUnits - std::u16string_view(label).size();
  AppendBounded(label, kTabLabelUnits, NameOfTab(index).substr(0, room).c_str());
  if (tab.dirty) AppendBounded(label, kTabLabelUnits, u" *");
  platform::SetText(kIdTabFirst + index, label);
  RefreshTip(kIdTabFirst + index);
}

// The caret's line is that of the words where these are shown, as each line of code has one of
// words.
platform::EditorRange SelectionLeft(ProgramTab& tab) {
  tab.wordsColumn = 0;
  if (ShownEditor() == kIdEditor) return platform::EditorSelection(kIdEditor);
  const int caret = platform::EditorSelection(kIdWordsEditor).to;
  const int line = platform::EditorLineOf(kIdWordsEditor, caret);
  tab.wordsColumn = caret - platform::EditorLineStart(kIdWordsEditor, line);
  const int start = platform::EditorLineStart(kIdEditor, line);
  return {start, start};
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
  const std::uint64_t revision = platform::EditorRevision(kIdEditor);
  if (tab->textRevision != revision) tab->text = platform::EditorText(kIdEditor);
  tab->textRevision = revision;
  CopyBounded(tab->path, kPathUnits, app.activePath);
  tab->dirty = app.editorDirty;
  if (app.activePath[0]) CopyBounded(tab->title, kTitleUnits, BareFileName(app.activePath));
}

std::u16string TwinWords(int index) {
  if (!HasTwin(index)) return {};
  const std::u16string_view path = tabs[index].path;
  if (path.empty()) return WordsOfUnsaved(index);
  int folders = 1;
  while (TwinEndsSo(index, folders) && FolderEnd(path, folders) != FolderEnd(path, folders + 1)) {
    ++folders;
  }
  const std::u16string_view end = FolderEnd(path, folders);
  return u" (" + std::u16string(end.empty() ? path.substr(0, 1) : end) + u")";
}

std::u16string NameOfTab(int index) { return tabs[index].title + TwinWords(index); }

std::u16string PlaceOfTab(int index) {
  if (index >= app.tabCount) return {};
  return tabs[index].path[0] ? tabs[index].path : u"Not saved in a file yet";
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

void LayTextAside() {
  ProgramTab* const tab = ActiveTab();
  if (!tab) return;
  tab->selection = SelectionLeft(*tab);
  tab->firstLine = platform::FirstVisibleLine(ShownEditor());
  tab->markLeft = NoteTextLeft();
  platform::LayEditorTextAside(kIdEditor, tab->serial);
}

// It is no change of the program.
void StageText(ProgramTab& tab) {
  const SuppressChanges suppressed;
  const bool asLeft = platform::TakeEditorText(kIdEditor, tab.serial, tab.text);
  if (asLeft) {
    tab.textRevision = platform::EditorRevision(kIdEditor);
  } else {
    platform::SetEditorText(kIdEditor, tab.text);
  }
  NoteTextStaged(tab.serial, asLeft ? tab.markLeft : TextMark());
  platform::SetEditorSelection(kIdEditor, tab.selection);
  platform::ScrollToLine(kIdEditor, tab.firstLine);
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
  // Another program may have the same name now, or be the only one again.
  RefreshTabButtons();
  UpdateTitle();
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
