// Waiting with a loop of events of its own.

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include "platform/wait.h"

namespace platform {

bool WaitUntil(bool (*done)(), int milliseconds) {
  // One who has waited long enough is woken by a timer, as nothing else might come.
  QDeadlineTimer deadline(milliseconds);
  QTimer wake;
  wake.setSingleShot(true);
  wake.start(milliseconds);
  QEventLoop loop;
  while (!done() && !deadline.hasExpired()) {
    loop.processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
  }
  return done();
}

}  // namespace platform
