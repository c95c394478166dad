// The list "Sketch operations": what its lines answer and how they are drawn.
#pragma once

#include "platform/canvas.h"
#include "platform/events.h"

namespace morva {

// The object of a list row, -1 for none.
int OperationObject(int row);
// One row: the eye at its left end, struck through for a hidden object; or the empty face.
void DrawOperationRow(const platform::DrawState& state, platform::Canvas& canvas);

void RegisterOperationsList();

}  // namespace morva
