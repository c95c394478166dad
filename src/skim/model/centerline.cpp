#include "skim/model/centerline.h"

#include <cmath>

namespace morva {

const char16_t* TakeCenterline(std::span<const SketchObject> objects, const unsigned char* hidden,
                               double factor, SkimCenterline& line) {
  SkimCenterline taken;
  for (std::size_t i = 0; i < objects.size(); ++i) {
    SketchObject object = objects[i];
    if (hidden[i] || object.type == kTypeWorkPoint || object.type == kTypeWorkAxis) continue;
    if (object.type != kTypeLine)
      return u"Custom skim centerlines currently require line segments; trim or replace other "
             u"geometry.";
    if (taken.count == kMaxSkimSegments) return u"Limit the custom path to 95 line segments.";
    ScaleLengths(object, factor);
    taken.segments[taken.count++] = object;
  }
  if (taken.count == 0) return u"Draw at least one line before accepting the skim path.";
  line = taken;
  return nullptr;
}

bool IsSameCenterline(const SkimCenterline& a, const SkimCenterline& b) {
  constexpr double kNear = 1e-6;
  const auto near = [](double one, double other) { return std::abs(one - other) < kNear; };
  if (a.count != b.count) return false;
  for (int i = 0; i < a.count; ++i) {
    const SketchObject& one = a.segments[i];
    const SketchObject& other = b.segments[i];
    if (!near(one.x, other.x) || !near(one.y, other.y) || !near(one.size, other.size) ||
        !near(one.angle, other.angle)) {
      return false;
    }
  }
  return true;
}

}  // namespace morva
