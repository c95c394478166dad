// Surfaces: the large workspaces beside the code surface, as records that their rooms hand in.
//
// One surface is up at a time, the one that app.surface names. The shell itself makes the code
// surface, which has no record. It knows any other surface by its record alone: it shows and
// hides it, offers it what happens while it is up and takes words and keys from it. A null
// pointer in a record means that the surface has nothing to do there.
#pragma once

#include <span>
#include <string_view>

#include "app/app_state.h"
#include "app/mode_table.h"
#include "platform/events.h"
#include "platform/geometry.h"

namespace morva {

struct Surface {
  int surface = kSurfaceCode;      // WorkspaceSurface, not 0
  int button = 0;                  // id of the key that brings it up, 0 for none
  int buttonWidth = 64;            // pixels of that key
  std::span<const ModeRow> modes;  // what the window says of its row and its pages
  int row = -1;                    // its row in the mode list, as a WorkspaceMode; -1 for none
  std::span<const int> pages;      // modes that open a page of it; the mode then is Home
  const char16_t* title = u"";     // the head of its band
  const char16_t* subtitle = u"";  // below the head
  int hintLabel = 0;               // label for the help of a key, 0: the output log takes it
  bool returns = false;            // the back key leads to where it was entered from
  bool withView = false;           // the toolpath view stands beside it, with narrow bars

  // Coming and going. `show` makes the surface at first use, places it in `area` of the main
  // window and shows it; it comes again at every layout. `hide` comes also before the first show.
  void (*show)(const platform::Rect& area) = nullptr;
  void (*hide)() = nullptr;
  // It came up and lies in its place: takes the keyboard.
  void (*enter)() = nullptr;
  void (*openPage)(int mode) = nullptr;  // one of `pages`, after the surface came up
  // Asked once before another surface comes up by the user's wish. False: everything stays.
  bool (*mayLeave)() = nullptr;
  // app.surface names another one now; nothing is laid out yet.
  void (*left)() = nullptr;
  // The back key, before the surface is left by it. True: used up, it stays.
  bool (*back)() = nullptr;

  // Whether the back key may lead to it once it was left. Null: it may.
  bool (*mayReturn)() = nullptr;

  // Events while it is up; ids are those of the controls. True: used.
  bool (*key)(int id, const platform::KeyEvent& key) = nullptr;  // before anybody else
  bool (*rightClick)() = nullptr;  // anywhere in the window, before any context menu
  // After the controls' own menus, at main-window pixels; `row` is -1 outside of rows.
  bool (*contextMenu)(int id, int row, int x, int y) = nullptr;
  void (*focusChanged)(int id, bool gained) = nullptr;
  // After a command, a key that it used, a list click or a pointer event, whoever handled it.
  void (*settled)() = nullptr;
  void (*logged)(std::u16string_view text) = nullptr;  // a line went into the output log
  void (*storePending)() = nullptr;  // an autosave begins, maybe of other programs alone

  // Whichever surface is up.
  void (*cancelInput)() = nullptr;      // the program changes: no box floats, no pick waits
  void (*storeOwed)() = nullptr;        // an autosave begins: what could not be written goes first
  bool (*mayClose)() = nullptr;         // MORVA closes, all saves are done; false keeps it open
  bool (*mayCloseProgram)() = nullptr;  // the active program closes; false keeps it open
  void (*pointerOver)(int id) = nullptr;  // every 150 ms; 0 for nothing of ours
};

// Its button is a command from now on. A full table, the number 0 and a surface that has a record
// already stop the program with words.
void RegisterSurface(const Surface& surface);
int SurfaceCount();
const Surface& SurfaceAt(int index);
// The record of a surface, null for the code surface and for one that does not exist yet.
const Surface* SurfaceOf(int surface);
// The record of the surface that is up, null on the code surface.
const Surface* SurfaceUp();
// The surface that a mode stands for, as its row or as one of its pages; null for none.
const Surface* SurfaceOfMode(int mode);
void ClearSurfaces();

// Whether the key stands for what is up: the code surface's own, or that of a record.
bool IsSurfaceKeyOn(int id);

// To the surface that is up.
void SettleSurface();
void TellSurfaceLogged(std::u16string_view text);
// To every surface.
void CancelSurfaceInput();
void StoreWhatIsOwed();
// Asks one surface after the other; false: one of them keeps MORVA open.
bool MayCloseSurfaces();
// The same for the active program alone.
bool MayCloseProgram();
void TellPointerOver(int id);

}  // namespace morva
