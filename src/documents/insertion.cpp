#include "documents/insertion.h"

#include <algorithm>

#include "app/app_state.h"
#include "app/change_guard.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/stop.h"
#include "documents/block_text.h"
#include "documents/feature_blocks.h"
#include "documents/feature_marks.h"
#include "documents/feature_operations.h"
#include "documents/marker_lines.h"
#include "documents/program_places.h"
#include "documents/split_undo.h"
#include "documents/tab_models.h"
#include "documents/tab_table.h"
#include "documents/text_room.h"
#include "documents/user_code_split.h"
#include "platform/editor.h"
#include "platform/message.h"
#include "text/codetext.h"

namespace morva {

namespace {

SettingsWriter writers[kFeatureKinds];
DestinationPicker picker = nullptr;

void Refuse(const char16_t* caption, const char16_t* words, platform::BoxIcon icon) {
  platform::ShowBox(caption, words, platform::BoxButtons::Ok, icon);
}

// The caret's line: that of the command words view while it stands in the editor's place.
int CaretLine() {
  const int id = ShownEditor();
  return platform::EditorLineOf(id, platform::EditorSelection(id).to);
}

std::int32_t EndOfCaretLine(std::u16string_view text) {
  const int line = CaretLine();
  return TextIndexOf(text, platform::EditorLineStart(kIdEditor, line) +
                               platform::EditorLineLength(kIdEditor, line));
}

std::u16string_view WithoutLineEnds(std::u16string_view text) {
  while (!text.empty() && (text.front() == u'\r' || text.front() == u'\n')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == u'\r' || text.back() == u'\n')) text.remove_suffix(1);
  return text;
}

// Over `range` as one undo step, the caret behind it.
void PutText(platform::EditorRange range, std::u16string_view text) {
  const InsertingText guard;
  platform::SetEditorSelection(kIdEditor, range);
  platform::ReplaceSelection(kIdEditor, text, true);
  platform::ScrollCaretIntoView(kIdEditor);
}

// Code that a builder or a drawing wrote, which is updated as a whole.
bool IsGenerated(const FeatureRecord& block) {
  return block.settings.kind >= kKindShape && block.settings.kind <= kKindSkim;
}

// Where plain text goes: behind a line, which ends at `index`.
struct TextPlace {
  int line = 0;
  std::int32_t index = 0;
  int row = -1;  // of the generated block that holds the caret's line
};

// The name of a block belongs to the marker above it: nothing goes between the two.
void PassName(std::u16string_view text, const FeatureRecord& block, TextPlace& place) {
  std::int32_t from = 0;
  std::int32_t to = 0;
  if (!FindNameLine(text, block, from, to) || from == to || place.index >= from) return;
  place.line = platform::EditorLineOf(kIdEditor, MapTextOffset(text, from));
  place.index = static_cast<std::int32_t>(LineEndFrom(text, static_cast<std::size_t>(from)));
}

// Scans the text.
TextPlace PlaceOfText(std::u16string_view text) {
  ScanProgramText(text);
  TextPlace place{CaretLine(), EndOfCaretLine(text)};
  // Behind a block the next one may begin on the same line.
  for (int around = FeatureAround(place.index); around >= 0; around = FeatureAround(place.index)) {
    const FeatureRecord& block = features.rows[around];
    if (!IsGenerated(block)) {
      PassName(text, block, place);
      break;
    }
    if (place.row < 0) place.row = around;
    place.line = platform::EditorLineOf(kIdEditor, MapTextOffset(text, block.end));
    place.index = static_cast<std::int32_t>(LineEndFrom(text, static_cast<std::size_t>(block.end)));
  }
  return place;
}

// Says in the log what text that was put in at an index does to the program around it.
void TellCuts(std::int32_t at, std::size_t sizeBefore) {
  const std::u16string_view now = platform::EditorText(kIdEditor);
  const auto units = static_cast<std::int32_t>(now.size() - sizeBefore);
  const std::u16string words = CutsByInserted(now, at, at + units);
  if (!words.empty()) AppendOutput(words);
}

void TellInserted(int line) {
  ShowStatus(u"Generated block inserted after editor line " + IntegerText(line + 1) +
             u". The caret is ready for the next insert.");
}

void PutBehindLine(int line, std::u16string_view text) {
  const std::u16string_view core = WithoutLineEnds(text);
  if (core.empty()) return;
  const int length = platform::EditorLineLength(kIdEditor, line);
  const int end = platform::EditorLineStart(kIdEditor, line) + length;
  std::u16string block;
  if (length > 0) block += u"\r\n";
  block += core;
  if (end >= platform::EditorLength(kIdEditor)) block += u"\r\n";
  PutText({end, end}, block);
  TellInserted(line);
}

// The first row that starts on the line of `index`, -1 for none.
int RowOnLine(std::u16string_view text, std::int32_t index) {
  auto from = static_cast<std::size_t>(index);
  const std::size_t to = LineEndFrom(text, from);
  while (from > 0 && !IsLineEnd(text[from - 1])) --from;
  for (int i = 0; i < features.count; ++i) {
    const auto start = static_cast<std::size_t>(features.rows[i].start);
    if (start >= from && start < to) return i;
  }
  return -1;
}

// Before the block that starts on the caret's line, pushing it down. Where another block ends
// on that same line the new one starts a line of its own, so that blocks never nest.
void PutBeforeRow(std::u16string_view text, int row, const std::u16string& block) {
  std::int32_t at = features.rows[row].start;
  while (at > 0 && (text[static_cast<std::size_t>(at - 1)] == u' ' ||
                    text[static_cast<std::size_t>(at - 1)] == u'\t')) {
    --at;
  }
  const char16_t before = at > 0 ? text[static_cast<std::size_t>(at - 1)] : u'\n';
  const int position = MapTextOffset(text, at);
  PutText({position, position}, (IsLineEnd(before) ? u"" : u"\r\n") + block + u"\r\n");
}

void PutBehindRow(std::u16string_view text, int row, const std::u16string& block) {
  const std::int32_t end = features.rows[row].end;
  if (row + 1 < features.count && features.rows[row + 1].start == end) {
    PutBeforeRow(text, row + 1, block);
    return;
  }
  const int line = platform::EditorLineOf(kIdEditor, MapTextOffset(text, end));
  PutBehindLine(line, u"\r\n" + block);
}

void PutNewBlock(std::u16string_view text, const std::u16string& block, bool placed) {
  const std::int32_t caret = TextIndexOf(text, CaretPosition());
  const int onLine = placed ? RowOnLine(text, caret) : -1;
  if (onLine >= 0) {
    PutBeforeRow(text, onLine, block);
    return;
  }
  const int around = placed ? -1 : FeatureAround(caret);
  if (around >= 0) {
    PutBehindRow(text, around, block);
  } else {
    PutBehindLine(CaretLine(), u"\r\n" + block);
  }
}

std::int32_t addedId = 0;  // of the feature that was added last

// Between two halves of the user code around the caret, or beside it where one half is empty.
void PutAtSplit(std::u16string_view text, const SplitPlace& place, const std::u16string& block,
                std::int32_t id) {
  if (!place.before) return PutBeforeRow(text, place.row, block);
  if (!place.behind) return PutBehindRow(text, place.row, block);
  OffsetMap map{text};
  platform::EditorRange range;
  range.from = AdvanceOffset(map, place.at);
  range.to = AdvanceOffset(map, features.rows[place.row].end);
  const int line = platform::EditorLineOf(kIdEditor, range.from);
  NoteSplit(text, range);
  const std::int32_t rest = RestId(text, id);
  CopyFeatureMarks(features.rows[place.row].id, rest);
  PutText(range, SplitText(text, place, block, rest));
  // The END line of the first half stands before the block.
  const auto units = static_cast<std::int32_t>(block.size());
  const int behind = platform::EditorLineStart(kIdEditor, line + 1) + MapTextOffset(block, units);
  platform::SetEditorSelection(kIdEditor, {behind, behind});
  TellInserted(line);
}

// The row of the block under edit where it stands as it was opened, else -1. The table stands.
int LinkedRow(std::u16string_view text) {
  const int row = FindFeature(editLink.id);
  if (row < 0 || CountFeatures(editLink.id) != 1 || editLink.tab != app.activeTab) return -1;
  const FeatureRecord& r = features.rows[row];
  // Code of its own beside the line that stands for the stored one would be lost.
  if (InclusionOf(text, r) == Inclusion::OffHasCode) return -1;
  const auto units = static_cast<std::size_t>(r.end - r.start);
  return text.substr(static_cast<std::size_t>(r.start), units) == editLink.original ? row : -1;
}

// The row that the link names, -1 after the user was told why it cannot be updated.
int RowToUpdate(std::u16string_view text) {
  const ProgramTab* tab = ActiveTab();
  if (tab && IdListHolds(tab->lockedIds, editLink.id)) {
    Refuse(u"Shape locked", u"Unlock this shape in the browser before updating it.",
           platform::BoxIcon::None);
    return -1;
  }
  const int row = LinkedRow(text);
  if (row >= 0) return row;
  Refuse(u"Shape update stopped",
         u"This shape's code changed, was removed, or has duplicate IDs. Reopen its settings from "
         u"Features, or choose New / Unlink to insert a separate shape. No code was replaced.",
         platform::BoxIcon::Warning);
  // Nothing is left to update or to reopen: the next press adds what the form holds.
  if (editLink.tab == app.activeTab && CountFeatures(editLink.id) == 0 &&
      editLink.kind <= kKindRectangular) {
    DropEditLink();
  }
  return -1;
}

// In place, with the same id and name. An excluded block stays excluded: its new code goes
// into the tab's list. 0 after the user was told why not.
std::int32_t UpdateBlock(std::u16string_view text, const FeatureSettings& record,
                         std::u16string_view code) {
  const int row = RowToUpdate(text);
  if (row < 0) return 0;
  const FeatureRecord& r = features.rows[row];
  const std::int32_t id = r.id;
  std::u16string body(code);
  if (r.holdsDisabled) {
    ProgramTab* tab = ActiveTab();
    const std::int32_t stored = tab ? KeepExcludedCode(*tab, code, id) : 0;
    if (stored == 0) {
      Refuse(u"Shape update stopped",
             u"The new code of this excluded shape could not be stored: it is too long, or the "
             u"storage is full. No code was replaced.",
             platform::BoxIcon::Warning);
      return 0;
    }
    body = DisabledLine(stored);
  }
  OffsetMap map{text};
  platform::EditorRange range;
  range.from = AdvanceOffset(map, r.start);
  range.to = AdvanceOffset(map, r.end);
  PutText(range, SettingsBlockText(id, r.name, record, body));
  return id;
}

}  // namespace

