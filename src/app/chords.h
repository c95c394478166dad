// Chords: the keys that run a command without a press on its button, and their words in menus.
//
// A chord holds at one place, because the same keys do other things elsewhere: Ctrl+Z on the
// drawing undoes an edit of the drawing.
#pragma once

#include <string>

#include "platform/events.h"

namespace morva {

enum class ChordPlace : unsigned char {
  Nowhere,
  Programs,   // the editors, and the CAD workspace but its size boxes and the name of a drawing
  Editors,    // the code editor and the words view
  Features,   // the feature list
  Review,     // any control of the compare review
  Toolpath,   // the toolpath view
  Workspace,  // any control of the CAD workspace
  Drawing,    // those of the CAD workspace that take no text
  Canvas,     // the drawing itself
  Texts,      // any text control
  Toolkit,    // any text control, which knows these keys of its own
};

struct Chord {
  ChordPlace place = ChordPlace::Nowhere;
  platform::KeyEvent key = {};
};

constexpr Chord PlainKey(ChordPlace place, int key) { return {place, {key}}; }
constexpr Chord CtrlKey(ChordPlace place, int key) { return {place, {key, true}}; }
constexpr Chord AltKey(ChordPlace place, int key) { return {place, {key, false, false, true}}; }

bool SameKey(const platform::KeyEvent& a, const platform::KeyEvent& b);
// "Ctrl+Z", "F8", "Esc"; empty for no chord.
std::u16string ChordWords(const Chord& chord);

}  // namespace morva
