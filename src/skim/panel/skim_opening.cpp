#include "skim/panel/skim_opening.h"

#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "documents/builder_table.h"
#include "documents/edit_link.h"
#include "documents/feature_operations.h"
#include "documents/tab_table.h"
#include "library/tools.h"
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
#include "text/codetext.h"

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

// A line belongs to the skim that it was drawn for.
void DropForeignLines(SkimPlan& plan) {
  const SkimLines& lines = skimWizard.lines;
  if (!lines.inBlock && lines.program == ActiveSerial()) return;
  plan.centerline.count = 0;
  if (plan.strategy == kSkimCustom) plan.strategy = kSkimZigzag;
}

// The wizard that was left for a look at something else. False: there is none with these seeds that
// was up over this program; in another one the same key asks for a new skim.
bool ComeBack(const SkimSeeds& seeds) {
  const SkimWizard& former = skimWizard;
  if (SkimIsUp() || !former.open || !former.seeded) return false;
  if (former.program != ActiveSerial()) return false;
  if (!SameSeeds(former.seeds, former.seedsMetric, seeds, UnitsMetric())) return false;
  Call(hooks.setSurface, static_cast<int>(kSurfaceSkim));
  return true;
}

}  // namespace

bool OpenSkimWizard() {
  DropEditLink();
  SkimSeeds seeds{.tool = WizardText(kFieldTool),
                  .workOffset = WizardText(kFieldOffset),
                  .rpm = WizardText(kFieldRpm),
                  .feed = WizardText(kFieldFeed),
                  .safeZ = WizardText(kFieldSafeZ)};
  const int tool = FindTool(ParseInteger(seeds.tool, 0));
  if (tool >= 0) seeds.diameter = toolLibrary.tools[tool].diameter;
  if (ComeBack(seeds)) return SkimIsUp();
  SkimPlan plan = SeededSkimPlan(skimPlan, seeds, UnitsMetric());
  DropForeignLines(plan);
  if (!BringUp(plan)) return false;
  NoteSkimSeeds(seeds, UnitsMetric());
  ShowStatus(
      u"Tool, work offset, RPM, feed and Safe Z come from the wizard's page. Area and depth are "
      u"set "
      u"here: check them.");
  return true;
}

bool OpenSkimFromFeature(const FeatureSettings& record) {
  SkimPlan plan;
  if (!LoadSkimPlan(record, plan) || !BringUp(plan)) return false;
  NoteSkimLines({.program = ActiveSerial(), .inBlock = true});
  return true;
}

void EnterSkim() {
  // The unit may have changed while another surface was up.
  SkimPlan plan = skimPlan;
  ConvertSkimPlan(plan, UnitsMetric());
  SetSkimPlan(plan);
  FillSkimForm();
  PutSkimTextsBack();
  Call(hooks.layout);  // the plan's way to tell the depth has a field of its own
  RefreshSkimPreview();
  platform::SetFocusTo(FirstOfSkimPage());
  FollowEditedSkim();
}

void NoteEditedSkim() {
  if (!skimWizard.open || editLink.kind != kKindSkim) return;
  // No program is up while its own is being closed.
  if (app.activeTab >= 0 && editLink.tab != app.activeTab) return;
  NoteSkimEdit({.id = editLink.id, .program = ActiveSerial(), .original = editLink.original});
}

void FollowEditedSkim() {
  const SkimEdit edit = skimWizard.edit;
  if (edit.id == 0) return;
  const bool linkedStill = editLink.kind == kKindSkim && editLink.tab == app.activeTab;
  if (linkedStill && editLink.id == edit.id) return NoteSkimEdit({});
  if (edit.program != ActiveSerial() && IndexOfSerial(edit.program) >= 0) {
    return ShowStatus(
        u"The skim under edit stands in another program; INSERT SKIM writes a new block here.");
  }
  NoteSkimEdit({});
  const bool linked = edit.program == ActiveSerial() && LinkFeature(edit.id);
  if (linked && editLink.kind == kKindSkim && editLink.original == edit.original) {
    // What was said in another program is untrue here.
    ShowStatus(u"UPDATE SKIM replaces the skim under edit.");
    return ShowBuilderKeys(editLink.kind);
  }
  DropEditLink();
  ShowStatus(u"The skim under edit was changed or is gone; INSERT SKIM writes a new block.");
}

void CancelSkim() {
  EndSkimWizard();
  const SkimWizard opened = skimWizard;
  if (editLink.kind == kKindSkim) DropEditLink();
  if (opened.fromSurface == kSurfaceCode) {
    Call(hooks.setMode, static_cast<int>(opened.fromMode));
    // The key that leads here again.
    if (platform::IsVisible(kIdWizardInsert)) platform::SetFocusTo(kIdWizardInsert);
    return;
  }
  Call(hooks.setSurface, static_cast<int>(opened.fromSurface));
}

void CloseSkimAtHome() {
  EndSkimWizard();
  Call(hooks.setMode, static_cast<int>(kModeHome));
  platform::SetFocusTo(ShownEditor());
}

}  // namespace morva
