// Feature blocks: the marker lines in program text and the table derived from them.
//
// The text is the truth; the table is rebuilt from it by every operation that needs it and is
// never edited. A damaged block is ordinary text, never an error. Positions are text indices
// (a CR LF counts two).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "documents/feature_settings.h"

namespace morva {

struct FeatureRecord {
  std::int32_t id = 0;
  std::int32_t start = 0;  // text index of the block's first character
  std::int32_t end = 0;    // just past the block
  char16_t name[kFeatureNameUnits] = {};
  FeatureSettings settings;  // zero but for kind where the block has no DATA
  bool needsMarkers = false;
  bool holdsDisabled = false;  // "(MORVA DISABLED " occurs in it, any case
};

struct FeatureTable {
  std::int32_t count = 0;
  std::int32_t nextId = 0;  // the scan's next free id, used by no row; 0 before any scan
  FeatureRecord rows[kMaxFeatures];
};

// Always describes the text it was last scanned from.
extern FeatureTable features;

// An empty table, as before any program.
void ResetFeatures();
// Fills the table; the first NUL ends the text. A pure function of the text.
void ScanProgramText(std::u16string_view text);
// The same for the text of the code editor. Where the table is that text's already it costs
// nothing; where its program came back as it left, a copy of the rows.
void ScanEditorText();
// The program with this serial is closed: no table of it is kept.
void ForgetTableOf(std::uint64_t serial);
// How many tables are kept for that: one for each program that is open, at most, of up to 0.7 MB
// each.
int KeptTableCount();
// The rows of any text; the table stays.
std::vector<FeatureRecord> BlocksOf(std::u16string_view text);
// FNV-1a, 32 bits, over whole 16-bit units other than tab, LF, CR and blank.
std::uint32_t CodeHash(std::u16string_view code);
// The first row of a kind, of the program that was scanned last, that passes the test; -1: none.
template <typename Test>
int FirstRowOf(std::int32_t kind, Test test) {
  for (int i = 0; i < features.count; ++i) {
    if (features.rows[i].settings.kind == kind && test(features.rows[i])) return i;
  }
  return -1;
}
// First row with this id, -1 for none; and how many rows have it.
int FindFeature(std::int32_t id);
int CountFeatures(std::int32_t id);
// First row whose block holds the text index, its start but not its end; -1 for none.
int FeatureAround(std::int32_t index);
// One more than the largest id in the table, at least 1; the scan's next free id where the
// largest is the largest number of all.
std::int32_t NextTableId();

// The editor position of a text index: a CR LF before it counts one.
int MapTextOffset(std::u16string_view text, std::int32_t index);
// And back: the text index of an editor position, at most the text's length.
std::int32_t TextIndexOf(std::u16string_view text, int position);
// Many positions of one text in a single pass; the indices asked for must not go back.
struct OffsetMap {
  std::u16string_view text;
  std::int32_t index = 0;
  int position = 0;
};
int AdvanceOffset(OffsetMap& map, std::int32_t index);

// Writes markers into the editor for every record that needs them, each an undo step; guarded
// against itself. Markers that an undo took out come back by redo: the text is then the one
// that the run before left.
void AutoTagBlocks();
// The same once the user's hands rest, and before a save. Markers undone a second time in a row
// stay out, as long as there is something to redo, so that Undo gets behind them.
void TagAfterEdit();
// The text with the markers that AutoTagBlocks would write; scans it.
std::u16string TaggedText(std::u16string_view text);
// Rebuilds the feature list's rows from the text; a row's number is its block's id.
void RefreshFeatureList();
// Whether the list was filled for the active program, or for none yet.
bool ListShowsActiveProgram();
// In a row whose block is excluded and has code of its own.
inline constexpr std::u16string_view kHiddenMark = u" [hidden]";
inline constexpr std::u16string_view kLockedMark = u" [locked]";
inline constexpr std::u16string_view kHasCodeMark = u" [has code]";
// Whether the block behind a row of the list was excluded at the last refresh, and whether it held
// code of its own all the same; for drawing.
bool FeatureRowExcluded(int row);
bool FeatureRowHasLiveCode(int row);
// Selects the first row with this id, none where no row has it.
void SelectFeatureRow(std::int32_t id);

// The text of a whole settings block: BEGIN, NAME when `name` is not empty, DATA, CODE, the
// body, CR LF, END. No line end in front or behind.
std::u16string SettingsBlockText(std::int32_t id, std::u16string_view name,
                                 const FeatureSettings& settings, std::u16string_view body);

}  // namespace morva
