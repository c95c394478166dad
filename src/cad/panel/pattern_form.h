// The full form of a pattern. It lays out a shape or the selected object as plain sketch objects
// and refuses what does not fit whole.
#pragma once

#include "library/sketch_object.h"

namespace morva {

// False: refused, the status says why and nothing changed.
bool ApplySketchPattern(bool isRectangular);
// Opens the panel, 1 circular and 2 rectangular; `alone`: the full form without the quick one.
void OpenPatternPanel(int panelMode, bool alone);

// Whether the form of this panel mode repeats the selected object rather than a shape.
bool PatternSourceIsSelection(int panelMode);
// The object that CREATE SKETCH PATTERN repeats while the source is the selected geometry: about
// its own centre, with the sizes of the form, in the drawing's unit. False: it would take none.
bool SelectedPatternItem(int panelMode, SketchObject& item);
// The directions that CREATE takes for the rows of a grid, in degrees.
struct PatternDirections {
  double x = 0;
  double y = 90;
};
PatternDirections SketchPatternDirections();
// The other source for the shown panel; the selected object's sizes go into the form.
void TogglePatternSource();
// Captions and states of its two keys.
void RefreshPatternForm();

// The pictures above the fields show the selected object and the directions too.
void RepaintPatternPictures();

// The shapes of both lists: the form's own, then the saved ones.
void FillPatternLists();

void RegisterPatternForm();
void ResetPatternForm();

}  // namespace morva
