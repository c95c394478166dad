// Which blocks of the program the drawings stand in: so that nothing that was never sent is
// replaced, and nothing is cut twice unasked.
#pragma once

#include <cstdint>

#include "documents/feature_settings.h"

namespace morva {

// The block that holds the live drawing as it stands, else the one that it was opened from or sent
// as. 0: none of the program.
std::int32_t BlockOfLiveDrawing();
// The live drawing is that of this block, opened or just sent; nothing where the block holds another
// drawing, as that of another program.
void RememberBlock(std::int32_t id);
// Before the block with this record and id takes the live sketch's place. Where that holds geometry
// which stands in no block, a free drawing comes up, called after the block; without a free one the
// user is asked. False: the drawing is to stay.
bool MakeRoomForBlock(const FeatureSettings& record, std::int32_t id);

}  // namespace morva