bool HasRowFor(int blocks, const char16_t* title) {
  if (features.count + blocks <= kMaxFeatures) return true;
  Refuse(title, u"This program already has 128 editable blocks. Use another document.",
         platform::BoxIcon::Warning);
  return false;
}

namespace {

// Behind the block that holds the caret, or where the user wants it. 0 when full.
std::int32_t AddBlock(std::u16string_view text, const FeatureSettings& record,
                      std::u16string_view code, Destination destination) {
  SplitPlace split;
  if (destination == Destination::Split) split = FindSplit(text, CodeCaret(text));
  const bool parts = split.row >= 0 && split.before && split.behind;
  if (!HasRowFor(parts ? 2 : 1, u"Shape limit")) return 0;
  const std::int32_t id = NextTableId();
  // A block that an Undo took back may have borne the number.
  CopyFeatureMarks(0, id);
  const std::u16string block = SettingsBlockText(id, {}, record, code);
  if (split.row >= 0) {
    PutAtSplit(text, split, block, id);
  } else {
    PutNewBlock(text, block, destination == Destination::Placed);
  }
  return id;
}

constexpr char16_t kInsertTitle[] = u"Insert code";

std::u16string NeverRun(const PlaceAround& place) {
  return u"The code would stand behind " + place.end + u", where it is never run.\r\n\r\n";
}

}  // namespace

