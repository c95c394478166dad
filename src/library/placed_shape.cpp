#include "library/placed_shape.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "library/outline.h"
#include "text/code_writer.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr double kLeastSlot = 1e-6;  // a narrower slot is not cut

std::span<const SketchObject> ObjectsOf(const SavedShape& shape) {
  return std::span(shape.objects).first(static_cast<std::size_t>(shape.count));
}

bool StandsUpright(const SketchObject& object) {
  return HasTwoSizes(object) && ExactCosine(object.angle) == 0;
}

// The end of a line goes where both factors put it.
void StretchLine(const SketchObject& object, const ShapePlace& place, SketchObject& placed) {
  double endX = 0;
  double endY = 0;
  LineEndPoint(object, endX, endY);
  const double dx = (endX - object.x) * place.scaleX;
  const double dy = (endY - object.y) * place.scaleY;
  placed.size = std::hypot(dx, dy);
  placed.angle = AngleDegrees(dy, dx) + place.rotation;
}

}  // namespace

bool IsCut(const SketchObject& object) {
  return object.type >= kTypeLine && object.type <= kTypeSlot;
}

bool CutsAnything(const SavedShape& shape) { return std::ranges::any_of(ObjectsOf(shape), IsCut); }

bool KeepsForm(const SavedShape& shape, const ShapePlace& place) {
  if (place.scaleX == place.scaleY) return true;
  return std::ranges::none_of(ObjectsOf(shape), [&place](const SketchObject& object) {
    if (!IsCut(object) || object.type == kTypeLine) return false;
    if (object.type == kTypeCircle) return true;
    if (!StandsUpright(object) && ExactSine(object.angle) != 0) return true;
    const SketchObject placed = PlacedObject(object, place);
    return object.type == kTypeSlot && placed.size < placed.size2 && object.size >= object.size2;
  });
}

SketchObject PlacedObject(const SketchObject& object, const ShapePlace& place) {
  SketchObject placed = object;
  RotatePoint(place.x, place.y, object.x * place.scaleX, object.y * place.scaleY, place.rotation,
              placed.x, placed.y);
  placed.size = object.size * place.scaleX;
  placed.size2 = object.size2 * place.scaleY;
  placed.angle = object.angle + place.rotation;
  // Equal factors keep the last bits of the saved numbers.
  if (place.scaleX == place.scaleY) return placed;
  if (HasEnds(object)) StretchLine(object, place, placed);
  if (StandsUpright(object)) {
    placed.size = object.size * place.scaleY;
    placed.size2 = object.size2 * place.scaleX;
  }
  return placed;
}

ClosedShape ClosedShapeOf(const SketchObject& object) {
  ClosedShape item{ItemShape::Circle, object.x, object.y, object.size, object.size2, object.angle};
  if (object.type == kTypeRectangle) item.shape = ItemShape::Rectangle;
  if (object.type == kTypeSlot) item.shape = ItemShape::Slot;
  return item;
}

void EmitSavedShape(CodeWriter& out, const SavedShape& shape, const ShapePlace& place,
                    const CutData& cut) {
  for (const SketchObject& object : ObjectsOf(shape)) {
    if (!IsCut(object)) continue;
    const SketchObject placed = PlacedObject(object, place);
    if (placed.type == kTypeLine) {
      double endX = 0;
      double endY = 0;
      LineEndPoint(placed, endX, endY);
      EmitLine(out, placed.x, placed.y, endX, endY, cut);
    } else {
      EmitClosedShape(out, ClosedShapeOf(placed), cut);
    }
  }
}

bool AddClosedShape(Picture& picture, const ClosedShape& item, Ink ink, int part) {
  const double width = std::fabs(item.width);
  const double height = std::fabs(item.height);
  if (item.shape == ItemShape::Circle) {
    return item.width > 0 && AddCircle(picture, {item.x, item.y}, width / 2, ink, part);
  }
  if (item.shape == ItemShape::Slot) {
    if (!(height >= kLeastSlot)) return false;
    return AddBox(picture,
                  {item.x, item.y, std::max(width, height), height, item.angle, height / 2}, ink,
                  part);
  }
  double xs[4];
  double ys[4];
  const int count = ShapeCorners(item.shape, item.width, item.height, xs, ys);
  PicturePoint corners[4];
  for (int i = 0; i < count; ++i) {
    RotatePoint(item.x, item.y, xs[i], ys[i], item.angle, corners[i].x, corners[i].y);
  }
  const auto points = std::span(corners).first(static_cast<std::size_t>(count));
  return count > 0 && AddLoop(picture, points, ink, part);
}

bool AddSavedShape(Picture& picture, const SavedShape& shape, const ShapePlace& place, Ink ink,
                   int part) {
  bool any = false;
  for (const SketchObject& object : ObjectsOf(shape)) {
    if (!IsCut(object)) continue;
    const SketchObject placed = PlacedObject(object, place);
    if (placed.type == kTypeLine) {
      PicturePoint end;
      LineEndPoint(placed, end.x, end.y);
      any |= AddLine(picture, {placed.x, placed.y}, end, ink, part);
    } else {
      any |= AddClosedShape(picture, ClosedShapeOf(placed), ink, part);
    }
  }
  return any;
}

}  // namespace morva
