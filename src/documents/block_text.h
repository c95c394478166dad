// The parts of one block's text: name line, generated code, the span that exclusion swaps.
//
// Pure functions of the text and a row of the table that describes it. All places are text
// indices. The tests for an excluded block differ from each other and are kept apart: by any
// occurrence for what is shown, by the first thing behind the code start for what is swapped.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "documents/feature_blocks.h"

namespace morva {

// The NAME line with its line end, or the empty place where it goes: right behind the block's
// first line. False: the block has no second line, so that no name can stand in it.
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
// The line that stands for stored code, CR LF behind it.
std::u16string DisabledLine(std::int32_t number);
// Whether the code begins with a DISABLED line, exact case, and its number.
bool LeadsDisabled(std::u16string_view code, std::int32_t& number);

}  // namespace morva
