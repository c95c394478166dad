// The popup of saved shapes, below the key that asks for it.
#pragma once

namespace morva {

// What stands where a saved shape is wanted and none is there.
inline constexpr char16_t kNoSavedShape[] = u"Save a custom CAD shape first.";

// Waits for the user's choice. `chosen` is the index that is marked, -1 for none. The index of the
// shape; -1: nothing was chosen, or no shape is saved.
int PickSavedShape(int key, int chosen);

}  // namespace morva
