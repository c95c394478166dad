#include "cad/panel/cad_surface.h"

#include <string>
#include <string_view>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "app/mode_table.h"
#include "app/router.h"
#include "app/surfaces.h"
#include "cad/canvas/canvas_pointer.h"
#include "cad/geometry/canvas_view.h"
#include "cad/geometry/hits.h"
#include "cad/model/cad_chords.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/drawings.h"
#include "cad/model/hint_line.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/panel/drawing_tabs.h"
#include "cad/panel/pattern_form.h"
#include "cad/panel/wanted.h"
#include "cad/panel/workspace.h"
#include "cad/tools/draw_tools.h"
#include "cad/tools/flyout.h"
#include "cad/tools/size_boxes.h"
#include "cad/tools/tool_change.h"
#include "documents/program_tabs.h"
#include "forms/form.h"
#include "platform/control.h"
#include "platform/events.h"
#include "platform/listing.h"
#include "platform/window.h"

namespace morva {

namespace {

using platform::KeyEvent;

void FocusCadCanvas() { platform::SetFocusTo(kViewCadCanvas); }

void RunCommand(int id) { RouteCommand(id, platform::kNotifyClick); }

bool IsCadField(int id) { return FieldCommand(id) != 0; }

// Escape leaves the field for the canvas.
bool FieldKey(int id, const KeyEvent& key) {
  if (key.key != platform::kKeyEscape || key.ctrl || key.alt) return false;
  // A click on a dimension brought the keyboard here: Escape ends the mode as on the canvas.
  if (id == kIdCadDimensionValue && DrawToolKey(key)) return true;
  FocusCadCanvas();
  return true;
}

bool NameKey(const KeyEvent& key) {
  if (key.key != platform::kKeyEnter && key.key != platform::kKeyEscape) return false;
  if (key.key == platform::kKeyEnter) RunCommand(kIdDrawingRename);
  CloseDrawingName();  // after Escape the old name stands
  FocusCadCanvas();
  return true;
}

// Any key but Tab brings back the control that it goes to, so that nobody types unseen. Enter and
// the page keys are the form's.
bool SheetKey(int id, const KeyEvent& key) {
  if (FormKey(id, key)) return true;
  if (key.key != platform::kKeyTab) ShowFormControl(id);
  return false;
}

// The command of a chord that holds on every control of the workspace; Shift makes no difference.
int WorkspaceCommand(const KeyEvent& key) {
  KeyEvent unshifted = key;
  unshifted.shift = false;
  return CommandOfChord(kCadChords, unshifted);
}

// Before the program changes: no box may float and no pick may wait for the other drawing.
void CancelInput() {
  if (!CadWindowExists()) return;
  ForgetWanted();
  StopTools(false);
  RefreshCadTools();
}

// The log lies on the code surface: here its lines stand on the status line as well.
void ShowLogged(std::u16string_view text) {
  if (!CadWindowExists()) return;
  const std::u16string line(text.substr(0, text.find_first_of(u"\r\n")));
  if (!line.empty()) SetPassingStatus(line.c_str());
}

// Both pattern forms are panels of the workspace.
void OpenPatternPage(int mode) {
  FollowUnit();
  OpenPatternPanel(mode == kModeCircular ? kPanelCircular : kPanelRectangular, true);
  RefreshCadTools();
}

// Nothing is edited that cannot be seen as it lies; Escape returns to the plan at once, whatever
// has the keyboard.
bool ModelKey(int id, const KeyEvent& key) {
  if (!canvasView.modelView || key.ctrl || key.alt) return false;
  if (WorkspaceCommand(key) != 0) return true;
  if (key.key != platform::kKeyEscape || key.shift || id == kIdCadDrawingName) return false;
  LeaveModelView();
  FocusCadCanvas();
  return true;
}

// The right mouse button, wherever it is, gives up the tool in hand. True: there was one, and the
// click is used up.
bool CadRightClick() {
  if (!AnyToolInHand() && !canvasView.panTool) return false;
  CancelTools();
  RefreshCadTools();
  FocusCadCanvas();
  return true;
}

// The popup of the selected geometry.
void ShowCadMenu(int x, int y) {
  const bool some = HasSketchSelection();
  const MenuRow rows[] = {
      {kIdCadUndo, sketch.undoDepth > 0},
      {},
      {kIdCadCut, some},
      {kIdCadCopy, some},
      {kIdCadPaste},
      {kIdCadDuplicate, some},
      {},
      {kIdCadScale, some},
      {kIdCadCircularPanel, some},
      {kIdCadGridPanel, some},
      {},
      {kIdCadHide, some},
      {kIdCadLock, some},
      {},
      {kIdCadDelete, some},
      {},
      {kIdCadSaveShape},
  };
  const int picked = ShowCommandMenu(rows, x, y);
  if (picked > 0) RunCommand(picked);
  RefreshCadTools();
}

// A context menu is asked for on a control of the surface, at main-window pixels. True: shown.
bool CadContextMenu(int id, int row, int x, int y) {
  if (id == kIdCadOperations) {
    if (row >= 0) {
      platform::SelectRow(id, row);
      RouteCommand(id, platform::kNotifyListSelect);
    }
    ShowCadMenu(x, y);
    return true;
  }
  if (id != kViewCadCanvas || canvasView.modelView) return false;
  if (TakeSpentRightClick()) return true;
  const platform::Rect place = platform::PlaceInMainWindow(id);
  // The keyboard asks at a place of its own; only the pointer points at an object.
  const bool pointed = canvasView.cursorX == x - place.left && canvasView.cursorY == y - place.top;
  if (pointed) {
    double dx = 0;
    double dy = 0;
    FromCanvas(x - place.left, y - place.top, dx, dy);
    const int hit = HitObject(dx, dy);
    if (hit >= 0 && hit != sketch.selected) {
      // As a click does: a marked object keeps the marks, so that Delete takes them all.
      SetSelected(hit);
      if (!IsMultiSelected(hit)) ClearMultiSelect();
      RefreshSketchPanels();
    }
  }
  ShowCadMenu(x, y);
  return true;
}

// A key on any control of the surface, before it gets it. True: used.
bool CadKey(int id, const KeyEvent& key) {
  if (!CadWindowExists()) return false;
  if (ModelKey(id, key)) return true;
  if (const int command = WorkspaceCommand(key)) {
    RunCommand(command);
    return true;
  }
  if (id == kIdCadSizeBox1 || id == kIdCadSizeBox2) return SizeBoxKey(key);
  if (id == kIdCadDrawingName) return NameKey(key);
  if (ProgramKey(key)) return true;
  if (SheetKey(id, key)) return true;
  if (IsCadField(id)) return FieldKey(id, key);
  if (platform::IsTextControl(id)) return false;
  if (FlyoutKey(id, key)) return true;
  if (id == kViewCadCanvas && (WantedKey(key) || CanvasKey(key))) return true;
  const int command = SketchShortcut(key);
  if (command != 0 && !canvasView.modelView) RunCommand(command);
  return command != 0;
}

void Settled() {
  FollowUnit();
  RefreshCadTools();
}

void CadFocusChanged(int /*id*/, bool gained) {
  if (!CadWindowExists()) return;
  // Once a control has the keyboard, its help is not needed: the line shows the tool again.
  if (gained) RestoreHintLine();
  platform::Repaint(kViewCad);
  platform::Repaint(kViewCadSheet);
  if (tools.sizePanelShown) platform::Repaint(kViewCadCanvas);
}

constexpr ModeKey kItemKeys[] = {{kIdOldModeFirst + 11}};
constexpr ModeKey kCircularKeys[] = {{kIdOldModeFirst + 8}};
constexpr ModeKey kRectangularKeys[] = {{kIdOldModeFirst + 10}};
constexpr ModeRow kModes[] = {
    {.mode = kModeCadItem, .place = 2, .words = u"CAD", .icon = kIconCad, .keys = kItemKeys},
    {.mode = kModeCircular,
     .header = u"CIRCULAR PATTERN",
     .help = u"CIRCULAR PATTERN\r\n\r\nPreview quantity, diameter, orientation, rotation, depth, "
             u"and safe Z before inserting editable G-code.",
     .keys = kCircularKeys},
    {.mode = kModeRectangular,
     .header = u"RECTANGULAR PATTERN",
     .help = u"RECTANGULAR PATTERN\r\n\r\nPreview and verify row/column count, spacing, rotation, "
             u"depth, and safe Z before inserting editable G-code.",
     .keys = kRectangularKeys},
};
constexpr int kPages[] = {kModeCircular, kModeRectangular};

}  // namespace

void RegisterCadSurface() {
  RegisterWorkspace();
  Surface surface;
  surface.surface = kSurfaceCad;
  surface.button = kIdSurfaceCad;
  surface.buttonWidth = 56;
  surface.modes = kModes;
  surface.row = kModeCadItem;
  surface.pages = kPages;
  surface.title = u"CAD Workspace";
  surface.subtitle = u"MORVA \u2022 v4.20";
  surface.hintLabel = kIdCadHint;
  surface.returns = true;
  surface.show = ShowCadWorkspace;
  surface.hide = HideCadWorkspace;
  surface.enter = FocusCadCanvas;
  surface.openPage = OpenPatternPage;
  surface.left = ForgetWanted;
  surface.back = WantedBack;
  surface.key = CadKey;
  surface.rightClick = CadRightClick;
  surface.contextMenu = CadContextMenu;
  surface.focusChanged = CadFocusChanged;
  surface.settled = Settled;
  surface.logged = ShowLogged;
  surface.cancelInput = CancelInput;
  surface.pointerOver = FlyoutPointerOver;
  RegisterSurface(surface);
}

}  // namespace morva
