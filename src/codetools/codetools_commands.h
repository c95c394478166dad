// What the keys of the code tools say about themselves.
#pragma once

#include <span>

#include "app/commands.h"

namespace morva {

std::span<const Command> CodeToolCommands();

}  // namespace morva
