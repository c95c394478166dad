// Click tools on geometry: Join, Trim and Tangent, and the connectivity that they restore.
#pragma once

#include "platform/events.h"

namespace morva {

void StartGeometryTool(int tool);
// A left press with a geometry tool active, in canvas pixels. True: used.
bool GeometryPress(const platform::PointerEvent& event);
// The hover preview of Trim. Changes no geometry.
void GeometryHover(const platform::PointerEvent& event);
// Group numbers of all visible, unlocked objects anew: touching outlines make one part.
void RecomputeConnectivity();

void RegisterGeometryTools();
void ResetGeometryTools();

}  // namespace morva
