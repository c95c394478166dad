// Modal dialogs of the application's own: a window over the main window, run until it is ended.
//
// Controls are made with the dialog's id as their parent and go with it. While it runs the
// main window takes no input, but timers and posted messages go on, so that whatever was
// looked up before may be gone behind it. Its controls speak to the dialog's own function and
// to nobody else: neither Events::command nor Events::key hears them. Enter presses the
// default button unless another button, a list's row, a multi-line edit or an editor has the
// keyboard; Escape and the window's close key press the cancel button. A default button that is
// hidden or disabled is not pressed. The keyboard is with the first control, or where SetFocusTo
// wanted it, and Tab stays inside.
#pragma once

#include "platform/geometry.h"
#include "platform/window.h"

namespace platform {

struct DialogSpec {
  int id = 0;
  const char16_t* className = u"";
  const char16_t* title = u"";
  Rect place;  // client size, and its place from the main window's top left
  Colour background = 0;
  int defaultButton = 0;
  int cancelButton = 0;
  // A control speaks: its id and one of the kNotify codes.
  void (*command)(int id, int notification) = nullptr;
};

// Makes it, hidden. False: there is no main window, or the id is taken.
bool MakeDialog(const DialogSpec& spec);
// Shows it and returns when it has been ended, with the code of EndDialog; 0 when it went away
// in any other way or does not exist. The dialog and its controls are gone then.
int RunDialog(int id);
// Ends it; RunDialog returns `code` once what is under way has come back to it. The first code
// counts; one that was ended before it runs is not shown.
void EndDialog(int id, int code);

}  // namespace platform
