#include "cad/tools/save_shape.h"

#include <algorithm>
#include <string>

#include "app/command_ids.h"
#include "app/router.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "library/outline.h"
#include "library/shapes.h"
#include "library/units.h"
#include "platform/control.h"
#include "platform/events.h"
#include "platform/message.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr char16_t kCaption[] = u"Save Custom Shape";

// The points that bound an object; arrays of kOutlinePoints.
int BoundingPoints(const SketchObject& object, double* xs, double* ys) {
  if (object.type == kTypeWorkPoint) {
    xs[0] = object.x;
    ys[0] = object.y;
    return 1;
  }
  if (object.type != kTypeCircle) return ObjectOutline(object, xs, ys);
  const double r = object.size / 2;
  xs[0] = object.x - r;
  ys[0] = object.y - r;
  xs[1] = object.x + r;
  ys[1] = object.y + r;
  return 2;
}

void PutObjects(SavedShape& shape) {
  shape.count = std::min<std::int32_t>(sketch.objectCount, kMaxShapeObjects);
  Extents extents;
  ObjectExtents(sketch.objects, shape.count, extents);
  const double centreX = (extents.minX + extents.maxX) / 2;
  const double centreY = (extents.minY + extents.maxY) / 2;
  const double factor = sketch.metric ? kInchPerMm : 1.0;
  for (int i = 0; i < kMaxShapeObjects; ++i) {
    if (i >= shape.count) {
      shape.objects[i] = SketchObject();
      continue;
    }
    SketchObject object = sketch.objects[i];
    object.x -= centreX;
    object.y -= centreY;
    ScaleLengths(object, factor);
    shape.objects[i] = object;
  }
}

// The name of the shape that was saved last; the disk's answer comes later.
std::u16string savedName;

void TellSaved(bool saved) {
  if (!saved) {
    SetSketchStatus(u"MORVA.ini could not be written \u2014 the shape lasts for this run only.");
    return;
  }
  const std::u16string words = u"Saved reusable shape: " + savedName +
                               u". It is now available in Shape and Pattern drop-downs.";
  SetSketchStatus(words.c_str());
}

}  // namespace

bool ObjectExtents(const SketchObject* objects, int count, Extents& extents) {
  extents = Extents();
  bool any = false;
  for (int i = 0; i < count; ++i) {
    double xs[kOutlinePoints];
    double ys[kOutlinePoints];
    const int points = BoundingPoints(objects[i], xs, ys);
    for (int k = 0; k < points; ++k) {
      if (!any) extents = {xs[k], ys[k], xs[k], ys[k]};
      any = true;
      extents.minX = std::min(extents.minX, xs[k]);
      extents.minY = std::min(extents.minY, ys[k]);
      extents.maxX = std::max(extents.maxX, xs[k]);
      extents.maxY = std::max(extents.maxY, ys[k]);
    }
  }
  return any;
}

void SaveDrawingAsShape() {
  if (sketch.objectCount < 1) {
    platform::ShowBox(kCaption, u"Draw at least one object before saving a reusable shape.",
                      platform::BoxButtons::Ok, platform::BoxIcon::None);
    return;
  }
  std::u16string name = platform::TextOf(kIdCadShapeName);
  if (name.empty()) name = u"Custom Shape " + IntegerText(shapeLibrary.count + 1);
  name = KeptShapeName(name);
  SavedShape shape;
  CopyBounded(shape.name, kShapeNameUnits, name);
  PutObjects(shape);
  if (PutShape(shape) < 0) {
    platform::ShowBox(kCaption, u"The reusable shape library is full.", platform::BoxButtons::Ok,
                      platform::BoxIcon::Warning);
    return;
  }
  savedName = name;
  SaveShapeLibrary(TellSaved);
  RefreshShapeLists();
}

void RegisterSaveShape() {
  RegisterCommand(RouterStage::Builder, kIdCadSaveShape, platform::kNotifyClick,
                  [](int, int) { SaveDrawingAsShape(); });
}

}  // namespace morva
