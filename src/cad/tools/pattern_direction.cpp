#include "cad/tools/pattern_direction.h"

#include <cmath>

#include "app/command_ids.h"
#include "cad/geometry/hits.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/strict_fields.h"
#include "forms/form.h"
#include "library/outline.h"
#include "platform/control.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

// The direction of a rectangle's side: the sides at the ends of its width run across it.
double SideDirection(const SketchObject& box, double x, double y) {
  const double sine = SketchSine(box.angle);
  const double cosine = SketchCosine(box.angle);
  const double lx = (x - box.x) * cosine + (y - box.y) * sine;
  const double ly = (y - box.y) * cosine - (x - box.x) * sine;
  const double toEnd = std::fabs(box.size / 2 - std::fabs(lx));
  const double toLong = std::fabs(box.size2 / 2 - std::fabs(ly));
  return toEnd < toLong ? box.angle + 90 : box.angle;
}

// The direction that a click on this object gives. False: it has none.
bool DirectionOf(const SketchObject& object, double x, double y, double& angle) {
  switch (object.type) {
    case kTypeCircle:
      angle = AngleDegrees(y - object.y, x - object.x) + 90;
      return true;
    case kTypeLine:
    case kTypeWorkAxis:
      angle = object.angle;
      return true;
    case kTypeRectangle:
      angle = SideDirection(object, x, y);
      return true;
    default:
      return false;
  }
}

}  // namespace

bool PatternDirectionClick(double x, double y) {
  const bool first = tools.geometryTool == kGeometryDirection1;
  if (!first && tools.geometryTool != kGeometryDirection2) return false;
  const int hit = HitObject(x, y);
  double angle = 0;
  if (hit < 0 || !DirectionOf(sketch.objects[hit], x, y, angle)) return false;
  const int field = first ? kIdCadDirection1 : kIdCadDirection2;
  platform::SetText(field, NumberText(field, angle));
  platform::Repaint(kViewRectPicture);
  SetGeometryTool(kGeometryNone);
  RefreshCadTools();
  platform::Repaint(kViewCadCanvas);
  return true;
}

void ReversePatternDirection(int command) {
  const int field = command == kIdReverseDirection1 ? kIdCadDirection1 : kIdCadDirection2;
  double degrees = FieldFallback(field);
  if (!TakeFieldNumber(field, degrees)) return;
  platform::SetText(field, NumberText(field, degrees + 180));
  platform::Repaint(kViewRectPicture);
}

}  // namespace morva
