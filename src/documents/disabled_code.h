// Stored code of excluded blocks: one list per tab, newest first, saved in ".features".
//
// An entry is never removed while its tab is open, so that Undo can always bring a block back.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace morva {

// What DisabledCodeEntry::block says of an entry that several blocks name.
inline constexpr std::int32_t kSeveralBlocks = -1;

struct DisabledCodeEntry {
  DisabledCodeEntry* next = nullptr;
  std::int32_t id = 0;  // the number in the DISABLED line, unique in the tab, at least 1
  std::u16string text;  // at most 8,000,000 units
  // The id of the block that the code was taken out of, kept for this run only: a block that was
  // pasted from another program may bear the same number. 0: not known.
  std::int32_t block = 0;
};

// The id of a further entry: 1 more than the largest in the list and than `inText`, the largest
// number that the program's text names, stored or not. 0: the list is full, by its 10,000 entries
// or by the numbers.
std::int32_t NextDisabledNumber(const DisabledCodeEntry* list, std::int32_t inText = 0);
// Adds at the front; the entry's id, or 0 when the list is full, the text has more than 8,000,000
// units, or there is no memory. `inText` as for NextDisabledNumber, `block` as in the entry.
std::int32_t AddDisabledCode(DisabledCodeEntry*& list, std::u16string_view text,
                             std::int32_t inText = 0, std::int32_t block = 0);
const DisabledCodeEntry* FindDisabledCode(const DisabledCodeEntry* list, std::int32_t id);
void FreeDisabledCode(DisabledCodeEntry*& list);

// Bytes of a ".features" file with the entries of the list: all, or those whose numbers stand in
// `only`, which is sorted.
std::size_t DisabledFileBytes(const DisabledCodeEntry* list, const std::vector<std::int32_t>* only);
// What one entry of a text of `units` takes there.
std::size_t DisabledEntryBytes(std::size_t units);
// The ".features" image: "MVC1", count, then id, length, UTF-16LE text for each entry; `only` as
// above. False: more than 64,000,000 bytes, `bytes` empty.
bool WriteDisabledCode(const DisabledCodeEntry* list, std::string& bytes,
                       const std::vector<std::int32_t>* only = nullptr);
// Parses whole before anything is kept. False: damaged, `list` as it was. Reading prepends.
bool ReadDisabledCode(std::string_view bytes, DisabledCodeEntry*& list);

}  // namespace morva
