// `get skim`: the live plan of the guided skim and what its wizard shows.

#include <cmath>
#include <string>

#include "app/command_ids.h"
#include "driver/drive_internal.h"
#include "driver/json_text.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "skim/model/field_help.h"
#include "skim/model/plan.h"
#include "skim/model/plan_measures.h"
#include "skim/model/wizard_state.h"

namespace drive {
namespace {

using morva::skimPlan;
using morva::skimWizard;

// Names of the 18 numbers, by SkimField.
constexpr const char* kNames[] = {
    "tool",         "workOffset",      "xMin",      "yMin",      "xMax",   "yMax",
    "diameter",     "stepoverPercent", "rpm",       "feed",      "plunge", "zTop",
    "depthPerPass", "totalDepth",      "passCount", "clearance", "entry",  "exit"};
static_assert(std::size(kNames) == morva::kSkimFields);

constexpr double kSlack = 1e-9;  // of a row that lies on the last one

// From row to row, as often as a pass goes on; 0 for a plan without rows.
double StepsOfAPass() {
  const double rows = std::ceil(morva::RowEstimate(skimPlan) - kSlack);
  return std::isfinite(rows) ? rows : 0;
}

std::u16string Matrix() {
  return skimWizard.matrixShown ? platform::TextOf(morva::kIdSkimMatrix) : std::u16string();
}

std::u16string Review() {
  const bool shown = skimWizard.page == morva::kSkimReview && platform::Exists(morva::kIdSkimCode);
  return shown ? std::u16string(platform::EditorText(morva::kIdSkimCode)) : std::u16string();
}

std::u16string Help() {
  const int field = skimWizard.field;
  if (field < 0 || !skimWizard.planValid) return {};
  return morva::SkimFieldHelp(skimPlan, field, platform::TextOf(morva::kIdSkimField + field));
}

}  // namespace

std::string GetSkim(const Words&) {
  Json segments('[');
  for (int i = 0; i < skimPlan.centerline.count; ++i) {
    segments.Item(ObjectJson(skimPlan.centerline.segments[i]).Done());
  }
  Json plan('{');
  plan.Number("page", skimWizard.page).Flag("planValid", skimWizard.planValid);
  for (int field = 0; field < morva::kSkimFields; ++field) {
    plan.Number(kNames[field], morva::SkimValue(skimPlan, field));
  }
  plan.Flag("useTotalDepth", skimPlan.useTotalDepth)
      .Flag("metric", skimPlan.metric)
      .Number("strategy", skimPlan.strategy)
      .Number("stockThickness", skimPlan.stockThickness)
      .Raw("segments", segments.Done())
      .Number("passes", morva::PassCount(skimPlan))
      .Number("rows", StepsOfAPass())
      .Text("matrix", Matrix())
      .Text("code", Review())
      .Text("help", Help());
  return Good("skim", plan.Done());
}

}  // namespace drive
