// The table of the main window's push buttons: words, hint, font and face of each.
//
// A key's text is what a hover shows. Where the face is an icon, the text is the hint and the
// accessible name tells the key from its neighbours.
#pragma once

#include "platform/geometry.h"
#include "shell/theme.h"

namespace morva {

enum class Face {
  Words,
  Icon,          // the icon alone; the words are the hint
  IconAndWords,  // the icon alone where both do not fit
  Fallback,      // words, and the icon only where they do not fit
};

struct KeySpec {
  int id;
  const char16_t* text;
  const char16_t* name;  // accessible name, empty: the text
  const char16_t* tip;
  platform::FontRole font;
  PanelStyle style;
  int icon;  // -1: none
  Face face;
};

const KeySpec* Keys(int& count);
// Null when the id is no key of the main window.
const KeySpec* KeyOf(int id);
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
