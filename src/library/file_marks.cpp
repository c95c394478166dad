#include "library/file_marks.h"

#include <algorithm>
#include <string>

#include "app/outlets.h"
#include "documents/saver.h"

namespace morva {

bool KnowsState(const FileMarks& marks, std::string_view state) {
  return std::ranges::find(marks.known, HashBytes(state)) != marks.known.end();
}

void ReadState(FileMarks& marks, std::string_view state) { marks.known = {HashBytes(state)}; }

void HandedState(FileMarks& marks, std::string_view state) {
  const std::uint64_t hash = HashBytes(state);
  std::erase(marks.known, hash);
  marks.known.push_back(hash);
  ++marks.underWay;
}

void WrittenState(FileMarks& marks, bool saved) {
  if (marks.underWay > 0) --marks.underWay;
  // While a further one is under way and may fail, the one before it may stand in the file.
  if (saved && marks.underWay == 0 && !marks.known.empty()) marks.known = {marks.known.back()};
}

bool EndLibraryChange(platform::ProfileTold told, platform::ProfileTold marked) {
  platform::BeginProfileChange();
  platform::EndProfileChange(told);
  return platform::EndProfileChange(marked);
}

void TellReadAgain(std::u16string_view library) {
  const std::u16string words = u"The " + std::u16string(library) +
                               u" was changed by another program and has been read again.";
  AppendOutput(words);
  ShowStatus(words);
}

}  // namespace morva
