// Which states of a library in the settings file are this program's own.
//
// Several windows of MORVA share one settings file, and users edit it by hand. A library is written
// as a whole, so it is read again before a change where somebody else wrote it since.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/profile.h"

namespace morva {

// The states of one library that may stand in the file by this program's own doing: the one that it
// holds, and those that were handed over to be written and may fail. Any other is of somebody else,
// also one that this program itself wrote before.
struct FileMarks {
  std::vector<std::uint64_t> known;  // the newest last
  int underWay = 0;                  // states that were handed over and not answered for
};
bool KnowsState(const FileMarks& marks, std::string_view state);
// This state was read from the file and taken over.
void ReadState(FileMarks& marks, std::string_view state);
// This state is handed over to be written.
void HandedState(FileMarks& marks, std::string_view state);
// The answer for one of them.
void WrittenState(FileMarks& marks, bool saved);
// Ends a change of the settings file, about which two are told.
bool EndLibraryChange(platform::ProfileTold told, platform::ProfileTold marked);

// Says that a library was read again; `library` as in "tool library".
void TellReadAgain(std::u16string_view library);

}  // namespace morva
