// The full form of a pattern. It lays out a shape or the selected object as plain sketch objects
// and refuses what does not fit whole.
#pragma once

namespace morva {

// False: refused, the status says why and nothing changed.
bool ApplySketchPattern(bool isRectangular);
// Opens the panel, 1 circular and 2 rectangular; `alone`: the full form without the quick one.
void OpenPatternPanel(int panelMode, bool alone);

// Whether the form of this panel mode repeats the selected object rather than a shape.
bool PatternSourceIsSelection(int panelMode);
// The other source for the shown panel; the selected object's sizes go into the form.
void TogglePatternSource();
// Captions and states of its two keys.
void RefreshPatternForm();

// The shapes of both lists: the form's own, then the saved ones.
void FillPatternLists();

void RegisterPatternForm();
void ResetPatternForm();

}  // namespace morva
