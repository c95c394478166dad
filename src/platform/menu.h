// Popup menus by item ids.
#pragma once

namespace platform {

struct MenuItem {
  int id = 0;                  // 0 is a separator
  const char16_t* text = u"";  // a tab parts the caption from its key
  bool checked = false;
  bool enabled = true;
};

// Shows the popup with its top left corner at main-window pixels and waits for the choice.
// The chosen id, 0 for none, for a dimmed one and for no items, -1 when no menu could be made. No
// command is sent.
int ShowPopup(const MenuItem* items, int count, int x, int y);

}  // namespace platform
