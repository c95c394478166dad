// Alt+C, Alt+V, Alt+Z and the context menu of every text control.
#pragma once

#include <span>

#include "app/commands.h"
#include "platform/events.h"

namespace morva {

// Where chords of this room hold.
inline constexpr ChordPlace kTextChords{u"any text"};  // any text control
inline constexpr ChordPlace kToolkitChords{
    u"any text"};  // the same, where the toolkit knows these keys

std::span<const Command> EditCommands();
// True: the key was one of the three on a text control.
bool EditKey(int id, const platform::KeyEvent& key);
// The popup at main-window pixels; true for a text control.
bool EditContextMenu(int id, int x, int y);

}  // namespace morva
