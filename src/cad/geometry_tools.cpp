#include "cad/geometry_tools.h"

namespace morva {

void StartGeometryTool(int) {}
bool GeometryPress(const platform::PointerEvent&) { return false; }
void GeometryHover(const platform::PointerEvent&) {}
void RecomputeConnectivity() {}
void RegisterGeometryTools() {}
void ResetGeometryTools() {}

}  // namespace morva
