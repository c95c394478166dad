// Chords: the keys that run a command without a press on its button, and their words in menus.
//
// A chord holds at one place, because the same keys do other things elsewhere: Ctrl+Z on the
// drawing undoes an edit of the drawing.
#pragma once

#include <string>

#include "platform/events.h"

namespace morva {

// A place belongs to a room. Its address tells it from the others, its words tell the user where
// the keys hold.
struct ChordPlace {
  const char16_t* words;
};

struct Chord {
  const ChordPlace* place = nullptr;  // null: nowhere
  platform::KeyEvent key = {};
};

constexpr Chord PlainKey(const ChordPlace& place, int key) { return {&place, {key}}; }
// F1 to F12.
constexpr Chord FunctionKey(const ChordPlace& place, int number) {
  return PlainKey(place, platform::kKeyF1 + number - 1);
}
constexpr Chord CtrlKey(const ChordPlace& place, int key) { return {&place, {key, true}}; }
constexpr Chord ShiftKey(const ChordPlace& place, int key) { return {&place, {key, false, true}}; }
constexpr Chord AltKey(const ChordPlace& place, int key) {
  return {&place, {key, false, false, true}};
}

bool SameKey(const platform::KeyEvent& a, const platform::KeyEvent& b);
// "Ctrl+Z", "F8", "Esc"; empty for no chord.
std::u16string ChordWords(const Chord& chord);

}  // namespace morva
