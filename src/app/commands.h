// Commands: what a key, a menu item or a field says about itself. One table for all rooms.
//
// Each room hands in its rows when rooms are joined. Caption, tool tip, hover hint, accessible
// name, icon and shortcut words come from here, so that every sentence stands once. What a
// command does is the router's business.
#pragma once

#include <span>

#include "platform/window.h"

namespace morva {

struct Command {
  int id = 0;
  const char16_t* words = u"";  // the caption
  const char16_t* help = u"";   // tool tip; empty: none
  const char16_t* name = u"";   // for assistive technology, where the caption says too little
};

// Keeps a view of the rows, which must last as long as the program. The same row handed in again
// counts once. Another row of an id that stands there, or more than kMaxCommands rows, stop the
// program with words.
void AddCommands(std::span<const Command> rows);
// Null where no room knows the id.
const Command* CommandOf(int id);
void ResetCommandWords();

// Makes the push button of a command in `parent`: caption, accessible name and tool tip of its
// row, disabled while the command is still to come. It gets no place. False: no row has the id,
// or the system made no button.
bool MakeCommandKey(int id, int parent, platform::FontRole font, bool hidden);

}  // namespace morva
