// Where chords of the CAD workspace hold.
#pragma once

#include "app/chords.h"

namespace morva {

inline constexpr ChordPlace kCadChords{};      // any control of the workspace
inline constexpr ChordPlace kDrawingChords{};  // those that take no text
inline constexpr ChordPlace kCanvasChords{};   // the drawing itself

}  // namespace morva
