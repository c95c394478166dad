#include "skim/panel/skim_opening.h"

#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "documents/edit_link.h"
#include "documents/tab_table.h"
#include "library/units.h"
#include "platform/control.h"
#include "platform/window.h"
#include "skim/model/plan.h"
#include "skim/model/plan_record.h"
#include "skim/model/plan_seeds.h"
#include "skim/model/wizard_state.h"
#include "skim/panel/skim_form.h"
#include "skim/tools/skim_fields.h"
#include "skim/tools/skim_preview.h"

namespace morva {

namespace {

// Fields of the machining wizard, by their order.
enum WizardField : int { kFieldTool, kFieldOffset, kFieldRpm, kFieldFeed, kFieldSafeZ };

std::u16string WizardText(int field) { return platform::TextOf(kIdWizardField + field); }

// The wizard on its first page, with this plan. False: the surface that is up stays, and so do plan
// and wizard.
bool BringUp(const SkimPlan& plan) {
  const SkimPlan formerPlan = skimPlan;
  const SkimWizard former = skimWizard;
  SetSkimPlan(plan);
  if (SkimIsUp()) {
    StartSkimWizard(skimWizard.fromSurface, skimWizard.fromMode);
    EnterSkim();
    return true;
  }
  StartSkimWizard(app.surface, app.mode);
  Call(hooks.setSurface, static_cast<int>(kSurfaceSkim));
  if (SkimIsUp()) return true;
  SetSkimPlan(formerPlan);
  RestoreSkimWizard(former);
  return false;
}

}  // namespace

bool OpenSkimWizard() {
  DropEditLink();
  const SkimSeeds seeds{.tool = WizardText(kFieldTool),
                        .workOffset = WizardText(kFieldOffset),
                        .rpm = WizardText(kFieldRpm),
                        .feed = WizardText(kFieldFeed),
                        .safeZ = WizardText(kFieldSafeZ)};
  return BringUp(SeededSkimPlan(skimPlan, seeds, UnitsMetric()));
}

bool OpenSkimFromFeature(const FeatureSettings& record) {
  SkimPlan plan;
  return LoadSkimPlan(record, plan) && BringUp(plan);
}

void EnterSkim() {
  // The unit may have changed while another surface was up.
  SkimPlan plan = skimPlan;
  ConvertSkimPlan(plan, UnitsMetric());
  SetSkimPlan(plan);
  FillSkimForm();
  Call(hooks.layout);  // the plan's way to tell the depth has a field of its own
  RefreshSkimPreview();
  platform::SetFocusTo(FirstOfSkimPage());
}

void CancelSkim() {
  EndSkimWizard();
  const SkimWizard opened = skimWizard;
  if (editLink.kind == kKindSkim) DropEditLink();
  if (opened.fromSurface == kSurfaceCode)
    return Call(hooks.setMode, static_cast<int>(opened.fromMode));
  Call(hooks.setSurface, static_cast<int>(opened.fromSurface));
}

void CloseSkimAtHome() {
  EndSkimWizard();
  Call(hooks.setMode, static_cast<int>(kModeHome));
  platform::SetFocusTo(ShownEditor());
}

}  // namespace morva
