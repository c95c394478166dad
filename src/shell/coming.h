// What is still to come: what the window says of modes that no room brings yet. A row goes from here
// when its room hands in its own.
#pragma once

namespace morva {

// Rows of modes; those that a room has handed in already stay as they are.
void RegisterComingModes();

}  // namespace morva
