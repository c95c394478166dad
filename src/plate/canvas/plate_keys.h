// The keyboard on the plate's preview: everything that the pointer can do there.
#pragma once

#include <span>
#include <string>

#include "app/key_rows.h"
#include "platform/events.h"

namespace morva {

// True: used.
bool PlateViewKey(const platform::KeyEvent& key);
std::span<const KeyRow> PlateViewKeys();
// What the preview shows, for those who do not see it.
std::u16string PlateViewWords();

}  // namespace morva
