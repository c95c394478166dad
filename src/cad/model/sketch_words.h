// What the sketch says: the status line, the recent operations, its numbers as text.
#pragma once

#include <string>

namespace morva {

inline constexpr char16_t kNothingSelected[] =
    u"No object selected. Choose a draw tool, then click-drag on the canvas.";
inline constexpr char16_t kLengthWords[] = u"Length / width";  // of a size, unless of a circle

// At most 511 units; the same text in another case leaves the line untouched; null clears.
// With a tool in hand the text also stands on the hint line, as what the tool says.
void SetSketchStatus(const char16_t* text);
// The same for what is no word of a tool: the cursor, the selection.
void SetPassingStatus(const char16_t* text);
const std::u16string& SketchStatus();
// A line of "Recent operations", which keeps 40.
void LogSketchOperation(const char16_t* text);

// A number as the sketch's fields show it: round half up on the absolute value, "-" for any
// value below 0. `decimals` 0 to 6.
std::u16string SketchNumber(double value, int decimals);

}  // namespace morva
