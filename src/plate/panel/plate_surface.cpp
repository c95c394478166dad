#include "plate/panel/plate_surface.h"

#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/icon_names.h"
#include "app/outlets.h"
#include "app/surfaces.h"
#include "documents/autosave.h"
#include "documents/tab_table.h"
#include "forms/form.h"
#include "plate/canvas/plate_keys.h"
#include "plate/canvas/plate_pointer.h"
#include "plate/model/plate.h"
#include "plate/model/plate_names.h"
#include "plate/panel/plate_live.h"
#include "plate/panel/plate_workspace.h"
#include "plate/tools/plate_drawings.h"
#include "plate/tools/plate_editor.h"
#include "plate/tools/plate_saving.h"
#include "platform/events.h"
#include "platform/window.h"

namespace morva {

namespace {

void Enter() {
  if (plate.pending) ScheduleAutosave();  // the library could not be written before
  if (PlateLacksName()) {
    OpenPlateNaming(false);
  } else {
    platform::SetFocusTo(kViewPlatePicture);
  }
}

// What the status line here says is out of sight now.
void Left() {
  DropPlateDrag();
  SavePendingPlate();
  const ProgramTab* tab = ActiveTab();
  const std::u16string half = tab ? HalfNumberKept(*tab) : std::u16string();
  if (!half.empty()) ShowStatus(half);
  SayWhatIsOwed();
}

// Before another program comes up: what was dragged stands where it stood, and a named plate is in
// the library.
void CancelInput() {
  if (!PlateWindowExists()) return;
  DropPlateDrag();
  SavePendingPlate();
}

// The log lies on the code surface: here its lines stand on the status line.
void ShowLogged(std::u16string_view text) {
  if (!PlateWindowExists()) return;
  const std::u16string_view line = text.substr(0, text.find_first_of(u"\r\n"));
  if (!line.empty()) SayOnPlate(line);
}

bool Key(int id, const platform::KeyEvent& key) {
  if (!PlateWindowExists()) return false;
  if (id == kViewPlatePicture) return PlateViewKey(key);
  return FormKey(id, key);
}

void FocusChanged(int /*id*/, bool gained) {
  if (!PlateWindowExists()) return;
  FinishPlateTexts();
  if (gained) ShowPlateHint();
  platform::Repaint(kViewPlate);
}

constexpr ModeKey kKeys[] = {{kIdOldModeLast}};

}  // namespace

const ModeRow kPlateMode = {.mode = kModePlateItem,
                            .place = 3,
                            .words = u"Plate builder",
                            .icon = kIconPlate,
                            .keys = kKeys};

void RegisterPlateSurface() {
  Surface surface;
  surface.surface = kSurfacePlate;
  surface.button = kIdSurfacePlate;
  surface.buttonWidth = 64;
  surface.modes = {&kPlateMode, 1};
  surface.row = kModePlateItem;
  surface.title = u"Plate Builder";
  surface.subtitle = u"MORVA \u2022 v4.20";
  surface.hintLabel = kIdPlateHint;
  surface.returns = true;
  surface.show = ShowPlateWorkspace;
  surface.hide = HidePlateWorkspace;
  surface.enter = Enter;
  surface.mayLeave = MayLeavePlate;
  surface.left = Left;
  surface.key = Key;
  surface.focusChanged = FocusChanged;
  surface.settled = RefreshPlateWorkspace;
  surface.logged = ShowLogged;
  surface.storePending = SavePendingPlate;
  surface.storeOwed = SaveOwedShapes;
  surface.mayClose = MayEndWithPlates;
  surface.mayCloseProgram = MayCloseWithPlate;
  surface.cancelInput = CancelInput;
  RegisterSurface(surface);
}

}  // namespace morva
