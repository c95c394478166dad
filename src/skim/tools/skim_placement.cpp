#include "skim/tools/skim_placement.h"

#include <string>

#include "app/hooks.h"
#include "app/outlets.h"
#include "app/path_preview.h"
#include "library/wanted_drawing.h"
#include "skim/model/plan.h"
#include "skim/model/plan_check.h"
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

// False: the plan would not pass there, and stays.
bool MoveStock(SkimPlan plan, double x, double y, double zTop) {
  PlaceSkimStock(plan, x, y, zTop);
  const char16_t* message = u"";
  if (!ValidateSkimPlan(plan, message)) return false;
  SetSkimPlan(plan);
  FillSkimPlace();
  RefreshSkimPreview();
  return true;
}

// As above, for a place that was picked; false is told.
bool MoveToPick(double x, double y, double zTop) {
  if (MoveStock(skimPlan, x, y, zTop)) return true;
  ShowStatus(u"Not placed: the skim area would reach beyond 100000.");
  return false;
}

void TellPlace(const char16_t* more) {
  ShowStatus(u"Skim area placed at X " + FixedText(skimPlan.xMin, kSkimDecimals) + u"  Y " +
             FixedText(skimPlan.yMin, kSkimDecimals) + u"  Z " +
             FixedText(skimPlan.zTop, kSkimDecimals) + more);
}

// Only a stock has a surface. The end of a move or of a drawn line may lie at the depth of a cut
// or in the air above it; a safe plane from there could lie within the part.
void TakeGeometry(const PickedPlace& place) {
  if (!place.picked || !SkimIsUp() || !MayPlace()) return;
  if (!MoveToPick(place.x, place.y, place.ofStock ? place.stockTop : skimPlan.zTop)) return;
  TellPlace(place.ofStock ? u"" : u" (Z kept)");
}

void TakePlane(const PickedPlace& place) {
  if (!place.picked || !SkimIsUp() || !MayPlace()) return;
  if (MoveToPick(place.x, place.y, skimPlan.zTop)) TellPlace(u"");
}

void TakeDrawing(double x, double y, bool metric) {
  if (!SkimIsUp() || !MayPlace()) return;
  double factor = 1;
  if (metric != skimPlan.metric) factor = skimPlan.metric ? kMmPerInch : kInchPerMm;
  if (!MoveToPick(x * factor, y * factor, skimPlan.zTop)) return;
  ShowStatus(u"Skim area moved in drawing coordinates.");
}

}  // namespace

void TakeTypedPlace() {
  constexpr char16_t kBadPlace[] = u"Enter valid start coordinates and positive stock thickness.";
  SkimPlace place;
  if (!ReadSkimPlace(place)) return ShowStatus(kBadPlace);
  if (!MayPlace()) return;
  SkimPlan plan = skimPlan;
  plan.stockThickness = place.thickness;
  if (!MoveStock(plan, place.x, place.y, place.zTop)) ShowStatus(kBadPlace);
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
                                  .planeZ = [] { return skimPlan.zTop; },
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
