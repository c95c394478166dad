// One drag of sketch geometry: by its body, or by one of its handles, which reshapes it.
//
// Every step is computed anew from the objects as they were at the press, so that rounding does
// not add up. The first movement takes the drag's one undo step.
#pragma once

#include "library/sketch_object.h"

namespace morva {

inline constexpr int kWholeObject = -1;

// The handle of an object at a canvas pixel, within 10 pixels: the number of its snap point, or
// kWholeObject for a circle's centre, which moves it. False: none there. A circle's outline is
// handle 1 all around; a line has its two ends, other shapes every snap point but the anchor.
bool HandleAt(const SketchObject& object, int px, int py, int& handle);

// Takes hold of the selected object at a drawing position. With a group, or several objects
// marked, it is the whole that moves, whatever the handle.
void BeginGeometryDrag(int handle, double x, double y);
// The cursor is at this drawing position; `bypassSnap` while Alt is held.
void DragGeometryTo(double x, double y, bool bypassSnap);
// Lets go, with the log line where something moved.
void EndGeometryDrag();
// Lets go and takes back what moved.
void UndoGeometryDrag();
bool GeometryDragging();
void ForgetGeometryDrag();  // as at start

}  // namespace morva
