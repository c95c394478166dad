#include "codetools/chunked_lines.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "codetools/command_words.h"

namespace morva {

namespace {

using std::size_t;
using View = std::u16string_view;

constexpr size_t kChunkUnits = 16384;
constexpr std::uint8_t kKnown = 4;

// `text` in pieces of whole lines, of at least so many units each but for the last one.
std::vector<LineChunk> Pieces(View text) {
  std::vector<LineChunk> pieces;
  size_t from = 0;
  size_t ends = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (!EndsLine(text, i)) continue;
    ++ends;
    if (i + 1 - from < kChunkUnits) continue;
    pieces.push_back({std::u16string(text.substr(from, i + 1 - from)), ends});
    from = i + 1;
    ends = 0;
  }
  if (from < text.size()) pieces.push_back({std::u16string(text.substr(from)), ends});
  return pieces;
}

struct Place {
  size_t chunk = 0;
  size_t at = 0;  // in its text
};

// The start of a line; the end of the text behind the last one.
Place PlaceOf(const ChunkedLines& lines, size_t line) {
  Place place;
  const size_t last = lines.chunks.size() - 1;
  while (place.chunk < last && line >= lines.chunks[place.chunk].ends) {
    line -= lines.chunks[place.chunk++].ends;
  }
  place.at = BehindLines(lines.chunks[place.chunk].text, 0, line);
  return place;
}

std::uint8_t CommentOf(LineChunk& chunk) {
  if (chunk.comment == 0) {
    const bool opens = chunk.text.find(u'(') != View::npos && LeavesCommentOpen(chunk.text, false);
    const bool keeps = chunk.text.find(u')') == View::npos || LeavesCommentOpen(chunk.text, true);
    chunk.comment = static_cast<std::uint8_t>(kKnown + (opens ? 1 : 0) + (keeps ? 2 : 0));
  }
  return chunk.comment;
}

}  // namespace

bool EndsLine(View text, size_t at) {
  if (text[at] == u'\n') return true;
  return text[at] == u'\r' && (at + 1 == text.size() || text[at + 1] != u'\n');
}

size_t BehindLine(View text, size_t at) {
  while (at < text.size() && !EndsLine(text, at)) ++at;
  return at < text.size() ? at + 1 : at;
}

size_t BehindLines(View text, size_t at, size_t count) {
  for (; count > 0 && at < text.size(); --count) at = BehindLine(text, at);
  return at;
}

size_t CountLineEnds(View text) {
  size_t count = 0;
  for (size_t i = 0; i < text.size(); ++i) count += EndsLine(text, i) ? 1 : 0;
  return count;
}

ChunkedLines InChunks(View text) {
  ChunkedLines lines;
  lines.units = text.size();
  lines.chunks = Pieces(text);
  if (lines.chunks.empty()) lines.chunks.emplace_back();
  return lines;
}

std::u16string Joined(const ChunkedLines& lines) {
  std::u16string text;
  text.reserve(lines.units);
  for (const LineChunk& chunk : lines.chunks) text += chunk.text;
  return text;
}

bool SameText(const ChunkedLines& lines, View text) {
  if (lines.units != text.size()) return false;
  for (const LineChunk& chunk : lines.chunks) {
    if (!text.starts_with(chunk.text)) return false;
    text.remove_prefix(chunk.text.size());
  }
  return true;
}

size_t LineCount(const ChunkedLines& lines) {
  size_t count = 1;
  for (const LineChunk& chunk : lines.chunks) count += chunk.ends;
  return count;
}

std::u16string LinesOf(const ChunkedLines& lines, size_t line, size_t count) {
  Place place = PlaceOf(lines, line);
  std::u16string text;
  for (; count > 0 && place.chunk < lines.chunks.size(); ++place.chunk, place.at = 0) {
    const View rest = View(lines.chunks[place.chunk].text).substr(place.at);
    size_t at = 0;
    while (count > 0 && at < rest.size()) {
      at = BehindLine(rest, at);
      --count;
    }
    text += rest.substr(0, at);
  }
  return text;
}

void ReplaceLines(ChunkedLines& lines, size_t line, size_t count, View text) {
  const Place from = PlaceOf(lines, line);
  const Place to = PlaceOf(lines, line + count);
  size_t before = 0;
  for (size_t i = from.chunk; i <= to.chunk; ++i) before += lines.chunks[i].text.size();
  std::u16string whole = lines.chunks[from.chunk].text.substr(0, from.at);
  whole += text;
  whole.append(lines.chunks[to.chunk].text, to.at);
  lines.units = lines.units - before + whole.size();
  std::vector<LineChunk> pieces = Pieces(whole);
  // The rest of the last of them would leave ever shorter pieces.
  if (pieces.size() > 1 && pieces.back().text.size() < kChunkUnits / 2) {
    LineChunk& last = pieces[pieces.size() - 2];
    last.text += pieces.back().text;
    last.ends += pieces.back().ends;
    pieces.pop_back();
  }
  const auto first = lines.chunks.begin() + static_cast<std::ptrdiff_t>(from.chunk);
  const auto behind = lines.chunks.begin() + static_cast<std::ptrdiff_t>(to.chunk + 1);
  if (pieces.size() == to.chunk + 1 - from.chunk) {
    std::move(pieces.begin(), pieces.end(), first);
    return;
  }
  const auto at = lines.chunks.erase(first, behind);
  lines.chunks.insert(at, std::make_move_iterator(pieces.begin()),
                      std::make_move_iterator(pieces.end()));
  if (lines.chunks.empty()) lines.chunks.emplace_back();
}

bool IsInComment(ChunkedLines& code, size_t line) {
  const Place place = PlaceOf(code, line);
  bool open = false;
  for (size_t i = 0; i < place.chunk; ++i) {
    open = (CommentOf(code.chunks[i]) & (open ? 2 : 1)) != 0;
  }
  return LeavesCommentOpen(View(code.chunks[place.chunk].text).substr(0, place.at), open);
}

void FindComments(ChunkedLines& code) {
  for (LineChunk& chunk : code.chunks) CommentOf(chunk);
}

}  // namespace morva
