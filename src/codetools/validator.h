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

// What the report ends with, whatever the program: two sentences, each a line.
inline constexpr char16_t kPreflightNotes[] =
    u"NOTE: This validator cannot know your work offset, tool length, workholding, stock, spindle "
    u"option, or machine condition.\r\nRun unfamiliar code in Haas Graphics mode and use safe "
    u"proving practices.";

// The report for a text, line by line with CR LF, as the log shows it.
std::u16string PreflightReport(std::u16string_view text);

enum class ReportKind { Plain, Warning, Error };
// What a line of the report tells, by its words, without a line end. Lines of the machine check
// that name a line of the program are known too.
ReportKind KindOfReportLine(std::u16string_view line);
// The line of `text`, whose lines end in CR LF, that shows what a line of its report means, from 0:
// the word itself, or where the missing one belongs. -1: the line is none that a rule wrote.
int PlaceOfReportLine(std::u16string_view line, std::u16string_view text);

}  // namespace morva
