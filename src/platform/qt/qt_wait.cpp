// Waiting with a loop of events of its own.

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>

#include "platform/wait.h"

namespace platform {

namespace {

constexpr int kWakeMs = 20;

}  // namespace

bool WaitUntil(bool (*done)(), int milliseconds) {
  // One who has waited long enough is woken by a timer, as nothing else might come. It goes on, as
  // a timer may fire a moment before the deadline.
  QDeadlineTimer deadline(milliseconds);
  QTimer wake;
  wake.start(std::min(milliseconds, kWakeMs));
  QEventLoop loop;
  while (!done() && !deadline.hasExpired()) {
    loop.processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
  }
  return done();
}

}  // namespace platform