bool WantsItNeverRun(const PlaceAround& place) {
  return platform::ShowBox(kInsertTitle, NeverRun(place) + u"Insert it there all the same?",
                           platform::BoxButtons::NoYes,
                           platform::BoxIcon::Warning) == platform::BoxAnswer::Yes;
}

namespace {

// Where something goes whose own place is never run. `more` is how many blocks it brings.
Destination AskNeverRun(std::u16string_view text, const PlaceAround& place, int more) {
  const SplitPlace split = FindSplit(text, CodeCaret(text));
  const int rest = split.before && split.behind ? 1 : 0;
  const bool splits = split.row >= 0 && features.count + more + rest <= kMaxFeatures &&
                      !LookAround(text, SplitIndex(split)).behindEnd;
  if (!splits) return WantsItNeverRun(place) ? Destination::Caret : Destination::Cancelled;
  const int line = platform::EditorLineOf(kIdEditor, MapTextOffset(text, split.at));
  const std::u16string words = NeverRun(place) + u"Yes: split the user code at line " +
                               IntegerText(line + 1) +
                               u" and insert the code at the caret.\r\nNo: insert it behind " +
                               place.end + u".\r\nCancel: insert nothing.";
  switch (platform::ShowBox(kInsertTitle, words, platform::BoxButtons::YesNoCancel,
                            platform::BoxIcon::Question)) {
    case platform::BoxAnswer::Yes:
      return Destination::Split;
    case platform::BoxAnswer::No:
      return Destination::Caret;
    default:
      return Destination::Cancelled;
  }
}

// Cancelled also where another program came up behind the question.
Destination AskPlace(int kind, std::u16string_view code, bool asksWhere) {
  if (asksWhere && picker) return picker(kind, Call(hooks.lastUnitsCode, code));
  if (editLink.kind == kind) return Destination::Caret;
  const std::u16string_view text = platform::EditorText(kIdEditor);
  ScanEditorText();
  const int around = FeatureAround(CodeCaret(text).caret);
  return AskIfNeverRun(around < 0 ? EndOfCaretLine(text) : features.rows[around].end, 1);
}

// The live model of a kind as a record that the scan will accept again.
bool StoreModel(int kind, std::u16string_view code, FeatureSettings& record) {
  if (kind < kKindShape || kind >= kFeatureKinds || !writers[kind] || !writers[kind](record))
    return false;
  record.codeHash = CodeHash(code);
  return record.kind == kind && static_cast<std::uint32_t>(record.itemCount) <= kMaxItems &&
         ValidateSettings(record, static_cast<std::size_t>(SettingsLength(record)));
}

}  // namespace

