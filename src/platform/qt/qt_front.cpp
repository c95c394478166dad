// The word that the application came to the front again, at a moment when it can be acted on.

#include <QApplication>
#include <QMetaObject>
#include <QPointer>

#include "platform/events.h"
#include "platform/qt/qt_internal.h"

namespace platform {

namespace {

bool owed = false;
int asking = 0;  // boxes, dialogs and menus of ours, one over the other

void TellOwed();
// From the loop, behind who asked: the answer is acted on first.
void TellSoon() { QMetaObject::invokeMethod(qApp, TellOwed, Qt::QueuedConnection); }

// Sees the end of what the toolkit opens by itself, such as the list of a combo.
class HideWatch : public QObject {
 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Hide) return false;
    watched->removeEventFilter(this);
    TellSoon();
    return false;
  }
};

void TellOwed() {
  if (!owed || asking > 0) return;
  static HideWatch watch;
  if (QWidget* popup = QApplication::activePopupWidget()) return popup->installEventFilter(&watch);
  owed = false;
  // In the background again, it comes to the front once more.
  if (QGuiApplication::applicationState() != Qt::ApplicationActive) return;
  if (Listener().activated != nullptr) Listener().activated();
}

}  // namespace

Asking::Asking() { ++asking; }

Asking::~Asking() {
  --asking;
  if (owed) TellSoon();
}

void BeginFront() {
  // Boxes of the application's own do not take it from the front.
  QObject::connect(
      qApp, &QGuiApplication::applicationStateChanged, qApp,
      [](Qt::ApplicationState state) {
        if (state != Qt::ApplicationActive) return;
        owed = true;
        TellOwed();
      },
      Qt::QueuedConnection);
}

}  // namespace platform
