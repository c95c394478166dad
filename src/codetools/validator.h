// The preflight: a fixed, ordered list of presence checks for a classic Haas control.
//
// It does not understand motion or modal state, never changes the program and blocks nothing.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace morva {

// Whether the word stands outside comments. Parentheses nest and span lines; ";" runs to the
// line end; blanks and tabs may stand behind the letter. A negative `value` means any number.
// The first NUL ends the text.
bool FindCodeWord(std::u16string_view text, char16_t letter, std::int32_t value);

// The number of the last G20 or G21 outside comments, as above; 0 where neither stands.
std::int32_t LastUnitsCode(std::u16string_view text);

// The report for a text, line by line with CR LF, as ValidateProgram appends it.
std::u16string PreflightReport(std::u16string_view text);
// The report of the active program in the place of all that the log holds.
void ValidateProgram();
// Another program is shown from now on: the log says once whose report stands in it.
void MarkReport();
void ResetValidator();

}  // namespace morva
