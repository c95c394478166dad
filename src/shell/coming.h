// What is still to come: what the window says of modes, surfaces and commands that no room brings
// yet. A row goes from here when its room hands in its own.
#pragma once

#include <span>

#include "app/commands.h"
#include "shell/layout_rects.h"

namespace morva {

// Rows of modes; those that a room has handed in already stay as they are.
void RegisterComingModes();
std::span<const Command> ComingCommands();
// Keys of surfaces.
std::span<const KeyWidth> ComingSurfaceKeys();

}  // namespace morva
