// Click tools on geometry: Join, Trim and Tangent, and the picks of a pivot or a direction.
#pragma once

#include "platform/events.h"

namespace morva {

// A number of GeometryTool but 0. Join and Tangent go out from the selected line and start only
// with one; a pick of a pivot or a direction leaves the panel open that it fills.
void StartGeometryTool(int tool);
// The direction picks of a pattern, 2862 to 2865.
void PickPatternDirection(int command);
// A left press with a geometry tool active, in canvas pixels. True: used.
bool GeometryPress(const platform::PointerEvent& event);
// The hover preview of Trim. Changes no geometry.
void GeometryHover(const platform::PointerEvent& event);

void RegisterGeometryTools();
void ResetGeometryTools();

}  // namespace morva
