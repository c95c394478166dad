// What the keys and menu items of playback and of the toolpath view say about themselves.
#pragma once

#include <span>

#include "app/commands.h"

namespace morva {

std::span<const Command> SimulatorCommands();

}  // namespace morva
