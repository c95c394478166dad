#include "skim/panel/skim_pages.h"

#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/router.h"
#include "forms/sheet.h"
#include "platform/control.h"
#include "platform/events.h"
#include "platform/window.h"
#include "skim/model/plan.h"
#include "skim/model/plan_check.h"
#include "skim/model/wizard_state.h"
#include "skim/panel/skim_form.h"
#include "skim/tools/skim_fields.h"
#include "skim/tools/skim_preview.h"

namespace morva {

namespace {

void BringUp(int page) {
  TurnSkimPage(page);
  ScrollSheetToTop(kSkimSheet);
  Call(hooks.layout);
  RefreshSkimPreview();
}

void OnNext(int, int) {
  if (ReadSkimForm(false)) ShowSkimPage(skimWizard.page + 1);
}

void OnBack(int, int) {
  if (skimWizard.page > kSkimStock) ShowSkimPage(skimWizard.page - 1);
}

// The keyboard goes where something is to be mended, on whatever page that is.
void ShowField(int field) {
  const int page = field == kNoSkimField ? int{kSkimCutter} : SkimPageOf(field);
  if (page != skimWizard.page) BringUp(page);
  if (field == kNoSkimField) return platform::SetFocusTo(kIdSkimStrategies);
  // The list of depth plans hides one of two fields.
  if (!platform::IsVisible(kIdSkimField + field)) return platform::SetFocusTo(kIdSkimDepths);
  platform::SetFocusTo(kIdSkimField + field);
  platform::SelectAllText(kIdSkimField + field);
}

}  // namespace

void ShowSkimPage(int page) {
  BringUp(page);
  platform::SetFocusTo(FirstOfSkimPage());
}

void RegisterSkimPages() {
  SetSkimFieldShower(ShowField);
  RegisterCommand(RouterStage::Builder, kIdSkimNext, platform::kNotifyClick, OnNext);
  RegisterCommand(RouterStage::Builder, kIdSkimBack, platform::kNotifyClick, OnBack);
}

}  // namespace morva
