// What the keys and menu items of programs and features say about themselves.
#pragma once

#include <span>

#include "app/commands.h"

namespace morva {

std::span<const Command> DocumentCommands();

}  // namespace morva