bool LinkedBlockStands() {
  if (editLink.kind == 0) return true;
  if (app.commandWordsActive) Call(hooks.editorFromWords);
  const std::u16string_view text = platform::EditorText(kIdEditor);
  ScanEditorText();
  return LinkedRow(text) >= 0;
}

int CaretPosition() {
  if (ShownEditor() == kIdEditor) return platform::EditorSelection(kIdEditor).to;
  return platform::EditorLineStart(kIdEditor, CaretLine());
}

void SetSettingsWriter(int kind, SettingsWriter writer) {
  if (kind < kKindShape || kind >= kFeatureKinds) {
    StopProgram(u"MORVA cannot start. A settings writer has the unknown kind " + IntegerText(kind) +
                u".");
  }
  if (writer && writers[kind] && writers[kind] != writer) {
    StopProgram(u"MORVA cannot start. Two settings writers have kind " + IntegerText(kind) + u".");
  }
  writers[kind] = writer;
}

void SetDestinationPicker(DestinationPicker chosen) { picker = chosen; }

bool InsertFeatureBlock(int kind, std::u16string_view code, bool asksWhere) {
  AutoTagBlocks();
  FeatureSettings record;
  if (!StoreModel(kind, code, record)) {
    Refuse(u"Invalid shape settings",
           u"Shape settings could not be stored. Check the dimensions and selected shape. Nothing "
           u"was inserted.",
           platform::BoxIcon::Warning);
    return false;
  }
  const Destination destination = AskPlace(kind, code, asksWhere);
  if (destination == Destination::Cancelled) return false;
  AutoTagBlocks();
  // The program that was picked must have the room. Every byte of the record takes two digits,
  // every line of them its brackets.
  if (!HasRoomFor(code.size() + 4 * kSettingsBytes)) {
    TellNoRoom(u"Insert");
    return false;
  }
  if (app.commandWordsActive) Call(hooks.editorFromWords);
  const std::u16string text(platform::EditorText(kIdEditor));
  ScanProgramText(text);
  const bool update = editLink.kind != 0 && editLink.kind == kind;
  const std::int32_t id =
      update ? UpdateBlock(text, record, code) : AddBlock(text, record, code, destination);
  if (id == 0) return false;
  if (app.commandWordsActive) Call(hooks.wordsFromEditor);
  DropEditLink();
  ShowFeaturesInSidebar(true);
  Call(hooks.layout);
  RefreshFeatureList();
  SelectFeatureRow(id);
  UpdateFeatureCaptions();
  addedId = id;
  ShowFeatureHint(update ? u"Feature updated in place. Undo restores the prior block."
                         : kFeatureAdded);
  return true;
}

std::int32_t AddedFeature() { return addedId; }

Destination AskIfNeverRun(std::int32_t index, int more) {
  const std::u16string_view text = platform::EditorText(kIdEditor);
  const PlaceAround place = LookAround(text, index);
  if (!place.behindEnd) return Destination::Caret;
  const std::uint64_t serial = ActiveSerial();
  const Destination destination = AskNeverRun(text, place, more);
  return ActiveSerial() == serial ? destination : Destination::Cancelled;
}

