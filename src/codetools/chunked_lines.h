// A long text in pieces of whole lines, so that a change of some lines costs those lines alone.
//
// Line ends are CR, LF and CR LF. Behind the last one there is one line more, be it empty. Lines
// are found by walking the pieces: some thousands in a program of a million lines.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace morva {

struct LineChunk {
  std::u16string text;  // whole lines; that of the last piece may end within one
  std::size_t ends = 0;
  // What the piece does to a comment: whether one is open behind it, bit 0 where none is open in
  // front of it, bit 1 where one is. Above it bit 2, where that is known.
  std::uint8_t comment = 0;
};

struct ChunkedLines {
  std::vector<LineChunk> chunks = std::vector<LineChunk>(1);  // at least one
  std::size_t units = 0;
};

ChunkedLines InChunks(std::u16string_view text);
std::u16string Joined(const ChunkedLines& lines);
bool SameText(const ChunkedLines& lines, std::u16string_view text);
std::size_t LineCount(const ChunkedLines& lines);
// The text of `count` lines from `line` on, line ends included; those that there are.
std::u16string LinesOf(const ChunkedLines& lines, std::size_t line, std::size_t count);
// Puts `text`, whole lines, in their place.
void ReplaceLines(ChunkedLines& lines, std::size_t line, std::size_t count,
                  std::u16string_view text);
// Whether a comment is open at the start of a line of code.
bool IsInComment(ChunkedLines& code, std::size_t line);
// Finds out now what every piece does to a comment.
void FindComments(ChunkedLines& code);

// Whether a line end stands at `at`; of CR LF that is the LF.
bool EndsLine(std::u16string_view text, std::size_t at);
// Behind the line that holds `at`, and behind `count` lines; line ends included.
std::size_t BehindLine(std::u16string_view text, std::size_t at);
std::size_t BehindLines(std::u16string_view text, std::size_t at, std::size_t count);
std::size_t CountLineEnds(std::u16string_view text);

}  // namespace morva
