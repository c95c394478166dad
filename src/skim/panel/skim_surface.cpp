#include "skim/panel/skim_surface.h"

#include <algorithm>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "app/hooks.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/surfaces.h"
#include "documents/program_tabs.h"
#include "documents/tab_table.h"
#include "forms/form.h"
#include "forms/sheet.h"
#include "platform/canvas.h"
#include "platform/window.h"
#include "skim/model/plan.h"
#include "skim/model/wizard_state.h"
#include "skim/panel/skim_form.h"
#include "skim/panel/skim_opening.h"
#include "skim/tools/skim_fields.h"
#include "skim/tools/skim_preview.h"

namespace morva {

namespace {

using platform::Rect;

constexpr int kPad = 8;
constexpr int kMatrixPercent = 40;  // of the height
constexpr int kMatrixLeast = 180;   // pixels, nine lines

std::uint64_t shownProgram = 0;  // whose geometry stands in the view

// No form: the ground that the two forms of the wizard stand on.
bool MakeGround() {
  if (platform::Exists(kViewSkim)) return true;
  platform::ViewSpec view;
  view.id = kViewSkim;
  view.className = u"MorvaSkimWizard";
  view.accessibleName = u"Guided skim";
  view.background = kPanelBackground;
  if (!platform::MakeView(view)) return false;
  MakeForm(kSkimForm);
  MakeForm(kSkimMatrixForm);
  FillSkimTools();
  return true;
}

void PlaceForms(const Rect& area) {
  Rect form{kPad, kPad, RectWidth(area) - kPad, RectHeight(area) - kPad};
  if (skimWizard.matrixShown) {
    const int matrix = std::max(RectHeight(area) * kMatrixPercent / 100, kMatrixLeast);
    Rect pane = form;
    pane.top = form.bottom - matrix;
    form.bottom = pane.top - kPad;
    PlaceForm(kSkimMatrixForm, pane);
  } else {
    HideForm(kSkimMatrixForm);
  }
  PlaceForm(kSkimForm, form);
  platform::SetEnabled(kIdSkimBack, skimWizard.page != kSkimStock);
}

void Show(const Rect& area) {
  if (!MakeGround()) return;
  platform::SetPlace(kViewSkim, area);
  PlaceForms(area);
  platform::SetVisible(kViewSkim, true);
  platform::Repaint(kViewSkim);
}

void Hide() { platform::SetVisible(kViewSkim, false); }

void Enter() {
  shownProgram = ActiveSerial();
  EnterSkim();
}

// The program's own path is back as it stood, head and speed too. An insertion has read it anew.
void Left() {
  NoteSkimField(-1);
  Call(hooks.leavePreview);
}

bool Key(int, const platform::KeyEvent& key) {
  if (ProgramKey(key)) return true;
  return key.key == platform::kKeyEscape && Call(hooks.dropPlacePick);
}

void FocusChanged(int id, bool gained) {
  const bool field = id >= kIdSkimField && id < kIdSkimField + kSkimFields;
  if (gained || field) MarkSkimField(gained && field ? id - kIdSkimField : -1);
  platform::Repaint(kViewSkim);
  platform::Repaint(kViewSkimPaper);
}

// Another program has other geometry to place the stock on.
void Settled() {
  if (ActiveSerial() == shownProgram) return;
  shownProgram = ActiveSerial();
  RefreshSkimView();
}

void Paint(platform::Canvas& canvas) {
  platform::FillArea(canvas, platform::CanvasArea(canvas), kPanelBackground);
  PaintForms(canvas, kViewSkim);
}

bool Back() {
  CancelSkim();
  return true;
}

}  // namespace

void RegisterSkimSurface() {
  Surface surface;
  surface.surface = kSurfaceSkim;
  surface.title = u"Guided skim";
  surface.subtitle = u"MORVA \u2022 v4.20";
  // The back key knows the way by itself: where the wizard was opened may be two steps back.
  surface.withView = true;
  surface.show = Show;
  surface.hide = Hide;
  surface.enter = Enter;
  surface.left = Left;
  surface.back = Back;
  surface.key = Key;
  surface.focusChanged = FocusChanged;
  surface.settled = Settled;
  surface.cancelInput = [] { Call(hooks.dropPlacePick); };
  RegisterSurface(surface);
  Handlers handlers;
  handlers.id = kViewSkim;
  handlers.paint = Paint;
  RegisterHandlers(handlers);
  RegisterForm(kSkimForm);
  RegisterForm(kSkimMatrixForm);
  RegisterSheet<kSkimSheet>();
}

void ResetSkimSurface() {
  shownProgram = 0;
  ResetForm(kSkimForm);
  ResetForm(kSkimMatrixForm);
}

}  // namespace morva
