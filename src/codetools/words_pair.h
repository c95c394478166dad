// A program's code and the words that the view shows of it, line by line.
//
// Every line of the words stands for the line of the code at its place. What is changed in the
// words is brought into the code by lines: those that were not touched keep their code to the
// character, and so does a line that comes back to the words it had, as by Undo or a paste. Only
// other lines are converted. Line ends are CR, LF and CR LF; pure functions of their arguments.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "codetools/chunked_lines.h"

namespace morva {

// Lines that were changed in the words since they were made from the code, with what stood there.
// Both texts hold as many lines, LF behind each of them.
struct ReplacedLines {
  std::size_t line = 0;   // where they stand, or stood
  std::size_t count = 0;  // lines that stand there now
  std::u16string words;
  std::u16string code;
};

struct WordsPair {
  ChunkedLines code;
  ChunkedLines words;
  std::vector<ReplacedLines> replaced;  // in order, lines between any two
};

// The pair of a program whose words, `words`, nobody has changed.
WordsPair MakeWordsPair(std::u16string_view code, std::u16string_view words);

// Words that are no longer those of the pair: in the place of `before` lines stand those of
// `after`, line ends included; all others are as they were. That may be more lines than did change.
struct WordsChange {
  std::size_t line = 0;
  std::size_t before = 0;
  std::u16string_view after;
  // Where the change left the caret; it tells apart what equal lines cannot. The column may lie
  // behind its line.
  std::size_t caretLine = 0;
  std::size_t caretColumn = 0;
};

// What becomes of the code: the whole lines from `line` on.
struct CodeChange {
  std::size_t line = 0;
  std::u16string before;
  std::u16string after;
};
// Takes over words that were changed in one place; the pair has the new code behind it. Where more
// than one place changed, all between them counts as one. It costs the changed lines, and a walk of
// the pieces of both texts.
CodeChange TakeWords(WordsPair& pair, const WordsChange& change);

}  // namespace morva
