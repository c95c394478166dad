// The panel of the shape builder: modes 5 and 6, the quick keys above its fields, and the list of
// built-in and saved shapes that picks the fields.
#pragma once

#include "app/mode_table.h"
#include "documents/builder_table.h"

namespace morva {

extern const ModeRow kShapesMode;
extern const ModeRow kSlotMode;
extern const Builder kShapeBuilder;

// The row of the list that is chosen, -1 for none: 0 to 6 are built in, the saved shapes follow.
int ChosenShape();
// As the user's choice in the list: its fields start anew. Nothing for the row that is chosen.
void ChooseShape(int row);

void RegisterShapeBuilder();
void ResetShapeBuilder();

}  // namespace morva
