#include "cad/tools/save_shape.h"

#include <algorithm>
#include <deque>
#include <string>

#include "app/command_ids.h"
#include "app/router.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "library/extents.h"
#include "library/shapes.h"
#include "library/units.h"
#include "platform/control.h"
#include "platform/events.h"
#include "platform/message.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr char16_t kCaption[] = u"Save Custom Shape";

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

// The names of the shapes whose save the disk has not answered yet, oldest first. Each save is
// answered once, in the same order.
std::deque<std::u16string> underWay;

void TellSaved(bool saved) {
  if (underWay.empty()) return;
  const std::u16string name = underWay.front();
  underWay.pop_front();
  if (!saved) {
    SetSketchStatus(kShapesUnsaved);
    return;
  }
  const std::u16string words =
      u"Saved reusable shape: " + name + u". It is now available in Shape and Pattern drop-downs.";
  SetSketchStatus(words.c_str());
}

}  // namespace

void SaveDrawingAsShape() {
  if (sketch.objectCount < 1) {
    platform::ShowBox(kCaption, u"Draw at least one object before saving a reusable shape.",
                      platform::BoxButtons::Ok, platform::BoxIcon::None);
    return;
  }
  FollowShapeFile();
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
  underWay.push_back(name);
  SaveShapeLibrary(TellSaved);
  RefreshShapeLists();
}

void RegisterSaveShape() {
  underWay.clear();
  RegisterCommand(RouterStage::Builder, kIdCadSaveShape, platform::kNotifyClick,
                  [](int, int) { SaveDrawingAsShape(); });
}

}  // namespace morva
