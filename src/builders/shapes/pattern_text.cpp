#include "builders/shapes/pattern_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>

#include "app/limits.h"
#include "cad/model/cad_form.h"
#include "documents/block_labels.h"
#include "library/extents.h"
#include "library/motion_text.h"
#include "text/code_writer.h"
#include "text/codetext.h"
#include "text/length_units.h"

namespace morva {

namespace {

constexpr int kAngleDecimals = 1;
constexpr int kPointDecimals = 3;
constexpr int kFeedDecimals = 1;  // of a cut; a plunge has one more
constexpr char16_t kCircularWords[] =
    u"Enter positive item size, pattern diameter, and feed, with Safe Z above cutting depth.";
constexpr char16_t kGridWords[] =
    u"Enter positive item dimensions and feed, with Safe Z above cutting depth.";
constexpr char16_t kGridLimitWords[] =
    u"This pattern exceeds the audited limit of 400 generated items. Reduce Rows or Columns to "
    u"keep the program reviewable and avoid unsafe oversized output.";

// The fields that a page of the form reads, in the order of their numbers.
template <int kNumbers>
std::array<BuilderField, kNumbers> FieldsOf(int page) {
  std::array<BuilderField, kNumbers> fields;
  for (const FormRow& row : kCadForm.rows) {
    const bool number = row.kind == RowKind::Number || row.kind == RowKind::Count;
    if (!number || row.value < 0 || row.value >= kNumbers || !(row.pages & PageBit(page))) continue;
    fields[static_cast<std::size_t>(row.value)] = {.label = row.label,
                                                   .start = row.start,
                                                   .fallback = row.fallback.inch,
                                                   .kind = row.kind,
                                                   .follows = row.follows,
                                                   .decimals = row.decimals};
  }
  return fields;
}

// An item at its place.
struct Place {
  double x = 0;
  double y = 0;
  double turn = 0;
};

// The fields that both forms have, with what is cut.
struct ItemCut {
  PatternItem item;
  double size = 0;
  double width = 0;
  bool metric = false;
  CutData cut;
};

ItemCut ItemCutOf(const CircularValues& values) {
  const double* n = values.numbers;
  return {values.item,
          n[kCircularSize],
          n[kCircularWidth],
          values.metric,
          {n[kCircularDepth], n[kCircularFeed], n[kCircularSafeZ]}};
}

// Sizes of a grid's item count by magnitude.
ItemCut ItemCutOf(const GridValues& values) {
  const double* n = values.numbers;
  return {values.item,
          std::fabs(n[kGridSize]),
          std::fabs(n[kGridWidth]),
          values.metric,
          {n[kGridDepth], n[kGridFeed], n[kGridSafeZ]}};
}

ClosedShape BuiltInAt(const ItemCut& item, const Place& place) {
  return {item.item.shape, place.x, place.y, item.size, item.width, place.turn};
}

ShapePlace SavedAt(const ItemCut& item, const Place& place) {
  const double unit = item.metric ? kMmPerInch : 1;
  return {place.x, place.y, place.turn, unit, unit};
}

void EmitItem(CodeWriter& out, const ItemCut& item, const Place& place) {
  if (item.item.saved) {
    EmitSavedShape(out, *item.item.saved, SavedAt(item, place), item.cut);
  } else {
    EmitClosedShape(out, BuiltInAt(item, place), item.cut);
  }
}

void AddItem(Picture& picture, const ItemCut& item, const Place& place, int part,
             Ink ink = Ink::Feature) {
  if (item.item.saved) {
    AddSavedShape(picture, *item.item.saved, SavedAt(item, place), ink, part);
  } else {
    AddClosedShape(picture, BuiltInAt(item, place), ink, part);
  }
}

// Room for all items at once, as far as the first one tells: a large text that grows by and by is
// copied again and again.
void ReserveItems(CodeWriter& out, std::size_t first, int items) {
  const std::size_t item = out.text.size() - first;
  const std::size_t others = static_cast<std::size_t>(items) * (item + item / 16);
  out.text.reserve(std::min(out.text.size() + others, out.most));
}

CirclePlaces PlacesOf(const CircularValues& values) {
  const double* n = values.numbers;
  return {n[kCircularX], n[kCircularY], n[kCircularDiameter], n[kCircularStart],
          static_cast<double>(CircularQuantity(values))};
}

Place CircularPlace(const CircularValues& values, int i, double& angle) {
  const ItemPlace at = PlaceOnCircle(PlacesOf(values), i);
  angle = at.angle;
  return {at.x, at.y, ItemTurn(values.orientation, values.numbers[kCircularTurn], at.angle)};
}

// Columns or rows, which come from a field of 32 bits.
int AtLeastOne(double count) { return WholeWithin(count, 1, std::numeric_limits<int>::max()); }

// The grid, of which at most 400 items are cut and shown.
GridPlaces PlacesOf(const GridValues& values) {
  const double* n = values.numbers;
  GridPlaces grid;
  grid.x = n[kGridX];
  grid.y = n[kGridY];
  grid.columns = AtLeastOne(n[kGridColumns]);
  grid.stepX = n[kGridStepX];
  grid.stepY = n[kGridStepY];
  grid.directionX = values.directionX;
  grid.directionY = values.directionY;
  return grid;
}

int ShownItems(const GridValues& values) {
  return static_cast<int>(std::min<std::int64_t>(GridCount(values), kMaxGridItems));
}

Place GridPlace(const GridValues& values, int i) {
  const ItemPlace at = PlaceInGrid(PlacesOf(values), i);
  return {at.x, at.y, values.numbers[kGridTurn]};
}

std::size_t RoomOf(const PatternItem& item, int items) {
  const int objects = item.saved ? std::max(item.saved->count, 1) : 1;
  return static_cast<std::size_t>(items) * static_cast<std::size_t>(objects) * kObjectTextUnits +
         kPatternFrameUnits - 1;
}

bool IsSlot(const PatternItem& item) { return !item.saved && item.shape == ItemShape::Slot; }

// How far a built-in item reaches across its length.
double HeightOf(const ItemCut& item) {
  const bool square = item.item.shape == ItemShape::Square;
  return square || std::fabs(item.width) < kLeastCut ? item.size : std::fabs(item.width);
}

// About the item's own origin, which need not be its middle.
Extents ExtentsOf(const ItemCut& item) {
  const double x = item.size / 2;
  const double y = HeightOf(item) / 2;
  Extents extents{-x, -y, x, y};
  if (!item.item.saved) return extents;
  ObjectExtents(item.item.saved->objects, item.item.saved->count, extents);
  const double unit = item.metric ? kMmPerInch : 1;
  return {extents.minX * unit, extents.minY * unit, extents.maxX * unit, extents.maxY * unit};
}

// How far the item reaches from its origin, however it is turned.
double ReachOf(const ItemCut& item) {
  const Extents extents = ExtentsOf(item);
  if (!item.item.saved && item.item.shape == ItemShape::Circle) return extents.maxX;
  return std::hypot(std::max(std::fabs(extents.minX), std::fabs(extents.maxX)),
                    std::max(std::fabs(extents.minY), std::fabs(extents.maxY)));
}

bool HasWidth(const ItemCut& item) {
  const ItemShape shape = item.item.shape;
  return item.item.saved || (shape != ItemShape::Circle && shape != ItemShape::Square);
}

// From one point of an item to another, about its own origin.
void AddAlong(Picture& picture, const Place& place, const PicturePoint& from,
              const PicturePoint& to, int row) {
  PictureDimension along{.way = DimensionWay::Along, .row = row};
  RotatePoint(place.x, place.y, from.x, from.y, place.turn, along.x0, along.y0);
  RotatePoint(place.x, place.y, to.x, to.y, place.turn, along.x1, along.y1);
  AddDimension(picture, along);
}

// The length of an item, above or below it.
void AddItemLength(Picture& picture, const ItemCut& item, const Place& place, bool above) {
  if (!item.item.saved && item.item.shape == ItemShape::Circle) {
    AddDimension(
        picture,
        {.way = DimensionWay::Diameter, .x0 = place.x, .y0 = place.y, .radius = item.size / 2});
    return;
  }
  const Extents extents = ExtentsOf(item);
  const double y = above ? extents.maxY : extents.minY;
  AddAlong(picture, place, {extents.minX, y}, {extents.maxX, y}, above ? 1 : -1);
}

// The width of an item that has one, at its left end.
void AddItemWidth(Picture& picture, const ItemCut& item, const Place& place) {
  const Extents extents = ExtentsOf(item);
  if (!HasWidth(item) || !(extents.maxY > extents.minY)) return;
  AddAlong(picture, place, {extents.minX, extents.minY}, {extents.minX, extents.maxY}, 1);
}

// Numbers stand in items that are large in the picture, and beside small ones, which they would
// cover.
struct Numbers {
  double clear = 0;  // of the item that stays free; 0: they stand in it
};

// Of the pattern that a large item takes; one that runs to a point has less room inside.
constexpr double kLeastShare = 1.0 / 6;
constexpr double kLeastPointedShare = 1.0 / 3;

Numbers NumbersFor(const ItemCut& item, double width, double height) {
  const double reach = ReachOf(item);
  const double whole = std::max(width, height) + 2 * reach;
  const ItemShape shape = item.item.shape;
  const bool pointed = shape == ItemShape::Triangle || shape == ItemShape::Diamond;
  const double least = whole * (pointed ? kLeastPointedShare : kLeastShare);
  // The narrow side of a rectangle or slot has to hold the number.
  const bool narrow = HasWidth(item) && !pointed;
  const double room = narrow ? std::min(std::fabs(item.size), HeightOf(item)) : 2 * reach;
  return {!item.item.saved && room >= least ? 0 : reach};
}

// Away from the middle of a circle; above an item of a grid.
LabelSide SideAway(double x, double y) {
  if (std::fabs(x) > std::fabs(y)) return x > 0 ? LabelSide::Right : LabelSide::Left;
  return y < 0 ? LabelSide::Below : LabelSide::Above;
}

void AddNumber(Picture& picture, const Place& place, int item, const Numbers& numbers,
               LabelSide side) {
  LabelSpec spec{.part = item};
  if (numbers.clear > 0) {
    spec.side = side;
    spec.clear = numbers.clear;
  }
  AddLabel(picture, {place.x, place.y}, IntegerText(item + 1), spec);
}

// The spacings of a grid along X and Y, below it and to its right.
void AddUprightSteps(Picture& picture, const GridPlaces& grid, int columns, int rows) {
  if (columns > 1) {
    AddDimension(picture, {.way = DimensionWay::Across,
                           .x0 = grid.x,
                           .y0 = grid.y,
                           .x1 = grid.x + grid.stepX,
                           .y1 = grid.y,
                           .row = -1,
                           .outside = true,
                           .times = columns - 1});
  }
  if (rows > 1) {
    const double right = std::max(grid.x, grid.x + (columns - 1) * grid.stepX);
    AddDimension(picture, {.way = DimensionWay::Upright,
                           .x0 = right,
                           .y0 = grid.y,
                           .x1 = right,
                           .y1 = grid.y + grid.stepY,
                           .row = 1,
                           .outside = true,
                           .times = rows - 1});
  }
}

// The spacings along other directions, from middle to middle of two items.
void AddTurnedSteps(Picture& picture, const GridPlaces& grid, int columns, int rows) {
  const auto add = [&](int from, int to, int times) {
    const ItemPlace a = PlaceInGrid(grid, from);
    const ItemPlace b = PlaceInGrid(grid, to);
    AddDimension(picture, {.way = DimensionWay::Along,
                           .x0 = a.x,
                           .y0 = a.y,
                           .x1 = b.x,
                           .y1 = b.y,
                           .row = -1,
                           .times = times});
  };
  if (columns > 1) add(0, 1, columns - 1);
  if (rows > 1) add(grid.columns - 1, 2 * grid.columns - 1, rows - 1);
}

}  // namespace

std::span<const char16_t* const> PatternItems() { return kItemWords; }
std::span<const char16_t* const> PatternOrientations() { return kOrientationWords; }
std::span<const BuilderField> CircularFields() {
  static const auto fields = FieldsOf<kCircularNumbers>(kReadCircle);
  return fields;
}
std::span<const BuilderField> GridFields() {
  static const auto fields = FieldsOf<kGridNumbers>(kReadGrid);
  return fields;
}

CircularValues CircularOf(const PatternItem& item, Orientation orientation,
                          const FormValues& form) {
  CircularValues values{item, orientation, form.metric};
  std::copy_n(form.numbers, kCircularNumbers, values.numbers);
  return values;
}

GridValues GridOf(const PatternItem& item, const FormValues& form) {
  GridValues values{item, form.metric};
  std::copy_n(form.numbers, kGridNumbers, values.numbers);
  return values;
}

namespace {

// An item lies about its middle, so that its code has half of its size.
bool IsSize(double size) { return CutsPrinted(size / 2, kPointDecimals); }

bool IsAbove(double z, double other) {
  return Printed(z, kPointDecimals) > Printed(other, kPointDecimals);
}

}  // namespace

BuilderFault CheckCircular(const CircularValues& values) {
  const double* n = values.numbers;
  if (!IsSize(n[kCircularSize])) return {kCircularWords, kCircularSize};
  if (!CutsPrinted(n[kCircularFeed], kFeedDecimals)) return {kCircularWords, kCircularFeed};
  if (!IsAbove(n[kCircularSafeZ], n[kCircularDepth])) return {kCircularWords, kCircularSafeZ};
  if (IsSlot(values.item) && !IsSize(n[kCircularWidth])) {
    return {kCircularWords, kCircularWidth};
  }
  return {};
}

BuilderFault CheckGrid(const GridValues& values) {
  if (GridCount(values) > kMaxGridItems) return {kGridLimitWords, kGridColumns};
  const double* n = values.numbers;
  if (!IsSize(std::fabs(n[kGridSize]))) return {kGridWords, kGridSize};
  if (!CutsPrinted(n[kGridFeed], kFeedDecimals)) return {kGridWords, kGridFeed};
  if (!IsAbove(n[kGridSafeZ], n[kGridDepth])) return {kGridWords, kGridSafeZ};
  if (IsSlot(values.item) && !IsSize(std::fabs(n[kGridWidth]))) return {kGridWords, kGridWidth};
  return {};
}

int CircularQuantity(const CircularValues& values) {
  return WholeWithin(values.numbers[kCircularQuantity], 1, kMaxCircularItems);
}

std::int64_t GridCount(const GridValues& values) {
  const std::int64_t columns = AtLeastOne(values.numbers[kGridColumns]);
  return columns * AtLeastOne(values.numbers[kGridRows]);
}

void WriteCircular(const CircularValues& values, CodeWriter& out) {
  PutHead(out, kCircularLabel, values.metric);
  const ItemCut item = ItemCutOf(values);
  const int quantity = CircularQuantity(values);
  const std::size_t first = out.text.size();
  for (int i = 0; i < quantity; ++i) {
    double angle = 0;
    const Place place = CircularPlace(values, i, angle);
    if (i == 1) ReserveItems(out, first, quantity);
    PutInteger(out, u"(PATTERN ", i + 1);
    Put(out, u"  ANGLE ", angle, kAngleDecimals);
    Line(out, u")");
    EmitItem(out, item, place);
  }
  Line(out, u"(END CIRCULAR PATTERN)");
}

void WriteGrid(const GridValues& values, CodeWriter& out) {
  PutHead(out, kRectangularLabel, values.metric);
  const ItemCut item = ItemCutOf(values);
  const int columns = PlacesOf(values).columns;
  const int count = ShownItems(values);
  const std::size_t first = out.text.size();
  for (int i = 0; i < count; ++i) {
    if (i == 1) ReserveItems(out, first, count);
    PutInteger(out, u"(ROW ", i / columns + 1);
    PutInteger(out, u" COL ", i % columns + 1);
    Line(out, u")");
    EmitItem(out, item, GridPlace(values, i));
  }
  Line(out, u"(END RECTANGULAR PATTERN)");
}

std::size_t CircularRoom(const CircularValues& values) {
  return RoomOf(values.item, CircularQuantity(values));
}

std::size_t GridRoom(const GridValues& values) { return RoomOf(values.item, ShownItems(values)); }

void DrawCircular(const CircularValues& values, Picture& picture) {
  const ItemCut item = ItemCutOf(values);
  const CirclePlaces circle = PlacesOf(values);
  const int quantity = CircularQuantity(values);
  const double across = std::fabs(circle.diameter);
  const Numbers numbers = NumbersFor(item, across, across);
  for (int i = 0; i < quantity; ++i) {
    double angle = 0;
    const Place place = CircularPlace(values, i, angle);
    AddItem(picture, item, place, i);
    if (quantity <= kMaxNumberedItems) {
      AddNumber(picture, place, i, numbers, SideAway(place.x - circle.x, place.y - circle.y));
    }
    if (i > 0) continue;
    AddItemLength(picture, item, place, false);
    AddItemWidth(picture, item, place);
  }
  const double radius = across / 2;
  AddCross(picture, {circle.x, circle.y}, Ink::Construction);
  if (!(radius > 0)) return;
  AddCircle(picture, {circle.x, circle.y}, radius, Ink::Construction);
  // Between two items, so that the leader crosses none.
  AddDimension(picture, {.way = DimensionWay::Diameter,
                         .x0 = circle.x,
                         .y0 = circle.y,
                         .radius = radius,
                         .leader = circle.start + 180.0 / circle.quantity});
}

void DrawGrid(const GridValues& values, Picture& picture) {
  const ItemCut item = ItemCutOf(values);
  const GridPlaces grid = PlacesOf(values);
  const int count = ShownItems(values);
  const int columns = std::min(grid.columns, count);
  const int rows = (count + columns - 1) / columns;
  Numbers numbers =
      NumbersFor(item, std::fabs(grid.stepX) * (columns - 1), std::fabs(grid.stepY) * (rows - 1));
  // Before the next row, where items lie over each other.
  if (rows > 1) numbers.clear = std::min(numbers.clear, std::fabs(grid.stepY) / 2);
  for (int i = 0; i < count; ++i) {
    const Place place = GridPlace(values, i);
    AddItem(picture, item, place, i);
    if (count <= kMaxNumberedItems) AddNumber(picture, place, i, numbers, LabelSide::Above);
    // Away from the spacings, which stand below and to the right: in the last row.
    if (i == count - columns) AddItemWidth(picture, item, place);
    if (i == count - 1) AddItemLength(picture, item, place, true);
  }
  if (values.directionX == 0 && values.directionY == 90) {
    AddUprightSteps(picture, grid, columns, rows);
  } else {
    AddTurnedSteps(picture, grid, columns, rows);
  }
}

void DrawGridItems(const GridValues& values, Ink ink, std::u16string_view words, Picture& picture) {
  const ItemCut item = ItemCutOf(values);
  const int count = ShownItems(values);
  for (int i = 0; i < count; ++i) AddItem(picture, item, GridPlace(values, i), i, ink);
  const Place last = GridPlace(values, count - 1);
  AddLabel(picture, {last.x, last.y}, words, {.side = LabelSide::Above, .clear = ReachOf(item)});
}

}  // namespace morva
