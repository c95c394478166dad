// The main window, the drawn views and what every placed thing has in common.
//
// Controls (control.h), lists (listing.h), editors (editor.h) and drawn views all live in one
// space of ids; the functions "of a placed thing" below work on any of them. An id that does
// not exist is ignored by setters and answered with zero, false or nothing by getters.
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
// Asks to close, as the close key does.
void RequestClose();
// Ends the loop; RunLoop returns `code`.
void QuitLoop(int code);
int RunLoop();

struct ViewSpec {
  int id = 0;
  const char16_t* className = u"";
  const char16_t* accessibleName = u"";
  Colour background = 0;
  bool takesFocus = false;
  int parent = kMainWindow;
};

// A drawn view: a child that paints itself through Events::paint.
bool MakeView(const ViewSpec& spec);
// The id of the view with this class name, 0 for none. The main window answers too.
int ViewByClass(std::u16string_view className);
std::u16string_view ClassOf(int id);

// Of a placed thing.
bool Exists(int id);
void Destroy(int id);
void SetPlace(int id, const Rect& place);  // parent's client pixels; does nothing when equal
Rect PlaceOf(int id);
void SetVisible(int id, bool visible);
bool IsVisible(int id);  // itself and every parent
void SetEnabled(int id, bool enabled);
bool IsEnabled(int id);
void SetFocusTo(int id);
int FocusedId();  // 0 when nothing of ours has the keyboard
void Repaint(int id);
void BringToTop(int id);
// Tab order follows the order of the ids given here.
void SetTabOrder(const int* ids, int count);

// Pointer. The thing of ours under the pointer (0: none, or another program's window).
int IdUnderPointer();
// All moves go to this view until ReleasePointer or the button is up.
void CapturePointer(int view);
void ReleasePointer();
// Whether Ctrl is down now, for clicks that mean something else with it.
bool CtrlHeld();
// Whether any button of the pointer is down now, wherever it was pressed.
bool ButtonHeld();
enum class PointerShape { Arrow, SizeAcross, Cross, Hand };
void SetPointerShape(int id, PointerShape shape);
// The place of `id` in main-window pixels.
Rect PlaceInMainWindow(int id);

}  // namespace platform
