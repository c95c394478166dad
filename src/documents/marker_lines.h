// Marker lines in program text: their words, and the steps from line to line that all readers
// of markers share.
//
// An opening marker stands at the start of a line, in upper case. Line ends are CR, LF and
// CR LF; readers take whole runs of them as one step, so that an empty line between two
// markers does not part them.
#pragma once

#include <cstddef>
#include <string_view>

namespace morva {

inline constexpr std::u16string_view kMarkerHead = u"(MORVA ";
inline constexpr std::u16string_view kBeginMark = u"(MORVA BEGIN ";
inline constexpr std::u16string_view kTextMark = u"(MORVA TEXT ";
inline constexpr std::u16string_view kEndMark = u"(MORVA END ";
inline constexpr std::u16string_view kNameMark = u"(MORVA NAME ";
inline constexpr std::u16string_view kDataMark = u"(MORVA DATA ";
inline constexpr std::u16string_view kCodeMark = u"(MORVA CODE)";
inline constexpr std::u16string_view kDisabledMark = u"(MORVA DISABLED ";

inline bool IsLineEnd(char16_t c) { return c == u'\r' || c == u'\n'; }

// Whether `marker` stands at `at`, exact case; `at` at most the text's size.
inline bool StartsAt(std::u16string_view text, std::size_t at, std::u16string_view marker) {
  return text.size() - at >= marker.size() && text.substr(at, marker.size()) == marker;
}

// The first line end at or behind `at`, else the text's end.
inline std::size_t LineEndFrom(std::u16string_view text, std::size_t at) {
  while (at < text.size() && !IsLineEnd(text[at])) ++at;
  return at;
}

// Behind all line ends that stand at `at`.
inline std::size_t SkipLineEnds(std::u16string_view text, std::size_t at) {
  while (at < text.size() && IsLineEnd(text[at])) ++at;
  return at;
}

// Behind one line end, CR LF counting as one; where none stands, `at` itself.
inline std::size_t PastLineEnd(std::u16string_view text, std::size_t at) {
  if (at >= text.size()) return at;
  if (text[at] == u'\r') return at + (at + 1 < text.size() && text[at + 1] == u'\n' ? 2 : 1);
  return text[at] == u'\n' ? at + 1 : at;
}

}  // namespace morva
