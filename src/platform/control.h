// Push buttons, check boxes, labels, edit lines and multi-line edits, by id.
//
// The toolkit's real widgets stand behind the ids, so keyboard, focus, input methods and
// accessibility are the toolkit's. Buttons and lists are drawn by the application
// (Events::drawItem). Setting a text or a state from here sends no notification, except
// where a function says so.
//
// Under the user's keys: a run of typed characters, or of one erasing key, is one step of the
// undo history, and a paste is one. A character with Alt is not written. An edit line that Tab
// comes to has all of its text selected, and forgets its selection with the keyboard. Space
// presses a button or turns a check box over, Enter presses a button only, and the arrows hand
// the keyboard on as Tab does. How far a key goes by words or pages is the toolkit's own.
//
// Assistive technology works a button or a check box as a click does, whatever it calls that; one
// that is disabled, hidden or behind a box, a dialog or a menu cannot be worked.
#pragma once

#include <string>
#include <string_view>

#include "platform/geometry.h"
#include "platform/window.h"

namespace platform {

enum class ControlKind {
  PushButton,
  CheckBox,
  Label,
  EditLine,   // one line
  MultiEdit,  // several lines, plain text
  Log,        // several lines, read only, keeps its end in view when appended to
};

struct ControlSpec {
  int id = 0;
  ControlKind kind = ControlKind::Label;
  const char16_t* text = u"";
  const char16_t* accessibleName = u"";  // empty: the caption stands for it; an edit has none
  FontRole font = FontRole::Body;
  int parent = kMainWindow;
  bool hidden = false;
  bool readOnly = false;  // of an edit line: the user can mark and copy its text, not change it
};

// False: the id is taken, or there is no such parent.
bool MakeControl(const ControlSpec& spec);

// The caret goes to the front and the undo history is emptied. LF, CR and CR LF are line ends
// alike; an edit line leaves them out, also when it is made or pasted into. What is no control
// of this header has no text: it is ignored.
void SetText(int id, std::u16string_view text);
// Line ends of a multi-line edit, a log or an editor are CR LF.
std::u16string TextOf(int id);
// Adds at the end of a log or multi-line edit and scrolls the end into view. Caret and selection
// stay where they are; the undo history is emptied.
void AppendText(int id, std::u16string_view text);
// Scrolls the first line of a log or multi-line edit into view. Caret and selection stay.
void ScrollToTop(int id);
// Writes one line of a log in this colour, counted from 0; SetText takes it away. The text, its
// caret and its selection stay as they are.
void SetLogLineColour(int id, int line, Colour colour);
// The line of a log that its caret is in, where a double click or Enter was told from; -1: no log.
int LogCaretLine(int id);
// At most `units` 16-bit units can be typed or pasted, a line end counting two; 0 and below: no
// limit, for an edit line 32767. What goes beyond is left out and not told. The program's texts are
// never cut.
void SetTextLimit(int id, int units);
void SelectAllText(int id);
// While the click of a push button is told: the pixels from its left edge to where the pointer let
// it go; -1 where a key or assistive technology pressed it, and at any other time.
int ClickedAt();
// Of push buttons and check boxes; a click turns over a check box only, before it is told.
void SetChecked(int id, bool checked);
bool IsChecked(int id);
void SetAccessibleName(int id, std::u16string_view name);
std::u16string AccessibleName(int id);
// Help that shows once the pointer has rested on the control for 450 ms, until it leaves or
// presses a button.
void SetToolTip(int id, std::u16string_view text);
void HideToolTips();

struct ControlColours {
  Colour text = 0;
  Colour background = 0;
  bool transparent = false;  // background is what lies behind
};
void SetColours(int id, const ControlColours& colours);

enum class EditAction { Undo, Redo, Cut, Copy, Paste, SelectAll, Delete };
// True when the id is an edit line, a multi-line edit, a log or an editor.
bool IsTextControl(int id);
// Runs the action on a text control, as its own key would, hidden or not. kNotifyEditChange is
// sent where the text changed, Events::typed never. Pasting nothing leaves the selection. On the
// clipboard line ends are as the system has them.
void RunEditAction(int id, EditAction action);

}  // namespace platform
