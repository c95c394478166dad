#include "app/wells.h"

namespace morva {

void FrameWell(platform::Canvas& canvas, const platform::Rect& place, bool focused,
               platform::Colour idle) {
  if (place.left >= place.right) return;
  platform::Pen edge;
  edge.colour = focused ? kBrightAccent : idle;
  FrameArea(canvas,
            platform::Rect{place.left - 1, place.top - 1, place.right + 1, place.bottom + 1}, edge);
}

}  // namespace morva
