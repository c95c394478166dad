#include "skim/tools/skim_units.h"

#include "library/units.h"
#include "skim/model/plan.h"
#include "skim/model/wizard_state.h"
#include "skim/tools/skim_fields.h"
#include "skim/tools/skim_preview.h"

namespace morva {

bool SetSkimUnits(bool metric) {
  if (metric == skimPlan.metric) return true;
  if (SkimIsUp() && !ReadSkimForm(false)) return false;
  SkimPlan plan = skimPlan;
  ConvertSkimPlan(plan, metric);
  if (!SkimIsUp()) {
    SetSkimPlan(plan);
    return true;
  }
  if (!TakeSkimPlan(plan, false)) return false;
  FillSkimForm();
  return true;
}

void SwitchSkimUnits(bool metric) {
  if (!SetSkimUnits(metric)) return;
  // The preview's lengths are in the unit of the application: it comes after both.
  SetUnits(metric);
  RefreshSkimPreview();
}

}  // namespace morva
