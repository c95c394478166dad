// What the shell's own keys and read-outs, and the keys that are still to come, say about
// themselves.
#pragma once

#include <span>

#include "app/commands.h"

namespace morva {

inline constexpr ChordPlace kWindowChords{u"everywhere"};  // what nobody else takes

std::span<const Command> ShellCommands();

}  // namespace morva
