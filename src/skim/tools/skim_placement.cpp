#include "skim/tools/skim_placement.h"

#include <string>

#include "app/hooks.h"
#include "app/outlets.h"
#include "app/path_preview.h"
#include "skim/model/plan.h"
#include "skim/model/wizard_state.h"
#include "skim/tools/skim_fields.h"
#include "skim/tools/skim_preview.h"
#include "text/codetext.h"

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

void PlaceSkimByDrawing(double x, double y) {
  if (!MayPlace()) return;
  SkimPlan plan = skimPlan;
  PlaceSkimStock(plan, x, y, plan.zTop);
  SetSkimPlan(plan);
  FillSkimPlace();
  ShowStatus(u"Skim area moved in drawing coordinates.");
}

}  // namespace morva
