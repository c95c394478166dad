// The user's hands for the questions that every platform must answer alike.
//
// One file a platform implements them: hands_headless.cpp and hands_qt.cpp, each with the main
// function of its program. Where a hand points at a place, what lies there on the screen gets
// it, whatever the id that the place was told by.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/events.h"
#include "platform/message.h"
#include "platform/printer.h"

namespace hands {

// A machine with an empty main window of kWidth by kHeight client pixels on the screen, the
// clipboard empty, the pointer outside. Nobody listens.
inline constexpr int kWidth = 1200;
inline constexpr int kHeight = 800;
inline constexpr int kLeastWidth = 400;
inline constexpr int kLeastHeight = 300;
void Open();
void Close();

// Lets come to an end what is under way: messages that are posted, answers of the system.
void Settle();
// Lets this many milliseconds go by, on the clock of the platform.
void Pass(int milliseconds);
// Waits until `state` holds; false where it does not within some seconds.
bool Until(const std::function<bool()>& state);

// Keys, to whatever has the keyboard.
void Press(const platform::KeyEvent& key);
// Key by key; LF is Enter.
void Type(std::u16string_view text);

struct Held {
  bool ctrl = false;
  bool shift = false;
  platform::PointerButton button = platform::PointerButton::Left;
};
// At client pixels of `id`.
void ClickAt(int id, int x, int y, const Held& held = {});
void DoubleClickAt(int id, int x, int y);
void PressAt(int id, int x, int y, const Held& held = {});
void MoveTo(int id, int x, int y);  // with the button that is down, if one is
void ReleaseAt(int id, int x, int y, const Held& held = {});
void WheelAt(int id, int x, int y, int notches);  // positive forward, which scrolls up
// Moves the pointer that stands on the screen.
void PointTo(int id, int x, int y);
void PointAway();
// Opens a combo and chooses the row.
void ChooseInCombo(int id, int row);

// What assistive technology does: presses a button, a check box or a row, or turns it over; sets a
// slider.
void Assist(int id, bool turn = false);
void AssistRow(int id, int row, bool turn = false);
void AssistValue(int view, int step);
// What it reads of a view.
platform::ViewValue ValueRead(int view);

// What another program put on the clipboard, and what it would get from there with LF.
void CopyElsewhere(std::u16string_view text);
std::u16string PasteElsewhere();

void ResizeWindow(int width, int height);
void PressCloseKey();
void ComeToFront();  // from another program back to this one

// Armed before the modal thing opens. With `meanwhile` something happens while it stands.
void AnswerBox(platform::BoxAnswer answer, const std::function<void()>& meanwhile = {});
void EscapeFromBox();
void PickFromMenu(int itemId);  // 0: leaves it without a choice
// Takes a printer of these figures in the next dialog for one, or leaves the dialog.
void AnswerPrinter(const platform::PrinterFigures& figures);
void CancelPrinter();
// What the user does in this dialog once it stands; where it still runs then it is cancelled.
void InDialog(int dialog, const std::function<void()>& act);

// The help that shows while the pointer rests in the middle of the control; empty for none.
std::u16string TipOver(int id);
// Has the thing painted now.
void Paint(int id);

}  // namespace hands
