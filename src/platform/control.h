// Push buttons, check boxes, labels, edit lines and multi-line edits, by id.
//
// The toolkit's real widgets stand behind the ids, so keyboard, focus, input methods and
// accessibility are the toolkit's. Buttons and lists are drawn by the application
// (Events::drawItem). Setting a text or a state from here sends no notification, except
// where a function says so.
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
  const char16_t* accessibleName = u"";  // empty: the text stands for it
  FontRole font = FontRole::Body;
  int parent = kMainWindow;
  bool hidden = false;
};

bool MakeControl(const ControlSpec& spec);

void SetText(int id, std::u16string_view text);
std::u16string TextOf(int id);
// Adds at the end of a log or multi-line edit, no undo step, end scrolled into view.
void AppendText(int id, std::u16string_view text);
// At most `units` 16-bit units can be typed.
void SetTextLimit(int id, int units);
void SelectAllText(int id);
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
// Runs the action on a text control, as its own key would.
void RunEditAction(int id, EditAction action);

}  // namespace platform
