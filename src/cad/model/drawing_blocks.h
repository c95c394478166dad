// Which blocks of the program the drawings stand in: so that nothing that was never sent is
// replaced, and nothing is cut twice unasked.
#pragma once

#include <cstdint>

#include "cad/model/former_drawing.h"
#include "documents/feature_settings.h"

namespace morva {

// The block that holds the live drawing as it stands, else the one that it was opened from or sent
// as. 0: none of the program.
std::int32_t BlockOfLiveDrawing();
// The live drawing is that of this block, opened or just sent; nothing where the block holds
// another drawing, as that of another program.
void RememberBlock(std::int32_t id);
// What the live drawing has beside its sketch.
FormerDrawing LiveFormerDrawing();
// A block's objects and thickness into the live sketch and the CAD surface up; flags cleared,
// nothing selected. A sketch that stands in no block stays in its drawing; where the user let it be
// replaced it is one Undo away, with its thickness and cutting data. False: it is no record of a
// sketch, there is no workspace or the user wants to keep the drawing, and nothing changed.
bool OpenSketchBlock(const FeatureSettings& record);

}  // namespace morva
