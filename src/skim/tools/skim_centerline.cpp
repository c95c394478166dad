#include "skim/tools/skim_centerline.h"

#include <cstddef>

#include "app/app_state.h"
#include "app/hooks.h"
#include "library/wanted_drawing.h"
#include "skim/model/centerline.h"
#include "skim/model/plan.h"
#include "skim/tools/skim_fields.h"
#include "skim/tools/skim_preview.h"
#include "text/length_units.h"

namespace morva {

namespace {

const char16_t* TakePath(std::span<const SketchObject> objects, const unsigned char* hidden,
                         bool metric) {
  SkimPlan plan = skimPlan;
  double factor = 1;
  if (metric != plan.metric) factor = plan.metric ? kMmPerInch : kInchPerMm;
  const char16_t* words = TakeCenterline(objects, hidden, factor, plan.centerline);
  if (words) return words;
  plan.strategy = kSkimCustom;
  SetSkimPlan(plan);
  Call(hooks.setSurface, static_cast<int>(kSurfaceSkim));
  return nullptr;
}

}  // namespace

void DrawSkimPath() {
  const auto count = static_cast<std::size_t>(skimPlan.centerline.count);
  const WantedDrawing wanted{.name = u"Skim centerline",
                             .hint =
                                 u"Draw the cutter centerline with line segments. Return "
                                 u"accepts the path. Separate strokes retract safely.",
                             .full = u"A free CAD drawing tab is needed for the skim path.",
                             .start = {skimPlan.centerline.segments, count},
                             .metric = skimPlan.metric,
                             .take = TakePath};
  if (Call(hooks.openDrawing, wanted)) return;
  ShowSkimChoices();
  RefreshSkimPreview();
}

}  // namespace morva
