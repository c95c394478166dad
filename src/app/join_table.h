// Join tables: what rooms fill when they are joined at start-up.
//
// Commands, timers, panels and the like each have an array of rows. Beside the array stands one
// of these records, which counts the rows and stops the program when there are too many.
#pragma once

#include <string_view>

namespace morva {

struct JoinTable {
  const char16_t* what = u"";  // what the rows are, for the words of the stop
  int most = 0;                // rows that the array holds
  int count = 0;               // rows taken; 0 empties the table
  bool listed = false;         // the rest belongs to NextRow
  JoinTable* next = nullptr;
};

// Index of the free row behind the last, which the caller fills now. A full table stops the
// program with words that name it and its limit.
int NextRow(JoinTable& table);

// Stops the program with the words of a full table: what its rows are, and how many it holds.
[[noreturn]] void StopFull(std::u16string_view what, int most);

// The tables that took a row since the process began, along `next`, the newest first.
const JoinTable* FirstJoinTable();

}  // namespace morva
