#include "codetools/index_panel.h"

#include <algorithm>
#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/router.h"
#include "codetools/words_view.h"
#include "documents/autosave.h"
#include "documents/editor_changes.h"
#include "documents/program_tabs.h"
#include "library/code_index.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/listing.h"

namespace morva {

namespace {

using platform::ControlKind;
using platform::FontRole;
using platform::Rect;

constexpr int kRefreshMs = 70;
constexpr int kGap = 4;
constexpr int kFieldHeight = 28;
constexpr int kKeyHeight = 26;
constexpr int kDetailHeight = 88;
constexpr int kInsertWidth = 168;
constexpr int kListRow = 20;
constexpr int kListLeast = 48;
constexpr int kClearWidth = 124;
constexpr int kOneRow = 250;  // pixels from which the six keys stand in one row

std::int32_t codeTab = kCodesAll;
bool descriptionFirst = false;

constexpr platform::ControlSpec kControls[] = {
    {kIdIndexSearch, ControlKind::EditLine, u"", u"Search codes and descriptions", FontRole::Body,
     platform::kMainWindow, true},
    {kIdIndexClear, ControlKind::PushButton, u"CLEAR SEARCH", u"", FontRole::Small,
     platform::kMainWindow, true},
    {kIdIndexText, ControlKind::PushButton, u"TEXT", u"Description first", FontRole::Small,
     platform::kMainWindow, true},
    {kIdIndexDetail, ControlKind::Log, u"", u"Word", FontRole::Small, platform::kMainWindow, true},
    {kIdIndexInsertion, ControlKind::EditLine, u"", u"Insertion text", FontRole::Body,
     platform::kMainWindow, true},
    {kIdIndexInsert, ControlKind::PushButton, u"INSERT INTO PROGRAM", u"", FontRole::Small,
     platform::kMainWindow, true},
};

// The item data of the selected row, -1 for none.
std::int32_t SelectedItem() {
  const int row = platform::SelectedRow(kIdIndexList);
  return row < 0 ? -1 : static_cast<std::int32_t>(platform::RowData(kIdIndexList, row));
}

// What the keys stand for, told to assistive technology besides the line under the key.
void TellKeyStates() {
  for (const CodeCategoryKey& key : codeCategoryKeys) {
    platform::SetToolTip(key.id, IsIndexKeyOn(key.id) ? u"Category  (on)" : u"Category");
    platform::Repaint(key.id);
  }
  platform::SetToolTip(kIdIndexText,
                       descriptionFirst ? u"Description first  (on)" : u"Description first");
  platform::Repaint(kIdIndexText);
}

// Plain text over the selection of the editor that is shown. The view gets words for codes.
void InsertAtCursor(const std::u16string& code) {
  if (code.empty()) return;
  const int editor = ShownEditor();
  // The list of completions must not open on a text that was chosen already.
  completionApplying = true;
  if (app.commandWordsActive) {
    WriteInWords(code);
  } else {
    platform::ReplaceSelection(editor, code, true);
  }
  completionApplying = false;
  platform::SetFocusTo(editor);
  MarkModified();
  WriteProgramInformation();
  ArmTextRefresh(kRefreshMs);
}

void MakePanel() {
  for (const platform::ControlSpec& spec : kControls) {
    platform::MakeControl(spec);
    if (spec.kind == ControlKind::PushButton) continue;
    platform::SetColours(spec.id, {kMainText, kOutputBackground, false});
  }
  platform::SetTextLimit(kIdIndexSearch, kCodeSearchUnits - 1);
  for (const CodeCategoryKey& key : codeCategoryKeys) {
    platform::ControlSpec spec;
    spec.id = key.id;
    spec.kind = ControlKind::PushButton;
    spec.text = key.caption;
    spec.font = FontRole::Small;
    spec.hidden = true;
    platform::MakeControl(spec);
  }
  platform::ListSpec list;
  list.id = kIdIndexList;
  list.accessibleName = u"Code index";
  list.font = FontRole::Small;
  list.rowHeight = kListRow;
  list.ownerDrawn = false;
  list.hidden = true;
  platform::MakeList(list);
  RebuildCodeList();
  TellKeyStates();
}

struct KeyWeight {
  int id;
  int weight;
};
constexpr KeyWeight kKeyWeights[] = {{kIdIndexAll, 38}, {kIdIndexG, 30},     {kIdIndexM, 30},
                                     {kIdIndexN, 30},   {kIdIndexMacro, 62}, {kIdIndexText, 56}};

// Keys `first` to `last` in one row, as wide as their captions ask.
void PutKeys(int first, int last, const Rect& row) {
  int all = 0;
  for (int i = first; i < last; ++i) all += kKeyWeights[i].weight;
  const int width = RectWidth(row) - kGap * (last - first - 1);
  int x = row.left;
  int seen = 0;
  for (int i = first; i < last; ++i) {
    seen += kKeyWeights[i].weight;
    const int right = row.left + width * seen / all + kGap * (i - first);
    ShowAt(kKeyWeights[i].id, {x, row.top, right, row.bottom});
    x = right + kGap;
  }
}

bool PanelShown() { return app.surface == kSurfaceCode && !app.sidebarShowsFeatures; }

// The insertion line and its key stand on the page of the mode, else below the list.
bool PageShown() { return PanelShown() && app.mode == kModeCodeIndex; }

// The insertion line and its key at the foot of an area, in two rows where it is narrow. The
// y above them.
int PutInsertion(const Rect& area, int foot) {
  int right = area.right;
  int top = foot - kFieldHeight;
  if (RectWidth(area) >= kOneRow) {
    right -= kInsertWidth;
    ShowAt(kIdIndexInsert, {right, top, area.right, foot});
    right -= kGap;
  } else {
    ShowAt(kIdIndexInsert, {area.left, top, area.right, foot});
    top -= kFieldHeight + kGap;
  }
  ShowAt(kIdIndexInsertion, {area.left, top, right, top + kFieldHeight});
  return top - kGap;
}

void PlacePanel(const Rect& area) {
  const bool wide = RectWidth(area) >= kOneRow;
  int top = area.top;
  const int searchRight = wide ? area.right - kClearWidth - kGap : area.right;
  ShowAt(kIdIndexSearch, {area.left, top, searchRight, top + kFieldHeight});
  if (wide) {
    ShowAt(kIdIndexClear, {searchRight + kGap, top, area.right, top + kFieldHeight});
    top += kFieldHeight + kGap;
    PutKeys(0, 6, {area.left, top, area.right, top + kKeyHeight});
  } else {
    top += kFieldHeight + kGap;
    ShowAt(kIdIndexClear, {area.left, top, area.right, top + kKeyHeight});
    top += kKeyHeight + kGap;
    PutKeys(0, 4, {area.left, top, area.right, top + kKeyHeight});
    top += kKeyHeight + kGap;
    PutKeys(4, 6, {area.left, top, area.right, top + kKeyHeight});
  }
  top += kKeyHeight + kGap;

  int foot = area.bottom;
  if (!PageShown()) {
    foot = PutInsertion(area, foot);
    // In a low window the list keeps its rows and the pane scrolls in what is left.
    const int detail = std::min(kDetailHeight, foot - kGap - top - kListLeast);
    if (detail > 0) {
      ShowAt(kIdIndexDetail, {area.left, foot - detail, area.right, foot});
      foot -= detail + kGap;
    } else {
      platform::SetVisible(kIdIndexDetail, false);
    }
  }
  ShowAt(kIdIndexList, {area.left, top, area.right, foot});
}

// The page of the mode: the whole of what is told about a word above what is inserted.
void PlacePage(const Rect& area) {
  const int foot = PutInsertion(area, area.bottom);
  ShowAt(kIdIndexDetail, {area.left, area.top, area.right, foot});
}

void HidePanel() {
  for (const platform::ControlSpec& spec : kControls) platform::SetVisible(spec.id, false);
  for (const CodeCategoryKey& key : codeCategoryKeys) platform::SetVisible(key.id, false);
  platform::SetVisible(kIdIndexList, false);
}

// However the mode was reached, the left panel shows the index.
void EnterPanel() {
  app.sidebarShowsFeatures = false;
  RebuildCodeList();
  RelayPanels();
  platform::SetFocusTo(kIdIndexSearch);
}

void OnShowIndex(int, int) { Call(hooks.setMode, static_cast<int>(kModeCodeIndex)); }
void OnSearch(int, int) { RebuildCodeList(); }
void OnSelect(int, int) { ShowCodeSelection(); }
void OnDouble(int, int) { InsertSelectedCode(); }
void OnInsert(int, int) { InsertAtCursor(platform::TextOf(kIdIndexInsertion)); }

void OnCategory(int id, int) {
  codeTab = CodeCategoryOfKey(id);
  TellKeyStates();
  RebuildCodeList();
}

void OnText(int, int) {
  descriptionFirst = !descriptionFirst;
  TellKeyStates();
  RebuildCodeList();
}

void OnClear(int, int) {
  platform::SetText(kIdIndexSearch, u"");
  RebuildCodeList();
}

// Down from the search goes on in the list; Enter takes its selected row.
bool SearchKey(const platform::KeyEvent& key) {
  if (key.ctrl || key.alt || key.shift) return false;
  if (key.key == platform::kKeyDown) {
    platform::SetFocusTo(kIdIndexList);
    return true;
  }
  if (key.key != platform::kKeyEnter) return false;
  InsertSelectedCode();
  return true;
}

bool InsertionKey(const platform::KeyEvent& key) {
  if (key.ctrl || key.alt || key.shift || key.key != platform::kKeyEnter) return false;
  OnInsert(kIdIndexInsert, platform::kNotifyClick);
  return true;
}

}  // namespace

void RebuildCodeList() {
  if (!platform::Exists(kIdIndexList)) return;
  static std::int32_t items[kMostCodeItems];
  const std::u16string search = platform::TextOf(kIdIndexSearch);
  const int count = CodeListItems(codeTab, search, items, kMostCodeItems);
  platform::HoldListRedraw(kIdIndexList, true);
  platform::ClearRows(kIdIndexList);
  for (int i = 0; i < count; ++i) {
    platform::AddRow(kIdIndexList, CodeRowText(items[i], descriptionFirst), items[i]);
  }
  platform::HoldListRedraw(kIdIndexList, false);
  if (count > 0) platform::SelectRow(kIdIndexList, 0);
  ShowCodeSelection();
}

void ShowCodeSelection() {
  const std::int32_t item = SelectedItem();
  CodeEntry entry;
  if (!ReadCodeItem(item, entry)) {
    // A word that is no longer in the list must not be inserted for one that was searched.
    platform::SetText(kIdIndexDetail, u"No code or description holds these characters.");
    platform::SetText(kIdIndexInsertion, u"");
    return;
  }
  platform::SetText(kIdIndexDetail, CodeDetailText(item));
  platform::SetText(kIdIndexInsertion, CodeInsertionText(item));
}

void InsertSelectedCode() { InsertAtCursor(CodeDoubleClickText(SelectedItem())); }

bool IsIndexKeyOn(int id) {
  return id == kIdIndexText ? descriptionFirst : CodeCategoryOfKey(id) == codeTab;
}

void RegisterIndexPanel() {
  Panel panel;
  panel.spot = PanelSpot::LeftLower;
  panel.mode = kModeCodeIndex;
  panel.active = PanelShown;
  panel.make = MakePanel;
  panel.place = PlacePanel;
  panel.hide = HidePanel;
  panel.enter = EnterPanel;
  RegisterPanel(panel);
  Panel page;
  page.spot = PanelSpot::Foot;
  page.active = PageShown;
  page.place = PlacePage;
  RegisterPanel(page);
  Handlers search;
  search.id = kIdIndexSearch;
  search.key = SearchKey;
  RegisterHandlers(search);
  Handlers insertion;
  insertion.id = kIdIndexInsertion;
  insertion.key = InsertionKey;
  RegisterHandlers(insertion);
  using platform::kNotifyClick;
  RegisterCommand(RouterStage::Surface, kIdShowIndex, kNotifyClick, OnShowIndex);
  RegisterCommand(RouterStage::Notified, kIdIndexSearch, platform::kNotifyEditChange, OnSearch);
  RegisterCommand(RouterStage::Notified, kIdIndexList, platform::kNotifyListSelect, OnSelect);
  RegisterCommand(RouterStage::Notified, kIdIndexList, platform::kNotifyListDouble, OnDouble);
  RegisterCommand(RouterStage::Click, kIdIndexAll, kIdIndexMacro, kNotifyClick, OnCategory);
  RegisterCommand(RouterStage::Click, kIdIndexText, kNotifyClick, OnText);
  RegisterCommand(RouterStage::Click, kIdIndexInsert, kNotifyClick, OnInsert);
  RegisterCommand(RouterStage::Click, kIdIndexClear, kNotifyClick, OnClear);
}

void ResetIndexPanel() {
  codeTab = kCodesAll;
  descriptionFirst = false;
}

}  // namespace morva
