#include "skim/model/centerline.h"

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

}  // namespace morva
