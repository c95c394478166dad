// Places in a program's text: whether the control runs what would stand there, and what lies
// around. Pure functions of the text.
//
// Comments end with their line; ";" runs to the line end. The head is the first O number, or the
// first line of code where there is none. The program ends at M30, M02 or M99, after which an O
// number begins another one, and at a "%" behind code, after which nothing is read. A line with
// "/" ends nothing: the control may leave it out.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace morva {

struct PlaceAround {
  bool beforeHead = false;  // units and work offset come later
  bool behindEnd = false;   // never run
  std::u16string end;       // where `behindEnd`: "M30", "M02", "M99" or "the closing %"
  // "Before the program's head (O1001)"; "Behind M30: never run"; the lines of code before and
  // behind with their numbers, counted from 1.
  std::u16string words;
};

// What stands at a text index: lines that begin before it lie before it.
PlaceAround LookAround(std::u16string_view text, std::int32_t index);

// The lines of code that stand behind the closing "%".
struct UnreadLines {
  int count = 0;
  int first = 0;  // from 1; 0: none
};
UnreadLines LinesNeverRead(std::u16string_view text);

// What the text between the indices does to the program that it was put into: a "%" or a program's
// end with code behind it, or the number of another program. Sentences with line numbers, CR LF
// between them; empty: nothing.
std::u16string CutsByInserted(std::u16string_view text, std::int32_t from, std::int32_t to);

// Whether the control gets there and has read the head before.
inline bool IsRun(const PlaceAround& place) { return !place.beforeHead && !place.behindEnd; }

}  // namespace morva
