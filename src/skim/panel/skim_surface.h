// The guided skim as a surface: its window with the form and the matrix, beside the toolpath view.
#pragma once

namespace morva {

void RegisterSkimSurface();
void ResetSkimSurface();

}  // namespace morva
