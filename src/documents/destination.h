// The destination picker: into which program a drawing's code goes, and before which operation.
//
// A modal dialog. Programs are told apart by their serials, because others can open and close
// while it stands.
#pragma once

#include <cstdint>

#include "documents/insertion.h"

namespace morva {

// Asks, then brings up the chosen program and puts the caret where the block must go. A block
// under edit stays in its place unless another program is chosen, which also forgets the link.
// Asks further where the place is never run, or where the code, whose units word is `units`, leaves
// another unit on; 0: it names none.
// Cancelled, without any change, when the user gave up or a new program could not be opened.
Destination RunDestinationPicker(int kind, std::int32_t units = 0);

void RegisterDestinationPicker();

}  // namespace morva
