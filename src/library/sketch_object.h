// One object of a sketch or of a saved shape: anchor, size and angle, never a list of points.
#pragma once

#include <cstdint>

namespace morva {

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
};
static_assert(sizeof(SketchObject) == 48);

}  // namespace morva
