#include "skim/panel/skim_room.h"

#include "app/command_ids.h"
#include "app/commands.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/router.h"
#include "library/tools.h"
#include "platform/control.h"
#include "platform/events.h"
#include "platform/window.h"
#include "skim/geometry/saved_code.h"
#include "skim/model/plan.h"
#include "skim/model/wizard_state.h"
#include "skim/panel/skim_commands.h"
#include "skim/panel/skim_insert.h"
#include "skim/panel/skim_opening.h"
#include "skim/panel/skim_pages.h"
#include "skim/panel/skim_surface.h"
#include "skim/tools/skim_centerline.h"
#include "skim/tools/skim_fields.h"
#include "skim/tools/skim_placement.h"
#include "skim/tools/skim_preview.h"
#include "skim/tools/skim_units.h"

namespace morva {

namespace {

void OnMatrix(int, int) {
  ShowSkimMatrix(!skimWizard.matrixShown);
  Call(hooks.layout);
  RefreshSkimPreview();
}

void OnPosition(int, int) {
  if (!skimWizard.placing && !skimWizard.planValid) return ShowStatus(kCorrectFirst);
  ShowSkimPlacement(!skimWizard.placing);
  ShowSkimPlace();
  Call(hooks.layout);
  if (!skimWizard.placing) return;
  platform::SetFocusTo(kIdSkimStartX);
  platform::SelectAllText(kIdSkimStartX);
}

void OnCoverage(int, int) {
  ShowSkimCoverage(!skimWizard.coverage);
  RefreshSkimView();
}

void Join(int id, CommandHandler handler) {
  RegisterCommand(RouterStage::Builder, id, platform::kNotifyClick, handler);
}

}  // namespace

void RegisterSkim() {
  hooks.openSkim = OpenSkimWizard;
  AddCommands(SkimCommands());
  RegisterSkimSurface();
  RegisterSkimBuilder();
  RegisterSkimPages();
  RegisterSkimCode();
  AddToolList(FillSkimTools);
  Join(kIdSkimShowMatrix, OnMatrix);
  Join(kIdSkimPosition, OnPosition);
  Join(kIdSkimCoverage, OnCoverage);
  Join(kIdSkimPlace, [](int, int) { TakeTypedPlace(); });
  Join(kIdSkimPickGeometry, [](int, int) { PickSkimGeometry(); });
  Join(kIdSkimPickPlane, [](int, int) { PickSkimPlane(); });
  Join(kIdSkimPickDrawing, [](int, int) { PickSkimInDrawing(); });
  Join(kIdSkimDraw, [](int, int) { DrawSkimPath(); });
  Join(kIdSkimInch, [](int, int) { SwitchSkimUnits(false); });
  Join(kIdSkimMm, [](int, int) { SwitchSkimUnits(true); });
  Join(kIdSkimCancel, [](int, int) { CancelSkim(); });
}

void ResetSkim() {
  SetSkimFieldShower(nullptr);
  ResetSkimSurface();
  ResetSkimPreview();
  StartSkimWizard(0, 0);
  EndSkimWizard();
  ResetSkimPlan();
}

}  // namespace morva
