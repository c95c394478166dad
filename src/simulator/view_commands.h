// What the keys and menu items of playback and of the toolpath view say about themselves.
#pragma once

#include <span>

#include "app/commands.h"

namespace morva {

// Where chords of this room hold.
inline constexpr ChordPlace kToolpathChords{u"toolpath view"};  // the toolpath view

std::span<const Command> SimulatorCommands();

}  // namespace morva
