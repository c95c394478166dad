// Saved shapes where they are cut: moved, scaled and turned, as program text and as a picture.
//
// Text and picture are made of the same placed objects, so that the picture is what is cut. Work
// points and axes cut nothing and are left out.
#pragma once

#include <cstddef>

#include "forms/picture.h"
#include "library/motion_text.h"
#include "library/shapes.h"

namespace morva {

struct CodeWriter;

struct ShapePlace {
  double x = 0, y = 0;  // of the shape's own origin, in the unit of the program
  double rotation = 0;  // about that origin, degrees counter-clockwise
  double scaleX = 1;    // units of the program for an inch of the shape
  double scaleY = 1;
};

// Lines, rectangles, circles and slots.
bool IsCut(const SketchObject& object);
// False: it holds work points and axes alone, or nothing.
bool CutsAnything(const SavedShape& shape);
// Whether the outline holds together at this place. By other factors along X than along Y a circle
// and what stands at an angle would lose their form; so would a slot that gets shorter than wide.
bool KeepsForm(const SavedShape& shape, const ShapePlace& place);
// Where and how large an object is cut. Anchor and sizes are scaled before the turn: a line by both
// factors, an upright rectangle or slot by those of its sides. A circle has the factor of X.
SketchObject PlacedObject(const SketchObject& object, const ShapePlace& place);
// A rectangle, circle or slot as the closed outline that is cut.
ClosedShape ClosedShapeOf(const SketchObject& object);

// The most units of text that an object takes, whatever its numbers.
inline constexpr std::size_t kObjectTextUnits = 2200;
void EmitSavedShape(CodeWriter& out, const SavedShape& shape, const ShapePlace& place,
                    const CutData& cut);

// What the text of a closed outline cuts. False: nothing was added.
bool AddClosedShape(Picture& picture, const ClosedShape& item, Ink ink, int part = kNoPart);
bool AddSavedShape(Picture& picture, const SavedShape& shape, const ShapePlace& place, Ink ink,
                   int part = kNoPart);

}  // namespace morva
