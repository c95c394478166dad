// The modes of the Code surface: the list at the left, the mode that is up, the way back.
#pragma once

#include <span>

#include "app/app_state.h"
#include "app/key_rows.h"
#include "platform/events.h"

namespace morva {

// Hands in the rows of the modes that the shell shows without a panel or a surface.
void RegisterShellModes();

// The list row of a mode, -1 for none.
int ModeListRow(int mode);

// Goes to the mode of the selected row; a row still to come is not taken.
void TakeListedMode();
// The keys of the mode list. Arrow keys, Home and End pass over rows still to come, which would
// otherwise bar the way. True: handled.
bool ModeListKey(const platform::KeyEvent& key);
std::span<const KeyRow> ModeListKeys();  // those that it runs

// What the user chose: a mode of the Code surface, or another surface. Nothing happens where it is
// still to come, or where the surface that is up does not let it go.
void SetMode(int mode);
void SetSurface(int surface);
void GoBack();
// Whether a mode's panel exists already; a row for a mode still to come is drawn dim.
bool ModeExists(int mode);

// One level of history: where the back key goes.
struct BackHistory {
  int surface = kSurfaceCode;
  int mode = kModeHome;
};
const BackHistory& History();
void ResetModes();

}  // namespace morva
