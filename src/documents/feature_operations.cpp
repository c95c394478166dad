#include "documents/feature_operations.h"

#include <algorithm>
#include <string>

#include "app/app_state.h"
#include "app/change_guard.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "app/hooks.h"
#include "app/limits.h"
#include "app/outlets.h"
#include "app/stop.h"
#include "documents/block_text.h"
#include "documents/builder_table.h"
#include "documents/edit_link.h"
#include "documents/feature_blocks.h"
#include "documents/feature_marks.h"
#include "documents/generated_code.h"
#include "documents/marker_lines.h"
#include "documents/program_changed.h"
#include "documents/stored_code.h"
#include "documents/tab_models.h"
#include "documents/tab_table.h"
#include "documents/text_room.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/listing.h"
#include "platform/message.h"
#include "text/codetext.h"

namespace morva {

namespace {

// Behind the words of the include key.
constexpr char16_t kHasCode[] = u", has code";
constexpr std::size_t kShownUnits = 72;  // of a line of code in a question

BuilderOpener openers[kFeatureKinds];
int (*recoverShape)(const FeatureSettings& record) = nullptr;

// The code editor is what operations work on; the words view is rendered anew behind.
struct WordsAnew {
  ~WordsAnew() {
    if (app.commandWordsActive) Call(hooks.wordsFromEditor);
  }
};

bool IsLocked(std::int32_t id) {
  const ProgramTab* tab = ActiveTab();
  return tab && IdListHolds(tab->lockedIds, id);
}

std::u16string_view Span(std::u16string_view text, std::int32_t from, std::int32_t to) {
  return text.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from));
}

// One undoable edit at text indices of `text`, which is the editor's own. The change is not told:
// the operation tells it by TellChanged once all of it is done.
void ReplaceSpan(std::u16string_view text, std::int32_t from, std::int32_t to,
                 std::u16string_view replacement) {
  OffsetMap map{text};
  platform::EditorRange range;
  range.from = AdvanceOffset(map, from);
  range.to = AdvanceOffset(map, to);
  const InsertingText own;
  platform::ReplaceRange(kIdEditor, range, replacement);
}

void TellChanged(bool movesPath) {
  ProgramChanged({.autosave = true, .refreshMs = kChangeRefreshMs, .rebuildPath = movesPath});
  platform::Repaint(kViewGutter);
}

// The editor's text scanned anew, after foreign text got its markers.
std::u16string SettledText() {
  AutoTagBlocks();
  std::u16string text(platform::EditorText(kIdEditor));
  ScanProgramText(text);
  return text;
}

// A stretch of the editor's text that an operation is about to replace.
struct Stretch {
  std::u16string text;
  std::int32_t from = 0;
  std::int32_t to = 0;
};

// `find` says where, or false to refuse.
template <typename Find>
bool FindStretch(Stretch& stretch, Find find) {
  stretch.text = SettledText();
  return find(stretch);
}

// Whether the stretch can be taken out of the program.
bool CanStoreCode(const ProgramTab& tab, const Stretch& code) {
  if (code.to - code.from > kMaxDisabledUnits) {
    ShowFeatureHint(u"This code is longer than 8,000,000 characters and cannot be excluded.");
    return false;
  }
  const auto units = static_cast<std::size_t>(code.to - code.from);
  if (NextDisabledNumber(tab.disabledCode, LargestNamedNumber(code.text)) != 0 &&
      FeaturesFileHolds(tab.disabledCode, code.text, units))
    return true;
  ShowFeatureHint(u"Disabled code storage is full. No code was changed.");
  return false;
}

