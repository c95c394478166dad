// The shape builder: one outline, built-in or saved, as program text and as a picture, from plain
// values. Pure functions; lengths are in the unit of the values.
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "builders/common/builder_field.h"
#include "forms/picture.h"
#include "library/placed_shape.h"

namespace morva {

struct CodeWriter;

// The numbers stand in records of blocks.
enum ShapeKind : int {
  kShapeSquare,
  kShapeRectangle,
  kShapeCircle,
  kShapeTriangle,
  kShapeLine,
  kShapeDiamond,
  kShapeSlot,
  kShapeSaved,
};
inline constexpr int kShapeKinds = 8;

// The fields in the order of the form: a place, two sizes, the cut.
enum ShapeNumber : int {
  kShapeX,
  kShapeY,
  kShapeSize,
  kShapeSize2,
  kShapeDepth,
  kShapeFeed,
  kShapeSafeZ,
};
inline constexpr int kShapeNumbers = 7;

struct ShapeValues {
  int kind = kShapeSquare;
  bool metric = false;
  double numbers[kShapeNumbers] = {};
  const SavedShape* saved = nullptr;  // of kShapeSaved; null writes nothing
};
ShapeValues ShapeOf(int kind, const FormValues& form, const SavedShape* saved);

// The seven fields of a kind, kShapeSaved among them; another kind counts as the first.
std::span<const BuilderField> ShapeFields(int kind);
// A field of a saved shape that nobody has touched: its sizes are the shape's extents. `field` is
// a ShapeNumber.
std::u16string SavedShapeStart(const SavedShape& saved, bool metric, int field);
// Inches of a saved shape in the direction of a size field.
double SavedExtent(const SavedShape& saved, int field);
// Whether a size field still shows this extent, given in inches: in its unit, or as the unit switch
// made it of the other one.
bool ShowsExtent(double extent, double size, bool metric);
// Where the shape stands and how it is scaled: in each direction the field's size to the shape's
// extent, and as saved while the field still shows that extent. Sizes that show the same factor
// scale alike in both directions.
ShapePlace PlaceOfSaved(const ShapeValues& values);

inline constexpr char16_t kShapeTitle[] = u"Shape Builder";
inline constexpr char16_t kNothingToCut[] =
    u"The saved shape holds work points and axes alone: there is nothing to cut.";
BuilderFault CheckShape(const ShapeValues& values);
void WriteShape(const ShapeValues& values, CodeWriter& out);
std::size_t ShapeRoom(const ShapeValues& values);
void DrawShape(const ShapeValues& values, Picture& picture);

}  // namespace morva
