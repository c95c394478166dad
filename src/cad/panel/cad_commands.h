// What the keys of the CAD workspace say about themselves.
#pragma once

#include <span>

#include "app/commands.h"

namespace morva {

std::span<const Command> CadCommands();

}  // namespace morva