void ShowSelection(std::u16string_view text, const FeatureRecord& row) {
  OffsetMap map{text};
  platform::EditorRange range;
  range.from = AdvanceOffset(map, row.start);
  range.to = AdvanceOffset(map, row.end);
  platform::SetEditorSelection(kIdEditor, range);
  platform::ScrollCaretIntoView(kIdEditor);
  if (ShownEditor() == kIdEditor) return;
  // The words view has the code's lines, each with other words.
  const int first = platform::EditorLineOf(kIdEditor, range.from);
  const int last = platform::EditorLineOf(kIdEditor, range.to);
  range.from = platform::EditorLineStart(kIdWordsEditor, first);
  range.to = platform::EditorLineStart(kIdWordsEditor, last) +
             platform::EditorLineLength(kIdWordsEditor, last);
  platform::SetEditorSelection(kIdWordsEditor, range);
  platform::ScrollCaretIntoView(kIdWordsEditor);
}

// The compare review stands in the editor's place and goes. The keyboard stays where it is, so
// that the user can walk on in the list.
void GoToCode() {
  if (app.surface == kSurfaceCode && !app.compareActive) return;
  const int focused = platform::FocusedId();
  Call(hooks.setSurface, static_cast<int>(kSurfaceCode));
  platform::SetFocusTo(focused);
}

// The code of a block as it was generated: what stands behind CODE, or the stored text of an
// excluded one. False: the storage lacks it.
bool CodeOfBlock(std::u16string_view text, const FeatureRecord& row, std::u16string& code) {
  std::int32_t number = 0;
  if (DisabledNumber(text, row, number)) {
    const ProgramTab* tab = ActiveTab();
    const DisabledCodeEntry* entry = tab ? FindDisabledCode(tab->disabledCode, number) : nullptr;
    if (!entry) return false;
    code = entry->text;
    return true;
  }
  code = std::u16string(GeneratedCode(text, row));
  return true;
}

// Before the block's generated code or behind it, where no hash sees it.
bool HasCodeOnMarkerLines(std::u16string_view text, const FeatureRecord& row) {
  const std::u16string_view code = GeneratedCode(text, row);
  if (code.data() == nullptr) return false;
  const auto from = static_cast<std::size_t>(code.data() - text.data());
  return HoldsCode(text, static_cast<std::size_t>(row.start), from) ||
         HoldsCode(text, from + code.size(), static_cast<std::size_t>(row.end));
}

bool HasManualEdits(std::u16string_view text, const FeatureRecord& row) {
  if (InclusionOf(text, row) == Inclusion::OffHasCode) return true;
  std::u16string code;
  if (!CodeOfBlock(text, row, code)) return true;
  return !IsGeneratedCode(row.settings, code) || HasCodeOnMarkerLines(text, row);
}

// Kinds 1 to 3 may hold their shape in the block's own items; the builder knows shapes by
// their index in the library. False: the library is full.
bool ResolveShape(FeatureSettings& record) {
  if (record.kind < kKindShape || record.kind > kKindRectangular || record.a != -1) return true;
  const int index = recoverShape ? recoverShape(record) : -1;
  if (index < 0) return false;
  record.a = index + (record.kind == kKindShape ? 7 : 6);
  return true;
}

void OpenBuilder(std::u16string_view text, int row) {
  FeatureSettings record = features.rows[row].settings;
  const std::int32_t id = features.rows[row].id;
  if (!ResolveShape(record)) {
    ShowFeatureHint(u"Shape library full; cannot restore project shape.");
    return;
  }
  const BuilderOpener opener = openers[record.kind];
  if (!opener) {
    // Until this kind's builder exists its block stays editable as text.
    SelectFeature();
    ShowFeatureHint(u"This builder is not available yet: edit the selected block directly.");
    return;
  }
  DropEditLink();
  const std::u16string_view block = Span(text, features.rows[row].start, features.rows[row].end);
  SetEditLink({record.kind, id, app.activeTab, std::u16string(block)});
  if (!opener(record)) {
    DropEditLink();
    return;
  }
  ShowBuilderKeys(record.kind);
  ShowFeatureHint(u"Editing existing block. Update replaces it; New unlinks.");
}

