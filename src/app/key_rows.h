// Keys that work a view, a list or a slider and are no commands: turn, shift, zoom, step.
//
// The rows of a view are what its keys do, and what the page of keys tells of them
// (`Handlers::keys` in app/panels.h). So the page cannot tell a key that does nothing.
#pragma once

#include <span>

#include "app/chords.h"

namespace morva {

struct KeyRow {
  Chord chord;
  const char16_t* words = u"";  // on the page of keys; empty: another row tells it
  bool (*run)() = nullptr;      // false: it has nothing to do now
};

// Runs the row of this key, modifiers and all. False: there is none, or it has nothing to do now.
bool RunKeyRow(std::span<const KeyRow> rows, const platform::KeyEvent& key);

// The key without its modifiers where it zooms: plus, minus and the page keys come with whatever
// modifiers the keyboard needs for them. Any other key as it is.
platform::KeyEvent WithoutZoomModifiers(const platform::KeyEvent& key);

}  // namespace morva
