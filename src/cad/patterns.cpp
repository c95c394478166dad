#include "cad/patterns.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "app/command_ids.h"
#include "app/limits.h"
#include "app/router.h"
#include "cad/edit_parts.h"
#include "cad/geometry/hits.h"
#include "cad/geometry/lines.h"
#include "cad/geometry_tools.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/workspace.h"
#include "forms/form.h"
#include "library/item_places.h"
#include "library/outline.h"
#include "platform/control.h"
#include "platform/events.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr double kLeastDiameter = 1e-6;
constexpr int kAngleDecimals = 3;

int Count(int id, int most) { return std::clamp(FieldCount(id), 1, most); }

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

double Diameter() {
  const double typed = FieldNumber(kIdCadCircularDiameter);
  return std::fabs(typed) < kLeastDiameter ? FieldFallback(kIdCadCircularDiameter) : typed;
}

void MakeCircle() {
  const SketchObject source = Selected();
  // The source is one of the instances, so that a full sketch still takes one.
  const int room = kMaxItems + 1 - sketch.objectCount;
  instances.count = std::min(Count(kIdCadQuantity, kMaxQuickQuantity), room);
  CirclePlaces circle;
  circle.x = FieldNumber(kIdCadCircularX);
  circle.y = FieldNumber(kIdCadCircularY);
  circle.diameter = Diameter();
  circle.start = FieldNumber(kIdCadCircularStart);
  circle.quantity = instances.count;
  const double rotation = FieldNumber(kIdCadCircularRotation);
  const int orientation = platform::SelectedRow(kIdCadCircularOrientation);
  for (int i = 0; i < instances.count; ++i) {
    const ItemPlace place = PlaceOnCircle(circle, i);
    SketchObject& object = instances.objects[i];
    object = source;
    object.x = place.x;
    object.y = place.y;
    if (orientation == 1) object.angle = place.angle;
    if (orientation == 2) object.angle = place.angle + 90;
    object.angle += rotation;
  }
}

void MakeGrid() {
  SketchObject source = Selected();
  source.angle += FieldNumber(kIdCadGridRotation);
  GridPlaces grid;
  grid.x = source.x;
  grid.y = source.y;
  grid.columns = Count(kIdCadColumns, kMaxQuickLines);
  grid.stepX = FieldNumber(kIdCadSpacingX);
  grid.stepY = FieldNumber(kIdCadSpacingY);
  const int rows = Count(kIdCadRows, kMaxQuickLines);
  const int room = kMaxItems + 1 - sketch.objectCount;
  instances.count = std::min(grid.columns * rows, room);
  for (int n = 0; n < instances.count; ++n) {
    const ItemPlace place = PlaceInGrid(grid, n);
    SketchObject& object = instances.objects[n];
    object = source;
    object.x = place.x;
    object.y = place.y;
  }
}

int DirectionField(int command) {
  const bool first = command == kIdPickDirection1 || command == kIdReverseDirection1;
  return first ? kIdCadDirection1 : kIdCadDirection2;
}

void ReverseDirection(int field) {
  platform::SetText(field, SketchNumber(FieldNumber(field) + 180, kAngleDecimals));
}

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

void OnQuick(int id, int) {
  if (id == kIdCadQuickCircular) QuickCircularPattern();
  if (id == kIdCadQuickGrid) QuickGridPattern();
}

void OnPanel(int id, int) {
  OpenPatternPanel(id == kIdCadCircularPanel ? kPanelCircular : kPanelRectangular);
}

void OnForm(int id, int) {
  if (id == kIdCadPatternSource) TogglePatternSource();
  if (id == kIdCadCreatePattern) ApplySketchPattern(tools.panelMode == kPanelRectangular);
}

}  // namespace

void QuickCircularPattern() {
  if (!MayEditSelection()) return;
  MakeCircle();
  if (!AllFit()) return;
  PutInstances();
  const std::u16string words = u"Circular pattern created: " + IntegerText(instances.count) +
                               u" total instances. Selected source became the first pattern "
                               u"instance.";
  SetSketchStatus(words.c_str());
  LogSketchOperation(u"Circular pattern");
}

void QuickGridPattern() {
  if (!MayEditSelection()) return;
  MakeGrid();
  if (!AllFit()) return;
  PutInstances();
  const std::u16string words = u"Rectangular pattern created: " + IntegerText(instances.count) +
                               u" total instances including the selected source.";
  SetSketchStatus(words.c_str());
  LogSketchOperation(u"Rectangular pattern");
}

void OpenPatternPanel(int panelMode) {
  if (panelMode != kPanelCircular && panelMode != kPanelRectangular) return;
  OpenToolPanel(panelMode, panelMode == kPanelCircular ? kIdCadQuantity : kIdCadColumns);
  RefreshPatternForm();
}

void PickPatternDirection(int command) {
  if (command == kIdReverseDirection1 || command == kIdReverseDirection2) {
    ReverseDirection(DirectionField(command));
    return;
  }
  if (command == kIdPickDirection1) StartGeometryTool(kGeometryDirection1);
  if (command == kIdPickDirection2) StartGeometryTool(kGeometryDirection2);
}

bool PatternDirectionClick(double x, double y) {
  const bool first = tools.geometryTool == kGeometryDirection1;
  if (!first && tools.geometryTool != kGeometryDirection2) return false;
  const int hit = HitObject(x, y);
  double angle = 0;
  if (hit < 0 || !DirectionOf(sketch.objects[hit], x, y, angle)) return false;
  platform::SetText(first ? kIdCadDirection1 : kIdCadDirection2,
                    SketchNumber(angle, kAngleDecimals));
  SetGeometryTool(kGeometryNone);
  RefreshCadTools();
  platform::Repaint(kViewCadCanvas);
  return true;
}

void RegisterPatterns() {
  RegisterCommand(RouterStage::Builder, kIdCadQuickCircular, kIdCadQuickGrid,
                  platform::kNotifyClick, OnQuick);
  RegisterCommand(RouterStage::Builder, kIdCadCircularPanel, kIdCadGridPanel,
                  platform::kNotifyClick, OnPanel);
  RegisterCommand(RouterStage::Builder, kIdCadPatternSource, kIdCadCreatePattern,
                  platform::kNotifyClick, OnForm);
  RegisterCommand(RouterStage::Builder, kIdPickDirection1, kIdReverseDirection2,
                  platform::kNotifyClick, [](int id, int) { PickPatternDirection(id); });
}

}  // namespace morva
