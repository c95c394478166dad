// Whole toolpaths as pixels: many opaque segments of one colour into a 32-bit picture.
//
// Drawing order does not matter within one batch, so the batch is first gathered as a set of
// covered pixels, in which regions that are full already cost nothing, and then coloured once.
// Not for smooth or dashed lines. One thread at a time: the set is kept between calls.
#pragma once

#include <cstdint>

#include "platform/canvas.h"

namespace platform {

// Colours 0xFFrrggbb into `pixels`, rows `stridePixels` apart, inside `clip` and the picture.
//
// Whole coordinates are the middles of pixels. A segment is one pixel (`penWidth` 1) or two
// (2 and above) thick across its longer axis, both ends included. Long segments are placed to
// an eighth of a pixel at the edges of the picture. Coordinates may lie anywhere; a segment
// with one that is not finite is left out. Pictures of more than 8192 pixels a side are cut
// there.
void RasteriseSegments(std::uint32_t* pixels, int stridePixels, int width, int height,
                       const Rect& clip, const Segment* segments, int count, Colour colour,
                       int penWidth);

}  // namespace platform
