#include "skim/panel/skim_surface.h"

#include <cstddef>

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
constexpr int kPaneLeast = 180;  // pixels, nine lines

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
  MakeForm(kSkimPanes);
  FillSkimTools();
  return true;
}

// The code on the last page, and the matrix where it is shown; how many.
int PanesShown(FormPart (&parts)[2]) {
  int count = 0;
  if (skimWizard.page == kSkimReview) parts[count++].page = kSkimCodePane;
  if (skimWizard.matrixShown) parts[count++].page = kSkimMatrixPane;
  return count;
}

// The panes share what the form leaves, below each other.
void PlacePanes(FormPart (&parts)[2], int count, const Rect& area) {
  const int height = (RectHeight(area) - (count - 1) * kPad) / count;
  for (int i = 0; i < count; ++i) {
    const int top = area.top + i * (height + kPad);
    parts[i].area = Rect{area.left, top, area.right, top + height};
  }
  PlaceForm(kSkimPanes, {parts, static_cast<std::size_t>(count)});
}

// The form takes what it needs; where too little is left for the panes, it scrolls.
void PlaceForms(const Rect& area) {
  const Rect ground{kPad, kPad, RectWidth(area) - kPad, RectHeight(area) - kPad};
  FormPart parts[2];
  const int count = PanesShown(parts);
  Rect form = ground;
  form.bottom -= count * (kPaneLeast + kPad);
  PlaceForm(kSkimForm, form);
  platform::SetEnabled(kIdSkimBack, skimWizard.page != kSkimStock);
  if (count == 0) return HideForm(kSkimPanes);
  Rect panes = ground;
  panes.top = platform::PlaceOf(kIdSkimCancel).bottom + kPad;
  PlacePanes(parts, count, panes);
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
  NoteEditedSkim();  // another block may come under edit meanwhile
  NoteSkimField(-1);
  NoteSkimProgram(shownProgram);
  KeepSkimTexts();
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
  const bool other = ActiveSerial() != shownProgram;
  shownProgram = ActiveSerial();
  if (other) RefreshSkimView();
  // Programs may have come up and gone in one command.
  if (other || skimWizard.edit.program == shownProgram) FollowEditedSkim();
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
  surface.mayReturn = [] { return skimWizard.open; };
  surface.key = Key;
  surface.focusChanged = FocusChanged;
  surface.settled = Settled;
  surface.cancelInput = [] {
    Call(hooks.dropPlacePick);
    NoteEditedSkim();
  };
  RegisterSurface(surface);
  Handlers handlers;
  handlers.id = kViewSkim;
  handlers.paint = Paint;
  RegisterHandlers(handlers);
  RegisterForm(kSkimForm);
  RegisterForm(kSkimPanes);
  RegisterSheet<kSkimSheet>();
}

void ResetSkimSurface() {
  shownProgram = 0;
  ResetForm(kSkimForm);
  ResetForm(kSkimPanes);
}

}  // namespace morva
