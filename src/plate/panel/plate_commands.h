// What the keys of the plate workspace say.
#pragma once

#include <span>

#include "app/commands.h"

namespace morva {

std::span<const Command> PlateCommands();

}  // namespace morva
