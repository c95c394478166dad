// The clicks and the live preview of a construction method.
//
// A method runs on after each object, from its first point. Positions are snapped before
// anything else is asked of them, picks of geometry too.
#pragma once

#include "platform/events.h"

namespace morva {

// A click and a move of a running method, in canvas pixels.
void ConstructionClick(const platform::PointerEvent& event);
void ConstructionMove(const platform::PointerEvent& event);

}  // namespace morva
