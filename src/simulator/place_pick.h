// The pick of a place in a preview: the press, the keys and what the view says of it.
//
// While it waits, a press of the left button takes the place below the pointer, the arrow keys move
// a cross and Enter takes the place below that. Esc gives up. The cross snaps to geometry, or
// stands anywhere on the plane, as the pick says.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "app/key_rows.h"
#include "app/path_preview.h"
#include "platform/events.h"
#include "platform/geometry.h"

namespace morva {

// False: no preview is shown. Another pick that waits is given up before.
bool BeginPlacePick(const PlacePick& pick);
// False: none waited. The one who began it is told.
bool DropPlacePick();
bool PlacePickWaits();
// None waits, told to nobody.
void ResetPlacePick();

// Unit, stock, plane or program are others now: the cross stands nowhere until the user moves it
// again.
void DropPickCross();

// Where the cross stands. False: nowhere yet.
bool PickCross(PickedPlace& cross);

// The pointer and the keys of the view while a pick waits; false: not used.
bool PlacePickPress(int x, int y);
void PlacePickHover(int x, int y);
bool PlacePickKey(const platform::KeyEvent& key);
std::span<const KeyRow> PlacePickKeys();

// How the pick is worked, empty while none waits; and where the cross stands, empty for nowhere.
std::u16string_view PlacePickHelp();
std::u16string PickCrossWords();

}  // namespace morva
