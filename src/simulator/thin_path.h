// Long paths while their view moves: fewer segments, so that a frame stays short.
//
// A path whose drawing is short is left whole. Of a longer one go first the pieces that nobody
// sees, outside the picture or shorter than two pixels; then, if there is still too much, whole
// segments, spread evenly and the same ones in every frame.
#pragma once

#include <cstdint>

#include "platform/canvas.h"

namespace morva {

// What drawing a segment costs: so much each, and one more for each pixel that it runs along.
inline constexpr std::int64_t kSegmentWork = 128;
// What a frame has for cuts, and for all else that is drawn with them.
inline constexpr std::int64_t kCutsWork = 8'000'000;
inline constexpr std::int64_t kOtherWork = 2'000'000;

// Thins segments of one colour, or of one for each shade, to `mostWork`. They move to the front of
// their table, in their order, and their shades with them. What it returns is their number.
int ThinSegments(platform::Segment* segments, unsigned char* shades, int count,
                 const platform::Rect& client, std::int64_t mostWork);

}  // namespace morva
