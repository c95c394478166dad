#include "skim/tools/skim_placement.h"

#include <string>

#include "app/hooks.h"
#include "app/outlets.h"
#include "app/path_preview.h"
#include "library/wanted_drawing.h"
#include "skim/model/plan.h"
#include "skim/model/wizard_state.h"
#include "skim/tools/skim_fields.h"
#include "skim/tools/skim_preview.h"
#include "text/codetext.h"
#include "text/length_units.h"

namespace morva {

namespace {

// False, told: the stock's size cannot be read, so that it cannot be moved.
bool MayPlace() {
  if (skimWizard.planValid) return true;
  ShowStatus(kCorrectFirst);
  return false;
}

void MoveStock(double x, double y, double zTop) {
  SkimPlan plan = skimPlan;
  PlaceSkimStock(plan, x, y, zTop);
  SetSkimPlan(plan);
  FillSkimPlace();
  RefreshSkimPreview();
}

void TellPlace() {
  ShowStatus(u"Skim area placed at X " + FixedText(skimPlan.xMin, kSkimDecimals) + u"  Y " +
             FixedText(skimPlan.yMin, kSkimDecimals) + u"  Z " +
             FixedText(skimPlan.zTop, kSkimDecimals));
}

void TakeGeometry(const PickedPlace& place) {
  if (!place.picked || !SkimIsUp() || !MayPlace()) return;
  MoveStock(place.x, place.y, place.z);
  TellPlace();
}

void TakePlane(const PickedPlace& place) {
  if (!place.picked || !SkimIsUp() || !MayPlace()) return;
  MoveStock(place.x, place.y, skimPlan.zTop);
  TellPlace();
}

void TakeDrawing(double x, double y, bool metric) {
  if (!SkimIsUp() || !MayPlace()) return;
  double factor = 1;
  if (metric != skimPlan.metric) factor = skimPlan.metric ? kMmPerInch : kInchPerMm;
  MoveStock(x * factor, y * factor, skimPlan.zTop);
  ShowStatus(u"Skim area moved in drawing coordinates.");
}

}  // namespace

void TakeTypedPlace() {
  SkimPlace place;
  if (!ReadSkimPlace(place)) {
    ShowStatus(u"Enter valid start coordinates and positive stock thickness.");
    return;
  }
  if (!MayPlace()) return;
  SkimPlan plan = skimPlan;
  plan.stockThickness = place.thickness;
  SetSkimPlan(plan);
  MoveStock(place.x, place.y, place.zTop);
}

void PickSkimGeometry() {
  if (!MayPlace()) return;
  Call(hooks.pickPlace,
       PlacePick{.from = PlaceSource::Geometry,
                 .words = u"Click a drawing endpoint, stock corner or stock top center to place "
                          u"the skim area.",
                 .done = TakeGeometry});
}

void PickSkimPlane() {
  if (!MayPlace()) return;
  Call(hooks.pickPlace, PlacePick{.from = PlaceSource::Plane,
                                  .planeZ = skimPlan.zTop,
                                  .words = u"Click any XY position on the selected Z plane to "
                                           u"place the skim area.",
                                  .done = TakePlane});
}

void PickSkimInDrawing() {
  if (!MayPlace()) return;
  Call(hooks.pickInDrawing, WantedPlace{.hint = u"Click where the lower left corner of the skim "
                                                u"area goes. Esc goes back.",
                                        .done = TakeDrawing});
}

}  // namespace morva
