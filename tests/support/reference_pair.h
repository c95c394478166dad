// The pair of the words view kept the slow way: both texts whole, and at each change compared and
// walked from front to back.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace reference {

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

}  // namespace reference
