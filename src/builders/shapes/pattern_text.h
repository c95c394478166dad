// The pattern builders: one item, built-in or saved, around a circle or on a grid, as program text
// and as a picture, from plain values. Pure functions; lengths are in the unit of the values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "builders/common/builder_field.h"
#include "forms/picture.h"
#include "library/item_places.h"
#include "library/pattern_numbers.h"
#include "library/placed_shape.h"

namespace morva {

struct CodeWriter;

// What is repeated: a built-in shape, or a saved one.
struct PatternItem {
  ItemShape shape = ItemShape::Circle;
  const SavedShape* saved = nullptr;  // null: the built-in shape
};
// "Circle" and so on: the built-in rows of both lists, by ItemShape.
std::span<const char16_t* const> PatternItems();
// How the items of a circle are turned: the rows of the list, by Orientation.
std::span<const char16_t* const> PatternOrientations();

struct CircularValues {
  PatternItem item;
  Orientation orientation = Orientation::Radial;
  bool metric = false;
  double numbers[kCircularNumbers] = {};
};
struct GridValues {
  PatternItem item;
  bool metric = false;
  double numbers[kGridNumbers] = {};
  // Of rows and columns, degrees; those of code are these.
  double directionX = 0;
  double directionY = 90;
};
// What a form says: numbers in the order of the fields.
CircularValues CircularOf(const PatternItem& item, Orientation orientation, const FormValues& form);
GridValues GridOf(const PatternItem& item, const FormValues& form);

// What stands in the rows of the form.
std::span<const BuilderField> CircularFields();
std::span<const BuilderField> GridFields();

inline constexpr char16_t kCircularTitle[] = u"Circular Pattern";
inline constexpr char16_t kGridTitle[] = u"Rectangular Pattern";
BuilderFault CheckCircular(const CircularValues& values);
BuilderFault CheckGrid(const GridValues& values);

// 1 to 120; what the field says beyond is cut.
int CircularQuantity(const CircularValues& values);
// Columns and rows are at least 1. The product may lie above what the check lets pass.
std::int64_t GridCount(const GridValues& values);

void WriteCircular(const CircularValues& values, CodeWriter& out);
// At most 400 items.
void WriteGrid(const GridValues& values, CodeWriter& out);
std::size_t CircularRoom(const CircularValues& values);
std::size_t GridRoom(const GridValues& values);

void DrawCircular(const CircularValues& values, Picture& picture);
void DrawGrid(const GridValues& values, Picture& picture);
// The items alone, without numbers and sizes; these words stand at the last.
void DrawGridItems(const GridValues& values, Ink ink, std::u16string_view words, Picture& picture);

}  // namespace morva
