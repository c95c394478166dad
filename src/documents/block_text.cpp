#include "documents/block_text.h"

#include "documents/marker_lines.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr std::size_t kNone = std::u16string_view::npos;

std::size_t CodeStart(std::u16string_view text, const FeatureRecord& row) {
  const auto start = static_cast<std::size_t>(row.start);
  if (row.settings.kind == kKindUserCode) {
    std::size_t at = SkipLineEnds(text, LineEndFrom(text, start));
    if (StartsAt(text, at, kNameMark)) at = SkipLineEnds(text, LineEndFrom(text, at));
    return at;
  }
  const std::size_t marker = FindFolded(text, kCodeMark, start);
  return marker == kNone ? kNone : SkipLineEnds(text, marker + kCodeMark.size());
}

}  // namespace

bool FindNameLine(std::u16string_view text, const FeatureRecord& row, std::int32_t& from,
                  std::int32_t& to) {
  const std::size_t end = LineEndFrom(text, static_cast<std::size_t>(row.start));
  if (end >= static_cast<std::size_t>(row.end)) return false;
  // The scan takes the name from behind the whole run of line ends; so must whoever replaces it.
  const std::size_t named = SkipLineEnds(text, end);
  const bool found = StartsAt(text, named, kNameMark);
  const std::size_t at = found ? named : PastLineEnd(text, end);
  from = static_cast<std::int32_t>(at);
  to = static_cast<std::int32_t>(found ? PastLineEnd(text, LineEndFrom(text, at)) : at);
  return true;
}

std::u16string_view GeneratedCode(std::u16string_view text, const FeatureRecord& row) {
  const std::size_t marker = FindFolded(text, kCodeMark, static_cast<std::size_t>(row.start));
  if (marker == kNone) return {};
  const std::size_t from = marker + kCodeMark.size();
  const std::size_t to = FindFolded(text, kEndMark, from);
  if (to == kNone) return {};
  return text.substr(from, to - from);
}

bool DisabledNumber(std::u16string_view text, const FeatureRecord& row, std::int32_t& number) {
  const std::u16string_view block = text.substr(0, static_cast<std::size_t>(row.end));
  const std::size_t at = FindFolded(block, kDisabledMark, static_cast<std::size_t>(row.start));
  if (at == kNone) return false;
  number = ParseInteger(block.substr(at + kDisabledMark.size()), 0);
  return true;
}

bool FindIncludeSpan(std::u16string_view text, const FeatureRecord& row, std::int32_t& from,
                     std::int32_t& to) {
  const auto start = static_cast<std::size_t>(row.start);
  const std::size_t end = FindFolded(text, kEndMark, start);
  const std::size_t code = CodeStart(text, row);
  if (end == kNone || code == kNone) return false;
  if (code < start || end < code || end >= static_cast<std::size_t>(row.end)) return false;
  from = static_cast<std::int32_t>(code);
  to = static_cast<std::int32_t>(end);
  return true;
}

std::u16string DisabledLine(std::int32_t number) {
  return std::u16string(kDisabledMark) + IntegerText(number) + u")\r\n";
}

bool LeadsDisabled(std::u16string_view code, std::int32_t& number) {
  if (!StartsAt(code, 0, kDisabledMark)) return false;
  number = ParseInteger(code.substr(kDisabledMark.size()), 0);
  return true;
}

}  // namespace morva
