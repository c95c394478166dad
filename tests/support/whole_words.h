// The pair of the words view for those who know whole texts alone.
#pragma once

#include <cstddef>
#include <string_view>

#include "codetools/command_words.h"
#include "codetools/words_pair.h"

namespace support {

// False: no memory for the words.
inline bool MakePair(std::u16string_view code, morva::WordsPair& pair) {
  const morva::OwnedText words = morva::CodeToShownWords(code);
  if (words.units) pair = morva::MakeWordsPair(code, words.View());
  return words.units != nullptr;
}

// All of the words anew; the change left the caret at the index `caret`.
inline morva::CodeChange TakeWhole(morva::WordsPair& pair, std::u16string_view words,
                                   std::size_t caret) {
  return morva::TakeWords(pair,
                          {.before = LineCount(pair.words), .after = words, .caretColumn = caret});
}

}  // namespace support
