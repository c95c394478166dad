// What a path does not show of its program: lines that the reader steps over although they would
// move the machine, lines that it draws although the machine may never run them, and lines that
// move all that follows, without which it is drawn.
//
// The kinds, their words and their groups stand in one table, in path_notes.cpp.
#pragma once

#include <cstdint>
#include <string>

namespace morva {

// A line has one kind of those that are not shown, the first that holds. Those from BehindEnd on
// stand beside it.
enum class PathNote : unsigned char {
  Macros,       // G65, G66, a "#" behind a letter that moves, GOTO, WHILE
  Brackets,     // "[" behind a letter that moves
  Blanks,       // a blank between a letter that moves and its number
  Calls,        // M97, M98
  Pockets,      // G12, G13, G150 and their kin
  Home,         // G28, G30; G53 with an axis
  Cycles,       // canned cycles: only the place is known, no stroke is drawn
  RArcs,        // arcs by their radius
  OtherPlanes,  // arcs in G18 or G19
  BadArcs,      // arcs without a centre, or with one that does not fit
  Rotary,       // A, B or C alone
  BehindEnd,    // behind the first M30 or M02
  BlockDelete,  // with "/"
  Unread,       // behind a "%" that closes the program
  Shift,        // G92
  LocalZero,    // G52
  Turn,         // G68
  Scale,        // G51
  Offsets,      // G10
  Mirror,       // G101
  OtherZero,    // a work offset other than the one before: G54 to G59, G110 to G129, G154
};
inline constexpr int kPathNotes = 21;

struct PathNotes {
  struct Row {
    std::int32_t lines = 0;
    std::int32_t first = -1;  // 0-based, -1 for none
  };
  Row rows[kPathNotes];
};

// Counts a line; lines come in rising order.
void NoteLine(PathNotes& notes, PathNote kind, std::int32_t line);

// "  /  12 lines not shown, first 3", then the same of lines behind M30, with "/" and behind "%",
// then "  /  2 lines of G92, G68 not applied, first 4"; empty where there are none. Line numbers
// are 1-based.
std::u16string PathNotesWords(const PathNotes& notes);
// Whether it has lines that move the machine and are not shown.
bool HasLinesNotShown(const PathNotes& notes);

// A line for each group: "Not shown: R arcs 3, canned cycles 9". Empty where there are none.
std::u16string PathNotesTip(const PathNotes& notes);

}  // namespace morva
