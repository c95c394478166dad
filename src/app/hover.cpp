#include "app/hover.h"

#include <string>

#include "app/command_ids.h"
#include "app/commands.h"
#include "app/outlets.h"
#include "app/surfaces.h"
#include "platform/control.h"
#include "platform/window.h"

namespace morva {

namespace {

int lastId = 0;

}  // namespace

void HoverTick() {
  int id = platform::IdUnderPointer();
  TellPointerOver(id);
  // A box that comes and goes over a list: the list's hint must not wipe what was said about it.
  if (const Command* row = CommandOf(id); row && row->over != 0) id = row->over;
  // Over another window the last control is remembered. Otherwise the key that opened the box
  // would show its hint again over the answer.
  if (id == 0 || id == lastId) return;
  lastId = id;
  if (id == platform::kMainWindow) return;
  const std::u16string text = HintOf(id);
  if (text.empty()) return;
  ShowStatus(text);
  const Surface* up = SurfaceUp();
  if (up && up->hintLabel != 0) {
    platform::SetText(up->hintLabel, text);
    return;
  }
  platform::SetText(kIdOutputLog, text + u"\r\n");
}

void HoverPressed(int id) {
  if (id != 0 && platform::IdUnderPointer() == id) lastId = id;
}

void ResetHover() { lastId = 0; }

}  // namespace morva
