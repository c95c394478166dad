#include "cad/tools/patterns.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "app/command_ids.h"
#include "app/limits.h"
#include "app/router.h"
#include "cad/geometry/lines.h"
#include "cad/model/cad_form.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/tools/edit_parts.h"
#include "cad/tools/strict_fields.h"
#include "library/item_places.h"
#include "platform/events.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr double kLeastDiameter = 1e-6;

int Count(double typed, int most) { return std::clamp(static_cast<int>(typed), 1, most); }

const SketchObject& Selected() { return sketch.objects[sketch.selected]; }

// What a pattern makes of its source, whole before anything changes.
struct Instances {
  SketchObject objects[kMaxItems];
  int count = 0;
};
Instances instances;

bool AllFit() {
  for (int i = 0; i < instances.count; ++i) {
    if (WithinSketchLimit(instances.objects[i])) continue;
    TellSketchLimit();
    return false;
  }
  return true;
}

// The first instance over the selected object, the others behind the last one.
void PutInstances() {
  PushSketchUndo();
  PutSketchObject(sketch.selected, instances.objects[0]);
  for (int i = 1; i < instances.count; ++i) AppendSketchObject(instances.objects[i]);
  RefreshSketchPanels();
}

double Diameter(double typed) {
  return std::fabs(typed) < kLeastDiameter ? FieldFallback(kIdCadCircularDiameter) : typed;
}

// False: a field holds no number.
bool MakeCircle() {
  const SketchObject source = Selected();
  FormValues values;
  if (!TakePage(kReadQuickCircle, values)) return false;
  const double* n = values.numbers;
  // The source is one of the instances, so that a full sketch still takes one.
  const int room = kMaxItems + 1 - sketch.objectCount;
  instances.count = std::min(Count(n[kQuickQuantity], kMaxQuickQuantity), room);
  const CirclePlaces circle{n[kQuickX], n[kQuickY], Diameter(n[kQuickDiameter]), n[kQuickStart],
                            static_cast<double>(instances.count)};
  const auto orientation = static_cast<Orientation>(values.choices[kPatternOrientation]);
  for (int i = 0; i < instances.count; ++i) {
    const ItemPlace place = PlaceOnCircle(circle, i);
    SketchObject& object = instances.objects[i];
    object = source;
    object.x = place.x;
    object.y = place.y;
    if (orientation == Orientation::Radial) object.angle = place.angle;
    if (orientation == Orientation::Tangential) object.angle = place.angle + 90;
    object.angle += n[kQuickTurn];
  }
  return true;
}

bool MakeGrid() {
  SketchObject source = Selected();
  FormValues values;
  if (!TakePage(kReadQuickGrid, values)) return false;
  const double* n = values.numbers;
  source.angle += n[kQuickGridTurn];
  const GridPlaces grid{source.x, source.y, Count(n[kQuickColumns], kMaxQuickLines), n[kQuickStepX],
                        n[kQuickStepY]};
  const int rows = Count(n[kQuickRows], kMaxQuickLines);
  const int room = kMaxItems + 1 - sketch.objectCount;
  instances.count = std::min(grid.columns * rows, room);
  for (int i = 0; i < instances.count; ++i) {
    const ItemPlace place = PlaceInGrid(grid, i);
    SketchObject& object = instances.objects[i];
    object = source;
    object.x = place.x;
    object.y = place.y;
  }
  return true;
}

void OnQuick(int id, int) {
  if (id == kIdCadQuickCircular) QuickCircularPattern();
  if (id == kIdCadQuickGrid) QuickGridPattern();
}

}  // namespace

void QuickCircularPattern() {
  if (!MayEditSelection()) return;
  if (!MakeCircle() || !AllFit()) return;
  PutInstances();
  const std::u16string words = u"Circular pattern created: " + IntegerText(instances.count) +
                               u" total instances. Selected source became the first pattern "
                               u"instance.";
  SetSketchStatus(words.c_str());
  LogSketchOperation(u"Circular pattern");
}

void QuickGridPattern() {
  if (!MayEditSelection()) return;
  if (!MakeGrid() || !AllFit()) return;
  PutInstances();
  const std::u16string words = u"Rectangular pattern created: " + IntegerText(instances.count) +
                               u" total instances including the selected source.";
  SetSketchStatus(words.c_str());
  LogSketchOperation(u"Rectangular pattern");
}

void RegisterPatterns() {
  RegisterCommand(RouterStage::Builder, kIdCadQuickCircular, kIdCadQuickGrid,
                  platform::kNotifyClick, OnQuick);
}

}  // namespace morva
