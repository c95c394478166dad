// The parts of one block's text: name line, generated code, the span that exclusion swaps.
//
// Pure functions of the text and a row of the table that describes it. All places are text
// indices. The tests for an excluded block differ from each other and are kept apart: by any
// occurrence in any case for what is shown, by the first marker in exact case behind the code
// start for what is swapped.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "documents/feature_blocks.h"

namespace morva {

// Whether a stretch of text holds anything beside comments, blanks and line ends.
bool HoldsCode(std::u16string_view text, std::size_t from, std::size_t to);
// The NAME line with its line end, or the NAME comment alone where code stands behind it on its
// line; or the empty place where it goes: in front of the next line by the scan, which passes over
// blank lines. False: the block has no second line, so that no name can stand in it.
bool FindNameLine(std::u16string_view text, const FeatureRecord& row, std::int32_t& from,
                  std::int32_t& to);
// What the hash of a settings block is over: from just past CODE to the next END marker.
std::u16string_view GeneratedCode(std::u16string_view text, const FeatureRecord& row);
// The number of the first DISABLED line in the block, any case. False: there is none.
bool DisabledNumber(std::u16string_view text, const FeatureRecord& row, std::int32_t& number);
// From the code start to the first END marker behind the block's start, whatever its number.
// False: the block has no such span.
bool FindIncludeSpan(std::u16string_view text, const FeatureRecord& row, std::int32_t& from,
                     std::int32_t& to);
// The code of a marked user block: behind its NAME line, and up to its END marker. False: they
// stand the wrong way round.
bool UserCodeSpan(std::u16string_view text, const FeatureRecord& row, std::int32_t& from,
                  std::int32_t& to);
// The line that stands for stored code, CR LF behind it.
std::u16string DisabledLine(std::int32_t number);
// Whether a block's code is in the program. OffHasCode: it is taken out, and the block holds more
// than the line that stands for it, which the control gets.
enum class Inclusion { On, Off, OffHasCode };
Inclusion InclusionOf(std::u16string_view text, const FeatureRecord& row);

// The first DISABLED marker in a span of code, exact case.
struct DisabledMarker {
  std::int32_t number = 0;
  std::int32_t from = 0;  // what including replaces: the whole line where nothing else is on it
  std::int32_t to = 0;
  bool behindCode = false;     // something stands in front of it on its line
  bool inFrontOfCode = false;  // something stands behind it on its line, or right behind its line
};
// Looks from `from` to `to`. False: there is none.
bool FindDisabledMarker(std::u16string_view text, std::int32_t from, std::int32_t to,
                        DisabledMarker& marker);
// The stored code as it goes into the marker's place, on lines of its own.
std::u16string CodeForMarker(const DisabledMarker& marker, std::u16string_view stored);

}  // namespace morva
