// What the sources of the headless platform share: the placed things, the queues of the user,
// the caught faults. Not for the application and not for tests.
//
// One rule holds: clock, thread, serial line and post stand each in an object of its own, and
// nothing here names them, so that a program may link the real ones in their place.
#pragma once

#include <cstdint>
#include <map>
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

namespace platform {

// Keeps its calls.
struct Canvas {
  Rect area;
  std::vector<headless::DrawCall> calls;
};

}  // namespace platform

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
  bool dim = false;
};

// What the next key of the same kind goes on with, so that both are one step of the history.
enum class EditRun { None, Typing, Backspace, Delete };

// Text, selection and history of an edit line, a multi-line edit or a log.
struct EditState {
  struct Step {
    std::u16string text;
    int caret = 0;
  };
  int anchor = 0;
  int caret = 0;
  int column = -1;  // where Up and Down go to in a longer line; -1: that of the caret
  EditRun run = EditRun::None;
  std::vector<Step> undo;
  std::vector<Step> redo;
};

struct ListState {
  std::vector<ListRow> rows;
  int current = -1;
  int anchor = -1;  // where a stretch of rows begins
  int top = 0;
  int rowHeight = 24;
  int wheelRows = 3;
  bool ownerDrawn = true;
};

// A text that an editor does not show now.
struct AsideText {
  std::uint64_t number = 0;
  EditorText text;
};

// A code editor: the text model with what is seen of it.
struct EditorState {
  EditorText text;
  std::vector<AsideText> aside;  // the last one laid there last
  int anchor = 0;                // positions
  int caret = 0;
  int column = -1;  // as in EditState
  int firstLine = 0;
  int left = 0;  // pixels that are scrolled out at the left
  int markedLine = -1;
  platform::Colour markBand = 0;
  std::vector<platform::LineBand> bands;
  std::vector<platform::LineMark> marks;
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
  bool readOnly = false;  // a log, or an edit line that was made so
  int limit = 0;          // units that can be typed; 0: no limit
  unsigned height = 0;    // among the children of a parent the greatest lies on top
  platform::ControlColours colours;
  platform::Colour background = 0;
  platform::PointerShape shape = platform::PointerShape::Arrow;
  platform::FontRole font = platform::FontRole::Body;
  platform::ViewRole role = platform::ViewRole::Drawing;
  EditState edit;
  std::map<int, platform::Colour> lineColours;  // of a log
  bool showsTop = true;                         // nothing was appended since ScrollToTop
  ListState list;
  std::unique_ptr<EditorState> editor;
};

// The thing with this id, null for none. Any call into the application may destroy it.
Item* Find(int id);
// A new thing of this kind under `id`; null when the id is taken, there is no such parent or the
// call is told to fail.
Item* NewItem(int id, Kind kind, int parent, bool hidden);
const std::vector<std::unique_ptr<Item>>& Items();
// Visible with all its parents and enabled with all its parents.
bool CanBeUsed(int id);
bool IsTextItem(const Item& item);
bool IsWindow(const Item& item);  // a dialog, which lies in no parent's pixels
bool TakesKeyboard(const Item& item);

// The user's own part of a change: edits of a text control below Events::key. False: nothing
// changed, as nothing more fits.
bool ReplaceInEdit(Item& item, int from, int to, std::u16string_view text, EditRun run);
void EditKeyAction(int id, platform::EditAction action);
bool EraseBeforeCaret(int id);                              // in an edit
bool RunEditorAction(int id, platform::EditAction action);  // false: no editor
bool TypeCharacter(int id, char16_t character);             // into an edit or an editor
void EraseInEditor(int id, bool forward);
void TellEditingKey(int id);  // an editor's text was changed by a key that is no character
// Selects by the user's hand; the caret goes to `to` and comes into view.
void PlaceCaret(int id, int from, int to);
void MoveEditorCaret(int id, const platform::KeyEvent& key);
void MoveEditCaret(Item& item, const platform::KeyEvent& key);
// Steps over a CR LF as one character.
int StepInText(const std::u16string& text, int at, bool forward);
// The keyboard goes to the next thing that takes it; false: there is none. An edit line that
// Tab comes to has all of its text selected.
bool FocusNext(bool backwards, bool byTab = true);
// Selects one row as a key or click does, with the notification; other rows lose theirs.
bool ChooseRow(int id, int row);
// The same with all rows from the anchor on, in a list of several.
void StretchRows(int id, int row);
void ChooseAllRows(int id);
int RowsInView(const Item& item);
// The row behind the current one, and round, that begins with a typed character; -1 for none.
int RowBeginningWith(const Item& item, char16_t character);
// A press of the left button on a row: the keyboard, the selection, the notification.
void PressRow(int id, int row, bool ctrl, bool shift);
std::u16string& Clipboard();
// The pointer comes to a thing, at main-window pixels.
void SetPointerOver(int id, int x, int y);
int CapturedView();
// The view that a button went down on, until it is up; 0 for none.
void HoldView(int view);
// Tells that view that its release will not come.
void LosePointer();
// Keeps the view of an editor, and the top row of a list, within its lines or rows.
void FillEditor(int id);
void FillList(Item& item);

// Where the pointer let the button go whose click is told now, -1 where it did not.
int ClickPlace();

// Whether a box, a dialog or a menu stands.
bool AnythingAsks();
// Lives as long as a modal call. It takes the pointer from a view that held it.
struct Asking {
  Asking();
  ~Asking();
  Asking(const Asking&) = delete;
  Asking& operator=(const Asking&) = delete;
};
// Tells that the application came to the front again, where that is owed and nothing asks.
void TellFront();
// Lets happen what WhileOpen asked for.
void HappenMeanwhile();
// The same for a box of the system's, which has the keyboard meanwhile.
void HappenWithoutKeyboard();
void ClearAnswers();
void ClearPicks();
void ClearPrinters();

void SendCommand(int id, int notification);

// Dialogs. Whether one runs that this thing does not lie in; the main window lies in none.
bool IsBehindDialog(int id);
// Hands a control's word to the dialog that it lies in. False: it lies in none.
bool TellDialog(int id, int notification);
// Enter and Escape in the running dialog. True: used.
bool PressDialogKey(const platform::KeyEvent& key);
// Keeps who gets the keyboard once the dialog runs that the thing lies in.
void KeepForDialog(int id);
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
