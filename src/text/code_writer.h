// The program text under way: bounded, line ends CR LF, numbers as FormatFixed writes them.
//
// A piece that does not fit is kept up to the last unit that has room, and everything behind it
// is left out. `full` then stands, so that who puts it into a program can refuse it, once, at the
// end.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace morva {

struct CodeWriter {
  std::u16string text;
  std::size_t most = 0;  // units that the text may have
  bool full = false;     // something was left out
};

void Put(CodeWriter& out, std::u16string_view words);
// The label and the number behind it, 0 to 6 decimals.
void Put(CodeWriter& out, std::u16string_view label, double value, int decimals);
void PutInteger(CodeWriter& out, std::u16string_view label, std::int64_t value);
// The words and a line end.
void Line(CodeWriter& out, std::u16string_view words);
// The label, the number and a line end.
void Line(CodeWriter& out, std::u16string_view label, double value, int decimals);

}  // namespace morva
