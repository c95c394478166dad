// The builders of circular and rectangular patterns: modes 7 and 8. Their fields stand on the form
// of the drawing workspace, in the drawing's unit; their code and records have the application's.
#pragma once

#include "documents/builder_table.h"

namespace morva {

extern const Builder kCircularBuilder;
extern const Builder kGridBuilder;

void RegisterPatternBuilders();  // behind the drawing workspace

}  // namespace morva
