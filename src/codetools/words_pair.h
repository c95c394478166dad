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
  std::u16string code;
  std::u16string words;
  std::vector<ReplacedLines> replaced;  // in order, lines between any two
};

// The pair of a program whose words nobody has changed. False: no memory, the pair as it was.
bool MakeWordsPair(std::u16string_view code, WordsPair& pair);

// What becomes of the code, in its units. The units behind `from` are whole lines.
struct CodeChange {
  std::size_t line = 0;  // the first
  std::size_t from = 0;
  std::u16string before;
  std::u16string after;
};
// Takes over words that were changed in one place; the pair has the new code behind it. `caret`
// is the index in `words` that the change left the caret at, which tells apart what equal lines
// cannot. Where more than one place changed, all between them counts as one.
CodeChange TakeWords(WordsPair& pair, std::u16string_view words, std::size_t caret);

}  // namespace morva
