#include "cad/patterns.h"

namespace morva {

void QuickCircularPattern() {}
void QuickGridPattern() {}
bool ApplySketchPattern(bool) { return false; }
void OpenPatternPanel(int) {}
void PickPatternDirection(int) {}
bool PatternDirectionClick(double, double) { return false; }
void RegisterPatterns() {}
void ResetPatterns() {}

}  // namespace morva
