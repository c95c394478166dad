// What the keys of the transfer to and from the control say about themselves.
#pragma once

#include <span>

#include "app/commands.h"

namespace morva {

std::span<const Command> DncCommands();

}  // namespace morva
