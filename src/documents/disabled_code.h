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

// Adds at the front with the largest id plus 1; that id, or 0 when the text is too long.
std::int32_t AddDisabledCode(DisabledCodeEntry*& list, std::u16string_view text);
const DisabledCodeEntry* FindDisabledCode(const DisabledCodeEntry* list, std::int32_t id);
void FreeDisabledCode(DisabledCodeEntry*& list);

// The ".features" image: "MVC1", count, then id, length, UTF-16LE text for each entry.
// False: more than 64,000,000 bytes, `bytes` empty.
bool WriteDisabledCode(const DisabledCodeEntry* list, std::string& bytes);
// Parses whole before anything is kept. False: damaged, `list` as it was. Reading prepends.
bool ReadDisabledCode(std::string_view bytes, DisabledCodeEntry*& list);

}  // namespace morva
