#include "documents/stored_code.h"

#include <algorithm>
#include <limits>

#include "app/limits.h"
#include "documents/generated_code.h"
#include "documents/marker_lines.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr std::size_t kNone = std::u16string_view::npos;
constexpr std::int32_t kLargestNumber = std::numeric_limits<std::int32_t>::max();

// The id behind the last opening marker in front of `at`, looked for from `from` on; `id` stays
// where there is none.
void FollowOpenings(std::u16string_view text, std::size_t from, std::size_t at, std::int32_t& id) {
  for (std::size_t head = text.find(kMarkerHead, from); head < at;
       head = text.find(kMarkerHead, head + 1)) {
    if (head > 0 && !IsLineEnd(text[head - 1])) continue;
    for (const std::u16string_view mark : {kBeginMark, kTextMark}) {
      if (StartsAt(text, head, mark)) id = ParseInteger(text.substr(head + mark.size()), 0);
    }
  }
}

void RenumberMarkers(std::u16string& text, std::int32_t old, std::int32_t fresh) {
  NumberedMarker marker;
  for (std::size_t from = 0; FindNumberedMarker(text, from, marker); from = marker.at + 1) {
    if (marker.number != old) continue;
    text.replace(marker.numberAt, marker.past - marker.numberAt, IntegerText(fresh));
  }
}

std::int32_t LargestNumber(const DisabledCodeEntry* list) {
  std::int32_t largest = 0;
  for (const DisabledCodeEntry* e = list; e; e = e->next) largest = std::max(largest, e->id);
  return largest;
}

DisabledCodeEntry* TakeOut(DisabledCodeEntry*& list, std::int32_t id) {
  DisabledCodeEntry** link = &list;
  while (*link && (*link)->id != id) link = &(*link)->next;
  DisabledCodeEntry* entry = *link;
  if (entry) *link = entry->next;
  return entry;
}

}  // namespace

bool FindNumberedMarker(std::u16string_view text, std::size_t from, NumberedMarker& marker) {
  for (std::size_t at = text.find(u'(', from); at != kNone; at = text.find(u'(', at + 1)) {
    if (!SameFolded(text.substr(at, kDisabledMark.size()), kDisabledMark)) continue;
    std::size_t first = at + kDisabledMark.size();
    while (first < text.size() && (text[first] == u' ' || text[first] == u'\t')) ++first;
    std::size_t past = first;
    if (past < text.size() && text[past] == u'-') ++past;
    while (past < text.size() && IsDigit(text[past])) ++past;
    if (!IsDigit(text[past - 1])) continue;
    marker = {at, first, past, ParseInteger(text.substr(first), 0)};
    return true;
  }
  return false;
}

std::vector<std::int32_t> NamedNumbers(std::u16string_view text) {
  std::vector<std::int32_t> numbers;
  NumberedMarker marker;
  for (std::size_t from = 0; FindNumberedMarker(text, from, marker); from = marker.past) {
    if (marker.number > 0) numbers.push_back(marker.number);
  }
  std::sort(numbers.begin(), numbers.end());
  numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
  return numbers;
}

std::int32_t LargestNamedNumber(std::u16string_view text) {
  const std::vector<std::int32_t> numbers = NamedNumbers(text);
  return numbers.empty() ? 0 : numbers.back();
}

void BindToBlocks(DisabledCodeEntry* list, std::u16string_view text) {
  for (DisabledCodeEntry* e = list; e; e = e->next) e->block = 0;
  if (!list) return;
  NumberedMarker marker;
  std::int32_t block = 0;
  for (std::size_t from = 0; FindNumberedMarker(text, from, marker); from = marker.past) {
    FollowOpenings(text, from, marker.at, block);
    DisabledCodeEntry* e = list;
    while (e && e->id != marker.number) e = e->next;
    if (!e || block < 1) continue;
    e->block = e->block == 0 || e->block == block ? block : kSeveralBlocks;
  }
}

bool IsCodeOf(const DisabledCodeEntry& entry, const FeatureRecord& row) {
  if (entry.block > 0 && entry.block == row.id) return true;
  return row.settings.kind != kKindUserCode && IsGeneratedCode(row.settings, entry.text);
}

bool MayBeCodeOf(const DisabledCodeEntry& entry, const FeatureRecord& row) {
  return entry.block == 0 || IsCodeOf(entry, row);
}

bool TakeDisabledCode(std::string_view bytes, std::u16string& text, DisabledCodeEntry*& list) {
  DisabledCodeEntry* read = nullptr;
  if (!ReadDisabledCode(bytes, read)) return false;
  BindToBlocks(read, text);
  std::int32_t largest =
      std::max({LargestNumber(list), LargestNumber(read), LargestNamedNumber(text)});
  DisabledCodeEntry** end = &read;
  for (; *end; end = &(*end)->next) {
    DisabledCodeEntry& theirs = **end;
    const DisabledCodeEntry* mine = FindDisabledCode(list, theirs.id);
    if (!mine) continue;
    if (mine->text == theirs.text || largest == kLargestNumber) {
      DisabledCodeEntry* gone = TakeOut(list, theirs.id);
      if (gone->text != theirs.text) theirs.block = kSeveralBlocks;
      delete gone;
      continue;
    }
    RenumberMarkers(text, theirs.id, ++largest);
    theirs.id = largest;
  }
  *end = list;
  list = read;
  return true;
}

bool FeaturesFileHolds(const DisabledCodeEntry* list, std::u16string_view text, std::size_t units) {
  std::vector<std::int32_t> named = NamedNumbers(text);
  // Larger numbers are those of code that is about to be named.
  const std::int32_t largest = named.empty() ? 0 : named.back();
  for (const DisabledCodeEntry* e = list; e; e = e->next) {
    if (e->id > largest) named.push_back(e->id);
  }
  std::sort(named.begin(), named.end());
  const std::size_t all = DisabledEntryBytes(units) + DisabledFileBytes(list, &named);
  return all <= static_cast<std::size_t>(kMaxFeaturesFileBytes);
}

}  // namespace morva
