#include "skim/tools/skim_centerline.h"

#include <cstddef>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "documents/feature_blocks.h"
#include "documents/tab_table.h"
#include "library/wanted_drawing.h"
#include "platform/editor.h"
#include "skim/model/centerline.h"
#include "skim/model/plan.h"
#include "skim/model/plan_record.h"
#include "skim/model/wizard_state.h"
#include "skim/tools/skim_fields.h"
#include "skim/tools/skim_preview.h"
#include "text/length_units.h"

namespace morva {

namespace {

// From a drawing's unit into that of a plan.
double FactorInto(const SkimPlan& plan, bool metric) {
  if (metric == plan.metric) return 1;
  return plan.metric ? kMmPerInch : kInchPerMm;
}

// Whether a skim of the program was made from such a drawing.
bool StandsInABlock(std::span<const SketchObject> objects, const unsigned char* hidden,
                    bool metric) {
  SkimPlan plan;
  SkimCenterline line;
  for (const FeatureRecord& row : BlocksOf(platform::EditorText(kIdEditor))) {
    if (row.settings.kind != kKindSkim || !LoadSkimPlan(row.settings, plan)) continue;
    if (TakeCenterline(objects, hidden, FactorInto(plan, metric), line)) return false;
    if (IsSameCenterline(line, plan.centerline)) return true;
  }
  return false;
}

// The drawing of the plan's lines. A plan without any takes one that is no other skim's.
bool IsOfThePlan(std::span<const SketchObject> objects, const unsigned char* hidden, bool metric) {
  if (skimPlan.centerline.count == 0) return !StandsInABlock(objects, hidden, metric);
  SkimCenterline line;
  return !TakeCenterline(objects, hidden, FactorInto(skimPlan, metric), line) &&
         IsSameCenterline(line, skimPlan.centerline);
}

const char16_t* TakePath(std::span<const SketchObject> objects, const unsigned char* hidden,
                         bool metric) {
  SkimPlan plan = skimPlan;
  const double factor = FactorInto(plan, metric);
  const char16_t* words = TakeCenterline(objects, hidden, factor, plan.centerline);
  if (words) return words;
  plan.strategy = kSkimCustom;
  SetSkimPlan(plan);
  NoteSkimLines({.program = ActiveSerial()});
  // A strategy that was chosen before gives way to the line.
  SkimTyped typed = skimWizard.typed;
  typed.texts.strategy = kSkimCustom;
  KeepSkimTyped(std::move(typed));
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
                             .again = skimWizard.drawn,
                             .isIt = IsOfThePlan,
                             .isKept = StandsInABlock,
                             .take = TakePath};
  if (Call(hooks.openDrawing, wanted)) return NoteSkimDrawing();
  ShowSkimStrategy();
  RefreshSkimPreview();
}

}  // namespace morva
