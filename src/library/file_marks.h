// Which states of a library in the settings file are this program's own.
//
// Several windows of MORVA share one settings file, and users edit it by hand. A library is written
// as a whole, so it is read again before a change where somebody else wrote it since.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace morva {

// The states of one library that were read from the file or handed over to be written, in this
// run. A write may fail, so an older one of them may stand in the file.
struct FileMarks {
  std::vector<std::uint64_t> known;
};
void KnowState(FileMarks& marks, std::string_view state);
bool KnowsState(const FileMarks& marks, std::string_view state);

// Says that a library was read again; `library` as in "tool library".
void TellReadAgain(std::u16string_view library);

}  // namespace morva
