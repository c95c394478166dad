// The application's record of listeners, and keys and pointers as it names them.

#include <QApplication>
#include <QMouseEvent>

#include "platform/control.h"
#include "platform/events.h"
#include "platform/qt/qt_internal.h"

namespace platform {

namespace {

const Events kNobody;
const Events* listener = &kNobody;

struct KeyPair {
  int theirs;
  int ours;
};

const KeyPair kKeys[] = {
    {Qt::Key_Return, kKeyEnter},  {Qt::Key_Enter, kKeyEnter},
    {Qt::Key_Tab, kKeyTab},       {Qt::Key_Backtab, kKeyTab},
    {Qt::Key_Escape, kKeyEscape}, {Qt::Key_Space, kKeySpace},
    {Qt::Key_Up, kKeyUp},         {Qt::Key_Down, kKeyDown},
    {Qt::Key_Left, kKeyLeft},     {Qt::Key_Right, kKeyRight},
    {Qt::Key_Home, kKeyHome},     {Qt::Key_End, kKeyEnd},
    {Qt::Key_PageUp, kKeyPageUp}, {Qt::Key_PageDown, kKeyPageDown},
    {Qt::Key_Delete, kKeyDelete}, {Qt::Key_Backspace, kKeyBackspace},
};

int KeyNumber(int key) {
  for (const KeyPair& pair : kKeys) {
    if (pair.theirs == key) return pair.ours;
  }
  if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return kKeyF1 + (key - Qt::Key_F1);
  // Letters arrive in upper case; other printable keys keep their character.
  if (key > 0x20 && key < 0x7f) return key;
  return kKeyNone;
}

PointerButton ButtonFrom(Qt::MouseButton button) {
  switch (button) {
    case Qt::LeftButton:
      return PointerButton::Left;
    case Qt::MiddleButton:
      return PointerButton::Middle;
    case Qt::RightButton:
      return PointerButton::Right;
    default:
      return PointerButton::None;
  }
}

bool RunAltRule(int id, const KeyEvent& key) {
  if (!key.alt || key.ctrl || !IsTextControl(id)) return false;
  switch (key.key) {
    case 'C':
      RunEditAction(id, EditAction::Copy);
      return true;
    case 'V':
      RunEditAction(id, EditAction::Paste);
      return true;
    case 'Z':
      RunEditAction(id, EditAction::Undo);
      return true;
    default:
      return false;
  }
}

}  // namespace

void ListenTo(const Events* events) { listener = events != nullptr ? events : &kNobody; }

const Events& Listener() { return *listener; }

KeyEvent KeyFrom(const QKeyEvent& event) {
  KeyEvent key;
  key.key = KeyNumber(event.key());
  key.ctrl = event.modifiers().testFlag(Qt::ControlModifier);
  key.shift = event.modifiers().testFlag(Qt::ShiftModifier);
  key.alt = event.modifiers().testFlag(Qt::AltModifier);
  return key;
}

PointerEvent PointerFrom(const QMouseEvent& event, PointerAction action) {
  PointerEvent pointer;
  pointer.action = action;
  pointer.button = action == PointerAction::Move ? PointerButton::None : ButtonFrom(event.button());
  pointer.leftDown = event.buttons().testFlag(Qt::LeftButton);
  pointer.middleDown = event.buttons().testFlag(Qt::MiddleButton);
  pointer.rightDown = event.buttons().testFlag(Qt::RightButton);
  pointer.ctrl = event.modifiers().testFlag(Qt::ControlModifier);
  pointer.shift = event.modifiers().testFlag(Qt::ShiftModifier);
  pointer.alt = event.modifiers().testFlag(Qt::AltModifier);
  pointer.x = event.pos().x();
  pointer.y = event.pos().y();
  return pointer;
}

QWidget* KeyboardHolder() { return QApplication::focusWidget(); }

bool KeyBeforeControl(int id, const QKeyEvent& event) {
  const KeyEvent key = KeyFrom(event);
  if (key.key != kKeyNone) {
    const bool heard = Listener().key != nullptr && !LiesInDialog(id);
    if (heard && Listener().key(id, key)) return true;
    if (RunAltRule(id, key)) return true;
  }
  // A key with Alt that means nothing here must not leave its letter in a text.
  const bool character = !event.text().isEmpty() && event.text().at(0).isPrint();
  return key.alt && !key.ctrl && character && IsTextControl(id);
}

void AskContextMenu(int id, QWidget* widget, QContextMenuEvent* event, int row,
                    const QPoint* local) {
  event->accept();
  QWidget* main = MainWidget();
  if (main == nullptr || Listener().contextMenu == nullptr) return;
  QPoint place = main->mapFromGlobal(event->globalPos());
  if (event->reason() == QContextMenuEvent::Keyboard) {
    // Through the screen: a dialog is a window of its own.
    const QPoint at = local != nullptr ? *local : widget->rect().center();
    place = main->mapFromGlobal(widget->mapToGlobal(at));
  }
  Listener().contextMenu(id, row, place.x(), place.y());
}

}  // namespace platform