// Asks whether code goes into a block that it may not have been taken out of.
bool TakesUncertainCode(const DisabledCodeEntry& stored) {
  std::u16string_view start(stored.text);
  start.remove_prefix(SkipLineEnds(start, 0));
  start = start.substr(0, std::min<std::size_t>(LineEndFrom(start, 0), kShownUnits));
  return Confirmed(u"Include code",
                   u"The code stored under the number of this block may have been taken out of "
                   u"another one: the block was pasted, or its number was changed. It begins "
                   u"with:\r\n\r\n" +
                       std::u16string(start) + u"\r\n\r\nPut this code in?");
}

// `confirmed`: the user wants stored code of uncertain origin.
void ToggleIncludeOf(std::int32_t id, bool confirmed) {
  ProgramTab* tab = ActiveTab();
  const DisabledCodeEntry* stored = nullptr;
  bool certain = false;
  DisabledMarker marker;
  Stretch code;
  // What is typed beside a DISABLED line is in the program, and stays there when the code comes in.
  const auto find = [&](Stretch& s) {
    if (CountFeatures(id) != 1) return false;
    const FeatureRecord& row = features.rows[FindFeature(id)];
    if (!FindIncludeSpan(s.text, row, s.from, s.to)) return false;
    if (!FindDisabledMarker(s.text, s.from, s.to, marker)) return CanStoreCode(*tab, s);
    s.from = marker.from;
    s.to = marker.to;
    stored = FindDisabledCode(tab->disabledCode, marker.number);
    certain = stored && IsCodeOf(*stored, row);
    if (stored) return true;
    ShowFeatureHint(u"Disabled code storage is missing. Restore this program's .features file.");
    return false;
  };
  if (!FindStretch(code, find)) return;
  if (stored && !certain && !confirmed) {
    const std::uint64_t serial = ActiveSerial();
    // The pause behind the question may change all that was found.
    if (TakesUncertainCode(*stored) && ActiveSerial() == serial) ToggleIncludeOf(id, true);
    return;
  }
  const WordsAnew anew;
  std::u16string replacement;
  if (stored) {
    replacement = CodeForMarker(marker, stored->text);
  } else {
    const std::int32_t entry = KeepExcludedCode(*tab, Span(code.text, code.from, code.to), id);
    if (entry == 0) return;
    replacement = DisabledLine(entry);
  }
  const auto before = static_cast<std::size_t>(code.to - code.from);
  if (replacement.size() > before && !HasRoomFor(replacement.size() - before)) {
    TellNoRoom(u"Include code");
    return;
  }
  ReplaceSpan(code.text, code.from, code.to, replacement);
  DropEditLink();
  RefreshFeatureList();
  UpdateFeatureCaptions();
  TellChanged(true);
}

}  // namespace

std::int32_t SelectedFeatureId() {
  // Behind a switch the list shows another program's blocks for a moment.
  if (!ListShowsActiveProgram()) return 0;
  const int row = platform::SelectedRow(kIdFeatureList);
  return row < 0 ? 0 : static_cast<std::int32_t>(platform::RowData(kIdFeatureList, row));
}

void ShowInclusion(Inclusion inclusion) {
  if (inclusion != Inclusion::OffHasCode) {
    ShowWords(kIdFeatureInclude, inclusion == Inclusion::Off);
  } else if (platform::Exists(kIdFeatureInclude)) {
    platform::SetText(kIdFeatureInclude,
                      std::u16string(WordsOf(kIdFeatureInclude, true)) + kHasCode);
  }
}

void UpdateFeatureCaptions() {
  const std::u16string_view text = platform::EditorText(kIdEditor);
  ScanEditorText();
  const int row = FindFeature(SelectedFeatureId());
  ShowInclusion(row >= 0 ? InclusionOf(text, features.rows[row]) : Inclusion::On);
  if (row < 0) {
    platform::SetText(kIdFeatureName, u"");
    return;
  }
  const FeatureRecord& r = features.rows[row];
  platform::SetText(kIdFeatureName, r.name[0] ? r.name : KindWords(r.settings.kind));
}

