// Whether the user moves the pointer, wherever on the screen it is.

#include <QApplication>
#include <QCursor>
#include <QMouseEvent>

#include "platform/qt/qt_internal.h"
#include "platform/window.h"

namespace platform {

namespace {

QPoint lastPlace;
unsigned moves = 0;

void NotePlace(const QPoint& place) {
  if (moves == 0 || place != lastPlace) ++moves;
  lastPlace = place;
}

// Sees each move over a window of ours. To ask now and then where the pointer is would not do: it
// may have been elsewhere and have come back to its place between two questions.
class MoveWatch : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override {
    const bool seen = event->type() == QEvent::MouseMove || event->type() == QEvent::Enter;
    // What comes from the window system goes to a window first; widgets hear of it behind.
    if (seen && receiver->isWindowType()) {
      NotePlace(static_cast<QSinglePointEvent*>(event)->globalPosition().toPoint());
    }
    return false;
  }
};

}  // namespace

void BeginMoves() { QCoreApplication::instance()->installEventFilter(new MoveWatch(qApp)); }

unsigned PointerMoves() {
  NotePlace(QCursor::pos());  // a move over another program's window is not told
  return moves;
}

}  // namespace platform
