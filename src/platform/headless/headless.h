// The headless platform's other side: what a user, a clock and a cable do, for tests and the
// job driver. The application never includes this.
//
// Controls hold rows and text and send their notifications as the real ones do; a hidden or
// disabled control takes no click. Time is virtual. Nothing here needs the application.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/canvas.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/events.h"
#include "platform/listing.h"
#include "platform/message.h"
#include "platform/printer.h"

namespace headless {

// A machine with nothing on it: no window, no control, time 0, no ports, no queued answers.
// The executable is HOME/bin/MORVA, Documents is HOME/Documents; both folders are made.
void Reset(std::u16string_view home);
void SetExecutableName(std::u16string_view name);  // instead of "MORVA"
void SetFlushTime(int milliseconds);               // each flush of a file takes that long
void RemoveDocuments();                            // the system has no Documents folder

// What the user does. False: no such thing, or it is hidden or disabled.
bool Click(int id);                               // buttons and check boxes
bool ClickAt(int id, int x);                      // by the pointer, at x pixels of a button
bool TypeInto(int id, std::u16string_view text);  // replaces an edit's text, with its changes
bool SelectRows(int id, const std::vector<int>& rows);
bool DoubleClickRow(int id, int row);
bool DoubleClickLogLine(int id, int line);
bool ClickInRow(int id, int row, int x);  // a left click at x pixels of a list row
bool WheelRows(int id, int rows);         // the wheel over a list, down where positive
bool ContextMenu(int id, int row);        // right click on a control or row
bool Focus(int id);
bool PressKey(const platform::KeyEvent& key);         // to whatever has the keyboard
bool EditorInsert(int id, std::u16string_view text);  // typed at the caret, char by char
bool EditorSelect(int id, int from, int to);
bool EditorSetAll(int id, std::u16string_view text);  // select all and type over it
bool EditorUndo(int id);
bool Pointer(int view, const platform::PointerEvent& event);
// The pointer at main-window pixels: what lies there on the screen gets it. Buttons stay down
// from press to release, and tie the pointer to what they went down on.
void Mouse(const platform::PointerEvent& event);
// What lies topmost there, kMainWindow for the bare window, 0 outside.
int IdAt(int x, int y);
bool Wheel(int id, int notches);  // positive forward; false: nothing to scroll there
// What assistive technology reads of a view, and its setting of a slider; false: no slider, or it
// cannot be worked.
platform::ViewValue ValueOfView(int id);
bool ChooseValue(int id, int step);
void TypeText(std::u16string_view text);  // key by key, to whatever has the keyboard
// The pointer comes to rest in the middle of a thing, 0: outside the window. Where the thing goes
// away what lies there is under it.
void MovePointerOver(int id);
void Resize(int width, int height);  // client size, held to the window's minimum
// The room of the screen for the client area of a window that is made next; large until told.
void SetScreen(int width, int height);
void HoldCtrl(bool held);    // for the clicks that follow
void HoldButton(bool held);  // a button of the pointer on a control, until told
bool CloseKey();             // false: the window stayed
bool WindowClosed();
void ComeToFront();  // from another program back to this one
void Terminate();    // the system's signal to end
// Files from another program, let go over the main window. False: nothing takes them.
bool DropFiles(const std::vector<std::u16string>& paths);

// Time and messages: fires due timers in order and lets the worker run up to now + ms.
void Advance(int milliseconds);
// Only what is posted already; no time passes.
void DrainPosts();

// Answers, used in order by the next box, dialog or popup. With none queued a box gets its
// most cautious answer, a dialog or popup is cancelled.
void QueueAnswer(platform::BoxAnswer answer);
void QueueFile(std::u16string_view path);
void QueueFileCancel();
void QueuePick(int itemId);  // 0: cancel
// With no printer queued the dialog for one is cancelled.
void QueuePrinter(const platform::PrinterFigures& figures);
void QueuePrinterCancel();
void QueueNoPrinter();  // the system cannot print
void ClearQueues();
// Runs once while the next box, dialog or popup stands open: timers and messages do not wait
// for the user to answer. Null: nothing happens meanwhile.
void WhileOpen(void (*happens)());
// What the user does in the dialog that stands open, in the order handed in. Then `turn` is
// asked for more, again and again; where it answers false, or is null, the dialog is cancelled.
// While one runs nothing outside it takes input, and CloseKey presses its cancel button.
void InDialog(std::function<void()> act);
void SetDialogTurn(bool (*turn)());
int OpenDialog();  // its id, 0 for none
std::u16string DialogTitle();
// What Copy and Cut leave and Paste takes.
void SetClipboard(std::u16string_view text);
std::u16string ClipboardText();

struct BoxRecord {
  std::u16string title;
  std::u16string text;
  platform::BoxButtons buttons = platform::BoxButtons::Ok;
  platform::BoxIcon icon = platform::BoxIcon::None;
  platform::BoxAnswer answer = platform::BoxAnswer::Ok;
};
struct MenuItemRecord {
  int id = 0;
  std::u16string text;
  bool checked = false;
  bool enabled = true;
};
struct MenuRecord {
  std::vector<MenuItemRecord> items;
  int picked = 0;
};
struct FilePickRecord {
  bool save = false;
  std::u16string title;
  std::u16string initialName;
  std::u16string folder;
  std::u16string defaultExtension;
  std::vector<std::pair<std::u16string, std::u16string>> filters;
  std::u16string picked;  // empty: cancelled
};
std::vector<BoxRecord> TakeBoxes();  // since the last take
std::vector<MenuRecord> TakeMenus();
std::vector<FilePickRecord> TakeFilePicks();

// The far end of the cable.
enum class PortState { Absent, Present, Busy };
void SetPort(std::u16string_view name, PortState state);
void PeerSend(std::string_view bytes);
void PeerStall(int milliseconds);  // XOFF for that long from now
// Bytes that the port takes from a sender while the peer holds the line; 0 at the start.
void SetPortBuffer(std::size_t bytes);
void PeerUnplug();
std::string TakeSent();  // bytes the application wrote, since the last take

// Looking.
struct ControlInfo {
  int id = 0;
  std::u16string kind;  // "button", "check", "label", "edit", "multiedit", "log", "list",
                        // "multilist", "combo", "editor", "view"
  std::u16string text;
  std::u16string name;
  bool visible = false;
  bool enabled = false;
  bool checked = false;
  bool behind = false;   // a dialog that runs keeps the user from it
  platform::Rect place;  // in main-window pixels
  platform::ControlColours colours;
};
bool Describe(int id, ControlInfo& info);
std::vector<int> AllIds();  // in order of creation
// The drawing calls of one paint of a view, the main window or an owner-drawn control.
struct DrawCall {
  std::string name;             // "FillArea", "PaintText", ...
  std::vector<double> numbers;  // coordinates, then widths, in the order of the arguments
  std::vector<platform::Colour> colours;
  std::u16string text;
};
std::vector<DrawCall> PaintOf(int id);

// The line that MarkEditorLine marked and its band; -1 for none.
int EditorMark(int id, platform::Colour& band);

// The band that SetLineBands laid behind a line; false for none.
bool EditorBand(int id, int line, platform::Colour& band);

// What SetLineMarks marked last.
std::vector<platform::LineMark> EditorMarks(int id);
// Whether a log was scrolled to its first line, or emptied, since something was appended to it.
bool ShowsTop(int id);
// The colour that SetLogLineColour gave a line; false for none.
bool LogLineColour(int id, int line, platform::Colour& colour);

// What SetToolTip gave last.
std::u16string ToolTipOf(int id);

// Print jobs that were started. `ended`: to its end, with no page that failed.
struct PrintRecord {
  std::u16string document;
  int pages = 0;
  bool ended = false;
  std::vector<DrawCall> paint;  // of all pages
};
std::vector<PrintRecord> TakePrinted();  // since the last take
bool HoldsPrinter();                     // one was chosen and not released

// Faults: the n-th call of a kind from now on fails, n from 1; 0 clears. "timer", "worker",
// "window", "control", "popup", "document" and "page" of a print job, and the file kinds of
// platform/common/faults.h.
void FailCall(std::string_view kind, int n);

}  // namespace headless
