// The main window, the drawn views and what every placed thing has in common.
//
// Controls (control.h), lists (listing.h), editors (editor.h) and drawn views all live in one
// space of ids; the functions "of a placed thing" below work on any of them. An id that does
// not exist, or is of another kind than the function is for, is ignored by setters and answered
// with zero, false or nothing by getters (-1 for a row).
//
// Who has the keyboard loses it when it is hidden, disabled or destroyed: it goes on to the next
// in the order of Tab that takes it. Events::focusChanged tells who lost it, then who has it. A
// box, a file dialog or a dialog takes it and gives it back.
#pragma once

#include <string>
#include <string_view>

#include "platform/geometry.h"

namespace platform {

// The main window's own id in every function that takes one.
inline constexpr int kMainWindow = 20000;

struct MainWindowSpec {
  const char16_t* className = u"";
  const char16_t* title = u"";
  Rect place;  // outer place on the screen
  int minimumWidth = 0;
  int minimumHeight = 0;
  // What is enough on a screen that has no room for the minimum; the window then takes the whole
  // screen at first. 0: the minimum holds on every screen.
  int smallWidth = 0;
  int smallHeight = 0;
  Colour background = 0;
};

// Makes the main window, hidden. False: no window could be made.
bool MakeMainWindow(const MainWindowSpec& spec);
// A dark title bar where the system has one; nothing elsewhere.
void DarkTitleBar();
struct Canvas;
// The main window's icon, drawn once over a small square canvas; nothing where there are none.
void SetWindowIcon(void (*draw)(Canvas& canvas));
void ShowMainWindow();
void SetWindowTitle(std::u16string_view title);
std::u16string WindowTitle();
// Client width and height of the main window or of a view, in `right` and `bottom`.
Rect ClientArea(int id);
// Asks to close, as the close key does: at once, or when what is under way has come back to the
// loop. Once Events::destroyed is told nothing more is.
void RequestClose();
// Ends the loop; RunLoop returns `code`.
void QuitLoop(int code);
int RunLoop();

// What a drawn view is to assistive technology. One that holds other things is a group of them.
enum class ViewRole { Drawing, Slider, Progress };

struct ViewSpec {
  int id = 0;
  const char16_t* className = u"";
  const char16_t* accessibleName = u"";
  Colour background = 0;
  bool takesFocus = false;
  int parent = kMainWindow;
  ViewRole role = ViewRole::Drawing;
};

// A drawn view: a child that paints itself through Events::paint. Assistive technology asks
// through Events::viewValue what it shows, and sets a slider through Events::chooseValue.
bool MakeView(const ViewSpec& spec);
// What a view shows is another than before: assistive technology is told to ask again.
void TellViewValue(int id);
// The id of the view with this class name, the first made of several, 0 for none and for an
// empty name. The main window and dialogs answer too.
int ViewByClass(std::u16string_view className);
std::u16string_view ClassOf(int id);

// Of a placed thing.
bool Exists(int id);
// With all that lies in it; may be called inside the thing's own notification. The ids are free
// at once.
void Destroy(int id);
// In the parent's client pixels; does nothing when equal. An inverted rectangle is an empty one
// at its left and top. The main window and dialogs stay where they are.
void SetPlace(int id, const Rect& place);
Rect PlaceOf(int id);  // empty until it is set; in main-window pixels of windows
void SetVisible(int id, bool visible);
bool IsVisible(int id);  // itself and every parent
void SetEnabled(int id, bool enabled);
bool IsEnabled(int id);
// Nothing happens when it is hidden, disabled or takes no keyboard. In a dialog that does not run
// yet it is kept for then. The main window never has it: it gives the keyboard to nobody.
void SetFocusTo(int id);
int FocusedId();  // 0 when nothing of ours has the keyboard, as while a box stands
void Repaint(int id);
void BringToTop(int id);  // of its parent's children, which lie in the order of their making
// Tab goes from each to the next one given here, otherwise in the order of making; what is
// hidden, disabled or unknown is passed by.
void SetTabOrder(const int* ids, int count);

// Pointer. The thing of ours under the pointer (0: none, or another program's window).
int IdUnderPointer();
// A number that is another one than at the last call when the user has moved the pointer since, and
// the same one when only the things below it came, went or moved.
unsigned PointerMoves();
// All moves go to this view until ReleasePointer or the button is up. A button that is down ties
// the pointer to the view where it went down in any case.
void CapturePointer(int view);
void ReleasePointer();
// Whether Ctrl is down now, for clicks that mean something else with it.
bool CtrlHeld();
// Whether any button of the pointer is down now, wherever it was pressed.
bool ButtonHeld();
enum class PointerShape { Arrow, SizeAcross, SizeUpDown, Cross, Hand };
void SetPointerShape(int id, PointerShape shape);
// The place of `id` in main-window pixels.
Rect PlaceInMainWindow(int id);

}  // namespace platform
