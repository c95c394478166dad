// One object of a sketch or of a saved shape: anchor, size and angle, never a list of points.
#pragma once

#include <cstdint>

#include "documents/feature_settings.h"

namespace morva {

// What a second size is called where sizes are typed.
inline constexpr char16_t kSecondSizeWords[] = u"Height / slot width";

enum SketchType : std::int32_t {
  kTypeLine = 0,
  kTypeRectangle = 1,
  kTypeCircle = 2,
  kTypeSlot = 3,
  kTypeWorkPoint = 4,  // construction only, as the axis: no code
  kTypeWorkAxis = 5,
};

// Lengths in the sketch's own unit, the angle in degrees counter-clockwise from +X. The item
// layout of a settings record.
struct SketchObject {
  std::int32_t type = 0;
  std::int32_t group = 0;  // 0: none
  double x = 0;            // line and axis: start; the others: centre
  double y = 0;
  double size = 0;   // length, width, diameter, or a slot from tip to tip
  double size2 = 0;  // a rectangle's height, a slot's width
  double angle = 0;  // of a line, axis, rectangle or slot
  bool operator==(const SketchObject&) const = default;
};
static_assert(sizeof(SketchObject) == 48);

// A line or axis, which has two ends.
inline bool HasEnds(const SketchObject& object) {
  return object.type == kTypeLine || object.type == kTypeWorkAxis;
}
// A rectangle or slot, of which `size2` is a size of its own.
inline bool HasTwoSizes(const SketchObject& object) {
  return object.type == kTypeRectangle || object.type == kTypeSlot;
}
// The same place, sizes and angle, whatever the group.
inline bool SameGeometry(const SketchObject& a, const SketchObject& b) {
  return a.type == b.type && a.x == b.x && a.y == b.y && a.size == b.size && a.size2 == b.size2 &&
         a.angle == b.angle;
}
// Into another unit: everything but the angle.
inline void ScaleLengths(SketchObject& object, double factor) {
  object.x *= factor;
  object.y *= factor;
  object.size *= factor;
  object.size2 *= factor;
}
// An object and the item of a settings record that holds it.
inline SketchObject ObjectOf(const FeatureItem& item) {
  return {item.type, item.tag, item.p0, item.p1, item.p2, item.p3, item.p4};
}
inline FeatureItem ItemOf(const SketchObject& object) {
  return {object.type, object.group, object.x, object.y, object.size, object.size2, object.angle};
}

}  // namespace morva
