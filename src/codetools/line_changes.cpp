#include "codetools/line_changes.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "app/limits.h"
#include "text/codetext.h"

namespace morva {

namespace {

using std::size_t;

// A number, or one character.
struct Piece {
  size_t from = 0;
  size_t end = 0;
};
using Pieces = std::vector<Piece>;

bool IsBlank(char16_t c) { return c == u' ' || c == u'\t'; }

// Digits with their points; a sign belongs to the digits or the point behind it.
size_t NumberEnd(std::u16string_view line, size_t at) {
  size_t end = at;
  if (line[end] == u'-' || line[end] == u'+') ++end;
  const size_t digits = end;
  while (end < line.size() && (IsDigit(line[end]) || line[end] == u'.')) ++end;
  return end > digits ? end : at;
}

Pieces PiecesOf(std::u16string_view line, bool ignoreBlanks) {
  Pieces pieces;
  for (size_t at = 0; at < line.size();) {
    const size_t end = std::max(NumberEnd(line, at), at + 1);
    if (!ignoreBlanks || !IsBlank(line[at])) pieces.push_back({at, end});
    at = end;
  }
  return pieces;
}

struct Side {
  std::u16string_view line;
  Pieces pieces;
  std::u16string_view At(size_t i) const {
    return line.substr(pieces[i].from, pieces[i].end - pieces[i].from);
  }
};

// Between the equal fronts and backs of two lines.
struct Middle {
  size_t front = 0;
  size_t count = 0;       // pieces of the line
  size_t otherCount = 0;  // and of the other one
};

Middle MiddleOf(const Side& line, const Side& other) {
  const size_t most = std::min(line.pieces.size(), other.pieces.size());
  Middle middle;
  while (middle.front < most && line.At(middle.front) == other.At(middle.front)) ++middle.front;
  size_t back = 0;
  while (back < most - middle.front &&
         line.At(line.pieces.size() - 1 - back) == other.At(other.pieces.size() - 1 - back)) {
    ++back;
  }
  middle.count = line.pieces.size() - middle.front - back;
  middle.otherCount = other.pieces.size() - middle.front - back;
  return middle;
}

// Which pieces of the middle stand in no longest common sequence of both.
struct Owned {
  std::vector<bool> line;
  std::vector<bool> other;
};

Owned OwnPieces(const Side& line, const Side& other, const Middle& middle) {
  Owned own{std::vector<bool>(middle.count, true), std::vector<bool>(middle.otherCount, true)};
  const size_t width = middle.otherCount + 1;
  if ((middle.count + 1) * width > static_cast<size_t>(kMaxLineCells)) return own;
  std::vector<std::int32_t> longest((middle.count + 1) * width, 0);
  const auto same = [&](size_t i, size_t j) {
    return line.At(middle.front + i) == other.At(middle.front + j);
  };
  for (size_t i = middle.count; i-- > 0;) {
    for (size_t j = middle.otherCount; j-- > 0;) {
      const std::int32_t down = longest[(i + 1) * width + j];
      const std::int32_t right = longest[i * width + j + 1];
      longest[i * width + j] =
          same(i, j) ? longest[(i + 1) * width + j + 1] + 1 : std::max(down, right);
    }
  }
  for (size_t i = 0, j = 0; i < middle.count && j < middle.otherCount;) {
    if (same(i, j)) {
      own.line[i++] = false;
      own.other[j++] = false;
    } else if (longest[(i + 1) * width + j] >= longest[i * width + j + 1]) {
      ++i;
    } else {
      ++j;
    }
  }
  return own;
}

// Of several longest sequences both lines must find the same one, whichever is asked about.
std::vector<bool> OwnPiecesOf(const Side& line, const Side& other, const Middle& middle) {
  if (line.line <= other.line) return OwnPieces(line, other, middle).line;
  return OwnPieces(other, line, {middle.front, middle.otherCount, middle.count}).other;
}

}  // namespace

std::vector<bool> ChangedUnits(std::u16string_view line, std::u16string_view other,
                               bool ignoreBlanks) {
  const Side own{line, PiecesOf(line, ignoreBlanks)};
  const Side beside{other, PiecesOf(other, ignoreBlanks)};
  const Middle middle = MiddleOf(own, beside);
  const std::vector<bool> pieces = OwnPiecesOf(own, beside, middle);
  std::vector<bool> units(line.size(), false);
  for (size_t i = 0; i < middle.count; ++i) {
    const Piece& piece = own.pieces[middle.front + i];
    if (!pieces[i]) continue;
    std::fill(units.begin() + static_cast<std::ptrdiff_t>(piece.from),
              units.begin() + static_cast<std::ptrdiff_t>(piece.end), true);
  }
  return units;
}

}  // namespace morva
