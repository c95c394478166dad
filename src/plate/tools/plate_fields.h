// The fields and lists of the plate's form: what is typed goes into the plate, what the plate says
// comes into them.
#pragma once

namespace morva {

// Writes what differs from the plate; a field that says the same keeps its caret.
void ShowPlateFields();
// The field of a number of PlateValue.
int FieldOfPlateValue(int value);

void RegisterPlateFields();

}  // namespace morva
