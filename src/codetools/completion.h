// Completion: which rows of the code table a caret asks for, and where their list lies.
//
// Pure functions on a line of text; the list itself is completion_popup.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "app/limits.h"
#include "platform/geometry.h"

namespace morva {

inline constexpr int kCompletionPitch = 24;  // pixels from row to row

struct CompletionRows {
  std::int32_t count = 0;  // 0: the list is closed
  std::int32_t rows[kMaxCompletions] = {};
  int start = 0;  // what an accepted row replaces, in the line
  int end = 0;
  // A full code that no other code goes on from: the list is closed and its help is due.
  bool settled = false;
  std::u16string token;  // the word at the caret, upper case
};

// `caret` counts in `line`. `manual` is the user's own request, which also lists for other
// tokens than codes and for none.
CompletionRows FindCompletions(std::u16string_view line, int caret, bool wordsView, bool manual);

// The letters and blanks that end at `caret`, leading blanks removed, out of the 94 units
// before it; empty when it is below 2 units or ends in a blank.
std::u16string_view WordsFilter(std::u16string_view line, int caret);

// ">  G00     Rapid Motion Positioning"; three blanks in front of what is not selected.
std::u16string CompletionRowText(std::int32_t row, bool selected);
// The status line of the selected row, and of one that was inserted.
std::u16string CompletionStatus(std::int32_t row, bool chosen);
std::u16string InsertedStatus(std::int32_t row);

// Below the caret's line, or above it where fewer than 76 pixels are free below and more
// above; 394 wide, 28 to 196 high, inside `editor`. `caret` is the top left of the caret's
// cell in the same pixels, `lineHeight` the cell's height.
platform::Rect CompletionPlace(const platform::Rect& editor, platform::Point caret, int lineHeight,
                               int rows);

}  // namespace morva
