#include "simulator/marker_shift.h"

#include <algorithm>
#include <limits>

#include "documents/marker_lines.h"
#include "simulator/line_ends.h"
#include "text/text_hash.h"

namespace morva {

namespace {

// The next "(" from a place on, else the text's end. What is far away is sought in vector code.
std::size_t FindBracket(std::u16string_view text, std::size_t at) {
  constexpr std::size_t kStep = 64;
  for (const std::size_t near = std::min(at + kStep, text.size()); at < near; ++at) {
    if (text[at] == u'(') return at;
  }
  while (text.size() - at >= kStep) {
    std::uint16_t any = 0;
    for (std::size_t i = 0; i < kStep; ++i) {
      any = static_cast<std::uint16_t>(any | (text[at + i] == u'(' ? 1U : 0U));
    }
    if (any) break;
    at += kStep;
  }
  return std::min(text.find(u'(', at), text.size());
}

// Whether the line that begins here is a marker and nothing else.
bool IsMarkerLine(std::u16string_view text, std::size_t at) {
  if (at > 0 && !IsLineEnd(text[at - 1])) return false;
  if (!StartsAt(text, at, kMarkerHead)) return false;
  const bool known = StartsAt(text, at, kTextMark) || StartsAt(text, at, kNameMark) ||
                     StartsAt(text, at, kEndMark);
  if (!known) return false;
  const std::size_t end = LineEndFrom(text, at);
  const std::u16string_view words = text.substr(at + 1, end - at - 1);
  constexpr std::u16string_view kNotWithin(u"()\0", 3);
  return words.find_first_of(kNotWithin) == words.size() - 1 && words.back() == u')';
}

// Calls with each piece of the text that no marker line takes, and where the marker behind it
// begins; with the text's end behind the last one.
template <typename Take>
void EachPiece(std::u16string_view text, Take take) {
  std::size_t from = 0;
  for (std::size_t at = 0; (at = FindBracket(text, at)) < text.size();) {
    if (!IsMarkerLine(text, at)) {
      ++at;
      continue;
    }
    take(text.substr(from, at - from), at);
    at = from = PastLineEnd(text, LineEndFrom(text, at));
  }
  take(text.substr(from), text.size());
}

}  // namespace

UnmarkedText WithoutMarkers(std::u16string_view text) {
  UnmarkedText unmarked;
  TextHash hash;
  // The line end of a piece waits for the next one: it may be the one that closes the text.
  std::u16string_view lineEnd;
  std::int32_t lines = 0;
  const auto add = [&](std::u16string_view piece) {
    AddText(hash, piece);
    unmarked.units += piece.size();
  };
  EachPiece(text, [&](std::u16string_view piece, std::size_t markerAt) {
    if (!piece.empty()) {
      add(lineEnd);
      std::size_t end = piece.size();
      if (piece[end - 1] == u'\n') --end;
      if (end > 0 && piece[end - 1] == u'\r') --end;
      add(piece.substr(0, end));
      lineEnd = piece.substr(end);
    }
    if (markerAt == text.size()) return;
    lines += CountLineEnds(piece.data(), piece.size());
    unmarked.before.push_back(lines);
  });
  unmarked.markedUnits = text.size() - unmarked.units - lineEnd.size();
  unmarked.hash = EndHash(hash);
  return unmarked;
}

bool DifferByMarkers(const UnmarkedText& one, const UnmarkedText& other) {
  // An empty text ends on its first line, one of a line end on its second.
  return one.units > 0 && one.units == other.units && one.hash == other.hash;
}

LineShift::LineShift(const UnmarkedText& from, const UnmarkedText& to) : from_(from), to_(to) {}

void LineShift::Seek(std::int32_t line) {
  constexpr std::int32_t kNoLine = std::numeric_limits<std::int32_t>::max() / 2;
  // Marker i of the text stands on line before[i] + i.
  const auto& out = from_.before;
  std::size_t passed = 0;
  {
    std::size_t low = 0;
    std::size_t high = out.size();
    while (low < high) {
      const std::size_t middle = (low + high) / 2;
      const bool stands = out[middle] + static_cast<std::int32_t>(middle) < line;
      if (stands) low = middle + 1;
      if (!stands) high = middle;
    }
    passed = low;
  }
  const auto taken = static_cast<std::int32_t>(passed);
  const std::int32_t plain = line - taken;  // among the lines that are no markers
  const auto& in = to_.before;
  const auto next = std::upper_bound(in.begin(), in.end(), plain);
  shift_ = static_cast<std::int32_t>(next - in.begin()) - taken;
  // It holds between the marker before and the marker behind, of either text.
  const std::int32_t lastOut = passed < out.size() ? out[passed] + taken : kNoLine;
  const std::int32_t lastIn = next != in.end() ? *next - 1 + taken : kNoLine;
  last_ = std::min(lastOut, lastIn);
  const std::int32_t firstOut = passed > 0 ? out[passed - 1] + taken : 0;
  const std::int32_t firstIn = next != in.begin() ? *(next - 1) + taken : 0;
  first_ = std::max(firstOut, firstIn);
}

}  // namespace morva
