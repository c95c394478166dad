#include "codetools/import_panel.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/panels.h"
#include "app/router.h"
#include "codetools/colours.h"
#include "codetools/command_words.h"
#include "codetools/import_text.h"
#include "codetools/validator.h"
#include "codetools/words_view.h"
#include "documents/feature_blocks.h"
#include "documents/feature_marks.h"
#include "documents/feature_operations.h"
#include "documents/file_kinds.h"
#include "documents/file_text.h"
#include "documents/insertion.h"
#include "documents/program_changed.h"
#include "documents/stored_code.h"
#include "documents/tab_models.h"
#include "documents/tab_table.h"
#include "documents/user_code_split.h"
#include "forms/form.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/listing.h"
#include "platform/pick_file.h"
#include "text/codetext.h"

namespace morva {

namespace {

using platform::Rect;

constexpr int kGap = 8;
constexpr int kHeadHeight = 26;
constexpr int kKeyHeight = 30;
constexpr int kListLeast = 48;
constexpr int kRefreshMs = 70;
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

// Lists on the left, the preview on the right, the keys along the foot.
enum ImportPage : int { kTop, kLeft, kRight, kFoot };

// clang-format off
constexpr FormRow kRows[] = {
    {.kind = RowKind::Head, .id = kIdImportHead,
     .label = u"Import operations into the current project", .pages = PageBit(kTop)},
    {.kind = RowKind::List, .id = kIdImportPrograms, .name = u"Open programs",
     .pages = PageBit(kLeft), .least = kListLeast, .percent = 25},
    {.kind = RowKind::Keys, .pages = PageBit(kLeft), .keys = {kIdImportBrowse}},
    {.kind = RowKind::Multi, .id = kIdImportOperations, .name = u"Operations to import",
     .pages = PageBit(kLeft), .least = kListLeast},
    {.kind = RowKind::Preview, .id = kIdImportPreview, .name = u"Preview of the source program",
     .pages = PageBit(kRight), .least = kListLeast},
    {.kind = RowKind::Keys, .pages = PageBit(kFoot),
     .keys = {kIdImportAll, kIdImportNone, kIdImportRun, kIdImportCancel}},
};
// clang-format on
constexpr FormLook kLook{.gap = kGap,
                         .keyGap = kGap,
                         .tightGap = kGap,
                         .keyHeight = kKeyHeight,
                         .headHeight = kHeadHeight,
                         .labels = Labels::None};

void Changed(int id);
constexpr Form kImportForm{
    .look = &kLook, .rows = kRows, .changed = Changed, .escape = kIdImportCancel};

void MakeImport() { MakeForm(kImportForm); }

void PlaceImport(const Rect& area) {
  const int top = area.top + kHeadHeight + kGap;
  const int foot = area.bottom - kKeyHeight;
  const int middle = area.left + RectWidth(area) * 2 / 5;
  const FormPart parts[] = {{{area.left, area.top, area.right, top}, kTop},
                            {{area.left, top, middle, foot - kGap}, kLeft},
                            {{middle + kGap, top, area.right, foot - kGap}, kRight},
                            {{area.left, foot, area.right, area.bottom}, kFoot}};
  PlaceForm(kImportForm, parts);
}

void HideImport() { HideForm(kImportForm); }

bool ImportShown() { return state.open && app.surface == kSurfaceCode && !app.compareActive; }

void ShowPreview() {
  platform::HoldEditorRedraw(kIdImportPreview, true);
  const OwnedText words = app.commandWordsActive ? CodeToShownWords(source.text) : OwnedText();
  if (words.units) {
    platform::SetEditorText(kIdImportPreview, words.View());
    ColourWordsPane(kIdImportPreview, words.View(), source.text.size());
  } else {
    platform::SetEditorText(kIdImportPreview, source.text);
    ColourPane(kIdImportPreview, source.text);
  }
  platform::SetEditorSelection(kIdImportPreview, {0, 0});
  platform::ScrollCaretIntoView(kIdImportPreview);
  platform::HoldEditorRedraw(kIdImportPreview, false);
}

void ChooseAll(bool chosen) {
  for (int i = 0; i < platform::RowCount(kIdImportOperations); ++i) {
    platform::SetRowSelected(kIdImportOperations, i, chosen);
  }
}

void LoadSource(std::u16string_view text) {
  LoadImportSource(text, source);
  platform::ClearRows(kIdImportOperations);
  for (int i = 0; i < source.count; ++i) {
    const FeatureRecord& row = source.rows[i];
    std::u16string words = row.name[0] ? row.name : KindWords(row.settings.kind);
    words += u" \u00B7 operation " + IntegerText(i + 1);
    platform::AddRow(kIdImportOperations, words, i);
  }
  ChooseAll(true);
  ShowPreview();
}

void LoadTab(std::uint64_t serial) {
  const int index = IndexOfSerial(serial);
  if (index < 0) return;
  if (index == app.activeTab) SyncActiveTab();
  state.sourceTab = serial;
  LoadSource(tabs[index].text);
}

void LoadNothing() {
  state.sourceTab = 0;
  source.count = 0;
  source.text.clear();
  platform::ClearRows(kIdImportOperations);
  platform::SetEditorText(kIdImportPreview, kNoSource);
}

void CloseImport() {
  if (!state.open) return;
  state.open = false;
  platform::SetEnabled(kIdEditor, true);
  RelayPanels();
  RefreshFeatureList();
  platform::SetFocusTo(ShownEditor());
}

// Its operations were meant for the program that goes.
void LeaveImport() {
  if (!state.open) return;
  CloseImport();
  const char16_t* words = u"Import closed: another program comes up. No code was inserted.";
  AppendOutput(words);
  ShowStatus(words);
}

void Changed(int id) {
  if (id != kIdImportPrograms) return;
  const int row = platform::SelectedRow(kIdImportPrograms);
  if (row >= 0) LoadTab(static_cast<std::uint64_t>(platform::RowData(kIdImportPrograms, row)));
}

void OnBrowse(int, int) {
  constexpr platform::FileFilter kFilters[] = {{u"NC programs", kProgramPatterns},
                                               {u"All files", kAllPatterns}};
  platform::PickFileSpec spec;
  spec.title = u"Browse NC file";
  spec.filters = kFilters;
  spec.filterCount = 2;
  spec.capacity = kPathUnits;
  std::u16string path;
  if (!platform::PickFileToOpen(spec, path)) return;
  std::string bytes;
  if (!ReadWholeFile(path, bytes)) {
    AppendOutput(u"Nothing to import: " + UnreadFileWords(path));
    ShowStatus(kOpenFailed);
    return;
  }
  FreeDisabledCode(state.browsedStore);
  state.browsedPath = path;
  state.sourceTab = 0;
  platform::SelectRow(kIdImportPrograms, -1);
  std::u16string text = DecodeProgram(bytes);
  TakeByteOrderMark(text);
  ReadExcludedCode(path, text, state.browsedStore);
  LoadSource(text);
}

struct StoredCode {
  const DisabledCodeEntry* from;
  ProgramTab* into;
  bool isOthers = false;  // the code that was asked for may be another block's
};

std::int32_t CopyDisabledEntry(void* context, std::int32_t number, const FeatureRecord& row,
                               std::int32_t into) {
  StoredCode& stored = *static_cast<StoredCode*>(context);
  const DisabledCodeEntry* entry = FindDisabledCode(stored.from, number);
  stored.isOthers = entry && !IsCodeOf(*entry, row);
  if (!entry || stored.isOthers) return 0;
  return KeepExcludedCode(*stored.into, entry->text, into);
}

StoredCode StoredCodeOfSource(ProgramTab& into) {
  if (state.sourceTab == 0) return {state.browsedStore, &into};
  const int index = IndexOfSerial(state.sourceTab);
  return {index < 0 ? nullptr : tabs[index].disabledCode, &into};
}

// Where the operations go.
struct InsertPlace {
  std::int32_t index = 0;   // in the text
  bool splitsLine = false;  // more than blanks follows the feature's end on its line
};

bool OnlyBlanksFollow(std::u16string_view text, std::int32_t index) {
  const std::u16string_view rest = text.substr(static_cast<std::size_t>(index));
  const std::u16string_view line = rest.substr(0, rest.find_first_of(u"\r\n"));
  return line.find_first_not_of(u" \t") == line.npos;
}

// The end of the selected feature, else of the caret's, else the caret.
InsertPlace PlaceForImport(std::u16string_view text, std::int32_t selectedId) {
  int row = selectedId != 0 ? FindFeature(selectedId) : -1;
  const std::int32_t caret = TextIndexOf(text, platform::EditorSelection(kIdEditor).to);
  if (row < 0) row = FeatureAround(caret);
  if (row < 0) return {caret, false};
  const std::int32_t end = features.rows[row].end;
  return {end, !OnlyBlanksFollow(text, end)};
}

// The program that takes the operations, as it stands now. The feature table is its own.
struct Target {
  std::u16string text;
  InsertPlace place;
  std::int32_t firstId = 0;
  std::int32_t freeId = 0;
  bool splits = false;  // the user code that holds the caret, which lies at the place
};

bool TargetIsActive() {
  return ActiveTab() && ActiveSerial() == state.targetTab && !source.text.empty();
}

Target SettledTarget() {
  const std::int32_t selected = SelectedFeatureId();
  // The caret is that of the words view while it is on. Its text is not copied back: an import
  // that is refused leaves the program as it was.
  const int caret = CaretPosition();
  if (app.commandWordsActive) platform::SetEditorSelection(kIdEditor, {caret, caret});
  AutoTagBlocks();
  Target target;
  target.text = std::u16string(platform::EditorText(kIdEditor));
  ScanProgramText(target.text);
  target.firstId = NextTableId();
  target.freeId = features.nextId;
  target.place = PlaceForImport(target.text, selected);
  return target;
}

// Where the operations would never run the user says what else. False: nothing goes in.
bool SettlePlace(Target& target, int operations) {
  const Destination destination = AskIfNeverRun(target.place.index, operations);
  if (destination == Destination::Cancelled || !state.open || !TargetIsActive()) return false;
  target = SettledTarget();
  target.splits = destination == Destination::Split;
  if (target.splits) target.place.index = CodeCaret(target.text).line;
  return true;
}

bool HasRoomFor(int operations) {
  if (features.count + operations <= kMaxFeatures) return true;
  ShowStatus(u"Import exceeds 128 features; select fewer operations.");
  return false;
}

// The units in force where the operations go in, else those of the program further on; 0 where
// it names none.
std::int32_t UnitsOfTarget(const Target& target) {
  const std::u16string_view text = target.text;
  const std::int32_t before =
      LastUnitsCode(text.substr(0, static_cast<std::size_t>(target.place.index)));
  return before != 0 ? before : LastUnitsCode(text);
}

bool TakesOtherUnits(std::int32_t units) {
  const bool metric = units == 21;
  return Confirmed(u"Import operations",
                   (metric ? u"An operation to import is in inches (G20), but the program is in "
                             u"millimeters (G21) where it goes in."
                           : u"An operation to import is in millimeters (G21), but the program is "
                             u"in inches (G20) where it goes in.") +
                       std::u16string(u" Nothing is converted, and a units code in an operation "
                                      u"also holds for the code behind it. Import anyway?"));
}

// Blocks that an Undo took back may have borne the numbers of the new ones. The largest of these; 0
// where it is the largest of all. The feature table is that of the operations.
std::int32_t TakeNumbersOf(const std::u16string& operations) {
  ScanProgramText(operations);
  std::int32_t largest = 0;
  for (int i = 0; i < features.count; ++i) {
    CopyFeatureMarks(0, features.rows[i].id);
    largest = std::max(largest, features.rows[i].id);
  }
  return largest < std::numeric_limits<std::int32_t>::max() ? largest : 0;
}

// On lines of its own, as one undo step. The words view stands aside meanwhile. Where a block
// begins on the line that the one before ends on, that line is broken: blocks never nest.
// False: the program has no room for them, as the user was told.
bool InsertOperations(const Target& target, const std::u16string& operations) {
  const std::int32_t lastId = TakeNumbersOf(operations);
  bool inserted = false;
  if (target.splits) {
    ScanProgramText(target.text);
    inserted = InsertAtSplit(operations.substr(0, operations.size() - 2), lastId);
  } else {
    const WordsAside aside;
    const int position = MapTextOffset(target.text, target.place.index);
    platform::SetEditorSelection(kIdEditor, {position, position});
    inserted = InsertTextAtCaret(u"\r\n" + operations, !target.place.splitsLine);
  }
  if (app.commandWordsActive) Call(hooks.wordsFromEditor);
  return inserted;
}

bool AskImport(int, int x, int y) {
  constexpr MenuRow kRow{kIdImport};
  const int picked = ShowCommandMenu({&kRow, 1}, x, y);
  if (picked > 0) RouteCommand(picked, platform::kNotifyClick);
  return true;
}

}  // namespace

void OpenImportPanel() {
  if (!ActiveTab()) return;
  Call(hooks.leaveCompare);
  SyncActiveTab();
  state.open = true;
  state.targetTab = ActiveSerial();
  platform::ClearRows(kIdImportPrograms);
  for (int i = 0; i < app.tabCount; ++i) {
    if (i == app.activeTab) continue;
    platform::AddRow(kIdImportPrograms, NameOfTab(i), static_cast<std::int64_t>(tabs[i].serial));
  }
  if (platform::RowCount(kIdImportPrograms) > 0) {
    platform::SelectRow(kIdImportPrograms, 0);
    LoadTab(static_cast<std::uint64_t>(platform::RowData(kIdImportPrograms, 0)));
  } else {
    LoadNothing();
  }
  platform::SetEnabled(kIdEditor, false);
  if (app.surface != kSurfaceCode) Call(hooks.setSurface, static_cast<int>(kSurfaceCode));
  RelayPanels();
  platform::SetFocusTo(source.count > 0 ? kIdImportOperations : kIdImportBrowse);
}

bool IsImportOpen() { return state.open; }

void ImportSelected() {
  if (!TargetIsActive()) return;
  Target target = SettledTarget();
  bool chosen[kMaxFeatures] = {};
  int count = 0;
  for (int i = 0; i < source.count; ++i) {
    chosen[i] = platform::IsRowSelected(kIdImportOperations, i);
    count += chosen[i] ? 1 : 0;
  }
  if (count == 0 || !HasRoomFor(count) || !SettlePlace(target, count)) return;
  const std::int32_t units = UnitsOfTarget(target);
  const DisabledCodeEntry* theirs = StoredCodeOfSource(*ActiveTab()).from;
  if (units != 0 && HasOtherUnits(source, chosen, units, theirs)) {
    if (!TakesOtherUnits(units) || !state.open || !TargetIsActive()) return;
    // The pause behind the question may have written markers.
    const bool splits = target.splits;
    target = SettledTarget();
    target.splits = splits;
    if (!HasRoomFor(count + (splits ? 1 : 0))) return;
  }
  StoredCode stored = StoredCodeOfSource(*ActiveTab());
  std::u16string operations;
  ImportBuild built =
      BuildImportText(source, chosen, target.firstId, CopyDisabledEntry, &stored, operations);
  if (built == ImportBuild::Impossible) {
    // Behind the largest number of all there is none; the scan's own are free as well.
    built = BuildImportText(source, chosen, target.freeId, CopyDisabledEntry, &stored, operations);
  }
  if (built == ImportBuild::StoredCodeMissing) {
    ShowStatus(stored.isOthers
                   ? u"Import stopped: several blocks name one excluded code. No code was inserted."
                   : u"Import stopped: disabled-code companion data is missing. No code was "
                     u"inserted.");
  }
  if (built != ImportBuild::Done) return;
  if (!InsertOperations(target, operations)) return;
  RefreshFeatureList();
  ProgramChanged({.autosave = true, .refreshMs = kRefreshMs, .rebuildPath = true});
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
  RegisterForm(kImportForm);
  hooks.leaveImport = LeaveImport;
  using platform::kNotifyClick;
  const RouterStage click = RouterStage::Click;
  RegisterCommand(click, kIdImport, kNotifyClick, [](int, int) { OpenImportPanel(); });
  RegisterCommand(click, kIdImportBrowse, kNotifyClick, OnBrowse);
  RegisterCommand(click, kIdImportAll, kNotifyClick, [](int, int) { ChooseAll(true); });
  RegisterCommand(click, kIdImportNone, kNotifyClick, [](int, int) { ChooseAll(false); });
  RegisterCommand(click, kIdImportRun, kNotifyClick, [](int, int) { ImportSelected(); });
  RegisterCommand(click, kIdImportCancel, kNotifyClick, [](int, int) { CloseImport(); });
}

void ResetImportPanel() {
  FreeDisabledCode(state.browsedStore);
  state = ImportState();
  source.count = 0;
  source.text.clear();
}

}  // namespace morva
