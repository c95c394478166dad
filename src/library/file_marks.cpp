#include "library/file_marks.h"

#include <algorithm>
#include <string>

#include "app/outlets.h"
#include "documents/saver.h"

namespace morva {

void KnowState(FileMarks& marks, std::string_view state) {
  if (!KnowsState(marks, state)) marks.known.push_back(HashBytes(state));
}

bool KnowsState(const FileMarks& marks, std::string_view state) {
  return std::ranges::find(marks.known, HashBytes(state)) != marks.known.end();
}

void TellReadAgain(std::u16string_view library) {
  const std::u16string words = u"The " + std::u16string(library) +
                               u" was changed by another program and has been read again.";
  AppendOutput(words);
  ShowStatus(words);
}

}  // namespace morva
