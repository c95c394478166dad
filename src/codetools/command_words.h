// Command words: program text with plain words for its codes, and the way back.
//
// Both ways are pure functions on text; the words view and its editor are elsewhere. The code
// is the truth: what the way back cannot read as a word stays as it stands. A text that goes
// to words and back may gain blanks and leading zeros ("G01" for "G1") and loses nothing.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "codetools/owned_text.h"

namespace morva {

// The word of a row of the code table: its name, with " — Command " and the code behind it
// where another row has the same name. Empty for the prefixes N and O and beyond the table.
std::u16string_view CommandWord(int row);

// Comments stay as they are, marker lines among them; a comment goes on over line ends. Each
// word is kept apart by a blank from a letter, a digit or "#" beside it. The text holds at
// most 16,384 units or 18 for each one of the code and 8,192 more; the rest would be cut. Without
// units there was no memory.
OwnedText CodeToWords(std::u16string_view code);
// The words of a piece of code that is written between these two units, 0 where there is none.
// A blank keeps a word from a letter, a digit or "#" there, which would make it no word.
// Empty when there is no memory.
std::u16string WordsBetween(char16_t before, std::u16string_view code, char16_t behind);
// The longest word wins. A letter, a digit or "#" beside a word keeps it from being one. The
// text holds at most 16,384 units or as many as `words` and 8,192 more.
OwnedText WordsToCode(std::u16string_view words);

// The same two ways as the words view goes them: what stands behind ";" up to the line's end, and
// in the brackets of DPRNT[...], is text that no control reads as code, and stays as it is.
OwnedText CodeToShownWords(std::u16string_view code);
// One line each, without its line end; `inComment` says whether a comment of a line above is open.
std::u16string ShownWordsOfLine(std::u16string_view code, bool inComment);
std::u16string CodeOfShownLine(std::u16string_view words, bool inComment);
// Whether a comment is open behind `code`, as it was in front of it or because of it.
bool LeavesCommentOpen(std::u16string_view code, bool inComment);

// Where a word of the code table stands in a line of converted text.
struct WordSpan {
  int from = 0;
  int length = 0;
  bool ofG = false;  // of a G code, else of an M code
};
// The command words of one line outside comments, in order; `inComment` is carried from line
// to line. The answer is their count, never above `capacity`.
int CommandWordsIn(std::u16string_view line, bool& inComment, WordSpan* spans, int capacity);

}  // namespace morva
