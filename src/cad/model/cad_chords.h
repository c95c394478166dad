// Where chords of the CAD workspace hold.
#pragma once

#include "app/chords.h"

namespace morva {

inline constexpr ChordPlace kCadChords{u"drawing workspace"};  // any control of the workspace
inline constexpr ChordPlace kDrawingChords{
    u"drawing workspace, but its fields"};              // those that take no text
inline constexpr ChordPlace kCanvasChords{u"drawing"};  // the drawing itself

}  // namespace morva