bool InsertAtSplit(const std::u16string& block, std::int32_t lastId) {
  constexpr std::size_t kMarkers = 160;  // units of the lines that close and open the split block
  if (!HasRoomFor(block.size() + kMarkers)) {
    TellNoRoom(u"Insert");
    return false;
  }
  const std::u16string text(platform::EditorText(kIdEditor));
  const SplitPlace split = FindSplit(text, CodeCaret(text));
  if (split.row < 0) {
    ShowStatus(u"Not inserted: the caret stands in no user code any more. Press again.");
    return false;
  }
  PutAtSplit(text, split, block, lastId);
  return true;
}

bool InsertTextAtCaret(std::u16string_view text, bool asBlock) {
  const std::u16string_view inserted = asBlock ? WithoutLineEnds(text) : text;
  if (inserted.empty() || !platform::Exists(kIdEditor)) return false;
  if (!HasRoomFor(text.size())) {
    TellNoRoom(u"Insert");
    return false;
  }
  const int line = CaretLine();
  if (app.commandWordsActive) Call(hooks.editorFromWords);
  if (asBlock) {
    PutBehindLine(line, text);
  } else {
    PutText(platform::EditorSelection(kIdEditor), text);
  }
  if (app.commandWordsActive) Call(hooks.wordsFromEditor);
  return true;
}

bool InsertTextAsBlock(std::u16string_view inserted) {
  if (WithoutLineEnds(inserted).empty() || !platform::Exists(kIdEditor)) return false;
  if (!HasRoomFor(inserted.size())) {
    TellNoRoom(u"Insert");
    return false;
  }
  if (app.commandWordsActive) Call(hooks.editorFromWords);
  const std::u16string text(platform::EditorText(kIdEditor));
  const TextPlace place = PlaceOfText(text);
  if (const PlaceAround around = LookAround(text, place.index); around.behindEnd) {
    const std::uint64_t serial = ActiveSerial();
    if (!WantsItNeverRun(around) || ActiveSerial() != serial) return false;
  }
  PutBehindLine(place.line, inserted);
  if (place.row >= 0) {
    const FeatureRecord& block = features.rows[place.row];
    AppendOutput(u"The caret stood in #" + IntegerText(place.row + 1) + u" " +
                 (block.name[0] ? block.name : KindWords(block.settings.kind)) +
                 u": the code was inserted behind that block.");
  }
  TellCuts(place.index, text.size());
  if (app.commandWordsActive) Call(hooks.wordsFromEditor);
  return true;
}

std::int32_t UnitsAt(std::u16string_view text, std::int32_t index) {
  const auto units = static_cast<std::size_t>(std::max(index, 0));
  const std::int32_t before = Call(hooks.lastUnitsCode, text.substr(0, units));
  return before != 0 ? before : Call(hooks.lastUnitsCode, text);
}

std::int32_t UnitsWhereTextGoes() {
  if (app.commandWordsActive) Call(hooks.editorFromWords);
  const std::u16string_view text = platform::EditorText(kIdEditor);
  return UnitsAt(text, PlaceOfText(text).index);
}

bool MaySwitchUnits(std::int32_t before, std::int32_t after, const char16_t* title,
                    std::u16string_view way) {
  if (before == 0 || after == 0 || before == after) return true;
  std::u16string words =
      before == 21
          ? u"The program is in millimeters where the block goes; the block switches it to inches. "
          : u"The program is in inches where the block goes; the block switches it to "
            u"millimeters. ";
  words += way;
  return ConfirmedNoFirst(title, words + u"\r\n\r\nInsert it all the same?");
}

void TellOtherUnit(std::int32_t before, std::u16string_view block) {
  const std::int32_t after = Call(hooks.lastUnitsCode, block);
  if (before == 0 || after == 0 || before == after) return;
  AppendOutput(after == 21
                   ? u"The program was in inches. Code behind this block that names no unit "
                     u"runs in millimeters."
                   : u"The program was in millimeters. Code behind this block that names no "
                     u"unit runs in inches.");
}

void ResetInsertion() {
  SetEditLink({});
  for (SettingsWriter& writer : writers) writer = nullptr;
  picker = nullptr;
  addedId = 0;
  ResetSplitUndo();
}

}  // namespace morva
