// The parts of owner drawing that other files of the shell share.
#pragma once

#include <string_view>

#include "platform/canvas.h"
#include "platform/events.h"

namespace morva {

// The visible mark of the keyboard: a bright frame inside the edge.
void DrawFocusMark(platform::Canvas& canvas, const platform::Rect& area);

// One row as every list looks: ground, accent bar where selected, text from `left` pixels on,
// mark of the keyboard.
void DrawListRow(const platform::DrawState& state, int left, std::u16string_view text,
                 platform::Colour colour, platform::Canvas& canvas);

}  // namespace morva
