// What the wizard's keys say about themselves.
#pragma once

#include <span>

#include "app/commands.h"

namespace morva {

std::span<const Command> SkimCommands();

}  // namespace morva
