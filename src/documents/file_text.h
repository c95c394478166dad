// File text: whole files in, atomic files out, and the bytes a program goes out as.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace morva {

inline constexpr char16_t kOpenFailed[] = u"Could not open the selected file.";

// The whole file, at most 32 MiB (33,554,432 bytes). False: unreadable or larger.
bool ReadWholeFile(std::u16string_view path, std::string& bytes);
// Behind a read that failed: the path and why, for the log.
std::u16string UnreadFileWords(std::u16string_view path);
// Writes beside the target, flushes, puts the new file in place in one step, flushes the
// folder. False: the old file is whole as it was (or, where only the flush of the folder
// failed, the new one) and no stray file is left. A path of more than 500 units fails.
bool SaveFileAtomic(std::u16string_view path, std::string_view bytes);
// Program text as bytes: every line end CR LF, a character above 127 as "?", no NUL, a final
// line end. With `wrap` a "%" line at the start and at the end where the text has none (for the
// line to the control); without, an empty text gives no bytes.
std::string NormaliseOutputText(std::u16string_view text, bool wrap);
// The same without `wrap`; `lost`: a character above 127 went out as "?".
std::string ProgramBytes(std::u16string_view text, bool& lost);
// How many bytes NormaliseOutputText makes of a text, without `wrap`, and what they would lose.
struct OutputFigures {
  std::size_t bytes = 0;
  // Characters above 127; a pair of surrogates counts as one.
  int lost = 0;
  int firstLostLine = 0;  // counted from 1; 0: none is lost
};
// `restored` has the places, ascending, of those that are not lost.
OutputFigures MeasureOutput(std::u16string_view text, std::span<const std::size_t> restored = {});
// The text of a program file, what fills its end left out. False: NULs stand between its lines,
// so that it may be no text; `text` is then all of it without them.
bool TakeProgram(std::string& bytes, std::u16string& text);
// Some editors begin a file with this. It is no code for a control.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
// Takes it away from the front of a text. False: it has none.
bool TakeByteOrderMark(std::u16string& text);
// A program file as text: UTF-8, and where that gives nothing the one-byte code page. NULs are
// left out.
std::u16string DecodeProgram(std::string_view bytes);
// Windows-1252, undefined bytes as U+FFFD: received bytes and disk files to send.
std::u16string DecodeCodePage(std::string_view bytes);

}  // namespace morva
