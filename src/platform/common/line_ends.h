// Line ends of text controls: what comes in as CR LF, LF or CR leaves as CR LF.
//
// Positions and limits above the seam count in these texts, so that every platform shares them.
#pragma once

#include <string>
#include <string_view>

namespace platform {

// LF, CR and CR LF become CR LF. NUL, and what toolkits take for a line end or frame of their
// own (U+2028, U+2029, U+FDD0, U+FDD1), becomes U+FFFD.
std::u16string WithCrLf(std::u16string_view text);
// Without any CR and LF, for a field of one line.
std::u16string WithoutLineEnds(std::u16string_view text);
// The front of a text that fits into `units`, with no CR LF or surrogate pair torn apart.
std::u16string_view FittingUnits(std::u16string_view text, int units);

}  // namespace platform
