// Which lines of an editor's text changed of late, for those who follow it.
#pragma once

#include <cstdint>
#include <deque>

#include "platform/editor.h"

namespace platform {

struct LineJournal {
  struct Entry {
    std::uint64_t revision = 0;  // that the change made
    ChangedLines lines;
  };
  std::deque<Entry> entries;  // one a revision, the last one last
};

void NoteLines(LineJournal& journal, std::uint64_t revision, const ChangedLines& lines);
// What `now` has of the journal since then. False: not all of it is known.
bool LinesSince(const LineJournal& journal, std::uint64_t since, std::uint64_t now,
                ChangedLines& lines);

}  // namespace platform
