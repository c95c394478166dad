// The sketch's own clipboard: copied objects, kept in the unit they were copied in.
//
// It outlives drawings and programs, so that geometry can be carried from one to another.
#pragma once

#include "library/sketch_object.h"

namespace morva {

// Right and up by the offset that keeps a copy apart from its source: 0.2 inch or 5 mm.
void ShiftByOffset(SketchObject& object);
void RegisterSketchClipboard();
void EmptySketchClipboard();

}  // namespace morva
