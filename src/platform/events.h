// What the platform tells the application: one record of function pointers, set once.
//
// Every call arrives on the user-interface thread. A null pointer means that nobody listens.
// Controls, drawn views and windows share one space of numbers, their decimal ids.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/geometry.h"

namespace platform {

struct Canvas;

// Notification codes beside a command's id. A click or a menu item is 0.
inline constexpr int kNotifyClick = 0;
inline constexpr int kNotifyListSelect = 1;    // list box: the selection changed by the user
inline constexpr int kNotifyListDouble = 2;    // list box or log: double click, or Enter on a row
inline constexpr int kNotifyComboSelect = 1;   // combo: another row was chosen by the user
inline constexpr int kNotifyEditChange = 768;  // edit or editor: the text changed
inline constexpr int kNotifyHScroll = 1537;
inline constexpr int kNotifyVScroll = 1538;

// Keys as the application names them: letters and digits by their upper-case character, other
// printable ones by theirs, everything else by these values. Other characters have no name and are
// not offered to Events::key.
enum Key : int {
  kKeyNone = 0,
  kKeyEnter = 0x100,
  kKeyTab,
  kKeyEscape,
  kKeySpace,
  kKeyUp,
  kKeyDown,
  kKeyLeft,
  kKeyRight,
  kKeyHome,
  kKeyEnd,
  kKeyPageUp,
  kKeyPageDown,
  kKeyDelete,
  kKeyBackspace,
  kKeyF1 = 0x200,  // F1 to F12 follow each other
};

struct KeyEvent {
  int key = kKeyNone;
  bool ctrl = false;
  bool shift = false;
  bool alt = false;
};

// Lost: a button of the view is down, or it has the capture, and its release will not be told:
// another window, a popup or a box took the pointer.
enum class PointerAction { Press, Release, Move, DoubleClick, Wheel, Leave, Lost };
enum class PointerButton { None, Left, Middle, Right };

struct PointerEvent {
  PointerAction action = PointerAction::Move;
  PointerButton button = PointerButton::None;  // the button of a press, release or double click
  bool leftDown = false;                       // buttons held during a move
  bool middleDown = false;
  bool rightDown = false;
  bool ctrl = false;
  bool shift = false;
  bool alt = false;
  int x = 0;  // client pixels of the view
  int y = 0;
  int wheel = 0;  // notches, positive forward
};

// State of a control or of one list row that the application draws itself.
struct DrawState {
  Rect area;     // what to cover
  int row = -1;  // list row, -1 for a button
  bool selected = false;
  bool pressed = false;
  bool focused = false;
  bool enabled = true;
  bool checked = false;
  bool hovered = false;
};

// What a drawn view shows, for those who do not see it.
struct ViewValue {
  std::u16string words;  // what stands there now; empty: nothing to say
  int least = 0;         // of a slider or a bar, in whole steps
  int most = 0;
  int now = 0;
};

struct Events {
  // A control or menu item speaks. `notification` is one of the kNotify codes.
  void (*command)(int id, int notification) = nullptr;
  // Caret or selection of an editor moved; `byUser`: under the user's keys or pointer, and not by a
  // function of editor.h.
  void (*selection)(int id, bool byUser) = nullptr;
  // A key before the thing that has the keyboard sees it, or the main window's where nothing has;
  // told once. True: handled, the control gets nothing.
  bool (*key)(int id, const KeyEvent& key) = nullptr;
  // A character typed into an editor, after it was taken and told as a change; 0 for none (a key
  // that edits).
  void (*typed)(int id, char16_t character) = nullptr;
  // A timer of window `window` fired.
  void (*timer)(int window, int timer) = nullptr;
  // A message that PostToMain sent.
  void (*posted)(std::uint32_t message, std::uint64_t first, std::uint64_t second) = nullptr;
  // Draw the whole client area of a drawn view or of the main window.
  void (*paint)(int view, Canvas& canvas) = nullptr;
  // Assistive technology asks what a drawn view shows.
  void (*viewValue)(int view, ViewValue& value) = nullptr;
  // Assistive technology sets a slider to a step from `least` to `most`.
  void (*chooseValue)(int view, int step) = nullptr;
  // Draw one owner-drawn control or one list row.
  void (*drawItem)(int id, const DrawState& state, Canvas& canvas) = nullptr;
  // Pointer on a drawn view or on the bare main window. True: used; a double click that is not
  // used comes again as a press. A label hands presses, and what does not scroll the wheel, to
  // the view around it. An editor tells moves without a button too, and goes on to use them itself.
  bool (*pointer)(int view, const PointerEvent& event) = nullptr;
  // A control or list row is asked for its context menu, at main-window pixels, when the right
  // button goes down or comes up, as the system has it. `row` is the row under the pointer or
  // -1. True: handled, no menu of the toolkit's own.
  bool (*contextMenu)(int id, int row, int x, int y) = nullptr;
  // A press of the left button in a list, on release, at list pixels.
  void (*listClick)(int id, int row, int x, int y) = nullptr;
  // A control got or lost the keyboard.
  void (*focusChanged)(int id, bool gained) = nullptr;
  // The user dropped files on the main window, full paths in the order that the other program gave
  // them. The program never moves or deletes them. Not while a box, a dialog or a menu stands.
  void (*dropped)(const std::vector<std::u16string>& paths) = nullptr;
  // The main window's client size changed.
  void (*resized)(int width, int height) = nullptr;
  // The user closes the main window. False: it stays.
  bool (*closing)() = nullptr;
  // The application came to the front again, behind another program. While a box, a dialog or a
  // menu asks the user, it is told behind the answer.
  void (*activated)() = nullptr;
  // The system asks the process to end. Nobody is there to answer questions; the loop ends
  // behind it.
  void (*terminated)() = nullptr;
  // The main window is gone; called once, last.
  void (*destroyed)() = nullptr;
};

// Keeps `events` for the whole run; the record must outlive it.
void ListenTo(const Events* events);
const Events& Listener();

}  // namespace platform
