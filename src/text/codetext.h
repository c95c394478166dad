// Number text: the program's only conversion between numbers and text.
//
// No locale, no library formatter, no exponent notation. Buffers are zero-terminated 16-bit
// text with a capacity counted in units, terminator included; what does not fit is cut
// silently.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace morva {

inline constexpr int kAscii = 128;  // characters

// The number at the start of `text`: blanks and tabs, one sign, digits, a point and digits.
// Text behind it is ignored; without a number the answer is `fallback`. Fraction digits are
// summed into the running value, digit times place, the place being multiplied by 0.1 each
// time: the last bits of a value are part of what the machine gets.
double ParseDecimal(std::u16string_view text, double fallback);
// As above, but only "-" is a sign, digits wrap at 32 bits and nothing follows them.
std::int32_t ParseInteger(std::u16string_view text, std::int32_t fallback);
// Rounds half away from zero on the magnitude; always the full count of decimals, 0 to 6.
// A value below zero keeps its "-" even where it rounds to zero. Units written, the terminator
// aside.
int FormatFixed(double value, int decimals, char16_t* dest, int capacity);

void AppendBounded(char16_t* dest, int capacity, const char16_t* text);
void AppendLine(char16_t* dest, int capacity, const char16_t* text);
void AppendLabelNumber(char16_t* dest, int capacity, const char16_t* label, double value,
                       int decimals);
void AppendLabelInteger(char16_t* dest, int capacity, const char16_t* label, std::int32_t value);
// Copies with a cut at capacity - 1 units; always terminated.
void CopyBounded(char16_t* dest, int capacity, std::u16string_view text);
// The same number texts for growing strings.
std::u16string FixedText(double value, int decimals);
std::u16string IntegerText(std::int64_t value);

inline bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }
// Letters A to Z folded, nothing else.
constexpr char16_t FoldUpper(char16_t c) {
  return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - u'a' + u'A') : c;
}
bool SameFolded(std::u16string_view a, std::u16string_view b);
// First place of `wanted` in `text` from `from` on, case of A to Z ignored; npos for none.
std::size_t FindFolded(std::u16string_view text, std::u16string_view wanted, std::size_t from);
inline bool HoldsFolded(std::u16string_view text, std::u16string_view wanted) {
  return FindFolded(text, wanted, 0) != std::u16string_view::npos;
}

// Direction of the vector (x, y) in degrees, -180 to 180; 0 for the zero vector. The arc
// tangent is the odd-power series through the 31st power after folding to 22.5 degrees.
double AngleDegrees(double y, double x);

}  // namespace morva
