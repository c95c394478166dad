// The cross that the keys move over the drawing: a pointer for who works without one.
//
// Arrows move it from one point of the grid to the next, Enter and Space press at it: a tool takes
// the press as one of the left button, with the same snaps. What is dragged begins with one
// press and ends with the next. A move of the pointer takes the cross away.
#pragma once

#include <span>
#include <string>

#include "app/key_rows.h"

namespace morva {

bool KeyCrossUp();
std::span<const KeyRow> KeyCrossKeys();
// Where it stands, empty while it is down.
std::u16string KeyCrossWords();

void RegisterKeyCross();

}  // namespace morva
