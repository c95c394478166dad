// What writes markers round foreign text, and the feature list: the two steps of the text
// refresh that stand between the scan and the user.
#include <algorithm>
#include <string>
#include <utility>

#include "app/app_state.h"
#include "app/change_guard.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "documents/block_text.h"
#include "documents/feature_blocks.h"
#include "documents/feature_operations.h"
#include "documents/insertion.h"
#include "documents/marker_lines.h"
#include "documents/save_state.h"
#include "documents/save_words.h"
#include "documents/tab_table.h"
#include "documents/text_room.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/listing.h"
#include "text/codetext.h"
#include "text/text_hash.h"

namespace morva {

namespace {

constexpr int kPrefixUnits = 240;  // both lines of a prefix; a longer name is cut
constexpr int kSuffixUnits = 32;

bool tagging = false;
Inclusion rowInclusion[kMaxFeatures];
int inclusionRows = 0;
std::uint64_t listedSerial = 0;  // the program whose blocks the list showed last

// The text that the last run of the tagging left, so that it is known again when an undo took
// some of the run's markers out. Each marker is an undo step of its own.
struct TagRun {
  TextDigest hash = {};
  int length = 0;  // in editor positions
  int steps = 0;
  bool cameBack = false;  // its markers were taken out once and put back
  bool leftOut = false;   // and then again: the user wants to go back behind them
};
TagRun lastRun;

// Where the markers of one row go, in editor positions of the text before any was written.
struct TagPlace {
  int prefixAt = 0;
  int suffixAt = 0;
  bool ownLine = false;  // something precedes on the line: the prefix starts a new one
};

// A marker is one only at a line start. Where only blanks stand before the block the prefix
// goes before them; otherwise the block would be wrapped again at every tick.
std::int32_t PrefixIndex(std::u16string_view text, std::int32_t start, bool& ownLine) {
  auto at = static_cast<std::size_t>(start);
  while (at > 0 && (text[at - 1] == u' ' || text[at - 1] == u'\t')) --at;
  ownLine = at > 0 && text[at - 1] != u'\r' && text[at - 1] != u'\n';
  return ownLine ? start : static_cast<std::int32_t>(at);
}

int FindTagPlaces(std::u16string_view text, TagPlace (&places)[kMaxFeatures]) {
  OffsetMap map{text};
  int wanted = 0;
  for (int i = 0; i < features.count; ++i) {
    const FeatureRecord& row = features.rows[i];
    if (!row.needsMarkers) continue;
    ++wanted;
    places[i].prefixAt = AdvanceOffset(map, PrefixIndex(text, row.start, places[i].ownLine));
    places[i].suffixAt = AdvanceOffset(map, row.end);
  }
  return wanted;
}

std::u16string PrefixOf(const FeatureRecord& row, bool ownLine) {
  char16_t name[kFeatureNameUnits] = {};
  int length = 0;
  for (const char16_t c : row.name) {
    if (c == 0) break;
    if (c != u'(' && c != u')') name[length++] = c;
  }
  char16_t prefix[kPrefixUnits] = {};
  if (ownLine) AppendLine(prefix, kPrefixUnits, nullptr);
  AppendLabelInteger(prefix, kPrefixUnits, std::u16string(kTextMark).c_str(), row.id);
  AppendLine(prefix, kPrefixUnits, u")");
  AppendBounded(prefix, kPrefixUnits, std::u16string(kNameMark).c_str());
  AppendBounded(prefix, kPrefixUnits, length > 0 ? name : KindWords(kKindUserCode));
  AppendLine(prefix, kPrefixUnits, u")");
  return prefix;
}

// One insert, one undo step. Answers how many positions the text grew by.
int InsertMarker(int position, const std::u16string& marker) {
  platform::ReplaceRange(kIdEditor, {position, position}, marker);
  return MapTextOffset(marker, static_cast<std::int32_t>(marker.size()));
}

// The caret behind the last character stays before the suffix, and the one before the first
// goes behind the prefix, so that typing goes on inside the block.
void WriteMarkers(const FeatureRecord& row, const TagPlace& place,
                  platform::EditorRange& selection) {
  const int suffix = InsertMarker(place.suffixAt, u"\r\n(MORVA END " + IntegerText(row.id) + u")");
  const int prefix = InsertMarker(place.prefixAt, PrefixOf(row, place.ownLine));
  for (int* end : {&selection.from, &selection.to}) {
    const int before = *end;
    if (before > place.suffixAt) *end += suffix;
    if (before >= place.prefixAt) *end += prefix;
  }
}

int WriteAllMarkers(const TagPlace (&places)[kMaxFeatures], platform::EditorRange& selection) {
  int steps = 0;
  // From last to first, so that earlier positions stay valid.
  for (int i = features.count - 1; i >= 0; --i) {
    if (!features.rows[i].needsMarkers) continue;
    WriteMarkers(features.rows[i], places[i], selection);
    steps += 2;
  }
  return steps;
}

bool AtLastRun() {
  return platform::EditorLength(kIdEditor) == lastRun.length &&
         DigestOf(platform::EditorText(kIdEditor)) == lastRun.hash;
}

// Redoes the part of the last run that was undone. An END line whose BEGIN was undone would be
// wrapped as a text of its own, and the program would grow by two markers at every undo. False,
// with the text as it was, where the markers are not what was undone.
bool PutMarkersBack() {
  int steps = 0;
  while (steps < lastRun.steps && platform::RedoEditor(kIdEditor)) {
    ++steps;
    if (AtLastRun()) return true;
  }
  for (; steps > 0; --steps) platform::UndoEditor(kIdEditor);
  return false;
}

// What becomes of the last run after an undo into it: its markers come back once. Undone a
// second time by the user they all leave, or no undo at the pace of a hand would ever reach
// what was done before them.
bool ResumeLastRun(bool byUser) {
  if (!PutMarkersBack()) return false;
  if (byUser && lastRun.cameBack) {
    for (int i = 0; i < lastRun.steps; ++i) platform::UndoEditor(kIdEditor);
    lastRun.leftOut = true;
  }
  lastRun.cameBack = true;
  return true;
}

void TagText(bool byUser) {
  if (tagging || !platform::Exists(kIdEditor)) return;
  TagPlace places[kMaxFeatures];
  int wanted = 0;
  {
    const std::u16string_view text = platform::EditorText(kIdEditor);
    ScanEditorText();
    wanted = FindTagPlaces(text, places);
    if (wanted == 0) return;
  }
  if (!HasRoomFor(static_cast<std::size_t>(wanted) * (kPrefixUnits + kSuffixUnits))) {
    ShowStatus(u"No markers were set: the program would become too large to be opened again.");
    return;
  }
  if (byUser && lastRun.leftOut && platform::CanRedoEditor(kIdEditor)) return;
  lastRun.leftOut = false;
  tagging = true;
  const std::uint64_t before = platform::EditorRevision(kIdEditor);
  {
    const SuppressChanges suppressed;
    platform::HoldEditorRedraw(kIdEditor, true);
    platform::EditorRange selection = platform::EditorSelection(kIdEditor);
    if (!ResumeLastRun(byUser)) {
      const int steps = WriteAllMarkers(places, selection);
      platform::SetEditorSelection(kIdEditor, selection);
      lastRun = {DigestOf(platform::EditorText(kIdEditor)), platform::EditorLength(kIdEditor),
                 steps};
    }
    platform::HoldEditorRedraw(kIdEditor, false);
  }
  if (app.commandWordsActive) Call(hooks.wordsFromEditor);
  platform::Repaint(kIdEditor);
  platform::Repaint(kViewGutter);
  MarkTagged();
  if (const ProgramTab* const tab = ActiveTab()) TakeBackStored(*tab);
  tagging = false;
  if (platform::EditorRevision(kIdEditor) != before) Call(hooks.textTagged, before);
}

Inclusion InclusionOfRow(int row) {
  return row >= 0 && row < inclusionRows ? rowInclusion[row] : Inclusion::On;
}

// The captions follow the list. The name box is left alone while its block stays selected: the
// user may be typing in it.
void FollowSelection(std::int64_t keptId) {
  const int row = platform::SelectedRow(kIdFeatureList);
  const std::uint64_t serial = ActiveSerial();
  const bool other = std::exchange(listedSerial, serial) != serial;
  if (other || (row < 0 && keptId != 0)) {
    UpdateFeatureCaptions();
  } else {
    ShowInclusion(InclusionOfRow(row));
  }
}

// What the number of blocks has to say goes again with the program, or the blocks, that it was
// said of.
void HintAtCount() {
  constexpr const char16_t* kFull =
      u"Feature browser limit: 128 sections. Split this program to index more.";
  constexpr const char16_t* kNone = u"Features appear automatically as you add or type code.";
  if (features.count == kMaxFeatures) return ShowFeatureHint(kFull);
  if (features.count == 0) return ShowFeatureHint(kNone);
  const std::u16string shown = platform::TextOf(kIdFeatureHint);
  const bool gone = shown == kFeatureAdded && FindFeature(AddedFeature()) < 0;
  if (shown == kFull || shown == kNone || gone) ShowFeatureHint(kFeaturesWords);
}

}  // namespace

void AutoTagBlocks() { TagText(false); }

void TagAfterEdit() { TagText(true); }

std::u16string TaggedText(std::u16string_view text) {
  ScanProgramText(text);
  std::u16string tagged;
  // At once: the end of the last block would double the memory of a large program, and copy it.
  tagged.reserve(text.size() +
                 static_cast<std::size_t>(features.count) * (kPrefixUnits + kSuffixUnits));
  std::size_t done = 0;
  for (int i = 0; i < features.count; ++i) {
    const FeatureRecord& row = features.rows[i];
    if (!row.needsMarkers) continue;
    bool ownLine = false;
    const auto prefixAt = static_cast<std::size_t>(PrefixIndex(text, row.start, ownLine));
    const auto end = static_cast<std::size_t>(row.end);
    tagged += text.substr(done, prefixAt - done);
    tagged += PrefixOf(row, ownLine);
    tagged += text.substr(prefixAt, end - prefixAt);
    tagged += u"\r\n(MORVA END " + IntegerText(row.id) + u")";
    done = end;
  }
  tagged += text.substr(std::min(done, text.size()));
  return tagged;
}

void RefreshFeatureList() {
  // The ids of another program's blocks mean nothing here.
  const int selected = ActiveSerial() == listedSerial ? platform::SelectedRow(kIdFeatureList) : -1;
  const std::int64_t kept = selected >= 0 ? platform::RowData(kIdFeatureList, selected) : 0;
  const int top = platform::TopRow(kIdFeatureList);
  const std::u16string_view text = platform::EditorText(kIdEditor);
  ScanEditorText();
  const ProgramTab* tab = ActiveTab();
  platform::HoldListRedraw(kIdFeatureList, true);
  platform::ClearRows(kIdFeatureList);
  inclusionRows = features.count;
  for (int i = 0; i < features.count; ++i) {
    const FeatureRecord& row = features.rows[i];
    std::u16string line = u"#" + IntegerText(i + 1) + u"  ";
    line += row.name[0] ? row.name : KindWords(row.settings.kind);
    rowInclusion[i] = InclusionOf(text, row);
    if (rowInclusion[i] == Inclusion::OffHasCode) line += kHasCodeMark;
    if (tab && IdListHolds(tab->hiddenIds, row.id)) line += kHiddenMark;
    if (tab && IdListHolds(tab->lockedIds, row.id)) line += kLockedMark;
    const int added = platform::AddRow(kIdFeatureList, line, row.id);
    platform::SetRowDim(kIdFeatureList, added, FeatureRowExcluded(i) && !FeatureRowHasLiveCode(i));
    if (kept != 0 && row.id == kept) platform::SelectRow(kIdFeatureList, added);
  }
  // Typing refreshes the list; it must not scroll away from what the user looks at.
  platform::SetTopRow(kIdFeatureList, top);
  platform::HoldListRedraw(kIdFeatureList, false);
  FollowSelection(kept);
  HintAtCount();
}

bool ListShowsActiveProgram() { return listedSerial == 0 || listedSerial == ActiveSerial(); }

bool FeatureRowExcluded(int row) { return InclusionOfRow(row) != Inclusion::On; }
bool FeatureRowHasLiveCode(int row) { return InclusionOfRow(row) == Inclusion::OffHasCode; }

void SelectFeatureRow(std::int32_t id) {
  const int count = platform::RowCount(kIdFeatureList);
  int row = 0;
  while (row < count && platform::RowData(kIdFeatureList, row) != id) ++row;
  platform::SelectRow(kIdFeatureList, row < count ? row : -1);
}

}  // namespace morva
