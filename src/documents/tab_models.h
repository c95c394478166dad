// The drawings and plates of an open program: between its record, its companion files and
// the live models of the CAD and plate workspaces.
#pragma once

#include <string_view>

#include "documents/program_tabs.h"

namespace morva {

// Reads ".cadmv", ".platemv" and ".features" beside the program, in this order. What is
// missing or damaged is left out without a word.
void ReadCompanions(std::u16string_view path, ProgramTab& tab);
// Writes ".cadmv" where there are drawings and ".platemv" where there are plates.
bool SaveModels(std::u16string_view path, ProgramTab& tab);
// Frees what the record holds on the heap and leaves it empty.
void FreeTab(ProgramTab& tab);

}  // namespace morva
