// What a builder wants drawn or pointed at here: the drawing that comes up for it, Return and the
// back key that hand it over, and the press that picks a place.
#pragma once

#include "platform/events.h"

namespace morva {

// Return on the canvas with no tool in hand hands the wanted drawing over; Escape goes back to the
// builder without it, as without a wanted place. False: nothing is wanted here.
bool WantedKey(const platform::KeyEvent& key);
// The back key does what Return does; a place is given up. False: nothing is wanted here.
bool WantedBack();
// The surface is left, or the program changes: nothing is wanted any more.
void ForgetWanted();

void RegisterWanted();  // the hooks of builders, and the canvas that asks for a press

}  // namespace morva
