// Parting a block of user code at a line, so that a generated block can stand at the caret and
// blocks still never nest.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace morva {

// The user's caret, and the line that code at the caret goes before, as text indices of the code
// editor's text. A caret behind all of its line means the next line: who has put it behind a tool
// change wants to be behind it.
struct CaretPlace {
  std::int32_t caret = 0;
  std::int32_t line = 0;  // start of that line
};
CaretPlace CodeCaret(std::u16string_view text);

// Where a line parts the user code that holds the caret.
struct SplitPlace {
  int row = -1;          // of the feature table; -1: the caret lies in no user code
  std::int32_t at = 0;   // the line's start, or the text's end
  std::int32_t end = 0;  // where the block's END marker begins
  bool before = false;   // whether anything of the code stands before the line,
  bool behind = false;   // and from it on; else nothing has to be parted
};
// The feature table describes the text.
SplitPlace FindSplit(std::u16string_view text, const CaretPlace& caret);
// Where the block goes by it: the line, or the end of the block that holds nothing more.
std::int32_t SplitIndex(const SplitPlace& place);
// The number of the second half: the first one behind `newId` that the table and no END of the text
// bears.
std::int32_t RestId(std::u16string_view text, std::int32_t newId);
// What takes the place of the text from the line to the end of the block: END, the new block, and
// the rest in user code of its own.
std::u16string SplitText(std::u16string_view text, const SplitPlace& place,
                         std::u16string_view block, std::int32_t restId);

}  // namespace morva
