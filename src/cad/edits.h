// Edits of the selected geometry: the Selected Geometry buttons, clipboard, scale, revolve,
// lock, hide and delete. Each refuses a locked selection and takes one undo step.
#pragma once

namespace morva {

void ApplyGeometryFields();
void ExtendOrTrim(bool extend);
void SplitLine();
void DuplicateObject();
void DeleteGeometry();
void CopyGeometry();
void CutGeometry();
void PasteGeometry();
void ToggleGeometryHidden();
void ToggleGeometryLocked();
void ScaleGeometry();  // reads the panel's factor
// Turns the selected object; copies 0 moves it. False: refused, the status says why.
bool Revolve(double angle, int copies);
void ClearSketch();

void RegisterEdits();
void ResetEdits();

}  // namespace morva
