// Edits of the selected geometry: the Selected Geometry buttons, lock and hide. A locked selection
// is refused; a refusal changes nothing at all.
//
// The commands of the six Selected Geometry buttons check the selection and take the undo step.
// Apply, Extend and Trim, which can run alone, take one of their own besides; Split, Duplicate
// and Delete take none. Everything else here takes exactly one.
#pragma once

#include "app/command_ids.h"
#include "library/sketch_object.h"

namespace morva {

// The fields of "Selected Geometry", each with the number of the object that it shows.
struct GeometryField {
  int id = 0;
  double SketchObject::*number = nullptr;
};
inline constexpr GeometryField kGeometryFields[] = {{kIdCadX, &SketchObject::x},
                                                    {kIdCadY, &SketchObject::y},
                                                    {kIdCadSize, &SketchObject::size},
                                                    {kIdCadSize2, &SketchObject::size2},
                                                    {kIdCadAngle, &SketchObject::angle}};

// The five fields as the object's numbers; a field without a number leaves its own.
void ApplyGeometryFields();
// By the amount field: a line at its end, the other shapes about their centre.
void ExtendOrTrim(bool extend);
// A line into two at its middle; a message box for another type.
void SplitLine();
void DuplicateObject();       // the selected object alone
void ToggleGeometryHidden();  // these two of locked objects as well
void ToggleGeometryLocked();
void ClearSketch();

void RegisterEdits();  // clipboard, scale and revolve too
void ResetEdits();

}  // namespace morva
