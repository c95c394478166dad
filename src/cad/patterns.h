// Sketch patterns: the quick panels and the full form. Results are plain sketch objects.
#pragma once

namespace morva {

void QuickCircularPattern();
void QuickGridPattern();
// The full form. False: refused, the status says why and nothing changed.
bool ApplySketchPattern(bool isRectangular);
// Opens the panel, 1 circular and 2 rectangular.
void OpenPatternPanel(int panelMode);
// The direction picks, 0xB2E to 0xB31, and the click that ends one: drawing units.
void PickPatternDirection(int command);
bool PatternDirectionClick(double x, double y);

void RegisterPatterns();
void ResetPatterns();

}  // namespace morva
