// What the unit keys of the main window say about themselves.
#pragma once

#include <span>

#include "app/commands.h"

namespace morva {

std::span<const Command> UnitCommands();

}  // namespace morva
