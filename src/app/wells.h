// Wells: the lists, fields and views that lie sunk into a ground, each with a thin frame.
#pragma once

#include "app/palette.h"
#include "platform/canvas.h"
#include "platform/control.h"

namespace morva {

// What is written in a field or a log, on its dark ground.
inline constexpr platform::ControlColours kWellColours{kMainText, kOutputBackground, false};

// One pixel around `place`: bright where it has the keyboard, else in `idle`. Nothing for an
// empty place.
void FrameWell(platform::Canvas& canvas, const platform::Rect& place, bool focused,
               platform::Colour idle = kControlLine);

}  // namespace morva
