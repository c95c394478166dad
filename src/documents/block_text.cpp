#include "documents/block_text.h"

#include "library/codetext.h"

namespace morva {

namespace {

constexpr std::u16string_view kName = u"(MORVA NAME ";
constexpr std::u16string_view kCode = u"(MORVA CODE)";
constexpr std::u16string_view kEnd = u"(MORVA END ";
constexpr std::u16string_view kDisabled = u"(MORVA DISABLED ";
constexpr std::size_t kNone = std::u16string_view::npos;

bool IsLineEnd(char16_t c) { return c == u'\r' || c == u'\n'; }

bool StartsAt(std::u16string_view text, std::size_t at, std::u16string_view wanted) {
  return at <= text.size() && text.substr(at, wanted.size()) == wanted;
}

// Behind one line end, CR LF counting as one; where it stands on none, right there.
std::size_t PastLineEnd(std::u16string_view text, std::size_t at) {
  if (at >= text.size()) return at;
  if (text[at] == u'\r') return at + (at + 1 < text.size() && text[at + 1] == u'\n' ? 2 : 1);
  return text[at] == u'\n' ? at + 1 : at;
}

std::size_t LineEnd(std::u16string_view text, std::size_t at) {
  while (at < text.size() && !IsLineEnd(text[at])) ++at;
  return at;
}

std::size_t PastLineEndRun(std::u16string_view text, std::size_t at) {
  while (at < text.size() && IsLineEnd(text[at])) ++at;
  return at;
}

std::size_t CodeStart(std::u16string_view text, const FeatureRecord& row) {
  const auto start = static_cast<std::size_t>(row.start);
  if (row.settings.kind == kKindUserCode) {
    std::size_t at = PastLineEndRun(text, LineEnd(text, start));
    if (StartsAt(text, at, kName)) at = PastLineEndRun(text, LineEnd(text, at));
    return at;
  }
  const std::size_t marker = FindFolded(text, kCode, start);
  return marker == kNone ? kNone : PastLineEndRun(text, marker + kCode.size());
}

}  // namespace

void FindNameLine(std::u16string_view text, const FeatureRecord& row, std::int32_t& from,
                  std::int32_t& to) {
  const std::size_t at = PastLineEnd(text, LineEnd(text, static_cast<std::size_t>(row.start)));
  std::size_t end = at;
  if (StartsAt(text, at, kName)) end = PastLineEnd(text, LineEnd(text, at));
  from = static_cast<std::int32_t>(at);
  to = static_cast<std::int32_t>(end);
}

std::u16string_view GeneratedCode(std::u16string_view text, const FeatureRecord& row) {
  const std::size_t marker = FindFolded(text, kCode, static_cast<std::size_t>(row.start));
  if (marker == kNone) return {};
  const std::size_t from = marker + kCode.size();
  const std::size_t to = FindFolded(text, kEnd, from);
  if (to == kNone) return {};
  return text.substr(from, to - from);
}

bool DisabledNumber(std::u16string_view text, const FeatureRecord& row, std::int32_t& number) {
  const std::u16string_view block = text.substr(0, static_cast<std::size_t>(row.end));
  const std::size_t at = FindFolded(block, kDisabled, static_cast<std::size_t>(row.start));
  if (at == kNone) return false;
  number = ParseInteger(block.substr(at + kDisabled.size()), 0);
  return true;
}

bool FindIncludeSpan(std::u16string_view text, const FeatureRecord& row, std::int32_t& from,
                     std::int32_t& to) {
  const auto start = static_cast<std::size_t>(row.start);
  const std::size_t end = FindFolded(text, kEnd, start);
  const std::size_t code = CodeStart(text, row);
  if (end == kNone || code == kNone) return false;
  if (code < start || end < code || end >= static_cast<std::size_t>(row.end)) return false;
  from = static_cast<std::int32_t>(code);
  to = static_cast<std::int32_t>(end);
  return true;
}

bool LeadsDisabled(std::u16string_view code, std::int32_t& number) {
  if (!StartsAt(code, 0, kDisabled)) return false;
  number = ParseInteger(code.substr(kDisabled.size()), 0);
  return true;
}

}  // namespace morva
