#include "documents/block_text.h"

#include "documents/marker_lines.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr std::size_t kNone = std::u16string_view::npos;

bool IsBlank(char16_t c) { return c == u' ' || c == u'\t'; }
bool IsBlankOrLineEnd(char16_t c) { return IsBlank(c) || IsLineEnd(c); }

// Behind the ")" of a comment, or at the end of its line where it has none.
std::size_t PastComment(std::u16string_view text, std::size_t at) {
  while (at < text.size() && text[at] != u')' && !IsLineEnd(text[at])) ++at;
  return at < text.size() && text[at] == u')' ? at + 1 : at;
}

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

bool HoldsCode(std::u16string_view text, std::size_t from, std::size_t to) {
  const std::u16string_view part = text.substr(0, to);
  for (std::size_t at = from; at < part.size();) {
    if (IsBlankOrLineEnd(part[at])) {
      ++at;
    } else if (part[at] == u'(') {
      at = PastComment(part, at);
    } else if (part[at] == u';') {
      at = LineEndFrom(part, at);
    } else {
      return true;
    }
  }
  return false;
}

bool FindNameLine(std::u16string_view text, const FeatureRecord& row, std::int32_t& from,
                  std::int32_t& to) {
  const std::size_t end = LineEndFrom(text, static_cast<std::size_t>(row.start));
  if (end >= static_cast<std::size_t>(row.end)) return false;
  // The scan takes the name from behind the whole run of line ends; so must whoever replaces it.
  const std::size_t named = SkipLineEnds(text, end);
  const bool found = StartsAt(text, named, kNameMark);
  from = static_cast<std::int32_t>(named);
  to = from;
  if (!found) return true;
  const std::size_t past = PastComment(text, named);
  const std::size_t lineEnd = LineEndFrom(text, named);
  const bool alone = text.substr(past, lineEnd - past).find_first_not_of(u" \t") == kNone;
  to = static_cast<std::int32_t>(alone ? PastLineEnd(text, lineEnd) : past);
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

bool UserCodeSpan(std::u16string_view text, const FeatureRecord& row, std::int32_t& from,
                  std::int32_t& to) {
  const std::size_t code = CodeStart(text, row);
  const std::size_t end = text.rfind(u'(', static_cast<std::size_t>(row.end) - 1);
  if (end == kNone || code == kNone || code > end) return false;
  from = static_cast<std::int32_t>(code);
  to = static_cast<std::int32_t>(end);
  return true;
}

std::u16string DisabledLine(std::int32_t number) {
  return std::u16string(kDisabledMark) + IntegerText(number) + u")\r\n";
}

Inclusion InclusionOf(std::u16string_view text, const FeatureRecord& row) {
  if (!row.holdsDisabled) return Inclusion::On;
  std::int32_t from = 0;
  std::int32_t to = 0;
  if (!FindIncludeSpan(text, row, from, to)) return Inclusion::Off;
  // What stands behind the block's opening, or its name, on their lines is not swapped.
  const auto start = static_cast<std::size_t>(row.start);
  if (HoldsCode(text, start, static_cast<std::size_t>(from))) return Inclusion::OffHasCode;
  // Up to the block's own END, the last one in it. What stands behind another is not swapped, and
  // the control gets it.
  const std::u16string_view block = text.substr(0, static_cast<std::size_t>(row.end));
  const std::u16string_view code = block.substr(0, block.rfind(u'('));
  for (auto at = static_cast<std::size_t>(from); at < code.size();) {
    if (IsBlankOrLineEnd(code[at])) {
      ++at;
    } else if (SameFolded(code.substr(at, kDisabledMark.size()), kDisabledMark)) {
      at = PastComment(code, at);
    } else {
      return Inclusion::OffHasCode;
    }
  }
  return Inclusion::Off;
}

bool FindDisabledMarker(std::u16string_view text, std::int32_t from, std::int32_t to,
                        DisabledMarker& marker) {
  const auto start = static_cast<std::size_t>(from);
  const std::u16string_view code = text.substr(0, static_cast<std::size_t>(to));
  const std::size_t at = code.find(kDisabledMark, start);
  if (at == kNone) return false;
  marker.number = ParseInteger(code.substr(at + kDisabledMark.size()), 0);
  std::size_t first = at;
  while (first > start && IsBlank(code[first - 1])) --first;
  marker.behindCode = first > start && !IsLineEnd(code[first - 1]);
  const std::size_t past = PastComment(code, at);
  std::size_t last = past;
  while (last < code.size() && IsBlank(code[last])) ++last;
  const bool alone = last == code.size() || IsLineEnd(code[last]);
  // Blanks go with a line that holds nothing else, and stay with what stands beside the marker.
  marker.from = static_cast<std::int32_t>(marker.behindCode ? at : first);
  marker.to = static_cast<std::int32_t>(alone ? PastLineEnd(code, last) : past);
  const auto behind = static_cast<std::size_t>(marker.to);
  marker.inFrontOfCode = behind < code.size() && !IsLineEnd(code[behind]);
  return true;
}

std::u16string CodeForMarker(const DisabledMarker& marker, std::u16string_view stored) {
  std::u16string code(marker.behindCode ? u"\r\n" : u"");
  code += stored;
  const bool ended = !stored.empty() && IsLineEnd(stored.back());
  if (marker.inFrontOfCode && !ended) code += u"\r\n";
  return code;
}

}  // namespace morva
