#include "codetools/index_panel.h"

#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/key_rows.h"
#include "app/mode_table.h"
#include "app/panels.h"
#include "app/router.h"
#include "codetools/words_view.h"
#include "documents/editor_changes.h"
#include "documents/program_changed.h"
#include "documents/program_information.h"
#include "documents/tab_table.h"
#include "forms/form.h"
#include "library/code_index.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/listing.h"

namespace morva {

namespace {

using platform::Rect;

constexpr int kRefreshMs = 70;
constexpr int kOneRow = 250;  // pixels from which the six keys stand in one row

std::int32_t codeTab = kCodesAll;
bool descriptionFirst = false;

// The list in the left panel, with the insertion line below it or not, and the page beside the
// output; each in a wide and in a narrow area.
enum IndexPage : int { kWide, kWideList, kNarrow, kNarrowList, kWideFoot, kNarrowFoot };
constexpr unsigned kWideHead = PageBit(kWide) | PageBit(kWideList);
constexpr unsigned kNarrowHead = PageBit(kNarrow) | PageBit(kNarrowList);
constexpr unsigned kWideEnd = PageBit(kWide) | PageBit(kWideFoot);
constexpr unsigned kNarrowEnd = PageBit(kNarrow) | PageBit(kNarrowFoot);
constexpr unsigned kFoot = PageBit(kWideFoot) | PageBit(kNarrowFoot);

// clang-format off
constexpr FormRow kRows[] = {
    {.kind = RowKind::Words, .id = kIdIndexSearch, .name = u"Search codes and descriptions",
     .pages = kWideHead | kNarrowHead, .limit = kCodeSearchUnits - 1, .keys = {kIdIndexClear},
     .keyPages = kWideHead, .shares = {124}},
    {.kind = RowKind::Keys, .pages = kNarrowHead, .keys = {kIdIndexClear}},
    {.kind = RowKind::Keys, .pages = kWideHead,
     .keys = {kIdIndexAll, kIdIndexG, kIdIndexM, kIdIndexN, kIdIndexMacro, kIdIndexText},
     .shares = {38, 30, 30, 30, 62, 56}},
    {.kind = RowKind::Keys, .pages = kNarrowHead,
     .keys = {kIdIndexAll, kIdIndexG, kIdIndexM, kIdIndexN}, .shares = {38, 30, 30, 30}},
    {.kind = RowKind::Keys, .pages = kNarrowHead, .keys = {kIdIndexMacro, kIdIndexText},
     .shares = {62, 56}},
    {.kind = RowKind::List, .id = kIdIndexList, .name = u"Code index",
     .pages = kWideHead | kNarrowHead, .least = 48},
    // In a low window the list keeps its rows and the pane scrolls in what is left.
    {.kind = RowKind::Log, .id = kIdIndexDetail, .name = u"Word", .pages = kWideEnd | kNarrowEnd,
     .height = 88, .least = 48, .fillPages = kFoot, .yields = true},
    {.kind = RowKind::Words, .id = kIdIndexInsertion, .name = u"Insertion text",
     .pages = kWideEnd | kNarrowEnd, .enter = kIdIndexInsert, .limit = 0, .keys = {kIdIndexInsert},
     .keyPages = kWideEnd, .shares = {168}},
    {.kind = RowKind::Keys, .pages = kNarrowEnd, .keys = {kIdIndexInsert}, .height = 28},
};
// clang-format on
constexpr FormLook kLook{.fieldHeight = 28, .listRowHeight = 20, .labels = Labels::None};

void Changed(int id) {
  if (id == kIdIndexSearch) RebuildCodeList();
  if (id == kIdIndexList) ShowCodeSelection();
}

constexpr Form kIndexForm{.look = &kLook, .rows = kRows, .changed = Changed};

// The item data of the selected row, -1 for none.
std::int32_t SelectedItem() {
  const int row = platform::SelectedRow(kIdIndexList);
  return row < 0 ? -1 : static_cast<std::int32_t>(platform::RowData(kIdIndexList, row));
}

// Plain text over the selection of the editor that is shown. The words view receives words instead
// of code.
void InsertAtCursor(const std::u16string& code) {
  if (code.empty()) return;
  const int editor = ShownEditor();
  // The list of completions must not open on a text that was chosen already.
  {
    const ApplyingCompletion quiet;
    if (app.commandWordsActive) {
      WriteInWords(code);
    } else {
      platform::ReplaceSelection(editor, code, true);
    }
  }
  platform::SetFocusTo(editor);
  ProgramChanged({.refreshMs = kRefreshMs});
  WriteProgramInformation();
}

void MakePanel() {
  MakeForm(kIndexForm);
  RebuildCodeList();
}

bool PanelShown() { return app.surface == kSurfaceCode && !app.sidebarShowsFeatures; }

// The insertion line and its key stand on the page of the mode, else below the list.
bool PageShown() { return PanelShown() && app.mode == kModeCodeIndex; }

// Where the list and the page of the mode lie; the page is empty unless it is shown.
Rect listArea;
Rect footArea;

void PlaceBoth() {
  const bool wide = RectWidth(listArea) >= kOneRow;
  const bool footWide = RectWidth(footArea) >= kOneRow;
  if (!PageShown()) {
    PlaceForm(kIndexForm, listArea, wide ? kWide : kNarrow);
    return;
  }
  const FormPart parts[] = {{listArea, wide ? kWideList : kNarrowList},
                            {footArea, footWide ? kWideFoot : kNarrowFoot}};
  PlaceForm(kIndexForm, parts);
}

void PlacePanel(const Rect& area) {
  listArea = area;
  PlaceBoth();
}

// The page of the mode: the whole of what is told about a word above what is inserted.
void PlacePage(const Rect& area) {
  footArea = area;
  PlaceBoth();
}

void HidePanel() { HideForm(kIndexForm); }

// However the mode was reached, the left panel shows the index.
void EnterPanel() {
  ShowFeaturesInSidebar(false);
  Call(hooks.openOutput);  // the page stands beside it
  RebuildCodeList();
  RelayPanels();
  platform::SetFocusTo(kIdIndexSearch);
}

void OnShowIndex(int, int) { Call(hooks.setMode, static_cast<int>(kModeCodeIndex)); }
void OnDouble(int, int) { InsertSelectedCode(); }
void OnInsert(int, int) { InsertAtCursor(platform::TextOf(kIdIndexInsertion)); }

// The insertion line alone, for a code of one's own.
void OnEmpty(int, int) {
  platform::SetText(kIdIndexInsertion, u"");
  platform::SetFocusTo(kIdIndexInsertion);
}

void OnCategory(int id, int) {
  codeTab = CodeCategoryOfKey(id);
  RebuildCodeList();
}

void OnText(int, int) {
  descriptionFirst = !descriptionFirst;
  RebuildCodeList();
}

void OnClear(int, int) {
  platform::SetText(kIdIndexSearch, u"");
  RebuildCodeList();
}

bool GoOnInList() {
  platform::SetFocusTo(kIdIndexList);
  return true;
}

bool InsertFromSearch() {
  InsertSelectedCode();
  return true;
}

constexpr ChordPlace kSearchChords{u"search of the code index"};
constexpr KeyRow kSearchKeys[] = {
    {PlainKey(kSearchChords, platform::kKeyDown), u"Go on in the list", GoOnInList},
    {PlainKey(kSearchChords, platform::kKeyEnter), u"Insert the code of the row", InsertFromSearch},
};

bool SearchKey(const platform::KeyEvent& key) { return RunKeyRow(kSearchKeys, key); }

}  // namespace

void RebuildCodeList() {
  if (!platform::Exists(kIdIndexList)) return;
  static std::int32_t items[kCodeItems];
  const std::u16string search = platform::TextOf(kIdIndexSearch);
  const int count = CodeListItems(codeTab, search, items, kCodeItems);
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

namespace {
constexpr ModeKey kModeKeys[] = {{kIdOldModeFirst}};
}  // namespace

const ModeRow kCodeIndexMode = {.mode = kModeCodeIndex,
                                .place = 8,
                                .words = u"Code index",
                                .header = u"PROGRAM",
                                .icon = kIconCodeIndex,
                                .remembers = true,
                                .wide = true,
                                .keys = kModeKeys,
                                .fill = WriteProgramInformation};

void RegisterIndexPanel() {
  Panel panel;
  panel.spot = PanelSpot::LeftLower;
  panel.mode = kModeCodeIndex;
  panel.row = &kCodeIndexMode;
  panel.active = PanelShown;
  panel.make = MakePanel;
  panel.place = PlacePanel;
  panel.hide = HidePanel;
  panel.enter = EnterPanel;
  panel.tabStops = [](int* ids, int capacity) { return FormOrder(kIndexForm, ids, capacity); };
  RegisterPanel(panel);
  Panel page;
  page.spot = PanelSpot::Foot;
  page.active = PageShown;
  page.place = PlacePage;
  RegisterPanel(page);
  RegisterForm(kIndexForm);
  Handlers search;
  search.id = kIdIndexSearch;
  search.key = SearchKey;
  search.keys = kSearchKeys;
  RegisterHandlers(search);
  using platform::kNotifyClick;
  RegisterCommand(RouterStage::Surface, kIdShowIndex, kNotifyClick, OnShowIndex);
  RegisterCommand(RouterStage::Notified, kIdIndexList, platform::kNotifyListDouble, OnDouble);
  RegisterCommand(RouterStage::Click, kIdIndexAll, kIdIndexMacro, kNotifyClick, OnCategory);
  RegisterCommand(RouterStage::Click, kIdIndexText, kNotifyClick, OnText);
  RegisterCommand(RouterStage::Click, kIdIndexInsert, kNotifyClick, OnInsert);
  RegisterCommand(RouterStage::Click, kIdIndexClear, kNotifyClick, OnClear);
  RegisterCommand(RouterStage::Builder, kIdQuickInsertFirst, kNotifyClick, OnInsert);
  RegisterCommand(RouterStage::Builder, kIdQuickInsertLast, kNotifyClick, OnEmpty);
}

void ResetIndexPanel() {
  codeTab = kCodesAll;
  descriptionFirst = false;
}

}  // namespace morva
