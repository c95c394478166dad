// Whole toolpaths as smooth lines: many segments of one colour blended into a 32-bit picture.
//
// A pixel takes as much of the colour as the line that covers most of it. So a batch looks the
// same in any order, joints of a polyline are neither thin nor bold, and a stroke that is
// repeated at many depths stays one line. Areas that are covered already cost next to nothing,
// which bounds the time of any batch. One thread at a time: the coverage is kept between calls.
#pragma once

#include <cstdint>

#include "platform/canvas.h"

namespace platform {

inline constexpr double kWidestSmoothPen = 9;  // device pixels

// Blends `colour`, 0xRRGGBB, into `pixels`, rows `stridePixels` apart, inside `clip` and the
// picture.
//
// Whole coordinates are the middles of pixels. A segment is `penWidth` device pixels thick, 1 to
// kWidestSmoothPen, and reaches half of that beyond its ends. Segments of 64 pixels and more are
// placed to an eighth of a pixel. Coordinates may lie anywhere; a segment with one that is not
// finite is left out. Pictures of more than 8192 pixels a side are cut there.
void BlendSegments(std::uint32_t* pixels, int stridePixels, int width, int height, const Rect& clip,
                   const Segment* segments, int count, Colour colour, double penWidth);

}  // namespace platform
