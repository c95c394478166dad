// The smallest builder: a groove along X, five fields and a drop-down list. Made up for tests, and
// the one to copy.
#pragma once

#include "documents/builder_table.h"
#include "support/join_late.h"

namespace support::groove {

// Ids of the list, the picture and the key; a number's id is kFirst and its place.
inline constexpr int kFirst = 41000, kSide = 41010, kPicture = 41011, kInsert = 41012;
// No mode of the program, so that no panel of the program stands in the way.
inline constexpr int kMode = 90;
enum Number : int { kDepth, kFeed, kWidth, kHoles };

extern const morva::Builder kBuilder;

// In tests alone: JoinRooms joins a builder of the program.
inline void Join() { JoinLate<kBuilder>(); }

}  // namespace support::groove
