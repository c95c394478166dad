// Sketch objects as reusable shapes.
#pragma once

namespace morva {

// The "Save shape" command: up to 64 objects of the live sketch, about the centre of their
// extents and in inches, under the name in the name box. A shape of that name is replaced.
void SaveDrawingAsShape();

void RegisterSaveShape();

}  // namespace morva