void SelectFeature() {
  UpdateFeatureCaptions();
  const std::int32_t id = SelectedFeatureId();
  if (id == 0) return;
  GoToCode();
  const std::u16string text(platform::EditorText(kIdEditor));
  ScanProgramText(text);
  const int row = FindFeature(id);
  if (row < 0) return;
  ShowSelection(text, features.rows[row]);
  // UPDATE goes into the block that was opened, not into the selected one.
  const bool other = editLink.kind != 0 && editLink.tab == app.activeTab && editLink.id != id;
  const int linked = other ? FindFeature(editLink.id) : -1;
  if (linked < 0) return ShowFeatureHint(u"Selected block. Edit Settings reopens its builder.");
  const std::u16string words = u"Selected block. The form still edits #" + IntegerText(linked + 1) +
                               u"; Edit Settings opens this one.";
  ShowFeatureHint(words);
}

void EditFeature() {
  const std::int32_t id = SelectedFeatureId();
  if (id == 0) return;
  if (IsLocked(id)) {
    ShowFeatureHint(u"Feature settings are locked. Right-click to unlock.");
    return;
  }
  if (id < 0) {
    SelectFeature();
    ShowFeatureHint(u"Legacy shape: edit selected G-code. Original settings were not saved.");
    return;
  }
  const std::u16string text(platform::EditorText(kIdEditor));
  ScanProgramText(text);
  if (CountFeatures(id) != 1) {
    ShowFeatureHint(u"Duplicate IDs: edit copied blocks as text.");
    return;
  }
  const int row = FindFeature(id);
  const std::int32_t kind = features.rows[row].settings.kind;
  if (kind == kKindUserCode || kind == kKindLegacy) {
    SelectFeature();
    platform::SetFocusTo(ShownEditor());
    ShowFeatureHint(u"User code: edit the selected block directly. Rename below.");
    return;
  }
  if (HasManualEdits(text, features.rows[row])) {
    platform::ShowBox(u"Shape has manual changes",
                      u"This block has manual G-code edits. Its saved settings no longer describe "
                      u"that code. Keep editing it as text, or create a new shape; the existing "
                      u"block is preserved.",
                      platform::BoxButtons::Ok, platform::BoxIcon::Information);
    return;
  }
  OpenBuilder(text, row);
}

bool LinkFeature(std::int32_t id) {
  const std::u16string_view text = platform::EditorText(kIdEditor);
  ScanEditorText();
  const int row = FindFeature(id);
  if (row < 0 || CountFeatures(id) != 1 || HasManualEdits(text, features.rows[row])) return false;
  const FeatureRecord& r = features.rows[row];
  SetEditLink({r.settings.kind, id, app.activeTab, std::u16string(Span(text, r.start, r.end))});
  return true;
}

TwinAnswer AskAboutTwin(const char16_t* title, std::int32_t id) {
  const std::u16string_view text = platform::EditorText(kIdEditor);
  ScanEditorText();
  const int row = FindFeature(id);
  if (row < 0) return TwinAnswer::Another;
  const FeatureRecord& r = features.rows[row];
  std::u16string words = u"It stands in #" + IntegerText(row + 1) + u" ";
  words += r.name[0] ? r.name : KindWords(r.settings.kind);
  words += u" already; another block would cut it twice.\r\n\r\n";
  if (CountFeatures(id) != 1 || HasManualEdits(text, r)) {
    words +=
        u"That block was copied or edited by hand and is not updated. Add another one all the "
        u"same?";
    const bool wanted = platform::ShowBox(title, words, platform::BoxButtons::NoYes,
                                          platform::BoxIcon::Warning) == platform::BoxAnswer::Yes;
    return wanted ? TwinAnswer::Another : TwinAnswer::Nothing;
  }
  words += u"Yes: update that block.\r\nNo: add another block.\r\nCancel: change nothing.";
  const platform::BoxAnswer answer = platform::ShowBox(
      title, words, platform::BoxButtons::YesNoCancel, platform::BoxIcon::Question);
  if (answer == platform::BoxAnswer::Yes) return TwinAnswer::Update;
  return answer == platform::BoxAnswer::No ? TwinAnswer::Another : TwinAnswer::Nothing;
}

