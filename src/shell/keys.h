// The table of the main window's push buttons: font, ground and face of each. What they say stands
// in the rooms' tables of commands.
#pragma once

#include "platform/geometry.h"
#include "shell/theme.h"

namespace morva {

enum class Face {
  Words,
  Icon,          // the icon of its command alone; the words are the hint
  IconAndWords,  // the icon alone where both do not fit
  Fallback,      // words, and the icon only where they do not fit
};

struct KeyLook {
  int id;
  platform::FontRole font;
  PanelStyle style = kPanelPlain;
  Face face = Face::Words;
};

const KeyLook* Keys(int& count);
// Null when the id is no key of the main window.
const KeyLook* KeyOf(int id);
// Whether the key stands for a state that is on just now, as its words or its icon tell.
bool KeyIsOn(int id);
// Whether the key shows something that is on or off, beyond what its words say: told to
// assistive technology as checked or not. PLAY says "Pause" instead.
bool KeyHoldsState(int id);
// Repaints the keys whose state changed since the last call, and the speed slider, and tells
// assistive technology. Cheap: made to be called after every command and timer.
void RefreshKeyStates();
void ResetKeyStates();

}  // namespace morva
