// Edits of the selected geometry: the Selected Geometry buttons, clipboard, scale, revolve,
// lock, hide and delete. A locked selection is refused; a refusal changes nothing at all.
//
// The commands of the six Selected Geometry buttons check the selection and take the undo step.
// Apply, Extend and Trim, which can run alone, take one of their own besides; Split, Duplicate
// and Delete take none. Everything else here takes exactly one.
#pragma once

namespace morva {

// The five fields as the object's numbers; a field without a number leaves its own.
void ApplyGeometryFields();
// By the amount field: a line at its end, the other shapes about their centre.
void ExtendOrTrim(bool extend);
// A line into two at its middle; a message box for another type.
void SplitLine();
void DuplicateObject();  // the selected object alone
// The selected part and all marked objects but the locked ones; the last object is selected.
void DeleteGeometry();
void CopyGeometry();  // the selected part
void CutGeometry();   // what is stored is what goes: the part without its locked members
void PasteGeometry();
void ToggleGeometryHidden();  // these two of locked objects as well
void ToggleGeometryLocked();
// The selected part about the selected object's anchor; reads the panel's factor.
void ScaleGeometry();
// Turns the selected object alone about tools.pivotX and pivotY; copies 0 moves it, else copy k
// is turned by k times the angle, in degrees. False: refused, the status says why.
bool Revolve(double angle, int copies);
void ClearSketch();

void RegisterEdits();
void ResetEdits();

}  // namespace morva
