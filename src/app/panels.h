// Panels: how a room puts controls of its own into the main window without knowing the shell.
//
// A room registers a panel and the handlers of its controls when rooms are joined at start-up.
// The shell makes every panel once, places it while it is active and hides whatever else lies
// in its area.
#pragma once

#include <span>

#include "app/key_rows.h"
#include "platform/canvas.h"
#include "platform/events.h"
#include "platform/geometry.h"

namespace morva {

struct ModeRow;

enum class PanelSpot {
  RightBody,   // below the header of the right panel, in modes that have one
  Editor,      // exactly the code editor's place; the gutter stays
  Work,        // in place of editor and gutter, to the right end; the toolpath view goes
  Foot,        // beside the output while the code index is the mode and the left panel shows it
  OutputHead,  // left of the keys above the output, at Home
  LeftLower,   // below FEATURES and CODE INDEX: feature list, its keys, name box and hint
};

struct Panel {
  PanelSpot spot = PanelSpot::RightBody;
  int mode = -1;                 // the mode this panel belongs to, -1 for none
  const ModeRow* row = nullptr;  // what the window says of the mode; null: another one hands it in
  std::span<const ModeRow> moreModes = {};              // further modes that show the same panel
  bool (*active)() = nullptr;                           // null: active while its mode is shown
  void (*make)() = nullptr;                             // makes the controls, hidden
  void (*place)(const platform::Rect& area) = nullptr;  // places and shows them
  void (*hide)() = nullptr;
  void (*enter)() = nullptr;  // the mode was entered: refresh the content
  void (*left)() = nullptr;   // another mode or surface is up; comes once for what was entered
  // Of a panel in the right body whose mode shows the toolpath view as well, with narrow bars. The
  // view stands beside the panel where the window is wide enough, else below it and keeps its
  // least. Pixels that the panel keeps when the view stands below it; 0: no view. In the smallest
  // window about 250 pixels are left, so a higher form stands on a sheet and scrolls.
  int heightAboveView = 0;
  bool helpBelow = false;           // the mode's help text stands below a panel in the right body
  std::span<const int> wells = {};  // controls that the main window frames as wells
  // The back key, while the panel is active, before anything is left. True: used up.
  bool (*back)() = nullptr;
  // Takes the keyboard where the work area is the panel's again. False: it has no use for it.
  bool (*focus)() = nullptr;
  // MORVA is to close, whatever mode is up. False: it stays, as something would be lost that the
  // user wants to keep. Null: nothing would be lost.
  bool (*mayEnd)() = nullptr;
  // Writes the ids of its controls in the order of Tab; how many. Null: it leaves them as made.
  int (*tabStops)(int* ids, int capacity) = nullptr;
};

// A full table stops the program with words.
void RegisterPanel(const Panel& panel);
int PanelCount();
const Panel& PanelAt(int index);
// Whether the panel belongs to this mode.
bool IsPanelOf(const Panel& panel, int mode);
// Whether a panel is to be shown now.
bool IsPanelActive(const Panel& panel);
// Whether some panel belongs to this mode.
bool HasPanel(int mode);
// Whether an active panel stands at this spot.
bool IsPanelAt(PanelSpot spot);
// Gives the keyboard to the active panel there. False: none wants it.
bool FocusPanelAt(PanelSpot spot);
// Panel::heightAboveView and Panel::helpBelow of the active panels.
int HeightAboveView();
bool IsHelpBelow();
// Asks the panels, until one of them says no, whether MORVA may close.
bool MayEndPanels();
// Whether a panel may come up in the work area. False: another one stands there, and the user was
// told to close it.
bool MayTakeWork();
// Places a control of a panel, in pixels of the main window, and shows it.
void ShowAt(int id, const platform::Rect& place);
// Lays the window out anew, after something that decides about a panel changed.
void RelayPanels();

// Events of one control or view of a room, the main window among them; null pointers: nobody
// listens.
struct Handlers {
  int id = 0;
  void (*paint)(platform::Canvas& canvas) = nullptr;
  void (*drawItem)(const platform::DrawState& state, platform::Canvas& canvas) = nullptr;
  bool (*pointer)(const platform::PointerEvent& event) = nullptr;
  bool (*key)(const platform::KeyEvent& key) = nullptr;
  std::span<const KeyRow> keys = {};  // those that `key` runs, for the page of keys
  void (*typed)(char16_t character) = nullptr;
  void (*selection)(bool byUser) = nullptr;  // caret or selection of an editor moved
  bool (*contextMenu)(int row, int x, int y) = nullptr;
  void (*listClick)(int row, int x, int y) = nullptr;
  void (*focusChanged)(bool gained) = nullptr;
  void (*timer)(int timer) = nullptr;
  // What a view shows, for assistive technology, and its setting of a slider.
  void (*value)(platform::ViewValue& value) = nullptr;
  void (*chooseValue)(int step) = nullptr;
};

// A full table and an id of 0 stop the program with words.
void RegisterHandlers(const Handlers& handlers);
// The n-th record of an id, null past the last. Several rooms may listen to one id; the first
// that answers true ends the search.
const Handlers* HandlersOf(int id, int n);
std::span<const Handlers> AllHandlers();

// The rows of the modes go with them.
void ClearPanels();

}  // namespace morva
