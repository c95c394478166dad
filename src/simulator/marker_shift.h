// Marker lines that are put into a text or taken out of it: whether two texts differ in nothing
// else, and where the lines of the one stand in the other.
//
// The control takes a marker for a comment, so that a run over the one text holds for the other as
// soon as its line numbers have moved.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "text/text_hash.h"

namespace morva {

// A text without its marker lines, TEXT, NAME and END. Others stay: they change with what the user
// does, not with tagging.
struct UnmarkedText {
  TextDigest hash = {};   // two texts of the same hash and size count as one
  std::size_t units = 0;  // without the line end that may close the text
  std::size_t markedUnits = 0;
  // Of each marker line, in their order: how many other lines stand before it.
  std::vector<std::int32_t> before;
};

UnmarkedText WithoutMarkers(std::u16string_view text);
// Whether the texts differ in marker lines alone.
bool DifferByMarkers(const UnmarkedText& one, const UnmarkedText& other);

// Lines of one text as lines of another that differs by markers. Lines asked in ascending order are
// found fastest.
class LineShift {
 public:
  LineShift(const UnmarkedText& from, const UnmarkedText& to);
  // 0-based; of a line behind the last one too. A marker gets the line that follows it.
  std::int32_t Moved(std::int32_t line) {
    if (line < first_ || line > last_) Seek(line);
    return line + shift_;
  }

 private:
  void Seek(std::int32_t line);

  const UnmarkedText& from_;
  const UnmarkedText& to_;
  // The lines for which the last answer holds.
  std::int32_t first_ = 0;
  std::int32_t last_ = -1;
  std::int32_t shift_ = 0;
};

}  // namespace morva
