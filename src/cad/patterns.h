// Sketch patterns: the quick panels and the full form. Results are plain sketch objects.
//
// The quick patterns repeat the selected object and stop where the sketch is full. The form
// lays out a shape or the selected object and refuses what does not fit whole.
#pragma once

namespace morva {

// The selected object around a centre: it becomes the first instance. Reads the panel.
void QuickCircularPattern();
// The selected object in columns and rows: it keeps its place.
void QuickGridPattern();
// The full form. False: refused, the status says why and nothing changed.
bool ApplySketchPattern(bool isRectangular);
// Opens the panel, 1 circular and 2 rectangular.
void OpenPatternPanel(int panelMode);
// The direction picks, 0xB2E to 0xB31, and the click that ends one: drawing units. True: an
// edge was under the click and its direction stands in the field.
void PickPatternDirection(int command);
bool PatternDirectionClick(double x, double y);

// Whether the form of this panel mode repeats the selected object rather than a shape.
bool PatternSourceIsSelection(int panelMode);
// The other source for the shown panel; the selected object's sizes go into the form.
void TogglePatternSource();
// Rows of the form's lists, captions and states of its two keys.
void RefreshPatternForm();

void RegisterPatterns();
void ResetPatterns();

}  // namespace morva