bool IsFeatureName(std::u16string_view name) {
  if (name.empty() || name.size() > kGivenNameUnits) return false;
  for (const char16_t c : name) {
    if (c < 32 || c > 126 || c == u'(' || c == u')') return false;
  }
  return true;
}

RenameAnswer RenameFeature(std::u16string_view name) {
  const std::int32_t id = SelectedFeatureId();
  if (!IsFeatureName(name) || id == 0 || IsLocked(id)) return RenameAnswer::Refused;
  RenameAnswer refused = RenameAnswer::Refused;
  Stretch nameLine;
  const auto find = [&](Stretch& s) {
    const int row = FindFeature(id);
    if (row < 0) return false;
    refused = RenameAnswer::OneLine;
    return FindNameLine(s.text, features.rows[row], s.from, s.to);
  };
  if (!FindStretch(nameLine, find)) return refused;
  std::u16string line(kNameMark);
  line.append(name).append(u")\r\n");
  const auto before = static_cast<std::size_t>(nameLine.to - nameLine.from);
  if (line.size() > before && !HasRoomFor(line.size() - before)) {
    TellNoRoom(u"Rename");
    return RenameAnswer::NoRoom;
  }
  const WordsAnew anew;
  ReplaceSpan(nameLine.text, nameLine.from, nameLine.to, line);
  DropEditLink();
  RefreshFeatureList();
  UpdateFeatureCaptions();
  TellChanged(false);
  return RenameAnswer::Done;
}

void DeleteFeature() {
  const std::int32_t id = SelectedFeatureId();
  if (id == 0 || IsLocked(id)) return;
  const std::uint64_t serial = ActiveSerial();
  if (!Confirmed(u"Delete feature",
                 u"Delete the selected feature and its machining code? Undo can restore it.")) {
    return;
  }
  // Another program that came up meanwhile has a block of the same number.
  if (ActiveSerial() != serial) return;
  Stretch block;
  const auto find = [id](Stretch& s) {
    const int row = FindFeature(id);
    if (row < 0) return false;
    s.from = features.rows[row].start;
    s.to = features.rows[row].end;
    return true;
  };
  if (!FindStretch(block, find)) return;
  const WordsAnew anew;
  ReplaceSpan(block.text, block.from, block.to, u"");
  DropEditLink();
  RefreshFeatureList();
  UpdateFeatureCaptions();
  TellChanged(true);
}

void ToggleInclude() {
  const std::int32_t id = SelectedFeatureId();
  if (id == 0 || !ActiveTab() || IsLocked(id)) return;
  ToggleIncludeOf(id, false);
}

void ToggleFeatureLock() {
  const std::int32_t id = SelectedFeatureId();
  if (!ActiveTab() || id == 0) return;
  ToggleFeatureLocked(id);
  RefreshFeatureList();
}

void ToggleFeatureHide() {
  const std::int32_t id = SelectedFeatureId();
  if (!ActiveTab() || id == 0) return;
  ToggleFeatureHidden(id);
  RefreshFeatureList();
  Call(hooks.rebuildToolpath);
}

void SetBuilderOpener(int kind, BuilderOpener opener) {
  if (kind < kKindShape || kind >= kFeatureKinds) {
    StopProgram(u"MORVA cannot start. A builder has the unknown kind " + IntegerText(kind) + u".");
  }
  if (opener && openers[kind] && openers[kind] != opener) {
    StopProgram(u"MORVA cannot start. Two builders have kind " + IntegerText(kind) +
                u"; a test that joins its own frees the kind first.");
  }
  openers[kind] = opener;
}

void SetShapeRecovery(int (*recover)(const FeatureSettings& record)) { recoverShape = recover; }

void ResetFeatureOperations() {
  for (BuilderOpener& opener : openers) opener = nullptr;
  recoverShape = nullptr;
  ResetCodeRestorers();
}

}  // namespace morva
