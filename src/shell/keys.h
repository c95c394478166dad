// The table of the main window's push buttons: font, ground and face of each. What they say stands
// in the rooms' tables of commands.
#pragma once

#include <algorithm>
#include <span>

#include "platform/geometry.h"
#include "shell/theme.h"

namespace morva {

enum class Face {
  Words,
  Tab,           // words from the left
  Arrow,         // words, and an arrow at the right end that brings up a menu
  Icon,          // the icon of its command alone; the words are the hint
  IconAndWords,  // the icon alone where the words do not fit
};

struct KeyLook {
  int id = 0;
  platform::FontRole font = platform::FontRole::Body;
  PanelStyle style = kPanelPlain;
  Face face = Face::Words;
  int last = 0;  // of a range of ids that look the same; 0: one id
};

std::span<const KeyLook> Keys();  // in the order in which they are made
inline int LastOf(const KeyLook& key) { return std::max(key.id, key.last); }
// The look of one key; its id is 0 when the id is no key of the main window.
KeyLook KeyOf(int id);

}  // namespace morva
