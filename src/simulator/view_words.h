// What the toolpath view says in words: its read-outs, and what a user reads who does not see it.
//
// All of it is about the path that is shown (shown_path.h).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "simulator/view_parts.h"

namespace morva {

// What a builder says of the place that it points at; empty where it says nothing.
std::u16string_view MarkerWords();
// The spans of the path in display units. False: there is no path.
bool ExtentsText(char16_t (&text)[kReadOutUnits]);
// Whether a pick for measuring stands on a point of the path.
bool ValidPick(std::int32_t pick);
// The way between the two picks. False: there are not two.
bool MeasureText(char16_t (&text)[kReadOutUnits]);
// How the path differs from the program: nothing is stale or left out unseen. Each part begins with
// "  /  "; empty where it does not differ.
std::u16string WarningWords();
// Extents, the 1-based line of the head while it is in use, warnings and measure in one line.
std::u16string ToolpathWords();

}  // namespace morva
