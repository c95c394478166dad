#include "cad/dimensions.h"

namespace morva {

void EnterDimensionMode(bool) {}
void ShowDimensionValue() {}
bool ApplyDimension(int, int, double) { return false; }
bool DimensionPress(const platform::PointerEvent&) { return false; }
void PaintDimensions(platform::Canvas&) {}
void RegisterDimensions() {}
void ResetDimensions() {}

}  // namespace morva
