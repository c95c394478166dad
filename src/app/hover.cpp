#include "app/hover.h"

#include <string>

#include "app/command_ids.h"
#include "app/commands.h"
#include "app/outlets.h"
#include "app/surfaces.h"
#include "platform/window.h"

namespace morva {

namespace {

struct Hover {
  int over = 0;         // the control under the pointer at the last tick that saw one
  bool led = false;     // the user's hand brought the pointer there, or moved it there
  bool spoken = false;  // its hint was shown, or it was pressed
  unsigned moves = 0;   // platform::PointerMoves at the last tick
};
Hover hover;

// What the pointer is on, 0 for no control of the main window.
int ControlUnderPointer() {
  const int id = platform::IdUnderPointer();
  TellPointerOver(id);
  // A box that comes and goes over a list: the list's hint must not wipe what was said about it.
  const Command* row = CommandOf(id);
  return row && row->over != 0 ? row->over : id;
}

std::u16string HintUnder(int id) {
  return id != platform::kMainWindow ? HintOf(id) : std::u16string();
}

}  // namespace

void HoverTick() {
  const int id = ControlUnderPointer();
  const unsigned moves = platform::PointerMoves();
  const bool moved = moves != hover.moves;
  hover.moves = moves;
  // Over another window the last control is remembered. Otherwise the key that opened the box
  // would show its hint again over the answer.
  if (id == 0) return HideHelp();
  const bool rests = id == hover.over;
  if (!rests) hover = Hover{.over = id, .moves = moves};
  hover.led = hover.led || moved;
  const bool mayShow = hover.led && !hover.spoken && (rests || HelpShownFor() != 0);
  if (const std::u16string hint = mayShow ? HintUnder(id) : u""; !hint.empty()) {
    hover.spoken = ShowHelp(id, hint);
  } else if (HelpShownFor() != id) {
    HideHelp();  // an editor shows its own for the word under the pointer
  }
}

void HoverPressed(int id) {
  if (id == 0 || platform::IdUnderPointer() != id) return;
  hover.over = id;
  hover.spoken = true;
}

void ResetHover() {
  hover = Hover();
  ResetHelp();
}

}  // namespace morva
