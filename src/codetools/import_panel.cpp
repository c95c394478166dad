#include "codetools/import_panel.h"

#include <algorithm>
#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/router.h"
#include "codetools/colours.h"
#include "codetools/command_words.h"
#include "codetools/import_text.h"
#include "documents/autosave.h"
#include "documents/feature_blocks.h"
#include "documents/feature_operations.h"
#include "documents/file_text.h"
#include "documents/insertion.h"
#include "documents/program_tabs.h"
#include "documents/tab_table.h"
#include "library/codetext.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/listing.h"
#include "platform/menu.h"
#include "platform/pick_file.h"

namespace morva {

namespace {

using platform::ControlKind;
using platform::FontRole;
using platform::Rect;

enum : int {
  kIdHead = kIdImportFirst,
  kIdPrograms,
  kIdBrowse,
  kIdOperations,
  kIdPreview,
  kIdAll,
  kIdNone,
  kIdRun,
  kIdCancel,
};

constexpr int kGap = 8;
constexpr int kHeadHeight = 26;
constexpr int kKeyHeight = 30;
constexpr char16_t kNoSource[] = u"(Browse a program file, then select the operations to import.)";

// A tab's index moves when another one closes; serials do not.
struct ImportState {
  bool open = false;
  std::uint64_t targetTab = 0;
  std::uint64_t sourceTab = 0;  // 0: a browsed file
  DisabledCodeEntry* browsedStore = nullptr;
  std::u16string browsedPath;
};
ImportState state;
ImportSource source;

constexpr platform::ControlSpec kControls[] = {
    {kIdHead, ControlKind::Label, u"Import operations into the current project", u"",
     FontRole::Emphasis, platform::kMainWindow, true},
    {kIdBrowse, ControlKind::PushButton, u"Browse NC file\u2026", u"", FontRole::Small,
     platform::kMainWindow, true},
    {kIdAll, ControlKind::PushButton, u"Select all", u"", FontRole::Small, platform::kMainWindow,
     true},
    {kIdNone, ControlKind::PushButton, u"Unselect all", u"", FontRole::Small, platform::kMainWindow,
     true},
    {kIdRun, ControlKind::PushButton, u"Import selected", u"", FontRole::Small,
     platform::kMainWindow, true},
    {kIdCancel, ControlKind::PushButton, u"Cancel", u"", FontRole::Small, platform::kMainWindow,
     true},
};
constexpr int kOrder[] = {kIdPrograms, kIdBrowse, kIdOperations, kIdPreview,
                          kIdAll,      kIdNone,   kIdRun,        kIdCancel};

void MakeImportList(int id, platform::ListKind kind, const char16_t* name) {
  platform::ListSpec list;
  list.id = id;
  list.kind = kind;
  list.accessibleName = name;
  list.font = FontRole::Small;
  list.ownerDrawn = false;
  list.hidden = true;
  platform::MakeList(list);
}

void MakeImport() {
  for (const platform::ControlSpec& spec : kControls) platform::MakeControl(spec);
  platform::SetColours(kIdHead, {kBrightAccent, kPanelBackground, true});
  MakeImportList(kIdPrograms, platform::ListKind::Single, u"Open programs");
  MakeImportList(kIdOperations, platform::ListKind::Multi, u"Operations to import");
  platform::EditorSpec preview;
  preview.id = kIdPreview;
  preview.accessibleName = u"Preview of the source program";
  preview.text = kEditorText;
  preview.background = kOutputBackground;
  preview.hidden = true;
  preview.readOnly = true;
  platform::MakeEditor(preview);
}

void Put(int id, const Rect& place) {
  platform::SetPlace(id, place);
  platform::SetVisible(id, true);
}

// Lists on the left, the preview on the right, the keys along the foot.
void PlaceImport(const Rect& area) {
  const int foot = area.bottom - kKeyHeight;
  const int middle = area.left + (area.right - area.left) * 2 / 5;
  int top = area.top;
  Put(kIdHead, {area.left, top, area.right, top + kHeadHeight});
  top += kHeadHeight + kGap;
  Put(kIdPreview, {middle + kGap, top, area.right, foot - kGap});
  const int programs = (foot - top) / 4;
  Put(kIdPrograms, {area.left, top, middle, top + programs});
  top += programs + kGap;
  Put(kIdBrowse, {area.left, top, middle, top + kKeyHeight});
  top += kKeyHeight + kGap;
  Put(kIdOperations, {area.left, top, middle, foot - kGap});
  const int keys[] = {kIdAll, kIdNone, kIdRun, kIdCancel};
  const int width = (area.right - area.left - 3 * kGap) / 4;
  int left = area.left;
  for (const int id : keys) {
    Put(id, {left, foot, left + width, area.bottom});
    left += width + kGap;
  }
}

void HideImport() {
  platform::SetVisible(kIdHead, false);
  for (const int id : kOrder) platform::SetVisible(id, false);
}

bool ImportShown() { return state.open && app.surface == kSurfaceCode && !app.compareActive; }

void ColourWordsPreview() {
  static platform::ColourRun runs[kMaxLineRuns];
  const std::u16string_view text = platform::EditorText(kIdPreview);
  std::size_t at = 0;
  for (int line = 0; at <= text.size(); ++line) {
    const std::size_t end = std::min(text.find(u"\r\n", at), text.size());
    const int count = ColourWordsLine(text.substr(at, end - at), runs, kMaxLineRuns);
    platform::SetLineRuns(kIdPreview, line, runs, count);
    at = end + 2;
  }
}

void ShowPreview() {
  platform::HoldEditorRedraw(kIdPreview, true);
  const ConvertedText words = app.commandWordsActive ? CodeToWords(source.text) : ConvertedText();
  if (words.units) {
    platform::SetEditorText(kIdPreview, words.View());
    if (words.length <= static_cast<std::size_t>(kMaxColouredUnits)) ColourWordsPreview();
  } else {
    platform::SetEditorText(kIdPreview, source.text);
    ColourPane(kIdPreview, source.text);
  }
  platform::SetEditorSelection(kIdPreview, {0, 0});
  platform::ScrollCaretIntoView(kIdPreview);
  platform::HoldEditorRedraw(kIdPreview, false);
}

void ChooseAll(bool chosen) {
  for (int i = 0; i < platform::RowCount(kIdOperations); ++i) {
    platform::SetRowSelected(kIdOperations, i, chosen);
  }
}

void LoadSource(std::u16string_view text) {
  LoadImportSource(text, source);
  platform::ClearRows(kIdOperations);
  for (int i = 0; i < source.count; ++i) {
    const FeatureRecord& row = source.rows[i];
    std::u16string words = row.name[0] ? row.name : KindWords(row.settings.kind);
    words += u" \u00B7 operation " + IntegerText(i + 1);
    platform::AddRow(kIdOperations, words, i);
  }
  ChooseAll(true);
  ShowPreview();
}

void LoadTab(std::uint64_t serial) {
  const int index = IndexOfSerial(serial);
  if (index < 0) return;
  state.sourceTab = serial;
  LoadSource(tabs[index].text);
}

void LoadNothing() {
  state.sourceTab = 0;
  source.count = 0;
  source.text.clear();
  platform::ClearRows(kIdOperations);
  platform::SetEditorText(kIdPreview, kNoSource);
}

void CloseImport() {
  if (!state.open) return;
  state.open = false;
  platform::SetEnabled(kIdEditor, true);
  RelayPanels();
  RefreshFeatureList();
  platform::SetFocusTo(app.commandWordsActive ? kIdWordsEditor : kIdEditor);
}

void OnProgram(int, int) {
  const int row = platform::SelectedRow(kIdPrograms);
  if (row >= 0) LoadTab(static_cast<std::uint64_t>(platform::RowData(kIdPrograms, row)));
}

void OnBrowse(int, int) {
  constexpr platform::FileFilter kFilters[] = {{u"NC programs", u"*.NC;*.TAP;*.GCODE"},
                                               {u"All files", u"*.*"}};
  platform::PickFileSpec spec;
  spec.title = u"Browse NC file";
  spec.filters = kFilters;
  spec.filterCount = 2;
  spec.capacity = kPathUnits;
  std::u16string path;
  if (!platform::PickFileToOpen(spec, path)) return;
  std::string bytes;
  if (!ReadWholeFile(path, bytes)) {
    ShowStatus(u"Could not open the selected file.");
    return;
  }
  FreeDisabledCode(state.browsedStore);
  state.browsedPath = path;
  std::string stored;
  if (ReadWholeFile(path + u".features", stored)) ReadDisabledCode(stored, state.browsedStore);
  state.sourceTab = 0;
  platform::SelectRow(kIdPrograms, -1);
  LoadSource(DecodeProgram(bytes));
}

struct StoredCode {
  const DisabledCodeEntry* from;
  ProgramTab* target;
};

std::int32_t CopyDisabledEntry(void* context, std::int32_t number) {
  const StoredCode& stored = *static_cast<StoredCode*>(context);
  const DisabledCodeEntry* entry = FindDisabledCode(stored.from, number);
  return entry ? AddDisabledCode(stored.target->disabledCode, entry->text) : 0;
}

StoredCode StoredCodeOfSource(ProgramTab& target) {
  if (state.sourceTab == 0) return {state.browsedStore, &target};
  const int index = IndexOfSerial(state.sourceTab);
  return {index < 0 ? nullptr : tabs[index].disabledCode, &target};
}

// The end of the selected feature, else of the caret's, else the caret; an editor position.
int InsertPosition(std::u16string_view text, std::int32_t selectedId) {
  int row = selectedId != 0 ? FindFeature(selectedId) : -1;
  const int caret = platform::EditorSelection(kIdEditor).to;
  const std::int32_t at = TextIndexOf(text, caret);
  for (int i = 0; row < 0 && i < features.count; ++i) {
    if (features.rows[i].start <= at && at < features.rows[i].end) row = i;
  }
  return row < 0 ? caret : MapTextOffset(text, features.rows[row].end);
}

// On lines of its own, as one undo step. The words view stands aside meanwhile.
void InsertOperations(int position, const std::u16string& text) {
  const bool words = app.commandWordsActive;
  app.commandWordsActive = false;
  platform::SetEditorSelection(kIdEditor, {position, position});
  InsertTextAtCaret(u"\r\n" + text, true);
  app.commandWordsActive = words;
  if (words) Call(hooks.wordsFromEditor);
}

bool CancelKey(const platform::KeyEvent& key) {
  if (key.key != platform::kKeyEscape || key.ctrl || key.alt) return false;
  CloseImport();
  return true;
}

bool AskImport(int, int x, int y) {
  const platform::MenuItem item{kIdImport, u"Import operations into this project"};
  if (platform::ShowPopup(&item, 1, x, y) == kIdImport) {
    RouteCommand(kIdImport, platform::kNotifyClick);
  }
  return true;
}

}  // namespace

void OpenImportPanel() {
  if (!ActiveTab()) return;
  SyncActiveTab();
  state.open = true;
  state.targetTab = ActiveSerial();
  platform::ClearRows(kIdPrograms);
  for (int i = 0; i < app.tabCount; ++i) {
    if (i == app.activeTab) continue;
    platform::AddRow(kIdPrograms, tabs[i].title, static_cast<std::int64_t>(tabs[i].serial));
  }
  if (platform::RowCount(kIdPrograms) > 0) {
    platform::SelectRow(kIdPrograms, 0);
    LoadTab(static_cast<std::uint64_t>(platform::RowData(kIdPrograms, 0)));
  } else {
    LoadNothing();
  }
  platform::SetEnabled(kIdEditor, false);
  if (app.surface != kSurfaceCode) Call(hooks.setSurface, static_cast<int>(kSurfaceCode));
  RelayPanels();
  platform::SetFocusTo(source.count > 0 ? kIdOperations : kIdBrowse);
}

bool IsImportOpen() { return state.open; }

void ImportSelected() {
  ProgramTab* target = ActiveTab();
  if (!target || ActiveSerial() != state.targetTab || source.text.empty()) return;
  const std::int32_t selected = SelectedFeatureId();
  AutoTagBlocks();
  const std::u16string text(platform::EditorText(kIdEditor));
  ScanProgramText(text);
  const std::int32_t firstId = NextTableId();
  const int position = InsertPosition(text, selected);
  bool chosen[kMaxFeatures] = {};
  int count = 0;
  for (int i = 0; i < source.count; ++i) {
    chosen[i] = platform::IsRowSelected(kIdOperations, i);
    count += chosen[i] ? 1 : 0;
  }
  if (count == 0) return;
  if (features.count + count > kMaxFeatures) {
    ShowStatus(u"Import exceeds 128 features; select fewer operations.");
    return;
  }
  StoredCode stored = StoredCodeOfSource(*target);
  std::u16string operations;
  const ImportBuild built =
      BuildImportText(source, chosen, firstId, CopyDisabledEntry, &stored, operations);
  if (built == ImportBuild::StoredCodeMissing) {
    ShowStatus(u"Import stopped: disabled-code companion data is missing. No code was inserted.");
  }
  if (built != ImportBuild::Done) return;
  InsertOperations(position, operations);
  MarkModified();
  RefreshFeatureList();
  Call(hooks.rebuildToolpath);
  ScheduleAutosave();
  CloseImport();
  ShowStatus(u"Selected operations imported with new operation IDs.");
}

void RegisterImportPanel() {
  Panel panel;
  panel.spot = PanelSpot::Work;
  panel.active = ImportShown;
  panel.make = MakeImport;
  panel.place = PlaceImport;
  panel.hide = HideImport;
  RegisterPanel(panel);
  Handlers modes;
  modes.id = kIdModeList;
  modes.contextMenu = AskImport;
  RegisterHandlers(modes);
  for (const int id : {kIdPrograms, kIdOperations, kIdPreview}) {
    Handlers keys;
    keys.id = id;
    keys.key = CancelKey;
    RegisterHandlers(keys);
  }
  using platform::kNotifyClick;
  const RouterStage click = RouterStage::Click;
  RegisterCommand(click, kIdImport, kNotifyClick, [](int, int) { OpenImportPanel(); });
  RegisterCommand(RouterStage::Notified, kIdPrograms, platform::kNotifyListSelect, OnProgram);
  RegisterCommand(click, kIdBrowse, kNotifyClick, OnBrowse);
  RegisterCommand(click, kIdAll, kNotifyClick, [](int, int) { ChooseAll(true); });
  RegisterCommand(click, kIdNone, kNotifyClick, [](int, int) { ChooseAll(false); });
  RegisterCommand(click, kIdRun, kNotifyClick, [](int, int) { ImportSelected(); });
  RegisterCommand(click, kIdCancel, kNotifyClick, [](int, int) { CloseImport(); });
}

void ResetImportPanel() {
  FreeDisabledCode(state.browsedStore);
  state = ImportState();
  source.count = 0;
  source.text.clear();
}

}  // namespace morva
