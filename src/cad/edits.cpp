#include "cad/edits.h"

namespace morva {

void ApplyGeometryFields() {}
void ExtendOrTrim(bool) {}
void SplitLine() {}
void DuplicateObject() {}
void DeleteGeometry() {}
void CopyGeometry() {}
void CutGeometry() {}
void PasteGeometry() {}
void ToggleGeometryHidden() {}
void ToggleGeometryLocked() {}
void ScaleGeometry() {}
bool Revolve(double, int) { return false; }
void ClearSketch() {}
void RegisterEdits() {}
void ResetEdits() {}

}  // namespace morva
