// What follows from every change of the wizard: the plan, the matrix, the review and the view.
#pragma once

namespace morva {

// Reads the form, where it reads as a usable plan, and shows all that follows from it. Where it
// does not the plan stays as it was before, and what is shown says so. Nothing while the wizard is
// not up.
void RefreshSkimPreview();
// The view alone, from the plan as it is: path, stock, cutter, the field under the keyboard.
void RefreshSkimView();
// The field, a SkimField, that has the keyboard; -1: none. The view marks what it means.
void MarkSkimField(int field);
void ResetSkimPreview();

}  // namespace morva
