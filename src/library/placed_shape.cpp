#include "library/placed_shape.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "library/outline.h"
#include "text/code_writer.h"

namespace morva {

namespace {

constexpr double kLeastSlot = 1e-6;  // a narrower slot is not cut

}  // namespace

bool IsCut(const SketchObject& object) {
  return object.type >= kTypeLine && object.type <= kTypeSlot;
}

SketchObject PlacedObject(const SketchObject& object, const ShapePlace& place) {
  SketchObject placed = object;
  RotatePoint(place.x, place.y, object.x * place.scaleX, object.y * place.scaleY, place.rotation,
              placed.x, placed.y);
  placed.size = object.size * place.scaleX;
  placed.size2 = object.size2 * place.scaleY;
  placed.angle = object.angle + place.rotation;
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
  for (const SketchObject& object :
       std::span(shape.objects).first(static_cast<std::size_t>(shape.count))) {
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
  for (const SketchObject& object :
       std::span(shape.objects).first(static_cast<std::size_t>(shape.count))) {
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
