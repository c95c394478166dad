// Stored code of excluded blocks: one list per tab, newest first, saved in ".features".
//
// An entry is never removed while its tab is open, so that Undo can always bring a block back.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace morva {

struct DisabledCodeEntry {
  DisabledCodeEntry* next = nullptr;
  std::int32_t id = 0;  // the number in the DISABLED line, unique in the tab, at least 1
  std::u16string text;  // at most 8,000,000 units
};

// The id of a further entry, the largest plus 1. 0: the list is full, by its 10,000 entries or by
// the numbers.
std::int32_t NextDisabledNumber(const DisabledCodeEntry* list);
// Adds at the front; the entry's id, or 0 when the list is full, the text has more than 8,000,000
// units, or there is no memory.
std::int32_t AddDisabledCode(DisabledCodeEntry*& list, std::u16string_view text);
const DisabledCodeEntry* FindDisabledCode(const DisabledCodeEntry* list, std::int32_t id);
void FreeDisabledCode(DisabledCodeEntry*& list);

// The ".features" image: "MVC1", count, then id, length, UTF-16LE text for each entry.
// False: more than 64,000,000 bytes, `bytes` empty.
bool WriteDisabledCode(const DisabledCodeEntry* list, std::string& bytes);
// Puts the entries of an image in the place of the list. What the list held under other ids stays
// behind them, for an Undo that brings such a block back. False: damaged, `list` as it was.
bool ReplaceDisabledCode(std::string_view bytes, DisabledCodeEntry*& list);
// Parses whole before anything is kept. False: damaged, `list` as it was. Reading prepends.
bool ReadDisabledCode(std::string_view bytes, DisabledCodeEntry*& list);

}  // namespace morva
