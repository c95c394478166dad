// Program compare: two texts line by line, as rows of same, removed, added and modified.
//
// The left side is the baseline. Pure: texts in, rows out; the review panes are elsewhere.
// Up to 4,000,000 cells (lines of one side plus 1 times those of the other plus 1) the answer
// is a longest common subsequence in which equal lines always pair first and a tie goes to
// removed; beyond it lines are aligned by a lookahead of 64.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "app/limits.h"
#include "codetools/owned_text.h"

namespace morva {

struct CompareLine {
  std::int32_t start = 0;   // first unit in the text
  std::int32_t length = 0;  // without the line end
  std::int32_t number = 0;  // 1-based; a skipped marker line still uses up its number
};

enum CompareType : std::int32_t {
  kRowSame = 0,
  kRowRemoved = 1,
  kRowAdded = 2,
  kRowModified = 3,
};

struct CompareRow {
  std::int32_t left = -1;  // index in the left lines, -1 for none
  std::int32_t right = -1;
  std::int32_t type = kRowSame;
};

struct CompareOptions {
  bool ignoreSpaces = false;  // blanks and tabs are passed over in every line
  bool showTags = false;      // marker lines take part
  bool changesOnly = false;   // rows of type same are not shown
};

struct CompareSide {
  std::int32_t count = 0;
  CompareLine lines[kMaxCompareLines];
};

struct CompareResult {
  CompareSide left;
  CompareSide right;
  std::int32_t rowCount = 0;
  CompareRow rows[kMaxCompareRows];
  bool truncated = false;  // a side has text behind its line 32,768
  bool largeFile = false;  // aligned by lookahead
};

// The last comparison.
extern CompareResult compareResult;

// Leaves no row in the result.
void EmptyCompare();

bool CompareLinesEqual(std::u16string_view a, std::u16string_view b, bool ignoreSpaces);
// Fills the result. The views need to stand during the call only.
void CompareTexts(std::u16string_view left, std::u16string_view right,
                  const CompareOptions& options);

struct CompareCounts {
  std::int32_t added = 0;
  std::int32_t removed = 0;
  std::int32_t modified = 0;
};
CompareCounts CountCompareRows();
// "READ-ONLY REVIEW   Added + 0   Removed - 0   Modified ~ 0" and the flags.
std::u16string CompareSummary();
// One line for each shown row: number, marker, text, CR LF; an empty line where the row has
// none on this side. `text` is that side's. Without units there was no memory.
OwnedText ComparePaneText(std::u16string_view text, bool leftSide, const CompareOptions& options);
bool IsRowShown(const CompareRow& row, const CompareOptions& options);

}  // namespace morva
