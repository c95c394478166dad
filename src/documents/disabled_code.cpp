#include "documents/disabled_code.h"

#include <algorithm>
#include <limits>
#include <new>
#include <vector>

#include "app/limits.h"

namespace morva {

namespace {

constexpr std::size_t kHeadBytes = 8;       // magic and count
constexpr std::size_t kEntryHeadBytes = 8;  // id and length

void PutUnsigned(std::string& bytes, std::uint32_t value) {
  for (int i = 0; i < 4; ++i) bytes.push_back(static_cast<char>(value >> (8 * i) & 255u));
}

std::uint32_t GetUnsigned(std::string_view bytes, std::size_t at) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    value |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at + i])) << (8 * i);
  }
  return value;
}

DisabledCodeEntry* PutInFront(DisabledCodeEntry*& list, std::int32_t id) {
  auto* entry = new (std::nothrow) DisabledCodeEntry;
  if (!entry) return nullptr;
  entry->id = id;
  entry->next = list;
  list = entry;
  return entry;
}

// One entry of the file; `at` ends just past it. False: damaged.
bool ReadEntry(std::string_view bytes, std::size_t& at, std::int32_t& largest,
               DisabledCodeEntry*& read) {
  if (bytes.size() - at < kEntryHeadBytes) return false;
  auto id = static_cast<std::int32_t>(GetUnsigned(bytes, at));
  const std::uint32_t length = GetUnsigned(bytes, at + 4);
  at += kEntryHeadBytes;
  if (length > static_cast<std::uint32_t>(kMaxDisabledUnits) || (bytes.size() - at) / 2 < length)
    return false;
  if (id == 0 && largest < std::numeric_limits<std::int32_t>::max()) id = largest + 1;
  if (id < 1) return false;
  largest = std::max(largest, id);
  DisabledCodeEntry* entry = PutInFront(read, id);
  if (!entry) return false;
  entry->text.resize(length);
  for (std::uint32_t i = 0; i < length; ++i, at += 2) {
    const unsigned low = static_cast<unsigned char>(bytes[at]);
    const unsigned high = static_cast<unsigned char>(bytes[at + 1]);
    entry->text[i] = static_cast<char16_t>(low | high << 8);
  }
  return true;
}

bool IdsAreUnique(const DisabledCodeEntry* read, const DisabledCodeEntry* present) {
  std::vector<std::int32_t> ids;
  for (const DisabledCodeEntry* e = read; e; e = e->next) ids.push_back(e->id);
  for (const DisabledCodeEntry* e = present; e; e = e->next) ids.push_back(e->id);
  std::sort(ids.begin(), ids.end());
  return std::adjacent_find(ids.begin(), ids.end()) == ids.end();
}

bool IsAmong(const std::vector<std::int32_t>* only, std::int32_t id) {
  return !only || std::binary_search(only->begin(), only->end(), id);
}

}  // namespace

std::int32_t NextDisabledNumber(const DisabledCodeEntry* list, std::int32_t inText) {
  std::int32_t largest = std::max(inText, 0);
  int count = 0;
  for (const DisabledCodeEntry* e = list; e; e = e->next, ++count)
    largest = std::max(largest, e->id);
  // A file with more entries could not be read again.
  if (count >= kMaxDisabledEntries || largest == std::numeric_limits<std::int32_t>::max()) return 0;
  return largest + 1;
}

std::int32_t AddDisabledCode(DisabledCodeEntry*& list, std::u16string_view text,
                             std::int32_t inText, std::int32_t block) {
  const std::int32_t id = NextDisabledNumber(list, inText);
  if (id == 0 || text.size() > static_cast<std::size_t>(kMaxDisabledUnits)) return 0;
  DisabledCodeEntry* entry = PutInFront(list, id);
  if (!entry) return 0;
  entry->text = text;
  entry->block = block;
  return entry->id;
}

const DisabledCodeEntry* FindDisabledCode(const DisabledCodeEntry* list, std::int32_t id) {
  for (const DisabledCodeEntry* e = list; e; e = e->next) {
    if (e->id == id) return e;
  }
  return nullptr;
}

void FreeDisabledCode(DisabledCodeEntry*& list) {
  while (list) {
    DisabledCodeEntry* next = list->next;
    delete list;
    list = next;
  }
}

std::size_t DisabledEntryBytes(std::size_t units) { return kEntryHeadBytes + 2 * units; }

std::size_t DisabledFileBytes(const DisabledCodeEntry* list,
                              const std::vector<std::int32_t>* only) {
  std::size_t size = kHeadBytes;
  for (const DisabledCodeEntry* e = list; e; e = e->next) {
    if (IsAmong(only, e->id)) size += DisabledEntryBytes(e->text.size());
  }
  return size;
}

bool WriteDisabledCode(const DisabledCodeEntry* list, std::string& bytes,
                       const std::vector<std::int32_t>* only) {
  bytes.clear();
  const std::size_t size = DisabledFileBytes(list, only);
  if (size > static_cast<std::size_t>(kMaxFeaturesFileBytes)) return false;
  std::uint32_t count = 0;
  for (const DisabledCodeEntry* e = list; e; e = e->next) count += IsAmong(only, e->id) ? 1 : 0;
  bytes.reserve(size);
  bytes += "MVC1";
  PutUnsigned(bytes, count);
  for (const DisabledCodeEntry* e = list; e; e = e->next) {
    if (!IsAmong(only, e->id)) continue;
    PutUnsigned(bytes, static_cast<std::uint32_t>(e->id));
    PutUnsigned(bytes, static_cast<std::uint32_t>(e->text.size()));
    for (const char16_t c : e->text) {
      bytes.push_back(static_cast<char>(c & 255));
      bytes.push_back(static_cast<char>(c >> 8));
    }
  }
  return true;
}

bool ReadDisabledCode(std::string_view bytes, DisabledCodeEntry*& list) {
  if (bytes.size() < kHeadBytes || bytes.size() > static_cast<std::size_t>(kMaxFeaturesFileBytes))
    return false;
  if (bytes.substr(0, 4) != "MVC1") return false;
  const std::uint32_t count = GetUnsigned(bytes, 4);
  if (count > static_cast<std::uint32_t>(kMaxDisabledEntries)) return false;
  DisabledCodeEntry* read = nullptr;
  std::size_t at = kHeadBytes;
  std::int32_t largest = 0;
  bool good = true;
  for (std::uint32_t i = 0; i < count && good; ++i) good = ReadEntry(bytes, at, largest, read);
  if (!good || at != bytes.size() || !IdsAreUnique(read, list)) {
    FreeDisabledCode(read);
    return false;
  }
  if (!read) return true;
  DisabledCodeEntry* last = read;
  while (last->next) last = last->next;
  last->next = list;
  list = read;
  return true;
}

}  // namespace morva
