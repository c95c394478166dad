// What the sources of the headless platform share: the placed things, the queues of the user,
// the caught faults. Not for the application and not for tests.
//
// One rule holds: clock, thread, serial line and post stand each in an object of its own, and
// nothing here names them, so that a program may link the real ones in their place.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/canvas.h"
#include "platform/control.h"
#include "platform/events.h"
#include "platform/geometry.h"
#include "platform/headless/editor_text.h"
#include "platform/headless/headless.h"
#include "platform/listing.h"
#include "platform/window.h"

namespace headless {

enum class Kind {
  Button,
  Check,
  Label,
  Edit,
  MultiEdit,
  Log,
  List,
  MultiList,
  Combo,
  Editor,
  View,
};

struct ListRow {
  std::u16string text;
  std::int64_t data = 0;
  bool selected = false;
};

// Text, selection and history of an edit line, a multi-line edit or a log.
struct EditState {
  struct Step {
    std::u16string text;
    int caret = 0;
  };
  int anchor = 0;
  int caret = 0;
  std::vector<Step> undo;
  std::vector<Step> redo;
};

struct ListState {
  std::vector<ListRow> rows;
  int current = -1;
  int top = 0;
  int rowHeight = 24;
  bool ownerDrawn = true;
};

// A code editor: the text model with what is seen of it.
struct EditorState {
  EditorText text;
  int anchor = 0;  // positions
  int caret = 0;
  int firstLine = 0;
  int markedLine = -1;
  platform::Colour markBand = 0;
  std::vector<platform::LineBand> bands;
  bool readOnly = false;
  int redrawHolds = 0;
};

// One placed thing. Only the parts of its kind are in use.
struct Item {
  int id = 0;
  Kind kind = Kind::Label;
  int parent = platform::kMainWindow;
  std::u16string className;
  std::u16string text;
  std::u16string name;
  std::u16string tip;
  platform::Rect place;
  bool visible = true;
  bool enabled = true;
  bool checked = false;
  bool pressed = false;
  bool takesFocus = false;
  int limit = 0;  // units that can be typed; 0: no limit
  platform::ControlColours colours;
  platform::Colour background = 0;
  platform::PointerShape shape = platform::PointerShape::Arrow;
  platform::FontRole font = platform::FontRole::Body;
  EditState edit;
  ListState list;
  std::unique_ptr<EditorState> editor;
};

// The thing with this id, null for none. Any call into the application may destroy it.
Item* Find(int id);
// A new thing of this kind under `id`; null when the id is taken or the call is told to fail.
Item* NewItem(int id, Kind kind, int parent, bool hidden);
const std::vector<std::unique_ptr<Item>>& Items();
// Visible with all its parents and enabled with all its parents.
bool CanBeUsed(int id);
bool IsTextItem(const Item& item);
bool TakesKeyboard(const Item& item);

// The user's own part of a change: edits of a text control below Events::key.
void ReplaceInEdit(Item& item, int from, int to, std::u16string_view text);
void EditKeyAction(int id, platform::EditAction action);
bool EraseBeforeCaret(int id);                              // in an edit
bool RunEditorAction(int id, platform::EditAction action);  // false: no editor
bool TypeCharacter(int id, char16_t character);             // into an edit or an editor
void EraseInEditor(int id, bool forward);
void MoveEditorCaret(int id, const platform::KeyEvent& key);
void MoveEditCaret(Item& item, const platform::KeyEvent& key);
// Selects one row as a key or click does, with the notification; other rows lose theirs.
// The keyboard goes to the next thing that takes it; false: there is none.
bool FocusNext(bool backwards);
bool ChooseRow(int id, int row);
std::u16string& Clipboard();
void SetPointerOver(int id);
int CapturedView();

// Lets happen what WhileOpen asked for; every modal call begins with it.
void StandOpen();
void ClearAnswers();
void ClearPicks();

void SendCommand(int id, int notification);

// Dialogs. Whether one runs that this thing does not lie in; the main window lies in none.
bool IsBehindDialog(int id);
// Hands a control's word to the dialog that it lies in. False: it lies in none.
bool TellDialog(int id, int notification);
// Enter and Escape in the running dialog. True: used.
bool PressDialogKey(const platform::KeyEvent& key);
void CancelDialog();
void ForgetDialog(int id);

// A kind of call that FailCall may have marked: counts it, true when this one must fail.
bool FaultFor(std::string_view kind);

// Timers, for the object that moves the virtual clock. The earliest moment at which one is
// due; false without any.
bool NextTimerDue(std::uint64_t& due);
void FireNextTimer();

// A source that keeps state of its own adds one of these, so that Reset reaches it only in
// programs that link it. Stage 0 runs before stage 1: the worker ends before its messages go.
struct ResetHook {
  ResetHook(int resetStage, void (*reset)());
  int stage;
  void (*run)();
  ResetHook* next;
};

}  // namespace headless
